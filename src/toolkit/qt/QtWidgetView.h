// What the views of all controls share: text conversion, place and visibility.
#pragma once

#include <string>
#include <string_view>

#include <QString>
#include <QWidget>

#include "controls/Container.h"
#include "controls/ShownText.h"

namespace ostrevin::qt {

[[nodiscard]] inline QString Text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Of a text that is not our own, what a widget shows.
[[nodiscard]] inline QString Shown(std::string_view utf8) {
    return Text(ShownText(utf8));
}

/// Puts a widget where its control is.
void Place(QWidget& widget, const Control& control);

/// Shows or hides, enables or disables a widget as its control is.
void ApplyState(QWidget& widget, const Control& control);

/// A view that shows a control with one widget, which belongs to the widget of the control's container.
template <typename View, typename Shown>
class WidgetView : public View {
  public:
    explicit WidgetView(Shown& control) : control_(control) {}
    ~WidgetView() override { control_.Attach(nullptr); }

    void Moved() override { Place(*widget_, control_); }
    void StateChanged() override {
        // What is hidden loses the focus; shown again, it has it as before.
        const bool focused = widget_->window()->focusWidget() == widget_;
        ApplyState(*widget_, control_);
        if (control_.Visible() && focusLeft_) {
            widget_->setFocus();
        }
        focusLeft_ = focused && !control_.Visible();
    }
    [[nodiscard]] QWidget& Widget() const { return *widget_; }

  protected:
    /// Takes the widget into use; called by the view's constructor, which keeps its own pointer of its own
    /// type.
    void Show(QWidget& widget) {
        widget_ = &widget;
        widget.setObjectName(Text(control_.Name()));
        if (!control_.AccessibleName().empty()) {
            widget.setAccessibleName(Text(control_.AccessibleName()));
        }
        if (!control_.FontName().empty()) {
            QFont font = widget.font();
            font.setFamily(Text(control_.FontName()));
            widget.setFont(font);
        }
        control_.Attach(this);
        Moved();
        StateChanged();
    }
    [[nodiscard]] Shown& Control() const { return control_; }

  private:
    Shown& control_;
    QWidget* widget_ = nullptr;
    bool focusLeft_ = false;
};

}  // namespace ostrevin::qt
