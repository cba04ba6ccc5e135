// The main window as a person has it before them: real clicks and keys, and what the screen then shows.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

#include "settings/AppSettings.h"
#include "settings/IniFile.h"
#include "tests/report/ReportMachine.h"
#include "tests/support/ScratchFolder.h"
#include "tests/toolkit/ClumsyHands.h"
#include "tests/toolkit/QtFormTest.h"
#include "toolkit/qt/QtToolkit.h"
#include "ui/frmMain.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

constexpr char kAnna[] = "S-1-5-21-1-2-3-1001";
constexpr char kOut[] = "C:\\Out\\report.htm";
constexpr std::uint64_t kDay = 864000000000ULL;
constexpr QRgb kPictureColor = 0xFF3366CC;
constexpr std::array<const char*, 5> kLists = {"lstProgram", "lstRecent", "lstOpenSave", "lstIEHistory",
                                               "lstTypedURL"};

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : QApplication::activeWindow(), key, modifiers);
}

void Type(const char* text) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text));
}

/// Stands for a person while the program waits for one: acts in each dialog in its turn, and confirms message
/// boxes. A dialog that is not expected, or that stays, is a failure and is closed.
class Person {
  public:
    Person() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
        timer_.start(1);
    }

    /// What to do in the next dialog, which is to have this name.
    void Then(const char* dialog, std::function<void()> act) { plan_.emplace_back(dialog, std::move(act)); }
    [[nodiscard]] bool Done() const { return plan_.empty(); }

    Strings messages;

  private:
    static constexpr int kPatience = 3000;

    void Look() {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) {
            return;
        }
        if (std::find(seen_.begin(), seen_.end(), dialog) != seen_.end()) {
            if (waited_.elapsed() > kPatience) {
                ADD_FAILURE() << dialog->objectName().toStdString() << " stays";
                dialog->close();
            }
            return;
        }
        seen_.emplace_back(dialog);
        waited_.start();
        QApplication::setActiveWindow(dialog);
        Act(*dialog);
    }
    void Act(QWidget& dialog) {
        if (const auto* box = qobject_cast<QMessageBox*>(&dialog)) {
            messages.push_back(box->text().toStdString());
            Press(Qt::Key_Return);
        } else if (!plan_.empty() && dialog.objectName() == QLatin1String(plan_.front().first)) {
            const std::function<void()> act = std::move(plan_.front().second);
            plan_.pop_front();
            act();
        } else {
            ADD_FAILURE() << dialog.objectName().toStdString() << " was not expected";
            dialog.close();
        }
    }

    std::deque<std::pair<const char*, std::function<void()>>> plan_;
    QTimer timer_;
    std::vector<QPointer<QWidget>> seen_;
    QElapsedTimer waited_;
};

class QtMainWindowTest : public QtFormTest {
  protected:
    QtMainWindowTest() : QtFormTest(form) {
        machine.AddPerson(kAnna, "anna");
        machine.AddPerson("S-1-5-21-1-2-3-1002", "ben");
        machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\calc.exe", 3, kSomeDay);
        machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\mspaint.exe", 10, kSomeDay + 70 * kDay);
        machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\notepad.exe", 20, kSomeDay + kDay);
        machine.AddRecentDocument("anna", "C:\\letter.doc");
        machine.AddRecentDocument("anna", "C:\\photo.bmp");
        machine.AddTypedURLs(kAnna, {"http://alpha/", "http://beta/", "http://alphabet/"});
        MemoryFile& photo = machine.platform.AddFile("C:\\photo.bmp");
        photo.hasThumbnail = true;
        photo.thumbnail = Bitmap{64, 48, std::vector<std::uint32_t>(64UL * 48, kPictureColor)};
        ini.SetINIFileName(folder.Path("ostrevin.ini"));
        settings.SetINI(&ini);
        machine.Load();
        form.Show();
        QApplication::setActiveWindow(&Window());
        QTest::qWait(0);
    }
    ~QtMainWindowTest() override { EXPECT_TRUE(person.Done()) << "a dialog was expected"; }

