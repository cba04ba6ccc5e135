// Text at the boundary: UTF-8 inside, what Windows' A forms and W forms take outside.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ostrevin::windows {

/// A byte that is no UTF-8 becomes U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view text);
/// A lone surrogate becomes U+FFFD.
[[nodiscard]] std::string Utf8(std::wstring_view wide);

/// Text in the machine's code page, as UTF-8.
[[nodiscard]] std::string AnsiToUtf8(std::string_view bytes);
/// Text in the machine's code page: "?" for every character that it does not hold, never one that merely
/// looks alike, and for every byte that is no UTF-8.
[[nodiscard]] std::string Ansi(std::string_view text);
/// The same, or none when the code page does not hold all of it.
[[nodiscard]] std::optional<std::string> ExactAnsi(std::string_view text);

}  // namespace ostrevin::windows
