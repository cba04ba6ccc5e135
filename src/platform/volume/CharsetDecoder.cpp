#include "platform/volume/CharsetDecoder.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/Text.h"
#include "platform/volume/CharsetConverter.h"

namespace ostrevin {
namespace {

constexpr std::size_t kLongestCharacter = 4;  // in bytes, of any set in use

/// The converter of a set, or of that of western Windows where it is not known.
template <typename Make>
std::unique_ptr<CharsetConverter> KnownConverter(const Make& make, const std::string& charset) {
    std::unique_ptr<CharsetConverter> converter = make(charset);
    return converter ? std::move(converter) : make(CharsetName(kWesternCodePage));
}

}  // namespace

CharsetDecoder::CharsetDecoder(std::uint32_t codePage) : CharsetDecoder(CharsetName(codePage)) {}

CharsetDecoder::CharsetDecoder(const std::string& charset)
    : converter_(KnownConverter(ConverterFrom, charset)) {
    for (std::size_t byte = 0; byte < characters_.size(); ++byte) {
        std::string& character = characters_.at(byte);
        const char alone = static_cast<char>(byte);
        if (converter_->Convert({&alone, 1}, character) == CharsetConverter::Result::Invalid) {
            const bool control = byte < 0xA0;
            AppendCharacter(character, control ? static_cast<char32_t>(byte) : U'\uFFFD');
        }
        plain_.at(byte) = character.size() == 1 && character.front() == alone;
    }
}

CharsetDecoder::~CharsetDecoder() = default;
CharsetDecoder::CharsetDecoder(CharsetDecoder&&) noexcept = default;
CharsetDecoder& CharsetDecoder::operator=(CharsetDecoder&&) noexcept = default;

std::string CharsetDecoder::Decode(std::string_view bytes) const {
    std::string text;
    text.reserve(bytes.size());
    std::string character;
    while (!bytes.empty()) {
        // Most text is ASCII throughout, and there is much of it.
        const auto* plainEnd = std::find_if_not(bytes.begin(), bytes.end(), [this](char byte) {
            return plain_.at(static_cast<unsigned char>(byte));
        });
        text.append(bytes.begin(), plainEnd);
        bytes.remove_prefix(static_cast<std::size_t>(plainEnd - bytes.begin()));
        if (bytes.empty()) {
            break;
        }
        const std::string& alone = characters_.at(static_cast<unsigned char>(bytes.front()));
        if (!alone.empty()) {
            text += alone;
            bytes.remove_prefix(1);
            continue;
        }
        auto result = CharsetConverter::Result::Incomplete;
        std::size_t length = 1;
        while (result == CharsetConverter::Result::Incomplete &&
               length < std::min(bytes.size(), kLongestCharacter)) {
            result = converter_->Convert(bytes.substr(0, ++length), character);
        }
        const bool done = result == CharsetConverter::Result::Done;
        text += done ? character : "\uFFFD";
        bytes.remove_prefix(done ? length : 1);
    }
    return text;
}

CharsetEncoder::CharsetEncoder(std::uint32_t codePage)
    : converter_(KnownConverter(ConverterTo, CharsetName(codePage))), decoder_(codePage) {}

CharsetEncoder::~CharsetEncoder() = default;
CharsetEncoder::CharsetEncoder(CharsetEncoder&&) noexcept = default;
CharsetEncoder& CharsetEncoder::operator=(CharsetEncoder&&) noexcept = default;

std::string CharsetEncoder::Encode(std::string_view text) const {
    constexpr unsigned char kFirstBeyondAscii = 0x80;
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        // ASCII is the same in all of Windows' code pages, and most text is nothing else.
        const auto* plainEnd = std::find_if(text.begin(), text.end(), [](char byte) {
            return static_cast<unsigned char>(byte) >= kFirstBeyondAscii;
        });
        bytes.append(text.begin(), plainEnd);
        text.remove_prefix(static_cast<std::size_t>(plainEnd - text.begin()));
        if (!text.empty()) {
            std::string_view rest = text;
            TakeCharacter(rest);
            AppendEncoded(bytes, text.substr(0, text.size() - rest.size()));
            text = rest;
        }
    }
    return bytes;
}

void CharsetEncoder::AppendEncoded(std::string& bytes, std::string_view character) const {
    std::string encoded;
    // The host may pass over some characters without a word.
    if (converter_->Convert(character, encoded) == CharsetConverter::Result::Done && !encoded.empty()) {
        bytes += encoded;
        return;
    }
    std::string_view rest = character;
    const char32_t code = TakeCharacter(rest);
    const char open = static_cast<char>(code);
    const bool isOpen = code >= 0x80 && code < 0xA0 && decoder_.Decode({&open, 1}) == character;
    bytes += isOpen ? open : '?';
}

}  // namespace ostrevin
