// What is highlighted in a tree or a list, what is current there and what the control holds are one, whatever
// a person does with mouse and keyboard.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "controls/Form.h"
#include "controls/Inputs.h"
#include "controls/ListView.h"
#include "controls/TreeView.h"
#include "tests/toolkit/ClumsyHands.h"
#include "tests/toolkit/QtFormTest.h"
#include "toolkit/qt/QtToolkit.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;
using testing::SendMouse;

constexpr int kRows = 40;

class SelectionForm : public Form {
  public:
    explicit SelectionForm(Toolkit& toolkit) : Form(toolkit, "frmSelection") {
        Move(0, 0, 12000, 6000);
        box.Move(0, 5400, 3000, 450);
        tree.Move(0, 0, 3000, 2250);
        for (const char* name : {"anna", "ben", "carl", "dora"}) {
            TreeNode& root = tree.Add(nullptr, name, name, "");
            for (const char* child : {"Programs", "Recent", "Typed"}) {
                tree.Add(&root, std::string(name) + ":" + child, child, "");
            }
        }
        list.Move(3000, 0, 6000, 3000);
        list.AddColumn("Text", 4000);
        list.AddColumn("Number", 3000);
        list.SetExtendedStyle(ListView::kFullRowSelect);
        Fill(kRows);
        list.ColumnClick = [this](ColumnHeader& column) {
            list.SortBy(column.Index() - 1, list.SortOrder() == SortOrder::Ascending ? SortOrder::Descending
                                                                                     : SortOrder::Ascending);
        };
    }
    ~SelectionForm() override { DropView(); }
    SelectionForm(const SelectionForm&) = delete;
    SelectionForm& operator=(const SelectionForm&) = delete;

    void Fill(int rows) {
        list.Clear();
        for (int i = 0; i < rows; ++i) {
            const std::string text(1, static_cast<char>('a' + i % 26));
            list.Add(std::to_string(i) + "KEY", text + " row " + std::to_string(i))
                .SetSubItem(1, std::to_string(i * 7 % rows));
        }
    }

    TextBox box{this, "box"};
    TreeView tree{this, "tree"};
    ListView list{this, "list"};
};

class QtSelectionTest : public QtFormTest {
  protected:
    QtSelectionTest() : QtFormTest(form) {
        form.tree.NodeClick = [this](TreeNode& node) { chosen.push_back(node.Key()); };
        form.list.ItemClick = [this](ListItem& item) { chosen.push_back(item.Text()); };
        form.list.DblClick = [this] {
            const ListItem* item = form.list.SelectedItem();
            chosen.push_back("open " + (item == nullptr ? "nothing" : item->Text()));
        };
        form.Show();
        QApplication::setActiveWindow(&Window());
        QTest::qWait(0);
        tree = &Find<QTreeWidget>("tree");
        list = &Find<QTreeView>("list");
    }

