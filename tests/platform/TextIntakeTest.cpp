#include <gtest/gtest.h>

#include "platform/Text.h"
#include "platform/TextIntake.h"

namespace ostrevin {
namespace {

TEST(TextIntake, TakesWhatARealListHoldsAsItIs) {
    TextIntake intake;
    for (int i = 0; i < 100'000; ++i) {
        std::string text = "C:\\Documents and Settings\\anna\\My Documents\\letter.doc";
        const std::string before = text;
        ASSERT_TRUE(intake.Take(text));
        ASSERT_EQ(text, before);
    }
    std::string longest(kLongestText, 'x');
    EXPECT_TRUE(intake.Take(longest));
    EXPECT_EQ(longest.size(), kLongestText);
    EXPECT_EQ(intake.Loss(), "");
}

TEST(TextIntake, CutsATextLongerThanAnyPathBetweenCharacters) {
    TextIntake intake;
    std::string text(kLongestText - 1, 'x');
    text += "\U0001F600y";
    EXPECT_TRUE(intake.Take(text));
    EXPECT_EQ(text, std::string(kLongestText - 1, 'x')) << "half a character is none";
    EXPECT_EQ(intake.Loss(), "Texts of more than 32767 characters are cut.");
    std::string cyrillic;
    for (std::uint32_t i = 0; i < kLongestText; ++i) {
        cyrillic += "\u0416";
    }
    EXPECT_TRUE(intake.Take(cyrillic));
    EXPECT_EQ(cyrillic.size(), 2 * std::size_t{kLongestText}) << "characters count, not bytes";
}

TEST(TextIntake, TakesNoMoreThanItsMost) {
    TextIntake intake;
    std::size_t bytes = 0;
    int texts = 0;
    for (std::string text(30'000, 'x'); intake.Take(text); ++texts) {
        bytes += text.size();
    }
    EXPECT_LE(bytes, TextIntake::kMostOfList);
    EXPECT_GT(bytes, TextIntake::kMostOfList * 9 / 10);
    EXPECT_EQ(intake.Loss(), "There is more text than any real list holds: the rest is left out.");
    std::string empty;
    EXPECT_FALSE(intake.Take(empty)) << "what is full stays full";

    TextIntake ofEmpty;
    int empties = 0;
    for (; ofEmpty.Take(empty); ++empties) {
    }
    EXPECT_LE(empties, 1 << 20U) << "texts without characters take memory, too";
}

}  // namespace
}  // namespace ostrevin
