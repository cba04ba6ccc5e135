// The whole window on the sample volume, used by real clicks and keys from another process and read back by
// the messages of its controls; and what the Linux edition says of the same volume.
#include <windows.h>
#include <algorithm>
#include <array>
#include <commctrl.h>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/windows/window/Host.h"
#include "tests/windows/window/LinuxEdition.h"
#include "tests/windows/window/Person.h"
#include "tests/windows/window/Reading.h"
#include "tests/windows/window/RemoteMemory.h"
#include "tests/windows/window/RunningProgram.h"
#include "tests/windows/window/UsedWindow.h"
#include "toolkit/win32/Text.h"

namespace ostrevin {
namespace {

const Texts kNodeTexts = {"Programs", "Recent Documents", "Opened/Saved Docs", "IE History", "Typed URLs"};

std::wstring NameOfTest() {
    return win32::Wide(::testing::UnitTest::GetInstance()->current_test_info()->name());
}

/// Puts the program into a folder of the running test's own, so that the settings are its own, too.
std::wstring InstallProgram() {
    CreateDirectoryW(TestPath(NameOfTest()).c_str(), nullptr);
    DeleteFileW(TestPath(NameOfTest() + L"/ostrevin.ini").c_str());
    std::wstring program = TestPath(NameOfTest() + L"/ostrevin.exe");
    CopyFileW(TestPath(L"ostrevin.exe").c_str(), program.c_str(), FALSE);
    return program;
}

/// An area of a window's client area, as the screen has it.
RECT OnScreen(HWND window, RECT area) {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

RECT ClientAreaOf(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return OnScreen(window, area);
}

RECT AreaOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area;
}

/// The colours in an area of the screen.
std::set<COLORREF> ColorsOfScreen(const RECT& area) {
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO info{};
    info.bmiHeader = {
        sizeof(BITMAPINFOHEADER), WidthOf(area), area.top - area.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, WidthOf(area), area.bottom - area.top, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    const auto* points = static_cast<const COLORREF*>(bits);
    std::set<COLORREF> colors(points, points + WidthOf(area) * (area.bottom - area.top));
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return colors;
}

/// The program that a test begins with.
struct ProgramOnVolume {
    const std::wstring path = InstallProgram();
    RunningProgram program{path, TestPath(L"volume")};
};

class WindowTest : public ::testing::Test, protected ProgramOnVolume, protected UsedWindow {
  protected:
    static void SetUpTestSuite() { SetUpWine(); }

    WindowTest() : UsedWindow(program) {
        for (const Entry& account : ReadJsonLines(ReadTestFile(L"accounts.jsonl"))) {
            if (!account.at("name").empty()) {
                accounts.push_back(account);
            }
        }
    }
    void TearDown() override {
        EXPECT_EQ(program.Dialogs().size(), 0U) << "a dialog stays";
        if (HasFailure()) {
            Photograph(L"failure of " + NameOfTest());
        }
    }

    [[nodiscard]] Table Expected(std::size_t account, Tab tab) const {
        return RowsOf(entries, accounts.at(account).at("sid"), tab);
    }

    /// Clicks a node and waits until its list is filled.
    void Choose(std::size_t account, Tab tab) const {
        ClickNode(NodeOf(account, tab));
        ExpectBecomes([&] { return SelectedTab(tabs); }, int{tab});
        ExpectBecomes([&] { return Rows(List()); }, Expected(account, tab),
                      accounts.at(account).at("name") + ", " + kTabTexts.at(tab));
    }
    /// Clicks at different places of the header by turns, because two clicks at one would be a double click.
    void ClickColumn(int column) {
        RECT bounds = ColumnBounds(HeaderOf(List()), column);
        const LONG third = WidthOf(bounds) / 3;
        bounds.right = bounds.left + (leftOfColumn ? third : 2 * third);
        leftOfColumn = !leftOfColumn;
        Click(HeaderOf(List()), {bounds.right, (bounds.top + bounds.bottom) / 2});
    }
    /// The row of a document with this name.
    [[nodiscard]] std::size_t RowOf(const std::string& name) const {
        const Texts documents = Cells(List(), 0);
        const auto found = std::find_if(documents.begin(), documents.end(), [&](const std::string& document) {
            return document.ends_with(name);
        });
        return static_cast<std::size_t>(found - documents.begin());
    }
    /// Reads a message box and confirms it.
    [[nodiscard]] std::string ConfirmMessage(const std::wstring& picture) const {
        return ostrevin::ConfirmMessage(program, picture);
    }

    const std::vector<Entry> entries = ReadJsonLines(ReadTestFile(L"entries.jsonl"));
    std::vector<Entry> accounts;
    bool leftOfColumn = true;
};

TEST_F(WindowTest, BeginsWithTheAccountsAndEmptyLists) {
    EXPECT_EQ(TextOf(window), "Ostrevin");
    Texts roots;
    for (const Node& root : Nodes(tree)) {
        roots.push_back(root.text);
        Texts children;
        for (const Node& child : root.children) {
            children.push_back(child.text);
        }
        EXPECT_EQ(children, kNodeTexts);
    }
    Texts names;
    for (const Entry& account : accounts) {
        names.push_back(account.at("name"));
    }
    EXPECT_EQ(roots, names);
    EXPECT_EQ(TabTexts(tabs), kTabTexts);
    EXPECT_EQ(SelectedTab(tabs), kPrograms);
    const std::vector<Texts> columns = {{"Program", "Run Count", "Last Run", "Accessible"},
                                        {"Document", "Accessible"},
                                        {"Document", "Accessible"},
                                        {"URL", "Last Accessed"},
                                        {"URL"}};
    Photograph(L"start");
    for (const Tab tab : kTabs) {
        ClickTab(tab);
        ExpectBecomes([&] { return ColumnTexts(List()); }, columns.at(tab));
        EXPECT_EQ(Rows(List()), Table{});
    }
    for (const Button button : {kPreview, kReport, kFilter, kFind}) {
        EXPECT_FALSE(Pressed(button)) << button;
    }
}

TEST_F(WindowTest, ShowsTheDateAndTheTime) {
    const auto shown = [&] {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        std::array<wchar_t, 80> date{};
        std::array<wchar_t, 80> time{};
        GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &now, nullptr, date.data(), date.size());
        GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &now, nullptr, time.data(), time.size());
        return Texts{PanelText(statusBar, 0), PanelText(statusBar, 1), PanelText(statusBar, 2)} ==
               Texts{"", win32::Utf8(date.data()), win32::Utf8(time.data())};
    };
    EXPECT_TRUE(Await(shown)) << PanelText(statusBar, 1) << ", " << PanelText(statusBar, 2);
}

TEST_F(WindowTest, EveryListOfEveryAccountIsThatOfTheLinuxEdition) {
    for (std::size_t account = 0; account < accounts.size(); ++account) {
        for (const Tab tab : kTabs) {
            Choose(account, tab);
            EXPECT_EQ(SelectedNode(tree), NodeOf(account, tab));
            if (account == 0) {
                Photograph(L"tab " + std::to_wstring(tab + 1));
            }
        }
    }
}

TEST_F(WindowTest, TabsFollowTheAccount) {
    constexpr std::size_t kAccount = 3;
    ClickTab(kRecent);
    ExpectBecomes([&] { return ColumnTexts(List()).size(); }, 2U);
    EXPECT_EQ(Rows(List()), Table{}) << "no account is chosen yet";
    ClickNode(NodeOf(kAccount));
    ExpectBecomes([&] { return SelectedNode(tree); }, NodeOf(kAccount));
    EXPECT_EQ(SelectedTab(tabs), kRecent);
    EXPECT_EQ(Rows(List()), Table{}) << "an account is no list";
    for (const Tab tab : {kHistory, kPrograms, kTyped, kOpenSave, kRecent}) {
        ClickTab(tab);
        ExpectBecomes([&] { return Rows(List()); }, Expected(kAccount, tab));
        EXPECT_EQ(SelectedNode(tree), NodeOf(kAccount, tab));
    }
}

TEST_F(WindowTest, TheTreeIsUsedWithTheKeyboard) {
    ASSERT_EQ(program.Focus(), tree);
    for (const int key : {VK_HOME, VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN}) {
        Press(static_cast<WORD>(key));
    }
    ExpectBecomes([&] { return SelectedNode(tree); }, NodeOf(0, kHistory));
    ExpectBecomes([&] { return Rows(List()); }, Expected(0, kHistory));
}

/// The rows in the order of keys.
Table Sorted(Table rows, const std::function<std::string(const Texts&)>& key, bool ascending) {
    std::stable_sort(rows.begin(), rows.end(), [&](const Texts& left, const Texts& right) {
        return ascending ? key(left) < key(right) : key(right) < key(left);
    });
    return rows;
}

/// The keys of the rows, and of the rows that a list shows, must be in one order; rows of one key may change
/// places.
Texts KeysOf(const Table& rows, const std::function<std::string(const Texts&)>& key) {
    Texts keys;
    std::transform(rows.begin(), rows.end(), std::back_inserter(keys), key);
    return keys;
}

TEST_F(WindowTest, HeadersSortByNumberAndByDate) {
    Choose(0, kPrograms);
    std::map<std::string, std::string> moments;  // by the text of the date
    for (const Entry& entry : entries) {
        if (entry.at("source") == "UserAssist") {
            moments[GeneralDate(entry.at("lastRun"))] = entry.at("lastRun");
        }
    }
    const auto count = [](const Texts& row) { return std::to_string(5'000'000'000 + std::stoi(row.at(1))); };
    const auto moment = [&](const Texts& row) { return row.at(2).empty() ? "" : moments.at(row.at(2)); };
    const Table before = Expected(0, kPrograms);
    const auto expectOrder = [&](int column, const std::function<std::string(const Texts&)>& key,
                                 bool ascending) {
        ClickColumn(column);
        ExpectBecomes([&] { return KeysOf(Rows(List()), key); }, KeysOf(Sorted(before, key, ascending), key));
        Table shown = Rows(List());
        Table all = before;
        std::sort(shown.begin(), shown.end());
        std::sort(all.begin(), all.end());
        EXPECT_EQ(shown, all);
    };
    expectOrder(1, count, false);
    Photograph(L"sorted by run count");
    expectOrder(1, count, true);
    expectOrder(2, moment, false);
    Photograph(L"sorted by last run");
    expectOrder(2, moment, true);
    // The next account comes in the same order.
    ClickNode(NodeOf(1, kPrograms));
    ExpectBecomes([&] { return KeysOf(Rows(List()), moment); },
                  KeysOf(Sorted(Expected(1, kPrograms), moment, true), moment));
}

TEST_F(WindowTest, AFilterKeepsWhatHoldsTheTextAndIsTakenBack) {
    Choose(0, kHistory);
    const Table all = Expected(0, kHistory);
    const auto matches = [](const Texts& row) { return row.front().find(".com") != std::string::npos; };
    Table kept;
    std::copy_if(all.begin(), all.end(), std::back_inserter(kept), matches);
    Table restored = kept;
    std::remove_copy_if(all.rbegin(), all.rend(), std::back_inserter(restored), matches);
    ASSERT_FALSE(kept.empty() || kept.size() == all.size()) << "a text that tells rows apart is needed";
    ClickButton(kFilter);
    program.AwaitDialog("Filter");
    Type(L".COM");
    Photograph(L"filter");
    Press(VK_RETURN);
    program.AwaitMainWindow();
    ExpectBecomes([&] { return Rows(List()); }, kept);
    EXPECT_TRUE(Pressed(kFilter));
    Photograph(L"filtered");
    ClickTab(kPrograms);
    ExpectBecomes([&] { return Pressed(kFilter); }, false, "the other list is not filtered");
    ClickTab(kHistory);
    ExpectBecomes([&] { return Pressed(kFilter); }, true);
    EXPECT_EQ(Rows(List()), kept);
    ClickButton(kFilter);
    ExpectBecomes([&] { return Rows(List()); }, restored,
                  "what was kept aside comes back at the end, last row first");
    EXPECT_FALSE(Pressed(kFilter));
}

TEST_F(WindowTest, FindIsAskedForWithCtrlFAndGoesOnWithF3) {
    Choose(0, kRecent);
    std::vector<int> places;
    const Texts documents = Cells(List(), 0);
    for (std::size_t row = 0; row < documents.size(); ++row) {
        if (documents[row].find(".doc") != std::string::npos) {
            places.push_back(static_cast<int>(row));
        }
    }
    ASSERT_GE(places.size(), 2U) << "a text that is in several rows is needed";
    Press('F', {VK_CONTROL});
    program.AwaitDialog("Find");
    Type(L".DOC");
    Photograph(L"find");
    Press(VK_RETURN);
    program.AwaitMainWindow();
    for (const int place : places) {
        ExpectBecomes([&] { return SelectedRow(List()); }, place);
        const RECT row = RowBounds(List(), place);
        RECT client{};
        GetClientRect(List(), &client);
        EXPECT_TRUE(row.top >= 0 && row.bottom <= client.bottom) << "row " << place << " is not in sight";
        Press(VK_F3);
    }
    EXPECT_EQ(ConfirmMessage(L"message of find next"), "No more matches found");
    EXPECT_EQ(SelectedRow(List()), places.back());
}

TEST_F(WindowTest, FindTellsWhenThereIsNothing) {
    Choose(0, kTyped);
    ClickButton(kFind);
    program.AwaitDialog("Find");
    Type(L"no such address");
    Press(VK_RETURN);
    EXPECT_EQ(ConfirmMessage(L"message of find"), "Search string not found");
    EXPECT_EQ(SelectedRow(List()), -1);
}

TEST_F(WindowTest, AClickLooksForTheFile) {
    Choose(0, kPrograms);
    const Texts programs = Cells(List(), 0);
    // The report of the Linux edition says which files are there.
    const std::string report = ReadTestFile(L"reports/anna.htm");
    std::set<std::string> answers;
    for (std::size_t row = 0; row < 6; ++row) {
        const bool isThere = report.find("file://" + programs.at(row) + "\"") != std::string::npos;
        const std::string answer = isThere ? "Yes" : "No";
        ClickRow(row);
        ExpectBecomes([&] { return Cells(List(), 3).at(row); }, answer, programs.at(row));
        answers.insert(answer);
    }
    EXPECT_EQ(answers.size(), 2U) << "rows of both kinds are needed";
    Photograph(L"accessible");
}

TEST_F(WindowTest, ADoubleClickOpensAnAddressAndNeverAProgramOfTheVolume) {
    Choose(0, kPrograms);
    for (std::size_t row = 0; row < 3; ++row) {
        DoubleClick(List(), MiddleOf(CellBounds(row)));
        ExpectBecomes([&] { return Cells(List(), 3).at(row).empty(); }, false);
    }
    Choose(0, kTyped);
    DoubleClick(List(), MiddleOf(CellBounds(1)));
    ExpectBecomes([&] { return ReadTestFile(L"opened"); }, Expected(0, kTyped).at(1).front() + "\n");
    program.AwaitMainWindow();
}

TEST_F(WindowTest, TreeAndTabsFollowTheWindow) {
    constexpr LONG kMargin = 10;
    const LONG treeWidth = WidthOf(AreaOf(tree));
    const auto follows = [&] {
        const RECT inner = ClientAreaOf(window);
        const RECT page = AreaOf(GetParent(List()));
        const RECT list = AreaOf(List());
        return AreaOf(tabs).right == inner.right - kMargin && AreaOf(toolBar).top == inner.top &&
               AreaOf(toolBar).right == inner.right && AreaOf(statusBar).bottom == inner.bottom &&
               AreaOf(statusBar).right == inner.right &&
               AreaOf(tree).bottom == AreaOf(statusBar).top - kMargin &&
               AreaOf(tabs).bottom == AreaOf(tree).bottom && AreaOf(tabs).top == AreaOf(tree).top &&
               WidthOf(AreaOf(tree)) == treeWidth && list.left == page.left + 2 &&
               list.right == page.right - 2 && list.bottom == page.bottom - 2;
    };
    EXPECT_TRUE(Await(follows));
    for (const SIZE& size : {SIZE{1200, 760}, SIZE{700, 500}, SIZE{560, 400}, SIZE{1000, 700}}) {
        SetWindowPos(window, nullptr, 10, 10, size.cx, size.cy, SWP_NOZORDER);
        EXPECT_TRUE(Await([&] { return WidthOf(AreaOf(window)) == size.cx && follows(); })) << size.cx;
        if (size.cx == 560) {
            Photograph(L"small window");
        }
    }
    // By the corner, with the mouse.
    const RECT before = AreaOf(window);
    const RECT inner = ClientAreaOf(window);
    const POINT corner = {before.right - inner.left - 2, before.bottom - inner.top - 2};
    Drag(window, {corner, {corner.x - 60, corner.y - 30}, {corner.x - 120, corner.y - 60}});
    EXPECT_TRUE(Await([&] { return WidthOf(AreaOf(window)) == WidthOf(before) - 120 && follows(); }));
    const RECT tabsBefore = AreaOf(tabs);
    ShowWindowAsync(window, SW_MINIMIZE);
    EXPECT_TRUE(Await([&] { return IsIconic(window) != FALSE; }));
    ShowWindowAsync(window, SW_RESTORE);
    EXPECT_TRUE(Await([&] { return IsIconic(window) == FALSE && follows(); }));
    EXPECT_TRUE(Await([&] { return WidthOf(AreaOf(tabs)) == WidthOf(tabsBefore); }));
    ShowWindowAsync(window, SW_MAXIMIZE);
    EXPECT_TRUE(Await([&] { return IsZoomed(window) != FALSE && follows(); }));
    Photograph(L"maximized window");
}

TEST_F(WindowTest, ThePreviewIsSwitchedByButtonAndMenuAndRemembered) {
    Choose(0, kRecent);
    const LONG wide = WidthOf(AreaOf(List()));
    ClickButton(kPreview);
    EXPECT_TRUE(Await([&] { return Pressed(kPreview) && WidthOf(AreaOf(List())) < wide; }));
    const RECT page = AreaOf(GetParent(List()));
    const POINT middle = MiddleOf({AreaOf(List()).right, page.top, page.right, page.bottom});
    const RECT box = {middle.x - 60, middle.y - 60, middle.x + 60, middle.y + 60};
    EXPECT_TRUE(Await([&] { return ColorsOfScreen(box).size() == 1; })) << "nothing is to be shown yet";
    ClickRow(RowOf("floor plan.bmp"));
    EXPECT_TRUE(Await([&] { return ColorsOfScreen(box).size() > 1; })) << "no picture is shown";
    Photograph(L"preview");
    ClickRow(RowOf("everyone.jpg"));
    EXPECT_TRUE(Await([&] { return ColorsOfScreen(box).size() == 1; })) << "the picture stays";
    ClickTab(kOpenSave);
    EXPECT_TRUE(Await([&] { return ColumnTexts(List()).size() == 2 && WidthOf(AreaOf(List())) < wide; }));
    Photograph(L"preview of the other page");
    ChooseMenu(kOptions, 0);
    EXPECT_TRUE(Await([&] { return !Pressed(kPreview) && WidthOf(AreaOf(List())) == wide; }));
    ChooseMenu(kOptions, 0);
    EXPECT_TRUE(Await([&] { return Pressed(kPreview) && WidthOf(AreaOf(List())) < wide; }));
    Press(VK_F4, {VK_MENU});
    EXPECT_EQ(program.AwaitEnd(), 0U);
    const RunningProgram again(path, TestPath(L"volume"));
    EXPECT_TRUE(IsPressed(ShownChild(again.MainWindow(), TOOLBARCLASSNAMEW), kPreview));
}

TEST_F(WindowTest, TheBarBetweenListAndPreviewIsDraggedWithTheMouse) {
    constexpr LONG kBar = 5;
    SetWindowPos(window, nullptr, 10, 10, 1200, 740, SWP_NOZORDER);
    Choose(0, kRecent);
    ClickButton(kPreview);
    const HWND page = GetParent(List());
    const auto width = [&] { return WidthOf(AreaOf(List())); };
    const LONG pageWidth = WidthOf(AreaOf(page));
    EXPECT_TRUE(Await([&] { return Pressed(kPreview) && width() < pageWidth; })) << "no preview";
    constexpr LONG kGrip = 2;  // where in the bar it is taken
    const auto dragTo = [&](LONG place) {
        const LONG before = width();
        Drag(page, {{before + kGrip, 200}, {(before + place) / 2, 200}, {place + kGrip, 200}});
    };
    const LONG from = width();
    dragTo(pageWidth - kBar - 250);
    ExpectBecomes(width, pageWidth - kBar - 250, "dragged from " + std::to_string(from));
    Photograph(L"dragged");
    dragTo(pageWidth - 20);
    ExpectBecomes(width, pageWidth - kBar - 100, "the least width of the preview");
    dragTo(20);
    ExpectBecomes(width, pageWidth - kBar - 400, "the greatest width of the preview");
}

/// A report without its date, and that date.
std::pair<std::string, std::string> TakeDate(std::string report) {
    constexpr std::string_view kBefore = "Ostrevin Report<BR>\r\n\r\n";
    const std::size_t start = report.find(kBefore) + kBefore.size();
    const std::size_t end = report.find("<BR>", start);
    std::string date = report.substr(start, end - start);
    report.erase(start, end - start);
    return {std::move(report), std::move(date)};
}

std::string Today() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return std::to_string(now.wMonth) + "/" + std::to_string(now.wDay) + "/" + std::to_string(now.wYear);
}

TEST_F(WindowTest, AReportWrittenByKeysAloneIsThatOfTheLinuxEdition) {
    const std::string openedBefore = ReadTestFile(L"opened");
    for (std::size_t account = 0; account < accounts.size(); ++account) {
        const std::string& name = accounts.at(account).at("name");
        const std::string dayBefore = Today();
        const std::wstring target = L"written of account " + std::to_wstring(account) + L".htm";
        ChooseMenu(kReporting, 0);
        const HWND dialog = program.AwaitDialog("Report Creator");
        const HWND people = ShownChild(dialog, L"ComboBox");
        EXPECT_EQ(program.Focus(), people);
        for (std::size_t i = 0; i <= account; ++i) {
            Press(VK_DOWN);
        }
        for (int i = 0; i < 6; ++i) {
            Press(VK_TAB);  // past the sections
        }
        Type(TestPath(target));
        Press(VK_TAB);
        Press(VK_TAB);
        Press(VK_SPACE);  // it is not to be opened
        const HWND opens = ButtonCalled(dialog, "Open Report After Creation");
        EXPECT_TRUE(Await([&] { return Send(opens, BM_GETCHECK) == BST_UNCHECKED; }));
        EXPECT_EQ(TextOf(people), name);
        EXPECT_EQ(TextOf(ShownChild(dialog, L"Edit")), win32::Utf8(TestPath(target)));
        if (account == 0) {
            Photograph(L"report");
        }
        Press(VK_RETURN);
        Await([&] { return ReadTestFile(target).ends_with("</HTML>\r\n"); });
        const auto [written, day] = TakeDate(ReadTestFile(target));
        const auto [expected, dayOfExpected] =
            TakeDate(ReadTestFile(L"reports/" + win32::Wide(name) + L".htm"));
        ASSERT_FALSE(expected.empty());
        EXPECT_TRUE(written == expected)
            << "see " << win32::Utf8(target) << " and reports/" << name << ".htm";
        EXPECT_TRUE(day == dayBefore || day == Today()) << day;
        Press(VK_ESCAPE);
        program.AwaitMainWindow();
    }
    EXPECT_EQ(ReadTestFile(L"opened"), openedBefore);
}

TEST_F(WindowTest, AReportNeedsAnAccountAndAFileChosenWithTheSaveDialog) {
    const std::wstring target = TestPath(L"chosen.htm");
    ClickButton(kReport);
    const HWND dialog = program.AwaitDialog("Report Creator");
    EXPECT_EQ(IsWindowEnabled(ButtonCalled(dialog, "Generate")), FALSE);
    ClickOn(ButtonCalled(dialog, "..."));
    program.AwaitDialog("Select Location to Save Report");
    Photograph(L"save dialog");
    Type(target);
    Press(VK_RETURN);
    program.AwaitDialog("Report Creator");
    ExpectBecomes([&] { return TextOf(ShownChild(dialog, L"Edit")); }, win32::Utf8(target));
    EXPECT_TRUE(Await([&] { return IsWindowEnabled(ButtonCalled(dialog, "Generate")) != FALSE; }));
    ClickOn(ButtonCalled(dialog, "Generate"));
    EXPECT_EQ(ConfirmMessage(L"message of the report"),
              "You must select a User and a file name to save the report to");
    Press(VK_ESCAPE);
    program.AwaitMainWindow();
    EXPECT_EQ(ReadTestFile(L"chosen.htm"), "");
}

TEST_F(WindowTest, EscapeClosesEachDialogAndChangesNothing) {
    Choose(0, kTyped);
    ClickButton(kFilter);
    program.AwaitDialog("Filter");
    Type(L"mail");
    Press(VK_ESCAPE);
    program.AwaitMainWindow();
    ExpectBecomes([&] { return Pressed(kFilter); }, false);
    Press('F', {VK_CONTROL});
    program.AwaitDialog("Find");
    Type(L"mail");
    Press(VK_ESCAPE);
    EXPECT_EQ(ConfirmMessage(L"message of an empty find"), "Search string not found");
    ClickButton(kReport);
    program.AwaitDialog("Report Creator");
    Press(VK_ESCAPE);
    program.AwaitMainWindow();
    EXPECT_EQ(Rows(List()), Expected(0, kTyped));
    EXPECT_EQ(SelectedRow(List()), -1);
}

TEST_F(WindowTest, TheAboutBoxTellsTheVersion) {
    ChooseMenu(kHelp, 1);
    const HWND dialog = program.AwaitDialog("About Ostrevin");
    Texts texts;
    for (const HWND label : ShownChildren(dialog, L"Static")) {
        texts.push_back(TextOf(label));
    }
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "Version : 1.0.0"), 1);
    Photograph(L"about");
    Press(VK_RETURN);
    program.AwaitMainWindow();
}

