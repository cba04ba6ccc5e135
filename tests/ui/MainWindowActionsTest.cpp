// What clicks and double-clicks on items do, the preview of documents, and the tool bar.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/MainWindowFixture.h"

namespace ostrevin {
namespace {

/// The page of a kind of documents, and what Anna has on it.
struct Documents {
    const char* suffix;
    ListView frmMain::*list;
    PictureBox frmMain::*thumbnail;
    const char* document;

    friend void PrintTo(const Documents& documents, std::ostream* out) { *out << documents.suffix + 1; }
};

class MainWindowActionsTest : public MainWindowFixture {
  protected:
    void ShowPreview() { ini.AddVariable("ShowPreview", "True"); }
    /// A file of which the shell has a thumbnail of one point.
    void AddPictureFile(const std::string& path) {
        MemoryFile& file = platform.AddFile(path);
        file.hasThumbnail = true;
        file.thumbnail = Bitmap{1, 1, {0xFF112233}};
    }
    /// Menu item, button and setting, each as "True" or "False", where all are the same.
    [[nodiscard]] std::string Preview() {
        std::string option = settings.GetINIOption("ShowPreview");
        EXPECT_EQ(window.mnuShowPreview.Checked(), option == "True");
        EXPECT_EQ(Value("SHOWPREVIEW"), option == "True" ? ToolButton::kPressed : ToolButton::kUp);
        return option;
    }
};

/// For what holds of both kinds of documents.
class MainWindowDocumentsTest : public MainWindowActionsTest,
                                public ::testing::WithParamInterface<Documents> {
  protected:
    void ShowDocuments() {
        Show();
        Click(std::string(kAnna) + GetParam().suffix);
    }
    void ClickDocument() { ClickItem(list, document); }

    ListView& list = window.*GetParam().list;
    PictureBox& thumbnail = window.*GetParam().thumbnail;
    const std::string document = GetParam().document;
};

INSTANTIATE_TEST_SUITE_P(Pages, MainWindowDocumentsTest,
                         ::testing::Values(Documents{":RECENT", &frmMain::lstRecent,
                                                     &frmMain::picRecentThumbnail, "C:\\anna.doc"},
                                           Documents{":OPENSAVE", &frmMain::lstOpenSave,
                                                     &frmMain::picOpenSaveThumbnail, "C:\\anna.txt"}));

/// Counts how often it is asked for a file, and can lose its files.
class LosingPlatform : public MemoryPlatform {
  public:
    bool PathFileExistsA(const std::string& /*path*/) override {
        ++looks;
        return there;
    }
    std::unique_ptr<ShellFolder> SHGetDesktopFolder() override { throw std::runtime_error("no shell"); }

