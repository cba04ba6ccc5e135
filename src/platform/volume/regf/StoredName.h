// The name of a key or a value as it is stored.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/volume/regf/Bytes.h"

namespace ostrevin::regf {

struct StoredName {
    Bytes bytes;
    bool compressed = false;  ///< one byte a character, ISO 8859-1; otherwise UTF-16

    [[nodiscard]] std::string Text() const;      ///< UTF-8
    [[nodiscard]] std::uint32_t Length() const;  ///< in UTF-16 code units
    /// Compares with a UTF-8 text, without regard to case: by the upper-case forms of the characters.
    [[nodiscard]] std::weak_ordering Compare(std::string_view text) const;
};

}  // namespace ostrevin::regf
