#include "platform/volume/documents/ZipDirectory.h"

#include <string_view>

#include "platform/volume/documents/FileBytes.h"
#include "platform/volume/documents/Inflate.h"

namespace ostrevin::documents {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kEndSignature = "PK\5\6"sv;
constexpr std::string_view kEntrySignature = "PK\1\2"sv;
constexpr std::string_view kLocalSignature = "PK\3\4"sv;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kEntrySize = 46;
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kLongestComment = 0xFFFF;

/// Calls for each record in the last bytes that could be the end of an archive, with the offset of the record
/// in the file and the bytes from there; whether a call gave true.
template <typename Test>
bool AnyEnd(InputFile& file, Test test) {
    const std::string tail = BytesAtEnd(file, kEndSize + kLongestComment);
    const std::uint64_t start = file.Size() - tail.size();
    for (std::size_t at = tail.find(kEndSignature); at != std::string::npos;
         at = tail.find(kEndSignature, at + 1)) {
        const std::string_view record = std::string_view(tail).substr(at);
        if (record.size() >= kEndSize && test(start + at, record)) {
            return true;
        }
    }
    return false;
}

/// Whether the comment of the record ends where the file does.
bool EndsTheFile(std::string_view record) {
    return record.size() == kEndSize + Number16(record, 20);
}

}  // namespace

std::optional<std::vector<ZipEntry>> ReadZipDirectory(InputFile& file) {
    constexpr std::uint32_t kMost = std::uint32_t{16} << 20U;
    const std::string end = BytesAtEnd(file, kEndSize);
    if (end.size() < kEndSize || !end.starts_with(kEndSignature) || !EndsTheFile(end)) {
        return std::nullopt;
    }
    const std::size_t count = Number16(end, 10);
    const std::uint32_t size = Number32(end, 12);
    const std::uint32_t offset = Number32(end, 16);
    const std::string directory = size <= kMost ? BytesAt(file, offset, size) : std::string();
    if (Number32(end, 4) != 0 || std::uint64_t{offset} + size + kEndSize != file.Size() ||
        directory.size() != size) {
        return std::nullopt;
    }
    std::vector<ZipEntry> entries;
    std::string_view left = directory;
    while (left.size() >= kEntrySize && left.starts_with(kEntrySignature)) {
        const std::size_t nameSize = Number16(left, 28);
        const std::size_t whole = kEntrySize + nameSize + Number16(left, 30) + Number16(left, 32);
        if (whole > left.size()) {
            return std::nullopt;
        }
        entries.push_back({std::string(left.substr(kEntrySize, nameSize)), Number16(left, 8),
                           Number16(left, 10), Number32(left, 20), Number32(left, 42)});
        left.remove_prefix(whole);
    }
    return left.empty() && entries.size() == count ? std::optional(std::move(entries)) : std::nullopt;
}

std::optional<ZipLocalHeader> ReadZipLocalHeader(InputFile& file, const ZipEntry& entry) {
    const std::string fixed = BytesAt(file, entry.offset, kLocalSize);
    if (fixed.size() < kLocalSize || !fixed.starts_with(kLocalSignature)) {
        return std::nullopt;
    }
    const std::size_t nameSize = Number16(fixed, 26);
    const std::size_t extraSize = Number16(fixed, 28);
    const std::string rest = BytesAt(file, std::uint64_t{entry.offset} + kLocalSize, nameSize + extraSize);
    if (rest.size() != nameSize + extraSize) {
        return std::nullopt;
    }
    return ZipLocalHeader{rest.substr(0, nameSize), rest.substr(nameSize),
                          std::uint64_t{entry.offset} + kLocalSize + rest.size()};
}

std::optional<std::string> ReadZipEntry(InputFile& file, const ZipEntry& entry, std::size_t most) {
    constexpr std::uint16_t kEncrypted = 1;
    constexpr std::uint16_t kStored = 0;
    constexpr std::uint16_t kDeflated = 8;
    const std::optional<ZipLocalHeader> header = ReadZipLocalHeader(file, entry);
    if (!header || (entry.flags & kEncrypted) != 0 || entry.packedSize > most) {
        return std::nullopt;
    }
    std::string packed = BytesAt(file, header->data, entry.packedSize);
    if (packed.size() != entry.packedSize) {
        return std::nullopt;
    }
    if (entry.method == kStored) {
        return packed;
    }
    return entry.method == kDeflated ? Inflate(packed, most) : std::nullopt;
}

bool EndsAsZip(InputFile& file) {
    return AnyEnd(file, [](std::uint64_t /*at*/, std::string_view record) { return EndsTheFile(record); });
}

bool HoldsZipNearEnd(InputFile& file) {
    return AnyEnd(file, [&](std::uint64_t at, std::string_view record) {
        const std::uint32_t size = Number32(record, 12);
        return EndsTheFile(record) ||
               (size <= at && BytesAt(file, at - size, kEntrySignature.size()) == kEntrySignature);
    });
}

}  // namespace ostrevin::documents
