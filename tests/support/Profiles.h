// Profiles of a made-up host: accounts with their entry in the profile list, their name and their hive.
#pragma once

#include <string>

#include "tests/support/MemoryPlatform.h"

namespace ostrevin {

/// The key of the profile list under HKEY_LOCAL_MACHINE.
inline constexpr char kProfileListKey[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

/// Lists a profile; path becomes its ProfileImagePath.
void AddProfile(MemoryPlatform& platform, const std::string& sid, const std::string& path);

/// Lists the profile of a user known by this name, in %SystemDrive%\Documents and Settings, with an empty
/// hive that is not loaded yet. The key is the hive's root.
MemoryKey& AddUser(MemoryPlatform& platform, const std::string& sid, const std::string& name);

/// Puts a user in front of the machine: owner of the shell's process, of the special folders 8 (Recent) and
/// 34 (History), and of a loaded hive. The user must have been added.
void LogOn(MemoryPlatform& platform, const std::string& sid, const std::string& name);

}  // namespace ostrevin
