// Lists, trees, tabs and bars as a person sees and uses them: with mouse and keys, read back with the
// messages of the common controls.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <cwchar>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "controls/Boxes.h"
#include "controls/Form.h"
#include "controls/Inputs.h"
#include "controls/ListView.h"
#include "controls/ShownText.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "toolkit/win32/CommonControls.h"
#include "toolkit/win32/Pictures.h"
#include "toolkit/win32/Text.h"
#include "toolkit/win32/Win32FormView.h"
#include "toolkit/win32/Win32Toolkit.h"
#include "toolkit/win32/WindowView.h"
#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {
namespace {

using Names = std::vector<std::string>;

/// A form with one of each kind, which notes what a person did.
class ListsForm : public Form {
  public:
    explicit ListsForm(Toolkit& toolkit) : Form(toolkit, "frmLists") {
        SetCaption("Lists");
        Move(0, 0, 12000, 7500);
        for (const char* key : {"USER", "PROGRAM"}) {
            listImages.Add(key, std::string("list-") + key);
        }
        for (const char* key : {"FILTER", "FIND"}) {
            barImages.Add(key, std::string("toolbar-") + key);
        }
        bar.SetAlignment(Align::Top);
        bar.SetHeight(540);
        bar.SetImages(&barImages);
        bar.Add("FILTER", "FILTER", ToolButton::Style::Check).SetToolTipText("Filter List");
        bar.Add("FIND", "FIND", ToolButton::Style::Default).SetToolTipText("Find in List");
        bar.ButtonClick = [this](ToolButton& button) { done.push_back("button " + button.Key()); };
        tree.Move(150, 630, 3300, 5400);
        tree.SetImages(&listImages);
        tree.NodeClick = [this](TreeNode& node) { done.push_back("node " + node.Key()); };
        tabs.Move(3600, 630, 8250, 5400);
        tabs.SetImages(&listImages);
        tabs.Add("Programs", "PROGRAM");
        tabs.Add("Users", "USER");
        tabs.Click = [this] {
            done.push_back("tab " + std::to_string(tabs.SelectedTab()));
            first.SetVisible(tabs.Selected(1));
            second.SetVisible(tabs.Selected(2));
        };
        second.SetVisible(false);
        list.AddColumn("Name", 3000);
        ColumnHeader& number = list.AddColumn("Number", 1500);
        number.SetRightAligned(true);
        list.ItemClick = [this](ListItem& item) { done.push_back("item " + item.Text()); };
        list.DblClick = [this] { done.emplace_back("open"); };
        list.ColumnClick = [this](ColumnHeader& column) { done.push_back("column " + column.Text()); };
        progress.Move(150, 6200, 3300, 300);
        label.Move(3600, 6200, 3300, 300);
        status.SetAlignment(Align::Bottom);
        status.SetHeight(390);
        status.AddPanel(0);
        status.AddPanel(100);
    }
    ~ListsForm() override { DropView(); }

    /// What a person did since this was asked last.
    Names Done() { return std::exchange(done, {}); }

    Names done;
    ImageList listImages;
    ImageList barImages;
    ToolBar bar{this, "bar"};
    TreeView tree{this, "tree"};
    TabStrip tabs{this, "tabs"};
    Frame first{this, "first"};
    Frame second{this, "second"};
    ListView list{&first, "list"};
    ListView other{&second, "other"};
    ProgressBar progress{this, "progress"};
    Label label{this, "label"};
    StatusBar status{this, "status"};

  protected:
    void Form_Load() override {
        listImages.SetBkColor(ImageList::kNoColor);
        barImages.SetBkColor(ImageList::kNoColor);
    }
    void Form_Resize() override {
        for (Frame* page : {&first, &second}) {
            page->Move(tabs.ClientLeft(), tabs.ClientTop(), tabs.ClientWidth(), tabs.ClientHeight());
        }
        list.Move(0, 0, tabs.ClientWidth(), tabs.ClientHeight());
    }
};

/// Sees the messages to a window on their way.
class Watch {
  public:
    using Handler = std::function<void(UINT message, WPARAM wParam, LPARAM lParam)>;
    Watch(HWND window, Handler handler) : window_(window), handler_(std::move(handler)) {
        SetPropW(window, kProperty, this);
        former_ = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() {
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former_));
        RemovePropW(window_, kProperty);
    }

  private:
    static constexpr const wchar_t* kProperty = L"Watch";
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        const Watch& watch = *static_cast<const Watch*>(GetPropW(window, kProperty));
        watch.handler_(message, wParam, lParam);
        return CallWindowProcW(watch.former_, window, message, wParam, lParam);
    }

    HWND window_;
    Handler handler_;
    WNDPROC former_ = nullptr;
};

class ListViewsTest : public ::testing::Test {
  protected:
    ListViewsTest() { toolkit.InitCommonControls(); }

