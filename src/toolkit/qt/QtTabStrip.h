// Tab strips.
#pragma once

#include "controls/TabStrip.h"
#include "toolkit/qt/QtToolkit.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

class QtTabStrip final : public WidgetView<TabStripView, TabStrip> {
  public:
    QtTabStrip(QtToolkit& toolkit, TabStrip& tabs, QWidget* parent);
    void SelectionChanged() override;
    [[nodiscard]] PixelRect ClientArea() const override;

  private:
    bool updating_ = false;  // code, not a person, changes the selection
};

}  // namespace ostrevin::qt
