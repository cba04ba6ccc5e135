#include "toolkit/qt/QtCollation.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <string>
#include <unordered_map>

#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {
namespace {

/// Printable ASCII without letters. No language joins such characters to one another, so that texts of them
/// compare character by character.
bool IsPlain(char character) {
    return character >= ' ' && character <= '~' && !(character >= 'A' && character <= 'Z') &&
           !(character >= 'a' && character <= 'z');
}

/// The places of texts, by their numbers in order and by what tells whether two of them are equal.
template <typename Equal>
std::vector<std::size_t> PlacesOf(const std::vector<std::size_t>& order, Equal equal) {
    std::vector<std::size_t> places(order.size());
    std::size_t place = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        place += equal(order[i - 1], order[i]) ? 0U : 1U;
        places[order[i]] = place;
    }
    return places;
}

std::vector<std::size_t> Numbers(std::size_t count) {
    std::vector<std::size_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), std::size_t{0});
    return numbers;
}

}  // namespace

// The C locale stands for no language. Its order is that of the characters' codes, and its sort keys do not
// follow its own comparison.
QtCollation::QtCollation(const QLocale& locale)
    : collator_(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale) {
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
}

int QtCollation::Compare(std::string_view left, std::string_view right) const {
    return collator_.compare(Text(left), Text(right));
}

std::vector<std::size_t> QtCollation::Rank(std::span<const std::string_view> texts) const {
    const bool plain = std::all_of(texts.begin(), texts.end(), [](std::string_view text) {
        return std::all_of(text.begin(), text.end(), IsPlain);
    });
    return plain ? RankPlain(texts) : RankByKeys(texts);
}

std::vector<std::size_t> QtCollation::RankPlain(std::span<const std::string_view> texts) const {
    std::vector<char> characters;
    for (char character = ' '; character <= '~'; ++character) {
        if (IsPlain(character)) {
            characters.push_back(character);
        }
    }
    std::sort(characters.begin(), characters.end(), [this](char left, char right) {
        return Compare({&left, 1}, {&right, 1}) < 0;
    });
    std::array<char, 128> weights{};
    for (std::size_t i = 0; i < characters.size(); ++i) {
        weights[static_cast<std::size_t>(characters[i])] = static_cast<char>(i + 1);
    }
    std::vector<std::string> keys;
    keys.reserve(texts.size());
    for (const std::string_view text : texts) {
        std::string& key = keys.emplace_back(text);
        for (char& character : key) {
            character = weights[static_cast<std::size_t>(character)];
        }
    }
    std::vector<std::size_t> order = Numbers(keys.size());
    std::sort(order.begin(), order.end(),
              [&](std::size_t left, std::size_t right) { return keys[left] < keys[right]; });
    return PlacesOf(order, [&](std::size_t left, std::size_t right) { return keys[left] == keys[right]; });
}

std::vector<std::size_t> QtCollation::RankByKeys(std::span<const std::string_view> texts) const {
    struct Key {
        bool empty;
        QCollatorSortKey key;
    };
    std::unordered_map<std::string_view, std::size_t> numbers;
    std::vector<Key> keys;
    std::vector<std::size_t> numberOfText;
    numberOfText.reserve(texts.size());
    for (const std::string_view text : texts) {
        const auto [entry, isNew] = numbers.try_emplace(text, keys.size());
        if (isNew) {
            keys.push_back({text.empty(), collator_.sortKey(Text(text))});
        }
        numberOfText.push_back(entry->second);
    }
    // To its keys, a text of characters that do not count is like the empty one; to its comparison it is not.
    const auto compare = [&](std::size_t left, std::size_t right) {
        return keys[left].empty || keys[right].empty
                   ? static_cast<int>(keys[right].empty) - static_cast<int>(keys[left].empty)
                   : keys[left].key.compare(keys[right].key);
    };
    std::vector<std::size_t> order = Numbers(keys.size());
    std::sort(order.begin(), order.end(),
              [&](std::size_t left, std::size_t right) { return compare(left, right) < 0; });
    const std::vector<std::size_t> places =
        PlacesOf(order, [&](std::size_t left, std::size_t right) { return compare(left, right) == 0; });
    for (std::size_t& number : numberOfText) {
        number = places[number];
    }
    return numberOfText;
}

}  // namespace ostrevin::qt
