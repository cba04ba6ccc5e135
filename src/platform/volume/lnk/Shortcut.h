// What the shell's shortcut object answers about a shell link file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/volume/lnk/ShellLinkFile.h"

namespace ostrevin::lnk {

/// The values of a shortcut, as they are got and set.
struct Shortcut {
    std::string target;  ///< the path; empty when the target has none (a web page, a control panel item)
    std::string networkTarget;  ///< the path in its network form; empty when there is none
    std::string arguments;
    std::string workingDirectory;
    std::string description;
    std::string iconFile;
    std::int32_t iconIndex = 0;
    std::int32_t showCommand = 1;  ///< a number of ShowWindow; 1 is a normal window
    std::uint16_t hotkey = 0;
};

/// What a shortcut's reader asks of the machine. Functions may be empty, but for decodeAnsi.
struct ShellHost {
    AnsiDecoder decodeAnsi;
    /// Replaces the variables (%NAME%) of a text; without it they stay as they are.
    std::function<std::string(const std::string&)> expandVariables;
    /// The folder with this CSIDL number, or the empty string; without it a target that only an identifier
    /// below such a folder tells has no path.
    std::function<std::string(int)> specialFolderPath;
};

/// The target is told by the link information, else by the identifier list, else by the environment block.
/// Only the environment blocks' variables are expanded: the other texts stand as they were stored.
[[nodiscard]] Shortcut ResolveShortcut(const ShellLinkFile& link, const ShellHost& host);

/// Base path and further components, with one "\" between them.
[[nodiscard]] std::string JoinPath(const std::string& base, const std::string& rest);

}  // namespace ostrevin::lnk
