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

  protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload() override;

  private:
    void DesignToolbar();
    void DesignTabs();
    void DesignLists();
    void DesignLayout();
    void BindEvents();

    void ReadShowPreview();
    void SelectFullRows();
    void BuildAccountTree();
    [[nodiscard]] std::int32_t FindAccount(const std::string& sid) const;
    /// The frame of all fill procedures; addEntries adds the items of the account with an index.
    void FillList(ListView& list, const std::string& sid,
                  const std::function<void(std::int32_t)>& addEntries);
    void FillSelectedTab(const std::string& sid);
    void LayOutPages();

    void treeUsers_NodeClick(const TreeNode& node);
    void TabStrip_Click();
    void tmrUpdateTime_Timer();
    void mnuManual_Click();

    MainWindowParts parts_;
};

}  // namespace ostrevin
