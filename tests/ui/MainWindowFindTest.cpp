// Filter and find in the main window, and what stays of them from tab to tab.
#include <cstdint>
#include <string>

#include "tests/ui/MainWindowFixture.h"
#include "ui/frmFilter.h"

namespace ostrevin {
namespace {

constexpr std::uint64_t kDay = 864000000000ULL;
constexpr char kNotFound[] = "Search string not found";
constexpr char kNoMore[] = "No more matches found";

class MainWindowFindTest : public MainWindowFixture {
  protected:
    /// Shows the window with Anna's typed addresses, which stand as they were typed, unsorted.
    void ShowTyped(const Strings& addresses) {
        machine.AddTypedURLs(kAnna, addresses);
        Show();
        Click(std::string(kAnna) + ":TYPEDURLS");
        ASSERT_EQ(Texts(list), addresses);
    }

    ListView& list = window.lstTypedURL;
};

TEST_F(MainWindowFindTest, FilterKeepsWhatHoldsTheTextInItsFirstColumn) {
    machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\APP\\SETUP.EXE", 1, kSomeDay);
    machine.AddUserAssist(kAnna, "UEME_RUNPATH:notepad.exe", 1, kSomeDay);
    Show();
    ClickPrograms(kAnna);
    window.lstProgram.Add("", "C:\\readme.txt").SetSubItem(3, "exe");
    Filter("exe");
    EXPECT_EQ(Texts(window.lstProgram), (Strings{"C:\\APP\\SETUP.EXE", "C:\\anna.exe", "notepad.exe"}));
    EXPECT_EQ(Value("FILTER"), ToolButton::kPressed);
    EXPECT_EQ(Dialogs(), (Strings{"frmFilter"}));
}

TEST_F(MainWindowFindTest, AnUnsortedListHasThemBackInReverseAtItsEnd) {
    ShowTyped({"A", "B", "C"});
    Filter("b");
    EXPECT_EQ(Texts(list), (Strings{"B"}));
    Press("FILTER");
    EXPECT_EQ(Texts(list), (Strings{"B", "C", "A"}));
    EXPECT_EQ(Value("FILTER"), ToolButton::kUp);
    EXPECT_EQ(Dialogs().size(), 1U) << "to undo it nothing is asked";
}

TEST_F(MainWindowFindTest, AFilterThatAllMatchIsAFilterToo) {
    ShowTyped({"A1", "A2"});
    Filter("a");
    EXPECT_EQ(Texts(list), (Strings{"A1", "A2"}));
    EXPECT_EQ(Value("FILTER"), ToolButton::kPressed);
    Press("FILTER");
    EXPECT_EQ(Texts(list), (Strings{"A1", "A2"}));
    EXPECT_EQ(Value("FILTER"), ToolButton::kUp);
}

TEST_F(MainWindowFindTest, AFilterThatNoneMatchesEmptiesTheListForAWhile) {
    ShowTyped({"A", "B"});
    Filter("x");
    EXPECT_EQ(list.ItemCount(), 0U);
    EXPECT_EQ(Value("FILTER"), ToolButton::kPressed);
    Press("FILTER");
    EXPECT_EQ(Texts(list), (Strings{"B", "A"}));
}

TEST_F(MainWindowFindTest, TheButtonIsPressedWhileTheTextIsAskedFor) {
    ShowTyped({"A"});
    int value = -1;
    std::string text = "none";
    toolkit.onModal = [&](Form& form) {
        value = Value("FILTER");
        text = dynamic_cast<frmFilter&>(form).txtFilterString.Text();
        form.Hide();
    };
    Press("FILTER");
    EXPECT_EQ(value, ToolButton::kPressed);
    EXPECT_EQ(text, "");
}

TEST_F(MainWindowFindTest, WithoutATextNothingIsFiltered) {
    ShowTyped({"A", "B"});
    Filter("");
    EXPECT_EQ(Value("FILTER"), ToolButton::kUp);
    toolkit.onModal = [](Form& form) {
        dynamic_cast<frmFilter&>(form).txtFilterString.Type("A");
        form.Escape();
    };
    Press("FILTER");
    EXPECT_EQ(Value("FILTER"), ToolButton::kUp);
    EXPECT_EQ(Texts(list), (Strings{"A", "B"}));
    EXPECT_EQ(Messages(), (Strings{}));
}

TEST_F(MainWindowFindTest, EachFilterStartsAfresh) {
    ShowTyped({"A", "B", "C"});
    Filter("a");
    Press("FILTER");
    Filter("c");
    EXPECT_EQ(Texts(list), (Strings{"C"}));
    Press("FILTER");
    EXPECT_EQ(list.ItemCount(), 3U);
}

TEST_F(MainWindowFindTest, EachListHasItsOwnFilterAndTheButtonShowsThatInFront) {
    Show();
    for (int tab = 1; tab <= 5; ++tab) {
        window.TabStrip.Select(tab);
        EXPECT_EQ(Value("FILTER"), ToolButton::kUp) << tab;
        Filter("nothing like it");
        for (int other = 1; other <= 5; ++other) {
            window.TabStrip.Select(other);
            EXPECT_EQ(Value("FILTER"), other <= tab ? ToolButton::kPressed : ToolButton::kUp) << other;
        }
    }
    window.TabStrip.Select(3);
    Press("FILTER");
    for (int tab = 1; tab <= 5; ++tab) {
        window.TabStrip.Select(tab);
        EXPECT_EQ(Value("FILTER"), tab == 3 ? ToolButton::kUp : ToolButton::kPressed) << tab;
    }
}

TEST_F(MainWindowFindTest, AFilterWorksOnTheListInFront) {
    Show();
    for (const char* suffix : {":RECENT", ":OPENSAVE", ":TYPEDURLS"}) {
        Click(std::string(kAnna) + suffix);
    }
    window.TabStrip.Select(2);
    Filter("none");
    EXPECT_EQ(window.lstRecent.ItemCount(), 0U);
    EXPECT_EQ(window.lstOpenSave.ItemCount(), 1U);
    window.TabStrip.Select(3);
    Filter("none");
    EXPECT_EQ(window.lstOpenSave.ItemCount(), 0U);
    EXPECT_EQ(window.lstTypedURL.ItemCount(), 1U);
    window.TabStrip.Select(2);
    Press("FILTER");
    EXPECT_EQ(Texts(window.lstRecent), (Strings{"C:\\anna.doc"}));
    EXPECT_EQ(window.lstOpenSave.ItemCount(), 0U);
}

TEST_F(MainWindowFindTest, AFilterLastsUntilTheListShowsAnotherAccount) {
    ShowTyped({"A", "B"});
    Filter("b");
    Click(std::string(kAnna) + ":TYPEDURLS");
    window.TabStrip.Select(1);
    Click(std::string(kAnna) + ":TYPEDURLS");
    EXPECT_EQ(Texts(list), (Strings{"B"}));
    EXPECT_EQ(Value("FILTER"), ToolButton::kPressed);

    Click(std::string(kBen) + ":TYPEDURLS");
    EXPECT_EQ(Value("FILTER"), ToolButton::kUp);
    EXPECT_EQ(Texts(list), (Strings{"http://ben.example/"}));
    Filter("ben");
    Press("FILTER");
    EXPECT_EQ(Texts(list), (Strings{"http://ben.example/"})) << "what was kept aside of Anna's is gone";
    Click(std::string(kAnna) + ":TYPEDURLS");
    EXPECT_EQ(Texts(list), (Strings{"A", "B"}));
}

TEST_F(MainWindowFindTest, WhatComesBackIsSortedByTheValuesOfItsColumn) {
    machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\last.exe", 10, kSomeDay + 70 * kDay);
    machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\never.exe", 1, 0);
    machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\next.exe", 4, kSomeDay + kDay);
    Show();
    ClickPrograms(kAnna);
    ListView& programs = window.lstProgram;
    for (const int column : {3, 2}) {
        programs.ClickColumn(column);
        programs.ClickColumn(column);
        const Strings ascending = {"C:\\never.exe", "C:\\anna.exe", "C:\\next.exe", "C:\\last.exe"};
        ASSERT_EQ(Texts(programs), ascending);
        Filter("next");
        Press("FILTER");
        EXPECT_EQ(Texts(programs), ascending) << "as text, 10/13/2009 comes before 8/4/2009, and 10 before 3";
        EXPECT_EQ(programs.SortOrder(), SortOrder::Ascending);
    }
}

TEST_F(MainWindowFindTest, SortingIsOffWhileAListIsFilled) {
    machine.AddTypedURLs(kBen, {"b", "c", "a", "d"});
    ShowTyped({"z"});
    list.ClickColumn(1);
    ASSERT_TRUE(list.Sorted());
    const ListRecorder recorder(list);
    Click(std::string(kBen) + ":TYPEDURLS");
    EXPECT_EQ(Texts(list), (Strings{"d", "c", "b", "a"}));
    std::size_t between = 0;
    for (const ListRecorder::Change& change : recorder.changes) {
        if (change.items > 0 && change.items < 4) {
            ++between;
            EXPECT_FALSE(change.sorted) << change.items;
        }
    }
    EXPECT_GE(between, 3U);
}

TEST_F(MainWindowFindTest, TheListIsHiddenAndNotSortedWhileItIsWorkedOn) {
    ShowTyped({"b", "c", "a", "d"});
    list.ClickColumn(1);
    list.ClickColumn(1);
    const ListRecorder recorder(list);
    Filter("b");
    ASSERT_FALSE(recorder.changes.empty());
    for (const ListRecorder::Change& change : recorder.changes) {
        EXPECT_FALSE(change.visible);
    }
    EXPECT_TRUE(list.Visible());
    const std::size_t before = recorder.changes.size();
    Press("FILTER");
    EXPECT_EQ(Texts(list), (Strings{"a", "b", "c", "d"}));
    std::size_t between = 0;
    for (std::size_t i = before; i < recorder.changes.size(); ++i) {
        const ListRecorder::Change& change = recorder.changes[i];
        if (change.items < 4) {
            ++between;
            EXPECT_FALSE(change.sorted) << change.items;
            EXPECT_FALSE(change.visible) << change.items;
        }
    }
    EXPECT_GE(between, 2U);
    EXPECT_TRUE(list.Visible());
    EXPECT_TRUE(list.Sorted());
}

TEST_F(MainWindowFindTest, FindSelectsTheFirstMatchAndF3EachOneBelow) {
    ShowTyped({"x1", "A", "X2", "B", "x3"});
    list.Select(&list.Item(4));
    Find("x");
    EXPECT_EQ(Selected(list), "x1") << "a search starts at the top, wherever the selection is";
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Selected(list), "X2");
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Selected(list), "x3");
    EXPECT_EQ(Messages(), (Strings{}));
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Selected(list), "x3") << "it does not begin at the top again";
    EXPECT_EQ(Messages(), (Strings{kNoMore}));
    EXPECT_EQ(Dialogs(), (Strings{"frmFind"})) << "the text is asked for once";
}