    void Open() {
        form.Load();
        form.Show();
        window = static_cast<Win32FormView*>(form.View())->Window();
        SetForegroundWindow(window);
        Settle();
        list = Find(WC_LISTVIEWW);
        tree = Find(WC_TREEVIEWW);
        tabs = Find(WC_TABCONTROLW);
        bar = Find(TOOLBARCLASSNAMEW);
        status = Find(STATUSCLASSNAMEW);
        progress = Find(PROGRESS_CLASSW);
        page = GetParent(list);
    }
    /// The window of a control's class that is visible.
    [[nodiscard]] HWND Find(const wchar_t* className) const {
        struct Search {
            std::wstring className;
            HWND found;
        } search{className, nullptr};
        EnumChildWindows(
            window,
            [](HWND child, LPARAM parameter) -> BOOL {
                Search& sought = *reinterpret_cast<Search*>(parameter);
                std::array<wchar_t, 64> name{};
                GetClassNameW(child, name.data(), static_cast<int>(name.size()));
                const bool found = sought.className == name.data() && IsWindowVisible(child) != FALSE;
                sought.found = found ? child : sought.found;
                return found ? FALSE : TRUE;
            },
            reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    void Settle() {
        toolkit.DoEvents();
        toolkit.DoEvents();
    }
    void AddRows(int count) {
        for (int i = 0; i < count; ++i) {
            form.list.Add(std::to_string(i) + "KEY", "row " + std::to_string(i))
                .SetSubItem(1, std::to_string(i * i));
        }
    }

    static LRESULT Send(HWND to, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessageW(to, message, wParam, lParam);
    }

    void Mouse(std::initializer_list<DWORD> actions) {
        for (const DWORD action : actions) {
            INPUT input = {};
            input.type = INPUT_MOUSE;
            input.mi.dwFlags = action;
            SendInput(1, &input, sizeof(input));
        }
        Settle();
    }
    void MoveTo(HWND to, POINT place) {
        ClientToScreen(to, &place);
        SetCursorPos(place.x, place.y);
        Settle();
    }
    void Click(HWND to, POINT place) {
        MoveTo(to, place);
        Mouse({MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP});
    }
    void DoubleClick(HWND to, POINT place) {
        MoveTo(to, place);
        Mouse({MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP});
    }
    void Press(WORD key) {
        for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
            INPUT input = {};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = key;
            input.ki.dwFlags = flags;
            SendInput(1, &input, sizeof(input));
        }
        Settle();
    }

    using Inputs = std::vector<INPUT>;

    static INPUT KeyInput(WORD key, DWORD flags = 0) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags;
        return input;
    }
    static INPUT MouseInput(DWORD action, int wheel = 0) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = action;
        input.mi.mouseData = static_cast<DWORD>(wheel);
        return input;
    }
    static INPUT MoveInput(HWND to, POINT place) {
        ClientToScreen(to, &place);
        INPUT input = MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
        input.mi.dx = (place.x * 65536 + 32768) / GetSystemMetrics(SM_CXSCREEN);
        input.mi.dy = (place.y * 65536 + 32768) / GetSystemMetrics(SM_CYSCREEN);
        return input;
    }
    static Inputs ClickInputs(HWND to, POINT place) {
        return {MoveInput(to, place), MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)};
    }
    /// Pressed at one place, let go of at another.
    static Inputs DragInputs(HWND to, POINT from, POINT until) {
        return {MoveInput(to, from), MouseInput(MOUSEEVENTF_LEFTDOWN), MoveInput(to, until),
                MouseInput(MOUSEEVENTF_LEFTUP)};
    }
    static Inputs PressInputs(WORD key) { return {KeyInput(key), KeyInput(key, KEYEVENTF_KEYUP)}; }
    /// All at once, since a press may begin a loop of its own; a modifier is held down meanwhile, 0 is none.
    void Do(Inputs inputs, WORD modifier = 0) {
        if (modifier != 0) {
            inputs.insert(inputs.begin(), KeyInput(modifier));
            inputs.push_back(KeyInput(modifier, KEYEVENTF_KEYUP));
        }
        SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
        Settle();
    }
    void AddAccounts(int count) {
        for (int i = 0; i < count; ++i) {
            const std::string key = std::to_string(i);
            TreeNode& account = form.tree.Add(nullptr, key, "Account " + key, "USER");
            form.tree.Add(&account, key + ":PROGRAMS", "Programs", "PROGRAM");
            form.tree.Add(&account, key + ":RECENT", "Recent", "PROGRAM");
        }
    }
    /// What is highlighted, what has the focus rectangle and what the control holds are one thing.
    void ExpectOneSelection() const {
        const ListItem* item = form.list.SelectedItem();
        const int row = item == nullptr ? -1 : static_cast<int>(form.list.IndexOf(*item)) - 1;
        EXPECT_EQ(SelectedRow(), row);
        EXPECT_EQ(Send(list, LVM_GETSELECTEDCOUNT), item == nullptr ? 0 : 1);
        EXPECT_EQ(Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), row);
        TVITEMW caret = {};
        caret.mask = TVIF_PARAM;
        caret.hItem = ItemOf({TVGN_CARET});
        if (caret.hItem != nullptr) {
            Send(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&caret));
        }
        EXPECT_EQ(reinterpret_cast<TreeNode*>(caret.lParam), form.tree.SelectedItem());
        EXPECT_EQ(ItemOf({TVGN_DROPHILITE}), nullptr);
    }

    [[nodiscard]] std::string CellText(int row, int column) const {
        std::array<wchar_t, 300> text{};
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        Send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return Utf8(text.data());
    }
    [[nodiscard]] POINT PlaceOfRow(int row, int x = 20) const {
        RECT area = {LVIR_BOUNDS, 0, 0, 0};
        Send(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
        return {x, (area.top + area.bottom) / 2};
    }
    [[nodiscard]] int SelectedRow() const {
        return static_cast<int>(Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    [[nodiscard]] HTREEITEM ItemOf(std::initializer_list<WPARAM> steps) const {
        HTREEITEM item = nullptr;
        for (const WPARAM step : steps) {
            item = reinterpret_cast<HTREEITEM>(
                Send(tree, TVM_GETNEXTITEM, step, reinterpret_cast<LPARAM>(item)));
        }
        return item;
    }
    [[nodiscard]] POINT PlaceOf(HTREEITEM item, int fromLeft = 5) const {
        RECT area = {};
        std::memcpy(&area, &item, sizeof(HTREEITEM));
        Send(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area));
        return {area.left + fromLeft, (area.top + area.bottom) / 2};
    }

    Win32Toolkit toolkit;
    ListsForm form{toolkit};
    HWND window = nullptr;
    HWND page = nullptr;
    HWND list = nullptr;
    HWND tree = nullptr;
    HWND tabs = nullptr;
    HWND bar = nullptr;
    HWND status = nullptr;
    HWND progress = nullptr;
};

TEST_F(ListViewsTest, ManyRowsAreAskedForOnlyInSight) {
    Open();
    std::set<int> asked;
    const Watch watch(page, [&](UINT message, WPARAM /*wParam*/, LPARAM lParam) {
        if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == LVN_GETDISPINFOW) {
            asked.insert(reinterpret_cast<const NMLVDISPINFOW*>(lParam)->item.iItem);
        }
    });
    AddRows(100000);
    Settle();
    EXPECT_EQ(Send(list, LVM_GETITEMCOUNT), 100000);
    const auto inSight = static_cast<std::size_t>(Send(list, LVM_GETCOUNTPERPAGE));
    EXPECT_GE(asked.size(), inSight);
    EXPECT_LE(asked.size(), inSight + 2);
    form.list.EnsureVisible(form.list.Item(90000));
    Settle();
    EXPECT_LE(asked.size(), 2 * (inSight + 2));
    EXPECT_TRUE(asked.contains(89999));
}

