// The names of reports, for every file system and whatever the accounts are called.
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "platform/Text.h"
#include "startup/ReportFileNames.h"

namespace ostrevin {
namespace {

std::string NameFor(const std::string& account) {
    return ReportFileNames().For(account, "S-1-5-21-1");
}

TEST(ReportFileNames, DevicesOfWindowsGetAnotherName) {
    for (const char* device :
         {"CON",  "con",       "con.",        "Con ",      "con .",  "PRN",     "AUX",
          "NUL",  "nul.txt",   "nul . x",     "COM0",      "COM1",   "com9.a",  "LPT1",
          "lpt9", "COM\u00B9", "com\u00B2.x", "LPT\u00B3", "CONIN$", "conout$", "CLOCK$"}) {
        EXPECT_EQ(NameFor(device), std::string("_") + device + ".htm");
    }
    for (const char* name :
         {"CONNY", "NULL", "COM", "COM10", "COM1x", "LPT", "LPT\u00B9\u00B2", "xCON", "a.con"}) {
        EXPECT_EQ(NameFor(name), std::string(name) + ".htm");
    }
}

TEST(ReportFileNames, WhatCannotBeSeenOrTurnsTheTextIsReplaced) {
    EXPECT_EQ(NameFor("a\u202Emth.exe"), "a_mth.exe.htm");
    EXPECT_EQ(NameFor("a\u0085b\u200Bc\u2066d\uFEFFe\u2028f\u007Fg\u00ADh"), "a_b_c_d_e_f_g_h.htm");
    EXPECT_EQ(NameFor("a\xFF"
                      "b\x80"
                      "c"),
              "a_b_c.htm")
        << "no UTF-8";
    EXPECT_EQ(NameFor("\u0416\u00E9\u4E2D\U0001F600"), "\u0416\u00E9\u4E2D\U0001F600.htm");
    EXPECT_EQ(NameFor("../../etc/passwd"), "_._.._etc_passwd.htm");
    EXPECT_EQ(NameFor("C:\\a"), "C__a.htm");
    EXPECT_EQ(NameFor("-rf"), "_rf.htm");
    EXPECT_EQ(NameFor(".hidden"), "_hidden.htm");
    EXPECT_EQ(NameFor(" a"), "_a.htm");
    EXPECT_EQ(NameFor("a. "), "a. .htm");
}

TEST(ReportFileNames, AreDifferentWithoutRegardToCase) {
    ReportFileNames names;
    std::set<std::string> given;
    // Identifiers that are the same as far as they go into a name.
    const std::string sid(150, '1');
    for (int i = 0; i < 2000; ++i) {
        const std::string name = names.For(i % 2 == 0 ? "Anna" : "ANNA", sid + std::to_string(i));
        EXPECT_LE(name.size(), 255U);
        EXPECT_TRUE(given.insert(UpperCase(name)).second) << name;
    }
    EXPECT_EQ(names.For("anna " + sid.substr(0, 95) + " 2", "S-1"), "anna " + sid.substr(0, 95) + ".htm")
        << "cut";
    EXPECT_EQ(names.For("nul", "S-1"), "_nul.htm");
    EXPECT_EQ(names.For("_NUL", "S-1"), "_NUL S-1.htm");
}

}  // namespace
}  // namespace ostrevin
