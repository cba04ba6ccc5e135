// Boxes that others stand on: a plain frame, and a box that shows a picture and knows the mouse.
#pragma once

#include <string>

#include "controls/Container.h"
#include "controls/Event.h"

namespace ostrevin {

/// A page without a border, measured in twips.
class Frame : public Container {
  public:
    using Container::Container;
    void Accept(ControlVisitor& visitor) override;
    void Attach(ControlView* view) { SetView(view); }
};

class PictureBoxView : public ControlView {
  public:
    virtual void PictureChanged() = 0;
};

/// The mouse is told as button (1 left, 2 right, 4 middle), shift state (1 shift, 2 control, 4 alt) and a
/// place in the box's own scale.
class PictureBox : public Container {
  public:
    using Container::Container;
    void Accept(ControlVisitor& visitor) override;
    void Attach(PictureBoxView* view) { SetView(view); }

    /// The name of a picture of the program's own; empty for none.
    [[nodiscard]] const std::string& Picture() const { return picture_; }
    void SetPicture(const std::string& name);

    Event<int, int, double, double> MouseDown;
    Event<int, int, double, double> MouseMove;
    Event<int, int, double, double> MouseUp;

  private:
    std::string picture_;
};

}  // namespace ostrevin