    int looks = 0;
    bool there = true;
};

TEST_F(MainWindowActionsTest, AFileIsLookedForOnce) {
    LosingPlatform losing;
    frmMain other(toolkit, {losing, settings, accounts});
    machine.Load();
    other.Show();
    other.FillPrograms(kAnna);
    other.FillRecentDocuments(kAnna);
    EXPECT_EQ(losing.looks, 0) << "a long list does not touch the disk while it is filled";
    other.lstProgram.ClickItem(other.lstProgram.Item(1));
    other.lstRecent.ClickItem(other.lstRecent.Item(1));
    EXPECT_EQ(losing.looks, 2);
    losing.there = false;
    other.lstProgram.ClickItem(other.lstProgram.Item(1));
    other.lstRecent.ClickItem(other.lstRecent.Item(1));
    EXPECT_EQ(losing.looks, 2);
    EXPECT_EQ(other.lstProgram.Item(1).SubItem(3), "Yes");
    EXPECT_EQ(other.lstRecent.Item(1).SubItem(1), "Yes");
}

TEST_F(MainWindowActionsTest, AFailureOfThePreviewIsNoneOfTheWindow) {
    ShowPreview();
    LosingPlatform losing;
    frmMain other(toolkit, {losing, settings, accounts});
    machine.Load();
    other.Show();
    other.FillRecentDocuments(kAnna);
    EXPECT_NO_THROW(other.lstRecent.ClickItem(other.lstRecent.Item(1)));
    EXPECT_EQ(other.picRecentThumbnail.Picture(), nullptr);
    EXPECT_EQ(Messages(), (Strings{}));
}

TEST_F(MainWindowActionsTest, ProgramsTellWhetherTheirFileIsThere) {
    platform.AddFile("C:\\anna.exe");
    machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\gone.exe", 1, kSomeDay);
    Show();
    ClickPrograms(kAnna);
    EXPECT_EQ(Texts(window.lstProgram, 4), (Strings{"", ""}));
    ClickItem(window.lstProgram, "C:\\anna.exe");
    ClickItem(window.lstProgram, "C:\\gone.exe");
    EXPECT_EQ(Texts(window.lstProgram, 4), (Strings{"Yes", "No"}));
    EXPECT_EQ(Texts(window.lstProgram, 2), (Strings{"3", "1"}));
}

TEST_F(MainWindowActionsTest, AListFilledAnewHasToldNothingYet) {
    Show();
    ClickPrograms(kAnna);
    ClickItem(window.lstProgram, "C:\\anna.exe");
    ClickPrograms(kBen);
    ClickPrograms(kAnna);
    EXPECT_EQ(Texts(window.lstProgram, 4), (Strings{""}));
}

TEST_P(MainWindowDocumentsTest, TellWhetherTheirFileIsThere) {
    ShowDocuments();
    ClickDocument();
    EXPECT_EQ(Texts(list, 2), (Strings{"No"}));
    platform.AddFile(document);
    ClickDocument();
    EXPECT_EQ(Texts(list, 2), (Strings{"No"})) << "it is not looked for again";
}

TEST_P(MainWindowDocumentsTest, WithoutPreviewNoThumbnailIsMade) {
    AddPictureFile(document);
    ShowDocuments();
    thumbnail.SetPicture(std::make_shared<Picture>());
    ClickDocument();
    EXPECT_EQ(Texts(list, 2), (Strings{"Yes"}));
    EXPECT_EQ(thumbnail.Picture(), nullptr);
    EXPECT_TRUE(platform.shellCalls.empty());
}

TEST_P(MainWindowDocumentsTest, OnlyTheTextTrueSwitchesThePreviewOn) {
    AddPictureFile(document);
    ini.AddVariable("ShowPreview", "true");
    ShowDocuments();
    ClickDocument();
    EXPECT_EQ(thumbnail.Picture(), nullptr);
}

TEST_P(MainWindowDocumentsTest, ThePreviewShowsTheThumbnailOfWhatIsClicked) {
    ShowPreview();
    AddPictureFile(document);
    ShowDocuments();
    window.Resized(1000, 700, WindowState::Normal);
    ClickDocument();
    ASSERT_NE(thumbnail.Picture(), nullptr);
    EXPECT_EQ(thumbnail.Picture()->pixels, (std::vector<std::uint32_t>{0xFF112233}));
    const int width = static_cast<int>(thumbnail.Width() / 15 - 2);
    const int height = static_cast<int>(thumbnail.Height() / 15 - 2);
    ASSERT_GT(width, 0);
    EXPECT_TRUE(std::any_of(platform.shellCalls.begin(), platform.shellCalls.end(), [&](const auto& call) {
        return call.starts_with("location " + std::to_string(width) + " x " + std::to_string(height) + ",");
    })) << "of the size of the inside of its box, in whole pixels";
}

TEST_P(MainWindowDocumentsTest, TheThumbnailsSizeIsCutToWholePixels) {
    ShowPreview();
    toolkit.pixelsPerInchY = 144;  // 10 twips down, 15 across
    AddPictureFile(document);
    ShowDocuments();
    constexpr double kBorder = 2;
    thumbnail.Move(0, 0, (kBorder + 100.99) * 15, (kBorder + 80.99) * 10);
    ClickDocument();
    EXPECT_TRUE(std::any_of(platform.shellCalls.begin(), platform.shellCalls.end(),
                            [&](const auto& call) { return call.starts_with("location 100 x 80,"); }));
}

TEST_P(MainWindowDocumentsTest, OfAMissingFileNoThumbnailIsTried) {
    ShowPreview();
    ShowDocuments();
    ClickDocument();
    AddPictureFile(document);
    ClickDocument();
    EXPECT_TRUE(platform.shellCalls.empty());
    EXPECT_EQ(thumbnail.Picture(), nullptr);
}

TEST_P(MainWindowDocumentsTest, EachClickClearsTheThumbnail) {
    ShowPreview();
    AddPictureFile(document);
    platform.AddFile("C:\\plain");
    ShowDocuments();
    list.Add("", "C:\\plain");
    list.Add("", "C:\\gone");
    for (const char* without : {"C:\\plain", "C:\\gone"}) {
        ClickDocument();
        ASSERT_NE(thumbnail.Picture(), nullptr);
        ClickItem(list, without);
        EXPECT_EQ(thumbnail.Picture(), nullptr) << without;
    }
    EXPECT_EQ(Messages(), (Strings{}));
}

TEST_P(MainWindowDocumentsTest, WhatIsNoLongerInTheListHasNoPreview) {
    ShowPreview();
    AddPictureFile(document);
    ShowDocuments();
    ClickDocument();
    Filter("anna");
    EXPECT_NE(thumbnail.Picture(), nullptr);
    Press("FILTER");
    Filter("none");
    EXPECT_EQ(thumbnail.Picture(), nullptr);
    Press("FILTER");
    ClickDocument();
    ASSERT_NE(thumbnail.Picture(), nullptr);
    Click(std::string(kBen) + GetParam().suffix);
    EXPECT_EQ(thumbnail.Picture(), nullptr);
}

TEST_P(MainWindowDocumentsTest, WhatIsFoundDoesNotStandBesideThePictureOfAnother) {
    ShowPreview();
    AddPictureFile(document);
    ShowDocuments();
    list.Add("", "C:\\other anna");
    ClickDocument();
    const PicturePtr picture = thumbnail.Picture();
    ASSERT_NE(picture, nullptr);
    Find("nothing like it");
    EXPECT_EQ(thumbnail.Picture(), picture) << "the selection stays";
    Find("anna");
    ASSERT_EQ(Selected(list), document);
    EXPECT_EQ(thumbnail.Picture(), picture) << "it is the picture of what is found";
    window.mnuFindNext.Click.Raise();
    ASSERT_EQ(Selected(list), "C:\\other anna");
    EXPECT_EQ(thumbnail.Picture(), nullptr);
    EXPECT_EQ(list.SelectedItem()->SubItem(1), "") << "nothing is clicked";
    ClickDocument();
    Find("other");
    ASSERT_EQ(Selected(list), "C:\\other anna");
    EXPECT_EQ(thumbnail.Picture(), nullptr);
}

TEST_P(MainWindowDocumentsTest, ThePictureStaysAsLongAsItsDocumentIsSelected) {
    ShowPreview();
    AddPictureFile(document);
    ShowDocuments();
    list.Add("", "C:\\zero");
    ClickDocument();
    const PicturePtr picture = thumbnail.Picture();
    ASSERT_NE(picture, nullptr);
    list.ClickColumn(1);
    list.ClickColumn(2);
    window.TabStrip.Select(1);
    Click(std::string(kAnna) + GetParam().suffix);
    window.Resized(900, 600, WindowState::Normal);
    EXPECT_EQ(Selected(list), document);
    EXPECT_EQ(thumbnail.Picture(), picture);
}

TEST_P(MainWindowDocumentsTest, ThePreviewFollowsItsSwitchAtOnce) {
    AddPictureFile(document);
    ShowDocuments();
    window.TogglePreview();
    ClickDocument();
    EXPECT_NE(thumbnail.Picture(), nullptr);
    window.TogglePreview();
    ClickDocument();
    EXPECT_EQ(thumbnail.Picture(), nullptr);
}

TEST_P(MainWindowDocumentsTest, ADoubleClickOpensADocumentThatIsThere) {
    ShowDocuments();
    list.DblClick.Raise();
    ClickDocument();
    list.DblClick.Raise();
    EXPECT_TRUE(platform.executed.empty()) << "neither without a choice nor without a file";
    platform.AddFile(document);
    list.DblClick.Raise();
    ASSERT_EQ(platform.executed.size(), 1U);
    EXPECT_EQ(platform.executed[0].verb, "open");
    EXPECT_EQ(platform.executed[0].file, document);
    EXPECT_EQ(Messages(), (Strings{}));
    EXPECT_TRUE(platform.programsStarted.empty());
}

TEST_F(MainWindowActionsTest, ADoubleClickStartsAProgramThatIsThere) {
    Show();
    ClickPrograms(kAnna);
    window.lstProgram.DblClick.Raise();
    ClickItem(window.lstProgram, "C:\\anna.exe");
    window.lstProgram.DblClick.Raise();
    EXPECT_TRUE(platform.programsStarted.empty()) << "neither without a choice nor without a file";
    platform.AddFile("C:\\anna.exe");
    window.lstProgram.DblClick.Raise();
    EXPECT_EQ(platform.programsStarted, (Strings{"C:\\anna.exe"}));
    EXPECT_TRUE(platform.executed.empty());
    platform.Fail("StartProgram");
    window.lstProgram.DblClick.Raise();
    EXPECT_EQ(Messages(), (Strings{})) << "a program that cannot be started is not spoken of";
}

/// A machine where whatever is done with a file fails with an error.
class FailingPlatform : public MemoryPlatform {
  public:
    bool PathFileExistsA(const std::string& /*path*/) override {
        return looks ? true : throw std::runtime_error("no look");
    }
    bool StartProgram(const std::string& /*commandLine*/) override {
        ++tried;
        throw std::runtime_error("no start");
    }
    int ShellExecuteA(const std::string& /*verb*/, const std::string& /*file*/, const std::string& /*folder*/,
                      int /*showCommand*/) override {
        ++tried;
        throw std::runtime_error("no shell");
    }

