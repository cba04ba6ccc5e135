#include "report/frmCreateReport.h"

#include <algorithm>

#include "platform/Paths.h"

namespace ostrevin {
namespace {

constexpr char kApplicationTitle[] = "Ostrevin";
constexpr char kSaveTitle[] = "Select Location to Save Report";

bool IsTicked(const CheckBox& box) {
    return box.Value() == CheckBox::kChecked;
}

}  // namespace

/// The time in which a report is written: neither can another be begun then, nor the dialog be closed.
class frmCreateReport::Writing {
  public:
    explicit Writing(frmCreateReport& form) : form_(form) { Set(true); }
    ~Writing() {
        Set(false);
        form_.barProgress.SetVisible(false);
    }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

  private:
    void Set(bool writing) {
        form_.writing_ = writing;
        form_.cmdGenerate.SetEnabled(!writing);
        form_.cmdClose.SetEnabled(!writing);
    }

    frmCreateReport& form_;
};

frmCreateReport::frmCreateReport(Toolkit& toolkit, Platform& platform, AccountList& accounts)
    : Form(toolkit, "frmCreateReport"), platform_(platform), accounts_(accounts) {
    SetBorderStyle(BorderStyle::FixedDialog);
    SetCaption("Report Creator");
    DesignControls();
    DesignLayout();
    BindEvents();
}

frmCreateReport::~frmCreateReport() {
    DropView();
}

void frmCreateReport::DesignControls() {
    Label2.SetCaption("User");
    cboUserList.SetAccessibleName(Label2.Caption());
    fraInclude.SetCaption("Include In Report");
    chkPrograms.SetCaption("Programs");
    chkRecentDocuments.SetCaption("Recent Documents");
    chkOpenSave.SetCaption("Opened / Saved Documents");
    chkIEHistory.SetCaption("IE History");
    chkTypedURLs.SetCaption("Typed URLs");
    Label1.SetCaption("Output File Name");
    txtFileName.SetAccessibleName(Label1.Caption());
    cmdBrowse.SetCaption("...");
    cmdBrowse.SetAccessibleName(kSaveTitle);
    chkOpenAfterFinish.SetCaption("Open Report After Creation");
    for (CheckBox* box : {&chkPrograms, &chkRecentDocuments, &chkOpenSave, &chkIEHistory, &chkTypedURLs,
                          &chkOpenAfterFinish}) {
        box->SetValue(CheckBox::kChecked);
    }
    barProgress.SetVisible(false);
    cmdGenerate.SetCaption("Generate");
    cmdGenerate.SetEnabled(false);
    cmdGenerate.SetDefault();
    cmdClose.SetCaption("Close");
    cmdClose.SetCancel();
}

void frmCreateReport::DesignLayout() {
    constexpr double kLeft = 180;
    constexpr double kWidth = 6600;
    constexpr double kLine = 345;  // of a label or a check box
    constexpr double kBox = 420;
    Move(0, 0, kLeft + kWidth + kLeft, 6150);
    Label2.Move(kLeft, 150, kWidth, kLine);
    cboUserList.Move(kLeft, 510, kWidth, kBox);

    constexpr double kInset = 210;
    fraInclude.Move(kLeft, 1110, kWidth, 2415);
    double top = 420;
    for (CheckBox* box : {&chkPrograms, &chkRecentDocuments, &chkOpenSave, &chkIEHistory, &chkTypedURLs}) {
        box->Move(kInset, top, kWidth - 2 * kInset, kLine);
        top += 375;
    }

    constexpr double kBrowse = 600;
    constexpr double kGap = 120;
    Label1.Move(kLeft, 3690, kWidth, kLine);
    txtFileName.Move(kLeft, 4050, kWidth - kBrowse - kGap, kBox);
    cmdBrowse.Move(kLeft + kWidth - kBrowse, 4050, kBrowse, kBox);
    chkOpenAfterFinish.Move(kLeft, 4590, kWidth, kLine);

    constexpr double kButton = 1650;
    barProgress.Move(kLeft, 5085, kWidth, 270);
    cmdGenerate.Move(kLeft + kWidth - 2 * kButton - kGap, 5505, kButton, 465);
    cmdClose.Move(kLeft + kWidth - kButton, 5505, kButton, 465);
}

void frmCreateReport::BindEvents() {
    txtFileName.Change = [this] { txtFileName_Change(); };
    cmdBrowse.Click = [this] { cmdBrowse_Click(); };
    cmdGenerate.Click = [this] { cmdGenerate_Click(); };
    cmdClose.Click = [this] { Unload(); };
}

void frmCreateReport::Form_Load() {
    for (std::int32_t i = 0; i < accounts_.Count(); ++i) {
        const std::string name = accounts_.AccountName(i);
        if (!name.empty()) {
            cboUserList.AddItem(name);
        }
    }
}

void frmCreateReport::txtFileName_Change() {
    // The button stays enabled when the box is emptied again: pressing it tells what is missing.
    if (!txtFileName.Text().empty() && !writing_) {
        cmdGenerate.SetEnabled(true);
    }
}

void frmCreateReport::cmdBrowse_Click() {
    dlgCommon.SetFileName("");
    dlgCommon.SetFilter("HTML Files (*.htm)|*.htm");
    dlgCommon.SetDialogTitle(kSaveTitle);
    dlgCommon.ShowSave();
    if (!dlgCommon.FileName().empty()) {
        txtFileName.SetText(dlgCommon.FileName());
    }
}

void frmCreateReport::cmdGenerate_Click() {
    if (cboUserList.ListIndex() < 0 || txtFileName.Text().empty()) {
        MsgBox("You must select a User and a file name to save the report to", kApplicationTitle);
        return;
    }
    // Of two accounts with one name it is the later, and the first account when the name is gone.
    CreateReport(std::max(accounts_.GetAccountIndex(cboUserList.Text()), 0), txtFileName.Text());
    if (IsTicked(chkOpenAfterFinish) && platform_.OwnFileExists(txtFileName.Text())) {
        ShellOpenOwnFile(platform_, txtFileName.Text());
    }
}

void frmCreateReport::CreateReport(std::int32_t accountIndex, const std::string& path) {
    const Writing writing(*this);
    HtmlReport(platform_, accounts_, *this).Create(accountIndex, path);
}

bool frmCreateReport::Includes(ReportSection section) {
    switch (section) {
        case ReportSection::Programs:
            return IsTicked(chkPrograms);
        case ReportSection::RecentDocuments:
            return IsTicked(chkRecentDocuments);
        case ReportSection::OpenSave:
            return IsTicked(chkOpenSave);
        case ReportSection::IEHistory:
            return IsTicked(chkIEHistory);
        case ReportSection::TypedURLs:
            return IsTicked(chkTypedURLs);
    }
    return false;
}

void frmCreateReport::Opened() {
    barProgress.SetValue(0);
    barProgress.SetMin(0);
    barProgress.SetMax(100);
    barProgress.SetVisible(true);
}

void frmCreateReport::Progress(float percent, bool handleMessages) {
    barProgress.SetValue(percent);
    if (handleMessages) {
        GetToolkit().DoEvents();
    }
}

}  // namespace ostrevin
