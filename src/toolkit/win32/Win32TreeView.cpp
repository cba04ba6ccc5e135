#include "toolkit/win32/Win32TreeView.h"

#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

constexpr int kImageSize = 16;

/// Whether a node, or null, stands somewhere below another one.
bool IsIn(const TreeNode* node, const TreeNode* above) {
    while (node != nullptr && node->Parent() != above) {
        node = node->Parent();
    }
    return node != nullptr;
}

}  // namespace

Win32TreeView::Win32TreeView(Win32Toolkit& toolkit, TreeView& tree, HWND parent)
    : WindowView(toolkit, tree), images_(toolkit, tree.Images(), kImageSize, GetSysColor(COLOR_WINDOW)) {
    // Without drags: a press selects at once, and where the mouse goes until it is let go of means nothing.
    Create(WC_TREEVIEWW,
           WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS |
               TVS_DISABLEDRAGDROP,
           WS_EX_CLIENTEDGE, parent);
    Send(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images_.Handle()));
    Show();
    for (const auto& root : tree.Roots()) {
        AddWithChildren(*root);
    }
    SelectionChanged();
}

Win32TreeView::~Win32TreeView() {
    Destroy();  // before the images that it shows
}

void Win32TreeView::AddWithChildren(TreeNode& node) {
    NodeAdded(node);
    for (const auto& child : node.Children()) {
        AddWithChildren(*child);
    }
}

void Win32TreeView::NodeAdded(TreeNode& node) {
    std::wstring text = WideShown(node.Text());
    TVINSERTSTRUCTW added = {};
    added.hParent = node.Parent() == nullptr ? TVI_ROOT : items_.at(node.Parent());
    added.hInsertAfter = TVI_LAST;
    added.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    added.item.pszText = text.data();
    added.item.lParam = reinterpret_cast<LPARAM>(&node);
    added.item.iImage = images_.IndexOf(node.Image());
    added.item.iSelectedImage = added.item.iImage;
    items_[&node] = reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&added)));
}

void Win32TreeView::SelectionChanged() {
    const TreeNode* node = Control().SelectedItem();
    updating_ = true;
    Send(TVM_SELECTITEM, TVGN_CARET,
         node == nullptr ? 0 : reinterpret_cast<LPARAM>(items_.at(node)));  // opens its parents
    updating_ = false;
}

TreeNode* Win32TreeView::NodeOf(HTREEITEM item) const {
    TVITEMW asked = {};
    asked.mask = TVIF_PARAM;
    asked.hItem = item;
    const bool known = item != nullptr && Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked)) != FALSE;
    return known ? reinterpret_cast<TreeNode*>(asked.lParam) : nullptr;
}

LRESULT Win32TreeView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
            return Press(message, wParam, lParam);
        case WM_SETFOCUS: {
            // The first focus selects the first node, which is no choice of a person.
            updating_ = true;
            const LRESULT result = WindowView::OnMessage(message, wParam, lParam);
            SelectionChanged();
            return result;
        }
        case WM_KEYDOWN:
            if (MovesSelection(wParam) && Control().SelectedItem() == nullptr && !Control().Roots().empty()) {
                Choose(Control().Roots().front().get());
                return 0;
            }
            break;
        case WM_ERASEBKGND:
            return TRUE;  // done off the screen, with the nodes
        case WM_PAINT:
            PaintWithoutFlicker();
            return 0;
        default:
            break;
    }
    return WindowView::OnMessage(message, wParam, lParam);
}

LRESULT Win32TreeView::Press(UINT message, WPARAM wParam, LPARAM lParam) {
    TVHITTESTINFO hit = {};
    hit.pt = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    TreeNode* pressed = (hit.flags & TVHT_ONITEM) != 0 ? NodeOf(hit.hItem) : nullptr;
    const bool isSelected = pressed != nullptr && pressed == Control().SelectedItem();
    const LRESULT result = WindowView::OnMessage(message, wParam, lParam);
    // Of all other nodes TVN_SELCHANGED has told, and what it told may have taken the window away.
    if (isSelected) {
        Choose(pressed);
    }
    return result;
}

std::optional<LRESULT> Win32TreeView::OnNotify(NMHDR& header) {
    const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
    if (header.code == TVN_SELCHANGEDW && !updating_ &&
        (change.action == TVC_BYMOUSE || change.action == TVC_BYKEYBOARD)) {
        Choose(reinterpret_cast<TreeNode*>(change.itemNew.lParam));
    } else if (header.code == TVN_ITEMEXPANDEDW && change.action == TVE_COLLAPSE) {
        // A node that is closed takes the selection from the nodes in it.
        auto* closed = reinterpret_cast<TreeNode*>(change.itemNew.lParam);
        if (IsIn(Control().SelectedItem(), closed)) {
            Choose(closed);
        }
    }
    return std::nullopt;
}

void Win32TreeView::Choose(TreeNode* node) {
    if (node != nullptr) {
        Owner().Deliver([&] { Control().ClickNode(*node); });
    }
}

}  // namespace ostrevin::win32
