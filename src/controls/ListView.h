// A report-style list: columns, rows, sort and selection.
//
// The list owns its rows; a view is virtual and asks for the rows in sight. Columns and sub-items are counted
// from 1 as people count them, sub-item n standing in column n + 1; SortKey counts from 0, 0 being the item's
// own text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "controls/Control.h"
#include "controls/Event.h"

namespace ostrevin {

class ListView;

class ColumnHeader {
  public:
    ColumnHeader(int index, std::string text, double width)
        : index_(index), text_(std::move(text)), width_(width) {}

    [[nodiscard]] int Index() const { return index_; }  ///< from 1
    [[nodiscard]] const std::string& Text() const { return text_; }
    /// How the column is compared: "NUMBER", "DATE", or by text.
    [[nodiscard]] const std::string& Tag() const { return tag_; }
    void SetTag(const std::string& tag) { tag_ = tag; }
    /// The width that a view begins with, in the scale of the list's container.
    [[nodiscard]] double Width() const { return width_; }
    [[nodiscard]] bool RightAligned() const { return rightAligned_; }
    void SetRightAligned(bool rightAligned) { rightAligned_ = rightAligned; }

  private:
    int index_;
    std::string text_;
    std::string tag_;
    double width_;
    bool rightAligned_ = false;
};

class ListItem {
  public:
    ListItem(std::string key, std::string text) : key_(std::move(key)), text_(std::move(text)) {}

    [[nodiscard]] const std::string& Key() const { return key_; }
    [[nodiscard]] const std::string& Tag() const { return tag_; }
    void SetTag(std::string tag) { tag_ = std::move(tag); }
    /// Sets the tag and hands over what it was.
    std::string ExchangeTag(std::string tag) { return std::exchange(tag_, std::move(tag)); }
    [[nodiscard]] const std::string& Text() const { return text_; }
    void SetText(std::string text);
    /// "" where none was set.
    [[nodiscard]] const std::string& SubItem(int number) const;
    void SetSubItem(int number, std::string text);
    /// Text for column 1, else the sub-item of the column.
    [[nodiscard]] const std::string& Cell(int column) const {
        return column <= 1 ? text_ : SubItem(column - 1);
    }
    void SetCell(int column, std::string text) { static_cast<void>(ExchangeCell(column, std::move(text))); }
    /// Sets the text of a column and hands over what it was.
    std::string ExchangeCell(int column, std::string text);

  private:
    friend class ListView;
    void Changed();

    std::string key_;
    std::string tag_;
    std::string text_;
    std::vector<std::string> subItems_;
    ListView* list_ = nullptr;
    mutable std::size_t row_ = 0;  // from 0; a hint that the list checks
};

class ListViewView : public ControlView {
  public:
    /// Rows were added, removed or brought into another order.
    virtual void RowsChanged() = 0;
    /// A cell of one row changed. row is counted from 0.
    virtual void RowChanged(std::size_t row) = 0;
    virtual void SelectionChanged() = 0;
    /// Sorted, SortKey or SortOrder changed.
    virtual void SortChanged() = 0;
    /// Paints nothing until it is called with false.
    virtual void LockUpdate(bool locked) = 0;
    virtual void EnsureVisible(std::size_t row) = 0;
    /// The extended style, in the numbers of the Windows list view.
    [[nodiscard]] virtual std::uint32_t ExtendedStyle() const = 0;
    virtual void SetExtendedStyle(std::uint32_t style) = 0;
};

enum class SortOrder { Ascending = 0, Descending = 1 };

class ListView : public Control {
  public:
    /// A click anywhere in a row selects it, and the whole row shows it.
    static constexpr std::uint32_t kFullRowSelect = 0x20;

    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(ListViewView* view) { SetView(view); }

    ColumnHeader& AddColumn(const std::string& text, double width);
    [[nodiscard]] int ColumnCount() const { return static_cast<int>(columns_.size()); }
    /// From 1. Throws ControlError when there is no such column.
    [[nodiscard]] ColumnHeader& Column(int index);

    /// Adds an item: at its place in a sorted list, else at the end. Throws ControlError when the key is not
    /// empty and there already.
    ListItem& Add(const std::string& key, std::string text);
    /// Takes an item out and hands it over.
    std::unique_ptr<ListItem> Remove(ListItem& item);
    /// Takes out all items of which the test holds, and hands them over from the last to the first.
    std::vector<std::unique_ptr<ListItem>> RemoveAll(const std::function<bool(const ListItem&)>& test);
    /// Takes back an item that was taken out, as Add does.
    ListItem& Add(std::unique_ptr<ListItem> item);
    void Clear();
    [[nodiscard]] std::size_t ItemCount() const { return items_.size(); }
    /// By place, from 1. Throws ControlError when there is no such item.
    [[nodiscard]] ListItem& Item(std::size_t index) const;
    /// Throws ControlError when there is no such key.
    [[nodiscard]] ListItem& Item(const std::string& key) const;
    /// An item's place, from 1.
    [[nodiscard]] std::size_t IndexOf(const ListItem& item) const;

    [[nodiscard]] bool Sorted() const { return sorted_; }
    /// True sorts the rows by the text of the sort column, and keeps items added later in place.
    void SetSorted(bool sorted);
    [[nodiscard]] int SortKey() const { return sortKey_; }
    void SetSortKey(int column);
    [[nodiscard]] enum SortOrder SortOrder() const { return sortOrder_; }
    void SetSortOrder(enum SortOrder order);
    /// Sets SortKey, SortOrder and Sorted, and sorts once.
    void SortBy(int column, enum SortOrder order);

    /// Keeps what is on the screen as it is, whatever changes, until it is called with false.
    void LockUpdate(bool locked);

    /// Null when nothing is selected.
    [[nodiscard]] ListItem* SelectedItem() const { return selected_; }
    /// Raises no event but SelectionChange.
    void Select(ListItem* item);
    /// Scrolls until the item is in sight.
    void EnsureVisible(const ListItem& item);

    [[nodiscard]] std::uint32_t ExtendedStyle() const;
    void SetExtendedStyle(std::uint32_t style);

    Event<ListItem&> ItemClick;
    /// Another item is selected than before, or none, whoever did it.
    Event<> SelectionChange;
    Event<> DblClick;
    Event<ColumnHeader&> ColumnClick;

    // Called by the view.

    /// A person chose an item, by mouse or by keyboard: it is selected, then ItemClick is raised.
    void ClickItem(ListItem& item);
    /// A person opened an item: it is clicked, unless it is selected already, then DblClick is raised.
    void OpenItem(ListItem& item);
    void ClickColumn(int index) { ColumnClick.Raise(Column(index)); }

  private:
    friend class ListItem;
    [[nodiscard]] ListViewView* TheView() const { return static_cast<ListViewView*>(AttachedView()); }
    /// Brings an item's row up to date, if it has not moved far.
    [[nodiscard]] bool FindNear(const ListItem& item) const;
    /// Brings the rows of all items up to date.
    void NumberRows() const;
    [[nodiscard]] bool InOrder(const ListItem& left, const ListItem& right);
    void Sort();
    void SortChanged();
    void RowsChanged();

    std::deque<ColumnHeader> columns_;
    std::vector<std::unique_ptr<ListItem>> items_;
    std::unordered_map<std::string_view, ListItem*> byKey_;
    ListItem* selected_ = nullptr;
    bool sorted_ = false;
    int sortKey_ = 0;
    enum SortOrder sortOrder_ = SortOrder::Ascending;
    std::uint32_t extendedStyle_ = 0;
};

}  // namespace ostrevin
