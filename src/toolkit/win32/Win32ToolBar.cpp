#include "toolkit/win32/Win32ToolBar.h"

#include <algorithm>
#include <string>

#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

constexpr int kImageSize = 24;

}  // namespace

Win32ToolBar::Win32ToolBar(Win32Toolkit& toolkit, ToolBar& bar, HWND parent)
    : WindowView(toolkit, bar),
      images_(toolkit, bar.Images(), kImageSize, GetSysColor(COLOR_BTNFACE)),
      disabledImages_(toolkit, bar.Images(), kImageSize, GetSysColor(COLOR_BTNFACE),
                      NativeImages::Look::Disabled) {
    Create(TOOLBARCLASSNAMEW, WS_TABSTOP | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN,
           0, parent);
    AddButtons();
    Show();
    for (const ToolButton& button : bar.Buttons()) {
        ButtonChanged(button);
    }
}

Win32ToolBar::~Win32ToolBar() {
    Destroy();  // before the images that it shows
}

void Win32ToolBar::AddButtons() {
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(images_.Size(), images_.Size()));
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_.Handle()));
    Send(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabledImages_.Handle()));
    int command = 0;
    for (const ToolButton& button : Control().Buttons()) {
        TBBUTTON added = {};
        added.iBitmap = images_.IndexOf(button.Image());
        added.idCommand = ++command;
        added.fsState = TBSTATE_ENABLED;
        added.fsStyle = button.ButtonStyle() == ToolButton::Style::Check ? TBSTYLE_CHECK : TBSTYLE_BUTTON;
        added.iString = -1;
        Send(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&added));
    }
}

void Win32ToolBar::ButtonChanged(const ToolButton& button) {
    const std::deque<ToolButton>& buttons = Control().Buttons();
    const auto place = std::find_if(buttons.begin(), buttons.end(),
                                    [&](const ToolButton& each) { return &each == &button; });
    const auto command = static_cast<WPARAM>(place - buttons.begin() + 1);
    Send(TB_ENABLEBUTTON, command, button.Enabled() ? TRUE : FALSE);
    Send(TB_CHECKBUTTON, command, button.Value() == ToolButton::kPressed ? TRUE : FALSE);
}

ToolButton* Win32ToolBar::ButtonOf(unsigned command) const {
    std::deque<ToolButton>& buttons = Control().Buttons();
    return command >= 1 && command <= buttons.size() ? &buttons[command - 1] : nullptr;
}

void Win32ToolBar::OnCommand(unsigned /*code*/, unsigned command) {
    Click(command);
}

void Win32ToolBar::Click(unsigned command) {
    if (ToolButton* button = ButtonOf(command)) {
        // The window has changed the button by itself; whether it is pressed is the control's to say.
        ButtonChanged(*button);
        Owner().Deliver([&] { Control().Click(*button); });
    }
}

std::optional<LRESULT> Win32ToolBar::OnNotify(NMHDR& header) {
    if (header.code != TBN_GETINFOTIPW) {
        return std::nullopt;
    }
    auto& tip = reinterpret_cast<NMTBGETINFOTIPW&>(header);
    if (const ToolButton* button = ButtonOf(static_cast<unsigned>(tip.iItem))) {
        lstrcpynW(tip.pszText, Wide(button->ToolTipText()).c_str(), tip.cchTextMax);
    }
    return 0;
}

void Win32ToolBar::MoveTo(int place, int direction) {
    const std::deque<ToolButton>& buttons = Control().Buttons();
    const int count = static_cast<int>(buttons.size());
    while (place >= 0 && place < count && !buttons[static_cast<std::size_t>(place)].Enabled()) {
        place += direction;
    }
    if (place >= 0 && place < count) {
        chosen_ = place;
        Send(TB_SETHOTITEM, static_cast<WPARAM>(place));
    }
}

LRESULT Win32ToolBar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_SETFOCUS:
            MoveTo(chosen_, 1);
            return 0;
        case WM_KILLFOCUS:
            Send(TB_SETHOTITEM, static_cast<WPARAM>(-1));
            return 0;
        case WM_KEYDOWN:
            switch (wParam) {
                case VK_LEFT:
                    MoveTo(chosen_ - 1, -1);
                    return 0;
                case VK_RIGHT:
                    MoveTo(chosen_ + 1, 1);
                    return 0;
                case VK_SPACE:
                case VK_RETURN:
                    Click(static_cast<unsigned>(chosen_) + 1);
                    return 0;
                default:
                    break;
            }
            break;
        default:
            break;
    }
    return WindowView::OnMessage(message, wParam, lParam);
}

}  // namespace ostrevin::win32
