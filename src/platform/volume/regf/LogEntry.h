// The log entry ("HvLE") of a transaction log of Windows 8.1 and later: pages that were written at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/volume/regf/Bytes.h"
#include "platform/volume/regf/FileImage.h"

namespace ostrevin::regf {

struct LogEntry {
    /// Where the first entry of a log stands. Each further one follows on the one before.
    static constexpr std::size_t kFirst = 512;
    /// What the hashes of every entry start from.
    static constexpr std::uint64_t kHashSeed = 0x82EF4D887A4E55C5;

    struct Page {
        std::uint32_t offset = 0;  ///< among the hive bins, in bytes
        Bytes content;
    };

    std::uint32_t size = 0;      ///< of the whole entry, a multiple of 512
    std::uint32_t sequence = 0;  ///< one more than that of the entry before
    std::uint32_t binsSize = 0;  ///< size of all hive bins after the entry is applied
    std::vector<Page> pages;     ///< each of them within that size

    /// Reads the entry at an offset of a log; none when there is no sound one, with both its hashes right.
    /// The log has to live as long as the entry.
    [[nodiscard]] static std::optional<LogEntry> Read(const FileImage& log, std::size_t at);
};

}  // namespace ostrevin::regf
