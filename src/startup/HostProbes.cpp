#include "startup/HostProbes.h"

#include <exception>

namespace ostrevin {
namespace {

std::string NameOfWindows9x(const OSVersion& version) {
    switch (version.minor) {
        case 0:
            return "Windows 95";
        case 10:
            return "Windows 98";
        case 90:
            return "Windows Millennium";
        default:
            return {};
    }
}

std::string NameOfWindowsNT(const OSVersion& version) {
    switch (version.major) {
        case 3:
            return "Windows NT 3.51";
        case 4:
            return "Windows NT 4.0";
        case 5:
            return version.minor == 0 ? "Windows 2000" : "Windows XP";
        default:
            return {};
    }
}

}  // namespace

std::string GetOSName(Platform& platform) {
    constexpr std::uint32_t kWindows9x = 1;
    constexpr std::uint32_t kWindowsNT = 2;
    const OSVersion version = platform.GetVersionExA();
    if (version.platformId == kWindows9x) {
        return NameOfWindows9x(version);
    }
    return version.platformId == kWindowsNT ? NameOfWindowsNT(version) : "Failed";
}

std::string GetLoggedOnUserName(Platform& platform) {
    std::string name;
    for (const ProcessOwner& owner : platform.ShellProcessOwners()) {
        if (owner.result == 0) {
            name = owner.user;
        }
    }
    return name.empty() ? platform.EnvironmentVariable("USERNAME") : name;
}

bool IsUserAdministrator(Platform& platform) {
    const std::string user = GetLoggedOnUserName(platform);
    bool administrator = false;
    for (const GroupUser& record : platform.GroupUsers()) {
        if (record.groupComponent.find("Administrators") != std::string::npos &&
            record.partComponent.find(user) != std::string::npos) {
            administrator = true;
        }
    }
    return administrator;
}

bool InitCommonControlClasses(Toolkit& toolkit) {
    try {
        toolkit.InitCommonControls();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace ostrevin
