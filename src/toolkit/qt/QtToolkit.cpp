#include "toolkit/qt/QtToolkit.h"

#include <algorithm>
#include <exception>

#include <QApplication>
#include <QCursor>
#include <QFileDialog>
#include <QMessageBox>
#include <QScreen>

#include "controls/FailureText.h"
#include "controls/Form.h"
#include "toolkit/qt/QtFormView.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {
namespace {

void ShowBox(QWidget* owner, QMessageBox::Icon icon, std::string_view text, const QString& caption) {
    QString shown = Text(ShownMessage(text));
    QMessageBox box(icon, caption, shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n")),
                    QMessageBox::Ok, owner);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

class QtCursor final : public Cursor {
  public:
    explicit QtCursor(Qt::CursorShape shape) : shape_(shape) {}
    [[nodiscard]] Qt::CursorShape Shape() const { return shape_; }

  private:
    Qt::CursorShape shape_;
};

QWidget* WindowOf(const Form* form) {
    const auto* view = form == nullptr ? nullptr : static_cast<QtFormView*>(form->View());
    return view == nullptr ? nullptr : view->Window();
}

/// "HTML Files (*.htm)|*.htm" as Qt has it: "HTML Files (*.htm)".
QString NameFilters(const std::string& filter) {
    const QStringList parts = Text(filter).split(u'|');
    QStringList names;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString name = parts[i].section(u'(', 0, 0).trimmed();
        QString patterns = parts[i + 1];
        names += name + QStringLiteral(" (") + patterns.replace(u';', u' ') + u')';
    }
    return names.join(QStringLiteral(";;"));
}

}  // namespace

QtToolkit::QtToolkit() {
    QApplication::setQuitOnLastWindowClosed(false);
}

void QtToolkit::InitCommonControls() {}

std::unique_ptr<FormView> QtToolkit::CreateView(Form& form) {
    return std::make_unique<QtFormView>(*this, form);
}

void QtToolkit::MsgBox(Form* owner, const std::string& text, const std::string& caption) {
    ShowBox(WindowOf(owner), QMessageBox::NoIcon, text, Shown(caption));
}

std::string QtToolkit::ShowSave(Form* owner, const SaveRequest& request) {
    QFileDialog dialog(WindowOf(owner), Text(request.title), {}, NameFilters(request.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setOption(QFileDialog::ReadOnly);  // no file is renamed or deleted from there
    dialog.selectFile(Text(request.fileName));
    return dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()
               ? dialog.selectedFiles().front().toStdString()
               : std::string();
}

void QtToolkit::DoEvents() {
    QApplication::processEvents();
}

std::unique_ptr<Cursor> QtToolkit::LoadCursor(CursorShape shape) {
    return std::make_unique<QtCursor>(shape == CursorShape::SizeWestEast ? Qt::SplitHCursor
                                                                         : Qt::SplitVCursor);
}

void QtToolkit::SetCursor(const Cursor& cursor) {
    cursorOfMove_ = static_cast<const QtCursor&>(cursor).Shape();
}

void QtToolkit::ClipCursor(const PixelRect* area) {
    clip_ = area == nullptr ? std::nullopt
                            : std::optional(QRect(area->left, area->top, area->width, area->height));
}

QPointF QtToolkit::Confine(const QPointF& place) const {
    if (!clip_ || clip_->contains(place.toPoint())) {
        return place;
    }
    const QPointF nearest(std::clamp(place.x(), double(clip_->left()), double(clip_->right())),
                          std::clamp(place.y(), double(clip_->top()), double(clip_->bottom())));
    QCursor::setPos(nearest.toPoint());
    return nearest;
}

double QtToolkit::PointsPerPixel() const {
    return QApplication::primaryScreen()->devicePixelRatio();
}

double QtToolkit::PixelsPerInchX() const {
    return QApplication::primaryScreen()->logicalDotsPerInchX();
}

double QtToolkit::PixelsPerInchY() const {
    return QApplication::primaryScreen()->logicalDotsPerInchY();
}

int QtToolkit::CompareText(std::string_view left, std::string_view right) const {
    return collation_.Compare(left, right);
}

std::vector<std::size_t> QtToolkit::RankTexts(std::span<const std::string_view> texts) const {
    return collation_.Rank(texts);
}

std::string QtToolkit::ChooseFolder(const std::string& caption) {
    return QFileDialog::getExistingDirectory(nullptr, Text(caption), {},
                                             QFileDialog::ShowDirsOnly | QFileDialog::ReadOnly)
        .toStdString();
}

int QtToolkit::Run() {
    return openForms_ == 0 ? 0 : QApplication::exec();
}

void QtToolkit::Deliver(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& failure) {
        ShowBox(nullptr, QMessageBox::Critical, FailureText(failure), QApplication::applicationName());
        QApplication::exit(1);
    }
}

void QtToolkit::FormClosed() {
    if (--openForms_ == 0) {
        QApplication::quit();
    }
}

}  // namespace ostrevin::qt
