#include "toolkit/win32/Win32Collation.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <unordered_map>

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

int Compare(std::string_view left, std::string_view right) {
    // Not with CompareStringW: one answer for this and for Rank.
    return KeyOf(left).compare(KeyOf(right));
}

std::vector<std::size_t> Rank(std::span<const std::string_view> texts) {
    std::unordered_map<std::string_view, std::size_t> numbers;
    std::vector<std::string> keys;
    std::vector<std::size_t> numberOfText;
    numberOfText.reserve(texts.size());
    for (const std::string_view text : texts) {
        const auto [entry, isNew] = numbers.try_emplace(text, keys.size());
        if (isNew) {
            keys.push_back(KeyOf(text));
        }
        numberOfText.push_back(entry->second);
    }
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(),
              [&](std::size_t left, std::size_t right) { return keys[left] < keys[right]; });
    std::vector<std::size_t> places(keys.size());
    std::size_t place = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        place += keys[order[i - 1]] == keys[order[i]] ? 0U : 1U;
        places[order[i]] = place;
    }
    for (std::size_t& number : numberOfText) {
        number = places[number];
    }
    return numberOfText;
}

}  // namespace ostrevin::win32
