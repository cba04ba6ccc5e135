#include "ui/SortKeys.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>

#include "platform/Dates.h"

namespace ostrevin {
namespace {

constexpr std::size_t kDigits = 30;
constexpr int kDecimals = 30;
constexpr std::string_view kBlanks = " \t\r\n\v\f";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Text of at most 15 digits, which a double holds exactly, and which is its own decimal form.
bool IsPlainInteger(std::string_view text) {
    return !text.empty() && text.size() <= std::numeric_limits<double>::digits10 &&
           std::all_of(text.begin(), text.end(), IsDigit);
}

/// 30 digits or more, a point, 30 decimals.
std::string Pattern(std::string_view integer, std::string_view decimals) {
    std::string key;
    key.reserve(2 * kDigits + 1);
    key.append(kDigits - std::min(kDigits, integer.size()), '0');
    key.append(integer).append(1, '.').append(decimals);
    key.append(kDigits - decimals.size(), '0');
    return key;
}

/// A magnitude of which all bits are at hand: the integer, and the fraction in parts of 2 to the power of
/// bits.
struct FixedPoint {
    std::uint64_t integer = 0;
    std::uint64_t fraction = 0;
    int bits = 0;
};

/// None for magnitudes so large or so small that their decimals do not come out of 64-bit arithmetic.
std::optional<FixedPoint> ToFixedPoint(double magnitude) {
    constexpr int kMantissaBits = std::numeric_limits<double>::digits;
    constexpr int kMostBits = 60;  // ten times such a fraction fits
    int exponent = 0;
    const double mantissa = std::frexp(magnitude, &exponent);
    const int bits = kMantissaBits - exponent;
    if (bits < 0 || bits > kMostBits) {
        return std::nullopt;
    }
    const auto all = static_cast<std::uint64_t>(std::ldexp(mantissa, kMantissaBits));
    return FixedPoint{all >> bits, all & ((std::uint64_t{1} << bits) - 1), bits};
}

/// Rounds half to even, as the language does.
std::string Format(FixedPoint number) {
    const std::uint64_t one = std::uint64_t{1} << number.bits;
    std::array<char, kDecimals> decimals{};
    for (char& digit : decimals) {
        number.fraction *= 10;
        digit = static_cast<char>('0' + (number.fraction >> number.bits));
        number.fraction &= one - 1;
    }
    const bool odd = (decimals.back() - '0') % 2 != 0;
    bool carry = 2 * number.fraction > one || (2 * number.fraction == one && odd);
    for (auto digit = decimals.rbegin(); carry && digit != decimals.rend(); ++digit) {
        carry = *digit == '9';
        *digit = carry ? '0' : static_cast<char>(*digit + 1);
    }
    return Pattern(std::to_string(number.integer + (carry ? 1 : 0)), {decimals.data(), decimals.size()});
}

/// (std::to_chars would cost the Windows edition a tenth of its size.)
std::string Format(double magnitude) {
    if (const std::optional<FixedPoint> number = ToFixedPoint(magnitude)) {
        return Format(*number);
    }
    constexpr std::size_t kLongestPoint = 4;
    std::array<char, std::numeric_limits<double>::max_exponent10 + kDecimals + kLongestPoint + 2> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), "%.*f", kDecimals, magnitude);
    // Between the two the language has its own point.
    const std::string_view text(digits.data(), static_cast<std::size_t>(length));
    const auto* const point = std::find_if_not(text.begin(), text.end(), IsDigit);
    return Pattern({text.begin(), point}, text.substr(text.size() - kDigits));
}

std::string Complement(std::string key) {
    for (char& character : key) {
        if (IsDigit(character)) {
            character = static_cast<char>('0' + '9' - character);
        }
    }
    return key;
}

void AppendTwoDigits(std::string& text, int number) {
    text += static_cast<char>('0' + number / 10);
    text += static_cast<char>('0' + number % 10);
}

}  // namespace

std::optional<double> ReadNumber(std::string_view text) {
    text = WithoutBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    if (text.empty() || !(IsDigit(text.front()) || text.front() == '.')) {
        return std::nullopt;  // from_chars would take a second sign, and words for infinity
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

std::string NumberKey(std::string_view text) {
    if (IsPlainInteger(text) && text.find_first_not_of('0') != std::string_view::npos) {
        return Pattern(text, {});
    }
    const std::optional<double> value = ReadNumber(text);
    if (!value) {
        return {};
    }
    // Zero counts as negative: it comes after all negative numbers and before all others.
    return *value > 0 ? Format(*value) : Complement(Format(std::fabs(*value))).insert(0, 1, '&');
}

std::string DateKey(Platform& platform, const std::string& text) {
    const std::optional<double> date = platform.TextToDate(text);
    if (!date) {
        return {};
    }
    const SystemTime civil = CivilFromDate(*date);
    std::string key = std::to_string(civil.year);
    for (const int part : {civil.month, civil.day, civil.hour, civil.minute, civil.second}) {
        AppendTwoDigits(key, part);
    }
    return key;
}

}  // namespace ostrevin
