// The order of the start, and what is said at it.
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "startup/Program.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

constexpr char kAdministratorWarning[] =
    "You do not seem to be a member of the local Administrators Group.  Ostrevin will not work correctly "
    "unless you "
    "have Administrative access on this computer.  If you belong to another group with Administrative "
    "access, "
    "disregard this message.";

class ProgramTest : public ::testing::Test {
  protected:
    ProgramTest() {
        platform.applicationFolder = folder.Path();
        platform.shellProcessOwners = {{0, "anna"}};
        platform.groupUsers = {{"Win32_Group.Name=\"Administrators\"", "Win32_UserAccount.Name=\"anna\""}};
        platform.Root(kLocalMachine)
            .Key("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\S-1-5-21-1")
            .SetText("ProfileImagePath", "C:\\Documents and Settings\\anna");
        platform.accountNames["S-1-5-21-1"] = {"anna"};
    }
    [[nodiscard]] Strings BoxTexts() const {
        Strings texts;
        for (const auto& box : toolkit.boxes) {
            EXPECT_EQ(box.caption, "Ostrevin");
            texts.push_back(box.text);
        }
        return texts;
    }

    ScratchFolder folder;
    MemoryPlatform platform;
    testing::TestToolkit toolkit;
};

TEST_F(ProgramTest, ShowsTheSplashWhileTheAccountsLoadAndThenTheWindow) {
    Program program(platform, toolkit);
    program.Main();
    std::erase_if(toolkit.log, [](const std::string& what) { return what.starts_with("load cursor"); });
    EXPECT_EQ(toolkit.log, (Strings{"init controls", "load frmSplash", "show frmSplash", "refresh frmSplash",
                                    "unload frmSplash", "load frmMain", "show frmMain"}));
    EXPECT_EQ(toolkit.initCalls, 1);
    EXPECT_EQ(program.LoggedOnUserName(), "anna");
    EXPECT_EQ(program.Accounts()->AccountName(0), "anna");
    EXPECT_EQ(program.MainWindow()->treeUsers.Roots().size(), 1U);
    EXPECT_EQ(program.Log()->FileName(), folder.Path("error.log"));
    EXPECT_FALSE(program.Log()->AddDate());
    EXPECT_TRUE(platform.hivesLoaded.empty()) << "hives are loaded when a source is first asked for";
}

TEST_F(ProgramTest, WarnsOnAnotherSystemAndGoesOn) {
    platform.version = {1, 4, 10};
    Program program(platform, toolkit);
    program.Main();
    EXPECT_EQ(BoxTexts(),
              (Strings{"Your Operating System is : Windows 98\r\nOstrevin requires Windows 2000, or "
                       "Windows XP to function properly."}));
    EXPECT_NE(program.MainWindow(), nullptr);
}

TEST_F(ProgramTest, WarnsWithNothingBehindTheColonOnAnUnknownVersion) {
    platform.version = {2, 6, 0};
    Program program(platform, toolkit);
    program.Main();
    ASSERT_EQ(toolkit.boxes.size(), 1U);
    EXPECT_TRUE(toolkit.boxes[0].text.starts_with("Your Operating System is : \r\nOstrevin requires"));
}

TEST_F(ProgramTest, HasNoWarningOnWindows2000) {
    platform.version = {2, 5, 0};
    Program program(platform, toolkit);
    program.Main();
    EXPECT_TRUE(toolkit.boxes.empty());
}

TEST_F(ProgramTest, TakesServer2003ForXP) {
    platform.version = {2, 5, 2};
    Program program(platform, toolkit);
    program.Main();
    EXPECT_TRUE(toolkit.boxes.empty());
}

TEST_F(ProgramTest, WarnsAUserWhoIsNoAdministratorAndGoesOn) {
    platform.groupUsers = {{"Win32_Group.Name=\"Nested\"", "Win32_UserAccount.Name=\"anna\""}};
    Program program(platform, toolkit);
    program.Main();
    EXPECT_EQ(BoxTexts(), (Strings{kAdministratorWarning}));
    EXPECT_NE(program.MainWindow(), nullptr);
}

TEST_F(ProgramTest, TellsOfTheSystemBeforeTheUser) {
    platform.version = {2, 6, 1};
    platform.groupUsers.clear();
    Program program(platform, toolkit);
    program.Main();
    ASSERT_EQ(toolkit.boxes.size(), 2U);
    EXPECT_EQ(toolkit.boxes[1].text, kAdministratorWarning);
    EXPECT_EQ(toolkit.log[2], "init controls");
    EXPECT_EQ(toolkit.log[3], "load frmSplash");
}

