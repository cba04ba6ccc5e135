#include "controls/ListView.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "controls/ControlVisitor.h"
#include "controls/Form.h"
#include "controls/Toolkit.h"

namespace ostrevin {

void ListItem::SetText(std::string text) {
    SetCell(1, std::move(text));
}

const std::string& ListItem::SubItem(int number) const {
    static const std::string kNone;
    const auto place = static_cast<std::size_t>(number - 1);
    return number >= 1 && place < subItems_.size() ? subItems_[place] : kNone;
}

void ListItem::SetSubItem(int number, std::string text) {
    if (number < 1) {
        throw ControlError("Invalid property value: sub-item " + std::to_string(number));
    }
    SetCell(number + 1, std::move(text));
}

std::string ListItem::ExchangeCell(int column, std::string text) {
    if (column > 1 && list_ != nullptr && column > list_->ColumnCount()) {
        throw ControlError("Invalid property value: column " + std::to_string(column));
    }
    const auto place = static_cast<std::size_t>(std::max(column, 2) - 2);
    if (column > 1 && place >= subItems_.size()) {
        subItems_.resize(place + 1);
    }
    std::string former = std::exchange(column > 1 ? subItems_[place] : text_, std::move(text));
    Changed();
    return former;
}

void ListItem::Changed() {
    if (list_ != nullptr && list_->TheView() != nullptr) {
        list_->TheView()->RowChanged(list_->IndexOf(*this) - 1);
    }
}

void ListView::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

ColumnHeader& ListView::AddColumn(const std::string& text, double width) {
    return columns_.emplace_back(ColumnCount() + 1, text, width);
}

ColumnHeader& ListView::Column(int index) {
    if (index < 1 || index > ColumnCount()) {
        throw ControlError("Index out of bounds: " + std::to_string(index));
    }
    return columns_[static_cast<std::size_t>(index - 1)];
}

ListItem& ListView::Add(const std::string& key, std::string text) {
    return Add(std::make_unique<ListItem>(key, std::move(text)));
}

ListItem& ListView::Add(std::unique_ptr<ListItem> item) {
    if (!item->Key().empty() && !byKey_.try_emplace(item->Key(), item.get()).second) {
        throw ControlError("Key is not unique in collection: " + item->Key());
    }
    ListItem& added = *item;
    added.list_ = this;
    const auto place =
        sorted_
            ? std::upper_bound(items_.begin(), items_.end(), item,
                               [this](const auto& left, const auto& right) { return InOrder(*left, *right); })
            : items_.end();
    added.row_ = static_cast<std::size_t>(place - items_.begin());
    items_.insert(place, std::move(item));
    RowsChanged();
    return added;
}

std::unique_ptr<ListItem> ListView::Remove(ListItem& item) {
    const std::size_t index = IndexOf(item);
    const auto place = items_.begin() + static_cast<std::ptrdiff_t>(index - 1);
    std::unique_ptr<ListItem> removed = std::move(*place);
    items_.erase(place);
    byKey_.erase(removed->Key());
    removed->list_ = nullptr;
    if (selected_ == &item) {
        Select(nullptr);
    }
    RowsChanged();
    return removed;
}

std::vector<std::unique_ptr<ListItem>> ListView::RemoveAll(const std::function<bool(const ListItem&)>& test) {
    std::vector<std::unique_ptr<ListItem>> removed;
    bool selectionGoes = false;
    for (std::size_t row = items_.size(); row > 0; --row) {
        std::unique_ptr<ListItem>& item = items_[row - 1];
        if (!test(*item)) {
            continue;
        }
        byKey_.erase(item->Key());
        item->list_ = nullptr;
        selectionGoes = selectionGoes || selected_ == item.get();
        removed.push_back(std::move(item));
    }
    std::erase(items_, nullptr);
    NumberRows();
    if (selectionGoes) {
        Select(nullptr);
    }
    RowsChanged();
    return removed;
}

void ListView::Clear() {
    Select(nullptr);
    byKey_.clear();
    items_.clear();
    RowsChanged();
}

ListItem& ListView::Item(std::size_t index) const {
    if (index < 1 || index > items_.size()) {
        throw ControlError("Index out of bounds: " + std::to_string(index));
    }
    return *items_[index - 1];
}

ListItem& ListView::Item(const std::string& key) const {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) {
        throw ControlError("Element not found: " + key);
    }
    return *found->second;
}

std::size_t ListView::IndexOf(const ListItem& item) const {
    if (item.list_ != this) {
        throw ControlError("The item is not in this list: " + item.Text());
    }
    if (!FindNear(item)) {
        NumberRows();
    }
    return item.row_ + 1;
}

