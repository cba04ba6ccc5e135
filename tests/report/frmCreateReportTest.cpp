#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/RuntimeError.h"
#include "report/frmCreateReport.h"
#include "tests/report/ReportMachine.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

constexpr char kOut[] = "C:\\Out\\report.htm";
constexpr char kNothingChosen[] = "You must select a User and a file name to save the report to";

class CreateReportTest : public ::testing::Test {
  protected:
    CreateReportTest() {
        machine.AddPerson("S-1-1", "");
        machine.AddPerson("S-1-2", "zoe");
        machine.AddPerson("S-1-3", "anna");
        machine.AddPerson("S-1-4", "zoe");
        machine.AddUserAssist("S-1-2", "UEME_RUNPATH:C:\\first.exe", 1, kSomeDay);
        machine.AddUserAssist("S-1-4", "UEME_RUNPATH:C:\\second.exe", 1, kSomeDay);
        machine.AddUserAssist("S-1-4", "UEME_RUNPATH:C:\\third.exe", 1, kSomeDay);
        machine.AddTypedURLs("S-1-4", {"http://typed.example/"});
        machine.Load();
        form.Load();
    }

    void Choose(int user, const std::string& file) {
        form.cboUserList.SetListIndex(user);
        form.txtFileName.Type(file);
    }
    std::vector<CheckBox*> Sections() {
        return {&form.chkPrograms, &form.chkRecentDocuments, &form.chkOpenSave, &form.chkIEHistory,
                &form.chkTypedURLs};
    }
    [[nodiscard]] bool ReportHas(const std::string& text) {
        return machine.Read(kOut).find(text) != std::string::npos;
    }

    ReportMachine machine;
    testing::TestToolkit toolkit;
    frmCreateReport form{toolkit, machine.platform, machine.accounts};
};

TEST_F(CreateReportTest, BeginsWithEverySectionAndNoChoice) {
    EXPECT_EQ(form.Caption(), "Report Creator");
    EXPECT_EQ(form.BorderStyle(), BorderStyle::FixedDialog);
    EXPECT_EQ(form.Label2.Caption(), "User");
    EXPECT_EQ(form.cboUserList.Items(), (Strings{"zoe", "anna", "zoe"}));
    EXPECT_EQ(form.cboUserList.ListIndex(), -1);
    EXPECT_EQ(form.fraInclude.Caption(), "Include In Report");
    Strings captions;
    for (CheckBox* box : Sections()) {
        captions.push_back(box->Caption());
        EXPECT_EQ(box->Value(), 1) << box->Caption();
        EXPECT_EQ(box->Parent(), &form.fraInclude) << box->Caption();
    }
    EXPECT_EQ(captions, (Strings{"Programs", "Recent Documents", "Opened / Saved Documents", "IE History",
                                 "Typed URLs"}));
    EXPECT_EQ(form.Label1.Caption(), "Output File Name");
    EXPECT_EQ(form.txtFileName.Text(), "");
    EXPECT_EQ(form.cmdBrowse.Caption(), "...");
    EXPECT_EQ(form.chkOpenAfterFinish.Caption(), "Open Report After Creation");
    EXPECT_EQ(form.chkOpenAfterFinish.Value(), 1);
    EXPECT_EQ(form.cmdGenerate.Caption(), "Generate");
    EXPECT_FALSE(form.cmdGenerate.Enabled());
    EXPECT_EQ(form.cmdClose.Caption(), "Close");
    EXPECT_TRUE(form.cmdClose.Enabled());
    EXPECT_FALSE(form.barProgress.Visible());
    EXPECT_EQ(form.DefaultButton(), &form.cmdGenerate);
    EXPECT_EQ(form.CancelButton(), &form.cmdClose);
    EXPECT_EQ(form.cboUserList.AccessibleName(), "User");
    EXPECT_EQ(form.txtFileName.AccessibleName(), "Output File Name");
}

