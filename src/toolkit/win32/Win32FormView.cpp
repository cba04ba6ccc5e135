#include "toolkit/win32/Win32FormView.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "controls/Timer.h"
#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

DWORD StyleOf(const Form& form) {
    switch (form.BorderStyle()) {
        case BorderStyle::Sizable:
            return WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
        case BorderStyle::FixedDialog:
            return WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
        case BorderStyle::None:
            break;
    }
    return WS_POPUP | WS_CLIPCHILDREN;
}

DWORD ExtendedStyleOf(const Form& form) {
    switch (form.BorderStyle()) {
        case BorderStyle::Sizable:
            break;
        case BorderStyle::FixedDialog:
            return WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME;
        case BorderStyle::None:
            return WS_EX_CONTROLPARENT | WS_EX_TOOLWINDOW;  // no button on the task bar
    }
    return WS_EX_CONTROLPARENT;
}

HICON ProgramIcon(int widthMetric, int heightMetric) {
    return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), L"OSTREVIN", IMAGE_ICON,
                                         GetSystemMetrics(widthMetric), GetSystemMetrics(heightMetric), 0));
}

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

bool operator==(const SIZE& left, const SIZE& right) {
    return left.cx == right.cx && left.cy == right.cy;
}

/// The part of the screen that a window may cover: of the one that shows another window, else of the first.
RECT WorkArea(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

int Pixels(double length, double pixelsPerInch) {
    constexpr double kTwipsPerInch = 1440;
    return static_cast<int>(std::lround(length * pixelsPerInch / kTwipsPerInch));
}

}  // namespace

Win32FormView::Win32FormView(Win32Toolkit& toolkit, Form& form)
    : toolkit_(toolkit),
      form_(form),
      ownWindow_(CreateWindowExW(ExtendedStyleOf(form), WindowClass(), L"", StyleOf(form), 0, 0, 0, 0,
                                 nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)),
      window_(ownWindow_.get()),
      toldSize_{Pixels(form.Width(), toolkit.PixelsPerInchX()),
                Pixels(form.Height(), toolkit.PixelsPerInchY())} {
    if (window_ == nullptr) {
        throw std::runtime_error("A window could not be made.");
    }
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    CaptionChanged();
    menus_ = std::make_unique<Win32MenuBar>(window_, form.Menus());
    AddControls(form, window_);
    ShowDefault();
    FitSize();
    StandInMiddleOf(nullptr);
    toolkit_.FormOpened();
}

Win32FormView::~Win32FormView() {
    EndModal();
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);  // it tells us nothing more
    ShowWindow(window_, SW_HIDE);
    while (!views_.empty()) {  // what stands on others goes before them
        views_.pop_back();
    }
    toolkit_.FormClosed();
}

void Win32FormView::WindowDeleter::operator()(HWND window) const {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    DestroyWindow(window);
}

const wchar_t* Win32FormView::WindowClass() {
    static const wchar_t* const name = [] {
        static constexpr wchar_t kName[] = L"OstrevinForm";
        WNDCLASSEXW description{};
        description.cbSize = sizeof(description);
        description.lpfnWndProc = Procedure;
        description.hInstance = GetModuleHandleW(nullptr);
        description.hIcon = ProgramIcon(SM_CXICON, SM_CYICON);
        description.hIconSm = ProgramIcon(SM_CXSMICON, SM_CYSMICON);
        description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        description.lpszClassName = kName;
        RegisterClassExW(&description);
        return kName;
    }();
    return name;
}

/// The form that a window is of; null for other windows.
Win32FormView* Win32FormView::Of(HWND window) {
    const bool ofForm = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC)) == &Procedure;
    return ofForm ? reinterpret_cast<Win32FormView*>(GetWindowLongPtrW(window, GWLP_USERDATA)) : nullptr;
}

