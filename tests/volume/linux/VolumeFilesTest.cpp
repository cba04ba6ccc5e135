#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/volume/VolumeFiles.h"
#include "tests/volume/TemporaryFolder.h"

namespace ostrevin {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

std::string Contents(const VolumeFiles& files, const std::string& path) {
    std::int32_t result = kSuccess;
    const std::unique_ptr<InputFile> file = files.Open(path, result);
    if (!file) {
        return "code " + std::to_string(result);
    }
    std::string text;
    for (const std::byte byte : ReadAll(*file, 1000).value_or(std::vector<std::byte>())) {
        text += std::to_integer<char>(byte);
    }
    return text;
}

std::vector<std::string> Names(const std::vector<DirectoryEntry>& entries) {
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (const DirectoryEntry& entry : entries) {
        names.push_back(entry.name);
    }
    return names;
}

TEST(PathComponents, AreThoseOfTheSystemDriveAlone) {
    using Components = std::vector<std::string>;
    EXPECT_EQ(PathComponents("C:\\Docs\\a.txt", 'C'), (Components{"Docs", "a.txt"}));
    EXPECT_EQ(PathComponents("c:/Docs//a.txt", 'C'), (Components{"Docs", "a.txt"}));
    EXPECT_EQ(PathComponents("\\Docs", 'C'), (Components{"Docs"}));
    EXPECT_EQ(PathComponents("C:", 'C'), Components{});
    EXPECT_EQ(PathComponents("C:\\", 'C'), Components{});
    EXPECT_EQ(PathComponents("D:\\Docs", 'D'), (Components{"Docs"}));
    for (const char* elsewhere : {"D:\\Docs", "\\\\server\\share", "//server/share", "Docs\\a.txt", "C:a.txt",
                                  "", "%SystemRoot%\\a", "http://a/b"}) {
        EXPECT_EQ(PathComponents(elsewhere, 'C'), std::nullopt) << elsewhere;
    }
    EXPECT_EQ(PathComponents(std::string_view("C:\\a\0b", 6), 'C'), std::nullopt);
}

TEST(PathComponents, LoseWhatWindowsLeavesOut) {
    using Components = std::vector<std::string>;
    EXPECT_EQ(PathComponents("C:\\a\\.\\b\\..\\c. ", 'C'), (Components{"a", "c"}));
    EXPECT_EQ(PathComponents("C:\\..\\..\\a", 'C'), (Components{"a"}));
}

TEST(PathComponents, EndAtTheLongestPathOfWindows) {
    EXPECT_TRUE(PathComponents("C:\\" + std::string(256, 'a'), 'C'));
    EXPECT_FALSE(PathComponents("C:\\" + std::string(257, 'a'), 'C'));
}

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

TEST(VolumeFiles, ExistAsFilesAndFolders) {
    const TemporaryFolder folder;
    folder.Write("Docs/a.txt", "a");
    const VolumeFiles files(folder.Path());
    EXPECT_TRUE(files.Exists("C:\\"));
    EXPECT_TRUE(files.Exists("C:\\docs"));
    EXPECT_TRUE(files.Exists("C:\\docs\\"));
    EXPECT_TRUE(files.Exists("C:\\docs\\a.txt"));
    EXPECT_FALSE(files.Exists("C:\\docs\\b.txt"));
    EXPECT_FALSE(files.Exists("D:\\docs"));
    EXPECT_FALSE(files.Exists(""));
}

TEST(VolumeFiles, AnswerForTheSystemDriveOnly) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "a");
    VolumeFiles files(folder.Path());
    files.SetDrive('D');
    EXPECT_TRUE(files.Exists("d:\\a.txt"));
    EXPECT_FALSE(files.Exists("C:\\a.txt"));
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

TEST(VolumeFiles, OrderByUtf16CodeUnits) {
    std::vector<DirectoryEntry> entries = {{"\uFF5E", 0}, {"\U0001F600", 0}, {"b", 0}, {"B", 0}};
    SortByUpperCasedName(entries);
    EXPECT_THAT(Names(entries), ElementsAre("B", "b", "\U0001F600", "\uFF5E"));
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

TEST(VolumeFiles, ReadPiecesUpToTheEnd) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "0123456789");
    const VolumeFiles files(folder.Path());
    std::int32_t result = kAccessDenied;
    const std::unique_ptr<InputFile> file = files.Open("C:\\a.txt", result);
    ASSERT_TRUE(file);
    EXPECT_EQ(result, kSuccess);
    EXPECT_EQ(file->Size(), 10U);
    std::vector<std::byte> buffer(4, std::byte{'.'});
    EXPECT_EQ(file->Read(8, buffer), 2U);
    EXPECT_THAT(buffer, ElementsAreArray({std::byte{'8'}, std::byte{'9'}, std::byte{'.'}, std::byte{'.'}}));
    EXPECT_EQ(file->Read(10, buffer), 0U);
    EXPECT_EQ(file->Read(~std::uint64_t{0}, buffer), 0U);
    EXPECT_FALSE(ReadAll(*file, 9));
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
