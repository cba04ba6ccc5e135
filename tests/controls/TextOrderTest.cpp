// How much of the texts an order looks at.
#include <algorithm>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/TextOrder.h"

namespace ostrevin {
namespace {

/// Goes by the bytes, and notes the longest text that it is given.
class PlainOrder : public TextOrder {
  public:
    mutable std::size_t longest = 0;

  protected:
    [[nodiscard]] int CompareWhole(std::string_view left, std::string_view right) const override {
        longest = std::max({longest, left.size(), right.size()});
        return left.compare(right);
    }
    [[nodiscard]] std::vector<std::size_t> RankByKeys(
        std::span<const std::string_view> texts) const override {
        std::vector<OrderedText> order = Unordered(texts.size());
        std::ranges::sort(order, [&](const OrderedText& left, const OrderedText& right) {
            return CompareWhole(texts[left.number], texts[right.number]) < 0;
        });
        for (std::size_t i = 1; i < order.size(); ++i) {
            order[i].sameAsBefore = texts[order[i - 1].number] == texts[order[i].number];
        }
        return PlacesOf(order);
    }
};

using Places = std::vector<std::size_t>;

TEST(TextOrderTest, ATextBeyondEveryPathIsComparedByItsBeginning) {
    const PlainOrder order;
    const std::string longText(10 * TextOrder::kMostCompared, '\x01');
    EXPECT_EQ(order.Compare(longText + "a", longText + "b"), 0);
    EXPECT_LT(order.Compare("\x01", longText), 0);
    const std::vector<std::string_view> texts = {"b", longText, "a", longText};
    EXPECT_EQ(order.Rank(texts), (Places{2, 0, 1, 0}));
    EXPECT_EQ(order.longest, TextOrder::kMostCompared);
}

TEST(TextOrderTest, TheLongestPathIsComparedWhole) {
    const PlainOrder order;
    std::string longest;
    while (longest.size() + 3 < TextOrder::kMostCompared) {
        longest += "\u4e2d";
    }
    const std::string first = longest + "\u4e2d";
    const std::string second = longest + "\u4e2e";
    EXPECT_LT(order.Compare(first, second), 0);
    EXPECT_EQ(order.Rank(std::vector<std::string_view>{second, first}), (Places{1, 0}));
}

TEST(TextOrderTest, AnAsciiTextBeyondEveryPathIsRankedByItsBeginning) {
    const PlainOrder order;
    const std::string longText(10 * TextOrder::kMostCompared, 'a');
    const std::string first = longText + "a";
    const std::string second = longText + "b";
    EXPECT_EQ(order.Rank(std::vector<std::string_view>{second, first, "0"}), (Places{1, 1, 0}));
}

}  // namespace
}  // namespace ostrevin
