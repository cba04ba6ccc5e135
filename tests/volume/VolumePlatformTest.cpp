#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Dates.h"
#include "platform/RuntimeError.h"
#include "platform/volume/VolumePlatform.h"
#include "tests/volume/TestVolume.h"
#include "tools/writers/LinkWriter.h"

namespace ostrevin {
namespace {

using samples::HiveKey;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class VolumePlatformTest : public testing::Test {
  protected:
    HiveKey& Version() { return volume_.software.Key(kCurrentVersion); }
    HiveKey& Winlogon() { return Version().Key("Winlogon"); }
    HiveKey& AnnasExplorer() { return std::next(volume_.users.begin())->hive.Key(kExplorer); }

    /// The name of the shell process's owner on the volume as it stands.
    std::string Owner() {
        const std::vector<ProcessOwner> owners = volume_.Make()->ShellProcessOwners();
        return owners.empty() ? "nobody" : owners.at(0).user;
    }

    TestVolume volume_;
};

// --- The Windows folder.

TEST_F(VolumePlatformTest, WindowsIsFoundWhateverItsFolderIsCalled) {
    for (const char* name : {"winnt", "Windows", "XP.Pro"}) {
        TestVolume volume;
        volume.windows = name;
        volume.folder.MakeFolder("AAA/system32/config");
        EXPECT_EQ(volume.Make()->GetVersionExA().major, 5U) << name;
    }
}

TEST_F(VolumePlatformTest, TheUsualWindowsFolderComesFirst) {
    volume_.Write();
    HiveKey other;
    other.Key(kCurrentVersion).SetString("CurrentVersion", "4.0");
    volume_.WriteHive("ANOTHER/system32/config/software", other);
    volume_.WriteHive("WINNT/system32/config/software", other);
    EXPECT_EQ(volume_.Open()->GetVersionExA().major, 5U);
}

TEST_F(VolumePlatformTest, LowerAndUpperCaseAreTheSame) {
    volume_.Write();
    std::filesystem::rename(volume_.folder / "WINDOWS/system32/config/software",
                            volume_.folder / "WINDOWS/system32/config/SoftWare");
    std::filesystem::rename(volume_.folder / "WINDOWS/system32", volume_.folder / "WINDOWS/SYSTEM32");
    EXPECT_EQ(volume_.Open()->GetVersionExA().major, 5U);
}

TEST_F(VolumePlatformTest, AFolderWithoutWindowsIsRefused) {
    volume_.folder.Write("Documents/a.txt", "");
    try {
        volume_.Open();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), AllOf(StartsWith(volume_.folder.Utf8Path()), HasSubstr("WINDOWS"),
                                        HasSubstr("system32/config/software"), Not(HasSubstr("\n"))));
    }
    EXPECT_THROW(VolumePlatform::Open(volume_.folder / "none", {}), std::runtime_error);
    EXPECT_THROW(VolumePlatform::Open("", {}), std::runtime_error);
}

TEST_F(VolumePlatformTest, SystemRootTellsWindowsFolderAndDrive) {
    Version().SetString("SystemRoot", "d:\\WINDOWS");
    volume_.folder.Write("a.txt", "");
    const auto platform = volume_.Make();
    EXPECT_EQ(platform->GetWindowsDirectoryA(), "d:\\WINDOWS");
    EXPECT_TRUE(platform->PathFileExistsA("D:\\A.TXT"));
    EXPECT_FALSE(platform->PathFileExistsA("C:\\a.txt"));
}

TEST_F(VolumePlatformTest, AnUnreadableSoftwareHiveLeavesTheUsualDrive) {
    volume_.Write();
    volume_.folder.Write("WINDOWS/system32/config/software", "no hive");
    const auto platform = volume_.Open();
    EXPECT_EQ(platform->GetWindowsDirectoryA(), "C:\\WINDOWS");
    EXPECT_EQ(platform->GetVersionExA().major, 0U);
    EXPECT_THAT(platform->ShellProcessOwners(), IsEmpty());
    EXPECT_THAT(platform->GroupUsers(), IsEmpty());
    EXPECT_EQ(platform->SpecialFolderPath(8), "");
    EXPECT_THAT(volume_.notices, ElementsAre(HasSubstr("software: ")));
}

