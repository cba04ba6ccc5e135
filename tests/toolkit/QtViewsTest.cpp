// What a control holds is what a person sees, and what a person does arrives: the Qt views with real clicks
// and keys.
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QIdentityProxyModel>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

#include "controls/Boxes.h"
#include "controls/Form.h"
#include "controls/ListView.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/Timer.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "tests/toolkit/QtFormTest.h"
#include "toolkit/qt/QtToolkit.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

class SampleForm : public Form {
  public:
    explicit SampleForm(Toolkit& toolkit)
        : Form(toolkit, "frmSample"),
          file(Menus().Add("mnuFile", "&File")),
          check(file.Add("mnuCheck", "&Check", "Ctrl+K")),
          gone(file.Add("mnuGone", "&Gone")) {
        Move(0, 0, 12000, 9000);
        bar.SetAlignment(Align::Top);
        bar.SetHeight(540);
        bar.Add("PLAIN", "", ToolButton::Style::Default).SetToolTipText("Plain");
        bar.Add("CHECK", "", ToolButton::Style::Check).SetToolTipText("Check");
        status.SetAlignment(Align::Bottom);
        status.SetHeight(400);
        status.AddPanel(0);
        status.AddPanel(90);
        tree.Move(0, 600, 3000, 6000);
        TreeNode& anna = tree.Add(nullptr, "A", "anna", "");
        tree.Add(&anna, "A:1", "Programs", "");
        tree.Add(nullptr, "B", "ben", "");
        tabs.Move(3000, 600, 9000, 1500);
        tabs.Add("One", "");
        tabs.Add("Two", "");
        list.Move(3000, 2100, 9000, 4500);
        list.AddColumn("Text", 4000);
        list.AddColumn("Number", 1500).SetRightAligned(true);
        box.Move(0, 6750, 3000, 1500);
        check.SetCheckable(true);
        gone.SetEnabled(false);
        timer.SetInterval(5);
    }
    ~SampleForm() override { DropView(); }

    MenuItem& file;
    MenuItem& check;
    MenuItem& gone;
    ToolBar bar{this, "bar"};
    TreeView tree{this, "tree"};
    TabStrip tabs{this, "tabs"};
    ListView list{this, "list"};
    PictureBox box{this, "box"};
    StatusBar status{this, "status"};
    Timer timer{this, "timer"};
    int resizes = 0;
    int unloads = 0;

  protected:
    void Form_Resize() override { ++resizes; }
    void Form_Unload() override { ++unloads; }
};

class QtViewsTest : public QtFormTest {
  protected:
    QtViewsTest() : QtFormTest(form) {}

    void Show() {
        form.Show();
        QTest::qWait(0);
    }
    void FillList(int rows) {
        for (int i = 0; i < rows; ++i) {
            form.list.Add(std::to_string(i) + "KEY", "row " + std::to_string(i))
                .SetSubItem(1, std::to_string(i));
        }
        QTest::qWait(0);
    }
    [[nodiscard]] QPoint RowCenter(int row) const {
        const auto& view = Find<QTreeView>("list");
        return view.visualRect(view.model()->index(row, 0)).center();
    }

    qt::QtToolkit toolkit;
    SampleForm form{toolkit};
};

TEST_F(QtViewsTest, TreeShowsItsNodesAndTellsClicksAndKeys) {
    Show();
    auto& tree = Find<QTreeWidget>("tree");
    Strings clicked;
    form.tree.NodeClick = [&](TreeNode& node) { clicked.push_back(node.Key()); };
    ASSERT_EQ(tree.topLevelItemCount(), 2);
    EXPECT_EQ(tree.topLevelItem(0)->text(0), "anna");
    EXPECT_EQ(tree.topLevelItem(0)->child(0)->text(0), "Programs");
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      tree.visualItemRect(tree.topLevelItem(1)).center());
    EXPECT_EQ(clicked, (Strings{"B"}));
    QTest::keyClick(&tree, Qt::Key_Up);
    QTest::keyClick(&tree, Qt::Key_Right);
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(clicked, (Strings{"B", "A", "A:1"})) << "opening a node is no choice";
    EXPECT_EQ(form.tree.SelectedItem()->Key(), "A:1");
}

TEST_F(QtViewsTest, TreeTellsAClickOnTheSelectedNodeAndNoneOnItsArrow) {
    Show();
    auto& tree = Find<QTreeWidget>("tree");
    int clicks = 0;
    form.tree.NodeClick = [&](TreeNode& /*node*/) { ++clicks; };
    const QRect anna = tree.visualItemRect(tree.topLevelItem(0));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(anna.left() / 2, anna.center().y()));
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(tree.topLevelItem(0)->isExpanded());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, anna.center());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, anna.center());
    EXPECT_EQ(clicks, 2);
}