    void ClickNode(const char* account, int child) const {
        auto& tree = Find<QTreeWidget>("treeUsers");
        QTreeWidgetItem* root = tree.findItems(QString::fromLatin1(account), Qt::MatchExactly).front();
        root->setExpanded(true);
        Click(*tree.viewport(), tree.visualItemRect(root->child(child)).center());
    }
    void ClickButton(const char* key) const {
        for (QToolButton* button : Window().findChildren<QToolButton*>()) {
            if (button->defaultAction() == &Find<QAction>(key)) {
                Click(*button, button->rect().center());
                return;
            }
        }
        throw std::runtime_error(std::string("no button ") + key);
    }
    static void Click(QWidget& widget, const QPoint& place) {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
        QTest::qWait(0);
    }
    [[nodiscard]] QPoint RowCenter(const char* list, int row) const {
        const auto& view = Find<QTreeView>(list);
        return view.visualRect(view.model()->index(row, 0)).center();
    }
    void ClickRow(const char* list, int row) const {
        Click(*Find<QTreeView>(list).viewport(), RowCenter(list, row));
    }
    void OpenRow(const char* list, int row) const {
        ClickRow(list, row);
        QTest::mouseDClick(Find<QTreeView>(list).viewport(), Qt::LeftButton, {}, RowCenter(list, row));
    }
    static void ClickHeader(const QHeaderView& header, int column) {
        const int middle = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
        Click(*header.viewport(), QPoint(middle, header.height() / 2));
    }
    void ClickHeader(const char* list, int column) const {
        ClickHeader(*Find<QTreeView>(list).header(), column);
    }

    [[nodiscard]] Strings Rows(const char* list) const {
        const QAbstractItemModel& model = *Find<QTreeView>(list).model();
        Strings texts;
        for (int row = 0; row < model.rowCount(); ++row) {
            texts.push_back(model.index(row, 0).data().toString().toStdString());
        }
        return texts;
    }
    /// The tree, the tabs and the list in front show what their controls hold, and the same account's traces.
    void ExpectAgreement() {
        const std::array<ListView*, 5> lists = {&form.lstProgram, &form.lstRecent, &form.lstOpenSave,
                                                &form.lstIEHistory, &form.lstTypedURL};
        const auto tab = static_cast<std::size_t>(form.TabStrip.SelectedTab() - 1);
        EXPECT_EQ(Find<QTabWidget>("TabStrip").currentIndex(), static_cast<int>(tab));
        const ListItem* row = lists.at(tab)->SelectedItem();
        EXPECT_EQ(SelectedRow(kLists.at(tab)), row == nullptr ? "" : row->Text());
        const auto& tree = Find<QTreeWidget>("treeUsers");
        const TreeNode* node = form.treeUsers.SelectedItem();
        ASSERT_EQ(tree.currentItem() == nullptr, node == nullptr);
        EXPECT_EQ(tree.selectedItems(),
                  node == nullptr ? QList<QTreeWidgetItem*>() : QList{tree.currentItem()});
        if (node != nullptr) {
            EXPECT_EQ(tree.currentItem()->text(0).toStdString(), node->Text());
        }
        if (node != nullptr && node->Parent() != nullptr) {
            EXPECT_EQ(tree.currentItem()->parent()->text(0).toStdString(), node->Parent()->Text());
            EXPECT_EQ(node->Parent()->Children()[tab].get(), node);
            EXPECT_EQ(lists.at(tab)->Tag(), node->Parent()->Key());
        }
    }
    [[nodiscard]] std::string SelectedRow(const char* list) const {
        const QModelIndexList selected = Find<QTreeView>(list).selectionModel()->selectedRows();
        return selected.isEmpty() ? "" : selected.front().data().toString().toStdString();
    }
    /// The one of its kind that is in sight.
    template <typename Widget>
    [[nodiscard]] Widget& Shown() const {
        for (Widget* widget : Window().findChildren<Widget*>()) {
            if (widget->isVisible()) {
                return *widget;
            }
        }
        throw std::runtime_error("nothing is shown");
    }
    [[nodiscard]] bool IsChecked(const char* action) const { return Find<QAction>(action).isChecked(); }

