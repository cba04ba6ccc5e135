#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "platform/RuntimeError.h"
#include "sources/FileTimeToLocalDate.h"
#include "sources/UserAssistList.h"
#include "tests/support/Lists.h"
#include "tests/support/MemoryPlatform.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/Times.h"

namespace ostrevin {
namespace {

constexpr char kSid[] = "S-1-5-21-1";
constexpr char kFirst[] =
    "S-1-5-21-1\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
    "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count";
constexpr char kSecond[] =
    "S-1-5-21-1\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
    "{5E6AB780-7743-11CF-A12B-00AA004AE837}";

/// The 16 bytes of a value.
std::vector<std::byte> Data(std::uint32_t rawCount, std::uint64_t lastRun) {
    samples::ByteBuffer bytes;
    bytes.U32(0);
    bytes.U32(rawCount);
    bytes.U64(lastRun);
    return bytes.Take();
}

std::vector<std::byte> Repeated(std::size_t count, unsigned char byte) {
    return std::vector<std::byte>(count, std::byte{byte});
}

class UserAssistListTest : public testing::Test {
  protected:
    UserAssistListTest() { platform.specialFolders[23] = "C:\\Programs"; }

    /// One value of the first key, loaded.
    UserAssistList LoadOne(const std::string& name, const std::vector<std::byte>& data = Data(6, 0)) {
        MemoryPlatform host;
        host.specialFolders = platform.specialFolders;
        host.Root(kUsers).Key(kFirst).SetData(name, kRegBinary, data);
        UserAssistList loaded(host);
        loaded.LoadUserAssist(kSid);
        EXPECT_EQ(loaded.Count(), 1);
        return loaded;
    }
    /// A name that is stored in ROT13, loaded.
    UserAssistList LoadDecoded(const std::string& decoded) { return LoadOne(Rot13(decoded)); }
    void ExpectDecoded(const std::string& decoded, const std::string& type, const std::string& value) {
        const UserAssistList loaded = LoadDecoded(decoded);
        EXPECT_EQ(loaded.UserAssistName(0), decoded);
        EXPECT_EQ(loaded.UserAssistType(0), type) << decoded;
        EXPECT_EQ(loaded.UserAssistValue(0), value) << decoded;
    }
    std::vector<std::string> Names() const { return All(list, &UserAssistList::UserAssistName); }
    /// Values named prefix0, prefix1 and so on.
    void Fill(const std::string& path, const std::string& prefix, int count) {
        for (int i = 0; i < count; ++i) {
            platform.Root(kUsers).Key(path).SetData(prefix + std::to_string(i), kRegBinary, Data(6, 0));
        }
    }
    /// The last run of entry i, as the host writes dates.
    std::string LastRun(std::int32_t i) {
        return platform.DateToText(list.UserAssistLastRun(i), DateForm::General);
    }