void ListView::NumberRows() const {
    for (std::size_t row = 0; row < items_.size(); ++row) {
        items_[row]->row_ = row;
    }
}

bool ListView::FindNear(const ListItem& item) const {
    const auto isItem = [&](const auto& each) { return each.get() == &item; };
    if (item.row_ < items_.size() && isItem(items_[item.row_])) {
        return true;
    }
    // Each item added or removed before this one moved it by one row since its row was last known.
    constexpr std::size_t kReach = 1000;
    const auto rowAt = [&](std::size_t row) {
        return items_.begin() + static_cast<std::ptrdiff_t>(std::min(row, items_.size()));
    };
    const auto end = rowAt(item.row_ + kReach);
    const auto found = std::find_if(rowAt(item.row_ - std::min(item.row_, kReach)), end, isItem);
    if (found == end) {
        return false;
    }
    item.row_ = static_cast<std::size_t>(found - items_.begin());
    return true;
}

bool ListView::InOrder(const ListItem& left, const ListItem& right) {
    const int column = sortKey_ + 1;
    const int compared = ParentForm().GetToolkit().CompareText(left.Cell(column), right.Cell(column));
    return sortOrder_ == SortOrder::Ascending ? compared < 0 : compared > 0;
}

void ListView::Sort() {
    std::vector<std::string_view> texts;
    texts.reserve(items_.size());
    for (const auto& item : items_) {
        texts.emplace_back(item->Cell(sortKey_ + 1));
    }
    std::vector<std::size_t> ranks = ParentForm().GetToolkit().RankTexts(texts);
    if (sortOrder_ == SortOrder::Descending && !ranks.empty()) {
        const std::size_t last = *std::max_element(ranks.begin(), ranks.end());
        std::transform(ranks.begin(), ranks.end(), ranks.begin(),
                       [last](std::size_t rank) { return last - rank; });
    }
    // There are no more ranks than items: each rank's rows are counted, and begin where those of the ranks
    // before it end.
    std::vector<std::size_t> rowOfRank(items_.size() + 1);
    for (const std::size_t rank : ranks) {
        ++rowOfRank[rank + 1];
    }
    std::partial_sum(rowOfRank.begin(), rowOfRank.end(), rowOfRank.begin());
    std::vector<std::unique_ptr<ListItem>> sorted(items_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const std::size_t row = rowOfRank[ranks[i]]++;
        items_[i]->row_ = row;
        sorted[row] = std::move(items_[i]);
    }
    items_ = std::move(sorted);
    RowsChanged();
}

void ListView::SortChanged() {
    if (sorted_) {
        Sort();
    }
    if (TheView() != nullptr) {
        TheView()->SortChanged();
    }
}

void ListView::RowsChanged() {
    if (TheView() != nullptr) {
        TheView()->RowsChanged();
    }
}

void ListView::SetSorted(bool sorted) {
    sorted_ = sorted;
    SortChanged();
}

void ListView::SetSortKey(int column) {
    sortKey_ = column;
    SortChanged();
}

void ListView::SetSortOrder(enum SortOrder order) {
    sortOrder_ = order;
    SortChanged();
}

void ListView::SortBy(int column, enum SortOrder order) {
    sorted_ = true;
    sortKey_ = column;
    sortOrder_ = order;
    SortChanged();
}

void ListView::Select(ListItem* item) {
    const bool another = item != selected_;
    selected_ = item;
    if (TheView() != nullptr) {
        TheView()->SelectionChanged();
    }
    if (another) {
        SelectionChange.Raise();
    }
}

void ListView::LockUpdate(bool locked) {
    if (TheView() != nullptr) {
        TheView()->LockUpdate(locked);
    }
}

void ListView::EnsureVisible(const ListItem& item) {
    if (TheView() != nullptr) {
        TheView()->EnsureVisible(IndexOf(item) - 1);
    }
}

std::uint32_t ListView::ExtendedStyle() const {
    return TheView() != nullptr ? TheView()->ExtendedStyle() : extendedStyle_;
}

void ListView::SetExtendedStyle(std::uint32_t style) {
    extendedStyle_ = style;
    if (TheView() != nullptr) {
        TheView()->SetExtendedStyle(style);
    }
}

void ListView::ClickItem(ListItem& item) {
    Select(&item);
    ItemClick.Raise(item);
}

void ListView::OpenItem(ListItem& item) {
    if (selected_ != &item) {
        ClickItem(item);
    }
    DblClick.Raise();
}

}  // namespace ostrevin
