// Dialogs as Qt shows them: what they are made of, the keys that press their buttons, and the window around.
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include "controls/Boxes.h"
#include "controls/Form.h"
#include "controls/Inputs.h"
#include "controls/ListView.h"
#include "controls/ToolBar.h"
#include "tests/toolkit/QtFormTest.h"
#include "toolkit/qt/QtToolkit.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

class SampleDialog : public Form {
  public:
    explicit SampleDialog(Toolkit& toolkit) : Form(toolkit, "frmDialog") {
        SetBorderStyle(BorderStyle::FixedDialog);
        SetCaption("Sample");
        Move(0, 0, 6000, 4500);
        label.Move(150, 150, 2000, 300);
        label.SetCaption("Tom & <b>Jerry</b>");
        text.Move(150, 450, 2000, 375);
        text.SetAccessibleName("Text");
        frame.Move(150, 900, 3000, 1200);
        frame.SetCaption("Group");
        check.Move(150, 375, 2000, 300);
        check.SetCaption("Check");
        combo.Move(150, 2200, 2000, 375);
        progress.Move(150, 2700, 2000, 300);
        ok.Move(150, 3200, 1200, 375);
        ok.SetCaption("OK");
        ok.SetDefault();
        other.Move(1500, 3200, 1200, 375);
        other.SetCaption("Other");
        other.SetFontName("Arial");
        ok.Click = [this] { log.emplace_back("ok"); };
        other.Click = [this] { log.emplace_back("other"); };
    }
    ~SampleDialog() override { DropView(); }

    Label label{this, "label"};
    TextBox text{this, "text"};
    Frame frame{this, "frame"};
    CheckBox check{&frame, "check"};
    ComboBox combo{this, "combo"};
    ProgressBar progress{this, "progress"};
    CommandButton ok{this, "ok"};
    CommandButton other{this, "other"};
    Strings log;
    bool mayClose = true;

  protected:
    bool Form_QueryUnload() override { return mayClose; }
};

class QtDialogTest : public QtFormTest {
  protected:
    QtDialogTest() : QtFormTest(form) {}

    void Show() {
        form.Show();
        QApplication::setActiveWindow(&Window());
        QTest::qWait(0);
    }

    qt::QtToolkit toolkit;
    SampleDialog form{toolkit};
};

TEST_F(QtDialogTest, CaptionsAreShownAsTheyStand) {
    Show();
    auto& label = Find<QLabel>("label");
    EXPECT_EQ(label.text(), "Tom & <b>Jerry</b>");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    form.label.SetCaption("later");
    EXPECT_EQ(label.text(), "later");
    EXPECT_EQ(Find<QGroupBox>("frame").title(), "Group");
    form.ok.SetCaption("Fine");
    EXPECT_EQ(Find<QPushButton>("ok").text(), "Fine");
    EXPECT_TRUE(Find<QPushButton>("ok").isDefault());
    EXPECT_FALSE(Find<QPushButton>("other").isDefault());
    EXPECT_EQ(Find<QPushButton>("other").font().family(), "Arial");
    EXPECT_EQ(Find<QLineEdit>("text").accessibleName(), "Text");
}

TEST_F(QtDialogTest, TextIsTypedAndSet) {
    Show();
    int changes = 0;
    form.text.Change = [&] { ++changes; };
    auto& line = Find<QLineEdit>("text");
    QTest::keyClicks(&line, "ab");
    EXPECT_EQ(form.text.Text(), "ab");
    EXPECT_EQ(changes, 2);
    form.text.SetText("\xC3\xA4");
    EXPECT_EQ(line.text(), QString::fromUtf8("\xC3\xA4"));
    EXPECT_EQ(changes, 3);
}

TEST_F(QtDialogTest, CheckBoxFollowsClicksAndCode) {
    form.check.SetValue(CheckBox::kGrayed);
    Show();
    auto& box = Find<QCheckBox>("check");
    EXPECT_EQ(box.checkState(), Qt::PartiallyChecked);
    form.check.SetValue(CheckBox::kChecked);
    EXPECT_EQ(box.checkState(), Qt::Checked);
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_EQ(form.check.Value(), CheckBox::kUnchecked);
    EXPECT_EQ(box.checkState(), Qt::Unchecked);
}

