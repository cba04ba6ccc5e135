// Text of the controls, which is UTF-8, as Windows has it, and back.
#pragma once

#include <string>
#include <string_view>

namespace ostrevin::win32 {

/// Bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view utf8);
/// A text for a control that is to show it, however long it is and whatever characters are in it.
[[nodiscard]] std::wstring WideShown(std::string_view utf8);
[[nodiscard]] std::string Utf8(std::wstring_view wide);

}  // namespace ostrevin::win32
