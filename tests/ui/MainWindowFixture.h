// The main window on a made-up machine with two people, driven without a toolkit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "settings/AppSettings.h"
#include "settings/IniFile.h"
#include "tests/report/ReportMachine.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestToolkit.h"
#include "ui/frmMain.h"

namespace ostrevin {

using Strings = std::vector<std::string>;

inline constexpr char kAnna[] = "S-1-5-21-1-2-3-1001";
inline constexpr char kBen[] = "S-1-5-21-1-2-3-1002";

/// Notes what a list of the window is told to show.
class ListRecorder : public ListViewView {
  public:
    explicit ListRecorder(ListView& list) : list_(list) { list_.Attach(this); }
    ~ListRecorder() override { list_.Attach(nullptr); }
    void Moved() override { widths.push_back(list_.Width()); }
    void StateChanged() override {}
    void RowsChanged() override { changes.push_back({list_.ItemCount(), list_.Sorted(), list_.Visible()}); }
    void RowChanged(std::size_t /*row*/) override {}
    void SelectionChanged() override {}
    void SortChanged() override {}
    void LockUpdate(bool /*locked*/) override {}
    void EnsureVisible(std::size_t row) override { rowsShown.push_back(row); }
    [[nodiscard]] std::uint32_t ExtendedStyle() const override { return style; }
    void SetExtendedStyle(std::uint32_t newStyle) override { style = newStyle; }

    /// The list's state when its rows changed.
    struct Change {
        std::size_t items;
        bool sorted;
        bool visible;
    };
    std::vector<Change> changes;
    std::vector<std::size_t> rowsShown;  ///< from 0
    std::vector<double> widths;          ///< of each move
    std::uint32_t style = 0;             ///< the extended one

  private:
    ListView& list_;
};

/// Anna and Ben each have one program, C:\anna.exe, one document in each list, C:\anna.doc and C:\anna.txt,
/// and one typed address, http://anna.example/. A third account has no name.
class MainWindowFixture : public ::testing::Test {
  protected:
    MainWindowFixture();

    /// Reads the accounts and shows the window; what is to be there at the start is added before.
    void Show();

    // What a person does.

    void Click(const std::string& key) { window.treeUsers.ClickNode(window.treeUsers.Node(key)); }
    void ClickPrograms(const std::string& sid) { Click(sid + ":PROGRAMS"); }
    /// Clicks the first item with this text.
    void ClickItem(ListView& list, const std::string& text);
    void Press(const char* button) { window.barTool.Click(window.barTool.Button(button)); }
    /// Filters the list in front.
    void Filter(const std::string& text);
    void Find(const std::string& text);

    // What a person sees.

    /// The texts of a column, from 1.
    [[nodiscard]] static Strings Texts(const ListView& list, int column = 1);
    [[nodiscard]] static std::string Selected(const ListView& list);
    /// The key of the selected node.
    [[nodiscard]] std::string Selected() const;
    [[nodiscard]] int Value(const char* button) { return window.barTool.Button(button).Value(); }
    /// The texts of the message boxes so far.
    [[nodiscard]] Strings Messages() const;
    /// The names of the forms that were shown modally and are gone again.
    [[nodiscard]] Strings Dialogs() const;

    ScratchFolder folder;
    ReportMachine machine;
    MemoryPlatform& platform = machine.platform;
    AccountList& accounts = machine.accounts;
    testing::TestToolkit toolkit;
    IniFile ini;
    AppSettings settings;
    frmMain window{toolkit, {platform, settings, accounts}};
};

}  // namespace ostrevin
