// A window: caption, border, menu bar, inner size, and its life from Load to Unload.
#pragma once

#include <memory>
#include <string>

#include "controls/Container.h"
#include "controls/Menu.h"
#include "controls/Toolkit.h"

namespace ostrevin {

class CommandButton;

enum class BorderStyle {
    None,         ///< no border and no caption
    Sizable,      ///< minimised, maximised and sized by the user
    FixedDialog,  ///< closed by the user, of fixed size
};

enum class WindowState { Normal, Minimized, Maximized };

enum class ShowStyle { Modeless, Modal };

/// Width and Height are the inner size, without caption, border and menu bar, in twips.
class Form : public Container {
  public:
    Form(Toolkit& toolkit, std::string name);
    ~Form() override;

    [[nodiscard]] Toolkit& GetToolkit() const { return toolkit_; }
    [[nodiscard]] Form& ParentForm() override { return *this; }
    void Accept(ControlVisitor& visitor) override;

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption);
    [[nodiscard]] enum BorderStyle BorderStyle() const { return borderStyle_; }
    void SetBorderStyle(enum BorderStyle style) { borderStyle_ = style; }
    [[nodiscard]] enum WindowState WindowState() const { return windowState_; }
    /// The smallest inner size that the user can give the window, in pixels; 0 for none.
    [[nodiscard]] int MinPixelWidth() const { return minPixelWidth_; }
    [[nodiscard]] int MinPixelHeight() const { return minPixelHeight_; }
    void SetMinPixelSize(int width, int height);
    [[nodiscard]] MenuBar& Menus() { return menus_; }
    [[nodiscard]] double ScaleWidth() override;
    [[nodiscard]] double ScaleHeight() override;

    [[nodiscard]] bool Loaded() const { return view_ != nullptr; }
    /// Null while the form is not loaded.
    [[nodiscard]] FormView* View() const { return view_.get(); }
    /// Makes the window, not yet visible, and runs Form_Load. Does nothing for a loaded form.
    void Load();
    /// Loads the form where needed and shows it; a modal form returns when it is hidden or unloaded.
    void Show(ShowStyle style = ShowStyle::Modeless);
    void Hide();
    /// Runs Form_Unload and takes the window away.
    void Unload();
    /// Shows what has changed at once.
    void Refresh();
    void MsgBox(const std::string& text, const std::string& caption);

    /// The button that Enter presses, wherever no other button has the focus, and the one that Escape
    /// presses; null for none.
    [[nodiscard]] CommandButton* DefaultButton() const { return defaultButton_; }
    void SetDefaultButton(CommandButton* button) { defaultButton_ = button; }
    [[nodiscard]] CommandButton* CancelButton() const { return cancelButton_; }
    void SetCancelButton(CommandButton* button) { cancelButton_ = button; }

    // Called by the view.

    /// The user closes the window: it is unloaded, unless Form_QueryUnload objects.
    void Close();
    /// The user pressed Escape: it presses the cancel button; a dialog without one is closed.
    void Escape();
    /// The user or the system gave the window an inner size, or minimised it.
    void Resized(int pixelWidth, int pixelHeight, enum WindowState state);

  protected:
    /// Takes the window away without Form_Unload. To be called by the destructor of each form, while the
    /// controls that the window shows are still there.
    void DropView() { view_.reset(); }
    virtual void Form_Load() {}
    virtual void Form_Resize() {}
    /// Whether the user may close the window now.
    virtual bool Form_QueryUnload() { return true; }
    virtual void Form_Unload() {}
    void OnMoved() override;

  private:
    void PlaceAligned();

    Toolkit& toolkit_;
    std::string caption_;
    enum BorderStyle borderStyle_ = BorderStyle::Sizable;
    enum WindowState windowState_ = WindowState::Normal;
    int minPixelWidth_ = 0;
    int minPixelHeight_ = 0;
    MenuBar menus_;
    std::unique_ptr<FormView> view_;
    CommandButton* defaultButton_ = nullptr;
    CommandButton* cancelButton_ = nullptr;
    bool resizing_ = false;
};

}  // namespace ostrevin
