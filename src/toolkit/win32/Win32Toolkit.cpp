#include "toolkit/win32/Win32Toolkit.h"

#include <algorithm>
#include <commdlg.h>
#include <exception>

#include "controls/FailureText.h"
#include "controls/Form.h"
#include "controls/ShownText.h"
#include "toolkit/win32/Text.h"
#include "toolkit/win32/Win32FormView.h"

namespace ostrevin::win32 {
namespace {

constexpr wchar_t kProgramName[] = L"Ostrevin";

double ScreenResolution(int axis) {
    const HDC screen = GetDC(nullptr);
    const int pixelsPerInch = GetDeviceCaps(screen, axis);
    ReleaseDC(nullptr, screen);
    return pixelsPerInch;
}

class Win32Cursor final : public Cursor {
  public:
    explicit Win32Cursor(CursorShape shape)
        : handle_(LoadCursorW(nullptr, MAKEINTRESOURCEW(static_cast<WORD>(shape)))) {}
    ~Win32Cursor() override { DestroyCursor(handle_); }
    [[nodiscard]] HCURSOR Handle() const { return handle_; }

  private:
    HCURSOR handle_;
};

/// The window of a form; without one, the window in which the user works.
HWND OwnerOf(const Form* form) {
    const HWND window = form == nullptr ? nullptr : Win32Toolkit::WindowOf(*form);
    return window == nullptr ? GetActiveWindow() : window;
}

/// "HTML Files (*.htm)|*.htm" as the dialog has it: each part ends with a 0, the last with two.
std::wstring FilterParts(const std::string& filter) {
    std::wstring parts = Wide(filter) + L'|';
    std::replace(parts.begin(), parts.end(), L'|', L'\0');
    return parts;
}

void RequireClasses(DWORD classes) {
    const INITCOMMONCONTROLSEX request = {sizeof(request), classes};
    if (InitCommonControlsEx(&request) == FALSE) {
        throw std::exception();  // start-up asks whether it failed, and no more
    }
}

}  // namespace

Win32Toolkit::Win32Toolkit()
    : pixelsPerInchX_(ScreenResolution(LOGPIXELSX)), pixelsPerInchY_(ScreenResolution(LOGPIXELSY)) {}

void Win32Toolkit::InitCommonControls() {
    ::InitCommonControls();
    RequireClasses(ICC_USEREX_CLASSES);
    RequireClasses(ICC_WIN95_CLASSES);
}

std::unique_ptr<FormView> Win32Toolkit::CreateView(Form& form) {
    return std::make_unique<Win32FormView>(*this, form);
}

void Win32Toolkit::MsgBox(Form* owner, const std::string& text, const std::string& caption) {
    MessageBoxW(OwnerOf(owner), Wide(ShownMessage(text)).c_str(), WideShown(caption).c_str(), MB_OK);
}

std::string Win32Toolkit::ShowSave(Form* owner, const SaveRequest& request) {
    constexpr std::size_t kLongestPath = 32768;
    std::wstring path = Wide(request.fileName);
    path.resize(kLongestPath);
    const std::wstring filter = FilterParts(request.filter);
    const std::wstring title = Wide(request.title);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = OwnerOf(owner);
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrTitle = title.c_str();
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetSaveFileNameW(&dialog) == FALSE ? std::string() : Utf8(path.c_str());
}

void Win32Toolkit::DoEvents() {
    HandleWaiting(0);
}

void Win32Toolkit::HandleMessagesButInput() {
    HandleWaiting(PM_QS_PAINT | PM_QS_POSTMESSAGE | PM_QS_SENDMESSAGE);
}

void Win32Toolkit::HandleWaiting(UINT kinds) {
    MSG message{};
    while (!exitCode_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | kinds) != FALSE) {
        if (message.message == WM_QUIT) {
            exitCode_ = static_cast<int>(message.wParam);
        } else {
            Win32FormView::Handle(message);
        }
    }
}

void Win32Toolkit::HandleMessagesUntil(const std::function<bool()>& done) {
    MSG message{};
    while (!done() && !exitCode_) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            exitCode_ = static_cast<int>(message.wParam);
        } else {
            Win32FormView::Handle(message);
        }
    }
}

void Win32Toolkit::WakeLoop() {
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

int Win32Toolkit::Run() {
    HandleMessagesUntil([this] { return openForms_ == 0; });
    return exitCode_.value_or(0);
}

void Win32Toolkit::Deliver(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& failure) {
        MessageBoxW(GetActiveWindow(), Wide(ShownMessage(FailureText(failure))).c_str(), kProgramName,
                    MB_OK | MB_ICONERROR);
        exitCode_ = 1;
        WakeLoop();
    }
}

HWND Win32Toolkit::WindowOf(const Form& form) {
    const auto* view = static_cast<Win32FormView*>(form.View());
    return view == nullptr ? nullptr : view->Window();
}

void Win32Toolkit::FormClosed() {
    --openForms_;
    WakeLoop();
}

std::unique_ptr<Cursor> Win32Toolkit::LoadCursor(CursorShape shape) {
    return std::make_unique<Win32Cursor>(shape);
}

void Win32Toolkit::SetCursor(const Cursor& cursor) {
    ::SetCursor(static_cast<const Win32Cursor&>(cursor).Handle());
    cursorOfMove_ = true;
}

void Win32Toolkit::ClipCursor(const PixelRect* area) {
    if (area == nullptr) {
        ::ClipCursor(nullptr);
        return;
    }
    const RECT rect = {area->left, area->top, area->left + area->width, area->top + area->height};
    ::ClipCursor(&rect);
}

int Win32Toolkit::CompareText(std::string_view left, std::string_view right) const {
    return collation_.Compare(left, right);
}

std::vector<std::size_t> Win32Toolkit::RankTexts(std::span<const std::string_view> texts) const {
    return collation_.Rank(texts);
}

}  // namespace ostrevin::win32