LRESULT CALLBACK Win32FormView::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Win32FormView* view = reinterpret_cast<Win32FormView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (view != nullptr) {
        if (const std::optional<LRESULT> answer = view->OnMessage(message, wParam, lParam)) {
            return *answer;
        }
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

std::optional<LRESULT> Win32FormView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const std::optional<LRESULT> answer = HandToChild(message, wParam, lParam)) {
        return answer;
    }
    switch (message) {
        case WM_COMMAND:
            ChooseMenuItem(LOWORD(wParam));
            return 0;
        case WM_TIMER:
            Tick(static_cast<std::size_t>(wParam));
            return 0;
        case WM_SIZE:
            Sized(wParam);
            return 0;
        case WM_GETMINMAXINFO:
            LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) {
                const HWND focus = GetFocus();
                focus_ = IsChild(window_, focus) != FALSE ? focus : focus_;
            } else if (HIWORD(wParam) == 0) {  // not minimised
                RestoreFocus();
            }
            return 0;
        case WM_SETFOCUS:
            RestoreFocus();
            return 0;
        case WM_NEXTDLGCTL:
            MoveFocus(wParam != FALSE);
            return 0;
        case WM_CLOSE:
            toolkit_.Deliver([&form = form_] { form.Close(); });
            return 0;
        case WM_ENDSESSION:
            if (wParam != FALSE) {
                toolkit_.Deliver([&form = form_] { form.Unload(); });
            }
            return 0;
        case WM_DESTROY:
            // Not by the form: with the window that owns it, or from outside.
            SetWindowLongPtrW(ownWindow_.release(), GWLP_USERDATA, 0);
            toolkit_.Deliver([&form = form_] { form.Unload(); });
            return 0;
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
            HandOn(message, wParam, lParam);
            break;
        default:
            break;
    }
    return std::nullopt;
}

void Win32FormView::ChooseMenuItem(WORD command) {
    if (MenuItem* item = menus_->ItemOf(command)) {
        toolkit_.Deliver([item] { item->Click.Raise(); });
    }
}

void Win32FormView::Tick(std::size_t timer) {
    // Counted from 1.
    if (timer >= 1 && timer <= timers_.size() && timers_[timer - 1]->Enabled()) {
        toolkit_.Deliver([&clock = *timers_[timer - 1]] { clock.Tick.Raise(); });
    }
}

/// Tells the controls what only windows without a parent are told.
void Win32FormView::HandOn(UINT message, WPARAM wParam, LPARAM lParam) {
    for (const std::unique_ptr<ChildWindow>& view : views_) {
        SendMessageW(view->Handle(), message, wParam, lParam);
    }
}

void Win32FormView::Show() {
    FocusFirst();
    switch (form_.BorderStyle()) {
        case BorderStyle::Sizable:
            ShowWindow(window_, IsWindowVisible(window_) != FALSE ? SW_SHOW : SW_SHOWDEFAULT);
            break;
        case BorderStyle::FixedDialog:
            ShowWindow(window_, SW_SHOW);
            break;
        case BorderStyle::None:
            ShowWindow(window_, SW_SHOWNA);
            break;
    }
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (IsIconic(window_) == FALSE && !(InnerSize() == toldSize_)) {
        TellSize(InnerSize(), toldState_);
    }
}

void Win32FormView::ShowModal() {
    ModalTime time;
    BeginModal(time);
    FocusFirst();
    ShowWindow(window_, SW_SHOW);
    toolkit_.HandleMessagesUntil([&time] { return time.over; });
    if (!time.over) {
        EndModal();  // the program ends
    }
}

/// The windows of forms that take input, the foremost first.
std::vector<HWND> Win32FormView::FormsWithInput() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), AddFormWithInput, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

BOOL CALLBACK Win32FormView::AddFormWithInput(HWND window, LPARAM windows) {
    if (Of(window) != nullptr && IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE) {
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    }
    return TRUE;
}

