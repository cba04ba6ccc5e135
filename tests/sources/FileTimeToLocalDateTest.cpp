#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

#include "sources/FileTimeToLocalDate.h"
#include "tests/support/MemoryPlatform.h"
#include "tools/writers/Times.h"

namespace ostrevin {
namespace {

FileTime Halves(std::uint64_t units) {
    return {static_cast<std::uint32_t>(units), static_cast<std::uint32_t>(units >> 32U)};
}

class FileTimeToLocalDateTest : public testing::Test {
  protected:
    std::string Local(std::uint64_t units) {
        return platform.DateToText(FileTimeToLocalDate(platform, Halves(units)), DateForm::General);
    }
    MemoryPlatform platform;
};

TEST_F(FileTimeToLocalDateTest, GoesByTheBias) {
    const std::uint64_t noon = samples::FileTimeOf({2009, 8, 4, 12, 30, 15});
    EXPECT_EQ(Local(noon), "8/4/2009 12:30:15 PM");
    platform.biasMinutes = -120;
    EXPECT_EQ(Local(noon), "8/4/2009 2:30:15 PM");
    platform.biasMinutes = 780;
    EXPECT_EQ(Local(noon), "8/3/2009 11:30:15 PM");
}

TEST_F(FileTimeToLocalDateTest, DropsMilliseconds) {
    const std::uint64_t last = samples::FileTimeOf({2009, 8, 4, 23, 59, 59}) + samples::kSecond - 1;
    EXPECT_EQ(Local(last), "8/4/2009 11:59:59 PM");
    EXPECT_EQ(FileTimeToLocalDate(platform, Halves(samples::FileTimeOf({2009, 8, 4}))), 40029.0);
}

TEST_F(FileTimeToLocalDateTest, ZeroIsNeverConverted) {
    for (const std::int64_t bias : {-720, 0, 720}) {
        platform.biasMinutes = bias;
        EXPECT_EQ(FileTimeToLocalDate(platform, {0, 0}), kDateOfNoTime);
    }
    EXPECT_EQ(platform.DateToText(kDateOfNoTime, DateForm::General), "1/1/1601");
}

TEST_F(FileTimeToLocalDateTest, WhatTheHostCannotConvertIsNoTime) {
    EXPECT_EQ(FileTimeToLocalDate(platform, Halves(std::numeric_limits<std::uint64_t>::max())),
              kDateOfNoTime);
    EXPECT_EQ(FileTimeToLocalDate(platform, Halves(std::uint64_t{1} << 63U)), kDateOfNoTime);
    platform.biasMinutes = 60;
    EXPECT_EQ(FileTimeToLocalDate(platform, Halves(1)), kDateOfNoTime) << "before the first time there is";
}

TEST_F(FileTimeToLocalDateTest, EitherCallMayFail) {
    for (const std::string call : {"FileTimeToLocalFileTime", "FileTimeToSystemTime"}) {
        MemoryPlatform failing;
        failing.Fail(call);
        EXPECT_EQ(FileTimeToLocalDate(failing, Halves(samples::FileTimeOf({2009, 8, 4}))), kDateOfNoTime);
    }
}

TEST_F(FileTimeToLocalDateTest, TheLastYearOfADateIs9999) {
    const std::uint64_t last = samples::FileTimeOf({9999, 12, 31, 23, 59, 59});
    EXPECT_EQ(Local(last), "12/31/9999 11:59:59 PM");
    EXPECT_EQ(FileTimeToLocalDate(platform, Halves(last + samples::kSecond)), kDateOfNoTime);
    EXPECT_EQ(FileTimeToLocalDate(platform, Halves(std::numeric_limits<std::int64_t>::max())), kDateOfNoTime);
}

TEST_F(FileTimeToLocalDateTest, TimesBefore1900KeepTheirTimeOfDay) {
    EXPECT_EQ(Local(samples::FileTimeOf({1601, 1, 1, 6})), "1/1/1601 6:00:00 AM");
    EXPECT_EQ(Local(1), "1/1/1601");
}

}  // namespace
}  // namespace ostrevin
