// The order of texts in several languages, and the ranks of many texts at once.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "toolkit/qt/QtCollation.h"

namespace ostrevin::qt {
namespace {

using Strings = std::vector<std::string>;
using Places = std::vector<std::size_t>;

Places RankOf(const QtCollation& collation, const Strings& texts) {
    const std::vector<std::string_view> views(texts.begin(), texts.end());
    return collation.Rank(views);
}

int Sign(int compared) {
    return compared < 0 ? -1 : static_cast<int>(compared > 0);
}

int Sign(std::size_t left, std::size_t right) {
    return left < right ? -1 : static_cast<int>(left > right);
}

class QtCollationTest : public ::testing::TestWithParam<const char*> {
  protected:
    /// Every pair must be ranked as it is compared, and no place may be left out.
    void ExpectRanksFollowComparison(const Strings& texts) const {
        const Places places = RankOf(collation, texts);
        ASSERT_EQ(places.size(), texts.size());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (std::size_t j = 0; j < texts.size(); ++j) {
                ASSERT_EQ(Sign(places[i], places[j]), Sign(collation.Compare(texts[i], texts[j])))
                    << texts[i] << " and " << texts[j];
            }
        }
        Places distinct = places;
        std::sort(distinct.begin(), distinct.end());
        distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
        EXPECT_EQ(distinct.front(), 0U);
        EXPECT_EQ(distinct.back(), distinct.size() - 1);
    }
    Strings RandomTexts(const Strings& alphabet, std::size_t longest) {
        Strings texts;
        for (int i = 0; i < 400; ++i) {
            std::string& text = texts.emplace_back();
            for (std::size_t length = random_() % (longest + 1); length > 0; --length) {
                text += alphabet[random_() % alphabet.size()];
            }
        }
        return texts;
    }

    QtCollation collation{QLocale(GetParam())};

  private:
    std::mt19937 random_{1};
};

Strings Ascii(char first, char last) {
    Strings characters;
    for (char character = first; character <= last; ++character) {
        characters.emplace_back(1, character);
    }
    return characters;
}

TEST_P(QtCollationTest, TheEmptyTextThenAmpersandThenDigitsThenLetters) {
    const Strings inOrder = {"", "&", "&0", "&9", "0", "00", "01", "10", "9", "a", "ab", "b"};
    EXPECT_EQ(RankOf(collation, inOrder), (Places{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
    for (std::size_t i = 1; i < inOrder.size(); ++i) {
        EXPECT_LT(collation.Compare(inOrder[i - 1], inOrder[i]), 0) << inOrder[i];
    }
}

TEST_P(QtCollationTest, TakesNoRegardToCase) {
    EXPECT_EQ(collation.Compare("C:\\Setup.EXE", "c:\\SETUP.exe"), 0);
    EXPECT_EQ(collation.Compare("\u00c4\u0424", "\u00e4\u0444"), 0);
    EXPECT_EQ(RankOf(collation, {"b", "A", "B", "a"}), (Places{1, 0, 1, 0}));
}

TEST_P(QtCollationTest, DigitsAndPunctuationRankAsTheyCompare) {
    Strings plain = Ascii(' ', '@');
    for (const Strings& more : {Ascii('[', '`'), Ascii('{', '~')}) {
        plain.insert(plain.end(), more.begin(), more.end());
    }
    ExpectRanksFollowComparison(plain);
    ExpectRanksFollowComparison(RandomTexts(plain, 3));
    ExpectRanksFollowComparison(RandomTexts({"0", "1", "9", "&", ".", "/", ":", " ", "-"}, 40));
    ExpectRanksFollowComparison(RandomTexts({"0", "&"}, 20));
}

TEST_P(QtCollationTest, TextsWithLettersRankAsTheyCompare) {
    ExpectRanksFollowComparison(RandomTexts(Ascii(' ', '~'), 4));
    ExpectRanksFollowComparison(
        RandomTexts({"a", "A", "c", "C", "h", "d", "z", "Z", "s", "l", "j", "n", "y", "i", "g"}, 5));
    ExpectRanksFollowComparison(RandomTexts({"C:\\", "Program Files", "\\", "setup.exe", "a", "1"}, 6));
}

TEST_P(QtCollationTest, TextsOfAllKindsRankAsTheyCompare) {
    ExpectRanksFollowComparison(RandomTexts(
        {"\u00e4", "\u00c4",     "a",      "\u0301", "\u0308", "e",      "\u00e9", "\u00df", "ss",
         "\u0131", "I",          "i",      "\u0130", "\u4e2d", "\u0e40", "\u0e01", "\u05d0", "\u0627",
         "\uac00", "\U0001F600", "\u200d", "\x01",   "\xff",   "\u00ad", "0",      "&",      "-"},
        4));
    ExpectRanksFollowComparison({"", "\x01", "\u200d\u00ad", "", "&", "a\x01", "a"});
}

TEST_P(QtCollationTest, OneTextOrNone) {
    EXPECT_EQ(RankOf(collation, {}), Places{});
    EXPECT_EQ(RankOf(collation, {"a"}), Places{0});
    EXPECT_EQ(RankOf(collation, {"1"}), Places{0});
    EXPECT_EQ(RankOf(collation, {"", ""}), (Places{0, 0}));
}

INSTANTIATE_TEST_SUITE_P(Locales, QtCollationTest,
                         ::testing::Values("C", "en_US", "de_DE", "cs_CZ", "da_DK", "hu_HU", "lt_LT", "fr_CA",
                                           "tr_TR", "th_TH", "ja_JP", "zh_CN", "ar_EG"));

}  // namespace
}  // namespace ostrevin::qt
