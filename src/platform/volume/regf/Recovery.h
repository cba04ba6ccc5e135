// Recovers a hive from its transaction logs, in memory, as Windows does when it loads the hive.
//
// A primary file is dirty when its base block is not sound or its sequence numbers differ. Which logs there
// are depends on the version of Windows that wrote them:
//
// - Up to Windows 8, a log holds one set of dirty pages (DirtyVector.h). It fits when its own base block is
//   sound and was written at the same time as the primary file's. A damaged base block is replaced by the
//   log's; the time is then that of the first hive bin, which also vouches for the file being a hive.
//   NAME.LOG1 is tried before NAME.LOG2, and both before NAME.LOG, which is left over where there are two.
// - From Windows 8.1 on, NAME.LOG1 and NAME.LOG2 hold log entries in turns (LogEntry.h), each log a run of
//   consecutive sequence numbers. The log with the earlier entries comes first, and the other has to go on
//   where it ends. Entries older than the primary file are not applied. With a damaged base block, only the
//   log with the later entries is used, and its base block.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/volume/regf/BaseBlock.h"

namespace ostrevin::regf {

struct Logs;

/// Applies the logs of a dirty primary file to its bytes, which may grow by no more than the logs' size.
/// Returns the base block that belongs to the result; none, and leaves the bytes alone, when no log fits.
[[nodiscard]] std::optional<BaseBlock> RecoverFromLogs(std::vector<std::byte>& primary, const Logs& logs);

}  // namespace ostrevin::regf
