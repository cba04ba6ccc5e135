#include <gtest/gtest.h>
#include <vector>

#include "controls/Form.h"
#include "controls/ListView.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

class ListViewTest : public ::testing::Test {
  protected:
    ListViewTest() {
        list.AddColumn("Text", 1000);
        list.AddColumn("Number", 500);
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
};

TEST_F(ListViewTest, AddsAtTheEndWhileItIsNotSorted) {
    list.Add("1KEY", "b");
    list.Add("0KEY", "a");
    EXPECT_EQ(Texts(), (Strings{"b", "a"}));
    EXPECT_EQ(list.Item("0KEY").Text(), "a");
    EXPECT_EQ(list.IndexOf(list.Item("0KEY")), 2U);
}

TEST_F(ListViewTest, SortsWhenItIsToldTo) {
    for (const char* text : {"b", "C", "a"}) {
        list.Add("", text);
    }
    list.SetSorted(true);
    EXPECT_EQ(Texts(), (Strings{"a", "b", "C"}));
    list.SetSortOrder(SortOrder::Descending);
    EXPECT_EQ(Texts(), (Strings{"C", "b", "a"}));
}

TEST_F(ListViewTest, PutsNewItemsInPlaceWhileItIsSorted) {
    list.SetSorted(true);
    for (const char* text : {"b", "D", "a", "c"}) {
        list.Add("", text);
    }
    EXPECT_EQ(Texts(), (Strings{"a", "b", "c", "D"}));
    list.SetSorted(false);
    list.Add("", "0");
    EXPECT_EQ(Texts().back(), "0");
    list.SetSorted(true);
    EXPECT_EQ(Texts().front(), "0");
}

TEST_F(ListViewTest, SortsByTheTextOfTheSortColumn) {
    list.Add("", "x").SetSubItem(1, "2");
    list.Add("", "y").SetSubItem(1, "1");
    list.Add("", "z");
    list.SetSortKey(1);
    list.SetSorted(true);
    EXPECT_EQ(Texts(), (Strings{"z", "y", "x"})) << "a cell without text comes first";
}

TEST_F(ListViewTest, SortsByAColumnInOneStep) {
    list.Add("", "x").SetSubItem(1, "2");
    list.Add("", "y").SetSubItem(1, "1");
    list.Add("", "z").SetSubItem(1, "3");
    list.SortBy(1, SortOrder::Descending);
    EXPECT_EQ(Texts(), (Strings{"z", "x", "y"}));
    EXPECT_TRUE(list.Sorted());
    EXPECT_EQ(list.SortKey(), 1);
    EXPECT_EQ(list.SortOrder(), SortOrder::Descending);
}

TEST_F(ListViewTest, EqualItemsKeepTheirOrder) {
    for (int i = 0; i < 50; ++i) {
        list.Add(std::to_string(i), "same").SetTag(std::to_string(i));
    }
    for (const SortOrder order : {SortOrder::Ascending, SortOrder::Descending}) {
        list.SortBy(0, order);
        for (int i = 0; i < 50; ++i) {
            EXPECT_EQ(list.Item(static_cast<std::size_t>(i) + 1).Tag(), std::to_string(i));
        }
    }
}

TEST_F(ListViewTest, KeysAreUnique) {
    list.Add("0KEY", "a");
    EXPECT_THROW(list.Add("0KEY", "b"), ControlError);
    EXPECT_EQ(list.ItemCount(), 1U);
    list.Add("", "c");
    list.Add("", "d");
    EXPECT_EQ(list.ItemCount(), 3U) << "an empty key is no key";
    EXPECT_THROW(static_cast<void>(list.Item("1KEY")), ControlError);
    EXPECT_THROW(static_cast<void>(list.Item(4)), ControlError);
}

TEST_F(ListViewTest, SubItemsAreThoseOfItsColumns) {
    ListItem& item = list.Add("", "a");
    EXPECT_EQ(item.SubItem(1), "");
    item.SetSubItem(1, "x");
    EXPECT_EQ(item.Cell(1), "a");
    EXPECT_EQ(item.Cell(2), "x");
    item.SetCell(2, "y");
    EXPECT_EQ(item.SubItem(1), "y");
    item.SetCell(1, "b");
    EXPECT_EQ(item.Text(), "b");
    EXPECT_THROW(item.SetSubItem(2, "y"), ControlError) << "there is no third column";
    EXPECT_THROW(item.SetCell(3, "y"), ControlError);
    EXPECT_THROW(item.SetSubItem(0, "y"), ControlError);
}

TEST_F(ListViewTest, RemovedItemsAreHandedOver) {
    list.Add("0KEY", "a");
    ListItem& second = list.Add("1KEY", "b");
    list.Select(&second);
    const std::unique_ptr<ListItem> removed = list.Remove(second);
    EXPECT_EQ(removed->Text(), "b");
    EXPECT_EQ(list.SelectedItem(), nullptr);
    EXPECT_EQ(Texts(), (Strings{"a"}));
    EXPECT_NO_THROW(list.Add("1KEY", "c")) << "its key is free again";
    EXPECT_THROW(static_cast<void>(list.IndexOf(*removed)), ControlError);
}

TEST_F(ListViewTest, AClickSelectsBeforeItIsTold) {
    list.Add("0KEY", "a");
    const ListItem* told = nullptr;
    list.ItemClick = [&](ListItem& item) {
        told = &item;
        EXPECT_EQ(list.SelectedItem(), &item);
    };
    list.Select(&list.Item(1));
    EXPECT_EQ(told, nullptr) << "a selection by code is no click";
    list.ClickItem(list.Item(1));
    EXPECT_EQ(told, &list.Item(1));
}

TEST_F(ListViewTest, TellsWhenAnotherItemIsSelectedThanBefore) {
    ListItem& first = list.Add("", "a");
    ListItem& second = list.Add("", "b");
    Strings told;
    list.SelectionChange = [&] {
        told.push_back(list.SelectedItem() == nullptr ? "none" : list.SelectedItem()->Text());
    };
    list.Select(&second);
    list.Select(&second);
    list.ClickItem(second);
    list.SetSorted(true);
    list.SetSortOrder(SortOrder::Descending);
    EXPECT_EQ(told, (Strings{"b"}));
    list.ClickItem(first);
    list.Remove(second);
    EXPECT_EQ(told, (Strings{"b", "a"}));
    list.RemoveAll([](const ListItem& /*item*/) { return true; });
    list.Select(&list.Add("", "c"));
    list.Clear();
    EXPECT_EQ(told, (Strings{"b", "a", "none", "c", "none"}));
}

TEST_F(ListViewTest, AnItemThatIsOpenedIsTheSelectedOne) {
    list.Add("", "a");
    list.Add("", "b");
    Strings told;
    list.ItemClick = [&](ListItem& item) { told.push_back("click " + item.Text()); };
    list.DblClick = [&] { told.push_back("open " + list.SelectedItem()->Text()); };
    list.OpenItem(list.Item(2));
    list.OpenItem(list.Item(2));
    EXPECT_EQ(told, (Strings{"click b", "open b", "open b"}));
}

TEST_F(ListViewTest, AClickOnAHeaderTellsTheColumn) {
    int told = 0;
    list.ColumnClick = [&](ColumnHeader& column) { told = column.Index(); };
    list.ClickColumn(2);
    EXPECT_EQ(told, 2);
    EXPECT_THROW(list.ClickColumn(3), ControlError);
}

/// Counts what a list tells its view.
class CountingView : public ListViewView {
  public:
    void Moved() override {}
    void StateChanged() override {}
    void RowsChanged() override { ++rows; }
    void RowChanged(std::size_t row) override { changed.push_back(row); }
    void SelectionChanged() override { ++selections; }
    void SortChanged() override {}
    void LockUpdate(bool /*locked*/) override {}
    void EnsureVisible(std::size_t row) override { shown.push_back(row); }
    [[nodiscard]] std::uint32_t ExtendedStyle() const override { return style; }
    void SetExtendedStyle(std::uint32_t newStyle) override { style = newStyle; }

