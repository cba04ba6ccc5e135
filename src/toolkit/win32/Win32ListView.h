// Report-style lists, virtual: only the rows in sight are asked for.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "controls/ListView.h"
#include "toolkit/win32/WindowView.h"

namespace ostrevin::win32 {

/// Changes of the rows are gathered: the window gets to know of them before the next message that it handles.
class Win32ListView final : public WindowView<ListViewView, ListView> {
  public:
    Win32ListView(Win32Toolkit& toolkit, ListView& list, HWND parent);

    void RowsChanged() override;
    void RowChanged(std::size_t row) override;
    void SelectionChanged() override;
    void SortChanged() override;
    void LockUpdate(bool locked) override;
    void EnsureVisible(std::size_t row) override;
    [[nodiscard]] std::uint32_t ExtendedStyle() const override;
    void SetExtendedStyle(std::uint32_t style) override;

    std::optional<LRESULT> OnNotify(NMHDR& header) override;

  protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(Handle(), message, wParam, lParam);
    }
    void AddColumns();
    /// Gives the first column what the others leave, until a person sizes a column.
    void FitFirstColumn();
    /// Shows the rows as they are now, if they changed since it was done last.
    void BringUpToDate();
    void ShowSelection();
    /// Selects the row to which the focus went alone, or shows the control's selection again.
    void Settle();
    /// The row, from 0, that the control holds selected, and the one that the window shows in a state; -1 for
    /// none.
    [[nodiscard]] LRESULT RowOfSelection() const;
    [[nodiscard]] LRESULT RowWith(UINT state) const;
    void SetState(WPARAM row, UINT mask, UINT value);

    /// Puts the text of a cell where the window asked for it.
    void TellText(LVITEMW& cell);
    /// The first row from a place on, round the end, whose text begins with what was typed, or is it; -1 for
    /// none.
    [[nodiscard]] LRESULT FindRow(int from, const LVFINDINFOW& sought) const;
    void StateOfRowChanged(const NMLISTVIEW& change);
    LRESULT Press(UINT message, WPARAM wParam, LPARAM lParam);
    /// A person chose a row, from 0.
    void ChooseRow(int row);
    void OpenRow(LRESULT row);

    // A text has to stay while the window asks for the next two.
    std::array<std::wstring, 3> texts_;
    std::size_t nextText_ = 0;
    bool stale_ = false;
    bool updating_ = false;  // code, not a person, changes the selection
    bool firstColumnFits_ = true;
};

}  // namespace ostrevin::win32
