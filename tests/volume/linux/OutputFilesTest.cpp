// Files that the program writes: on the examiner's disk alone, wherever links lead.
#include <array>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/volume/VolumePlatform.h"
#include "tests/volume/TestVolume.h"
#include "tests/volume/WritingFiles.h"

namespace ostrevin {
namespace {

class OutputFilesTest : public testing::Test {
  protected:
    TestVolume volume_;
};

TEST_F(OutputFilesTest, OutputFilesAreCreatedOrReplaced) {
    const TemporaryFolder own;
    const auto platform = volume_.Make();
    WriteOutput(*platform, own / "\u0442.htm", "first, and longer");
    EXPECT_EQ(BytesOfFile(own / "\u0442.htm"), "first, and longer");
    WriteOutput(*platform, own / "\u0442.htm", "second");
    EXPECT_EQ(BytesOfFile(own / "\u0442.htm"), "second");
    own.Write("target.htm", "old");
    own.MakeLink("link.htm", "target.htm");
    WriteOutput(*platform, own / "link.htm", "through a link");
    EXPECT_EQ(BytesOfFile(own / "target.htm"), "through a link");
}

TEST_F(OutputFilesTest, NoOutputFileLiesWithinTheEvidence) {
    const TemporaryFolder own;
    own.MakeLink("into", volume_.folder.Path().string());
    own.MakeLink("dangling.htm", volume_.folder / "new.htm");
    volume_.folder.Write("old.htm", "old");
    own.MakeLink("old.htm", volume_.folder / "old.htm");
    std::filesystem::create_hard_link(volume_.folder / "old.htm", own / "same.htm");
    const auto platform = volume_.Make();
    for (const std::string& path :
         {volume_.folder / "new.htm", volume_.folder / "old.htm", volume_.folder / "WINDOWS/new.htm",
          own / "into/new.htm", own / "into/WINDOWS/../new.htm", own / "dangling.htm", own / "old.htm",
          own / "same.htm"}) {
        EXPECT_EQ(FailureOf([&] { platform->CreateOutputFile(path); }), "Path/File access error: " + path);
        EXPECT_NE(FailureOf([&] { platform->CreateOutputFolder(path); }), "") << path;
    }
    EXPECT_NE(FailureOf([&] { platform->CreateOutputFolder(volume_.folder.Path().string()); }), "");
    EXPECT_FALSE(std::filesystem::exists(volume_.folder / "new.htm"));
    EXPECT_FALSE(std::filesystem::exists(volume_.folder / "WINDOWS/new.htm"));
    EXPECT_EQ(BytesOfFile(volume_.folder / "old.htm"), "old");
}

TEST_F(OutputFilesTest, WhatIsNoPlaceForAnOutputFileIsRefused) {
    const TemporaryFolder own;
    own.MakeFolder("folder");
    own.MakeFifo("fifo");
    const auto platform = volume_.Make();
    for (const std::string& path : {own / "folder", own / "none/a.htm", own / "fifo", own / "new/",
                                    std::string(), std::string("/dev/none/a.htm")}) {
        EXPECT_EQ(FailureOf([&] { platform->CreateOutputFile(path); }), "Path/File access error: " + path);
    }
}

TEST_F(OutputFilesTest, AFullDiskIsTold) {
    const auto platform = volume_.Make();
    const std::unique_ptr<OutputFile> file = platform->CreateOutputFile("/dev/full");
    EXPECT_EQ(FailureOf([&] {
                  file->Write("text");
                  file->Close();
              }),
              "Path/File access error: /dev/full");
    WriteOutput(*platform, "/dev/null", "text");
    EXPECT_FALSE(platform->OwnFileExists("/dev/null")) << "a device is no document";
}

TEST_F(OutputFilesTest, APipeThatSomebodyReadsTakesOutput) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const auto platform = volume_.Make();
    WriteOutput(*platform, "/dev/fd/" + std::to_string(ends[1]), "text");
    close(ends[1]);
    std::array<char, 8> read{};
    EXPECT_EQ(::read(ends[0], read.data(), read.size()), 4);
    close(ends[0]);
    EXPECT_STREQ(read.data(), "text");
}

TEST_F(OutputFilesTest, OutputFilesAreFoundByThePathTheyWereGiven) {
    const TemporaryFolder own;
    own.Write("other.htm", "text");
    const auto platform = volume_.Make();
    EXPECT_FALSE(platform->OwnFileExists(own / "a.htm"));
    WriteOutput(*platform, own / "a.htm", "text");
    EXPECT_TRUE(platform->OwnFileExists(own / "a.htm"));
    EXPECT_FALSE(platform->OwnFileExists(own / "./a.htm"));
    EXPECT_FALSE(platform->OwnFileExists(own / "other.htm")) << "not written in this run";
    std::filesystem::remove(own / "a.htm");
    EXPECT_FALSE(platform->OwnFileExists(own / "a.htm"));
}

TEST_F(OutputFilesTest, ShortcutsAreSavedToTheExaminersDiskAlone) {
    const TemporaryFolder own;
    own.MakeLink("into", volume_.folder.Path().string());
    own.MakeLink("dangling.lnk", volume_.folder / "new.lnk");
    volume_.folder.Write("old.lnk", "old");
    own.MakeLink("old.lnk", volume_.folder / "old.lnk");
    const auto platform = volume_.Make();
    const std::unique_ptr<ShellLink> shortcut = platform->CreateShellLink();
    ASSERT_TRUE(shortcut->SetPath("C:\\Docs\\a.txt"));
    EXPECT_TRUE(shortcut->Save(own / "a.lnk"));
    EXPECT_GT(std::filesystem::file_size(own / "a.lnk"), 76U);
    for (const std::string& path :
         {volume_.folder / "a.lnk", volume_.folder / "WINDOWS/a.lnk", own / "into/a.lnk",
          own / "dangling.lnk", own / "old.lnk", own / "none/a.lnk", std::string("a.lnk"),
          std::string("C:\\a.lnk"), std::string()}) {
        EXPECT_FALSE(shortcut->Save(path)) << path;
    }
    EXPECT_FALSE(std::filesystem::exists(volume_.folder / "new.lnk"));
    EXPECT_EQ(std::filesystem::file_size(volume_.folder / "old.lnk"), 3U);
}

}  // namespace
}  // namespace ostrevin
