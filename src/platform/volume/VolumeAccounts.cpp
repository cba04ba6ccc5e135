#include "platform/volume/VolumeAccounts.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <tuple>

#include "platform/Text.h"
#include "platform/volume/HiveStore.h"
#include "platform/volume/VolumeEnvironment.h"
#include "platform/volume/VolumeFiles.h"
#include "platform/volume/VolumeRegistry.h"

namespace ostrevin {
namespace {

constexpr const char* kProfileList = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
constexpr const char* kWinlogon = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon";

/// A user's security identifier: that of the machine or domain, and the number within it.
struct UserSid {
    std::string domain;
    std::uint32_t relativeId = 0;
};

std::optional<std::uint32_t> WholeNumber(std::string_view text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// None unless the text is S-1-5-21-A-B-C-R.
std::optional<UserSid> ParseUserSid(const std::string& sid) {
    constexpr std::string_view kHead = "S-1-5-21-";
    if (!EqualNoCase(sid.substr(0, kHead.size()), kHead)) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> numbers;
    for (std::size_t start = kHead.size(); start <= sid.size();) {
        const std::size_t end = std::min(sid.find('-', start), sid.size());
        const std::optional<std::uint32_t> number =
            WholeNumber(std::string_view(sid).substr(start, end - start));
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
        start = end + 1;
    }
    if (numbers.size() != 4) {
        return std::nullopt;
    }
    return UserSid{UpperCase(sid.substr(0, sid.rfind('-'))), numbers.back()};
}

std::string LastComponent(const std::string& path) {
    const std::size_t end = path.find_last_not_of('\\') + 1;
    const std::size_t start = path.find_last_of('\\', end == 0 ? 0 : end - 1) + 1;
    return start < end ? path.substr(start, end - start) : std::string();
}

/// The name under which a user logged on last, from the shell's part of the user's hive.
std::string LogonUserName(const regf::Hive& hive) {
    std::optional<regf::Key> key = hive.Root();
    for (const char* name : {"Software", "Microsoft", "Windows", "CurrentVersion", "Explorer"}) {
        key = key ? key->FindSubKey(name) : std::nullopt;
    }
    const std::optional<regf::Value> value = key ? key->FindValue("Logon User Name") : std::nullopt;
    return value ? TextOf(*value) : std::string();
}

}  // namespace

VolumeAccounts::VolumeAccounts(HiveStore& hives, VolumeRegistry& registry, VolumeEnvironment& environment)
    : hives_(hives),
      registry_(registry),
      environment_(environment),
      sam_(registry),
      profiles_(ReadProfiles()),
      profilesBySid_(IndexProfiles()),
      loggedOn_(FindLoggedOnUser()) {}

std::optional<std::string> VolumeAccounts::NameOf(const std::string& sid) {
    constexpr std::uint32_t kLongestName = 256;  // the most characters that Windows takes for a user's name
    if (const auto known = names_.find(sid); known != names_.end()) {
        return known->second;
    }
    std::optional<std::string> name = FindName(sid);
    if (name && Utf16Length(*name) > kLongestName) {
        hives_.Tell(sid, "The account's name is longer than any of Windows'. It is cut.");
        name = Beginning(*name, kLongestName);
    }
    return names_.emplace(sid, std::move(name)).first->second;
}

bool VolumeAccounts::CanReadEverything(std::vector<std::string> hives) const {
    for (const Profile& profile : profiles_) {
        hives.push_back(profile.HiveFile());
    }
    // Each is looked at, so that each is told of.
    return std::count_if(hives.begin(), hives.end(),
                         [this](const std::string& hive) { return hives_.IsUnreadable(hive); }) == 0;
}

GroupUser VolumeAccounts::Administratorship() {
    const auto object = [machine = environment_.Get("COMPUTERNAME")](const char* kind,
                                                                     const std::string& name) {
        return "\\\\.\\root\\cimv2:" + std::string(kind) + ".Domain=\"" + machine + "\",Name=\"" + name +
               "\"";
    };
    return {object("Win32_Group", "Administrators"),
            object("Win32_UserAccount", loggedOn_ ? loggedOn_->name : std::string())};
}

std::vector<VolumeAccounts::Profile> VolumeAccounts::ReadProfiles() {
    std::vector<Profile> profiles;
    if (const std::optional<regf::Key> list = registry_.Find(kLocalMachine, kProfileList)) {
        for (const regf::Key& key : list->SubKeys()) {
            const std::optional<regf::Value> path = key.FindValue("ProfileImagePath");
            std::string folder = path ? environment_.Expand(TextOf(*path)) : std::string();
            if (Utf16Length(folder) > kLongestPath) {
                folder.clear();  // Windows has no such folder
            }
            profiles.push_back({key.Name(), std::move(folder)});
        }
    }
    return profiles;
}

std::map<std::string, std::size_t> VolumeAccounts::IndexProfiles() const {
    std::map<std::string, std::size_t> index;
    for (std::size_t i = 0; i < profiles_.size(); ++i) {
        index.emplace(UpperCase(profiles_[i].sid), i);  // the first of several
    }
    return index;
}

std::optional<std::string> VolumeAccounts::FindName(const std::string& sid) {
    const std::optional<UserSid> parts = ParseUserSid(sid);
    if (!parts) {
        return std::nullopt;
    }
    if (parts->domain == sam_.MachineSid()) {
        return sam_.NameOf(parts->relativeId);
    }
    const auto profile = profilesBySid_.find(UpperCase(sid));
    return profile == profilesBySid_.end() ? std::nullopt : DomainName(profiles_[profile->second]);
}

std::optional<std::string> VolumeAccounts::DomainName(const Profile& profile) {
    std::int32_t result = kSuccess;
    const regf::Hive* hive = hives_.Load(profile.HiveFile(), result);
    std::string name = hive == nullptr ? std::string() : LogonUserName(*hive);
    if (name.empty()) {
        name = LastComponent(profile.folder);
    }
    return name.empty() ? std::nullopt : std::optional(name);
}

std::optional<VolumeAccounts::User> VolumeAccounts::FindLoggedOnUser() {
    const std::string wanted = registry_.Text(kLocalMachine, kWinlogon, "DefaultUserName");
    std::optional<User> best;
    std::tuple<bool, std::uint64_t> bestRank;
    for (const Profile& profile : profiles_) {
        const std::optional<std::string> name = NameOf(profile.sid);
        const std::optional<std::uint64_t> written = hives_.LastWritten(profile.HiveFile());
        const bool isWanted = name && !wanted.empty() && EqualNoCase(*name, wanted);
        const std::tuple rank(isWanted, written.value_or(0));
        if (name && (isWanted || written) && (!best || rank > bestRank)) {
            best = User{*name, profile};
            bestRank = rank;
        }
    }
    return best;
}

}  // namespace ostrevin
