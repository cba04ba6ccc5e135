#include "toolkit/win32/Win32Inputs.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

void SetCaption(HWND window, const std::string& caption) {
    SetWindowTextW(window, WideShown(caption).c_str());
}

std::string TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return Utf8(text);
}

int HeightOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect.bottom - rect.top;
}

}  // namespace

Win32Label::Win32Label(Win32Toolkit& toolkit, Label& label, HWND parent) : WindowView(toolkit, label) {
    Create(L"STATIC", SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE, 0, parent);
    Show();
    CaptionChanged();
}

void Win32Label::CaptionChanged() {
    SetCaption(Handle(), Control().Caption());
}

Win32CommandButton::Win32CommandButton(Win32Toolkit& toolkit, CommandButton& button, HWND parent,
                                       std::function<void()> focusMoved)
    : WindowView(toolkit, button), focusMoved_(std::move(focusMoved)) {
    Create(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP, 0, parent);
    Show();
    CaptionChanged();
}

void Win32CommandButton::CaptionChanged() {
    SetCaption(Handle(), Control().Caption());
}

void Win32CommandButton::OnCommand(unsigned code, unsigned /*command*/) {
    if (code == BN_CLICKED) {
        Owner().Deliver([&button = Control()] { button.Press(); });
    }
}

void Win32CommandButton::MarkDefault(bool isDefault) {
    const LONG style = isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    if ((GetWindowLongW(Handle(), GWL_STYLE) & BS_TYPEMASK) != style) {
        SendMessageW(Handle(), BM_SETSTYLE, static_cast<WPARAM>(style), TRUE);
    }
}

LRESULT Win32CommandButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        focusMoved_();
    }
    return WindowView::OnMessage(message, wParam, lParam);
}

Win32CheckBox::Win32CheckBox(Win32Toolkit& toolkit, CheckBox& box, HWND parent) : WindowView(toolkit, box) {
    Create(L"BUTTON", BS_3STATE | WS_TABSTOP, 0, parent);
    Show();
    CaptionChanged();
    ValueChanged();
}

void Win32CheckBox::CaptionChanged() {
    SetCaption(Handle(), Control().Caption());
}

void Win32CheckBox::ValueChanged() {
    static_assert(CheckBox::kUnchecked == BST_UNCHECKED && CheckBox::kChecked == BST_CHECKED &&
                  CheckBox::kGrayed == BST_INDETERMINATE);
    SendMessageW(Handle(), BM_SETCHECK, static_cast<WPARAM>(Control().Value()), 0);
}

void Win32CheckBox::OnCommand(unsigned code, unsigned /*command*/) {
    if (code == BN_CLICKED) {
        Owner().Deliver([&box = Control()] {
            box.SetValue(box.Value() == CheckBox::kChecked ? CheckBox::kUnchecked : CheckBox::kChecked);
        });
    }
}

Win32TextBox::Win32TextBox(Win32Toolkit& toolkit, TextBox& box, HWND parent) : WindowView(toolkit, box) {
    Create(L"EDIT", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, parent);
    Show();
    TextChanged();
}

void Win32TextBox::TextChanged() {
    settingText_ = true;
    SetWindowTextW(Handle(), Wide(Control().Text()).c_str());
    settingText_ = false;
}

void Win32TextBox::OnCommand(unsigned code, unsigned /*command*/) {
    if (code == EN_CHANGE && !settingText_) {
        Owner().Deliver([&box = Control(), text = TextOf(Handle())] { box.Type(text); });
    }
}

LRESULT Win32TextBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr WPARAM kControlA = 1;
    if (message == WM_CHAR && wParam == kControlA) {
        SendMessageW(Handle(), EM_SETSEL, 0, -1);
        return 0;
    }
    const LRESULT answer = WindowView::OnMessage(message, wParam, lParam);
    switch (message) {
        case WM_NCCALCSIZE:
            CenterText(*reinterpret_cast<RECT*>(lParam));  // either of its structures begins with it
            return answer;
        case WM_NCPAINT:
        case WM_ENABLE:
            PaintMargins();
            return answer;
        case WM_NCHITTEST:
            return HTCLIENT;  // the margins, too
        default:
            return answer;
    }
}

