// Hive bins ("hbin"), of which the data of a hive consists, and the cells in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/volume/regf/Bytes.h"

namespace ostrevin::regf {

/// The header of a hive bin: its first 32 bytes.
struct HiveBin {
    static constexpr std::size_t kHeaderSize = 32;
    static constexpr std::uint32_t kUnit = 4096;  ///< the size of every bin is a multiple of it

    std::uint32_t offset = 0;     ///< of this bin among all hive bins, in bytes
    std::uint32_t size = 0;       ///< of this bin with its header, in bytes
    std::uint64_t timestamp = 0;  ///< FILETIME; in the first bin a copy of the base block's

    /// Reads the header with which the bytes begin; none when it is not a sound one of a bin that stands at
    /// an offset of the hive bins.
    [[nodiscard]] static std::optional<HiveBin> Read(Bytes bytes, std::size_t at);
};

/// All hive bins of a hive, as the room in which its cells lie. A light reference to the bytes.
class HiveBins {
  public:
    /// minorVersion is the base block's.
    HiveBins(Bytes bins, std::uint32_t minorVersion) : bins_(bins), minorVersion_(minorVersion) {}

    /// The data of the allocated cell at an offset, without its size field. Empty when there is none; cut
    /// when it reaches beyond the hive.
    [[nodiscard]] Bytes Cell(std::uint32_t offset) const;

    [[nodiscard]] std::size_t Size() const { return bins_.size(); }
    /// The hive's names may be stored with one byte a character. They may not in Windows NT 3.1.
    [[nodiscard]] bool HasCompressedNames() const { return minorVersion_ > 1; }
    /// Large data is split into segments, from Windows XP on.
    [[nodiscard]] bool HasBigData() const { return minorVersion_ > 3; }

  private:
    Bytes bins_;
    std::uint32_t minorVersion_;
};

}  // namespace ostrevin::regf
