// The questions to the management service, answered by the stand-in in this process.

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/windows/AnsiText.h"
#include "platform/windows/ComApartment.h"
#include "platform/windows/WindowsPlatform.h"
#include "startup/HostProbes.h"
#include "tests/windows/management/StandIn.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

// The whole texts, letter by letter.
constexpr char kBindComputer[] = R"(bind winmgmts:{impersonationLevel=impersonate}!\\.\Root\CIMV2)";
constexpr char kBindNamespace[] = R"(bind winmgmts:{impersonationLevel=impersonate}!root\CIMV2)";
constexpr char kAskProcesses[] =
    "query Select name from Win32_Process Where Name = 'explorer.exe' AND SessionId = 0";
constexpr char kAskGroups[] = "query Select GroupComponent, PartComponent from Win32_GroupUser";

constexpr wchar_t kMonikers[] =
    L"moniker\t0\twinmgmts:{impersonationLevel=impersonate}!\\\\.\\Root\\CIMV2\n"
    L"moniker\t0\twinmgmts:{impersonationLevel=impersonate}!root\\CIMV2\n";
constexpr wchar_t kProcesses[] =
    L"query\t0\tSelect name from Win32_Process Where Name = 'explorer.exe' AND SessionId = 0\n";
constexpr wchar_t kGroups[] = L"query\t0\tSelect GroupComponent, PartComponent from Win32_GroupUser\n";

class ManagementTest : public ::testing::Test {
  protected:
    ManagementTest() {
        class_ =
            MakeManagementClass([this] { return script; },
                                [this](const std::wstring& line) { asked.push_back(windows::Utf8(line)); });
        EXPECT_EQ(CoRegisterClassObject(kManagementClass, class_, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                        &registration_),
                  S_OK);
    }
    ~ManagementTest() override {
        CoRevokeClassObject(registration_);
        class_->Release();
    }

    Strings Owners() {
        Strings owners;
        for (const ProcessOwner& owner : platform.ShellProcessOwners()) {
            owners.push_back(std::to_string(owner.result) + " " + owner.user);
        }
        return owners;
    }
    /// What a failure says; empty for none.
    template <typename Call>
    static std::string FailureOf(const Call& call) {
        try {
            call();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return {};
    }

    std::wstring script = kMonikers;
    Strings asked;
    WindowsPlatform platform;

  private:
    windows::ComApartment apartment_;
    IParseDisplayName* class_ = nullptr;
    DWORD registration_ = 0;
};

TEST_F(ManagementTest, TheOwnersAreThoseOfTheShellInSession0) {
    script += kProcesses + std::wstring(L"process\t0\t0\tanna\nprocess\t0\t2\t\nprocess\t0\t0\tj\u00F6rg\n");
    EXPECT_EQ(Owners(), (Strings{"0 anna", "2 ", "0 j\u00F6rg"}));
    EXPECT_EQ(asked, (Strings{kBindComputer, kAskProcesses, "GetOwner", "GetOwner", "GetOwner"}));
    EXPECT_EQ(GetLoggedOnUserName(platform), "j\u00F6rg");
}

TEST_F(ManagementTest, AProcessThatCannotBeAskedHasNoOwner) {
    script += kProcesses + std::wstring(L"process\t80041002\t0\t\nprocess\t0\t0\tanna\n");
    EXPECT_EQ(Owners(), Strings{"0 anna"});
}

TEST_F(ManagementTest, OwnersThatWereToldBeforeTheAnswerBrokeOffCount) {
    script += kProcesses + std::wstring(L"process\t0\t0\tanna\nprocess\t0\t0\tzoe\nbreaks\t80041033\n");
    EXPECT_EQ(Owners(), (Strings{"0 anna", "0 zoe"}));
}

TEST_F(ManagementTest, WithoutAnAnswerThereAreNoOwners) {
    EXPECT_EQ(Owners(), Strings{}) << "a query that the service does not know";
    script +=
        L"query\t80041003\tSelect name from Win32_Process Where Name = 'explorer.exe' AND SessionId = 0\n";
    EXPECT_EQ(Owners(), Strings{});
}

TEST_F(ManagementTest, GroupsAndMembersAreReadByTheirProperties) {
    script += kGroups + std::wstring(
                            L"record\tGroupComponent\tGroup 1\tPartComponent\tanna\n"
                            L"record\tGroupComponent\tGroup 2\tPartComponent\tzoe\n");
    const std::vector<GroupUser> records = platform.GroupUsers();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].groupComponent, "Group 1");
    EXPECT_EQ(records[0].partComponent, "anna");
    EXPECT_EQ(records[1].groupComponent, "Group 2");
    EXPECT_EQ(records[1].partComponent, "zoe");
    EXPECT_EQ(asked, (Strings{kBindComputer, kAskGroups}));
}

