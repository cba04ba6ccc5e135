// What a window shows of texts that it did not make.
#include <gtest/gtest.h>
#include <string>

#include "controls/ShownText.h"

namespace ostrevin {
namespace {

TEST(ShownTextTest, APlainTextIsShownAsItIs) {
    for (const char* text :
         {"", "C:\\My Documents\\letter.doc", "<img src=\"C:\\secret\">&amp; 100%",
          "\u00e4\u0424\u4e2d\U0001F600", "\u05d0\u05d1.doc", "\u00a0\u2010\u2027\u202f\u206a"}) {
        EXPECT_EQ(ShownText(text), text);
        EXPECT_EQ(ShownMessage(text), text);
    }
}

TEST(ShownTextTest, ControlCharactersStandWhereTheyAreAndDoNothing) {
    EXPECT_EQ(ShownText("a\tb\x1b[2Jc\x7f"), "a\uFFFDb\uFFFD[2Jc\uFFFD");
    EXPECT_EQ(ShownText(std::string("a\0b", 3)), "a\uFFFDb");
    EXPECT_EQ(ShownText("\u0080\u009b\u009f"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(ShownText("one\r\ntwo\u2028three\u2029"), "one\uFFFD\uFFFDtwo\uFFFDthree\uFFFD");
}

TEST(ShownTextTest, NoCharacterTurnsTheDirectionOfOthers) {
    EXPECT_EQ(ShownText("C:\\\u202etxt.exe\u202c"), "C:\\\uFFFDtxt.exe\uFFFD");
    EXPECT_EQ(ShownText("\u061c\u200e\u200f\u202a\u202b\u202d\u2066\u2067\u2068\u2069").size(), 30U);
    EXPECT_EQ(ShownText("\u061c\u2066"), "\uFFFD\uFFFD");
}

TEST(ShownTextTest, AMessageHasLines) {
    EXPECT_EQ(ShownMessage("one\r\ntwo\nthree\x1b\u202e"), "one\r\ntwo\nthree\uFFFD\uFFFD");
}

TEST(ShownTextTest, OfALongTextBothEndsAreShown) {
    const std::string longest(2 * kShownAtEachEnd, 'a');
    EXPECT_EQ(ShownText(longest), longest);
    const std::string end(kShownAtEachEnd, 'z');
    EXPECT_EQ(ShownText(std::string(8'000'000, 'a') + end),
              std::string(kShownAtEachEnd, 'a') + "\u2026" + end);
    EXPECT_EQ(ShownMessage(std::string(8'000'000, 'a') + end),
              std::string(kShownAtEachEnd, 'a') + "\u2026" + end);
}

TEST(ShownTextTest, ALongTextIsCutBetweenCharacters) {
    std::string text;
    while (text.size() < 3 * kShownAtEachEnd) {
        text += "\U0001F600";
    }
    for (const char* before : {"", "a", "ab", "abc"}) {
        const std::string shown = ShownText(before + text + before);
        const std::size_t ellipsis = shown.find("\u2026");
        ASSERT_NE(ellipsis, std::string::npos);
        EXPECT_EQ(shown.substr(ellipsis - 4, 11), "\U0001F600\u2026\U0001F600");
        EXPECT_LE(shown.size(), 2 * kShownAtEachEnd + 3);
    }
}

TEST(ShownTextTest, BytesThatAreNoTextCostNoMore) {
    const std::string bytes(10000, '\x80');
    EXPECT_LE(ShownText(bytes).size(), 2 * kShownAtEachEnd + 3);
    EXPECT_EQ(ShownText("a\xe2"), "a\xe2");
    EXPECT_EQ(BeginningOf("a\u4e2d", 3), "a");
    EXPECT_EQ(BeginningOf("a\u4e2d", 4), "a\u4e2d");
    EXPECT_EQ(BeginningOf("\u4e2d", 0), "");
}

}  // namespace
}  // namespace ostrevin
