// The list sorter and its keys, on a list without a toolkit.
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "controls/Form.h"
#include "controls/ListView.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/TestToolkit.h"
#include "ui/ListSorter.h"
#include "ui/SortKeys.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;
using namespace std::string_literals;

const std::string kZeros(30, '0');
const std::string kNines(30, '9');

/// A list's view that notes its locks, and lets a test look at the list when it was sorted.
class SpyView : public ListViewView {
  public:
    void Moved() override {}
    void StateChanged() override {}
    void RowsChanged() override {
        if (onSorted) {
            onSorted();
        }
    }
    void RowChanged(std::size_t /*row*/) override { unlockedChanges += locked ? 0 : 1; }
    void SelectionChanged() override {}
    void SortChanged() override {}
    void LockUpdate(bool lock) override {
        locked = lock;
        ++locks;
    }
    void EnsureVisible(std::size_t /*row*/) override {}
    [[nodiscard]] std::uint32_t ExtendedStyle() const override { return 0; }
    void SetExtendedStyle(std::uint32_t /*style*/) override {}

    std::function<void()> onSorted;
    bool locked = false;
    int locks = 0;
    int unlockedChanges = 0;
};

/// A platform whose dates cannot be read.
class FailingPlatform : public MemoryPlatform {
  public:
    std::optional<double> TextToDate(const std::string& /*text*/) override {
        throw std::runtime_error("no dates");
    }
};

class ListSorterTest : public ::testing::Test {
  protected:
    ListSorterTest() {
        list.AddColumn("Text", 1000);
        list.AddColumn("Number", 500).SetTag("NUMBER");
        list.AddColumn("Date", 500).SetTag("DATE");
        list.Attach(&view);
    }
    ~ListSorterTest() override { list.Attach(nullptr); }
    ListSorterTest(const ListSorterTest&) = delete;
    ListSorterTest& operator=(const ListSorterTest&) = delete;

    /// One item for each text, which stands in a column.
    void Fill(int column, const Strings& texts) {
        list.Clear();
        for (const std::string& text : texts) {
            list.Add("", "").SetCell(column, text);
        }
        view.unlockedChanges = 0;
    }
    void Sort(int column, bool toggleOrder) { ListSorter(platform, list, list.Column(column), toggleOrder); }
    [[nodiscard]] Strings Cells(int column) const {
        Strings texts;
        for (std::size_t i = 1; i <= list.ItemCount(); ++i) {
            texts.push_back(list.Item(i).Cell(column));
        }
        return texts;
    }

    MemoryPlatform platform;
    testing::TestToolkit toolkit;
    Form form{toolkit, "form"};
    ListView list{&form, "list"};
    SpyView view;
};

TEST_F(ListSorterTest, SortsTextWithoutRegardToCase) {
    Fill(1, {"b", "", "C", "a", "10", "9"});
    Sort(1, false);
    EXPECT_EQ(Cells(1), (Strings{"", "10", "9", "a", "b", "C"}));
    EXPECT_TRUE(list.Sorted());
    EXPECT_EQ(list.SortKey(), 0);
    EXPECT_EQ(list.SortOrder(), SortOrder::Ascending);
    EXPECT_EQ(view.locks, 0);
}

TEST_F(ListSorterTest, ATagOfNoMeaningIsText) {
    list.Column(2).SetTag("number");
    Fill(2, {"9", "10"});
    Sort(2, false);
    EXPECT_EQ(Cells(2), (Strings{"10", "9"}));
}

TEST_F(ListSorterTest, SortsNumbersByValue) {
    Fill(2, {"5", "-10", "0", "2.5", "-1", "none"});
    Sort(2, false);
    EXPECT_EQ(Cells(2), (Strings{"none", "-10", "-1", "0", "2.5", "5"}));
    EXPECT_TRUE(list.Sorted());
    EXPECT_EQ(list.SortKey(), 1);
}

TEST_F(ListSorterTest, SortsAFirstColumnOfNumbersToo) {
    list.Column(1).SetTag("NUMBER");
    Fill(1, {"10", "9", "-1"});
    Sort(1, true);
    EXPECT_EQ(Cells(1), (Strings{"10", "9", "-1"}));
    EXPECT_EQ(list.SortKey(), 0);
}

TEST_F(ListSorterTest, SortsDatesInTimeAndEmptyCellsFirst) {
    const Strings inTime = {"",
                            "12/31/2005 11:59:59 PM",
                            "1/2/2006",
                            "1/2/2006 12:00:01 AM",
                            "1/2/2006 9:00:00 AM",
                            "1/2/2006 1:00:00 PM",
                            "10/1/2006",
                            "1/1/2007"};
    Fill(3, {inTime[5], inTime[7], inTime[0], inTime[2], inTime[6], inTime[1], inTime[4], inTime[3]});
    Sort(3, false);
    EXPECT_EQ(Cells(3), inTime);
    EXPECT_EQ(list.SortKey(), 2);
}

