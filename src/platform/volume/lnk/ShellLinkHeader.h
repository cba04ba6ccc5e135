// ShellLinkHeader, the first 76 bytes of a shell link file.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/volume/lnk/Bytes.h"

namespace ostrevin::lnk {

/// LinkFlags: which structures follow the header.
enum LinkFlag : std::uint32_t {
    kHasLinkTargetIdList = 0x1,
    kHasLinkInfo = 0x2,
    kHasName = 0x4,
    kHasRelativePath = 0x8,
    kHasWorkingDir = 0x10,
    kHasArguments = 0x20,
    kHasIconLocation = 0x40,
    kIsUnicode = 0x80,
    kForceNoLinkInfo = 0x100,  ///< the link information stands there but does not count
    kHasExpString = 0x200,
};

struct ShellLinkHeader {
    static constexpr std::uint32_t kSize = 0x4C;
    /// LinkCLSID, 00021401-0000-0000-C000-000000000046, as its bytes stand in the file.
    static constexpr std::uint8_t kClassId[16] = {0x01, 0x14, 0x02, 0x00, 0, 0, 0, 0,
                                                  0xC0, 0,    0,    0,    0, 0, 0, 0x46};

    std::uint32_t flags = 0;  ///< of LinkFlag
    std::int32_t iconIndex = 0;
    std::int32_t showCommand = 1;  ///< as stored, even when it is no known command
    std::uint16_t hotKey = 0;      ///< low byte the virtual key, high byte the modifiers
};

/// None when the bytes do not begin with a shell link's header.
[[nodiscard]] std::optional<ShellLinkHeader> ReadShellLinkHeader(Bytes file);

}  // namespace ostrevin::lnk
