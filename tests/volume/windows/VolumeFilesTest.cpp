// The files of a volume on a Windows host.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/FilePath.h"
#include "tests/volume/ReadingFiles.h"
#include "tests/volume/TemporaryFolder.h"

namespace ostrevin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void SetAttributes(const std::string& file, DWORD attributes) {
    ASSERT_NE(SetFileAttributesW(FilePath(file).c_str(), attributes), 0) << file;
}

TEST(VolumeFiles, MatchWithoutCase) {
    const TemporaryFolder folder;
    folder.Write("Docs/A.txt", "upper");
    folder.Write("Docs/Только.TXT", "cyrillic");
    const VolumeFiles files(folder.Utf8Path());
    EXPECT_EQ(Contents(files, "C:\\docs\\a.TXT"), "upper");
    EXPECT_EQ(Contents(files, "C:/docs/a.TXT"), "upper");
    EXPECT_EQ(Contents(files, "C:\\docs\\тОЛЬКО.txt"), "cyrillic");
    EXPECT_EQ(files.HostPath("c:\\docs\\тОЛЬКО.txt"), folder / "Docs\\Только.TXT");
    EXPECT_EQ(files.HostPath("c:\\"), folder.Utf8Path());
}

TEST(VolumeFiles, LieBelowAnyNameAndHoweverItIsWritten) {
    const TemporaryFolder folder;
    folder.Write("Диск/Docs/a.txt", "a");
    for (const std::string& root :
         {folder / "Диск", folder / "Диск/", folder / "ДИСК\\.\\", "\\\\?\\" + (folder / "Диск")}) {
        EXPECT_EQ(Contents(VolumeFiles(root), "C:\\Docs\\a.txt"), "a") << root;
    }
}

TEST(VolumeFiles, MayLieDeeperThanTheLongestPathOfAProgram) {
    const TemporaryFolder folder;
    std::string path = folder.Utf8Path();
    for (int i = 0; i < 3; ++i) {
        path += "\\" + std::string(100, 'x');
        ASSERT_NE(CreateDirectoryW(FilePath("\\\\?\\" + path).c_str(), nullptr), 0);
    }
    const VolumeFiles above(folder.Utf8Path());
    const VolumeFiles files(path);
    EXPECT_TRUE(files.Exists("C:\\"));
    EXPECT_THAT(files.List("C:\\"), IsEmpty());
    EXPECT_TRUE(above.Exists("C:\\" + std::string(100, 'X') + "\\" + std::string(100, 'X')));
    for (int i = 0; i < 3; ++i) {
        RemoveDirectoryW(FilePath("\\\\?\\" + path).c_str());
        path.resize(path.size() - 101);
    }
}

TEST(VolumeFiles, TellWhyAFileCannotBeOpened) {
    const TemporaryFolder folder;
    folder.Write("Docs/a.txt", "a");
    const VolumeFiles files(folder.Utf8Path());
    EXPECT_EQ(Contents(files, "C:\\Docs\\b.txt"), "code 2");
    EXPECT_EQ(Contents(files, "C:\\None\\b.txt"), "code 3");
    EXPECT_EQ(Contents(files, "C:\\Docs\\a.txt\\b.txt"), "code 3");
    EXPECT_EQ(Contents(files, "D:\\Docs\\a.txt"), "code 3");
    EXPECT_EQ(Contents(files, "C:\\Docs"), "code 5");
    EXPECT_EQ(Contents(files, "C:\\"), "code 5");
}

TEST(VolumeFiles, AreNeitherDevicesNorStreamsNorPatterns) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "a");
    const VolumeFiles files(folder.Utf8Path());
    for (const char* path :
         {"C:\\NUL", "C:\\CON", "C:\\con.txt", "C:\\COM1", "C:\\LPT1", "C:\\AUX", "C:\\PRN", "C:\\CONIN$",
          "C:\\a.txt:stream", "C:\\a.txt::$DATA", "C:\\:x", "C:\\*", "C:\\?.txt", "C:\\a.tx<", "C:\\\"",
          "C:\\a|b", "C:\\a\tb", "\\\\.\\C:", "\\\\?\\C:\\a.txt"}) {
        EXPECT_FALSE(files.Exists(path)) << path;
        EXPECT_TRUE(Contents(files, path).starts_with("code ")) << path;
        EXPECT_FALSE(files.Find(path)) << path;
        EXPECT_THAT(files.List(path), IsEmpty()) << path;
    }
}

