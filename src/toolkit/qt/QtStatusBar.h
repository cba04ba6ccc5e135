// Status bars.
#pragma once

#include <vector>

#include <QLabel>

#include "controls/StatusBar.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

class QtStatusBar final : public WidgetView<StatusBarView, StatusBar> {
  public:
    QtStatusBar(StatusBar& bar, QWidget* parent);
    void PanelChanged(int panel) override;

  private:
    std::vector<QLabel*> panels_;
};

}  // namespace ostrevin::qt
