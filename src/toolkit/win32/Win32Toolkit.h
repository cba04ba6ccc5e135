// Shows forms with the common controls of Windows.
#pragma once

#include <functional>
#include <optional>

#include "controls/Control.h"
#include "controls/Toolkit.h"
#include "toolkit/win32/Fonts.h"
#include "toolkit/win32/Win32Collation.h"
#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {

class Win32Toolkit : public Toolkit {
  public:
    Win32Toolkit();

    void InitCommonControls() override;
    std::unique_ptr<FormView> CreateView(Form& form) override;
    void MsgBox(Form* owner, const std::string& text, const std::string& caption) override;
    std::string ShowSave(Form* owner, const SaveRequest& request) override;
    void DoEvents() override;
    [[nodiscard]] std::unique_ptr<Cursor> LoadCursor(CursorShape shape) override;
    void SetCursor(const Cursor& cursor) override;
    void ClipCursor(const PixelRect* area) override;
    [[nodiscard]] double PixelsPerInchX() const override { return pixelsPerInchX_; }
    [[nodiscard]] double PixelsPerInchY() const override { return pixelsPerInchY_; }
    [[nodiscard]] int CompareText(std::string_view left, std::string_view right) const override;
    [[nodiscard]] std::vector<std::size_t> RankTexts(std::span<const std::string_view> texts) const override;

    /// Runs the message loop until the last form is unloaded; returns the program's exit code.
    int Run();
    /// Hands what a person did to the controls. A failure that comes out of them is shown in a box and ends
    /// the program with exit code 1.
    void Deliver(const std::function<void()>& action);
    /// The window of a form; null when it is not loaded.
    [[nodiscard]] static HWND WindowOf(const Form& form);
    /// The system's font for windows, or the one that the control asks for.
    [[nodiscard]] HFONT FontOf(const Control& control) { return fonts_.Get(control.FontName()); }

    // Called by the views of boxes.

    /// Whether SetCursor was called since ForgetCursor.
    [[nodiscard]] bool CursorOfMove() const { return cursorOfMove_; }
    void ForgetCursor() { cursorOfMove_ = false; }

    // Called by the views of forms.

    void FormOpened() { ++openForms_; }
    void FormClosed();
    /// Handles messages until done holds or the program ends.
    void HandleMessagesUntil(const std::function<bool()>& done);
    /// Handles the messages that wait, but for those of keys and mouse.
    void HandleMessagesButInput();
    /// Lets the message loop look again whether it is done. (It stays asleep through messages that another
    /// program sends directly.)
    static void WakeLoop();

  private:
    void HandleWaiting(UINT kinds);

    Fonts fonts_;
    Win32Collation collation_;
    double pixelsPerInchX_;
    double pixelsPerInchY_;
    bool cursorOfMove_ = false;
    int openForms_ = 0;
    std::optional<int> exitCode_;  // once the program is to end
};

}  // namespace ostrevin::win32
