#include "platform/windows/AnsiText.h"

#include <windows.h>
#include <span>

#include "platform/Text.h"

namespace ostrevin::windows {
namespace {

/// Text as the W forms have it, one code unit for a character: no code page of the A forms but UTF-8 holds
/// those of two.
std::wstring OneUnitACharacter(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text);
        wide += character < 0x10000 ? static_cast<wchar_t>(character) : L'\uFFFD';
    }
    return wide;
}

std::string Convert(std::string_view text, bool& replaced) {
    replaced = false;
    if (GetACP() == CP_UTF8) {
        return Utf8(Wide(text));
    }
    const std::wstring wide = OneUnitACharacter(text);
    const int units = static_cast<int>(wide.size());
    BOOL usedDefault = FALSE;
    const auto convert = [&](std::string& bytes) {
        return WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), units, bytes.data(),
                                   static_cast<int>(bytes.size()), "?", &usedDefault);
    };
    std::string bytes;
    bytes.resize(static_cast<std::size_t>(convert(bytes)));
    convert(bytes);
    replaced = usedDefault != FALSE;
    return bytes;
}

}  // namespace

std::wstring Wide(std::string_view text) {
    const std::u16string units = Utf8ToUtf16(text);
    return {units.begin(), units.end()};
}

std::string Utf8(std::wstring_view wide) {
    return Utf16ToUtf8(std::as_bytes(std::span(wide)));
}

std::string AnsiToUtf8(std::string_view bytes) {
    const int length = static_cast<int>(bytes.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, wide.data(), static_cast<int>(wide.size()));
    return Utf8(wide);
}

std::string Ansi(std::string_view text) {
    bool replaced = false;
    return Convert(text, replaced);
}

std::optional<std::string> ExactAnsi(std::string_view text) {
    bool replaced = false;
    std::string ansi = Convert(text, replaced);
    return replaced ? std::nullopt : std::optional(std::move(ansi));
}

}  // namespace ostrevin::windows