TEST_F(CreateReportTest, ControlsFollowTheEyeAndLieApart) {
    for (Container* container : {static_cast<Container*>(&form), static_cast<Container*>(&form.fraInclude)}) {
        const Control* before = nullptr;
        for (const Control* control : container->Controls()) {
            EXPECT_LE(control->Left() + control->Width(), container->Width()) << control->Name();
            EXPECT_LE(control->Top() + control->Height(), container->Height()) << control->Name();
            if (before != nullptr) {
                EXPECT_TRUE(before->Top() + before->Height() <= control->Top() ||
                            before->Left() + before->Width() <= control->Left())
                    << before->Name() << ", " << control->Name();
            }
            before = control;
        }
    }
}

TEST_F(CreateReportTest, AnEmptiedFileNameLeavesGenerateEnabled) {
    form.cboUserList.SetListIndex(0);
    form.txtFileName.Type("x");
    EXPECT_TRUE(form.cmdGenerate.Enabled());
    form.txtFileName.Type("");
    EXPECT_TRUE(form.cmdGenerate.Enabled());
    form.cmdGenerate.Press();
    ASSERT_EQ(toolkit.boxes.size(), 1U);
    EXPECT_EQ(toolkit.boxes[0].text, kNothingChosen);
    EXPECT_EQ(toolkit.boxes[0].caption, "Ostrevin");
}

TEST_F(CreateReportTest, WithoutAUserNoFileIsTouched) {
    form.txtFileName.Type(kOut);
    form.cmdGenerate.Press();
    ASSERT_EQ(toolkit.boxes.size(), 1U);
    EXPECT_EQ(toolkit.boxes[0].text, kNothingChosen);
    EXPECT_EQ(machine.Read(kOut), "none");
    EXPECT_TRUE(machine.platform.executed.empty());
}

TEST_F(CreateReportTest, BrowseAsksWhereToSave) {
    toolkit.savePath = "C:\\Out\\typed without an end";
    form.txtFileName.Type("before");
    form.cmdBrowse.Press();
    EXPECT_EQ(toolkit.log.back(), "save Select Location to Save Report|HTML Files (*.htm)|*.htm|");
    EXPECT_EQ(form.txtFileName.Text(), "C:\\Out\\typed without an end");
    form.cmdBrowse.Press();
    EXPECT_EQ(toolkit.log.back(), "save Select Location to Save Report|HTML Files (*.htm)|*.htm|")
        << "the last choice is forgotten";
    toolkit.savePath = "";
    form.cmdBrowse.Press();
    EXPECT_EQ(form.txtFileName.Text(), "C:\\Out\\typed without an end") << "cancelled";
}

TEST_F(CreateReportTest, AChosenFileEnablesGenerate) {
    toolkit.savePath = kOut;
    form.cmdBrowse.Press();
    EXPECT_TRUE(form.cmdGenerate.Enabled());
}

TEST_F(CreateReportTest, OfTwoAccountsWithOneNameTheLaterIsReported) {
    Choose(0, kOut);
    form.cmdGenerate.Press();
    EXPECT_TRUE(ReportHas("\r\nzoe\r\n</FONT>"));
    EXPECT_TRUE(ReportHas("C:\\second.exe"));
    EXPECT_FALSE(ReportHas("C:\\first.exe"));
    EXPECT_TRUE(form.Loaded()) << "further reports can be made";
}

TEST_F(CreateReportTest, TheFirstAccountIsReportedWhenTheNameIsGone) {
    Choose(1, kOut);
    machine.platform.accountNames["S-1-3"] = {"renamed"};
    machine.platform.accountNames["S-1-1"] = {"somebody"};
    machine.accounts.LoadAccountNamesFromSID();
    form.cmdGenerate.Press();
    EXPECT_TRUE(ReportHas("\r\nsomebody\r\n</FONT>"));
}

TEST_F(CreateReportTest, OnlyTickedSectionsAreWritten) {
    for (CheckBox* box : Sections()) {
        box->SetValue(CheckBox::kGrayed);
    }
    form.chkTypedURLs.SetValue(CheckBox::kChecked);
    Choose(0, kOut);
    form.cmdGenerate.Press();
    EXPECT_TRUE(ReportHas("<HR/><A HREF=\"#TypedURLs\">Typed URLs</A><HR/>"));
    EXPECT_TRUE(ReportHas("http://typed.example/"));
    EXPECT_FALSE(ReportHas("C:\\second.exe"));
    const Strings links = {"#Programs", "#Recent", "#OpenSave", "#IEHistory", "#TypedURLs"};
    for (std::size_t i = 0; i < links.size(); ++i) {
        for (CheckBox* box : Sections()) {
            box->SetValue(box == Sections()[i] ? CheckBox::kChecked : CheckBox::kUnchecked);
        }
        form.cmdGenerate.Press();
        EXPECT_TRUE(ReportHas("<HR/><A HREF=\"" + links[i] + "\">"));
    }
}

