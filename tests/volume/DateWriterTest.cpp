#include <gtest/gtest.h>

#include "platform/Dates.h"
#include "platform/volume/DateWriter.h"

namespace ostrevin {
namespace {

double Date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return DateFromCivil({year, month, day, hour, minute, second, 0});
}

const double kAugust = Date(2009, 8, 4, 15, 22, 18);

TEST(DateWriter, WritesThePlainLocale) {
    const DateWriter writer{DateFormats()};
    EXPECT_EQ(writer.Write(kAugust, DateForm::General), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(writer.Write(kAugust, DateForm::ShortDate), "8/4/2009");
    EXPECT_EQ(writer.Write(kAugust, DateForm::LongTime), "3:22:18 PM");
    EXPECT_EQ(writer.Write(Date(2009, 8, 4), DateForm::General), "8/4/2009");
    EXPECT_EQ(writer.Write(Date(2009, 8, 4), DateForm::LongTime), "12:00:00 AM");
    EXPECT_EQ(writer.Write(Date(2009, 8, 4, 12), DateForm::LongTime), "12:00:00 PM");
    EXPECT_EQ(writer.Write(-1.25, DateForm::General), "12/29/1899 6:00:00 AM");
    EXPECT_EQ(writer.Write(Date(1601, 1, 1), DateForm::General), "1/1/1601");
    EXPECT_EQ(writer.Write(Date(100, 1, 1), DateForm::General), "1/1/0100");
}

TEST(DateWriter, ReadsWhatAPersonTypes) {
    const DateWriter writer{DateFormats()};
    for (const char* text :
         {"8/4/2009", "08/04/2009", "8-4-2009", "8.4.2009", "8/4/09", "  8/4/2009 ", "2009-08-04", "2009/8/4",
          "8 / 4 / 2009", "8/4/2009 0:00", "8/4/2009 12:00 AM"}) {
        EXPECT_EQ(writer.Read(text), Date(2009, 8, 4)) << text;
    }
    for (const char* text : {"8/4/2009 15:22", "8/4/2009 3:22 PM", "8/4/2009 03:22pm", "8/4/2009, 3:22 PM",
                             "2009-08-04 15:22", "8/4/2009 PM 3:22"}) {
        EXPECT_EQ(writer.Read(text), Date(2009, 8, 4, 15, 22)) << text;
    }
    EXPECT_EQ(writer.Read("3:22:18 PM"), Date(1899, 12, 30, 15, 22, 18));
    EXPECT_EQ(writer.Read("3 PM"), 0.625);
    EXPECT_EQ(writer.Read("1/1/29"), Date(2029, 1, 1));
    EXPECT_EQ(writer.Read("1/1/30"), Date(1930, 1, 1));
    EXPECT_EQ(writer.Read("1/1/0100"), Date(100, 1, 1));
    EXPECT_EQ(writer.Read("12/31/9999 23:59:59"), Date(9999, 12, 31, 23, 59, 59));
}

TEST(DateWriter, RefusesWhatIsNoDate) {
    const DateWriter writer{DateFormats()};
    for (const char* text : {"",
                             " ",
                             "x",
                             "8",
                             "8/4",
                             "13/13/2009",
                             "2/30/2009",
                             "2/29/1900",
                             "0/1/2009",
                             "8/0/2009",
                             "8/4/20090",
                             "8/4/2009x",
                             "8/4/2009 25:00",
                             "8/4/2009 3:60",
                             "8/4/2009 13:00 PM",
                             "8/4/2009 5",
                             "8/4/2009 3:22:18:9",
                             "8//4/2009",
                             "8/4/2009/",
                             "8/4/2009,",
                             "2009/2009/2009",
                             "8/4/2009 PM",
                             "8/2009/4",
                             "1/1/99999",
                             "8/4/0099",
                             "20090804",
                             "8/4/2009 3:22 AM PM",
                             "3:22:18 8/4/2009",
                             "8:4:2009",
                             "-1/1/2009"}) {
        EXPECT_EQ(writer.Read(text), std::nullopt) << text;
    }
}

struct Locale {
    const char* name = "";
    DateFormats formats;
    const char* written = "";
};

// The formats of several locales as the GNU C library has them, and what comes of them.
const Locale kLocales[] = {
    {"en_US", {"%m/%d/%Y", "%r", "%I:%M:%S %p", "AM", "PM"}, "08/04/2009 03:22:18 PM"},
    {"en_GB", {"%d/%m/%y", "%T", "%l:%M:%S %P %Z", "am", "pm"}, "04/08/2009 15:22:18"},
    {"de_DE", {"%d.%m.%Y", "%T", "", "", ""}, "04.08.2009 15:22:18"},
    {"fi_FI", {"%d.%m.%Y", "%H.%M.%S", "", "", ""}, "04.08.2009 15.22.18"},
    {"cs_CZ", {"%-d.%-m.%Y", "%H:%M:%S", "%I:%M:%S", "dop.", "odp."}, "4.8.2009 15:22:18"},
    {"hu_HU", {"%Y-%m-%d", "%H.%M.%S", "", "", ""}, "2009-08-04 15.22.18"},
    {"ja_JP",
     {"%Y年%m月%d日", "%H時%M分%S秒", "%p%I時%M分%S秒", "午前", "午後"},
     "2009年08月04日 15時22分18秒"},
    {"zh_TW", {"%Y年%m月%d日", "%p %I時%M分%S秒", "", "上午", "下午"}, "2009年08月04日 下午 03時22分18秒"},
    {"ko_KR", {"%Y년 %m월 %d일", "%H시 %M분 %S초", "", "오전", "오후"}, "2009년 08월 04일 15시 22분 18초"},
    {"bg_BG", {"%e.%m.%Y", "%k,%M,%S", "", "", ""}, "4.08.2009 15,22,18"},
    {"sr_RS", {"%d.%m.%Y.", "%H:%M:%S", "", "", ""}, "04.08.2009. 15:22:18"},
    {"es_MX", {"%d/%m/%y", "%r", "%I:%M:%S %p", "a. m.", "p. m."}, "04/08/2009 03:22:18 p. m."},
    {"th_TH", {"%d/%m/%Ey", "%H:%M:%S", "", "AM", "PM"}, "04/08/2009 15:22:18"},
    {"named month", {"%a, %d-%b-%Y", "%T %Z", "", "", ""}, "04-08-2009 15:22:18"},
    {"halves without texts", {"%D", "%r", "%I:%M:%S %p", "", ""}, "08/04/2009 15:22:18"},
    {"nothing to separate", {"%Y%m%d", "%H%M%S", "", "", ""}, "2009-08-04 15:22:18"},
    {"no year, no seconds", {"%d.%m.", "%R", "", "", ""}, "2009-08-04 15:22:18"},
    {"itself", {"%F", "%r", "%r", "AM", "PM"}, "2009-08-04 15:22:18"},
    {"digits between", {"%d1%m1%Y", "%H:%M:%S", "", "", ""}, "2009-08-04 15:22:18"},
    {"text before", {"on %d.%m.%Y", "at %H:%M:%S", "", "", ""}, "2009-08-04 15:22:18"},
    {"cut off", {"%d.%m.%Y%", "%H:%M:%S%-", "", "", ""}, "04.08.2009 15:22:18"},
    {"empty", {"", "", "", "", ""}, "2009-08-04 15:22:18"},
};

TEST(DateWriter, FollowsTheLocale) {
    for (const Locale& locale : kLocales) {
        const DateWriter writer(locale.formats);
        EXPECT_EQ(writer.Write(kAugust, DateForm::General), locale.written) << locale.name;
    }
}

TEST(DateWriter, ReadsBackWhatItWrote) {
    for (const Locale& locale : kLocales) {
        const DateWriter writer(locale.formats);
        // A stride of some days and odd seconds meets every month, weekday, hour and century.
        for (std::int64_t days = -657434; days < 2958465; days += 97) {
            const int second = static_cast<int>((days + 1000000) * 37 % 86400);
            SystemTime civil = CivilFromDays(days);
            const double date = DateFromCivil(civil);
            civil.hour = second / 3600;
            civil.minute = second / 60 % 60;
            civil.second = second % 60;
            const double whole = DateFromCivil(civil);
            ASSERT_EQ(writer.Read(writer.Write(whole, DateForm::General)), whole)
                << locale.name << ": " << writer.Write(whole, DateForm::General);
            ASSERT_EQ(writer.Read(writer.Write(whole, DateForm::ShortDate)), date) << locale.name;
        }
        EXPECT_TRUE(writer.Read("1/1/1601") == Date(1601, 1, 1)) << locale.name;
    }
}

TEST(DateWriter, ReadsTheOrderOfTheLocale) {
    EXPECT_EQ(DateWriter(DateFormats{"%d.%m.%Y", "%T", "", "", ""}).Read("4.8.09 15.22"),
              Date(2009, 8, 4, 15, 22));
    EXPECT_EQ(DateWriter(DateFormats{"%Y/%m/%d", "%T", "", "", ""}).Read("09/8/4"), Date(2009, 8, 4));
    EXPECT_EQ(DateWriter(DateFormats{"%Y/%m/%d", "%T", "", "", ""}).Read("8/4/2009"), Date(2009, 8, 4));
    EXPECT_EQ(DateWriter(DateFormats{"%d/%m/%Y", "%T", "", "", ""}).Read("2009-08-04"), Date(2009, 8, 4));
}

}  // namespace
}  // namespace ostrevin
