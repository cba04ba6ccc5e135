#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "platform/Dates.h"

namespace ostrevin {
namespace {

SystemTime Civil(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return {year, month, day, hour, minute, second, 0};
}

void ExpectCivil(const SystemTime& civil, const SystemTime& expected) {
    EXPECT_EQ(civil.year, expected.year);
    EXPECT_EQ(civil.month, expected.month);
    EXPECT_EQ(civil.day, expected.day);
    EXPECT_EQ(civil.hour, expected.hour);
    EXPECT_EQ(civil.minute, expected.minute);
    EXPECT_EQ(civil.second, expected.second);
}

TEST(Dates, CountFromTheEndOf1899) {
    EXPECT_EQ(DateFromCivil(Civil(1899, 12, 30)), 0.0);
    EXPECT_EQ(DateFromCivil(Civil(1900, 1, 1)), 2.0);
    EXPECT_EQ(DateFromCivil(Civil(1970, 1, 1)), 25569.0);
    EXPECT_EQ(DateFromCivil(Civil(1601, 1, 1)), -109205.0);
    EXPECT_EQ(DateFromCivil(Civil(100, 1, 1)), -657434.0);
    EXPECT_EQ(DateFromCivil(Civil(9999, 12, 31)), 2958465.0);
    EXPECT_EQ(DateFromCivil(Civil(2009, 8, 4, 12)), 40029.5);
}

TEST(Dates, BeforeTheFirstDayTheTimeStillCountsForward) {
    EXPECT_EQ(DateFromCivil(Civil(1899, 12, 29, 6)), -1.25);
    ExpectCivil(CivilFromDate(-1.25), Civil(1899, 12, 29, 6));
    ExpectCivil(CivilFromDate(-1.0), Civil(1899, 12, 29));
    ExpectCivil(CivilFromDate(-0.5), Civil(1899, 12, 30, 12));
}

TEST(Dates, EveryDayComesBack) {
    for (std::int64_t days = -657434; days <= 2958465; ++days) {
        const SystemTime civil = CivilFromDays(days);
        ASSERT_TRUE(IsCivil(civil)) << days;
        ASSERT_EQ(DaysFromCivil(civil.year, civil.month, civil.day), days);
    }
}

TEST(Dates, EverySecondOfADayComesBack) {
    for (const int year : {1601, 1899, 1970, 9999}) {
        for (int second = 0; second < 86400; ++second) {
            const SystemTime civil = Civil(year, 12, 29, second / 3600, second / 60 % 60, second % 60);
            const SystemTime back = CivilFromDate(DateFromCivil(civil));
            ASSERT_EQ(back.day, 29) << second;
            ASSERT_EQ(back.hour * 3600 + back.minute * 60 + back.second, second);
        }
    }
}

TEST(Dates, RoundToTheSecondAcrossMidnight) {
    ExpectCivil(CivilFromDate(40029.9999999), Civil(2009, 8, 5));
    ExpectCivil(CivilFromDate(-1.9999999), Civil(1899, 12, 30));
    ExpectCivil(CivilFromDate(40029.0 + 0.4 / 86400), Civil(2009, 8, 4));
    ExpectCivil(CivilFromDate(40029.0 + 0.6 / 86400), Civil(2009, 8, 4, 0, 0, 1));
}

TEST(Dates, StayWithinTheYearsOfADate) {
    const double infinity = std::numeric_limits<double>::infinity();
    ExpectCivil(CivilFromDate(2958465.9999999), Civil(9999, 12, 31, 23, 59, 59));
    ExpectCivil(CivilFromDate(1e300), Civil(9999, 12, 31, 23, 59, 59));
    ExpectCivil(CivilFromDate(infinity), Civil(9999, 12, 31, 23, 59, 59));
    ExpectCivil(CivilFromDate(-657435.0), Civil(100, 1, 1));
    ExpectCivil(CivilFromDate(-infinity), Civil(100, 1, 1));
    ExpectCivil(CivilFromDate(std::nan("")), Civil(1899, 12, 30));
}

TEST(Dates, KnowWhatTheCalendarHas) {
    EXPECT_TRUE(IsCivil(Civil(2000, 2, 29)));
    EXPECT_FALSE(IsCivil(Civil(1900, 2, 29)));
    EXPECT_FALSE(IsCivil(Civil(2009, 2, 30)));
    EXPECT_FALSE(IsCivil(Civil(2009, 13, 1)));
    EXPECT_FALSE(IsCivil(Civil(2009, 0, 1)));
    EXPECT_FALSE(IsCivil(Civil(99, 1, 1)));
    EXPECT_FALSE(IsCivil(Civil(10000, 1, 1)));
    EXPECT_FALSE(IsCivil(Civil(2009, 1, 1, 24)));
    EXPECT_FALSE(IsCivil(Civil(2009, 1, 1, 0, 60)));
    EXPECT_FALSE(IsCivil(Civil(2009, 1, 1, 0, 0, 60)));
}

FileTime UnitsSince1601(std::uint64_t units) {
    return {static_cast<std::uint32_t>(units), static_cast<std::uint32_t>(units >> 32U)};
}

TEST(Dates, FileTimesCountFrom1601) {
    ExpectCivil(CivilFromFileTime({0, 0}).value(), Civil(1601, 1, 1));
    const SystemTime civil = CivilFromFileTime(UnitsSince1601(128938729389876543U)).value();
    ExpectCivil(civil, Civil(2009, 8, 4, 15, 22, 18));
    EXPECT_EQ(civil.milliseconds, 987);
    ExpectCivil(CivilFromFileTime(UnitsSince1601(0x7FFFFFFFFFFFFFFFU)).value(),
                Civil(30828, 9, 14, 2, 48, 5));
    EXPECT_FALSE(CivilFromFileTime(UnitsSince1601(0x8000000000000000U)));
    EXPECT_FALSE(CivilFromFileTime({0xFFFFFFFF, 0xFFFFFFFF}));
}

TEST(Dates, HaveAFormThatNeedsNoLocale) {
    const SystemTime civil{987, 6, 5, 4, 3, 2, 0};
    EXPECT_EQ(IsoDay(civil), "0987-06-05");
    EXPECT_EQ(IsoTime(civil), "04:03:02");
}

}  // namespace
}  // namespace ostrevin
