#include "platform/volume/regf/Marvin32.h"

#include <bit>

namespace ostrevin::regf {
namespace {

struct State {
    std::uint32_t low;
    std::uint32_t high;

    void Mix(std::uint32_t block) {
        low += block;
        high ^= low;
        low = std::rotl(low, 20) + high;
        high = std::rotl(high, 9) ^ low;
        low = std::rotl(low, 27) + high;
        high = std::rotl(high, 19);
    }
};

}  // namespace

std::uint64_t Marvin32(Bytes bytes, std::uint64_t seed) {
    State state = {static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32U)};
    for (; bytes.size() >= 4; bytes = bytes.subspan(4)) {
        state.Mix(IntegerAt<std::uint32_t>(bytes, 0));
    }
    // The last block holds the bytes that are left, and the byte 0x80 after them.
    std::uint32_t last = 0x80;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        last = (last << 8U) | std::to_integer<std::uint32_t>(bytes[i]);
    }
    state.Mix(last);
    state.Mix(0);
    return (static_cast<std::uint64_t>(state.high) << 32U) | state.low;
}

}  // namespace ostrevin::regf
