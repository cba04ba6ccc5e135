// The files of an offline Windows volume, addressed by the paths that its own machine used.
//
// Read-only: nothing here creates, changes or removes anything, and what is not a regular file is never
// opened. No path leaves the volume: ".." stops at its root, and a symbolic link is followed as if the
// volume's folder were the root of the file system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

/// The longest path that Windows' calls take, in UTF-16 code units without the terminating NUL.
inline constexpr std::uint32_t kLongestPath = 259;

/// Splits an absolute Windows path ("C:\Docs\a.txt", or "\Docs\a.txt" for the same drive) into its
/// components,
/// "." and ".." resolved, dots and blanks at the end of a component left out as Windows does. None for
/// another drive, a network path, a relative path and one that is longer than Windows' 259 characters.
[[nodiscard]] std::optional<std::vector<std::string>> PathComponents(std::string_view path, char drive);

/// Attributes of an entry whose file system tells none: desktop.ini, Thumbs.db (in any case) and names with a
/// leading dot count as hidden.
[[nodiscard]] std::uint32_t PresumedAttributes(std::string_view name);

/// Orders entries as NTFS lists them: by the UTF-16 code units of the upper-cased name.
void SortByUpperCasedName(std::vector<DirectoryEntry>& entries);

/// Tells the host's system that a piece of memory not yet used is about to be filled from end to end, so that
/// it can provide it in few large pages.
void PrepareForFilling(void* memory, std::size_t size);

/// A whole file; none when it is larger than the limit (in bytes) or cannot be read to its end.
[[nodiscard]] std::optional<std::vector<std::byte>> ReadAll(InputFile& file, std::uint64_t limit);

/// Components are matched without regard to case, an exact match first. A volume or file that disappears
/// meanwhile is absent, or reads short.
class VolumeFiles {
  public:
    /// Opens a folder of the host as the root of the volume. Throws std::runtime_error when it is no folder
    /// that can be opened; the text names the folder and the reason.
    explicit VolumeFiles(const std::string& folder);
    ~VolumeFiles();
    VolumeFiles(const VolumeFiles&) = delete;
    VolumeFiles& operator=(const VolumeFiles&) = delete;

    /// The drive letter under which the machine saw the volume (upper case); C until it is set.
    void SetDrive(char letter) { drive_ = letter; }
    [[nodiscard]] char Drive() const { return drive_; }

    /// Whether the path names an existing file or folder.
    [[nodiscard]] bool Exists(const std::string& path) const;
    /// The entries of a folder as NTFS lists them; none when it cannot be listed. Names are valid UTF-8.
    [[nodiscard]] std::vector<DirectoryEntry> List(const std::string& folder) const;
    /// The entry that the path names, with its name as it stands in its folder; none for the root.
    [[nodiscard]] std::optional<DirectoryEntry> Find(const std::string& path) const;
    /// Opens a regular file for reading. Null with kFileNotFound, kPathNotFound or kAccessDenied in result.
    [[nodiscard]] std::unique_ptr<InputFile> Open(const std::string& path, std::int32_t& result) const;

    /// Where an existing file or folder stands on the host: an absolute path with no link in it below the
    /// volume's root.
    [[nodiscard]] std::optional<std::string> HostPath(const std::string& path) const;
    /// The host's path of the volume's root.
    [[nodiscard]] const std::string& RootPath() const { return rootPath_; }
    /// Whether a folder of the host exists and is neither the volume's root nor inside of it.
    [[nodiscard]] bool IsOutside(const std::string& hostFolder) const;

  private:
    class Host;  // what the host's system needs to reach the files
    std::unique_ptr<Host> host_;
    std::string rootPath_;
    char drive_ = 'C';
};

}  // namespace ostrevin
