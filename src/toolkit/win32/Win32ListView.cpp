#include "toolkit/win32/Win32ListView.h"

#include <algorithm>
#include <cmath>

#include "controls/ShownText.h"
#include "toolkit/win32/CommonControls.h"
#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

/// Of the first column, in pixels of a screen with 96 to the inch.
constexpr double kLeastWidth = 160;

/// Asks for the focus and what is highlighted to be one with the control's selection again.
constexpr UINT kSettle = WM_APP;

/// A list's number of the item at a point of a mouse message; -1 beside the items.
int RowAt(HWND list, LPARAM point) {
    LVHITTESTINFO hit = {};
    hit.pt = {static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
    return static_cast<int>(SendMessageW(list, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}

}  // namespace

Win32ListView::Win32ListView(Win32Toolkit& toolkit, ListView& list, HWND parent) : WindowView(toolkit, list) {
    Create(WC_LISTVIEWW,
           WS_TABSTOP | WS_CLIPCHILDREN | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
           WS_EX_CLIENTEDGE, parent);
    // A text that its column cuts off is shown whole by a tip.
    SetExtendedStyle(list.ExtendedStyle() | LVS_EX_LABELTIP);
    AddColumns();
    Show();
    SortChanged();
    RowsChanged();
}

void Win32ListView::AddColumns() {
    Container& container = *Control().Parent();
    for (int index = 1; index <= Control().ColumnCount(); ++index) {
        const ColumnHeader& header = Control().Column(index);
        std::wstring text = Wide(header.Text());
        const double width = container.ScaleX(header.Width(), container.ScaleMode(), ScaleMode::Pixel);
        LVCOLUMNW column = {};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.fmt = header.RightAligned() ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = static_cast<int>(std::lround(width));
        column.pszText = text.data();
        column.iSubItem = index - 1;
        Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(index - 1), reinterpret_cast<LPARAM>(&column));
    }
}

void Win32ListView::FitFirstColumn() {
    if (!firstColumnFits_ || Control().ColumnCount() == 0) {
        return;
    }
    RECT area = {};
    GetClientRect(Handle(), &area);
    int width = area.right;
    for (int column = 1; column < Control().ColumnCount(); ++column) {
        width -= static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
    }
    width = std::max(width, static_cast<int>(kLeastWidth * Owner().PixelsPerInchX() / 96));
    if (width != Send(LVM_GETCOLUMNWIDTH)) {
        Send(LVM_SETCOLUMNWIDTH, 0, width);
    }
}

void Win32ListView::RowsChanged() {
    if (!stale_) {
        stale_ = true;
        PostMessageW(Handle(), WM_NULL, 0, 0);  // should no other message come
    }
}

void Win32ListView::BringUpToDate() {
    if (!stale_) {
        return;
    }
    stale_ = false;
    updating_ = true;
    Send(LVM_SETITEMCOUNT, Control().ItemCount(), LVSICF_NOSCROLL);
    updating_ = false;
    ShowSelection();
    FitFirstColumn();
    InvalidateRect(Handle(), nullptr, TRUE);
}

void Win32ListView::RowChanged(std::size_t row) {
    if (!stale_) {
        Send(LVM_REDRAWITEMS, row, static_cast<LPARAM>(row));
    }
}

void Win32ListView::SelectionChanged() {
    if (!stale_) {
        ShowSelection();
    }
}

void Win32ListView::ShowSelection() {
    const LRESULT row = RowOfSelection();
    for (const UINT state : {UINT{LVIS_SELECTED}, UINT{LVIS_FOCUSED}}) {
        const LRESULT shown = RowWith(state);
        if (shown != row && shown >= 0) {
            SetState(static_cast<WPARAM>(shown), state, 0);
        }
        if (shown != row && row >= 0) {
            SetState(static_cast<WPARAM>(row), state, state);
        }
    }
}

void Win32ListView::Settle() {
    const LRESULT focused = RowWith(LVIS_FOCUSED);
    if (focused >= 0 && focused != RowOfSelection()) {
        ChooseRow(static_cast<int>(focused));
    } else {
        ShowSelection();
    }
}

LRESULT Win32ListView::RowOfSelection() const {
    const ListItem* item = Control().SelectedItem();
    return item == nullptr ? -1 : static_cast<LRESULT>(Control().IndexOf(*item)) - 1;
}

LRESULT Win32ListView::RowWith(UINT state) const {
    constexpr auto kAll = static_cast<WPARAM>(-1);
    return Send(LVM_GETNEXTITEM, kAll, state == LVIS_SELECTED ? LVNI_SELECTED : LVNI_FOCUSED);
}

void Win32ListView::SetState(WPARAM row, UINT mask, UINT value) {
    LVITEMW state = {};
    state.stateMask = mask;
    state.state = value;
    updating_ = true;
    Send(LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&state));
    updating_ = false;
}

