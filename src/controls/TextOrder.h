// An order of texts, and how many texts are put into it fast.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace ostrevin {

/// Where each byte stands in an order, from 1; 0 for those that it leaves out.
using CharacterWeights = std::array<unsigned char, 256>;

/// The order of the texts of one language, as the system's collation has it.
class TextOrder {
  public:
    TextOrder() = default;
    TextOrder(const TextOrder&) = delete;
    TextOrder& operator=(const TextOrder&) = delete;
    virtual ~TextOrder() = default;

    /// The bytes of a text that count in its place; the longest path, of 32,767 characters, has no more.
    static constexpr std::size_t kMostCompared = 3UL * 32767;

    /// Less than, equal to or greater than 0.
    [[nodiscard]] int Compare(std::string_view left, std::string_view right) const;
    /// The place of each text among the distinct texts, in the order of Compare.
    [[nodiscard]] std::vector<std::size_t> Rank(std::span<const std::string_view> texts) const;

  protected:
    // Each is given no more of a text than counts.

    [[nodiscard]] virtual int CompareWhole(std::string_view left, std::string_view right) const = 0;
    /// The same for any texts, by the collation's sort keys.
    [[nodiscard]] virtual std::vector<std::size_t> RankByKeys(
        std::span<const std::string_view> texts) const = 0;

  private:
    using Weights = std::optional<CharacterWeights>;

    [[nodiscard]] std::vector<std::size_t> RankWhole(std::span<const std::string_view> texts) const;

    /// The weights of printable ASCII, with or without its letters; none where texts of these characters do
    /// not compare character by character.
    [[nodiscard]] const Weights& WeightsOf(bool letters) const;
    [[nodiscard]] Weights FindWeights(bool letters) const;

    // Found when they are first asked for.
    mutable std::optional<Weights> weightsWithLetters_;
    mutable std::optional<Weights> weightsWithoutLetters_;
};

/// A text by its number, from 0, in an order of texts.
struct OrderedText {
    std::uint64_t key;  ///< what it was put in order by last
    std::uint32_t number;
    bool sameAsBefore;  ///< whether it is equal to the text before it
};

/// The texts from 0 to count, not yet in any order.
[[nodiscard]] std::vector<OrderedText> Unordered(std::size_t count);
/// The place of each text, by its number, among the distinct ones.
[[nodiscard]] std::vector<std::size_t> PlacesOf(const std::vector<OrderedText>& order);

}  // namespace ostrevin
