#include "controls/Menu.h"

#include <utility>

namespace ostrevin {

MenuItem::MenuItem(std::string name, std::string caption, std::string shortcut)
    : name_(std::move(name)), caption_(std::move(caption)), shortcut_(std::move(shortcut)) {}

MenuItem& MenuItem::Add(const std::string& name, const std::string& caption, const std::string& shortcut) {
    return items_.emplace_back(name, caption, shortcut);
}

void MenuItem::SetChecked(bool checked) {
    checked_ = checked;
    if (view_ != nullptr) {
        view_->ItemChanged(*this);
    }
}

void MenuItem::SetEnabled(bool enabled) {
    enabled_ = enabled;
    if (view_ != nullptr) {
        view_->ItemChanged(*this);
    }
}

void MenuItem::Attach(MenuView* view) {
    view_ = view;
    for (MenuItem& item : items_) {
        item.Attach(view);
    }
}

MenuItem& MenuBar::Add(const std::string& name, const std::string& caption) {
    return items_.emplace_back(name, caption, std::string());
}

void MenuBar::Attach(MenuView* view) {
    for (MenuItem& item : items_) {
        item.Attach(view);
    }
}

}  // namespace ostrevin
