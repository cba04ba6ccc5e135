#include "ui/frmMain.h"

#include <optional>
#include <string_view>

#include "platform/Paths.h"
#include "platform/Text.h"
#include "report/frmAbout.h"
#include "report/frmCreateReport.h"
#include "sources/FileTimeToLocalDate.h"
#include "ui/ListSorter.h"
#include "ui/SortKeys.h"

namespace ostrevin {
namespace {

/// A kind of trace, in the order of the tabs.
struct TraceKind {
    const char*
        suffix;  ///< of a node's key, behind the security identifier; its tag is the suffix without ":"
    const char* nodeText;
    const char* tabText;
    const char* image;
    void (frmMain::*fill)(const std::string& sid);
};

constexpr std::array<TraceKind, 5> kTraceKinds = {{
    {":PROGRAMS", "Programs", "Programs", "PROGRAM", &frmMain::FillPrograms},
    {":RECENT", "Recent Documents", "Recent Docs", "RECENT", &frmMain::FillRecentDocuments},
    {":OPENSAVE", "Opened/Saved Docs", "Open / Save", "OPENSAVE", &frmMain::FillOpenSave},
    {":IEHISTORY", "IE History", "IE History", "IEHISTORY", &frmMain::FillIEHistory},
    {":TYPEDURLS", "Typed URLs", "Typed URLs", "TYPEDURLS", &frmMain::FillTypedURLs},
}};

std::string KeyOf(std::int32_t position) {
    return std::to_string(position) + "KEY";
}

/// True and false in any case, a number that is not 0; any other text is false.
bool ReadBoolean(std::string_view text) {
    const std::optional<double> number = ReadNumber(text);
    return number ? *number != 0 : EqualNoCase(text, "True");
}

bool IsPage(std::string_view url) {
    return url.starts_with("about") || url.starts_with("http") || url.starts_with("file");
}

}  // namespace

frmMain::frmMain(Toolkit& toolkit, MainWindowParts parts)
    : Form(toolkit, "frmMain"),
      mnuFile(Menus().Add("mnuFile", "&File")),
      mnuExit(mnuFile.Add("mnuExit", "E&xit")),
      mnuEdit(Menus().Add("mnuEdit", "&Edit")),
      mnuFind(mnuEdit.Add("mnuFind", "Find", "Ctrl+F")),
      mnuFindNext(mnuEdit.Add("mnuFindNext", "Find Next", "F3")),
      mnuReporting(Menus().Add("mnuReporting", "Reporting")),
      mnuCreateReport(mnuReporting.Add("mnuCreateReport", "Create Report")),
      mnuOptions(Menus().Add("mnuOptions", "&Options")),
      mnuShowPreview(mnuOptions.Add("mnuShowPreview", "Show Preview")),
      mnuHelp(Menus().Add("mnuHelp", "&Help")),
      mnuManual(mnuHelp.Add("mnuManual", "&Manual")),
      mnuAbout(mnuHelp.Add("mnuAbout", "&About Ostrevin")),
      parts_(parts) {
    SetCaption("Ostrevin");
    mnuShowPreview.SetCheckable(true);
    DesignToolbar();
    DesignTabs();
    DesignLists();
    DesignLayout();
    BindEvents();
}

frmMain::~frmMain() {
    DropView();
}

void frmMain::BindEvents() {
    treeUsers.NodeClick = [this](TreeNode& node) { treeUsers_NodeClick(node); };
    TabStrip.Click = [this] { TabStrip_Click(); };
    tmrUpdateTime.Tick = [this] { tmrUpdateTime_Timer(); };
    barTool.ButtonClick = [this](ToolButton& button) { barTool_ButtonClick(button); };
    mnuExit.Click = [this] { Unload(); };
    mnuFind.Click = [this] { DoFind(); };
    mnuFindNext.Click = [this] { DoFindNext(); };
    mnuCreateReport.Click = [this] { CreateReport(); };
    mnuShowPreview.Click = [this] { TogglePreview(); };
    mnuManual.Click = [this] { mnuManual_Click(); };
    mnuAbout.Click = [this] { mnuAbout_Click(); };
    for (std::size_t i = 0; i < kTraceKinds.size(); ++i) {
        ListView& list = ListAt(i);
        list.ColumnClick = [this, &list](ColumnHeader& column) {
            ListSorter(parts_.platform, list, column, true);
        };
    }
    lstProgram.ItemClick = [this](ListItem& item) { lstProgram_ItemClick(item); };
    lstProgram.DblClick = [this] { lstProgram_DblClick(); };
    for (const DocumentPage* page : {&recentPage_, &openSavePage_}) {
        page->list.ItemClick = [this, page](ListItem& item) { Document_ItemClick(*page, item); };
        page->list.DblClick = [this, page] { Document_DblClick(page->list); };
        page->list.SelectionChange = [page] { page->thumbnail.SetPicture(nullptr); };
        Splitter& splitter = page->splitter;
        page->pane.MouseDown = [&splitter](int button, int shift, double x, double y) {
            splitter.MouseDown(button, shift, x, y);
        };
        page->pane.MouseMove = [&splitter](int button, int shift, double x, double y) {
            splitter.MouseMove(button, shift, x, y);
        };
        page->pane.MouseUp = [&splitter](int button, int shift, double x, double y) {
            splitter.MouseUp(button, shift, x, y);
        };
    }
    for (ListView* list : {&lstIEHistory, &lstTypedURL}) {
        list->DblClick = [this, list] { Address_DblClick(*list); };
    }
}

void frmMain::Form_Load() {
    imgToolbar.SetBkColor(ImageList::kNoColor);
    imgList.SetBkColor(ImageList::kNoColor);
    ReadShowPreview();
    SelectFullRows();
    for (std::size_t i = 0; i < kTraceKinds.size(); ++i) {
        filters_[i].SetList(&ListAt(i));
    }
    for (std::size_t i = 0; i < kTraceKinds.size(); ++i) {
        finders_[i].SetList(&ListAt(i));
    }
    SetUpSplitter(recentPage_);
    SetUpSplitter(openSavePage_);
    BuildAccountTree();
    tmrUpdateTime_Timer();
}

void frmMain::Form_Unload() {
    parts_.settings.Save();
}

void frmMain::ReadShowPreview() {
    const bool show = ReadBoolean(parts_.settings.GetINIOption("ShowPreview"));
    mnuShowPreview.SetChecked(show);
    if (show) {
        barTool.Button("SHOWPREVIEW").SetValue(ToolButton::kPressed);
    }
}

void frmMain::SelectFullRows() {
    for (std::size_t i = 0; i < kTraceKinds.size(); ++i) {
        ListView& list = ListAt(i);
        list.SetExtendedStyle(list.ExtendedStyle() | ListView::kFullRowSelect);
    }
}

void frmMain::BuildAccountTree() {
    for (std::int32_t i = 0; i < parts_.accounts.Count(); ++i) {
        const std::string sid = parts_.accounts.AccountSID(i);
        const std::string name = parts_.accounts.AccountName(i);
        if (name.empty()) {
            continue;
        }
        TreeNode& root = treeUsers.Add(nullptr, sid, name, "USER");
        for (const TraceKind& kind : kTraceKinds) {
            treeUsers.Add(&root, sid + kind.suffix, kind.nodeText, kind.image).SetTag(kind.suffix + 1);
        }
    }
}

void frmMain::treeUsers_NodeClick(const TreeNode& node) {
    for (std::size_t i = 0; i < kTraceKinds.size(); ++i) {
        const TraceKind& kind = kTraceKinds[i];
        if (node.Tag() == kind.suffix + 1) {
            TabStrip.Select(static_cast<int>(i) + 1);
            const std::string_view suffix = kind.suffix;
            (this->*kind.fill)(node.Key().substr(0, node.Key().size() - suffix.size()));
            return;
        }
    }
}

void frmMain::TabStrip_Click() {
    for (int i = 1; i <= TabStrip.TabCount(); ++i) {
        fraTab[static_cast<std::size_t>(i - 1)].SetVisible(TabStrip.Selected(i));
    }
    if (const TreeNode* node = treeUsers.SelectedItem()) {
        FillSelectedTab(node->Key().substr(0, node->Key().find(':')));
    }
    UpdateFilter();
}

void frmMain::FillSelectedTab(const std::string& sid) {
    const TraceKind& kind = kTraceKinds[SelectedList()];
    treeUsers.Select(treeUsers.Node(sid + kind.suffix));
    (this->*kind.fill)(sid);
}

std::int32_t frmMain::FindAccount(const std::string& sid) const {
    std::int32_t found = -1;
    for (std::int32_t i = 0; i < parts_.accounts.Count(); ++i) {
        if (parts_.accounts.AccountSID(i) == sid) {
            found = i;
        }
    }
    return found;
}

void frmMain::FillList(std::size_t place, const std::string& sid,
                       const std::function<void(std::int32_t)>& addEntries) {
    ListView& list = ListAt(place);
    if (sid == list.Tag()) {
        return;
    }
    filters_[place].ResetFilter();
    list.SetTag(sid);
    list.Clear();
    const bool sorted = list.Sorted();
    list.SetSorted(false);
    addEntries(FindAccount(sid));
    list.SetSorted(sorted);
    if (sorted) {
        ListSorter(parts_.platform, list, list.Column(list.SortKey() + 1), false);
    }
    if (list.ItemCount() > 0) {
        list.EnsureVisible(list.Item(1));
    }
}

void frmMain::FillPrograms(const std::string& sid) {
    FillList(0, sid, [this](std::int32_t account) {
        const UserAssistList* source = parts_.accounts.UserAssist(account);
        for (std::int32_t j = 0; source != nullptr && j < source->Count(); ++j) {
            if (!source->IsProgram(j)) {
                continue;
            }
            ListItem& item = lstProgram.Add(KeyOf(j), source->UserAssistValue(j));
            item.SetSubItem(1, std::to_string(source->UserAssistRunCount(j)));
            const double lastRun = source->UserAssistLastRun(j);
            item.SetSubItem(2, lastRun <= kDateOfNoTime
                                   ? std::string()
                                   : parts_.platform.DateToText(lastRun, DateForm::General));
        }
    });
}

void frmMain::FillRecentDocuments(const std::string& sid) {
    FillList(1, sid, [this](std::int32_t account) {
        const RecentDocumentList* source = parts_.accounts.RecentDocument(account);
        for (std::int32_t j = 0; source != nullptr && j < source->Count(); ++j) {
            lstRecent.Add(KeyOf(j), source->RecentDocumentPath(j));
        }
    });
}

void frmMain::FillOpenSave(const std::string& sid) {
    FillList(2, sid, [this](std::int32_t account) {
        const OpenSaveList* source = parts_.accounts.OpenSave(account);
        for (std::int32_t j = 0; source != nullptr && j < source->Count(); ++j) {
            lstOpenSave.Add(KeyOf(j), source->Document(j));
        }
    });
}

void frmMain::FillIEHistory(const std::string& sid) {
    FillList(3, sid, [this](std::int32_t account) {
        const IEHistoryList* source = parts_.accounts.IEHistory(account);
        for (std::int32_t j = 0; source != nullptr && j < source->Count(); ++j) {
            std::string url = source->URL(j);
            if (IsPage(url)) {
                lstIEHistory.Add(KeyOf(j), std::move(url))
                    .SetSubItem(1, parts_.platform.DateToText(source->DateAccessed(j), DateForm::General));
            }
        }
    });
}

void frmMain::FillTypedURLs(const std::string& sid) {
    FillList(4, sid, [this](std::int32_t account) {
        const TypedURLList* source = parts_.accounts.TypedURL(account);
        for (std::int32_t j = 0; source != nullptr && j < source->Count(); ++j) {
            lstTypedURL.Add(KeyOf(j), source->URL(j));
        }
    });
}

void frmMain::tmrUpdateTime_Timer() {
    const double now = parts_.platform.Now();
    barStatus.SetPanelText(2, parts_.platform.DateToText(now, DateForm::ShortDate));
    barStatus.SetPanelText(3, parts_.platform.DateToText(now, DateForm::LongTime));
}

void frmMain::mnuManual_Click() {
    ShellOpenOwnFile(parts_.platform, GetAppFolder(parts_.platform) + "Ostrevin Manual.chm");
}

void frmMain::mnuAbout_Click() {
    frmAbout(GetToolkit()).Show(ShowStyle::Modal);
}

void frmMain::CreateReport() {
    frmCreateReport(GetToolkit(), parts_.platform, parts_.accounts).Show(ShowStyle::Modal);
}

void frmMain::barTool_ButtonClick(const ToolButton& button) {
    if (button.Tag() == "REPORT") {
        CreateReport();
    }
    if (button.Tag() == "SHOWPREVIEW") {
        TogglePreview();
    }
    if (button.Tag() == "FILTER") {
        ToggleFilter();
    }
    if (button.Tag() == "FIND") {
        DoFind();
    }
}

std::size_t frmMain::SelectedList() const {
    return static_cast<std::size_t>(TabStrip.SelectedTab() - 1);
}

ListView& frmMain::ListAt(std::size_t place) {
    const std::array<ListView*, 5> lists = {&lstProgram, &lstRecent, &lstOpenSave, &lstIEHistory,
                                            &lstTypedURL};
    return *lists.at(place);
}

void frmMain::DesignToolbar() {
    for (const char* key : {"REPORT", "FILTER", "FIND", "PREVIEW"}) {
        imgToolbar.Add(key, std::string("toolbar-") + UpperCase(key));
    }
    for (const char* key : {"USER", "PROGRAM", "RECENT", "OPENSAVE", "IEHISTORY", "TYPEDURLS"}) {
        imgList.Add(key, std::string("list-") + UpperCase(key));
    }
    struct Button {
        const char* key;
        const char* toolTip;
        const char* image;
        ToolButton::Style style;
    };
    barTool.SetImages(&imgToolbar);
    for (const Button& button : {Button{"SHOWPREVIEW", "Show Preview", "PREVIEW", ToolButton::Style::Check},
                                 Button{"REPORT", "Create Report", "REPORT", ToolButton::Style::Default},
                                 Button{"FILTER", "Filter List", "FILTER", ToolButton::Style::Check},
                                 Button{"FIND", "Find in List", "FIND", ToolButton::Style::Default}}) {
        ToolButton& added = barTool.Add(button.key, button.image, button.style);
        added.SetToolTipText(button.toolTip);
        added.SetTag(button.key);
    }
}

void frmMain::DesignTabs() {
    treeUsers.SetImages(&imgList);
    treeUsers.SetAccessibleName("Accounts");
    TabStrip.SetImages(&imgList);
    TabStrip.SetAccessibleName("Traces");
    for (const TraceKind& kind : kTraceKinds) {
        TabStrip.Add(kind.tabText, kind.image);
    }
    for (std::size_t i = 1; i < fraTab.size(); ++i) {
        fraTab[i].SetVisible(false);
    }
}

void frmMain::DesignLists() {
    lstProgram.SetAccessibleName("Programs");
    lstProgram.AddColumn("Program", 4600);
    ColumnHeader& runCount = lstProgram.AddColumn("Run Count", 1650);
    runCount.SetTag("NUMBER");
    runCount.SetRightAligned(true);
    lstProgram.AddColumn("Last Run", 2700).SetTag("DATE");
    lstProgram.AddColumn("Accessible", 1650);
    lstRecent.SetAccessibleName("Recent Documents");
    lstOpenSave.SetAccessibleName("Opened / Saved Documents");
    for (ListView* list : {&lstRecent, &lstOpenSave}) {
        list->AddColumn("Document", 8950);
        list->AddColumn("Accessible", 1650);
    }
    lstIEHistory.SetAccessibleName("IE History");
    lstIEHistory.AddColumn("URL", 7900);
    lstIEHistory.AddColumn("Last Accessed", 2700).SetTag("DATE");
    lstTypedURL.SetAccessibleName("Typed URLs");
    lstTypedURL.AddColumn("URL", 10600);
    // The previews stand ready beside the document lists, out of sight until there is something to show in
    // them.
    picRecentThumbnail.SetVisible(false);
    picOpenSaveThumbnail.SetVisible(false);
    picRecentThumbnail.SetBordered(true);
    picOpenSaveThumbnail.SetBordered(true);
}

}  // namespace ostrevin