TEST_F(ListViewsTest, CellsAreTheTextsOfTheRows) {
    Open();
    AddRows(20);
    EXPECT_EQ(CellText(0, 0), "row 0");
    EXPECT_EQ(CellText(9, 1), "81");
    form.list.Item(10).SetSubItem(1, "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(CellText(9, 1), "\xC3\xA4\xE2\x82\xAC");
    const std::string longText(290, 'u');
    form.list.Item(10).SetText(longText);
    EXPECT_EQ(CellText(9, 0), longText);
}

TEST_F(ListViewsTest, NoTextOfTheEvidenceIsHandedToAWindowWhole) {
    Open();
    const std::string endless(30'000'000, 'u');
    const std::string odd = std::string("a&b\0<img>\t\r\n\x1B[1m", 17) + "\xE2\x80\xAEtxt.exe";
    const std::string shownOdd = ShownText(odd);
    EXPECT_EQ(shownOdd.find('\0'), std::string::npos);
    form.list.Add("0KEY", endless).SetSubItem(1, odd);
    form.tree.Add(nullptr, "A", endless, "USER");
    form.tree.Add(nullptr, "B", odd, "USER");
    form.label.SetCaption(endless);
    form.status.SetPanelText(1, endless);
    form.status.SetPanelText(2, "\t\tright?");
    std::size_t longest = 0;
    std::size_t cells = 0;
    const Watch watch(page, [&](UINT message, WPARAM /*wParam*/, LPARAM lParam) {
        if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == LVN_GETDISPINFOW) {
            NMLVDISPINFOW asked = *reinterpret_cast<const NMLVDISPINFOW*>(lParam);
            if ((asked.item.mask & LVIF_TEXT) != 0) {
                asked.hdr.code = LVN_GETDISPINFOW;
                ChildWindow::Of(list)->OnNotify(asked.hdr);
                longest = std::max(longest, std::wcslen(asked.item.pszText));
                ++cells;
            }
        }
    });
    Settle();
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    EXPECT_GE(cells, 2U);
    EXPECT_GT(longest, kShownAtEachEnd);
    EXPECT_LE(longest, 2 * kShownAtEachEnd + 1);
    EXPECT_EQ(CellText(0, 1), shownOdd);

    std::vector<wchar_t> text(2 * endless.size());
    TVITEMW node = {};
    node.mask = TVIF_TEXT;
    node.hItem = ItemOf({TVGN_ROOT});
    node.pszText = text.data();
    node.cchTextMax = static_cast<int>(text.size());
    Send(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
    EXPECT_LE(std::wcslen(node.pszText), 2 * kShownAtEachEnd + 1);
    node.hItem = ItemOf({TVGN_ROOT, TVGN_NEXT});
    node.pszText = text.data();
    Send(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
    EXPECT_EQ(Utf8(node.pszText), shownOdd);
    EXPECT_LE(GetWindowTextLengthW(Find(L"Static")), static_cast<int>(2 * kShownAtEachEnd + 1));
    EXPECT_LE(LOWORD(Send(status, SB_GETTEXTLENGTHW, 0)), 2 * kShownAtEachEnd + 1);
    // A tab would move the text.
    Send(status, SB_GETTEXTW, 1, reinterpret_cast<LPARAM>(text.data()));
    EXPECT_EQ(Utf8(text.data()), "\xEF\xBF\xBD\xEF\xBF\xBDright?");
    // What was typed is sought in the beginning of the text alone.
    SetFocus(list);
    Press('U');
    EXPECT_EQ(SelectedRow(), 0);
}

TEST_F(ListViewsTest, ColumnsAreAsTheFormMadeThem) {
    Open();
    const auto header = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
    EXPECT_EQ(Send(header, HDM_GETITEMCOUNT), 2);
    LVCOLUMNW column = {};
    std::array<wchar_t, 64> text{};
    column.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH;
    column.pszText = text.data();
    column.cchTextMax = static_cast<int>(text.size());
    ASSERT_TRUE(Send(list, LVM_GETCOLUMNW, 1, reinterpret_cast<LPARAM>(&column)));
    EXPECT_EQ(Utf8(column.pszText), "Number");
    EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
    EXPECT_EQ(column.cx, std::lround(1500 * toolkit.PixelsPerInchX() / 1440));
    // The first column takes what the second leaves.
    RECT area = {};
    GetClientRect(list, &area);
    EXPECT_EQ(Send(list, LVM_GETCOLUMNWIDTH, 0) + column.cx, area.right);
    form.SetWidth(form.Width() + 1500);
    Settle();
    RECT wider = {};
    GetClientRect(list, &wider);
    EXPECT_EQ(Send(list, LVM_GETCOLUMNWIDTH, 0) + column.cx, wider.right);
}

TEST_F(ListViewsTest, AColumnThatAPersonSizedStaysSo) {
    Open();
    const auto header = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
    const auto first = static_cast<LONG>(Send(list, LVM_GETCOLUMNWIDTH, 0));
    MoveTo(header, {first - 1, 8});
    Mouse({MOUSEEVENTF_LEFTDOWN});
    MoveTo(header, {first - 61, 8});
    Mouse({MOUSEEVENTF_LEFTUP});
    const LRESULT sized = Send(list, LVM_GETCOLUMNWIDTH, 0);
    EXPECT_EQ(sized, first - 60);
    AddRows(100);
    form.SetWidth(form.Width() + 1500);
    Settle();
    EXPECT_EQ(Send(list, LVM_GETCOLUMNWIDTH, 0), sized);
}

TEST_F(ListViewsTest, ChangesOfRowsAreToldOnce) {
    Open();
    int told = 0;
    const Watch watch(list, [&](UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
        told += message == LVM_SETITEMCOUNT ? 1 : 0;
    });
    AddRows(5000);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(Send(list, LVM_GETITEMCOUNT), 5000);  // whoever asks learns how it is
    Settle();
    EXPECT_EQ(told, 1);
    form.list.Clear();
    Settle();
    EXPECT_EQ(Send(list, LVM_GETITEMCOUNT), 0);
    EXPECT_EQ(told, 2);
}

TEST_F(ListViewsTest, RowsThatAreGoneHaveNoText) {
    Open();
    AddRows(10);
    Settle();
    form.list.RemoveAll([](const ListItem&) { return true; });
    std::array<wchar_t, 20> text{};
    NMLVDISPINFOW asked = {};
    asked.hdr.hwndFrom = list;
    asked.hdr.code = LVN_GETDISPINFOW;
    asked.item.mask = LVIF_TEXT;
    asked.item.iItem = 9;
    asked.item.pszText = text.data();
    asked.item.cchTextMax = static_cast<int>(text.size());
    Send(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    EXPECT_STREQ(asked.item.pszText, L"");
    UpdateWindow(list);
    EXPECT_EQ(CellText(9, 0), "");
}

TEST_F(ListViewsTest, AClickIsToldOnceAlsoOnTheSelectedRow) {
    Open();
    AddRows(10);
    Settle();
    Click(list, PlaceOfRow(3));
    EXPECT_EQ(form.Done(), Names{"item row 3"});
    EXPECT_EQ(form.list.SelectedItem(), &form.list.Item(4));
    EXPECT_EQ(SelectedRow(), 3);
    Click(list, PlaceOfRow(3, 60));
    EXPECT_EQ(form.Done(), Names{"item row 3"});
    Click(list, PlaceOfRow(5));
    EXPECT_EQ(form.Done(), Names{"item row 5"});
    EXPECT_EQ(SelectedRow(), 5);
}

TEST_F(ListViewsTest, AClickBesideTheRowsChangesNothing) {
    Open();
    AddRows(3);
    Settle();
    Click(list, PlaceOfRow(1));
    form.Done();
    POINT beside = PlaceOfRow(2);
    beside.y += 60;
    Click(list, beside);
    EXPECT_EQ(form.Done(), Names{});
    EXPECT_EQ(form.list.SelectedItem(), &form.list.Item(2));
    EXPECT_EQ(SelectedRow(), 1);
    DoubleClick(list, {beside.x + 20, beside.y});
    EXPECT_EQ(form.Done(), Names{});
}

TEST_F(ListViewsTest, WholeRowsAreClickedWhereTheStyleSaysSo) {
    Open();
    AddRows(3);
    Settle();
    const int inSecondColumn = static_cast<int>(Send(list, LVM_GETCOLUMNWIDTH, 0)) + 20;
    form.list.SetExtendedStyle(form.list.ExtendedStyle() | ListView::kFullRowSelect);
    Click(list, PlaceOfRow(2, inSecondColumn));
    EXPECT_EQ(form.Done(), Names{"item row 2"});
}

TEST_F(ListViewsTest, DoubleClickAndEnterOpenARow) {
    Open();
    AddRows(5);
    Settle();
    DoubleClick(list, PlaceOfRow(2));
    EXPECT_EQ(form.Done(), (Names{"item row 2", "open"}));
    Press(VK_RETURN);
    EXPECT_EQ(form.Done(), Names{"open"});
}

TEST_F(ListViewsTest, KeysChooseRows) {
    Open();
    AddRows(5);
    form.list.Add("", "Zebra");
    form.list.Add("", "apple");
    Settle();
    Click(list, PlaceOfRow(1));
    Press(VK_DOWN);
    EXPECT_EQ(form.Done(), (Names{"item row 1", "item row 2"}));
    Press('Z');
    EXPECT_EQ(form.Done(), Names{"item Zebra"});
    EXPECT_EQ(SelectedRow(), 5);
    Press(VK_HOME);
    EXPECT_EQ(form.Done(), Names{"item row 0"});
}

TEST_F(ListViewsTest, TypedTextIsSoughtRoundTheEndWithoutRegardToCase) {
    Open();
    AddRows(3);
    form.list.Add("", "Apple");
    form.list.Add("", "apricot");
    Settle();
    const auto find = [&](const wchar_t* typed, int from, UINT flags) {
        NMLVFINDITEMW search = {};
        search.hdr.hwndFrom = list;
        search.hdr.code = LVN_ODFINDITEMW;
        search.iStart = from;
        search.lvfi.flags = flags;
        search.lvfi.psz = typed;
        return Send(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&search));
    };
    EXPECT_EQ(find(L"AP", 0, LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP), 3);
    EXPECT_EQ(find(L"ap", 4, LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP), 4);
    EXPECT_EQ(find(L"row", 3, LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP), 0);
    EXPECT_EQ(find(L"row", 5, LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP), 0);
    EXPECT_EQ(find(L"apri", 0, LVFI_STRING), -1);
    EXPECT_EQ(find(L"apricot", 0, LVFI_STRING), 4);
    EXPECT_EQ(find(L"x", 0, LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP), -1);
}

TEST_F(ListViewsTest, HeadersAreClickedAndShowTheSort) {
    Open();
    AddRows(3);
    const auto header = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
    Click(header, {static_cast<LONG>(Send(list, LVM_GETCOLUMNWIDTH, 0)) + 20, 8});
    EXPECT_EQ(form.Done(), Names{"column Number"});
    const auto arrow = [&](WPARAM column) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        Send(header, HDM_GETITEMW, column, reinterpret_cast<LPARAM>(&item));
        return item.fmt & (HDF_SORTUP | HDF_SORTDOWN);
    };
    EXPECT_EQ(arrow(0), 0);
    form.list.SortBy(1, SortOrder::Descending);
    EXPECT_EQ(arrow(1), HasCommonControls6() ? HDF_SORTDOWN : 0);
    form.list.SortBy(0, SortOrder::Ascending);
    EXPECT_EQ(arrow(0), HasCommonControls6() ? HDF_SORTUP : 0);
    EXPECT_EQ(arrow(1), 0);
}

TEST_F(ListViewsTest, TheSelectionGoesWithItsRow) {
    Open();
    AddRows(5);
    Settle();
    Click(list, PlaceOfRow(1));
    form.list.SortBy(0, SortOrder::Descending);
    EXPECT_EQ(SelectedRow(), 3);
    EXPECT_EQ(CellText(3, 0), "row 1");
    form.list.RemoveAll([](const ListItem& item) { return item.Text() > "row 2"; });
    EXPECT_EQ(SelectedRow(), 1);
    form.list.RemoveAll([](const ListItem& item) { return item.Text() == "row 1"; });
    EXPECT_EQ(SelectedRow(), -1);
    EXPECT_EQ(Send(list, LVM_GETITEMCOUNT), 2);
    form.list.Select(&form.list.Item(2));
    EXPECT_EQ(SelectedRow(), 1);
    form.list.Select(nullptr);
    EXPECT_EQ(SelectedRow(), -1);
    Settle();
    EXPECT_EQ(form.Done(), Names{"item row 1"});  // of all that, only the click
}

TEST_F(ListViewsTest, ExtendedStylesAreThoseOfTheWindow) {
    Open();
    form.list.SetExtendedStyle(form.list.ExtendedStyle() | ListView::kFullRowSelect);
    EXPECT_EQ(Send(list, LVM_GETEXTENDEDLISTVIEWSTYLE) & (LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP),
              LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    Send(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_GRIDLINES);
    EXPECT_EQ(form.list.ExtendedStyle(), std::uint32_t{LVS_EX_GRIDLINES});
}

TEST_F(ListViewsTest, ALockedListIsShownAgainAfterwards) {
    Open();
    AddRows(5);
    Settle();
    int redrawn = 0;
    const Watch watch(list, [&](UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
        redrawn += message == LVM_REDRAWITEMS ? 1 : 0;
    });
    form.list.LockUpdate(true);
    form.list.Item(1).SetText("changed");
    form.list.Item(1).SetSubItem(1, "twice");
    form.list.LockUpdate(false);
    EXPECT_EQ(redrawn, 0);
    EXPECT_TRUE(LockWindowUpdate(tree));  // nothing else is locked any more
    LockWindowUpdate(nullptr);
    Settle();
    EXPECT_EQ(CellText(0, 0), "changed");
    form.list.Item(1).SetText("again");
    EXPECT_EQ(redrawn, 1);
}

TEST_F(ListViewsTest, TheFirstFocusOfATreeChoosesNothing) {
    Open();
    form.tree.Add(nullptr, "A", "Anna", "USER");
    form.tree.Add(nullptr, "B", "Bert", "USER");
    SetFocus(list);
    SetFocus(tree);
    Settle();
    EXPECT_EQ(form.Done(), Names{});
    EXPECT_EQ(ItemOf({TVGN_CARET}), nullptr);
    // The first key does.
    Press(VK_DOWN);
    EXPECT_EQ(form.Done(), Names{"node A"});
    Press(VK_DOWN);
    EXPECT_EQ(form.Done(), Names{"node B"});
    EXPECT_EQ(form.tree.SelectedItem()->Key(), "B");
}

TEST_F(ListViewsTest, NodesAreChosenByMouseAndKeys) {
    TreeNode& anna = form.tree.Add(nullptr, "A", "Anna", "USER");
    form.tree.Add(&anna, "A:PROGRAMS", "Programs", "PROGRAM");
    Open();
    TreeNode& bert = form.tree.Add(nullptr, "B", "Bert", "USER");
    form.tree.Add(&bert, "B:PROGRAMS", "Programs", "PROGRAM");
    Settle();
    const HTREEITEM first = ItemOf({TVGN_ROOT});
    Click(tree, PlaceOf(first));
    EXPECT_EQ(form.Done(), Names{"node A"});
    Click(tree, PlaceOf(first, 15));
    EXPECT_EQ(form.Done(), Names{"node A"});
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    EXPECT_EQ(form.Done(), Names{"node A:PROGRAMS"});
    EXPECT_EQ(ItemOf({TVGN_CARET}), ItemOf({TVGN_ROOT, TVGN_CHILD}));
    // By code: its parent is opened, and nothing is told.
    form.tree.Select(form.tree.Node("B:PROGRAMS"));
    Settle();
    EXPECT_EQ(form.Done(), Names{});
    EXPECT_EQ(ItemOf({TVGN_CARET}), ItemOf({TVGN_ROOT, TVGN_NEXT, TVGN_CHILD}));
    // Closing a node takes the selection from the nodes in it.
    const LONG button = static_cast<LONG>(Send(tree, TVM_GETINDENT)) / 2;
    Click(tree, {button, PlaceOf(ItemOf({TVGN_ROOT, TVGN_NEXT})).y});
    EXPECT_EQ(form.Done(), Names{"node B"});
    EXPECT_EQ(form.tree.SelectedItem(), &bert);
}

// What is highlighted, what has the focus rectangle and what the control holds.

TEST_F(ListViewsTest, APressOnARowSelectsAndASlipChangesNothing) {
    Open();
    AddRows(10);
    Settle();
    Do(DragInputs(list, PlaceOfRow(2), PlaceOfRow(6)));
    EXPECT_EQ(form.Done(), Names{"item row 2"});
    ExpectOneSelection();
    Do(DragInputs(list, PlaceOfRow(4), {PlaceOfRow(4).x, PlaceOfRow(4).y + 2}));
    EXPECT_EQ(form.Done(), Names{"item row 4"});
    ExpectOneSelection();
}

TEST_F(ListViewsTest, APressOnANodeSelectsAndASlipChangesNothing) {
    AddAccounts(3);
    Open();
    const HTREEITEM first = ItemOf({TVGN_ROOT});
    const HTREEITEM second = ItemOf({TVGN_ROOT, TVGN_NEXT});
    Click(tree, PlaceOf(first));
    EXPECT_EQ(form.Done(), Names{"node 0"});
    Do(DragInputs(tree, PlaceOf(second), PlaceOf(first)));
    EXPECT_EQ(form.Done(), Names{"node 1"});
    ExpectOneSelection();
}

TEST_F(ListViewsTest, TheControlKeyTakesNoSelectionAway) {
    Open();
    AddRows(10);
    Settle();
    Click(list, PlaceOfRow(3));
    Do(ClickInputs(list, PlaceOfRow(3, 60)), VK_CONTROL);
    EXPECT_EQ(SelectedRow(), 3);
    ExpectOneSelection();
    Do(PressInputs(VK_SPACE), VK_CONTROL);
    EXPECT_EQ(SelectedRow(), 3);
    ExpectOneSelection();
    Do(PressInputs(VK_DOWN), VK_CONTROL);
    ExpectOneSelection();
    // As where the focus goes without the selection, at the window's own wish.
    LVITEMW state = {};
    state.stateMask = state.state = LVIS_FOCUSED;
    Send(list, LVM_SETITEMSTATE, 7, reinterpret_cast<LPARAM>(&state));
    Settle();
    EXPECT_EQ(SelectedRow(), 7);
    ExpectOneSelection();
    state.state = 0;
    state.stateMask = LVIS_SELECTED;
    Send(list, LVM_SETITEMSTATE, 7, reinterpret_cast<LPARAM>(&state));
    Settle();
    EXPECT_EQ(SelectedRow(), 7);
    ExpectOneSelection();
}

TEST_F(ListViewsTest, WithNothingSelectedAKeySelectsTheFirstRow) {
    Open();
    AddRows(100);
    Settle();
    SetFocus(list);
    Settle();
    EXPECT_EQ(form.Done(), Names{});
    ExpectOneSelection();
    Press(VK_DOWN);
    EXPECT_EQ(form.Done(), Names{"item row 0"});
    ExpectOneSelection();
    form.list.Select(nullptr);
    ExpectOneSelection();
    Press(VK_NEXT);
    EXPECT_EQ(form.Done(), Names{"item row 0"});
    form.list.Select(nullptr);
    form.list.EnsureVisible(form.list.Item(100));
    Press(VK_END);
    EXPECT_EQ(form.Done(), Names{"item row 0"});
    EXPECT_EQ(Send(list, LVM_GETTOPINDEX), 0);
    form.list.Select(nullptr);
    Press(VK_RETURN);
    EXPECT_EQ(form.Done(), Names{});
    ExpectOneSelection();
}

TEST_F(ListViewsTest, WithNothingSelectedAKeySelectsTheFirstNode) {
    AddAccounts(3);
    Open();
    SetFocus(tree);
    Press(VK_END);
    EXPECT_EQ(form.Done(), Names{"node 0"});
    ExpectOneSelection();
}

TEST_F(ListViewsTest, WhateverAPersonDoesSelectionHighlightAndFocusAreOne) {
    AddAccounts(8);
    Open();
    AddRows(60);
    form.list.Add("", "Zebra");
    form.list.Add("", "apple");
    Settle();
    std::minstd_rand random(20061231);
    const auto number = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const auto place = [&](HWND shown) {
        RECT inside = {};
        GetClientRect(shown, &inside);
        return POINT{number(static_cast<int>(inside.right)), number(static_cast<int>(inside.bottom))};
    };
    constexpr std::array<WORD, 17> kKeys = {VK_UP,    VK_DOWN, VK_UP,   VK_DOWN,     VK_LEFT,  VK_RIGHT,
                                            VK_PRIOR, VK_NEXT, VK_HOME, VK_END,      VK_SPACE, 'R',
                                            'A',      'Z',     VK_ADD,  VK_SUBTRACT, '1'};
    constexpr std::array<WORD, 4> kModifiers = {0, 0, VK_CONTROL, VK_SHIFT};
    const int inputs = HasCommonControls6() ? 2000 : 500;
    int chosen = 0;
    for (int input = 0; input < inputs && !HasFailure(); ++input) {
        const HWND shown = number(2) == 0 ? list : tree;
        const WORD modifier = kModifiers[static_cast<std::size_t>(number(4))];
        const int kind = number(12);
        SCOPED_TRACE("input " + std::to_string(input) + ", kind " + std::to_string(kind) + ", modifier " +
                     std::to_string(modifier) + (shown == list ? ", list" : ", tree"));
        const POINT from = place(shown);
        switch (kind) {
            case 0:
            case 1:
                Do(ClickInputs(shown, from), modifier);
                break;
            case 2:
                Do(DragInputs(shown, from, place(shown)), modifier);
                break;
            case 3:
                Do({MoveInput(shown, from), MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP),
                    MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)},
                   modifier);
                break;
            case 4:
                Do({MoveInput(shown, from), MouseInput(MOUSEEVENTF_RIGHTDOWN),
                    MouseInput(MOUSEEVENTF_RIGHTUP)},
                   modifier);
                break;
            case 5:
                Do({MoveInput(shown, from),
                    MouseInput(MOUSEEVENTF_WHEEL, number(2) == 0 ? WHEEL_DELTA : -WHEEL_DELTA)},
                   modifier);
                break;
            case 6:
                SetFocus(shown);
                Settle();
                break;
            default:
                Do(PressInputs(kKeys[static_cast<std::size_t>(number(static_cast<int>(kKeys.size())))]),
                   modifier);
                break;
        }
        if (number(50) == 0) {  // and what the program does meanwhile
            form.list.SortBy(number(2), number(2) == 0 ? SortOrder::Ascending : SortOrder::Descending);
            form.list.Select(number(2) == 0 ? nullptr
                                            : &form.list.Item(static_cast<std::size_t>(number(60)) + 1));
            Settle();
        }
        chosen += static_cast<int>(form.Done().size());
        ExpectOneSelection();
    }
    EXPECT_GT(chosen, inputs / 4);
}

