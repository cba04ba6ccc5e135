// Recovers a hive from its transaction logs, in memory, as Windows does when it loads the hive.
//
// A primary file is dirty when its base block is not sound or its sequence numbers differ. Which logs there
// are depends on the version of Windows that wrote them:
//
// - Up to Windows 8, a log holds one set of dirty pages (DirtyVector.h). It fits when its own base block is
//   sound and was written at the same time as the primary file's. NAME.LOG1 is tried before NAME.LOG2, and
//   both before NAME.LOG, which is left over where there are two.
// - From Windows 8.1 on, NAME.LOG1 and NAME.LOG2 hold log entries in turns (LogEntry.h), each log a run of
//   consecutive sequence numbers. The log with the earlier entries comes first, and the other has to go on
//   where it ends. Entries older than the primary file are not applied.
//
// A damaged base block is replaced by the log's. The first hive bin then vouches for the file being a hive.
// Of the newer logs only the one with the later entries is used. Of the older ones Windows takes the one
// whose time is that of the first hive bin. Here the others are tried, too, the latest first: a log completes
// a write that may have been cut off before the first bin. One fits when it leaves a root key and breaks no
// bin; one from before the first bin's time only when the file has no root key without it.
#pragma once

#include <memory>
#include <optional>

#include "platform/volume/regf/BaseBlock.h"
#include "platform/volume/regf/FileImage.h"

namespace ostrevin::regf {

/// The transaction logs beside a primary file; null for those that there are not.
struct LogImages {
    std::unique_ptr<FileImage> log;   ///< NAME.LOG
    std::unique_ptr<FileImage> log1;  ///< NAME.LOG1
    std::unique_ptr<FileImage> log2;  ///< NAME.LOG2
};

/// Applies the logs of a dirty primary file to its image, which may grow by no more than the logs' size.
/// Returns the base block that belongs to the result; none, and leaves the image alone, when no log fits.
[[nodiscard]] std::optional<BaseBlock> RecoverFromLogs(FileImage& primary, const LogImages& logs);

/// The base block of a primary file as it stands, without its logs. A damaged one tells what it can: the hive
/// bins reach to the end of the chain of sound ones at least, and the root key is the first one where none
/// stands at its place. None when neither it nor the first hive bin can be recognised.
[[nodiscard]] std::optional<BaseBlock> BaseBlockAsItStands(const FileImage& primary);

/// Whether the root key stands where the base block says.
[[nodiscard]] bool HasRootKey(const FileImage& primary, const BaseBlock& base);

}  // namespace ostrevin::regf
