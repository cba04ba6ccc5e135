#include "platform/volume/regf/BigData.h"

#include <algorithm>

namespace ostrevin::regf {

std::optional<BigData> BigData::Read(Bytes cell) {
    constexpr std::size_t kRecordSize = 8;
    if (cell.size() < kRecordSize || !HasSignature(cell, "db")) {
        return std::nullopt;
    }
    return BigData{IntegerAt<std::uint16_t>(cell, 2), IntegerAt<std::uint32_t>(cell, 4)};
}

std::vector<std::byte> BigData::Data(const HiveBins& bins, std::size_t length) const {
    // Segments lie apart from each other, so that all of them together are no larger than the hive.
    length = std::min(length, bins.Size());
    const Bytes list = bins.Cell(segmentsList);
    const std::size_t count = std::min<std::size_t>(segmentCount, list.size() / sizeof(std::uint32_t));
    std::vector<std::byte> data;
    for (std::size_t i = 0; i < count && data.size() < length; ++i) {
        const std::size_t wanted = std::min(kSegmentSize, length - data.size());
        const Bytes cell = bins.Cell(IntegerAt<std::uint32_t>(list, i * sizeof(std::uint32_t)));
        const Bytes segment = cell.first(std::min(wanted, cell.size()));
        data.insert(data.end(), segment.begin(), segment.end());
        if (segment.size() < wanted) {
            break;
        }
    }
    return data;
}

}  // namespace ostrevin::regf