TEST_F(ManagementTest, GroupsThatBreakOffAreAFailure) {
    script += kGroups + std::wstring(L"record\tGroupComponent\tg\tPartComponent\tm\nbreaks\t80041033\n");
    EXPECT_EQ(
        FailureOf([&] { platform.GroupUsers(); }),
        "Windows Management Instrumentation does not answer \"Select GroupComponent, PartComponent from "
        "Win32_GroupUser\": Automation error 0x80041033");
}

TEST_F(ManagementTest, ARecordWithoutThePropertyIsAFailure) {
    script += kGroups + std::wstring(L"record\tGroupComponent\tg\n");
    EXPECT_EQ(
        FailureOf([&] { platform.GroupUsers(); }),
        "Windows Management Instrumentation does not answer \"Select GroupComponent, PartComponent from "
        "Win32_GroupUser\": Automation error 0x80020006");
}

TEST_F(ManagementTest, NamesAreLookedUpByOneBinding) {
    script +=
        L"query\t0\tSelect Name from Win32_UserAccount Where SID='S-1-5-18'\n"
        L"query\t0\tSelect Name from Win32_UserAccount Where SID='S-1-5-21-1'\n"
        L"record\tName\tanna\n"
        L"query\t0\tSelect Name from Win32_UserAccount Where SID='S-1-5-21-2'\n"
        L"record\tName\tfirst\n"
        L"record\tName\tlast\n";
    const Strings sids = {"S-1-5-18", "S-1-5-21-1", "S-1-5-21-2"};
    EXPECT_EQ(platform.UserAccountNames(sids), (std::vector<Strings>{{}, {"anna"}, {"first", "last"}}));
    EXPECT_EQ(asked, (Strings{kBindNamespace, "query Select Name from Win32_UserAccount Where SID='S-1-5-18'",
                              "query Select Name from Win32_UserAccount Where SID='S-1-5-21-1'",
                              "query Select Name from Win32_UserAccount Where SID='S-1-5-21-2'"}));
}

TEST_F(ManagementTest, TheServiceIsBoundAlsoForNoAccounts) {
    EXPECT_TRUE(platform.UserAccountNames({}).empty());
    EXPECT_EQ(asked, Strings{kBindNamespace});
}

TEST_F(ManagementTest, NamesThatCannotBeAskedForAreAFailure) {
    const Strings sids = {"S-1"};
    script += L"query\t80041010\tSelect Name from Win32_UserAccount Where SID='S-1'\n";
    EXPECT_EQ(FailureOf([&] { platform.UserAccountNames(sids); }),
              "Windows Management Instrumentation does not answer \"Select Name from Win32_UserAccount Where "
              "SID='S-1'\": Automation error 0x80041010");
}

TEST_F(ManagementTest, AServiceThatCannotBeBoundIsNamed) {
    script =
        L"moniker\t80070422\twinmgmts:{impersonationLevel=impersonate}!\\\\.\\Root\\CIMV2\n"
        L"moniker\t8004100e\twinmgmts:{impersonationLevel=impersonate}!root\\CIMV2\n";
    const std::string disabled =
        "Windows Management Instrumentation cannot be reached: Automation error 0x80070422";
    EXPECT_EQ(FailureOf([&] { platform.ShellProcessOwners(); }), disabled);
    EXPECT_EQ(FailureOf([&] { platform.GroupUsers(); }), disabled);
    EXPECT_EQ(FailureOf([&] { platform.UserAccountNames({}); }),
              "Windows Management Instrumentation cannot be reached: Automation error 0x8004100E");
}

}  // namespace
}  // namespace ostrevin
