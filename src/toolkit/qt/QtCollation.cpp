#include "toolkit/qt/QtCollation.h"

#include <algorithm>
#include <string>
#include <unordered_map>

#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

// The C locale stands for no language. Its order is that of the characters' codes, and its sort keys do not
// follow its own comparison.
QtCollation::QtCollation(const QLocale& locale)
    : collator_(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale) {
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
}

int QtCollation::CompareWhole(std::string_view left, std::string_view right) const {
    return collator_.compare(Text(left), Text(right));
}

std::vector<std::size_t> QtCollation::RankByKeys(std::span<const std::string_view> texts) const {
    std::unordered_map<std::string_view, std::size_t> numbers;
    std::vector<QCollatorSortKey> keys;
    std::vector<std::size_t> numberOfText;
    numberOfText.reserve(texts.size());
    for (const std::string_view text : texts) {
        const auto [entry, isNew] = numbers.try_emplace(text, keys.size());
        if (isNew) {
            keys.push_back(collator_.sortKey(Text(text)));
        }
        numberOfText.push_back(entry->second);
    }
    // To its key, a text of characters that do not count is like the empty one; to Compare it is not.
    const auto empty = numbers.find(std::string_view());
    std::vector<OrderedText> order = Unordered(keys.size());
    for (OrderedText& text : order) {
        text.key = empty != numbers.end() && empty->second == text.number ? 0U : 1U;
    }
    std::sort(order.begin(), order.end(), [&](const OrderedText& left, const OrderedText& right) {
        return left.key != right.key ? left.key < right.key
                                     : keys[left.number].compare(keys[right.number]) < 0;
    });
    for (std::size_t i = 1; i < order.size(); ++i) {
        order[i].sameAsBefore =
            order[i - 1].key == order[i].key && keys[order[i - 1].number].compare(keys[order[i].number]) == 0;
    }
    const std::vector<std::size_t> places = PlacesOf(order);
    for (std::size_t& number : numberOfText) {
        number = places[number];
    }
    return numberOfText;
}

}  // namespace ostrevin::qt
