#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "accounts/AccountList.h"
#include "tests/support/Lists.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/Profiles.h"
#include "tools/writers/IndexWriter.h"

namespace ostrevin {
namespace {

constexpr char kBossSid[] = "S-1-5-21-7-1000";
constexpr char kAnnaSid[] = "S-1-5-21-7-1001";
constexpr char kFallbackList[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\ProfilesList";
constexpr char kFallbackProfiles[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\ProfileList";
constexpr char kUserAssist[] =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
    "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count";
constexpr char kOpenSave[] =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\txt";
constexpr char kTypedURLs[] = "Software\\Microsoft\\Internet Explorer\\TypedURLs";

using Strings = std::vector<std::string>;

class AccountListTest : public testing::Test {
  protected:
    /// Both loads, as start-up does them.
    void Load() {
        EXPECT_TRUE(accounts.LoadAccountSIDSFromRegistry());
        accounts.LoadAccountNamesFromSID();
    }
    Strings Sids() const { return All(accounts, &AccountList::AccountSID); }
    Strings AccountNames() const { return All(accounts, &AccountList::AccountName); }
    MemoryKey& ListedKey(const std::string& sid) {
        return platform.Root(kLocalMachine).Key(std::string(kProfileListKey) + "\\" + sid);
    }
    std::string PathOf(const std::string& sid) {
        AccountList list(platform, {});
        list.LoadAccountSIDSFromRegistry();
        for (std::int32_t i = 0; i < list.Count(); ++i) {
            if (list.AccountSID(i) == sid) {
                return list.AccountDocumentSettingsPath(i);
            }
        }
        return "not listed";
    }
    /// boss, who is logged on, and anna, with a trace of each kind.
    void AddBossAndAnna() {
        AddUser(platform, kBossSid, "boss");
        AddTraces(AddUser(platform, kAnnaSid, "anna"));
        LogOn(platform, kBossSid, "boss");
    }
    static void AddTraces(MemoryKey& hive) {
        constexpr std::array<std::byte, 16> kData{};
        hive.Key(kUserAssist).SetData("b", kRegBinary, kData).SetData("a", kRegBinary, kData);
        hive.Key(kOpenSave).SetText("MRUList", "ab").SetText("a", "C:\\b.txt").SetText("b", "C:\\a.txt");
        hive.Key(kTypedURLs).SetText("url1", "http://typed/");
    }

    MemoryPlatform platform;
    std::string nameAtStart = "boss";
    std::string nameNow = "boss";
    Strings failures;
    AccountList accounts{platform,
                         {nameAtStart, [this] { return nameNow; },
                          [this](const std::string& line) { failures.push_back(line); }}};
};

// --- The profile list.

TEST_F(AccountListTest, ListsEveryProfileInTheRegistrysOrder) {
    AddUser(platform, "S-1-5-21-7-1001", "zoe");
    AddUser(platform, "S-1-5-21-7-1000", "anna");
    for (const std::string sid : {"S-1-5-20", "S-1-5-18", "S-1-5-19"}) {
        AddProfile(platform, sid, "%SystemDrive%\\service");
    }
    Load();
    EXPECT_EQ(Sids(), (Strings{"S-1-5-18", "S-1-5-19", "S-1-5-20", "S-1-5-21-7-1000", "S-1-5-21-7-1001"}));
    EXPECT_EQ(AccountNames(), (Strings{"", "", "", "anna", "zoe"}));
    ASSERT_FALSE(platform.keysOpened.empty());
    EXPECT_EQ(platform.keysOpened[0].key, kLocalMachine);
    EXPECT_EQ(platform.keysOpened[0].subKey, kProfileListKey);
    EXPECT_EQ(platform.keysOpened[0].access, 0x3FU);
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(AccountListTest, AnUnknownIdentifierTakesTheNameBeforeIt) {
    AddUser(platform, "S-1-5-21-7-1000", "anna");
    AddProfile(platform, "S-1-5-21-7-1001", "C:\\gone");
    AddUser(platform, "S-1-5-21-7-1002", "zoe");
    Load();
    EXPECT_EQ(AccountNames(), (Strings{"anna", "anna", "zoe"}));
    EXPECT_EQ(accounts.GetAccountIndex("anna"), 1) << "the last one of the name";
    EXPECT_EQ(accounts.GetAccountIndex("zoe"), 2);
}

TEST_F(AccountListTest, AllNamesAreLookedUpAtOnce) {
    AddBossAndAnna();
    Load();
    EXPECT_EQ(platform.sidsLookedUp, std::vector<Strings>{Sids()});
}

TEST_F(AccountListTest, TheManagementServiceIsAskedForAlsoWithoutAProfile) {
    accounts.LoadAccountNamesFromSID();
    EXPECT_EQ(platform.sidsLookedUp, std::vector<Strings>{{}}) << "its failure is to show";
}

TEST_F(AccountListTest, TheLastOfSeveralNamesWins) {
    AddProfile(platform, kAnnaSid, "C:\\anna");
    platform.accountNames[kAnnaSid] = {"first", "last"};
    Load();
    EXPECT_EQ(AccountNames(), Strings{"last"});
}

TEST_F(AccountListTest, AnEmptyNameIsCarriedOverToo) {
    AddUser(platform, "S-1-5-21-7-1000", "anna");
    AddUser(platform, "S-1-5-21-7-1001", "");
    AddProfile(platform, "S-1-5-21-7-1002", "C:\\x");
    Load();
    EXPECT_EQ(AccountNames(), (Strings{"anna", "", ""}));
}

TEST_F(AccountListTest, NamesAreFoundWithRegardToCase) {
    AddUser(platform, kAnnaSid, "Anna");
    EXPECT_EQ(accounts.GetAccountIndex("Anna"), -1) << "an empty list";
    EXPECT_EQ(accounts.GetAccountIndex(""), -1);
    Load();
    EXPECT_EQ(accounts.GetAccountIndex("Anna"), 0);
    EXPECT_EQ(accounts.GetAccountIndex("anna"), -1);
    EXPECT_EQ(accounts.GetAccountIndex("Ann"), -1);
}

TEST_F(AccountListTest, IndexesOutOfRangeAreEmpty) {
    AddUser(platform, kAnnaSid, "anna");
    Load();
    EXPECT_EQ(accounts.AccountSID(0), kAnnaSid);
    for (const std::int32_t index : {-1, accounts.Count(), std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(accounts.AccountSID(index), "");
        EXPECT_EQ(accounts.AccountName(index), "");
        EXPECT_EQ(accounts.AccountDocumentSettingsPath(index), "");
        EXPECT_EQ(accounts.UserAssist(index), nullptr);
        EXPECT_EQ(accounts.RecentDocument(index), nullptr);
        EXPECT_EQ(accounts.OpenSave(index), nullptr);
        EXPECT_EQ(accounts.IEHistory(index), nullptr);
        EXPECT_EQ(accounts.TypedURL(index), nullptr);
    }
    EXPECT_TRUE(platform.hivesLoaded.empty());
}

TEST_F(AccountListTest, WithoutAProfileListThereIsNoAccount) {
    EXPECT_FALSE(accounts.LoadAccountSIDSFromRegistry());
    accounts.LoadAccountNamesFromSID();
    EXPECT_EQ(accounts.Count(), 0);
    EXPECT_EQ(accounts.AccountSID(0), "");
}

TEST_F(AccountListTest, AnEmptyProfileListIsOne) {
    platform.Root(kLocalMachine).Key(kProfileListKey);
    EXPECT_TRUE(accounts.LoadAccountSIDSFromRegistry());
    EXPECT_EQ(accounts.Count(), 0);
}

TEST_F(AccountListTest, FallsBackToTheListThatIsSpelledWithAnS) {
    platform.Root(kLocalMachine)
        .Key(std::string(kFallbackProfiles) + "\\S-1")
        .SetText("ProfileImagePath", "p");
    EXPECT_FALSE(accounts.LoadAccountSIDSFromRegistry()) << "not the one without";
    platform.Root(kLocalMachine).Key(std::string(kFallbackList) + "\\S-1").SetText("ProfileImagePath", "no");
    platform.Root(kLocalMachine).Key(std::string(kFallbackList) + "\\S-2").SetText("ProfileImagePath", "no");
    EXPECT_TRUE(accounts.LoadAccountSIDSFromRegistry());
    EXPECT_EQ(Sids(), (Strings{"S-1", "S-2"}));
    EXPECT_EQ(accounts.AccountDocumentSettingsPath(0), "p") << "the path's fall-back is spelled without it";
    EXPECT_EQ(accounts.AccountDocumentSettingsPath(1), "");
    EXPECT_EQ(platform.keysOpened[3].access, 0x3FU);
}

TEST_F(AccountListTest, AListThatIsDeniedIsNoList) {
    AddUser(platform, kAnnaSid, "anna");
    platform.Root(kLocalMachine).Key(kProfileListKey).openResult = kAccessDenied;
    EXPECT_FALSE(accounts.LoadAccountSIDSFromRegistry());
    platform.Root(kLocalMachine).Key(std::string(kFallbackList) + "\\S-2");
    EXPECT_TRUE(accounts.LoadAccountSIDSFromRegistry());
    EXPECT_EQ(Sids(), Strings{"S-2"});
}

TEST_F(AccountListTest, LongNamesAndClassesDoNotEndTheList) {
    const std::string longName(255, 'a');
    ListedKey(longName);
    ListedKey("b").className = std::string(300, 'c');
    ListedKey("d" + std::string(300, 'd'));
    ListedKey("e");
    Load();
    EXPECT_EQ(Sids(), (Strings{longName, "b", std::string(255, 'd'), "e"}))
        << "more data than the buffer holds is no end";
}

TEST_F(AccountListTest, AnyOtherCodeEndsTheList) {
    for (const std::string sid : {"S-1", "S-2", "S-3"}) {
        AddProfile(platform, sid, "C:\\x");
    }
    platform.Fail("RegEnumKeyExA", kAccessDenied, 2);
    Load();
    EXPECT_EQ(Sids(), (Strings{"S-1", "S-2"}));
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(AccountListTest, ASecondLoadDescribesTheSameAccounts) {
    AddBossAndAnna();
    Load();
    Load();
    EXPECT_EQ(Sids(), (Strings{kBossSid, kAnnaSid}));
    EXPECT_EQ(AccountNames(), (Strings{"boss", "anna"}));
}

TEST_F(AccountListTest, LetsTheManagementServicesFailureThrough) {
    AddUser(platform, kAnnaSid, "anna");
    platform.Fail("UserAccountNames");
    EXPECT_TRUE(accounts.LoadAccountSIDSFromRegistry());
    EXPECT_THROW(accounts.LoadAccountNamesFromSID(), std::runtime_error);
}

// --- Profile paths.

TEST_F(AccountListTest, TheSystemDriveStandsInThePath) {
    AddProfile(platform, kAnnaSid, "%SystemDrive%\\Documents and Settings\\anna");
    EXPECT_EQ(PathOf(kAnnaSid), "C:\\Documents and Settings\\anna");
    platform.windowsDirectory = "D:\\WINNT";
    EXPECT_EQ(PathOf(kAnnaSid), "D:\\Documents and Settings\\anna");
    AddProfile(platform, kAnnaSid, "%SystemDrive%%SystemDrive%\\%systemdrive%\\%SystemRoot%");
    EXPECT_EQ(PathOf(kAnnaSid), "D:D:\\%systemdrive%\\%SystemRoot%");
}

TEST_F(AccountListTest, AMissingPathIsReadFromTheOtherList) {
    ListedKey(kAnnaSid);
    EXPECT_EQ(PathOf(kAnnaSid), "");
    platform.Root(kLocalMachine)
        .Key(std::string(kFallbackProfiles) + "\\" + kAnnaSid)
        .SetText("ProfileImagePath", "%SystemDrive%\\fallen back");
    EXPECT_EQ(PathOf(kAnnaSid), "C:\\fallen back");
    AddProfile(platform, kAnnaSid, "");
    EXPECT_EQ(PathOf(kAnnaSid), "C:\\fallen back") << "an empty one counts as missing";
    AddProfile(platform, kAnnaSid, "C:\\own");
    EXPECT_EQ(PathOf(kAnnaSid), "C:\\own");
}

TEST_F(AccountListTest, APathEndsAtItsNul) {
    ListedKey(kAnnaSid).SetData("ProfileImagePath", kRegSz, std::as_bytes(std::span("C:\\a\0b", 6)));
    EXPECT_EQ(PathOf(kAnnaSid), "C:\\a");
    ListedKey(kAnnaSid).SetData("ProfileImagePath", kRegSz, std::as_bytes(std::span("C:\\bare", 7)));
    EXPECT_EQ(PathOf(kAnnaSid), "C:\\bare") << "without a NUL it is the whole text";
    ListedKey(kAnnaSid).SetData("ProfileImagePath", kRegSz, {});
    EXPECT_EQ(PathOf(kAnnaSid), "");
}

TEST_F(AccountListTest, APathStoredAsBytesIsText) {
    ListedKey(kAnnaSid).SetData("ProfileImagePath", kRegBinary, std::as_bytes(std::span("C:\\caf\xE9", 8)));
    EXPECT_EQ(PathOf(kAnnaSid), "C:\\caf\u00E9");
}

TEST_F(AccountListTest, APathThatCannotBeReadIsEmpty) {
    AddProfile(platform, kAnnaSid, "C:\\anna");
    ListedKey(kAnnaSid).openResult = kAccessDenied;
    EXPECT_EQ(PathOf(kAnnaSid), "");
    ListedKey(kAnnaSid).openResult = kSuccess;
    platform.Fail("RegQueryValueExA", kMoreData, 1);
    EXPECT_EQ(PathOf(kAnnaSid), "") << "it grew between its size and its data";
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(AccountListTest, PathsAreOpenedForQueriesOnly) {
    AddProfile(platform, kAnnaSid, "C:\\anna");
    PathOf(kAnnaSid);
    ASSERT_EQ(platform.keysOpened.size(), 2U);
    EXPECT_EQ(platform.keysOpened[1].access, 1U);
}

// --- Hives.

TEST_F(AccountListTest, LoadsTheHiveForProgramsAndForDocuments) {
    AddBossAndAnna();
    Load();
    const std::int32_t anna = accounts.GetAccountIndex("anna");
    ASSERT_NE(accounts.UserAssist(anna), nullptr);
    ASSERT_EQ(platform.hivesLoaded.size(), 1U);
    EXPECT_EQ(platform.hivesLoaded[0].root, kUsers);
    EXPECT_EQ(platform.hivesLoaded[0].subKey, kAnnaSid);
    EXPECT_EQ(platform.hivesLoaded[0].file, "C:\\Documents and Settings\\anna\\NTUSER.DAT");
    EXPECT_EQ(platform.hivesLoaded[0].result, kSuccess);
    ASSERT_NE(accounts.OpenSave(anna), nullptr);
    ASSERT_EQ(platform.hivesLoaded.size(), 2U) << "anew for each source that needs it";
    EXPECT_EQ(platform.hivesLoaded[1].result, kSharingViolation);
    EXPECT_EQ(accounts.OpenSave(anna)->Count(), 2) << "the data is there all the same";
    EXPECT_EQ(accounts.TypedURL(anna)->Count(), 1);
    accounts.RecentDocument(anna);
    accounts.IEHistory(anna);
    EXPECT_EQ(platform.hivesLoaded.size(), 2U);
}

TEST_F(AccountListTest, EnablesBothPrivilegesInOneAdjustmentBeforeEachLoad) {
    AddBossAndAnna();
    Load();
    accounts.UserAssist(1);
    accounts.OpenSave(1);
    const Strings both = {"SeRestorePrivilege", "SeBackupPrivilege"};
    EXPECT_EQ(platform.privilegesEnabled, (std::vector<Strings>{both, both}));
}

TEST_F(AccountListTest, WithoutPrivilegesOrHiveTheSourcesAreEmpty) {
    AddBossAndAnna();
    AddProfile(platform, "S-1-5-21-7-1002", "C:\\no hive");
    ListedKey("S-1-5-21-7-1003");
    Load();
    EXPECT_EQ(accounts.UserAssist(2)->Count(), 0);
    EXPECT_EQ(accounts.OpenSave(3)->Count(), 0);
    ASSERT_EQ(platform.hivesLoaded.size(), 2U);
    EXPECT_EQ(platform.hivesLoaded[0].result, kFileNotFound);
    EXPECT_EQ(platform.hivesLoaded[1].file, "\\NTUSER.DAT");
    MemoryPlatform other;
    other.Fail("EnablePrivileges");
    AddTraces(AddUser(other, kAnnaSid, "anna"));
    AccountList list(other, {"boss", [] { return "boss"; }, [](const std::string&) {}});
    list.LoadAccountSIDSFromRegistry();
    EXPECT_EQ(list.UserAssist(0)->Count(), 0);
    EXPECT_EQ(other.hivesLoaded.at(0).result, kAccessDenied);
}

TEST_F(AccountListTest, AHiveThatAnotherSessionHoldsGivesNothing) {
    AddBossAndAnna();
    platform.Find("C:\\Documents and Settings\\anna\\NTUSER.DAT")->inUse = true;
    Load();
    EXPECT_EQ(accounts.UserAssist(1)->Count(), 0);
    EXPECT_EQ(accounts.OpenSave(1)->Count(), 0);
    EXPECT_TRUE(failures.empty()) << "and nobody is told";
}

TEST_F(AccountListTest, TheLoggedOnUsersHiveIsThereAlready) {
    AddTraces(AddUser(platform, kBossSid, "boss"));
    LogOn(platform, kBossSid, "boss");
    Load();
    EXPECT_EQ(accounts.TypedURL(0)->Count(), 1) << "without any load";
    EXPECT_EQ(accounts.UserAssist(0)->Count(), 2);
    EXPECT_EQ(platform.hivesLoaded.at(0).result, kSharingViolation);
}

TEST_F(AccountListTest, TypedAddressesComeOnlyWithAHiveThatIsLoaded) {
    AddBossAndAnna();
    Load();
    TypedURLList* early = accounts.TypedURL(1);
    ASSERT_NE(early, nullptr);
    EXPECT_EQ(early->Count(), 0);
    EXPECT_TRUE(platform.hivesLoaded.empty());
    accounts.UserAssist(1);
    EXPECT_EQ(accounts.TypedURL(1), early) << "the same source";
    EXPECT_EQ(early->Count(), 0) << "still empty";
}

TEST_F(AccountListTest, TypedAddressesComeBehindTheDocuments) {
    AddBossAndAnna();
    Load();
    accounts.OpenSave(1);
    EXPECT_EQ(accounts.TypedURL(1)->Count(), 1);
}

// --- Sources.

TEST_F(AccountListTest, ASourceIsMadeOnceAndSorted) {
    AddBossAndAnna();
    Load();
    UserAssistList* programs = accounts.UserAssist(1);
    ASSERT_NE(programs, nullptr);
    ASSERT_EQ(programs->Count(), 2);
    EXPECT_EQ(programs->UserAssistValue(0), "a");
    OpenSaveList* documents = accounts.OpenSave(1);
    ASSERT_EQ(documents->Count(), 2);
    EXPECT_EQ(documents->Document(0), "C:\\a.txt");
    const std::size_t opened = platform.keysOpened.size();
    EXPECT_EQ(accounts.UserAssist(1), programs);
    EXPECT_EQ(accounts.OpenSave(1), documents);
    EXPECT_EQ(accounts.RecentDocument(1), accounts.RecentDocument(1));
    EXPECT_EQ(accounts.IEHistory(1), accounts.IEHistory(1));
    EXPECT_EQ(platform.keysOpened.size(), opened);
    EXPECT_NE(accounts.UserAssist(0), programs);
}

TEST_F(AccountListTest, TheRecentFolderIsThatOfTheLoggedOnUserWithTheName) {
    AddBossAndAnna();
    MemoryShortcut shortcut;
    shortcut.target = "C:\\z.txt";
    platform.AddShortcut("C:\\Documents and Settings\\anna\\Recent\\1.lnk", shortcut);
    shortcut.target = "C:\\a.txt";
    platform.AddShortcut("C:\\Documents and Settings\\anna\\Recent\\2.lnk", shortcut);
    platform.AddShortcut("C:\\Documents and Settings\\boss\\Recent\\3.lnk", shortcut);
    Load();
    RecentDocumentList* documents = accounts.RecentDocument(1);
    ASSERT_EQ(documents->Count(), 2);
    EXPECT_EQ(documents->RecentDocumentPath(0), "C:\\a.txt") << "sorted";
    EXPECT_EQ(documents->RecentDocument(0), "2.lnk");
}

TEST_F(AccountListTest, TheRecentFolderGoesByTheNameOfNow) {
    AddBossAndAnna();
    platform.AddFile("C:\\Documents and Settings\\anna\\Recent\\of anna");
    platform.AddFile("C:\\Documents and Settings\\boss\\Recent\\of boss");
    nameNow = "somebody else";
    Load();
    EXPECT_EQ(accounts.RecentDocument(1)->RecentDocument(0), "of boss") << "nothing is replaced";
}

TEST_F(AccountListTest, TheNameIsReplacedWithRegardToCase) {
    AddBossAndAnna();
    platform.specialFolders[8] = "C:\\boss\\Boss\\boss\\Recent";
    platform.AddFile("C:\\anna\\Boss\\anna\\Recent\\found");
    Load();
    EXPECT_EQ(accounts.RecentDocument(1)->RecentDocument(0), "found");
}

TEST_F(AccountListTest, TheHistoryGoesByTheNameAtStart) {
    AddBossAndAnna();
    samples::IndexRecord record;
    record.address = "anna@http://z/";
    samples::IndexRecord other;
    other.address = "anna@http://a/";
    platform.AddFile("C:\\Documents and Settings\\anna\\Local Settings\\History\\index.dat",
                     samples::WriteIndex({record, other}, {}));
    nameNow = "somebody else";
    Load();
    IEHistoryList* history = accounts.IEHistory(1);
    ASSERT_EQ(history->Count(), 2);
    EXPECT_EQ(history->URL(0), "http://a/") << "sorted";
}

TEST_F(AccountListTest, AProfileWithoutANameOfItsOwnShowsTheFoldersOfTheNameBefore) {
    AddBossAndAnna();
    AddProfile(platform, "S-1-5-21-7-1002", "C:\\gone");
    platform.AddFile("C:\\Documents and Settings\\anna\\Recent\\of anna");
    Load();
    EXPECT_EQ(accounts.RecentDocument(2)->RecentDocument(0), "of anna");
}

TEST_F(AccountListTest, AnOverflowIsNotedAndWhatWasReadIsSorted) {
    constexpr std::array<std::byte, 16> kGood{};
    std::array<std::byte, 16> bad{};
    bad[7] = std::byte{0x80};
    AddBossAndAnna();
    platform.Find("C:\\Documents and Settings\\anna\\NTUSER.DAT")
        ->hive->Key(kUserAssist)
        .SetData("bad", kRegBinary, bad)
        .SetData("behind", kRegBinary, kGood);
    Load();
    UserAssistList* programs = accounts.UserAssist(1);
    ASSERT_EQ(programs->Count(), 3);
    EXPECT_EQ(programs->UserAssistValue(0), "a");
    EXPECT_EQ(programs->UserAssistValue(2), "bad");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_NE(failures[0].find(kAnnaSid), std::string::npos);
    accounts.UserAssist(1);
    EXPECT_EQ(failures.size(), 1U);
}

// --- Memory and bounds.

/// A machine that has no memory left for whatever concerns one account.
class ShortOfMemory : public MemoryPlatform {
  public:
    std::string sid;
    std::string folder;

    std::int32_t RegOpenKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                               KeyHandle& result) override {
        Starve(key == kUsers && subKey.starts_with(sid));
        return MemoryPlatform::RegOpenKeyExA(key, subKey, access, result);
    }
    std::int32_t RegLoadKeyA(KeyHandle root, const std::string& subKey, const std::string& file) override {
        Starve(tooLarge && subKey == sid);
        return MemoryPlatform::RegLoadKeyA(root, subKey, file);
    }
    std::vector<DirectoryEntry> ListDirectory(const std::string& path) override {
        if (path.find(folder) != std::string::npos) {
            throw std::length_error("vector::reserve");
        }
        return MemoryPlatform::ListDirectory(path);
    }
    bool tooLarge = false;

  private:
    static void Starve(bool yes) {
        if (yes) {
            throw std::bad_alloc();
        }
    }
};

class ShortageTest : public testing::Test {
  protected:
    ShortageTest() {
        for (const char* name : {"anna", "ben"}) {
            const std::string sid = std::string("S-1-5-21-7-") + name;
            MemoryKey& hive = AddUser(platform, sid, name);
            hive.Key(kUserAssist).SetData("a", kRegBinary, std::array<std::byte, 16>{});
            hive.Key(kOpenSave).SetText("MRUList", "a").SetText("a", "C:\\a.txt");
            hive.Key(kTypedURLs).SetText("url1", "http://typed/");
        }
        platform.sid = "S-1-5-21-7-anna";
        platform.folder = "anna";
        platform.specialFolders[8] = "C:\\boss\\Recent";
        accounts.LoadAccountSIDSFromRegistry();
        accounts.LoadAccountNamesFromSID();
    }
    void ExpectAnnaAloneCosts() {
        EXPECT_EQ(accounts.UserAssist(0)->Count(), 0);
        EXPECT_EQ(accounts.RecentDocument(0)->Count(), 0);
        EXPECT_EQ(accounts.OpenSave(0)->Count(), 0);
        EXPECT_EQ(accounts.IEHistory(0)->Count(), 0);
        EXPECT_EQ(accounts.TypedURL(0)->Count(), 0);
        EXPECT_EQ(shortages,
                  Strings{"S-1-5-21-7-anna, " + accounts.AccountDocumentSettingsPath(0) +
                          ": There is not enough memory for all traces of this account. Some are missing."})
            << "once for all its lists";
        EXPECT_EQ(accounts.UserAssist(1)->Count(), 1);
        EXPECT_EQ(accounts.OpenSave(1)->Count(), 1);
        EXPECT_EQ(accounts.TypedURL(1)->Count(), 1);
        EXPECT_EQ(shortages.size(), 1U);
    }

    ShortOfMemory platform;
    Strings shortages;
    AccountList accounts{platform,
                         {"boss", [] { return "boss"; }, [](const std::string&) {},
                          [this](const std::string& line) { shortages.push_back(line); }}};
};

TEST_F(ShortageTest, TracesWithoutMemoryForThemCostTheirAccountAlone) {
    ExpectAnnaAloneCosts();
}

TEST_F(ShortageTest, AHiveWithoutMemoryForItCostsItsAccountAlone) {
    platform.tooLarge = true;
    ExpectAnnaAloneCosts();
}

TEST_F(AccountListTest, WhatIsCutOffIsTold) {
    MemoryKey& hive = AddUser(platform, kAnnaSid, "anna");
    hive.Key(kTypedURLs).SetText("url1", std::string(40'000, 'u'));
    hive.Key(kOpenSave).SetText("MRUList", "a").SetText("a", std::string(40'000, 'd'));
    AddProfile(platform, "S-1-5-21-8", std::string(40'000, 'p'));
    Load();
    EXPECT_EQ(accounts.OpenSave(0)->Document(0).size(), kLongestText);
    EXPECT_EQ(accounts.TypedURL(0)->URL(0).size(), kLongestText);
    EXPECT_EQ(accounts.AccountDocumentSettingsPath(1).size(), kLongestText);
    const std::string cut = "Texts of more than 32767 characters are cut.";
    EXPECT_EQ(failures, (Strings{"ProfileList: " + cut, "OpenSave of " + std::string(kAnnaSid) + ": " + cut,
                                 "TypedURL of " + std::string(kAnnaSid) + ": " + cut}));
}

}  // namespace
}  // namespace ostrevin
