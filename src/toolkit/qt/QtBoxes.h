// Frames and picture boxes.
#pragma once

#include "controls/Boxes.h"
#include "toolkit/qt/QtToolkit.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

class QtFrame final : public WidgetView<ControlView, Frame> {
  public:
    QtFrame(Frame& frame, QWidget* parent);
};

class QtPictureBox final : public WidgetView<PictureBoxView, PictureBox> {
  public:
    QtPictureBox(QtToolkit& toolkit, PictureBox& box, QWidget* parent);
    void PictureChanged() override;
    [[nodiscard]] PixelRect WindowRect() const override;
};

}  // namespace ostrevin::qt
