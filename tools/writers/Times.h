// Times as the formats store them.
#pragma once

#include <cstdint>

namespace ostrevin::samples {

/// A calendar date and time, 1601-01-01 and later, in UTC unless said otherwise.
struct CalendarTime {
    int year = 1601;
    unsigned month = 1;  ///< 1 to 12
    unsigned day = 1;    ///< 1 to 31
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
};

/// 100-ns units since 1601-01-01: a FILETIME.
std::uint64_t FileTimeOf(const CalendarTime& time);

/// The FAT form, date in the low half and time in the high half, two-second steps; 0 for a FILETIME before
/// 1980.
std::uint32_t FatTimeOf(std::uint64_t fileTime);

inline constexpr std::uint64_t kSecond = 10'000'000;  ///< in FILETIME units
inline constexpr std::uint64_t kMinute = 60 * kSecond;
inline constexpr std::uint64_t kHour = 60 * kMinute;
inline constexpr std::uint64_t kDay = 24 * kHour;

}  // namespace ostrevin::samples