    ScratchFolder folder;
    ReportMachine machine;
    IniFile ini;
    AppSettings settings;
    qt::QtToolkit toolkit;
    Person person;
    frmMain form{toolkit, {machine.platform, settings, machine.accounts}};
};

TEST_F(QtMainWindowTest, ANodeIsChosenWithTheMouse) {
    ClickNode("anna", 4);
    EXPECT_EQ(Rows("lstTypedURL"), (Strings{"http://alpha/", "http://beta/", "http://alphabet/"}));
    EXPECT_TRUE(Find<QTreeView>("lstTypedURL").isVisible());
    EXPECT_FALSE(Find<QTreeView>("lstProgram").isVisible());
    auto& tabs = *Find<QTabWidget>("TabStrip").tabBar();
    EXPECT_EQ(tabs.currentIndex(), 4);
    Click(tabs, tabs.tabRect(1).center());
    EXPECT_EQ(Find<QTreeWidget>("treeUsers").currentItem()->text(0), "Recent Documents");
    EXPECT_EQ(Rows("lstRecent"), (Strings{"C:\\letter.doc", "C:\\photo.bmp"}));
}

TEST_F(QtMainWindowTest, ANodeIsChosenWithTheKeyboard) {
    ASSERT_EQ(QApplication::focusWidget(), &Find<QTreeWidget>("treeUsers"));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Down}) {
        Press(key);
    }
    QTest::qWait(0);
    EXPECT_EQ(form.treeUsers.SelectedItem()->Key(), std::string(kAnna) + ":RECENT");
    EXPECT_EQ(Rows("lstRecent").size(), 2U);
}

TEST_F(QtMainWindowTest, HeadersSortByValueTurnedRoundByEachClick) {
    ClickNode("anna", 0);
    const Strings byCount = {"C:\\calc.exe", "C:\\mspaint.exe", "C:\\notepad.exe"};
    ClickHeader("lstProgram", 1);
    EXPECT_EQ(Rows("lstProgram"), Strings(byCount.rbegin(), byCount.rend()));
    ClickHeader("lstProgram", 1);
    EXPECT_EQ(Rows("lstProgram"), byCount);
    ClickHeader("lstProgram", 2);
    EXPECT_EQ(Rows("lstProgram"), (Strings{"C:\\mspaint.exe", "C:\\notepad.exe", "C:\\calc.exe"}));
    EXPECT_EQ(Find<QTreeView>("lstProgram").header()->sortIndicatorSection(), 2);
    EXPECT_EQ(Find<QTreeView>("lstProgram").header()->sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(QtMainWindowTest, FindIsAskedForWithCtrlFAndGoesOnWithF3) {
    ClickNode("anna", 4);
    person.Then("frmFind", [] {
        Type("ALPHA");
        Press(Qt::Key_Return);
    });
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(SelectedRow("lstTypedURL"), "http://alpha/");
    QApplication::setActiveWindow(&Window());
    Press(Qt::Key_F3);
    EXPECT_EQ(SelectedRow("lstTypedURL"), "http://alphabet/");
    EXPECT_EQ(person.messages, (Strings{}));
    Press(Qt::Key_F3);
    EXPECT_EQ(SelectedRow("lstTypedURL"), "http://alphabet/");
    EXPECT_EQ(person.messages, (Strings{"No more matches found"}));
}

TEST_F(QtMainWindowTest, TheFilterButtonAsksForATextAndGoesUpAgain) {
    ClickNode("anna", 4);
    person.Then("frmFilter", [] {
        Type("beta");
        Press(Qt::Key_Return);
    });
    ClickButton("FILTER");
    EXPECT_EQ(Rows("lstTypedURL"), (Strings{"http://beta/"}));
    EXPECT_TRUE(IsChecked("FILTER"));
    ClickButton("FILTER");
    EXPECT_EQ(Rows("lstTypedURL"), (Strings{"http://beta/", "http://alphabet/", "http://alpha/"}));
    EXPECT_FALSE(IsChecked("FILTER"));
}

/// How many points of a widget have the colour of the picture.
int PointsOfPicture(QWidget& widget) {
    const QImage image = widget.grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) == kPictureColor ? 1 : 0;
        }
    }
    return count;
}