TEST_F(QtViewsTest, TreeOpensTheParentsOfWhatCodeSelectsAndTellsNothing) {
    Show();
    bool told = false;
    form.tree.NodeClick = [&](TreeNode& /*node*/) { told = true; };
    form.tree.Select(form.tree.Node("A:1"));
    auto& tree = Find<QTreeWidget>("tree");
    EXPECT_TRUE(tree.topLevelItem(0)->isExpanded());
    EXPECT_EQ(tree.currentItem()->text(0), "Programs");
    EXPECT_FALSE(told);
}

TEST_F(QtViewsTest, NothingIsSelectedAtFirst) {
    Show();
    Find<QTreeWidget>("tree").setFocus();
    QTest::qWait(0);
    EXPECT_TRUE(Find<QTreeWidget>("tree").selectedItems().isEmpty());
    EXPECT_EQ(form.tree.SelectedItem(), nullptr);
}

TEST_F(QtViewsTest, TabsFollowCodeAndPerson) {
    Show();
    int clicks = 0;
    form.tabs.Click = [&] { ++clicks; };
    auto& bar = *Find<QTabWidget>("tabs").tabBar();
    EXPECT_EQ(bar.tabText(1), "Two");
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(1).center());
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(form.tabs.Selected(2));
    form.tabs.Select(1);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(bar.currentIndex(), 0);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(clicks, 3);
    EXPECT_TRUE(form.tabs.Selected(2));
}

TEST_F(QtViewsTest, ClientAreaOfTheTabsIsKnownBeforeTheWindowIsShown) {
    form.Load();
    const double before = form.tabs.ClientTop();
    EXPECT_GT(before, form.tabs.Top());
    Show();
    EXPECT_EQ(form.tabs.ClientTop(), before);
    EXPECT_LE(form.tabs.ClientTop() + form.tabs.ClientHeight(), form.tabs.Top() + form.tabs.Height());
}

TEST_F(QtViewsTest, ListShowsItsCells) {
    Show();
    FillList(3);
    const QAbstractItemModel& model = *Find<QTreeView>("list").model();
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), "Number");
    EXPECT_EQ(model.index(2, 0).data().toString(), "row 2");
    EXPECT_EQ(model.index(2, 1).data().toString(), "2");
    form.list.Item(3).SetSubItem(1, "changed");
    EXPECT_EQ(model.index(2, 1).data().toString(), "changed");
    form.list.Clear();
    QTest::qWait(0);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(QtViewsTest, ListTellsClicksKeysAndDoubleClicks) {
    Show();
    FillList(5);
    auto& view = Find<QTreeView>("list");
    Strings clicked;
    int opened = 0;
    form.list.ItemClick = [&](ListItem& item) { clicked.push_back(item.Text()); };
    form.list.DblClick = [&] { ++opened; };
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, RowCenter(1));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, RowCenter(1));
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(clicked, (Strings{"row 1", "row 1", "row 2"}));
    EXPECT_EQ(form.list.SelectedItem()->Text(), "row 2");
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, RowCenter(2));
    EXPECT_EQ(opened, 1);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(opened, 2);
}

TEST_F(QtViewsTest, AClickBesideTheRowsChangesNothing) {
    Show();
    FillList(1);
    form.list.Select(&form.list.Item(1));
    auto& view = Find<QTreeView>("list");
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(20, view.viewport()->height() - 5));
    EXPECT_EQ(form.list.SelectedItem(), &form.list.Item(1));
    EXPECT_EQ(view.selectionModel()->selectedIndexes().size(), 1);
}

TEST_F(QtViewsTest, HeaderTellsItsColumnAndShowsTheSort) {
    Show();
    FillList(3);
    int told = 0;
    form.list.ColumnClick = [&](ColumnHeader& column) { told = column.Index(); };
    QHeaderView& header = *Find<QTreeView>("list").header();
    EXPECT_FALSE(header.isSortIndicatorShown());
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                      QPoint(header.sectionViewportPosition(1) + 10, header.height() / 2));
    EXPECT_EQ(told, 2);
    form.list.SetSortKey(1);
    form.list.SetSortOrder(SortOrder::Descending);
    form.list.SetSorted(true);
    EXPECT_TRUE(header.isSortIndicatorShown());
    EXPECT_EQ(header.sortIndicatorSection(), 1);
    EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
    QTest::qWait(0);
    EXPECT_EQ(Find<QTreeView>("list").model()->index(0, 0).data().toString(), "row 2");
}

TEST_F(QtViewsTest, SelectionStaysWithItsItemWhenRowsMove) {
    Show();
    FillList(3);
    form.list.Select(&form.list.Item("0KEY"));
    form.list.SetSortOrder(SortOrder::Descending);
    form.list.SetSorted(true);
    QTest::qWait(0);
    EXPECT_EQ(Find<QTreeView>("list").selectionModel()->selectedIndexes().front().row(), 2);
}

