#include "platform/Dates.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace ostrevin {
namespace {

constexpr int kSecondsPerDay = 86400;

// The calendar repeats itself every 400 years. Counted in years that begin in March, the leap day comes last.
constexpr std::int64_t kDaysPerEra = 146097;
constexpr std::int64_t kDaysToFirstMarchOfYear0 = 693899;  // from 0000-03-01 to 1899-12-30

bool IsLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

SystemTime AtSecond(std::int64_t days, int second) {
    SystemTime civil = CivilFromDays(days);
    civil.hour = second / 3600;
    civil.minute = second / 60 % 60;
    civil.second = second % 60;
    return civil;
}

}  // namespace

int DaysInMonth(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays.at(static_cast<std::size_t>(month - 1));
}

bool IsCivil(const SystemTime& civil) {
    return civil.year >= kFirstYear && civil.year <= kLastYear && civil.month >= 1 && civil.month <= 12 &&
           civil.day >= 1 && civil.day <= DaysInMonth(civil.year, civil.month) && civil.hour >= 0 &&
           civil.hour < 24 && civil.minute >= 0 && civil.minute < 60 && civil.second >= 0 &&
           civil.second < 60;
}

std::int64_t DaysFromCivil(int year, int month, int day) {
    const std::int64_t shiftedYear = month > 2 ? year : year - 1;
    const std::int64_t era = FloorDivide(shiftedYear, 400);
    const std::int64_t yearOfEra = shiftedYear - era * 400;
    const std::int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear -
           kDaysToFirstMarchOfYear0;
}

SystemTime CivilFromDays(std::int64_t days) {
    const std::int64_t shifted = days + kDaysToFirstMarchOfYear0;
    const std::int64_t era = FloorDivide(shifted, kDaysPerEra);
    const std::int64_t dayOfEra = shifted - era * kDaysPerEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shiftedMonth = (5 * dayOfYear + 2) / 153;
    SystemTime civil;
    civil.day = static_cast<int>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1);
    civil.month = static_cast<int>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
    civil.year = static_cast<int>(era * 400 + yearOfEra + (civil.month <= 2 ? 1 : 0));
    return civil;
}

double DateFromCivil(const SystemTime& civil) {
    const auto days = static_cast<double>(DaysFromCivil(civil.year, civil.month, civil.day));
    const double time =
        static_cast<double>(civil.hour * 3600 + civil.minute * 60 + civil.second) / kSecondsPerDay;
    return days < 0 ? days - time : days + time;
}

SystemTime CivilFromDate(double date) {
    static const std::int64_t kFirstDay = DaysFromCivil(kFirstYear, 1, 1);
    static const std::int64_t kLastDay = DaysFromCivil(kLastYear, 12, 31);
    if (std::isnan(date)) {
        return CivilFromDays(0);
    }
    const double whole = std::trunc(date);
    if (whole < static_cast<double>(kFirstDay)) {
        return CivilFromDays(kFirstDay);
    }
    if (whole > static_cast<double>(kLastDay)) {
        return AtSecond(kLastDay, kSecondsPerDay - 1);
    }
    auto days = static_cast<std::int64_t>(whole);
    auto second = static_cast<int>(std::lround(std::fabs(date - whole) * kSecondsPerDay));
    if (second == kSecondsPerDay) {
        if (days == kLastDay) {
            return AtSecond(kLastDay, kSecondsPerDay - 1);
        }
        ++days;
        second = 0;
    }
    return AtSecond(days, second);
}

std::string IsoDay(const SystemTime& civil) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", civil.year, civil.month, civil.day);
    return text.data();
}

std::string IsoTime(const SystemTime& civil) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", civil.hour, civil.minute, civil.second);
    return text.data();
}

std::optional<SystemTime> CivilFromFileTime(const FileTime& time) {
    constexpr std::int64_t kMillisecondsPerDay = std::int64_t{kSecondsPerDay} * 1000;
    constexpr std::int64_t kUnitsPerMillisecond = 10000;
    static const std::int64_t kFirstDay = DaysFromCivil(1601, 1, 1);
    if ((time.high & 0x80000000U) != 0) {
        return std::nullopt;
    }
    const std::int64_t units = (std::int64_t{time.high} << 32U) | std::int64_t{time.low};
    const std::int64_t milliseconds = units / kUnitsPerMillisecond;
    const auto ofDay = static_cast<int>(milliseconds % kMillisecondsPerDay);
    SystemTime civil = AtSecond(kFirstDay + milliseconds / kMillisecondsPerDay, ofDay / 1000);
    civil.milliseconds = ofDay % 1000;
    return civil;
}

}  // namespace ostrevin