TEST_F(QtMainWindowTest, ThePreviewShowsTheThumbnailOfTheRowThatIsClicked) {
    ClickNode("anna", 1);
    auto& box = Find<QWidget>("picRecentThumbnail");
    EXPECT_FALSE(box.isVisible());
    EXPECT_FALSE(IsChecked("mnuShowPreview"));
    ClickButton("SHOWPREVIEW");
    EXPECT_TRUE(box.isVisible());
    EXPECT_TRUE(IsChecked("mnuShowPreview"));
    EXPECT_TRUE(IsChecked("SHOWPREVIEW"));
    EXPECT_EQ(PointsOfPicture(box), 0);
    ClickRow("lstRecent", 1);
    EXPECT_EQ(PointsOfPicture(box), 64 * 48) << "a point of the picture for a point of the screen";
    EXPECT_EQ(box.grab().toImage().pixel(box.rect().center() * box.devicePixelRatio()), kPictureColor);
    const QAbstractItemModel& model = *Find<QTreeView>("lstRecent").model();
    EXPECT_EQ(model.index(1, 1).data(), "Yes");
    ClickRow("lstRecent", 0);
    EXPECT_EQ(PointsOfPicture(box), 0);
    EXPECT_EQ(model.index(0, 1).data(), "No");
    Find<QAction>("mnuShowPreview").trigger();
    EXPECT_FALSE(box.isVisible());
    EXPECT_FALSE(IsChecked("SHOWPREVIEW"));
}

TEST_F(QtMainWindowTest, AThumbnailOfTheSizeThatIsAskedForIsShownPointForPoint) {
    ClickNode("anna", 1);
    ClickButton("SHOWPREVIEW");
    ClickRow("lstRecent", 1);
    const Strings& calls = machine.platform.shellCalls;
    const auto asked = std::find_if(calls.begin(), calls.end(),
                                    [](const std::string& call) { return call.starts_with("location "); });
    ASSERT_NE(asked, calls.end());
    int width = 0;
    int height = 0;
    ASSERT_EQ(std::sscanf(asked->c_str(), "location %d x %d", &width, &height), 2);
    // Every other column is white, so that a picture that was made smaller has its colour nowhere.
    Bitmap stripes{width, height, {}};
    for (int i = 0; i < width * height; ++i) {
        stripes.points.push_back(i % width % 2 == 0 ? kPictureColor : 0xFFFFFFFF);
    }
    machine.platform.Find("C:\\photo.bmp")->thumbnail = stripes;
    ClickRow("lstRecent", 1);
    EXPECT_EQ(PointsOfPicture(Find<QWidget>("picRecentThumbnail")), (width + 1) / 2 * height);
}

