// Texts of the evidence in the window: shown as they are, never taken for markup, and no more of them than
// can be seen.
#include <algorithm>
#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <QAccessible>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QIdentityProxyModel>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>

#include "controls/Boxes.h"
#include "controls/Form.h"
#include "controls/Inputs.h"
#include "controls/ListView.h"
#include "controls/ShownText.h"
#include "controls/StatusBar.h"
#include "controls/TreeView.h"
#include "tests/support/ScratchFolder.h"
#include "tests/toolkit/QtFormTest.h"
#include "toolkit/qt/QtToolkit.h"

namespace ostrevin {
namespace {

constexpr QRgb kPictureColor = 0xFF33CC66;

/// A file of a picture, of which is known whether it was opened.
class WatchedPicture {
  public:
    explicit WatchedPicture(const std::string& path) {
        QImage picture(60, 60, QImage::Format_RGB32);
        picture.fill(kPictureColor);
        picture.save(QString::fromStdString(path));
        inotify_add_watch(watch_, path.c_str(), IN_OPEN);
    }
    ~WatchedPicture() { close(watch_); }
    WatchedPicture(const WatchedPicture&) = delete;
    WatchedPicture& operator=(const WatchedPicture&) = delete;

    [[nodiscard]] bool WasOpened() const {
        std::array<char, sizeof(inotify_event) + 256> event{};
        return read(watch_, event.data(), event.size()) > 0;
    }

  private:
    int watch_ = inotify_init1(IN_NONBLOCK);
};

class TextForm : public Form {
  public:
    explicit TextForm(Toolkit& toolkit) : Form(toolkit, "frmText") {
        Move(0, 0, 12000, 9000);
        status.SetAlignment(Align::Bottom);
        status.SetHeight(400);
        status.AddPanel(0);
        tree.Move(0, 0, 3000, 3000);
        list.Move(3000, 0, 9000, 3000);
        list.AddColumn("Text", 1500);
        list.AddColumn("Other", 1500);
        users.Move(0, 3600, 3000, 450);
        label.Move(0, 4200, 3000, 450);
        frame.Move(0, 4800, 3000, 1500);
        check.Move(0, 6300, 3000, 450);
        button.Move(0, 6900, 3000, 450);
    }
    ~TextForm() override { DropView(); }
    TextForm(const TextForm&) = delete;
    TextForm& operator=(const TextForm&) = delete;

    /// Puts a text wherever one can be shown.
    void Fill(const std::string& text) {
        SetCaption(text);
        status.SetPanelText(1, text);
        tree.Add(nullptr, "node", text, "");
        list.Add("0KEY", text).SetSubItem(1, text);
        users.AddItem(text);
        users.SetListIndex(0);
        label.SetCaption(text);
        check.SetCaption(text);
        button.SetCaption(text);
    }

    TreeView tree{this, "tree"};
    ListView list{this, "list"};
    ComboBox users{this, "users"};
    Label label{this, "label"};
    Frame frame{this, "frame"};
    CheckBox check{this, "check"};
    CommandButton button{this, "button"};
    StatusBar status{this, "status"};
};

class QtTextTest : public QtFormTest {
  protected:
    QtTextTest() : QtFormTest(form) {}

    void Show(const std::string& text) {
        form.frame.SetCaption(text);
        form.Fill(text);
        form.Show();
        QApplication::setActiveWindow(&Window());
        QTest::qWait(0);
    }
    /// Rests with the mouse on the first cell of the list until its tip shows.
    void ShowToolTip(int columnWidth = 60) const {
        auto& view = Find<QTreeView>("list");
        view.header()->resizeSection(0, columnWidth);
        const QPoint place = view.visualRect(view.model()->index(0, 0)).center();
        QHelpEvent event(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(view.viewport(), &event);
        QTest::qWait(50);
    }
    [[nodiscard]] static QLabel& ToolTip() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* label = qobject_cast<QLabel*>(widget);
            if (label != nullptr && label->isVisible() && label->inherits("QTipLabel")) {
                return *label;
            }
        }
        throw std::runtime_error("no tool tip");
    }
    /// What a person reads there, without the ends of the lines.
    [[nodiscard]] static std::string ReadToolTip() {
        QTextDocument read;
        read.setHtml(QToolTip::text());
        return read.toPlainText().remove(u'\n').toStdString();
    }
    static int PointsOfPicture(QWidget& widget) {
        const QImage image = widget.grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += image.pixel(x, y) == kPictureColor ? 1 : 0;
            }
        }
        return count;
    }
    /// Shows a message, and runs act while its box is there.
    void ShowMessage(const std::string& text, const std::function<void(QMessageBox&)>& act) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                act(*box);
                box->accept();
            }
        });
        timer.start(1);
        toolkit.MsgBox(&form, text, text);
    }

    ScratchFolder folder;
    qt::QtToolkit toolkit;
    TextForm form{toolkit};
};

/// A text that would do something if it were taken for markup; PICTURE stands for a file, PIPE for one that
/// has no end, DATA for a picture within the text.
class QtMarkupTest : public QtTextTest, public ::testing::WithParamInterface<const char*> {
  protected:
    QtMarkupTest() {
        mkfifo(folder.Path("pipe").c_str(), 0600);
        text.replace(QStringLiteral("PICTURE"), QString::fromStdString(folder.Path("picture.png")));
        text.replace(QStringLiteral("PIPE"), QString::fromStdString(folder.Path("pipe")));
        text.replace(QStringLiteral("DATA"), QString::fromLatin1(Encoded()));
    }
    static QByteArray Encoded() {
        QImage picture(60, 60, QImage::Format_RGB32);
        picture.fill(kPictureColor);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        picture.save(&buffer, "PNG");
        return bytes.toBase64();
    }