TEST_F(ListViewsTest, NodesHaveTextsAndImages) {
    TreeNode& anna = form.tree.Add(nullptr, "A", "Anna", "USER");
    form.tree.Add(&anna, "A:PROGRAMS", "Programs", "PROGRAM");
    Open();
    std::array<wchar_t, 64> text{};
    TVITEMW item = {};
    item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    item.hItem = ItemOf({TVGN_ROOT, TVGN_CHILD});
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    ASSERT_TRUE(Send(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    EXPECT_EQ(Utf8(text.data()), "Programs");
    EXPECT_EQ(item.iImage, 1);
    EXPECT_EQ(item.iSelectedImage, 1);
    const auto images = reinterpret_cast<HIMAGELIST>(Send(tree, TVM_GETIMAGELIST, TVSIL_NORMAL));
    EXPECT_EQ(ImageList_GetImageCount(images), 2);
    EXPECT_EQ(ImageList_GetBkColor(images), CLR_NONE);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(images, &width, &height);
    EXPECT_EQ(width, std::lround(toolkit.PixelsPerInchX() / 6));
    form.listImages.SetBkColor(0x0000FF);
    EXPECT_EQ(ImageList_GetBkColor(images), RGB(255, 0, 0));
}

TEST_F(ListViewsTest, TabsAreChosenByMouseAndKeys) {
    Open();
    EXPECT_EQ(Send(tabs, TCM_GETITEMCOUNT), 2);
    RECT second = {};
    Send(tabs, TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    Click(tabs, {second.left + 10, second.top + 8});
    EXPECT_EQ(form.Done(), Names{"tab 2"});
    EXPECT_EQ(form.tabs.SelectedTab(), 2);
    SetFocus(tabs);
    Press(VK_LEFT);
    EXPECT_EQ(form.Done(), Names{"tab 1"});
    form.tabs.Select(2);
    EXPECT_EQ(form.Done(), Names{"tab 2"});
    EXPECT_EQ(Send(tabs, TCM_GETCURSEL), 1);
}

TEST_F(ListViewsTest, PagesStandWithinTheTabsAndAreNotPaintedOver) {
    Open();
    RECT client = {};
    GetClientRect(tabs, &client);
    Send(tabs, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&client));
    MapWindowPoints(tabs, window, reinterpret_cast<POINT*>(&client), 2);
    RECT shown = {};
    GetWindowRect(page, &shown);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&shown), 2);
    EXPECT_NEAR(shown.left, client.left, 1);
    EXPECT_NEAR(shown.top, client.top, 1);
    EXPECT_NEAR(shown.right, client.right, 1);
    EXPECT_NEAR(shown.bottom, client.bottom, 1);
    AddRows(3);
    Settle();
    RedrawWindow(tabs, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    const HDC screen = GetDC(list);
    RECT inside = {};
    GetClientRect(list, &inside);
    EXPECT_EQ(GetPixel(screen, inside.right - 10, inside.bottom - 10), GetSysColor(COLOR_WINDOW));
    ReleaseDC(list, screen);
}

TEST_F(ListViewsTest, ButtonsAreClickedByMouseAndKeys) {
    Open();
    RECT first = {};
    Send(bar, TB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
    Click(bar, {first.left + 10, first.top + 10});
    EXPECT_EQ(form.Done(), Names{"button FILTER"});
    EXPECT_EQ(form.bar.Button("FILTER").Value(), ToolButton::kPressed);
    EXPECT_TRUE(Send(bar, TB_ISBUTTONCHECKED, 1));
    SetFocus(bar);
    Settle();
    Press(VK_SPACE);
    EXPECT_EQ(form.Done(), Names{"button FILTER"});
    EXPECT_FALSE(Send(bar, TB_ISBUTTONCHECKED, 1));
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    Press(VK_RETURN);
    EXPECT_EQ(form.Done(), Names{"button FIND"});
    Press(VK_LEFT);
    Press(VK_SPACE);
    EXPECT_EQ(form.Done(), Names{"button FILTER"});
}

TEST_F(ListViewsTest, ButtonsShowTheirState) {
    Open();
    form.bar.Button("FILTER").SetValue(ToolButton::kPressed);
    EXPECT_TRUE(Send(bar, TB_ISBUTTONCHECKED, 1));
    form.bar.Button("FIND").SetEnabled(false);
    EXPECT_FALSE(Send(bar, TB_ISBUTTONENABLED, 2));
    RECT second = {};
    Send(bar, TB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&second));
    Click(bar, {second.left + 10, second.top + 10});
    // The keyboard passes it by.
    SetFocus(bar);
    Press(VK_RIGHT);
    Press(VK_RETURN);
    EXPECT_EQ(form.Done(), Names{"button FILTER"});
    EXPECT_NE(Send(bar, TB_GETDISABLEDIMAGELIST), 0);
}

TEST_F(ListViewsTest, ButtonsHaveToolTips) {
    Open();
    std::array<wchar_t, 80> text{};
    NMTBGETINFOTIPW tip = {};
    tip.hdr.hwndFrom = bar;
    tip.hdr.code = TBN_GETINFOTIPW;
    tip.pszText = text.data();
    tip.cchTextMax = static_cast<int>(text.size());
    tip.iItem = 2;
    Send(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&tip));
    EXPECT_EQ(Utf8(text.data()), "Find in List");
    EXPECT_NE(Send(bar, TB_GETTOOLTIPS), 0);
}

