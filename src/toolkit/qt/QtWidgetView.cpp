#include "toolkit/qt/QtWidgetView.h"

#include <cmath>

namespace ostrevin::qt {

void Place(QWidget& widget, const Control& control) {
    Container& container = *control.Parent();
    const auto x = [&](double length) {
        return static_cast<int>(
            std::lround(container.ScaleX(length, container.ScaleMode(), ScaleMode::Pixel)));
    };
    const auto y = [&](double length) {
        return static_cast<int>(
            std::lround(container.ScaleY(length, container.ScaleMode(), ScaleMode::Pixel)));
    };
    // The edges are rounded, not the sizes, so that neighbours stay neighbours.
    const int left = x(control.Left());
    const int top = y(control.Top());
    widget.setGeometry(left, top, x(control.Left() + control.Width()) - left,
                       y(control.Top() + control.Height()) - top);
}

void ApplyState(QWidget& widget, const Control& control) {
    widget.setVisible(control.Visible());
    widget.setEnabled(control.Enabled());
}

}  // namespace ostrevin::qt
