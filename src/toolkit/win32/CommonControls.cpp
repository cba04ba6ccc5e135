#include "toolkit/win32/CommonControls.h"

#include <windows.h>
#include <shlwapi.h>

namespace ostrevin::win32 {
namespace {

DWORD MajorVersion() {
    const HMODULE library = GetModuleHandleW(L"comctl32.dll");
    const auto getVersion = reinterpret_cast<DLLGETVERSIONPROC>(
        reinterpret_cast<void*>(GetProcAddress(library, "DllGetVersion")));
    DLLVERSIONINFO version = {};
    version.cbSize = sizeof(version);
    return getVersion != nullptr && SUCCEEDED(getVersion(&version)) ? version.dwMajorVersion : 0;
}

}  // namespace

bool HasCommonControls6() {
    static const bool has = MajorVersion() >= 6;
    return has;
}

}  // namespace ostrevin::win32
