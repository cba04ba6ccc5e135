#include "controls/Control.h"

#include <cmath>
#include <utility>

#include "controls/Container.h"

namespace ostrevin {

Control::Control(Container* container, std::string name) : container_(container), name_(std::move(name)) {
    if (container_ != nullptr) {
        container_->Add(*this);
    }
}

Control::~Control() {
    if (container_ != nullptr) {
        container_->Remove(*this);
    }
}

Form& Control::ParentForm() {
    return container_->ParentForm();
}

void Control::Move(double left, double top, double width, double height) {
    if (left == left_ && top == top_ && width == width_ && height == height_) {
        return;
    }
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    if (view_ != nullptr) {
        view_->Moved();
    }
    OnMoved();
}

PixelRect Control::PlaceInPixels() const {
    const auto x = [this](double length) {
        return static_cast<int>(
            std::lround(container_->ScaleX(length, container_->ScaleMode(), ScaleMode::Pixel)));
    };
    const auto y = [this](double length) {
        return static_cast<int>(
            std::lround(container_->ScaleY(length, container_->ScaleMode(), ScaleMode::Pixel)));
    };
    const int left = x(left_);
    const int top = y(top_);
    return {left, top, x(left_ + width_) - left, y(top_ + height_) - top};
}

void Control::SetVisible(bool visible) {
    if (visible == visible_) {
        return;
    }
    visible_ = visible;
    if (view_ != nullptr) {
        view_->StateChanged();
    }
}

void Control::SetEnabled(bool enabled) {
    if (enabled == enabled_) {
        return;
    }
    enabled_ = enabled;
    if (view_ != nullptr) {
        view_->StateChanged();
    }
}

}  // namespace ostrevin
