// That the made-up host keeps the rules of the platform's calls: what is tested with it rests on them.

#include <array>
#include <gtest/gtest.h>
#include <span>
#include <string>

#include "platform/Dates.h"
#include "platform/RuntimeError.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

constexpr std::uint32_t kRead = 0x20019;

class MemoryRegistry : public testing::Test {
  protected:
    KeyHandle Open(const std::string& path, std::uint32_t access = kRead) {
        KeyHandle handle = 0;
        EXPECT_EQ(platform.RegOpenKeyExA(kUsers, path, access, handle), kSuccess);
        return handle;
    }

    MemoryPlatform platform;
    MemoryKey& key{platform.Root(kUsers).Key("A")};
    std::uint32_t type = 0;
    std::uint32_t length = 0;
};

TEST_F(MemoryRegistry, OpensWithoutRegardToCase) {
    key.Key("B");
    KeyHandle handle = 0;
    EXPECT_EQ(platform.RegOpenKeyExA(kUsers, "a\\b", kRead, handle), kSuccess);
    EXPECT_EQ(platform.RegOpenKeyExA(kUsers, "a\\c", kRead, handle), kFileNotFound);
    EXPECT_EQ(platform.RegOpenKeyExA(kUsers, "", kRead, handle), kSuccess) << "the root itself";
    EXPECT_EQ(platform.RegOpenKeyExA(12345, "a", kRead, handle), kInvalidHandle);
}

TEST_F(MemoryRegistry, ClosesAHandleOnce) {
    const KeyHandle handle = Open("A");
    EXPECT_EQ(platform.OpenKeys(), 1U);
    EXPECT_EQ(platform.RegCloseKey(handle), kSuccess);
    EXPECT_EQ(platform.RegCloseKey(handle), kInvalidHandle);
    EXPECT_EQ(platform.RegQueryValueExA(handle, "x", type, nullptr, length), kInvalidHandle);
    EXPECT_EQ(platform.RegCloseKey(kUsers), kSuccess);
}

TEST_F(MemoryRegistry, GrantsWhatAHandleWasOpenedFor) {
    key.SetText("x", "1");
    TextBuffer name{10, {}};
    KeyInfo info;
    const KeyHandle query = Open("A", 1);
    EXPECT_EQ(platform.RegQueryValueExA(query, "x", type, nullptr, length), kSuccess);
    EXPECT_EQ(platform.RegEnumKeyExA(query, 0, name, nullptr), kAccessDenied);
    EXPECT_EQ(platform.RegSetValueExA(query, "x", kRegSz, {}), kAccessDenied);
    const KeyHandle write = Open("A", 0x20006);
    EXPECT_EQ(platform.RegSetValueExA(write, "y", kRegSz, {}), kSuccess);
    EXPECT_EQ(platform.RegQueryInfoKeyA(write, info), kAccessDenied);
    EXPECT_EQ(platform.RegEnumValueA(write, 0, name, type, nullptr, length), kAccessDenied);
}

TEST_F(MemoryRegistry, ListsSubKeysByUpperCasedName) {
    for (const std::string name : {"b", "_", "C", "a"}) {
        key.Key(name).className = "class of " + name;
    }
    const KeyHandle handle = Open("A");
    std::string names;
    TextBuffer name{10, {}};
    TextBuffer keyClass{20, {}};
    std::uint32_t index = 0;
    for (; platform.RegEnumKeyExA(handle, index, name, &keyClass) == kSuccess; ++index) {
        names += name.text;
        EXPECT_EQ(keyClass.text, "class of " + name.text);
    }
    EXPECT_EQ(names, "abC_");
    EXPECT_EQ(platform.RegEnumKeyExA(handle, index, name, nullptr), kNoMoreItems);
}

