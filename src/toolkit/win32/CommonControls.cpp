#include "toolkit/win32/CommonControls.h"

#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {
namespace {

/// Whether Windows follows the manifest to a library that stands beside the one of the first version. The
/// question came to Windows with those libraries.
bool IsRedirected(const wchar_t* library) {
    using Find = BOOL(WINAPI*)(DWORD, const GUID*, ULONG, LPCWSTR, PACTCTX_SECTION_KEYED_DATA);
    const auto find = reinterpret_cast<Find>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "FindActCtxSectionStringW")));
    ACTCTX_SECTION_KEYED_DATA found = {};
    found.cbSize = sizeof(found);
    return find != nullptr &&
           find(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION, library, &found) != FALSE;
}

}  // namespace

bool HasCommonControls6() {
    static const bool has = IsRedirected(L"comctl32.dll");
    return has;
}

}  // namespace ostrevin::win32
