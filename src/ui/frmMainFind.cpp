// Filter and find, on the list of the selected tab.
#include "ui/ListSorter.h"
#include "ui/frmFilter.h"
#include "ui/frmFind.h"
#include "ui/frmMain.h"

namespace ostrevin {
namespace {

constexpr char kTitle[] = "Ostrevin";

}  // namespace

void frmMain::UpdateFilter() {
    barTool.Button("FILTER").SetValue(filters_[SelectedList()].Filtered() ? ToolButton::kPressed
                                                                          : ToolButton::kUp);
}

void frmMain::ToggleFilter() {
    ListFilter& filter = filters_[SelectedList()];
    ListView& list = ListAt(SelectedList());
    ToolButton& button = barTool.Button("FILTER");
    if (filter.Filtered()) {
        button.SetValue(ToolButton::kUp);
        filter.UnFilter();
        if (list.Sorted()) {
            // What came back was put in place by its text, whatever the column holds.
            ListSorter(parts_.platform, list, list.Column(list.SortKey() + 1), false);
        }
        return;
    }
    button.SetValue(ToolButton::kPressed);
    frmFilter dialog(GetToolkit());
    dialog.Show(ShowStyle::Modal);
    const std::string text = dialog.txtFilterString.Text();
    dialog.Unload();
    if (text.empty()) {
        button.SetValue(ToolButton::kUp);
        return;
    }
    filter.SetFilterString(text);
    filter.Filter(list.Column(1));
}

void frmMain::DoFind() {
    ListFinder& finder = finders_[SelectedList()];
    frmFind dialog(GetToolkit());
    dialog.Show(ShowStyle::Modal);
    finder.SetSearchString(dialog.txtFind.Text());
    dialog.Unload();
    if (!finder.Find(ListAt(SelectedList()).Column(1))) {
        MsgBox("Search string not found", kTitle);
    }
}

void frmMain::DoFindNext() {
    if (!finders_[SelectedList()].FindNext(ListAt(SelectedList()).Column(1))) {
        MsgBox("No more matches found", kTitle);
    }
}

}  // namespace ostrevin
