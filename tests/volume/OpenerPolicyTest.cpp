#include <gtest/gtest.h>

#include "platform/volume/OpenerPolicy.h"

namespace ostrevin {
namespace {

bool LooksExecutable(std::string_view text) {
    return ostrevin::LooksExecutable(std::as_bytes(std::span(text)));
}

TEST(OpenerPolicy, PassiveNamesAreThoseOfDocumentsPicturesSoundsAndFilms) {
    for (const char* name :
         {"a.txt", "Report.DOC", "photo.jpeg", "song.MP3", "film.avi", "a.b.pdf", "sheet.xls"}) {
        EXPECT_TRUE(IsPassiveName(name)) << name;
    }
    for (const char* name :
         {"a.exe", "a.com",     "a.bat", "a.cmd", "a.scr",  "a.pif",      "a.lnk",  "a.url",
          "a.vbs", "a.js",      "a.hta", "a.msi", "a.reg",  "a.chm",      "a.htm",  "a.html",
          "a.svg", "a.desktop", "a.sh",  "a.py",  "a.jar",  "a.AppImage", "a.docm", "a.txt.exe",
          "a",     "a.",        "",      "txt",   "a.txt ", "a.zip"}) {
        EXPECT_FALSE(IsPassiveName(name)) << name;
    }
}

TEST(OpenerPolicy, ContentsTellProgramsWhateverTheirNames) {
    using namespace std::string_view_literals;
    EXPECT_TRUE(LooksExecutable("MZ\x90"sv));
    EXPECT_TRUE(
        LooksExecutable("\x7F"
                        "ELF\x02"sv));
    EXPECT_TRUE(LooksExecutable("#!/bin/sh\n"sv));
    EXPECT_TRUE(LooksExecutable("# a comment\n[Desktop Entry]\nExec=x"sv));
    EXPECT_FALSE(LooksExecutable(""sv));
    EXPECT_FALSE(LooksExecutable("M"sv));
    EXPECT_FALSE(LooksExecutable("\xFF\xD8\xFF\xE0"sv));
    EXPECT_FALSE(LooksExecutable("Dear MZ, [Desktop]"sv));
}

TEST(OpenerPolicy, ADriveLetterIsNoScheme) {
    EXPECT_EQ(SchemeOf("HTTP://a/"), "http");
    EXPECT_EQ(SchemeOf("about:blank"), "about");
    EXPECT_EQ(SchemeOf("ms-help://x"), "ms-help");
    EXPECT_EQ(SchemeOf("C:\\a.txt"), "");
    EXPECT_EQ(SchemeOf("www.example.com"), "");
    EXPECT_EQ(SchemeOf("a b:c"), "");
    EXPECT_EQ(SchemeOf("-x:y"), "");
    EXPECT_EQ(SchemeOf(""), "");
}

TEST(OpenerPolicy, OnlyTheWebAndMailArePermitted) {
    EXPECT_EQ(PermittedAddress("http://example.com/a?b=c&d#e"), "http://example.com/a?b=c&d#e");
    EXPECT_EQ(PermittedAddress("HTTPS://example.com/%20"), "HTTPS://example.com/%20");
    EXPECT_EQ(PermittedAddress("mailto:a@example.com"), "mailto:a@example.com");
    EXPECT_EQ(PermittedAddress("ftp://example.com/a b\"'`\n\xC3\xA9"),
              "ftp://example.com/a%20b%22%27%60%0A%C3%A9");
    for (const char* address : {"about:blank", "javascript:alert(1)", "file:///C:/a.txt", "vbscript:x",
                                "ms-its:a.chm", "telnet://a", "data:text/html,x", "C:\\a", ""}) {
        EXPECT_EQ(PermittedAddress(address), std::nullopt) << address;
    }
}

TEST(OpenerPolicy, FileAddressesBecomePaths) {
    EXPECT_EQ(PathOfFileAddress("file:///C:/My%20Documents/a.txt"), "C:\\My Documents\\a.txt");
    EXPECT_EQ(PathOfFileAddress("file://C:\\a.txt"), "C:\\a.txt");
    EXPECT_EQ(PathOfFileAddress("FILE:C:/a.txt"), "C:\\a.txt");
    EXPECT_EQ(PathOfFileAddress("file://server/share/a.txt"), "\\\\server\\share\\a.txt");
    EXPECT_EQ(PathOfFileAddress("file:///home/a.txt"), "\\\\\\home\\a.txt");
    EXPECT_EQ(PathOfFileAddress("file:///C:/100%/%zz%4"), "C:\\100%\\%zz%4");
    EXPECT_EQ(PathOfFileAddress("file:"), "");
}

}  // namespace
}  // namespace ostrevin
