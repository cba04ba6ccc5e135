#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Text.h"
#include "platform/volume/VolumeRegistry.h"
#include "tests/volume/TestVolume.h"
#include "tools/writers/DirtyHive.h"

namespace ostrevin {
namespace {

using samples::HiveKey;
using samples::TextData;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::byte> Bytes(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

KeyHandle OpenKey(VolumePlatform& platform, KeyHandle root, const std::string& path) {
    KeyHandle key = 0;
    EXPECT_EQ(platform.RegOpenKeyExA(root, path, 0x20019, key), kSuccess) << path;
    return key;
}

std::int32_t TryOpen(VolumePlatform& platform, KeyHandle root, const std::string& path) {
    KeyHandle key = 0;
    return platform.RegOpenKeyExA(root, path, 0x20019, key);
}

std::vector<std::string> SubKeys(VolumePlatform& platform, KeyHandle key) {
    std::vector<std::string> names;
    TextBuffer name{256, {}};
    for (std::uint32_t i = 0; platform.RegEnumKeyExA(key, i, name, nullptr) == kSuccess; ++i) {
        names.push_back(name.text);
    }
    return names;
}

std::string QueryText(VolumePlatform& platform, KeyHandle root, const std::string& path,
                      const std::string& name) {
    std::uint32_t type = 0;
    std::vector<std::byte> data(1000);
    auto length = static_cast<std::uint32_t>(data.size());
    const KeyHandle key = OpenKey(platform, root, path);
    const std::int32_t code = platform.RegQueryValueExA(key, name, type, data.data(), length);
    if (code != kSuccess) {
        return "code " + std::to_string(code);
    }
    std::string text;
    for (std::uint32_t i = 0; i < length; ++i) {
        text += std::to_integer<char>(data[i]);
    }
    return text;
}

class VolumeRegistryTest : public testing::Test {
  protected:
    TestVolume volume_;
};

TEST_F(VolumeRegistryTest, MachineHivesStandBelowLocalMachine) {
    volume_.software.Key("A\\B").SetString("v", "text");
    volume_.security.Key("Policy");
    const auto platform = volume_.Make();
    EXPECT_EQ(QueryText(*platform, kLocalMachine, "software\\a\\B", "V"), std::string("text\0", 5));
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SAM\\SAM\\Domains"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "Security\\POLICY"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SYSTEM\\Select"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "HARDWARE"), kFileNotFound);
    EXPECT_THAT(SubKeys(*platform, kLocalMachine), ElementsAre("SAM", "SECURITY", "SOFTWARE", "SYSTEM"));
    EXPECT_THAT(volume_.notices, IsEmpty());
}

TEST_F(VolumeRegistryTest, CurrentControlSetIsTheSelectedOne) {
    volume_.Control(1).SetString("which", "first");
    volume_.Control(2).SetString("which", "second");
    const auto platform = volume_.Make();
    const std::string second("second\0", 7);
    EXPECT_EQ(QueryText(*platform, kLocalMachine, "SYSTEM\\currentcontrolset\\Control", "which"), second);
    const KeyHandle system = OpenKey(*platform, kLocalMachine, "System");
    EXPECT_EQ(QueryText(*platform, system, "CurrentControlSet\\Control", "which"), second);
    EXPECT_THAT(SubKeys(*platform, system),
                ElementsAre("ControlSet001", "ControlSet002", "Select", "CurrentControlSet"));
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SYSTEM\\Select\\CurrentControlSet"), kFileNotFound);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SOFTWARE\\CurrentControlSet"), kFileNotFound);
}

TEST_F(VolumeRegistryTest, WithoutASelectedSetThereIsNone) {
    volume_.system.Key("Select").SetDword("Current", 7);
    const auto platform = volume_.Make();
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SYSTEM\\CurrentControlSet"), kFileNotFound);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SYSTEM\\ControlSet002"), kSuccess);
}

TEST_F(VolumeRegistryTest, UsersHoldTheDefaultAndTheLoggedOnUser) {
    volume_.defaultUser.Key("InDefault");
    volume_.users.front().hive.Key("InService");
    std::next(volume_.users.begin())->hive.Key("InAnna");
    const auto platform = volume_.Make();
    EXPECT_THAT(SubKeys(*platform, kUsers), ElementsAre(".DEFAULT", "S-1-5-18", kAnnaSid));
    EXPECT_EQ(TryOpen(*platform, kUsers, ".default\\InDefault"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kUsers, "s-1-5-18\\InDefault"), kSuccess) << "the system's own account";
    EXPECT_EQ(TryOpen(*platform, kUsers, std::string(kAnnaSid) + "\\InAnna"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kCurrentUser, "inanna"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kUsers, kBobSid), kFileNotFound);
}

