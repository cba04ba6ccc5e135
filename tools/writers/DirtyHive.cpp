#include "tools/writers/DirtyHive.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

#include "tools/writers/ByteBuffer.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin::samples {
namespace {

constexpr std::size_t kPage = 512;
constexpr std::size_t kTrackedBlock = 4096;  // Windows keeps track of changes in these

enum BaseBlockField : std::size_t {
    kPrimarySequence = 4,
    kSecondarySequence = 8,
    kFileType = 28,
    kBinsSize = 40,
    kChecksum = 508,
};

void Put(std::span<std::byte> bytes, std::size_t offset, std::uint32_t value) {
    ByteBuffer field;
    field.U32(value);
    std::copy(field.View().begin(), field.View().end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// The first sector of a hive's base block, as logs keep it.
std::vector<std::byte> LogBaseBlock(std::span<const std::byte> hive, std::uint32_t fileType,
                                    std::uint32_t sequence) {
    const auto sector = hive.first(kPage);
    std::vector<std::byte> block(sector.begin(), sector.end());
    Put(block, kFileType, fileType);
    Put(block, kPrimarySequence, sequence);
    Put(block, kSecondarySequence, sequence);
    UpdateChecksum(block);
    return block;
}

/// The offsets of the tracked blocks, in the hive bins data of after, that differ from those of before.
std::vector<std::size_t> ChangedBlocks(std::span<const std::byte> before, std::span<const std::byte> after) {
    std::vector<std::size_t> changed;
    const auto oldBins = before.subspan(kBaseBlockSize);
    const auto newBins = after.subspan(kBaseBlockSize);
    for (std::size_t offset = 0; offset < newBins.size(); offset += kTrackedBlock) {
        const auto block = newBins.subspan(offset, kTrackedBlock);
        if (offset >= oldBins.size() ||
            !std::equal(block.begin(), block.end(), oldBins.begin() + static_cast<std::ptrdiff_t>(offset))) {
            changed.push_back(offset);
        }
    }
    return changed;
}

void CheckHive(std::span<const std::byte> hive) {
    if (hive.size() < kBaseBlockSize + kTrackedBlock || hive.size() % kTrackedBlock != 0) {
        throw std::invalid_argument("not a whole hive");
    }
}

std::vector<std::byte> DirtyVectorLog(std::span<const std::byte> after, std::span<const std::size_t> changed,
                                      std::uint32_t sequence) {
    constexpr std::size_t kPagesOfBlock = kTrackedBlock / kPage;
    static_assert(kPagesOfBlock == 8, "one byte of the bitmap stands for one tracked block");
    std::vector<std::byte> bitmap((after.size() - kBaseBlockSize) / kTrackedBlock);
    for (const std::size_t offset : changed) {
        bitmap[offset / kTrackedBlock] = std::byte{0xFF};
    }
    ByteBuffer log;
    log.Bytes(LogBaseBlock(after, 1, sequence));
    log.Text("DIRT");
    log.Bytes(bitmap);
    log.Align(kPage);
    for (const std::size_t offset : changed) {
        log.Bytes(after.subspan(kBaseBlockSize + offset, kTrackedBlock));
    }
    return log.Take();
}

ByteBuffer LogEntry(std::span<const std::byte> before, std::span<const std::byte> after,
                    std::uint32_t sequence) {
    constexpr std::size_t kHeader = 40;
    const std::vector<std::size_t> changed = ChangedBlocks(before, after);
    ByteBuffer entry;
    entry.Text("HvLE");
    entry.U32(0);  // the size, below
    entry.U32(0);
    entry.U32(sequence);
    entry.U32(Size32(after.size() - kBaseBlockSize));
    entry.U32(Size32(changed.size()));
    entry.PadTo(kHeader);
    for (const std::size_t offset : changed) {
        entry.U32(Size32(offset));
        entry.U32(Size32(kTrackedBlock));
    }
    for (const std::size_t offset : changed) {
        entry.Bytes(after.subspan(kBaseBlockSize + offset, kTrackedBlock));
    }
    entry.Align(kPage);
    entry.PutU32(4, entry.Offset());
    entry.PutU64(24, Marvin32(std::span(entry.View()).subspan(kHeader), kLogSeed));
    entry.PutU64(32, Marvin32(std::span(entry.View()).first(32), kLogSeed));
    return entry;
}

std::uint32_t MarvinWord(std::span<const std::byte> bytes) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        word |= std::to_integer<std::uint32_t>(bytes[i]) << (8 * i);
    }
    return word;
}

}  // namespace

