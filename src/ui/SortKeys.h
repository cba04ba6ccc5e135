// Texts that stand for numbers and dates where only texts can be compared.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace ostrevin {

/// A decimal text with or without sign, point, exponent and blanks around it; none for what is no number, or
/// none that a double can hold.
[[nodiscard]] std::optional<double> ReadNumber(std::string_view text);

/// The keys of numbers below 10^30, compared as text with "&" before the digits, are in the order of the
/// numbers: 30 digits, a point and 30 decimals; for 0 and negative numbers "&" and the complement of each
/// digit of the magnitude. Empty for what ReadNumber does not take.
[[nodiscard]] std::string NumberKey(std::string_view text);

/// Year, month, day, hour, minute and second, all but the year in two digits; empty for what is no date.
[[nodiscard]] std::string DateKey(Platform& platform, const std::string& text);

}  // namespace ostrevin