/// Windows writes at the top of a box of one line. So its inside is made as high as the line, in the middle.
void Win32TextBox::CenterText(RECT& inside) {
    const HDC canvas = GetDC(Handle());
    const HGDIOBJ former = SelectObject(canvas, Owner().FontOf(Control()));
    SIZE line{};
    GetTextExtentPoint32W(canvas, L"A", 1, &line);
    SelectObject(canvas, former);
    ReleaseDC(Handle(), canvas);
    constexpr int kAroundLine = 2;
    margin_ = std::max(inside.bottom - inside.top - line.cy - kAroundLine, 0L) / 2;
    inside.top += margin_;
    inside.bottom -= margin_;
}

/// What CenterText took from the inside looks like it.
void Win32TextBox::PaintMargins() {
    RECT box{};
    GetWindowRect(Handle(), &box);
    const LONG left = GetSystemMetrics(SM_CXEDGE);
    const LONG right = box.right - box.left - left;
    const LONG above = GetSystemMetrics(SM_CYEDGE);
    const LONG below = box.bottom - box.top - above;
    const HDC canvas = GetWindowDC(Handle());
    const HBRUSH brush = GetSysColorBrush(Control().Enabled() ? COLOR_WINDOW : COLOR_BTNFACE);
    const RECT top = {left, above, right, above + margin_};
    const RECT bottom = {left, below - margin_, right, below};
    FillRect(canvas, &top, brush);
    FillRect(canvas, &bottom, brush);
    ReleaseDC(Handle(), canvas);
}

Win32ComboBox::Win32ComboBox(Win32Toolkit& toolkit, ComboBox& box, HWND parent) : WindowView(toolkit, box) {
    Create(L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 0, parent);
    Show();
    ItemsChanged();
}

/// The window's height includes the list that drops down; the part that is always there follows the height of
/// its text.
void Win32ComboBox::Moved() {
    constexpr int kMostItemsInSight = 12;
    constexpr auto kText = static_cast<WPARAM>(-1);
    Place(Handle(), Control());
    RECT rect{};
    GetWindowRect(Handle(), &rect);
    Container& container = *Control().Parent();
    const auto wanted = static_cast<int>(
        std::lround(container.ScaleY(Control().Height(), container.ScaleMode(), ScaleMode::Pixel)));
    const auto itemHeight = static_cast<int>(SendMessageW(Handle(), CB_GETITEMHEIGHT, 0, 0));
    SetWindowPos(Handle(), nullptr, 0, 0, rect.right - rect.left, wanted + kMostItemsInSight * itemHeight,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    auto textHeight = static_cast<int>(SendMessageW(Handle(), CB_GETITEMHEIGHT, kText, 0));
    // Twice, since what is given need not be what is taken.
    for (int pass = 0; pass < 2; ++pass) {
        textHeight += wanted - HeightOf(Handle());
        SendMessageW(Handle(), CB_SETITEMHEIGHT, kText, std::max(textHeight, 1));
    }
}

void Win32ComboBox::ItemsChanged() {
    const auto& items = Control().Items();
    for (auto i = static_cast<std::size_t>(SendMessageW(Handle(), CB_GETCOUNT, 0, 0)); i < items.size();
         ++i) {
        SendMessageW(Handle(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideShown(items[i]).c_str()));
    }
    SelectionChanged();
}

void Win32ComboBox::SelectionChanged() {
    SendMessageW(Handle(), CB_SETCURSEL, static_cast<WPARAM>(Control().ListIndex()), 0);
}

void Win32ComboBox::OnCommand(unsigned code, unsigned /*command*/) {
    if (code == CBN_SELCHANGE || code == CBN_CLOSEUP) {
        const auto index = static_cast<int>(SendMessageW(Handle(), CB_GETCURSEL, 0, 0));
        Owner().Deliver([&box = Control(), index] { box.SetListIndex(index); });
    }
}

}  // namespace ostrevin::win32
