#include "startup/WindowsLibraries.h"

#include <windows.h>
#include <string>

namespace ostrevin {
namespace {

/// A function that not every Windows has; null where it is not.
template <typename Function>
Function* Find(const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

std::wstring SystemFolder() {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
    return folder;
}

}  // namespace

void LoadLibrariesFromSystem() {
    // Windows XP: the current folder is left out.
    if (const auto setFolder = Find<BOOL WINAPI(LPCWSTR)>("SetDllDirectoryW")) {
        setFolder(L"");
    }
    // Windows 8, and 7 with an update: all are left out but the system's, and what a library of the shell
    // adds itself.
    constexpr DWORD kAddedFolders = 0x400;
    constexpr DWORD kSystemFolder = 0x800;
    const auto setFolders = Find<BOOL WINAPI(DWORD)>("SetDefaultDllDirectories");
    if (setFolders != nullptr && setFolders(kSystemFolder | kAddedFolders) != FALSE) {
        return;
    }
    for (const wchar_t* library :
         {L"apphelp.dll", L"asycfilt.dll", L"clbcatq.dll", L"comres.dll", L"linkinfo.dll", L"mpr.dll",
          L"msimg32.dll", L"netapi32.dll", L"ntmarta.dll", L"oleacc.dll", L"secur32.dll", L"setupapi.dll",
          L"userenv.dll", L"uxtheme.dll", L"version.dll"}) {
        LoadFromSystem(library);
    }
}

void LoadFromSystem(const wchar_t* library) {
    LoadLibraryW((SystemFolder() + L'\\' + library).c_str());
}

}  // namespace ostrevin
