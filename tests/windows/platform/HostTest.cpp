// Text, time and dates of the machine, and what it tells of itself.

#include <windows.h>
#include <array>
#include <charconv>
#include <gtest/gtest.h>
#include <string>

#include "platform/Dates.h"
#include "platform/Paths.h"
#include "platform/windows/WindowsPlatform.h"

namespace ostrevin {
namespace {

class WindowsHost : public testing::Test {
  protected:
    WindowsPlatform platform;
};

TEST_F(WindowsHost, TellsItsVersionFoldersAndVariables) {
    EXPECT_EQ(platform.GetVersionExA().platformId, 2U);
    EXPECT_GE(platform.GetVersionExA().major, 5U);
    EXPECT_EQ(GetWindowsFolder(platform), "C:\\windows");
    EXPECT_EQ(GetSystemDrive(platform), "C:");
    EXPECT_NE(platform.EnvironmentVariable("USERNAME"), "");
    EXPECT_EQ(platform.EnvironmentVariable("OSTREVIN_NOT_SET"), "");
    SetEnvironmentVariableW(L"OSTREVIN_LONG", std::wstring(1000, L'\u00E9').c_str());
    EXPECT_EQ(platform.EnvironmentVariable("OSTREVIN_LONG").size(), 2000U);
}

TEST_F(WindowsHost, TheApplicationsFolderIsThatOfTheExecutable) {
    const std::string folder = GetAppFolder(platform);
    EXPECT_TRUE(folder.ends_with('\\'));
    EXPECT_TRUE(platform.PathFileExistsA(folder + "windows_platform_test.exe"));
}

// --- Text.

TEST_F(WindowsHost, EncodesInTheCodePage) {
    if (GetACP() != 1252) {
        GTEST_SKIP() << "these are the bytes of code page 1252";
    }
    EXPECT_EQ(platform.EncodeAnsi("caf\u00E9 \u20AC"), "caf\xE9 \x80");
    EXPECT_EQ(platform.EncodeAnsi("\u0416\u0417"), "??");
    EXPECT_EQ(platform.EncodeAnsi("\u0100"), "?") << "no letter that merely looks alike";
    EXPECT_EQ(platform.EncodeAnsi("a\U0001F600b"), "a?b") << "one for a character of two code units";
    EXPECT_EQ(platform.EncodeAnsi("\xFF\xC3"), "??");
    EXPECT_EQ(platform.EncodeAnsi("\xED\xA0\x80"), "???") << "a lone surrogate is no UTF-8";
    EXPECT_EQ(platform.EncodeAnsi(""), "");
    EXPECT_EQ(platform.EncodeAnsi(std::string("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(platform.DecodeAnsi("caf\xE9 \x80"), "caf\u00E9 \u20AC");
    EXPECT_EQ(platform.DecodeAnsi(""), "");
    EXPECT_EQ(platform.DecodeAnsi(std::string("a\0b", 3)), std::string("a\0b", 3));
}

// --- Time.

FileTime At(const SystemTime& time) {
    constexpr std::int64_t kUnitsPerSecond = 10'000'000;
    const std::int64_t days = DaysFromCivil(time.year, time.month, time.day) - DaysFromCivil(1601, 1, 1);
    const std::int64_t seconds = days * 86400 + time.hour * 3600 + time.minute * 60 + time.second;
    const auto units = static_cast<std::uint64_t>(seconds * kUnitsPerSecond);
    return {static_cast<std::uint32_t>(units), static_cast<std::uint32_t>(units >> 32U)};
}

TEST_F(WindowsHost, AFileTimeIsADayAndATime) {
    for (const SystemTime& time :
         {SystemTime{1601, 1, 1, 0, 0, 0, 0}, SystemTime{2000, 2, 29, 23, 59, 59, 0},
          SystemTime{2009, 8, 4, 15, 22, 18, 0}, SystemTime{9999, 12, 31, 23, 59, 59, 0}}) {
        const auto read = platform.FileTimeToSystemTime(At(time));
        ASSERT_TRUE(read);
        EXPECT_EQ(DateFromCivil(*read), DateFromCivil(time));
    }
    EXPECT_FALSE(platform.FileTimeToSystemTime({0, 0x80000000}));
    EXPECT_EQ(platform.FileTimeToSystemTime({10000 * 7, 0})->milliseconds, 7);
}

TEST_F(WindowsHost, LocalTimeIsThatOfTheTimeZone) {
    // The minutes from local time to UTC, which whoever starts this program in a time zone knows.
    const std::string expected = platform.EnvironmentVariable("OSTREVIN_EXPECTED_BIAS");
    if (expected.empty()) {
        GTEST_SKIP() << "the time zone is not known";
    }
    int bias = 0;
    std::from_chars(expected.data(), expected.data() + expected.size(), bias);
    const SystemTime utc{2009, 8, 4, 15, 22, 18, 0};
    const auto local = platform.FileTimeToLocalFileTime(At(utc));
    ASSERT_TRUE(local);
    EXPECT_NEAR(DateFromCivil(*platform.FileTimeToSystemTime(*local)), DateFromCivil(utc) - bias / 1440.0,
                1e-9);
}

TEST_F(WindowsHost, NowIsTheLocalTime) {
    SYSTEMTIME before{};
    GetLocalTime(&before);
    const double now = platform.Now();
    EXPECT_GE(now, DateFromCivil({before.wYear, before.wMonth, before.wDay, before.wHour, before.wMinute,
                                  before.wSecond, 0}));
    EXPECT_EQ(now, DateFromCivil(CivilFromDate(now))) << "whole seconds";
}

// --- Dates.

/// A format of the person at the screen, until the end of its scope.
class LocaleFormat {
  public:
    LocaleFormat(LCTYPE type, const wchar_t* format) : type_(type) {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, type, before_.data(), static_cast<int>(before_.size()));
        EXPECT_NE(SetLocaleInfoW(LOCALE_USER_DEFAULT, type, format), 0);
    }
    ~LocaleFormat() { SetLocaleInfoW(LOCALE_USER_DEFAULT, type_, before_.data()); }
    LocaleFormat(const LocaleFormat&) = delete;
    LocaleFormat& operator=(const LocaleFormat&) = delete;

  private:
    LCTYPE type_;
    std::array<wchar_t, 80> before_{};
};

double Date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return DateFromCivil({year, month, day, hour, minute, second, 0});
}

TEST_F(WindowsHost, WritesDatesInTheirForms) {
    const LocaleFormat date(LOCALE_SSHORTDATE, L"M/d/yyyy");
    const LocaleFormat time(LOCALE_STIMEFORMAT, L"h:mm:ss tt");
    const double august = Date(2009, 8, 4, 15, 22, 18);
    EXPECT_EQ(platform.DateToText(august, DateForm::General), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(platform.DateToText(august, DateForm::ShortDate), "8/4/2009");
    EXPECT_EQ(platform.DateToText(august, DateForm::LongTime), "3:22:18 PM");
    EXPECT_EQ(platform.DateToText(Date(2009, 8, 4), DateForm::General), "8/4/2009");
    EXPECT_EQ(platform.DateToText(Date(2009, 8, 4), DateForm::LongTime), "12:00:00 AM");
    EXPECT_EQ(platform.DateToText(-1.25, DateForm::General), "12/29/1899 6:00:00 AM");
    EXPECT_EQ(platform.DateToText(0, DateForm::General), "12/30/1899");
    EXPECT_EQ(platform.DateToText(Date(1601, 1, 1), DateForm::General), "1/1/1601");
}

struct Picture {
    const wchar_t* date;
    const char* written;
};

TEST_F(WindowsHost, WritesTheYearInFourDigitsAlways) {
    for (const Picture& picture : {Picture{L"dd.MM.yy", "04.08.2009"}, Picture{L"yy-M-d", "2009-8-4"},
                                   Picture{L"d/M/y", "4/8/2009"}, Picture{L"yyyy/MM/dd", "2009/08/04"},
                                   Picture{L"dd/MM/yyyy", "04/08/2009"}, Picture{L"M.d.yyyy", "8.4.2009"}}) {
        const LocaleFormat format(LOCALE_SSHORTDATE, picture.date);
        const windows::WindowsDates dates;
        EXPECT_EQ(dates.Write(Date(2009, 8, 4), DateForm::ShortDate), picture.written);
    }
}

TEST_F(WindowsHost, ReadsBackWhatItWroteInEveryFormat) {
    for (const wchar_t* picture : {L"M/d/yyyy", L"dd.MM.yy", L"yy-M-d", L"yyyy. MM. dd.", L"dd-MMM-yy",
                                   L"ddd, d. MMMM yyyy", L"'on' d/M", L"yyyyMMdd", L"'yy' d-M-yy"}) {
        const LocaleFormat format(LOCALE_SSHORTDATE, picture);
        for (const wchar_t* clock : {L"h:mm:ss tt", L"HH:mm:ss", L"H.mm.ss", L"HH:mm"}) {
            const LocaleFormat time(LOCALE_STIMEFORMAT, clock);
            const windows::WindowsDates dates;
            // A stride of some days and odd seconds meets every month, weekday and hour.
            for (std::int64_t day = -109205; day < 80000; day += 1777) {
                const auto whole = static_cast<double>(day);
                const int second = static_cast<int>((day + 1000000) * 37 % 86400);
                SystemTime civil = CivilFromDays(day);
                civil.hour = second / 3600;
                civil.minute = second / 60 % 60;
                civil.second = second % 60;
                const double date = DateFromCivil(civil);
                ASSERT_EQ(dates.Read(dates.Write(date, DateForm::General)), date)
                    << dates.Write(date, DateForm::General);
                ASSERT_EQ(dates.Read(dates.Write(whole, DateForm::ShortDate)), whole);
            }
        }
    }
}

TEST_F(WindowsHost, ReadsWhatAPersonTypes) {
    const LocaleFormat format(LOCALE_SSHORTDATE, L"M/d/yyyy");
    for (const char* text : {"8/4/2009", "08/04/2009", "8-4-2009", "8/4/09", "2009-08-04", " 8/4/2009 "}) {
        EXPECT_EQ(platform.TextToDate(text), Date(2009, 8, 4)) << text;
    }
    EXPECT_EQ(platform.TextToDate("8/4/2009 15:22"), Date(2009, 8, 4, 15, 22));
    EXPECT_EQ(platform.TextToDate("8/4/2009 3:22 PM"), Date(2009, 8, 4, 15, 22));
    EXPECT_EQ(platform.TextToDate("3 PM"), 0.625);
    for (const char* text : {"", "x", "13/32/2009", "8/4/2009 25:00", "\xFF"}) {
        EXPECT_EQ(platform.TextToDate(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace ostrevin
