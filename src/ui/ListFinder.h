// Selects the next item of a list that holds a text.
#pragma once

#include <cstddef>
#include <string>

#include "controls/ListView.h"

namespace ostrevin {

/// Each search looks at the text of one column, selects the first item that matches, scrolls it into sight
/// and returns true. Where none does, or without a list or a text, it changes nothing and returns false; no
/// search starts again at the other end.
class ListFinder {
  public:
    /// The list it works on; null for none.
    [[nodiscard]] ListView* List() const { return list_; }
    void SetList(ListView* list) { list_ = list; }
    [[nodiscard]] const std::string& SearchString() const { return searchString_; }
    void SetSearchString(const std::string& text) { searchString_ = text; }

    /// From the first item downwards.
    [[nodiscard]] bool Find(const ColumnHeader& column);
    /// Downwards from below the selected item; from the first item when none is selected.
    [[nodiscard]] bool FindNext(const ColumnHeader& column);
    /// Upwards from above the selected item; nothing is found when none is selected.
    [[nodiscard]] bool FindPrevious(const ColumnHeader& column);

  private:
    /// The selected item's place, from 1; 0 when none is selected.
    [[nodiscard]] std::size_t SelectedPlace() const;
    [[nodiscard]] bool FindFrom(std::size_t place, const ColumnHeader& column);
    void Show(ListItem& item);

    ListView* list_ = nullptr;
    std::string searchString_;
};

}  // namespace ostrevin