TEST_F(MemoryRegistry, StoresWhatFitsOfANameThatDoesNot) {
    key.Key("abcd").className = "efgh";
    key.SetText("\u0416\U0001F600z", "");
    const KeyHandle handle = Open("A");
    TextBuffer name{5, {}};
    TextBuffer tight{4, {}};
    EXPECT_EQ(platform.RegEnumKeyExA(handle, 0, name, &tight), kMoreData);
    EXPECT_EQ(name.text, "abcd");
    EXPECT_EQ(tight.text, "efg");
    EXPECT_EQ(platform.RegEnumKeyExA(handle, 0, tight, nullptr), kMoreData);
    EXPECT_EQ(tight.text, "abc");
    TextBuffer wide{3, {}};
    EXPECT_EQ(platform.RegEnumValueA(handle, 0, wide, type, nullptr, length), kMoreData);
    EXPECT_EQ(wide.text, "\u0416") << "whole characters, counted in UTF-16";
}

TEST_F(MemoryRegistry, AShortValueLeavesTheRestOfTheBuffer) {
    key.SetText("x", "ab").SetDword("n", 0x04030201);
    const KeyHandle handle = Open("A");
    std::array<std::byte, 6> data{};
    data.fill(std::byte{9});
    length = 6;
    TextBuffer name{10, {}};
    EXPECT_EQ(platform.RegEnumValueA(handle, 0, name, type, data.data(), length), kSuccess);
    EXPECT_EQ(name.text, "x");
    EXPECT_EQ(type, kRegSz);
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(data[2], std::byte{0});
    EXPECT_EQ(data[3], std::byte{9});
    length = 6;
    EXPECT_EQ(platform.RegEnumValueA(handle, 1, name, type, data.data(), length), kSuccess);
    EXPECT_EQ(data[3], std::byte{4});
    EXPECT_EQ(platform.RegEnumValueA(handle, 2, name, type, data.data(), length), kNoMoreItems);
}

TEST_F(MemoryRegistry, AValueLargerThanTheBufferIsMoreData) {
    key.SetText("x", "ab");
    const KeyHandle handle = Open("A");
    std::array<std::byte, 2> data{};
    length = 2;
    EXPECT_EQ(platform.RegQueryValueExA(handle, "X", type, data.data(), length), kMoreData);
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(data[0], std::byte{0});
    length = 0;
    EXPECT_EQ(platform.RegQueryValueExA(handle, "x", type, nullptr, length), kSuccess);
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(platform.RegQueryValueExA(handle, "y", type, nullptr, length), kFileNotFound);
    EXPECT_EQ(platform.RegQueryValueExA(handle, "", type, nullptr, length), kFileNotFound);
}

TEST_F(MemoryRegistry, CountsWhatAKeyHolds) {
    key.Key("ab");
    key.SetText("\U0001F600", "").SetText("", "");
    KeyInfo info;
    EXPECT_EQ(platform.RegQueryInfoKeyA(Open("A"), info), kSuccess);
    EXPECT_EQ(info.subKeys, 1U);
    EXPECT_EQ(info.longestSubKeyName, 2U);
    EXPECT_EQ(info.values, 2U);
    EXPECT_EQ(info.longestValueName, 2U);
}

TEST_F(MemoryRegistry, LoadsAHiveOnce) {
    const std::array<std::string, 2> privileges = {"SeRestorePrivilege", "SeBackupPrivilege"};
    platform.AddHive("C:\\p\\NTUSER.DAT").SetText("x", "hive");
    platform.AddHive("C:\\q\\NTUSER.DAT");
    platform.AddFile("C:\\text");
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "S", "C:\\p\\NTUSER.DAT"), kAccessDenied);
    platform.EnablePrivileges(std::span(privileges).first(1));
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "S", "C:\\p\\NTUSER.DAT"), kAccessDenied);
    platform.EnablePrivileges(privileges);
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "S", "C:\\none"), kFileNotFound);
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "S", "C:\\text"), kNotRegistryFile);
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "S", "c:\\P\\ntuser.dat"), kSuccess);
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "S", "C:\\p\\NTUSER.DAT"), kSharingViolation);
    EXPECT_EQ(platform.RegLoadKeyA(kUsers, "s", "C:\\q\\NTUSER.DAT"), kAccessDenied) << "the name is taken";
    EXPECT_EQ(platform.Root(kUsers).Key("S").Text("x"), "hive");
    EXPECT_EQ(platform.hivesLoaded.size(), 7U);
}

