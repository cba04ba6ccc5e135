// The order of texts in the user's locale.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace ostrevin::win32 {

/// Compares without regard to case: the empty text first, punctuation ("&" too) before digits, digits before
/// letters. Less than, equal to or greater than 0.
[[nodiscard]] int Compare(std::string_view left, std::string_view right);
/// The place of each text among the distinct texts, in the order of Compare.
[[nodiscard]] std::vector<std::size_t> Rank(std::span<const std::string_view> texts);

}  // namespace ostrevin::win32
