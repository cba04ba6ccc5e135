// The views of the controls on a form.
#include "controls/ListView.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/Timer.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "toolkit/win32/Text.h"
#include "toolkit/win32/Win32Boxes.h"
#include "toolkit/win32/Win32FormView.h"
#include "toolkit/win32/Win32Inputs.h"
#include "toolkit/win32/Win32ListView.h"
#include "toolkit/win32/Win32ProgressBar.h"
#include "toolkit/win32/Win32StatusBar.h"
#include "toolkit/win32/Win32TabStrip.h"
#include "toolkit/win32/Win32ToolBar.h"
#include "toolkit/win32/Win32TreeView.h"

namespace ostrevin::win32 {
namespace {

/// Tells screen readers what a window is called that shows no text of its own.
void NameWindow(HWND window, const Control& control) {
    SetWindowTextW(window, Wide(control.AccessibleName()).c_str());
}

}  // namespace

void Win32FormView::AddControls(Container& container, HWND parent) {
    for (Control* control : container.Controls()) {
        parent_ = parent;
        control->Accept(*this);
    }
}

void Win32FormView::Visit(Frame& frame) {
    AddControls(frame, Add<Win32Frame>(frame).Handle());
}

void Win32FormView::Visit(PictureBox& box) {
    AddControls(box, Add<Win32PictureBox>(box).Handle());
}

void Win32FormView::Visit(CheckBox& box) {
    Add<Win32CheckBox>(box);
}

void Win32FormView::Visit(ComboBox& box) {
    Add<Win32ComboBox>(box);
}

void Win32FormView::Visit(CommandButton& button) {
    auto& view = Add<Win32CommandButton>(button, [this] { ShowDefault(); });
    stops_.back().button = &button;
    buttons_.emplace_back(&button, &view);
}

void Win32FormView::Visit(Label& label) {
    Add<Win32Label>(label);
}

void Win32FormView::Visit(TextBox& box) {
    Add<Win32TextBox>(box);
}

void Win32FormView::Visit(Timer& timer) {
    if (timer.Interval() > 0) {
        timers_.push_back(&timer);
        SetTimer(window_, timers_.size(), static_cast<UINT>(timer.Interval()), nullptr);
    }
}

void Win32FormView::Visit(ListView& list) {
    NameWindow(Add<Win32ListView>(list).Handle(), list);
}

void Win32FormView::Visit(TreeView& tree) {
    NameWindow(Add<Win32TreeView>(tree).Handle(), tree);
}

void Win32FormView::Visit(TabStrip& tabs) {
    NameWindow(Add<Win32TabStrip>(tabs).Handle(), tabs);
}

void Win32FormView::Visit(ToolBar& bar) {
    Add<Win32ToolBar>(bar);
    if (!stops_.empty() && stops_.back().control == &bar) {
        stops_.back().onlyByKey = true;
    }
}

void Win32FormView::Visit(StatusBar& bar) {
    Add<Win32StatusBar>(bar);
}

void Win32FormView::Visit(ProgressBar& bar) {
    Add<Win32ProgressBar>(bar);
}

}  // namespace ostrevin::win32
