// A toolkit that shows nothing and keeps account of what it was asked to show.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/Form.h"
#include "controls/Toolkit.h"
#include "platform/Text.h"

namespace ostrevin::testing {

class TestToolkit : public Toolkit {
  public:
    struct Box {
        std::string text;
        std::string caption;
    };

    /// What happened, in order: "load NAME", "show NAME", "modal NAME", "hide NAME", "unload NAME", "box
    /// TEXT".
    std::vector<std::string> log;
    std::vector<Box> boxes;
    /// Runs while a modal form is shown; it should hide or unload the form.
    std::function<void(Form&)> onModal;
    bool initFails = false;
    int initCalls = 0;
    double pixelsPerInch = 96;

    void InitCommonControls() override {
        ++initCalls;
        if (initFails) {
            throw ControlError("no control classes");
        }
    }
    std::unique_ptr<FormView> CreateView(Form& form) override;
    void MsgBox(Form* /*owner*/, const std::string& text, const std::string& caption) override {
        boxes.push_back({text, caption});
        log.push_back("box " + text);
    }
    [[nodiscard]] double PixelsPerInchX() const override { return pixelsPerInch; }
    [[nodiscard]] double PixelsPerInchY() const override { return pixelsPerInch; }
    [[nodiscard]] int CompareText(std::string_view left, std::string_view right) const override {
        return UpperCase(left).compare(UpperCase(right));
    }
};

class TestFormView : public FormView {
  public:
    TestFormView(TestToolkit& toolkit, Form& form) : toolkit_(toolkit), form_(form) { Log("load"); }
    ~TestFormView() override { Log("unload"); }
    void Show() override { Log("show"); }
    void ShowModal() override {
        Log("modal");
        if (toolkit_.onModal) {
            toolkit_.onModal(form_);
        }
    }
    void Hide() override { Log("hide"); }
    void CaptionChanged() override { Log("caption"); }
    void SizeChanged() override {}
    void Refresh() override { Log("refresh"); }

  private:
    void Log(const std::string& what) { toolkit_.log.push_back(what + " " + form_.Name()); }

    TestToolkit& toolkit_;
    Form& form_;
};

inline std::unique_ptr<FormView> TestToolkit::CreateView(Form& form) {
    return std::make_unique<TestFormView>(*this, form);
}

}  // namespace ostrevin::testing
