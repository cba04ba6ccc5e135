#include <gtest/gtest.h>

#include "platform/volume/CharsetDecoder.h"

namespace ostrevin {
namespace {

TEST(CharsetDecoder, KnowsTheCodePagesOfWindows) {
    EXPECT_EQ(CharsetDecoder(1252).Decode("caf\xE9 \x80"), "café €");
    EXPECT_EQ(CharsetDecoder(1251).Decode("\xCF\xF0\xE8\xE2\xE5\xF2"), "Привет");
    EXPECT_EQ(CharsetDecoder(1250).Decode("\xE8\xF8\x9E"), "čřž");
    EXPECT_EQ(CharsetDecoder(1253).Decode("\xE1\xE2\xE3"), "αβγ");
    EXPECT_EQ(CharsetDecoder(1255).Decode("\xF9\xEC\xE5\xED"), "שלום");
    EXPECT_EQ(CharsetDecoder(1258).Decode("Vi\xEAt"), "Viêt");
    EXPECT_EQ(CharsetDecoder(874).Decode("\xA1\xA2"), "กข");
    EXPECT_EQ(CharsetDecoder(437).Decode("\x81\xC9"), "ü╔");
    EXPECT_EQ(CharsetDecoder(850).Decode("\x9B"), "ø");
    EXPECT_EQ(CharsetDecoder(866).Decode("\x8F\xE0"), "Пр");
}

TEST(CharsetDecoder, KnowsCharactersOfTwoBytes) {
    EXPECT_EQ(CharsetDecoder(932).Decode("a\x93\xFA\x96\x7B\xB1"), "a日本ｱ");
    EXPECT_EQ(CharsetDecoder(936).Decode("\xD6\xD0\xCE\xC4"), "中文");
    EXPECT_EQ(CharsetDecoder(949).Decode("\xC7\xD1"), "한");
    EXPECT_EQ(CharsetDecoder(950).Decode("\xA4\xA4"), "中");
    EXPECT_EQ(CharsetDecoder(932).Decode("\x93"), "\uFFFD") << "the second byte is missing";
    EXPECT_EQ(CharsetDecoder(932).Decode("\x93\x01z"), "\uFFFD\x01z");
}

TEST(CharsetDecoder, LeavesNoByteOut) {
    const CharsetDecoder decoder(1252);
    EXPECT_EQ(decoder.Decode("\x81\x8D"), "\u0081\u008D");
    EXPECT_EQ(decoder.Decode(std::string_view("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(decoder.Decode(""), "");
}

TEST(CharsetDecoder, TakesTheWesternPageForAnUnknownOne) {
    EXPECT_EQ(CharsetDecoder(0).Decode("\xE9"), "é");
    EXPECT_EQ(CharsetDecoder(4294967295U).Decode("\xE9"), "é");
    EXPECT_EQ(CharsetDecoder("no such set").Decode("\xE9"), "é");
}

TEST(CharsetEncoder, WritesTheCodePagesOfWindows) {
    EXPECT_EQ(CharsetEncoder(1252).Encode("café €"), "caf\xE9 \x80");
    EXPECT_EQ(CharsetEncoder(1251).Encode("Привет"), "\xCF\xF0\xE8\xE2\xE5\xF2");
    EXPECT_EQ(CharsetEncoder(932).Encode("a日本ｱ\\"), "a\x93\xFA\x96\x7B\xB1\\");
    EXPECT_EQ(CharsetEncoder(0).Encode("é"), "\xE9") << "western for an unknown one";
}

TEST(CharsetEncoder, PutsAQuestionMarkForWhatHasNoPlace) {
    const CharsetEncoder encoder(1252);
    EXPECT_EQ(encoder.Encode("a日本\U0001F600b"), "a???b");
    EXPECT_EQ(encoder.Encode("\xED\xA0\x80"), "???") << "a lone surrogate";
    EXPECT_EQ(encoder.Encode("a\xFF\xE9z\xC3"), "a??z?") << "no UTF-8";
    EXPECT_EQ(encoder.Encode("\U000E0041"), "?") << "a mark that stands for nothing";
    EXPECT_EQ(encoder.Encode("\uFFFD"), "?");
    EXPECT_EQ(encoder.Encode(""), "");
}

TEST(CharsetEncoder, GivesBackEveryByteOfASingleByteSet) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(CharsetEncoder(1252).Encode(CharsetDecoder(1252).Decode(all)), all);
    EXPECT_EQ(CharsetEncoder(1251).Encode(CharsetDecoder(1251).Decode(all)), all);
    EXPECT_EQ(CharsetEncoder(932).Encode("\u0081"), "?") << "a byte that leads another";
}

}  // namespace
}  // namespace ostrevin
