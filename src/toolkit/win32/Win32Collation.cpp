#include "toolkit/win32/Win32Collation.h"

#include <algorithm>
#include <string>

#include "toolkit/win32/Text.h"
#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {
namespace {

// Hyphens and apostrophes count as other punctuation does.
constexpr DWORD kOrder = NORM_IGNORECASE | SORT_STRINGSORT;

/// Bytes that are in the order of the texts that they are made of.
std::string KeyOf(std::string_view text) {
    if (text.empty()) {
        return {};  // before every other
    }
    const std::wstring wide = Wide(text);
    const int length = static_cast<int>(wide.size());
    // Of a key, the function counts bytes.
    std::wstring key(wide.size() * 4, L'\0');
    const auto map = [&] {
        return LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | kOrder, wide.data(), length, key.data(),
                            static_cast<int>(key.size() * sizeof(wchar_t)));
    };
    int size = map();
    if (size == 0) {
        const int needed =
            LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | kOrder, wide.data(), length, nullptr, 0);
        key.resize(static_cast<std::size_t>(needed) / sizeof(wchar_t) + 1);
        size = map();
    }
    return {reinterpret_cast<const char*>(key.data()), static_cast<std::size_t>(size)};
}

}  // namespace

int Win32Collation::CompareWhole(std::string_view left, std::string_view right) const {
    // Not with CompareStringW: one answer for this and for the ranks.
    return KeyOf(left).compare(KeyOf(right));
}

std::vector<std::size_t> Win32Collation::RankByKeys(std::span<const std::string_view> texts) const {
    std::vector<std::string> keys;
    keys.reserve(texts.size());
    for (const std::string_view text : texts) {
        keys.push_back(KeyOf(text));
    }
    std::vector<OrderedText> order = Unordered(texts.size());
    std::sort(order.begin(), order.end(), [&](const OrderedText& left, const OrderedText& right) {
        return keys[left.number] < keys[right.number];
    });
    for (std::size_t i = 1; i < order.size(); ++i) {
        order[i].sameAsBefore = keys[order[i - 1].number] == keys[order[i].number];
    }
    return PlacesOf(order);
}

}  // namespace ostrevin::win32
