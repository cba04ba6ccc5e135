// The header of a log entry as Windows 10 wrote it, to hold what we know of such entries against.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ostrevin {

/// The entry replaced the five pages of its hive's first and only hive bins at once.
inline constexpr std::array<std::uint8_t, 40> kRealLogEntryHeader = {
    0x48, 0x76, 0x4C, 0x45,                          // "HvLE"
    0x00, 0x5E, 0x00, 0x00,                          // size of the entry: 24064
    0x00, 0x00, 0x00, 0x00,                          // flags
    0x02, 0x00, 0x00, 0x00,                          // sequence number: 2
    0x00, 0x50, 0x00, 0x00,                          // size of the hive bins: 20480
    0x01, 0x00, 0x00, 0x00,                          // number of dirty pages: 1
    0x31, 0xE4, 0x07, 0x18, 0x66, 0x6C, 0x86, 0x67,  // hash of what follows on the header
    0x02, 0x7F, 0x65, 0xA7, 0xCF, 0xF3, 0x44, 0xCD,  // hash of the 32 bytes before it
};

/// How many of those bytes the last hash is of.
inline constexpr std::size_t kRealLogEntryHashed = 32;
/// That hash.
inline constexpr std::uint64_t kRealLogEntryHash = 0xCD44F3CFA7657F02;

}  // namespace ostrevin