    [[nodiscard]] QPoint NodeAt(const char* key) const {
        QTreeWidgetItem* item = nullptr;
        const std::string name(key);
        const std::size_t colon = name.find(':');
        item = tree->findItems(QString::fromStdString(name.substr(0, colon)), Qt::MatchExactly).front();
        if (colon != std::string::npos) {
            QTreeWidgetItem* root = item;
            for (int i = 0; i < root->childCount(); ++i) {
                if (root->child(i)->text(0).toStdString() == name.substr(colon + 1)) {
                    item = root->child(i);
                }
            }
        }
        return tree->visualItemRect(item).center();
    }
    [[nodiscard]] QPoint RowAt(int row) const {
        return {20, list->visualRect(list->model()->index(row, 0)).center().y()};
    }
    void Click(QAbstractScrollArea& view, const QPoint& place, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton) const {
        QTest::mouseClick(view.viewport(), button, modifiers, place);
    }
    /// Presses, slips to another place, within or outside of the view, and lets go there.
    void Drag(QAbstractScrollArea& view, const QPoint& from, const QPoint& to,
              Qt::KeyboardModifiers modifiers = {}) const {
        SendMouse(view, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, modifiers);
        for (int step = 1; step <= 4; ++step) {
            SendMouse(view, QEvent::MouseMove, from + (to - from) * step / 4, Qt::NoButton, Qt::LeftButton,
                      modifiers);
        }
        SendMouse(view, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, modifiers);
        QTest::qWait(0);
    }
    void DoubleClick(QAbstractScrollArea& view, const QPoint& place,
                     Qt::MouseButton button = Qt::LeftButton) const {
        Click(view, place, {}, button);
        SendMouse(view, QEvent::MouseButtonDblClick, place, button, button, {});
        SendMouse(view, QEvent::MouseButtonRelease, place, button, Qt::NoButton, {});
    }
    /// Of the item that the view highlights and has current; what is amiss, if these are not one.
    [[nodiscard]] static std::string ShownAsSelected(const QTreeView& view) {
        const QItemSelectionModel& selection = *view.selectionModel();
        std::string shown;
        for (const QModelIndex& index : selection.selectedIndexes()) {
            if (index.column() == 0) {
                shown += index.data().toString().toStdString();
            }
        }
        const QModelIndex current = selection.currentIndex();
        const std::string focus = current.data().toString().toStdString();
        return focus == shown ? shown : "highlighted: " + shown + ", current: " + focus;
    }
    /// What the tree and the list show is what the controls hold, in sight for a person.
    void ExpectOne() {
        const TreeNode* node = form.tree.SelectedItem();
        EXPECT_EQ(ShownAsSelected(*tree), node == nullptr ? "" : node->Text());
        if (node != nullptr && node->Parent() != nullptr) {
            EXPECT_EQ(tree->currentItem()->parent()->text(0).toStdString(), node->Parent()->Text());
            EXPECT_TRUE(tree->currentItem()->parent()->isExpanded()) << "it is out of sight";
        }
        const ListItem* item = form.list.SelectedItem();
        EXPECT_EQ(ShownAsSelected(*list), item == nullptr ? "" : item->Text());
    }
    /// The texts of the rows that are painted as selected.
    [[nodiscard]] static Strings PaintedAsSelected(QTreeView& view) {
        const QImage image = view.viewport()->grab().toImage();
        Strings texts;
        for (QModelIndex index = view.indexAt({50, 5}); index.isValid(); index = view.indexBelow(index)) {
            const QRect place = view.visualRect(index);
            if (!image.rect().contains(place.bottomRight())) {
                break;
            }
            const QColor color = image.pixelColor(place.right() - 3, place.center().y());
            for (const auto group : {QPalette::Active, QPalette::Inactive}) {
                if (color == view.palette().color(group, QPalette::Highlight)) {
                    texts.push_back(index.data().toString().toStdString());
                    break;
                }
            }
        }
        return texts;
    }
    [[nodiscard]] std::string SelectedNode() const {
        return form.tree.SelectedItem() == nullptr ? "" : form.tree.SelectedItem()->Key();
    }
    [[nodiscard]] std::string SelectedRow() const {
        return form.list.SelectedItem() == nullptr ? "" : form.list.SelectedItem()->Text();
    }

    qt::QtToolkit toolkit;
    SelectionForm form{toolkit};
    QTreeWidget* tree;
    QTreeView* list;
    Strings chosen;
};

TEST_F(QtSelectionTest, APressSelectsAndASlipDoesNot) {
    Drag(*tree, NodeAt("ben"), NodeAt("carl"));
    EXPECT_EQ(chosen, (Strings{"ben"}));
    ExpectOne();
    Drag(*tree, NodeAt("ben"), QPoint(-300, 2000));
    EXPECT_EQ(chosen, (Strings{"ben", "ben"}));
    ExpectOne();
    chosen.clear();
    Drag(*list, RowAt(1), RowAt(4));
    EXPECT_EQ(chosen, (Strings{"b row 1"}));
    ExpectOne();
    Drag(*list, RowAt(2), QPoint(2000, 3000), Qt::ShiftModifier);
    Drag(*list, RowAt(2), RowAt(3), Qt::ControlModifier);
    EXPECT_EQ(chosen, (Strings{"b row 1", "c row 2", "c row 2"}));
    ExpectOne();
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
    EXPECT_EQ(PaintedAsSelected(*tree), (Strings{"ben"}));
    EXPECT_EQ(PaintedAsSelected(*list), (Strings{"c row 2"}));
}

