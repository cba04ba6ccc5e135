// The list filter, on a list without a toolkit.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "controls/Form.h"
#include "controls/ListView.h"
#include "tests/support/TestToolkit.h"
#include "tests/support/WatchingView.h"
#include "ui/ListFilter.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

class ListFilterTest : public ::testing::Test {
  protected:
    ListFilterTest() {
        list.AddColumn("Text", 1000);
        list.AddColumn("More", 500);
        filter.SetList(&list);
    }
    void Fill(const Strings& texts) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            list.Add(std::to_string(i) + "KEY", texts[i]);
        }
    }
    void FilterBy(const std::string& text) {
        filter.SetFilterString(text);
        filter.Filter(list.Column(1));
    }
    [[nodiscard]] Strings Texts() const {
        Strings texts;
        for (std::size_t i = 1; i <= list.ItemCount(); ++i) {
            texts.push_back(list.Item(i).Text());
        }
        return texts;
    }

    testing::TestToolkit toolkit;
    Form form{toolkit, "form"};
    ListView list{&form, "list"};
    ListFilter filter;
};

TEST_F(ListFilterTest, BeginsWithoutListTextAndFilter) {
    const ListFilter fresh;
    EXPECT_EQ(fresh.List(), nullptr);
    EXPECT_EQ(fresh.FilterString(), "");
    EXPECT_FALSE(fresh.Filtered());
    EXPECT_EQ(filter.List(), &list);
}

TEST_F(ListFilterTest, KeepsWhatHoldsTheTextInAnyCase) {
    Fill({"C:\\APP\\SETUP.EXE", "notepad.exe", "readme.txt"});
    list.Item(3).SetSubItem(1, "made by setup.exe");
    FilterBy("exe");
    EXPECT_EQ(Texts(), (Strings{"C:\\APP\\SETUP.EXE", "notepad.exe"})) << "other columns do not count";
    EXPECT_TRUE(filter.Filtered());
}

TEST_F(ListFilterTest, CaseGoesBeyondAscii) {
    Fill({"\u00c4rger.doc", "\u043a\u043d\u0438\u0433\u0430.doc", "Arger.doc"});
    FilterBy("\u00e4R");
    EXPECT_EQ(Texts(), (Strings{"\u00c4rger.doc"}));
    EXPECT_TRUE(filter.UnFilter());
    FilterBy("\u041d\u0418\u0413");
    EXPECT_EQ(Texts(), (Strings{"\u043a\u043d\u0438\u0433\u0430.doc"}));
}

TEST_F(ListFilterTest, AnotherHeaderMeansItsSubItems) {
    Fill({"a", "b", "yes"});
    list.Item(2).SetSubItem(1, "Yes");
    filter.SetFilterString("yes");
    filter.Filter(list.Column(2));
    EXPECT_EQ(Texts(), (Strings{"b"})) << "a sub-item that was never set is empty";
}

TEST_F(ListFilterTest, AListInWhichEachItemMatchesIsFilteredToo) {
    Fill({"a1", "a2"});
    FilterBy("A");
    EXPECT_EQ(Texts(), (Strings{"a1", "a2"}));
    EXPECT_TRUE(filter.Filtered());
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_FALSE(filter.Filtered());
    EXPECT_EQ(Texts(), (Strings{"a1", "a2"}));
}

TEST_F(ListFilterTest, AListInWhichNoItemMatchesComesBackWhole) {
    Fill({"a", "b", "c"});
    FilterBy("x");
    EXPECT_EQ(list.ItemCount(), 0U);
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_EQ(Texts(), (Strings{"c", "b", "a"}));
}

TEST_F(ListFilterTest, AnUnsortedListHasThemBackInReverseAtItsEnd) {
    Fill({"A", "B", "C"});
    FilterBy("B");
    EXPECT_EQ(Texts(), (Strings{"B"}));
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_EQ(Texts(), (Strings{"B", "C", "A"}));
}

TEST_F(ListFilterTest, ASortedListHasThemBackInPlace) {
    Fill({"b", "c", "a"});
    list.SetSortOrder(SortOrder::Descending);
    list.SetSorted(true);
    FilterBy("B");
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_TRUE(list.Sorted());
    EXPECT_EQ(Texts(), (Strings{"c", "b", "a"}));
}

TEST_F(ListFilterTest, WhatComesBackIsAsItWas) {
    Fill({"a", "b"});
    list.Item(1).SetTag("tag");
    list.Item(1).SetSubItem(1, "more");
    FilterBy("b");
    EXPECT_THROW(static_cast<void>(list.Item("0KEY")), ControlError);
    EXPECT_TRUE(filter.UnFilter());
    const ListItem& item = list.Item("0KEY");
    EXPECT_EQ(item.Text(), "a");
    EXPECT_EQ(item.Tag(), "tag");
    EXPECT_EQ(item.SubItem(1), "more");
}

