#include "toolkit/qt/QtTabStrip.h"

#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>
#include <QTabWidget>

#include "toolkit/qt/QtPictures.h"

namespace ostrevin::qt {
namespace {

class TabWidget : public QTabWidget {
  public:
    using QTabWidget::QTabWidget;

    /// Asked of the style, since a widget that is not shown yet has not laid itself out.
    [[nodiscard]] QRect PageArea() const {
        QStyleOptionTabWidgetFrame option;
        initStyleOption(&option);
        option.rect = rect();
        return style()->subElementRect(QStyle::SE_TabWidgetTabContents, &option, this);
    }
};

}  // namespace

QtTabStrip::QtTabStrip(QtToolkit& toolkit, TabStrip& tabs, QWidget* parent) : WidgetView(tabs) {
    auto* widget = new TabWidget(parent);
    for (const TabStrip::Tab& tab : tabs.Tabs()) {
        // The pages are the form's own and stand over these.
        widget->addTab(new QWidget(widget), IconOf(tabs.Images(), tab.image), Text(tab.caption));
    }
    Show(*widget);
    widget->tabBar()->setAccessibleName(widget->accessibleName());  // which is what has the focus
    SelectionChanged();
    QObject::connect(widget, &QTabWidget::currentChanged, widget, [this, &toolkit](int index) {
        if (!updating_) {
            toolkit.Deliver([&] { Control().Select(index + 1); });
        }
    });
}

void QtTabStrip::SelectionChanged() {
    updating_ = true;
    static_cast<TabWidget&>(Widget()).setCurrentIndex(Control().SelectedTab() - 1);
    updating_ = false;
}

PixelRect QtTabStrip::ClientArea() const {
    const QRect area = static_cast<TabWidget&>(Widget()).PageArea();
    return {area.left(), area.top(), area.width(), area.height()};
}

}  // namespace ostrevin::qt
