// Writes a shell link file, in the format that ShellLinkFile.h reads.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/volume/lnk/Shortcut.h"

namespace ostrevin::lnk {

/// A path on a drive or a network share is written as identifier list and link information; any other target
/// ("%windir%\notepad.exe") as environment block. Dates, sizes and attributes of the target are left empty.
/// None when a text is longer than its place in the format: 65535 UTF-16 code units, for a target in an
/// environment block 259.
[[nodiscard]] std::optional<std::vector<std::byte>> WriteShellLink(const Shortcut& shortcut);

}  // namespace ostrevin::lnk
