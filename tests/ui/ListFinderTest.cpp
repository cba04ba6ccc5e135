// The list finder, on a list without a toolkit.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "controls/Form.h"
#include "controls/ListView.h"
#include "tests/support/TestToolkit.h"
#include "ui/ListFinder.h"

namespace ostrevin {
namespace {

class ListFinderTest : public ::testing::Test {
  protected:
    ListFinderTest() {
        list.AddColumn("Text", 1000);
        list.AddColumn("More", 500);
        finder.SetList(&list);
        for (const char* text : {"alpha", "BETA", "gamma", "Alphabet", "delta"}) {
            list.Add("", text);
        }
    }
    /// The text of the selected item, or "-".
    [[nodiscard]] std::string Selected() const {
        return list.SelectedItem() == nullptr ? "-" : list.SelectedItem()->Text();
    }
    [[nodiscard]] ColumnHeader& First() { return list.Column(1); }

    testing::TestToolkit toolkit;
    Form form{toolkit, "form"};
    ListView list{&form, "list"};
    ListFinder finder;
};

/// Notes which rows a list brings into sight.
class ScrollingView : public ListViewView {
  public:
    void Moved() override {}
    void StateChanged() override {}
    void RowsChanged() override {}
    void RowChanged(std::size_t /*row*/) override {}
    void SelectionChanged() override {}
    void SortChanged() override {}
    void LockUpdate(bool /*locked*/) override {}
    void EnsureVisible(std::size_t row) override { shown.push_back(row); }
    [[nodiscard]] std::uint32_t ExtendedStyle() const override { return 0; }
    void SetExtendedStyle(std::uint32_t /*style*/) override {}

    std::vector<std::size_t> shown;
};

TEST_F(ListFinderTest, BeginsWithoutListAndText) {
    ListFinder fresh;
    EXPECT_EQ(fresh.List(), nullptr);
    EXPECT_EQ(fresh.SearchString(), "");
    fresh.SetSearchString("alpha");
    EXPECT_FALSE(fresh.Find(First()));
    EXPECT_FALSE(fresh.FindNext(First()));
    EXPECT_FALSE(fresh.FindPrevious(First()));
    EXPECT_EQ(finder.List(), &list);
}

TEST_F(ListFinderTest, FindsTheFirstMatchFromTheTop) {
    list.Select(&list.Item(3));
    finder.SetSearchString("LPHA");
    EXPECT_TRUE(finder.Find(First()));
    EXPECT_EQ(Selected(), "alpha");
    finder.SetSearchString("eta");
    EXPECT_TRUE(finder.Find(First()));
    EXPECT_EQ(Selected(), "BETA");
}

TEST_F(ListFinderTest, FindsNothingForNoTextOrInNoItems) {
    list.Select(&list.Item(3));
    EXPECT_FALSE(finder.Find(First()));
    EXPECT_FALSE(finder.FindNext(First()));
    EXPECT_FALSE(finder.FindPrevious(First()));
    finder.SetSearchString("omega");
    EXPECT_FALSE(finder.Find(First()));
    EXPECT_EQ(Selected(), "gamma");
    list.Clear();
    finder.SetSearchString("alpha");
    EXPECT_FALSE(finder.Find(First()));
    EXPECT_FALSE(finder.FindNext(First()));
    EXPECT_FALSE(finder.FindPrevious(First()));
}

TEST_F(ListFinderTest, FindNextEndsWithTheLastMatch) {
    finder.SetSearchString("alpha");
    EXPECT_TRUE(finder.Find(First()));
    EXPECT_TRUE(finder.FindNext(First()));
    EXPECT_EQ(Selected(), "Alphabet");
    EXPECT_FALSE(finder.FindNext(First()));
    EXPECT_EQ(Selected(), "Alphabet") << "the selection stays, and the search does not start again";
}

TEST_F(ListFinderTest, FindNextStartsAtTheTopWhenNothingIsSelected) {
    finder.SetSearchString("alpha");
    EXPECT_TRUE(finder.FindNext(First()));
    EXPECT_EQ(Selected(), "alpha");
}

TEST_F(ListFinderTest, FindNextFromTheLastItemFindsNothing) {
    list.Select(&list.Item(5));
    finder.SetSearchString("delta");
    EXPECT_FALSE(finder.FindNext(First()));
    EXPECT_EQ(Selected(), "delta");
}

TEST_F(ListFinderTest, FindPreviousGoesUp) {
    finder.SetSearchString("alpha");
    EXPECT_FALSE(finder.FindPrevious(First())) << "nothing is selected";
    EXPECT_EQ(Selected(), "-");
    list.Select(&list.Item(5));
    EXPECT_TRUE(finder.FindPrevious(First()));
    EXPECT_EQ(Selected(), "Alphabet");
    EXPECT_TRUE(finder.FindPrevious(First()));
    EXPECT_EQ(Selected(), "alpha");
    EXPECT_FALSE(finder.FindPrevious(First()));
    EXPECT_EQ(Selected(), "alpha");
}

TEST_F(ListFinderTest, TheHeaderTellsTheColumn) {
    list.Item(4).SetSubItem(1, "Yes");
    finder.SetSearchString("yes");
    EXPECT_FALSE(finder.Find(First()));
    EXPECT_TRUE(finder.Find(list.Column(2)));
    EXPECT_EQ(Selected(), "Alphabet");
}

TEST_F(ListFinderTest, BringsWhatItFindsIntoSightAndTellsNoClick) {
    ScrollingView view;
    list.Attach(&view);
    bool clicked = false;
    list.ItemClick = [&](ListItem& /*item*/) { clicked = true; };
    finder.SetSearchString("a");
    EXPECT_TRUE(finder.Find(First()));
    EXPECT_TRUE(finder.FindNext(First()));
    EXPECT_TRUE(finder.FindPrevious(First()));
    EXPECT_EQ(view.shown, (std::vector<std::size_t>{0, 1, 0}));
    EXPECT_FALSE(clicked);
    list.Attach(nullptr);
}

}  // namespace
}  // namespace ostrevin
