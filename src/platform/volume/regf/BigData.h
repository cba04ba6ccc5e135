// The big data record ("db"): data of more than 16344 bytes, in segments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/volume/regf/HiveBin.h"

namespace ostrevin::regf {

struct BigData {
    /// What one segment holds; all but the last are full.
    static constexpr std::size_t kSegmentSize = 16344;

    std::uint16_t segmentCount = 0;
    std::uint32_t segmentsList = 0;  ///< offset of a list of as many offsets of cells

    /// Reads the record in the cell at an offset; none when there is none.
    [[nodiscard]] static std::optional<BigData> Read(const HiveBins& bins, std::uint32_t offset);

    /// The first length bytes of the data; fewer when segments are missing or short.
    [[nodiscard]] std::vector<std::byte> Data(const HiveBins& bins, std::size_t length) const;
};

}  // namespace ostrevin::regf
