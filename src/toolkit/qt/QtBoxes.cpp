#include "toolkit/qt/QtBoxes.h"

#include <QMouseEvent>
#include <QPainter>

#include "toolkit/qt/QtPictures.h"

namespace ostrevin::qt {
namespace {

int ShiftState(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) | (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

int ButtonBits(Qt::MouseButtons buttons) {
    return (buttons.testFlag(Qt::LeftButton) ? 1 : 0) | (buttons.testFlag(Qt::RightButton) ? 2 : 0) |
           (buttons.testFlag(Qt::MiddleButton) ? 4 : 0);
}

class PictureWidget : public QWidget {
  public:
    PictureWidget(QtToolkit& toolkit, PictureBox& box, QWidget* parent)
        : QWidget(parent), toolkit_(toolkit), box_(box) {
        setMouseTracking(true);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        if (!box_.Picture().empty()) {
            QPainter painter(this);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawPixmap(rect(), Picture(box_.Picture(), devicePixelRatioF()));
        }
    }
    void mousePressEvent(QMouseEvent* event) override {
        Raise(box_.MouseDown, *event, ButtonBits(event->button()));
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        Raise(box_.MouseMove, *event, ButtonBits(event->buttons()));
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        Raise(box_.MouseUp, *event, ButtonBits(event->button()));
    }

  private:
    void Raise(const Event<int, int, double, double>& event, const QMouseEvent& mouse, int buttons) {
        const double x = box_.ScaleX(mouse.position().x(), ScaleMode::Pixel, box_.ScaleMode());
        const double y = box_.ScaleY(mouse.position().y(), ScaleMode::Pixel, box_.ScaleMode());
        toolkit_.Deliver([&] { event.Raise(buttons, ShiftState(mouse.modifiers()), x, y); });
    }

    QtToolkit& toolkit_;
    PictureBox& box_;
};

}  // namespace

QtFrame::QtFrame(Frame& frame, QWidget* parent) : WidgetView(frame) {
    Show(*new QWidget(parent));
}

QtPictureBox::QtPictureBox(QtToolkit& toolkit, PictureBox& box, QWidget* parent) : WidgetView(box) {
    Show(*new PictureWidget(toolkit, box, parent));
}

void QtPictureBox::PictureChanged() {
    Widget().update();
}

}  // namespace ostrevin::qt
