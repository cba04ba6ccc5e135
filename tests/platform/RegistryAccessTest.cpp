#include <array>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <vector>

#include "platform/RegistryAccess.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

using Names = std::vector<std::string>;

std::string Part(const std::string& path, int part) {
    return std::get<std::string>(RegistryAccess::ParseRegistryPath(path, part));
}

KeyHandle RootOf(const std::string& path) {
    return std::get<KeyHandle>(RegistryAccess::ParseRegistryPath(path, RegistryAccess::kRoot));
}

/// Runs an operation that must raise this error.
template <typename Operation>
void ExpectError(std::uint32_t number, const std::string& message, Operation operation) {
    try {
        operation();
        ADD_FAILURE() << "no error " << message;
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), number);
        EXPECT_EQ(error.what(), message);
    }
}

template <typename Operation>
void ExpectInvalidCall(Operation operation) {
    try {
        operation();
        ADD_FAILURE() << "no error 5";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5U);
    }
}

class RegistryAccessTest : public testing::Test {
  protected:
    std::string ReadText(const std::string& path) {
        return std::get<std::string>(registry.ReadRegistryValue(path));
    }
    std::int32_t ReadInteger(const std::string& path) {
        return std::get<std::int32_t>(registry.ReadRegistryValue(path));
    }
    std::vector<std::byte> Stored(const std::string& path, const std::string& name) {
        const MemoryKey::Value* value = platform.Root(kUsers).Key(path).FindValue(name);
        return value == nullptr ? std::vector<std::byte>() : value->data;
    }

    MemoryPlatform platform;
    RegistryAccess registry{platform};
    MemoryKey& key{platform.Root(kUsers).Key("S-1-5-21-1\\Software\\X")};
};

// --- Paths.

TEST(RegistryPath, NamesRootKeyAndValue) {
    const std::string path = "hkey_users\\S-1-5-21-1\\Software\\X\\Y";
    EXPECT_EQ(RootOf(path), kUsers);
    EXPECT_EQ(Part(path, RegistryAccess::kKeyPath), "S-1-5-21-1\\Software\\X");
    EXPECT_EQ(Part(path, RegistryAccess::kValueName), "Y");
    EXPECT_EQ(Part(path, RegistryAccess::kComputer), "");
}

TEST(RegistryPath, MayNameAComputer) {
    const std::string path = "\\\\PC7\\HKLM\\Software\\V";
    EXPECT_EQ(RootOf(path), kLocalMachine);
    EXPECT_EQ(Part(path, RegistryAccess::kKeyPath), "Software");
    EXPECT_EQ(Part(path, RegistryAccess::kValueName), "V");
    EXPECT_EQ(Part(path, RegistryAccess::kComputer), "PC7");
}

TEST(RegistryPath, KnowsEveryRootByBothNames) {
    struct Root {
        std::string shortName;
        std::string longName;
        KeyHandle handle;
    };
    const std::array<Root, 7> kRoots = {{{"HKCR", "HKEY_CLASSES_ROOT", 0x80000000},
                                         {"HKCU", "HKEY_CURRENT_USER", 0x80000001},
                                         {"HKLM", "HKEY_LOCAL_MACHINE", 0x80000002},
                                         {"HKUS", "HKEY_USERS", 0x80000003},
                                         {"HKPD", "HKEY_PERFORMANCE_DATA", 0x80000004},
                                         {"HKCC", "HKEY_CURRENT_CONFIG", 0x80000005},
                                         {"HKDD", "HKEY_DYN_DATA", 0x80000006}}};
    for (const Root& root : kRoots) {
        EXPECT_EQ(RootOf(root.shortName + "\\K\\V"), root.handle);
        EXPECT_EQ(RootOf(root.longName + "\\K\\V"), root.handle);
    }
    EXPECT_EQ(RootOf("hkLm\\K\\V"), kLocalMachine);
}

TEST(RegistryPath, EndingInASeparatorNamesTheDefaultValue) {
    EXPECT_EQ(Part("HKLM\\A\\B\\", RegistryAccess::kKeyPath), "A\\B");
    EXPECT_EQ(Part("HKLM\\A\\B\\", RegistryAccess::kValueName), "");
    EXPECT_EQ(Part("HKLM\\", RegistryAccess::kKeyPath), "");
    EXPECT_EQ(Part("HKLM\\V", RegistryAccess::kKeyPath), "") << "a value of the root itself";
    EXPECT_EQ(Part("HKLM\\V", RegistryAccess::kValueName), "V");
}

