// start_bench ROUNDS TITLE COMMAND TITLE COMMAND ...: starts the commands in turn, and prints how long each
// takes until its window with that title is there and has drawn itself: the median, in milliseconds.
#include <windows.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr DWORD kPatience = 30000;  // milliseconds for a window to appear, and for a program to end

struct Program {
    std::wstring title;
    std::wstring command;
    std::vector<double> milliseconds;
};

struct Search {
    DWORD process;
    const std::wstring& title;
    HWND found;
};

BOOL CALLBACK Compare(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t title[100] = L"";
    GetWindowTextW(window, title, 100);
    // A splash picture has no border to size it by.
    if (process == search.process && IsWindowVisible(window) != FALSE && search.title == title &&
        (GetWindowLongPtrW(window, GWL_STYLE) & WS_THICKFRAME) != 0) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

/// The program's window, once it answers; null when it does not appear.
HWND AwaitWindow(DWORD process, const std::wstring& title) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < kPatience) {
        Search search{process, title, nullptr};
        EnumWindows(Compare, reinterpret_cast<LPARAM>(&search));
        DWORD_PTR answer = 0;
        if (search.found != nullptr &&
            SendMessageTimeoutW(search.found, WM_NULL, 0, 0, SMTO_NORMAL, kPatience, &answer) != 0) {
            RedrawWindow(search.found, nullptr, nullptr, RDW_UPDATENOW);
            return search.found;
        }
        Sleep(1);
    }
    return nullptr;
}

/// One start; false when no window came.
bool Measure(Program& program) {
    LARGE_INTEGER frequency{};
    LARGE_INTEGER before{};
    LARGE_INTEGER after{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&before);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, program.command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &process) == FALSE) {
        return false;
    }
    const HWND window = AwaitWindow(process.dwProcessId, program.title);
    QueryPerformanceCounter(&after);
    program.milliseconds.push_back(1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) /
                                   static_cast<double>(frequency.QuadPart));
    if (window != nullptr) {
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
    if (window == nullptr || WaitForSingleObject(process.hProcess, kPatience) != WAIT_OBJECT_0) {
        TerminateProcess(process.hProcess, 1);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return window != nullptr;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    std::vector<Program> programs;
    for (int i = 2; i + 1 < count; i += 2) {
        programs.push_back({arguments[i], arguments[i + 1], {}});
    }
    const int rounds = count > 1 ? std::max(_wtoi(arguments[1]), 1) : 1;
    for (int round = 0; round < rounds; ++round) {
        for (Program& program : programs) {
            if (!Measure(program)) {
                std::printf("%ls: no window \"%ls\" came\n", program.command.c_str(), program.title.c_str());
                return 1;
            }
        }
    }
    for (Program& program : programs) {
        std::sort(program.milliseconds.begin(), program.milliseconds.end());
        std::printf("%8.1f ms  %ls\n", program.milliseconds[program.milliseconds.size() / 2],
                    program.command.c_str());
    }
    return 0;
}