void Win32ListView::SortChanged() {
    if (!HasCommonControls6()) {
        return;  // no arrows there
    }
    const auto header = reinterpret_cast<HWND>(Send(LVM_GETHEADER));
    for (int column = 0; column < Control().ColumnCount(); ++column) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (Control().Sorted() && column == Control().SortKey()) {
            item.fmt |= Control().SortOrder() == SortOrder::Ascending ? HDF_SORTUP : HDF_SORTDOWN;
        }
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    }
}

void Win32ListView::LockUpdate(bool locked) {
    LockWindowUpdate(locked ? Handle() : nullptr);
    if (locked) {
        // One look at the rows in the end serves better than word of each change on the way.
        RowsChanged();
    }
}

void Win32ListView::EnsureVisible(std::size_t row) {
    Send(LVM_ENSUREVISIBLE, row, FALSE);
}

std::uint32_t Win32ListView::ExtendedStyle() const {
    return static_cast<std::uint32_t>(Send(LVM_GETEXTENDEDLISTVIEWSTYLE));
}

void Win32ListView::SetExtendedStyle(std::uint32_t style) {
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
}

LRESULT Win32ListView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    BringUpToDate();
    switch (message) {
        case kSettle:
            Settle();
            return 0;
        case WM_SETFOCUS: {
            // A first focus may go to the first row, which is no choice of a person.
            updating_ = true;
            const LRESULT result = WindowView::OnMessage(message, wParam, lParam);
            updating_ = false;
            ShowSelection();
            return result;
        }
        case WM_KEYDOWN:
            if (MovesSelection(wParam) && Control().SelectedItem() == nullptr && Control().ItemCount() > 0) {
                EnsureVisible(0);
                ChooseRow(0);
                return 0;
            }
            break;
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
            return Press(message, wParam, lParam);
        case WM_SIZE: {
            const LRESULT result = WindowView::OnMessage(message, wParam, lParam);
            FitFirstColumn();
            return result;
        }
        case WM_NOTIFY: {  // from the header
            const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
            if (code == HDN_BEGINTRACKW || code == HDN_BEGINTRACKA || code == HDN_DIVIDERDBLCLICKW ||
                code == HDN_DIVIDERDBLCLICKA) {
                firstColumnFits_ = false;
            }
            break;
        }
        case WM_ERASEBKGND:
            return TRUE;  // done off the screen, with the rows
        case WM_PAINT:
            PaintWithoutFlicker();
            return 0;
        default:
            break;
    }
    return WindowView::OnMessage(message, wParam, lParam);
}

LRESULT Win32ListView::Press(UINT message, WPARAM wParam, LPARAM lParam) {
    const int row = RowAt(Handle(), lParam);
    const bool isSelected = row >= 0 && row == RowOfSelection();
    const LRESULT result = WindowView::OnMessage(message, wParam, lParam);
    // Of all other rows LVN_ITEMCHANGED has told, and what it told may have taken the window away.
    if (isSelected) {
        ChooseRow(row);
    }
    return result;
}

