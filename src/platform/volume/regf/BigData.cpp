#include "platform/volume/regf/BigData.h"

#include <algorithm>

namespace ostrevin::regf {

std::optional<BigData> BigData::Read(const HiveBins& bins, std::uint32_t offset) {
    constexpr std::size_t kRecordSize = 8;
    const Bytes cell = bins.Cell(offset, kRecordSize);
    if (cell.size() < kRecordSize || !HasSignature(cell, "db")) {
        return std::nullopt;
    }
    return BigData{IntegerAt<std::uint16_t>(cell, 2), IntegerAt<std::uint32_t>(cell, 4)};
}

std::vector<std::byte> BigData::Data(const HiveBins& bins, std::size_t length) const {
    // Segments lie apart from each other, so that all of them together are no larger than the hive.
    length = std::min(length, bins.Size());
    const Bytes list = bins.Cell(segmentsList, segmentCount * sizeof(std::uint32_t));
    std::vector<std::byte> data;
    for (std::size_t at = 0; at + sizeof(std::uint32_t) <= list.size() && data.size() < length;
         at += sizeof(std::uint32_t)) {
        const std::size_t wanted = std::min(kSegmentSize, length - data.size());
        if (bins.AppendCell(data, IntegerAt<std::uint32_t>(list, at), wanted) < wanted) {
            break;
        }
    }
    return data;
}

}  // namespace ostrevin::regf
