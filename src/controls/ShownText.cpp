#include "controls/ShownText.h"

#include <algorithm>

namespace ostrevin {
namespace {

constexpr std::string_view kReplacement = "\uFFFD";
constexpr std::string_view kEllipsis = "\u2026";

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

std::string_view EndOf(std::string_view text, std::size_t bytes) {
    std::size_t start = text.size() - bytes;
    while (start < text.size() && ContinuesCharacter(text[start])) {
        ++start;
    }
    return text.substr(start);
}

/// The length of the control character that a text begins with; 0 when it begins with another character.
std::size_t ControlAt(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < ' ' || first == 0x7F) {
        return 1;
    }
    const auto isBetween = [&](std::string_view lowest, std::string_view highest) {
        const std::string_view character = text.substr(0, lowest.size());
        return character >= lowest && character <= highest;
    };
    if (isBetween("\u0080", "\u009F") || isBetween("\u061C", "\u061C")) {
        return 2;
    }
    if (isBetween("\u200E", "\u200F") || isBetween("\u2028", "\u202E") || isBetween("\u2066", "\u2069")) {
        return 3;
    }
    return 0;
}

void AppendShown(std::string& shown, std::string_view text, bool hasLines) {
    while (!text.empty()) {
        const bool isLineEnd = hasLines && (text[0] == '\n' || text[0] == '\r');
        const std::size_t control = isLineEnd ? 0 : ControlAt(text);
        shown += control > 0 ? kReplacement : text.substr(0, 1);
        text.remove_prefix(std::max<std::size_t>(control, 1));
    }
}

std::string Shown(std::string_view text, bool hasLines) {
    std::string shown;
    if (text.size() <= 2 * kShownAtEachEnd) {
        AppendShown(shown, text, hasLines);
    } else {
        AppendShown(shown, BeginningOf(text, kShownAtEachEnd), hasLines);
        shown += kEllipsis;
        AppendShown(shown, EndOf(text, kShownAtEachEnd), hasLines);
    }
    return shown;
}

}  // namespace

std::string ShownText(std::string_view text) {
    return Shown(text, false);
}

std::string ShownMessage(std::string_view text) {
    return Shown(text, true);
}

std::string_view BeginningOf(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes) {
        return text;
    }
    while (bytes > 0 && ContinuesCharacter(text[bytes])) {
        --bytes;
    }
    return text.substr(0, bytes);
}

}  // namespace ostrevin