TEST_F(ListSorterTest, TwoClicksGiveOppositeDirections) {
    Fill(2, {"1", "3", "2"});
    Sort(2, true);
    EXPECT_EQ(Cells(2), (Strings{"3", "2", "1"})) << "the first click turns the list's direction, too";
    EXPECT_EQ(list.SortOrder(), SortOrder::Descending);
    Sort(2, true);
    EXPECT_EQ(Cells(2), (Strings{"1", "2", "3"}));
    EXPECT_EQ(list.SortOrder(), SortOrder::Ascending);
}

TEST_F(ListSorterTest, TheDirectionBelongsToTheList) {
    Fill(1, {"a", "b"});
    list.Item(1).SetSubItem(1, "1");
    list.Item(2).SetSubItem(1, "2");
    Sort(1, true);
    EXPECT_EQ(Cells(1), (Strings{"b", "a"}));
    Sort(2, true);
    EXPECT_EQ(Cells(1), (Strings{"a", "b"}));
    Sort(1, true);
    EXPECT_EQ(Cells(1), (Strings{"b", "a"}));
    Sort(2, false);
    EXPECT_EQ(Cells(1), (Strings{"b", "a"})) << "without a click the direction stays";
}

TEST_F(ListSorterTest, TagsAndTextsAreTheSameAfterwards) {
    Fill(2, {"10", "", "x"});
    list.Item(1).SetTag("mine");
    for (const bool toggleOrder : {false, true}) {
        Sort(2, toggleOrder);
        Sort(3, toggleOrder);
        Sort(2, false);
    }
    for (std::size_t i = 1; i <= list.ItemCount(); ++i) {
        const ListItem& item = list.Item(i);
        EXPECT_EQ(item.Tag(), item.SubItem(1) == "10" ? "mine" : "");
        EXPECT_EQ(item.SubItem(2), "");
    }
    EXPECT_EQ(Cells(2).size(), 3U);
    EXPECT_EQ(Cells(2).back(), "10");
}

TEST_F(ListSorterTest, WhatStandsBehindAZeroCharacterIsNotPutBack) {
    Fill(2, {"1", "2\0x"s});
    list.Item(1).SetTag("kept\0lost"s);
    list.Item(2).SetTag("lost");
    Sort(2, false);
    EXPECT_EQ(Cells(2), (Strings{"2", "1"})) << "a text with a zero character is no number";
    EXPECT_EQ(list.Item(1).Tag(), "x");
    EXPECT_EQ(list.Item(2).Tag(), "kept");
}

TEST_F(ListSorterTest, KeysStandInTheCellsWhileItSorts) {
    Fill(2, {"7"});
    list.Item(1).SetTag("mine");
    Strings seen;
    view.onSorted = [&] {
        seen = {list.Item(1).SubItem(1), list.Item(1).Tag()};
        EXPECT_TRUE(view.locked);
    };
    Sort(2, false);
    EXPECT_EQ(seen, (Strings{kZeros.substr(1) + "7." + kZeros, "7\0mine"s}));
    EXPECT_EQ(view.locks, 2);
    EXPECT_FALSE(view.locked);
    EXPECT_EQ(view.unlockedChanges, 0);
}

TEST_F(ListSorterTest, SortsOnceHoweverMuchChanges) {
    Fill(2, {"1", "2"});
    list.SetSorted(true);
    int sorts = 0;
    view.onSorted = [&] { ++sorts; };
    Sort(2, true);
    EXPECT_EQ(sorts, 1);
    Sort(1, true);
    EXPECT_EQ(sorts, 2);
}

TEST_F(ListSorterTest, AListOfTheSameOrderIsSortedAgain) {
    Fill(2, {"2", "1"});
    Sort(2, false);
    list.Item(1).SetSubItem(1, "3");
    Sort(2, false);
    EXPECT_EQ(Cells(2), (Strings{"2", "3"}));
}

TEST_F(ListSorterTest, AFailureLeavesTheListLocked) {
    Fill(3, {"1/1/2007"});
    FailingPlatform failing;
    EXPECT_THROW(ListSorter(failing, list, list.Column(3), false), std::runtime_error);
    EXPECT_TRUE(view.locked);
}

