// A form as a window, with the views of all that stands on it.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include <QAction>
#include <QEventLoop>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include "controls/ControlVisitor.h"
#include "controls/Form.h"
#include "toolkit/qt/QtToolkit.h"

namespace ostrevin::qt {

class QtFormView final : public FormView, private MenuView, private ControlVisitor {
  public:
    QtFormView(QtToolkit& toolkit, Form& form);
    ~QtFormView() override;

    void Show() override;
    void ShowModal() override;
    void Hide() override;
    void CaptionChanged() override;
    void SizeChanged() override;
    void Refresh() override;

    [[nodiscard]] QMainWindow* Window() const { return window_; }

  private:
    void ItemChanged(MenuItem& item) override;

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

    void AddMenus();
    void AddItem(QMenu& menu, MenuItem& item);
    void AddControls(Container& container, QWidget& widget);
    void FitSize();
    void StandOver(QWidget& owner);
    void FocusFirst();

    QtToolkit& toolkit_;
    Form& form_;
    QMainWindow* window_;
    QWidget* surface_ = nullptr;
    QWidget* parent_ = nullptr;  // where the next view puts its widget
    std::map<const MenuItem*, QAction*> actions_;
    std::vector<std::unique_ptr<ControlView>> views_;
    std::vector<std::unique_ptr<QTimer>> timers_;
    QPointer<QEventLoop> modalLoop_;
};

}  // namespace ostrevin::qt
