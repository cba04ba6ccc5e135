// Makes hives that were not written out, together with the transaction logs that complete them.
//
// Facts: "Windows registry file format specification" (public, by M. Suhanov).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ostrevin::samples {

struct DirtyHive {
    std::vector<std::byte> primary;
    std::vector<std::byte> log;   ///< NAME.LOG or NAME.LOG1 of the older layout, NAME.LOG1 of the newer one
    std::vector<std::byte> log2;  ///< NAME.LOG2; the newer layout only
};

/// The older layout, of Windows 2000 to 7. Takes clean hives (WriteHive) of the state before and of the state
/// after the write that was cut off. The primary file has the new base block with a lagging secondary
/// sequence number, the first pagesWritten of the blocks of 4096 bytes that changed, and the others old. The
/// log holds every page that changed.
DirtyHive MakeDirtyHive(std::span<const std::byte> before, std::span<const std::byte> after,
                        std::size_t pagesWritten = 0);

/// The newer layout, of Windows 8.1 and later. Takes clean hives of successive states, the oldest first and
/// at least two; the primary file holds the oldest. Each further state is one log entry; the first
/// entriesInFirst of them stand in the first log.
DirtyHive MakeDirtyHiveWithEntries(std::span<const std::vector<std::byte>> states,
                                   std::size_t entriesInFirst);

/// The Marvin32 hash under which the entries of the newer layout stand.
std::uint64_t Marvin32(std::span<const std::byte> data, std::uint64_t seed);
inline constexpr std::uint64_t kLogSeed = 0x82EF4D887A4E55C5;

/// The checksum of a base block set anew after a test changed the block.
void UpdateChecksum(std::span<std::byte> baseBlock);

}  // namespace ostrevin::samples
