#include "toolkit/win32/WindowView.h"

#include <stdexcept>

#include "toolkit/win32/OffScreen.h"

namespace ostrevin::win32 {

ChildWindow::~ChildWindow() {
    Destroy();
}

void ChildWindow::Destroy() {
    if (handle_ != nullptr) {
        DestroyWindow(handle_);
    }
}

void ChildWindow::PaintWithoutFlicker() {
    PaintOffScreen(handle_, [this](HDC dc) {
        CallWindowProcW(classProcedure_, handle_, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
        CallWindowProcW(classProcedure_, handle_, WM_PAINT, reinterpret_cast<WPARAM>(dc), 0);
    });
}

ChildWindow* ChildWindow::Of(HWND window) {
    static_assert(sizeof(LONG_PTR) == sizeof(ChildWindow*));
    return window == nullptr ? nullptr
                             : reinterpret_cast<ChildWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void ChildWindow::Create(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, HWND parent) {
    handle_ = CreateWindowExW(extendedStyle, windowClass, L"", WS_CHILD | WS_CLIPSIBLINGS | style, 0, 0, 0, 0,
                              parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (handle_ == nullptr) {
        throw std::runtime_error("A window could not be made.");
    }
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    classProcedure_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    SetWindowPos(handle_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

LRESULT CALLBACK ChildWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ChildWindow& child = *Of(window);
    if (message != WM_NCDESTROY) {
        return child.OnMessage(message, wParam, lParam);
    }
    // The last message: the parent may take its children away before their views go.
    child.handle_ = nullptr;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    return CallWindowProcW(child.classProcedure_, window, message, wParam, lParam);
}

std::optional<LRESULT> HandToChild(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND && lParam != 0) {
        if (ChildWindow* child = ChildWindow::Of(reinterpret_cast<HWND>(lParam))) {
            child->OnCommand(HIWORD(wParam), LOWORD(wParam));
            return 0;
        }
    } else if (message == WM_NOTIFY) {
        auto& header = *reinterpret_cast<NMHDR*>(lParam);
        if (ChildWindow* child = ChildWindow::Of(header.hwndFrom)) {
            return child->OnNotify(header);
        }
    }
    return std::nullopt;
}

bool MovesSelection(WPARAM key) {
    switch (key) {
        case VK_PRIOR:
        case VK_NEXT:
        case VK_END:
        case VK_HOME:
        case VK_UP:
        case VK_DOWN:
            return true;
        default:
            return false;
    }
}

void Place(HWND window, const Control& control) {
    const PixelRect place = control.PlaceInPixels();
    SetWindowPos(window, nullptr, place.left, place.top, place.width, place.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ApplyState(HWND window, const Control& control) {
    const HWND focus = GetFocus();
    if ((!control.Visible() || !control.Enabled()) && (window == focus || IsChild(window, focus) != FALSE)) {
        constexpr WPARAM kPrevious = TRUE;
        SendMessageW(GetAncestor(window, GA_ROOT), WM_NEXTDLGCTL, kPrevious, FALSE);
    }
    EnableWindow(window, control.Enabled() ? TRUE : FALSE);
    ShowWindow(window, control.Visible() ? SW_SHOWNA : SW_HIDE);
}

}  // namespace ostrevin::win32
