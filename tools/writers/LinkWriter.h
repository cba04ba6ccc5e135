// Writes shortcuts (shell link files) from optional pieces.
//
// Facts: [MS-SHLLINK] "Shell Link (.LNK) Binary File Format"; identifier list items: "Windows Shell Item
// format specification" (public, by J. Metz).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrevin::samples {

// Single-byte texts below are bytes as stored, in the code page of the machine (ToWindows1252 makes them);
// Unicode texts are UTF-8.

struct LinkVolume {
    std::uint32_t driveType = 3;  ///< 3: fixed, 2: removable, 5: CD-ROM
    std::uint32_t serialNumber = 0;
    std::string label;                        ///< single-byte
    std::optional<std::string> unicodeLabel;  ///< stands in place of the single-byte one
};

struct LinkNetwork {
    std::string share;                  ///< single-byte, such as \\server\share
    std::optional<std::string> device;  ///< single-byte, such as Z:
    std::optional<std::uint32_t> provider = 0x00020000;
    std::optional<std::string> unicodeShare;  ///< both Unicode forms, or none
    std::optional<std::string> unicodeDevice;
};

struct LinkInfo {
    std::optional<LinkVolume> volume;  ///< with localBasePath
    std::string localBasePath;         ///< single-byte
    std::optional<LinkNetwork> network;
    std::string suffix;  ///< single-byte; follows the base path or the share
    /// With one of these the header has 36 bytes and offsets to both.
    std::optional<std::string> unicodeLocalBasePath;
    std::optional<std::string> unicodeSuffix;
};

struct LinkSpecialFolder {
    std::uint32_t csidl = 0;
    std::uint32_t offset = 0;  ///< in the identifier list: of the first item below the folder
};

struct LinkTracker {
    std::string machine;  ///< up to 15 characters
};

struct Link {
    std::uint32_t extraFlags = 0;  ///< set in addition to those of the pieces
    std::uint32_t attributes = 0x20;
    std::uint64_t created = 0;  ///< FILETIMEs of the target
    std::uint64_t accessed = 0;
    std::uint64_t modified = 0;
    std::uint32_t size = 0;
    std::int32_t iconIndex = 0;
    std::uint32_t showCommand = 1;
    std::uint16_t hotKey = 0;  ///< low byte the key, high byte the modifiers

    std::vector<std::vector<std::byte>> items;  ///< contents of the identifier list; empty: no list
    std::optional<LinkInfo> info;

    bool unicode = true;  ///< the strings as UTF-16, else as code page 1252; UTF-8 here in both cases
    std::optional<std::string> description;
    std::optional<std::string> relativePath;
    std::optional<std::string> workingFolder;
    std::optional<std::string> arguments;
    std::optional<std::string> iconFile;

    std::optional<std::string> environmentPath;      ///< UTF-8, such as %SystemRoot%\notepad.exe
    std::optional<std::string> iconEnvironmentPath;  ///< likewise
    std::optional<LinkSpecialFolder> specialFolder;
    std::optional<LinkTracker> tracker;
    std::vector<std::byte> extraBlocks;  ///< raw blocks before the terminal one
};

std::vector<std::byte> WriteLink(const Link& link);

// Items of identifier lists.

/// "My Computer".
std::vector<std::byte> ComputerItem();
/// A drive such as C:\.
std::vector<std::byte> DriveItem(std::string_view root);

struct FileItem {
    bool folder = false;
    std::string name;       ///< UTF-8, the long name
    std::string shortName;  ///< single-byte; empty takes the long name in code page 1252
    std::uint32_t size = 0;
    std::uint64_t modified = 0;  ///< FILETIME
    std::uint64_t created = 0;
    std::uint64_t accessed = 0;
};
std::vector<std::byte> FileEntryItem(const FileItem& file);

/// The whole list for a path such as C:\Docs\a.txt: computer, drive, folders, and the last component as last
/// tells but for its name.
std::vector<std::vector<std::byte>> ItemsForPath(std::string_view path, FileItem last);

}  // namespace ostrevin::samples