TEST_F(WindowTest, MenusOpenByTheirLettersAndByTheMouse) {
    const auto menu = [] {
        constexpr wchar_t kMenuClass[] = L"#32768";
        const HWND found = FindWindowW(kMenuClass, nullptr);
        return found != nullptr && IsWindowVisible(found) != FALSE ? found : nullptr;
    };
    Press('O', {VK_MENU});
    ASSERT_TRUE(Await([&] { return menu() != nullptr; }));
    Photograph(L"menu");
    Press(VK_RETURN);
    EXPECT_TRUE(Await([&] { return menu() == nullptr && Pressed(kPreview); }));
    Click(window, {14, -GetSystemMetrics(SM_CYMENU) / 2});  // "File"
    ASSERT_TRUE(Await([&] { return menu() != nullptr; }));
    ClickOn(menu());
    EXPECT_EQ(program.AwaitEnd(), 0U);
}

/// A name for what has the focus: the text of a button, else the class.
std::string NameOf(HWND window) {
    const std::string name = ClassOf(window);
    return name == "Button" ? TextOf(window) : name;
}

/// What the focus comes by when Tab is pressed until it is back where it was.
Texts TabWalk(const RunningProgram& program) {
    constexpr int kMost = 20;
    const HWND start = program.Focus();
    Texts names;
    HWND focus = start;
    for (int i = 0; i < kMost && (i == 0 || focus != start); ++i) {
        names.push_back(NameOf(focus));
        Press(VK_TAB);
        const HWND before = focus;
        Await([&] { return program.Focus() != before; });
        focus = program.Focus();
    }
    return names;
}

TEST_F(WindowTest, TabReachesEverything) {
    const Texts inWindow = {"SysTreeView32", "SysTabControl32", "SysListView32", "ToolbarWindow32"};
    for (const Tab tab : kTabs) {
        Choose(0, tab);
        EXPECT_TRUE(Await([&] { return program.Focus() == tree; }));
        EXPECT_EQ(TabWalk(program), inWindow);
    }
    const auto walk = [&](const std::string& caption) {
        program.AwaitDialog(caption);
        const Texts names = TabWalk(program);
        Press(VK_ESCAPE);
        return names;
    };
    ClickButton(kFilter);
    EXPECT_EQ(walk("Filter"), (Texts{"Edit", "Filter"}));
    program.AwaitMainWindow();
    ClickButton(kReport);
    EXPECT_EQ(walk("Report Creator"),
              (Texts{"ComboBox", "Programs", "Recent Documents", "Opened / Saved Documents", "IE History",
                     "Typed URLs", "Edit", "...", "Open Report After Creation", "Close"}))
        << "nothing can be generated yet";
    program.AwaitMainWindow();
}

}  // namespace
}  // namespace ostrevin
