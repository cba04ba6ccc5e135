// The main window: the accounts as a tree, and a tab with a list for each kind of trace.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "accounts/AccountList.h"
#include "controls/Boxes.h"
#include "controls/Form.h"
#include "controls/ImageList.h"
#include "controls/ListView.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "controls/Timer.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"
#include "ui/ListFilter.h"
#include "ui/ListFinder.h"
#include "widgets/Splitter.h"
#include "widgets/ThumbnailExtractor.h"

namespace ostrevin {

/// What start-up hands to the window; all of it outlives the window.
struct MainWindowParts {
    Platform& platform;
    AppSettings& settings;
    AccountList& accounts;
};

class frmMain : public Form {
  public:
    frmMain(Toolkit& toolkit, MainWindowParts parts);
    ~frmMain() override;

    // The controls, in tab order.
    ImageList imgToolbar;
    ImageList imgList;
    ToolBar barTool{this, "barTool"};
    TreeView treeUsers{this, "treeUsers"};
    ostrevin::TabStrip TabStrip{this, "TabStrip"};
    /// The page of each tab, fraTab[0] being that of tab 1.
    std::array<Frame, 5> fraTab{Frame{this, "fraTab(1)"}, Frame{this, "fraTab(2)"}, Frame{this, "fraTab(3)"},
                                Frame{this, "fraTab(4)"}, Frame{this, "fraTab(5)"}};
    ListView lstProgram{&fraTab[0], "lstProgram"};
    PictureBox picRecent{&fraTab[1], "picRecent"};
    ListView lstRecent{&picRecent, "lstRecent"};
    PictureBox picRecentThumbnail{&picRecent, "picRecentThumbnail"};
    PictureBox picOpenSave{&fraTab[2], "picOpenSave"};
    ListView lstOpenSave{&picOpenSave, "lstOpenSave"};
    PictureBox picOpenSaveThumbnail{&picOpenSave, "picOpenSaveThumbnail"};
    ListView lstIEHistory{&fraTab[3], "lstIEHistory"};
    ListView lstTypedURL{&fraTab[4], "lstTypedURL"};
    StatusBar barStatus{this, "barStatus"};
    Timer tmrUpdateTime{this, "tmrUpdateTime"};

    // The menu items.
    MenuItem& mnuFile;
    MenuItem& mnuExit;
    MenuItem& mnuEdit;
    MenuItem& mnuFind;
    MenuItem& mnuFindNext;
    MenuItem& mnuReporting;
    MenuItem& mnuCreateReport;
    MenuItem& mnuOptions;
    MenuItem& mnuShowPreview;
    MenuItem& mnuHelp;
    MenuItem& mnuManual;
    MenuItem& mnuAbout;

    /// Each fills its list with one account's entries, unless the list shows that account already.
    void FillPrograms(const std::string& sid);
    void FillRecentDocuments(const std::string& sid);
    void FillOpenSave(const std::string& sid);
    void FillIEHistory(const std::string& sid);
    void FillTypedURLs(const std::string& sid);

    // Each acts on the list of the selected tab.

    /// Shows in the tool bar whether the list is filtered.
    void UpdateFilter();
    /// Asks for a text and filters the list by it, or undoes the filter.
    void ToggleFilter();
    /// Asks for a text and selects its first occurrence.
    void DoFind();
    /// Selects the next occurrence of the text that was looked for last in this list.
    void DoFindNext();

    /// Switches the preview of documents on or off, for the next run too.
    void TogglePreview();

  protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload() override;

  private:
    /// The page of a kind of documents: a list and the thumbnail of what is chosen in it, with a bar between.
    struct DocumentPage {
        PictureBox& pane;
        ListView& list;
        PictureBox& thumbnail;
        Splitter& splitter;
    };

    void DesignToolbar();
    void DesignTabs();
    void DesignLists();
    void DesignLayout();
    void BindEvents();

    void ReadShowPreview();
    void SelectFullRows();
    void BuildAccountTree();
    [[nodiscard]] std::int32_t FindAccount(const std::string& sid) const;
    /// The frame of all fill procedures, for the list of a tab (from 0); addEntries adds the items of the
    /// account with an index.
    void FillList(std::size_t place, const std::string& sid,
                  const std::function<void(std::int32_t)>& addEntries);
    void FillSelectedTab(const std::string& sid);
    void SetUpSplitter(const DocumentPage& page);
    void LayOutPages();
    void LayOutDocumentPage(const DocumentPage& page);
    [[nodiscard]] bool ShowsPreview() const;
    [[nodiscard]] std::size_t SelectedList() const;
    [[nodiscard]] ListView& ListAt(std::size_t place);
    void CreateReport();

    void treeUsers_NodeClick(const TreeNode& node);
    void TabStrip_Click();
    void tmrUpdateTime_Timer();
    void barTool_ButtonClick(const ToolButton& button);
    void mnuManual_Click();
    void mnuAbout_Click();
    void lstProgram_ItemClick(ListItem& item);
    /// Of lstRecent and lstOpenSave.
    void Document_ItemClick(const DocumentPage& page, ListItem& item);
    void lstProgram_DblClick();
    /// Of lstRecent and lstOpenSave.
    void Document_DblClick(const ListView& list);
    /// Of lstIEHistory and lstTypedURL.
    void Address_DblClick(const ListView& list);
    void OpenItem(const std::string& item);

    void WriteAccessible(ListItem& item, int subItem);
    /// Does something with the selected item's file, if it is there; a failure is nothing but no action.
    void OnExistingFile(const ListView& list, const std::function<void(const std::string&)>& action);
    [[nodiscard]] PicturePtr ThumbnailFor(const DocumentPage& page);

    MainWindowParts parts_;
    // In the order of the tabs.
    std::array<ListFilter, 5> filters_;
    std::array<ListFinder, 5> finders_;
    Splitter splitterRecent_{GetToolkit()};
    Splitter splitterOpenSave_{GetToolkit()};
    DocumentPage recentPage_{picRecent, lstRecent, picRecentThumbnail, splitterRecent_};
    DocumentPage openSavePage_{picOpenSave, lstOpenSave, picOpenSaveThumbnail, splitterOpenSave_};
    ThumbnailExtractor thumbnails_{parts_.platform};
};

}  // namespace ostrevin
