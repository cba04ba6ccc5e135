#include "controls/Control.h"

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
