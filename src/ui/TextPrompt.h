// A dialog that asks for one text.
#pragma once

#include <string>

#include "controls/Form.h"
#include "controls/Inputs.h"

namespace ostrevin {

/// Its button hides it; the text is there until it is unloaded. Closed in any other way it holds none.
class TextPrompt : public Form {
  public:
    ~TextPrompt() override;

  protected:
    struct Texts {
        std::string form;  ///< the form's name, as the next two of its controls
        std::string box;
        std::string button;
        std::string title;  ///< what a person reads, and on the button
        std::string question;
    };
    TextPrompt(Toolkit& toolkit, const Texts& texts);
    void Form_Unload() override;

    // The controls, in tab order.
    Label Label1{this, "Label1"};
    TextBox box_;
    CommandButton button_;
};

}  // namespace ostrevin