TEST_F(CreateReportTest, TheReportIsOpenedWhenThatIsTicked) {
    Choose(0, kOut);
    form.cmdGenerate.Press();
    ASSERT_EQ(machine.platform.executed.size(), 1U);
    EXPECT_EQ(machine.platform.executed[0].verb, "open");
    EXPECT_EQ(machine.platform.executed[0].file, kOut);
    EXPECT_EQ(machine.platform.executed[0].folder, "C:\\Out\\");
    EXPECT_EQ(machine.platform.executed[0].showCommand, 1);
    for (const int value : {CheckBox::kUnchecked, CheckBox::kGrayed}) {
        form.chkOpenAfterFinish.SetValue(value);
        form.cmdGenerate.Press();
        EXPECT_EQ(machine.platform.executed.size(), 1U);
    }
}

TEST_F(CreateReportTest, AFileThatIsNotThereIsNotOpened) {
    Choose(0, kOut);
    toolkit.onEvents = [this] { form.txtFileName.Type("C:\\Out\\elsewhere.htm"); };
    form.cmdGenerate.Press();
    EXPECT_TRUE(machine.platform.executed.empty());
}

TEST_F(CreateReportTest, WhileItWritesItShowsHowFarItIsAndCannotBeClosed) {
    std::vector<float> values;
    toolkit.onEvents = [&] {
        values.push_back(form.barProgress.Value());
        EXPECT_TRUE(form.barProgress.Visible());
        EXPECT_EQ(form.barProgress.Min(), 0);
        EXPECT_EQ(form.barProgress.Max(), 100);
        EXPECT_FALSE(form.cmdGenerate.Enabled());
        EXPECT_FALSE(form.cmdClose.Enabled());
        form.Close();
        form.Escape();
        EXPECT_TRUE(form.Loaded());
        form.txtFileName.Type("C:\\Out\\other.htm");
        EXPECT_FALSE(form.cmdGenerate.Enabled()) << "no second report within the first";
    };
    Choose(0, kOut);
    form.cmdGenerate.Press();
    EXPECT_EQ(values, (std::vector<float>{10, 20})) << "the last section lets no messages through";
    EXPECT_EQ(form.barProgress.Value(), 100);
    EXPECT_FALSE(form.barProgress.Visible());
    EXPECT_TRUE(form.cmdGenerate.Enabled());
    EXPECT_TRUE(form.cmdClose.Enabled());
    form.Close();
    EXPECT_FALSE(form.Loaded());
}

TEST_F(CreateReportTest, EachReportBeginsAtNothing) {
    Choose(0, kOut);
    form.cmdGenerate.Press();
    ASSERT_EQ(form.barProgress.Value(), 100);
    for (CheckBox* box : Sections()) {
        box->SetValue(CheckBox::kUnchecked);
    }
    form.barProgress.SetMax(150);
    form.cmdGenerate.Press();
    EXPECT_EQ(form.barProgress.Value(), 0) << "and without a section stays there";
    EXPECT_EQ(form.barProgress.Max(), 100);
}

TEST_F(CreateReportTest, AFailureIsLetThroughAndLeavesTheDialogWhole) {
    Choose(0, "C:\\none\\report.htm");
    EXPECT_THROW(form.cmdGenerate.Press(), RuntimeError);
    EXPECT_FALSE(form.barProgress.Visible());
    machine.platform.freeBytes = 100;
    form.txtFileName.Type(kOut);
    EXPECT_THROW(form.cmdGenerate.Press(), RuntimeError);
    EXPECT_EQ(machine.Read(kOut).size(), 100U);
    EXPECT_FALSE(form.barProgress.Visible());
    EXPECT_TRUE(machine.platform.executed.empty());
    form.cmdClose.Press();
    EXPECT_FALSE(form.Loaded());
}

}  // namespace
}  // namespace ostrevin
