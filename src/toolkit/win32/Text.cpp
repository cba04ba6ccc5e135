#include "toolkit/win32/Text.h"

#include <windows.h>

#include "controls/ShownText.h"

namespace ostrevin::win32 {

std::wstring Wide(std::string_view utf8) {
    const int length = static_cast<int>(utf8.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::wstring WideShown(std::string_view utf8) {
    return Wide(ShownText(utf8));
}

std::string Utf8(std::wstring_view wide) {
    const int length = static_cast<int>(wide.size());
    std::string utf8(static_cast<std::size_t>(
                         WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
                     '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, utf8.data(), static_cast<int>(utf8.size()), nullptr,
                        nullptr);
    return utf8;
}

}  // namespace ostrevin::win32
