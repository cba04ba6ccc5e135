#include "toolkit/win32/Fonts.h"

#include <algorithm>
#include <cwchar>

#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

LOGFONTW MessageFont() {
    NONCLIENTMETRICSW metrics{};
    // Windows 2000 and XP know the structure in this size only.
    static_assert(sizeof(metrics) == 500);
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    return metrics.lfMessageFont;
}

}  // namespace

Fonts::~Fonts() {
    for (const auto& [typeface, font] : fonts_) {
        DeleteObject(font);
    }
}

HFONT Fonts::Get(const std::string& typeface) {
    HFONT& font = fonts_[typeface];
    if (font == nullptr) {
        LOGFONTW description = MessageFont();
        if (!typeface.empty()) {
            const std::wstring name = Wide(typeface).substr(0, LF_FACESIZE - 1);
            *std::copy(name.begin(), name.end(), description.lfFaceName) = L'\0';
        }
        font = CreateFontIndirectW(&description);
    }
    return font;
}

}  // namespace ostrevin::win32
