#include <algorithm>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/volume/ReadingFiles.h"
#include "tests/volume/TemporaryFolder.h"

namespace ostrevin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VolumeFiles, MatchWithoutCaseButExactlyFirst) {
    const TemporaryFolder folder;
    folder.Write("Docs/A.txt", "upper");
    folder.Write("Docs/a.txt", "lower");
    folder.Write("Docs/Только.TXT", "cyrillic");
    const VolumeFiles files(folder.Path());
    EXPECT_EQ(Contents(files, "C:\\Docs\\a.txt"), "lower");
    EXPECT_EQ(Contents(files, "C:\\DOCS\\A.txt"), "upper");
    EXPECT_EQ(Contents(files, "C:\\docs\\A.TXT"), "upper") << "of several, the first by bytes";
    EXPECT_EQ(Contents(files, "C:\\docs\\тОЛЬКО.txt"), "cyrillic");
    EXPECT_EQ(files.HostPath("c:\\docs\\тОЛЬКО.txt"), folder / "Docs/Только.TXT");
}

TEST(VolumeFiles, FollowingALinkLeavesTheTimeOfItsLastAccess) {
    const int tree = open_tree(AT_FDCWD, "/", OPEN_TREE_CLONE | OPEN_TREE_CLOEXEC);
    if (tree < 0) {
        GTEST_SKIP() << "this user may not mount, and then the system has no way to leave it";
    }
    close(tree);
    const TemporaryFolder folder;
    folder.Write("Docs/a.txt", "a");
    folder.MakeLink("link", "Docs");
    const timespec times[] = {{1000000000, 0}, {1200000000, 0}};
    for (const char* name : {"link", "Docs", "Docs/a.txt"}) {
        ASSERT_EQ(utimensat(AT_FDCWD, (folder / name).c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
    }
    const VolumeFiles files(folder.Path());
    EXPECT_EQ(Contents(files, "C:\\LINK\\A.txt"), "a");
    EXPECT_EQ(files.List("C:\\link").size(), 1U);
    EXPECT_EQ(files.HostPath("C:\\link\\a.txt"), folder / "Docs/a.txt");
    for (const char* name : {"link", "Docs", "Docs/a.txt"}) {
        struct stat status {};
        ASSERT_EQ(lstat((folder / name).c_str(), &status), 0);
        EXPECT_EQ(status.st_atim.tv_sec, 1000000000) << name;
    }
}

TEST(VolumeFiles, TellWhyAFileCannotBeOpened) {
    const TemporaryFolder folder;
    folder.Write("Docs/a.txt", "a");
    folder.MakeFifo("fifo");
    const VolumeFiles files(folder.Path());
    EXPECT_EQ(Contents(files, "C:\\Docs\\b.txt"), "code 2");
    EXPECT_EQ(Contents(files, "C:\\None\\b.txt"), "code 3");
    EXPECT_EQ(Contents(files, "C:\\Docs\\a.txt\\b.txt"), "code 3");
    EXPECT_EQ(Contents(files, "D:\\Docs\\a.txt"), "code 3");
    EXPECT_EQ(Contents(files, "C:\\Docs"), "code 5");
    EXPECT_EQ(Contents(files, "C:\\fifo"), "code 5") << "and it does not wait for a writer";
    EXPECT_EQ(Contents(files, "C:\\"), "code 5");
}

TEST(VolumeFiles, RefuseWhatMayNotBeRead) {
    const TemporaryFolder folder;
    folder.Write("shut/a.txt", "a");
    folder.Write("b.txt", "b");
    folder.Write("c.txt", "c");
    folder.Shut("shut");
    folder.Shut("b.txt");
    const OrdinaryUser user;
    const VolumeFiles files(folder.Path());
    EXPECT_EQ(Contents(files, "C:\\C.TXT"), "c");
    EXPECT_EQ(Contents(files, "C:\\b.txt"), "code 5");
    EXPECT_EQ(Contents(files, "C:\\shut\\a.txt"), "code 5");
    EXPECT_THAT(files.List("C:\\shut"), IsEmpty());
}

TEST(VolumeFiles, FollowLinksInsideTheVolumeOnly) {
    const TemporaryFolder outside;
    outside.Write("secret.txt", "secret");
    const TemporaryFolder folder;
    folder.Write("Docs/Deep/a.txt", "a");
    folder.MakeLink("relative", "docs/../Docs/DEEP");
    folder.MakeLink("absolute", "/Docs/Deep");
    folder.MakeLink("Docs/up", "../../../../../Docs/Deep/a.txt");
    folder.MakeLink("out", outside.Path());
    folder.MakeLink("outFile", outside / "secret.txt");
    folder.MakeLink("climb", "../" + outside.Path().filename().string() + "/secret.txt");
    folder.MakeLink("magic", "/proc/self/root" + (outside / "secret.txt"));
    folder.MakeLink("loop", "loop");
    folder.MakeLink("ping", "pong");
    folder.MakeLink("pong", "ping");
    const VolumeFiles files(folder.Path());
    EXPECT_EQ(Contents(files, "C:\\relative\\a.txt"), "a");
    EXPECT_EQ(Contents(files, "C:\\absolute\\a.txt"), "a");
    EXPECT_EQ(Contents(files, "C:\\Docs\\up"), "a");
    EXPECT_EQ(files.HostPath("C:\\relative\\A.TXT"), folder / "Docs/Deep/a.txt");
    for (const char* path : {"C:\\out\\secret.txt", "C:\\outFile", "C:\\climb", "C:\\magic", "C:\\loop",
                             "C:\\ping", "C:\\relative\\..\\..\\..\\etc\\passwd"}) {
        EXPECT_FALSE(files.Exists(path)) << path;
        EXPECT_EQ(files.HostPath(path), std::nullopt) << path;
    }
}

TEST(VolumeFiles, ListAsNtfsLists) {
    const TemporaryFolder folder;
    for (const char* name : {"b.lnk", "A.lnk", "_.lnk", "a.txt", "Z", "ж.lnk", "Ё.lnk", "é", "[x]"}) {
        folder.Write(std::string("Recent/") + name, "");
    }
    const VolumeFiles files(folder.Path());
    EXPECT_THAT(Names(files.List("C:\\recent")),
                ElementsAre("A.lnk", "a.txt", "b.lnk", "Z", "[x]", "_.lnk", "é", "Ё.lnk", "ж.lnk"));
    EXPECT_THAT(files.List("C:\\None"), IsEmpty());
    EXPECT_THAT(files.List("C:\\Recent\\Z"), IsEmpty());
}

TEST(VolumeFiles, PresumeWhatIsHiddenWhereNothingTellsIt) {
    const TemporaryFolder folder;
    folder.Write("Recent/desktop.ini", "");
    folder.Write("Recent/THUMBS.DB", "");
    folder.Write("Recent/.hidden", "");
    folder.Write("Recent/a.lnk", "");
    folder.MakeFolder("Recent/Folder");
    folder.MakeLink("Recent/link", "Folder");
    folder.MakeLink("Recent/nowhere", "none");
    folder.MakeFifo("Recent/pipe");
    const VolumeFiles files(folder.Path());
    std::vector<std::pair<std::string, std::uint32_t>> listed;
    for (const DirectoryEntry& entry : files.List("C:\\Recent")) {
        listed.emplace_back(entry.name, entry.attributes);
    }
    EXPECT_THAT(listed,
                ElementsAre(std::pair(".hidden", 2U), std::pair("a.lnk", 0U), std::pair("desktop.ini", 2U),
                            std::pair("Folder", 16U), std::pair("link", 16U), std::pair("nowhere", 0U),
                            std::pair("pipe", 0U), std::pair("THUMBS.DB", 2U)));
}

TEST(VolumeFiles, FindAnEntryByItsExactPath) {
    const TemporaryFolder folder;
    folder.Write("History/Index.dat", "");
    folder.MakeLink("History/link", "Index.dat");
    const VolumeFiles files(folder.Path());
    const auto entry = files.Find("C:\\HISTORY\\index.DAT");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "Index.dat");
    EXPECT_EQ(entry->attributes, 0U);
    EXPECT_EQ(files.Find("C:\\history")->attributes, kAttributeDirectory);
    EXPECT_EQ(files.Find("C:\\history\\LINK")->name, "link");
    EXPECT_FALSE(files.Find("C:\\history\\other"));
    EXPECT_FALSE(files.Find("C:\\history\\index.dat\\x"));
    EXPECT_FALSE(files.Find("C:\\"));
    EXPECT_FALSE(files.Find("\\\\server\\share\\index.dat"));
}

TEST(VolumeFiles, GiveNamesThatAreNoUtf8AsText) {
    const TemporaryFolder folder;
    folder.Write("Docs/caf\xE9.txt", "latin");
    const VolumeFiles files(folder.Path());
    const std::vector<DirectoryEntry> entries = files.List("C:\\Docs");
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].name, "caf\uFFFD.txt");
    EXPECT_EQ(Contents(files, "C:\\Docs\\" + entries[0].name), "latin");
}