TEST_F(VolumePlatformTest, TheVersionIsThatOfTheMachine) {
    const auto version = [this](const char* text) {
        Version().SetString("CurrentVersion", text);
        const OSVersion found = volume_.Make()->GetVersionExA();
        return std::vector<std::uint32_t>{found.platformId, found.major, found.minor};
    };
    EXPECT_THAT(version("5.1"), ElementsAre(2U, 5U, 1U));
    EXPECT_THAT(version("5.0"), ElementsAre(2U, 5U, 0U));
    EXPECT_THAT(version("6"), ElementsAre(2U, 6U, 0U));
    EXPECT_THAT(version("x.y"), ElementsAre(2U, 0U, 0U));
    EXPECT_THAT(version(""), ElementsAre(2U, 0U, 0U));
}

// --- The accounts.

TEST_F(VolumePlatformTest, LocalNamesAreThoseOfTheAccountsManager) {
    volume_.AddLocalAccount(1005, "Светлана");
    const auto platform = volume_.Make();
    EXPECT_THAT(AccountNames(*platform, kAnnaSid), ElementsAre("anna"));
    EXPECT_THAT(AccountNames(*platform, "s-1-5-21-1000-2000-3000-1004"), ElementsAre("bob"));
    EXPECT_THAT(AccountNames(*platform, std::string(kMachineSid) + "-1005"), ElementsAre("Светлана"));
    EXPECT_THAT(AccountNames(*platform, std::string(kMachineSid) + "-1006"), IsEmpty())
        << "a deleted account";
}

TEST_F(VolumePlatformTest, WhatIsNoUsersIdentifierStaysUnknown) {
    const auto platform = volume_.Make();
    for (const std::string sid :
         {"S-1-5-18", "S-1-5-19", "", "S-1-5-21", "S-1-5-21-1-2-3", "S-1-5-21-7-8-9-1105.bak",
          "S-1-5-21-7-8-9-1105-1", "S-1-5-21-7-8-9-99999999999", "S-1-5-21-7-8-9-", "S-1-5-32-544",
          "S-1-5-21-7-8-9-x", "S-1-5-21-4-4-4-1000"}) {
        EXPECT_THAT(AccountNames(*platform, sid), IsEmpty()) << sid;
    }
}

TEST_F(VolumePlatformTest, DomainNamesAreThoseOfTheirLastLogon) {
    EXPECT_THAT(AccountNames(*volume_.Make(), kDomainSid), ElementsAre("carol.CORP"))
        << "the profile's folder";
    volume_.users.back().hive.Key(kExplorer).SetString("Logon User Name", "carol");
    EXPECT_THAT(AccountNames(*volume_.Make(), kDomainSid), ElementsAre("carol"));
    EXPECT_THAT(volume_.notices, IsEmpty());
}

TEST_F(VolumePlatformTest, ADomainNameComesFromTheFolderWhenTheHiveCannotBeRead) {
    volume_.Write();
    volume_.folder.Write("Documents and Settings/carol.CORP/NTUSER.DAT", "no hive");
    const auto platform = volume_.Open();
    EXPECT_THAT(AccountNames(*platform, kDomainSid), ElementsAre("carol.CORP"));
    EXPECT_THAT(volume_.notices, ElementsAre(HasSubstr("NTUSER.DAT: ")));
}

TEST_F(VolumePlatformTest, WithoutTheAccountsManagerProfilesNameTheirUsers) {
    volume_.Write();
    std::filesystem::remove(volume_.folder / "WINDOWS/system32/config/SAM");
    const auto platform = volume_.Open();
    EXPECT_THAT(AccountNames(*platform, kAnnaSid), ElementsAre("anna"));
    EXPECT_THAT(volume_.notices, ElementsAre(HasSubstr("SAM: ")));
}

TEST_F(VolumePlatformTest, HostileAccountValuesAreNoNames) {
    const auto name = [this](std::vector<std::byte> value) {
        volume_.sam.Key("SAM\\Domains\\Account\\Users\\000003EB").SetBinary("V", std::move(value));
        return AccountNames(*volume_.Make(), kAnnaSid);
    };
    EXPECT_THAT(name({}), IsEmpty());
    EXPECT_THAT(name(std::vector<std::byte>(203)), IsEmpty());
    EXPECT_THAT(name(std::vector<std::byte>(210, std::byte{0xFF})), IsEmpty());
    EXPECT_THAT(name(std::vector<std::byte>(210, std::byte{1})), IsEmpty());
}

