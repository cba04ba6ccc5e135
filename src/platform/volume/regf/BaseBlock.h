// The base block ("regf"): the first 4096 bytes of a primary file, and the first sector of a transaction log.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/volume/regf/Bytes.h"

namespace ostrevin::regf {

/// What kind of file a base block stands in.
enum class FileType : std::uint32_t {
    Primary = 0,
    Log = 1,         ///< dirty vector and pages, Windows XP to 8
    LogOfNt = 2,     ///< the same, up to Windows 2000
    EntriesLog = 6,  ///< log entries, Windows 8.1 and later
};

struct BaseBlock {
    /// What stands before the hive bins in a primary file.
    static constexpr std::size_t kSize = 4096;
    /// The part that holds the fields and their checksum, and that a log repeats.
    static constexpr std::size_t kFieldsSize = 512;
    /// The minor version that Windows XP and later write.
    static constexpr std::uint32_t kMinorVersionOfXp = 5;

    std::uint32_t primarySequence = 0;    ///< counted up when a write begins
    std::uint32_t secondarySequence = 0;  ///< counted up when it has ended; equal to the primary one then
    std::uint64_t lastWritten = 0;        ///< FILETIME
    std::uint32_t majorVersion = 0;       ///< always 1
    std::uint32_t minorVersion = 0;       ///< 0 and 1 Windows NT 3.1, 2 NT 3.5, 3 and later NT 4 and later
    FileType type = FileType::Primary;
    std::uint32_t format = 0;            ///< 1: direct memory load, the only one
    std::uint32_t rootCell = 0;          ///< offset of the root key's cell
    std::uint32_t binsSize = 0;          ///< size of all hive bins in bytes, a multiple of 4096
    std::uint32_t clusteringFactor = 0;  ///< sector size of the disk in units of 512 bytes
    bool rightChecksum = false;          ///< the stored checksum is that of the fields

    /// Reads a base block; none when it is cut off or does not begin with "regf".
    [[nodiscard]] static std::optional<BaseBlock> Read(Bytes bytes);

    /// A version that this reader knows: 1.0 to 1.6.
    [[nodiscard]] bool IsSupportedVersion() const;
    /// The block is that of a primary file, and no write was cut off while it was written itself.
    [[nodiscard]] bool IsSoundPrimary() const { return IsSound() && type == FileType::Primary; }
    /// The same for the block of a transaction log.
    [[nodiscard]] bool IsSoundLog() const { return IsSound() && type != FileType::Primary; }
    /// No write was cut off.
    [[nodiscard]] bool IsClean() const { return primarySequence == secondarySequence; }

  private:
    [[nodiscard]] bool IsSound() const;
};

/// The checksum of a base block's first 508 bytes: the exclusive or of its 32-bit integers, but never 0 or
/// 0xFFFFFFFF, which become 1 and 0xFFFFFFFE.
[[nodiscard]] std::uint32_t BaseBlockChecksum(Bytes baseBlock);

}  // namespace ostrevin::regf
