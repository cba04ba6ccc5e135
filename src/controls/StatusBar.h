// A status bar: panels with a text each.
#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"

namespace ostrevin {

class StatusBarView : public ControlView {
  public:
    virtual void PanelChanged(int panel) = 0;
};

/// Panels are counted from 1.
class StatusBar : public Control {
  public:
    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(StatusBarView* view) { SetView(view); }

    /// width is in pixels; 0 takes what the others leave.
    void AddPanel(int pixelWidth) { panels_.push_back({{}, pixelWidth}); }
    [[nodiscard]] int PanelCount() const { return static_cast<int>(panels_.size()); }
    [[nodiscard]] int PanelPixelWidth(int panel) const { return At(panel).pixelWidth; }
    /// Throw ControlError when there is no such panel.
    [[nodiscard]] const std::string& PanelText(int panel) const { return At(panel).text; }
    void SetPanelText(int panel, const std::string& text);

  private:
    struct Panel {
        std::string text;
        int pixelWidth = 0;
    };
    [[nodiscard]] const Panel& At(int panel) const;

    std::vector<Panel> panels_;
};

}  // namespace ostrevin
