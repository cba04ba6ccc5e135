// Status bars.
#pragma once

#include <vector>

#include "controls/StatusBar.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

class Win32StatusBar final : public WindowView<StatusBarView, StatusBar> {
  public:
    Win32StatusBar(Win32Toolkit& toolkit, StatusBar& bar, HWND parent);

    void Moved() override;
    void PanelChanged(int panel) override;

  private:
    /// Makes a panel as wide as the text in it, if it is not yet.
    void Widen(int panel, const std::wstring& text);
    void PlacePanels();

    std::vector<int> widths_;  // in pixels; 0 takes what the others leave
};

}  // namespace ostrevin::win32
