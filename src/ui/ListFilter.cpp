#include "ui/ListFilter.h"

#include <functional>
#include <iterator>
#include <utility>

#include "ui/ItemMatch.h"

namespace ostrevin {

void ListFilter::ResetFilter() {
    filtered_ = false;
    kept_.clear();
}

void ListFilter::Filter(const ColumnHeader& column) {
    if (!filtered_) {
        ReFilter(column);
    }
}

void ListFilter::ReFilter(const ColumnHeader& column) {
    if (list_ == nullptr || filterString_.empty()) {
        return;
    }
    const bool visible = list_->Visible();
    list_->SetVisible(false);
    std::vector<std::unique_ptr<ListItem>> removed =
        list_->RemoveAll(std::not_fn(ItemMatch(column, filterString_)));
    std::move(removed.begin(), removed.end(), std::back_inserter(kept_));
    list_->SetVisible(visible);
    filtered_ = true;
}

bool ListFilter::UnFilter() {
    if (!filtered_ || list_ == nullptr) {
        return false;
    }
    const bool visible = list_->Visible();
    const bool sorted = list_->Sorted();
    list_->SetVisible(false);
    list_->SetSorted(false);
    for (std::unique_ptr<ListItem>& item : kept_) {
        list_->Add(std::move(item));
    }
    list_->SetSorted(sorted);
    list_->SetVisible(visible);
    ResetFilter();
    return true;
}

}  // namespace ostrevin
