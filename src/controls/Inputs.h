// What dialogs are made of: labels, text boxes, buttons, check boxes, drop-down lists, progress bars.
#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"
#include "controls/Event.h"

namespace ostrevin {

class CaptionView : public ControlView {
  public:
    virtual void CaptionChanged() = 0;
};

/// A line of text, shown as it stands. (In the caption of a button or a check box, "&" stands before the
/// letter that chooses it.)
class Label : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(CaptionView* view) { SetView(view); }

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption);

  private:
    std::string caption_;
};

class CommandButton : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(CaptionView* view) { SetView(view); }

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption);
    /// Makes it the button that Enter presses in its form. To be called before the form is loaded.
    void SetDefault();
    /// Makes it the button that Escape presses in its form. To be called before the form is loaded.
    void SetCancel();

    Event<> Click;

    // Called by the view.

    /// A person pressed it; nothing comes of that while it is disabled.
    void Press();

  private:
    std::string caption_;
};

class CheckBoxView : public CaptionView {
  public:
    virtual void ValueChanged() = 0;
};

class CheckBox : public Control {
  public:
    static constexpr int kUnchecked = 0;
    static constexpr int kChecked = 1;
    static constexpr int kGrayed = 2;

    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(CheckBoxView* view) { SetView(view); }

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption);
    [[nodiscard]] int Value() const { return value_; }
    /// Raises Click when the value changes.
    void SetValue(int value);

    Event<> Click;

  private:
    std::string caption_;
    int value_ = kUnchecked;
};

class TextBoxView : public ControlView {
  public:
    /// The text was changed by code.
    virtual void TextChanged() = 0;
};

/// One line of text to type in.
class TextBox : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(TextBoxView* view) { SetView(view); }

    [[nodiscard]] const std::string& Text() const { return text_; }
    /// Raises Change when the text changes.
    void SetText(const std::string& text);

    Event<> Change;

    // Called by the view.

    /// A person changed the text: it is taken over, then Change is raised.
    void Type(const std::string& text);

  private:
    std::string text_;
};

class ComboBoxView : public ControlView {
  public:
    virtual void ItemsChanged() = 0;
    virtual void SelectionChanged() = 0;
};

/// A drop-down list. Places are counted from 0.
class ComboBox : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(ComboBoxView* view) { SetView(view); }

    /// Adds a text at the end.
    void AddItem(const std::string& text);
    [[nodiscard]] const std::vector<std::string>& Items() const { return items_; }
    /// -1 when nothing is selected.
    [[nodiscard]] int ListIndex() const { return listIndex_; }
    /// Raises Click when the selection changes. Throws ControlError when there is no such place.
    void SetListIndex(int index);
    /// The selected text, or "".
    [[nodiscard]] std::string Text() const;

    Event<> Click;

  private:
    std::vector<std::string> items_;
    int listIndex_ = -1;
};

class ProgressBarView : public ControlView {
  public:
    /// Min, Max or Value changed.
    virtual void ValueChanged() = 0;
};

class ProgressBar : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(ProgressBarView* view) { SetView(view); }

    [[nodiscard]] float Min() const { return min_; }
    [[nodiscard]] float Max() const { return max_; }
    [[nodiscard]] float Value() const { return value_; }
    void SetMin(float min);
    void SetMax(float max);
    /// Throws ControlError for a value that is not from Min to Max.
    void SetValue(float value);

  private:
    void Changed();

    float min_ = 0;
    float max_ = 100;
    float value_ = 0;
};

}  // namespace ostrevin