TEST_F(ListSorterTest, AnEmptyListOnlyTakesTheOrder) {
    Sort(3, true);
    EXPECT_TRUE(list.Sorted());
    EXPECT_EQ(list.SortKey(), 2);
    EXPECT_EQ(list.SortOrder(), SortOrder::Descending);
}

TEST_F(ListSorterTest, AHundredThousandRowsSort) {
    constexpr int kRows = 100000;
    Strings numbers;
    for (int i = 0; i < kRows; ++i) {
        numbers.push_back(std::to_string(i * 7919 % kRows));
    }
    Fill(2, numbers);
    Sort(2, false);
    for (int i = 0; i < kRows; ++i) {
        ASSERT_EQ(list.Item(static_cast<std::size_t>(i) + 1).SubItem(1), std::to_string(i));
    }
}

TEST(SortKeysTest, PositiveNumbers) {
    EXPECT_EQ(NumberKey("7"), kZeros.substr(1) + "7." + kZeros);
    EXPECT_EQ(NumberKey("007"), NumberKey("7"));
    EXPECT_EQ(NumberKey("999999999999999"), kZeros.substr(15) + "999999999999999." + kZeros);
    EXPECT_EQ(NumberKey("2.5"), kZeros.substr(1) + "2.5" + kZeros.substr(1));
    EXPECT_EQ(NumberKey("1e3"), NumberKey("1000"));
    EXPECT_EQ(NumberKey("9007199254740993"), NumberKey("9007199254740992")) << "what a double holds";
    EXPECT_EQ(NumberKey("0.1"), kZeros + ".100000000000000005551115123126") << "every decimal of the double";
    EXPECT_EQ(NumberKey("1e-40"), kZeros + "." + kZeros);
    // One part and three parts of 2 to the power of 31, which have 31 decimals: the half goes to the even
    // one.
    EXPECT_EQ(NumberKey("1.0000000004656612873077392578125"),
              kZeros.substr(1) + "1.000000000465661287307739257812");
    EXPECT_EQ(NumberKey("1.0000000013969838619232177734375"),
              kZeros.substr(1) + "1.000000001396983861923217773438");
}

TEST(SortKeysTest, ZeroAndNegativeNumbers) {
    const std::string zero = "&" + kNines + "." + kNines;
    EXPECT_EQ(NumberKey("0"), zero);
    EXPECT_EQ(NumberKey("000"), zero);
    EXPECT_EQ(NumberKey("-0"), zero);
    EXPECT_EQ(NumberKey("0.0"), zero);
    EXPECT_EQ(NumberKey("-1234567890"), "&" + kNines.substr(10) + "8765432109." + kNines);
    EXPECT_EQ(NumberKey("-2.5"), "&" + kNines.substr(1) + "7.4" + kNines.substr(1));
}

TEST(SortKeysTest, NumbersFromTenToTheThirtiethHaveLongerKeys) {
    EXPECT_EQ(NumberKey("1e29").size(), 61U);
    EXPECT_EQ(NumberKey("1e30"), "1000000000000000019884624838656." + kZeros);
    EXPECT_EQ(NumberKey("-1e30"), "&8999999999999999980115375161343." + kNines);
    EXPECT_EQ(NumberKey("1.7976931348623157e308").size(), 309U + 31U);
}

TEST(SortKeysTest, FormsOfANumber) {
    for (const char* text : {" 5", "5 ", "\t5\t", "+5", "5.", "5.0", "05", "0.5e1", "50E-1", " +5.e+0 "}) {
        EXPECT_EQ(NumberKey(text), NumberKey("5")) << text;
    }
    EXPECT_EQ(NumberKey(".5"), NumberKey("0.5"));
    EXPECT_EQ(NumberKey("-.5"), NumberKey("-0.5"));
    for (const char* text :
         {"",    " ",   "+",   "-",    ".",   "e5",       "5e",   "5x",  "x5",    "5 5",   "--5",
          "+-5", "- 5", "inf", "-inf", "nan", "infinity", "0x10", "1,5", "1e999", "-1e999"}) {
        EXPECT_EQ(NumberKey(text), "") << text;
    }
}

TEST(SortKeysTest, Dates) {
    MemoryPlatform platform;
    EXPECT_EQ(DateKey(platform, "12/31/2006 11:05:09 PM"), "20061231230509");
    EXPECT_EQ(DateKey(platform, "1/2/2006"), "20060102000000");
    EXPECT_EQ(DateKey(platform, "1/2/0987"), "9870102000000") << "the year is not padded";
    EXPECT_EQ(DateKey(platform, "2/30/2006"), "");
    EXPECT_EQ(DateKey(platform, ""), "");
}

}  // namespace
}  // namespace ostrevin
