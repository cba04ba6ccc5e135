#include "toolkit/win32/Win32TabStrip.h"

#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

constexpr int kImageSize = 16;

}  // namespace

Win32TabStrip::Win32TabStrip(Win32Toolkit& toolkit, TabStrip& tabs, HWND parent)
    : WindowView(toolkit, tabs), images_(toolkit, tabs.Images(), kImageSize, GetSysColor(COLOR_BTNFACE)) {
    Create(WC_TABCONTROLW, WS_TABSTOP, 0, parent);
    SendMessageW(Handle(), TCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_.Handle()));
    WPARAM place = 0;
    for (const TabStrip::Tab& tab : tabs.Tabs()) {
        std::wstring caption = WideShown(tab.caption);
        TCITEMW item = {};
        item.mask = TCIF_TEXT | TCIF_IMAGE;
        item.pszText = caption.data();
        item.iImage = images_.IndexOf(tab.image);
        SendMessageW(Handle(), TCM_INSERTITEMW, place++, reinterpret_cast<LPARAM>(&item));
    }
    Show();
    SelectionChanged();
}

Win32TabStrip::~Win32TabStrip() {
    Destroy();  // before the images that it shows
}

void Win32TabStrip::SelectionChanged() {
    SendMessageW(Handle(), TCM_SETCURSEL, static_cast<WPARAM>(Control().SelectedTab() - 1), 0);
}

PixelRect Win32TabStrip::ClientArea() const {
    RECT area = {};
    GetClientRect(Handle(), &area);
    SendMessageW(Handle(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

std::optional<LRESULT> Win32TabStrip::OnNotify(NMHDR& header) {
    if (header.code == TCN_SELCHANGE) {
        const auto tab = static_cast<int>(SendMessageW(Handle(), TCM_GETCURSEL, 0, 0)) + 1;
        Owner().Deliver([&] { Control().Select(tab); });
        return 0;
    }
    return std::nullopt;
}

}  // namespace ostrevin::win32
