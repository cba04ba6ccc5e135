#include "tests/windows/window/RunningProgram.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "tests/windows/window/Reading.h"
#include "toolkit/win32/Text.h"

namespace ostrevin {
namespace {

constexpr DWORD kPatience = 20000;

struct Search {
    DWORD process;
    std::vector<HWND> found;
};

BOOL CALLBACK TakeCaptioned(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const bool hasCaption = (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    if (process == search.process && hasCaption && IsWindowVisible(window) != FALSE) {
        search.found.push_back(window);
    }
    return TRUE;
}

/// The caption of a window, which may go meanwhile.
std::string CaptionOf(HWND window) {
    std::array<wchar_t, 256> text{};
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return win32::Utf8({text.data(), static_cast<std::size_t>(length)});
}

/// All that a window says, for a person who looks for the cause of a failure.
std::string Describe(HWND window) {
    std::string text = "\"" + CaptionOf(window) + "\"";
    for (const HWND label : ShownChildren(window, L"Static")) {
        text += " " + TextOf(label);
    }
    return text;
}

}  // namespace

bool Await(const std::function<bool()>& isSo) {
    constexpr DWORD kPause = 5;
    const DWORD start = GetTickCount();
    while (!isSo()) {
        if (GetTickCount() - start > kPatience) {
            return false;
        }
        Sleep(kPause);
    }
    return true;
}

RunningProgram::RunningProgram(const std::wstring& program) {
    Start(program, L"\"" + program + L"\"");
}

RunningProgram::RunningProgram(const std::wstring& program, const std::wstring& volume) {
    Start(program, L"\"" + program + L"\" \"" + volume + L"\"");
    try {
        AwaitStart();
    } catch (...) {
        TerminateProcess(process_.hProcess, 1);
        throw;
    }
}

RunningProgram::~RunningProgram() {
    if (!HasEnded()) {
        TerminateProcess(process_.hProcess, 1);
        WaitForSingleObject(process_.hProcess, kPatience);
    }
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

void RunningProgram::Start(const std::wstring& program, std::wstring command) {
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &process_) == FALSE) {
        throw std::runtime_error(win32::Utf8(program) + " cannot be started");
    }
}

void RunningProgram::AwaitStart() {
    Await([this] { return HasEnded() || !Windows().empty(); });
    const std::vector<HWND> windows = Windows();
    if (windows.empty()) {
        throw std::runtime_error("the program shows no window");
    }
    if (ShownChildren(windows.front(), WC_TREEVIEWW).empty()) {
        throw std::runtime_error("the program begins with " + Describe(windows.front()));
    }
    mainWindow_ = windows.front();
    SetForegroundWindow(mainWindow_);
    AwaitMainWindow();
}

bool RunningProgram::HasEnded() const {
    return WaitForSingleObject(process_.hProcess, 0) != WAIT_TIMEOUT;
}

std::vector<HWND> RunningProgram::Windows() const {
    Search search{process_.dwProcessId, {}};
    EnumWindows(TakeCaptioned, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::vector<HWND> RunningProgram::Dialogs() const {
    std::vector<HWND> windows = Windows();
    std::erase(windows, mainWindow_);
    return windows;
}

HWND RunningProgram::AwaitDialog(const std::string& caption) const {
    HWND dialog = nullptr;
    const auto isThere = [&] {
        const std::vector<HWND> dialogs = Dialogs();
        const auto front = std::find(dialogs.begin(), dialogs.end(), GetForegroundWindow());
        dialog = front == dialogs.end() ? nullptr : *front;
        return dialog != nullptr && CaptionOf(dialog) == caption && IsChild(dialog, Focus()) != FALSE;
    };
    if (!Await(isThere)) {
        throw std::runtime_error("\"" + caption + "\" does not come" +
                                 (dialog == nullptr ? std::string() : ", but " + Describe(dialog)));
    }
    return dialog;
}

void RunningProgram::AwaitMainWindow() const {
    const auto isInFront = [this] {
        return Dialogs().empty() && GetForegroundWindow() == mainWindow_ && Focus() != nullptr;
    };
    if (!Await(isInFront)) {
        throw std::runtime_error(
            "the main window is not in front" +
            (Dialogs().empty() ? std::string() : ", but " + Describe(Dialogs().front())));
    }
}

HWND RunningProgram::Focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(process_.dwThreadId, &info);
    return info.hwndFocus;
}

DWORD RunningProgram::AwaitEnd() const {
    DWORD code = 0;
    if (WaitForSingleObject(process_.hProcess, kPatience) != WAIT_OBJECT_0 ||
        GetExitCodeProcess(process_.hProcess, &code) == FALSE) {
        throw std::runtime_error("the program does not end");
    }
    return code;
}

}  // namespace ostrevin
