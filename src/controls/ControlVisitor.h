// Tells the kinds of controls apart, for the toolkit that makes their views.
#pragma once

namespace ostrevin {

class CheckBox;
class ComboBox;
class CommandButton;
class Frame;
class Label;
class ListView;
class PictureBox;
class ProgressBar;
class StatusBar;
class TabStrip;
class TextBox;
class Timer;
class ToolBar;
class TreeView;

class ControlVisitor {
  public:
    ControlVisitor() = default;
    ControlVisitor(const ControlVisitor&) = delete;
    ControlVisitor& operator=(const ControlVisitor&) = delete;
    virtual ~ControlVisitor() = default;
    virtual void Visit(CheckBox& box) = 0;
    virtual void Visit(ComboBox& box) = 0;
    virtual void Visit(CommandButton& button) = 0;
    virtual void Visit(Frame& frame) = 0;
    virtual void Visit(Label& label) = 0;
    virtual void Visit(ListView& list) = 0;
    virtual void Visit(PictureBox& box) = 0;
    virtual void Visit(ProgressBar& bar) = 0;
    virtual void Visit(StatusBar& bar) = 0;
    virtual void Visit(TabStrip& tabs) = 0;
    virtual void Visit(TextBox& box) = 0;
    virtual void Visit(Timer& timer) = 0;
    virtual void Visit(ToolBar& bar) = 0;
    virtual void Visit(TreeView& tree) = 0;
};

}  // namespace ostrevin
