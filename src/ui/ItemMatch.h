// Which items of a list a text is searched in, and how: the test that filter and find share.
#pragma once

#include <string>
#include <string_view>

#include "controls/ListView.h"

namespace ostrevin {

/// Holds of the items whose text in one column contains a text anywhere, without regard to case.
class ItemMatch {
  public:
    ItemMatch(const ColumnHeader& column, std::string_view search);

    [[nodiscard]] bool operator()(const ListItem& item) const;

  private:
    int column_;
    std::string search_;  // in upper case
};

}  // namespace ostrevin
