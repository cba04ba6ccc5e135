// The main window, driven without a toolkit.
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "accounts/AccountList.h"
#include "settings/AppSettings.h"
#include "settings/IniFile.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestToolkit.h"
#include "ui/frmMain.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

constexpr char kAnna[] = "S-1-5-21-1-2-3-1001";
constexpr char kBen[] = "S-1-5-21-1-2-3-1002";
constexpr char kService[] = "S-1-5-18";

constexpr char kCounts[] =
    "\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\{75048700-EF1F-11D0-9888-"
    "006097DEACF9}"
    "\\Count";
constexpr char kTyped[] = "\\Software\\Microsoft\\Internet Explorer\\TypedURLs";
constexpr char kDialogs[] =
    "\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\txt";

/// A count as stored: runs is what the program shows.
std::array<std::byte, 16> CountData(std::uint32_t runs, std::uint64_t lastRun) {
    std::array<std::byte, 16> data{};
    for (std::size_t i = 0; i < 4; ++i) {
        data[4 + i] = static_cast<std::byte>((runs + 5) >> (8 * i));
    }
    for (std::size_t i = 0; i < 8; ++i) {
        data[8 + i] = static_cast<std::byte>(lastRun >> (8 * i));
    }
    return data;
}

// 2009-08-04 15:22:18 UTC.
constexpr std::uint64_t kSomeDay = 128938729380000000ULL;

class MainWindowTest : public ::testing::Test {
  protected:
    MainWindowTest() {
        AddAccount(kService, "", "%systemroot%\\system32\\config\\systemprofile");
        AddAccount(kAnna, "anna", "C:\\Documents and Settings\\anna");
        AddAccount(kBen, "ben", "C:\\Documents and Settings\\ben");
        for (const char* sid : {kAnna, kBen}) {
            const std::string key = sid;
            MemoryKey& counts = platform.Root(kUsers).Key(key + kCounts);
            counts.SetData("HRZR_EHACNGU:P:\\" + key + ".rkr", kRegBinary, CountData(3, kSomeDay));
            platform.Root(kUsers).Key(key + kTyped).SetText("url1", "http://" + key + ".example/");
            platform.Root(kUsers)
                .Key(key + kDialogs)
                .SetText("MRUList", "a")
                .SetText("a", "C:\\" + key + ".txt");
        }
        platform.specialFolders[8] = "C:\\Documents and Settings\\anna\\Recent";
        for (const char* name : {"anna", "ben"}) {
            MemoryShortcut shortcut;
            shortcut.target = std::string("C:\\") + name + ".doc";
            platform.AddShortcut(std::string("C:\\Documents and Settings\\") + name + "\\Recent\\x.lnk",
                                 shortcut);
        }
        ini.SetINIFileName(folder.Path("ostrevin.ini"));
    }

    void AddAccount(const std::string& sid, const std::string& name, const std::string& profile) {
        platform.Root(kLocalMachine)
            .Key("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList\\" + sid)
            .SetText("ProfileImagePath", profile, kRegExpandSz);
        if (!name.empty()) {
            platform.accountNames[sid] = {name};
        }
    }
    MemoryKey& Counts(const std::string& sid) { return platform.Root(kUsers).Key(sid + kCounts); }

    void Show() {
        settings.SetINI(&ini);
        accounts.LoadAccountSIDSFromRegistry();
        accounts.LoadAccountNamesFromSID();
        window.Show();
    }
    void Click(const std::string& key) { window.treeUsers.ClickNode(window.treeUsers.Node(key)); }
    [[nodiscard]] static Strings Texts(const ListView& list) {
        Strings texts;
        for (std::size_t i = 1; i <= list.ItemCount(); ++i) {
            texts.push_back(list.Item(i).Text());
        }
        return texts;
    }
    [[nodiscard]] std::string Selected() const {
        return window.treeUsers.SelectedItem() == nullptr ? "" : window.treeUsers.SelectedItem()->Key();
    }