/// Notes which rows are asked for.
class RowCounter : public QIdentityProxyModel {
  public:
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        rows.insert(index.row());
        return QIdentityProxyModel::data(index, role);
    }
    mutable std::set<int> rows;
};

TEST_F(QtViewsTest, ScrollingTouchesOnlyTheRowsInSight) {
    Show();
    FillList(100000);
    auto& view = Find<QTreeView>("list");
    RowCounter counter;
    QAbstractItemModel* model = view.model();
    counter.setSourceModel(model);
    view.setModel(&counter);
    QTest::qWait(20);
    counter.rows.clear();
    view.scrollTo(counter.index(70000, 0));
    QTest::qWait(20);
    view.viewport()->repaint();
    const auto inSight =
        static_cast<std::size_t>(view.viewport()->height() / view.visualRect(view.indexAt({5, 5})).height());
    EXPECT_TRUE(counter.rows.contains(70000));
    EXPECT_LE(counter.rows.size(), 2 * inSight + 4);
    view.setModel(model);
}

TEST_F(QtViewsTest, EnsureVisibleShowsRowsThatWereJustAdded) {
    Show();
    for (int i = 0; i < 1000; ++i) {
        form.list.Add("", std::to_string(i));
    }
    form.list.EnsureVisible(form.list.Item(900));
    const auto& view = Find<QTreeView>("list");
    EXPECT_TRUE(view.viewport()->rect().contains(RowCenter(899)));
}

TEST_F(QtViewsTest, WholeRowsAreSelectedWhenTheStyleSaysSo) {
    Show();
    FillList(2);
    const auto& view = Find<QTreeView>("list");
    EXPECT_EQ(view.selectionBehavior(), QAbstractItemView::SelectItems);
    form.list.SetExtendedStyle(form.list.ExtendedStyle() | ListView::kFullRowSelect);
    EXPECT_EQ(view.selectionBehavior(), QAbstractItemView::SelectRows);
    EXPECT_EQ(form.list.ExtendedStyle(), ListView::kFullRowSelect);
}

TEST_F(QtViewsTest, ToolBarButtonsAreWhatTheControlSays) {
    Show();
    Strings told;
    form.bar.ButtonClick = [&](ToolButton& button) {
        told.push_back(button.Key() + std::to_string(button.Value()));
        button.SetValue(ToolButton::kUp);  // the form decides what it shows in the end
    };
    for (QToolButton* button : Find<QWidget>("bar").findChildren<QToolButton*>()) {
        if (button->isVisible() && button->defaultAction() != nullptr) {
            QTest::mouseClick(button, Qt::LeftButton);
            EXPECT_FALSE(button->isChecked());
        }
    }
    EXPECT_EQ(told, (Strings{"PLAIN0", "CHECK1"}));
    form.bar.Button("CHECK").SetValue(ToolButton::kPressed);
    EXPECT_TRUE(Window().findChild<QAction*>("CHECK")->isChecked());
    form.bar.Button("CHECK").SetEnabled(false);
    EXPECT_FALSE(Window().findChild<QAction*>("CHECK")->isEnabled());
}

TEST_F(QtViewsTest, MenuItemsAreWhatTheFormSays) {
    Show();
    int clicks = 0;
    form.check.Click = [&] { ++clicks; };
    QAction& action = *Window().findChild<QAction*>("mnuCheck");
    EXPECT_EQ(action.text(), "&Check");
    EXPECT_EQ(action.shortcut(), QKeySequence("Ctrl+K"));
    EXPECT_FALSE(Window().findChild<QAction*>("mnuGone")->isEnabled());
    action.trigger();
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(action.isChecked()) << "only the form checks its items";
    form.check.SetChecked(true);
    EXPECT_TRUE(action.isChecked());
}

TEST_F(QtViewsTest, StatusBarShowsItsPanels) {
    form.status.SetPanelText(2, "early");
    Show();
    const QList<QLabel*> labels = Find<QWidget>("status").findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 2);
    EXPECT_EQ(labels[1]->text(), "early");
    form.status.SetPanelText(2, "<b>later</b>");
    EXPECT_EQ(labels[1]->text(), "<b>later</b>");
    EXPECT_EQ(labels[1]->textFormat(), Qt::PlainText);
}

