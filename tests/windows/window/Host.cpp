#include "tests/windows/window/Host.h"

#include <windows.h>
#include <algorithm>
#include <array>
#include <stdexcept>

#include "tests/windows/window/RunningProgram.h"
#include "toolkit/win32/Text.h"

namespace ostrevin {
namespace {

void SetInRegistry(const std::wstring& key, const std::wstring& name, const std::wstring& text) {
    HKEY opened = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
    RegSetValueExW(opened, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(opened);
}

}  // namespace

std::wstring HostPath(const std::wstring& name) {
    std::array<wchar_t, MAX_PATH> folder{};
    if (GetEnvironmentVariableW(L"OSTREVIN_WINDOW_TEST", folder.data(), folder.size()) == 0) {
        throw std::runtime_error("OSTREVIN_WINDOW_TEST does not name the test's folder");
    }
    return std::wstring(folder.data()) + L"/" + name;
}

std::wstring TestPath(const std::wstring& name) {
    std::wstring path = L"Z:" + HostPath(name);
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

std::string ReadTestFile(const std::wstring& name) {
    const HANDLE file = CreateFileW(TestPath(name).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return {};
    }
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD read = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    CloseHandle(file);
    bytes.resize(read);
    return bytes;
}

void WriteTestFile(const std::wstring& name, const std::string& bytes) {
    const HANDLE file = CreateFileW(TestPath(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    if (file == INVALID_HANDLE_VALUE ||
        ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == FALSE) {
        throw std::runtime_error("cannot write " + win32::Utf8(name));
    }
    CloseHandle(file);
}

void SetUpWine() {
    SetInRegistry(L"Software\\Wine\\AppDefaults\\ostrevin.exe\\X11 Driver", L"Managed", L"N");
    SetInRegistry(L"Software\\Wine\\WineBrowser", L"Browsers", HostPath(L"browser"));
}

void RunOnHost(const std::wstring& command) {
    constexpr wchar_t kEnded[] = L"ended";
    // Wine tells nothing of a process that is not its own.
    DeleteFileW(TestPath(kEnded).c_str());
    std::wstring line = L"sh -c \"" + command + L"; touch '" + HostPath(kEnded) + L"'\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == FALSE ||
        !Await([&] { return GetFileAttributesW(TestPath(kEnded).c_str()) != INVALID_FILE_ATTRIBUTES; })) {
        throw std::runtime_error("this did not run: " + win32::Utf8(command));
    }
}

void Photograph(const std::wstring& name) {
    constexpr DWORD kTimeToPaint = 350;
    Sleep(kTimeToPaint);
    RunOnHost(L"import -silent -window root '" + HostPath(L"pictures/" + name + L".png") + L"'");
}

}  // namespace ostrevin
