#include "controls/Form.h"

#include <cmath>
#include <utility>

#include "controls/Inputs.h"

namespace ostrevin {

Form::Form(Toolkit& toolkit, std::string name) : Container(nullptr, std::move(name)), toolkit_(toolkit) {}

Form::~Form() = default;

void Form::Accept(ControlVisitor& /*visitor*/) {}

void Form::SetCaption(const std::string& caption) {
    caption_ = caption;
    if (view_ != nullptr) {
        view_->CaptionChanged();
    }
}

void Form::SetMinPixelSize(int width, int height) {
    minPixelWidth_ = width;
    minPixelHeight_ = height;
}

double Form::ScaleWidth() {
    return ScaleX(Width(), ScaleMode::Twip, ScaleMode());
}

double Form::ScaleHeight() {
    return ScaleY(Height(), ScaleMode::Twip, ScaleMode());
}

void Form::Load() {
    if (view_ != nullptr) {
        return;
    }
    PlaceAligned();
    view_ = toolkit_.CreateView(*this);
    Form_Load();
    Form_Resize();
}

void Form::Show(ShowStyle style) {
    Load();
    if (style == ShowStyle::Modal) {
        view_->ShowModal();
    } else {
        view_->Show();
    }
}

void Form::Hide() {
    if (view_ != nullptr) {
        view_->Hide();
    }
}

void Form::Unload() {
    if (view_ == nullptr) {
        return;
    }
    // The window goes also when Form_Unload fails, and no event reaches the form from the window on its way
    // out.
    const std::unique_ptr<FormView> view = std::move(view_);
    Form_Unload();
}

void Form::Close() {
    if (Form_QueryUnload()) {
        Unload();
    }
}

void Form::Escape() {
    if (cancelButton_ != nullptr) {
        cancelButton_->Press();
    } else if (borderStyle_ == BorderStyle::FixedDialog) {
        Close();
    }
}

void Form::Refresh() {
    if (view_ != nullptr) {
        view_->Refresh();
    }
}

void Form::MsgBox(const std::string& text, const std::string& caption) {
    toolkit_.MsgBox(this, text, caption);
}

void Form::Resized(int pixelWidth, int pixelHeight, enum WindowState state) {
    windowState_ = state;
    if (view_ == nullptr) {
        return;
    }
    if (state != WindowState::Minimized) {
        resizing_ = true;
        Move(Left(), Top(), ScaleX(pixelWidth, ScaleMode::Pixel, ScaleMode::Twip),
             ScaleY(pixelHeight, ScaleMode::Pixel, ScaleMode::Twip));
        resizing_ = false;
        PlaceAligned();
    }
    Form_Resize();
}

void Form::OnMoved() {
    if (view_ != nullptr && !resizing_) {
        view_->SizeChanged();
    }
}

void Form::PlaceAligned() {
    double top = 0;
    double bottom = ScaleHeight();
    for (Control* control : Controls()) {
        if (control->Alignment() == Align::Top) {
            control->Move(0, top, ScaleWidth(), control->Height());
            top += control->Height();
        } else if (control->Alignment() == Align::Bottom) {
            bottom -= control->Height();
            control->Move(0, bottom, ScaleWidth(), control->Height());
        }
    }
}

}  // namespace ostrevin
