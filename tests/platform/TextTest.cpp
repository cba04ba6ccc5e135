#include <array>
#include <gtest/gtest.h>

#include "platform/Text.h"

namespace ostrevin {
namespace {

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

TEST(Text, ReplaceAllDoesNotLookAtWhatItPutIn) {
    EXPECT_EQ(ReplaceAll("aXbX", "X", "XX"), "aXXbXX");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
}

}  // namespace
}  // namespace ostrevin
