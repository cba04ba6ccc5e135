// A strip of tabs with an area below it, over which the form puts one page for each tab.
#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"
#include "controls/Event.h"
#include "controls/ImageList.h"
#include "controls/PixelRect.h"

namespace ostrevin {

class TabStripView : public ControlView {
  public:
    virtual void SelectionChanged() = 0;
    /// The area below the tabs, from the top left corner of the strip.
    [[nodiscard]] virtual PixelRect ClientArea() const = 0;
};

/// Tabs are counted from 1; the first is selected until another is.
class TabStrip : public Control {
  public:
    struct Tab {
        std::string caption;
        std::string image;
    };

    using Control::Control;
    void Accept(ControlVisitor& visitor) override;
    void Attach(TabStripView* view) { SetView(view); }

    [[nodiscard]] ImageList* Images() const { return images_; }
    void SetImages(ImageList* images) { images_ = images; }
    void Add(const std::string& caption, const std::string& image) { tabs_.push_back({caption, image}); }
    [[nodiscard]] const std::vector<Tab>& Tabs() const { return tabs_; }
    [[nodiscard]] int TabCount() const { return static_cast<int>(tabs_.size()); }

    [[nodiscard]] bool Selected(int tab) const { return tab == selected_; }
    [[nodiscard]] int SelectedTab() const { return selected_; }
    /// Selects a tab and raises Click, also for the tab that is selected already. Throws ControlError when
    /// there is no such tab.
    void Select(int tab);

    /// The area below the tabs, in the container's scale and from its top left corner.
    [[nodiscard]] double ClientLeft();
    [[nodiscard]] double ClientTop();
    [[nodiscard]] double ClientWidth();
    [[nodiscard]] double ClientHeight();

    Event<> Click;

  private:
    [[nodiscard]] PixelRect ClientArea();

    ImageList* images_ = nullptr;
    std::vector<Tab> tabs_;
    int selected_ = 1;
};

}  // namespace ostrevin
