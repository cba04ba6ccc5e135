#include "platform/volume/lnk/ExtraData.h"

#include <algorithm>
#include <cstddef>

namespace ostrevin::lnk {
namespace {

constexpr std::size_t kDataAt = 8;  // after BlockSize and BlockSignature

/// EnvironmentVariableDataBlock and IconEnvironmentDataBlock: the same text twice, in fields of 260
/// characters, single-byte and UTF-16.
std::string EnvironmentText(Bytes block, const AnsiDecoder& decode) {
    constexpr std::size_t kCharacters = 260;
    const Bytes unicode = From(block, kDataAt + kCharacters);
    std::string text = Utf16Text(unicode.first(std::min(unicode.size(), 2 * kCharacters)));
    if (text.empty()) {
        const Bytes ansi = From(block, kDataAt);
        text = AnsiText(ansi.first(std::min(ansi.size(), kCharacters)), decode);
    }
    return text;
}

}  // namespace

ExtraData ReadExtraData(Bytes blocks, const AnsiDecoder& decode) {
    constexpr std::uint32_t kEnvironmentVariable = 0xA0000001;
    constexpr std::uint32_t kSpecialFolder = 0xA0000005;
    constexpr std::uint32_t kIconEnvironment = 0xA0000007;
    constexpr std::size_t kSpecialFolderSize = 16;
    ExtraData extra;
    // The terminal block is a size below 4.
    for (auto size = IntegerAt<std::uint32_t>(blocks, 0); size >= kDataAt && size <= blocks.size();
         size = IntegerAt<std::uint32_t>(blocks, 0)) {
        const Bytes block = blocks.first(size);
        blocks = blocks.subspan(size);
        switch (IntegerAt<std::uint32_t>(block, 4)) {
            case kEnvironmentVariable:
                extra.environmentTarget = EnvironmentText(block, decode);
                break;
            case kIconEnvironment:
                extra.environmentIcon = EnvironmentText(block, decode);
                break;
            case kSpecialFolder:
                if (block.size() >= kSpecialFolderSize) {
                    extra.specialFolder = {IntegerAt<std::uint32_t>(block, 8),
                                           IntegerAt<std::uint32_t>(block, 12)};
                }
                break;
            default:
                break;
        }
    }
    return extra;
}

}  // namespace ostrevin::lnk
