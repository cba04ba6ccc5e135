// Trees.
#pragma once

#include <map>

#include "controls/TreeView.h"
#include "toolkit/win32/Pictures.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

class Win32TreeView final : public WindowView<TreeViewView, TreeView> {
  public:
    Win32TreeView(Win32Toolkit& toolkit, TreeView& tree, HWND parent);
    ~Win32TreeView() override;

    void NodeAdded(TreeNode& node) override;
    void SelectionChanged() override;

    std::optional<LRESULT> OnNotify(NMHDR& header) override;

  protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(Handle(), message, wParam, lParam);
    }
    void AddWithChildren(TreeNode& node);
    [[nodiscard]] TreeNode* NodeOf(HTREEITEM item) const;
    LRESULT Press(UINT message, WPARAM wParam, LPARAM lParam);
    /// A person chose a node; null is none.
    void Choose(TreeNode* node);

    NativeImages images_;
    std::map<const TreeNode*, HTREEITEM> items_;
    bool updating_ = false;  // code, not a person, changes the selection
};

}  // namespace ostrevin::win32
