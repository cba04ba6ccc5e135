// The base of all controls: name, tag, place, visibility.
//
// A control holds its state and raises events. Code changes the state, and the view that a toolkit attached
// shows it; a person acts, the view calls the control, and the control raises the event. Without a view all
// of this works, too.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "controls/PixelRect.h"

namespace ostrevin {

class Container;
class ControlVisitor;
class Form;

/// A wrong use of a control: an unknown key or index, a key that is there already.
class ControlError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What shows a control. A toolkit implements one for each kind.
class ControlView {
  public:
    ControlView() = default;
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;
    virtual ~ControlView() = default;
    /// Place or size changed.
    virtual void Moved() = 0;
    /// Visible or Enabled changed.
    virtual void StateChanged() = 0;
};

/// Where a control keeps itself on its form.
enum class Align { None, Top, Bottom };

/// Lengths are in the scale of the container.
class Control {
  public:
    /// Comes last on the container: behind the controls that are there already in the tab order, and over
    /// them where they overlap.
    Control(Container* container, std::string name);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    virtual void Accept(ControlVisitor& visitor) = 0;

    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] const std::string& Tag() const { return tag_; }
    void SetTag(const std::string& tag) { tag_ = tag; }
    /// What a screen reader calls it.
    [[nodiscard]] const std::string& AccessibleName() const { return accessibleName_; }
    void SetAccessibleName(const std::string& name) { accessibleName_ = name; }

    /// The typeface it asks for; empty for that of the system. Set before the form is loaded.
    [[nodiscard]] const std::string& FontName() const { return fontName_; }
    void SetFontName(const std::string& name) { fontName_ = name; }

    /// The container it stands on; null for a form.
    [[nodiscard]] Container* Parent() const { return container_; }
    /// The form it belongs to.
    [[nodiscard]] virtual Form& ParentForm();

    [[nodiscard]] double Left() const { return left_; }
    [[nodiscard]] double Top() const { return top_; }
    [[nodiscard]] double Width() const { return width_; }
    [[nodiscard]] double Height() const { return height_; }
    void SetWidth(double width) { Move(left_, top_, width, height_); }
    void SetHeight(double height) { Move(left_, top_, width_, height); }
    void Move(double left, double top, double width, double height);
    /// Its place on its container in whole pixels. The edges are rounded, not the sizes, so that neighbours
    /// stay neighbours.
    [[nodiscard]] PixelRect PlaceInPixels() const;

    /// An aligned control is placed by its form, which leaves only its height to it.
    [[nodiscard]] Align Alignment() const { return alignment_; }
    void SetAlignment(Align alignment) { alignment_ = alignment; }

    [[nodiscard]] bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    [[nodiscard]] bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);

  protected:
    [[nodiscard]] ControlView* AttachedView() const { return view_; }
    void SetView(ControlView* view) { view_ = view; }
    /// Place or size changed, told after the view.
    virtual void OnMoved() {}

  private:
    Container* container_;
    std::string name_;
    std::string tag_;
    std::string accessibleName_;
    std::string fontName_;
    double left_ = 0;
    double top_ = 0;
    double width_ = 0;
    double height_ = 0;
    Align alignment_ = Align::None;
    bool visible_ = true;
    bool enabled_ = true;
    ControlView* view_ = nullptr;
};

}  // namespace ostrevin
