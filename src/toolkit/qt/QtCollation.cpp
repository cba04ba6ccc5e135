#include "toolkit/qt/QtCollation.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string>
#include <unordered_map>

#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {
namespace {

bool IsPrintable(unsigned char character) {
    return character >= ' ' && character <= '~';
}

bool IsLetter(unsigned char character) {
    const unsigned char lower = character | 0x20U;
    return lower >= 'a' && lower <= 'z';
}

/// What texts are made of, besides digits and punctuation of ASCII.
struct Contents {
    bool letters = false;
    bool others = false;
};

Contents ContentsOf(std::span<const std::string_view> texts) {
    unsigned letters = 0;
    unsigned others = 0;
    for (const std::string_view text : texts) {
        for (const char character : text) {  // to the end, without a branch: many characters at once
            const auto byte = static_cast<unsigned char>(character);
            letters |= static_cast<unsigned>(IsLetter(byte));
            others |= static_cast<unsigned>(!IsPrintable(byte));
        }
    }
    return {letters != 0, others != 0};
}

/// A text by its number, from 0, in an order of texts.
struct OrderedText {
    std::uint64_t key;  ///< what it was put in order by last
    std::uint32_t number;
    bool sameAsBefore;  ///< whether it is equal to the text before it
};

std::vector<OrderedText> Unordered(std::size_t count) {
    std::vector<OrderedText> texts(count);
    for (std::size_t i = 0; i < count; ++i) {
        texts[i].number = static_cast<std::uint32_t>(i);
    }
    return texts;
}

std::vector<std::size_t> PlacesOf(const std::vector<OrderedText>& order) {
    std::vector<std::size_t> places(order.size());
    std::size_t place = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        place += order[i].sameAsBefore ? 0U : 1U;
        places[order[i].number] = place;
    }
    return places;
}

/// Sorts texts by the weights of their characters, eight characters at a time.
class WeightSort {
  public:
    WeightSort(std::span<const std::string_view> texts, const CharacterWeights& weights)
        : texts_(texts), weights_(weights), order_(Unordered(texts.size())) {
        runs_.push_back({0, order_.size(), 0});
        while (!runs_.empty()) {
            const Run run = runs_.back();
            runs_.pop_back();
            SortRun(run);
        }
    }

    [[nodiscard]] const std::vector<OrderedText>& Order() const { return order_; }

  private:
    static constexpr std::size_t kCharactersOfKey = 8;

    /// Texts that are equal in their first characters.
    struct Run {
        std::size_t begin;
        std::size_t end;
        std::size_t characters;
    };

    /// The weights of the next characters, the first in the highest byte; 0 behind the end of the text.
    [[nodiscard]] std::uint64_t KeyAt(std::string_view text, std::size_t place) const {
        if (place >= text.size()) {
            return 0;
        }
        const std::string_view part = text.substr(place, kCharactersOfKey);
        std::uint64_t key = 0;
        for (const char character : part) {
            key = key << 8U | weights_[static_cast<unsigned char>(character)];
        }
        return key << 8U * (kCharactersOfKey - part.size());
    }

    void SortRun(const Run& run) {
        const auto texts = std::span(order_).subspan(run.begin, run.end - run.begin);
        for (OrderedText& text : texts) {
            text.key = KeyAt(texts_[text.number], run.characters);
        }
        if (!std::ranges::is_sorted(texts, {}, &OrderedText::key)) {  // many begin alike
            std::ranges::sort(texts, {}, &OrderedText::key);
        }
        for (std::size_t first = run.begin; first < run.end;) {
            const std::uint64_t key = order_[first].key;
            const bool textEnds = (key & 0xFFU) == 0;
            std::size_t next = first + 1;
            for (; next < run.end && order_[next].key == key; ++next) {
                order_[next].sameAsBefore = textEnds;
            }
            if (!textEnds && next - first > 1) {
                runs_.push_back({first, next, run.characters + kCharactersOfKey});
            }
            first = next;
        }
    }

    std::span<const std::string_view> texts_;
    const CharacterWeights& weights_;
    std::vector<OrderedText> order_;
    std::vector<Run> runs_;  // still to be sorted
};

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
    const Contents contents = ContentsOf(texts);
    if (!contents.others) {
        if (const std::optional<CharacterWeights> weights = WeightsOf(contents.letters)) {
            return PlacesOf(WeightSort(texts, *weights).Order());
        }
    }
    return RankByKeys(texts);
}

std::optional<CharacterWeights> QtCollation::WeightsOf(bool letters) const {
    std::vector<std::string> characters;
    for (char character = ' '; character <= '~'; ++character) {
        if (letters || !IsLetter(static_cast<unsigned char>(character))) {
            characters.emplace_back(1, character);
        }
    }
    std::sort(characters.begin(), characters.end(),
              [this](const std::string& left, const std::string& right) { return Compare(left, right) < 0; });
    CharacterWeights weights{};
    std::vector<std::string> distinct;
    for (const std::string& character : characters) {
        if (distinct.empty() || Compare(distinct.back(), character) != 0) {
            distinct.push_back(character);
        }
        weights[static_cast<unsigned char>(character.front())] = static_cast<unsigned char>(distinct.size());
    }
    // Where two characters together count as one, or differ less than others do, pairs are in another order
    // than the characters tell.
    std::string before;
    for (const std::string& first : distinct) {
        for (const std::string& second : distinct) {
            std::string pair = first + second;
            if (Compare(before, pair) >= 0) {
                return std::nullopt;
            }
            before = std::move(pair);
        }
    }
    return weights;
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
