// A small Windows volume made for one test, and the platform opened on it.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "platform/volume/VolumePlatform.h"
#include "tests/volume/TemporaryFolder.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin {

inline constexpr const char* kMachineSid = "S-1-5-21-1000-2000-3000";
inline constexpr const char* kAnnaSid = "S-1-5-21-1000-2000-3000-1003";
inline constexpr const char* kBobSid = "S-1-5-21-1000-2000-3000-1004";
inline constexpr const char* kDomainSid = "S-1-5-21-7-8-9-1105";
inline constexpr const char* kCurrentVersion = "Microsoft\\Windows NT\\CurrentVersion";
inline constexpr const char* kExplorer = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";

/// The machine: Windows in C:\WINDOWS, the service profiles, anna (logged on) and bob with local accounts,
/// and the profile "carol.CORP" of a domain's account. A test changes the hives before it writes them.
class TestVolume {
  public:
    TestVolume();

    struct User {
        std::string folder;  ///< below Documents and Settings
        samples::HiveKey hive;
        std::uint64_t lastWritten = 0;
    };

    /// Adds a profile with a hive of its own.
    User& AddUser(const std::string& sid, const std::string& folder, std::uint64_t lastWritten);
    void AddLocalAccount(std::uint32_t relativeId, const std::string& name);
    /// The key of a control set's Control; the set in use is number 2.
    samples::HiveKey& Control(int set = 2);

    /// Writes all hives.
    void Write();
    void WriteHive(const std::string& file, const samples::HiveKey& root,
                   const samples::HiveOptions& options = {}) const;
    /// Opens the platform on what has been written; notices go to Notices.
    std::unique_ptr<VolumePlatform> Open();
    /// Write and Open.
    std::unique_ptr<VolumePlatform> Make();

    TemporaryFolder folder;
    std::string windows = "WINDOWS";
    samples::HiveKey software;
    samples::HiveKey system;
    samples::HiveKey sam;
    samples::HiveKey security;
    samples::HiveKey defaultUser;
    std::list<User> users;
    std::vector<std::string> notices;
};

/// The names that the platform knows for one security identifier.
[[nodiscard]] std::vector<std::string> AccountNames(Platform& platform, const std::string& sid);

}  // namespace ostrevin
