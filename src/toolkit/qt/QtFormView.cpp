#include "toolkit/qt/QtFormView.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QToolBar>
#include <QWindow>

#include "controls/Timer.h"
#include "toolkit/qt/QtBoxes.h"
#include "toolkit/qt/QtInputs.h"
#include "toolkit/qt/QtListView.h"
#include "toolkit/qt/QtPictures.h"
#include "toolkit/qt/QtStatusBar.h"
#include "toolkit/qt/QtTabStrip.h"
#include "toolkit/qt/QtToolBar.h"
#include "toolkit/qt/QtTreeView.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {
namespace {

/// The window: hands closing and minimising to the form.
class FormWindow : public QMainWindow {
  public:
    FormWindow(QtToolkit& toolkit, Form& form) : toolkit_(toolkit), form_(form) {}

  protected:
    void closeEvent(QCloseEvent* event) override {
        // Unloading takes the window away; a form that objects keeps it.
        event->ignore();
        toolkit_.Deliver([this] { form_.Close(); });
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape) {
            toolkit_.Deliver([this] { form_.Escape(); });
        } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            PressOnEnter();
        } else {
            QMainWindow::keyPressEvent(event);
        }
    }

    void changeEvent(QEvent* event) override {
        QMainWindow::changeEvent(event);
        if (event->type() == QEvent::WindowStateChange && centralWidget() != nullptr) {
            const WindowState state = isMinimized()   ? WindowState::Minimized
                                      : isMaximized() ? WindowState::Maximized
                                                      : WindowState::Normal;
            toolkit_.Deliver(
                [&] { form_.Resized(centralWidget()->width(), centralWidget()->height(), state); });
        }
    }

  private:
    /// Presses the button that has the focus, else the form's default button.
    void PressOnEnter() {
        auto* button = qobject_cast<QAbstractButton*>(focusWidget());
        if (button != nullptr && qobject_cast<QCheckBox*>(button) == nullptr) {
            button->click();
        } else if (form_.DefaultButton() != nullptr) {
            toolkit_.Deliver([this] { form_.DefaultButton()->Press(); });
        }
    }

    QtToolkit& toolkit_;
    Form& form_;
};

/// The inside of the window, on which the controls stand.
class Surface : public QWidget {
  public:
    Surface(QtToolkit& toolkit, Form& form, QWidget* parent)
        : QWidget(parent), toolkit_(toolkit), form_(form) {}

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        const WindowState state = window()->isMaximized() ? WindowState::Maximized : WindowState::Normal;
        toolkit_.Deliver([&] { form_.Resized(width(), height(), state); });
    }

  private:
    QtToolkit& toolkit_;
    Form& form_;
};

int Pixels(double length, double pixelsPerInch) {
    constexpr double kTwipsPerInch = 1440;
    return static_cast<int>(std::lround(length * pixelsPerInch / kTwipsPerInch));
}

}  // namespace

QtFormView::QtFormView(QtToolkit& toolkit, Form& form)
    : toolkit_(toolkit), form_(form), window_(new FormWindow(toolkit, form)) {
    toolkit_.FormOpened();
    window_->setObjectName(Text(form.Name()));
    window_->setWindowIcon(Icon("ostrevin"));
    surface_ = new Surface(toolkit, form, window_);
    window_->setCentralWidget(surface_);
    if (form.BorderStyle() == BorderStyle::None) {
        window_->setWindowFlags(Qt::SplashScreen);
    } else if (form.BorderStyle() == BorderStyle::FixedDialog) {
        window_->setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                Qt::WindowCloseButtonHint);
    }
    CaptionChanged();
    AddMenus();
    AddControls(form, *surface_);
    FitSize();
}

QtFormView::~QtFormView() {
    form_.Menus().Attach(nullptr);
    views_.clear();
    if (modalLoop_ != nullptr) {
        modalLoop_->quit();
    }
    // The window may be in the middle of telling us that it closes, so it goes when it is done with that.
    window_->hide();
    window_->deleteLater();
    toolkit_.FormClosed();
}

void QtFormView::Show() {
    window_->setWindowModality(Qt::NonModal);
    FocusFirst();
    window_->show();
    window_->raise();
}

void QtFormView::ShowModal() {
    QEventLoop loop;
    modalLoop_ = &loop;
    window_->setWindowModality(Qt::ApplicationModal);
    if (QWidget* owner = QApplication::activeWindow(); owner != nullptr && owner != window_) {
        StandOver(*owner);
    }
    FocusFirst();
    window_->show();
    window_->activateWindow();
    loop.exec();
}

/// Keeps the window in front of another, and puts it over the middle of that.
void QtFormView::StandOver(QWidget& owner) {
    window_->winId();  // makes the native window that there is to put in front
    window_->windowHandle()->setTransientParent(owner.windowHandle());
    QRect place = window_->frameGeometry();
    place.moveCenter(owner.frameGeometry().center());
    const QRect screen = owner.screen()->availableGeometry();
    window_->move(std::max(place.left(), screen.left()), std::max(place.top(), screen.top()));
}

/// Gives the focus to the first control, unless one has it; tool bars are there for those who turn to them.
void QtFormView::FocusFirst() {
    QWidget* widget = window_->nextInFocusChain();
    while (window_->focusWidget() == nullptr && widget != window_) {
        const bool onBar = qobject_cast<QToolBar*>(widget->parentWidget()) != nullptr;
        if (!onBar && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled() &&
            widget->isVisibleTo(window_)) {
            widget->setFocus();
        }
        widget = widget->nextInFocusChain();
    }
}

