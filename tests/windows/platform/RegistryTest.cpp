// The registry module on the machine's own registry.

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "platform/RegistryAccess.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/windows/platform/ScratchKey.h"

namespace ostrevin {
namespace {

using Names = std::vector<std::string>;

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

class WindowsRegistry : public testing::Test {
  protected:
    [[nodiscard]] std::string PathTo(const std::string& value) const {
        return "HKCU\\" + key.Path() + "\\" + value;
    }
    std::string ReadText(const std::string& value) {
        return std::get<std::string>(registry.ReadRegistryValue(PathTo(value)));
    }
    std::int32_t ReadInteger(const std::string& value) {
        return std::get<std::int32_t>(registry.ReadRegistryValue(PathTo(value)));
    }
    /// Type and bytes of a value as the system stores it.
    [[nodiscard]] std::pair<DWORD, std::string> Stored(const wchar_t* value) const {
        std::pair<DWORD, std::string> stored{0, std::string(100, '\0')};
        auto size = static_cast<DWORD>(stored.second.size());
        EXPECT_EQ(RegQueryValueExW(key.Handle(), value, nullptr, &stored.first,
                                   reinterpret_cast<BYTE*>(stored.second.data()), &size),
                  0);
        stored.second.resize(size);
        return stored;
    }
    KeyHandle Open() { return registry.OpenRegistryKey(PathTo(""), 0x20019); }