    bool looks = false;  ///< whether it can look for files
    int tried = 0;
};

TEST_F(MainWindowActionsTest, AnErrorOfADoubleClickIsNoneOfTheWindow) {
    FailingPlatform failing;
    frmMain other(toolkit, {failing, settings, accounts});
    machine.Load();
    other.Show();
    other.FillPrograms(kAnna);
    other.FillRecentDocuments(kAnna);
    other.FillOpenSave(kAnna);
    for (ListView* list : {&other.lstProgram, &other.lstRecent, &other.lstOpenSave}) {
        list->Select(&list->Item(1));
        failing.looks = false;
        failing.tried = 0;
        EXPECT_NO_THROW(list->DblClick.Raise()) << list->Name();
        EXPECT_EQ(failing.tried, 0) << list->Name();
        failing.looks = true;
        EXPECT_NO_THROW(list->DblClick.Raise()) << list->Name();
        EXPECT_EQ(failing.tried, 1) << list->Name();
    }
    EXPECT_EQ(Messages(), (Strings{}));
}

TEST_F(MainWindowActionsTest, AFileThatCannotBeLookedForIsNotAccessible) {
    ShowPreview();
    FailingPlatform failing;
    frmMain other(toolkit, {failing, settings, accounts});
    machine.Load();
    other.Show();
    other.FillPrograms(kAnna);
    other.FillRecentDocuments(kAnna);
    EXPECT_NO_THROW(other.lstProgram.ClickItem(other.lstProgram.Item(1)));
    EXPECT_NO_THROW(other.lstRecent.ClickItem(other.lstRecent.Item(1)));
    EXPECT_EQ(other.lstProgram.Item(1).SubItem(3), "No");
    EXPECT_EQ(other.lstRecent.Item(1).SubItem(1), "No");
}

TEST_F(MainWindowActionsTest, ADoubleClickOpensAnAddressAsItStands) {
    machine.AddIEHistory("anna", {{"http:no address", kSomeDay}});
    machine.AddTypedURLs(kAnna, {"::: not one either"});
    Show();
    for (const auto& [suffix, list] :
         {std::pair{":IEHISTORY", &frmMain::lstIEHistory}, std::pair{":TYPEDURLS", &frmMain::lstTypedURL}}) {
        Click(std::string(kAnna) + suffix);
        ListView& addresses = window.*list;
        addresses.DblClick.Raise();
        addresses.ClickItem(addresses.Item(1));
        addresses.DblClick.Raise();
    }
    ASSERT_EQ(platform.executed.size(), 2U) << "none without a choice";
    EXPECT_EQ(platform.executed[0].file, "http:no address");
    EXPECT_EQ(platform.executed[1].file, "::: not one either");
}

TEST_P(MainWindowDocumentsTest, TellWhyTheyAreNotOpened) {
    ShowDocuments();
    platform.AddFile(document);
    ClickDocument();
    platform.shellExecuteResult = 5;
    list.DblClick.Raise();
    EXPECT_EQ(Messages(), (Strings{})) << "the live machine's system tells it itself";
    platform.openingRefusal = "This file is not opened.";
    list.DblClick.Raise();
    EXPECT_EQ(Messages(), (Strings{"This file is not opened."}));
}

TEST_F(MainWindowActionsTest, PreviewIsOffUnlessTheSettingsSayTrue) {
    Show();
    EXPECT_EQ(Preview(), "");
}

TEST_F(MainWindowActionsTest, PreviewIsOnWhenTheSettingsSayTrue) {
    ShowPreview();
    Show();
    EXPECT_EQ(Preview(), "True");
}

TEST_F(MainWindowActionsTest, MenuAndButtonReadTheSettingAsABoolean) {
    const auto shows = [this](const char* value) {
        IniFile file;
        file.AddVariable("ShowPreview", value);
        AppSettings options;
        options.SetINI(&file);
        file.SetINIFileName(folder.Path("other.ini"));
        frmMain other(toolkit, {platform, options, accounts});
        other.Load();
        const bool checked = other.mnuShowPreview.Checked();
        EXPECT_EQ(other.barTool.Button("SHOWPREVIEW").Value(),
                  checked ? ToolButton::kPressed : ToolButton::kUp)
            << value;
        return checked;
    };
    for (const char* yes : {"True", "true", "TRUE", "tRuE", "1", "-1", "2", "0.5", " 1 ", "1e3"}) {
        EXPECT_TRUE(shows(yes)) << yes;
    }
    for (const char* no :
         {"False", "false", "FALSE", "0", "-0", "0.0", "00", "", "Tru", "Trues", "yes", "x"}) {
        EXPECT_FALSE(shows(no)) << no;
    }
}

TEST_F(MainWindowActionsTest, MenuAndToolBarSwitchThePreview) {
    Show();
    Press("SHOWPREVIEW");
    EXPECT_EQ(Preview(), "True");
    window.mnuShowPreview.Click.Raise();
    EXPECT_EQ(Preview(), "False");
    window.mnuShowPreview.Click.Raise();
    EXPECT_EQ(Preview(), "True");
    Press("SHOWPREVIEW");
    EXPECT_EQ(Preview(), "False");
}

TEST_F(MainWindowActionsTest, SwitchedTwiceThePreviewIsAsItWas) {
    ShowPreview();
    Show();
    window.TogglePreview();
    window.TogglePreview();
    EXPECT_EQ(Preview(), "True");
}

TEST_F(MainWindowActionsTest, ThePreviewIsKeptForTheNextRun) {
    Show();
    window.TogglePreview();
    window.Close();
    EXPECT_EQ(folder.Read("ostrevin.ini"), "ShowPreview=True\r\n");
}

TEST_F(MainWindowActionsTest, EachToolBarButtonDoesItsOwn) {
    Show();
    Press("REPORT");
    EXPECT_EQ(Dialogs(), (Strings{"frmCreateReport"}));
    Press("FIND");
    EXPECT_EQ(Dialogs(), (Strings{"frmCreateReport", "frmFind"}));
    Press("FILTER");
    EXPECT_EQ(Dialogs(), (Strings{"frmCreateReport", "frmFind", "frmFilter"}));
    EXPECT_EQ(Preview(), "") << "only its own button switches the preview";
    Press("SHOWPREVIEW");
    EXPECT_EQ(Dialogs().size(), 3U);
}

}  // namespace
}  // namespace ostrevin
