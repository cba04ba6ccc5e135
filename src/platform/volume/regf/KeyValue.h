// The key value ("vk"): a value of a registry key.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/StoredName.h"

namespace ostrevin::regf {

struct KeyValue {
    /// The smallest cell that can hold one.
    static constexpr std::size_t kFixedSize = 20;

    std::uint32_t dataSize = 0;    ///< in bytes, without the bit that tells where the data stands
    bool isInline = false;         ///< that bit: data of up to 4 bytes stands in the offset's place
    Bytes offsetField;             ///< those 4 bytes
    std::uint32_t dataOffset = 0;  ///< otherwise: offset of a cell with the data, or with a big data record
    std::uint32_t type = 0;
    StoredName name;

    /// Reads the key value in the cell at an offset; none when there is no sound one.
    [[nodiscard]] static std::optional<KeyValue> Read(const HiveBins& bins, std::uint32_t offset);

    /// The data, but no more of it than asked for; cut where it leaves its cells.
    [[nodiscard]] std::vector<std::byte> Data(const HiveBins& bins, std::size_t most) const;
};

}  // namespace ostrevin::regf