TEST_F(VolumeRegistryTest, ClassesAreThoseOfTheMachine) {
    volume_.software.Key("Classes\\.txt").SetString("", "txtfile");
    const auto platform = volume_.Make();
    EXPECT_EQ(QueryText(*platform, kClassesRoot, ".TXT", ""), std::string("txtfile\0", 8));
    EXPECT_THAT(SubKeys(*platform, kClassesRoot), ElementsAre(".txt"));
}

TEST_F(VolumeRegistryTest, WhatOnlyARunningMachineHasIsAbsent) {
    const auto platform = volume_.Make();
    for (const KeyHandle root : {kPerformanceData, kCurrentConfig, kDynData}) {
        EXPECT_EQ(TryOpen(*platform, root, "Software"), kFileNotFound);
    }
}

TEST_F(VolumeRegistryTest, HandlesEndWithTheirClosing) {
    const auto platform = volume_.Make();
    const KeyHandle key = OpenKey(*platform, kLocalMachine, "SOFTWARE");
    const KeyHandle again = OpenKey(*platform, key, "");
    EXPECT_NE(key, again);
    EXPECT_EQ(platform->RegCloseKey(key), kSuccess);
    EXPECT_EQ(platform->RegCloseKey(key), kInvalidHandle);
    EXPECT_EQ(TryOpen(*platform, again, "Microsoft"), kSuccess) << "each handle stands for itself";
    EXPECT_EQ(platform->RegCloseKey(kLocalMachine), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SOFTWARE"), kSuccess);
    EXPECT_EQ(platform->RegCloseKey(0), kInvalidHandle);
}

TEST_F(VolumeRegistryTest, EveryCallRefusesAnUnknownHandle) {
    const auto platform = volume_.Make();
    for (const KeyHandle key : {KeyHandle{0}, KeyHandle{12345}, ~KeyHandle{0}, kDynData + 1}) {
        KeyHandle result = 0;
        KeyInfo info;
        TextBuffer name{256, {}};
        std::uint32_t type = 0;
        std::uint32_t length = 0;
        EXPECT_EQ(platform->RegOpenKeyExA(key, "x", 1, result), kInvalidHandle);
        EXPECT_EQ(platform->RegCreateKeyExA(key, "x", 1, result), kInvalidHandle);
        EXPECT_EQ(platform->RegQueryInfoKeyA(key, info), kInvalidHandle);
        EXPECT_EQ(platform->RegEnumKeyExA(key, 0, name, nullptr), kInvalidHandle);
        EXPECT_EQ(platform->RegEnumValueA(key, 0, name, type, nullptr, length), kInvalidHandle);
        EXPECT_EQ(platform->RegQueryValueExA(key, "x", type, nullptr, length), kInvalidHandle);
        EXPECT_EQ(platform->RegSetValueExA(key, "x", kRegSz, {}), kInvalidHandle);
        EXPECT_EQ(platform->RegLoadKeyA(key, "x", "C:\\x"), kInvalidHandle);
    }
}

TEST_F(VolumeRegistryTest, PathsMayEndWithASeparatorButNotBeginWithOne) {
    volume_.software.Key("A\\B");
    const auto platform = volume_.Make();
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SOFTWARE\\A\\"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SOFTWARE\\\\A\\\\B"), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "\\SOFTWARE"), kBadPathName);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SOFTWARE\\A\\C"), kFileNotFound);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SOFTWARE/A"), kFileNotFound);
}

TEST_F(VolumeRegistryTest, NothingCanBeWritten) {
    volume_.software.Key("A");
    const auto platform = volume_.Make();
    const KeyHandle key = OpenKey(*platform, kLocalMachine, "SOFTWARE\\A");
    KeyHandle made = 0;
    EXPECT_EQ(platform->RegCreateKeyExA(key, "New", 0x20006, made), kAccessDenied);
    EXPECT_EQ(platform->RegCreateKeyExA(kLocalMachine, "SOFTWARE\\A", 0x20006, made), kSuccess)
        << "a key that is there is only opened";
    EXPECT_EQ(platform->RegSetValueExA(made, "v", kRegSz, Bytes("x")), kAccessDenied);
    EXPECT_EQ(platform->RegSetValueExA(kLocalMachine, "v", kRegDword, Bytes("1234")), kAccessDenied);
}

