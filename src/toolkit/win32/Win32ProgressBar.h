// Progress bars.
#pragma once

#include "controls/Inputs.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

class Win32ProgressBar final : public WindowView<ProgressBarView, ProgressBar> {
  public:
    Win32ProgressBar(Win32Toolkit& toolkit, ProgressBar& bar, HWND parent);
    void ValueChanged() override;
};

}  // namespace ostrevin::win32
