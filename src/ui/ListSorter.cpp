#include "ui/ListSorter.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "ui/SortKeys.h"

namespace ostrevin {
namespace {

/// Returns the items in their order.
std::vector<ListItem*> PutKeys(Platform& platform, ListView& list, const ColumnHeader& column) {
    const bool numbers = column.Tag() == "NUMBER";
    std::vector<ListItem*> items;
    items.reserve(list.ItemCount());
    for (std::size_t i = 1; i <= list.ItemCount(); ++i) {
        ListItem& item = list.Item(i);
        items.push_back(&item);
        const std::string& cell = item.Cell(column.Index());
        std::string saved =
            item.ExchangeCell(column.Index(), numbers ? NumberKey(cell) : DateKey(platform, cell));
        saved.append(1, '\0').append(item.Tag());
        item.SetTag(std::move(saved));
    }
    return items;
}

/// Puts the first part of the tag, which zero characters divide, back into the cell, and leaves the second.
void PutTextsBack(const std::vector<ListItem*>& items, int column) {
    for (ListItem* item : items) {
        std::string saved = item->ExchangeTag({});
        const std::size_t end = saved.find('\0');
        item->SetTag(saved.substr(end + 1, saved.find('\0', end + 1) - end - 1));
        saved.resize(end);
        item->SetCell(column, std::move(saved));
    }
}

}  // namespace

void ListSorter(Platform& platform, ListView& list, const ColumnHeader& column, bool toggleOrder) {
    const bool toDescending = (list.SortOrder() == SortOrder::Ascending) == toggleOrder;
    const SortOrder order = toDescending ? SortOrder::Descending : SortOrder::Ascending;
    if (column.Tag() != "NUMBER" && column.Tag() != "DATE") {
        list.SortBy(column.Index() - 1, order);
        return;
    }
    list.LockUpdate(true);
    // As they were in order before, the items lie near each other more often than in their new one.
    const std::vector<ListItem*> items = PutKeys(platform, list, column);
    list.SortBy(column.Index() - 1, order);
    PutTextsBack(items, column.Index());
    list.LockUpdate(false);
}

}  // namespace ostrevin
