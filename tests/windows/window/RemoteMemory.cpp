#include "tests/windows/window/RemoteMemory.h"

#include <array>
#include <stdexcept>

#include "toolkit/win32/Text.h"

namespace ostrevin {

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr UINT kPatience = 20000;
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kPatience, &result) == 0) {
        throw std::runtime_error("a window does not answer to message " + std::to_string(message));
    }
    return static_cast<LRESULT>(result);
}

RemoteMemory::RemoteMemory(HWND window) : window_(window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    start_ = static_cast<std::byte*>(VirtualAllocEx(
        process_, nullptr, kTextPlace + kTextLength * sizeof(wchar_t), MEM_COMMIT, PAGE_READWRITE));
    if (start_ == nullptr) {
        throw std::runtime_error("the window's process gives no memory");
    }
}

RemoteMemory::~RemoteMemory() {
    VirtualFreeEx(process_, start_, 0, MEM_RELEASE);
    CloseHandle(process_);
}

std::string RemoteMemory::Text() const {
    std::array<wchar_t, kTextLength> text{};
    Read(start_ + kTextPlace, text.data(), text.size() * sizeof(wchar_t));
    text.back() = L'\0';
    return win32::Utf8(text.data());
}

void RemoteMemory::Write(const void* bytes, std::size_t size) const {
    if (WriteProcessMemory(process_, start_, bytes, size, nullptr) == FALSE) {
        throw std::runtime_error("the window's process cannot be written to");
    }
}

void RemoteMemory::Read(const std::byte* place, void* bytes, std::size_t size) const {
    if (ReadProcessMemory(process_, place, bytes, size, nullptr) == FALSE) {
        throw std::runtime_error("the window's process cannot be read");
    }
}

}  // namespace ostrevin
