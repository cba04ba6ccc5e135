// The system's dialog that asks for a file, as a form keeps it at hand.
#pragma once

#include <string>

namespace ostrevin {

class Form;

class CommonDialog {
  public:
    /// The form is the dialog's owner.
    explicit CommonDialog(Form& owner) : owner_(owner) {}

    /// What the dialog begins with, and what was chosen in it.
    [[nodiscard]] const std::string& FileName() const { return fileName_; }
    void SetFileName(const std::string& name) { fileName_ = name; }
    /// Pairs of a description and a pattern, all separated by "|".
    void SetFilter(const std::string& filter) { filter_ = filter; }
    void SetDialogTitle(const std::string& title) { title_ = title; }

    /// Asks where to save. FileName stays as it was when that is cancelled.
    void ShowSave();

  private:
    Form& owner_;
    std::string fileName_;
    std::string filter_;
    std::string title_;
};

}  // namespace ostrevin
