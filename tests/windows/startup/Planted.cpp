// A library that somebody put where a program might find it. It tells on standard error that it is loaded.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        static constexpr char kText[] = "PLANTED\n";
        DWORD written = 0;
        WriteFile(GetStdHandle(STD_ERROR_HANDLE), kText, sizeof kText - 1, &written, nullptr);
    }
    return TRUE;
}
