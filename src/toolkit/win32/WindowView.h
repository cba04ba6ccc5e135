// What the views of all controls share: a child window, its place and visibility, and the messages that it
// sends to the window it stands on.
#pragma once

#include <optional>

#include "controls/Container.h"
#include "toolkit/win32/Win32Toolkit.h"
#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {

/// The window of a control. Whichever window it stands on hands over what it is told about it.
class ChildWindow {
  public:
    ChildWindow() = default;
    ChildWindow(const ChildWindow&) = delete;
    ChildWindow& operator=(const ChildWindow&) = delete;
    /// Destroys the window, unless that was done with its parent.
    virtual ~ChildWindow();

    [[nodiscard]] HWND Handle() const { return handle_; }
    /// The child window with this handle; null for a window that is none.
    [[nodiscard]] static ChildWindow* Of(HWND window);

    /// WM_COMMAND, with its notification code and the number of the command.
    virtual void OnCommand(unsigned /*code*/, unsigned /*command*/) {}
    /// WM_NOTIFY; none leaves the answer to Windows.
    virtual std::optional<LRESULT> OnNotify(NMHDR& /*header*/) { return std::nullopt; }

  protected:
    /// A message to the window itself, on its way to the window's class. Whoever overrides it hands on what
    /// is the class's to do.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
        return CallWindowProcW(classProcedure_, handle_, message, wParam, lParam);
    }
    /// Lets the window's class erase and paint what is to be painted, out of sight, and shows it at once. For
    /// WM_PAINT of those whose class paints into any device context.
    void PaintWithoutFlicker();
    /// Destroys the window now, for a view that has something which must outlive it.
    void Destroy();
    /// Makes the window, invisible, in front of those that its parent has already.
    void Create(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, HWND parent);

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND handle_ = nullptr;
    WNDPROC classProcedure_ = nullptr;
};

/// Hands a WM_COMMAND or WM_NOTIFY to the child window that sent it; none for all other messages.
[[nodiscard]] std::optional<LRESULT> HandToChild(UINT message, WPARAM wParam, LPARAM lParam);

/// Whether a key moves the selection of a list or a tree up or down.
[[nodiscard]] bool MovesSelection(WPARAM key);

/// Puts a window where its control is.
void Place(HWND window, const Control& control);

/// Shows or hides, enables or disables a window as its control is. What can no longer have the focus gives it
/// away.
void ApplyState(HWND window, const Control& control);

/// A view that shows a control with one window.
template <typename View, typename Shown>
class WindowView : public View, public ChildWindow {
  public:
    WindowView(Win32Toolkit& toolkit, Shown& control) : toolkit_(toolkit), control_(control) {}
    ~WindowView() override { control_.Attach(nullptr); }

    void Moved() override { Place(Handle(), control_); }
    void StateChanged() override { ApplyState(Handle(), control_); }

  protected:
    /// Takes the window that Create made into use; called by the view's constructor.
    void Show() {
        const HFONT font = toolkit_.FontOf(control_);
        SendMessageW(Handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        control_.Attach(this);
        Moved();
        StateChanged();
    }
    [[nodiscard]] Win32Toolkit& Owner() const { return toolkit_; }
    [[nodiscard]] Shown& Control() const { return control_; }

  private:
    Win32Toolkit& toolkit_;
    Shown& control_;
};

}  // namespace ostrevin::win32
