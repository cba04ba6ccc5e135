#include "platform/volume/Examiner.h"

#include <windows.h>
#include <array>
#include <map>
#include <optional>
#include <shellapi.h>
#include <shlobj.h>
#include <string_view>
#include <utility>

#include "platform/Dates.h"
#include "platform/volume/VolumeFiles.h"
#include "platform/volume/windows/HostFile.h"
#include "platform/volume/windows/WideText.h"

namespace ostrevin {
namespace {

/// A text of the person's settings for dates and times.
std::wstring LocaleText(LCTYPE type) {
    std::array<wchar_t, 128> text{};
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), text.size());
    return length > 0 ? std::wstring(text.data(), static_cast<std::size_t>(length) - 1) : std::wstring();
}

/// What a run of letters in a format of Windows is in one of strftime; empty for weekdays and eras.
std::string_view DirectiveFor(std::wstring_view letters) {
    static const std::map<std::wstring_view, std::string_view> kDirectives = {
        {L"d", "%-d"}, {L"dd", "%d"}, {L"M", "%-m"},  {L"MM", "%m"},   {L"MMM", "%-m"},  {L"MMMM", "%-m"},
        {L"y", "%Y"},  {L"yy", "%Y"}, {L"yyy", "%Y"}, {L"yyyy", "%Y"}, {L"yyyyy", "%Y"}, {L"H", "%-H"},
        {L"HH", "%H"}, {L"h", "%-I"}, {L"hh", "%I"},  {L"m", "%-M"},   {L"mm", "%M"},    {L"s", "%-S"},
        {L"ss", "%S"}, {L"t", "%p"},  {L"tt", "%p"}};
    const auto found = kDirectives.find(letters);
    return found == kDirectives.end() ? std::string_view() : found->second;
}

/// A format of Windows ("dd.MM.yyyy", "h:mm:ss tt") as one of strftime.
std::string FormatOf(const std::wstring& format) {
    constexpr std::wstring_view kLetters = L"dMyHhmstg";
    std::string text;
    bool quoted = false;
    for (std::size_t i = 0; i < format.size();) {
        const std::size_t run = std::min(format.find_first_not_of(format[i], i), format.size()) - i;
        if (format[i] == L'\'') {
            quoted = !quoted;
            ++i;
        } else if (!quoted && kLetters.find(format[i]) != std::wstring_view::npos) {
            text += DirectiveFor(std::wstring_view(format).substr(i, run));
            i += run;
        } else {
            const std::string character = FromWide(std::wstring_view(format).substr(i, 1));
            text += character == "%" ? "%%" : character;
            ++i;
        }
    }
    return text;
}

DateFormats FormatsOfLocale() {
    DateFormats formats;
    formats.date = FormatOf(LocaleText(LOCALE_SSHORTDATE));
    formats.time = FormatOf(LocaleText(LOCALE_STIMEFORMAT));
    formats.am = FromWide(LocaleText(LOCALE_S1159));
    formats.pm = FromWide(LocaleText(LOCALE_S2359));
    return formats;
}

std::string WithSeparator(std::string folder) {
    return folder.ends_with('\\') ? folder : folder + "\\";
}

std::string ExecutableFolder() {
    std::wstring file(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()))) ==
           file.size()) {
        file.resize(file.size() * 2);
    }
    file.resize(length);
    return WithSeparator(FromWide(ParentOf(FullPath(FromWide(file)))));
}

/// The user's folder for the settings of programs; empty when there is none.
std::string SettingsFolder() {
    std::array<wchar_t, MAX_PATH> folder{};
    return SHGetSpecialFolderPathW(nullptr, folder.data(), CSIDL_APPDATA, FALSE) != FALSE
               ? FromWide(folder.data())
               : std::string();
}

/// Whether the system lets the user make files in a folder; none is made.
bool CanMakeFiles(const std::string& folder) {
    return FileHandle(CreateFileW(ExtendedPath(FullPath(folder)).c_str(), FILE_ADD_FILE, kShareAll, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
        .IsOpen();
}

}  // namespace

Examiner::Examiner() : Examiner(ExecutableFolder()) {}

Examiner::Examiner(std::string programFolder)
    : programFolder_(std::move(programFolder)), dates_(FormatsOfLocale()) {}

double Examiner::Now() const {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return DateFromCivil({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, 0});
}

std::int32_t Examiner::UtcBias() const {
    TIME_ZONE_INFORMATION zone{};
    switch (GetTimeZoneInformation(&zone)) {
        case TIME_ZONE_ID_STANDARD:
            return zone.Bias + zone.StandardBias;
        case TIME_ZONE_ID_DAYLIGHT:
            return zone.Bias + zone.DaylightBias;
        default:
            return zone.Bias;
    }
}

std::string Examiner::ApplicationFolder(const VolumeFiles& evidence) const {
    const std::string settings = SettingsFolder();
    if ((settings.empty() || CanMakeFiles(programFolder_)) && evidence.IsOutside(programFolder_)) {
        return programFolder_;
    }
    if (settings.empty() || !evidence.IsOutside(settings)) {
        return {};
    }
    const std::string folder = WithSeparator(settings) + "Ostrevin";
    CreateDirectoryW(ToWide(folder).c_str(), nullptr);
    return WithSeparator(folder);
}

std::string Examiner::ResolvedPath(const std::string& hostPath) const {
    const std::wstring path = FullPath(hostPath);
    const bool exists =
        !path.empty() && GetFileAttributesW(ExtendedPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
    return exists ? FromWide(path) : std::string();
}

bool Examiner::Open(const std::string& item) {
    constexpr INT_PTR kLastError = 32;
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", ToWide(item).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > kLastError;
}

bool Examiner::HasHelpViewer() {
    return true;  // it is a part of Windows
}

}  // namespace ostrevin
