#include "toolkit/qt/QtBoxes.h"

#include <cmath>
#include <optional>

#include <QFrame>
#include <QGroupBox>
#include <QImage>
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

class PictureWidget : public QFrame {
  public:
    PictureWidget(QtToolkit& toolkit, PictureBox& box, QWidget* parent)
        : QFrame(parent), toolkit_(toolkit), box_(box) {
        setMouseTracking(true);
        setCursor(Qt::ArrowCursor);
        if (box.Bordered()) {
            setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
            setAutoFillBackground(true);
            setBackgroundRole(QPalette::Base);
        }
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QFrame::paintEvent(event);
        QPainter painter(this);
        if (!box_.PictureName().empty()) {
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawPixmap(rect(), Picture(box_.PictureName(), devicePixelRatioF()));
        }
        if (box_.Picture() != nullptr) {
            PaintPoints(painter, *box_.Picture());
        }
    }
    void mousePressEvent(QMouseEvent* event) override {
        Raise(box_.MouseDown, *event, ButtonBits(event->button()));
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        toolkit_.ForgetCursor();
        Raise(box_.MouseMove, *event, ButtonBits(event->buttons()));
        if (const std::optional<Qt::CursorShape> shape = toolkit_.CursorOfMove()) {
            setCursor(*shape);
        } else {
            setCursor(Qt::ArrowCursor);
        }
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        Raise(box_.MouseUp, *event, ButtonBits(event->button()));
    }
    void leaveEvent(QEvent* /*event*/) override { setCursor(Qt::ArrowCursor); }

  private:
    /// One point of the picture to one of the screen, in the middle of the box; smaller where the box has
    /// become too small for it.
    void PaintPoints(QPainter& painter, const ostrevin::Picture& picture) {
        const QImage image(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.width,
                           picture.height, QImage::Format_ARGB32);
        const double ratio = devicePixelRatioF();
        QSizeF size = QSizeF(image.size()) / ratio;
        const QRectF inside = contentsRect();
        if (size.width() > inside.width() || size.height() > inside.height()) {
            size.scale(inside.size(), Qt::KeepAspectRatio);
        }
        const auto onPoint = [ratio](double place) { return std::floor(place * ratio) / ratio; };
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(
            QRectF(QPointF(onPoint((width() - size.width()) / 2), onPoint((height() - size.height()) / 2)),
                   size),
            image);
    }
    void Raise(const Event<int, int, double, double>& event, const QMouseEvent& mouse, int buttons) {
        const QPointF place = toolkit_.Confine(mapToGlobal(mouse.position()));
        const QPointF within = mapFromGlobal(place);
        const double x = box_.ScaleX(within.x(), ScaleMode::Pixel, box_.ScaleMode());
        const double y = box_.ScaleY(within.y(), ScaleMode::Pixel, box_.ScaleMode());
        toolkit_.Deliver([&] { event.Raise(buttons, ShiftState(mouse.modifiers()), x, y); });
    }

    QtToolkit& toolkit_;
    PictureBox& box_;
};

QWidget& NewFrame(const Frame& frame, QWidget* parent) {
    if (frame.Caption().empty()) {
        return *new QWidget(parent);
    }
    return *new QGroupBox(Shown(frame.Caption()), parent);
}

}  // namespace

QtFrame::QtFrame(Frame& frame, QWidget* parent) : WidgetView(frame) {
    Show(NewFrame(frame, parent));
}

QtPictureBox::QtPictureBox(QtToolkit& toolkit, PictureBox& box, QWidget* parent) : WidgetView(box) {
    Show(*new PictureWidget(toolkit, box, parent));
}

void QtPictureBox::PictureChanged() {
    Widget().update();
}

PixelRect QtPictureBox::WindowRect() const {
    const QPoint corner = Widget().mapToGlobal(QPoint(0, 0));
    return {corner.x(), corner.y(), Widget().width(), Widget().height()};
}

}  // namespace ostrevin::qt
