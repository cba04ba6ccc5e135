// The dialog that names the program and its version.
#pragma once

#include "controls/Boxes.h"
#include "controls/Form.h"
#include "controls/Inputs.h"

namespace ostrevin {

class frmAbout : public Form {
  public:
    explicit frmAbout(Toolkit& toolkit);
    ~frmAbout() override;

    Frame Frame1{this, "Frame1"};
    PictureBox picLogo{&Frame1, "picLogo"};
    Label lblVersion{&Frame1, "lblVersion"};
    Label Label1{&Frame1, "Label1"};
    CommandButton cmdOK{this, "cmdOK"};

  protected:
    void Form_Load() override;
};

}  // namespace ostrevin
