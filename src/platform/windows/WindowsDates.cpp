#include "platform/windows/WindowsDates.h"

#include <windows.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <oleauto.h>

#include "platform/Dates.h"
#include "platform/windows/AnsiText.h"

namespace ostrevin::windows {
namespace {

/// The locale's short date; its year, where it is shorter, with four digits. changed tells whether it was.
std::wstring ShortDatePicture(bool& changed) {
    std::array<wchar_t, 80> picture{};  // 80 is the longest that Windows takes
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, picture.data(), static_cast<int>(picture.size()));
    std::wstring text = picture.data();
    bool quoted = false;
    std::size_t at = 0;
    while (at < text.size() && (quoted || text[at] != L'y')) {
        quoted = quoted != (text[at] == L'\'');
        ++at;
    }
    const std::size_t length = std::min(text.find_first_not_of(L'y', at), text.size()) - at;
    changed = length > 0 && length < 4;
    if (changed) {
        text.replace(at, length, L"yyyy");
    }
    return text;
}

std::string FromDate(double date, ULONG part) {
    BSTR text = nullptr;
    if (FAILED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, part, &text))) {
        return {};
    }
    std::string utf8 = Utf8({text, SysStringLen(text)});
    SysFreeString(text);
    return utf8;
}

std::string PlainDate(const SystemTime& civil) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", civil.year, civil.month, civil.day);
    return text.data();
}

std::string LocalDate(const SystemTime& civil) {
    bool changed = false;
    const std::wstring picture = ShortDatePicture(changed);
    std::string text;
    if (!changed) {
        const auto day = static_cast<double>(DaysFromCivil(civil.year, civil.month, civil.day));
        text = FromDate(day, VAR_DATEVALUEONLY);  // nothing for the day 0, which is none to OLE automation
    }
    if (text.empty()) {
        SYSTEMTIME day{};
        day.wYear = static_cast<WORD>(civil.year);
        day.wMonth = static_cast<WORD>(civil.month);
        day.wDay = static_cast<WORD>(civil.day);
        std::array<wchar_t, 160> written{};
        GetDateFormatW(LOCALE_USER_DEFAULT, 0, &day, picture.c_str(), written.data(),
                       static_cast<int>(written.size()));
        text = Utf8(written.data());  // nothing before 1601, where the call's calendar begins
    }
    return text.empty() ? PlainDate(civil) : text;
}

std::string PlainTime(const SystemTime& civil) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", civil.hour, civil.minute, civil.second);
    return text.data();
}

}  // namespace

WindowsDates::WindowsDates() {
    inLocale_ = ReadsWhatItWrites();
}

std::string WindowsDates::Write(double date, DateForm form) const {
    const SystemTime civil = CivilFromDate(date);
    const double time = std::fabs(std::modf(DateFromCivil(civil), &date));
    std::string text;
    if (form != DateForm::LongTime) {
        text = inLocale_ ? LocalDate(civil) : PlainDate(civil);
    }
    if (form == DateForm::LongTime || (form == DateForm::General && time != 0)) {
        text += text.empty() ? "" : " ";
        text += inLocale_ ? FromDate(time, VAR_TIMEVALUEONLY) : PlainTime(civil);
    }
    return text;
}

std::optional<double> WindowsDates::Read(const std::string& text) const {
    std::wstring wide = Wide(text);
    DATE date = 0;
    if (FAILED(VarDateFromStr(wide.data(), LOCALE_USER_DEFAULT, 0, &date))) {
        return std::nullopt;
    }
    return DateFromCivil(CivilFromDate(date));
}

/// Days, months and halves of the day that could be taken for each other.
bool WindowsDates::ReadsWhatItWrites() const {
    for (const SystemTime& civil :
         {SystemTime{2009, 8, 4, 15, 22, 18, 0}, SystemTime{1999, 12, 31, 0, 5, 9, 0},
          SystemTime{2031, 2, 11, 12, 0, 0, 0}, SystemTime{1601, 1, 1, 9, 0, 1, 0}}) {
        const double date = DateFromCivil(civil);
        double day = 0;
        std::modf(date, &day);
        if (Read(Write(date, DateForm::General)) != date || Read(Write(date, DateForm::ShortDate)) != day) {
            return false;
        }
    }
    return true;
}

}  // namespace ostrevin::windows
