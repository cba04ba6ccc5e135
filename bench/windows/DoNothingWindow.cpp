// The yardstick of a start: a program that shows a window and does nothing.
#include <windows.h>

namespace {

LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*before*/, LPWSTR /*arguments*/, int show) {
    constexpr wchar_t kName[] = L"DoNothing";
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Handle;
    windowClass.hInstance = instance;
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = kName;
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(0, kName, kName, WS_OVERLAPPEDWINDOW, 0, 0, 900, 600, nullptr,
                                        nullptr, instance, nullptr);
    ShowWindow(window, show);
    UpdateWindow(window);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
