#include "sources/FileTimeToLocalDate.h"

#include "platform/Dates.h"

namespace ostrevin {

double FileTimeToLocalDate(Platform& platform, const FileTime& time) {
    // 0 stands for "never": no zone may turn it into a time of day.
    if (time.low == 0 && time.high == 0) {
        return kDateOfNoTime;
    }
    const std::optional<FileTime> local = platform.FileTimeToLocalFileTime(time);
    if (!local) {
        return kDateOfNoTime;
    }
    const std::optional<SystemTime> system = platform.FileTimeToSystemTime(*local);
    if (!system || system->year > kLastYear) {
        return kDateOfNoTime;
    }
    return DateFromCivil(*system);
}

}  // namespace ostrevin
