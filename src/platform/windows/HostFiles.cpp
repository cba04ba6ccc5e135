#include "platform/HostFiles.h"

#include <windows.h>
#include <algorithm>

#include "platform/windows/AnsiText.h"

namespace ostrevin {
namespace {

/// A file that is open, until the end of its life.
class HostFile {
  public:
    HostFile(const std::string& path, DWORD access, DWORD disposition)
        : handle_(CreateFileW(windows::Wide(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    HostFile(const HostFile&) = delete;
    HostFile& operator=(const HostFile&) = delete;
    ~HostFile() {
        if (IsOpen()) {
            CloseHandle(handle_);
        }
    }

    [[nodiscard]] bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE Get() const { return handle_; }

    /// False when not all of it could be written.
    [[nodiscard]] bool Write(std::string_view bytes) const {
        while (!bytes.empty()) {
            DWORD written = 0;
            const auto portion = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kPortion));
            if (WriteFile(handle_, bytes.data(), portion, &written, nullptr) == FALSE) {
                return false;
            }
            bytes.remove_prefix(written);
        }
        return true;
    }

    static constexpr std::size_t kPortion = 65536;  // bytes that one call moves

  private:
    HANDLE handle_;
};

bool WriteFresh(const std::string& path, std::string_view content) {
    const HostFile file(path, GENERIC_WRITE, CREATE_ALWAYS);
    return file.IsOpen() && file.Write(content);
}

}  // namespace

bool IsAbsoluteHostPath(const std::string& path) {
    constexpr std::string_view kDriveRoot = ":\\";
    constexpr std::string_view kShare = "\\\\";
    return path.starts_with(kShare) ||
           (path.size() > kDriveRoot.size() && path.compare(1, 2, kDriveRoot) == 0);
}

bool IsHostFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(windows::Wide(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

std::optional<std::string> ReadHostFile(const std::string& path, std::size_t most) {
    const HostFile file(path, GENERIC_READ, OPEN_EXISTING);
    if (!file.IsOpen()) {
        return std::nullopt;
    }
    std::string content;
    while (content.size() < most) {
        const std::size_t done = content.size();
        content.resize(done + std::min(most - done, HostFile::kPortion));
        DWORD got = 0;
        if (ReadFile(file.Get(), content.data() + done, static_cast<DWORD>(content.size() - done), &got,
                     nullptr) == FALSE) {
            return std::nullopt;
        }
        content.resize(done + got);
        if (got == 0) {
            break;
        }
    }
    return content;
}

bool ReplaceHostFile(const std::string& path, std::string_view content) {
    const std::string fresh = path + ".new";
    if (WriteFresh(fresh, content) && MoveFileExW(windows::Wide(fresh).c_str(), windows::Wide(path).c_str(),
                                                  MOVEFILE_REPLACE_EXISTING) != FALSE) {
        return true;
    }
    DeleteFileW(windows::Wide(fresh).c_str());
    return false;
}

bool AppendToHostFile(const std::string& path, std::string_view text) {
    const HostFile file(path, FILE_APPEND_DATA, OPEN_ALWAYS);
    return file.IsOpen() && file.Write(text);
}

}  // namespace ostrevin