TEST_F(VolumePlatformTest, TheShellBelongsToTheNameInTheLogonDialog) {
    EXPECT_EQ(Owner(), "anna") << "although others were there later, and in the account's own spelling";
    Winlogon().SetString("DefaultUserName", "CAROL.corp");
    EXPECT_EQ(Owner(), "carol.CORP");
}

TEST_F(VolumePlatformTest, ElseTheShellBelongsToWhoeverWasThereLast) {
    Winlogon().SetString("DefaultUserName", "visitor");
    EXPECT_EQ(Owner(), "bob") << "service profiles, though written later, are no users";
    volume_.users.back().lastWritten = 201;
    EXPECT_EQ(Owner(), "carol.CORP");
    Winlogon().SetString("DefaultUserName", "");
    EXPECT_EQ(Owner(), "carol.CORP");
}

TEST_F(VolumePlatformTest, OfTwoWithOneNameTheShellBelongsToTheLater) {
    volume_.users.back().hive.Key(kExplorer).SetString("Logon User Name", "ANNA");
    EXPECT_EQ(Owner(), "ANNA");
    volume_.users.back().lastWritten = 99;
    EXPECT_EQ(Owner(), "anna");
}

TEST_F(VolumePlatformTest, AMachineWithoutUsersHasNoShell) {
    TestVolume volume;
    HiveKey& list = volume.software.Key(std::string(kCurrentVersion) + "\\ProfileList");
    list.subKeys.clear();
    volume.Write();
    const auto platform = volume.Open();
    EXPECT_THAT(platform->ShellProcessOwners(), IsEmpty());
    EXPECT_THAT(platform->GroupUsers(), IsEmpty());
    KeyHandle key = 0;
    EXPECT_EQ(platform->RegOpenKeyExA(kCurrentUser, "Software", 1, key), kFileNotFound);
    EXPECT_EQ(platform->EnvironmentVariable("USERNAME"), "");
    EXPECT_EQ(platform->SpecialFolderPath(8), "");
}

TEST_F(VolumePlatformTest, WhoCanReadEverythingIsAnAdministrator) {
    const auto platform = volume_.Make();
    const std::vector<GroupUser> groups = platform->GroupUsers();
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups[0].groupComponent,
              "\\\\.\\root\\cimv2:Win32_Group.Domain=\"STUDY\",Name=\"Administrators\"");
    EXPECT_EQ(groups[0].partComponent, "\\\\.\\root\\cimv2:Win32_UserAccount.Domain=\"STUDY\",Name=\"anna\"");
}

// --- Variables and folders.

TEST_F(VolumePlatformTest, VariablesAreThoseOfTheSession) {
    HiveKey& machine = volume_.Control().Key("Session Manager\\Environment");
    machine.SetString("TEMP", "%SystemRoot%\\TEMP", kRegExpandSz);
    machine.SetString("OS", "Windows_NT");
    machine.SetString("Loop", "%Loop%%OS%", kRegExpandSz);
    HiveKey& own = std::next(volume_.users.begin())->hive.Key("Environment");
    own.SetString("TEMP", "%USERPROFILE%\\Temp", kRegExpandSz);
    own.SetString("Literal", "%OS%");
    const auto platform = volume_.Make();
    const auto variable = [&](const char* name) { return platform->EnvironmentVariable(name); };
    EXPECT_EQ(variable("SystemRoot"), "C:\\WINDOWS");
    EXPECT_EQ(variable("WINDIR"), "C:\\WINDOWS");
    EXPECT_EQ(variable("SystemDrive"), "C:");
    EXPECT_EQ(variable("UserProfile"), "C:\\Documents and Settings\\anna");
    EXPECT_EQ(variable("USERNAME"), "anna");
    EXPECT_EQ(variable("HOMEDRIVE"), "C:");
    EXPECT_EQ(variable("HOMEPATH"), "\\Documents and Settings\\anna");
    EXPECT_EQ(variable("ALLUSERSPROFILE"), "C:\\Documents and Settings\\All Users");
    EXPECT_EQ(variable("COMPUTERNAME"), "STUDY");
    EXPECT_EQ(variable("TEMP"), "C:\\Documents and Settings\\anna\\Temp");
    EXPECT_EQ(variable("OS"), "Windows_NT");
    EXPECT_EQ(variable("Literal"), "%OS%");
    EXPECT_EQ(variable("Loop"), "%Loop%Windows_NT");
    EXPECT_EQ(variable("None"), "");
}