TEST_F(QtMainWindowTest, TheBarBetweenListAndPreviewIsDraggedWithTheMouse) {
    Window().resize(1100, 700);
    QTest::qWait(0);
    ClickNode("anna", 1);
    ClickButton("SHOWPREVIEW");
    auto& pane = Find<QWidget>("picRecent");
    const auto& list = Find<QTreeView>("lstRecent");
    const auto& box = Find<QWidget>("picRecentThumbnail");
    const auto move = [&](int x) {
        QTest::mouseMove(&pane, QPoint(x, 200));
        QTest::qWait(0);
    };
    const auto drag = [&](int from, const std::vector<int>& places) {
        move(from);
        EXPECT_EQ(pane.cursor().shape(), Qt::SplitHCursor);
        QTest::mousePress(&pane, Qt::LeftButton, {}, QPoint(from, 200));
        std::for_each(places.begin(), places.end(), move);
        QTest::mouseRelease(&pane, Qt::LeftButton, {}, QPoint(places.back(), 200));
        QTest::qWait(0);
    };
    const int before = list.width();
    EXPECT_EQ(list.height(), pane.height());
    drag(before + 2, {before + 5, before + 20, before + 42});
    EXPECT_EQ(list.width(), before + 40);
    const QRect space(list.width() + 5, 0, pane.width() - list.width() - 5, pane.height());
    EXPECT_TRUE(space.contains(box.geometry()));
    EXPECT_NEAR(box.width(), box.height(), 1);
    EXPECT_LE((box.geometry().center() - space.center()).manhattanLength(), 2);
    drag(list.width() + 2, {before, pane.width() - 20});
    EXPECT_NEAR(pane.width() - list.width() - 5, 100, 1);
    drag(list.width() + 2, {before, 5});
    EXPECT_NEAR(pane.width() - list.width() - 5, 400, 1);
    move(list.width() + 2);
    EXPECT_EQ(list.viewport()->cursor().shape(), Qt::ArrowCursor) << "only the bar has the other one";
    EXPECT_EQ(box.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(QtMainWindowTest, DoubleClicksOpenDocumentsAndAddressesAndStartPrograms) {
    machine.platform.AddFile("C:\\calc.exe");
    ClickNode("anna", 0);
    OpenRow("lstProgram", 0);
    OpenRow("lstProgram", 1);
    EXPECT_EQ(machine.platform.programsStarted, (Strings{"C:\\calc.exe"}));
    ClickNode("anna", 1);
    OpenRow("lstRecent", 0);
    OpenRow("lstRecent", 1);
    ClickNode("anna", 4);
    OpenRow("lstTypedURL", 2);
    Strings opened;
    for (const auto& executed : machine.platform.executed) {
        opened.push_back(executed.file);
    }
    EXPECT_EQ(opened, (Strings{"C:\\photo.bmp", "http://alphabet/"}));
    EXPECT_EQ(person.messages, (Strings{})) << "what is not there is not spoken of";
}

TEST_F(QtMainWindowTest, TheReportIsWrittenByKeysAlone) {
    person.Then("frmCreateReport", [] {
        Press(Qt::Key_Down);
        for (int i = 0; i < 6; ++i) {
            Press(Qt::Key_Tab);  // past the sections
        }
        Type(kOut);
        Press(Qt::Key_Return);
        Press(Qt::Key_Escape);
    });
    ClickButton("REPORT");
    const std::string report = machine.Read(kOut);
    for (const char* text : {"anna", "C:\\notepad.exe", "C:\\letter.doc", "http://beta/"}) {
        EXPECT_NE(report.find(text), std::string::npos) << text;
    }
    ASSERT_EQ(machine.platform.executed.size(), 1U);
    EXPECT_EQ(machine.platform.executed[0].file, kOut);
}

TEST_F(QtMainWindowTest, EscapeClosesEachDialogAndChangesNothing) {
    ClickNode("anna", 4);
    const Strings before = Rows("lstTypedURL");
    person.Then("frmFilter", [] {
        Type("beta");
        Press(Qt::Key_Escape);
    });
    ClickButton("FILTER");
    EXPECT_FALSE(IsChecked("FILTER"));
    person.Then("frmFind", [] {
        Type("beta");
        Press(Qt::Key_Escape);
    });
    ClickButton("FIND");
    EXPECT_EQ(person.messages, (Strings{"Search string not found"}));
    person.Then("frmCreateReport", [] {
        Press(Qt::Key_Down);
        Press(Qt::Key_Escape);
    });
    ClickButton("REPORT");
    EXPECT_EQ(Rows("lstTypedURL"), before);
    EXPECT_EQ(SelectedRow("lstTypedURL"), "");
    EXPECT_EQ(machine.Read(kOut), "none");
    EXPECT_TRUE(machine.platform.executed.empty());
}

TEST_F(QtMainWindowTest, TheAboutBoxIsInTheHelpMenu) {
    Strings texts;
    person.Then("frmAbout", [&] {
        for (const QLabel* label : QApplication::activeWindow()->findChildren<QLabel*>()) {
            texts.push_back(label->text().toStdString());
        }
        Press(Qt::Key_Return);
    });
    QMenuBar& bar = *Window().menuBar();
    QMenu& help = *bar.actions().back()->menu();
    Click(bar, bar.actionGeometry(bar.actions().back()).center());
    ASSERT_TRUE(help.isVisible());
    Click(help, help.actionGeometry(&Find<QAction>("mnuAbout")).center());
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].find("Version : "), 0U);
}

