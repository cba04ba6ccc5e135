#include "controls/TabStrip.h"

#include "controls/Container.h"
#include "controls/ControlVisitor.h"

namespace ostrevin {

void TabStrip::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void TabStrip::Select(int tab) {
    if (tab < 1 || tab > TabCount()) {
        throw ControlError("Index out of bounds: " + std::to_string(tab));
    }
    selected_ = tab;
    if (auto* view = static_cast<TabStripView*>(AttachedView())) {
        view->SelectionChanged();
    }
    Click.Raise();
}

PixelRect TabStrip::ClientArea() {
    if (const auto* view = static_cast<TabStripView*>(AttachedView())) {
        return view->ClientArea();
    }
    // What a strip with one row of tabs leaves, where nothing shows it.
    constexpr int kTabHeight = 24;
    constexpr int kBorder = 2;
    const ScaleMode scale = Parent()->ScaleMode();
    const auto width = static_cast<int>(Parent()->ScaleX(Width(), scale, ScaleMode::Pixel));
    const auto height = static_cast<int>(Parent()->ScaleY(Height(), scale, ScaleMode::Pixel));
    return {kBorder, kTabHeight, width - 2 * kBorder, height - kTabHeight - kBorder};
}

double TabStrip::ClientLeft() {
    return Left() + Parent()->ScaleX(ClientArea().left, ScaleMode::Pixel, Parent()->ScaleMode());
}

double TabStrip::ClientTop() {
    return Top() + Parent()->ScaleY(ClientArea().top, ScaleMode::Pixel, Parent()->ScaleMode());
}

double TabStrip::ClientWidth() {
    return Parent()->ScaleX(ClientArea().width, ScaleMode::Pixel, Parent()->ScaleMode());
}

double TabStrip::ClientHeight() {
    return Parent()->ScaleY(ClientArea().height, ScaleMode::Pixel, Parent()->ScaleMode());
}

}  // namespace ostrevin