TEST_F(QtSelectionTest, CtrlAndShiftTakeNothingAway) {
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier),
          Qt::KeyboardModifiers(Qt::ShiftModifier), Qt::ControlModifier | Qt::ShiftModifier}) {
        Click(*tree, NodeAt("ben"), modifiers);
        Click(*tree, NodeAt("ben"), modifiers);
        EXPECT_EQ(SelectedNode(), "ben");
        ExpectOne();
        Click(*tree, NodeAt("dora"), modifiers);
        EXPECT_EQ(SelectedNode(), "dora");
        ExpectOne();
        Click(*list, RowAt(1), modifiers);
        Click(*list, RowAt(1), modifiers);
        EXPECT_EQ(SelectedRow(), "b row 1");
        ExpectOne();
        Click(*list, RowAt(3), modifiers);
        EXPECT_EQ(SelectedRow(), "d row 3");
        ExpectOne();
        QTest::keyClick(tree, Qt::Key_Space, modifiers);
        QTest::keyClick(list, Qt::Key_Space, modifiers);
        QTest::keyClick(tree, Qt::Key_Select, modifiers);
        QTest::keyClick(list, Qt::Key_Select, modifiers);
        QTest::keyClick(tree, Qt::Key_A, modifiers);
        ExpectOne();
        QTest::keyClick(list, Qt::Key_Up, modifiers);
        QTest::keyClick(tree, Qt::Key_Up, modifiers);
        ExpectOne();
    }
}

TEST_F(QtSelectionTest, OtherButtonsOfTheMouse) {
    Click(*tree, NodeAt("ben"));
    Click(*tree, NodeAt("dora"), {}, Qt::RightButton);
    Click(*tree, NodeAt("dora"), {}, Qt::MiddleButton);
    EXPECT_EQ(SelectedNode(), "ben");
    ExpectOne();
    Click(*list, RowAt(3), {}, Qt::RightButton);
    EXPECT_EQ(SelectedRow(), "d row 3");
    Click(*list, RowAt(1), {}, Qt::MiddleButton);
    EXPECT_EQ(SelectedRow(), "d row 3");
    ExpectOne();
}

TEST_F(QtSelectionTest, WithNothingSelectedTheFirstIsChosen) {
    tree->setFocus();
    ExpectOne();
    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_EQ(chosen, (Strings{"anna"}));
    ExpectOne();
    chosen.clear();
    list->setFocus();
    ExpectOne();
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(chosen, (Strings{"a row 0"}));
    ExpectOne();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Home}) {
        form.list.Select(nullptr);
        chosen.clear();
        ExpectOne();
        QTest::keyClick(list, key);
        EXPECT_EQ(chosen, (Strings{"a row 0"}));
        ExpectOne();
    }
}

TEST_F(QtSelectionTest, KeysMoveTheSelectionWithEachStep) {
    list->setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_End,
                              Qt::Key_Up, Qt::Key_Home, Qt::Key_Right, Qt::Key_Left}) {
        QTest::keyClick(list, key);
        ExpectOne();
    }
    EXPECT_EQ(SelectedRow(), "a row 0");
    QTest::keyClick(list, Qt::Key_End);
    EXPECT_EQ(SelectedRow(), "n row 39");
    const std::size_t before = chosen.size();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Right);
    EXPECT_EQ(chosen.size(), before) << "the same row is not chosen again";
    QTest::keyClick(tree, Qt::Key_End);
    EXPECT_EQ(SelectedNode(), "anna");
    QTest::keyClick(tree, Qt::Key_End);
    EXPECT_EQ(SelectedNode(), "dora");
    QTest::keyClick(tree, Qt::Key_Right);
    QTest::keyClick(tree, Qt::Key_PageDown);
    EXPECT_EQ(SelectedNode(), "dora:Typed");
    ExpectOne();
    QTest::keyClick(tree, Qt::Key_Left);
    EXPECT_EQ(SelectedNode(), "dora");
    ExpectOne();
}