TEST_F(QtMainWindowTest, TreeTabsAndListsAgreeWhateverIsDone) {
    constexpr int kInputs = 600;
    testing::ClumsyHands hands(20061231);
    auto& tree = Find<QTreeWidget>("treeUsers");
    auto& tabs = *Find<QTabWidget>("TabStrip").tabBar();
    int chosen = 0;
    for (int i = 0; i < kInputs; ++i) {
        const int tab = form.TabStrip.SelectedTab();
        const char* name = kLists.at(static_cast<std::size_t>(tab - 1));
        switch (hands.Below(8)) {
            case 0:
                Click(tabs, tabs.tabRect(hands.Below(tabs.count())).center());
                break;
            case 1:
            case 2:
            case 3:
                hands.ActOn(tree);
                break;
            default:
                hands.ActOn(Find<QTreeView>(name));
        }
        QTest::qWait(0);
        ExpectAgreement();
        ASSERT_FALSE(HasFailure()) << "input " << i;
        chosen += SelectedRow("lstTypedURL").empty() && SelectedRow("lstProgram").empty() ? 0 : 1;
    }
    EXPECT_GT(chosen, kInputs / 8);
    EXPECT_EQ(person.messages, (Strings{}));
}

/// A name for what has the focus.
std::string NameOf(const QWidget& widget) {
    const auto* button = qobject_cast<const QToolButton*>(&widget);
    if (button != nullptr && button->defaultAction() != nullptr) {
        return button->defaultAction()->objectName().toStdString();
    }
    if (qobject_cast<const QHeaderView*>(&widget) != nullptr) {
        return "header of " + widget.parentWidget()->objectName().toStdString();
    }
    if (qobject_cast<const QTabBar*>(&widget) != nullptr) {
        return "tabs";
    }
    return widget.objectName().toStdString();
}

/// What the focus comes by when Tab is pressed until it is back where it was.
Strings TabWalk() {
    constexpr int kMost = 50;
    const QWidget* start = QApplication::focusWidget();
    Strings names;
    for (int i = 0; i < kMost && (i == 0 || QApplication::focusWidget() != start); ++i) {
        const QWidget& widget = *QApplication::focusWidget();
        names.push_back(NameOf(widget));
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        EXPECT_FALSE(widget.accessibleName().isEmpty() && (button == nullptr || button->text().isEmpty()))
            << names.back() << " has no name";
        Press(Qt::Key_Tab);
    }
    return names;
}

TEST_F(QtMainWindowTest, TabReachesEverythingInTheWindow) {
    Window().resize(1020, 700);
    QTest::qWait(0);
    ClickButton("SHOWPREVIEW");
    for (int tab = 0; tab < 5; ++tab) {
        ClickNode("anna", tab);
        const std::string list = kLists.at(static_cast<std::size_t>(tab));
        EXPECT_EQ(TabWalk(), (Strings{"treeUsers", "tabs", list, "header of " + list, "SHOWPREVIEW", "REPORT",
                                      "FILTER", "FIND"}));
    }
}

