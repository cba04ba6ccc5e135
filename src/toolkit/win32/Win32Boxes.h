// Frames and picture boxes.
#pragma once

#include "controls/Boxes.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

class Win32Frame final : public WindowView<ControlView, Frame> {
  public:
    Win32Frame(Win32Toolkit& toolkit, Frame& frame, HWND parent);

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    HWND border_ = nullptr;  // with the caption; it goes with the frame
};

class Win32PictureBox final : public WindowView<PictureBoxView, PictureBox> {
  public:
    Win32PictureBox(Win32Toolkit& toolkit, PictureBox& box, HWND parent);
    void PictureChanged() override;
    [[nodiscard]] PixelRect WindowRect() const override;

  private:
    using MouseEvent = Event<int, int, double, double>;

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Press(int button, WPARAM state, LPARAM place);
    void Release(int button, WPARAM state, LPARAM place);
    void Raise(const MouseEvent& event, int buttons, WPARAM state, LPARAM place);
    void Paint();

    Picture ownPicture_;    // the one with the box's picture name
    int pressed_ = 0;       // the buttons that were pressed over the box and not released
    WPARAM lastState_ = 0;  // of the mouse over the box, as the messages tell it
    LPARAM lastPlace_ = 0;
};

}  // namespace ostrevin::win32
