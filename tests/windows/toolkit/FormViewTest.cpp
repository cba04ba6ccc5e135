// Forms as Windows shows them: what dialogs are made of, the keys of dialogs, and the windows around.
#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "controls/Boxes.h"
#include "controls/CommonDialog.h"
#include "controls/Form.h"
#include "controls/Inputs.h"
#include "controls/TabStrip.h"
#include "controls/Timer.h"
#include "toolkit/win32/Text.h"
#include "toolkit/win32/Win32FormView.h"
#include "toolkit/win32/Win32Toolkit.h"
#include "widgets/Splitter.h"

namespace ostrevin::win32 {
namespace {

using Strings = std::vector<std::string>;
using Places = std::vector<std::size_t>;

constexpr int kFileNameBox = 0x47C;  // of the dialogs that ask for a file
constexpr char kDpiVariable[] = "OSTREVIN_EXPECTED_DPI";

/// Does things in their turn while the program waits in a loop, each as soon as the window with a title is
/// the active one.
class Person {
  public:
    struct Step {
        std::wstring title;
        std::function<void(HWND)> act;
    };

    explicit Person(std::deque<Step> steps) : steps_(std::move(steps)) {
        person_ = this;
        timer_ = SetTimer(nullptr, 0, kPause, Look);
    }
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;
    ~Person() {
        KillTimer(nullptr, timer_);
        EXPECT_TRUE(steps_.empty());
        person_ = nullptr;
    }

  private:
    static constexpr UINT kPause = 20;

