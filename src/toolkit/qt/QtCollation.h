// The order of texts in a language.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <QCollator>
#include <QLocale>

namespace ostrevin::qt {

/// Where each byte stands in an order, from 1; 0 for those that it leaves out.
using CharacterWeights = std::array<unsigned char, 256>;

/// Compares without regard to case: the empty text first, punctuation ("&" too) before digits, digits before
/// letters.
class QtCollation {
  public:
    explicit QtCollation(const QLocale& locale);

    /// Less than, equal to or greater than 0.
    [[nodiscard]] int Compare(std::string_view left, std::string_view right) const;
    /// The place of each text among the distinct texts, in the order of Compare.
    [[nodiscard]] std::vector<std::size_t> Rank(std::span<const std::string_view> texts) const;

  private:
    /// The weights of printable ASCII, with or without its letters; none where texts of these characters do
    /// not compare character by character.
    [[nodiscard]] std::optional<CharacterWeights> WeightsOf(bool letters) const;
    [[nodiscard]] std::vector<std::size_t> RankByKeys(std::span<const std::string_view> texts) const;

    QCollator collator_;
};

}  // namespace ostrevin::qt
