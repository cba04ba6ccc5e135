#include "platform/volume/lnk/Bytes.h"

#include <algorithm>

#include "platform/Text.h"

namespace ostrevin::lnk {

Bytes From(Bytes bytes, std::size_t at) {
    return bytes.subspan(std::min(at, bytes.size()));
}

std::optional<std::size_t> AnsiLength(Bytes bytes) {
    const auto nul = std::find(bytes.begin(), bytes.end(), std::byte{0});
    if (nul == bytes.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(nul - bytes.begin());
}

std::optional<std::size_t> Utf16ByteLength(Bytes bytes) {
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        if (bytes[at] == std::byte{0} && bytes[at + 1] == std::byte{0}) {
            return at;
        }
    }
    return std::nullopt;
}

std::string AnsiText(Bytes bytes, const AnsiDecoder& decode) {
    std::string text;
    for (const std::byte byte : bytes.first(AnsiLength(bytes).value_or(bytes.size()))) {
        text += std::to_integer<char>(byte);
    }
    return decode(text);
}

std::string Utf16Text(Bytes bytes) {
    return Utf16ToUtf8(bytes.first(Utf16ByteLength(bytes).value_or(bytes.size())));
}

std::string TerminatedAnsi(Bytes bytes, std::size_t at, const AnsiDecoder& decode) {
    const Bytes tail = From(bytes, at);
    return AnsiLength(tail) ? AnsiText(tail, decode) : std::string();
}

std::string TerminatedUtf16(Bytes bytes, std::size_t at) {
    const Bytes tail = From(bytes, at);
    return Utf16ByteLength(tail) ? Utf16Text(tail) : std::string();
}

}  // namespace ostrevin::lnk
