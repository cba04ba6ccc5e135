#include "tools/writers/Times.h"

#include <chrono>

namespace ostrevin::samples {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

sys_days FileTimeEpoch() {
    return year_month_day(std::chrono::year(1601), std::chrono::January, std::chrono::day(1));
}

}  // namespace

std::uint64_t FileTimeOf(const CalendarTime& time) {
    const sys_days date = year_month_day(std::chrono::year(time.year), std::chrono::month(time.month),
                                         std::chrono::day(time.day));
    const auto dayCount = static_cast<std::uint64_t>((date - FileTimeEpoch()).count());
    return dayCount * kDay + time.hour * kHour + time.minute * kMinute + time.second * kSecond;
}

std::uint32_t FatTimeOf(std::uint64_t fileTime) {
    const year_month_day date(FileTimeEpoch() + days(static_cast<std::int64_t>(fileTime / kDay)));
    if (date.year() < std::chrono::year(1980)) {
        return 0;
    }
    const auto second = static_cast<std::uint32_t>(fileTime % kDay / kSecond);
    const auto year = static_cast<std::uint32_t>(static_cast<int>(date.year()) - 1980);
    const std::uint32_t fatDate =
        (year << 9U) | (static_cast<unsigned>(date.month()) << 5U) | static_cast<unsigned>(date.day());
    const std::uint32_t fatTime = (second / 3600 << 11U) | (second / 60 % 60 << 5U) | (second % 60 / 2);
    return (fatTime << 16U) | fatDate;
}

}  // namespace ostrevin::samples