    ScratchFolder folder;
    MemoryPlatform platform;
    testing::TestToolkit toolkit;
    IniFile ini;
    AppSettings settings;
    AccountList accounts{platform,
                         {"anna", [] { return std::string("anna"); }, [](const std::string& /*line*/) {}}};
    frmMain window{toolkit, {platform, settings, accounts}};
};

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

TEST_F(MainWindowTest, AnAccountNodeChangesNothingInTheLists) {
    Show();
    Click(kAnna);
    EXPECT_EQ(window.lstProgram.ItemCount(), 0U);
    EXPECT_EQ(window.lstProgram.Tag(), "");
    EXPECT_TRUE(window.TabStrip.Selected(1));
}

TEST_F(MainWindowTest, ASourceNodeSelectsItsTabAndFillsItsList) {
    Show();
    const std::array<std::pair<const char*, const ListView*>, 5> sources = {{
        {":RECENT", &window.lstRecent},
        {":OPENSAVE", &window.lstOpenSave},
        {":IEHISTORY", &window.lstIEHistory},
        {":TYPEDURLS", &window.lstTypedURL},
        {":PROGRAMS", &window.lstProgram},
    }};
    const std::array<int, 5> tabs = {2, 3, 4, 5, 1};
    for (std::size_t i = 0; i < sources.size(); ++i) {
        Click(std::string(kAnna) + sources[i].first);
        EXPECT_TRUE(window.TabStrip.Selected(tabs[i]));
        EXPECT_EQ(sources[i].second->Tag(), kAnna);
        for (int tab = 1; tab <= 5; ++tab) {
            EXPECT_EQ(window.fraTab[static_cast<std::size_t>(tab - 1)].Visible(), tab == tabs[i]);
        }
    }
    EXPECT_EQ(Texts(window.lstProgram), (Strings{std::string("C:\\") + Rot13(kAnna) + ".exe"}));
    EXPECT_EQ(Texts(window.lstRecent), (Strings{"C:\\anna.doc"}));
    EXPECT_EQ(Texts(window.lstOpenSave), (Strings{std::string("C:\\") + kAnna + ".txt"}));
    EXPECT_EQ(Texts(window.lstTypedURL), (Strings{std::string("http://") + kAnna + ".example/"}));
}

TEST_F(MainWindowTest, ATabFollowsTheAccountInTheTree) {
    Show();
    Click(std::string(kAnna) + ":PROGRAMS");
    window.TabStrip.Select(4);
    EXPECT_EQ(Selected(), std::string(kAnna) + ":IEHISTORY");
    EXPECT_EQ(window.lstIEHistory.Tag(), kAnna);
    Click(kBen);
    window.TabStrip.Select(5);
    EXPECT_EQ(Selected(), std::string(kBen) + ":TYPEDURLS") << "an account's own node counts as its choice";
    EXPECT_EQ(window.lstTypedURL.Tag(), kBen);
}

TEST_F(MainWindowTest, ATabWithoutAChosenNodeOnlyShowsItsPage) {
    Show();
    window.TabStrip.Select(3);
    EXPECT_TRUE(window.fraTab[2].Visible());
    EXPECT_FALSE(window.fraTab[0].Visible());
    EXPECT_EQ(window.lstOpenSave.Tag(), "");
    EXPECT_EQ(Selected(), "");
}

