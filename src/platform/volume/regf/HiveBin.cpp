#include "platform/volume/regf/HiveBin.h"

#include <algorithm>

namespace ostrevin::regf {

std::optional<HiveBin> HiveBin::Read(Bytes bytes, std::size_t at) {
    if (bytes.size() < kHeaderSize || !HasSignature(bytes, "hbin")) {
        return std::nullopt;
    }
    HiveBin bin;
    bin.offset = IntegerAt<std::uint32_t>(bytes, 4);
    bin.size = IntegerAt<std::uint32_t>(bytes, 8);
    bin.timestamp = IntegerAt<std::uint64_t>(bytes, 20);
    if (bin.offset != at || bin.size == 0 || bin.size % kUnit != 0) {
        return std::nullopt;
    }
    return bin;
}

Bytes HiveBins::Cell(std::uint32_t offset) const {
    constexpr std::uint32_t kAlignment = 8;
    // In Windows NT 3.1 the offset of the cell before follows on the size.
    const std::size_t headerSize = minorVersion_ > 1 ? 4 : 8;
    if (offset % kAlignment != 0 || offset >= bins_.size()) {
        return {};
    }
    // A cell in use has its size as a negative number.
    const std::uint32_t stored = IntegerAt<std::uint32_t>(bins_, offset);
    if (stored <= 0x7FFFFFFF) {
        return {};
    }
    const std::size_t size = std::min<std::size_t>(0U - stored, bins_.size() - offset);
    if (size <= headerSize) {
        return {};
    }
    return bins_.subspan(offset + headerSize, size - headerSize);
}

}  // namespace ostrevin::regf
