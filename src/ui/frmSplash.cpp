#include "ui/frmSplash.h"

namespace ostrevin {

frmSplash::frmSplash(Toolkit& toolkit) : Form(toolkit, "frmSplash") {
    SetBorderStyle(BorderStyle::None);
    SetCaption("Ostrevin");
    Move(0, 0, 6300, 3600);
    picSplash.Move(0, 0, 6300, 3600);
    picSplash.SetPictureName("splash");
}

frmSplash::~frmSplash() {
    DropView();
}

}  // namespace ostrevin
