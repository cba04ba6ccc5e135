#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "settings/AppSettings.h"
#include "tests/support/ScratchFolder.h"

namespace ostrevin {
namespace {

constexpr char kName[] = "ostrevin.ini";

class AppSettingsTest : public testing::Test {
  protected:
    /// One run of the program, with what it does to the option in between.
    template <typename Run>
    void RunProgram(Run run) {
        IniFile ini;
        ini.SetINIFileName(folder.Path(kName));
        ini.LoadINI();
        AppSettings settings;
        settings.SetINI(&ini);
        run(settings);
    }

    ScratchFolder folder;
};

TEST_F(AppSettingsTest, HoldsNoFileAtFirst) {
    AppSettings settings;
    EXPECT_EQ(settings.INI(), nullptr);
    EXPECT_EQ(settings.GetINIOption("ShowPreview"), "");
    settings.SetINIOption("ShowPreview", "True");
    EXPECT_EQ(settings.GetINIOption("ShowPreview"), "");
}

TEST_F(AppSettingsTest, WithoutAFileTheOptionIsEmptyAndAnEmptyFileComesToBe) {
    RunProgram([](AppSettings& settings) { EXPECT_EQ(settings.GetINIOption("ShowPreview"), ""); });
    EXPECT_EQ(folder.Read(kName), "");
}

TEST_F(AppSettingsTest, WritesWhatTheUserChose) {
    RunProgram([](AppSettings& settings) { settings.SetINIOption("ShowPreview", "True"); });
    EXPECT_EQ(folder.Read(kName), "ShowPreview=True\r\n");
    RunProgram([](AppSettings& settings) {
        EXPECT_EQ(settings.GetINIOption("ShowPreview"), "True");
        settings.SetINIOption("ShowPreview", "False");
        EXPECT_EQ(settings.GetINIOption("ShowPreview"), "False");
    });
    EXPECT_EQ(folder.Read(kName), "ShowPreview=False\r\n");
}

TEST_F(AppSettingsTest, AnOptionThatIsSetGoesBehindTheOthers) {
    folder.Write(kName, "ShowPreview=True\nother=1\n");
    RunProgram([](AppSettings& settings) { settings.SetINIOption("ShowPreview", "False"); });
    EXPECT_EQ(folder.Read(kName), "other=1\r\nShowPreview=False\r\n");
}

TEST_F(AppSettingsTest, AnOptionUnderASectionHidesTheOneThatIsSet) {
    folder.Write(kName, "[View]\nShowPreview=True\n");
    for (int run = 0; run < 2; ++run) {
        RunProgram([](AppSettings& settings) {
            EXPECT_EQ(settings.GetINIOption("ShowPreview"), "True");
            settings.SetINIOption("ShowPreview", "False");
            EXPECT_EQ(settings.GetINIOption("ShowPreview"), "True");
        });
        EXPECT_EQ(folder.Read(kName), "\r\n[View]\r\nShowPreview=True\r\n\r\n[]\r\nShowPreview=False\r\n");
    }
}

TEST_F(AppSettingsTest, WhatIsSavedIsNotSavedAgain) {
    RunProgram([this](AppSettings& settings) {
        settings.SetINIOption("ShowPreview", "True");
        settings.Save();
        EXPECT_EQ(folder.Read(kName), "ShowPreview=True\r\n");
        folder.Write(kName, "by another");
        settings.Save();
        EXPECT_EQ(folder.Read(kName), "by another");
    });
    EXPECT_EQ(folder.Read(kName), "by another");
}

TEST_F(AppSettingsTest, WhatIsSetLaterIsSavedToo) {
    RunProgram([](AppSettings& settings) {
        settings.Save();
        settings.SetINIOption("ShowPreview", "True");
    });
    EXPECT_EQ(folder.Read(kName), "ShowPreview=True\r\n");
}

TEST_F(AppSettingsTest, TellsOfAFileThatCannotBeWrittenOnce) {
    folder.MakeFolder(kName);
    RunProgram([](AppSettings& settings) {
        EXPECT_THROW(settings.Save(), RuntimeError);
        EXPECT_NO_THROW(settings.Save());
    });
}

TEST_F(AppSettingsTest, SaysNothingAboutAFileThatCannotBeWritten) {
    folder.MakeFolder(kName);
    RunProgram([](AppSettings& settings) { settings.SetINIOption("ShowPreview", "True"); });
    EXPECT_EQ(folder.Count(), 1U);
}

}  // namespace
}  // namespace ostrevin
