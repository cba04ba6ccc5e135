// A toolkit that shows nothing and keeps account of what it was asked to show.
#pragma once

#include <functional>
#include <optional>
#include <set>
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
    /// TEXT", "init controls", "save TITLE|FILTER|NAME", "load cursor NUMBER", "clip", "unclip".
    std::vector<std::string> log;
    std::vector<Box> boxes;
    /// Runs while a modal form is shown; it should hide or unload the form.
    std::function<void(Form&)> onModal;
    /// What the Save dialog returns.
    std::string savePath;
    /// Runs in DoEvents.
    std::function<void()> onEvents;
    /// The cursors that were loaded and not destroyed, and the one that was set last, by their shapes.
    std::multiset<CursorShape> cursors;
    std::optional<CursorShape> cursor;
    std::optional<PixelRect> clip;
    bool initFails = false;
    int initCalls = 0;
    double pixelsPerInch = 96;
    std::optional<double> pixelsPerInchY;  ///< down, where it differs

    void InitCommonControls() override {
        ++initCalls;
        log.emplace_back("init controls");
        if (initFails) {
            throw ControlError("no control classes");
        }
    }
    std::unique_ptr<FormView> CreateView(Form& form) override;
    void MsgBox(Form* /*owner*/, const std::string& text, const std::string& caption) override {
        boxes.push_back({text, caption});
        log.push_back("box " + text);
    }
    std::string ShowSave(Form* /*owner*/, const SaveRequest& request) override {
        log.push_back("save " + request.title + "|" + request.filter + "|" + request.fileName);
        return savePath;
    }
    void DoEvents() override {
        if (onEvents) {
            onEvents();
        }
    }
    [[nodiscard]] std::unique_ptr<Cursor> LoadCursor(CursorShape shape) override;
    void SetCursor(const Cursor& cursor) override;
    void ClipCursor(const PixelRect* area) override {
        clip = area == nullptr ? std::nullopt : std::optional(*area);
        log.emplace_back(area == nullptr ? "unclip" : "clip");
    }
    [[nodiscard]] double PixelsPerInchX() const override { return pixelsPerInch; }
    [[nodiscard]] double PixelsPerInchY() const override { return pixelsPerInchY.value_or(pixelsPerInch); }
    [[nodiscard]] int CompareText(std::string_view left, std::string_view right) const override {
        return UpperCase(left).compare(UpperCase(right));
    }
};

class TestCursor : public Cursor {
  public:
    TestCursor(TestToolkit& toolkit, CursorShape shape)
        : toolkit_(toolkit), place_(toolkit.cursors.insert(shape)) {
        toolkit.log.push_back("load cursor " + std::to_string(static_cast<int>(shape)));
    }
    ~TestCursor() override { toolkit_.cursors.erase(place_); }
    [[nodiscard]] CursorShape Shape() const { return *place_; }

  private:
    TestToolkit& toolkit_;
    std::multiset<CursorShape>::iterator place_;
};

inline std::unique_ptr<Cursor> TestToolkit::LoadCursor(CursorShape shape) {
    return std::make_unique<TestCursor>(*this, shape);
}

inline void TestToolkit::SetCursor(const Cursor& shown) {
    cursor = static_cast<const TestCursor&>(shown).Shape();
}

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
