#include "controls/Boxes.h"

#include "controls/ControlVisitor.h"

namespace ostrevin {

void Frame::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void PictureBox::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void PictureBox::SetPicture(const std::string& name) {
    picture_ = name;
    if (auto* view = static_cast<PictureBoxView*>(AttachedView())) {
        view->PictureChanged();
    }
}

}  // namespace ostrevin