TEST_F(QtSelectionTest, TypingAheadChooses) {
    list->setFocus();
    QTest::keyClick(list, 'b');
    EXPECT_EQ(SelectedRow(), "b row 1");
    ExpectOne();
    QTest::keyClicks(list, " row 2");
    EXPECT_EQ(SelectedRow(), "b row 27");
    ExpectOne();
    QTest::keyClick(tree, 'c');
    EXPECT_EQ(SelectedNode(), "carl");
    ExpectOne();
    QTest::keyClick(tree, 'x');
    EXPECT_EQ(SelectedNode(), "carl");
    ExpectOne();
}

TEST_F(QtSelectionTest, ANodeThatIsClosedTakesTheSelectionFromTheNodesInIt) {
    form.tree.Select(form.tree.Node("ben:Recent"));
    ExpectOne();
    tree->topLevelItem(1)->setExpanded(false);
    EXPECT_EQ(chosen, (Strings{"ben"}));
    ExpectOne();
    form.tree.Select(form.tree.Node("anna:Typed"));
    const QRect anna = tree->visualItemRect(tree->topLevelItem(0));
    Click(*tree, QPoint(anna.left() / 2, anna.center().y()));
    EXPECT_FALSE(tree->topLevelItem(0)->isExpanded());
    EXPECT_EQ(SelectedNode(), "anna");
    ExpectOne();
    form.tree.Select(form.tree.Node("anna:Typed"));
    DoubleClick(*tree, NodeAt("anna"));
    EXPECT_FALSE(tree->topLevelItem(0)->isExpanded());
    EXPECT_EQ(SelectedNode(), "anna");
    ExpectOne();
}

TEST_F(QtSelectionTest, APressBesideTheTextOfANodeSelectsIt) {
    form.tree.Select(form.tree.Node("ben:Recent"));
    const QRect typed = tree->visualItemRect(tree->topLevelItem(1)->child(2));
    Click(*tree, QPoint(typed.left() / 3, typed.center().y()));
    ExpectOne();
    EXPECT_EQ(SelectedNode(), "ben:Typed");
}

TEST_F(QtSelectionTest, ADoubleClickOpensTheRowThatIsUnderTheMouse) {
    DoubleClick(*list, RowAt(1));
    EXPECT_EQ(chosen, (Strings{"b row 1", "open b row 1"}));
    SendMouse(*list, QEvent::MouseButtonDblClick, RowAt(2), Qt::LeftButton, Qt::LeftButton, {});
    EXPECT_EQ(chosen, (Strings{"b row 1", "open b row 1", "c row 2", "open c row 2"}));
    ExpectOne();
    chosen.clear();
    DoubleClick(*list, RowAt(3), Qt::RightButton);
    EXPECT_EQ(chosen, (Strings{"d row 3", "d row 3"}));
    form.Fill(2);
    QTest::qWait(0);
    DoubleClick(*list, QPoint(20, list->viewport()->height() - 5));
    EXPECT_EQ(chosen.size(), 2U) << "there is nothing below the rows";
    ExpectOne();
}

TEST_F(QtSelectionTest, TheRowStaysUnderTheMouse) {
    // The last row in sight is cut off.
    const int height = list->visualRect(list->model()->index(0, 0)).height();
    const int more = height / 2 - list->viewport()->height() % height;
    form.list.SetHeight(form.list.Height() + 15.0 * more);
    QTest::qWait(0);
    const QPoint place(20, list->viewport()->height() - 2);
    const std::string row = list->indexAt(place).data().toString().toStdString();
    ASSERT_GT(list->visualRect(list->indexAt(place)).bottom(), list->viewport()->height());
    DoubleClick(*list, place);
    EXPECT_EQ(chosen, (Strings{row, "open " + row}));
    ExpectOne();
}

