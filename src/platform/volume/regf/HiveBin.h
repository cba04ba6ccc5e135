// Hive bins ("hbin"), of which the data of a hive consists, and the cells in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/volume/regf/Bytes.h"
#include "platform/volume/regf/FileImage.h"

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

/// The header of the hive bin at an offset of the hive bins of a primary file; none when there is no sound
/// one.
[[nodiscard]] std::optional<HiveBin> ReadBin(const FileImage& primary, std::size_t at);

/// Where the chain of sound hive bins that starts with the first one ends, in bytes of the hive bins; no
/// further than the file.
[[nodiscard]] std::size_t SoundBinsEnd(const FileImage& primary);

/// All hive bins of a hive, as the room in which its cells lie. A light reference to the bytes.
class HiveBins {
  public:
    /// The size in bytes and the minor version are the base block's; the file may be shorter.
    HiveBins(const FileImage& primary, std::size_t size, std::uint32_t minorVersion);

    /// The data of the allocated cell at an offset, without its size field, but no more of it than asked for.
    /// Empty when there is none; cut when it reaches beyond the hive.
    [[nodiscard]] Bytes Cell(std::uint32_t offset, std::size_t most) const;
    /// Appends the same data to a copy; returns how much there was.
    std::size_t AppendCell(std::vector<std::byte>& copy, std::uint32_t offset, std::size_t most) const;

    [[nodiscard]] std::size_t Size() const { return size_; }
    /// The hive's names may be stored with one byte a character. They may not in Windows NT 3.1.
    [[nodiscard]] bool HasCompressedNames() const { return minorVersion_ > 1; }
    /// Large data is split into segments, from Windows XP on.
    [[nodiscard]] bool HasBigData() const { return minorVersion_ > 3; }

  private:
    struct Place {
        std::size_t at = 0;  ///< in the file
        std::size_t size = 0;
    };
    /// Where the data of a cell lies; nowhere when there is none.
    [[nodiscard]] Place DataOf(std::uint32_t offset) const;

    const FileImage* primary_;
    std::size_t size_;
    std::uint32_t minorVersion_;
};

}  // namespace ostrevin::regf
