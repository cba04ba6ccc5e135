#include "tests/support/Profiles.h"

#include "platform/Paths.h"

namespace ostrevin {
namespace {

std::string ProfileFolder(const std::string& name) {
    return "C:\\Documents and Settings\\" + name;
}

}  // namespace

void AddProfile(MemoryPlatform& platform, const std::string& sid, const std::string& path) {
    platform.Root(kLocalMachine)
        .Key(std::string(kProfileListKey) + "\\" + sid)
        .SetText("ProfileImagePath", path, kRegExpandSz);
}

MemoryKey& AddUser(MemoryPlatform& platform, const std::string& sid, const std::string& name) {
    AddProfile(platform, sid, "%SystemDrive%\\Documents and Settings\\" + name);
    platform.accountNames[sid] = {name};
    return platform.AddHive(ProfileFolder(name) + "\\NTUSER.DAT");
}

void LogOn(MemoryPlatform& platform, const std::string& sid, const std::string& name) {
    platform.shellProcessOwners = {{0, name}};
    platform.specialFolders[kFolderRecent] = ProfileFolder(name) + "\\Recent";
    platform.specialFolders[kFolderHistory] = ProfileFolder(name) + "\\Local Settings\\History";
    platform.MountHive(sid, ProfileFolder(name) + "\\NTUSER.DAT");
}

}  // namespace ostrevin
