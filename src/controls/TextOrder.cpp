#include "controls/TextOrder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "controls/ShownText.h"

namespace ostrevin {
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

int TextOrder::Compare(std::string_view left, std::string_view right) const {
    return CompareWhole(BeginningOf(left, kMostCompared), BeginningOf(right, kMostCompared));
}

std::vector<std::size_t> TextOrder::Rank(std::span<const std::string_view> texts) const {
    if (std::ranges::none_of(texts, [](std::string_view text) { return text.size() > kMostCompared; })) {
        return RankWhole(texts);
    }
    std::vector<std::string_view> beginnings;
    beginnings.reserve(texts.size());
    for (const std::string_view text : texts) {
        beginnings.push_back(BeginningOf(text, kMostCompared));
    }
    return RankWhole(beginnings);
}

std::vector<std::size_t> TextOrder::RankWhole(std::span<const std::string_view> texts) const {
    const Contents contents = ContentsOf(texts);
    if (!contents.others) {
        if (const Weights& weights = WeightsOf(contents.letters)) {
            return PlacesOf(WeightSort(texts, *weights).Order());
        }
    }
    return RankByKeys(texts);
}

const TextOrder::Weights& TextOrder::WeightsOf(bool letters) const {
    std::optional<Weights>& weights = letters ? weightsWithLetters_ : weightsWithoutLetters_;
    if (!weights) {
        weights = FindWeights(letters);
    }
    return *weights;
}

TextOrder::Weights TextOrder::FindWeights(bool letters) const {
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

}  // namespace ostrevin
