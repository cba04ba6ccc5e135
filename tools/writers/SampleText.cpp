#include "tools/writers/SampleText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>

namespace ostrevin::samples {
namespace {

// Bytes 0x80 to 0x9F of code page 1252; 0 where it defines none.
constexpr std::array<char16_t, 32> kWindows1252High = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::size_t SequenceLength(std::uint8_t lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead < 0xE0) {
        return 2;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    if (lead >= 0xF0 && lead < 0xF5) {
        return 4;
    }
    throw std::invalid_argument("not UTF-8");
}

char32_t NextCodePoint(std::string_view& rest) {
    const auto lead = static_cast<std::uint8_t>(rest.front());
    const std::size_t length = SequenceLength(lead);
    if (length > rest.size()) {
        throw std::invalid_argument("UTF-8 cut off");
    }
    char32_t code = length == 1 ? lead : lead & (0x7FU >> length);
    for (const char c : rest.substr(1, length - 1)) {
        code = (code << 6U) | (static_cast<std::uint8_t>(c) & 0x3FU);
    }
    rest.remove_prefix(length);
    return code;
}

bool Between(char16_t unit, char16_t first, char16_t last) {
    return unit >= first && unit <= last;
}

char16_t Minus(char16_t unit, unsigned distance) {
    return static_cast<char16_t>(unit - distance);
}

}  // namespace

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string result;
    while (!utf8.empty()) {
        const char32_t code = NextCodePoint(utf8);
        if (code < 0x10000) {
            result.push_back(static_cast<char16_t>(code));
        } else {
            result.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10U)));
            result.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FFU)));
        }
    }
    return result;
}

std::string ToWindows1252(std::string_view utf8) {
    std::string result;
    while (!utf8.empty()) {
        const char32_t code = NextCodePoint(utf8);
        const auto* const high = std::find(kWindows1252High.begin(), kWindows1252High.end(), code);
        if (code < 0x80 || (code >= 0xA0 && code < 0x100)) {
            result.push_back(static_cast<char>(code));
        } else if (high != kWindows1252High.end()) {
            result.push_back(static_cast<char>(0x80 + std::distance(kWindows1252High.begin(), high)));
        } else {
            result.push_back('?');
        }
    }
    return result;
}

char16_t ToUpper(char16_t unit) {
    if (Between(unit, u'a', u'z') || (Between(unit, 0xE0, 0xFE) && unit != 0xF7) ||
        (Between(unit, 0x3B1, 0x3C9) && unit != 0x3C2) || Between(unit, 0x430, 0x44F)) {
        return Minus(unit, 0x20);
    }
    if (unit == 0xFF) {
        return 0x178;
    }
    if (Between(unit, 0x450, 0x45F)) {
        return Minus(unit, 0x50);
    }
    // Latin Extended-A and the later Cyrillic letters stand in pairs, the capital first. Dotless i is none.
    const bool evenCapitals = Between(unit, 0x100, 0x137) || Between(unit, 0x14A, 0x177) ||
                              Between(unit, 0x460, 0x481) || Between(unit, 0x48A, 0x4BF);
    const bool oddCapitals = Between(unit, 0x139, 0x148) || Between(unit, 0x179, 0x17E);
    if (evenCapitals && unit % 2 == 1 && unit != 0x131) {
        return Minus(unit, 1);
    }
    if (oddCapitals && unit % 2 == 0) {
        return Minus(unit, 1);
    }
    return unit;
}

std::u16string ToUpper(std::u16string_view text) {
    std::u16string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char16_t unit) { return ToUpper(unit); });
    return result;
}

}  // namespace ostrevin::samples
