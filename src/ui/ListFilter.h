// Narrows a list to the items that hold a text, and keeps the others aside.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "controls/ListView.h"

namespace ostrevin {

class ListFilter {
  public:
    /// The list it works on; null for none.
    [[nodiscard]] ListView* List() const { return list_; }
    void SetList(ListView* list) { list_ = list; }
    /// The text that the items which stay hold.
    [[nodiscard]] const std::string& FilterString() const { return filterString_; }
    void SetFilterString(const std::string& text) { filterString_ = text; }
    /// Whether Filter was applied, even if no item had to go.
    [[nodiscard]] bool Filtered() const { return filtered_; }

    /// Forgets the items that are kept aside: for a list that is filled anew.
    void ResetFilter();
    /// Takes out the items that do not match in a column. Does nothing without a list or a text, or when the
    /// list is filtered already.
    void Filter(const ColumnHeader& column);
    /// Does what Filter does, also on a list that is filtered already.
    void ReFilter(const ColumnHeader& column);
    /// Puts back what is kept aside, the last item first: a list that is not sorted has them at its end in
    /// reverse of their former order. Returns whether there was a filter to undo.
    bool UnFilter();

  private:
    ListView* list_ = nullptr;
    std::string filterString_;
    bool filtered_ = false;
    std::vector<std::unique_ptr<ListItem>> kept_;  // in the order in which they were taken out
};

}  // namespace ostrevin
