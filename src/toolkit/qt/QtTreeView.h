// Trees.
#pragma once

#include <map>
#include <string>

#include <QIcon>
#include <QTreeWidget>

#include "controls/TreeView.h"
#include "toolkit/qt/QtSelection.h"
#include "toolkit/qt/QtToolkit.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

class QtTreeView final : public WidgetView<TreeViewView, TreeView> {
  public:
    QtTreeView(QtToolkit& toolkit, TreeView& tree, QWidget* parent);
    void NodeAdded(TreeNode& node) override;
    void SelectionChanged() override;

    /// A person chose an item.
    void ItemChosen(QTreeWidgetItem& item);

  private:
    void AddWithChildren(TreeNode& node);
    void ItemClosed(QTreeWidgetItem& item);
    [[nodiscard]] const QIcon& IconFor(const std::string& key);

    QtToolkit& toolkit_;
    QTreeWidget* widget_;
    FollowingSelection* selection_;
    std::map<std::string, QIcon> icons_;  // each is shared by the nodes that show it
    std::map<const TreeNode*, QTreeWidgetItem*> items_;
    std::map<const QTreeWidgetItem*, TreeNode*> nodes_;
};

}  // namespace ostrevin::qt
