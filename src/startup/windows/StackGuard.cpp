// The guard that the compiler lays between a function's buffers and its return address, and the end of a
// program in which it was overwritten. The compiler's own library would ask Windows for random bytes, and so
// load a library before the program has said where libraries are loaded from.
#include <windows.h>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>

extern "C" {

std::uintptr_t __stack_chk_guard;

[[noreturn]] void __stack_chk_fail() {
    // The stack is not to be trusted: nothing is unwound.
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_STACK_BUFFER_OVERRUN));
    std::abort();
}

}  // extern "C"

namespace {

/// Before all other constructors, by what differs from start to start.
[[gnu::constructor(101), gnu::no_stack_protector]] void ChooseGuard() {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;  // lets each bit change the higher ones
    std::uint64_t mixed = reinterpret_cast<std::uintptr_t>(&time);
    for (const std::uint64_t part : {std::uint64_t{time.dwLowDateTime}, std::uint64_t{time.dwHighDateTime},
                                     static_cast<std::uint64_t>(counter.QuadPart),
                                     std::uint64_t{GetCurrentThreadId()}, std::uint64_t{GetTickCount()}}) {
        mixed = (mixed ^ part) * kSpread;
        mixed ^= mixed >> 32U;
    }
    __stack_chk_guard = static_cast<std::uintptr_t>(mixed);
}

}  // namespace
