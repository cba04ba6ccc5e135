#include "ui/frmFind.h"

namespace ostrevin {

frmFind::frmFind(Toolkit& toolkit) : Form(toolkit, "frmFind") {
    SetBorderStyle(BorderStyle::FixedDialog);
    SetCaption("Find");
    Move(0, 0, 5400, 1650);
    Label1.SetCaption("Find What");
    Label1.Move(150, 120, 5100, 330);
    txtFind.SetAccessibleName(Label1.Caption());
    txtFind.Move(150, 480, 5100, 450);
    cmdFind.SetCaption("Find");
    cmdFind.SetDefault();
    cmdFind.Move(3750, 1050, 1500, 450);
    cmdFind.Click = [this] { Hide(); };
}

frmFind::~frmFind() {
    DropView();
}

void frmFind::Form_Unload() {
    txtFind.SetText("");
}

}  // namespace ostrevin
