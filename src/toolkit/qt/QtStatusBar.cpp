#include "toolkit/qt/QtStatusBar.h"

#include <QStatusBar>

namespace ostrevin::qt {

QtStatusBar::QtStatusBar(StatusBar& bar, QWidget* parent) : WidgetView(bar) {
    auto* widget = new QStatusBar(parent);
    for (int panel = 1; panel <= bar.PanelCount(); ++panel) {
        auto* label = new QLabel(widget);
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(bar.PanelPixelWidth(panel));
        widget->addWidget(label, bar.PanelPixelWidth(panel) == 0 ? 1 : 0);
        panels_.push_back(label);
    }
    Show(*widget);
    for (int panel = 1; panel <= bar.PanelCount(); ++panel) {
        PanelChanged(panel);
    }
}

void QtStatusBar::PanelChanged(int panel) {
    panels_[static_cast<std::size_t>(panel - 1)]->setText(Shown(Control().PanelText(panel)));
}

}  // namespace ostrevin::qt