TEST_F(QtMainWindowTest, TabReachesEverythingInTheDialogs) {
    Strings names;
    const auto walk = [&] {
        names = TabWalk();
        Press(Qt::Key_Escape);
    };
    person.Then("frmFilter", walk);
    ClickButton("FILTER");
    EXPECT_EQ(names, (Strings{"txtFilterString", "cmdFilter"}));
    person.Then("frmFind", walk);
    ClickButton("FIND");
    EXPECT_EQ(names, (Strings{"txtFind", "cmdFind"}));
    person.Then("frmAbout", walk);
    Find<QAction>("mnuAbout").trigger();
    EXPECT_EQ(names, (Strings{"cmdOK"}));
    person.Then("frmCreateReport", walk);
    ClickButton("REPORT");
    EXPECT_EQ(names,
              (Strings{"cboUserList", "chkPrograms", "chkRecentDocuments", "chkOpenSave", "chkIEHistory",
                       "chkTypedURLs", "txtFileName", "cmdBrowse", "chkOpenAfterFinish", "cmdClose"}))
        << "nothing can be generated yet";
    person.Then("frmCreateReport", [&] {
        QApplication::activeWindow()->findChild<QLineEdit*>()->setFocus();
        Type("a");
        names = TabWalk();
        Press(Qt::Key_Escape);
    });
    ClickButton("REPORT");
    EXPECT_EQ(std::count(names.begin(), names.end(), "cmdGenerate"), 1);
}

/// What is too narrow or too low for its text.
Strings Clipped(const QWidget& window) {
    Strings names;
    const auto note = [&](const QString& text, const QSize& wanted, const QSize& given) {
        if (wanted.width() > given.width() || wanted.height() > given.height()) {
            names.push_back(text.toStdString());
        }
    };
    for (const QCheckBox* box : window.findChildren<QCheckBox*>()) {
        note(box->text(), box->sizeHint(), box->size());
    }
    for (const QPushButton* button : window.findChildren<QPushButton*>()) {
        // Of a short text the hint is wider than it has to be.
        const int margin = 2 * button->style()->pixelMetric(QStyle::PM_ButtonMargin);
        const int width = button->fontMetrics().horizontalAdvance(button->text()) + margin;
        note(button->text(), button->sizeHint().boundedTo(QSize(width, QWIDGETSIZE_MAX)), button->size());
    }
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        note(label->text(), label->sizeHint(), label->size());
    }
    for (const QTabBar* tabs : window.findChildren<QTabBar*>()) {
        for (int tab = 0; tab < tabs->count(); ++tab) {
            const int width =
                tabs->iconSize().width() + tabs->fontMetrics().horizontalAdvance(tabs->tabText(tab));
            note(tabs->tabText(tab), QSize(width, tabs->fontMetrics().height()), tabs->tabRect(tab).size());
        }
    }
    for (const QHeaderView* header : window.findChildren<QHeaderView*>()) {
        for (int column = 0; header->isVisible() && column < header->count(); ++column) {
            note(header->model()->headerData(column, Qt::Horizontal).toString(),
                 QSize(header->sectionSizeHint(column), header->sizeHint().height()),
                 QSize(header->sectionSize(column), header->height()));
        }
    }
    return names;
}

TEST_F(QtMainWindowTest, TextsFitIntoTheirPlaces) {
    Window().resize(640, 480);
    QTest::qWait(0);
    for (int source = 0; source < 5; ++source) {
        ClickNode("anna", source);
        for (int column = 0; column < Shown<QHeaderView>().count(); ++column) {
            ClickHeader(Shown<QHeaderView>(), column);  // the arrow of the sort takes room, too
            EXPECT_EQ(Clipped(Window()), (Strings{})) << source << ", " << column;
        }
    }
    Strings clipped;
    const auto look = [&] {
        clipped = Clipped(*QApplication::activeWindow());
        Press(Qt::Key_Escape);
    };
    for (const auto& [dialog, action] :
         {std::pair{"frmFilter", "FILTER"}, std::pair{"frmFind", "FIND"},
          std::pair{"frmCreateReport", "REPORT"}, std::pair{"frmAbout", "mnuAbout"}}) {
        person.Then(dialog, look);
        Find<QAction>(action).trigger();
        EXPECT_EQ(clipped, (Strings{})) << dialog;
    }
}

}  // namespace
}  // namespace ostrevin