TEST(RegistryPath, TheThreeLetterUsersRootIsNoRoot) {
    ExpectError(0x80040001, "Invalid root in registry key 'HKU\\S-1\\V'", [] { RootOf("HKU\\S-1\\V"); });
    ExpectError(0x80040001, "Invalid root in registry key ''", [] { RootOf(""); });
    ExpectError(0x80040001, "Invalid root in registry key '\\\\PC7'", [] { RootOf("\\\\PC7"); });
    ExpectError(0x80040001, "Invalid root in registry key 'HKLMX\\K\\V'", [] { RootOf("HKLMX\\K\\V"); });
}

TEST(RegistryPath, HasFourParts) {
    ExpectInvalidCall([] { RegistryAccess::ParseRegistryPath("HKLM\\K\\V", 0); });
    ExpectInvalidCall([] { RegistryAccess::ParseRegistryPath("HKLM\\K\\V", 5); });
}

// --- Opening and creating.

TEST_F(RegistryAccessTest, OpensAKeyWithTheGivenAccess) {
    const KeyHandle handle = registry.OpenRegistryKey("HKEY_USERS\\S-1-5-21-1\\Software\\X\\", 0x20019);
    ASSERT_EQ(platform.keysOpened.size(), 1U);
    EXPECT_EQ(platform.keysOpened[0].key, kUsers);
    EXPECT_EQ(platform.keysOpened[0].subKey, "S-1-5-21-1\\Software\\X");
    EXPECT_EQ(platform.keysOpened[0].access, 0x20019U);
    EXPECT_EQ(platform.OpenKeys(), 1U);
    registry.CloseRegistryKey(handle);
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(RegistryAccessTest, QuotesThePathOfAKeyThatCannotBeOpened) {
    ExpectError(0x80040002, "Unable to open registry key 'HKUS\\none\\v'",
                [&] { registry.OpenRegistryKey("HKUS\\none\\v", 1); });
    key.openResult = kAccessDenied;
    ExpectError(0x80040002, "Unable to open registry key 'HKUS\\S-1-5-21-1\\Software\\X\\v'",
                [&] { registry.OpenRegistryKey("HKUS\\S-1-5-21-1\\Software\\X\\v", 1); });
}

TEST_F(RegistryAccessTest, OpensAKeyOfAnotherComputer) {
    platform.RemoteRoot("PC7", kLocalMachine).Key("Software").SetText("V", "there");
    platform.Root(kLocalMachine).Key("Software").SetText("V", "here");
    EXPECT_EQ(ReadText("\\\\PC7\\HKLM\\Software\\V"), "there");
    EXPECT_EQ(ReadText("HKLM\\Software\\V"), "here");
}

TEST_F(RegistryAccessTest, TellsAnUnreachableComputerFromAMissingKeyOnIt) {
    ExpectError(0x80040003, "Unable to connect to remote computer '\\\\PC7'",
                [&] { registry.OpenRegistryKey("\\\\PC7\\HKLM\\Software\\V", 1); });
    platform.RemoteRoot("PC7", kLocalMachine);
    ExpectError(0x80040004, "Unable to open remote registry key '\\\\PC7\\HKLM\\Software\\V'",
                [&] { registry.OpenRegistryKey("\\\\PC7\\HKLM\\Software\\V", 1); });
    EXPECT_EQ(platform.OpenKeys(), 1U) << "the remote root is not closed";
}

TEST_F(RegistryAccessTest, CreatesAMissingKey) {
    registry.CloseRegistryKey(registry.CreateRegistryKey("HKUS\\new\\below\\", 0x20006));
    EXPECT_NE(platform.Root(kUsers).Find("new\\below"), nullptr);
    platform.Fail("RegCreateKeyExA");
    ExpectError(0x80040005, "Unable to create registry key 'HKUS\\other\\'",
                [&] { registry.CreateRegistryKey("HKUS\\other\\", 0x20006); });
}

TEST_F(RegistryAccessTest, EnsuresThatTheWholePathIsAKey) {
    registry.EnsureRegistryKey("HKUS\\A\\B");
    EXPECT_NE(platform.Root(kUsers).Find("A\\B"), nullptr);
    ASSERT_EQ(platform.keysOpened.size(), 1U);
    EXPECT_EQ(platform.keysOpened[0].access, 0x20006U);
    EXPECT_EQ(platform.OpenKeys(), 0U);
    registry.EnsureRegistryKey("HKUS\\A\\B");
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

// --- Reading.

TEST_F(RegistryAccessTest, ReadsTextWithoutItsLastCharacter) {
    key.SetText("Y", "C:\\Docs\\a.txt");
    EXPECT_EQ(ReadText("hkey_users\\S-1-5-21-1\\Software\\X\\Y"), "C:\\Docs\\a.txt");
    ASSERT_EQ(platform.keysOpened.size(), 1U);
    EXPECT_EQ(platform.keysOpened[0].access, 1U);
    EXPECT_EQ(platform.OpenKeys(), 0U) << "closed after the read";
}

TEST_F(RegistryAccessTest, TakesTheNulForGranted) {
    // What stands at the end is dropped, NUL or not; a NUL inside is a character like any other.
    key.SetData("bare", kRegSz, std::as_bytes(std::span("abc", 3)));
    key.SetData("cyrillic", kRegSz, std::as_bytes(std::span("\u0416\u0417", 4)));
    key.SetData("inside", kRegSz, std::as_bytes(std::span("a\0b\0", 4)));
    EXPECT_EQ(ReadText("HKUS\\S-1-5-21-1\\Software\\X\\bare"), "ab");
    EXPECT_EQ(ReadText("HKUS\\S-1-5-21-1\\Software\\X\\cyrillic"), "\u0416");
    EXPECT_EQ(ReadText("HKUS\\S-1-5-21-1\\Software\\X\\inside"), std::string("a\0b", 3));
}

TEST_F(RegistryAccessTest, ReadsAnEmptyTextOfSizeZeroOrOne) {
    key.SetText("one", "");
    key.SetData("none", kRegSz, {});
    EXPECT_EQ(ReadText("HKUS\\S-1-5-21-1\\Software\\X\\one"), "");
    EXPECT_EQ(ReadText("HKUS\\S-1-5-21-1\\Software\\X\\none"), "");
}

TEST_F(RegistryAccessTest, LeavesVariablesUnexpanded) {
    platform.environment["SYSTEMROOT"] = "C:\\WINDOWS";
    key.SetText("Y", "%SystemRoot%\\x", kRegExpandSz);
    EXPECT_EQ(ReadText("HKUS\\S-1-5-21-1\\Software\\X\\Y"), "%SystemRoot%\\x");
}

TEST_F(RegistryAccessTest, ReadsIntegersWithTheirSign) {
    constexpr std::array<std::byte, 4> kMinusTwo = {std::byte{0xFE}, std::byte{0xFF}, std::byte{0xFF},
                                                    std::byte{0xFF}};
    key.SetDword("dword", 0x80000000);
    key.SetData("binary", kRegBinary, kMinusTwo);
    key.SetData("short", kRegBinary, std::span(kMinusTwo).first(2));
    key.SetData("nothing", kRegDword, {});
    EXPECT_EQ(ReadInteger("HKUS\\S-1-5-21-1\\Software\\X\\dword"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ReadInteger("HKUS\\S-1-5-21-1\\Software\\X\\binary"), -2);
    EXPECT_EQ(ReadInteger("HKUS\\S-1-5-21-1\\Software\\X\\short"), 0xFFFE);
    EXPECT_EQ(ReadInteger("HKUS\\S-1-5-21-1\\Software\\X\\nothing"), 0);
}

TEST_F(RegistryAccessTest, DoesNotReadMoreThanFourBytesAsAnInteger) {
    constexpr std::array<std::byte, 5> kFive{};
    key.SetData("Y", kRegBinary, kFive);
    ExpectError(0x80040006, "Unable to read registry value 'HKUS\\S-1-5-21-1\\Software\\X\\Y'",
                [&] { registry.ReadRegistryValue("HKUS\\S-1-5-21-1\\Software\\X\\Y"); });
}

TEST_F(RegistryAccessTest, ReadsTheDefaultValue) {
    key.SetText("", "default");
    EXPECT_EQ(ReadText("HKUS\\S-1-5-21-1\\Software\\X\\"), "default");
}

TEST_F(RegistryAccessTest, RefusesOtherTypes) {
    constexpr std::array<std::byte, 8> kEight{};
    for (const std::uint32_t type : {0U, 5U, 6U, 7U, 11U, 0xFFFFFFFFU}) {
        key.SetData("Y", type, kEight);
        ExpectError(0x80040007, "Unsupported data type in registry value 'HKUS\\S-1-5-21-1\\Software\\X\\Y'",
                    [&] { registry.ReadRegistryValue("HKUS\\S-1-5-21-1\\Software\\X\\Y"); });
    }
}

TEST_F(RegistryAccessTest, TellsAMissingValueAndLeavesItsKeyOpen) {
    ExpectError(0x80040006, "Unable to read registry value 'HKUS\\S-1-5-21-1\\Software\\X\\none'",
                [&] { registry.ReadRegistryValue("HKUS\\S-1-5-21-1\\Software\\X\\none"); });
    EXPECT_EQ(platform.OpenKeys(), 1U);
}

TEST_F(RegistryAccessTest, TellsAValueThatGoesAwayBetweenItsSizeAndItsData) {
    key.SetText("text", "abc").SetDword("number", 1);
    for (const std::string name : {"text", "number"}) {
        platform.Fail("RegQueryValueExA", kFileNotFound, 1);
        const std::string path = "HKUS\\S-1-5-21-1\\Software\\X\\" + name;
        ExpectError(0x80040006, "Unable to read registry value '" + path + "'",
                    [&] { registry.ReadRegistryValue(path); });
    }
}

// --- Writing.

TEST_F(RegistryAccessTest, WritesTextWithoutANul) {
    const std::string path = "HKUS\\S-1-5-21-1\\Software\\X\\Y";
    registry.WriteRegistryValue(path, "abc", kRegSz);
    EXPECT_EQ(Stored("S-1-5-21-1\\Software\\X", "Y").size(), 3U);
    EXPECT_EQ(key.FindValue("Y")->type, 1U);
    EXPECT_EQ(ReadText(path), "ab") << "what is read back loses the character in the NUL's place";
    registry.WriteRegistryValue(path, "", kRegExpandSz);
    EXPECT_EQ(key.FindValue("Y")->type, 2U);
    EXPECT_TRUE(key.FindValue("Y")->data.empty());
    EXPECT_EQ(platform.keysOpened[0].access, 0x20006U);
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(RegistryAccessTest, WritesBinaryAsTwoBytesAndReadsItAsFour) {
    registry.WriteRegistryValue("HKUS\\S-1-5-21-1\\Software\\X\\Y", -2, kRegBinary);
    EXPECT_EQ(Stored("S-1-5-21-1\\Software\\X", "Y"),
              (std::vector<std::byte>{std::byte{0xFE}, std::byte{0xFF}}));
    EXPECT_EQ(ReadInteger("HKUS\\S-1-5-21-1\\Software\\X\\Y"), 0xFFFE);
}

TEST_F(RegistryAccessTest, WritesAnIntegerOfFourBytesIntoANewKey) {
    registry.WriteRegistryValue("HKUS\\new\\Y", -2, kRegDword);
    EXPECT_EQ(Stored("new", "Y").size(), 4U);
    EXPECT_EQ(ReadInteger("HKUS\\new\\Y"), -2);
}

TEST_F(RegistryAccessTest, WritesNoOtherTypes) {
    for (const std::uint32_t type : {0U, 5U, 7U}) {
        ExpectInvalidCall([&] { registry.WriteRegistryValue("HKUS\\new\\Y", "a", type); });
    }
    EXPECT_NE(platform.Root(kUsers).Find("new"), nullptr) << "the key comes before the type";
    EXPECT_EQ(platform.Root(kUsers).Key("new").FindValue("Y"), nullptr);
}

TEST_F(RegistryAccessTest, TellsWhatCannotBeWritten) {
    platform.Fail("RegSetValueExA");
    ExpectError(0x80040008, "Unable to write registry value 'HKUS\\new\\Y'",
                [&] { registry.WriteRegistryValue("HKUS\\new\\Y", 1, kRegDword); });
    platform.Fail("RegCreateKeyExA");
    ExpectError(0x80040005, "Unable to create registry key 'HKUS\\new\\Y'",
                [&] { registry.WriteRegistryValue("HKUS\\new\\Y", 1, kRegDword); });
}

// --- Listing.

TEST_F(RegistryAccessTest, ListsSubKeysThenValuesEachSorted) {
    key.Key("b");
    key.Key("a");
    key.SetText("z", "1").SetText("y", "2");
    const std::string path = "HKUS\\S-1-5-21-1\\Software\\X";
    EXPECT_EQ(registry.EnumerateRegistryKey(path, 3), (Names{"a\\", "b\\", "y", "z"}));
    EXPECT_EQ(registry.EnumerateRegistryKey(path, 1), (Names{"a\\", "b\\"}));
    EXPECT_EQ(registry.EnumerateRegistryKey(path, 2), (Names{"y", "z"}));
    EXPECT_EQ(registry.EnumerateRegistryKey(path + "\\", 3), (Names{"a\\", "b\\", "y", "z"}));
    EXPECT_EQ(platform.keysOpened[0].access, 0x20019U);
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(RegistryAccessTest, SortsByTheCodesOfTheCharacters) {
    for (const char* name : {"b", "a", "B", "a b", "\u00E9"}) {
        key.SetText(std::string("v-") + name, "");
    }
    key.Key("doc");
    key.Key("TXT");
    key.Key("bmp");
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS\\S-1-5-21-1\\Software\\X", 3),
              (Names{"TXT\\", "bmp\\", "doc\\", "v-a", "v-a b", "v-b", "v-\u00E9"}));
}

TEST_F(RegistryAccessTest, LeavesTheDefaultValueOut) {
    key.SetText("", "default").SetText("y", "1");
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS\\S-1-5-21-1\\Software\\X", 2), Names{"y"});
}

TEST_F(RegistryAccessTest, ListsNothingWhereNothingIsSelectedOrFound) {
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS\\S-1-5-21-1\\Software\\X", 3), Names{});
    key.Key("a");
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS\\S-1-5-21-1\\Software\\X", 0), Names{});
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS\\S-1-5-21-1\\Software\\X", 2), Names{});
}

TEST_F(RegistryAccessTest, ListsTheRootItself) {
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS", 1), Names{"S-1-5-21-1\\"});
}

TEST_F(RegistryAccessTest, ListsALongName) {
    key.Key(std::string(255, 'k'));
    key.SetText(std::string(1000, 'v'), "1");
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS\\S-1-5-21-1\\Software\\X", 3),
              (Names{std::string(255, 'k') + "\\", std::string(1000, 'v')}));
}

TEST_F(RegistryAccessTest, TellsAKeyThatCannotBeListed) {
    for (const std::string call : {"RegQueryInfoKeyA", "RegEnumKeyExA", "RegEnumValueA"}) {
        MemoryPlatform host;
        host.Root(kUsers).Key("S-1-5-21-1\\Software\\X\\a");
        host.Root(kUsers).Key("S-1-5-21-1\\Software\\X").SetText("y", "1");
        host.Fail(call);
        for (const std::string path : {"HKUS\\S-1-5-21-1\\Software\\X", "HKUS\\S-1-5-21-1\\Software\\X\\"}) {
            ExpectError(0x80040009, "Unable to read information from registry key '" + path + "'",
                        [&] { RegistryAccess(host).EnumerateRegistryKey(path, 3); });
        }
    }
}

TEST_F(RegistryAccessTest, QuotesThePathAsTheCallerGaveIt) {
    for (const std::string path : {"HKUS\\none", "HKUS\\none\\"}) {
        ExpectError(0x80040002, "Unable to open registry key '" + path + "'",
                    [&] { registry.EnumerateRegistryKey(path, 3); });
    }
    for (const std::string path : {"HKU", "HKU\\none", "\\\\PC7"}) {
        ExpectError(0x80040001, "Invalid root in registry key '" + path + "'",
                    [&] { registry.EnumerateRegistryKey(path, 3); });
        ExpectError(0x80040001, "Invalid root in registry key '" + path + "'",
                    [&] { registry.EnsureRegistryKey(path); });
    }
    platform.RemoteRoot("PC7", kUsers);
    ExpectError(0x80040004, "Unable to open remote registry key '\\\\PC7\\HKUS\\none'",
                [&] { registry.EnumerateRegistryKey("\\\\PC7\\HKUS\\none", 3); });
    platform.Fail("RegCreateKeyExA");
    ExpectError(0x80040005, "Unable to create registry key 'HKUS\\new'",
                [&] { registry.EnsureRegistryKey("HKUS\\new"); });
}

TEST_F(RegistryAccessTest, TakesWhatFitsOfANameThatGrewMeanwhile) {
    key.Key("a");
    key.SetText("y", "1");
    platform.Fail("RegEnumKeyExA", kMoreData);
    platform.Fail("RegEnumValueA", kMoreData);
    EXPECT_EQ(registry.EnumerateRegistryKey("HKUS\\S-1-5-21-1\\Software\\X", 3), Names{"\\"});
}

}  // namespace
}  // namespace ostrevin
