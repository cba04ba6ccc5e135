#include "controls/Boxes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/ControlVisitor.h"

namespace ostrevin {
namespace {

constexpr double kBorderPixels = 2;  // a line on either side

}  // namespace

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

double PictureBox::ScaleWidth() {
    const double border = bordered_ ? ScaleX(kBorderPixels, ScaleMode::Pixel, ScaleMode()) : 0;
    return std::max(Container::ScaleWidth() - border, 0.0);
}

double PictureBox::ScaleHeight() {
    const double border = bordered_ ? ScaleY(kBorderPixels, ScaleMode::Pixel, ScaleMode()) : 0;
    return std::max(Container::ScaleHeight() - border, 0.0);
}

PixelRect PictureBox::WindowRect() {
    if (const auto* view = static_cast<PictureBoxView*>(AttachedView())) {
        return view->WindowRect();
    }
    return {0, 0,
            static_cast<int>(std::lround(ScaleX(Container::ScaleWidth(), ScaleMode(), ScaleMode::Pixel))),
            static_cast<int>(std::lround(ScaleY(Container::ScaleHeight(), ScaleMode(), ScaleMode::Pixel)))};
}

}  // namespace ostrevin
