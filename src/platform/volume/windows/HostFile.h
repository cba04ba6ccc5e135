// Files of a Windows host: their paths, and handles to them.
#pragma once

#include <windows.h>
#include <optional>
#include <string>
#include <utility>

namespace ostrevin {

/// Others may do with a file what they like while it is open here.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class FileHandle {
  public:
    explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    FileHandle(FileHandle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { Close(); }

    [[nodiscard]] HANDLE Get() const { return handle_; }
    [[nodiscard]] bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    /// Whether that went without an error; it is closed in any case.
    bool Close() {
        const HANDLE handle = std::exchange(handle_, INVALID_HANDLE_VALUE);
        return handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != 0;
    }

  private:
    HANDLE handle_;
};

using FileInformation = BY_HANDLE_FILE_INFORMATION;

[[nodiscard]] std::optional<FileInformation> InformationOf(const FileHandle& file);
/// Whether two handles lead to one file or folder.
[[nodiscard]] bool IsSame(const FileInformation& left, const FileInformation& right);

/// A UTF-8 path as an absolute one on a disk or share ("C:\a", "\\server\share\a"), "." and ".." resolved,
/// with no separator at its end but for that of a drive's root. Empty for devices, streams of files and what
/// is no path.
[[nodiscard]] std::wstring FullPath(const std::string& path);
/// The form in which Windows takes a full path as it stands and of any length.
[[nodiscard]] std::wstring ExtendedPath(const std::wstring& fullPath);
/// The folder of a full path, as a full path; empty for a root.
[[nodiscard]] std::wstring ParentOf(const std::wstring& fullPath);

/// Opens a folder, by its full path, to ask which one it is.
[[nodiscard]] FileHandle OpenFolder(const std::wstring& fullPath);

}  // namespace ostrevin