TEST(VolumeFiles, ListAsNtfsListsWithTheAttributesOfTheFileSystem) {
    const TemporaryFolder folder;
    for (const char* name : {"b.lnk", "A.lnk", "_.lnk", "Z", "ж.lnk", "Ё.lnk", "é"}) {
        folder.Write(std::string("Recent/") + name, "");
    }
    folder.MakeFolder("Recent/Folder");
    const VolumeFiles files(folder.Utf8Path());
    EXPECT_THAT(Names(files.List("C:\\recent")),
                ElementsAre("A.lnk", "b.lnk", "Folder", "Z", "_.lnk", "é", "Ё.lnk", "ж.lnk"));
    SetAttributes(folder / "Recent/A.lnk", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    const auto attributesOf = [&](const char* path) {
        const std::optional<DirectoryEntry> entry = files.Find(path);
        return entry ? entry->attributes & (kAttributeHidden | kAttributeSystem | kAttributeDirectory) : ~0U;
    };
    EXPECT_EQ(attributesOf("C:\\Recent\\a.LNK"), kAttributeHidden | kAttributeSystem);
    EXPECT_EQ(attributesOf("C:\\Recent\\b.lnk"), 0U);
    EXPECT_EQ(attributesOf("C:\\recent\\folder"), static_cast<std::uint32_t>(kAttributeDirectory));
    EXPECT_EQ(attributesOf("C:\\recent"), static_cast<std::uint32_t>(kAttributeDirectory));
    EXPECT_EQ(files.List("C:\\Recent")[0].attributes & kAttributeHidden,
              static_cast<std::uint32_t>(kAttributeHidden));
    EXPECT_FALSE(files.Find("C:\\"));
    EXPECT_THAT(files.List("C:\\Recent\\Z"), IsEmpty());
    EXPECT_THAT(files.List("C:\\None"), IsEmpty());
}

TEST(VolumeFiles, OfACopyThatLostItsAttributesAreHiddenWhereWindowsHidesThem) {
    const TemporaryFolder folder;
    folder.Write("Recent/desktop.ini", "");
    folder.Write("Recent/THUMBS.DB", "");
    folder.Write("Recent/a.lnk", "");
    const VolumeFiles files(folder.Utf8Path());
    EXPECT_NE(files.Find("C:\\Recent\\desktop.ini")->attributes & kAttributeHidden, 0U);
    EXPECT_NE(files.Find("C:\\Recent\\thumbs.db")->attributes & kAttributeHidden, 0U);
    EXPECT_EQ(files.Find("C:\\Recent\\a.lnk")->attributes & kAttributeHidden, 0U);
}

TEST(VolumeFiles, AreOpenedWhileOthersUseThem) {
    const TemporaryFolder folder;
    folder.Write("a.txt", "0123456789");
    const VolumeFiles files(folder.Utf8Path());
    const HANDLE other = CreateFileW(FilePath(folder / "a.txt").c_str(), GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                     OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    std::int32_t result = kAccessDenied;
    const std::unique_ptr<InputFile> file = files.Open("C:\\a.txt", result);
    EXPECT_EQ(result, kSuccess);
    CloseHandle(other);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Size(), 10U);
    std::vector<std::byte> buffer(4, std::byte{'.'});
    EXPECT_EQ(file->Read(8, buffer), 2U);
    EXPECT_THAT(buffer, ElementsAre(std::byte{'8'}, std::byte{'9'}, std::byte{'.'}, std::byte{'.'}));
    EXPECT_EQ(file->Read(10, buffer), 0U);
    EXPECT_EQ(file->Read(~std::uint64_t{0}, buffer), 0U);
    EXPECT_NE(DeleteFileW(FilePath(folder / "a.txt").c_str()), 0) << "even to its end";
}

TEST(VolumeFiles, KnowWhatLiesOutside) {
    const TemporaryFolder folder;
    folder.MakeFolder("volume/inside");
    folder.MakeFolder("volumes");
    folder.Write("volumes/file", "");
    const VolumeFiles files(folder / "volume");
    EXPECT_TRUE(files.IsOutside(folder.Utf8Path()));
    EXPECT_TRUE(files.IsOutside(folder / "volumes"));
    EXPECT_TRUE(files.IsOutside("C:\\"));
    EXPECT_TRUE(files.IsOutside("C:"));
    EXPECT_FALSE(files.IsOutside(folder / "volume"));
    EXPECT_FALSE(files.IsOutside(folder / "VOLUME"));
    EXPECT_FALSE(files.IsOutside(folder / "volume/inside"));
    EXPECT_FALSE(files.IsOutside("\\\\?\\" + (folder / "volume\\Inside")));
    EXPECT_FALSE(files.IsOutside(folder / "volumes/../volume/inside"));
    EXPECT_FALSE(files.IsOutside(folder / "none"));
    EXPECT_FALSE(files.IsOutside(folder / "volumes/file"));
    EXPECT_FALSE(files.IsOutside("\\\\.\\C:"));
    EXPECT_FALSE(files.IsOutside(""));
    EXPECT_FALSE(VolumeFiles("C:\\").IsOutside("C:\\windows"));
}

TEST(VolumeFiles, RefuseARootThatIsNoFolder) {
    const TemporaryFolder folder;
    folder.Write("file", "");
    for (const std::string& name :
         {folder / "file", folder / "none", std::string("\\\\.\\C:"), std::string("NUL"), std::string()}) {
        try {
            const VolumeFiles files(name);
            FAIL() << name;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), testing::MatchesRegex(".*: .+")) << name;
            EXPECT_THAT(error.what(), testing::StartsWith(name + ": ")) << name;
        }
    }
}

}  // namespace
}  // namespace ostrevin
