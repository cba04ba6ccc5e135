// A tool bar: a row of buttons, addressed by key.
#pragma once

#include <deque>
#include <string>

#include "controls/Control.h"
#include "controls/Event.h"
#include "controls/ImageList.h"

namespace ostrevin {

class ToolBar;

class ToolButton {
  public:
    enum class Style {
        Default,
        Check,  ///< stays pressed until it is clicked again
    };
    /// Of a button that stays pressed.
    static constexpr int kUp = 0;
    static constexpr int kPressed = 1;

    ToolButton(ToolBar& bar, std::string key, std::string image, Style style);

    [[nodiscard]] const std::string& Key() const { return key_; }
    [[nodiscard]] const std::string& Image() const { return image_; }
    [[nodiscard]] Style ButtonStyle() const { return style_; }
    [[nodiscard]] const std::string& Tag() const { return tag_; }
    void SetTag(const std::string& tag) { tag_ = tag; }
    [[nodiscard]] const std::string& ToolTipText() const { return toolTipText_; }
    void SetToolTipText(const std::string& text) { toolTipText_ = text; }
    [[nodiscard]] int Value() const { return value_; }
    void SetValue(int value);
    [[nodiscard]] bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);

  private:
    ToolBar& bar_;
    std::string key_;
    std::string image_;
    Style style_;
    std::string tag_;
    std::string toolTipText_;
    int value_ = kUp;
    bool enabled_ = true;
};

class ToolBarView : public ControlView {
  public:
    /// Value or Enabled of a button changed.
    virtual void ButtonChanged(const ToolButton& button) = 0;
};

class ToolBar : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(ToolBarView* view) { SetView(view); }

    [[nodiscard]] ImageList* Images() const { return images_; }
    void SetImages(ImageList* images) { images_ = images; }
    ToolButton& Add(const std::string& key, const std::string& image, ToolButton::Style style);
    [[nodiscard]] std::deque<ToolButton>& Buttons() { return buttons_; }
    /// Throws ControlError when there is no such key.
    [[nodiscard]] ToolButton& Button(const std::string& key);

    Event<ToolButton&> ButtonClick;

    // Called by the view.

    /// A person clicked a button: one that stays pressed changes its value, then ButtonClick is raised.
    void Click(ToolButton& button);

  private:
    friend class ToolButton;
    void ButtonChanged(const ToolButton& button);

    ImageList* images_ = nullptr;
    std::deque<ToolButton> buttons_;
};

}  // namespace ostrevin