TEST_F(VolumePlatformTest, AnExpansionWithoutEndIsGivenUp) {
    HiveKey& machine = volume_.Control().Key("Session Manager\\Environment");
    machine.SetString("Long", std::string(30000, 'x'));
    std::string many;
    for (int i = 0; i < 5000; ++i) {
        many += "%Long%";
    }
    machine.SetString("Bomb", many, kRegExpandSz);
    const auto platform = volume_.Make();
    EXPECT_EQ(platform->EnvironmentVariable("Bomb"), "");
    EXPECT_EQ(platform->EnvironmentVariable("Long").size(), 30000U);
}

TEST_F(VolumePlatformTest, SpecialFoldersComeFromShellFolders) {
    AnnasExplorer().Key("Shell Folders").SetString("Recent", "D:\\Shell\\Recent");
    AnnasExplorer().Key("User Shell Folders").SetString("Recent", "%USERPROFILE%\\Other", kRegExpandSz);
    AnnasExplorer().Key("User Shell Folders").SetString("History", "%USERPROFILE%\\Hist", kRegExpandSz);
    AnnasExplorer().Key("Shell Folders").SetString("Personal", "C:\\My Documents");
    volume_.software.Key("Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders")
        .SetString("Common Programs", "C:\\Common\\Programs");
    volume_.software.Key("Microsoft\\Windows\\CurrentVersion")
        .SetString("ProgramFilesDir", "C:\\Program Files");
    const auto platform = volume_.Make();
    EXPECT_EQ(platform->SpecialFolderPath(8), "D:\\Shell\\Recent");
    EXPECT_EQ(platform->SpecialFolderPath(34), "C:\\Documents and Settings\\anna\\Hist");
    EXPECT_EQ(platform->SpecialFolderPath(23), "C:\\Common\\Programs");
    EXPECT_EQ(platform->SpecialFolderPath(5), "C:\\My Documents");
    EXPECT_EQ(platform->SpecialFolderPath(0x8005), "C:\\My Documents") << "flags aside";
    EXPECT_EQ(platform->SpecialFolderPath(36), "C:\\WINDOWS");
    EXPECT_EQ(platform->SpecialFolderPath(37), "C:\\WINDOWS\\system32");
    EXPECT_EQ(platform->SpecialFolderPath(38), "C:\\Program Files");
    EXPECT_EQ(platform->SpecialFolderPath(40), "C:\\Documents and Settings\\anna");
    for (const int none : {26, 43, 1, 17, 99, -1}) {
        EXPECT_EQ(platform->SpecialFolderPath(none), "") << none;
    }
}

TEST_F(VolumePlatformTest, SpecialFoldersHaveTheirUsualPlaces) {
    const auto platform = volume_.Make();
    EXPECT_EQ(platform->SpecialFolderPath(8), "C:\\Documents and Settings\\anna\\Recent");
    EXPECT_EQ(platform->SpecialFolderPath(34), "C:\\Documents and Settings\\anna\\Local Settings\\History");
    EXPECT_EQ(platform->SpecialFolderPath(23), "C:\\Documents and Settings\\All Users\\Start Menu\\Programs");
}

// --- Files.

TEST_F(VolumePlatformTest, FilesAreThoseOfTheVolume) {
    volume_.folder.Write("Docs/b.txt", "bb");
    volume_.folder.Write("Docs/A.txt", "a");
    volume_.folder.Write("Docs/desktop.ini", "");
    const auto platform = volume_.Make();
    EXPECT_TRUE(platform->PathFileExistsA("C:\\docs"));
    const std::vector<DirectoryEntry> entries = platform->ListDirectory("C:\\DOCS");
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].name, "A.txt");
    EXPECT_NE(entries[2].attributes & kAttributeHidden, 0U);
    EXPECT_EQ(platform->FindEntry("C:\\docs\\B.TXT")->name, "b.txt");
    EXPECT_EQ(platform->OpenFile("C:\\docs\\B.TXT")->Size(), 2U);
    EXPECT_EQ(platform->OpenFile("C:\\docs"), nullptr);
    EXPECT_EQ(platform->OpenFile("\\\\server\\share\\b.txt"), nullptr);
    const std::vector<std::string> names = {"SeBackupPrivilege"};
    platform->EnablePrivileges(names);
}