    int rows = 0;
    int selections = 0;
    std::uint32_t style = 0x4000;
    std::vector<std::size_t> changed;
    std::vector<std::size_t> shown;
};

TEST_F(ListViewTest, TellsItsViewWhichRowChanged) {
    CountingView view;
    list.Attach(&view);
    list.SetSorted(true);
    list.Add("", "b");
    ListItem& first = list.Add("", "a");
    first.SetSubItem(1, "x");
    EXPECT_EQ(view.changed, (std::vector<std::size_t>{0}))
        << "where the row stands now, not where it was added";
    list.EnsureVisible(list.Item(2));
    EXPECT_EQ(view.shown, (std::vector<std::size_t>{1}));
    EXPECT_GE(view.rows, 2);
    list.Attach(nullptr);
}

TEST_F(ListViewTest, TheExtendedStyleIsTheViews) {
    CountingView view;
    list.Attach(&view);
    list.SetExtendedStyle(list.ExtendedStyle() | ListView::kFullRowSelect);
    EXPECT_EQ(view.style, 0x4020U);
    list.Attach(nullptr);
    EXPECT_EQ(list.ExtendedStyle(), 0x4020U);
}

TEST_F(ListViewTest, AHundredThousandItemsStayAddressable) {
    for (int i = 0; i < 100000; ++i) {
        list.Add(std::to_string(i) + "KEY", std::to_string(i));
    }
    EXPECT_EQ(list.IndexOf(list.Item("99999KEY")), 100000U);
    list.Clear();
    EXPECT_EQ(list.ItemCount(), 0U);
    EXPECT_THROW(static_cast<void>(list.Item("5KEY")), ControlError);
}

}  // namespace
}  // namespace ostrevin
