// A form's menus, and the keys that choose their items.
#pragma once

#include <vector>

#include "controls/Menu.h"
#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {

class Win32MenuBar final : private MenuView {
  public:
    /// Gives a window the menus. Throws ControlError for a shortcut that is no key.
    Win32MenuBar(HWND window, MenuBar& menus);
    ~Win32MenuBar() override;

    /// Whether the message is the shortcut of an item, which is chosen then.
    [[nodiscard]] bool TranslateShortcut(MSG& message) const;
    /// The item of a WM_COMMAND; null for none.
    [[nodiscard]] MenuItem* ItemOf(WORD command) const;

  private:
    void ItemChanged(MenuItem& item) override;
    void AddItem(HMENU menu, MenuItem& item);

    HWND window_;
    MenuBar& menus_;
    HMENU bar_;
    std::vector<MenuItem*> items_;  // by their commands
    std::vector<ACCEL> shortcuts_;
    HACCEL table_ = nullptr;
};

}  // namespace ostrevin::win32