TEST_F(QtSelectionTest, ARowIsChosenWithoutScrollingToTheSide) {
    form.list.Move(3000, 0, 3000, 3000);
    list->header()->resizeSection(0, 400);
    QTest::qWait(0);
    list->horizontalScrollBar()->setValue(100);
    ASSERT_EQ(list->horizontalScrollBar()->value(), 100);
    Click(*list, RowAt(2));
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_End);
    EXPECT_EQ(list->horizontalScrollBar()->value(), 100);
    EXPECT_EQ(SelectedRow(), "n row 39");
}

TEST_F(QtSelectionTest, RowsThatChangeWhileOneIsPressed) {
    form.list.ItemClick = [this](ListItem& /*item*/) { form.Fill(3); };
    Drag(*list, RowAt(10), RowAt(4));
    ExpectOne();
    EXPECT_EQ(SelectedRow(), "");
    form.list.ItemClick = [this](ListItem& item) { form.list.Remove(item); };
    Drag(*list, RowAt(1), RowAt(0));
    ExpectOne();
    EXPECT_EQ(form.list.ItemCount(), 2U);
    form.list.ItemClick = [this](ListItem& /*item*/) { form.list.Select(&form.list.Item(2)); };
    Drag(*list, RowAt(0), RowAt(0));
    ExpectOne();
    EXPECT_EQ(SelectedRow(), "c row 2");
    form.list.Clear();
    // The rows are still on the screen.
    Click(*list, QPoint(20, 10));
    QTest::keyClick(list, Qt::Key_Down);
    DoubleClick(*list, QPoint(20, 10));
    ExpectOne();
    EXPECT_EQ(SelectedRow(), "");
}

TEST_F(QtSelectionTest, AFormThatComesUpWhileARowIsPressed) {
    class Dialog : public Form {
      public:
        explicit Dialog(Toolkit& toolkit) : Form(toolkit, "frmDialog") { Move(0, 0, 3000, 3000); }
        ~Dialog() override { DropView(); }
        Dialog(const Dialog&) = delete;
        Dialog& operator=(const Dialog&) = delete;
    };
    const auto ask = [this] {
        Dialog dialog(toolkit);
        QTimer::singleShot(0, [&] {
            // The button of the mouse is let go over the dialog, or nowhere.
            QWidget* window = static_cast<qt::QtFormView*>(dialog.View())->Window();
            QTest::mouseRelease(window, Qt::LeftButton);
            dialog.Hide();
        });
        dialog.Show(ShowStyle::Modal);
    };
    form.list.ItemClick = [&](ListItem& /*item*/) { ask(); };
    form.tree.NodeClick = [&](TreeNode& /*node*/) { ask(); };
    SendMouse(*list, QEvent::MouseButtonPress, RowAt(2), Qt::LeftButton, Qt::LeftButton, {});
    SendMouse(*list, QEvent::MouseMove, RowAt(5), Qt::NoButton, Qt::NoButton, {});
    ExpectOne();
    EXPECT_EQ(SelectedRow(), "c row 2");
    SendMouse(*tree, QEvent::MouseButtonPress, NodeAt("carl"), Qt::LeftButton, Qt::LeftButton, {});
    SendMouse(*tree, QEvent::MouseMove, NodeAt("anna"), Qt::NoButton, Qt::NoButton, {});
    ExpectOne();
    EXPECT_EQ(SelectedNode(), "carl");
    QTest::keyClick(tree, Qt::Key_Up);
    ExpectOne();
    EXPECT_EQ(SelectedNode(), "ben");
}

