// The main window of a running program, used as a person uses it.
#pragma once

#include <windows.h>
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/windows/window/Reading.h"
#include "tests/windows/window/RunningProgram.h"

namespace ostrevin {

enum Tab { kPrograms, kRecent, kOpenSave, kHistory, kTyped };
enum Button { kPreview, kReport, kFilter, kFind };
enum Menu { kFile, kEdit, kReporting, kOptions, kHelp };

inline constexpr std::array<Tab, 5> kTabs = {kPrograms, kRecent, kOpenSave, kHistory, kTyped};
inline const Texts kTabTexts = {"Programs", "Recent Docs", "Open / Save", "IE History", "Typed URLs"};

using Table = std::vector<Texts>;

/// Asks again and again until the answer is the expected one.
template <typename Get, typename Value>
void ExpectBecomes(const Get& get, const Value& expected, const std::string& what = {}) {
    auto answer = get();
    Await([&] {
        answer = get();
        return answer == expected;
    });
    EXPECT_EQ(answer, expected) << what;
}

[[nodiscard]] LONG WidthOf(const RECT& area);
void ClickOn(HWND window);
/// The button on a dialog with this caption. Raises std::runtime_error when there is none.
[[nodiscard]] HWND ButtonCalled(HWND dialog, const std::string& caption);
/// Waits for a message box, takes a picture of it, confirms it and returns what it says.
[[nodiscard]] std::string ConfirmMessage(const RunningProgram& program, const std::wstring& picture);

class UsedWindow {
  protected:
    /// Of a program whose main window is there.
    explicit UsedWindow(const RunningProgram& program);

    /// The list in sight; while the pages change there is none.
    [[nodiscard]] HWND List() const;
    [[nodiscard]] HTREEITEM NodeOf(std::size_t account) const { return Nodes(tree).at(account).handle; }
    [[nodiscard]] HTREEITEM NodeOf(std::size_t account, Tab tab) const {
        return Nodes(tree).at(account).children.at(tab).handle;
    }
    void ClickNode(HTREEITEM node) const;
    void ClickTab(Tab tab) const;
    void ClickButton(Button button) const;
    /// The begin of a row, which is in sight whatever the width of the columns.
    [[nodiscard]] RECT CellBounds(std::size_t row) const;
    void ClickRow(std::size_t row) const;
    [[nodiscard]] bool Pressed(Button button) const { return IsPressed(toolBar, button); }
    /// Opens a menu and chooses one of its items by keys; both count from 0.
    void ChooseMenu(Menu menu, int item) const;

    const RunningProgram& used;
    const HWND window;
    const HWND tree;
    const HWND tabs;
    const HWND toolBar;
    const HWND statusBar;
};

}  // namespace ostrevin
