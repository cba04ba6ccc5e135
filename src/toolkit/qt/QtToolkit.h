// Shows forms with Qt 6 Widgets.
#pragma once

#include <functional>

#include <QCollator>

#include "controls/Toolkit.h"

namespace ostrevin::qt {

/// Needs a QApplication, which it does not make.
class QtToolkit final : public Toolkit {
  public:
    QtToolkit();

    void InitCommonControls() override;
    std::unique_ptr<FormView> CreateView(Form& form) override;
    void MsgBox(Form* owner, const std::string& text, const std::string& caption) override;
    [[nodiscard]] double PixelsPerInchX() const override;
    [[nodiscard]] double PixelsPerInchY() const override;
    [[nodiscard]] int CompareText(std::string_view left, std::string_view right) const override;

    /// Asks for a folder; empty when none was chosen.
    [[nodiscard]] std::string ChooseFolder(const std::string& caption);
    /// Runs the message loop until the last form is unloaded; returns the program's exit code.
    int Run();
    /// Hands what a person did to the controls. A failure that comes out of them is shown in a box and ends
    /// the program with exit code 1.
    void Deliver(const std::function<void()>& action);

    // Called by the views of forms.

    void FormOpened() { ++openForms_; }
    void FormClosed();

  private:
    QCollator collator_;
    int openForms_ = 0;
};

}  // namespace ostrevin::qt
