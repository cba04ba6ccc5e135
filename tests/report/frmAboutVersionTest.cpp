// The about box, built with the version 2.10.3.
#include <gtest/gtest.h>

#include "report/frmAbout.h"
#include "tests/support/TestToolkit.h"

namespace ostrevin {
namespace {

TEST(AboutBoxVersion, IsMajorMinorAndRevision) {
    testing::TestToolkit toolkit;
    frmAbout form(toolkit);
    form.Load();
    EXPECT_EQ(form.lblVersion.Caption(), "Version : 2.10.3");
}

}  // namespace
}  // namespace ostrevin
