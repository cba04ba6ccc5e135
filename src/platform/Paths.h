// Path and shell helpers over the platform's calls. None of them raises.
#pragma once

#include <string>

#include "platform/Platform.h"

namespace ostrevin {

/// CSIDL numbers of the special folders that the program asks for.
enum SpecialFolder : int {
    kFolderRecent = 8,
    kFolderCommonPrograms = 23,
    kFolderHistory = 34,
};

/// The folder of the executable, always ending in the host's path separator; empty when nothing may be kept.
[[nodiscard]] std::string GetAppFolder(Platform& platform);
/// The path of a file of the program's own in that folder; empty when it may not be kept.
[[nodiscard]] std::string GetKeptFile(Platform& platform, const std::string& name);
[[nodiscard]] std::string GetWindowsFolder(Platform& platform);
/// The first character of the Windows folder and ":"; what "%SystemDrive%" stands for.
[[nodiscard]] std::string GetSystemDrive(Platform& platform);
/// The path of a CSIDL number; empty when it cannot be told.
[[nodiscard]] std::string GetSpecialFolderPath(Platform& platform, int csidl);
/// The path up to and with its last "\"; a path without one as it is.
[[nodiscard]] std::string GetFolderOfPath(const std::string& path);
/// Whether the path names an existing file or folder.
[[nodiscard]] bool FileExists(Platform& platform, const std::string& path);
/// Opens a document, a link or an address with what the shell associates with it; greater than 32 on success.
int ShellOpenDocument(Platform& platform, const std::string& path);
/// The same for a report that the program wrote, or its manual.
int ShellOpenOwnFile(Platform& platform, const std::string& path);

}  // namespace ostrevin
