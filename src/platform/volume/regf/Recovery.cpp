#include "platform/volume/regf/Recovery.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "platform/volume/regf/DirtyVector.h"
#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/KeyNode.h"
#include "platform/volume/regf/LogEntry.h"

namespace ostrevin::regf {
namespace {

/// Makes the image reach to an end within the hive bins. False when it would have to grow by more than
/// the bytes that a log brings: what is new in a hive is all in the log.
bool GrowTo(FileImage& primary, std::size_t binsEnd, std::size_t broughtBytes) {
    const std::size_t end = BaseBlock::kSize + binsEnd;
    return end <= primary.Size() || (end - primary.Size() <= broughtBytes && primary.GrowTo(end));
}

/// The base block of a log that was written to its end; none when there is no such log.
std::optional<BaseBlock> ReadLogBase(const FileImage* log) {
    const auto block = log == nullptr ? std::nullopt : BaseBlock::Read(log->At(0, BaseBlock::kFieldsSize));
    return block && block->IsSoundLog() && block->IsClean() ? block : std::nullopt;
}

// In what follows, sound is the primary file's own base block; null when that is not sound.

/// The base block of a recovered hive: the primary file's own, otherwise the log's.
BaseBlock RecoveredBase(const BaseBlock* sound, BaseBlock logBase) {
    if (sound != nullptr) {
        return *sound;
    }
    logBase.type = FileType::Primary;
    return logBase;
}

// --- Logs with a dirty vector

/// Copies the dirty pages. Stops at a hive bin whose new header is not sound, as Windows does.
void ApplyDirtyPages(FileImage& primary, const DirtyVector& vector) {
    std::size_t copied = 0;
    std::size_t nextBin = 0;
    for (std::size_t page = 0; copied < vector.Count(); ++page) {
        const std::size_t at = page * DirtyVector::kPageSize;
        const bool isDirty = vector.IsDirty(page);
        if (at == nextBin) {
            const auto bin = isDirty ? HiveBin::Read(vector.Page(copied), at) : ReadBin(primary, at);
            if (isDirty && !bin) {
                return;
            }
            nextBin += bin ? bin->size : HiveBin::kUnit;
        }
        if (isDirty) {
            primary.Write(BaseBlock::kSize + at, vector.Page(copied));
            ++copied;
        }
    }
}

struct DirtyLog {
    BaseBlock base;
    DirtyVector vector;
};

/// Applies a log; false, and leaves the image alone, when the hive would have a hole.
bool ApplyLog(FileImage& primary, const DirtyLog& log) {
    if (!GrowTo(primary, log.vector.End(), log.vector.Count() * DirtyVector::kPageSize)) {
        return false;
    }
    ApplyDirtyPages(primary, log.vector);
    return true;
}

std::vector<DirtyLog> DirtyLogs(const LogImages& logs) {
    std::vector<DirtyLog> found;
    for (const FileImage* log : {logs.log1.get(), logs.log2.get(), logs.log.get()}) {
        const auto base = ReadLogBase(log);
        if (!base || base->type == FileType::EntriesLog) {
            continue;
        }
        if (const auto vector = DirtyVector::Read(*log, *base)) {
            found.push_back({*base, *vector});
        }
    }
    return found;
}

/// Applies the first log that was written at the same time as the primary file.
std::optional<BaseBlock> CompleteFromDirtyVector(FileImage& primary, const BaseBlock& sound,
                                                 const std::vector<DirtyLog>& logs) {
    for (const DirtyLog& log : logs) {
        if (log.base.lastWritten == sound.lastWritten && ApplyLog(primary, log)) {
            BaseBlock recovered = sound;
            recovered.binsSize = log.base.binsSize;
            return recovered;
        }
    }
    return std::nullopt;
}

/// The same for a primary file whose base block is damaged.
std::optional<BaseBlock> RestoreFromDirtyVector(FileImage& primary, const HiveBin& firstBin,
                                                std::vector<DirtyLog> logs) {
    std::ranges::stable_sort(logs, std::ranges::greater(), [&](const DirtyLog& log) {
        return std::pair(log.base.lastWritten == firstBin.timestamp, log.base.lastWritten);
    });
    const auto asItStands = BaseBlockAsItStands(primary);
    const bool hasRootKey = asItStands && HasRootKey(primary, *asItStands);
    const std::size_t soundBins = SoundBinsEnd(primary);
    for (const DirtyLog& log : logs) {
        const BaseBlock recovered = RecoveredBase(nullptr, log.base);
        if ((hasRootKey && log.base.lastWritten < firstBin.timestamp) || !ApplyLog(primary, log)) {
            continue;
        }
        if (HasRootKey(primary, recovered) &&
            SoundBinsEnd(primary) >= std::min<std::size_t>(soundBins, recovered.binsSize)) {
            return recovered;
        }
        primary.Forget();
    }
    return std::nullopt;
}

// --- Logs with entries

struct EntriesLog {
    BaseBlock base;  ///< its sequence number is that of the first entry
    const FileImage* image = nullptr;
};

bool ApplyEntry(FileImage& primary, const LogEntry& entry) {
    std::size_t end = 0;
    for (const LogEntry::Page& page : entry.pages) {
        end = std::max(end, page.offset + page.content.size());
    }
    if (!GrowTo(primary, end, entry.size)) {
        return false;
    }
    for (const LogEntry::Page& page : entry.pages) {
        primary.Write(BaseBlock::kSize + page.offset, page.content);
    }
    return true;
}

/// Applies the entries of a log as long as they are sound and in sequence. Returns how many there were; the
/// last one's size of the hive bins becomes that of the base block.
std::uint32_t ApplyEntries(FileImage& primary, BaseBlock& base, const EntriesLog& log) {
    std::uint32_t count = 0;
    std::size_t at = LogEntry::kFirst;
    while (const auto entry = LogEntry::Read(*log.image, at)) {
        if (entry->sequence != log.base.primarySequence + count || !ApplyEntry(primary, *entry)) {
            break;
        }
        base.binsSize = entry->binsSize;
        at += entry->size;
        ++count;
    }
    return count;
}

/// The logs to apply, in order.
std::vector<EntriesLog> EntriesLogs(const BaseBlock* sound, const LogImages& logs) {
    std::vector<EntriesLog> found;
    for (const FileImage* log : {logs.log1.get(), logs.log2.get()}) {
        const auto logBase = ReadLogBase(log);
        if (logBase && logBase->type == FileType::EntriesLog &&
            (sound == nullptr || logBase->primarySequence >= sound->secondarySequence)) {
            found.push_back({*logBase, log});
        }
    }
    std::ranges::stable_sort(found, {}, [](const EntriesLog& log) { return log.base.primarySequence; });
    if (sound == nullptr && found.size() > 1) {
        found.erase(found.begin());
    }
    return found;
}

std::optional<BaseBlock> RecoverFromEntries(FileImage& primary, const BaseBlock* sound,
                                            const LogImages& logs) {
    const std::vector<EntriesLog> entriesLogs = EntriesLogs(sound, logs);
    if (entriesLogs.empty()) {
        return std::nullopt;
    }
    BaseBlock recovered = RecoveredBase(sound, entriesLogs.front().base);
    std::uint32_t next = entriesLogs.front().base.primarySequence;
    bool isApplied = sound == nullptr;
    for (const EntriesLog& log : entriesLogs) {
        if (log.base.primarySequence != next) {
            break;
        }
        const std::uint32_t count = ApplyEntries(primary, recovered, log);
        isApplied = isApplied || count > 0;
        next += count;
    }
    return isApplied ? std::optional(recovered) : std::nullopt;
}

}  // namespace

std::optional<BaseBlock> RecoverFromLogs(FileImage& primary, const LogImages& logs) {
    const auto base = BaseBlock::Read(primary.At(0, BaseBlock::kFieldsSize));
    const BaseBlock* const sound = base && base->IsSoundPrimary() ? &*base : nullptr;
    const auto firstBin = ReadBin(primary, 0);
    if (sound == nullptr && !firstBin) {
        return std::nullopt;
    }
    const auto recovered = RecoverFromEntries(primary, sound, logs);
    if (recovered && (sound != nullptr || HasRootKey(primary, *recovered))) {
        return recovered;
    }
    primary.Forget();
    return sound != nullptr ? CompleteFromDirtyVector(primary, *sound, DirtyLogs(logs))
                            : RestoreFromDirtyVector(primary, *firstBin, DirtyLogs(logs));
}

std::optional<BaseBlock> BaseBlockAsItStands(const FileImage& primary) {
    const auto stored = BaseBlock::Read(primary.At(0, BaseBlock::kFieldsSize));
    if (stored && stored->rightChecksum) {
        return stored;
    }
    if (!ReadBin(primary, 0)) {
        return stored;
    }
    BaseBlock block = stored.value_or(BaseBlock());
    if (!block.IsSupportedVersion()) {
        block.majorVersion = 1;
        block.minorVersion = BaseBlock::kMinorVersionOfXp;
    }
    block.binsSize = std::max(block.binsSize, static_cast<std::uint32_t>(SoundBinsEnd(primary)));
    for (const std::uint32_t minorVersion : {block.minorVersion, BaseBlock::kMinorVersionOfXp}) {
        for (const std::uint32_t rootCell : {block.rootCell, std::uint32_t{HiveBin::kHeaderSize}}) {
            BaseBlock attempt = block;
            attempt.minorVersion = minorVersion;
            attempt.rootCell = rootCell;
            if (HasRootKey(primary, attempt)) {
                return attempt;
            }
        }
    }
    return block;
}

bool HasRootKey(const FileImage& primary, const BaseBlock& base) {
    return KeyNode::Read(HiveBins(primary, base.binsSize, base.minorVersion), base.rootCell).has_value();
}

}  // namespace ostrevin::regf