    MemoryPlatform platform;
    UserAssistList list{platform};
};

using Strings = std::vector<std::string>;

TEST(Rot13, MovesLettersOnly) {
    EXPECT_EQ(Rot13("HRZR_EHACNGU:P:\\cebtenz.rkr"), "UEME_RUNPATH:C:\\program.exe");
    EXPECT_EQ(Rot13("ANMZanmz"), "NAZMnazm");
    EXPECT_EQ(Rot13("@[`{ 0-9_\u0416\u00E9"), "@[`{ 0-9_\u0416\u00E9");
    EXPECT_EQ(Rot13(""), "");
    EXPECT_EQ(Rot13(std::string("a\0n", 3)), std::string("n\0a", 3));
}

// --- Names.

TEST_F(UserAssistListTest, DecodesAName) {
    const UserAssistList loaded = LoadOne("HRZR_EHACNGU:P:\\cebtenz.rkr");
    EXPECT_EQ(loaded.UserAssistName(0), "UEME_RUNPATH:C:\\program.exe");
    EXPECT_EQ(loaded.UserAssistType(0), "UEME_RUNPATH");
    EXPECT_EQ(loaded.UserAssistValue(0), "C:\\program.exe");
}

TEST_F(UserAssistListTest, ATypeAloneHasNoValue) {
    const UserAssistList loaded = LoadOne("HRZR_PGYFRFFVBA");
    EXPECT_EQ(loaded.UserAssistName(0), "UEME_CTLSESSION");
    EXPECT_EQ(loaded.UserAssistType(0), "UEME_CTLSESSION");
    EXPECT_EQ(loaded.UserAssistValue(0), "");
}

TEST_F(UserAssistListTest, KnowsTenTypes) {
    for (const std::string type :
         {"UEME_CTLSESSION", "UEME_RUNPIDL", "UEME_RUNCPL", "UEME_RUNPATH", "UEME_UITOOLBAR", "UEME_RUNWMCMD",
          "UEME_UIHOTKEY", "UEME_CTLCUACount", "UEME_UISCUT", "UEME_UIQCUT"}) {
        ExpectDecoded(type + ":item", type, "item");
    }
}

TEST_F(UserAssistListTest, OtherNamesAreTheirOwnValue) {
    ExpectDecoded("UEME_DBTRACEA:x", "", "UEME_DBTRACEA:x");
    ExpectDecoded("UEME_runpath:C:\\x.exe", "", "UEME_runpath:C:\\x.exe");
    ExpectDecoded("UEME_CTLCUACOUNT:ctor", "", "UEME_CTLCUACOUNT:ctor");
    ExpectDecoded("UEME_", "", "UEME_");
}

TEST_F(UserAssistListTest, TakesWhatFollowsTheColon) {
    ExpectDecoded("UEME_RUNPATHabc", "UEME_RUNPATH", "abc");
    ExpectDecoded("UEME_RUNPATH:", "UEME_RUNPATH", "");
    ExpectDecoded("UEME_RUNPATH::x", "UEME_RUNPATH", ":x");
    ExpectDecoded("UEME_RUNPATH C:\\a:b", "UEME_RUNPATH", " C:\\a:b");
    ExpectDecoded("UEME_RUNPATH:C:\\\u0416.exe", "UEME_RUNPATH", "C:\\\u0416.exe");
}

TEST_F(UserAssistListTest, OnlyEncodedNamesAreDecoded) {
    for (const std::string name : {"plain", "HRZR", "hrzr_EHACNGU", "xHRZR_EHACNGU"}) {
        const UserAssistList loaded = LoadOne(name);
        EXPECT_EQ(loaded.UserAssistName(0), name);
        EXPECT_EQ(loaded.UserAssistType(0), "");
        EXPECT_EQ(loaded.UserAssistValue(0), name);
    }
    const UserAssistList plain = LoadOne("UEME_RUNPATH:C:\\x.exe");
    EXPECT_EQ(plain.UserAssistName(0), "UEME_RUNPATH:C:\\x.exe");
    EXPECT_EQ(plain.UserAssistType(0), "UEME_RUNPATH");
    EXPECT_EQ(plain.UserAssistValue(0), "C:\\x.exe");
}

TEST_F(UserAssistListTest, TheDefaultValueIsAnEntryToo) {
    const UserAssistList loaded = LoadOne("");
    EXPECT_EQ(loaded.UserAssistName(0), "");
    EXPECT_EQ(loaded.UserAssistValue(0), "");
}

TEST_F(UserAssistListTest, ExpandsTheProgramsFolder) {
    ExpectDecoded("UEME_RUNPIDL:%csidl2%\\a.lnk", "UEME_RUNPIDL", "C:\\Programs\\a.lnk");
    ExpectDecoded("UEME_RUNPIDL:%csidl2%%csidl2%", "UEME_RUNPIDL", "C:\\ProgramsC:\\Programs");
    ExpectDecoded("UEME_RUNPIDL:%CSIDL2%\\a.lnk", "UEME_RUNPIDL", "%CSIDL2%\\a.lnk");
    ExpectDecoded("UEME_RUNPIDL:%csidl6%\\a.lnk", "UEME_RUNPIDL", "%csidl6%\\a.lnk");
    ExpectDecoded("UEME_RUNPIDL%csidl2%\\a.lnk", "UEME_RUNPIDL", "%csidl2%\\a.lnk");
    ExpectDecoded("UEME_OTHER:%csidl2%\\a.lnk", "", "UEME_OTHER:%csidl2%\\a.lnk");
}

// --- Data.

TEST_F(UserAssistListTest, CountsFromFive) {
    EXPECT_EQ(LoadOne("x", Data(6, 0)).UserAssistRunCount(0), 1);
    EXPECT_EQ(LoadOne("x", Data(0, 0)).UserAssistRunCount(0), -5);
    EXPECT_EQ(LoadOne("x", Data(0x7FFFFFFF, 0)).UserAssistRunCount(0), 0x7FFFFFFA);
    EXPECT_EQ(LoadOne("x", Data(0xFFFFFFFF, 0)).UserAssistRunCount(0), -6);
    EXPECT_EQ(LoadOne("x", Data(0x80000005, 0)).UserAssistRunCount(0),
              std::numeric_limits<std::int32_t>::min());
}

TEST_F(UserAssistListTest, ACountThatOverflowsEndsTheLoad) {
    for (const std::uint32_t raw : {0x80000000U, 0x80000004U}) {
        MemoryPlatform host;
        host.Root(kUsers)
            .Key(kFirst)
            .SetData("good", kRegBinary, Data(6, 0))
            .SetData("bad", kRegBinary, Data(raw, samples::FileTimeOf({2009, 8, 4})))
            .SetData("behind", kRegBinary, Data(6, 0));
        UserAssistList loaded(host);
        try {
            loaded.LoadUserAssist(kSid);
            FAIL() << "no overflow";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), RuntimeError::kOverflow);
        }
        ASSERT_EQ(loaded.Count(), 2) << "what was read stays";
        EXPECT_EQ(loaded.UserAssistRunCount(0), 1);
        EXPECT_EQ(loaded.UserAssistName(1), "bad");
        EXPECT_EQ(loaded.UserAssistLastRun(1), 40029.0);
        EXPECT_EQ(loaded.UserAssistRunCount(1), 0);
        EXPECT_EQ(host.OpenKeys(), 0U);
    }
}

