#include "ui/frmFilter.h"

namespace ostrevin {

frmFilter::frmFilter(Toolkit& toolkit) : Form(toolkit, "frmFilter") {
    SetBorderStyle(BorderStyle::FixedDialog);
    SetCaption("Filter");
    Move(0, 0, 5400, 1650);
    Label1.SetCaption("Enter text to filter");
    Label1.Move(150, 120, 5100, 330);
    txtFilterString.SetAccessibleName(Label1.Caption());
    txtFilterString.Move(150, 480, 5100, 450);
    cmdFilter.SetCaption("Filter");
    cmdFilter.SetDefault();
    cmdFilter.Move(3750, 1050, 1500, 450);
    cmdFilter.Click = [this] { Hide(); };
}

frmFilter::~frmFilter() {
    DropView();
}

void frmFilter::Form_Unload() {
    txtFilterString.SetText("");
}

}  // namespace ostrevin
