// File times as dates of the examined machine's clock.
#pragma once

#include "platform/Platform.h"

namespace ostrevin {

/// 1601-01-01 00:00:00, the date of a time that is 0 or cannot be converted.
inline constexpr double kDateOfNoTime = -109205.0;

/// A file time (UTC) as a local date, milliseconds dropped; kDateOfNoTime when it is 0, when the host cannot
/// convert it, or when its year is beyond 9999, the last that a date can hold.
[[nodiscard]] double FileTimeToLocalDate(Platform& platform, const FileTime& time);

}  // namespace ostrevin
