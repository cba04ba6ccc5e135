// A handler of documents, which opens nothing and tells for which window it was to open one.
#pragma once

#include <windows.h>
#include <functional>
#include <string>
#include <unknwn.h>

namespace ostrevin {

inline constexpr CLSID kOpenerClass = {
    0x6F737472, 0x6576, 0x4E21, {0x9C, 0x5A, 0x3B, 0x0E, 0x51, 0x7D, 0x24, 0x91}};
inline constexpr wchar_t kOpenerClassText[] = L"{6F737472-6576-4E21-9C5A-3B0E517D2491}";

/// The object that makes handlers. The reference to it is the caller's.
IClassFactory* MakeOpenerClass(std::function<void(HWND owner)> opened);

}  // namespace ostrevin
