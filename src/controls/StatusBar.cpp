#include "controls/StatusBar.h"

#include "controls/ControlVisitor.h"

namespace ostrevin {

void StatusBar::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

const StatusBar::Panel& StatusBar::At(int panel) const {
    if (panel < 1 || panel > PanelCount()) {
        throw ControlError("Index out of bounds: " + std::to_string(panel));
    }
    return panels_[static_cast<std::size_t>(panel - 1)];
}

void StatusBar::SetPanelText(int panel, const std::string& text) {
    if (At(panel).text == text) {
        return;
    }
    panels_[static_cast<std::size_t>(panel - 1)].text = text;
    if (auto* view = static_cast<StatusBarView*>(AttachedView())) {
        view->PanelChanged(panel);
    }
}

}  // namespace ostrevin