TEST_F(UserAssistListTest, TheLastRunIsALocalTime) {
    platform.biasMinutes = -60;
    platform.Root(kUsers)
        .Key(kFirst)
        .SetData("a", kRegBinary, Data(6, samples::FileTimeOf({2009, 8, 4, 15, 22, 18})))
        .SetData("b", kRegBinary, Data(6, 0))
        .SetData("c", kRegBinary, Data(6, std::numeric_limits<std::uint64_t>::max()));
    EXPECT_FALSE(list.LoadUserAssist(kSid)) << "false in every case";
    EXPECT_EQ(LastRun(0), "8/4/2009 4:22:18 PM");
    EXPECT_EQ(LastRun(1), "1/1/1601");
    EXPECT_EQ(LastRun(2), "1/1/1601");
}

TEST_F(UserAssistListTest, AShortValueIsDecodedFromWhatStoodThereBefore) {
    const std::uint64_t time = samples::FileTimeOf({2009, 8, 4});
    platform.Root(kUsers)
        .Key(kFirst)
        .SetData("first", kRegBinary, Repeated(4, 0xFF))
        .SetData("whole", kRegBinary, Data(105, time))
        .SetData("short", kRegBinary, Repeated(5, 0x0A))
        .SetData("empty", kRegBinary, {});
    Fill(kSecond, "v", 4);
    platform.Root(kUsers).Key(kSecond).SetData("second", kRegNone, Repeated(2, 0));
    list.LoadUserAssist(kSid);
    ASSERT_EQ(Names(), (Strings{"first", "whole", "short", "empty", "second"}));
    EXPECT_EQ(list.UserAssistRunCount(0), -5) << "zeros at the start";
    EXPECT_EQ(list.UserAssistLastRun(0), kDateOfNoTime);
    EXPECT_EQ(list.UserAssistRunCount(1), 100);
    // 105 is 0x69; its lowest byte becomes 0x0A, and the date stays.
    EXPECT_EQ(list.UserAssistRunCount(2), 5);
    EXPECT_EQ(list.UserAssistLastRun(2), 40029.0);
    EXPECT_EQ(list.UserAssistRunCount(3), 5);
    EXPECT_EQ(list.UserAssistRunCount(4), 5) << "the buffer is not cleared for the second key";
    EXPECT_EQ(list.UserAssistLastRun(4), 40029.0);
}

TEST_F(UserAssistListTest, LooksAtNoType) {
    platform.Root(kUsers)
        .Key(kFirst)
        .SetData("dword", kRegDword, Data(7, 0))
        .SetText("text", "....\x07", kRegSz)
        .SetData("unknown", 0x12345678, Data(8, 0));
    list.LoadUserAssist(kSid);
    ASSERT_EQ(list.Count(), 3);
    EXPECT_EQ(list.UserAssistRunCount(0), 2);
    EXPECT_EQ(list.UserAssistRunCount(1), 2);
    EXPECT_EQ(list.UserAssistRunCount(2), 3);
}

TEST_F(UserAssistListTest, LongDataIsTakenUpTo1024Bytes) {
    std::vector<std::byte> data = Data(6, 0);
    data.resize(1024);
    EXPECT_EQ(LoadOne("x", data).UserAssistRunCount(0), 1);
}

