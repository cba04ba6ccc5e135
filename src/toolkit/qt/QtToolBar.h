// Tool bars.
#pragma once

#include <map>

#include <QAction>

#include "controls/ToolBar.h"
#include "toolkit/qt/QtToolkit.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

class QtToolBar final : public WidgetView<ToolBarView, ToolBar> {
  public:
    QtToolBar(QtToolkit& toolkit, ToolBar& bar, QWidget* parent);
    void ButtonChanged(const ToolButton& button) override;

  private:
    std::map<const ToolButton*, QAction*> actions_;
};

}  // namespace ostrevin::qt
