// What a tree and a list share: the selection is the control's, and what a person does is told to the
// control.
#pragma once

#include <functional>

#include <QAbstractItemView>
#include <QFocusEvent>
#include <QItemSelectionModel>
#include <QMouseEvent>

namespace ostrevin::qt {

/// A selection of one item, which is highlighted and current, or of none: what the control holds. A view of
/// Qt cannot change it; what it would make current for a person is chosen, and the control decides.
class FollowingSelection final : public QItemSelectionModel {
  public:
    using Choose = std::function<void(const QModelIndex&)>;

    /// Takes the place of a view's selection, and belongs to it. choose is not called for the item that is
    /// selected already.
    FollowingSelection(QAbstractItemView& view, Choose choose);

    /// Selects an item, or none when the index is not valid.
    void Follow(const QModelIndex& index, SelectionFlags extent = NoUpdate);

    void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override;
    using QItemSelectionModel::select;
    void select(const QItemSelection& selection, SelectionFlags command) override;
    void clearCurrentIndex() override;
    void reset() override;

  private:
    Choose choose_;
    bool following_ = false;
};

/// An item view that selects nothing by itself.
template <typename View>
class FollowingView : public View {
  public:
    using View::View;

  protected:
    void mouseMoveEvent(QMouseEvent* /*event*/) override {}  // a press selects, a slip does not
    void focusInEvent(QFocusEvent* /*event*/) override {
        // The item view would make the first item current.
        QWidget::update();
        View::viewport()->update();
    }
};

}  // namespace ostrevin::qt
