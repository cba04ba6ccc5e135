// What controls ask of the toolkit that shows them.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Cursor.h"
#include "controls/PixelRect.h"

namespace ostrevin {

class Form;

/// What shows a form and the controls on it, from Load to Unload.
class FormView {
  public:
    FormView() = default;
    FormView(const FormView&) = delete;
    FormView& operator=(const FormView&) = delete;
    virtual ~FormView() = default;
    virtual void Show() = 0;
    /// Shows the form and returns when it is hidden or unloaded; no other form takes input meanwhile.
    virtual void ShowModal() = 0;
    virtual void Hide() = 0;
    virtual void CaptionChanged() = 0;
    /// Width or Height changed by code. Where the system gives the window another size, the view tells the
    /// form so by Resized.
    virtual void SizeChanged() = 0;
    /// Makes what has changed visible now, without waiting for the message loop, also what a view has put
    /// off.
    virtual void Refresh() = 0;
};

/// What a Save dialog is asked.
struct SaveRequest {
    std::string title;
    /// Pairs of a description and a pattern, all separated by "|": "HTML Files (*.htm)|*.htm".
    std::string filter;
    std::string fileName;  ///< what it begins with
};

class Toolkit {
  public:
    Toolkit() = default;
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    virtual ~Toolkit() = default;

    /// Makes the toolkit's control classes available; must come before the first form. May throw.
    virtual void InitCommonControls() = 0;
    /// Makes the native window of a form and of all that stands on it, not yet visible, and attaches the
    /// views.
    virtual std::unique_ptr<FormView> CreateView(Form& form) = 0;
    /// Shows a text with an OK button and no icon, and returns when it is closed. owner may be null.
    virtual void MsgBox(Form* owner, const std::string& text, const std::string& caption) = 0;
    /// Asks where to save, without a default extension and without a question about a file that is there;
    /// empty when it was cancelled. owner may be null.
    virtual std::string ShowSave(Form* owner, const SaveRequest& request) = 0;
    /// Handles the messages that wait, so that windows are painted and timers run during a long task.
    virtual void DoEvents() = 0;

    [[nodiscard]] virtual std::unique_ptr<Cursor> LoadCursor(CursorShape shape) = 0;
    /// Shows a cursor until the mouse moves on; to be called in answer to a move of the mouse.
    virtual void SetCursor(const Cursor& cursor) = 0;
    /// Keeps the mouse within a part of the screen; null sets it free.
    virtual void ClipCursor(const PixelRect* area) = 0;

    /// How many points of the screen there are to a pixel, in which windows are measured.
    [[nodiscard]] virtual double PointsPerPixel() const { return 1; }
    [[nodiscard]] virtual double PixelsPerInchX() const = 0;
    [[nodiscard]] virtual double PixelsPerInchY() const = 0;
    /// Compares without regard to case, in the order of the user's locale; less than, equal to or greater
    /// than 0.
    [[nodiscard]] virtual int CompareText(std::string_view left, std::string_view right) const = 0;
    /// The place of each text among the distinct texts, in the order of CompareText. A toolkit whose
    /// comparison is slow, and which can do better with many texts at once, does it here.
    [[nodiscard]] virtual std::vector<std::size_t> RankTexts(std::span<const std::string_view> texts) const;
};

}  // namespace ostrevin
