#include "toolkit/qt/QtTreeView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include "toolkit/qt/QtPictures.h"

namespace ostrevin::qt {
namespace {

/// Tells what a person chose, by mouse (each click, also on what is selected) and by keyboard (each move).
class TreeWidget : public QTreeWidget {
  public:
    TreeWidget(QtTreeView& view, QWidget* parent) : QTreeWidget(parent), view_(view) {}

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        QTreeWidget::mousePressEvent(event);
        QTreeWidgetItem* item = itemAt(event->pos());
        // The arrow that opens an item stands beside its rectangle.
        if (item != nullptr && visualItemRect(item).contains(event->pos())) {
            view_.ItemChosen(*item);
        }
    }
    void keyPressEvent(QKeyEvent* event) override {
        const QTreeWidgetItem* before = SelectedOne();
        QTreeWidget::keyPressEvent(event);
        QTreeWidgetItem* after = SelectedOne();
        if (after != nullptr && after != before) {
            view_.ItemChosen(*after);
        }
    }

  private:
    [[nodiscard]] QTreeWidgetItem* SelectedOne() const {
        const QList<QTreeWidgetItem*> selected = selectedItems();
        return selected.isEmpty() ? nullptr : selected.front();
    }

    QtTreeView& view_;
};

}  // namespace

QtTreeView::QtTreeView(QtToolkit& toolkit, TreeView& tree, QWidget* parent)
    : WidgetView(tree), toolkit_(toolkit), widget_(new TreeWidget(*this, parent)) {
    widget_->setHeaderHidden(true);
    widget_->setColumnCount(1);
    widget_->setUniformRowHeights(true);
    widget_->setSelectionMode(QAbstractItemView::SingleSelection);
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
    item->setText(0, Text(node.Text()));
    item->setIcon(0, IconFor(node.Image()));
    items_[&node] = item;
    nodes_[item] = &node;
}

void QtTreeView::SelectionChanged() {
    const TreeNode* node = Control().SelectedItem();
    if (node == nullptr) {
        widget_->clearSelection();
        return;
    }
    QTreeWidgetItem* item = items_.at(node);
    for (QTreeWidgetItem* parent = item->parent(); parent != nullptr; parent = parent->parent()) {
        parent->setExpanded(true);
    }
    widget_->setCurrentItem(item);
    widget_->scrollToItem(item);
}

void QtTreeView::ItemChosen(QTreeWidgetItem& item) {
    toolkit_.Deliver([&] { Control().ClickNode(*nodes_.at(&item)); });
}

}  // namespace ostrevin::qt
