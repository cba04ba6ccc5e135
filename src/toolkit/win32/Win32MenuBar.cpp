#include "toolkit/win32/Win32MenuBar.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include "controls/Control.h"
#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

constexpr WORD kFirstCommand = 1000;

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    const bool found = text.starts_with(prefix);
    text.remove_prefix(found ? prefix.size() : 0);
    return found;
}

/// The virtual key of "F", "7" or "F3".
WORD KeyOf(std::string_view name) {
    const char first = name.empty() ? '\0' : name.front();
    if (name.size() == 1 && ((first >= 'A' && first <= 'Z') || (first >= '0' && first <= '9'))) {
        return static_cast<WORD>(first);
    }
    int number = 0;
    const char* end = name.data() + name.size();
    if (first == 'F' && std::from_chars(name.data() + 1, end, number).ptr == end && number >= 1 &&
        number <= 24) {
        return static_cast<WORD>(VK_F1 + number - 1);
    }
    throw ControlError("No such key: " + std::string(name));
}

ACCEL ShortcutOf(std::string_view keys, WORD command) {
    int modifiers = FVIRTKEY;
    modifiers |= TakePrefix(keys, "Ctrl+") ? FCONTROL : 0;
    modifiers |= TakePrefix(keys, "Alt+") ? FALT : 0;
    modifiers |= TakePrefix(keys, "Shift+") ? FSHIFT : 0;
    return {static_cast<BYTE>(modifiers), KeyOf(keys), command};
}

}  // namespace

Win32MenuBar::Win32MenuBar(HWND window, MenuBar& menus)
    : window_(window), menus_(menus), bar_(menus.Items().empty() ? nullptr : CreateMenu()) {
    for (MenuItem& menu : menus.Items()) {
        const HMENU popup = CreatePopupMenu();
        AppendMenuW(bar_, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), Wide(menu.Caption()).c_str());
        for (MenuItem& item : menu.Items()) {
            AddItem(popup, item);
        }
    }
    SetMenu(window_, bar_);
    table_ = shortcuts_.empty()
                 ? nullptr
                 : CreateAcceleratorTableW(shortcuts_.data(), static_cast<int>(shortcuts_.size()));
    menus_.Attach(this);
}

Win32MenuBar::~Win32MenuBar() {
    menus_.Attach(nullptr);
    if (table_ != nullptr) {
        DestroyAcceleratorTable(table_);
    }
    // The menu goes with the window.
}

void Win32MenuBar::AddItem(HMENU menu, MenuItem& item) {
    const auto command = static_cast<WORD>(kFirstCommand + items_.size());
    std::string caption = item.Caption();
    if (!item.Shortcut().empty()) {
        caption.append("\t").append(item.Shortcut());
        shortcuts_.push_back(ShortcutOf(item.Shortcut(), command));
    }
    AppendMenuW(menu, MF_STRING, command, Wide(caption).c_str());
    items_.push_back(&item);
    ItemChanged(item);
}

void Win32MenuBar::ItemChanged(MenuItem& item) {
    const auto found = std::find(items_.begin(), items_.end(), &item);
    if (found != items_.end()) {
        const auto command = static_cast<UINT>(kFirstCommand + (found - items_.begin()));
        EnableMenuItem(bar_, command,
                       static_cast<UINT>(MF_BYCOMMAND | (item.Enabled() ? MF_ENABLED : MF_GRAYED)));
        CheckMenuItem(bar_, command,
                      static_cast<UINT>(MF_BYCOMMAND | (item.Checked() ? MF_CHECKED : MF_UNCHECKED)));
    }
}

bool Win32MenuBar::TranslateShortcut(MSG& message) const {
    return table_ != nullptr && TranslateAcceleratorW(window_, table_, &message) != 0;
}

MenuItem* Win32MenuBar::ItemOf(WORD command) const {
    const int place = command - kFirstCommand;
    return place >= 0 && place < static_cast<int>(items_.size()) ? items_[static_cast<std::size_t>(place)]
                                                                 : nullptr;
}

}  // namespace ostrevin::win32
