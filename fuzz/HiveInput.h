// How a hive and its logs stand in one fuzz input: three sizes of 32 bits, little-endian, then the primary
// file, NAME.LOG and NAME.LOG1 of these sizes, and NAME.LOG2 to the end. A size beyond the end is cut.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ostrevin::fuzz {

/// The parts in the order in which they stand.
enum HivePart : std::size_t { kPrimary, kLog, kLog1, kLog2, kHiveParts };

/// Takes an input apart.
template <typename Byte>
std::array<std::span<Byte>, kHiveParts> HiveParts(std::span<Byte> input) {
    constexpr std::size_t kSizes = kHiveParts - 1;
    std::array<std::size_t, kHiveParts> sizes{};
    for (std::size_t i = 0; i < kSizes; ++i) {
        for (std::size_t j = 0; j < 4 && !input.empty(); ++j) {
            sizes[i] |= static_cast<std::size_t>(input.front()) << (8 * j);
            input = input.subspan(1);
        }
    }
    sizes[kLog2] = input.size();
    std::array<std::span<Byte>, kHiveParts> parts;
    for (std::size_t i = 0; i < kHiveParts; ++i) {
        parts[i] = input.first(sizes[i] < input.size() ? sizes[i] : input.size());
        input = input.subspan(parts[i].size());
    }
    return parts;
}

}  // namespace ostrevin::fuzz
