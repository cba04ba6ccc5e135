// Files that the program writes: on the examiner's disk alone, wherever links lead.
#include <array>
#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>
#include <vector>

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

TEST_F(OutputFilesTest, AFileToBeKeptIsKept) {
    const TemporaryFolder own;
    own.Write("old.htm", "old");
    own.MakeLink("link.htm", "old.htm");
    own.MakeLink("dangling.htm", "none.htm");
    const auto platform = volume_.Make();
    for (const char* name : {"old.htm", "link.htm"}) {
        try {
            platform->CreateOutputFile(own / name, Existing::Keep);
            ADD_FAILURE() << name;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), RuntimeError::kFileAlreadyExists);
            EXPECT_EQ(error.what(), "File already exists: " + own / name);
        }
    }
    EXPECT_THROW(platform->CreateOutputFile(own / "dangling.htm", Existing::Keep), RuntimeError);
    EXPECT_EQ(BytesOfFile(own / "old.htm"), "old");
    platform->CreateOutputFile(own / "new.htm", Existing::Keep)->Write("new");
    EXPECT_EQ(BytesOfFile(own / "new.htm"), "new");
}

/// Mounts that only this process sees, and that end with it.
class MountsTest : public OutputFilesTest {
  protected:
    void SetUp() override {
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            GTEST_SKIP() << "this user may not mount";
        }
    }
    void TearDown() override {
        for (; !places_.empty(); places_.pop_back()) {
            umount2(places_.back().c_str(), MNT_DETACH);
        }
    }
    void Bind(const std::string& what, const std::string& where) {
        ASSERT_EQ(mount(what.c_str(), where.c_str(), nullptr, MS_BIND, nullptr), 0) << where;
        places_.push_back(where);
    }

  private:
    std::vector<std::string> places_;
};

TEST_F(MountsTest, NoMountLeadsOutputIntoTheEvidence) {
    const TemporaryFolder own;
    for (const char* name : {"a folder", "whole", "deep", "outside"}) {
        own.MakeFolder(name);
    }
    volume_.folder.MakeFolder("Docs/deep");
    volume_.folder.Write("old.htm", "old");
    own.Write("file.htm", "");
    Bind(volume_.folder / "Docs", own / "a folder");
    Bind(volume_.folder.Path().string(), own / "whole");
    Bind(volume_.folder / "Docs/deep", own / "deep");
    Bind(volume_.folder / "old.htm", own / "file.htm");
    const auto platform = volume_.Make();
    for (const std::string& path :
         {own / "a folder/new.htm", own / "whole/new.htm", own / "whole/Docs/new.htm", own / "deep/new.htm",
          own / "a folder/deep/new.htm", own / "file.htm"}) {
        EXPECT_EQ(FailureOf([&] { platform->CreateOutputFile(path); }), "Path/File access error: " + path);
        EXPECT_FALSE(platform->MayKeep(path)) << path;
    }
    EXPECT_NE(FailureOf([&] { platform->CreateOutputFolder(own / "a folder/new"); }), "");
    EXPECT_EQ(BytesOfFile(volume_.folder / "old.htm"), "old");
    EXPECT_TRUE(std::filesystem::is_empty(volume_.folder / "Docs/deep"));
    WriteOutput(*platform, own / "outside/a.htm", "text");
    EXPECT_EQ(BytesOfFile(own / "outside/a.htm"), "text") << "beside the mounts there is room";
}

TEST_F(MountsTest, WhatIsMountedInTheEvidenceIsEvidence) {
    const TemporaryFolder other;
    other.MakeFolder("part");
    other.MakeFolder("free");
    volume_.folder.MakeFolder("Mounted");
    Bind(other / "part", volume_.folder / "Mounted");
    const auto platform = volume_.Make();
    const std::string path = other / "part/a.htm";
    EXPECT_EQ(FailureOf([&] { platform->CreateOutputFile(path); }), "Path/File access error: " + path);
    WriteOutput(*platform, other / "free/a.htm", "text");
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
