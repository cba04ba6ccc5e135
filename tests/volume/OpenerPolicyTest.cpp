#include <gtest/gtest.h>

#include "platform/volume/OpenerPolicy.h"

namespace ostrevin {
namespace {

bool LooksExecutable(std::string_view text) {
    return ostrevin::LooksExecutable(std::as_bytes(std::span(text)));
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

TEST(OpenerPolicy, OfMailTheAddressAloneIsHandedOn) {
    for (const char* address : {"mailto:a.b+c_d-e@mail.example.com", "MAILTO:a.b+c_d-e@mail.example.com",
                                "mailto:a.b+c_d-e@mail.example.com?attach=/etc/passwd&body=x",
                                "mailto:a.b+c_d-e@mail.example.com?"}) {
        EXPECT_EQ(PermittedAddress(address), "mailto:a.b+c_d-e@mail.example.com") << address;
    }
    for (const char* address : {"mailto:",
                                "mailto:?attach=/etc/passwd",
                                "mailto:a",
                                "mailto:@example.com",
                                "mailto:a@",
                                "mailto:-a@example.com",
                                "mailto:a@-example.com",
                                "mailto:a@b@example.com",
                                "mailto:a@example.com,b@c.d",
                                "mailto:a@example.com;b",
                                "mailto:a@example.com%0AAttach:x",
                                "mailto:a%27,attachment=%27x@example.com",
                                "mailto:a'@example.com",
                                "mailto:\"a\"@example.com",
                                "mailto:a b@example.com",
                                "mailto:a@example.com\n",
                                "mailto:$(x)@example.com",
                                "mailto://a@example.com",
                                "mailto:a@example.com#x",
                                "mailto:a@example.com&attach=x",
                                "mailto:%../../x.exe\".cmd"}) {
        EXPECT_EQ(PermittedAddress(address), std::nullopt) << address;
    }
}

TEST(OpenerPolicy, AddressesOfTheWebNameAHost) {
    for (const char* address : {"http:", "http:/", "http://", "http:///etc/passwd", "http:example.com",
                                "ftp://-x", "ftp:../x", "http://%2Fx", "http://?x", "https://.."}) {
        EXPECT_EQ(PermittedAddress(address), std::nullopt) << address;
    }
    EXPECT_EQ(PermittedAddress("http://[::1]/a"), "http://[::1]/a");
    EXPECT_EQ(PermittedAddress("http://a@example.com/"), "http://a@example.com/");
    EXPECT_EQ(PermittedAddress("http://\xC3\xA9.example/"), "http://%C3%A9.example/");
    EXPECT_EQ(PermittedAddress("http://a/%zz%4%%41%"), "http://a/%25zz%254%25%41%25");
    EXPECT_EQ(PermittedAddress("http://a/\t\x1B\x7F\\<>^{|}"), "http://a/%09%1B%7F%5C%3C%3E%5E%7B%7C%7D");
    const std::string longest = "http://a/" + std::string(2083 - 9, 'x');
    EXPECT_EQ(PermittedAddress(longest), longest);
    EXPECT_EQ(PermittedAddress(longest + "x"), std::nullopt);
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
