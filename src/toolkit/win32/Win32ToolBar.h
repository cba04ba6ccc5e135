// Tool bars.
#pragma once

#include "controls/ToolBar.h"
#include "toolkit/win32/Pictures.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

/// A button's command is its place, from 1. With the keyboard, the arrows choose a button, and the space bar
/// or Enter clicks it.
class Win32ToolBar final : public WindowView<ToolBarView, ToolBar> {
  public:
    Win32ToolBar(Win32Toolkit& toolkit, ToolBar& bar, HWND parent);
    ~Win32ToolBar() override;

    void ButtonChanged(const ToolButton& button) override;

    void OnCommand(unsigned code, unsigned command) override;
    std::optional<LRESULT> OnNotify(NMHDR& header) override;

  protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(Handle(), message, wParam, lParam);
    }
    void AddButtons();
    /// Null for a command that is none of the buttons'.
    [[nodiscard]] ToolButton* ButtonOf(unsigned command) const;
    /// Chooses the next button in a direction that can be clicked, if there is one.
    void MoveTo(int place, int direction);
    void Click(unsigned command);

    NativeImages images_;
    NativeImages disabledImages_;
    int chosen_ = 0;  // with the keyboard, from 0
};

}  // namespace ostrevin::win32
