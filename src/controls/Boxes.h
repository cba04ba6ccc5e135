// Boxes that others stand on: a frame, and a box that shows a picture and knows the mouse.
#pragma once

#include <string>

#include "controls/Container.h"
#include "controls/Event.h"
#include "controls/Picture.h"
#include "controls/PixelRect.h"

namespace ostrevin {

/// Measured in twips. With a caption it has a border around what stands on it; without one it is a plain
/// page.
class Frame : public Container {
  public:
    using Container::Container;
    void Accept(ControlVisitor& visitor) override;
    void Attach(ControlView* view) { SetView(view); }

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    /// To be called before the form is loaded.
    void SetCaption(const std::string& caption) { caption_ = caption; }

  private:
    std::string caption_;
};

class PictureBoxView : public ControlView {
  public:
    virtual void PictureChanged() = 0;
    /// Where the box is on the screen.
    [[nodiscard]] virtual PixelRect WindowRect() const = 0;
};

/// Shows one picture at a time, in its middle. The mouse is told as button (1 left, 2 right, 4 middle), shift
/// state (1 shift, 2 control, 4 alt) and a place in the box's own scale.
class PictureBox : public Container {
  public:
    using Container::Container;
    void Accept(ControlVisitor& visitor) override;
    void Attach(PictureBoxView* view) { SetView(view); }

    /// The name of a picture of the program's own, which fills the box; empty for none.
    [[nodiscard]] const std::string& PictureName() const { return pictureName_; }
    void SetPictureName(const std::string& name);
    /// Null for none.
    [[nodiscard]] const PicturePtr& Picture() const { return picture_; }
    void SetPicture(PicturePtr picture);

    /// Whether a line of one pixel stands around the box, which is no part of the inner size, and the inside
    /// is the colour of what is read.
    [[nodiscard]] bool Bordered() const { return bordered_; }
    /// To be called before the form is loaded.
    void SetBordered(bool bordered) { bordered_ = bordered; }
    [[nodiscard]] double ScaleWidth() override;
    [[nodiscard]] double ScaleHeight() override;

    /// Where the box is on the screen; its size at the screen's corner while nothing shows it.
    [[nodiscard]] PixelRect WindowRect();

    Event<int, int, double, double> MouseDown;
    Event<int, int, double, double> MouseMove;
    Event<int, int, double, double> MouseUp;

  private:
    void PictureChanged();

    std::string pictureName_;
    PicturePtr picture_;
    bool bordered_ = false;
};

}  // namespace ostrevin
