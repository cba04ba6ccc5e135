#include "platform/volume/lnk/ShellLinkHeader.h"

#include <algorithm>
#include <iterator>

namespace ostrevin::lnk {

std::optional<ShellLinkHeader> ReadShellLinkHeader(Bytes file) {
    constexpr std::size_t kClassIdAt = 4;
    if (file.size() < ShellLinkHeader::kSize || IntegerAt<std::uint32_t>(file, 0) != ShellLinkHeader::kSize ||
        !std::equal(std::begin(ShellLinkHeader::kClassId), std::end(ShellLinkHeader::kClassId),
                    file.begin() + kClassIdAt, [](std::uint8_t expected, std::byte found) {
                        return expected == std::to_integer<std::uint8_t>(found);
                    })) {
        return std::nullopt;
    }
    ShellLinkHeader header;
    header.flags = IntegerAt<std::uint32_t>(file, 20);
    header.iconIndex = static_cast<std::int32_t>(IntegerAt<std::uint32_t>(file, 56));
    header.showCommand = static_cast<std::int32_t>(IntegerAt<std::uint32_t>(file, 60));
    header.hotKey = IntegerAt<std::uint16_t>(file, 64);
    return header;
}

}  // namespace ostrevin::lnk
