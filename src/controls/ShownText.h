// Texts as a window shows them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ostrevin {

/// Of a longer text a window shows this many bytes of its beginning and of its end, which is more than fits
/// into a cell: what measures, paints or reads out a text gets no more.
inline constexpr std::size_t kShownAtEachEnd = 1500;

/// A text as a cell, a node or a tip shows it: on one line and in the order in which it is written, whatever
/// characters are in it. A control character, or one that turns the direction of what follows it, becomes
/// U+FFFD; what is left out of a long text becomes an ellipsis.
[[nodiscard]] std::string ShownText(std::string_view text);

/// The same of a message, which has lines.
[[nodiscard]] std::string ShownMessage(std::string_view text);

/// The beginning of a UTF-8 text, of at most so many bytes, that ends between two characters.
[[nodiscard]] std::string_view BeginningOf(std::string_view text, std::size_t bytes);

}  // namespace ostrevin
