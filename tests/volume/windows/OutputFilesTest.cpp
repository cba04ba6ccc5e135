// Files that the program writes: on the examiner's disk alone.
#include <windows.h>
#include <gtest/gtest.h>

#include "platform/FilePath.h"
#include "platform/volume/VolumePlatform.h"
#include "tests/volume/TestVolume.h"
#include "tests/volume/WritingFiles.h"

namespace ostrevin {
namespace {

class OutputFilesTest : public testing::Test {
  protected:
    TestVolume volume_;
};

TEST_F(OutputFilesTest, AreCreatedOrReplaced) {
    const TemporaryFolder own;
    const auto platform = volume_.Make();
    WriteOutput(*platform, own / "\u0442.htm", "first, and longer");
    EXPECT_EQ(BytesOfFile(own / "\u0442.htm"), "first, and longer");
    WriteOutput(*platform, own / "\u0442.htm", "second");
    EXPECT_EQ(BytesOfFile(own / "\u0442.htm"), "second");
    WriteOutput(*platform, own.Utf8Path() + "/slash.htm", "text\n");
    EXPECT_EQ(BytesOfFile(own / "slash.htm"), "text\n");
}

TEST_F(OutputFilesTest, LieNeverWithinTheEvidence) {
    const TemporaryFolder own;
    volume_.folder.Write("old.htm", "old");
    ASSERT_NE(CreateHardLinkW(FilePath(own / "same.htm").c_str(),
                              FilePath(volume_.folder / "old.htm").c_str(), nullptr),
              0);
    const auto platform = volume_.Make();
    for (const std::string& path :
         {volume_.folder / "new.htm", volume_.folder / "old.htm", volume_.folder / "windows/new.htm",
          "\\\\?\\" + (volume_.folder / "new.htm"), volume_.folder / "WINDOWS/../new.htm",
          own / "same.htm"}) {
        EXPECT_EQ(FailureOf([&] { platform->CreateOutputFile(path); }), "Path/File access error: " + path);
        EXPECT_NE(FailureOf([&] { platform->CreateOutputFolder(path); }), "") << path;
    }
    EXPECT_NE(FailureOf([&] { platform->CreateOutputFolder(volume_.folder.Utf8Path()); }), "");
    EXPECT_FALSE(std::filesystem::exists(volume_.folder / "new.htm"));
    EXPECT_FALSE(std::filesystem::exists(volume_.folder / "WINDOWS/new.htm"));
    EXPECT_EQ(BytesOfFile(volume_.folder / "old.htm"), "old");
    const std::unique_ptr<ShellLink> shortcut = platform->CreateShellLink();
    ASSERT_TRUE(shortcut->SetPath("C:\\Docs\\a.txt"));
    EXPECT_TRUE(shortcut->Save(own / "a.lnk"));
    EXPECT_FALSE(shortcut->Save(volume_.folder / "a.lnk"));
    EXPECT_FALSE(shortcut->Save("a.lnk"));
}

TEST_F(OutputFilesTest, AreRefusedWhereThereIsNoPlaceForThem) {
    const TemporaryFolder own;
    own.MakeFolder("folder");
    own.Write("file.htm", "text");
    const auto platform = volume_.Make();
    for (const std::string& path :
         {own / "folder", own / "none/a.htm", own / "file.htm:stream", own / "a*.htm",
          std::string("\\\\.\\C:"), std::string("NUL"), own / "NUL", std::string("C:\\"), std::string()}) {
        EXPECT_EQ(FailureOf([&] { platform->CreateOutputFile(path); }), "Path/File access error: " + path);
    }
}

TEST_F(OutputFilesTest, AreNotWrittenOverWhatIsToBeKept) {
    const TemporaryFolder own;
    own.Write("old.htm", "old");
    const auto platform = volume_.Make();
    try {
        platform->CreateOutputFile(own / "OLD.htm", Existing::Keep);
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), RuntimeError::kFileAlreadyExists);
    }
    EXPECT_EQ(BytesOfFile(own / "old.htm"), "old");
    platform->CreateOutputFile(own / "new.htm", Existing::Keep)->Write("new");
    EXPECT_EQ(BytesOfFile(own / "new.htm"), "new");
    EXPECT_TRUE(platform->MayKeep(own / "new.htm"));
    EXPECT_TRUE(platform->MayKeep(own / "none.ini"));
    EXPECT_FALSE(platform->MayKeep(volume_.folder / "none.ini"));
    EXPECT_FALSE(platform->MayKeep(own.Utf8Path()));
}

TEST_F(OutputFilesTest, AreFoundByThePathTheyWereGiven) {
    const TemporaryFolder own;
    own.Write("other.htm", "text");
    const auto platform = volume_.Make();
    EXPECT_FALSE(platform->OwnFileExists(own / "a.htm"));
    WriteOutput(*platform, own / "a.htm", "text");
    EXPECT_TRUE(platform->OwnFileExists(own / "a.htm"));
    EXPECT_FALSE(platform->OwnFileExists(own / "other.htm")) << "not written in this run";
    std::filesystem::remove(own / "a.htm");
    EXPECT_FALSE(platform->OwnFileExists(own / "a.htm"));
}

}  // namespace
}  // namespace ostrevin
