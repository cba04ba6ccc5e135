#include "tests/windows/window/Reading.h"

#include <array>
#include <stdexcept>

#include "tests/windows/window/RemoteMemory.h"
#include "toolkit/win32/Text.h"

namespace ostrevin {
namespace {

std::wstring NameOfClass(HWND window) {
    std::array<wchar_t, 64> text{};
    const int length = GetClassNameW(window, text.data(), static_cast<int>(text.size()));
    return {text.data(), static_cast<std::size_t>(length)};
}

struct Search {
    const std::wstring& windowClass;
    std::vector<HWND> found;
};

BOOL CALLBACK TakeShown(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (NameOfClass(window) == search.windowClass && IsWindowVisible(window) != FALSE) {
        search.found.push_back(window);
    }
    return TRUE;
}

int RowCount(HWND list) {
    return static_cast<int>(Send(list, LVM_GETITEMCOUNT));
}

int ColumnCount(HWND list) {
    return static_cast<int>(Send(HeaderOf(list), HDM_GETITEMCOUNT));
}

std::string Cell(const RemoteMemory& list, int row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = list.TextPlace();
    item.cchTextMax = RemoteMemory::kTextLength;
    list.Exchange(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), item);
    return list.Text();
}

/// A node and those behind it that have the same parent.
std::vector<Node> NodesFrom(HWND tree, const RemoteMemory& memory, LRESULT first) {
    std::vector<Node> nodes;
    for (LRESULT handle = first; handle != 0; handle = Send(tree, TVM_GETNEXTITEM, TVGN_NEXT, handle)) {
        TVITEMW item{};
        item.mask = TVIF_TEXT;
        item.hItem = reinterpret_cast<HTREEITEM>(handle);
        item.pszText = memory.TextPlace();
        item.cchTextMax = RemoteMemory::kTextLength;
        memory.Exchange(TVM_GETITEMW, 0, item);
        nodes.push_back({reinterpret_cast<HTREEITEM>(handle), memory.Text(),
                         NodesFrom(tree, memory, Send(tree, TVM_GETNEXTITEM, TVGN_CHILD, handle))});
    }
    return nodes;
}

RECT Bounds(HWND window, UINT message, int index) {
    RECT bounds{};
    if (RemoteMemory(window).Exchange(message, static_cast<WPARAM>(index), bounds) == 0) {
        throw std::runtime_error("a control has no part " + std::to_string(index));
    }
    return bounds;
}

}  // namespace

std::vector<HWND> ShownChildren(HWND parent, const std::wstring& windowClass) {
    Search search{windowClass, {}};
    EnumChildWindows(parent, TakeShown, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND ShownChild(HWND parent, const std::wstring& windowClass) {
    const std::vector<HWND> found = ShownChildren(parent, windowClass);
    if (found.size() != 1) {
        throw std::runtime_error(std::to_string(found.size()) + " windows are of class " +
                                 win32::Utf8(windowClass));
    }
    return found.front();
}

std::string ClassOf(HWND window) {
    return win32::Utf8(NameOfClass(window));
}

std::string TextOf(HWND window) {
    std::array<wchar_t, RemoteMemory::kTextLength> text{};
    const LRESULT length = Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return win32::Utf8({text.data(), static_cast<std::size_t>(length)});
}

Texts ColumnTexts(HWND list) {
    const HWND header = HeaderOf(list);
    const RemoteMemory memory(header);
    Texts texts;
    for (int column = 0; column < ColumnCount(list); ++column) {
        HDITEMW item{};
        item.mask = HDI_TEXT;
        item.pszText = memory.TextPlace();
        item.cchTextMax = RemoteMemory::kTextLength;
        memory.Exchange(HDM_GETITEMW, static_cast<WPARAM>(column), item);
        texts.push_back(memory.Text());
    }
    return texts;
}

std::vector<Texts> Rows(HWND list) {
    const RemoteMemory memory(list);
    std::vector<Texts> rows;
    for (int row = 0; row < RowCount(list); ++row) {
        Texts& cells = rows.emplace_back();
        for (int column = 0; column < ColumnCount(list); ++column) {
            cells.push_back(Cell(memory, row, column));
        }
    }
    return rows;
}

Texts Cells(HWND list, int column) {
    const RemoteMemory memory(list);
    Texts cells;
    for (int row = 0; row < RowCount(list); ++row) {
        cells.push_back(Cell(memory, row, column));
    }
    return cells;
}

HWND HeaderOf(HWND list) {
    return reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
}

RECT RowBounds(HWND list, int row) {
    return Bounds(list, LVM_GETITEMRECT, row);
}

int SelectedRow(HWND list) {
    return static_cast<int>(Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::vector<Node> Nodes(HWND tree) {
    return NodesFrom(tree, RemoteMemory(tree), Send(tree, TVM_GETNEXTITEM, TVGN_ROOT));
}

RECT NodeBounds(HWND tree, HTREEITEM node) {
    union {
        HTREEITEM node;
        RECT bounds;
    } exchanged{};
    exchanged.node = node;
    constexpr WPARAM kTextOnly = TRUE;
    if (RemoteMemory(tree).Exchange(TVM_GETITEMRECT, kTextOnly, exchanged) == 0) {
        throw std::runtime_error("a node is not in sight");
    }
    return exchanged.bounds;
}

HTREEITEM SelectedNode(HWND tree) {
    return reinterpret_cast<HTREEITEM>(Send(tree, TVM_GETNEXTITEM, TVGN_CARET));
}

Texts TabTexts(HWND tabs) {
    const RemoteMemory memory(tabs);
    Texts texts;
    for (WPARAM tab = 0; tab < static_cast<WPARAM>(Send(tabs, TCM_GETITEMCOUNT)); ++tab) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = memory.TextPlace();
        item.cchTextMax = RemoteMemory::kTextLength;
        memory.Exchange(TCM_GETITEMW, tab, item);
        texts.push_back(memory.Text());
    }
    return texts;
}

int SelectedTab(HWND tabs) {
    return static_cast<int>(Send(tabs, TCM_GETCURSEL));
}

RECT TabBounds(HWND tabs, int tab) {
    return Bounds(tabs, TCM_GETITEMRECT, tab);
}

RECT ColumnBounds(HWND header, int column) {
    return Bounds(header, HDM_GETITEMRECT, column);
}

std::string PanelText(HWND statusBar, int panel) {
    const RemoteMemory memory(statusBar);
    Send(statusBar, SB_GETTEXTW, static_cast<WPARAM>(panel), reinterpret_cast<LPARAM>(memory.TextPlace()));
    return memory.Text();
}

bool IsPressed(HWND toolBar, int button) {
    TBBUTTON found{};
    RemoteMemory(toolBar).Exchange(TB_GETBUTTON, static_cast<WPARAM>(button), found);
    return (found.fsState & TBSTATE_CHECKED) != 0;
}

RECT ButtonBounds(HWND toolBar, int button) {
    return Bounds(toolBar, TB_GETITEMRECT, button);
}

}  // namespace ostrevin
