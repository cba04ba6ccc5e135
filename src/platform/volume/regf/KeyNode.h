// The key node ("nk"): a registry key.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/StoredName.h"

namespace ostrevin::regf {

struct KeyNode {
    /// The smallest cell that can hold one.
    static constexpr std::size_t kFixedSize = 76;

    std::uint64_t lastWritten = 0;  ///< FILETIME
    std::uint32_t parent = 0;       ///< offset of the key above; without meaning in the root key
    std::uint32_t subKeyCount = 0;  ///< not counting volatile ones, which are never in a file
    std::uint32_t subKeysList = 0;  ///< offset of a sub-keys list
    std::uint32_t valueCount = 0;   ///< 0 for a predefined handle, which is stored in its place
    std::uint32_t valuesList = 0;   ///< offset of a list of as many offsets of key values
    std::uint32_t classOffset = 0;  ///< offset of a cell with the class name, UTF-16
    std::uint16_t classLength = 0;  ///< of the class name, in bytes
    StoredName name;

    /// Reads the key node in the cell at an offset; none when there is no sound one.
    [[nodiscard]] static std::optional<KeyNode> Read(const HiveBins& bins, std::uint32_t offset);

    [[nodiscard]] std::string ClassName(const HiveBins& bins) const;
    /// The values list: whole offsets of 32 bits, sound or not.
    [[nodiscard]] Bytes ValuesList(const HiveBins& bins) const;
};

}  // namespace ostrevin::regf