TEST_F(MainWindowTest, AListIsReadAgainOnlyForAnotherAccount) {
    Show();
    Click(std::string(kAnna) + ":PROGRAMS");
    window.lstProgram.Add("", "left by somebody");
    Click(std::string(kAnna) + ":PROGRAMS");
    window.TabStrip.Select(2);
    window.TabStrip.Select(1);
    EXPECT_EQ(window.lstProgram.ItemCount(), 2U);
    Click(std::string(kBen) + ":PROGRAMS");
    EXPECT_EQ(Texts(window.lstProgram), (Strings{std::string("C:\\") + Rot13(kBen) + ".exe"}));
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
    const auto add = [&](const std::string& name, std::uint32_t runs, std::uint64_t lastRun) {
        Counts(kBen).SetData(Rot13(name), kRegBinary, CountData(runs, lastRun));
    };
    add("UEME_RUNPATH:C:\\notes.txt", 1, kSomeDay);
    add("UEME_RUNPATH:C:\\exercise.txt", 1, kSomeDay);
    add("UEME_RUNPATH:C:\\B.EXE", 0xFFFFFFFF - 5, 0);
    add("UEME_RUNPIDL:C:\\c.exe", 1, kSomeDay);
    add("UEME_RUNCPL:d.exe", 1, kSomeDay);
    Show();
    Click(std::string(kBen) + ":PROGRAMS");
    const ListView& list = window.lstProgram;
    EXPECT_EQ(Texts(list),
              (Strings{"C:\\B.EXE", std::string("C:\\") + Rot13(kBen) + ".exe", "C:\\exercise.txt"}))
        << "EXE counts anywhere in the path and in any case";
    EXPECT_EQ(list.Item(1).SubItem(1), "-6");
    EXPECT_EQ(list.Item(1).SubItem(2), "") << "a time of zero is no last run";
    EXPECT_EQ(list.Item(2).SubItem(1), "3");
    EXPECT_EQ(list.Item(2).SubItem(2), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(list.Item(2).SubItem(3), "") << "nothing is looked for on the disk yet";
}

TEST_F(MainWindowTest, ItemKeysLeadBackToTheSource) {
    Counts(kAnna).SetData(Rot13("UEME_RUNCPL:a.cpl"), kRegBinary, CountData(1, kSomeDay));
    Counts(kAnna).SetData(Rot13("UEME_RUNPATH:Z:\\z.exe"), kRegBinary, CountData(1, kSomeDay));
    Show();
    Click(std::string(kAnna) + ":PROGRAMS");
    ASSERT_EQ(window.lstProgram.ItemCount(), 2U);
    const UserAssistList& source = *accounts.UserAssist(1);
    for (std::size_t i = 1; i <= 2; ++i) {
        const ListItem& item = window.lstProgram.Item(i);
        ASSERT_TRUE(item.Key().ends_with("KEY"));
        EXPECT_EQ(source.UserAssistValue(std::stoi(item.Key())), item.Text());
    }
    EXPECT_EQ(window.lstProgram.Item(2).Key(), "1KEY") << "entries that are not listed count too";
}

/// A record of the browser's index, 256 bytes.
void AppendRecord(std::vector<std::byte>& index, const std::string& address, std::uint64_t accessed) {
    std::vector<std::byte> record(256);
    const std::string signature = "URL ";
    for (std::size_t i = 0; i < 4; ++i) {
        record[i] = static_cast<std::byte>(signature[i]);
    }
    for (std::size_t i = 0; i < 8; ++i) {
        record[16 + i] = static_cast<std::byte>(accessed >> (8 * i));
    }
    for (std::size_t i = 0; i < address.size(); ++i) {
        record[104 + i] = static_cast<std::byte>(address[i]);
    }
    index.insert(index.end(), record.begin(), record.end());
}

TEST_F(MainWindowTest, HistoryListsPagesAlone) {
    std::vector<std::byte> index(128);
    index[0] = std::byte{'S'};
    index[6] = std::byte{128};  // behind "S", its zero byte and four bytes that are not used
    for (const char* address :
         {"Visited: anna@http://a.example/", "Visited: anna@HTTP://upper.example/", "ftp://f/",
          "mailto:x@y.example", "about:blank", "file:///C:/a.txt", "https://s.example/"}) {
        AppendRecord(index, address, kSomeDay);
    }
    AppendRecord(index, "http://never.example/", 0);
    platform.AddFile("C:\\Documents and Settings\\anna\\Local Settings\\History\\History.IE5\\index.dat",
                     index);
    Show();
    Click(std::string(kAnna) + ":IEHISTORY");
    EXPECT_EQ(Texts(window.lstIEHistory), (Strings{"about:blank", "file:///C:/a.txt", "http://a.example/",
                                                   "http://never.example/", "https://s.example/"}));
    EXPECT_EQ(window.lstIEHistory.Item(3).SubItem(1), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(window.lstIEHistory.Item(4).SubItem(1), "1/1/1601") << "every record shows its date as it is";
}

TEST_F(MainWindowTest, AFilledListIsSortedAsTheUserLeftIt) {
    Counts(kBen).SetData(Rot13("UEME_RUNPATH:Z:\\z.exe"), kRegBinary, CountData(1, kSomeDay));
    Show();
    Click(std::string(kAnna) + ":PROGRAMS");
    window.lstProgram.SetSortOrder(SortOrder::Descending);
    window.lstProgram.SetSorted(true);
    Click(std::string(kBen) + ":PROGRAMS");
    EXPECT_TRUE(window.lstProgram.Sorted());
    EXPECT_EQ(window.lstProgram.Item(1).Text(), "Z:\\z.exe");
}

TEST_F(MainWindowTest, TypedAddressesNeedAHiveThatIsThere) {
    platform.AddHive("C:\\Documents and Settings\\carl\\NTUSER.DAT")
        .Key(std::string(kTyped).substr(1))
        .SetText("url1", "http://carl.example/");
    AddAccount("S-1-5-21-1-2-3-1003", "carl", "C:\\Documents and Settings\\carl");
    Show();
    Click("S-1-5-21-1-2-3-1003:TYPEDURLS");
    EXPECT_EQ(window.lstTypedURL.ItemCount(), 0U);
    Click("S-1-5-21-1-2-3-1003:PROGRAMS");
    Click("S-1-5-21-1-2-3-1003:TYPEDURLS");
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

TEST_F(MainWindowTest, PreviewIsOffUnlessTheSettingsSayTrue) {
    Show();
    EXPECT_FALSE(window.mnuShowPreview.Checked());
    EXPECT_EQ(window.barTool.Button("SHOWPREVIEW").Value(), 0);
}

TEST_F(MainWindowTest, PreviewIsOnWhenTheSettingsSayTrue) {
    ini.AddVariable("ShowPreview", "True");
    Show();
    EXPECT_TRUE(window.mnuShowPreview.Checked());
    EXPECT_EQ(window.barTool.Button("SHOWPREVIEW").Value(), 1);
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

TEST_F(MainWindowTest, ManualIsOpenedFromTheApplicationFolderUnlooked) {
    Show();
    window.mnuManual.Click.Raise();
    ASSERT_EQ(platform.executed.size(), 1U);
    EXPECT_EQ(platform.executed[0].file, "C:\\Program Files\\Ostrevin\\Ostrevin Manual.chm");
    EXPECT_EQ(platform.executed[0].verb, "open");
}

TEST_F(MainWindowTest, TreeAndTabsFillTheWindowWithTenPixelsAround) {
    Show();
    for (const auto& [width, height] : {std::pair{640, 480}, std::pair{1024, 768}, std::pair{3840, 2160}}) {
        window.Resized(width, height, WindowState::Normal);
        EXPECT_EQ(window.TabStrip.Left() + window.TabStrip.Width() + 150, window.ScaleWidth());
        EXPECT_EQ(window.treeUsers.Top() + window.treeUsers.Height() + 150, window.barStatus.Top());
        EXPECT_EQ(window.TabStrip.Height(), window.treeUsers.Height());
        EXPECT_EQ(window.lstProgram.Width(), window.fraTab[0].Width() - 60);
        EXPECT_EQ(window.lstRecent.Width(), window.picRecent.Width());
    }
}

TEST_F(MainWindowTest, AWindowTooNarrowOrMinimisedKeepsItsSizes) {
    Show();
    window.Resized(800, 600, WindowState::Normal);
    const double width = window.TabStrip.Width();
    window.Resized(100, 600, WindowState::Normal);
    EXPECT_EQ(window.TabStrip.Width(), width);
    const double height = window.treeUsers.Height();
    window.Resized(0, 0, WindowState::Minimized);
    EXPECT_EQ(window.treeUsers.Height(), height);
}

TEST_F(MainWindowTest, AVolumeThatDisappearsLeavesListsEmpty) {
    Show();
    Click(std::string(kAnna) + ":PROGRAMS");
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
