// The directory at the end of a ZIP file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin::documents {

/// A file in the archive, as the directory describes it.
struct ZipEntry {
    std::string name;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;  ///< 0 stored, 8 deflated
    std::uint32_t packedSize = 0;
    std::uint32_t offset = 0;  ///< of its own header, which its bytes follow
};

/// The header that stands before the bytes of an entry.
struct ZipLocalHeader {
    std::string name;
    std::string extra;
    std::uint64_t data = 0;  ///< where the bytes begin
};

/// The entries of a file that is an archive and nothing besides: the directory ends where the file ends, with
/// no comment, and begins where its own record says. None for anything else, and for a directory of more than
/// 16 MB.
[[nodiscard]] std::optional<std::vector<ZipEntry>> ReadZipDirectory(InputFile& file);
[[nodiscard]] std::optional<ZipLocalHeader> ReadZipLocalHeader(InputFile& file, const ZipEntry& entry);
/// What an entry holds; none when it is damaged, encrypted, packed in another way, or larger than the most.
[[nodiscard]] std::optional<std::string> ReadZipEntry(InputFile& file, const ZipEntry& entry,
                                                      std::size_t most);

/// Whether programs that look for an archive from the end of a file find one in it.
[[nodiscard]] bool EndsAsZip(InputFile& file);
/// The same, where bytes may follow the archive.
[[nodiscard]] bool HoldsZipNearEnd(InputFile& file);

}  // namespace ostrevin::documents
