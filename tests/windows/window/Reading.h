// What the common controls of another process show, by their own messages.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <string>
#include <vector>

namespace ostrevin {

using Texts = std::vector<std::string>;

/// The windows on a window, at any depth, that are of a class and in sight.
[[nodiscard]] std::vector<HWND> ShownChildren(HWND parent, const std::wstring& windowClass);
/// The only one of them; raises std::runtime_error when there is none, or more than one.
[[nodiscard]] HWND ShownChild(HWND parent, const std::wstring& windowClass);

[[nodiscard]] std::string ClassOf(HWND window);
[[nodiscard]] std::string TextOf(HWND window);

// Lists. Rows and columns count from 0.

[[nodiscard]] Texts ColumnTexts(HWND list);
[[nodiscard]] std::vector<Texts> Rows(HWND list);
/// One cell of each row.
[[nodiscard]] Texts Cells(HWND list, int column);
[[nodiscard]] HWND HeaderOf(HWND list);
/// In the list's client area.
[[nodiscard]] RECT RowBounds(HWND list, int row);
/// The selected row; -1 for none.
[[nodiscard]] int SelectedRow(HWND list);

// Trees.

struct Node {
    HTREEITEM handle = nullptr;
    std::string text;
    std::vector<Node> children;
};

[[nodiscard]] std::vector<Node> Nodes(HWND tree);
/// In the tree's client area.
[[nodiscard]] RECT NodeBounds(HWND tree, HTREEITEM node);
[[nodiscard]] HTREEITEM SelectedNode(HWND tree);

// Tabs, bars.

[[nodiscard]] Texts TabTexts(HWND tabs);
[[nodiscard]] int SelectedTab(HWND tabs);
[[nodiscard]] RECT TabBounds(HWND tabs, int tab);
[[nodiscard]] RECT ColumnBounds(HWND header, int column);
[[nodiscard]] std::string PanelText(HWND statusBar, int panel);
/// Buttons count from 0.
[[nodiscard]] bool IsPressed(HWND toolBar, int button);
[[nodiscard]] RECT ButtonBounds(HWND toolBar, int button);

}  // namespace ostrevin