TEST(MemoryComputers, CanBeConnectedToWhenTheyAreKnown) {
    MemoryPlatform platform;
    platform.RemoteRoot("PC7", kLocalMachine).SetText("x", "1");
    KeyHandle root = 0;
    EXPECT_EQ(platform.RegConnectRegistryA("PC8", kLocalMachine, root), kBadNetworkPath);
    EXPECT_EQ(platform.RegConnectRegistryA("pc7", kUsers, root), kInvalidHandle);
    EXPECT_EQ(platform.RegConnectRegistryA("pc7", kLocalMachine, root), kSuccess);
    std::uint32_t type = 0;
    std::uint32_t length = 0;
    EXPECT_EQ(platform.RegQueryValueExA(root, "x", type, nullptr, length), kSuccess);
    EXPECT_EQ(platform.RegQueryValueExA(kLocalMachine, "x", type, nullptr, length), kFileNotFound);
}

TEST(MemoryFiles, AreListedInTheOrderOfTheirAdding) {
    MemoryPlatform platform;
    platform.AddFile("C:\\f\\b.txt");
    platform.AddFile("C:\\f\\a.txt", {}, kAttributeHidden);
    platform.AddFile("C:\\f\\sub\\c.txt");
    std::string names;
    for (const DirectoryEntry& entry : platform.ListDirectory("c:\\F\\")) {
        names += entry.name + " ";
    }
    EXPECT_EQ(names, "b.txt a.txt sub ");
    ASSERT_TRUE(platform.FindEntry("C:\\F\\A.TXT"));
    EXPECT_EQ(platform.FindEntry("C:\\F\\A.TXT")->name, "a.txt");
    EXPECT_EQ(platform.FindEntry("C:\\F\\A.TXT")->attributes, kAttributeHidden);
    EXPECT_EQ(platform.FindEntry("C:\\f\\sub")->attributes, kAttributeDirectory);
    EXPECT_FALSE(platform.FindEntry("C:\\f\\none"));
    EXPECT_EQ(platform.OpenFile("C:\\f\\sub"), nullptr);
    EXPECT_NE(platform.OpenFile("C:\\f\\b.txt"), nullptr);
}

TEST(MemoryShell, ItemsAreFoundInTheirFoldersUntilTheirListsAreFreed) {
    MemoryPlatform platform;
    platform.AddFile("C:\\f\\a.bmp").hasThumbnail = true;
    platform.AddFile("C:\\f\\b.txt");
    const std::unique_ptr<ShellFolder> desktop = platform.SHGetDesktopFolder();
    ItemList list = 0;
    EXPECT_FALSE(desktop->ParseDisplayName("C:\\none", list));
    EXPECT_EQ(list, 0U) << "a call that fails stores nothing";
    ASSERT_TRUE(desktop->ParseDisplayName("c:\\F", list));
    std::unique_ptr<ShellFolder> folder;
    ASSERT_TRUE(desktop->BindToObject(list, folder));
    ItemList file = 0;
    ItemList other = 0;
    ASSERT_TRUE(folder->ParseDisplayName("A.BMP", file));
    ASSERT_TRUE(folder->ParseDisplayName("b.txt", other));
    std::unique_ptr<ShellFolder> none;
    EXPECT_FALSE(folder->BindToObject(file, none)) << "a file is no folder";
    std::unique_ptr<ImageExtractor> extractor;
    EXPECT_FALSE(folder->GetUIObjectOf(other, extractor));
    EXPECT_FALSE(folder->GetUIObjectOf(0, extractor));
    EXPECT_TRUE(folder->GetUIObjectOf(file, extractor));
    EXPECT_EQ(platform.itemLists.size(), 3U);
    platform.SHGetMalloc()->Free(file);
    EXPECT_EQ(platform.itemLists.size(), 2U);
    EXPECT_FALSE(folder->GetUIObjectOf(file, extractor));
}

