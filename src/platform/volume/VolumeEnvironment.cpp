#include "platform/volume/VolumeEnvironment.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Text.h"
#include "platform/volume/VolumeRegistry.h"

namespace ostrevin {
namespace {

// Windows' own bounds, in characters: of a text with its variables replaced, and of all variables together,
// each as NAME=value with a NUL.
constexpr std::size_t kLongestExpansion = 32767;
constexpr std::size_t kLargestEnvironment = 32767;

constexpr const char* kProfileList = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
constexpr const char* kWindows = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion";
constexpr const char* kComputerName = "SYSTEM\\CurrentControlSet\\Control\\ComputerName\\ComputerName";
constexpr const char* kMachineVariables = "SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment";
constexpr const char* kUserVariables = "Environment";

}  // namespace

VolumeEnvironment::VolumeEnvironment(VolumeRegistry& registry, const std::string& windowsFolder,
                                     Notice notice)
    : registry_(registry), notice_(std::move(notice)) {
    Set("SystemRoot", windowsFolder);
    Set("windir", windowsFolder);
    Set("SystemDrive", windowsFolder.substr(0, 2));
}

void VolumeEnvironment::SetUser(const std::string& name, const std::string& profile) {
    Set("USERNAME", name);
    Set("USERPROFILE", profile);
    Set("HOMEDRIVE", profile.substr(0, 2));
    Set("HOMEPATH", profile.substr(std::min<std::size_t>(2, profile.size())));
    userIsIn_ = false;
}

std::string VolumeEnvironment::Get(std::string_view name) {
    Complete();
    const auto found = variables_.find(UpperCase(name));
    return found == variables_.end() ? std::string() : found->second;
}

std::string VolumeEnvironment::Expand(std::string_view text) {
    Complete();
    return ExpandKnown(text);
}

void VolumeEnvironment::Set(std::string_view name, const std::string& value) {
    variables_.insert_or_assign(UpperCase(name), value);
}

void VolumeEnvironment::Complete() {
    if (!std::exchange(machineIsIn_, true)) {
        SetFromMachine();
    }
    if (!std::exchange(userIsIn_, true)) {
        SetStored(kCurrentUser, kUserVariables);
    }
}

void VolumeEnvironment::SetFromMachine() {
    const std::string profiles = registry_.Text(kLocalMachine, kProfileList, "ProfilesDirectory");
    const std::string allUsers = registry_.Text(kLocalMachine, kProfileList, "AllUsersProfile");
    Set("ALLUSERSPROFILE",
        ExpandKnown(profiles.empty() ? "%SystemDrive%\\Documents and Settings" : profiles) + "\\" +
            (allUsers.empty() ? "All Users" : allUsers));
    Set("ProgramFiles", registry_.Text(kLocalMachine, kWindows, "ProgramFilesDir"));
    Set("CommonProgramFiles", registry_.Text(kLocalMachine, kWindows, "CommonFilesDir"));
    Set("COMPUTERNAME", registry_.Text(kLocalMachine, kComputerName, "ComputerName"));
    SetStored(kLocalMachine, kMachineVariables);
}

/// Sets the values of a key: plain texts first, so that those with variables may name them. Each is expanded
/// once, as at a log-on. What finds no room in Windows' environment is left out.
void VolumeEnvironment::SetStored(KeyHandle root, std::string_view path) {
    const std::optional<regf::Key> key = registry_.Find(root, path);
    const std::vector<regf::Value> values = key ? key->Values() : std::vector<regf::Value>();
    std::size_t room = kLargestEnvironment;
    bool isCut = false;
    for (const std::uint32_t type : {kRegSz, kRegExpandSz}) {
        for (const regf::Value& value : values) {
            if (value.Type() != type) {
                continue;
            }
            const std::string name = value.Name();
            const std::string stored = TextOf(value);
            const std::string text = type == kRegExpandSz ? ExpandKnown(stored) : stored;
            const std::size_t size = std::size_t{Utf16Length(name)} + Utf16Length(text) + 2;
            if (size > room) {
                isCut = true;
                continue;
            }
            room -= size;
            Set(name, text);
        }
    }
    if (isCut && notice_) {
        notice_(std::string(path) +
                ": There are more variables than Windows has room for. Not all are used.");
    }
}

std::string VolumeEnvironment::ExpandKnown(std::string_view text) const {
    std::string expanded;
    while (!text.empty() && expanded.size() <= kLongestExpansion) {
        const std::size_t end = text.front() == '%' ? text.find('%', 1) : std::string_view::npos;
        const auto found = end == std::string_view::npos
                               ? variables_.end()
                               : variables_.find(UpperCase(text.substr(1, end - 1)));
        if (found != variables_.end()) {
            expanded += found->second;
            text.remove_prefix(end + 1);
        } else {
            // The sign stands for itself, and the next one may begin a name.
            const std::size_t next = std::min(text.find('%', 1), text.size());
            expanded += text.substr(0, next);
            text.remove_prefix(next);
        }
    }
    return expanded.size() <= kLongestExpansion ? expanded : std::string();
}

}  // namespace ostrevin
