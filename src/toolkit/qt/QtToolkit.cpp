#include "toolkit/qt/QtToolkit.h"

#include <exception>

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QScreen>

#include "controls/Form.h"
#include "toolkit/qt/QtFormView.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {
namespace {

void ShowBox(QWidget* owner, QMessageBox::Icon icon, std::string_view text, const QString& caption) {
    QMessageBox box(icon, caption, Text(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")),
                    QMessageBox::Ok, owner);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

}  // namespace

QtToolkit::QtToolkit() {
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
    QApplication::setQuitOnLastWindowClosed(false);
}

void QtToolkit::InitCommonControls() {}

std::unique_ptr<FormView> QtToolkit::CreateView(Form& form) {
    return std::make_unique<QtFormView>(*this, form);
}

void QtToolkit::MsgBox(Form* owner, const std::string& text, const std::string& caption) {
    const auto* view = owner == nullptr ? nullptr : static_cast<QtFormView*>(owner->View());
    ShowBox(view == nullptr ? nullptr : view->Window(), QMessageBox::NoIcon, text, Text(caption));
}

double QtToolkit::PixelsPerInchX() const {
    return QApplication::primaryScreen()->logicalDotsPerInchX();
}

double QtToolkit::PixelsPerInchY() const {
    return QApplication::primaryScreen()->logicalDotsPerInchY();
}

int QtToolkit::CompareText(std::string_view left, std::string_view right) const {
    return collator_.compare(Text(left), Text(right));
}

std::string QtToolkit::ChooseFolder(const std::string& caption) {
    return QFileDialog::getExistingDirectory(nullptr, Text(caption)).toStdString();
}

int QtToolkit::Run() {
    return openForms_ == 0 ? 0 : QApplication::exec();
}

void QtToolkit::Deliver(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& failure) {
        ShowBox(nullptr, QMessageBox::Critical, failure.what(), QApplication::applicationName());
        QApplication::exit(1);
    }
}

void QtToolkit::FormClosed() {
    if (--openForms_ == 0) {
        QApplication::quit();
    }
}

}  // namespace ostrevin::qt