TEST(MemoryPrograms, AreKeptInMind) {
    MemoryPlatform platform;
    EXPECT_TRUE(platform.StartProgram("C:\\a.exe /x"));
    platform.Fail("StartProgram");
    EXPECT_FALSE(platform.StartProgram("C:\\b.exe"));
    EXPECT_EQ(platform.programsStarted, (std::vector<std::string>{"C:\\a.exe /x", "C:\\b.exe"}));
}

TEST(MemoryDates, ComeBackFromTheirText) {
    MemoryPlatform platform;
    for (const double date :
         {0.0, 40029.0, 40029.640486111114, -109205.0, -1.25, 2958465.0, -657434.0, 0.5}) {
        const std::string text = platform.DateToText(date, DateForm::General);
        ASSERT_TRUE(platform.TextToDate(text)) << text;
        EXPECT_NEAR(*platform.TextToDate(text), date, 0.5 / 86400) << text;
        const SystemTime civil = CivilFromDate(date);
        EXPECT_EQ(platform.DateToText(date, DateForm::ShortDate),
                  std::to_string(civil.month) + "/" + std::to_string(civil.day) + "/" +
                      (civil.year < 1000 ? "0" : "") + std::to_string(civil.year));
    }
    EXPECT_EQ(platform.DateToText(40029.640486111114, DateForm::General), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(platform.DateToText(40029.0, DateForm::LongTime), "12:00:00 AM");
    EXPECT_EQ(platform.TextToDate("3:22:18 PM"), 55338.0 / 86400);
    for (const std::string text :
         {"", "x", "2/30/2009", "13/1/2009", "8/4/09", "8/4/2009 13:00:00 PM", " 8/4/2009"}) {
        EXPECT_FALSE(platform.TextToDate(text)) << text;
    }
}

std::string TextOf(MemoryPlatform& platform, const std::string& path) {
    const MemoryFile* file = platform.Find(path);
    return file == nullptr
               ? "none"
               : std::string(reinterpret_cast<const char*>(file->bytes.data()), file->bytes.size());
}

TEST(MemoryOutput, TakesFilesInFoldersThatAreThere) {
    MemoryPlatform platform;
    EXPECT_THROW(platform.CreateOutputFile("C:\\Out\\a.htm"), RuntimeError);
    EXPECT_THROW(platform.CreateOutputFolder("C:\\Out\\New"), RuntimeError);
    platform.AddFolder("C:\\Out");
    platform.CreateOutputFile("C:\\Out\\a.htm")->Write("longer");
    platform.CreateOutputFile("C:\\Out\\a.htm")->Write("text");
    EXPECT_EQ(TextOf(platform, "C:\\out\\a.htm"), "text");
    platform.CreateOutputFolder("C:\\Out\\New/");
    platform.CreateOutputFile("C:\\Out\\New/b.htm");
    EXPECT_TRUE(platform.PathFileExistsA("C:\\Out\\New\\b.htm"));
    EXPECT_THROW(platform.CreateOutputFile("C:\\Out\\New"), RuntimeError);
    EXPECT_THROW(platform.CreateOutputFolder("C:\\Out\\a.htm"), RuntimeError);
    EXPECT_THROW(platform.CreateOutputFile(""), RuntimeError);
}

TEST(MemoryOutput, IsFullAfterSoManyBytes) {
    MemoryPlatform platform;
    platform.freeBytes = 5;
    const std::unique_ptr<OutputFile> file = platform.CreateOutputFile("a.htm");
    file->Write("abc");
    EXPECT_THROW(file->Write("def"), RuntimeError);
    EXPECT_EQ(TextOf(platform, "a.htm"), "abcde");
    platform.Fail("Close");
    EXPECT_THROW(file->Close(), RuntimeError);
}

TEST(MemoryText, EveryByteComesBack) {
    MemoryPlatform platform;
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(platform.EncodeAnsi(platform.DecodeAnsi(all)), all);
    EXPECT_EQ(platform.EncodeAnsi("\u0436\xFF"), "??");
}

}  // namespace
}  // namespace ostrevin
