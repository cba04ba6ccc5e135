// What dialogs are made of.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include "controls/Inputs.h"
#include "toolkit/qt/QtToolkit.h"
#include "toolkit/qt/QtWidgetView.h"

namespace ostrevin::qt {

class QtLabel final : public WidgetView<CaptionView, Label> {
  public:
    QtLabel(Label& label, QWidget* parent);
    void CaptionChanged() override;

  private:
    QLabel* widget_;
};

class QtCommandButton final : public WidgetView<CaptionView, CommandButton> {
  public:
    QtCommandButton(QtToolkit& toolkit, CommandButton& button, QWidget* parent);
    void CaptionChanged() override;

  private:
    QPushButton* widget_;
};

class QtCheckBox final : public WidgetView<CheckBoxView, CheckBox> {
  public:
    QtCheckBox(QtToolkit& toolkit, CheckBox& box, QWidget* parent);
    void CaptionChanged() override;
    void ValueChanged() override;

  private:
    QCheckBox* widget_;
};

class QtTextBox final : public WidgetView<TextBoxView, TextBox> {
  public:
    QtTextBox(QtToolkit& toolkit, TextBox& box, QWidget* parent);
    void TextChanged() override;

  private:
    QLineEdit* widget_;
};

class QtComboBox final : public WidgetView<ComboBoxView, ComboBox> {
  public:
    QtComboBox(QtToolkit& toolkit, ComboBox& box, QWidget* parent);
    void ItemsChanged() override;
    void SelectionChanged() override;

  private:
    QComboBox* widget_;
};

class QtProgressBar final : public WidgetView<ProgressBarView, ProgressBar> {
  public:
    QtProgressBar(ProgressBar& bar, QWidget* parent);
    void ValueChanged() override;

  private:
    QProgressBar* widget_;
};

}  // namespace ostrevin::qt
