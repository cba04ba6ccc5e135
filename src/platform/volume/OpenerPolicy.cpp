#include "platform/volume/OpenerPolicy.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "platform/Text.h"

namespace ostrevin {
namespace {

using namespace std::string_view_literals;

constexpr std::array kWebSchemes = {"http"sv, "https"sv, "ftp"sv};

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

char ToUpper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - ('a' - 'A')) : character;
}

char ToLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

std::string ToLower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return ToLower(c); });
    return lower;
}

std::string DecodePercentForms(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint8_t byte = 0;
        const std::string_view digits = text.substr(i + 1, 2);
        if (text[i] == '%' && digits.size() == 2 &&
            std::from_chars(digits.data(), digits.data() + 2, byte, 16).ptr == digits.data() + 2) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

bool IsHexDigit(char character) {
    return kHexDigits.find(ToUpper(character)) != std::string_view::npos;
}

/// An address with all in percent form that has no place in one, "%" that begins no such form included.
std::string Escaped(std::string_view address) {
    constexpr std::string_view kOtherPermitted = "-._~:/?#[]@!$&()*+,;=";
    std::string escaped;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const char character = address[i];
        const bool form = character == '%' && i + 2 < address.size() && IsHexDigit(address[i + 1]) &&
                          IsHexDigit(address[i + 2]);
        if (form || IsLetter(character) || IsDigit(character) ||
            kOtherPermitted.find(character) != std::string_view::npos) {
            escaped += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            escaped += {'%', kHexDigits[byte >> 4U], kHexDigits[byte & 0xFU]};
        }
    }
    return escaped;
}

/// Whether what stands behind the scheme is "//" and the beginning of a host's name, or of the user's there.
bool NamesHost(std::string_view rest) {
    return rest.size() > 2 && rest.starts_with("//") &&
           (IsLetter(rest[2]) || IsDigit(rest[2]) || rest[2] == '[' || rest[2] == '_' ||
            static_cast<unsigned char>(rest[2]) >= 0x80);
}

/// The address alone. What stands behind it would tell the mail program to attach files, and the characters
/// that some hand on to a shell or take for several addresses are in none that is in use.
std::optional<std::string> PermittedMailAddress(std::string_view address) {
    const std::size_t begin = address.find(':') + 1;
    const std::string_view mailbox = address.substr(begin, address.find('?') - begin);
    const std::size_t at = mailbox.find('@');
    const auto consistsOf = [](std::string_view part, std::string_view others) {
        return !part.empty() && (IsLetter(part[0]) || IsDigit(part[0])) &&
               std::all_of(part.begin(), part.end(), [&](char c) {
                   return IsLetter(c) || IsDigit(c) || others.find(c) != std::string_view::npos;
               });
    };
    if (at == std::string_view::npos || !consistsOf(mailbox.substr(0, at), "._+-") ||
        !consistsOf(mailbox.substr(at + 1), ".-")) {
        return std::nullopt;
    }
    return "mailto:" + std::string(mailbox);
}

}  // namespace

bool LooksExecutable(std::span<const std::byte> beginning) {
    std::string text;
    for (const std::byte byte : beginning.first(std::min(beginning.size(), kTellingBytes))) {
        text += static_cast<char>(byte);
    }
    constexpr std::array kMagics = {"MZ"sv, "ZM"sv,
                                    "\x7F"
                                    "ELF"sv,
                                    "#!"sv, "\xCA\xFE\xBA\xBE"sv};
    return std::any_of(kMagics.begin(), kMagics.end(),
                       [&](std::string_view magic) { return text.starts_with(magic); }) ||
           ToLower(text).find("[desktop entry]") != std::string::npos;
}

std::string SchemeOf(std::string_view address) {
    const std::size_t colon = address.find(':');
    if (colon == std::string_view::npos || colon < 2 || !IsLetter(address.front())) {
        return {};
    }
    const std::string_view scheme = address.substr(0, colon);
    const bool sound = std::all_of(scheme.begin(), scheme.end(), [](char c) {
        return IsLetter(c) || IsDigit(c) || c == '+' || c == '-' || c == '.';
    });
    return sound ? ToLower(scheme) : std::string();
}

std::optional<std::string> PermittedAddress(std::string_view address) {
    constexpr std::size_t kLongest = 2083;  // what the browser of the examined machines takes
    if (address.size() > kLongest) {
        return std::nullopt;
    }
    const std::string scheme = SchemeOf(address);
    if (scheme == "mailto") {
        return PermittedMailAddress(address);
    }
    const bool permitted = std::find(kWebSchemes.begin(), kWebSchemes.end(), scheme) != kWebSchemes.end();
    return permitted && NamesHost(address.substr(scheme.size() + 1)) ? std::optional(Escaped(address))
                                                                     : std::nullopt;
}

std::string PathOfFileAddress(std::string_view address) {
    std::string path = DecodePercentForms(address.substr(std::min(address.find(':') + 1, address.size())));
    std::replace(path.begin(), path.end(), '/', '\\');
    // file:///C:/a, file://C:/a and file:C:/a are in use; anything else with two separators names a host.
    const std::size_t first = path.find_first_not_of('\\');
    if (first != std::string::npos && first + 1 < path.size() && path[first + 1] == ':') {
        path.erase(0, first);
    }
    return path;
}

}  // namespace ostrevin
