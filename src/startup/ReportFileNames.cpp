#include "startup/ReportFileNames.h"

#include <string_view>

#include "platform/Text.h"

namespace ostrevin {
namespace {

/// A part of a file's name that every file system takes.
std::string Harmless(std::string_view text) {
    constexpr std::u32string_view kRefused = U"<>:\"/\\|?*\x7F";
    constexpr std::size_t kMostBytes = 100;  // a name of two parts stays within 255
    std::string harmless;
    while (!text.empty() && harmless.size() < kMostBytes) {
        const char32_t character = TakeCharacter(text);
        const bool refused = character < 0x20 || kRefused.find(character) != std::u32string_view::npos;
        AppendCharacter(harmless, refused ? U'_' : character);
    }
    // A dot in front would hide the file.
    if (harmless.starts_with('.')) {
        harmless.front() = '_';
    }
    return harmless;
}

}  // namespace

std::string ReportFileNames::For(const std::string& account, const std::string& sid) {
    std::string name = Harmless(account);
    if (taken_.contains(UpperCase(name))) {
        name.append(" ").append(Harmless(sid));
    }
    while (!taken_.insert(UpperCase(name)).second) {
        name += "_";
    }
    return name + ".htm";
}

}  // namespace ostrevin
