#include "platform/Paths.h"

#include <exception>

namespace ostrevin {
namespace {

constexpr int kShowNormal = 1;

}  // namespace

std::string GetAppFolder(Platform& platform) {
    std::string folder = platform.ApplicationFolder();
    if (!folder.empty() && !folder.ends_with('\\') && !folder.ends_with('/')) {
        folder += folder.starts_with('/') ? '/' : '\\';
    }
    return folder;
}

std::string GetKeptFile(Platform& platform, const std::string& name) {
    const std::string folder = GetAppFolder(platform);
    return !folder.empty() && platform.MayKeep(folder + name) ? folder + name : std::string();
}

std::string GetWindowsFolder(Platform& platform) {
    return platform.GetWindowsDirectoryA();
}

std::string GetSystemDrive(Platform& platform) {
    return GetWindowsFolder(platform).substr(0, 1) + ":";
}

std::string GetSpecialFolderPath(Platform& platform, int csidl) {
    try {
        return platform.SpecialFolderPath(csidl);
    } catch (const std::exception&) {
        return {};
    }
}

std::string GetFolderOfPath(const std::string& path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string::npos ? path : path.substr(0, last + 1);
}

bool FileExists(Platform& platform, const std::string& path) {
    try {
        return platform.PathFileExistsA(path);
    } catch (const std::exception&) {
        return false;
    }
}

int ShellOpenDocument(Platform& platform, const std::string& path) {
    return platform.ShellExecuteA("open", path, GetFolderOfPath(path), kShowNormal);
}

int ShellOpenOwnFile(Platform& platform, const std::string& path) {
    return platform.OpenOwnFile(path, GetFolderOfPath(path), kShowNormal);
}

}  // namespace ostrevin
