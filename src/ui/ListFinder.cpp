#include "ui/ListFinder.h"

#include "ui/ItemMatch.h"

namespace ostrevin {

bool ListFinder::Find(const ColumnHeader& column) {
    return FindFrom(1, column);
}

bool ListFinder::FindNext(const ColumnHeader& column) {
    return FindFrom(SelectedPlace() + 1, column);
}

bool ListFinder::FindPrevious(const ColumnHeader& column) {
    if (searchString_.empty()) {
        return false;
    }
    const ItemMatch matches(column, searchString_);
    for (std::size_t place = SelectedPlace(); place > 1; --place) {
        ListItem& item = list_->Item(place - 1);
        if (matches(item)) {
            Show(item);
            return true;
        }
    }
    return false;
}

std::size_t ListFinder::SelectedPlace() const {
    return list_ != nullptr && list_->SelectedItem() != nullptr ? list_->IndexOf(*list_->SelectedItem()) : 0;
}

bool ListFinder::FindFrom(std::size_t place, const ColumnHeader& column) {
    if (list_ == nullptr || searchString_.empty()) {
        return false;
    }
    const ItemMatch matches(column, searchString_);
    for (; place <= list_->ItemCount(); ++place) {
        ListItem& item = list_->Item(place);
        if (matches(item)) {
            Show(item);
            return true;
        }
    }
    return false;
}

void ListFinder::Show(ListItem& item) {
    list_->Select(&item);
    list_->EnsureVisible(item);
}

}  // namespace ostrevin
