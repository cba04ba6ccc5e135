#include "startup/ReportFileNames.h"

#include <string_view>

#include "platform/Text.h"

namespace ostrevin {
namespace {

/// Whether a character has no place in a name: no file system takes it, it cannot be seen, or it turns the
/// text around it.
bool IsRefused(char32_t character) {
    constexpr std::u32string_view kRefused = U"<>:\"/\\|?*\x7F\u00AD\u061C\uFEFF\uFFFD";
    const auto isIn = [&](char32_t first, char32_t last) { return character >= first && character <= last; };
    return kRefused.find(character) != std::u32string_view::npos || character < 0x20 || isIn(0x80, 0x9F) ||
           isIn(0x200B, 0x200F) || isIn(0x2028, 0x202E) || isIn(0x2060, 0x206F) || isIn(0xFFF0, 0xFFFF);
}

/// Whether Windows takes a name for a device, whatever ending it has.
bool IsDevice(std::string_view name) {
    std::string_view stem = name.substr(0, name.find('.'));
    stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
    const std::string upper = UpperCase(stem);
    for (const std::string_view device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"}) {
        if (upper == device) {
            return true;
        }
    }
    if (!upper.starts_with("COM") && !upper.starts_with("LPT")) {
        return false;
    }
    const std::string number = upper.substr(3);
    return (number.size() == 1 && number[0] >= '0' && number[0] <= '9') || number == "\u00B9" ||
           number == "\u00B2" || number == "\u00B3";
}

/// A part of a file's name that every file system takes.
std::string Harmless(std::string_view text) {
    constexpr std::size_t kMostBytes = 100;  // a name of two parts stays within 255
    std::string harmless;
    while (!text.empty() && harmless.size() < kMostBytes) {
        const char32_t character = TakeCharacter(text);
        AppendCharacter(harmless, IsRefused(character) ? U'_' : character);
    }
    // A dot in front would hide the file, a hyphen would make it an option for other programs.
    if (harmless.starts_with('.') || harmless.starts_with('-') || harmless.starts_with(' ')) {
        harmless.front() = '_';
    }
    return IsDevice(harmless) ? "_" + harmless : harmless;
}

}  // namespace

std::string ReportFileNames::For(const std::string& account, const std::string& sid) {
    std::string name = Harmless(account);
    if (taken_.contains(UpperCase(name))) {
        name.append(" ").append(Harmless(sid));
    }
    std::string numbered = name;
    for (std::size_t& number = numbers_[UpperCase(name)]; taken_.contains(UpperCase(numbered));) {
        numbered = name + " " + std::to_string(++number + 1);
    }
    taken_.insert(UpperCase(numbered));
    return numbered + ".htm";
}

}  // namespace ostrevin
