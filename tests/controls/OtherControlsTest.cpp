#include <gtest/gtest.h>

#include "controls/Form.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/Timer.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

class OtherControlsTest : public ::testing::Test {
  protected:
    testing::TestToolkit toolkit;
    Form form{toolkit, "form"};
};

using TreeViewTest = OtherControlsTest;
using TabStripTest = OtherControlsTest;
using ToolBarTest = OtherControlsTest;
using StatusBarTest = OtherControlsTest;
using MenuTest = OtherControlsTest;

TEST_F(TreeViewTest, NodesStandInTheOrderOfTheirAdding) {
    TreeView tree(&form, "tree");
    TreeNode& root = tree.Add(nullptr, "S-1", "anna", "USER");
    tree.Add(nullptr, "S-2", "ben", "USER");
    tree.Add(&root, "S-1:X", "X", "X").SetTag("X");
    ASSERT_EQ(tree.Roots().size(), 2U);
    EXPECT_EQ(tree.Roots()[1]->Text(), "ben");
    EXPECT_EQ(root.Children()[0]->Tag(), "X");
    EXPECT_EQ(tree.Node("S-1:X").Parent(), &root);
    EXPECT_THROW(tree.Add(&root, "S-2", "again", ""), ControlError);
    EXPECT_THROW(static_cast<void>(tree.Node("S-3")), ControlError);
}

TEST_F(TreeViewTest, OnlyAPersonsChoiceIsAClick) {
    TreeView tree(&form, "tree");
    TreeNode& node = tree.Add(nullptr, "k", "t", "");
    int clicks = 0;
    tree.NodeClick = [&](TreeNode& clicked) {
        ++clicks;
        EXPECT_EQ(tree.SelectedItem(), &clicked);
    };
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    tree.Select(node);
    EXPECT_EQ(clicks, 0);
    tree.ClickNode(node);
    EXPECT_EQ(clicks, 1);
}

TEST_F(TabStripTest, ATabSelectedByCodeIsAClickAlsoWhenItWasSelected) {
    TabStrip tabs(&form, "tabs");
    tabs.Add("One", "");
    tabs.Add("Two", "");
    int clicks = 0;
    tabs.Click = [&] { ++clicks; };
    EXPECT_TRUE(tabs.Selected(1));
    tabs.Select(2);
    EXPECT_TRUE(tabs.Selected(2));
    tabs.Select(2);
    EXPECT_EQ(clicks, 2);
    EXPECT_THROW(tabs.Select(3), ControlError);
    EXPECT_THROW(tabs.Select(0), ControlError);
}

TEST_F(TabStripTest, ClientAreaIsInTheScaleOfTheForm) {
    TabStrip tabs(&form, "tabs");
    tabs.Move(150, 300, 3000, 1500);
    EXPECT_EQ(tabs.ClientLeft(), 150 + 2 * 15);
    EXPECT_EQ(tabs.ClientTop(), 300 + 24 * 15);
    EXPECT_EQ(tabs.ClientWidth(), 3000 - 4 * 15);
    EXPECT_EQ(tabs.ClientHeight(), 1500 - 26 * 15);
}

TEST_F(ToolBarTest, AButtonThatStaysPressedChangesBeforeItIsTold) {
    ToolBar bar(&form, "bar");
    ToolButton& check = bar.Add("FILTER", "", ToolButton::Style::Check);
    bar.Add("FIND", "", ToolButton::Style::Default);
    std::vector<std::string> told;
    bar.ButtonClick = [&](ToolButton& button) {
        told.push_back(button.Key() + std::to_string(button.Value()));
    };
    bar.Click(check);
    bar.Click(check);
    bar.Click(bar.Button("FIND"));
    EXPECT_EQ(told, (std::vector<std::string>{"FILTER1", "FILTER0", "FIND0"}));
    EXPECT_THROW(static_cast<void>(bar.Button("X")), ControlError);
}

TEST_F(ToolBarTest, ADisabledButtonDoesNothing) {
    ToolBar bar(&form, "bar");
    ToolButton& button = bar.Add("FILTER", "", ToolButton::Style::Check);
    bool told = false;
    bar.ButtonClick = [&](ToolButton& /*clicked*/) { told = true; };
    button.SetEnabled(false);
    bar.Click(button);
    EXPECT_FALSE(told);
    EXPECT_EQ(button.Value(), ToolButton::kUp);
}

TEST_F(StatusBarTest, PanelsCountFromOne) {
    StatusBar bar(&form, "bar");
    bar.AddPanel(0);
    bar.AddPanel(90);
    bar.SetPanelText(2, "x");
    EXPECT_EQ(bar.PanelText(1), "");
    EXPECT_EQ(bar.PanelText(2), "x");
    EXPECT_THROW(bar.SetPanelText(3, "y"), ControlError);
    EXPECT_THROW(static_cast<void>(bar.PanelText(0)), ControlError);
}

TEST_F(MenuTest, ItemsStayWhereTheyAreWhileOthersAreAdded) {
    MenuItem& file = form.Menus().Add("mnuFile", "&File");
    MenuItem& first = file.Add("mnuExit", "E&xit");
    for (int i = 0; i < 100; ++i) {
        file.Add("mnu" + std::to_string(i), "x");
    }
    EXPECT_EQ(&file.Items().front(), &first);
    EXPECT_EQ(first.Caption(), "E&xit");
    int clicks = 0;
    first.Click = [&] { ++clicks; };
    first.Click.Raise();
    EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace ostrevin