    static void CALLBACK Look(HWND /*window*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
        const HWND active = GetActiveWindow();
        std::array<wchar_t, 64> title{};
        GetWindowTextW(active, title.data(), static_cast<int>(title.size()));
        std::deque<Step>& steps = person_->steps_;
        if (!steps.empty() && steps.front().title == title.data()) {
            const Step step = std::move(steps.front());
            steps.pop_front();
            step.act(active);
        }
    }

    static inline Person* person_ = nullptr;
    std::deque<Step> steps_;
    UINT_PTR timer_;
};

/// Says no to any box that is shown over the dialog with a title, and notes that there was one.
class Refusal {
  public:
    Refusal(std::wstring title, bool& wasAsked) : title_(std::move(title)), wasAsked_(wasAsked) {
        refusal_ = this;
        timer_ = SetTimer(nullptr, 0, 100, Look);
    }
    Refusal(const Refusal&) = delete;
    Refusal& operator=(const Refusal&) = delete;
    ~Refusal() {
        KillTimer(nullptr, timer_);
        refusal_ = nullptr;
    }

  private:
    static void CALLBACK Look(HWND /*window*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
        const HWND active = GetActiveWindow();
        const HWND owner = GetWindow(active, GW_OWNER);
        std::array<wchar_t, 64> title{};
        GetWindowTextW(owner, title.data(), static_cast<int>(title.size()));
        if (owner != nullptr && refusal_->title_ == title.data()) {
            refusal_->wasAsked_ = true;
            PostMessageW(active, WM_COMMAND, IDNO, 0);
            PostMessageW(owner, WM_COMMAND, IDCANCEL, 0);
        }
    }

    static inline Refusal* refusal_ = nullptr;
    std::wstring title_;
    bool& wasAsked_;
    UINT_PTR timer_;
};

class SampleForm : public Form {
  public:
    SampleForm(Toolkit& toolkit, enum BorderStyle style) : Form(toolkit, "frmSample") {
        SetBorderStyle(style);
        SetCaption(style == BorderStyle::FixedDialog ? "Dialog" : "Window");
        Move(0, 0, 6000, 4500);
        label.Move(150, 150, 2000, 300);
        label.SetCaption("Tom & Jerry");
        text.Move(150, 450, 2000, 375);
        frame.Move(150, 900, 3000, 1200);
        frame.SetCaption("Group");
        check.Move(150, 375, 2000, 300);
        check.SetCaption("&Check");
        combo.Move(150, 2200, 2000, 375);
        combo.AddItem("anna");
        combo.AddItem("ben");
        box.Move(3300, 150, 2400, 1500);
        ok.Move(150, 3200, 1200, 375);
        ok.SetCaption("&OK");
        ok.SetDefault();
        other.Move(1500, 3200, 1200, 375);
        other.SetCaption("Ot&her");
        other.SetFontName("Arial");
        ok.Click = [this] { log.emplace_back("ok"); };
        other.Click = [this] { log.emplace_back("other"); };
    }
    ~SampleForm() override { DropView(); }

    Label label{this, "label"};
    TextBox text{this, "text"};
    Frame frame{this, "frame"};
    CheckBox check{&frame, "check"};
    ComboBox combo{this, "combo"};
    PictureBox box{this, "box"};
    CommandButton ok{this, "ok"};
    CommandButton other{this, "other"};
    Timer timer{this, "timer"};
    Strings log;
    bool mayClose = true;

  protected:
    void Form_Resize() override {
        log.push_back("resize " +
                      std::to_string(std::lround(ScaleX(ScaleWidth(), ScaleMode::Twip, ScaleMode::Pixel))) +
                      (WindowState() == WindowState::Minimized ? " minimized" : ""));
    }
    bool Form_QueryUnload() override { return mayClose; }
    void Form_Unload() override { log.emplace_back("unload"); }
};

class FormViewTest : public ::testing::Test {
  protected:
    void Show(Form& shown) {
        shown.Show();
        SetActiveWindow(WindowOf(shown));
        toolkit.DoEvents();
        dialog.log.clear();
        window.log.clear();
    }
    [[nodiscard]] static HWND WindowOf(const Form& shown) {
        return static_cast<Win32FormView*>(shown.View())->Window();
    }
    /// The window of a class, by its place among those on a form, in the order that they were made in.
    [[nodiscard]] static HWND Child(const Form& shown, const wchar_t* windowClass, std::size_t place = 0) {
        struct Search {
            std::wstring windowClass;
            std::vector<HWND> found;
        } search{windowClass, {}};
        EnumChildWindows(
            WindowOf(shown),
            [](HWND child, LPARAM parameter) -> BOOL {
                auto& sought = *reinterpret_cast<Search*>(parameter);
                std::array<wchar_t, 64> name{};
                GetClassNameW(child, name.data(), static_cast<int>(name.size()));
                if (lstrcmpiW(name.data(), sought.windowClass.c_str()) == 0) {
                    sought.found.push_back(child);
                }
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&search));
        // The foremost is told first, and is the one that was made last; what stands on it follows it.
        std::reverse(search.found.begin(), search.found.end());
        return place < search.found.size() ? search.found[place] : nullptr;
    }
    [[nodiscard]] static HWND ByText(const Form& shown, const wchar_t* text) {
        struct Search {
            std::wstring text;
            HWND found = nullptr;
        } search{text, nullptr};
        EnumChildWindows(
            WindowOf(shown),
            [](HWND child, LPARAM parameter) -> BOOL {
                auto& sought = *reinterpret_cast<Search*>(parameter);
                if (TextOf(child) == sought.text) {
                    sought.found = child;
                }
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    [[nodiscard]] static std::wstring TextOf(HWND shown) {
        std::array<wchar_t, 512> text{};
        SendMessageW(shown, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        return text.data();
    }
    /// Presses a key where the focus is, with the modifiers VK_SHIFT or VK_CONTROL held down.
    void Press(int key, int modifier = 0) {
        std::array<BYTE, 256> before{};
        GetKeyboardState(before.data());
        std::array<BYTE, 256> held{};
        if (modifier != 0) {
            held[static_cast<std::size_t>(modifier)] = 0x80;
        }
        SetKeyboardState(held.data());
        PostMessageW(GetFocus(), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
        toolkit.DoEvents();
        SetKeyboardState(before.data());
    }
    void PressAlt(wchar_t character) {
        constexpr LPARAM kAltIsDown = 1 << 29;
        PostMessageW(GetFocus(), WM_SYSCHAR, character, kAltIsDown | 1);
        toolkit.DoEvents();
    }
    void Type(const wchar_t* characters) {
        for (; *characters != 0; ++characters) {
            PostMessageW(GetFocus(), WM_CHAR, *characters, 1);
        }
        toolkit.DoEvents();
    }
    [[nodiscard]] int PixelsX(double twips) const {
        return static_cast<int>(std::lround(twips * toolkit.PixelsPerInchX() / 1440));
    }
    [[nodiscard]] static SIZE InnerSize(HWND shown) {
        RECT rect{};
        GetClientRect(shown, &rect);
        return {rect.right, rect.bottom};
    }
    [[nodiscard]] Places Rank(const Strings& texts) const {
        return toolkit.RankTexts(std::vector<std::string_view>(texts.begin(), texts.end()));
    }

    Win32Toolkit toolkit;
    SampleForm dialog{toolkit, BorderStyle::FixedDialog};
    SampleForm window{toolkit, BorderStyle::Sizable};
};

TEST_F(FormViewTest, SizesAreThoseOfTheInsideAtTheScreensResolution) {
    if (const char* expected = std::getenv(kDpiVariable)) {
        EXPECT_EQ(toolkit.PixelsPerInchX(), std::atoi(expected));
        EXPECT_EQ(toolkit.PixelsPerInchY(), std::atoi(expected));
    }
    for (SampleForm* form : {&dialog, &window}) {
        if (form == &window) {
            window.Menus().Add("mnuFile", "&File").Add("mnuExit", "E&xit");
        }
        Show(*form);
        const SIZE inside = InnerSize(WindowOf(*form));
        EXPECT_EQ(inside.cx, PixelsX(6000));
        EXPECT_EQ(inside.cy, PixelsX(4500));
        RECT place{};
        GetWindowRect(Child(*form, L"EDIT"), &place);
        EXPECT_EQ(place.right - place.left, PixelsX(2150) - PixelsX(150));
        EXPECT_EQ(place.bottom - place.top, PixelsX(825) - PixelsX(450));
        GetWindowRect(Child(*form, L"COMBOBOX"), &place);
        EXPECT_EQ(place.bottom - place.top, PixelsX(2575) - PixelsX(2200));
    }
}

/// A screen whose points are not square.
class OblongPixels : public Win32Toolkit {
  public:
    [[nodiscard]] double PixelsPerInchX() const override { return 120; }
    [[nodiscard]] double PixelsPerInchY() const override { return 144; }
};

TEST(FormViewOnOblongPixels, HasAScaleAcrossAndAnotherOneDown) {
    OblongPixels screen;
    for (const BorderStyle style : {BorderStyle::FixedDialog, BorderStyle::Sizable}) {
        SampleForm form(screen, style);
        form.SetMinPixelSize(300, 200);
        form.Show();
        const HWND shown = static_cast<Win32FormView*>(form.View())->Window();
        RECT inside{};
        GetClientRect(shown, &inside);
        EXPECT_EQ(inside.right, 500);   // 6000 twips
        EXPECT_EQ(inside.bottom, 450);  // 4500 twips
        RECT place{};
        GetWindowRect(FindWindowExW(shown, nullptr, L"EDIT", nullptr), &place);
        MapWindowPoints(nullptr, shown, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_EQ(place.left, 13);  // 150 twips
        EXPECT_EQ(place.top, 45);   // 450 twips
        EXPECT_EQ(place.right, 179);
        EXPECT_EQ(place.bottom, 83);
        form.Move(0, 0, 4800, 3600);
        GetClientRect(shown, &inside);
        EXPECT_EQ(inside.right, 400);
        EXPECT_EQ(inside.bottom, 360);
        form.Unload();
    }
}

TEST_F(FormViewTest, CaptionsAreShownAsTheyStand) {
    Show(dialog);
    EXPECT_EQ(TextOf(WindowOf(dialog)), L"Dialog");
    dialog.SetCaption("Other \xC3\xA4");
    EXPECT_EQ(TextOf(WindowOf(dialog)), L"Other \u00E4");
    const HWND label = Child(dialog, L"STATIC");
    EXPECT_EQ(TextOf(label), L"Tom & Jerry");
    EXPECT_NE(GetWindowLongW(label, GWL_STYLE) & SS_NOPREFIX, 0);
    dialog.label.SetCaption("later");
    EXPECT_EQ(TextOf(label), L"later");
    EXPECT_NE(ByText(dialog, L"Group"), nullptr);
}

TEST_F(FormViewTest, AControlHasTheTypefaceThatItAsksForInTheSizeOfTheOthers) {
    Show(dialog);
    const auto fontOf = [](HWND shown) {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(SendMessageW(shown, WM_GETFONT, 0, 0)), sizeof(font), &font);
        return font;
    };
    const LOGFONTW asked = fontOf(ByText(dialog, L"Ot&her"));
    const LOGFONTW usual = fontOf(ByText(dialog, L"&OK"));
    EXPECT_STREQ(asked.lfFaceName, L"Arial");
    EXPECT_STRNE(usual.lfFaceName, L"Arial");
    EXPECT_EQ(asked.lfHeight, usual.lfHeight);
}

TEST_F(FormViewTest, EnterPressesTheDefaultButtonUnlessAnotherHasTheFocus) {
    Show(dialog);
    EXPECT_EQ(GetFocus(), Child(dialog, L"EDIT"));
    const auto isDefault = [this](const wchar_t* caption) {
        return (GetWindowLongW(ByText(dialog, caption), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    };
    EXPECT_TRUE(isDefault(L"&OK"));
    Press(VK_RETURN);
    EXPECT_EQ(dialog.log, Strings{"ok"});
    SetFocus(ByText(dialog, L"Ot&her"));
    EXPECT_TRUE(isDefault(L"Ot&her"));
    EXPECT_FALSE(isDefault(L"&OK"));
    Press(VK_RETURN);
    EXPECT_EQ(dialog.log, (Strings{"ok", "other"}));
    SetFocus(ByText(dialog, L"&Check"));
    EXPECT_TRUE(isDefault(L"&OK"));
    dialog.ok.SetEnabled(false);
    Press(VK_RETURN);
    EXPECT_EQ(dialog.log, (Strings{"ok", "other"}));
}

TEST_F(FormViewTest, EscapePressesTheCancelButtonElseClosesADialog) {
    Show(window);
    Press(VK_ESCAPE);
    EXPECT_TRUE(window.Loaded());
    dialog.other.SetCancel();
    Show(dialog);
    Press(VK_ESCAPE);
    EXPECT_EQ(dialog.log, Strings{"other"});
    dialog.SetCancelButton(nullptr);
    dialog.mayClose = false;
    Press(VK_ESCAPE);
    EXPECT_TRUE(dialog.Loaded());
    dialog.mayClose = true;
    Press(VK_ESCAPE);
    EXPECT_FALSE(dialog.Loaded());
}

TEST_F(FormViewTest, TabWalksTheControlsThatCanHaveTheFocus) {
    dialog.combo.SetEnabled(false);
    Show(dialog);
    const std::vector<HWND> stops = {Child(dialog, L"EDIT"), ByText(dialog, L"&Check"),
                                     ByText(dialog, L"&OK"), ByText(dialog, L"Ot&her")};
    for (std::size_t i = 0; i < 2 * stops.size(); ++i) {
        EXPECT_EQ(GetFocus(), stops[i % stops.size()]) << i;
        Press(VK_TAB);
    }
    for (std::size_t i = 2 * stops.size(); i > 0; --i) {
        EXPECT_EQ(GetFocus(), stops[i % stops.size()]) << i;
        Press(VK_TAB, VK_SHIFT);
    }
    dialog.frame.SetVisible(false);
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), stops[2]);
    Press(VK_RIGHT);
    EXPECT_EQ(GetFocus(), stops[3]);
    Press(VK_UP);
    EXPECT_EQ(GetFocus(), stops[2]);
}

TEST_F(FormViewTest, WhatIsHiddenOrDisabledGivesTheFocusAway) {
    Show(dialog);
    SetFocus(ByText(dialog, L"&Check"));
    dialog.frame.SetVisible(false);
    EXPECT_EQ(GetFocus(), Child(dialog, L"EDIT"));
    SetFocus(ByText(dialog, L"Ot&her"));
    dialog.other.SetEnabled(false);
    EXPECT_EQ(GetFocus(), ByText(dialog, L"&OK"));
}

TEST_F(FormViewTest, MnemonicsPressButtonsAndCheckBoxes) {
    Show(dialog);
    PressAlt(L'h');
    EXPECT_EQ(dialog.log, Strings{"other"});
    EXPECT_EQ(GetFocus(), ByText(dialog, L"Ot&her"));
    PressAlt(L'C');
    EXPECT_EQ(dialog.check.Value(), CheckBox::kChecked);
    // Where nothing is typed, the letter alone does.
    Type(L"o");
    EXPECT_EQ(dialog.log, (Strings{"other", "ok"}));
    SetFocus(Child(dialog, L"EDIT"));
    Type(L"o");
    EXPECT_EQ(dialog.text.Text(), "o");
    EXPECT_EQ(dialog.log.size(), 2U);
}

TEST_F(FormViewTest, TextIsTypedAndSet) {
    Show(dialog);
    int changes = 0;
    dialog.text.Change = [&] { ++changes; };
    Type(L"a\u00E4");
    EXPECT_EQ(dialog.text.Text(), "a\xC3\xA4");
    EXPECT_EQ(changes, 2);
    const HWND edit = Child(dialog, L"EDIT");
    dialog.text.SetText("\xE2\x82\xAC uro");
    EXPECT_EQ(TextOf(edit), L"\u20AC uro");
    EXPECT_EQ(changes, 3);
    DWORD first = 0;
    DWORD last = 0;
    const auto readSelection = [&] {
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    };
    Press('A', VK_CONTROL);
    readSelection();
    EXPECT_EQ(first, 0U);
    EXPECT_EQ(last, 5U);
    SendMessageW(edit, EM_SETSEL, 2, 2);
    Press(VK_TAB);
    Press(VK_TAB, VK_SHIFT);  // comes back to all of the text
    readSelection();
    EXPECT_EQ(first, 0U);
    EXPECT_EQ(last, 5U);
    EXPECT_EQ(changes, 3);
}

TEST_F(FormViewTest, TextStandsInTheMiddleOfItsBox) {
    dialog.text.Move(3300, 1800, 2000, 750);
    Show(dialog);
    const HWND edit = Child(dialog, L"EDIT");
    RECT box{};
    GetWindowRect(edit, &box);
    POINT inside{0, 0};
    ClientToScreen(edit, &inside);
    const LONG above = inside.y - box.top;
    const LONG below = box.bottom - inside.y - InnerSize(edit).cy;
    EXPECT_GT(above, GetSystemMetrics(SM_CYEDGE));
    EXPECT_EQ(above, below);
    // The margins take clicks and look like the inside.
    EXPECT_EQ(SendMessageW(edit, WM_NCHITTEST, 0, MAKELPARAM(box.left + 20, box.top + 4)), HTCLIENT);
    dialog.Refresh();
    const HDC canvas = GetWindowDC(edit);
    EXPECT_EQ(GetPixel(canvas, 20, 4), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetPixel(canvas, 20, box.bottom - box.top - 4), GetSysColor(COLOR_WINDOW));
    ReleaseDC(edit, canvas);
}

TEST_F(FormViewTest, CheckBoxFollowsClicksAndCode) {
    dialog.check.SetValue(CheckBox::kGrayed);
    Show(dialog);
    const HWND box = ByText(dialog, L"&Check");
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), BST_INDETERMINATE);
    SendMessageW(box, BM_CLICK, 0, 0);
    EXPECT_EQ(dialog.check.Value(), CheckBox::kChecked);
    SendMessageW(box, BM_CLICK, 0, 0);
    EXPECT_EQ(dialog.check.Value(), CheckBox::kUnchecked);
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    dialog.check.SetValue(CheckBox::kChecked);
    EXPECT_EQ(SendMessageW(box, BM_GETCHECK, 0, 0), BST_CHECKED);
}

TEST_F(FormViewTest, DropDownListBeginsWithNothingAndFollows) {
    Show(dialog);
    const HWND list = Child(dialog, L"COMBOBOX");
    EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), CB_ERR);
    SetFocus(list);
    Press(VK_DOWN);
    EXPECT_EQ(dialog.combo.Text(), "anna");
    dialog.combo.SetListIndex(1);
    EXPECT_EQ(TextOf(list), L"ben");
    dialog.combo.AddItem("carl");
    EXPECT_EQ(SendMessageW(list, CB_GETCOUNT, 0, 0), 3);
    EXPECT_EQ(TextOf(list), L"ben");
    // Enter belongs to the list while it is open.
    SendMessageW(list, CB_SHOWDROPDOWN, TRUE, 0);
    Press(VK_DOWN);
    Press(VK_RETURN);
    EXPECT_EQ(dialog.log, Strings{});
    EXPECT_EQ(dialog.combo.Text(), "carl");
    Press(VK_RETURN);
    EXPECT_EQ(dialog.log, Strings{"ok"});
}

TEST_F(FormViewTest, AModalFormHasTheInputAloneAndGivesTheFocusBack) {
    Show(window);
    SetFocus(Child(window, L"COMBOBOX"));
    const HWND owner = WindowOf(window);
    const Person person({{L"Dialog", [&](HWND shown) {
                              EXPECT_FALSE(IsWindowEnabled(owner));
                              EXPECT_EQ(GetWindow(shown, GW_OWNER), owner);
                              EXPECT_EQ(GetFocus(), Child(dialog, L"EDIT"));
                              dialog.Hide();
                          }}});
    dialog.Show(ShowStyle::Modal);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_FALSE(IsWindowVisible(WindowOf(dialog)));
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), Child(window, L"COMBOBOX"));
}

TEST_F(FormViewTest, AModalFormEndsWhenItIsUnloaded) {
    Show(window);
    const Person person({{L"Dialog", [](HWND shown) { SendMessageW(shown, WM_CLOSE, 0, 0); }}});
    dialog.Show(ShowStyle::Modal);
    EXPECT_FALSE(dialog.Loaded());
    EXPECT_EQ(GetActiveWindow(), WindowOf(window));
}

TEST_F(FormViewTest, AButtonMayUnloadItsForm) {
    dialog.ok.Click = [this] { dialog.Unload(); };
    Show(dialog);
    SendMessageW(ByText(dialog, L"&OK"), BM_CLICK, 0, 0);
    EXPECT_FALSE(dialog.Loaded());
    Show(dialog);
    Press(VK_RETURN);
    EXPECT_FALSE(dialog.Loaded());
}

TEST_F(FormViewTest, AFormThatObjectsStaysOpen) {
    Show(window);
    window.mayClose = false;
    SendMessageW(WindowOf(window), WM_CLOSE, 0, 0);
    EXPECT_TRUE(window.Loaded());
    window.mayClose = true;
    SendMessageW(WindowOf(window), WM_CLOSE, 0, 0);
    EXPECT_FALSE(window.Loaded());
}

TEST_F(FormViewTest, AFormIsUnloadedWithItsWindowAndWithTheSession) {
    Show(window);
    DestroyWindow(WindowOf(window));
    EXPECT_EQ(window.log, Strings{"unload"});
    EXPECT_FALSE(window.Loaded());
    Show(window);
    EXPECT_EQ(SendMessageW(WindowOf(window), WM_QUERYENDSESSION, 0, 0), TRUE);
    SendMessageW(WindowOf(window), WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(window.Loaded());
    SendMessageW(WindowOf(window), WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(window.log, Strings{"unload"});
    EXPECT_FALSE(window.Loaded());
}

TEST_F(FormViewTest, ADialogGoesWithItsOwner) {
    Show(window);
    const Person person({{L"Dialog", [this](HWND /*shown*/) { DestroyWindow(WindowOf(window)); }}});
    dialog.Show(ShowStyle::Modal);
    EXPECT_FALSE(dialog.Loaded());
    EXPECT_FALSE(window.Loaded());
}