TEST_F(QtSelectionTest, TheFormMayGoWhileARowOrANodeIsPressed) {
    form.list.ItemClick = [this](ListItem& /*item*/) { form.Unload(); };
    SendMouse(*list, QEvent::MouseButtonPress, RowAt(2), Qt::LeftButton, Qt::LeftButton, {});
    EXPECT_FALSE(form.Loaded());
    form.Show();
    tree = &Find<QTreeWidget>("tree");
    form.tree.NodeClick = [this](TreeNode& /*node*/) { form.Unload(); };
    SendMouse(*tree, QEvent::MouseButtonPress, NodeAt("carl"), Qt::LeftButton, Qt::LeftButton, {});
    EXPECT_FALSE(form.Loaded());
    form.Show();
    QTest::keyClick(&Find<QTreeWidget>("tree"), Qt::Key_Up);
    EXPECT_FALSE(form.Loaded());
}

TEST_F(QtSelectionTest, TheSelectedRowIsCopiedWhole) {
    Click(*list, RowAt(1));
    QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "b row 1");
}

TEST_F(QtSelectionTest, TheMarkOfTheSortStaysWithTheControl) {
    form.list.ColumnClick = [](ColumnHeader& /*column*/) {};
    form.list.SortBy(0, SortOrder::Ascending);
    QHeaderView& header = *list->header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                      QPoint(header.sectionViewportPosition(1) + 20, header.height() / 2));
    EXPECT_EQ(header.sortIndicatorSection(), 0);
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
}

/// How wide the mark of the sort is, from its top to its bottom.
std::vector<int> MarkOf(QHeaderView& header) {
    const QImage with = header.grab().toImage();
    header.setSortIndicatorShown(false);
    const QImage without = header.grab().toImage();
    header.setSortIndicatorShown(true);
    std::vector<int> widths;
    for (int y = 0; y < with.height(); ++y) {
        int width = 0;
        for (int x = 0; x < with.width(); ++x) {
            width += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
        }
        if (width > 0) {
            widths.push_back(width);
        }
    }
    return widths;
}

TEST_F(QtSelectionTest, TheMarkOfTheSortPointsUpForAscending) {
    form.list.SortBy(1, SortOrder::Ascending);
    std::vector<int> mark = MarkOf(*list->header());
    ASSERT_GT(mark.size(), 2U);
    EXPECT_LT(mark.front(), mark.back());
    form.list.SetSortOrder(SortOrder::Descending);
    mark = MarkOf(*list->header());
    ASSERT_GT(mark.size(), 2U);
    EXPECT_GT(mark.front(), mark.back());
}

TEST_F(QtSelectionTest, WhateverIsDone) {
    constexpr int kInputs = 2000;
    testing::ClumsyHands hands(20061231);
    int selected = 0;
    for (int i = 0; i < kInputs; ++i) {
        const auto rows = static_cast<int>(form.list.ItemCount());
        const auto anyRow = [&]() -> ListItem& {
            return form.list.Item(static_cast<std::size_t>(hands.Below(rows)) + 1);
        };
        const int input = hands.Below(20);
        if (input == 0) {
            form.tree.Select(*hands.OneOf(hands.OneOf(form.tree.Roots())->Children()));
        } else if (input == 1) {
            form.list.Select(rows == 0 || hands.Below(4) == 0 ? nullptr : &anyRow());
        } else if (input == 2) {
            form.Fill(hands.Below(kRows));
        } else if (input == 3 && rows > 0) {
            form.list.Remove(anyRow());
        } else {
            hands.ActOn(hands.Below(2) == 0 ? *static_cast<QTreeView*>(tree) : *list);
        }
        QTest::qWait(0);
        ExpectOne();
        selected += form.list.SelectedItem() != nullptr && form.tree.SelectedItem() != nullptr ? 1 : 0;
        ASSERT_FALSE(HasFailure()) << "input " << i << " of kind " << input;
    }
    EXPECT_GT(selected, kInputs / 4);
    EXPECT_GT(chosen.size(), kInputs / 8U);
}

}  // namespace
}  // namespace ostrevin
