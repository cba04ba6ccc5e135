#include "platform/volume/VolumeFolders.h"

#include <algorithm>
#include <iterator>

#include "platform/Platform.h"
#include "platform/Text.h"
#include "platform/volume/VolumeEnvironment.h"
#include "platform/volume/VolumeFiles.h"
#include "platform/volume/VolumeRegistry.h"

namespace ostrevin {
namespace {

constexpr unsigned kCsidlMask = 0xFF;  // the rest of the number holds flags

/// A folder that the shell keeps among a user's or the machine's folders.
struct ShellFolder {
    unsigned csidl = 0;
    KeyHandle root = kCurrentUser;  ///< or kLocalMachine
    const char* value = "";
    const char* usual = "";  ///< where it is unless told otherwise
};

// The names of the values are those under which Windows XP's shell stores them.
constexpr ShellFolder kShellFolders[] = {
    {0, kCurrentUser, "Desktop"},
    {2, kCurrentUser, "Programs"},
    {5, kCurrentUser, "Personal"},
    {6, kCurrentUser, "Favorites"},
    {7, kCurrentUser, "Startup"},
    {8, kCurrentUser, "Recent", "%USERPROFILE%\\Recent"},
    {9, kCurrentUser, "SendTo"},
    {11, kCurrentUser, "Start Menu"},
    {13, kCurrentUser, "My Music"},
    {14, kCurrentUser, "My Video"},
    {16, kCurrentUser, "Desktop"},
    {19, kCurrentUser, "NetHood"},
    {20, kCurrentUser, "Fonts"},
    {21, kCurrentUser, "Templates"},
    {22, kLocalMachine, "Common Start Menu"},
    {23, kLocalMachine, "Common Programs", "%ALLUSERSPROFILE%\\Start Menu\\Programs"},
    {24, kLocalMachine, "Common Startup"},
    {25, kLocalMachine, "Common Desktop"},
    {26, kCurrentUser, "AppData"},
    {27, kCurrentUser, "PrintHood"},
    {28, kCurrentUser, "Local AppData"},
    {29, kCurrentUser, "AltStartup"},
    {30, kLocalMachine, "Common AltStartup"},
    {31, kLocalMachine, "Common Favorites"},
    {32, kCurrentUser, "Cache"},
    {33, kCurrentUser, "Cookies"},
    {34, kCurrentUser, "History", "%USERPROFILE%\\Local Settings\\History"},
    {35, kLocalMachine, "Common AppData"},
    {39, kCurrentUser, "My Pictures"},
    {45, kLocalMachine, "Common Templates"},
    {46, kLocalMachine, "Common Documents"},
    {47, kLocalMachine, "Common Administrative Tools"},
    {48, kCurrentUser, "Administrative Tools"},
    {53, kLocalMachine, "CommonMusic"},
    {54, kLocalMachine, "CommonPictures"},
    {55, kLocalMachine, "CommonVideo"},
    {59, kCurrentUser, "CD Burning"},
};

/// A folder that is known from a variable alone.
struct VariableFolder {
    unsigned csidl;
    const char* path;
};

constexpr VariableFolder kVariableFolders[] = {
    {36, "%SystemRoot%"},  {37, "%SystemRoot%\\system32"}, {38, "%ProgramFiles%"},
    {40, "%USERPROFILE%"}, {43, "%CommonProgramFiles%"},
};

constexpr const char* kExplorer = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\";

}  // namespace

std::string VolumeFolders::Path(int csidl) const {
    const std::string path = environment_.Expand(StoredPath(csidl));
    // A folder whose variable is not set lies nowhere, and the shell's call has no room for a longer path.
    return path.starts_with('%') || Utf16Length(path) > kLongestPath ? std::string() : path;
}

std::string VolumeFolders::StoredPath(int csidl) const {
    const unsigned number = static_cast<unsigned>(csidl) & kCsidlMask;
    const auto isWanted = [number](const auto& folder) { return folder.csidl == number; };
    if (const auto* folder = std::find_if(std::begin(kShellFolders), std::end(kShellFolders), isWanted);
        folder != std::end(kShellFolders)) {
        const std::string explorer = kExplorer;
        std::string path = registry_.Text(folder->root, explorer + "Shell Folders", folder->value);
        if (path.empty()) {
            path = registry_.Text(folder->root, explorer + "User Shell Folders", folder->value);
        }
        return path.empty() ? folder->usual : path;
    }
    const auto* folder = std::find_if(std::begin(kVariableFolders), std::end(kVariableFolders), isWanted);
    return folder == std::end(kVariableFolders) ? std::string() : folder->path;
}

}  // namespace ostrevin
