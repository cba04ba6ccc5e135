#include "platform/volume/regf/Recovery.h"

#include <algorithm>
#include <utility>

#include "platform/volume/regf/DirtyVector.h"
#include "platform/volume/regf/Hive.h"
#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/LogEntry.h"

namespace ostrevin::regf {
namespace {

using Primary = std::vector<std::byte>;

Bytes Bins(const Primary& primary) {
    return Bytes(primary).subspan(std::min(BaseBlock::kSize, primary.size()));
}

/// Overwrites part of the hive bins, which reach that far.
void WriteBins(Primary& primary, std::size_t at, Bytes content) {
    std::ranges::copy(content, primary.begin() + static_cast<std::ptrdiff_t>(BaseBlock::kSize + at));
}

/// Makes the file reach to an end within the hive bins. False when it would have to grow by more than
/// the bytes that a log brings: what is new in a hive is all in the log.
bool GrowTo(Primary& primary, std::size_t binsEnd, std::size_t broughtBytes) {
    const std::size_t end = BaseBlock::kSize + binsEnd;
    if (end <= primary.size()) {
        return true;
    }
    if (end - primary.size() > broughtBytes) {
        return false;
    }
    primary.resize(end);
    return true;
}

/// The base block of a log that was written to its end; none when there is no such log.
std::optional<BaseBlock> ReadLogBase(Bytes log) {
    const auto block = BaseBlock::Read(log);
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
void ApplyDirtyPages(Primary& primary, const DirtyVector& vector) {
    std::size_t copied = 0;
    std::size_t nextBin = 0;
    for (std::size_t page = 0; copied < vector.Count(); ++page) {
        const std::size_t at = page * DirtyVector::kPageSize;
        const bool isDirty = vector.IsDirty(page);
        if (at == nextBin) {
            const Bytes old = Bins(primary);
            const auto bin =
                HiveBin::Read(isDirty ? vector.Page(copied) : old.subspan(std::min(at, old.size())), at);
            if (isDirty && !bin) {
                return;
            }
            nextBin += bin ? bin->size : HiveBin::kUnit;
        }
        if (isDirty) {
            WriteBins(primary, at, vector.Page(copied));
            ++copied;
        }
    }
}

/// Applies the first log that was written at the given time.
std::optional<BaseBlock> RecoverFromDirtyVector(Primary& primary, const BaseBlock* sound, std::uint64_t time,
                                                const Logs& logs) {
    for (const Bytes log : {Bytes(logs.log1), Bytes(logs.log2), Bytes(logs.log)}) {
        const auto logBase = ReadLogBase(log);
        if (!logBase || logBase->type == FileType::EntriesLog || logBase->lastWritten != time) {
            continue;
        }
        const auto vector = DirtyVector::Read(log, *logBase);
        if (!vector || !GrowTo(primary, vector->End(), vector->Count() * DirtyVector::kPageSize)) {
            continue;
        }
        ApplyDirtyPages(primary, *vector);
        BaseBlock recovered = RecoveredBase(sound, *logBase);
        recovered.binsSize = logBase->binsSize;
        return recovered;
    }
    return std::nullopt;
}

// --- Logs with entries

struct EntriesLog {
    BaseBlock base;  ///< its sequence number is that of the first entry
    Bytes bytes;
};

bool ApplyEntry(Primary& primary, const LogEntry& entry) {
    std::size_t end = 0;
    for (const LogEntry::Page& page : entry.pages) {
        end = std::max(end, page.offset + page.content.size());
    }
    if (!GrowTo(primary, end, entry.size)) {
        return false;
    }
    for (const LogEntry::Page& page : entry.pages) {
        WriteBins(primary, page.offset, page.content);
    }
    return true;
}

/// Applies the entries of a log as long as they are sound and in sequence. Returns how many there were; the
/// last one's size of the hive bins becomes that of the base block.
std::uint32_t ApplyEntries(Primary& primary, BaseBlock& base, const EntriesLog& log) {
    std::uint32_t count = 0;
    std::size_t at = LogEntry::kFirst;
    while (const auto entry = LogEntry::Read(log.bytes, at)) {
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
std::vector<EntriesLog> EntriesLogs(const BaseBlock* sound, const Logs& logs) {
    std::vector<EntriesLog> found;
    for (const Bytes log : {Bytes(logs.log1), Bytes(logs.log2)}) {
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

std::optional<BaseBlock> RecoverFromEntries(Primary& primary, const BaseBlock* sound, const Logs& logs) {
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

std::optional<BaseBlock> RecoverFromLogs(std::vector<std::byte>& primary, const Logs& logs) {
    const auto base = BaseBlock::Read(primary);
    const BaseBlock* const sound = base && base->IsSoundPrimary() ? &*base : nullptr;
    const auto firstBin = HiveBin::Read(Bins(primary), 0);
    if (sound == nullptr && !firstBin) {
        return std::nullopt;
    }
    if (const auto recovered = RecoverFromEntries(primary, sound, logs)) {
        return recovered;
    }
    const std::uint64_t time = sound != nullptr ? sound->lastWritten : firstBin->timestamp;
    return RecoverFromDirtyVector(primary, sound, time, logs);
}

}  // namespace ostrevin::regf
