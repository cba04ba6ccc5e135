#include "platform/volume/lnk/LinkInfo.h"

#include <cstdint>

namespace ostrevin::lnk {
namespace {

/// The text at the offset that the field at ansiField holds, or rather its Unicode form, if unicodeField is
/// not 0 and that form is sound. Offset 0 means that there is none.
std::string TextAt(Bytes structure, std::size_t ansiField, std::size_t unicodeField,
                   const AnsiDecoder& decode) {
    if (unicodeField != 0) {
        if (const auto at = IntegerAt<std::uint32_t>(structure, unicodeField)) {
            std::string text = TerminatedUtf16(structure, at);
            if (!text.empty()) {
                return text;
            }
        }
    }
    const auto at = IntegerAt<std::uint32_t>(structure, ansiField);
    return at != 0 ? TerminatedAnsi(structure, at, decode) : std::string();
}

void ReadCommonNetworkRelativeLink(Bytes link, const AnsiDecoder& decode, LinkInfo& info) {
    constexpr std::uint32_t kSmallest = 0x14;
    constexpr std::uint32_t kValidDevice = 0x1;
    const auto size = IntegerAt<std::uint32_t>(link, 0);
    if (size < kSmallest || size > link.size()) {
        return;
    }
    link = link.first(size);
    const bool unicode = IntegerAt<std::uint32_t>(link, 8) > kSmallest;  // NetNameOffset tells
    info.netName = TextAt(link, 8, unicode ? 20 : 0, decode);
    if ((IntegerAt<std::uint32_t>(link, 4) & kValidDevice) != 0) {
        info.deviceName = TextAt(link, 12, unicode ? 24 : 0, decode);
    }
}

}  // namespace

std::optional<LinkInfo> ReadLinkInfo(Bytes info, const AnsiDecoder& decode) {
    constexpr std::uint32_t kSmallestHeader = 0x1C;
    constexpr std::uint32_t kUnicodeHeader = 0x24;
    constexpr std::uint32_t kVolumeIdAndLocalBasePath = 0x1;
    constexpr std::uint32_t kCommonNetworkRelativeLinkAndPathSuffix = 0x2;
    const auto headerSize = IntegerAt<std::uint32_t>(info, 4);
    if (headerSize < kSmallestHeader || headerSize > info.size()) {
        return std::nullopt;
    }
    const bool unicode = headerSize >= kUnicodeHeader;
    const auto flags = IntegerAt<std::uint32_t>(info, 8);
    LinkInfo result;
    if ((flags & kVolumeIdAndLocalBasePath) != 0) {
        result.localBasePath = TextAt(info, 16, unicode ? 28 : 0, decode);
    }
    if ((flags & kCommonNetworkRelativeLinkAndPathSuffix) != 0) {
        const auto at = IntegerAt<std::uint32_t>(info, 20);
        if (at >= headerSize) {
            ReadCommonNetworkRelativeLink(From(info, at), decode, result);
        }
    }
    result.commonPathSuffix = TextAt(info, 24, unicode ? 32 : 0, decode);
    return result;
}

}  // namespace ostrevin::lnk
