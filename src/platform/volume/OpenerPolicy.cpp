#include "platform/volume/OpenerPolicy.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "platform/Text.h"

namespace ostrevin {
namespace {

using namespace std::string_view_literals;

// Left out on purpose: pages and drawings that carry scripts (htm, mht, svg, xml), documents with macros in
// their name (docm, xlsm), help files, messages, archives.
constexpr std::array kPassiveExtensions = {
    "aac"sv,  "ac3"sv, "aif"sv,  "aiff"sv, "ape"sv,  "asf"sv,  "au"sv,   "avi"sv, "bmp"sv,  "csv"sv,  "dib"sv,
    "divx"sv, "doc"sv, "docx"sv, "emf"sv,  "fax"sv,  "flac"sv, "flv"sv,  "gif"sv, "ico"sv,  "jfif"sv, "jpe"sv,
    "jpeg"sv, "jpg"sv, "log"sv,  "m1v"sv,  "m2v"sv,  "m4a"sv,  "m4v"sv,  "mid"sv, "midi"sv, "mkv"sv,  "mov"sv,
    "mp2"sv,  "mp3"sv, "mp4"sv,  "mpe"sv,  "mpeg"sv, "mpg"sv,  "odg"sv,  "odp"sv, "ods"sv,  "odt"sv,  "oga"sv,
    "ogg"sv,  "ogm"sv, "ogv"sv,  "opus"sv, "pbm"sv,  "pcx"sv,  "pdf"sv,  "pgm"sv, "png"sv,  "pnm"sv,  "ppm"sv,
    "pps"sv,  "ppt"sv, "pptx"sv, "ps"sv,   "psd"sv,  "qt"sv,   "ra"sv,   "rm"sv,  "rmi"sv,  "rtf"sv,  "snd"sv,
    "sxc"sv,  "sxi"sv, "sxw"sv,  "tga"sv,  "tif"sv,  "tiff"sv, "txt"sv,  "vob"sv, "wav"sv,  "webp"sv, "wma"sv,
    "wmf"sv,  "wmv"sv, "wps"sv,  "wri"sv,  "xbm"sv,  "xls"sv,  "xlsx"sv, "xpm"sv};

constexpr std::array kPermittedSchemes = {"http"sv, "https"sv, "ftp"sv, "mailto"sv};

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
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

}  // namespace

bool IsPassiveName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot != std::string_view::npos &&
           std::binary_search(kPassiveExtensions.begin(), kPassiveExtensions.end(),
                              std::string_view(ToLower(name.substr(dot + 1))));
}

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
    const std::string scheme = SchemeOf(address);
    if (std::find(kPermittedSchemes.begin(), kPermittedSchemes.end(), scheme) == kPermittedSchemes.end()) {
        return std::nullopt;
    }
    constexpr std::string_view kOtherPermitted = "-._~:/?#[]@!$&()*+,;=%";
    std::string permitted;
    for (const char character : address) {
        if (IsLetter(character) || IsDigit(character) ||
            kOtherPermitted.find(character) != std::string_view::npos) {
            permitted += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            permitted += {'%', kHexDigits[byte >> 4U], kHexDigits[byte & 0xFU]};
        }
    }
    return permitted;
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
