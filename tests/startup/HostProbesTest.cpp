#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "startup/HostProbes.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

class HostProbesTest : public ::testing::Test {
  protected:
    std::string NameOf(std::uint32_t platformId, std::uint32_t major, std::uint32_t minor) {
        platform.version = {platformId, major, minor};
        return GetOSName(platform);
    }
    MemoryPlatform platform;
};

// --- The operating system.

TEST_F(HostProbesTest, NamesWindows9xByItsMinorVersion) {
    EXPECT_EQ(NameOf(1, 4, 0), "Windows 95");
    EXPECT_EQ(NameOf(1, 4, 10), "Windows 98");
    EXPECT_EQ(NameOf(1, 4, 90), "Windows Millennium");
    EXPECT_EQ(NameOf(1, 7, 90), "Windows Millennium");
    EXPECT_EQ(NameOf(1, 4, 1), "");
}

TEST_F(HostProbesTest, NamesWindowsNTByItsMajorVersion) {
    EXPECT_EQ(NameOf(2, 3, 51), "Windows NT 3.51");
    EXPECT_EQ(NameOf(2, 3, 1), "Windows NT 3.51");
    EXPECT_EQ(NameOf(2, 4, 0), "Windows NT 4.0");
    EXPECT_EQ(NameOf(2, 5, 0), "Windows 2000");
    EXPECT_EQ(NameOf(2, 5, 1), "Windows XP");
    EXPECT_EQ(NameOf(2, 5, 2), "Windows XP") << "the server of 2003 too";
    EXPECT_EQ(NameOf(2, 6, 0), "");
    EXPECT_EQ(NameOf(2, 10, 0), "");
    EXPECT_EQ(NameOf(2, 2, 0), "");
}

TEST_F(HostProbesTest, OtherPlatformsHaveNoName) {
    EXPECT_EQ(NameOf(0, 3, 10), "Failed");
    EXPECT_EQ(NameOf(3, 5, 1), "Failed");
}

// --- The logged-on user.

TEST_F(HostProbesTest, TheLastOwnerThatCanBeToldIsLoggedOn) {
    platform.environment["USERNAME"] = "fallback";
    platform.shellProcessOwners = {{0, "first"}, {0, "second"}, {2, "denied"}};
    EXPECT_EQ(GetLoggedOnUserName(platform), "second");
}

TEST_F(HostProbesTest, WithoutAShellItIsUsername) {
    platform.environment["USERNAME"] = "fallback";
    EXPECT_EQ(GetLoggedOnUserName(platform), "fallback");
    platform.shellProcessOwners = {{2, "denied"}};
    EXPECT_EQ(GetLoggedOnUserName(platform), "fallback");
    platform.shellProcessOwners = {{0, "first"}, {0, ""}};
    EXPECT_EQ(GetLoggedOnUserName(platform), "fallback") << "an empty owner is no answer";
    platform.environment.clear();
    EXPECT_EQ(GetLoggedOnUserName(platform), "");
}

TEST_F(HostProbesTest, LetsTheServicesFailureThrough) {
    platform.environment["USERNAME"] = "fallback";
    platform.Fail("ShellProcessOwners");
    EXPECT_THROW(static_cast<void>(GetLoggedOnUserName(platform)), std::runtime_error);
    EXPECT_THROW(static_cast<void>(IsUserAdministrator(platform)), std::runtime_error);
}

// --- The administrator.

class AdministratorTest : public HostProbesTest {
  protected:
    AdministratorTest() { platform.shellProcessOwners = {{0, "anna"}}; }
    bool IsMember(const std::string& group, const std::string& member) {
        platform.groupUsers = {
            {Group("Users"), Member("anna")}, {group, member}, {Group("Guests"), Member("x")}};
        return IsUserAdministrator(platform);
    }
    static std::string Group(const std::string& name) {
        return R"(\\PC\root\cimv2:Win32_Group.Domain="PC",Name=")" + name + "\"";
    }
    static std::string Member(const std::string& name) {
        return R"(\\PC\root\cimv2:Win32_UserAccount.Domain="PC",Name=")" + name + "\"";
    }
};

TEST_F(AdministratorTest, IsAMemberOfAdministrators) {
    EXPECT_TRUE(IsMember(Group("Administrators"), Member("anna")));
    EXPECT_FALSE(IsMember(Group("Administrators"), Member("zoe")));
    EXPECT_FALSE(IsMember(Group("Power Users"), Member("anna")));
}

TEST_F(AdministratorTest, IsFoundLoosely) {
    EXPECT_TRUE(IsMember(Group("Domain Administrators"), Member("joanna")));
    EXPECT_TRUE(IsMember("Administrators", R"(\\anna\root:Name="zoe")"));
    EXPECT_FALSE(IsMember(Group("administrators"), Member("anna"))) << "case counts";
    EXPECT_FALSE(IsMember(Group("Administrators"), Member("Anna")));
}

TEST_F(AdministratorTest, IsNoMemberThroughANestedGroup) {
    platform.groupUsers = {{Group("Administrators"), Group("Helpers")}, {Group("Helpers"), Member("anna")}};
    EXPECT_FALSE(IsUserAdministrator(platform));
}

TEST_F(AdministratorTest, NeedsGroupAndMemberInOneRecord) {
    platform.groupUsers = {{Group("Administrators"), Member("zoe")}, {Group("Users"), Member("anna")}};
    EXPECT_FALSE(IsUserAdministrator(platform));
    platform.groupUsers.clear();
    EXPECT_FALSE(IsUserAdministrator(platform));
}

TEST_F(AdministratorTest, AnEmptyNameOccursInAnyMember) {
    platform.shellProcessOwners.clear();
    EXPECT_TRUE(IsMember(Group("Administrators"), Member("zoe")));
}

TEST_F(AdministratorTest, LetsTheServicesFailureThrough) {
    platform.Fail("GroupUsers");
    EXPECT_THROW(static_cast<void>(IsUserAdministrator(platform)), std::runtime_error);
}

// --- The control classes.

TEST(InitCommonControlClasses, TellsWhetherThatWentWell) {
    testing::TestToolkit toolkit;
    EXPECT_TRUE(InitCommonControlClasses(toolkit));
    toolkit.initFails = true;
    EXPECT_FALSE(InitCommonControlClasses(toolkit));
    EXPECT_EQ(toolkit.initCalls, 2);
}

}  // namespace
}  // namespace ostrevin
