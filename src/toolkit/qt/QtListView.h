// Report-style lists, virtual: only the rows in sight are asked for.
#pragma once

#include <QAbstractTableModel>
#include <QTreeView>

#include "controls/ListView.h"
#include "toolkit/qt/QtSelection.h"
#include "toolkit/qt/QtToolkit.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

/// The rows of a list as Qt asks for them. Changes are gathered and told once, when the message loop comes
/// round or something needs the new rows.
class ListModel : public QAbstractTableModel {
  public:
    explicit ListModel(ListView& list) : list_(list) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Takes over the list's present rows.
    void Reset();
    void TellRowChanged(std::size_t row);

  private:
    ListView& list_;
    int rows_ = 0;
};

class QtListView final : public WidgetView<ListViewView, ListView> {
  public:
    QtListView(QtToolkit& toolkit, ListView& list, QWidget* parent);
    ~QtListView() override;

    void RowsChanged() override;
    void RowChanged(std::size_t row) override;
    void SelectionChanged() override;
    void SortChanged() override;
    void LockUpdate(bool locked) override;
    void EnsureVisible(std::size_t row) override;
    [[nodiscard]] std::uint32_t ExtendedStyle() const override { return extendedStyle_; }
    void SetExtendedStyle(std::uint32_t style) override;

    /// Shows the rows as they are now, if they changed since it was done last.
    void BringUpToDate();

    /// A person chose or opened a row, opened or wants to copy the chosen one, or clicked a column's header
    /// (from 0).
    void RowChosen(int row);
    void RowOpened(int row);
    void SelectionOpened();
    void CopySelection() const;
    void HeaderClicked(int column);

  private:
    void ShowSelection();
    /// Null when there is no such row any more.
    [[nodiscard]] ListItem* ItemAt(int row) const;

    QtToolkit& toolkit_;
    ListModel model_;
    QTreeView* widget_;
    FollowingSelection* selection_;
    std::uint32_t extendedStyle_ = 0;
    bool stale_ = false;
};

}  // namespace ostrevin::qt
