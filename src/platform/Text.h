// Text helpers: UTF-8 is the text inside, UTF-16 the text of Windows' files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ostrevin {

/// Little-endian UTF-16 as UTF-8. A lone surrogate becomes U+FFFD, an odd last byte is left out.
[[nodiscard]] std::string Utf16ToUtf8(std::span<const std::byte> littleEndian);

/// UTF-8 as UTF-16 code units. A byte that is no UTF-8 becomes U+FFFD.
[[nodiscard]] std::u16string Utf8ToUtf16(std::string_view text);

/// ISO 8859-1 as UTF-8, the form in which "compressed" registry names stand.
[[nodiscard]] std::string Latin1ToUtf8(std::string_view bytes);

/// Takes the next character off the front of text; U+FFFD for a byte that is no UTF-8. text must not be
/// empty.
char32_t TakeCharacter(std::string_view& text);

/// Appends a character in UTF-8; what is no character becomes U+FFFD.
void AppendCharacter(std::string& text, char32_t character);

/// How many UTF-16 code units a UTF-8 text has.
[[nodiscard]] std::uint32_t Utf16Length(std::string_view text);

/// The beginning of a UTF-8 text: its first whole characters, of at most so many UTF-16 code units together.
[[nodiscard]] std::string_view Beginning(std::string_view text, std::uint32_t units);

/// The simple upper-case form of one character (Unicode's own table, no locale).
[[nodiscard]] char32_t UpperCase(char32_t character);

/// Every character in its simple upper-case form.
[[nodiscard]] std::string UpperCase(std::string_view text);

/// Whether two texts are equal but for the case of their letters.
[[nodiscard]] bool EqualNoCase(std::string_view left, std::string_view right);

/// Whether a character steers how text is shown: a control (C0, DEL, C1), a bidirectional control, a line or
/// a paragraph separator.
[[nodiscard]] bool IsControl(char32_t character);

/// A text as one line that a terminal or a log shows as it is: every such character as "?", and U+FFFD for a
/// byte that is no UTF-8. Every message goes through it, since names of the evidence stand in them.
[[nodiscard]] std::string PlainLine(std::string_view text);

/// Replaces every occurrence, with regard to case. An empty search text replaces nothing.
[[nodiscard]] std::string ReplaceAll(std::string text, std::string_view search, std::string_view replacement);

}  // namespace ostrevin
