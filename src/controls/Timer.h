// A timer of a form. It runs while the form is loaded.
#pragma once

#include "controls/Control.h"
#include "controls/Event.h"

namespace ostrevin {

class Timer : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;

    /// In milliseconds; 0 stops it. Set before the form is loaded.
    [[nodiscard]] int Interval() const { return interval_; }
    void SetInterval(int milliseconds) { interval_ = milliseconds; }

    Event<> Tick;

  private:
    int interval_ = 0;
};

}  // namespace ostrevin
