#include "platform/volume/regf/HiveBin.h"

#include <algorithm>
#include <array>

#include "platform/volume/regf/BaseBlock.h"

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

std::optional<HiveBin> ReadBin(const FileImage& primary, std::size_t at) {
    std::array<std::byte, HiveBin::kHeaderSize> header{};
    if (at > primary.Size() || primary.Copy(BaseBlock::kSize + at, header) < header.size()) {
        return std::nullopt;
    }
    return HiveBin::Read(header, at);
}

std::size_t SoundBinsEnd(const FileImage& primary) {
    const std::size_t room = primary.Size() - std::min(primary.Size(), BaseBlock::kSize);
    std::size_t end = 0;
    while (const auto bin = ReadBin(primary, end)) {
        if (bin->size >= room - end) {
            return room;
        }
        end += bin->size;
    }
    return end;
}

HiveBins::HiveBins(const FileImage& primary, std::size_t size, std::uint32_t minorVersion)
    : primary_(&primary),
      size_(std::min(size, primary.Size() - std::min(primary.Size(), BaseBlock::kSize))),
      minorVersion_(minorVersion) {}

Bytes HiveBins::Cell(std::uint32_t offset, std::size_t most) const {
    const Place place = DataOf(offset);
    return primary_->At(place.at, std::min(place.size, most));
}

std::size_t HiveBins::AppendCell(std::vector<std::byte>& copy, std::uint32_t offset, std::size_t most) const {
    const Place place = DataOf(offset);
    const std::size_t size = std::min(place.size, most);
    copy.resize(copy.size() + size);
    return primary_->Copy(place.at, std::span(copy).last(size));
}

HiveBins::Place HiveBins::DataOf(std::uint32_t offset) const {
    constexpr std::uint32_t kAlignment = 8;
    // In Windows NT 3.1 the offset of the cell before follows on the size.
    const std::size_t headerSize = minorVersion_ > 1 ? 4 : 8;
    if (offset % kAlignment != 0 || offset >= size_) {
        return {};
    }
    std::array<std::byte, sizeof(std::uint32_t)> header{};
    primary_->Copy(BaseBlock::kSize + offset, header);
    // A cell in use has its size as a negative number.
    const auto stored = IntegerAt<std::uint32_t>(header, 0);
    if (stored <= 0x7FFFFFFF) {
        return {};
    }
    const std::size_t size = std::min<std::size_t>(0U - stored, size_ - offset);
    if (size <= headerSize) {
        return {};
    }
    return {BaseBlock::kSize + offset + headerSize, size - headerSize};
}

}  // namespace ostrevin::regf
