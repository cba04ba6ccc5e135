// A form as a window, with the views of all that stands on it.
#pragma once

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "controls/ControlVisitor.h"
#include "controls/Form.h"
#include "toolkit/win32/Win32MenuBar.h"
#include "toolkit/win32/Win32Toolkit.h"
#include "toolkit/win32/WindowView.h"
#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {

class Win32CommandButton;

class Win32FormView final : public FormView, private ControlVisitor {
  public:
    Win32FormView(Win32Toolkit& toolkit, Form& form);
    ~Win32FormView() override;

    void Show() override;
    void ShowModal() override;
    void Hide() override;
    void CaptionChanged() override;
    void SizeChanged() override;
    void Refresh() override;

    [[nodiscard]] HWND Window() const { return window_; }
    /// Does with a message of the queue what is to be done, shortcuts and the keys of dialogs included.
    static void Handle(MSG& message);

  private:
    /// What the Tab key may come to.
    struct Stop {
        const Control* control;
        HWND window;
        CommandButton* button;  ///< null for other controls
        bool onlyByKey;         ///< never has the focus first
    };
    struct WindowDeleter {
        void operator()(HWND window) const;
    };
    /// A modal form's time on the screen.
    struct ModalTime {
        std::vector<HWND> disabled;  ///< the windows that take no input meanwhile
        bool over = false;
    };

    void Visit(CheckBox& box) override;
    void Visit(ComboBox& box) override;
    void Visit(CommandButton& button) override;
    void Visit(Frame& frame) override;
    void Visit(Label& label) override;
    void Visit(ListView& list) override;
    void Visit(PictureBox& box) override;
    void Visit(ProgressBar& bar) override;
    void Visit(StatusBar& bar) override;
    void Visit(TabStrip& tabs) override;
    void Visit(TextBox& box) override;
    void Visit(Timer& timer) override;
    void Visit(ToolBar& bar) override;
    void Visit(TreeView& tree) override;
    /// Makes the view of a control on parent_, and makes it a stop of the Tab key if it is one.
    template <typename View, typename Shown, typename... More>
    View& Add(Shown& control, More&&... more) {
        auto view = std::make_unique<View>(toolkit_, control, parent_, std::forward<More>(more)...);
        View& added = *view;
        views_.push_back(std::move(view));
        if ((GetWindowLongW(added.Handle(), GWL_STYLE) & WS_TABSTOP) != 0) {
            stops_.push_back({&control, added.Handle(), nullptr, false});
        }
        return added;
    }
    void AddControls(Container& container, HWND parent);

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static Win32FormView* Of(HWND window);
    static const wchar_t* WindowClass();
    /// None leaves the message to Windows. The view may be gone afterwards.
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void ChooseMenuItem(WORD command);
    void Tick(std::size_t timer);
    void HandOn(UINT message, WPARAM wParam, LPARAM lParam);

    // The size and place of the window.
    [[nodiscard]] SIZE OuterSize(SIZE inner) const;
    [[nodiscard]] SIZE InnerSize() const;
    void FitSize();
    void LimitSize(MINMAXINFO& limits) const;
    void Sized(WPARAM kind);
    void TellSize(SIZE size, WindowState state);
    void StandInMiddleOf(HWND owner);

    // Modality.
    static std::vector<HWND> FormsWithInput();
    static BOOL CALLBACK AddFormWithInput(HWND window, LPARAM windows);
    void BeginModal(ModalTime& time);
    void EndModal();

    // Focus and keys.
    [[nodiscard]] bool HandleKey(const MSG& message);
    [[nodiscard]] bool HandleKeyDown(WPARAM key, HWND focus, LRESULT wanted);
    [[nodiscard]] bool PressMnemonic(wchar_t character);
    void PressDefault();
    void ShowDefault();
    [[nodiscard]] bool CanHaveFocus(const Stop& stop) const;
    /// The stop that has the focus, or has it inside; end() for none.
    [[nodiscard]] std::vector<Stop>::const_iterator Focused() const;
    void MoveFocus(bool back);
    void FocusFirst();
    void FocusOn(const Stop& stop);
    void RestoreFocus();
    [[nodiscard]] const CommandButton* ButtonOfEnter() const;

    Win32Toolkit& toolkit_;
    Form& form_;
    std::unique_ptr<std::remove_pointer_t<HWND>, WindowDeleter> ownWindow_;
    HWND window_;
    HWND parent_ = nullptr;  // on which the next view puts its window
    std::unique_ptr<Win32MenuBar> menus_;
    std::vector<std::unique_ptr<ChildWindow>> views_;
    std::vector<Timer*> timers_;
    std::vector<Stop> stops_;  // in tab order
    std::vector<std::pair<const CommandButton*, Win32CommandButton*>> buttons_;
    HWND focus_ = nullptr;  // has the focus when the window is active
    SIZE toldSize_{};
    WindowState toldState_ = WindowState::Normal;
    ModalTime* modalTime_ = nullptr;
};

}  // namespace ostrevin::win32
