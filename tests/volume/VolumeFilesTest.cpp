// The files of a volume, as far as every host has them alike.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/volume/ReadingFiles.h"
#include "tests/volume/TemporaryFolder.h"

namespace ostrevin {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

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

TEST(VolumeFiles, ExistAsFilesAndFolders) {
    const TemporaryFolder folder;
    folder.Write("Docs/a.txt", "a");
    const VolumeFiles files(folder.Utf8Path());
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
    VolumeFiles files(folder.Utf8Path());
    files.SetDrive('D');
    EXPECT_TRUE(files.Exists("d:\\a.txt"));
    EXPECT_FALSE(files.Exists("C:\\a.txt"));
}

TEST(VolumeFiles, OrderByUtf16CodeUnits) {
    std::vector<DirectoryEntry> entries = {{"\uFF5E", 0}, {"\U0001F600", 0}, {"b", 0}, {"B", 0}};
    SortByUpperCasedName(entries);
    EXPECT_THAT(Names(entries), ElementsAre("B", "b", "\U0001F600", "\uFF5E"));
}

TEST(VolumeFiles, ReadPiecesUpToTheEnd) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "0123456789");
    const VolumeFiles files(folder.Utf8Path());
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

}  // namespace
}  // namespace ostrevin