TEST_F(QtViewsTest, PictureBoxTellsTheMouseInItsOwnScale) {
    form.box.SetScaleMode(ScaleMode::Point);
    Show();
    struct Told {
        int button;
        int shift;
        double x;
        double y;
    };
    std::vector<Told> told;
    const auto note = [&](int button, int shift, double x, double y) {
        told.push_back({button, shift, x, y});
    };
    form.box.MouseDown = note;
    form.box.MouseUp = note;
    QTest::mousePress(&Find<QWidget>("box"), Qt::RightButton, Qt::ControlModifier, QPoint(40, 20));
    QTest::mouseRelease(&Find<QWidget>("box"), Qt::RightButton, Qt::ControlModifier, QPoint(44, 20));
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0].button, 2);
    EXPECT_EQ(told[0].shift, 2);
    EXPECT_DOUBLE_EQ(told[0].x, 30);
    EXPECT_DOUBLE_EQ(told[0].y, 15);
    EXPECT_DOUBLE_EQ(told[1].x, 33);
}

TEST_F(QtViewsTest, ControlsStandWhereTheFormPutsThem) {
    Show();
    form.tree.Move(150, 750, 1500, 3000);
    EXPECT_EQ(Find<QWidget>("tree").geometry(), QRect(10, 50, 100, 200));
    form.tree.SetVisible(false);
    EXPECT_FALSE(Find<QWidget>("tree").isVisible());
    form.list.SetEnabled(false);
    EXPECT_FALSE(Find<QWidget>("list").isEnabled());
}

TEST_F(QtViewsTest, FormFollowsItsWindow) {
    Show();
    EXPECT_EQ(form.ScaleWidth(), 12000);
    EXPECT_EQ(form.ScaleHeight(), 9000) << "the menu bar is not part of the inside";
    const int before = form.resizes;
    Window().resize(Window().width() + 50, Window().height());
    QTest::qWait(0);
    EXPECT_EQ(form.ScaleWidth(), 12750);
    EXPECT_EQ(form.resizes, before + 1);
    EXPECT_EQ(Find<QWidget>("status").width(), 850);
}

TEST_F(QtViewsTest, ClosingTheWindowUnloadsTheFormAndEndsTheProgram) {
    Show();
    QTimer::singleShot(0, &Window(), &QWidget::close);
    EXPECT_EQ(toolkit.Run(), 0);
    EXPECT_EQ(form.unloads, 1);
    EXPECT_FALSE(form.Loaded());
    EXPECT_NO_THROW(form.list.Add("", "still an object"));
}

TEST_F(QtViewsTest, TimerTicksWhileTheFormIsLoaded) {
    int ticks = 0;
    form.timer.Tick = [&] {
        if (++ticks == 3) {
            form.Unload();
        }
    };
    Show();
    EXPECT_EQ(toolkit.Run(), 0);
    QTest::qWait(30);
    EXPECT_EQ(ticks, 3);
}

TEST_F(QtViewsTest, ModalFormReturnsWhenItIsHidden) {
    QTimer::singleShot(0, [&] {
        EXPECT_TRUE(Window().isModal());
        form.Hide();
    });
    form.Show(ShowStyle::Modal);
    EXPECT_TRUE(form.Loaded());
    EXPECT_FALSE(Window().isVisible());
    QTimer::singleShot(0, [&] { form.Unload(); });
    form.Show(ShowStyle::Modal);
    EXPECT_FALSE(form.Loaded());
}

/// Closes the message box that comes up and keeps its text.
class BoxCloser {
  public:
    explicit BoxCloser(std::string& text) {
        QObject::connect(&timer_, &QTimer::timeout, [&text] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                text = box->text().toStdString();
                box->accept();
            }
        });
        timer_.start(1);
    }

  private:
    QTimer timer_;
};

TEST_F(QtViewsTest, MessageBoxShowsItsTextAsItIs) {
    std::string text;
    const BoxCloser closer(text);
    toolkit.MsgBox(nullptr, "<i>one</i>\r\ntwo", "Ostrevin");
    EXPECT_EQ(text, "<i>one</i>\ntwo");
}

TEST_F(QtViewsTest, AFailureInAnEventIsShownAndEndsTheProgram) {
    Show();
    std::string text;
    const BoxCloser closer(text);
    form.check.Click = [] { throw ControlError("it broke"); };
    QTimer::singleShot(0, [&] { Window().findChild<QAction*>("mnuCheck")->trigger(); });
    EXPECT_EQ(toolkit.Run(), 1);
    EXPECT_EQ(text, "it broke");
}

TEST_F(QtViewsTest, TextsCompareWithoutRegardToCase) {
    EXPECT_EQ(toolkit.CompareText("ABC", "abc"), 0);
    EXPECT_LT(toolkit.CompareText("", "a"), 0);
    EXPECT_LT(toolkit.CompareText("a", "B"), 0);
    EXPECT_LT(toolkit.CompareText("&9", "0"), 0);
}

}  // namespace
}  // namespace ostrevin
