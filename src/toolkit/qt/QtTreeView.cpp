#include "toolkit/qt/QtTreeView.h"

#include <QHeaderView>
#include <QMouseEvent>

#include "toolkit/qt/QtPictures.h"

namespace ostrevin::qt {
namespace {

/// Tells each press on a node, also on the one that is selected.
class TreeWidget : public FollowingView<QTreeWidget> {
  public:
    TreeWidget(QtTreeView& view, QWidget* parent) : FollowingView(parent), view_(view) {}

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton) {
            return;
        }
        QTreeWidgetItem* item = itemAt(event->pos());
        // The arrow that opens an item stands beside its rectangle.
        const bool isSelected =
            item != nullptr && item == currentItem() && visualItemRect(item).contains(event->pos());
        FollowingView::mousePressEvent(event);
        // Of all others the selection has told, and what it told may have taken the view away.
        if (isSelected) {
            view_.ItemChosen(*item);
        }
    }

  private:
    QtTreeView& view_;
};

bool IsIn(const QTreeWidgetItem* item, const QTreeWidgetItem& above) {
    while (item != nullptr && item != &above) {
        item = item->parent();
    }
    return item != nullptr;
}

}  // namespace

QtTreeView::QtTreeView(QtToolkit& toolkit, TreeView& tree, QWidget* parent)
    : WidgetView(tree), toolkit_(toolkit), widget_(new TreeWidget(*this, parent)) {
    widget_->setHeaderHidden(true);
    widget_->setColumnCount(1);
    widget_->setUniformRowHeights(true);
    widget_->setSelectionMode(QAbstractItemView::SingleSelection);
    selection_ = new FollowingSelection(
        *widget_, [this](const QModelIndex& index) { ItemChosen(*widget_->itemFromIndex(index)); });
    QObject::connect(widget_, &QTreeWidget::itemCollapsed, widget_,
                     [this](QTreeWidgetItem* item) { ItemClosed(*item); });
    Show(*widget_);
    for (const auto& root : tree.Roots()) {
        AddWithChildren(*root);
    }
    SelectionChanged();
}

void QtTreeView::AddWithChildren(TreeNode& node) {
    NodeAdded(node);
    for (const auto& child : node.Children()) {
        AddWithChildren(*child);
    }
}

const QIcon& QtTreeView::IconFor(const std::string& key) {
    const auto [icon, isNew] = icons_.try_emplace(key);
    if (isNew) {
        icon->second = IconOf(Control().Images(), key);
    }
    return icon->second;
}

void QtTreeView::NodeAdded(TreeNode& node) {
    auto* item = node.Parent() == nullptr ? new QTreeWidgetItem(widget_)
                                          : new QTreeWidgetItem(items_.at(node.Parent()));
    item->setText(0, Shown(node.Text()));
    item->setIcon(0, IconFor(node.Image()));
    items_[&node] = item;
    nodes_[item] = &node;
}

void QtTreeView::SelectionChanged() {
    const TreeNode* node = Control().SelectedItem();
    if (node == nullptr) {
        selection_->Follow({});
        return;
    }
    QTreeWidgetItem* item = items_.at(node);
    for (QTreeWidgetItem* parent = item->parent(); parent != nullptr; parent = parent->parent()) {
        parent->setExpanded(true);
    }
    selection_->Follow(widget_->indexFromItem(item));
}

void QtTreeView::ItemChosen(QTreeWidgetItem& item) {
    toolkit_.Deliver([&] { Control().ClickNode(*nodes_.at(&item)); });
}

/// A node that is closed takes the selection from the nodes in it.
void QtTreeView::ItemClosed(QTreeWidgetItem& item) {
    const QTreeWidgetItem* selected = widget_->currentItem();
    if (selected != &item && IsIn(selected, item)) {
        ItemChosen(item);
    }
}

}  // namespace ostrevin::qt
