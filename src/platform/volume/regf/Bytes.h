// Bounded access to the bytes of a hive. Integers are little-endian.
#pragma once

#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>

namespace ostrevin::regf {

using Bytes = std::span<const std::byte>;

/// The integer at an offset; 0 when it does not lie within the bytes.
template <std::unsigned_integral T>
[[nodiscard]] T IntegerAt(Bytes bytes, std::size_t at) {
    if (at > bytes.size() || bytes.size() - at < sizeof(T)) {
        return 0;
    }
    T value = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        value = static_cast<T>(value | (std::to_integer<T>(bytes[at + i]) << (8U * i)));
    }
    return value;
}

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
