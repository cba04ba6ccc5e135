#include "toolkit/qt/QtToolBar.h"

#include <QToolBar>
#include <QToolButton>

#include "toolkit/qt/QtPictures.h"

namespace ostrevin::qt {

QtToolBar::QtToolBar(QtToolkit& toolkit, ToolBar& bar, QWidget* parent) : WidgetView(bar) {
    constexpr int kIconSize = 24;
    auto* widget = new QToolBar(parent);
    widget->setIconSize({kIconSize, kIconSize});
    for (ToolButton& button : bar.Buttons()) {
        QAction* action = widget->addAction(IconOf(bar.Images(), button.Image()), Text(button.ToolTipText()));
        action->setObjectName(Text(button.Key()));
        action->setCheckable(button.ButtonStyle() == ToolButton::Style::Check);
        actions_[&button] = action;
        QObject::connect(action, &QAction::triggered, widget, [this, &toolkit, &button] {
            // Qt has changed the button by itself; whether it is pressed is the control's to say.
            ButtonChanged(button);
            toolkit.Deliver([&] { Control().Click(button); });
        });
    }
    for (QToolButton* button : widget->findChildren<QToolButton*>()) {
        // The filter is in no menu, so the keyboard has to get here.
        button->setFocusPolicy(Qt::TabFocus);
    }
    Show(*widget);
    for (const ToolButton& button : bar.Buttons()) {
        ButtonChanged(button);
    }
}

void QtToolBar::ButtonChanged(const ToolButton& button) {
    QAction* action = actions_.at(&button);
    action->setEnabled(button.Enabled());
    action->setChecked(button.Value() == ToolButton::kPressed);
}

}  // namespace ostrevin::qt
