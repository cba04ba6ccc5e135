#include <gtest/gtest.h>

#include "platform/ErrorLog.h"
#include "platform/RuntimeError.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/ScratchFolder.h"

namespace ostrevin {
namespace {

class ErrorLogTest : public testing::Test {
  protected:
    ErrorLogTest() { platform.applicationFolder = folder.Path(); }
    ScratchFolder folder;
    MemoryPlatform platform;
};

TEST_F(ErrorLogTest, StandsInTheApplicationFolderUnlessToldOtherwise) {
    platform.applicationFolder = "C:\\Program Files\\Ostrevin";
    ErrorLog log(platform);
    EXPECT_EQ(log.FileName(), "C:\\Program Files\\Ostrevin\\error.log");
    log.SetFileName("C:\\other.log");
    EXPECT_EQ(log.FileName(), "C:\\other.log");
}

TEST_F(ErrorLogTest, TouchesNoFileUntilALineIsWritten) {
    const ErrorLog log(platform);
    EXPECT_FALSE(folder.Has("error.log"));
}

TEST_F(ErrorLogTest, IsNotWrittenWhereNothingMayBeKept) {
    platform.applicationFolder = "";
    ErrorLog log(platform);
    EXPECT_EQ(log.FileName(), "");
    EXPECT_NO_THROW(log.WriteLog("abc"));
    platform.applicationFolder = folder.Path();
    platform.mayKeep = false;
    EXPECT_EQ(ErrorLog(platform).FileName(), "");
}

TEST_F(ErrorLogTest, AppendsLines) {
    ErrorLog log(platform);
    EXPECT_FALSE(log.AddDate());
    log.WriteLog("abc");
    EXPECT_EQ(folder.Read("error.log"), "abc\r\n");
    log.WriteLog("");
    ErrorLog(platform).WriteLog("d\u00E9f");
    EXPECT_EQ(folder.Read("error.log"), "abc\r\n\r\nd\u00E9f\r\n");
}

TEST_F(ErrorLogTest, PutsTheDateInFront) {
    platform.now = 40029.5;
    ErrorLog log(platform);
    log.SetAddDate(true);
    log.WriteLog("abc");
    EXPECT_EQ(folder.Read("error.log"), "8/4/2009 12:00:00 PM, abc\r\n");
}

TEST_F(ErrorLogTest, IsNotHeldOpen) {
    ErrorLog log(platform);
    log.WriteLog("one");
    folder.Write("error.log", "");
    log.WriteLog("two");
    EXPECT_EQ(folder.Read("error.log"), "two\r\n");
}

TEST_F(ErrorLogTest, TellsWhenItCannotBeWritten) {
    folder.MakeFolder("error.log");
    ErrorLog log(platform);
    try {
        log.WriteLog("abc");
        FAIL() << "a folder took a line";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), RuntimeError::kPathFileAccess);
    }
    log.SetFileName(folder.Path("none/error.log"));
    EXPECT_THROW(log.WriteLog("abc"), RuntimeError);
}

}  // namespace
}  // namespace ostrevin
