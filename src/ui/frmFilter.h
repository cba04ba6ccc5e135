// Asks for the text to filter a list by.
#pragma once

#include "ui/TextPrompt.h"

namespace ostrevin {

class frmFilter : public TextPrompt {
  public:
    explicit frmFilter(Toolkit& toolkit)
        : TextPrompt(toolkit,
                     {"frmFilter", "txtFilterString", "cmdFilter", "Filter", "Enter text to filter"}) {}

    using TextPrompt::Label1;
    TextBox& txtFilterString = box_;
    CommandButton& cmdFilter = button_;
};

}  // namespace ostrevin
