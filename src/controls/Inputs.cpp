#include "controls/Inputs.h"

#include "controls/ControlVisitor.h"
#include "controls/Form.h"

namespace ostrevin {

void Label::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void Label::SetCaption(const std::string& caption) {
    caption_ = caption;
    if (auto* view = static_cast<CaptionView*>(AttachedView())) {
        view->CaptionChanged();
    }
}

void CommandButton::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void CommandButton::SetCaption(const std::string& caption) {
    caption_ = caption;
    if (auto* view = static_cast<CaptionView*>(AttachedView())) {
        view->CaptionChanged();
    }
}

void CommandButton::SetDefault() {
    ParentForm().SetDefaultButton(this);
}

void CommandButton::SetCancel() {
    ParentForm().SetCancelButton(this);
}

void CommandButton::Press() {
    if (Enabled()) {
        Click.Raise();
    }
}

void CheckBox::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void CheckBox::SetCaption(const std::string& caption) {
    caption_ = caption;
    if (auto* view = static_cast<CheckBoxView*>(AttachedView())) {
        view->CaptionChanged();
    }
}

void CheckBox::SetValue(int value) {
    if (value == value_) {
        return;
    }
    value_ = value;
    if (auto* view = static_cast<CheckBoxView*>(AttachedView())) {
        view->ValueChanged();
    }
    Click.Raise();
}

void TextBox::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void TextBox::SetText(const std::string& text) {
    if (text == text_) {
        return;
    }
    text_ = text;
    if (auto* view = static_cast<TextBoxView*>(AttachedView())) {
        view->TextChanged();
    }
    Change.Raise();
}

void TextBox::Type(const std::string& text) {
    if (text != text_) {
        text_ = text;
        Change.Raise();
    }
}

void ComboBox::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void ComboBox::AddItem(const std::string& text) {
    items_.push_back(text);
    if (auto* view = static_cast<ComboBoxView*>(AttachedView())) {
        view->ItemsChanged();
    }
}

void ComboBox::SetListIndex(int index) {
    if (index < -1 || index >= static_cast<int>(items_.size())) {
        throw ControlError("Invalid property value: " + std::to_string(index));
    }
    if (index == listIndex_) {
        return;
    }
    listIndex_ = index;
    if (auto* view = static_cast<ComboBoxView*>(AttachedView())) {
        view->SelectionChanged();
    }
    Click.Raise();
}

std::string ComboBox::Text() const {
    return listIndex_ < 0 ? std::string() : items_[static_cast<std::size_t>(listIndex_)];
}

void ProgressBar::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void ProgressBar::SetMin(float min) {
    min_ = min;
    Changed();
}

void ProgressBar::SetMax(float max) {
    max_ = max;
    Changed();
}

void ProgressBar::SetValue(float value) {
    if (!(value >= min_ && value <= max_)) {
        throw ControlError("Invalid property value: " + std::to_string(value));
    }
    value_ = value;
    Changed();
}

void ProgressBar::Changed() {
    if (auto* view = static_cast<ProgressBarView*>(AttachedView())) {
        view->ValueChanged();
    }
}

}  // namespace ostrevin
