// Asks for the text to filter a list by.
#pragma once

#include "controls/Form.h"
#include "controls/Inputs.h"

namespace ostrevin {

/// Its button hides it; the text is there until it is unloaded. Closed in any other way it holds none.
class frmFilter : public Form {
  public:
    explicit frmFilter(Toolkit& toolkit);
    ~frmFilter() override;

    // The controls, in tab order.
    Label Label1{this, "Label1"};
    TextBox txtFilterString{this, "txtFilterString"};
    CommandButton cmdFilter{this, "cmdFilter"};

  protected:
    void Form_Unload() override;
};

}  // namespace ostrevin
