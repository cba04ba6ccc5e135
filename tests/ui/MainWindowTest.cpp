// The main window's tree, tabs, lists, menus and status bar.
#include <array>
#include <cstdint>
#include <list>
#include <string>
#include <utility>

#include "tests/support/Profiles.h"
#include "tests/support/WatchingView.h"
#include "tests/ui/MainWindowFixture.h"

namespace ostrevin {
namespace {

constexpr char kCarl[] = "S-1-5-21-1-2-3-1003";
constexpr std::uint64_t kHour = 36000000000ULL;

/// The suffixes of the nodes' keys, in the order of the tabs, and the lists that they lead to.
constexpr std::array<std::pair<const char*, ListView frmMain::*>, 5> kSources = {{
    {":PROGRAMS", &frmMain::lstProgram},
    {":RECENT", &frmMain::lstRecent},
    {":OPENSAVE", &frmMain::lstOpenSave},
    {":IEHISTORY", &frmMain::lstIEHistory},
    {":TYPEDURLS", &frmMain::lstTypedURL},
}};

class MainWindowTest : public MainWindowFixture {};

TEST_F(MainWindowTest, TreeHasTheNamedAccountsWithTheirFiveSources) {
    Show();
    ASSERT_EQ(window.treeUsers.Roots().size(), 2U) << "an account without a name has no node";
    const TreeNode& anna = *window.treeUsers.Roots()[0];
    EXPECT_EQ(anna.Key(), kAnna);
    EXPECT_EQ(anna.Text(), "anna");
    EXPECT_EQ(anna.Image(), "USER");
    EXPECT_EQ(anna.Tag(), "");
    Strings children;
    for (const auto& child : anna.Children()) {
        children.push_back(child->Key().substr(std::string(kAnna).size()) + "|" + child->Text() + "|" +
                           child->Image() + "|" + child->Tag());
    }
    EXPECT_EQ(
        children,
        (Strings{":PROGRAMS|Programs|PROGRAM|PROGRAMS", ":RECENT|Recent Documents|RECENT|RECENT",
                 ":OPENSAVE|Opened/Saved Docs|OPENSAVE|OPENSAVE", ":IEHISTORY|IE History|IEHISTORY|IEHISTORY",
                 ":TYPEDURLS|Typed URLs|TYPEDURLS|TYPEDURLS"}));
}

TEST_F(MainWindowTest, NothingIsChosenAndNothingIsReadAtTheStart) {
    Show();
    EXPECT_EQ(Selected(), "");
    EXPECT_TRUE(window.TabStrip.Selected(1));
    EXPECT_TRUE(window.fraTab[0].Visible());
    EXPECT_FALSE(window.fraTab[1].Visible());
    EXPECT_EQ(window.lstProgram.ItemCount(), 0U);
    EXPECT_EQ(window.lstProgram.Tag(), "");
    EXPECT_TRUE(platform.hivesLoaded.empty());
}

TEST_F(MainWindowTest, TabsAndColumnsAreNamed) {
    Strings tabs;
    for (const auto& tab : window.TabStrip.Tabs()) {
        tabs.push_back(tab.caption + "|" + tab.image);
    }
    EXPECT_EQ(tabs, (Strings{"Programs|PROGRAM", "Recent Docs|RECENT", "Open / Save|OPENSAVE",
                             "IE History|IEHISTORY", "Typed URLs|TYPEDURLS"}));
    const auto columns = [](ListView& list) {
        Strings texts;
        for (int i = 1; i <= list.ColumnCount(); ++i) {
            texts.push_back(list.Column(i).Text() + "|" + list.Column(i).Tag());
        }
        return texts;
    };
    EXPECT_EQ(columns(window.lstProgram),
              (Strings{"Program|", "Run Count|NUMBER", "Last Run|DATE", "Accessible|"}));
    EXPECT_EQ(columns(window.lstRecent), (Strings{"Document|", "Accessible|"}));
    EXPECT_EQ(columns(window.lstOpenSave), (Strings{"Document|", "Accessible|"}));
    EXPECT_EQ(columns(window.lstIEHistory), (Strings{"URL|", "Last Accessed|DATE"}));
    EXPECT_EQ(columns(window.lstTypedURL), (Strings{"URL|"}));
}

TEST_F(MainWindowTest, ToolbarAndMenusStandComplete) {
    Strings buttons;
    for (const ToolButton& button : window.barTool.Buttons()) {
        EXPECT_EQ(button.Tag(), button.Key());
        buttons.push_back(button.Key() + "|" + button.ToolTipText() + "|" + button.Image() + "|" +
                          (button.ButtonStyle() == ToolButton::Style::Check ? "two-state" : ""));
    }
    EXPECT_EQ(buttons, (Strings{"SHOWPREVIEW|Show Preview|PREVIEW|two-state", "REPORT|Create Report|REPORT|",
                                "FILTER|Filter List|FILTER|two-state", "FIND|Find in List|FIND|"}));
    Strings items;
    for (MenuItem& menu : window.Menus().Items()) {
        for (const MenuItem& item : menu.Items()) {
            items.push_back(menu.Caption() + ">" + item.Caption() + "|" + item.Shortcut());
        }
    }
    EXPECT_EQ(items,
              (Strings{"&File>E&xit|", "&Edit>Find|Ctrl+F", "&Edit>Find Next|F3", "Reporting>Create Report|",
                       "&Options>Show Preview|", "&Help>&Manual|", "&Help>&About Ostrevin|"}));
    for (const auto& [key, picture] : window.imgList.Images()) {
        EXPECT_FALSE(picture.empty()) << key;
    }
}

TEST_F(MainWindowTest, LoadMakesImagesTransparentAndSelectsWholeRows) {
    Show();
    EXPECT_EQ(window.imgToolbar.BkColor(), -1);
    EXPECT_EQ(window.imgList.BkColor(), -1);
    for (const ListView* list : {&window.lstProgram, &window.lstRecent, &window.lstOpenSave,
                                 &window.lstIEHistory, &window.lstTypedURL}) {
        EXPECT_EQ(list->ExtendedStyle() & 0x20U, 0x20U);
    }
}

TEST_F(MainWindowTest, LoadLeavesTheListsTheStylesThatTheyHave) {
    std::list<ListRecorder> recorders;
    for (ListView* list : {&window.lstProgram, &window.lstRecent, &window.lstOpenSave, &window.lstIEHistory,
                           &window.lstTypedURL}) {
        recorders.emplace_back(*list).style = 0x4001;
    }
    Show();
    for (const ListRecorder& recorder : recorders) {
        EXPECT_EQ(recorder.style, 0x4021U);
    }
}

TEST_F(MainWindowTest, AnAccountNodeChangesNothingInTheLists) {
    Show();
    Click(kAnna);
    EXPECT_EQ(window.lstProgram.ItemCount(), 0U);
    EXPECT_EQ(window.lstProgram.Tag(), "");
    EXPECT_TRUE(window.TabStrip.Selected(1));
}

TEST_F(MainWindowTest, ASourceNodeSelectsItsTabAndFillsItsList) {
    Show();
    for (const std::size_t place : {1U, 2U, 3U, 4U, 0U}) {
        const auto& [suffix, list] = kSources.at(place);
        Click(kAnna + std::string(suffix));
        EXPECT_TRUE(window.TabStrip.Selected(static_cast<int>(place) + 1));
        EXPECT_EQ((window.*list).Tag(), kAnna);
        for (std::size_t page = 0; page < window.fraTab.size(); ++page) {
            EXPECT_EQ(window.fraTab.at(page).Visible(), page == place);
        }
    }
    EXPECT_EQ(Texts(window.lstProgram), (Strings{"C:\\anna.exe"}));
    EXPECT_EQ(Texts(window.lstRecent), (Strings{"C:\\anna.doc"}));
    EXPECT_EQ(Texts(window.lstOpenSave), (Strings{"C:\\anna.txt"}));
    EXPECT_EQ(Texts(window.lstTypedURL), (Strings{"http://anna.example/"}));
}

TEST_F(MainWindowTest, ATabFollowsTheAccountInTheTree) {
    Show();
    ClickPrograms(kAnna);
    window.TabStrip.Select(4);
    EXPECT_EQ(Selected(), std::string(kAnna) + ":IEHISTORY");
    EXPECT_EQ(window.lstIEHistory.Tag(), kAnna);
    Click(kBen);
    window.TabStrip.Select(5);
    EXPECT_EQ(Selected(), std::string(kBen) + ":TYPEDURLS") << "an account's own node counts as its choice";
    EXPECT_EQ(window.lstTypedURL.Tag(), kBen);
}

TEST_F(MainWindowTest, EveryTabHasItsNode) {
    Show();
    Click(kBen);
    for (const std::size_t place : {4U, 3U, 2U, 1U, 0U}) {
        const auto& [suffix, list] = kSources.at(place);
        window.TabStrip.Select(static_cast<int>(place) + 1);
        EXPECT_EQ(Selected(), kBen + std::string(suffix));
        EXPECT_EQ((window.*list).Tag(), kBen);
    }
}

TEST_F(MainWindowTest, ATabWithoutAChosenNodeOnlyShowsItsPage) {
    Show();
    window.TabStrip.Select(3);
    EXPECT_TRUE(window.fraTab[2].Visible());
    EXPECT_FALSE(window.fraTab[0].Visible());
    EXPECT_EQ(window.lstOpenSave.Tag(), "");
    EXPECT_EQ(Selected(), "");
    EXPECT_TRUE(platform.hivesLoaded.empty());
}

TEST_F(MainWindowTest, AListIsReadAgainOnlyForAnotherAccount) {
    Show();
    ClickPrograms(kAnna);
    window.lstProgram.Add("", "left by somebody");
    ClickPrograms(kAnna);
    window.TabStrip.Select(2);
    window.TabStrip.Select(1);
    EXPECT_EQ(window.lstProgram.ItemCount(), 2U);
    ClickPrograms(kBen);
    EXPECT_EQ(Texts(window.lstProgram), (Strings{"C:\\ben.exe"}));
}

TEST_F(MainWindowTest, AnEmptySourceIsNotReadAgainEither) {
    Show();
    Click(std::string(kAnna) + ":IEHISTORY");
    EXPECT_EQ(window.lstIEHistory.ItemCount(), 0U);
    EXPECT_EQ(window.lstIEHistory.Tag(), kAnna);
    const std::size_t opened = platform.filesOpened.size();
    Click(std::string(kAnna) + ":IEHISTORY");
    EXPECT_EQ(platform.filesOpened.size(), opened);
}

TEST_F(MainWindowTest, ProgramsListsWhatWasRunAsAProgram) {
    const auto add = [&](const std::string& name, std::int32_t runs, std::uint64_t lastRun) {
        machine.AddUserAssist(kBen, name, runs, lastRun);
    };
    add("UEME_RUNPATH:C:\\notes.txt", 1, kSomeDay);
    add("UEME_RUNPATH:C:\\exercise.txt", 1, kSomeDay);
    add("UEME_RUNPATH:C:\\B.EXE", -6, 0);
    add("UEME_RUNPIDL:C:\\c.exe", 1, kSomeDay);
    add("UEME_RUNCPL:d.exe", 1, kSomeDay);
    Show();
    ClickPrograms(kBen);
    const ListView& list = window.lstProgram;
    EXPECT_EQ(Texts(list), (Strings{"C:\\B.EXE", "C:\\ben.exe", "C:\\exercise.txt"}))
        << "EXE counts anywhere in the path and in any case";
    EXPECT_EQ(list.Item(1).SubItem(1), "-6");
    EXPECT_EQ(list.Item(1).SubItem(2), "") << "a time of zero is no last run";
    EXPECT_EQ(list.Item(2).SubItem(1), "3");
    EXPECT_EQ(list.Item(2).SubItem(2), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(list.Item(2).SubItem(3), "") << "nothing is looked for on the disk yet";
}

TEST_F(MainWindowTest, ItemKeysLeadBackToTheSource) {
    machine.AddUserAssist(kAnna, "UEME_RUNCPL:a.cpl", 1, kSomeDay);
    machine.AddUserAssist(kAnna, "UEME_RUNPATH:Z:\\z.exe", 1, kSomeDay);
    Show();
    ClickPrograms(kAnna);
    ASSERT_EQ(window.lstProgram.ItemCount(), 2U);
    const UserAssistList& source = *accounts.UserAssist(1);
    for (std::size_t i = 1; i <= 2; ++i) {
        const ListItem& item = window.lstProgram.Item(i);
        ASSERT_TRUE(item.Key().ends_with("KEY"));
        EXPECT_EQ(source.UserAssistValue(std::stoi(item.Key())), item.Text());
    }
    EXPECT_EQ(window.lstProgram.Item(2).Key(), "1KEY") << "entries that are not listed count too";
}

TEST_F(MainWindowTest, HistoryListsPagesAlone) {
    machine.AddIEHistory("anna", {{"Visited: anna@http://a.example/", kSomeDay},
                                  {"Visited: anna@HTTP://upper.example/", kSomeDay},
                                  {"ftp://f/", kSomeDay},
                                  {"mailto:x@y.example", kSomeDay},
                                  {"about:blank", kSomeDay},
                                  {"file:///C:/a.txt", kSomeDay},
                                  {"https://s.example/", kSomeDay},
                                  {"http://never.example/", 0}});
    Show();
    Click(std::string(kAnna) + ":IEHISTORY");
    EXPECT_EQ(Texts(window.lstIEHistory), (Strings{"about:blank", "file:///C:/a.txt", "http://a.example/",
                                                   "http://never.example/", "https://s.example/"}));
    EXPECT_EQ(window.lstIEHistory.Item(3).SubItem(1), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(window.lstIEHistory.Item(4).SubItem(1), "1/1/1601") << "every record shows its date as it is";
}

TEST_F(MainWindowTest, AFilledListIsSortedAsTheUserLeftIt) {
    machine.AddUserAssist(kBen, "UEME_RUNPATH:Z:\\z.exe", 1, kSomeDay);
    Show();
    ClickPrograms(kAnna);
    window.lstProgram.ClickColumn(1);
    ASSERT_EQ(window.lstProgram.SortOrder(), SortOrder::Descending)
        << "the first click turns the order round";
    ClickPrograms(kBen);
    EXPECT_TRUE(window.lstProgram.Sorted());
    EXPECT_EQ(Texts(window.lstProgram), (Strings{"Z:\\z.exe", "C:\\ben.exe"}));
}

TEST_F(MainWindowTest, SortingIsOffWhileAListIsFilled) {
    machine.AddUserAssist(kBen, "UEME_RUNPATH:Z:\\z.exe", 1, kSomeDay);
    machine.AddUserAssist(kBen, "UEME_RUNPATH:A:\\a.exe", 1, kSomeDay);
    Show();
    window.lstProgram.SetSorted(true);
    int added = 0;
    testing::WatchingView view([&] {
        const bool allThere = window.lstProgram.ItemCount() == 3;
        added += allThere || window.lstProgram.ItemCount() == 0 ? 0 : 1;
        EXPECT_TRUE(allThere || window.lstProgram.ItemCount() == 0 || !window.lstProgram.Sorted());
    });
    window.lstProgram.Attach(&view);
    ClickPrograms(kBen);
    window.lstProgram.Attach(nullptr);
    EXPECT_EQ(added, 2);
    EXPECT_EQ(Texts(window.lstProgram), (Strings{"A:\\a.exe", "C:\\ben.exe", "Z:\\z.exe"}));
}

TEST_F(MainWindowTest, AListFilledAnewIsSortedByTheValuesOfItsColumn) {
    machine.AddUserAssist(kBen, "UEME_RUNPATH:C:\\often.exe", 10, kSomeDay + kHour);
    machine.AddUserAssist(kBen, "UEME_RUNPATH:C:\\never.exe", 2, 0);
    Show();
    ClickPrograms(kAnna);
    for (const int column : {2, 3}) {
        ClickPrograms(kAnna);
        window.lstProgram.ClickColumn(column);
        window.lstProgram.ClickColumn(column);
        ClickPrograms(kBen);
        EXPECT_EQ(window.lstProgram.SortKey(), column - 1);
        EXPECT_EQ(window.lstProgram.SortOrder(), SortOrder::Ascending);
        EXPECT_EQ(Texts(window.lstProgram), (Strings{"C:\\never.exe", "C:\\ben.exe", "C:\\often.exe"}))
            << "2, 3 and 10 runs, and a time of zero comes before all";
    }
}

TEST_F(MainWindowTest, EachListSortsByTheHeaderThatIsClicked) {
    Show();
    for (const auto& [suffix, list] : kSources) {
        Click(std::string(kAnna) + suffix);
        ListView& shown = window.*list;
        shown.Add("", "zz1");
        shown.Add("", "zz2");
        shown.ClickColumn(1);
        EXPECT_EQ(Texts(shown).front(), "zz2") << suffix;
        shown.ClickColumn(1);
        EXPECT_EQ(Texts(shown).back(), "zz2") << suffix;
    }
}

TEST_F(MainWindowTest, AFilledListShowsItsFirstItem) {
    ListRecorder recorder(window.lstProgram);
    Show();
    ClickPrograms(kAnna);
    EXPECT_EQ(recorder.rowsShown, (std::vector<std::size_t>{0}));
    ClickPrograms(kAnna);
    EXPECT_EQ(recorder.rowsShown.size(), 1U) << "a list that is not filled anew stays where it is";
}

TEST_F(MainWindowTest, TypedAddressesNeedAHiveThatIsThere) {
    AddUser(platform, kCarl, "carl")
        .Key("Software\\Microsoft\\Internet Explorer\\TypedURLs")
        .SetText("url1", "http://carl.example/");
    Show();
    Click(std::string(kCarl) + ":TYPEDURLS");
    EXPECT_EQ(window.lstTypedURL.ItemCount(), 0U);
    ClickPrograms(kCarl);
    Click(std::string(kCarl) + ":TYPEDURLS");
    EXPECT_EQ(window.lstTypedURL.ItemCount(), 0U) << "the source stays as it was loaded first";
}

TEST_F(MainWindowTest, ClockShowsDateAndTime) {
    platform.now = 40029.5;
    Show();
    window.tmrUpdateTime.Tick.Raise();
    EXPECT_EQ(window.tmrUpdateTime.Interval(), 100);
    EXPECT_EQ(window.barStatus.PanelCount(), 3);
    EXPECT_EQ(window.barStatus.PanelText(1), "");
    EXPECT_EQ(window.barStatus.PanelText(2), "8/4/2009");
    EXPECT_EQ(window.barStatus.PanelText(3), "12:00:00 PM");
}

TEST_F(MainWindowTest, ExitUnloadsAndSavesTheSettings) {
    Show();
    settings.SetINIOption("ShowPreview", "True");
    window.mnuExit.Click.Raise();
    EXPECT_FALSE(window.Loaded());
    IniFile saved;
    saved.SetINIFileName(ini.INIFileName());
    saved.LoadINI();
    EXPECT_EQ(saved.GetVariableValue("ShowPreview"), "True");
}

TEST_F(MainWindowTest, SettingsAreEmptyWhenNothingWasSet) {
    Show();
    window.Close();
    EXPECT_EQ(folder.Read("ostrevin.ini"), "");
}

TEST_F(MainWindowTest, MenusOpenTheirDialogs) {
    Show();
    for (MenuItem* item : {&window.mnuCreateReport, &window.mnuAbout, &window.mnuFind}) {
        item->Click.Raise();
    }
    EXPECT_EQ(Dialogs(), (Strings{"frmCreateReport", "frmAbout", "frmFind"}));
}

TEST_F(MainWindowTest, ManualIsOpenedFromTheApplicationFolderUnlooked) {
    Show();
    window.mnuManual.Click.Raise();
    ASSERT_EQ(platform.executed.size(), 1U);
    EXPECT_EQ(platform.executed[0].file, "C:\\Program Files\\Ostrevin\\Ostrevin Manual.chm");
    EXPECT_EQ(platform.executed[0].verb, "open");
}

TEST_F(MainWindowTest, AVolumeThatDisappearsLeavesListsEmpty) {
    Show();
    ClickPrograms(kAnna);
    for (const char* call : {"RegOpenKeyExA", "RegLoadKeyA", "RegEnumValueA"}) {
        platform.Fail(call);
    }
    for (const char* suffix : {":PROGRAMS", ":RECENT", ":OPENSAVE", ":IEHISTORY", ":TYPEDURLS"}) {
        EXPECT_NO_THROW(Click(std::string(kBen) + suffix));
    }
    EXPECT_EQ(window.lstProgram.ItemCount(), 0U);
    EXPECT_EQ(window.lstOpenSave.ItemCount(), 0U);
}

}  // namespace
}  // namespace ostrevin
