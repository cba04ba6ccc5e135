#include "report/frmAbout.h"

#include <string>

#include "report/Version.h"

namespace ostrevin {

frmAbout::frmAbout(Toolkit& toolkit) : Form(toolkit, "frmAbout") {
    constexpr char kFont[] = "Arial";
    SetBorderStyle(BorderStyle::FixedDialog);
    SetCaption("About Ostrevin");
    Frame1.SetCaption("Ostrevin");
    Frame1.SetFontName(kFont);
    picLogo.SetPictureName("logo");
    lblVersion.SetCaption("Version");
    Label1.SetCaption("Shows what the accounts of a Windows machine did.");
    cmdOK.SetCaption("OK");
    cmdOK.SetFontName(kFont);
    cmdOK.SetDefault();
    cmdOK.SetCancel();
    cmdOK.Click = [this] { Unload(); };

    Move(0, 0, 7860, 3180);
    Frame1.Move(180, 150, 7500, 2220);
    picLogo.Move(240, 480, 1440, 1440);
    lblVersion.Move(1920, 720, 5370, 345);
    Label1.Move(1920, 1260, 5370, 345);
    cmdOK.Move(6180, 2535, 1500, 465);
}

frmAbout::~frmAbout() {
    DropView();
}

void frmAbout::Form_Load() {
    lblVersion.SetCaption("Version : " + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) +
                          "." + std::to_string(kVersionRevision));
}

}  // namespace ostrevin
