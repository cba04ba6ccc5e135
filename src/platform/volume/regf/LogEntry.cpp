#include "platform/volume/regf/LogEntry.h"

#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/Marvin32.h"

namespace ostrevin::regf {
namespace {

constexpr std::size_t kHeaderSize = 40;
constexpr std::size_t kReferenceSize = 8;
constexpr std::uint32_t kSizeUnit = 512;

/// The first hash is that of all behind the header, the second that of the header up to itself.
bool HasRightHashes(Bytes entry) {
    constexpr std::size_t kHash1 = 24;
    constexpr std::size_t kHash2 = 32;
    constexpr std::uint64_t kSeed = LogEntry::kHashSeed;
    return IntegerAt<std::uint64_t>(entry, kHash2) == Marvin32(entry.first(kHash2), kSeed) &&
           IntegerAt<std::uint64_t>(entry, kHash1) == Marvin32(entry.subspan(kHeaderSize), kSeed);
}

/// The pages of an entry; none when one is missing or lies outside of the hive bins.
std::optional<std::vector<LogEntry::Page>> ReadPages(Bytes entry, std::uint32_t count,
                                                     std::uint32_t binsSize) {
    if (count > (entry.size() - kHeaderSize) / kReferenceSize) {
        return std::nullopt;
    }
    Bytes content = entry.subspan(kHeaderSize + count * kReferenceSize);
    std::vector<LogEntry::Page> pages;
    pages.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t reference = kHeaderSize + i * kReferenceSize;
        const auto offset = IntegerAt<std::uint32_t>(entry, reference);
        const auto size = IntegerAt<std::uint32_t>(entry, reference + 4);
        if (size > content.size() || offset > binsSize || size > binsSize - offset) {
            return std::nullopt;
        }
        pages.push_back({offset, content.first(size)});
        content = content.subspan(size);
    }
    return pages;
}

}  // namespace

std::optional<LogEntry> LogEntry::Read(const FileImage& log, std::size_t at) {
    const Bytes header = log.At(at, kHeaderSize);
    if (header.size() < kHeaderSize || !HasSignature(header, "HvLE")) {
        return std::nullopt;
    }
    LogEntry entry;
    entry.size = IntegerAt<std::uint32_t>(header, 4);
    entry.sequence = IntegerAt<std::uint32_t>(header, 12);
    entry.binsSize = IntegerAt<std::uint32_t>(header, 16);
    if (entry.size < kHeaderSize || entry.size % kSizeUnit != 0 || entry.size > log.Size() - at ||
        entry.binsSize == 0 || entry.binsSize % HiveBin::kUnit != 0) {
        return std::nullopt;
    }
    const Bytes bytes = log.At(at, entry.size);
    if (!HasRightHashes(bytes)) {
        return std::nullopt;
    }
    auto pages = ReadPages(bytes, IntegerAt<std::uint32_t>(header, 20), entry.binsSize);
    if (!pages) {
        return std::nullopt;
    }
    entry.pages = std::move(*pages);
    return entry;
}

}  // namespace ostrevin::regf