TEST_F(VolumeRegistryTest, OtherComputersCannotBeReached) {
    const auto platform = volume_.Make();
    KeyHandle key = 0;
    EXPECT_EQ(platform->RegConnectRegistryA("PC7", kLocalMachine, key), kBadNetworkPath);
    EXPECT_EQ(platform->RegConnectRegistryA("\\\\PC7", kUsers, key), kBadNetworkPath);
    EXPECT_EQ(platform->RegConnectRegistryA("", kLocalMachine, key), kSuccess);
    EXPECT_EQ(key, kLocalMachine);
    EXPECT_EQ(platform->RegConnectRegistryA("", kCurrentUser, key), kInvalidHandle);
}

TEST_F(VolumeRegistryTest, InfoCountsCharactersWithoutTheirNul) {
    HiveKey& key = volume_.software.Key("Info");
    key.Key("ab");
    key.Key("Жизнь\U0001F600");
    key.SetDword("value", 1);
    key.SetDword("", 2);
    const auto platform = volume_.Make();
    KeyInfo info;
    EXPECT_EQ(platform->RegQueryInfoKeyA(OpenKey(*platform, kLocalMachine, "SOFTWARE\\Info"), info),
              kSuccess);
    EXPECT_EQ(info.subKeys, 2U);
    EXPECT_EQ(info.longestSubKeyName, 7U);
    EXPECT_EQ(info.values, 2U);
    EXPECT_EQ(info.longestValueName, 5U);
    const KeyHandle system = OpenKey(*platform, kLocalMachine, "SYSTEM");
    EXPECT_EQ(platform->RegQueryInfoKeyA(system, info), kSuccess);
    EXPECT_EQ(info.subKeys, 3U);
    EXPECT_EQ(info.longestSubKeyName, 17U) << "CurrentControlSet";
    EXPECT_EQ(platform->RegQueryInfoKeyA(kUsers, info), kSuccess);
    EXPECT_EQ(info.subKeys, 3U);
    EXPECT_EQ(info.values, 0U);
}

TEST_F(VolumeRegistryTest, KeyNamesThatDoNotFitAreCut) {
    HiveKey& key = volume_.software.Key("Names");
    key.Key("abcd").className = "class";
    key.Key("\U0001F600x");
    const auto platform = volume_.Make();
    const KeyHandle names = OpenKey(*platform, kLocalMachine, "SOFTWARE\\Names");
    TextBuffer name{5, "before"};
    EXPECT_EQ(platform->RegEnumKeyExA(names, 0, name, nullptr), kSuccess);
    EXPECT_EQ(name.text, "abcd");
    name = {4, "before"};
    EXPECT_EQ(platform->RegEnumKeyExA(names, 0, name, nullptr), kMoreData);
    EXPECT_EQ(name.text, "abc");
    name = {2, "before"};
    EXPECT_EQ(platform->RegEnumKeyExA(names, 1, name, nullptr), kMoreData);
    EXPECT_EQ(name.text, "") << "half a character does not fit";
    name = {0, "before"};
    EXPECT_EQ(platform->RegEnumKeyExA(names, 0, name, nullptr), kMoreData);
    EXPECT_EQ(name.text, "before");
    name = {256, "before"};
    EXPECT_EQ(platform->RegEnumKeyExA(names, 2, name, nullptr), kNoMoreItems);
    EXPECT_EQ(name.text, "before");
    TextBuffer keyClass{256, {}};
    EXPECT_EQ(platform->RegEnumKeyExA(names, 0, name, &keyClass), kSuccess);
    EXPECT_EQ(keyClass.text, "class");
    keyClass.capacity = 3;
    EXPECT_EQ(platform->RegEnumKeyExA(names, 0, name, &keyClass), kMoreData);
    EXPECT_EQ(name.text, "abcd");
    EXPECT_EQ(keyClass.text, "cl");
}

