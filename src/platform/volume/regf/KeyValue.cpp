#include "platform/volume/regf/KeyValue.h"

#include <algorithm>
#include <limits>

#include "platform/volume/regf/BigData.h"

namespace ostrevin::regf {
namespace {

constexpr std::uint32_t kInlineBit = 0x80000000;
constexpr std::uint16_t kCompressedName = 0x0001;

}  // namespace

std::optional<KeyValue> KeyValue::Read(const HiveBins& bins, std::uint32_t offset) {
    const Bytes cell = bins.Cell(offset, kFixedSize + std::numeric_limits<std::uint16_t>::max());
    if (cell.size() < kFixedSize || !HasSignature(cell, "vk")) {
        return std::nullopt;
    }
    const std::size_t nameLength = IntegerAt<std::uint16_t>(cell, 2);
    if (nameLength > cell.size() - kFixedSize) {
        return std::nullopt;
    }
    const auto storedSize = IntegerAt<std::uint32_t>(cell, 4);
    const auto flags = IntegerAt<std::uint16_t>(cell, 16);
    KeyValue value;
    value.dataSize = storedSize & ~kInlineBit;
    value.isInline = (storedSize & kInlineBit) != 0;
    value.offsetField = cell.subspan(8, sizeof(std::uint32_t));
    value.dataOffset = IntegerAt<std::uint32_t>(cell, 8);
    value.type = IntegerAt<std::uint32_t>(cell, 12);
    value.name = {cell.subspan(kFixedSize, nameLength),
                  bins.HasCompressedNames() && (flags & kCompressedName) != 0};
    return value;
}

std::vector<std::byte> KeyValue::Data(const HiveBins& bins, std::size_t most) const {
    most = std::min<std::size_t>(most, dataSize);
    if (isInline) {
        const Bytes data = offsetField.first(std::min(most, offsetField.size()));
        return {data.begin(), data.end()};
    }
    if (dataSize > BigData::kSegmentSize && bins.HasBigData()) {
        if (const auto bigData = BigData::Read(bins, dataOffset)) {
            return bigData->Data(bins, most);
        }
    }
    std::vector<std::byte> data;
    bins.AppendCell(data, dataOffset, most);
    return data;
}

}  // namespace ostrevin::regf
