#include "controls/Boxes.h"

#include <cmath>
#include <utility>

#include "controls/ControlVisitor.h"

namespace ostrevin {

void Frame::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void PictureBox::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void PictureBox::SetPictureName(const std::string& name) {
    pictureName_ = name;
    PictureChanged();
}

void PictureBox::SetPicture(PicturePtr picture) {
    picture_ = std::move(picture);
    PictureChanged();
}

void PictureBox::PictureChanged() {
    if (auto* view = static_cast<PictureBoxView*>(AttachedView())) {
        view->PictureChanged();
    }
}

PixelRect PictureBox::WindowRect() {
    if (const auto* view = static_cast<PictureBoxView*>(AttachedView())) {
        return view->WindowRect();
    }
    return {0, 0, static_cast<int>(std::lround(ScaleX(ScaleWidth(), ScaleMode(), ScaleMode::Pixel))),
            static_cast<int>(std::lround(ScaleY(ScaleHeight(), ScaleMode(), ScaleMode::Pixel)))};
}

}  // namespace ostrevin
