// Integers in the bytes of Windows' files.
#pragma once

#include <concepts>
#include <cstddef>
#include <span>

namespace ostrevin {

/// The little-endian integer at an offset; 0 when it does not lie within the bytes.
template <std::unsigned_integral T>
[[nodiscard]] T IntegerAt(std::span<const std::byte> bytes, std::size_t at) {
    if (at > bytes.size() || bytes.size() - at < sizeof(T)) {
        return 0;
    }
    T value = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        value = static_cast<T>(value | (std::to_integer<T>(bytes[at + i]) << (8U * i)));
    }
    return value;
}

}  // namespace ostrevin