TEST_F(QtDialogTest, DropDownListBeginsWithNothingAndFollows) {
    form.combo.AddItem("anna");
    Show();
    form.combo.AddItem("ben");
    auto& combo = Find<QComboBox>("combo");
    EXPECT_EQ(combo.count(), 2);
    EXPECT_EQ(combo.currentIndex(), -1);
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(form.combo.Text(), "anna");
    form.combo.SetListIndex(1);
    EXPECT_EQ(combo.currentText(), "ben");
}

TEST_F(QtDialogTest, ProgressIsShownInProportion) {
    Show();
    form.progress.SetMin(0);
    form.progress.SetMax(100);
    form.progress.SetValue(12.5F);
    auto& bar = Find<QProgressBar>("progress");
    EXPECT_DOUBLE_EQ(double(bar.value()) / (bar.maximum() - bar.minimum()), 0.125);
    form.progress.SetVisible(false);
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(QtDialogTest, EnterPressesTheDefaultButtonUnlessAnotherHasTheFocus) {
    Show();
    EXPECT_EQ(Window().focusWidget(), &Find<QLineEdit>("text")) << "the first control to type in";
    QTest::keyClick(Window().focusWidget(), Qt::Key_Return);
    Find<QPushButton>("other").setFocus();
    QTest::keyClick(&Find<QPushButton>("other"), Qt::Key_Enter);
    Find<QCheckBox>("check").setFocus();
    QTest::keyClick(&Find<QCheckBox>("check"), Qt::Key_Return);
    form.ok.SetEnabled(false);
    QTest::keyClick(&Find<QLineEdit>("text"), Qt::Key_Return);
    EXPECT_EQ(form.log, (Strings{"ok", "other", "ok"}));
}

TEST_F(QtDialogTest, TabFollowsTheEye) {
    Show();
    Strings names;
    for (int i = 0; i < 5; ++i) {
        names.push_back(Window().focusWidget()->objectName().toStdString());
        QTest::keyClick(Window().focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names, (Strings{"text", "check", "combo", "ok", "other"}));
}

TEST_F(QtDialogTest, EscapeClosesADialogOrPressesItsCancelButton) {
    Show();
    form.mayClose = false;
    QTest::keyClick(&Find<QLineEdit>("text"), Qt::Key_Escape);
    EXPECT_TRUE(Window().isVisible()) << "the form objects";
    form.other.SetCancel();
    QTest::keyClick(&Find<QLineEdit>("text"), Qt::Key_Escape);
    EXPECT_EQ(form.log, (Strings{"other"}));
    form.SetCancelButton(nullptr);
    form.mayClose = true;
    QTest::keyClick(&Find<QLineEdit>("text"), Qt::Key_Escape);
    EXPECT_FALSE(form.Loaded());
}

TEST_F(QtDialogTest, AFormThatObjectsStaysOpenWhenItsWindowIsClosed) {
    Show();
    form.mayClose = false;
    EXPECT_FALSE(Window().close());
    EXPECT_TRUE(Window().isVisible());
    form.mayClose = true;
    Window().close();
    EXPECT_FALSE(form.Loaded());
}

TEST_F(QtDialogTest, ADialogIsOfItsSizeAndStandsOverTheMiddleOfItsOwner) {
    SampleDialog owner(toolkit);
    owner.Show();
    QMainWindow& below = *static_cast<qt::QtFormView*>(owner.View())->Window();
    below.move(300, 200);
    QApplication::setActiveWindow(&below);
    QTest::qWait(0);
    QRect place;
    QSize inside;
    QTimer::singleShot(0, [&] {
        place = Window().frameGeometry();
        inside = Window().size();
        EXPECT_EQ(Window().windowHandle()->transientParent(), below.windowHandle());
        form.Hide();
    });
    form.Show(ShowStyle::Modal);
    EXPECT_EQ(inside, QSize(400, 300));
    EXPECT_LE((place.center() - below.frameGeometry().center()).manhattanLength(), 2);
}

/// Does something with the Save dialog as soon as it is up.
class DialogUser {
  public:
    explicit DialogUser(const std::function<void(QFileDialog&)>& use) {
        QObject::connect(&timer_, &QTimer::timeout, [use] {
            if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
                use(*dialog);
            }
        });
        timer_.start(1);
    }

  private:
    QTimer timer_;
};

TEST_F(QtDialogTest, SaveDialogAsksNothingAboutAFileThatIsThere) {
    const QString file = QApplication::applicationFilePath();  // one that is there
    QStringList seen;
    const DialogUser user([&](QFileDialog& dialog) {
        seen = QStringList{dialog.windowTitle(), dialog.nameFilters().join(u'|'), dialog.defaultSuffix()};
        dialog.setDirectory(file.section(u'/', 0, -2));
        dialog.findChild<QLineEdit*>()->setText(file.section(u'/', -1));
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(toolkit.ShowSave(nullptr, {"Where to", "HTML Files (*.htm)|*.htm", ""}), file.toStdString());
    EXPECT_EQ(seen, (QStringList{"Where to", "HTML Files (*.htm)", ""}));
}

TEST_F(QtDialogTest, ACancelledSaveDialogGivesNoName) {
    const DialogUser user([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(toolkit.ShowSave(nullptr, {"Where to", "HTML Files (*.htm)|*.htm", "a.htm"}), "");
}

TEST_F(QtDialogTest, NoFileIsRenamedOrDeletedFromAFileDialog) {
    std::vector<bool> readOnly;
    const DialogUser user([&](QFileDialog& dialog) {
        readOnly.push_back(dialog.testOption(QFileDialog::ReadOnly));
        dialog.reject();
    });
    EXPECT_EQ(toolkit.ShowSave(nullptr, {"Where to", "HTML Files (*.htm)|*.htm", ""}), "");
    EXPECT_EQ(toolkit.ChooseFolder("Which volume"), "");
    EXPECT_EQ(readOnly, (std::vector<bool>{true, true}));
}

/// A box with a bar in it, beside a list that can be hidden.
class SampleWindow : public Form {
  public:
    explicit SampleWindow(Toolkit& toolkit) : Form(toolkit, "frmWindow") {
        Move(0, 0, 9000, 6000);
        bar.SetAlignment(Align::Top);
        bar.SetHeight(540);
        bar.Add("PLAIN", "", ToolButton::Style::Default).SetToolTipText("Plain");
        list.Move(0, 600, 3000, 3000);
        list.AddColumn("One", 1000);
        list.AddColumn("Two", 1000);
        box.Move(3000, 600, 3000, 3000);
    }
    ~SampleWindow() override { DropView(); }
    ToolBar bar{this, "bar"};
    ListView list{this, "list"};
    PictureBox box{this, "box"};
};

class QtWindowTest : public ::testing::Test {
  protected:
    QtWindowTest() {
        form.Show();
        QApplication::setActiveWindow(&Window());
        QTest::qWait(0);
    }
    [[nodiscard]] QMainWindow& Window() const { return *static_cast<qt::QtFormView*>(form.View())->Window(); }
    [[nodiscard]] QWidget& Box() const { return *Window().findChild<QWidget*>("box"); }

    qt::QtToolkit toolkit;
    SampleWindow form{toolkit};
};

TEST_F(QtWindowTest, AListThatWasHiddenForAWhileHasTheFocusAgain) {
    auto& list = *Window().findChild<QWidget*>("list");
    EXPECT_EQ(Window().focusWidget(), &list) << "not the tool bar";
    form.list.SetVisible(false);
    EXPECT_NE(Window().focusWidget(), &list);
    form.list.SetVisible(true);
    EXPECT_EQ(Window().focusWidget(), &list);
}

TEST_F(QtWindowTest, KeyboardReachesToolBarAndHeaders) {
    Strings clicked;
    form.bar.ButtonClick = [&](ToolButton& button) { clicked.push_back(button.Key()); };
    form.list.ColumnClick = [&](ColumnHeader& column) { clicked.push_back(column.Text()); };
    auto* button = qobject_cast<QToolButton*>(Window().findChild<QWidget*>("bar")->findChild<QToolButton*>());
    for (QToolButton* each : Window().findChild<QWidget*>("bar")->findChildren<QToolButton*>()) {
        button = each->defaultAction() != nullptr ? each : button;
    }
    EXPECT_EQ(button->focusPolicy(), Qt::TabFocus);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    auto& header = *Window().findChild<QHeaderView*>();
    header.setFocus();
    QTest::keyClick(&header, Qt::Key_Right);
    QTest::keyClick(&header, Qt::Key_Space);
    QTest::keyClick(&header, Qt::Key_Right);
    QTest::keyClick(&header, Qt::Key_Return);
    QTest::keyClick(&header, Qt::Key_Left);
    QTest::keyClick(&header, Qt::Key_Space);
    EXPECT_EQ(clicked, (Strings{"PLAIN", "Two", "Two", "One"}));
}

TEST_F(QtWindowTest, BoxShowsThePointsOfItsPictureInTheMiddle) {
    auto picture = std::make_shared<Picture>();
    picture->width = 10;
    picture->height = 6;
    picture->pixels.assign(60, 0xFF0000FF);
    picture->pixels[0] = 0xFFFF0000;
    form.box.SetPicture(picture);
    QImage shown = Box().grab().toImage();
    EXPECT_EQ(shown.pixel(95, 97), 0xFFFF0000);
    EXPECT_EQ(shown.pixel(96, 97), 0xFF0000FF);
    EXPECT_EQ(shown.pixel(104, 102), 0xFF0000FF);
    EXPECT_NE(shown.pixel(94, 97), 0xFF0000FF);
    form.box.SetPicture(nullptr);
    shown = Box().grab().toImage();
    EXPECT_NE(shown.pixel(100, 100), 0xFF0000FF);
}

TEST_F(QtWindowTest, CursorOfAMoveLastsUntilTheNext) {
    const std::unique_ptr<Cursor> sizing = toolkit.LoadCursor(CursorShape::SizeWestEast);
    form.box.MouseMove = [&](int, int, double x, double) {
        if (x > 1500) {
            toolkit.SetCursor(*sizing);
        }
    };
    QTest::mouseMove(&Box(), QPoint(150, 10));
    QTest::qWait(0);
    EXPECT_EQ(Box().cursor().shape(), Qt::SplitHCursor);
    QTest::mouseMove(&Box(), QPoint(20, 10));
    QTest::qWait(0);
    EXPECT_EQ(Box().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(QtWindowTest, MouseIsKeptWithinItsPartOfTheScreen) {
    const PixelRect area = form.box.WindowRect();
    EXPECT_EQ(area.width, 200);
    EXPECT_EQ(area.left, Box().mapToGlobal(QPoint(0, 0)).x());
    std::vector<double> places;
    form.box.MouseMove = [&](int, int, double x, double) { places.push_back(x); };
    toolkit.ClipCursor(&area);
    QTest::mousePress(&Box(), Qt::LeftButton, {}, QPoint(100, 10));
    QTest::mouseMove(&Box(), QPoint(500, 10));
    QTest::qWait(0);
    ASSERT_FALSE(places.empty());
    for (const double place : places) {
        EXPECT_LE(place, 3000);
    }
    toolkit.ClipCursor(nullptr);
    places.clear();
    QTest::mouseMove(&Box(), QPoint(501, 10));
    QTest::qWait(0);
    QTest::mouseRelease(&Box(), Qt::LeftButton, {}, QPoint(501, 10));
    ASSERT_FALSE(places.empty());
    EXPECT_GT(places.back(), 3000);
}

}  // namespace
}  // namespace ostrevin
