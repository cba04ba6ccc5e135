// The picture that stands on the screen while the accounts are read.
#pragma once

#include "controls/Boxes.h"
#include "controls/Form.h"

namespace ostrevin {

class frmSplash : public Form {
  public:
    explicit frmSplash(Toolkit& toolkit);
    ~frmSplash() override;

    PictureBox picSplash{this, "picSplash"};
};

}  // namespace ostrevin