TEST_F(VolumeRegistryTest, ValuesStandInStoredOrder) {
    HiveKey& key = volume_.software.Key("Values");
    key.SetBinary("z", Bytes("12345678"));
    key.SetDword("a", 0x01020304);
    key.SetBinary("empty", {});
    const auto platform = volume_.Make();
    const KeyHandle values = OpenKey(*platform, kLocalMachine, "SOFTWARE\\Values");
    TextBuffer name{256, {}};
    std::uint32_t type = 99;
    std::vector<std::byte> data = Bytes("..........");
    std::uint32_t length = 10;
    EXPECT_EQ(platform->RegEnumValueA(values, 0, name, type, data.data(), length), kSuccess);
    EXPECT_EQ(name.text, "z");
    EXPECT_EQ(type, kRegBinary);
    EXPECT_EQ(length, 8U);
    length = 10;
    EXPECT_EQ(platform->RegEnumValueA(values, 1, name, type, data.data(), length), kSuccess);
    EXPECT_EQ(type, kRegDword);
    EXPECT_EQ(length, 4U);
    EXPECT_EQ(data, Bytes("\x04\x03\x02\x01"
                          "5678.."))
        << "a short value leaves the rest of the buffer as it was";
    length = 10;
    EXPECT_EQ(platform->RegEnumValueA(values, 2, name, type, data.data(), length), kSuccess);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(platform->RegEnumValueA(values, 3, name, type, data.data(), length), kNoMoreItems);
}

TEST_F(VolumeRegistryTest, ValuesThatDoNotFitAreLeftOut) {
    volume_.software.Key("Values").SetBinary("name", Bytes("12345678"));
    const auto platform = volume_.Make();
    const KeyHandle values = OpenKey(*platform, kLocalMachine, "SOFTWARE\\Values");
    TextBuffer name{256, {}};
    std::uint32_t type = 99;
    std::vector<std::byte> data = Bytes("........");
    std::uint32_t length = 7;
    EXPECT_EQ(platform->RegEnumValueA(values, 0, name, type, data.data(), length), kMoreData);
    EXPECT_EQ(length, 8U);
    EXPECT_EQ(data, Bytes("........"));
    length = 7;
    EXPECT_EQ(platform->RegQueryValueExA(values, "NAME", type, data.data(), length), kMoreData);
    EXPECT_EQ(length, 8U);
    EXPECT_EQ(type, kRegBinary);
    EXPECT_EQ(data, Bytes("........"));
    length = 0;
    EXPECT_EQ(platform->RegQueryValueExA(values, "name", type, nullptr, length), kSuccess);
    EXPECT_EQ(length, 8U);
    EXPECT_EQ(platform->RegQueryValueExA(values, "name", type, data.data(), length), kSuccess);
    EXPECT_EQ(data, Bytes("12345678"));
    EXPECT_EQ(platform->RegQueryValueExA(values, "other", type, data.data(), length), kFileNotFound);
    EXPECT_EQ(platform->RegQueryValueExA(kLocalMachine, "", type, data.data(), length), kFileNotFound);
    name.capacity = 4;
    length = 8;
    EXPECT_EQ(platform->RegEnumValueA(values, 0, name, type, data.data(), length), kMoreData);
}

TEST_F(VolumeRegistryTest, TextBecomesUtf8WithItsNuls) {
    HiveKey& key = volume_.software.Key("Texts");
    key.SetString("cyrillic", "Жук");
    key.SetString("expand", "%TEMP%", kRegExpandSz);
    key.SetMultiString("multi", std::vector<std::string>{"é", "b"});
    std::vector<std::byte> unterminated = TextData("ab");
    unterminated.resize(4);
    key.Set("unterminated", kRegSz, unterminated);
    key.Set("odd", kRegSz, Bytes(std::string_view("a\0b", 3)));
    key.Set("binary", kRegBinary, TextData("ab"));
    key.Set("unknown", 0x1234, TextData("a"));
    key.Set("nothing", kRegSz, {});
    const auto platform = volume_.Make();
    const auto text = [&](const char* name) {
        return QueryText(*platform, kLocalMachine, "SOFTWARE\\Texts", name);
    };
    using namespace std::string_literals;
    EXPECT_EQ(text("cyrillic"), "Жук\0"s);
    EXPECT_EQ(text("expand"), "%TEMP%\0"s);
    EXPECT_EQ(text("multi"), "é\0b\0\0"s);
    EXPECT_EQ(text("unterminated"), "ab"s);
    EXPECT_EQ(text("odd"), "a"s);
    EXPECT_EQ(text("binary"), "a\0b\0\0\0"s);
    EXPECT_EQ(text("unknown"), "a\0\0\0"s);
    EXPECT_EQ(text("nothing"), ""s);
    std::uint32_t type = 0;
    std::uint32_t length = 0;
    const KeyHandle texts = OpenKey(*platform, kLocalMachine, "SOFTWARE\\Texts");
    EXPECT_EQ(platform->RegQueryValueExA(texts, "cyrillic", type, nullptr, length), kSuccess);
    EXPECT_EQ(type, kRegSz);
    EXPECT_EQ(length, 7U) << "the size of what the caller will get";
}

