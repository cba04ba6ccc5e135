// Divides a box between two controls, with a bar between them that the user drags.
#pragma once

#include <cstdint>
#include <memory>

#include "controls/Boxes.h"
#include "controls/Cursor.h"
#include "controls/Toolkit.h"

namespace ostrevin {

/// The bar is the box's own background between the controls; the owner of the box forwards its mouse events
/// and its resize. Whatever is stored is in pixels. An index is 1 for the first control; any other means the
/// second. Container and controls must outlive their use here.
class Splitter {
  public:
    static constexpr std::int32_t kStacked = 1;     ///< the first above the second
    static constexpr std::int32_t kSideBySide = 2;  ///< the first to the left of the second

    explicit Splitter(Toolkit& toolkit);

    /// The thickness of the bar.
    void SetSplitterSize(std::int32_t size) { splitterSize_ = size; }
    [[nodiscard]] std::int32_t SplitterSize() const { return splitterSize_; }
    /// The size of the first control along the split. What is written takes effect with the next Resize.
    void SetSplitterPosition(std::int32_t position) { position_ = position; }
    [[nodiscard]] std::int32_t SplitterPosition() const { return position_; }
    void SetContainer(PictureBox& container) { container_ = &container; }

    [[nodiscard]] bool Visible(int index) const { return PaneOf(index).visible; }
    /// Without effect on the control and on what Visible tells until the splitter has a container and two
    /// controls.
    void SetVisible(int index, bool visible);
    /// Whether a control keeps the ratio of width and height that it had at Bind, in the middle of its place.
    [[nodiscard]] bool MaintainAspectRatio(int index) const { return PaneOf(index).maintainAspectRatio; }
    void SetMaintainAspectRatio(int index, bool maintain);
    /// The bounds of a control's size along the split; negative for none. They take effect with the next
    /// Resize or drag.
    [[nodiscard]] std::int32_t ControlMaxSize(int index) const { return PaneOf(index).maxSize; }
    void SetControlMaxSize(int index, std::int32_t size) { PaneOf(index).maxSize = size; }
    [[nodiscard]] std::int32_t ControlMinSize(int index) const { return PaneOf(index).minSize; }
    void SetControlMinSize(int index, std::int32_t size) { PaneOf(index).minSize = size; }
    /// kSideBySide; any other value means kStacked.
    void SetOrientation(std::int32_t orientation);
    [[nodiscard]] std::int32_t Orientation() const { return orientation_; }

    /// Takes the two controls and puts the bar in the middle.
    void Bind(Control& first, Control& second);
    /// Puts both controls into their places.
    void Resize();

    // The mouse on the container, in the container's scale.

    void MouseDown(int button, int shift, double x, double y);
    void MouseMove(int button, int shift, double x, double y);
    void MouseUp(int button, int shift, double x, double y);

  private:
    struct Pane {
        Control* control = nullptr;
        bool visible = true;
        bool maintainAspectRatio = false;
        std::int32_t maxSize = -1;
        std::int32_t minSize = -1;
        double aspectRatio = 0;  // width / height
    };
    /// In the container's scale.
    struct Box {
        double left;
        double top;
        double width;
        double height;
    };

    [[nodiscard]] const Pane& PaneOf(int index) const { return index == 1 ? first_ : second_; }
    [[nodiscard]] Pane& PaneOf(int index) { return index == 1 ? first_ : second_; }
    [[nodiscard]] bool SideBySide() const { return orientation_ == kSideBySide; }
    [[nodiscard]] bool Bound() const;
    [[nodiscard]] bool BothShown() const;

    // Lengths along the split. The end of the bar is in pixels.
    [[nodiscard]] double ToPixels(double length) const;
    [[nodiscard]] double FromPixels(double pixels) const;
    [[nodiscard]] double TotalPixels() const;
    [[nodiscard]] double BarEnd() const { return static_cast<double>(position_) + splitterSize_; }

    [[nodiscard]] bool IsOnBar(double x, double y) const;
    void LoadSizingCursor();
    void LimitPosition();
    static void Place(const Pane& pane, Box box);

    Toolkit& toolkit_;
    PictureBox* container_ = nullptr;
    Pane first_;
    Pane second_;
    std::int32_t splitterSize_ = 5;
    std::int32_t position_ = 0;
    std::int32_t orientation_ = kStacked;
    bool dragging_ = false;
    float dragOffset_ = 0;  // of the mouse from the position
    std::unique_ptr<Cursor> cursor_;
};

}  // namespace ostrevin
