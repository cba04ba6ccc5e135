// Menus: a bar of menus, each with items.
#pragma once

#include <deque>
#include <string>

#include "controls/Event.h"

namespace ostrevin {

class MenuItem;

class MenuView {
  public:
    MenuView() = default;
    MenuView(const MenuView&) = delete;
    MenuView& operator=(const MenuView&) = delete;
    virtual ~MenuView() = default;
    /// Checked or Enabled changed.
    virtual void ItemChanged(MenuItem& item) = 0;
};

/// A menu or an item of one. In a caption, "&" stands before the letter that chooses it.
class MenuItem {
  public:
    MenuItem(std::string name, std::string caption, std::string shortcut);

    /// Adds an item at the end. shortcut is a key such as "Ctrl+F" or "F3", or empty.
    MenuItem& Add(const std::string& name, const std::string& caption, const std::string& shortcut = {});

    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] const std::string& Caption() const { return caption_; }
    [[nodiscard]] const std::string& Shortcut() const { return shortcut_; }
    [[nodiscard]] std::deque<MenuItem>& Items() { return items_; }
    /// Whether it shows a check mark when it is checked.
    [[nodiscard]] bool Checkable() const { return checkable_; }
    void SetCheckable(bool checkable) { checkable_ = checkable; }
    [[nodiscard]] bool Checked() const { return checked_; }
    void SetChecked(bool checked);
    [[nodiscard]] bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);

    Event<> Click;

    void Attach(MenuView* view);

  private:
    std::string name_;
    std::string caption_;
    std::string shortcut_;
    bool checkable_ = false;
    bool checked_ = false;
    bool enabled_ = true;
    std::deque<MenuItem> items_;  // a deque, since items are referred to while others are added
    MenuView* view_ = nullptr;
};

class MenuBar {
  public:
    MenuItem& Add(const std::string& name, const std::string& caption);
    [[nodiscard]] std::deque<MenuItem>& Items() { return items_; }
    /// Attaches a view to every item; null detaches it.
    void Attach(MenuView* view);

  private:
    std::deque<MenuItem> items_;
};

}  // namespace ostrevin
