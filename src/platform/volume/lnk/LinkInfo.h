// LinkInfo: where the target was found, on a volume of the machine or on the network.
#pragma once

#include <optional>
#include <string>

#include "platform/volume/lnk/Bytes.h"

namespace ostrevin::lnk {

/// The Unicode form of a text where the file has a sound one, else the single-byte form. A text that is
/// missing or does not lie within its structure is empty.
struct LinkInfo {
    std::string localBasePath;
    std::string netName;           ///< of CommonNetworkRelativeLink: "\\server\share"
    std::string deviceName;        ///< of CommonNetworkRelativeLink: the drive it was mapped to, "Z:"
    std::string commonPathSuffix;  ///< what follows localBasePath, or netName
};

/// info is the structure with its size field. None when its header is not sound.
[[nodiscard]] std::optional<LinkInfo> ReadLinkInfo(Bytes info, const AnsiDecoder& decode);

}  // namespace ostrevin::lnk