TEST_F(FormViewTest, AResizeIsToldOnce) {
    Show(window);
    const HWND shown = WindowOf(window);
    RECT place{};
    GetWindowRect(shown, &place);
    SetWindowPos(shown, nullptr, 0, 0, place.right - place.left + 40, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    toolkit.DoEvents();
    const std::string wider = "resize " + std::to_string(PixelsX(6000) + 40);
    EXPECT_EQ(window.log, Strings{wider});
    ShowWindow(shown, SW_MINIMIZE);
    toolkit.DoEvents();
    ShowWindow(shown, SW_RESTORE);
    toolkit.DoEvents();
    EXPECT_EQ(window.log, (Strings{wider, wider + " minimized", wider}));
}

TEST_F(FormViewTest, ASizeThatTheSystemRefusesIsTold) {
    window.SetMinPixelSize(300, 200);
    Show(window);
    window.Move(0, 0, 15, 15);
    const SIZE inside = InnerSize(WindowOf(window));
    EXPECT_EQ(inside.cx, 300);
    EXPECT_EQ(inside.cy, 200);
    EXPECT_EQ(std::lround(window.ScaleX(window.Width(), ScaleMode::Twip, ScaleMode::Pixel)), 300);
    window.Move(0, 0, 15, 15);  // which is no change to Windows
    EXPECT_EQ(std::lround(window.ScaleX(window.Width(), ScaleMode::Twip, ScaleMode::Pixel)), 300);
}

TEST_F(FormViewTest, MenusHaveShortcutsAndCheckMarks) {
    MenuItem& edit = window.Menus().Add("mnuEdit", "&Edit");
    MenuItem& find = edit.Add("mnuFind", "Find", "Ctrl+F");
    MenuItem& next = edit.Add("mnuFindNext", "Find Next", "F3");
    MenuItem& preview = edit.Add("mnuPreview", "Preview");
    preview.SetCheckable(true);
    find.Click = [this] { window.log.emplace_back("find"); };
    next.Click = [this] { window.log.emplace_back("next"); };
    preview.Click = [&] { preview.SetChecked(!preview.Checked()); };
    Show(window);
    Press('F', VK_CONTROL);
    Press(VK_F3);
    EXPECT_EQ(window.log, (Strings{"find", "next"}));
    next.SetEnabled(false);
    Press(VK_F3);
    Press('F');
    EXPECT_EQ(window.log, (Strings{"find", "next"}));

    const HMENU popup = GetSubMenu(GetMenu(WindowOf(window)), 0);
    std::array<wchar_t, 64> caption{};
    GetMenuStringW(popup, 0, caption.data(), static_cast<int>(caption.size()), MF_BYPOSITION);
    EXPECT_STREQ(caption.data(), L"Find\tCtrl+F");
    const UINT command = GetMenuItemID(popup, 2);
    SendMessageW(WindowOf(window), WM_COMMAND, command, 0);
    EXPECT_TRUE(preview.Checked());
    EXPECT_EQ(GetMenuState(popup, 2, MF_BYPOSITION) & MF_CHECKED, static_cast<UINT>(MF_CHECKED));
    SendMessageW(WindowOf(window), WM_COMMAND, command, 0);
    EXPECT_EQ(GetMenuState(popup, 2, MF_BYPOSITION) & MF_CHECKED, 0U);
}

TEST_F(FormViewTest, TheMouseIsToldInTheBoxesOwnScale) {
    dialog.box.SetScaleMode(ScaleMode::Point);
    const auto note = [this](const char* name) {
        return [this, name](int button, int shift, double x, double y) {
            dialog.log.push_back(name + (" " + std::to_string(button)) + " " + std::to_string(shift) + " " +
                                 std::to_string(std::lround(x)) + " " + std::to_string(std::lround(y)));
        };
    };
    dialog.box.MouseDown = note("down");
    dialog.box.MouseMove = note("move");
    dialog.box.MouseUp = note("up");
    Show(dialog);
    const HWND box = Child(dialog, L"OstrevinBox", 1);
    const auto place = [this](double xPoints, double yPoints) {
        return MAKELPARAM(PixelsX(xPoints * 20), PixelsX(yPoints * 20));
    };
    SendMessageW(box, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT, place(30, 15));
    EXPECT_EQ(GetCapture(), box);
    SendMessageW(box, WM_MOUSEMOVE, MK_RBUTTON, place(60, 30));
    SendMessageW(box, WM_RBUTTONUP, MK_CONTROL, place(60, 30));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(dialog.log, (Strings{"down 2 1 30 15", "move 2 0 60 30", "up 2 2 60 30"}));
    // Taken away, the mouse tells nothing more.
    SendMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, place(30, 15));
    SetCapture(WindowOf(dialog));
    EXPECT_EQ(dialog.log.back(), "up 1 0 30 15");
    ReleaseCapture();
    EXPECT_EQ(dialog.log.size(), 5U);
}

