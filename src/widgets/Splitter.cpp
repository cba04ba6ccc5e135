#include "widgets/Splitter.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrevin {
namespace {

constexpr int kLeftButton = 1;

/// The nearest whole number of pixels; a half goes to the even one.
std::int32_t Rounded(double pixels) {
    constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(std::nearbyint(pixels), kLeast, kMost));
}

}  // namespace

Splitter::Splitter(Toolkit& toolkit) : toolkit_(toolkit) {
    LoadSizingCursor();
}

void Splitter::SetVisible(int index, bool visible) {
    if (Bound()) {
        Pane& pane = PaneOf(index);
        pane.control->SetVisible(visible);
        pane.visible = visible;
    }
    Resize();
}

void Splitter::SetMaintainAspectRatio(int index, bool maintain) {
    PaneOf(index).maintainAspectRatio = maintain;
    Resize();
}

void Splitter::SetOrientation(std::int32_t orientation) {
    if (orientation == orientation_) {
        return;
    }
    orientation_ = orientation;
    cursor_.reset();
    LoadSizingCursor();
}

void Splitter::LoadSizingCursor() {
    cursor_ = toolkit_.LoadCursor(SideBySide() ? CursorShape::SizeWestEast : CursorShape::SizeNorthSouth);
}

void Splitter::Bind(Control& first, Control& second) {
    first_.control = &first;
    second_.control = &second;
    for (Pane* pane : {&first_, &second_}) {
        pane->aspectRatio = pane->control->Width() / pane->control->Height();
    }
    if (Bound()) {
        position_ = std::max(Rounded(TotalPixels() / 2 - splitterSize_ / 2.0), 0);
    }
    Resize();
}

void Splitter::Resize() {
    if (!Bound()) {
        return;
    }
    position_ = std::max(position_, 0);
    const double total = TotalPixels();
    if (position_ > total) {
        position_ = Rounded(total - 1);
    }
    LimitPosition();

    const double width = container_->ScaleWidth();
    const double height = container_->ScaleHeight();
    if (!BothShown()) {
        Place(first_, {0, 0, width, height});
        if (SideBySide()) {  // stacked, the second keeps its place
            Place(second_, {0, 0, width, height});
        }
        return;
    }
    const double firstSize = FromPixels(position_);
    const double secondStart = FromPixels(BarEnd());
    if (SideBySide()) {
        Place(first_, {0, 0, firstSize, height});
        Place(second_, {std::min(secondStart, width), 0, width - secondStart, height});
    } else {
        Place(first_, {0, 0, width, firstSize});
        Place(second_, {0, std::min(secondStart, height), width, height - secondStart});
    }
}

/// Applies the bounds of the sizes, each over those before it: the first control's, the second's, and the
/// edge of the box.
void Splitter::LimitPosition() {
    if (first_.minSize >= 0 && first_.minSize > position_) {
        position_ = first_.minSize;
    }
    if (first_.maxSize >= 0 && first_.maxSize < position_) {
        position_ = first_.maxSize;
    }
    const double rest = TotalPixels() - BarEnd();
    if (second_.minSize >= 0 && second_.minSize > rest) {
        position_ = Rounded(position_ - (second_.minSize - rest));
    }
    if (second_.maxSize >= 0 && second_.maxSize < rest) {
        position_ = Rounded(position_ + (rest - second_.maxSize));
    }
    position_ = std::max(position_, 0);
}

/// Moves a control into its part of the container, or to the middle of it if it keeps its ratio.
void Splitter::Place(const Pane& pane, Box box) {
    if (pane.maintainAspectRatio) {
        const double width = std::min(box.width, box.height * pane.aspectRatio);
        const double height = std::min(box.height, box.width / pane.aspectRatio);
        box = {box.left + (box.width - width) / 2, box.top + (box.height - height) / 2, width, height};
    }
    pane.control->Move(box.left, box.top, std::max(box.width, 0.0), std::max(box.height, 0.0));
}

void Splitter::MouseDown(int button, int /*shift*/, double x, double y) {
    if ((button & kLeftButton) == 0 || !BothShown() || !IsOnBar(x, y)) {
        return;
    }
    const PixelRect area = container_->WindowRect();
    toolkit_.ClipCursor(&area);
    dragOffset_ = static_cast<float>(ToPixels(SideBySide() ? x : y) - position_);
    dragging_ = true;
}

void Splitter::MouseMove(int /*button*/, int /*shift*/, double x, double y) {
    if (BothShown() && (dragging_ || IsOnBar(x, y))) {
        toolkit_.SetCursor(*cursor_);
    }
    if (dragging_) {
        position_ = Rounded(ToPixels(SideBySide() ? x : y) - double{dragOffset_});
        LimitPosition();
        Resize();
    }
}

void Splitter::MouseUp(int /*button*/, int /*shift*/, double /*x*/, double /*y*/) {
    if (dragging_) {
        toolkit_.ClipCursor(nullptr);
        dragging_ = false;
    }
}

bool Splitter::Bound() const {
    return container_ != nullptr && first_.control != nullptr && second_.control != nullptr;
}

bool Splitter::BothShown() const {
    return Bound() && first_.visible && second_.visible;
}

double Splitter::ToPixels(double length) const {
    return SideBySide() ? container_->ScaleX(length, container_->ScaleMode(), ScaleMode::Pixel)
                        : container_->ScaleY(length, container_->ScaleMode(), ScaleMode::Pixel);
}

double Splitter::FromPixels(double pixels) const {
    return SideBySide() ? container_->ScaleX(pixels, ScaleMode::Pixel, container_->ScaleMode())
                        : container_->ScaleY(pixels, ScaleMode::Pixel, container_->ScaleMode());
}

double Splitter::TotalPixels() const {
    return ToPixels(SideBySide() ? container_->ScaleWidth() : container_->ScaleHeight());
}

bool Splitter::IsOnBar(double x, double y) const {
    const double place = SideBySide() ? x : y;
    return place >= FromPixels(position_) && place < FromPixels(BarEnd());
}

}  // namespace ostrevin
