// The accounts of the machine: who they are, and who sat at its screen last.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/volume/SamAccounts.h"

namespace ostrevin {

class HiveStore;
class VolumeEnvironment;
class VolumeRegistry;

class VolumeAccounts {
  public:
    /// A sub-key of the machine's profile list.
    struct Profile {
        std::string sid;
        std::string folder;  ///< with its variables expanded
        [[nodiscard]] std::string HiveFile() const { return folder + "\\NTUSER.DAT"; }
    };

    struct User {
        std::string name;
        Profile profile;
    };

    VolumeAccounts(HiveStore& hives, VolumeRegistry& registry, VolumeEnvironment& environment);

    /// The name of a user's account: for a local one that of the accounts manager; for one of a domain that
    /// of its last log-on, else the last component of its profile folder. None for what is no user's account.
    [[nodiscard]] std::optional<std::string> NameOf(const std::string& sid);

    /// The user whom the log-on dialog names, when a profile of the machine belongs to an account of that
    /// name; else the one whose hive was written last. None on a machine without users.
    [[nodiscard]] const std::optional<User>& LoggedOnUser() const { return loggedOn_; }

    /// Whether these hives and every user's hive, as far as they are there, can be read.
    [[nodiscard]] bool CanReadEverything(std::vector<std::string> hives) const;

    /// One record that makes the logged-on user an administrator.
    [[nodiscard]] GroupUser Administratorship();

  private:
    [[nodiscard]] std::vector<Profile> ReadProfiles();
    [[nodiscard]] std::map<std::string, std::size_t> IndexProfiles() const;
    [[nodiscard]] std::optional<std::string> FindName(const std::string& sid);
    [[nodiscard]] std::optional<std::string> DomainName(const Profile& profile);
    [[nodiscard]] std::optional<User> FindLoggedOnUser();

    HiveStore& hives_;
    VolumeRegistry& registry_;
    VolumeEnvironment& environment_;
    SamAccounts sam_;
    std::vector<Profile> profiles_;
    std::map<std::string, std::size_t> profilesBySid_;         // by upper-cased identifier
    std::map<std::string, std::optional<std::string>> names_;  // by security identifier
    std::optional<User> loggedOn_;
};

}  // namespace ostrevin
