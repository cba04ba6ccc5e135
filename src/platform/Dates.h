// The calendar: dates as doubles, as days, and as year, month, day and time (proleptic Gregorian).
//
// A date is the double that counts days since 1899-12-30, as OLE Automation defines it: the whole part counts
// the days, and the fraction, taken without its sign, is the time of day. -1.25 is thus 1899-12-29 06:00.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Platform.h"

namespace ostrevin {

/// The years that a date can hold.
inline constexpr int kFirstYear = 100;
inline constexpr int kLastYear = 9999;

/// How many days a month (1 to 12) has.
[[nodiscard]] int DaysInMonth(int year, int month);

/// Whether the calendar has this day, within the years of a date, and the clock this time.
[[nodiscard]] bool IsCivil(const SystemTime& civil);

/// Days since 1899-12-30 of a day of the calendar.
[[nodiscard]] std::int64_t DaysFromCivil(int year, int month, int day);

/// The day of the calendar that is so many days after 1899-12-30, at 0:00:00.
[[nodiscard]] SystemTime CivilFromDays(std::int64_t days);

/// The date of a day and time of the calendar; milliseconds are dropped.
[[nodiscard]] double DateFromCivil(const SystemTime& civil);

/// A date's day and time, rounded to the second. Beyond the years of a date it is the first or the last
/// second of them; what is no number is 1899-12-30.
[[nodiscard]] SystemTime CivilFromDate(double date);

/// A day as 2009-08-04.
[[nodiscard]] std::string IsoDay(const SystemTime& civil);

/// A time as 15:22:18.
[[nodiscard]] std::string IsoTime(const SystemTime& civil);

/// The day and time of a FILETIME, in whichever zone it is given; none for one that Windows does not convert,
/// whose highest bit is set.
[[nodiscard]] std::optional<SystemTime> CivilFromFileTime(const FileTime& time);

}  // namespace ostrevin