TEST_F(UserAssistListTest, WhatDoesNotFitTheBuffersEndsItsKey) {
    struct Case {
        std::string name;
        std::size_t dataSize;
    };
    for (const Case& each : {Case{"long data", 1025}, Case{std::string(1024, 'n'), 16}}) {
        MemoryPlatform host;
        host.Root(kUsers)
            .Key(kFirst)
            .SetData("good", kRegBinary, Data(6, 0))
            .SetData(each.name, kRegBinary, Repeated(each.dataSize, 0))
            .SetData("behind", kRegBinary, Data(6, 0));
        host.Root(kUsers)
            .Key(kSecond)
            .SetData("skipped", kRegBinary, Data(6, 0))
            .SetData("taken", kRegBinary, Data(6, 0));
        UserAssistList loaded(host);
        loaded.LoadUserAssist(kSid);
        ASSERT_EQ(loaded.Count(), 2);
        EXPECT_EQ(loaded.UserAssistName(0), "good");
        EXPECT_EQ(loaded.UserAssistName(1), "taken");
    }
    EXPECT_EQ(LoadOne(std::string(1023, 'n')).UserAssistName(0).size(), 1023U);
}

// --- The two keys.

TEST_F(UserAssistListTest, TheIndexIsNotSetBackForTheSecondKey) {
    Fill(kFirst, "first", 3);
    Fill(kSecond, "second", 5);
    list.LoadUserAssist(kSid);
    EXPECT_EQ(Names(), (Strings{"first0", "first1", "first2", "second3", "second4"}));
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(UserAssistListTest, ASecondKeyWithFewerValuesGivesNone) {
    Fill(kFirst, "first", 3);
    Fill(kSecond, "second", 3);
    list.LoadUserAssist(kSid);
    EXPECT_EQ(list.Count(), 3);
}

TEST_F(UserAssistListTest, AnEmptyFirstKeyLeavesAllOfTheSecond) {
    platform.Root(kUsers).Key(kFirst);
    Fill(kSecond, "second", 2);
    list.LoadUserAssist(kSid);
    EXPECT_EQ(Names(), (Strings{"second0", "second1"}));
}

TEST_F(UserAssistListTest, AMissingFirstKeyEndsTheLoad) {
    Fill(kSecond, "second", 2);
    EXPECT_FALSE(list.LoadUserAssist(kSid));
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(platform.keysOpened.size(), 1U) << "the second key is not tried";
}

TEST_F(UserAssistListTest, AMissingSecondKeyLeavesTheFirst) {
    Fill(kFirst, "first", 2);
    platform.Root(kUsers).Key(std::string(kSecond) + "\\Count").SetData("x", kRegBinary, Data(6, 0));
    platform.Root(kUsers).Key(kSecond).openResult = kAccessDenied;
    list.LoadUserAssist(kSid);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(UserAssistListTest, TheSecondKeyIsReadAsItStands) {
    platform.Root(kUsers).Key(kFirst);
    platform.Root(kUsers).Key(std::string(kSecond) + "\\Count").SetData("below", kRegBinary, Data(6, 0));
    Fill(kSecond, "direct", 1);
    list.LoadUserAssist(kSid);
    EXPECT_EQ(Names(), Strings{"direct0"});
    ASSERT_EQ(platform.keysOpened.size(), 2U);
    EXPECT_EQ(platform.keysOpened[0].key, kUsers);
    EXPECT_EQ(platform.keysOpened[0].subKey, kFirst);
    EXPECT_EQ(platform.keysOpened[1].subKey, kSecond);
    EXPECT_EQ(platform.keysOpened[0].access, 0x3FU);
}

TEST_F(UserAssistListTest, AnEnumerationErrorEndsTheKey) {
    Fill(kFirst, "first", 5);
    Fill(kSecond, "second", 5);
    platform.Fail("RegEnumValueA", kAccessDenied, 2);
    list.LoadUserAssist(kSid);
    EXPECT_EQ(Names(), (Strings{"first0", "first1"}));
    EXPECT_EQ(platform.OpenKeys(), 0U);
}

TEST_F(UserAssistListTest, ALoadOfBothKeysReturnsFalseToo) {
    Fill(kFirst, "first", 1);
    Fill(kSecond, "second", 2);
    EXPECT_FALSE(list.LoadUserAssist(kSid));
    EXPECT_EQ(list.Count(), 2);
}

TEST_F(UserAssistListTest, ASecondLoadGoesOnAtTheCount) {
    Fill(kFirst, "first", 2);
    list.LoadUserAssist(kSid);
    Fill(kFirst, "first", 3);
    list.LoadUserAssist(kSid);
    EXPECT_EQ(Names(), (Strings{"first0", "first1", "first2"}));
}

// --- Order and range.

TEST_F(UserAssistListTest, SortsWholeEntriesByValue) {
    platform.Root(kUsers)
        .Key(kFirst)
        .SetData(Rot13("UEME_RUNPATH:b"), kRegBinary, Data(7, samples::FileTimeOf({2009, 8, 4})))
        .SetData(Rot13("UEME_RUNPIDL:B"), kRegBinary, Data(8, samples::FileTimeOf({2009, 8, 5})))
        .SetData(Rot13("UEME_UISCUT"), kRegBinary, Data(9, samples::FileTimeOf({2009, 8, 6})));
    list.LoadUserAssist(kSid);
    list.Sort();
    EXPECT_EQ(Names(), (Strings{"UEME_UISCUT", "UEME_RUNPIDL:B", "UEME_RUNPATH:b"}));
    EXPECT_EQ(list.UserAssistType(0), "UEME_UISCUT");
    EXPECT_EQ(list.UserAssistValue(1), "B");
    EXPECT_EQ(list.UserAssistRunCount(1), 3);
    EXPECT_EQ(LastRun(1), "8/5/2009");
    EXPECT_EQ(LastRun(2), "8/4/2009");
}

TEST_F(UserAssistListTest, OnlyProgramsThatWereStartedArePrograms) {
    MemoryKey& key = platform.Root(kUsers).Key(kFirst);
    const auto add = [&](const std::string& name) {
        key.SetData(Rot13(name), kRegBinary, Data(6, samples::FileTimeOf({2009, 8, 4})));
    };
    add("UEME_RUNPATH:C:\\A\\b.Exe");
    add("UEME_RUNPATH:C:\\EXERCISE\\a.txt");
    add("UEME_RUNPATH:C:\\a.txt");
    add("UEME_RUNPIDL:C:\\a.exe");
    add("UEME_RUNCPL:exe.cpl");
    list.LoadUserAssist(kSid);
    std::vector<bool> programs;
    for (std::int32_t i = -1; i <= list.Count(); ++i) {
        programs.push_back(list.IsProgram(i));
    }
    EXPECT_EQ(programs, (std::vector<bool>{false, true, true, false, false, false, false}));
}

TEST_F(UserAssistListTest, IndexesOutOfRangeHaveTheirOwnResults) {
    Fill(kFirst, "v", 1);
    for (const int round : {0, 1}) {
        for (const std::int32_t index : {-1, list.Count(), std::numeric_limits<std::int32_t>::max()}) {
            EXPECT_EQ(list.UserAssistName(index), "");
            EXPECT_EQ(list.UserAssistType(index), "");
            EXPECT_EQ(list.UserAssistValue(index), "");
            EXPECT_EQ(list.UserAssistRunCount(index), -1);
            EXPECT_EQ(list.UserAssistLastRun(index), -1.0);
        }
        EXPECT_EQ(list.Count(), round);
        list.LoadUserAssist(kSid);
    }
}

/// Counts how often it is asked for a folder.
class CountingPlatform : public MemoryPlatform {
  public:
    std::string SpecialFolderPath(int csidl) override {
        ++asked;
        return MemoryPlatform::SpecialFolderPath(csidl);
    }
    int asked = 0;
};

TEST(UserAssistListCost, TheProgramsFolderIsAskedForOnce) {
    CountingPlatform host;
    host.specialFolders[23] = "C:\\Programs";
    for (int i = 0; i < 100; ++i) {
        host.Root(kUsers).Key(kFirst).SetData(Rot13("UEME_RUNPATH:%csidl2%\\" + std::to_string(i)),
                                              kRegBinary, Data(6, 0));
    }
    UserAssistList list(host);
    list.LoadUserAssist(kSid);
    EXPECT_EQ(list.UserAssistValue(99), "C:\\Programs\\99");
    EXPECT_EQ(host.asked, 1);
    EXPECT_EQ(list.Loss(), "");
}

TEST(UserAssistListCost, ALongFolderInManyPlacesIsNotListedWithoutEnd) {
    MemoryPlatform host;
    host.specialFolders[23] = std::string(32'000, 'f');
    std::string name = "UEME_RUNPATH:";
    for (int i = 0; i < 120; ++i) {
        name += "%csidl2%";
    }
    for (int i = 0; i < 2000; ++i) {
        host.Root(kUsers).Key(kFirst).SetData(Rot13(name + std::to_string(i)), kRegBinary, Data(6, 0));
    }
    UserAssistList list(host);
    list.LoadUserAssist(kSid);
    std::size_t bytes = 0;
    for (std::int32_t i = 0; i < list.Count(); ++i) {
        bytes += list.UserAssistValue(i).size();
    }
    EXPECT_GT(list.Count(), 1000);
    EXPECT_LE(bytes, TextIntake::kMostOfList);
    EXPECT_NE(list.Loss(), "");
}

}  // namespace
}  // namespace ostrevin