TEST_F(ListFilterTest, AnEmptyTextOrNoListFiltersNothing) {
    Fill({"a"});
    FilterBy("");
    EXPECT_FALSE(filter.Filtered());
    EXPECT_EQ(list.ItemCount(), 1U);
    EXPECT_FALSE(filter.UnFilter());
    filter.SetList(nullptr);
    FilterBy("x");
    EXPECT_FALSE(filter.Filtered());
}

TEST_F(ListFilterTest, UndoingNeedsTheList) {
    Fill({"a"});
    FilterBy("x");
    filter.SetList(nullptr);
    EXPECT_FALSE(filter.UnFilter());
    EXPECT_TRUE(filter.Filtered());
    filter.SetList(&list);
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_EQ(Texts(), (Strings{"a"}));
}

TEST_F(ListFilterTest, ASecondFilterNeedsReFilter) {
    Fill({"ab", "a", "b", "c"});
    FilterBy("a");
    FilterBy("b");
    EXPECT_EQ(Texts(), (Strings{"ab", "a"}));
    filter.ReFilter(list.Column(1));
    EXPECT_EQ(Texts(), (Strings{"ab"}));
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_EQ(Texts(), (Strings{"ab", "c", "b", "a"})) << "what went later comes back later";
}

TEST_F(ListFilterTest, ReFilterFiltersAnUnfilteredListToo) {
    Fill({"a", "b"});
    filter.ReFilter(list.Column(1));
    EXPECT_FALSE(filter.Filtered()) << "there is no text yet";
    filter.SetFilterString("b");
    filter.ReFilter(list.Column(1));
    EXPECT_TRUE(filter.Filtered());
    EXPECT_EQ(Texts(), (Strings{"b"}));
}

TEST_F(ListFilterTest, AResetForgetsWhatIsKeptAside) {
    Fill({"a", "b"});
    FilterBy("b");
    filter.ResetFilter();
    EXPECT_FALSE(filter.Filtered());
    EXPECT_EQ(filter.FilterString(), "b");
    EXPECT_FALSE(filter.UnFilter());
    list.Clear();
    Fill({"ba", "c"});
    filter.Filter(list.Column(1));
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_EQ(Texts(), (Strings{"ba", "c"}));
}

TEST_F(ListFilterTest, ASelectedItemThatGoesIsNotSelectedAnyMore) {
    Fill({"a", "b"});
    list.Select(&list.Item(1));
    FilterBy("b");
    EXPECT_EQ(list.SelectedItem(), nullptr);
    list.Select(&list.Item(1));
    EXPECT_TRUE(filter.UnFilter());
    ASSERT_NE(list.SelectedItem(), nullptr);
    EXPECT_EQ(list.SelectedItem()->Text(), "b");
}

TEST_F(ListFilterTest, HidesTheListWhileItWorks) {
    Fill({"a", "b"});
    bool seen = false;
    testing::WatchingView view([&] { seen = seen || list.Visible(); });
    list.Attach(&view);
    list.SetSorted(true);
    seen = false;
    for (const bool visible : {true, false}) {
        list.SetVisible(visible);
        FilterBy("b");
        EXPECT_EQ(list.Visible(), visible);
        EXPECT_TRUE(filter.UnFilter());
        EXPECT_EQ(list.Visible(), visible);
        EXPECT_TRUE(list.Sorted());
    }
    EXPECT_FALSE(seen);
    list.Attach(nullptr);
}

TEST_F(ListFilterTest, SortingIsOffWhileItemsComeBack) {
    Fill({"c", "a", "d", "b"});
    list.SetSorted(true);
    FilterBy("b");
    int added = 0;
    testing::WatchingView view([&] {
        const bool allThere = list.ItemCount() == 4;
        added += allThere ? 0 : 1;
        EXPECT_TRUE(allThere || !list.Sorted());
    });
    list.SetVisible(true);
    list.Attach(&view);
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_GE(added, 2);
    EXPECT_EQ(Texts(), (Strings{"a", "b", "c", "d"}));
    list.Attach(nullptr);
}

TEST_F(ListFilterTest, AHundredThousandItemsComeAndGo) {
    constexpr int kItems = 100000;
    for (int i = 0; i < kItems; ++i) {
        list.Add(std::to_string(i) + "KEY", std::to_string(i));
    }
    list.SetSorted(true);
    const Strings before = Texts();
    FilterBy("77");
    EXPECT_LT(list.ItemCount(), 10000U);
    EXPECT_TRUE(filter.UnFilter());
    EXPECT_EQ(Texts(), before);
}

}  // namespace
}  // namespace ostrevin
