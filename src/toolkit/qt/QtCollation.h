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

#include "controls/TextOrder.h"

namespace ostrevin::qt {

/// Compares without regard to case: the empty text first, punctuation ("&" too) before digits, digits before
/// letters.
class QtCollation final : public TextOrder {
  public:
    explicit QtCollation(const QLocale& locale);

  protected:
    [[nodiscard]] int CompareWhole(std::string_view left, std::string_view right) const override;
    [[nodiscard]] std::vector<std::size_t> RankByKeys(std::span<const std::string_view> texts) const override;

  private:
    QCollator collator_;
};

}  // namespace ostrevin::qt
