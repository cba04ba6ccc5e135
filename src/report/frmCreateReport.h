// The dialog that writes the report on an account.
#pragma once

#include <cstdint>
#include <string>

#include "accounts/AccountList.h"
#include "controls/Boxes.h"
#include "controls/CommonDialog.h"
#include "controls/Form.h"
#include "controls/Inputs.h"
#include "platform/Platform.h"
#include "report/HtmlReport.h"

namespace ostrevin {

class frmCreateReport : public Form, private ReportClient {
  public:
    frmCreateReport(Toolkit& toolkit, Platform& platform, AccountList& accounts);
    ~frmCreateReport() override;

    // The controls, in tab order.
    Label Label2{this, "Label2"};
    ComboBox cboUserList{this, "cboUserList"};
    Frame fraInclude{this, "fraInclude"};
    CheckBox chkPrograms{&fraInclude, "chkPrograms"};
    CheckBox chkRecentDocuments{&fraInclude, "chkRecentDocuments"};
    CheckBox chkOpenSave{&fraInclude, "chkOpenSave"};
    CheckBox chkIEHistory{&fraInclude, "chkIEHistory"};
    CheckBox chkTypedURLs{&fraInclude, "chkTypedURLs"};
    Label Label1{this, "Label1"};
    TextBox txtFileName{this, "txtFileName"};
    CommandButton cmdBrowse{this, "cmdBrowse"};
    CheckBox chkOpenAfterFinish{this, "chkOpenAfterFinish"};
    ProgressBar barProgress{this, "barProgress"};
    CommandButton cmdGenerate{this, "cmdGenerate"};
    CommandButton cmdClose{this, "cmdClose"};
    CommonDialog dlgCommon{*this};

  protected:
    void Form_Load() override;
    /// Not while a report is written.
    bool Form_QueryUnload() override { return !writing_; }

  private:
    class Writing;

    void DesignControls();
    void DesignLayout();
    void BindEvents();

    void txtFileName_Change();
    void cmdBrowse_Click();
    void cmdGenerate_Click();
    /// Lets the writer's failure through.
    void CreateReport(std::int32_t accountIndex, const std::string& path);

    bool Includes(ReportSection section) override;
    void Opened() override;
    void Progress(float percent, bool handleMessages) override;

    Platform& platform_;
    AccountList& accounts_;
    bool writing_ = false;
};

}  // namespace ostrevin
