#include <array>
#include <gtest/gtest.h>
#include <string_view>

#include "platform/Text.h"

namespace ostrevin {
namespace {

using namespace std::string_view_literals;

TEST(Text, Utf16BecomesUtf8AndBack) {
    const std::string text = "a\u00E9\u0416\U0001F600";
    const std::u16string units = Utf8ToUtf16(text);
    EXPECT_EQ(units, u"a\u00E9\u0416\U0001F600");
    EXPECT_EQ(Utf16Length(text), 5U);
    EXPECT_EQ(Utf16ToUtf8(std::as_bytes(std::span(units))), text);
}

TEST(Text, BeginsWithWholeCharacters) {
    const std::string text = "a\u00E9\U0001F600b";
    EXPECT_EQ(Beginning(text, 0), "");
    EXPECT_EQ(Beginning(text, 2), "a\u00E9");
    EXPECT_EQ(Beginning(text, 3), "a\u00E9") << "half a character is none";
    EXPECT_EQ(Beginning(text, 4), "a\u00E9\U0001F600");
    EXPECT_EQ(Beginning(text, 99), text);
    EXPECT_EQ(Beginning("", 1), "");
}

TEST(Text, LoneSurrogatesAndOddBytesAreNoCharacters) {
    constexpr std::array<std::byte, 5> kBytes = {std::byte{0x00}, std::byte{0xD8}, std::byte{'a'},
                                                 std::byte{0}, std::byte{'x'}};
    EXPECT_EQ(Utf16ToUtf8(kBytes), "\uFFFDa");
}

TEST(Text, BytesThatAreNoUtf8BecomeReplacementCharacters) {
    EXPECT_EQ(Utf8ToUtf16("\xFFz\xC3"), u"\uFFFDz\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xC0\x80"), u"\uFFFD\uFFFD") << "an overlong NUL is two wrong bytes";
}

TEST(Text, UpperCaseGoesBeyondAscii) {
    EXPECT_EQ(UpperCase("straße \u00E9\u0436\u03C9"), "STRAßE \u00C9\u0416\u03A9");
    EXPECT_TRUE(EqualNoCase("\u0418\u0432\u0430\u043D", "\u0438\u0412\u0410\u041D"));
    EXPECT_FALSE(EqualNoCase("ab", "abc"));
}

TEST(Text, APlainLineHoldsNothingThatSteersATerminal) {
    EXPECT_EQ(PlainLine("a\r\nb\tc\x1B[2J\x7F"), "a??b?c?[2J?");
    EXPECT_EQ(PlainLine("\u0080\u009B31m\u009F"), "??31m?") << "C1: U+009B begins a sequence as ESC [ does";
    EXPECT_EQ(PlainLine("\u00A0\u0416\U0001F600 \u200D"), "\u00A0\u0416\U0001F600 \u200D") << "ordinary text";
    EXPECT_EQ(PlainLine("\xFFz\xC3"), "\uFFFDz\uFFFD") << "bytes that are no UTF-8";
    EXPECT_EQ(PlainLine(std::string_view("a\0b", 3)), "a?b");
    for (const char32_t steering :
         U"\u061C\u200E\u200F\u2028\u2029\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069"sv) {
        std::string text;
        AppendCharacter(text, steering);
        EXPECT_EQ(PlainLine("fdp." + text + "exe"), "fdp.?exe") << static_cast<std::uint32_t>(steering);
    }
    for (const char32_t ordinary : U"\u061B\u061D\u200D\u2010\u2027\u202F\u2065\u206A"sv) {
        std::string text;
        AppendCharacter(text, ordinary);
        EXPECT_EQ(PlainLine(text), text) << static_cast<std::uint32_t>(ordinary);
    }
}

TEST(Text, ReplaceAllDoesNotLookAtWhatItPutIn) {
    EXPECT_EQ(ReplaceAll("aXbX", "X", "XX"), "aXXbXX");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceAll("aaa", "a", ""), "");
    EXPECT_EQ(ReplaceAll("ab", "ab", "c"), "c");
    EXPECT_EQ(ReplaceAll("xab", "b", "c"), "xac");
}

TEST(Text, ReplaceAllMovesEachCharacterOnce) {
    // To move all that follows at each of half a million places would take minutes.
    std::string text;
    for (int i = 0; i < 500'000; ++i) {
        text += "%SystemDrive%";
    }
    EXPECT_EQ(ReplaceAll(std::move(text), "%SystemDrive%", "C:").size(), 1'000'000U);
}

}  // namespace
}  // namespace ostrevin
