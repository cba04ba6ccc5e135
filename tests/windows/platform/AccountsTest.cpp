// The account list on the machine's own profile list, with a hive that its own calls save and load.

#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "accounts/AccountList.h"
#include "platform/Dates.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/support/ScratchFolder.h"
#include "tests/windows/platform/ScratchKey.h"
#include "tools/writers/Times.h"

namespace ostrevin {
namespace {

constexpr char kSid[] = "S-1-5-21-7-7-7-1001";
constexpr char kProfileList[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\";
constexpr char kUserAssist[] =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
    "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count";
constexpr char kOpenSave[] =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\txt";
constexpr char kTypedURLs[] = "Software\\Microsoft\\Internet Explorer\\TypedURLs";

const std::vector<std::string> kPrivileges = {"SeRestorePrivilege", "SeBackupPrivilege"};
const std::uint64_t kLastRun = samples::FileTimeOf({2009, 8, 4, 15, 22, 18});

/// Takes every privilege off this process, so that what needs one has to ask for it.
void DisablePrivileges() {
    HANDLE token = nullptr;
    ASSERT_NE(OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token), 0);
    EXPECT_NE(AdjustTokenPrivileges(token, TRUE, nullptr, 0, nullptr, nullptr), 0);
    CloseHandle(token);
}

/// The hive of an account with a trace of each kind, in a profile folder of its own.
class Profile {
  public:
    Profile() {
        constexpr std::uint32_t kCount = 14;  // nine runs
        std::string data(16, '\0');
        std::memcpy(data.data() + 4, &kCount, sizeof kCount);
        std::memcpy(data.data() + 8, &kLastRun, sizeof kLastRun);
        const ScratchKey hive;
        hive.Set(kUserAssist, L"HRZR_EHACNGU:P:\\Gbbyf\\k.rkr", REG_BINARY, data.data(), data.size());
        hive.SetText(kOpenSave, L"MRUList", L"a");
        hive.SetText(kOpenSave, L"a", L"C:\\Docs\\caf\u00E9.txt");
        hive.SetText(kTypedURLs, L"url1", L"http://example.org/");
        WindowsPlatform().EnablePrivileges(kPrivileges);
        if (RegSaveKeyA(hive.Handle(), folder_.Path("NTUSER.DAT").c_str(), nullptr) != 0) {
            throw std::runtime_error("cannot save the hive");
        }
        DisablePrivileges();
        std::wstring path = L"%SystemDrive%";
        const std::string ownPath = folder_.Path();
        path.append(ownPath.begin() + 2, ownPath.end() - 1);
        entry_.SetText("", L"ProfileImagePath", path, REG_EXPAND_SZ);
    }
    ~Profile() {
        WindowsPlatform().EnablePrivileges(kPrivileges);
        RegUnLoadKeyA(HKEY_USERS, kSid);
    }
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;

    /// The profile's folder without the separator at its end.
    [[nodiscard]] std::string Path() const {
        const std::string path = folder_.Path();
        return path.substr(0, path.size() - 1);
    }

  private:
    ScratchFolder folder_;
    ScratchKey entry_{HKEY_LOCAL_MACHINE, std::string(kProfileList) + kSid};
};

class WindowsAccounts : public testing::Test {
  protected:
    WindowsAccounts() {
        EXPECT_TRUE(accounts.LoadAccountSIDSFromRegistry());
        accounts.LoadAccountNamesFromSID();
        while (index < accounts.Count() && accounts.AccountSID(index) != kSid) {
            ++index;
        }
    }

    Profile profile;
    WindowsPlatform platform;
    AccountList accounts{platform, {}};
    std::int32_t index = 0;
};

TEST_F(WindowsAccounts, ListsTheProfilesOfTheMachine) {
    ASSERT_LT(index, accounts.Count());
    EXPECT_EQ(accounts.AccountDocumentSettingsPath(index), profile.Path());
}

TEST_F(WindowsAccounts, LoadsTheHiveOfAnAccountForItsPrograms) {
    const UserAssistList* programs = accounts.UserAssist(index);
    ASSERT_NE(programs, nullptr);
    ASSERT_EQ(programs->Count(), 1);
    EXPECT_EQ(programs->UserAssistType(0), "UEME_RUNPATH");
    EXPECT_EQ(programs->UserAssistValue(0), "C:\\Tools\\x.exe");
    EXPECT_EQ(programs->UserAssistRunCount(0), 9);
    const std::optional<FileTime> local = platform.FileTimeToLocalFileTime(
        {static_cast<std::uint32_t>(kLastRun), static_cast<std::uint32_t>(kLastRun >> 32U)});
    ASSERT_TRUE(local);
    EXPECT_EQ(programs->UserAssistLastRun(0), DateFromCivil(*platform.FileTimeToSystemTime(*local)));
}

TEST_F(WindowsAccounts, LoadsTheHiveOfAnAccountForItsDocuments) {
    const OpenSaveList* documents = accounts.OpenSave(index);
    ASSERT_NE(documents, nullptr);
    ASSERT_EQ(documents->Count(), 1);
    EXPECT_EQ(documents->Document(0), "C:\\Docs\\caf\u00E9.txt");
    ASSERT_EQ(accounts.TypedURL(index)->Count(), 1);
    EXPECT_EQ(accounts.TypedURL(index)->URL(0), "http://example.org/");
}

TEST_F(WindowsAccounts, TypedAddressesNeedAHiveThatIsLoaded) {
    EXPECT_EQ(accounts.TypedURL(index)->Count(), 0);
    accounts.UserAssist(index);
    EXPECT_EQ(accounts.TypedURL(index)->Count(), 0) << "the source stays";
}

TEST_F(WindowsAccounts, AHiveIsLoadedOnceAndAMissingOneNever) {
    const std::string file = profile.Path() + "\\NTUSER.DAT";
    EXPECT_NE(platform.RegLoadKeyA(kUsers, kSid, file), kSuccess) << "without the privileges";
    platform.EnablePrivileges(kPrivileges);
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, kSid, file), kSuccess);
    EXPECT_NE(platform.RegLoadKeyA(kUsers, kSid, file), kSuccess);
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "S-1-5-21-7-7-7-1002", file + "-none"), kFileNotFound);
}

TEST(WindowsPrivileges, AreEnabledAllAtOnce) {
    WindowsPlatform platform;
    platform.EnablePrivileges(kPrivileges);
    HANDLE token = nullptr;
    ASSERT_NE(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token), 0);
    for (const std::string& name : kPrivileges) {
        PRIVILEGE_SET wanted{};
        wanted.PrivilegeCount = 1;
        wanted.Control = PRIVILEGE_SET_ALL_NECESSARY;
        wanted.Privilege[0].Attributes = SE_PRIVILEGE_ENABLED;
        ASSERT_NE(LookupPrivilegeValueA(nullptr, name.c_str(), &wanted.Privilege[0].Luid), 0);
        BOOL enabled = FALSE;
        EXPECT_NE(PrivilegeCheck(token, &wanted, &enabled), 0);
        EXPECT_TRUE(enabled) << name;
    }
    CloseHandle(token);
}

TEST(WindowsManagement, AnswersWithoutAFailure) {
    WindowsPlatform platform;
    EXPECT_NO_THROW(platform.ShellProcessOwners());
    EXPECT_NO_THROW(platform.GroupUsers());
    const std::vector<std::string> sids = {"S-1-5-21-7-7-7-1001"};
    EXPECT_EQ(platform.UserAccountNames(sids), std::vector<std::vector<std::string>>(1));
}

}  // namespace
}  // namespace ostrevin