TEST_F(FormViewTest, ABarIsDraggedWithinItsBox) {
    PictureBox left{&dialog.box, "left"};
    PictureBox right{&dialog.box, "right"};
    Splitter splitter(toolkit);
    splitter.SetContainer(dialog.box);
    splitter.SetOrientation(Splitter::kSideBySide);
    dialog.box.MouseDown = [&](int button, int shift, double x, double y) {
        splitter.MouseDown(button, shift, x, y);
    };
    dialog.box.MouseMove = [&](int button, int shift, double x, double y) {
        splitter.MouseMove(button, shift, x, y);
    };
    dialog.box.MouseUp = [&](int button, int shift, double x, double y) {
        splitter.MouseUp(button, shift, x, y);
    };
    Show(dialog);
    splitter.Bind(left, right);
    splitter.SetSplitterPosition(50);
    splitter.Resize();
    const HWND first = Child(dialog, L"OstrevinBox", 1);
    const HWND box = GetParent(first);
    RECT screen{};
    GetClipCursor(&screen);
    SendMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(52, 20));
    RECT clip{};
    GetClipCursor(&clip);
    RECT own{};
    GetWindowRect(box, &own);
    EXPECT_TRUE(EqualRect(&clip, &own));
    SendMessageW(box, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(72, 25));
    EXPECT_EQ(GetCursor(), ::LoadCursorW(nullptr, IDC_SIZEWE));
    EXPECT_EQ(InnerSize(first).cx, 70);
    SendMessageW(box, WM_LBUTTONUP, 0, MAKELPARAM(72, 25));
    GetClipCursor(&clip);
    EXPECT_TRUE(EqualRect(&clip, &screen));
    SendMessageW(box, WM_MOUSEMOVE, 0, MAKELPARAM(90, 25));
    EXPECT_EQ(GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_EQ(InnerSize(first).cx, 70);
    dialog.Unload();
}

