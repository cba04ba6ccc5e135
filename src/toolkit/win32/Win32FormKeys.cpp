// Where the focus of a form is, and the keys that move it and press buttons.
#include <algorithm>

#include "controls/Inputs.h"
#include "toolkit/win32/Win32FormView.h"
#include "toolkit/win32/Win32Inputs.h"

namespace ostrevin::win32 {
namespace {

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

/// The character behind the "&" in a caption, in upper case; 0 for none.
wchar_t MnemonicOf(HWND window) {
    wchar_t caption[256];
    const int length = GetWindowTextW(window, caption, static_cast<int>(std::size(caption)));
    for (int i = 0; i + 1 < length; ++i) {
        if (caption[i] == L'&') {
            ++i;
            if (caption[i] != L'&') {
                CharUpperBuffW(&caption[i], 1);
                return caption[i];
            }
        }
    }
    return 0;
}

}  // namespace

void Win32FormView::Handle(MSG& message) {
    Win32FormView* view = Of(GetAncestor(message.hwnd, GA_ROOT));
    if (view != nullptr && IsWindowEnabled(view->window_) != FALSE &&
        (view->menus_->TranslateShortcut(message) || view->HandleKey(message))) {
        return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

/// Whether the message was a key of the form's; the view may be gone then.
bool Win32FormView::HandleKey(const MSG& message) {
    if (message.message != WM_KEYDOWN && message.message != WM_CHAR && message.message != WM_SYSCHAR) {
        return false;
    }
    const LRESULT wanted =
        SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    if ((wanted & DLGC_WANTMESSAGE) != 0) {
        return false;
    }
    if (message.message == WM_KEYDOWN) {
        return HandleKeyDown(message.wParam, message.hwnd, wanted);
    }
    const bool mnemonic = message.message == WM_SYSCHAR || (wanted & DLGC_WANTCHARS) == 0;
    return mnemonic && PressMnemonic(static_cast<wchar_t>(message.wParam));
}

bool Win32FormView::HandleKeyDown(WPARAM key, HWND focus, LRESULT wanted) {
    switch (key) {
        case VK_TAB:
            if ((wanted & DLGC_WANTTAB) != 0 || IsDown(VK_CONTROL)) {
                return false;
            }
            MoveFocus(IsDown(VK_SHIFT));
            return true;
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            if ((wanted & DLGC_WANTARROWS) != 0 || focus == window_) {
                return false;
            }
            MoveFocus(key == VK_LEFT || key == VK_UP);
            return true;
        case VK_RETURN:
            if (ButtonOfEnter() == nullptr) {
                return false;
            }
            PressDefault();
            return true;
        case VK_ESCAPE:
            toolkit_.Deliver([&form = form_] { form.Escape(); });
            return true;
        default:
            return false;
    }
}

/// Presses the next button or check box with this letter.
bool Win32FormView::PressMnemonic(wchar_t character) {
    CharUpperBuffW(&character, 1);
    std::vector<Stop> stops = stops_;
    std::rotate(stops.begin(), stops.begin() + (Focused() - stops_.begin()), stops.end());
    if (Focused() != stops_.end()) {
        std::rotate(stops.begin(), stops.begin() + 1, stops.end());
    }
    for (const Stop& stop : stops) {
        const LRESULT code = SendMessageW(stop.window, WM_GETDLGCODE, 0, 0);
        if ((code & DLGC_BUTTON) != 0 && CanHaveFocus(stop) && MnemonicOf(stop.window) == character) {
            FocusOn(stop);
            SendMessageW(stop.window, BM_CLICK, 0, 0);
            return true;
        }
    }
    return false;
}

/// The button that has the focus, else the form's default button; null for none.
const CommandButton* Win32FormView::ButtonOfEnter() const {
    const auto focused = Focused();
    return focused != stops_.end() && focused->button != nullptr ? focused->button : form_.DefaultButton();
}

void Win32FormView::PressDefault() {
    const auto found =
        std::find_if(stops_.begin(), stops_.end(),
                     [button = ButtonOfEnter()](const Stop& stop) { return stop.button == button; });
    if (found != stops_.end() && CanHaveFocus(*found)) {
        toolkit_.Deliver([button = found->button] { button->Press(); });
    }
}

void Win32FormView::ShowDefault() {
    const CommandButton* marked = ButtonOfEnter();
    for (const auto& [button, view] : buttons_) {
        view->MarkDefault(button == marked);
    }
}

bool Win32FormView::CanHaveFocus(const Stop& stop) const {
    for (const Control* control = stop.control; control != &form_; control = control->Parent()) {
        if (!control->Visible() || !control->Enabled()) {
            return false;
        }
    }
    return true;
}

std::vector<Win32FormView::Stop>::const_iterator Win32FormView::Focused() const {
    return std::find_if(stops_.begin(), stops_.end(), [focus = GetFocus()](const Stop& stop) {
        return stop.window == focus || IsChild(stop.window, focus) != FALSE;
    });
}

void Win32FormView::MoveFocus(bool back) {
    std::vector<Stop> stops(stops_.begin(), stops_.end());
    const auto focused = Focused() - stops_.begin();
    // The stops behind the one with the focus, round the end.
    std::rotate(stops.begin(), stops.begin() + focused, stops.end());
    if (back) {
        std::reverse(stops.begin(), stops.end());
    } else if (focused != static_cast<std::ptrdiff_t>(stops.size())) {
        std::rotate(stops.begin(), stops.begin() + 1, stops.end());
    }
    const auto next =
        std::find_if(stops.begin(), stops.end(), [this](const Stop& stop) { return CanHaveFocus(stop); });
    if (next != stops.end()) {
        FocusOn(*next);
    }
}

/// Gives the focus to the first control, unless one has it; tool bars are there for those who turn to them.
void Win32FormView::FocusFirst() {
    const auto first = std::find_if(stops_.begin(), stops_.end(), [this](const Stop& stop) {
        return !stop.onlyByKey && CanHaveFocus(stop);
    });
    if (focus_ == nullptr && first != stops_.end()) {
        FocusOn(*first);
    }
}

void Win32FormView::FocusOn(const Stop& stop) {
    focus_ = stop.window;
    if (GetActiveWindow() == window_) {
        SetFocus(focus_);
    }
    if ((SendMessageW(stop.window, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0) {
        SendMessageW(stop.window, EM_SETSEL, 0, -1);
    }
}

void Win32FormView::RestoreFocus() {
    const auto stop = std::find_if(stops_.begin(), stops_.end(),
                                   [this](const Stop& candidate) { return candidate.window == focus_; });
    if (stop == stops_.end() || CanHaveFocus(*stop)) {
        SetFocus(focus_);
    } else {
        MoveFocus(true);
    }
}

}  // namespace ostrevin::win32
