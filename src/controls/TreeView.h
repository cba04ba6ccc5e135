// A tree of nodes, addressed by key.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "controls/Control.h"
#include "controls/Event.h"
#include "controls/ImageList.h"

namespace ostrevin {

class TreeNode {
  public:
    TreeNode(TreeNode* parent, std::string key, std::string text, std::string image);

    [[nodiscard]] TreeNode* Parent() const { return parent_; }
    [[nodiscard]] const std::string& Key() const { return key_; }
    [[nodiscard]] const std::string& Text() const { return text_; }
    [[nodiscard]] const std::string& Image() const { return image_; }
    [[nodiscard]] const std::string& Tag() const { return tag_; }
    void SetTag(const std::string& tag) { tag_ = tag; }
    [[nodiscard]] const std::vector<std::unique_ptr<TreeNode>>& Children() const { return children_; }

  private:
    friend class TreeView;
    TreeNode* parent_;
    std::string key_;
    std::string text_;
    std::string image_;
    std::string tag_;
    std::vector<std::unique_ptr<TreeNode>> children_;
};

class TreeViewView : public ControlView {
  public:
    virtual void NodeAdded(TreeNode& node) = 0;
    virtual void SelectionChanged() = 0;
};

class TreeView : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(TreeViewView* view) { SetView(view); }

    [[nodiscard]] ImageList* Images() const { return images_; }
    void SetImages(ImageList* images) { images_ = images; }

    /// Adds a node behind the last child of parent, or behind the last root when parent is null. Throws
    /// ControlError when the key is there already.
    TreeNode& Add(TreeNode* parent, const std::string& key, const std::string& text,
                  const std::string& image);
    [[nodiscard]] const std::vector<std::unique_ptr<TreeNode>>& Roots() const { return roots_; }
    /// Throws ControlError when there is no such key.
    [[nodiscard]] TreeNode& Node(const std::string& key) const;

    /// Null when nothing is selected.
    [[nodiscard]] TreeNode* SelectedItem() const { return selected_; }
    /// Selects a node, opening its parents; raises no event.
    void Select(TreeNode& node);

    Event<TreeNode&> NodeClick;

    // Called by the view.

    /// A person chose a node, by mouse or by keyboard: it is selected, then NodeClick is raised.
    void ClickNode(TreeNode& node);

  private:
    ImageList* images_ = nullptr;
    std::vector<std::unique_ptr<TreeNode>> roots_;
    std::unordered_map<std::string_view, TreeNode*> byKey_;
    TreeNode* selected_ = nullptr;
};

}  // namespace ostrevin
