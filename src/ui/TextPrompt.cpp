#include "ui/TextPrompt.h"

namespace ostrevin {

TextPrompt::TextPrompt(Toolkit& toolkit, const Texts& texts)
    : Form(toolkit, texts.form), box_(this, texts.box), button_(this, texts.button) {
    SetBorderStyle(BorderStyle::FixedDialog);
    SetCaption(texts.title);
    Move(0, 0, 5400, 1650);
    Label1.SetCaption(texts.question);
    Label1.Move(150, 120, 5100, 330);
    box_.SetAccessibleName(texts.question);
    box_.Move(150, 480, 5100, 450);
    button_.SetCaption(texts.title);
    button_.SetDefault();
    button_.Move(3750, 1050, 1500, 450);
    button_.Click = [this] { Hide(); };
}

TextPrompt::~TextPrompt() {
    DropView();
}

void TextPrompt::Form_Unload() {
    box_.SetText("");
}

}  // namespace ostrevin