TEST_F(MainWindowFindTest, FindNextStartsBelowWhatAPersonSelected) {
    ShowTyped({"x1", "x2", "x3"});
    Find("x");
    ClickItem(list, "x2");
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Selected(list), "x3");
}

TEST_F(MainWindowFindTest, FindNextStartsAtTheTopWhenNothingIsSelected) {
    ShowTyped({"b.example", "ben.example"});
    Find("ben");
    Click(std::string(kBen) + ":TYPEDURLS");
    ASSERT_EQ(Selected(list), "");
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Selected(list), "http://ben.example/") << "the text outlasts the account";
}

TEST_F(MainWindowFindTest, WhatIsNotFoundIsTold) {
    ShowTyped({"A"});
    ClickItem(list, "A");
    Find("x");
    Find("");
    toolkit.onModal = [](Form& form) { form.Escape(); };
    Press("FIND");
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Messages(), (Strings{kNotFound, kNotFound, kNotFound, kNoMore}));
    EXPECT_EQ(Selected(list), "A");
}

TEST_F(MainWindowFindTest, InAnEmptyListNothingIsFound) {
    Show();
    Find("x");
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Messages(), (Strings{kNotFound, kNoMore}));
}

TEST_F(MainWindowFindTest, FindLooksAtTheFirstColumnAlone) {
    Show();
    ClickPrograms(kAnna);
    window.lstProgram.Item(1).SetSubItem(3, "Yes");
    Find("Yes");
    EXPECT_EQ(Messages(), (Strings{kNotFound}));
    Find("ANNA.E");
    EXPECT_EQ(Selected(window.lstProgram), "C:\\anna.exe");
}

TEST_F(MainWindowFindTest, WhatIsFoundIsScrolledIntoSightAndNotClicked) {
    Show();
    Click(std::string(kAnna) + ":RECENT");
    const ListRecorder recorder(window.lstRecent);
    Find("anna");
    EXPECT_EQ(recorder.rowsShown, (std::vector<std::size_t>{0}));
    EXPECT_EQ(window.lstRecent.Item(1).SubItem(1), "") << "its file is looked for when a person clicks it";
}

TEST_F(MainWindowFindTest, EachListHasItsOwnLastText) {
    ShowTyped({"a1", "b1", "a2", "b2"});
    Click(std::string(kAnna) + ":RECENT");
    for (const char* text : {"b1.doc", "a2.doc", "b2.doc"}) {
        window.lstRecent.Add("", text);
    }
    Find("b");
    EXPECT_EQ(Selected(window.lstRecent), "b1.doc");
    window.TabStrip.Select(5);
    Find("a");
    window.TabStrip.Select(2);
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Selected(window.lstRecent), "b2.doc");
    window.TabStrip.Select(5);
    window.mnuFindNext.Click.Raise();
    EXPECT_EQ(Selected(list), "a2");
}

}  // namespace
}  // namespace ostrevin
