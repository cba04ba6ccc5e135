// Shows forms with the common controls of Windows.
#pragma once

#include <windows.h>
#include <functional>

#include "controls/Control.h"

namespace ostrevin::win32 {

class Win32Toolkit {
  public:
    /// The system's font for windows, or the one that the control asks for.
    [[nodiscard]] HFONT FontOf(const Control& control);
    /// The screen's resolution in pixels to the inch.
    [[nodiscard]] double PixelsPerInchX() const;
    [[nodiscard]] double PixelsPerInchY() const;
    /// Hands what a person did to the controls. A failure that comes out of them is shown in a box and ends
    /// the program with exit code 1.
    void Deliver(const std::function<void()>& action);
};

}  // namespace ostrevin::win32
