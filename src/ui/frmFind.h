// Asks for the text to look for in a list.
#pragma once

#include "controls/Form.h"
#include "controls/Inputs.h"

namespace ostrevin {

/// Its button hides it; the text is there until it is unloaded. Closed in any other way it holds none.
class frmFind : public Form {
  public:
    explicit frmFind(Toolkit& toolkit);
    ~frmFind() override;

    // The controls, in tab order.
    Label Label1{this, "Label1"};
    TextBox txtFind{this, "txtFind"};
    CommandButton cmdFind{this, "cmdFind"};

  protected:
    void Form_Unload() override;
};

}  // namespace ostrevin