TEST_F(ListViewsTest, PanelsShowTheirTexts) {
    form.status.SetPanelText(2, "before");
    Open();
    const auto textOf = [&](WPARAM panel) {
        std::array<wchar_t, 128> text{};
        Send(status, SB_GETTEXTW, panel, reinterpret_cast<LPARAM>(text.data()));
        return Utf8(text.data());
    };
    EXPECT_EQ(textOf(1), "before");
    form.status.SetPanelText(2, "12:30:00");
    EXPECT_EQ(textOf(0), "");
    EXPECT_EQ(textOf(1), "12:30:00");
    std::array<int, 2> right{};
    EXPECT_EQ(Send(status, SB_GETPARTS, right.size(), reinterpret_cast<LPARAM>(right.data())), 2);
    const int wideEnough = right[0];
    form.status.SetPanelText(2, "a text that is a good deal wider than the panel");
    Send(status, SB_GETPARTS, right.size(), reinterpret_cast<LPARAM>(right.data()));
    EXPECT_LT(right[0], wideEnough);
}

TEST_F(ListViewsTest, ProgressIsShownInParts) {
    Open();
    const auto part = [&] {
        PBRANGE range = {};
        Send(progress, PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
        return static_cast<double>(Send(progress, PBM_GETPOS)) / range.iHigh;
    };
    EXPECT_EQ(part(), 0);
    form.progress.SetMax(3);
    form.progress.SetValue(1);
    EXPECT_NEAR(part(), 1.0 / 3, 0.001);
    form.progress.SetValue(3);
    EXPECT_EQ(part(), 1);
}

TEST(PicturesTest, ImagesAreTransparentOnAnyBackground) {
    Win32Toolkit toolkit;
    ImageList images;
    images.Add("USER", "list-USER");
    images.SetBkColor(ImageList::kNoColor);
    const NativeImages native(toolkit, &images, 16, RGB(255, 255, 255));
    EXPECT_EQ(native.IndexOf("USER"), 0);
    EXPECT_EQ(native.IndexOf("NONE"), -1);
    const int size = native.Size();
    const Picture plain{size, size,
                        std::vector<std::uint32_t>(
                            static_cast<std::size_t>(size) * static_cast<std::size_t>(size), 0x00FF00)};
    const BitmapPtr canvas = MakeBitmap(plain);
    const HDC memory = CreateCompatibleDC(nullptr);
    const HGDIOBJ former = SelectObject(memory, canvas.get());
    ImageList_Draw(native.Handle(), 0, memory, 0, 0, ILD_NORMAL);
    EXPECT_EQ(GetPixel(memory, 0, 0), RGB(0, 255, 0));
    EXPECT_NE(GetPixel(memory, size / 2, size / 2), RGB(0, 255, 0));
    const Picture user = ReadPicture("list-USER", size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const std::uint32_t point = user.pixels[static_cast<std::size_t>(y * size + x)];
            if (point >> 24U == 255) {
                EXPECT_EQ(GetPixel(memory, x, y), RGB(point >> 16U & 255U, point >> 8U & 255U, point & 255U));
            }
        }
    }
    SelectObject(memory, former);
    DeleteDC(memory);
}

TEST(PicturesTest, TheNearestSizeIsTaken) {
    EXPECT_EQ(ReadPicture("list-USER", 16).width, 16);
    EXPECT_EQ(ReadPicture("list-USER", 27).width, 24);
    EXPECT_EQ(ReadPicture("list-USER", 1000).width, 32);
    EXPECT_EQ(ReadPicture("list-NONE", 16).width, 0);
    const Picture user = ReadPicture("list-USER", 32);
    ASSERT_EQ(user.pixels.size(), 32U * 32U);
    EXPECT_EQ(user.pixels.front() >> 24U, 0U);  // a corner is transparent, the middle is not
    EXPECT_EQ(user.pixels[32 * 16 + 16] >> 24U, 255U);
}

}  // namespace
}  // namespace ostrevin::win32
