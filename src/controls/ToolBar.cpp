#include "controls/ToolBar.h"

#include <utility>

#include "controls/ControlVisitor.h"

namespace ostrevin {

ToolButton::ToolButton(ToolBar& bar, std::string key, std::string image, Style style)
    : bar_(bar), key_(std::move(key)), image_(std::move(image)), style_(style) {}

void ToolButton::SetValue(int value) {
    value_ = value;
    bar_.ButtonChanged(*this);
}

void ToolButton::SetEnabled(bool enabled) {
    enabled_ = enabled;
    bar_.ButtonChanged(*this);
}

void ToolBar::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

ToolButton& ToolBar::Add(const std::string& key, const std::string& image, ToolButton::Style style) {
    return buttons_.emplace_back(*this, key, image, style);
}

ToolButton& ToolBar::Button(const std::string& key) {
    for (ToolButton& button : buttons_) {
        if (button.Key() == key) {
            return button;
        }
    }
    throw ControlError("Element not found: " + key);
}

void ToolBar::Click(ToolButton& button) {
    if (!button.Enabled()) {
        return;
    }
    if (button.ButtonStyle() == ToolButton::Style::Check) {
        button.SetValue(button.Value() == ToolButton::kUp ? ToolButton::kPressed : ToolButton::kUp);
    }
    ButtonClick.Raise(button);
}

void ToolBar::ButtonChanged(const ToolButton& button) {
    if (auto* view = static_cast<ToolBarView*>(AttachedView())) {
        view->ButtonChanged(button);
    }
}

}  // namespace ostrevin
