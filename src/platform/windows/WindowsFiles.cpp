#include <windows.h>
#include <algorithm>
#include <shlwapi.h>
#include <string>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/windows/AnsiText.h"
#include "platform/windows/WindowsPlatform.h"

namespace ostrevin {
namespace {

using windows::Utf8;
using windows::Wide;

/// An open file, closed at the end of its life.
class FileHandle {
  public:
    explicit FileHandle(HANDLE handle) : handle_(handle) {}
    FileHandle(FileHandle&& other) noexcept : handle_(other.Release()) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    FileHandle& operator=(FileHandle&&) = delete;
    ~FileHandle() {
        if (IsOpen()) {
            CloseHandle(handle_);
        }
    }
    [[nodiscard]] bool IsOpen() const { return handle_ != Closed(); }
    [[nodiscard]] HANDLE Get() const { return handle_; }
    HANDLE Release() { return std::exchange(handle_, Closed()); }

  private:
    static HANDLE Closed() { return INVALID_HANDLE_VALUE; }

    HANDLE handle_;
};

/// How many bytes one call moves at most.
DWORD Portion(std::size_t left) {
    constexpr std::size_t kMost = std::size_t{1} << 30U;
    return static_cast<DWORD>(std::min(left, kMost));
}

class WindowsInputFile final : public InputFile {
  public:
    WindowsInputFile(FileHandle file, std::uint64_t size) : file_(std::move(file)), size_(size) {}

    [[nodiscard]] std::uint64_t Size() const override { return size_; }

    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        std::size_t done = 0;
        while (done < buffer.size()) {
            OVERLAPPED place{};
            place.Offset = static_cast<DWORD>(offset + done);
            place.OffsetHigh = static_cast<DWORD>((offset + done) >> 32U);
            DWORD got = 0;
            if (ReadFile(file_.Get(), buffer.data() + done, Portion(buffer.size() - done), &got, &place) ==
                    0 ||
                got == 0) {
                break;
            }
            done += got;
        }
        return done;
    }

  private:
    FileHandle file_;
    std::uint64_t size_;
};

class WindowsOutputFile final : public OutputFile {
  public:
    WindowsOutputFile(FileHandle file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}

    void Write(std::string_view bytes) override {
        while (!bytes.empty()) {
            DWORD written = 0;
            if (WriteFile(file_.Get(), bytes.data(), Portion(bytes.size()), &written, nullptr) == 0 ||
                written == 0) {
                throw PathFileAccessError(path_);
            }
            bytes.remove_prefix(written);
        }
    }

    void Close() override {
        if (file_.IsOpen() && CloseHandle(file_.Release()) == 0) {
            throw PathFileAccessError(path_);
        }
    }

  private:
    FileHandle file_;
    std::string path_;
};

/// The entries that a directory query yields, "." and ".." included.
template <typename Take>
void ForEachEntry(const std::wstring& query, Take take) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(query.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        take(DirectoryEntry{Utf8(found.cFileName), found.dwFileAttributes});
    } while (FindNextFileW(search, &found) != 0);
    FindClose(search);
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

bool WindowsPlatform::PathFileExistsA(const std::string& path) {
    // A path that the code page does not hold can be asked for in the W form alone.
    const std::optional<std::string> ansi = windows::ExactAnsi(path);
    return (ansi ? ::PathFileExistsA(ansi->c_str()) : ::PathFileExistsW(Wide(path).c_str())) == TRUE;
}

std::vector<DirectoryEntry> WindowsPlatform::ListDirectory(const std::string& folder) {
    std::vector<DirectoryEntry> entries;
    ForEachEntry(Wide(folder) + (folder.ends_with('\\') ? L"*.*" : L"\\*.*"), [&](DirectoryEntry entry) {
        if (entry.name != "." && entry.name != "..") {
            entries.push_back(std::move(entry));
        }
    });
    return entries;
}

std::optional<DirectoryEntry> WindowsPlatform::FindEntry(const std::string& path) {
    std::optional<DirectoryEntry> result;
    if (path.find_first_of("*?") == std::string::npos) {
        ForEachEntry(Wide(path), [&](DirectoryEntry entry) { result = std::move(entry); });
    }
    return result;
}

std::unique_ptr<InputFile> WindowsPlatform::OpenFile(const std::string& path) {
    FileHandle file(CreateFileW(Wide(path).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file.IsOpen() || GetFileType(file.Get()) != FILE_TYPE_DISK ||
        GetFileSizeEx(file.Get(), &size) == 0) {
        return nullptr;
    }
    return std::make_unique<WindowsInputFile>(std::move(file), static_cast<std::uint64_t>(size.QuadPart));
}

std::unique_ptr<OutputFile> WindowsPlatform::CreateOutputFile(const std::string& path, Existing existing) {
    FileHandle file(CreateFileW(Wide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                existing == Existing::Keep ? CREATE_NEW : CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen()) {
        const bool taken = existing == Existing::Keep && GetLastError() == ERROR_FILE_EXISTS;
        throw taken ? FileAlreadyExistsError(path) : PathFileAccessError(path);
    }
    return std::make_unique<WindowsOutputFile>(std::move(file), path);
}

void WindowsPlatform::CreateOutputFolder(const std::string& path) {
    const std::wstring wide = Wide(path);
    if (CreateDirectoryW(wide.c_str(), nullptr) == 0 && !IsFolder(wide)) {
        throw PathFileAccessError(path);
    }
}

}  // namespace ostrevin
