// Shows forms with Qt 6 Widgets.
#pragma once

#include <functional>
#include <optional>

#include <QPointF>
#include <QRect>

#include "controls/Toolkit.h"
#include "toolkit/qt/QtCollation.h"

namespace ostrevin::qt {

/// Needs a QApplication, which it does not make.
class QtToolkit final : public Toolkit {
  public:
    QtToolkit();

    void InitCommonControls() override;
    std::unique_ptr<FormView> CreateView(Form& form) override;
    void MsgBox(Form* owner, const std::string& text, const std::string& caption) override;
    std::string ShowSave(Form* owner, const SaveRequest& request) override;
    void DoEvents() override;
    [[nodiscard]] std::unique_ptr<Cursor> LoadCursor(CursorShape shape) override;
    void SetCursor(const Cursor& cursor) override;
    void ClipCursor(const PixelRect* area) override;
    [[nodiscard]] double PointsPerPixel() const override;
    [[nodiscard]] double PixelsPerInchX() const override;
    [[nodiscard]] double PixelsPerInchY() const override;
    [[nodiscard]] int CompareText(std::string_view left, std::string_view right) const override;
    [[nodiscard]] std::vector<std::size_t> RankTexts(std::span<const std::string_view> texts) const override;

    /// Asks for a folder; empty when none was chosen.
    [[nodiscard]] std::string ChooseFolder(const std::string& caption);
    /// Runs the message loop until the last form is unloaded; returns the program's exit code.
    int Run();
    /// Hands what a person did to the controls. A failure that comes out of them is shown in a box and ends
    /// the program with exit code 1.
    void Deliver(const std::function<void()>& action);

    // Called by the views of boxes.

    /// A place on the screen, or the nearest to it where the mouse is kept to a part of the screen; the mouse
    /// is put there then.
    [[nodiscard]] QPointF Confine(const QPointF& place) const;
    /// The cursor that SetCursor was given since ForgetCursor.
    [[nodiscard]] std::optional<Qt::CursorShape> CursorOfMove() const { return cursorOfMove_; }
    void ForgetCursor() { cursorOfMove_.reset(); }

    // Called by the views of forms.

    void FormOpened() { ++openForms_; }
    void FormClosed();

  private:
    QtCollation collation_{QCollator().locale()};
    std::optional<Qt::CursorShape> cursorOfMove_;
    std::optional<QRect> clip_;
    int openForms_ = 0;
};

}  // namespace ostrevin::qt
