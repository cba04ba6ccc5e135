// UTF-8 as the W forms of Windows' calls have text, and back.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/Text.h"

namespace ostrevin {

/// A byte that is no UTF-8 becomes U+FFFD.
[[nodiscard]] inline std::wstring ToWide(std::string_view utf8) {
    const std::u16string units = Utf8ToUtf16(utf8);
    return {units.begin(), units.end()};
}

/// A lone surrogate becomes U+FFFD.
[[nodiscard]] inline std::string FromWide(std::wstring_view wide) {
    return Utf16ToUtf8(std::as_bytes(std::span(wide)));
}

}  // namespace ostrevin
