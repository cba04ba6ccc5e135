#include <gtest/gtest.h>
#include <stdexcept>

#include "platform/Paths.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

TEST(Paths, TheAppFolderEndsInOneSeparator) {
    MemoryPlatform platform;
    platform.applicationFolder = "C:\\";
    EXPECT_EQ(GetAppFolder(platform), "C:\\");
    platform.applicationFolder = "C:\\Program Files\\Ostrevin";
    EXPECT_EQ(GetAppFolder(platform), "C:\\Program Files\\Ostrevin\\");
    platform.applicationFolder = "/opt/ostrevin";
    EXPECT_EQ(GetAppFolder(platform), "/opt/ostrevin/");
    EXPECT_EQ(GetKeptFile(platform, "a.ini"), "/opt/ostrevin/a.ini");
    platform.mayKeep = false;
    EXPECT_EQ(GetKeptFile(platform, "a.ini"), "");
    platform.mayKeep = true;
    platform.applicationFolder = "";
    EXPECT_EQ(GetAppFolder(platform), "") << "nothing is kept in the current folder";
    EXPECT_EQ(GetKeptFile(platform, "a.ini"), "");
}

TEST(Paths, TheSystemDriveIsThatOfTheWindowsFolder) {
    MemoryPlatform platform;
    platform.windowsDirectory = "D:\\WINDOWS";
    EXPECT_EQ(GetWindowsFolder(platform), "D:\\WINDOWS");
    EXPECT_EQ(GetSystemDrive(platform), "D:");
    platform.windowsDirectory = "";
    EXPECT_EQ(GetSystemDrive(platform), ":");
}

TEST(Paths, ASpecialFolderThatIsNotKnownIsEmpty) {
    MemoryPlatform platform;
    platform.specialFolders[8] = "C:\\Documents and Settings\\anna\\Recent";
    EXPECT_EQ(GetSpecialFolderPath(platform, kFolderRecent), "C:\\Documents and Settings\\anna\\Recent");
    EXPECT_EQ(GetSpecialFolderPath(platform, kFolderHistory), "");
}

TEST(Paths, TheFolderOfAPathKeepsItsSeparator) {
    EXPECT_EQ(GetFolderOfPath("C:\\Docs\\a.txt"), "C:\\Docs\\");
    EXPECT_EQ(GetFolderOfPath("C:\\Docs\\"), "C:\\Docs\\");
    EXPECT_EQ(GetFolderOfPath("a.txt"), "a.txt");
    EXPECT_EQ(GetFolderOfPath(""), "");
    EXPECT_EQ(GetFolderOfPath("http://example.org/a"), "http://example.org/a");
}

TEST(Paths, AFolderExistsToo) {
    MemoryPlatform platform;
    platform.AddFile("C:\\Docs\\a.txt");
    EXPECT_TRUE(FileExists(platform, "C:\\Docs\\a.txt"));
    EXPECT_TRUE(FileExists(platform, "c:\\docs"));
    EXPECT_FALSE(FileExists(platform, "C:\\Docs\\b.txt"));
}

TEST(Paths, ADocumentIsOpenedInItsFolder) {
    MemoryPlatform platform;
    platform.shellExecuteResult = 31;
    EXPECT_EQ(ShellOpenDocument(platform, "C:\\Docs\\a.txt"), 31);
    ASSERT_EQ(platform.executed.size(), 1U);
    EXPECT_EQ(platform.executed[0].verb, "open");
    EXPECT_EQ(platform.executed[0].file, "C:\\Docs\\a.txt");
    EXPECT_EQ(platform.executed[0].folder, "C:\\Docs\\");
    EXPECT_EQ(platform.executed[0].showCommand, 1);
}

TEST(Paths, AnAddressIsItsOwnFolder) {
    MemoryPlatform platform;
    EXPECT_EQ(ShellOpenDocument(platform, "http://example.org/a"), 42);
    EXPECT_EQ(platform.executed.at(0).folder, "http://example.org/a");
}

/// A machine that cannot answer.
class FailingPlatform : public MemoryPlatform {
  public:
    std::string SpecialFolderPath(int /*csidl*/) override { throw std::runtime_error("no folder"); }
    bool PathFileExistsA(const std::string& /*path*/) override { throw std::runtime_error("no look"); }
};

TEST(Paths, AFailureIsAFileThatIsNotThereAndAFolderThatIsNotKnown) {
    FailingPlatform platform;
    EXPECT_FALSE(FileExists(platform, "C:\\a.txt"));
    EXPECT_EQ(GetSpecialFolderPath(platform, kFolderRecent), "");
}

}  // namespace
}  // namespace ostrevin
