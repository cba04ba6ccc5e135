#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

void Place(QWidget& widget, const Control& control) {
    const PixelRect place = control.PlaceInPixels();
    widget.setGeometry(place.left, place.top, place.width, place.height);
}

void ApplyState(QWidget& widget, const Control& control) {
    widget.setVisible(control.Visible());
    widget.setEnabled(control.Enabled());
}

}  // namespace ostrevin::qt