    WindowsPlatform platform;
    RegistryAccess registry{platform};
    ScratchKey key;
};

// --- Round trips.

TEST_F(WindowsRegistry, TextComesBackAsItWasWritten) {
    for (const std::uint32_t type : {1U, 2U}) {
        for (const std::string text : {"C:\\Docs\\a.txt", "%SystemRoot%\\x", "caf\u00E9 \u20AC", "x"}) {
            registry.WriteRegistryValue(PathTo("Y"), text, type);
            EXPECT_EQ(ReadText("Y"), text);
            EXPECT_EQ(Stored(L"Y").first, type);
        }
    }
}

TEST_F(WindowsRegistry, AnEmptyTextIsReadFromNoByteAndFromANul) {
    key.Set("", L"none", REG_SZ, "", 0);
    key.SetText("", L"one", L"");
    EXPECT_EQ(ReadText("none"), "");
    EXPECT_EQ(ReadText("one"), "");
}

TEST_F(WindowsRegistry, TextOutsideTheCodePageIsReadWithQuestionMarks) {
    key.SetText("", L"Y", L"\u0416 \u0100 \xD83D\xDE00 \u20AC");
    EXPECT_EQ(ReadText("Y").substr(0, 2), "? ");
    EXPECT_TRUE(ReadText("Y").ends_with("\u20AC"));
}

TEST_F(WindowsRegistry, AnIntegerComesBackWithItsSign) {
    for (const std::int32_t number : {0, -2, std::numeric_limits<std::int32_t>::min(), 2147483647}) {
        registry.WriteRegistryValue(PathTo("Y"), number, kRegDword);
        EXPECT_EQ(ReadInteger("Y"), number);
    }
    EXPECT_EQ(Stored(L"Y").second, "\xFF\xFF\xFF\x7F");
}

TEST_F(WindowsRegistry, BinaryIsWrittenAsTwoBytesAndReadAsUpToFour) {
    registry.WriteRegistryValue(PathTo("Y"), -2, kRegBinary);
    EXPECT_EQ(Stored(L"Y"), (std::pair<DWORD, std::string>{REG_BINARY, "\xFE\xFF"}));
    EXPECT_EQ(ReadInteger("Y"), 0xFFFE);
    key.Set("", L"Y", REG_BINARY, "\xFE\xFF\xFF\xFF", 4);
    EXPECT_EQ(ReadInteger("Y"), -2);
    key.Set("", L"Y", REG_BINARY, "12345", 5);
    ExpectError(0x80040006, "Unable to read registry value '" + PathTo("Y") + "'", [&] { ReadInteger("Y"); });
}

TEST_F(WindowsRegistry, TheDefaultValueHasNoName) {
    registry.WriteRegistryValue(PathTo(""), "default", kRegSz);
    EXPECT_EQ(ReadText(""), "default");
}

// --- Failures.

TEST_F(WindowsRegistry, EveryFailureHasItsNumberAndQuotesThePath) {
    const std::string none = PathTo("none\\Y");
    ExpectError(0x80040001, "Invalid root in registry key 'HKU\\X\\Y'",
                [&] { registry.ReadRegistryValue("HKU\\X\\Y"); });
    ExpectError(0x80040002, "Unable to open registry key '" + none + "'",
                [&] { registry.ReadRegistryValue(none); });
    ExpectError(0x80040003, "Unable to connect to remote computer '\\\\no-such-computer'",
                [&] { registry.ReadRegistryValue("\\\\no-such-computer\\HKLM\\Software\\V"); });
    ExpectError(0x80040005, "Unable to create registry key 'HKPD\\X\\Y'",
                [&] { registry.WriteRegistryValue("HKPD\\X\\Y", 1, kRegDword); });
    ExpectError(0x80040006, "Unable to read registry value '" + PathTo("none") + "'",
                [&] { registry.ReadRegistryValue(PathTo("none")); });
    const std::string tooLong = PathTo(std::string(20000, 'n'));
    ExpectError(0x80040008, "Unable to write registry value '" + tooLong + "'",
                [&] { registry.WriteRegistryValue(tooLong, 1, kRegDword); });
}

TEST_F(WindowsRegistry, ARootThatIsNoKeyOfADiskCannotBeListed) {
    ExpectError(0x80040009, "Unable to read information from registry key 'HKPD'",
                [&] { registry.EnumerateRegistryKey("HKPD", 3); });
}

TEST_F(WindowsRegistry, AComputersNameLeadsToItsRegistry) {
    std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name{};
    auto length = static_cast<DWORD>(name.size());
    ASSERT_NE(GetComputerNameA(name.data(), &length), 0);
    const std::string computer = std::string("\\\\") + name.data();
    const std::string current = "\\HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\";
    EXPECT_NE(std::get<std::string>(registry.ReadRegistryValue(computer + current + "CurrentVersion")), "");
    const std::string none = computer + "\\HKLM\\Software\\Ostrevin-none\\V";
    ExpectError(0x80040004, "Unable to open remote registry key '" + none + "'",
                [&] { registry.ReadRegistryValue(none); });
}

TEST_F(WindowsRegistry, OtherTypesAreNotReadAndNotWritten) {
    const std::array<std::byte, 8> eight{};
    for (const DWORD type : {0U, 5U, 6U, 7U, 11U, 0x12345U}) {
        key.Set("", L"Y", type, eight.data(), eight.size());
        ExpectError(0x80040007, "Unsupported data type in registry value '" + PathTo("Y") + "'",
                    [&] { registry.ReadRegistryValue(PathTo("Y")); });
    }
    for (const std::uint32_t type : {0U, 5U, 7U}) {
        ExpectError(5, "Invalid procedure call or argument",
                    [&] { registry.WriteRegistryValue(PathTo("Z"), "a", type); });
    }
}

// --- Listing.

TEST_F(WindowsRegistry, ListsSubKeysThenValuesEachSorted) {
    for (const wchar_t* name : {L"b", L"a", L"B c"}) {
        key.MakeSubKey(name);
    }
    for (const wchar_t* name : {L"z", L"y", L"", L"\u00E9"}) {
        key.SetText("", name, L"1");
    }
    const std::string path = "HKCU\\" + key.Path();
    EXPECT_EQ(registry.EnumerateRegistryKey(path, 3), (Names{"B c\\", "a\\", "b\\", "y", "z", "\u00E9"}));
    EXPECT_EQ(registry.EnumerateRegistryKey(path + "\\", 1), (Names{"B c\\", "a\\", "b\\"}));
    EXPECT_EQ(registry.EnumerateRegistryKey(path, 2), (Names{"y", "z", "\u00E9"}));
    EXPECT_EQ(registry.EnumerateRegistryKey(path, 0), Names{});
    ExpectError(0x80040002, "Unable to open registry key '" + path + "\\none'",
                [&] { registry.EnumerateRegistryKey(path + "\\none", 3); });
}

TEST_F(WindowsRegistry, ListsLongNames) {
    key.MakeSubKey(std::wstring(255, L'\u00E9'));
    key.SetText("", std::wstring(1000, L'v'), L"1");
    std::string longName;
    for (int i = 0; i < 255; ++i) {
        longName += "\u00E9";
    }
    EXPECT_EQ(registry.EnumerateRegistryKey("HKCU\\" + key.Path(), 3),
              (Names{longName + "\\", std::string(1000, 'v')}));
}

TEST_F(WindowsRegistry, EnsuresThatAKeyIsThere) {
    registry.EnsureRegistryKey("HKCU\\" + key.Path() + "\\A\\B");
    registry.EnsureRegistryKey("HKCU\\" + key.Path() + "\\A\\B");
    EXPECT_EQ(registry.EnumerateRegistryKey("HKCU\\" + key.Path() + "\\A", 3), Names{"B\\"});
}

TEST_F(WindowsRegistry, KnowsTheRoots) {
    EXPECT_FALSE(registry.EnumerateRegistryKey("HKCR", 1).empty());
    EXPECT_FALSE(registry.EnumerateRegistryKey("HKCU", 1).empty());
    EXPECT_FALSE(registry.EnumerateRegistryKey("HKLM", 1).empty());
    EXPECT_FALSE(registry.EnumerateRegistryKey("hkey_users", 1).empty());
    EXPECT_FALSE(registry.EnumerateRegistryKey("HKCC", 1).empty());
}

// --- The calls' own rules.

TEST_F(WindowsRegistry, TellsTypeAndSizeWithoutABuffer) {
    key.SetText("", L"text", L"caf\u00E9");
    key.Set("", L"list", REG_MULTI_SZ, L"a\0\u00E9\0", 10);
    key.Set("", L"bytes", REG_BINARY, "123456", 6);
    const KeyHandle handle = Open();
    std::uint32_t type = 0;
    std::uint32_t length = 0;
    EXPECT_EQ(platform.RegQueryValueExA(handle, "text", type, nullptr, length), kSuccess);
    EXPECT_EQ(type, kRegSz);
    EXPECT_EQ(length, 6U) << "in UTF-8, with the NUL";
    EXPECT_EQ(platform.RegQueryValueExA(handle, "list", type, nullptr, length), kSuccess);
    EXPECT_EQ(type, kRegMultiSz);
    EXPECT_EQ(length, 6U);
    EXPECT_EQ(platform.RegQueryValueExA(handle, "bytes", type, nullptr, length), kSuccess);
    EXPECT_EQ(type, kRegBinary);
    EXPECT_EQ(length, 6U);
    EXPECT_EQ(platform.RegQueryValueExA(handle, "none", type, nullptr, length), kFileNotFound);
    platform.RegCloseKey(handle);
}

TEST_F(WindowsRegistry, AValueLargerThanTheBufferIsMoreData) {
    key.SetText("", L"text", L"abc");
    key.Set("", L"bytes", REG_BINARY, "123456", 6);
    const KeyHandle handle = Open();
    for (const char* name : {"text", "bytes"}) {
        std::array<std::byte, 8> data;
        data.fill(std::byte{0x55});
        std::uint32_t type = 0;
        std::uint32_t length = 3;
        EXPECT_EQ(platform.RegQueryValueExA(handle, name, type, data.data(), length), kMoreData);
        EXPECT_EQ(length, std::string(name) == "text" ? 4U : 6U);
        EXPECT_EQ(data[3], std::byte{0x55}) << "behind the buffer";
        length = 8;
        EXPECT_EQ(platform.RegQueryValueExA(handle, name, type, data.data(), length), kSuccess);
        EXPECT_EQ(data[7], std::byte{0x55}) << "behind the value";
    }
    platform.RegCloseKey(handle);
}

TEST_F(WindowsRegistry, EnumeratesValuesWithTheirData) {
    key.SetText("", L"n\u00E9", L"abc");
    const KeyHandle handle = Open();
    TextBuffer name{3, {}};
    std::uint32_t type = 0;
    std::array<std::byte, 4> data{};
    std::uint32_t length = 4;
    EXPECT_EQ(platform.RegEnumValueA(handle, 0, name, type, data.data(), length), kSuccess);
    EXPECT_EQ(name.text, "n\u00E9");
    EXPECT_EQ(length, 4U);
    EXPECT_EQ(data[2], std::byte{'c'});
    TextBuffer narrow{2, {}};
    EXPECT_EQ(platform.RegEnumValueA(handle, 0, narrow, type, nullptr, length), kMoreData);
    EXPECT_EQ(narrow.text, "n") << "what fits";
    EXPECT_EQ(platform.RegEnumValueA(handle, 1, name, type, nullptr, length), kNoMoreItems);
    platform.RegCloseKey(handle);
}

TEST_F(WindowsRegistry, EnumeratesKeysWithTheirClass) {
    HKEY made = nullptr;
    std::wstring className = L"of a class";
    RegCreateKeyExW(key.Handle(), L"sub", 0, className.data(), 0, KEY_WRITE, nullptr, &made, nullptr);
    RegCloseKey(made);
    const KeyHandle handle = Open();
    TextBuffer name{256, {}};
    TextBuffer nameOfClass{256, {}};
    EXPECT_EQ(platform.RegEnumKeyExA(handle, 0, name, &nameOfClass), kSuccess);
    EXPECT_EQ(name.text, "sub");
    EXPECT_EQ(nameOfClass.text, "of a class");
    EXPECT_EQ(platform.RegEnumKeyExA(handle, 1, name, nullptr), kNoMoreItems);
    platform.RegCloseKey(handle);
    EXPECT_EQ(platform.RegCloseKey(0), kInvalidHandle);
}

}  // namespace
}  // namespace ostrevin