TEST_F(VolumePlatformTest, ShortcutsAreReadFromTheVolumeWithItsVariables) {
    samples::Link link;
    link.environmentPath = "%SystemRoot%\\notepad.exe";
    volume_.folder.Write("Recent/a.lnk", samples::WriteLink(link));
    volume_.folder.Write("Recent/b.lnk", "no shortcut");
    const auto platform = volume_.Make();
    const std::unique_ptr<ShellLink> shortcut = platform->CreateShellLink();
    TextBuffer path{260, {}};
    ASSERT_TRUE(shortcut->Load("C:\\recent\\A.LNK"));
    EXPECT_TRUE(shortcut->GetPath(path, ShellLink::kPathUnc));
    EXPECT_EQ(path.text, "C:\\WINDOWS\\notepad.exe");
    EXPECT_FALSE(shortcut->Load("C:\\recent\\b.lnk"));
    EXPECT_FALSE(shortcut->Load("C:\\recent\\none.lnk"));
    EXPECT_FALSE(shortcut->Load("C:\\recent"));
}

TEST_F(VolumePlatformTest, ThumbnailsAreMadeByTheDecoderThatWasGiven) {
    volume_.Write();
    volume_.folder.Write("sun.pic", "bytes");
    const auto hasThumbnail = [&](PictureDecoder decoder) {
        const auto platform = VolumePlatform::Open(volume_.folder.Utf8Path(), {}, std::move(decoder));
        const std::unique_ptr<ShellFolder> desktop = platform->SHGetDesktopFolder();
        ItemList list = 0;
        EXPECT_TRUE(desktop->ParseDisplayName("C:\\sun.pic", list));
        std::unique_ptr<ImageExtractor> extractor;
        const bool has = desktop->GetUIObjectOf(list, extractor);
        platform->SHGetMalloc()->Free(list);
        EXPECT_FALSE(desktop->GetUIObjectOf(list, extractor));
        return has;
    };
    EXPECT_FALSE(hasThumbnail({}));
    EXPECT_TRUE(hasThumbnail({[](const std::string& extension) { return extension == "PIC"; },
                              [](std::span<const std::byte>, const ImageSize&) { return BitmapHandle(); }}));
}

TEST_F(VolumePlatformTest, NoProgramIsEverStarted) {
    const auto platform = volume_.Make();
    for (const char* commandLine : {"C:\\WINDOWS\\explorer.exe", "/bin/true", "true", ""}) {
        EXPECT_FALSE(platform->StartProgram(commandLine)) << commandLine;
    }
}

// --- Time and text.

FileTime UnitsSince1601(std::uint64_t units) {
    return {static_cast<std::uint32_t>(units), static_cast<std::uint32_t>(units >> 32U)};
}

std::uint64_t UnitsOf(const std::optional<FileTime>& time) {
    return time ? (std::uint64_t{time->high} << 32U) | time->low : 0;
}

constexpr std::uint64_t kHour = 36'000'000'000;
constexpr std::uint64_t kJanuary2009 = 128'752'416'000'000'000;
constexpr std::uint64_t kJuly2009 = 128'908'800'000'000'000;

TEST_F(VolumePlatformTest, LocalTimeIsUtcLessTheBiasInForce) {
    const auto platform = volume_.Make();  // 120 minutes east of UTC
    EXPECT_EQ(UnitsOf(platform->FileTimeToLocalFileTime(UnitsSince1601(kJanuary2009))),
              kJanuary2009 + 2 * kHour);
    EXPECT_EQ(UnitsOf(platform->FileTimeToLocalFileTime(UnitsSince1601(kJuly2009))), kJuly2009 + 2 * kHour)
        << "the same in summer and winter";
}

TEST_F(VolumePlatformTest, NoTimeIsConvertedAtNoOffset) {
    for (const std::uint32_t bias : {0U, 60U, static_cast<std::uint32_t>(-60), 0x80000000U}) {
        volume_.Control().Key("TimeZoneInformation").SetDword("ActiveTimeBias", bias);
        EXPECT_FALSE(volume_.Make()->FileTimeToLocalFileTime({0, 0}));
    }
}

