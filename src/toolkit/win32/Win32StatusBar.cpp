#include "toolkit/win32/Win32StatusBar.h"

#include <algorithm>
#include <string>

#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {

Win32StatusBar::Win32StatusBar(Win32Toolkit& toolkit, StatusBar& bar, HWND parent)
    : WindowView(toolkit, bar) {
    Create(STATUSCLASSNAMEW, SBARS_SIZEGRIP | CCS_NORESIZE | CCS_NOPARENTALIGN, 0, parent);
    for (int panel = 1; panel <= bar.PanelCount(); ++panel) {
        widths_.push_back(bar.PanelPixelWidth(panel));
    }
    Show();
    for (int panel = 1; panel <= bar.PanelCount(); ++panel) {
        PanelChanged(panel);
    }
}

void Win32StatusBar::Moved() {
    WindowView::Moved();
    PlacePanels();
}

void Win32StatusBar::PanelChanged(int panel) {
    const std::wstring text = WideShown(Control().PanelText(panel));
    Widen(panel, text);
    SendMessageW(Handle(), SB_SETTEXTW, static_cast<WPARAM>(panel - 1),
                 reinterpret_cast<LPARAM>(text.c_str()));
}

void Win32StatusBar::Widen(int panel, const std::wstring& text) {
    int& width = widths_[static_cast<std::size_t>(panel - 1)];
    const HDC screen = GetDC(Handle());
    const HGDIOBJ former = SelectObject(screen, Owner().FontOf(Control()));
    SIZE size = {};
    GetTextExtentPoint32W(screen, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(screen, former);
    ReleaseDC(Handle(), screen);
    constexpr int kMargins = 12;
    if (width != 0 && width < size.cx + kMargins) {
        width = static_cast<int>(size.cx) + kMargins;
        PlacePanels();
    }
}

void Win32StatusBar::PlacePanels() {
    RECT area = {};
    GetClientRect(Handle(), &area);
    // The corner by which the window is sized lies over the last panel.
    int left = static_cast<int>(area.right) - GetSystemMetrics(SM_CXVSCROLL);
    for (const int width : widths_) {
        left -= width;
    }
    std::vector<int> rightEdges;
    int right = 0;
    for (const int width : widths_) {
        right += width == 0 ? std::max(left, 0) : width;
        rightEdges.push_back(right);
    }
    if (!rightEdges.empty()) {
        rightEdges.back() = -1;  // to the end
        SendMessageW(Handle(), SB_SETPARTS, rightEdges.size(), reinterpret_cast<LPARAM>(rightEdges.data()));
    }
}

}  // namespace ostrevin::win32
