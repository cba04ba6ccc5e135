// Files of the machine, and what the sources and the settings read and write there.

#include <windows.h>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "platform/Dates.h"
#include "platform/FilePath.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/windows/WindowsPlatform.h"
#include "settings/AppSettings.h"
#include "sources/IEHistoryList.h"
#include "sources/RecentDocumentList.h"
#include "tests/support/ScratchFolder.h"
#include "tools/writers/IndexWriter.h"
#include "tools/writers/LinkWriter.h"
#include "tools/writers/Times.h"

namespace ostrevin {
namespace {

namespace fs = std::filesystem;

constexpr char kText[] = "0123456789";

class WindowsFilesTest : public testing::Test {
  protected:
    void Write(const std::string& name, std::span<const std::byte> bytes) const {
        folder.Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }
    /// What is read of an open file from an offset on.
    static std::string ReadFrom(InputFile& file, std::uint64_t offset, std::size_t size) {
        std::string text(size, '\0');
        text.resize(file.Read(offset, std::as_writable_bytes(std::span(text))));
        return text;
    }

    WindowsPlatform platform;
    ScratchFolder folder;
};

TEST_F(WindowsFilesTest, FindsFilesAndFolders) {
    folder.Write("caf\u00E9.txt", "x");
    folder.Write("\u0416.txt", "x");
    EXPECT_TRUE(FileExists(platform, folder.Path("caf\u00E9.txt")));
    EXPECT_TRUE(FileExists(platform, folder.Path("\u0416.txt")));
    EXPECT_TRUE(FileExists(platform, folder.Path()));
    EXPECT_FALSE(FileExists(platform, folder.Path("none")));
    EXPECT_FALSE(FileExists(platform, folder.Path("?.txt")));
    EXPECT_FALSE(FileExists(platform, ""));
}

TEST_F(WindowsFilesTest, ListsAFolder) {
    folder.Write("a.txt", "x");
    folder.Write("\u0416", "x");
    folder.MakeFolder("sub");
    const std::string path = folder.Path();
    for (const std::string& named : {path, path.substr(0, path.size() - 1)}) {
        std::vector<std::string> names;
        for (const DirectoryEntry& entry : platform.ListDirectory(named)) {
            names.push_back(entry.name);
            EXPECT_EQ((entry.attributes & kAttributeDirectory) != 0, entry.name == "sub") << entry.name;
        }
        std::sort(names.begin(), names.end());
        EXPECT_EQ(names, (std::vector<std::string>{"a.txt", "sub", "\u0416"}));
    }
    EXPECT_TRUE(platform.ListDirectory(folder.Path("none")).empty());
    EXPECT_TRUE(platform.ListDirectory(folder.Path("a.txt")).empty());
}

TEST_F(WindowsFilesTest, DescribesOneEntry) {
    folder.Write("a.txt", "x");
    ASSERT_NE(SetFileAttributesW(FilePath(folder.Path("a.txt")).c_str(), FILE_ATTRIBUTE_READONLY), 0);
    const auto entry = platform.FindEntry(folder.Path("A.TXT"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "a.txt");
    EXPECT_NE(entry->attributes & kAttributeReadOnly, 0U);
    EXPECT_FALSE(platform.FindEntry(folder.Path("none")));
    EXPECT_FALSE(platform.FindEntry(folder.Path("*.txt")));
    SetFileAttributesW(FilePath(folder.Path("a.txt")).c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WindowsFilesTest, ReadsAtAnyOffset) {
    folder.Write("a.txt", kText);
    const std::unique_ptr<InputFile> file = platform.OpenFile(folder.Path("a.txt"));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->Size(), 10U);
    EXPECT_EQ(ReadFrom(*file, 0, 10), kText);
    EXPECT_EQ(ReadFrom(*file, 7, 2), "78");
    EXPECT_EQ(ReadFrom(*file, 7, 10), "789");
    EXPECT_EQ(ReadFrom(*file, 10, 1), "");
    EXPECT_EQ(ReadFrom(*file, std::uint64_t{1} << 40U, 1), "");
    EXPECT_EQ(ReadFrom(*file, 2, 0), "");
}

TEST_F(WindowsFilesTest, ReadsAFileThatIsHeldOpenForWriting) {
    folder.Write("a.txt", kText);
    const HANDLE held = CreateFileW(FilePath(folder.Path("a.txt")).c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_NE(platform.OpenFile(folder.Path("a.txt")), nullptr);
    CloseHandle(held);
}

TEST_F(WindowsFilesTest, OpensNoFolderAndNoDevice) {
    EXPECT_EQ(platform.OpenFile(folder.Path()), nullptr);
    EXPECT_EQ(platform.OpenFile(folder.Path("none")), nullptr);
    EXPECT_EQ(platform.OpenFile("NUL"), nullptr);
    EXPECT_EQ(platform.OpenFile(""), nullptr);
}

TEST_F(WindowsFilesTest, WritesAFileAnew) {
    for (const std::string name : {"report.htm", "\u0416.htm"}) {
        folder.Write(name, "what it held before");
        const std::unique_ptr<OutputFile> file = platform.CreateOutputFile(folder.Path(name));
        file->Write("a\r\n");
        file->Write("");
        file->Write("b");
        file->Close();
        EXPECT_EQ(folder.Read(name), "a\r\nb");
        EXPECT_TRUE(platform.PathFileExistsA(folder.Path(name)));
    }
}

TEST_F(WindowsFilesTest, WritesOverNothingThatIsToBeKept) {
    platform.CreateOutputFile(folder.Path("a.htm"), Existing::Keep)->Write("first");
    try {
        platform.CreateOutputFile(folder.Path("A.htm"), Existing::Keep);
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 58U);
        EXPECT_EQ(error.what(), "File already exists: " + folder.Path("A.htm"));
    }
}

TEST_F(WindowsFilesTest, TellsWhatCannotBeWritten) {
    for (const std::string& path : {folder.Path("none\\a.htm"), folder.Path(), std::string()}) {
        try {
            platform.CreateOutputFile(path);
            ADD_FAILURE() << path;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), 75U);
            EXPECT_EQ(error.what(), "Path/File access error: " + path);
        }
    }
}

TEST_F(WindowsFilesTest, MakesAFolderThatIsNotThere) {
    platform.CreateOutputFolder(folder.Path("made"));
    platform.CreateOutputFolder(folder.Path("made"));
    EXPECT_TRUE(fs::is_directory(FilePath(folder.Path("made"))));
    folder.Write("file", "x");
    EXPECT_THROW(platform.CreateOutputFolder(folder.Path("file")), RuntimeError);
    EXPECT_THROW(platform.CreateOutputFolder(folder.Path("none\\made")), RuntimeError);
}

// --- What the program reads and writes.

TEST_F(WindowsFilesTest, ReadsRecentDocuments) {
    samples::Link shortcut;
    shortcut.items = samples::ItemsForPath("C:\\windows\\notepad.exe", {});
    shortcut.info.emplace();
    shortcut.info->volume.emplace();
    shortcut.info->localBasePath = "C:\\windows\\notepad.exe";
    Write("a.lnk", samples::WriteLink(shortcut));
    folder.Write("desktop.ini", "x");
    SetFileAttributesW(FilePath(folder.Path("desktop.ini")).c_str(), FILE_ATTRIBUTE_HIDDEN);
    const bool hides =
        (GetFileAttributesW(FilePath(folder.Path("desktop.ini")).c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0;
    folder.MakeFolder("sub");
    const std::string path = folder.Path();
    RecentDocumentList documents(platform);
    EXPECT_TRUE(documents.LoadRecentDocuments(path.substr(0, path.size() - 1)));
    ASSERT_EQ(documents.Count(), hides ? 1 : 2) << "where the disk has no such attribute, nothing is hidden";
    EXPECT_EQ(documents.RecentDocument(0), "a.lnk");
    EXPECT_EQ(documents.RecentDocumentPath(0), "C:\\windows\\notepad.exe");
}

TEST_F(WindowsFilesTest, ReadsTheIndexOfAnAccount) {
    samples::IndexRecord record;
    record.accessed = samples::FileTimeOf({2009, 8, 4, 15, 22, 18});
    record.address = "Visited: anna@http://example.org/a?b";
    const std::vector<std::byte> index = samples::WriteIndex({record}, {});
    const fs::path profile = "C:\\Documents and Settings\\ostrevin-test-anna";
    ASSERT_FALSE(fs::exists(profile));
    const fs::path history = profile / "Local Settings\\History\\History.IE5";
    const bool ownParent = fs::create_directory(profile.parent_path());
    fs::create_directories(history);
    {
        const std::unique_ptr<OutputFile> file = platform.CreateOutputFile((history / "index.dat").string());
        file->Write({reinterpret_cast<const char*>(index.data()), index.size()});
    }
    IEHistoryList list(platform, platform.EnvironmentVariable("USERNAME"));
    EXPECT_TRUE(list.LoadIEHistory("ostrevin-test-anna"));
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list.URL(0), "http://example.org/a?b");
    const auto local = platform.FileTimeToLocalFileTime(
        {static_cast<std::uint32_t>(record.accessed), static_cast<std::uint32_t>(record.accessed >> 32U)});
    ASSERT_TRUE(local);
    EXPECT_EQ(list.DateAccessed(0), DateFromCivil(*platform.FileTimeToSystemTime(*local)));
    // Windows itself hides these files.
    SetFileAttributesW((history / "index.dat").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    IEHistoryList hidden(platform, platform.EnvironmentVariable("USERNAME"));
    EXPECT_TRUE(hidden.LoadIEHistory("ostrevin-test-anna"));
    EXPECT_EQ(hidden.Count(), 1);
    SetFileAttributesW((history / "index.dat").c_str(), FILE_ATTRIBUTE_NORMAL);
    fs::remove_all(ownParent ? profile.parent_path() : profile);
}

TEST_F(WindowsFilesTest, KeepsSettings) {
    const std::string path = folder.Path("ostrevin.ini");
    {
        IniFile file;
        file.SetINIFileName(path);
        file.LoadINI();
        AppSettings settings;
        settings.SetINI(&file);
        EXPECT_EQ(settings.GetINIOption("ShowPreview"), "");
        settings.SetINIOption("ShowPreview", "True");
    }
    EXPECT_NE(folder.Read("ostrevin.ini").find("ShowPreview=True\r\n"), std::string::npos);
    IniFile file;
    file.SetINIFileName(path);
    file.LoadINI();
    EXPECT_EQ(file.GetVariableValue("ShowPreview"), "True");
}

}  // namespace
}  // namespace ostrevin
