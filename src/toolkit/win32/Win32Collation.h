// The order of texts in the user's locale.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "controls/TextOrder.h"

namespace ostrevin::win32 {

/// Compares without regard to case: the empty text first, punctuation ("&" too) before digits, digits before
/// letters.
class Win32Collation final : public TextOrder {
  protected:
    [[nodiscard]] int CompareWhole(std::string_view left, std::string_view right) const override;
    [[nodiscard]] std::vector<std::size_t> RankByKeys(std::span<const std::string_view> texts) const override;
};

}  // namespace ostrevin::win32