TEST(VolumeFiles, SurviveAVolumeThatDisappears) {
    const TemporaryFolder folder;
    folder.Write("volume/a.txt", std::string(10000, 'a'));
    const VolumeFiles files(folder / "volume");
    std::int32_t result = kSuccess;
    const std::unique_ptr<InputFile> file = files.Open("C:\\a.txt", result);
    ASSERT_TRUE(file);
    std::filesystem::resize_file(folder / "volume/a.txt", 100);
    std::vector<std::byte> buffer(10000);
    EXPECT_EQ(file->Read(0, buffer), 100U);
    EXPECT_FALSE(ReadAll(*file, 10000));
    std::filesystem::remove_all(folder / "volume");
    EXPECT_FALSE(files.Exists("C:\\a.txt"));
    EXPECT_THAT(files.List("C:\\"), IsEmpty());
    EXPECT_FALSE(files.Find("C:\\a.txt"));
}

TEST(VolumeFiles, KnowWhatLiesOutside) {
    const TemporaryFolder folder;
    folder.MakeFolder("volume/inside");
    folder.MakeFolder("volumes");
    folder.MakeLink("link", "volume/inside");
    const VolumeFiles files(folder / "volume");
    EXPECT_TRUE(files.IsOutside(folder.Path()));
    EXPECT_TRUE(files.IsOutside(folder / "volumes"));
    EXPECT_TRUE(files.IsOutside("/"));
    EXPECT_FALSE(files.IsOutside(folder / "volume"));
    EXPECT_FALSE(files.IsOutside(folder / "volume/inside"));
    EXPECT_FALSE(files.IsOutside(folder / "link"));
    EXPECT_FALSE(files.IsOutside(folder / "volumes/../volume/inside"));
    EXPECT_FALSE(files.IsOutside(folder / "none"));
}

TEST(VolumeFiles, RefuseARootThatIsNoFolder) {
    const TemporaryFolder folder;
    folder.Write("file", "");
    for (const char* name : {"file", "none"}) {
        try {
            const VolumeFiles files(folder / name);
            FAIL() << name;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), testing::StartsWith(folder / name)) << name;
        }
    }
}

}  // namespace
}  // namespace ostrevin
