#include "tests/windows/window/UsedWindow.h"

#include <stdexcept>

#include "tests/windows/window/Host.h"
#include "tests/windows/window/Person.h"
#include "tests/windows/window/RemoteMemory.h"

namespace ostrevin {

LONG WidthOf(const RECT& area) {
    return area.right - area.left;
}

void ClickOn(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    Click(window, MiddleOf(area));
}

HWND ButtonCalled(HWND dialog, const std::string& caption) {
    for (const HWND button : ShownChildren(dialog, L"Button")) {
        if (TextOf(button) == caption) {
            return button;
        }
    }
    throw std::runtime_error("there is no button " + caption);
}

std::string ConfirmMessage(const RunningProgram& program, const std::wstring& picture) {
    const HWND box = program.AwaitDialog("Ostrevin");
    std::string text;
    for (const HWND label : ShownChildren(box, L"Static")) {
        text += TextOf(label);
    }
    Photograph(picture);
    Press(VK_RETURN);
    Await([&] { return IsWindow(box) == FALSE; });
    return text;
}

UsedWindow::UsedWindow(const RunningProgram& program)
    : used(program),
      window(program.MainWindow()),
      tree(ShownChild(window, WC_TREEVIEWW)),
      tabs(ShownChild(window, WC_TABCONTROLW)),
      toolBar(ShownChild(window, TOOLBARCLASSNAMEW)),
      statusBar(ShownChild(window, STATUSCLASSNAMEW)) {}

HWND UsedWindow::List() const {
    HWND list = nullptr;
    Await([&] {
        const std::vector<HWND> shown = ShownChildren(window, WC_LISTVIEWW);
        list = shown.size() == 1 ? shown.front() : nullptr;
        return list != nullptr;
    });
    return list;
}

void UsedWindow::ClickNode(HTREEITEM node) const {
    Send(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(node));
    Click(tree, MiddleOf(NodeBounds(tree, node)));
}

void UsedWindow::ClickTab(Tab tab) const {
    Click(tabs, MiddleOf(TabBounds(tabs, tab)));
}

void UsedWindow::ClickButton(Button button) const {
    Click(toolBar, MiddleOf(ButtonBounds(toolBar, button)));
}

RECT UsedWindow::CellBounds(std::size_t row) const {
    RECT bounds = RowBounds(List(), static_cast<int>(row));
    bounds.right = bounds.left + 100;
    return bounds;
}

void UsedWindow::ClickRow(std::size_t row) const {
    Send(List(), LVM_ENSUREVISIBLE, row, FALSE);
    Click(List(), MiddleOf(CellBounds(row)));
}

void UsedWindow::ChooseMenu(Menu menu, int item) const {
    if (used.Focus() == tree) {
        Press(VK_TAB);  // Wine's tree view takes F10 for itself
        Await([this] { return used.Focus() != tree; });
    }
    Press(VK_F10);
    for (int i = 0; i < menu; ++i) {
        Press(VK_RIGHT);
    }
    Press(VK_DOWN);
    for (int i = 0; i < item; ++i) {
        Press(VK_DOWN);
    }
    Press(VK_RETURN);
}

}  // namespace ostrevin
