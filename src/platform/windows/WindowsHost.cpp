#include <windows.h>
#include <algorithm>
#include <array>
#include <cstring>
#include <shlobj.h>
#include <string>

#include "platform/Dates.h"
#include "platform/windows/AnsiText.h"
#include "platform/windows/WindowsPlatform.h"

namespace ostrevin {
namespace {

SystemTime SystemTimeOf(const SYSTEMTIME& time) {
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds};
}

FILETIME Native(const FileTime& time) {
    return {time.low, time.high};
}

/// Asks the system for a text until the buffer holds it. ask returns the text's length, 0 when there is none,
/// and the buffer's size or more when it is too small.
template <typename Ask>
std::wstring GrowingText(Ask ask) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ask(text.data(), static_cast<DWORD>(text.size()));
        if (length < text.size()) {
            text.resize(length);
            return text;
        }
        text.resize(2 * text.size());
    }
}

}  // namespace

void WindowsPlatform::EnablePrivileges(std::span<const std::string> names) {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token) == 0) {
        return;
    }
    // The call's structure ends in an array of as many entries as it is told of.
    constexpr std::size_t kListStart = offsetof(TOKEN_PRIVILEGES, Privileges);
    std::vector<std::byte> list(kListStart + names.size() * sizeof(LUID_AND_ATTRIBUTES));
    const auto count = static_cast<DWORD>(names.size());
    std::memcpy(list.data(), &count, sizeof count);
    for (std::size_t i = 0; i < names.size(); ++i) {
        LUID_AND_ATTRIBUTES privilege{{}, SE_PRIVILEGE_ENABLED};
        LookupPrivilegeValueA(nullptr, windows::Ansi(names[i]).c_str(), &privilege.Luid);
        std::memcpy(list.data() + kListStart + i * sizeof privilege, &privilege, sizeof privilege);
    }
    AdjustTokenPrivileges(token, FALSE, reinterpret_cast<TOKEN_PRIVILEGES*>(list.data()), 0, nullptr,
                          nullptr);
    CloseHandle(token);
}

OSVersion WindowsPlatform::GetVersionExA() {
    OSVERSIONINFOA version{};
    static_assert(sizeof version == 148);
    version.dwOSVersionInfoSize = sizeof version;
    if (::GetVersionExA(&version) == 0) {
        return {};
    }
    return {version.dwPlatformId, version.dwMajorVersion, version.dwMinorVersion};
}

std::string WindowsPlatform::EnvironmentVariable(const std::string& name) {
    const std::wstring wide = windows::Wide(name);
    return windows::Utf8(GrowingText(
        [&](wchar_t* text, DWORD size) { return GetEnvironmentVariableW(wide.c_str(), text, size); }));
}

std::string WindowsPlatform::ApplicationFolder() {
    const std::wstring file =
        GrowingText([](wchar_t* text, DWORD size) { return GetModuleFileNameW(nullptr, text, size); });
    return windows::Utf8(file.substr(0, file.rfind(L'\\') + 1));
}

std::string WindowsPlatform::GetWindowsDirectoryA() {
    std::array<char, 255> path{};
    const UINT length = ::GetWindowsDirectoryA(path.data(), static_cast<UINT>(path.size()));
    return windows::AnsiToUtf8({path.data(), std::min<std::size_t>(length, path.size())});
}

std::string WindowsPlatform::SpecialFolderPath(int csidl) {
    LPITEMIDLIST list = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, csidl, &list))) {
        return {};
    }
    std::array<wchar_t, MAX_PATH> path{};
    const bool found = SHGetPathFromIDListW(list, path.data()) != FALSE;
    CoTaskMemFree(list);
    return found ? windows::Utf8(path.data()) : std::string();
}

std::string WindowsPlatform::DecodeAnsi(std::string_view bytes) {
    return windows::AnsiToUtf8(bytes);
}

std::string WindowsPlatform::EncodeAnsi(std::string_view text) {
    return windows::Ansi(text);
}

std::optional<FileTime> WindowsPlatform::FileTimeToLocalFileTime(const FileTime& time) {
    const FILETIME utc = Native(time);
    FILETIME local{};
    if (::FileTimeToLocalFileTime(&utc, &local) == 0) {
        return std::nullopt;
    }
    return FileTime{local.dwLowDateTime, local.dwHighDateTime};
}

std::optional<SystemTime> WindowsPlatform::FileTimeToSystemTime(const FileTime& time) {
    const FILETIME native = Native(time);
    SYSTEMTIME civil{};
    if (::FileTimeToSystemTime(&native, &civil) == 0) {
        return std::nullopt;
    }
    return SystemTimeOf(civil);
}

double WindowsPlatform::Now() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return DateFromCivil(SystemTimeOf(now));
}

std::string WindowsPlatform::DateToText(double date, DateForm form) {
    return dates_.Write(date, form);
}

std::optional<double> WindowsPlatform::TextToDate(const std::string& text) {
    return dates_.Read(text);
}

}  // namespace ostrevin
