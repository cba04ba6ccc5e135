// A worker that does not do its work: by the width of the wanted picture it hangs, talks without end,
// ends as after a crash, or promises more points than it gives.
#include <windows.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments) {
    const int kind = count == 4 ? std::atoi(arguments[2]) : 0;
    const std::int32_t header[] = {kind, 1};
    switch (kind) {
        case 1:
            Sleep(INFINITE);
            break;
        case 2:
            while (std::fwrite(header, sizeof header, 1, stdout) == 1) {
            }
            break;
        case 3:
            TerminateProcess(GetCurrentProcess(), EXCEPTION_ACCESS_VIOLATION);
            break;
        default:
            std::fwrite(header, sizeof header, 1, stdout);
    }
    return 0;
}
