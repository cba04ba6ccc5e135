// Bounded access to the bytes of a hive.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "platform/LittleEndian.h"

namespace ostrevin::regf {

using Bytes = std::span<const std::byte>;

/// Whether the bytes begin with an ASCII signature.
[[nodiscard]] inline bool HasSignature(Bytes bytes, std::string_view signature) {
    if (bytes.size() < signature.size()) {
        return false;
    }
    for (std::size_t i = 0; i < signature.size(); ++i) {
        if (std::to_integer<char>(bytes[i]) != signature[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace ostrevin::regf