TEST_F(FormViewTest, APictureStandsInTheMiddleBlendedWithTheBackground) {
    auto picture = std::make_shared<Picture>();
    picture->width = 2;
    picture->height = 1;
    picture->pixels = {0xFF102030, 0x00FFFFFF};
    dialog.box.SetBordered(true);
    Show(dialog);
    dialog.box.SetPicture(picture);
    dialog.Refresh();
    const HWND box = Child(dialog, L"OstrevinBox", 1);
    const SIZE inside = InnerSize(box);
    EXPECT_EQ(inside.cx, PixelsX(3300 + 2400) - PixelsX(3300) - 2);
    const HDC canvas = GetDC(box);
    const int x = (inside.cx - 2) / 2;
    const int y = (inside.cy - 1) / 2;
    EXPECT_EQ(GetPixel(canvas, x, y), RGB(0x10, 0x20, 0x30));
    EXPECT_EQ(GetPixel(canvas, x + 1, y), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(GetPixel(canvas, x, y + 1), GetSysColor(COLOR_WINDOW));
    ReleaseDC(box, canvas);
}

TEST_F(FormViewTest, TimersTickWhileEventsAreHandled) {
    dialog.timer.SetInterval(10);
    int ticks = 0;
    dialog.timer.Tick = [&] { ++ticks; };
    Show(dialog);
    while (ticks < 3) {
        toolkit.DoEvents();
    }
    dialog.timer.SetEnabled(false);
    ticks = 0;
    SendMessageW(WindowOf(dialog), WM_TIMER, 1, 0);
    EXPECT_EQ(ticks, 0);
}

TEST_F(FormViewTest, TheSaveDialogAsksAsItIsTold) {
    Show(window);
    std::array<wchar_t, MAX_PATH> folder{};
    GetCurrentDirectoryW(MAX_PATH, folder.data());
    CommonDialog save(window);
    save.SetDialogTitle("Where to");
    save.SetFilter("HTML Files (*.htm)|*.htm");
    {
        const Person person({{L"Where to", [this](HWND shown) {
                                  EXPECT_FALSE(IsWindowEnabled(WindowOf(window)));
                                  PostMessageW(shown, WM_COMMAND, IDCANCEL, 0);
                              }}});
        save.ShowSave();
    }
    EXPECT_EQ(save.FileName(), "");
    {
        const Person person({{L"Where to", [](HWND shown) {
                                  SetDlgItemTextW(shown, kFileNameBox, L"C:\\windows\\no default");
                                  PostMessageW(shown, WM_COMMAND, IDOK, 0);
                              }}});
        save.ShowSave();
    }
    EXPECT_EQ(save.FileName(), "C:\\windows\\no default");
    // A file that is there is not asked about.
    const std::wstring there = std::wstring(folder.data()) + L"\\there.htm";
    CloseHandle(CreateFileW(there.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    bool isAsked = false;
    {
        const Person person({{L"Where to", [&](HWND shown) {
                                  SetDlgItemTextW(shown, kFileNameBox, there.c_str());
                                  PostMessageW(shown, WM_COMMAND, IDOK, 0);
                              }}});
        const Refusal refusal(L"Where to", isAsked);
        save.ShowSave();
    }
    EXPECT_FALSE(isAsked);
    EXPECT_EQ(save.FileName(), Utf8(there));
    DeleteFileW(there.c_str());
    std::array<wchar_t, MAX_PATH> after{};
    GetCurrentDirectoryW(MAX_PATH, after.data());
    EXPECT_STREQ(after.data(), folder.data());
}

TEST_F(FormViewTest, AMessageBoxHasATextAndAButtonAndNoIcon) {
    Show(window);
    const Person person(
        {{L"Title", [this](HWND box) {
              EXPECT_EQ(GetWindow(box, GW_OWNER), WindowOf(window));
              EXPECT_NE(FindWindowExW(box, nullptr, L"STATIC", L"A \u20AC"), nullptr);
              int buttons = 0;
              for (HWND each = nullptr; (each = FindWindowExW(box, each, L"BUTTON", nullptr)) != nullptr;) {
                  buttons += IsWindowVisible(each) != FALSE ? 1 : 0;
              }
              EXPECT_EQ(buttons, 1);
              for (HWND each = nullptr; (each = FindWindowExW(box, each, L"STATIC", nullptr)) != nullptr;) {
                  EXPECT_EQ(SendMessageW(each, STM_GETICON, 0, 0), 0);
              }
              PostMessageW(box, WM_COMMAND, IDOK, 0);
          }}});
    window.MsgBox("A \xE2\x82\xAC", "Title");
}

TEST_F(FormViewTest, AFailureIsShownAndEndsTheProgram) {
    Show(window);
    window.ok.Click = [] { throw std::runtime_error("What went wrong"); };
    const Person person(
        {{L"Window", [this](HWND /*shown*/) { PostMessageW(ByText(window, L"&OK"), BM_CLICK, 0, 0); }},
         {L"Ostrevin", [](HWND box) {
              EXPECT_NE(FindWindowExW(box, nullptr, L"STATIC", L"What went wrong"), nullptr);
              PostMessageW(box, WM_COMMAND, IDOK, 0);
          }}});
    EXPECT_EQ(toolkit.Run(), 1);
}

TEST_F(FormViewTest, TheProgramEndsWithTheLastForm) {
    SampleForm splash(toolkit, BorderStyle::None);
    splash.Show();
    splash.Refresh();
    splash.Unload();
    Show(window);
    dialog.Show();
    const Person person({{L"Dialog", [this](HWND /*shown*/) { dialog.Unload(); }},
                         {L"Window", [this](HWND /*shown*/) { window.Unload(); }}});
    EXPECT_EQ(toolkit.Run(), 0);
    EXPECT_FALSE(window.Loaded());
}

TEST_F(FormViewTest, TextsAreRankedAsTheyAreCompared) {
    const Strings inOrder = {"", "&", "&0", "&9", "0", "00", "01", "10", "9", "a", "ab", "b", "Z"};
    Places expected(inOrder.size());
    for (std::size_t i = 0; i < inOrder.size(); ++i) {
        expected[i] = i;
    }
    EXPECT_EQ(Rank(inOrder), expected);
    EXPECT_EQ(Rank({"b", "B", "a", "\xC3\x84", "\xC3\xA4", "b"}), (Places{2, 2, 0, 1, 1, 2}));
    const Strings mixed = {"-a", "a-b", "ab", "a'c", "C:\\x", "c:/x", "\xC3\xA9",
                           "e",  "f",   "~",  "a b", "_",     ""};
    const Places places = Rank(mixed);
    for (std::size_t i = 0; i < mixed.size(); ++i) {
        for (std::size_t j = 0; j < mixed.size(); ++j) {
            const int compared = toolkit.CompareText(mixed[i], mixed[j]);
            EXPECT_EQ(places[i] < places[j], compared < 0) << mixed[i] << " and " << mixed[j];
            EXPECT_EQ(places[i] == places[j], compared == 0) << mixed[i] << " and " << mixed[j];
        }
    }
}

/// The resolution of the user's screen, put back at the end.
class ScreenResolution {
  public:
    explicit ScreenResolution(DWORD dotsPerInch) {
        DWORD size = sizeof(before_);
        RegOpenKeyExW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", 0, KEY_ALL_ACCESS, &key_);
        hadOne_ =
            RegQueryValueExW(key_, kValue, nullptr, nullptr, reinterpret_cast<BYTE*>(&before_), &size) == 0;
        Set(dotsPerInch);
    }
    ScreenResolution(const ScreenResolution&) = delete;
    ScreenResolution& operator=(const ScreenResolution&) = delete;
    ~ScreenResolution() {
        if (hadOne_) {
            Set(before_);
        } else {
            RegDeleteValueW(key_, kValue);
        }
        RegCloseKey(key_);
    }

  private:
    static constexpr wchar_t kValue[] = L"LogPixels";

    void Set(DWORD value) {
        RegSetValueExW(key_, kValue, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof(value));
    }

    HKEY key_ = nullptr;
    DWORD before_ = 0;
    bool hadOne_ = false;
};

TEST(FormViewAt144DotsPerInch, DoesTheSame) {
    const ScreenResolution resolution(144);
    std::array<wchar_t, MAX_PATH> program{};
    GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    std::wstring command = L"\"" + std::wstring(program.data()) + L"\" --gtest_filter=FormViewTest.*";
    SetEnvironmentVariableA(kDpiVariable, "144");
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                               &process));
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(process.hProcess, &code);
    EXPECT_EQ(code, 0U);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

}  // namespace
}  // namespace ostrevin::win32