DirtyHive MakeDirtyHive(std::span<const std::byte> before, std::span<const std::byte> after,
                        std::size_t pagesWritten) {
    CheckHive(before);
    CheckHive(after);
    const std::uint32_t sequence = U32At(before, kPrimarySequence) + 1;
    const std::vector<std::size_t> changed = ChangedBlocks(before, after);

    DirtyHive result;
    // The base block goes out first, and the file has its new length by then.
    result.primary.assign(before.begin(), before.end());
    result.primary.resize(std::max(before.size(), after.size()));
    std::copy_n(after.begin(), kBaseBlockSize, result.primary.begin());
    Put(result.primary, kPrimarySequence, sequence);
    Put(result.primary, kSecondarySequence, sequence - 1);
    UpdateChecksum(result.primary);
    for (std::size_t i = 0; i < std::min(pagesWritten, changed.size()); ++i) {
        const auto offset = static_cast<std::ptrdiff_t>(kBaseBlockSize + changed[i]);
        std::copy_n(after.begin() + offset, kTrackedBlock, result.primary.begin() + offset);
    }
    result.log = DirtyVectorLog(after, changed, sequence);
    return result;
}

DirtyHive MakeDirtyHiveWithEntries(std::span<const std::vector<std::byte>> states,
                                   std::size_t entriesInFirst) {
    if (states.size() < 2) {
        throw std::invalid_argument("an entry needs a state before and a state after");
    }
    std::for_each(states.begin(), states.end(), CheckHive);
    DirtyHive result;
    result.primary = states.front();
    const std::uint32_t clean = U32At(result.primary, kPrimarySequence);
    Put(result.primary, kPrimarySequence, clean + 1);
    UpdateChecksum(result.primary);

    for (std::size_t i = 1; i < states.size(); ++i) {
        std::vector<std::byte>& log = i <= entriesInFirst ? result.log : result.log2;
        const std::uint32_t sequence = clean + Size32(i);
        if (log.empty()) {
            log = LogBaseBlock(states.front(), 6, sequence);
        }
        const ByteBuffer entry = LogEntry(states[i - 1], states[i], sequence);
        log.insert(log.end(), entry.View().begin(), entry.View().end());
    }
    return result;
}

std::uint64_t Marvin32(std::span<const std::byte> data, std::uint64_t seed) {
    auto low = static_cast<std::uint32_t>(seed);
    auto high = static_cast<std::uint32_t>(seed >> 32U);
    const auto mix = [&](std::uint32_t word) {
        low += word;
        high ^= low;
        low = std::rotl(low, 20) + high;
        high = std::rotl(high, 9) ^ low;
        low = std::rotl(low, 27) + high;
        high = std::rotl(high, 19);
    };
    for (; data.size() >= 4; data = data.subspan(4)) {
        mix(MarvinWord(data.first(4)));
    }
    mix(MarvinWord(data) | 0x80U << (8 * data.size()));
    mix(0);
    return (static_cast<std::uint64_t>(high) << 32U) | low;
}

void UpdateChecksum(std::span<std::byte> baseBlock) {
    Put(baseBlock, kChecksum, BaseBlockChecksum(baseBlock));
}

}  // namespace ostrevin::samples
