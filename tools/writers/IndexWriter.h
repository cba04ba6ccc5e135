// Writes index files of the browser's cache ("index.dat", version 5.2).
//
// Facts: "MSIE Cache File (index.dat) format specification" (public, by J. Metz).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrevin::samples {

struct IndexRecord {
    enum class Kind {
        Url,
        Leak,      ///< like a URL record, but no longer in the hash table
        Redirect,  ///< an address alone
        Raw,       ///< the bytes of raw, on whole blocks
    };
    Kind kind = Kind::Url;
    std::uint64_t modified = 0;  ///< FILETIME at record offset 8
    std::uint64_t accessed = 0;  ///< FILETIME at record offset 16
    std::uint64_t expires = 0;   ///< FILETIME, stored in FAT form; likewise the time of the last check
    std::string address;         ///< bytes as stored
    std::string fileName;        ///< of the cached file; empty for none
    std::uint8_t folder = 0xFE;  ///< index of the cache folder; 0xFE for history and cookies
    std::string headers;         ///< the answer's headers; empty for none
    std::uint32_t fileSize = 0;
    std::uint32_t hits = 1;
    std::vector<std::byte> raw;

    // Oddities.
    std::optional<std::uint32_t> blocks;          ///< in place of the count that the record needs
    std::optional<std::uint32_t> addressPointer;  ///< in place of 104, where the address stands
};

struct IndexOptions {
    std::vector<std::string> folders{};         ///< names of cache folders, 8 characters each
    std::optional<std::uint32_t> scanOffset{};  ///< in place of the hash table's offset
    std::uint32_t spareBlocks = 0;  ///< free blocks at the end, at least; the file grows in steps of 16 KiB
    std::size_t cutBytes = 0;       ///< taken off the end of the file, which ends right after its records
};

inline constexpr std::size_t kIndexBlock = 128;
inline constexpr std::size_t kIndexBlocksStart = 0x4000;
inline constexpr std::size_t kAddressOffset = 104;  ///< of the address in URL and LEAK records

/// The file: header, hash tables, then the records in order. URL records are in the hash tables, under a hash
/// of our own (readers of the file do not need it). A file of more than 126,336 blocks has more than its
/// bitmap can tell of, and not every reader takes it.
std::vector<std::byte> WriteIndex(const std::vector<IndexRecord>& records, const IndexOptions& options);

/// Where in its block the first byte after the address's NUL falls (0: the NUL is the block's last byte).
std::size_t AddressEndInBlock(std::string_view address);
/// The address with x added until its NUL is followed by a byte at this place in a block (0 to 127).
std::string PadAddress(std::string address, std::size_t endInBlock);

}  // namespace ostrevin::samples
