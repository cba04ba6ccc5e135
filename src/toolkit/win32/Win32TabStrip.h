// Tab strips.
#pragma once

#include "controls/TabStrip.h"
#include "toolkit/win32/Pictures.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

/// The pages are the form's own: they stand in front of the strip, which does not paint over them.
class Win32TabStrip final : public WindowView<TabStripView, TabStrip> {
  public:
    Win32TabStrip(Win32Toolkit& toolkit, TabStrip& tabs, HWND parent);
    ~Win32TabStrip() override;

    void SelectionChanged() override;
    [[nodiscard]] PixelRect ClientArea() const override;

    std::optional<LRESULT> OnNotify(NMHDR& header) override;

  private:
    NativeImages images_;
};

}  // namespace ostrevin::win32
