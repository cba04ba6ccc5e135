#include "toolkit/qt/QtSelection.h"

#include <memory>
#include <utility>

namespace ostrevin::qt {

FollowingSelection::FollowingSelection(QAbstractItemView& view, Choose choose)
    : QItemSelectionModel(view.model(), &view), choose_(std::move(choose)) {
    const std::unique_ptr<QItemSelectionModel> former(view.selectionModel());
    view.setSelectionModel(this);
}

void FollowingSelection::Follow(const QModelIndex& index, SelectionFlags extent) {
    following_ = true;
    if (index.isValid()) {
        QItemSelectionModel::setCurrentIndex(index, ClearAndSelect | extent);
    } else {
        QItemSelectionModel::clear();
    }
    following_ = false;
}

void FollowingSelection::setCurrentIndex(const QModelIndex& index, SelectionFlags command) {
    if (following_) {
        QItemSelectionModel::setCurrentIndex(index, command);
    } else if (index.isValid() && index.siblingAtColumn(0) != currentIndex()) {
        choose_(index);
    }
}

void FollowingSelection::select(const QItemSelection& selection, SelectionFlags command) {
    if (following_) {
        QItemSelectionModel::select(selection, command);
    }
}

void FollowingSelection::clearCurrentIndex() {
    if (following_) {
        QItemSelectionModel::clearCurrentIndex();
    }
}

void FollowingSelection::reset() {
    following_ = true;
    QItemSelectionModel::reset();
    following_ = false;
}

}  // namespace ostrevin::qt