TEST_F(ProgramTest, GoesOnWhenTheControlClassesAreNotToBeHad) {
    toolkit.initFails = true;
    Program program(platform, toolkit);
    program.Main();
    EXPECT_NE(program.MainWindow(), nullptr);
}

TEST_F(ProgramTest, EndsWhenTheManagementServiceCannotBeReached) {
    platform.Fail("ShellProcessOwners");
    Program program(platform, toolkit);
    EXPECT_THROW(program.Main(), std::exception);
    EXPECT_EQ(program.MainWindow(), nullptr);
}

TEST_F(ProgramTest, TakesTheSplashAwayWhenTheAccountsCannotBeNamed) {
    platform.Fail("UserAccountNames");
    Program program(platform, toolkit);
    EXPECT_THROW(program.Main(), std::exception);
    EXPECT_EQ(toolkit.log.back(), "unload frmSplash");
}

TEST_F(ProgramTest, WritesTheSettingsFileAtItsEnd) {
    {
        Program program(platform, toolkit);
        program.Main();
        EXPECT_FALSE(folder.Has("ostrevin.ini"));
        program.MainWindow()->mnuExit.Click.Raise();
        EXPECT_EQ(folder.Read("ostrevin.ini"), "");
        folder.Write("ostrevin.ini", "by another");
    }
    EXPECT_EQ(folder.Read("ostrevin.ini"), "by another") << "it is written once";
    EXPECT_FALSE(folder.Has("error.log")) << "nothing went wrong";
}

TEST_F(ProgramTest, ReadsTheSettingsFileAtItsStart) {
    folder.Write("ostrevin.ini", "ShowPreview=True\r\n");
    Program program(platform, toolkit);
    program.Main();
    EXPECT_TRUE(program.MainWindow()->mnuShowPreview.Checked());
    EXPECT_EQ(program.Settings()->GetINIOption("ShowPreview"), "True");
}

#ifdef __linux__
TEST_F(ProgramTest, StartsWithoutASettingsFileThatCannotBeRead) {
    // A link to an ordinary file, of which nothing can be read at its beginning.
    const std::filesystem::path link = folder.Path("ostrevin.ini");
    std::filesystem::create_symlink("/proc/self/mem", link);
    {
        Program program(platform, toolkit);
        program.Main();
        EXPECT_NE(program.MainWindow(), nullptr);
        EXPECT_TRUE(toolkit.boxes.empty());
        EXPECT_EQ(program.Settings()->GetINIOption("ShowPreview"), "");
    }
    EXPECT_TRUE(std::filesystem::is_symlink(link)) << "it is not written over";
}
#endif

TEST_F(ProgramTest, LogsASourceThatIsNotReadToItsEnd) {
    std::array<std::byte, 16> tooSmall{};
    tooSmall[7] = std::byte{0x80};
    platform.Root(kUsers)
        .Key(
            "S-1-5-21-1\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
            "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count")
        .SetData("HRZR_EHACNGU:P:\\n.rkr", kRegBinary, tooSmall);
    Program program(platform, toolkit);
    program.Main();
    EXPECT_NO_THROW(program.Accounts()->UserAssist(0));
    EXPECT_NE(folder.Read("error.log").find("S-1-5-21-1"), std::string::npos);
}

TEST_F(ProgramTest, WhatItLogsOfTheEvidenceStaysOneLine) {
    const std::string sid = "S-2\r\nforged\x1B]0;x\u009B2J\u202E";
    platform.Root(kLocalMachine)
        .Key("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\" + sid)
        .SetText("ProfileImagePath", "C:\\Documents and Settings\\ben");
    std::array<std::byte, 16> tooSmall{};
    tooSmall[7] = std::byte{0x80};
    platform.Root(kUsers)
        .Key(sid +
             "\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
             "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count")
        .SetData("HRZR_EHACNGU:P:\\n.rkr", kRegBinary, tooSmall);
    Program program(platform, toolkit);
    program.Main();
    program.Accounts()->UserAssist(1);
    const std::string log = folder.Read("error.log");
    EXPECT_NE(log.find("S-2??forged?]0;x?2J?"), std::string::npos) << log;
    EXPECT_EQ(log.find('\r'), log.size() - 2) << "one line";
}

}  // namespace
}  // namespace ostrevin
