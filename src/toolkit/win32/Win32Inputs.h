// What dialogs are made of.
#pragma once

#include <functional>

#include "controls/Inputs.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

class Win32Label final : public WindowView<CaptionView, Label> {
  public:
    Win32Label(Win32Toolkit& toolkit, Label& label, HWND parent);
    void CaptionChanged() override;
};

class Win32CommandButton final : public WindowView<CaptionView, CommandButton> {
  public:
    /// focusMoved is called when the button gets or loses the focus.
    Win32CommandButton(Win32Toolkit& toolkit, CommandButton& button, HWND parent,
                       std::function<void()> focusMoved);
    void CaptionChanged() override;
    void OnCommand(unsigned code, unsigned command) override;
    /// Draws it as the button that Enter presses, or not.
    void MarkDefault(bool isDefault);

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::function<void()> focusMoved_;
};

class Win32CheckBox final : public WindowView<CheckBoxView, CheckBox> {
  public:
    Win32CheckBox(Win32Toolkit& toolkit, CheckBox& box, HWND parent);
    void CaptionChanged() override;
    void ValueChanged() override;
    void OnCommand(unsigned code, unsigned command) override;
};

class Win32TextBox final : public WindowView<TextBoxView, TextBox> {
  public:
    Win32TextBox(Win32Toolkit& toolkit, TextBox& box, HWND parent);
    void TextChanged() override;
    void OnCommand(unsigned code, unsigned command) override;

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void CenterText(RECT& inside);
    void PaintMargins();

    bool settingText_ = false;
    LONG margin_ = 0;  // above the line and below it, in pixels
};

class Win32ComboBox final : public WindowView<ComboBoxView, ComboBox> {
  public:
    Win32ComboBox(Win32Toolkit& toolkit, ComboBox& box, HWND parent);
    void Moved() override;
    void ItemsChanged() override;
    void SelectionChanged() override;
    void OnCommand(unsigned code, unsigned command) override;
};

}  // namespace ostrevin::win32
