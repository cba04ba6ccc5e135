#include "toolkit/qt/QtInputs.h"

#include <cmath>

#include "controls/Form.h"

namespace ostrevin::qt {

QtLabel::QtLabel(Label& label, QWidget* parent) : WidgetView(label), widget_(new QLabel(parent)) {
    widget_->setTextFormat(Qt::PlainText);
    Show(*widget_);
    CaptionChanged();
}

void QtLabel::CaptionChanged() {
    widget_->setText(Shown(Control().Caption()));
}

QtCommandButton::QtCommandButton(QtToolkit& toolkit, CommandButton& button, QWidget* parent)
    : WidgetView(button), widget_(new QPushButton(parent)) {
    QObject::connect(widget_, &QPushButton::clicked, widget_,
                     [&] { toolkit.Deliver([&button] { button.Press(); }); });
    widget_->setDefault(button.ParentForm().DefaultButton() == &button);
    Show(*widget_);
    CaptionChanged();
}

void QtCommandButton::CaptionChanged() {
    widget_->setText(Shown(Control().Caption()));
}

QtCheckBox::QtCheckBox(QtToolkit& toolkit, CheckBox& box, QWidget* parent)
    : WidgetView(box), widget_(new QCheckBox(parent)) {
    QObject::connect(widget_, &QCheckBox::clicked, widget_, [&](bool checked) {
        toolkit.Deliver([&] { box.SetValue(checked ? CheckBox::kChecked : CheckBox::kUnchecked); });
    });
    Show(*widget_);
    CaptionChanged();
    ValueChanged();
}

void QtCheckBox::CaptionChanged() {
    widget_->setText(Shown(Control().Caption()));
}

void QtCheckBox::ValueChanged() {
    const int value = Control().Value();
    widget_->setTristate(value == CheckBox::kGrayed);
    widget_->setCheckState(value == CheckBox::kGrayed    ? Qt::PartiallyChecked
                           : value == CheckBox::kChecked ? Qt::Checked
                                                         : Qt::Unchecked);
}

QtTextBox::QtTextBox(QtToolkit& toolkit, TextBox& box, QWidget* parent)
    : WidgetView(box), widget_(new QLineEdit(parent)) {
    QObject::connect(widget_, &QLineEdit::textEdited, widget_,
                     [&](const QString& text) { toolkit.Deliver([&] { box.Type(text.toStdString()); }); });
    Show(*widget_);
    TextChanged();
}

void QtTextBox::TextChanged() {
    widget_->setText(Text(Control().Text()));
}

QtComboBox::QtComboBox(QtToolkit& toolkit, ComboBox& box, QWidget* parent)
    : WidgetView(box), widget_(new QComboBox(parent)) {
    QObject::connect(widget_, &QComboBox::activated, widget_,
                     [&](int index) { toolkit.Deliver([&] { box.SetListIndex(index); }); });
    Show(*widget_);
    ItemsChanged();
}

void QtComboBox::ItemsChanged() {
    for (int i = widget_->count(); i < static_cast<int>(Control().Items().size()); ++i) {
        widget_->addItem(Shown(Control().Items()[static_cast<std::size_t>(i)]));
    }
    SelectionChanged();
}

void QtComboBox::SelectionChanged() {
    widget_->setCurrentIndex(Control().ListIndex());
}

QtProgressBar::QtProgressBar(ProgressBar& bar, QWidget* parent)
    : WidgetView(bar), widget_(new QProgressBar(parent)) {
    constexpr int kSteps = 1000;
    widget_->setRange(0, kSteps);
    widget_->setTextVisible(false);
    Show(*widget_);
    ValueChanged();
}

void QtProgressBar::ValueChanged() {
    const float range = Control().Max() - Control().Min();
    const float part = range > 0 ? (Control().Value() - Control().Min()) / range : 0;
    widget_->setValue(static_cast<int>(std::lround(part * static_cast<float>(widget_->maximum()))));
}

}  // namespace ostrevin::qt
