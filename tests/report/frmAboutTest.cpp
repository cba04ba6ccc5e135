#include <gtest/gtest.h>

#include "report/frmAbout.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

TEST(AboutBox, NamesTheProgramAndItsVersion) {
    testing::TestToolkit toolkit;
    frmAbout form(toolkit);
    EXPECT_EQ(form.Caption(), "About Ostrevin");
    EXPECT_EQ(form.BorderStyle(), BorderStyle::FixedDialog);
    EXPECT_EQ(form.Frame1.Caption(), "Ostrevin");
    EXPECT_EQ(form.Frame1.FontName(), "Arial");
    EXPECT_EQ(form.picLogo.PictureName(), "logo");
    EXPECT_EQ(form.lblVersion.Caption(), "Version") << "until it is loaded";
    EXPECT_FALSE(form.Label1.Caption().empty());
    EXPECT_EQ(form.cmdOK.Caption(), "OK");
    EXPECT_EQ(form.cmdOK.FontName(), "Arial");
    form.Load();
    EXPECT_EQ(form.lblVersion.Caption(), "Version : " OSTREVIN_VERSION);
}

TEST(AboutBox, OkClosesItAsDoEnterAndEscape) {
    testing::TestToolkit toolkit;
    frmAbout form(toolkit);
    EXPECT_EQ(form.DefaultButton(), &form.cmdOK);
    EXPECT_EQ(form.CancelButton(), &form.cmdOK);
    toolkit.onModal = [&](Form&) { form.cmdOK.Press(); };
    form.Show(ShowStyle::Modal);
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(toolkit.log, (std::vector<std::string>{"load frmAbout", "modal frmAbout", "unload frmAbout"}));
}

}  // namespace
}  // namespace ostrevin