TEST_F(VolumeRegistryTest, LoadingMountsAHive) {
    volume_.users.back().hive.Key("Software\\Mine").SetDword("v", 5);
    const auto platform = volume_.Make();
    const std::string file = "c:\\documents and settings\\CAROL.corp\\ntuser.dat";
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kDomainSid, file), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kUsers, std::string(kDomainSid) + "\\software\\mine"), kSuccess);
    EXPECT_THAT(SubKeys(*platform, kUsers), ElementsAre(".DEFAULT", "S-1-5-18", kAnnaSid, kDomainSid));
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kDomainSid, file), kSharingViolation);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "Other", file), kSharingViolation);
    const std::string bob = "C:\\Documents and Settings\\bob\\NTUSER.DAT";
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kDomainSid, bob), kAccessDenied) << "the name is taken";
    EXPECT_EQ(platform->RegLoadKeyA(kLocalMachine, "Bob", bob), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "bob"), kSuccess);
}

TEST_F(VolumeRegistryTest, TheLoggedOnUsersHiveIsAlreadyLoaded) {
    const auto platform = volume_.Make();
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kAnnaSid, "C:\\Documents and Settings\\anna\\NTUSER.DAT"),
              kSharingViolation);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\WINDOWS\\system32\\config\\SAM"), kSharingViolation);
}

TEST_F(VolumeRegistryTest, LoadingTellsWhatIsTheMatter) {
    volume_.Write();
    volume_.folder.Write("empty", "");
    volume_.folder.Write("text", std::string(10000, 'x'));
    volume_.folder.Write("corrupt", "regf" + std::string(10000, '\xFF'));
    volume_.folder.Write("short", "regf");
    volume_.folder.MakeFolder("folder");
    const auto platform = volume_.Open();
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\none"), kFileNotFound);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\none\\NTUSER.DAT"), kPathNotFound);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "\\NTUSER.DAT"), kFileNotFound);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "%systemroot%\\NTUSER.DAT"), kPathNotFound);
    EXPECT_THAT(volume_.notices, IsEmpty()) << "what is not there is no unreadable hive";
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\empty"), kNotRegistryFile);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\text"), kNotRegistryFile);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\corrupt"), kBadDatabase);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\short"), kBadDatabase);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\folder"), kAccessDenied);
    EXPECT_EQ(volume_.notices.size(), 5U);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", "C:\\TEXT"), kNotRegistryFile);
    EXPECT_EQ(volume_.notices.size(), 5U) << "each hive is told of once";
    EXPECT_THAT(volume_.notices[0], testing::StartsWith(volume_.folder / "empty: "));
    const std::string bob = "C:\\Documents and Settings\\bob\\NTUSER.DAT";
    EXPECT_EQ(platform->RegLoadKeyA(kCurrentUser, "x", bob), kInvalidParameter);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "", bob), kInvalidParameter);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x\\y", bob), kInvalidParameter);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, "x", bob), kSuccess);
}

TEST_F(VolumeRegistryTest, ADirtyHiveIsReadWithoutLogsAndToldOf) {
    volume_.Write();
    samples::HiveOptions dirty;
    dirty.secondarySequence = 7;
    HiveKey root;
    root.Key("Software\\Here");
    volume_.WriteHive("Documents and Settings/bob/NTUSER.DAT", root, dirty);
    const auto platform = volume_.Open();
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kBobSid, "C:\\Documents and Settings\\bob\\NTUSER.DAT"),
              kSuccess);
    EXPECT_EQ(TryOpen(*platform, kUsers, std::string(kBobSid) + "\\Software\\Here"), kSuccess);
    EXPECT_THAT(volume_.notices, ElementsAre(HasSubstr("NTUSER.DAT: ")));
}