TEST_F(VolumePlatformTest, TimesOutsideOfTheCalendarFailAsTheyDidLive) {
    volume_.Control().Key("TimeZoneInformation").SetDword("ActiveTimeBias", 60);
    const auto platform = volume_.Make();
    const auto early = platform->FileTimeToLocalFileTime({1, 0});
    ASSERT_TRUE(early) << "the subtraction wraps";
    EXPECT_FALSE(platform->FileTimeToSystemTime(*early));
    const auto late = platform->FileTimeToLocalFileTime({0xFFFFFFFF, 0xFFFFFFFF});
    ASSERT_TRUE(late);
    EXPECT_FALSE(platform->FileTimeToSystemTime(*late));
    const auto system = platform->FileTimeToSystemTime(UnitsSince1601(kJuly2009));
    ASSERT_TRUE(system);
    EXPECT_EQ(system->year, 2009);
    EXPECT_EQ(system->month, 7);
    EXPECT_EQ(system->day, 1);
    EXPECT_EQ(platform->FileTimeToSystemTime({0, 0})->year, 1601);
}

TEST_F(VolumePlatformTest, SingleByteTextIsThatOfTheMachinesCodePage) {
    HiveKey& codePage = volume_.Control().Key("Nls\\CodePage");
    EXPECT_EQ(volume_.Make()->DecodeAnsi("\xE6"), "æ") << "western without a value";
    codePage.SetString("ACP", "1251");
    EXPECT_EQ(volume_.Make()->DecodeAnsi("\xE6"), "ж");
    codePage.SetString("ACP", "932");
    EXPECT_EQ(volume_.Make()->DecodeAnsi("\x93\xFA"), "日");
    codePage.SetString("ACP", "nonsense");
    EXPECT_EQ(volume_.Make()->DecodeAnsi("\xE6"), "æ");
}

TEST_F(VolumePlatformTest, TextIsEncodedInTheMachinesCodePage) {
    HiveKey& codePage = volume_.Control().Key("Nls\\CodePage");
    EXPECT_EQ(volume_.Make()->EncodeAnsi("æ ж"), "\xE6 ?") << "western without a value";
    codePage.SetString("ACP", "1251");
    EXPECT_EQ(volume_.Make()->EncodeAnsi("æ ж"), "? \xE6");
}

TEST_F(VolumePlatformTest, DatesAreThoseOfThePersonAtTheScreen) {
    const auto platform = volume_.Make();
    const double date = DateFromCivil({2009, 8, 4, 15, 22, 18, 0});
    const std::string text = platform->DateToText(date, DateForm::General);
    EXPECT_EQ(text, Examiner().Dates().Write(date, DateForm::General));
    EXPECT_EQ(platform->TextToDate(text), date);
    EXPECT_EQ(platform->TextToDate("tomorrow"), std::nullopt);
    const double now = platform->Now();
    EXPECT_GE(now, DateFromCivil({2024, 1, 1, 0, 0, 0, 0}));
    EXPECT_EQ(platform->TextToDate(platform->DateToText(now, DateForm::General)), now);
}

// --- The evidence.

TEST_F(VolumePlatformTest, AVolumeThatDisappearsLeavesWhatWasRead) {
    volume_.Write();
    const auto platform = volume_.Open();
    KeyHandle key = 0;
    ASSERT_EQ(platform->RegOpenKeyExA(kCurrentUser, "", 1, key), kSuccess);
    std::filesystem::remove_all(volume_.folder / "Documents and Settings");
    std::filesystem::remove_all(volume_.folder / "WINDOWS");
    EXPECT_EQ(platform->RegOpenKeyExA(kUsers, kAnnaSid, 1, key), kSuccess);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kBobSid, "C:\\Documents and Settings\\bob\\NTUSER.DAT"),
              kPathNotFound);
    EXPECT_EQ(platform->RegOpenKeyExA(kUsers, ".DEFAULT", 1, key), kFileNotFound);
    EXPECT_THAT(AccountNames(*platform, kAnnaSid), ElementsAre("anna"));
    EXPECT_EQ(platform->GroupUsers().size(), 1U) << "what is gone needs no rights";
    EXPECT_THAT(platform->ListDirectory("C:\\"), IsEmpty());
    EXPECT_EQ(platform->SpecialFolderPath(8), "C:\\Documents and Settings\\anna\\Recent");
}

}  // namespace
}  // namespace ostrevin
