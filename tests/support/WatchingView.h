// A list's view that looks on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

#include "controls/ListView.h"

namespace ostrevin::testing {

/// Runs an action whenever the rows of a list change.
class WatchingView : public ListViewView {
  public:
    explicit WatchingView(std::function<void()> onRows) : onRows_(std::move(onRows)) {}
    void Moved() override {}
    void StateChanged() override {}
    void RowsChanged() override { onRows_(); }
    void RowChanged(std::size_t /*row*/) override {}
    void SelectionChanged() override {}
    void SortChanged() override {}
    void LockUpdate(bool /*locked*/) override {}
    void EnsureVisible(std::size_t /*row*/) override {}
    [[nodiscard]] std::uint32_t ExtendedStyle() const override { return 0; }
    void SetExtendedStyle(std::uint32_t /*style*/) override {}

  private:
    std::function<void()> onRows_;
};

}  // namespace ostrevin::testing
