// Text as the writers of sample files need it: UTF-8 in, the encodings of the formats out.
#pragma once

#include <string>
#include <string_view>

namespace ostrevin::samples {

/// UTF-16 of UTF-8; std::invalid_argument when it is not UTF-8.
std::u16string ToUtf16(std::string_view utf8);

/// Code page 1252 of UTF-8, '?' for what it does not hold, as Windows writes single-byte forms.
std::string ToWindows1252(std::string_view utf8);

/// One character in upper case as Windows orders and hashes key names: Latin, Greek and Cyrillic letters.
char16_t ToUpper(char16_t unit);
std::u16string ToUpper(std::u16string_view text);

}  // namespace ostrevin::samples