TEST_F(VolumeRegistryTest, ADamagedBaseBlockIsToldOf) {
    volume_.Write();
    HiveKey root;
    root.Key("Software\\Here");
    const samples::HiveOptions options;
    const std::vector<std::byte> before = samples::WriteHive(root, options);
    root.Key("Software\\New");
    samples::DirtyHive dirty = samples::MakeDirtyHive(before, samples::WriteHive(root, options));
    dirty.primary[508] ^= std::byte{1};
    const std::string bob = "Documents and Settings/bob/NTUSER.DAT";
    const std::string path = "C:\\Documents and Settings\\bob\\NTUSER.DAT";
    volume_.folder.Write(bob, dirty.primary);
    {
        const auto platform = volume_.Open();
        EXPECT_EQ(platform->RegLoadKeyA(kUsers, kBobSid, path), kSuccess);
        EXPECT_EQ(TryOpen(*platform, kUsers, std::string(kBobSid) + "\\Software\\Here"), kSuccess);
        EXPECT_THAT(volume_.notices, ElementsAre(HasSubstr("NTUSER.DAT: The registry hive has a damaged base "
                                                           "block and no log fits it")));
    }
    volume_.notices.clear();
    volume_.folder.Write(bob + ".LOG", dirty.log);
    const auto platform = volume_.Open();
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kBobSid, path), kSuccess);
    EXPECT_EQ(TryOpen(*platform, kUsers, std::string(kBobSid) + "\\Software\\New"), kSuccess);
    EXPECT_THAT(volume_.notices,
                ElementsAre(HasSubstr("NTUSER.DAT: The registry hive has a damaged base block "
                                      "and has been recovered from its logs.")));
}

TEST_F(VolumeRegistryTest, UnreadableMachineHivesAreAbsent) {
    volume_.Write();
    volume_.folder.Write("WINDOWS/system32/config/SECURITY", "no hive");
    std::filesystem::remove(volume_.folder / "WINDOWS/system32/config/SAM");
    const auto platform = volume_.Open();
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SECURITY"), kFileNotFound);
    EXPECT_EQ(TryOpen(*platform, kLocalMachine, "SAM\\SAM"), kFileNotFound);
    EXPECT_THAT(SubKeys(*platform, kLocalMachine), ElementsAre("SOFTWARE", "SYSTEM"));
    EXPECT_THAT(volume_.notices, testing::UnorderedElementsAre(HasSubstr("SECURITY: "), HasSubstr("SAM: ")));
}

TEST_F(VolumeRegistryTest, HivesAreReadOnlyWhenTheyAreNeeded) {
    volume_.Write();
    for (const char* file :
         {"WINDOWS/system32/config/SECURITY", "WINDOWS/system32/config/default",
          "Documents and Settings/bob/NTUSER.DAT", "Documents and Settings/LocalService/NTUSER.DAT"}) {
        volume_.folder.Write(file, std::string(600, 'x'));
    }
    const auto platform = volume_.Open();
    EXPECT_EQ(AccountNames(*platform, kBobSid), std::vector<std::string>{"bob"});
    EXPECT_EQ(TryOpen(*platform, kCurrentUser, ""), kSuccess);
    EXPECT_THAT(volume_.notices, IsEmpty());
    EXPECT_EQ(TryOpen(*platform, kUsers, ".DEFAULT"), kFileNotFound);
    EXPECT_EQ(volume_.notices.size(), 1U);
}

TEST_F(VolumeRegistryTest, AHundredThousandSubKeysAreWalkedByIndex) {
    constexpr std::uint32_t kCount = 100000;
    HiveKey& key = volume_.software.Key("Many");
    for (std::uint32_t i = 0; i < kCount; ++i) {
        key.AddKey("key" + std::to_string(1000000 + i));
    }
    HiveKey& values = volume_.software.Key("Values");
    for (std::uint32_t i = 0; i < 20000; ++i) {
        values.Add("value" + std::to_string(i), kRegDword, Bytes("1234"));
    }
    const auto platform = volume_.Make();
    const KeyHandle many = OpenKey(*platform, kLocalMachine, "SOFTWARE\\Many");
    TextBuffer name{256, {}};
    std::uint32_t i = 0;
    while (platform->RegEnumKeyExA(many, i, name, nullptr) == kSuccess) {
        ASSERT_EQ(name.text, "key" + std::to_string(1000000 + i));
        ++i;
    }
    EXPECT_EQ(i, kCount);
    const KeyHandle manyValues = OpenKey(*platform, kLocalMachine, "SOFTWARE\\Values");
    std::vector<std::byte> data(4);
    std::uint32_t type = 0;
    std::uint32_t length = 4;
    for (i = 0; platform->RegEnumValueA(manyValues, i, name, type, data.data(), length) == kSuccess; ++i) {
        ASSERT_EQ(name.text, "value" + std::to_string(i));
    }
    EXPECT_EQ(i, 20000U);
}

}  // namespace
}  // namespace ostrevin