void QtFormView::Hide() {
    window_->hide();
    if (modalLoop_ != nullptr) {
        modalLoop_->quit();
    }
}

void QtFormView::CaptionChanged() {
    window_->setWindowTitle(Shown(form_.Caption()));
}

void QtFormView::SizeChanged() {
    FitSize();
}

void QtFormView::Refresh() {
    // A window is first painted when the display server has put it on the screen.
    constexpr int kLongestWait = 200;
    QElapsedTimer elapsed;
    elapsed.start();
    while (window_->isVisible() && window_->windowHandle() != nullptr &&
           !window_->windowHandle()->isExposed() && elapsed.elapsed() < kLongestWait) {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
    }
    surface_->repaint();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtFormView::FitSize() {
    const int menuHeight = form_.Menus().Items().empty() ? 0 : window_->menuBar()->sizeHint().height();
    const QSize wanted(Pixels(form_.Width(), toolkit_.PixelsPerInchX()),
                       Pixels(form_.Height(), toolkit_.PixelsPerInchY()) + menuHeight);
    switch (form_.BorderStyle()) {
        case BorderStyle::Sizable:
            window_->setMinimumSize(form_.MinPixelWidth(), form_.MinPixelHeight());
            window_->resize(wanted.boundedTo(window_->screen()->availableSize()));
            break;
        case BorderStyle::FixedDialog:
        case BorderStyle::None:
            window_->setFixedSize(wanted);
            break;
    }
}

void QtFormView::AddMenus() {
    for (MenuItem& menu : form_.Menus().Items()) {
        QMenu& added = *window_->menuBar()->addMenu(Text(menu.Caption()));
        for (MenuItem& item : menu.Items()) {
            AddItem(added, item);
        }
    }
    form_.Menus().Attach(this);
}

void QtFormView::AddItem(QMenu& menu, MenuItem& item) {
    QAction& action = *menu.addAction(Text(item.Caption()));
    action.setObjectName(Text(item.Name()));
    action.setCheckable(item.Checkable());
    if (!item.Shortcut().empty()) {
        action.setShortcut(QKeySequence(Text(item.Shortcut()), QKeySequence::PortableText));
    }
    actions_[&item] = &action;
    ItemChanged(item);
    QObject::connect(&action, &QAction::triggered, window_, [this, &item] {
        // Qt has turned the check mark over by itself; whether it is checked is the item's to say.
        ItemChanged(item);
        toolkit_.Deliver([&item] { item.Click.Raise(); });
    });
}

void QtFormView::ItemChanged(MenuItem& item) {
    const auto action = actions_.find(&item);
    if (action != actions_.end()) {
        action->second->setEnabled(item.Enabled());
        action->second->setChecked(item.Checked());
    }
}

void QtFormView::AddControls(Container& container, QWidget& widget) {
    for (Control* control : container.Controls()) {
        parent_ = &widget;
        control->Accept(*this);
    }
}

void QtFormView::Visit(Frame& frame) {
    auto view = std::make_unique<QtFrame>(frame, parent_);
    QWidget& widget = view->Widget();
    views_.push_back(std::move(view));
    AddControls(frame, widget);
}

void QtFormView::Visit(PictureBox& box) {
    auto view = std::make_unique<QtPictureBox>(toolkit_, box, parent_);
    QWidget& widget = view->Widget();
    views_.push_back(std::move(view));
    AddControls(box, widget);
}

void QtFormView::Visit(CheckBox& box) {
    views_.push_back(std::make_unique<QtCheckBox>(toolkit_, box, parent_));
}

void QtFormView::Visit(ComboBox& box) {
    views_.push_back(std::make_unique<QtComboBox>(toolkit_, box, parent_));
}

void QtFormView::Visit(CommandButton& button) {
    views_.push_back(std::make_unique<QtCommandButton>(toolkit_, button, parent_));
}

void QtFormView::Visit(Label& label) {
    views_.push_back(std::make_unique<QtLabel>(label, parent_));
}

void QtFormView::Visit(ProgressBar& bar) {
    views_.push_back(std::make_unique<QtProgressBar>(bar, parent_));
}

void QtFormView::Visit(TextBox& box) {
    views_.push_back(std::make_unique<QtTextBox>(toolkit_, box, parent_));
}

void QtFormView::Visit(ListView& list) {
    views_.push_back(std::make_unique<QtListView>(toolkit_, list, parent_));
}

void QtFormView::Visit(StatusBar& bar) {
    views_.push_back(std::make_unique<QtStatusBar>(bar, parent_));
}

void QtFormView::Visit(TabStrip& tabs) {
    views_.push_back(std::make_unique<QtTabStrip>(toolkit_, tabs, parent_));
}

void QtFormView::Visit(Timer& timer) {
    if (timer.Interval() <= 0) {
        return;
    }
    auto& clock = *timers_.emplace_back(std::make_unique<QTimer>());
    clock.setInterval(timer.Interval());
    QObject::connect(&clock, &QTimer::timeout, window_, [this, &timer] {
        if (timer.Enabled()) {
            toolkit_.Deliver([&timer] { timer.Tick.Raise(); });
        }
    });
    clock.start();
}

void QtFormView::Visit(ToolBar& bar) {
    views_.push_back(std::make_unique<QtToolBar>(toolkit_, bar, parent_));
}

void QtFormView::Visit(TreeView& tree) {
    views_.push_back(std::make_unique<QtTreeView>(toolkit_, tree, parent_));
}

}  // namespace ostrevin::qt
