#include "platform/volume/windows/HostFile.h"

#include <algorithm>
#include <string_view>

#include "platform/volume/windows/WideText.h"

namespace ostrevin {
namespace {

constexpr std::wstring_view kExtended = L"\\\\?\\";
constexpr std::wstring_view kExtendedShare = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevice = L"\\\\.\\";
constexpr std::wstring_view kShare = L"\\\\";
constexpr std::size_t kDriveRoot = 3;  // the length of "C:\"

bool IsOnDrive(std::wstring_view path) {
    return path.size() >= kDriveRoot && path[1] == L':' && path[2] == L'\\';
}

bool IsOnShare(std::wstring_view path) {
    return path.starts_with(kShare) && !path.starts_with(kDevice) && !path.starts_with(kExtended);
}

std::wstring PlainForm(const std::wstring& path) {
    if (path.starts_with(kExtendedShare)) {
        return std::wstring(kShare).append(path, kExtendedShare.size());
    }
    return path.starts_with(kExtended) ? path.substr(kExtended.size()) : path;
}

/// The length of the root in a full path: of "C:\", or of "\\server\share".
std::size_t RootLength(std::wstring_view path) {
    if (IsOnDrive(path)) {
        return kDriveRoot;
    }
    const std::size_t share = path.find(L'\\', kShare.size());
    return share == std::wstring_view::npos ? path.size()
                                            : std::min(path.find(L'\\', share + 1), path.size());
}

}  // namespace

std::optional<FileInformation> InformationOf(const FileHandle& file) {
    FileInformation information{};
    return GetFileInformationByHandle(file.Get(), &information) != 0 ? std::optional(information)
                                                                     : std::nullopt;
}

bool IsSame(const FileInformation& left, const FileInformation& right) {
    return left.dwVolumeSerialNumber == right.dwVolumeSerialNumber &&
           left.nFileIndexHigh == right.nFileIndexHigh && left.nFileIndexLow == right.nFileIndexLow;
}

std::wstring FullPath(const std::string& path) {
    std::wstring given = ToWide(path);
    if (given.empty() || given.find(L'\0') != std::wstring::npos) {
        return {};
    }
    if (given.size() == 2 && given[1] == L':') {
        given += L'\\';  // the drive, not the folder that is the current one on it
    }
    std::wstring full(GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    full = PlainForm(full);
    if ((!IsOnDrive(full) && !IsOnShare(full)) || full.find(L':', 2) != std::wstring::npos) {
        return {};
    }
    while (full.size() > RootLength(full) && full.back() == L'\\') {
        full.pop_back();
    }
    return full;
}

std::wstring ExtendedPath(const std::wstring& fullPath) {
    return IsOnShare(fullPath) ? std::wstring(kExtendedShare).append(fullPath, kShare.size())
                               : std::wstring(kExtended).append(fullPath);
}

std::wstring ParentOf(const std::wstring& fullPath) {
    const std::size_t root = RootLength(fullPath);
    return fullPath.size() <= root ? std::wstring()
                                   : fullPath.substr(0, std::max(fullPath.rfind(L'\\'), root));
}

FileHandle OpenFolder(const std::wstring& fullPath) {
    // The root of a share is opened by its name with a separator behind it.
    std::wstring path = ExtendedPath(fullPath);
    if (RootLength(fullPath) == fullPath.size() && !path.ends_with(L'\\')) {
        path += L'\\';
    }
    return FileHandle(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

}  // namespace ostrevin