std::optional<LRESULT> Win32ListView::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            TellText(reinterpret_cast<NMLVDISPINFOW&>(header).item);
            return 0;
        case LVN_ODFINDITEMW: {
            const auto& search = reinterpret_cast<const NMLVFINDITEMW&>(header);
            return FindRow(search.iStart, search.lvfi);
        }
        case LVN_ITEMCHANGED:
            if (!updating_) {
                StateOfRowChanged(reinterpret_cast<const NMLISTVIEW&>(header));
            }
            return 0;
        case LVN_COLUMNCLICK: {
            const int column = reinterpret_cast<const NMLISTVIEW&>(header).iSubItem;
            Owner().Deliver([&] { Control().ClickColumn(column + 1); });
            return 0;
        }
        case NM_DBLCLK:
            OpenRow(reinterpret_cast<const NMITEMACTIVATE&>(header).iItem);
            return 0;
        case NM_RETURN:
            OpenRow(RowOfSelection());
            return 0;
        default:
            return std::nullopt;
    }
}

void Win32ListView::TellText(LVITEMW& cell) {
    if ((cell.mask & LVIF_TEXT) == 0) {
        return;
    }
    // The rows may have become fewer since they were told.
    const auto row = static_cast<std::size_t>(cell.iItem);
    std::wstring& text = texts_[nextText_];
    nextText_ = (nextText_ + 1) % texts_.size();
    text = row < Control().ItemCount() ? WideShown(Control().Item(row + 1).Cell(cell.iSubItem + 1)) : L"";
    cell.pszText = text.data();
}

LRESULT Win32ListView::FindRow(int from, const LVFINDINFOW& sought) const {
    const std::size_t count = Control().ItemCount();
    constexpr UINT kSubstring = 4;  // what partial was called once
    if ((sought.flags & (LVFI_STRING | LVFI_PARTIAL | kSubstring)) == 0 || count == 0) {
        return -1;
    }
    const std::wstring_view typed = sought.psz;
    const std::size_t mostBytes = 3 * (typed.size() + 1);  // of UTF-8 for a character more than was typed
    const bool whole = (sought.flags & (LVFI_PARTIAL | kSubstring)) == 0;
    const std::size_t first = from < 0 ? 0 : static_cast<std::size_t>(from);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = (first + i) % count;
        const std::wstring text = Wide(BeginningOf(Control().Item(row + 1).Text(), mostBytes));
        const std::wstring_view compared =
            whole ? std::wstring_view(text) : std::wstring_view(text).substr(0, typed.size());
        if (CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, compared.data(),
                           static_cast<int>(compared.size()), typed.data(),
                           static_cast<int>(typed.size())) == CSTR_EQUAL) {
            return static_cast<LRESULT>(row);
        }
    }
    return -1;
}

void Win32ListView::StateOfRowChanged(const NMLISTVIEW& change) {
    const UINT gained = change.uNewState & ~change.uOldState;
    const UINT lost = change.uOldState & ~change.uNewState;
    if ((gained & LVIS_SELECTED) != 0) {
        ChooseRow(change.iItem);
    } else if ((gained & LVIS_FOCUSED) != 0 || (lost & LVIS_SELECTED) != 0) {
        // Another row is about to be chosen, or has the focus alone; or what was done chooses none: a click
        // beside the rows, or one with the Control key on the selected row.
        PostMessageW(Handle(), kSettle, 0, 0);
    }
}

void Win32ListView::ChooseRow(int row) {
    if (row >= 0 && static_cast<std::size_t>(row) < Control().ItemCount()) {
        Owner().Deliver([&] { Control().ClickItem(Control().Item(static_cast<std::size_t>(row) + 1)); });
    }
}

void Win32ListView::OpenRow(LRESULT row) {
    if (row >= 0 && static_cast<std::size_t>(row) < Control().ItemCount()) {
        Owner().Deliver([&] { Control().OpenItem(Control().Item(static_cast<std::size_t>(row) + 1)); });
    }
}

}  // namespace ostrevin::win32