    QString text = QString::fromLatin1(GetParam());
    WatchedPicture picture{folder.Path("picture.png")};
};

TEST_P(QtMarkupTest, IsShownAsItIs) {
    Show(text.toStdString());
    ShowToolTip();
    EXPECT_EQ(ReadToolTip(), text.toStdString());
    EXPECT_EQ(PointsOfPicture(ToolTip()), 0);
    EXPECT_EQ(Find<QTreeView>("list").model()->index(0, 0).data(), text);
    EXPECT_EQ(Find<QTreeWidget>("tree").topLevelItem(0)->text(0), text);
    auto& users = Find<QComboBox>("users");
    EXPECT_EQ(users.currentText(), text);
    users.showPopup();
    EXPECT_EQ(PointsOfPicture(*users.view()), 0);
    users.hidePopup();
    QToolTip::hideText();
    QList<QLabel*> labels = Find<QWidget>("status").findChildren<QLabel*>();
    labels.push_back(&Find<QLabel>("label"));
    for (const QLabel* label : labels) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(label->text(), text);
    }
    EXPECT_EQ(Window().windowTitle(), text);
    EXPECT_EQ(PointsOfPicture(Window()), 0);
    bool shown = false;
    ShowMessage(text.toStdString(), [&](QMessageBox& box) {
        shown = true;
        EXPECT_EQ(box.text(), text);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(PointsOfPicture(box), 0);
    });
    EXPECT_TRUE(shown);
    EXPECT_FALSE(picture.WasOpened());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, QtMarkupTest,
    ::testing::Values(
        "<img src=\"PICTURE\">", "<img src=\"file://PICTURE\" width=60 height=60>",
        "<p>&lt;<img src='PICTURE'>", "&lt;a&gt; &amp; && 100% %1 <b>", "<?xml version='1.0'?><b>bold</b>",
        "  <br/>two  blanks ", "<img src=\"data:image/png;base64,DATA\">", "<img src=\"PIPE\">",
        "<table background='PICTURE'><tr><td style='background:url(PICTURE)'>x</td></tr></table>",
        "<link rel=stylesheet href='PIPE'><style>@import url('PIPE');</style>"));

TEST_F(QtTextTest, ATextThatIsNotCutOffHasNoToolTip) {
    Show("<b>short");
    ShowToolTip(300);
    EXPECT_EQ(QToolTip::text(), "");
}

TEST_F(QtTextTest, ARowHasItsHeightAndItsOrderWhateverIsInIt) {
    Show("plain");
    auto& view = Find<QTreeView>("list");
    const auto paintedBeside = [&] {
        QTest::qWait(0);
        return view.viewport()->grab(view.visualRect(view.model()->index(0, 1))).toImage();
    };
    const QRect place = view.visualRect(view.model()->index(0, 0));
    const QImage plain = paintedBeside();
    for (const char* text :
         {"one\ntwo\nthree\nfour", "\u2028\u2028\u2028", "\u202e\u2067gpj.exe", "\x1b[2J\x07\u009b"}) {
        form.list.Clear();
        form.list.Add("0KEY", text).SetSubItem(1, "plain");
        EXPECT_EQ(paintedBeside(), plain) << text;
        EXPECT_EQ(view.visualRect(view.model()->index(0, 0)), place) << text;
        EXPECT_EQ(view.model()->index(0, 0).data().toString().toStdString(), ShownText(text));
    }
    ShowMessage("a\u202eb\x1b\r\nc", [](QMessageBox& box) { EXPECT_EQ(box.text(), "a\uFFFDb\uFFFD\nc"); });
}

/// Notes the longest text that a view asks for.
class LengthCounter : public QIdentityProxyModel {
  public:
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        QVariant answer = QIdentityProxyModel::data(index, role);
        if (answer.typeId() == QMetaType::QString) {
            longest = std::max(longest, answer.toString().size());
        }
        return answer;
    }
    mutable qsizetype longest = 0;
};

TEST_F(QtTextTest, OfALongTextTheViewTakesNoMoreThanCanBeSeen) {
    constexpr std::size_t kLong = 8'000'000;
    static constexpr qsizetype kMost = 2 * kShownAtEachEnd + 1;
    Show(std::string(kLong, 'a') + "end");
    auto& view = Find<QTreeView>("list");
    LengthCounter counter;
    QAbstractItemModel* model = view.model();
    counter.setSourceModel(model);
    view.setModel(&counter);
    view.viewport()->repaint();
    ShowToolTip();
    EXPECT_LE(ReadToolTip().size(), kMost + 2);
    EXPECT_TRUE(ReadToolTip().ends_with("aend"));
    EXPECT_LE(ToolTip().width(), view.screen()->availableGeometry().width());
    EXPECT_LE(ToolTip().height(), view.screen()->availableGeometry().height());
    QTest::keyClicks(&view, "aaab");
    view.resizeColumnToContents(0);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(accessible, nullptr);
    EXPECT_LE(accessible->tableInterface()->cellAt(0, 0)->text(QAccessible::Name).size(), kMost);
    EXPECT_GT(counter.longest, 100);
    EXPECT_LE(counter.longest, kMost);
    view.setModel(model);
    EXPECT_LE(Find<QTreeWidget>("tree").topLevelItem(0)->text(0).size(), kMost);
    EXPECT_LE(Find<QComboBox>("users").itemText(0).size(), kMost);
    ShowMessage(std::string(kLong, 'a'), [](QMessageBox& box) { EXPECT_LE(box.text().size(), kMost); });
}

}  // namespace
}  // namespace ostrevin
