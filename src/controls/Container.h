// A control that others stand on, with a scale of its own.
#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"

namespace ostrevin {

/// Units of length. There are 1440 twips and 72 points to an inch.
enum class ScaleMode { Twip = 1, Point = 2, Pixel = 3 };

class Container : public Control {
  public:
    using Control::Control;

    /// The unit in which this container measures its inside.
    [[nodiscard]] enum ScaleMode ScaleMode() const { return scaleMode_; }
    void SetScaleMode(enum ScaleMode mode) { scaleMode_ = mode; }
    /// The inner size, in the own unit.
    [[nodiscard]] virtual double ScaleWidth();
    [[nodiscard]] virtual double ScaleHeight();
    /// Converts horizontal and vertical lengths between units.
    [[nodiscard]] double ScaleX(double length, enum ScaleMode from, enum ScaleMode to);
    [[nodiscard]] double ScaleY(double length, enum ScaleMode from, enum ScaleMode to);

    /// What stands on it, in tab order.
    [[nodiscard]] const std::vector<Control*>& Controls() const { return controls_; }

  private:
    friend class Control;
    void Add(Control& control) { controls_.push_back(&control); }
    void Remove(Control& control);

    enum ScaleMode scaleMode_ = ScaleMode::Twip;
    std::vector<Control*> controls_;
};

}  // namespace ostrevin
