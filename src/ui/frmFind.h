// Asks for the text to look for in a list.
#pragma once

#include "ui/TextPrompt.h"

namespace ostrevin {

class frmFind : public TextPrompt {
  public:
    explicit frmFind(Toolkit& toolkit)
        : TextPrompt(toolkit, {"frmFind", "txtFind", "cmdFind", "Find", "Find What"}) {}

    using TextPrompt::Label1;
    TextBox& txtFind = box_;
    CommandButton& cmdFind = button_;
};

}  // namespace ostrevin
