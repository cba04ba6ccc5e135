#include "controls/TreeView.h"

#include <utility>

#include "controls/ControlVisitor.h"

namespace ostrevin {

TreeNode::TreeNode(TreeNode* parent, std::string key, std::string text, std::string image)
    : parent_(parent), key_(std::move(key)), text_(std::move(text)), image_(std::move(image)) {}

void TreeView::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

TreeNode& TreeView::Add(TreeNode* parent, const std::string& key, const std::string& text,
                        const std::string& image) {
    if (byKey_.contains(key)) {
        throw ControlError("Key is not unique in collection: " + key);
    }
    auto& siblings = parent == nullptr ? roots_ : parent->children_;
    TreeNode& node = *siblings.emplace_back(std::make_unique<TreeNode>(parent, key, text, image));
    byKey_.emplace(node.Key(), &node);
    if (auto* view = static_cast<TreeViewView*>(AttachedView())) {
        view->NodeAdded(node);
    }
    return node;
}

TreeNode& TreeView::Node(const std::string& key) const {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) {
        throw ControlError("Element not found: " + key);
    }
    return *found->second;
}

void TreeView::Select(TreeNode& node) {
    selected_ = &node;
    if (auto* view = static_cast<TreeViewView*>(AttachedView())) {
        view->SelectionChanged();
    }
}

void TreeView::ClickNode(TreeNode& node) {
    Select(node);
    NodeClick.Raise(node);
}

}  // namespace ostrevin