void Win32FormView::BeginModal(ModalTime& time) {
    time.disabled = FormsWithInput();
    std::erase(time.disabled, window_);
    const auto active = std::find(time.disabled.begin(), time.disabled.end(), GetActiveWindow());
    if (!time.disabled.empty()) {
        const HWND owner = active != time.disabled.end() ? *active : time.disabled.front();
        SetWindowLongPtrW(window_, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
        StandInMiddleOf(owner);
    }
    for (const HWND window : time.disabled) {
        EnableWindow(window, FALSE);
    }
    modalTime_ = &time;
}

/// Gives the other windows their input back. This comes before the window is hidden: the next one to be
/// active is its owner then.
void Win32FormView::EndModal() {
    if (modalTime_ != nullptr) {
        for (const HWND window : modalTime_->disabled) {
            EnableWindow(window, TRUE);
        }
        std::exchange(modalTime_, nullptr)->over = true;
        Win32Toolkit::WakeLoop();
    }
}

void Win32FormView::Hide() {
    EndModal();
    ShowWindow(window_, SW_HIDE);
    SetWindowLongPtrW(window_, GWLP_HWNDPARENT, 0);
}

void Win32FormView::CaptionChanged() {
    SetWindowTextW(window_, WideShown(form_.Caption()).c_str());
}

void Win32FormView::SizeChanged() {
    FitSize();
}

void Win32FormView::Refresh() {
    toolkit_.HandleMessagesButInput();
    RedrawWindow(window_, nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW);
}

SIZE Win32FormView::OuterSize(SIZE inner) const {
    RECT rect = {0, 0, inner.cx, inner.cy};
    AdjustWindowRectEx(&rect, StyleOf(form_), form_.Menus().Items().empty() ? FALSE : TRUE,
                       ExtendedStyleOf(form_));
    return SizeOf(rect);
}

SIZE Win32FormView::InnerSize() const {
    RECT rect{};
    GetClientRect(window_, &rect);
    return SizeOf(rect);
}

void Win32FormView::FitSize() {
    const SIZE wanted = {Pixels(form_.Width(), toolkit_.PixelsPerInchX()),
                         Pixels(form_.Height(), toolkit_.PixelsPerInchY())};
    SIZE outer = OuterSize(wanted);
    if (form_.BorderStyle() == BorderStyle::Sizable) {
        const SIZE most = SizeOf(WorkArea(window_));
        outer = {std::min(outer.cx, most.cx), std::min(outer.cy, most.cy)};
    }
    SetWindowPos(window_, nullptr, 0, 0, outer.cx, outer.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    // A size that the system refuses may be the one that the window had.
    if (form_.Loaded() && IsIconic(window_) == FALSE && !(InnerSize() == wanted)) {
        TellSize(InnerSize(), toldState_);
    }
}

void Win32FormView::LimitSize(MINMAXINFO& limits) const {
    if (form_.BorderStyle() == BorderStyle::Sizable) {
        const SIZE least = OuterSize({form_.MinPixelWidth(), form_.MinPixelHeight()});
        limits.ptMinTrackSize = {std::max(limits.ptMinTrackSize.x, least.cx),
                                 std::max(limits.ptMinTrackSize.y, least.cy)};
    }
}

void Win32FormView::Sized(WPARAM kind) {
    const WindowState state = kind == SIZE_MINIMIZED   ? WindowState::Minimized
                              : kind == SIZE_MAXIMIZED ? WindowState::Maximized
                                                       : WindowState::Normal;
    // Windows tells the first size when the window is shown.
    if (form_.Loaded() && (state != toldState_ || !(InnerSize() == toldSize_))) {
        TellSize(InnerSize(), state);
    }
}

void Win32FormView::TellSize(SIZE size, WindowState state) {
    toldState_ = state;
    if (state != WindowState::Minimized) {
        toldSize_ = size;
    }
    toolkit_.Deliver([&form = form_, size, state] { form.Resized(size.cx, size.cy, state); });
}

/// Null stands for the screen.
void Win32FormView::StandInMiddleOf(HWND owner) {
    const RECT screen = WorkArea(owner);
    RECT around = screen;
    if (owner != nullptr && IsIconic(owner) == FALSE) {
        GetWindowRect(owner, &around);
    }
    RECT own{};
    GetWindowRect(window_, &own);
    const SIZE size = SizeOf(own);
    const auto place = [](LONG begin, LONG end, LONG length, LONG first, LONG last) {
        return std::max(std::min(begin + (end - begin - length) / 2, last - length), first);
    };
    SetWindowPos(window_, nullptr, place(around.left, around.right, size.cx, screen.left, screen.right),
                 place(around.top, around.bottom, size.cy, screen.top, screen.bottom), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace ostrevin::win32
