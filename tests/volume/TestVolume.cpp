#include "tests/volume/TestVolume.h"

#include <array>
#include <cstdio>

namespace ostrevin {
namespace {

using samples::HiveKey;

void AddNumber(std::vector<std::byte>& bytes, std::uint32_t number) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::byte>(number >> shift));
    }
}

/// The accounts manager's value of the machine: its identifier stands at the end.
std::vector<std::byte> DomainValue() {
    std::vector<std::byte> bytes(40, std::byte{0xEE});
    for (const int byte : {1, 4, 0, 0, 0, 0, 0, 5}) {
        bytes.push_back(static_cast<std::byte>(byte));
    }
    for (const std::uint32_t number : {21U, 1000U, 2000U, 3000U}) {
        AddNumber(bytes, number);
    }
    return bytes;
}

/// The accounts manager's value of an account: a table of 204 bytes, whose second entry tells the name.
std::vector<std::byte> AccountValue(const std::string& name) {
    std::vector<std::byte> text = samples::TextData(name);
    text.resize(text.size() - 2);
    std::vector<std::byte> bytes;
    for (const std::uint32_t number : {0U, 0U, 0U, 8U, static_cast<std::uint32_t>(text.size()), 0U}) {
        AddNumber(bytes, number);
    }
    bytes.resize(204 + 8, std::byte{0xEE});
    bytes.insert(bytes.end(), text.begin(), text.end());
    return bytes;
}

}  // namespace

TestVolume::TestVolume() {
    HiveKey& version = software.Key(kCurrentVersion);
    version.SetString("CurrentVersion", "5.1");
    version.SetString("SystemRoot", "C:\\WINDOWS");
    version.Key("Winlogon").SetString("DefaultUserName", "Anna");
    HiveKey& profiles = version.Key("ProfileList");
    profiles.SetString("ProfilesDirectory", "%SystemDrive%\\Documents and Settings", 2);
    profiles.SetString("AllUsersProfile", "All Users");
    profiles.Key("S-1-5-18")
        .SetString("ProfileImagePath", "%systemroot%\\system32\\config\\systemprofile", 2);
    system.Key("Select").SetDword("Current", 2);
    Control().Key("ComputerName\\ComputerName").SetString("ComputerName", "STUDY");
    Control().Key("TimeZoneInformation").SetDword("ActiveTimeBias", static_cast<std::uint32_t>(-120));
    sam.Key("SAM\\Domains\\Account").SetBinary("V", DomainValue());
    AddLocalAccount(1003, "anna");
    AddLocalAccount(1004, "bob");
    AddUser("S-1-5-19", "LocalService", 900);
    AddUser(kAnnaSid, "anna", 100);
    AddUser(kBobSid, "bob", 200);
    AddUser(kDomainSid, "carol.CORP", 150);
}

TestVolume::User& TestVolume::AddUser(const std::string& sid, const std::string& profile,
                                      std::uint64_t lastWritten) {
    software.Key(std::string(kCurrentVersion) + "\\ProfileList\\" + sid)
        .SetString("ProfileImagePath", "%SystemDrive%\\Documents and Settings\\" + profile, 2);
    return users.emplace_back(User{profile, {}, lastWritten});
}

void TestVolume::AddLocalAccount(std::uint32_t relativeId, const std::string& name) {
    std::array<char, 9> key{};
    std::snprintf(key.data(), key.size(), "%08X", relativeId);
    sam.Key(std::string("SAM\\Domains\\Account\\Users\\") + key.data()).SetBinary("V", AccountValue(name));
}

HiveKey& TestVolume::Control(int set) {
    return system.Key("ControlSet00" + std::to_string(set) + "\\Control");
}

void TestVolume::Write() {
    const std::string config = windows + "/system32/config/";
    WriteHive(config + "software", software);
    WriteHive(config + "system", system);
    WriteHive(config + "SAM", sam);
    WriteHive(config + "SECURITY", security);
    WriteHive(config + "default", defaultUser);
    for (const User& user : users) {
        samples::HiveOptions options;
        options.lastWritten = user.lastWritten;
        WriteHive("Documents and Settings/" + user.folder + "/NTUSER.DAT", user.hive, options);
    }
}

void TestVolume::WriteHive(const std::string& file, const HiveKey& root,
                           const samples::HiveOptions& options) const {
    folder.Write(file, samples::WriteHive(root, options));
}

std::unique_ptr<VolumePlatform> TestVolume::Open() {
    return VolumePlatform::Open(folder.Utf8Path(),
                                [this](const std::string& line) { notices.push_back(line); });
}

std::unique_ptr<VolumePlatform> TestVolume::Make() {
    Write();
    return Open();
}

std::vector<std::string> AccountNames(Platform& platform, const std::string& sid) {
    return platform.UserAccountNames({&sid, 1}).at(0);
}

}  // namespace ostrevin
