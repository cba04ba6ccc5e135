// The person at the screen of a Windows host.
#include <windows.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <shlobj.h>

#include "platform/Dates.h"
#include "platform/FilePath.h"
#include "platform/volume/Examiner.h"
#include "platform/volume/VolumeFiles.h"
#include "tests/volume/TemporaryFolder.h"

namespace ostrevin {
namespace {

const double kAugust = DateFromCivil({2009, 8, 4, 15, 22, 18, 0});

/// A setting of the person's for dates or times that has another value while the object lives.
class LocaleSetting {
  public:
    LocaleSetting(LCTYPE type, const wchar_t* value) : type_(type) {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, type, before_, 80);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, type, value);
    }
    ~LocaleSetting() { SetLocaleInfoW(LOCALE_USER_DEFAULT, type_, before_); }
    LocaleSetting(const LocaleSetting&) = delete;
    LocaleSetting& operator=(const LocaleSetting&) = delete;

  private:
    LCTYPE type_;
    wchar_t before_[80] = {};
};

std::string Written(const wchar_t* date, const wchar_t* time) {
    const LocaleSetting dates(LOCALE_SSHORTDATE, date);
    const LocaleSetting times(LOCALE_STIMEFORMAT, time);
    const Examiner examiner;
    const std::string text = examiner.Dates().Write(kAugust, DateForm::General);
    EXPECT_EQ(examiner.Dates().Read(text), kAugust) << text;
    return text;
}

TEST(Examiner, WritesDatesInTheSettingsOfThePerson) {
    EXPECT_EQ(Written(L"M/d/yyyy", L"h:mm:ss tt"), "8/4/2009 3:22:18 PM");
    EXPECT_EQ(Written(L"M/d/yy", L"h:mm:ss tt"), "8/4/2009 3:22:18 PM") << "years of four digits always";
    EXPECT_EQ(Written(L"dd.MM.yyyy", L"HH:mm:ss"), "04.08.2009 15:22:18");
    EXPECT_EQ(Written(L"yyyy-MM-dd", L"H.mm.ss"), "2009-08-04 15.22.18");
    EXPECT_EQ(Written(L"dd-MMM-yy", L"HH:mm:ss"), "04-8-2009 15:22:18") << "months as numbers";
    EXPECT_EQ(Written(L"ddd d/M/yyyy", L"HH:mm:ss"), "4/8/2009 15:22:18");
    EXPECT_EQ(Written(L"d 'de' M 'de' yyyy", L"HH:mm:ss"), "4 de 8 de 2009 15:22:18");
    EXPECT_EQ(Written(L"yyyy'%Y'", L"tt"), "2009-08-04 15:22:18") << "what could not be read back";
}

TEST(Examiner, KnowsTheLocalTime) {
    const Examiner examiner;
    SYSTEMTIME utc{};
    GetSystemTime(&utc);
    const double now =
        DateFromCivil({utc.wYear, utc.wMonth, utc.wDay, utc.wHour, utc.wMinute, utc.wSecond, 0});
    EXPECT_NEAR(examiner.Now(), now - examiner.UtcBias() / 1440.0, 5.0 / 86400);
}

TEST(Examiner, KeepsItsFilesBesideTheProgramButNothingInTheEvidence) {
    const TemporaryFolder evidence;
    const TemporaryFolder program;
    program.MakeFolder("bin");
    const Examiner examiner(program / "bin/");
    EXPECT_EQ(examiner.ApplicationFolder(VolumeFiles(evidence.Utf8Path())), program / "bin/");
    const std::string elsewhere = examiner.ApplicationFolder(VolumeFiles(program.Utf8Path()));
    EXPECT_TRUE(elsewhere.ends_with("\\Ostrevin\\")) << elsewhere;
    EXPECT_TRUE(std::filesystem::is_directory(FilePath(elsewhere)));
    EXPECT_TRUE(VolumeFiles(program.Utf8Path()).IsOutside(elsewhere));
    EXPECT_TRUE(std::filesystem::is_directory(FilePath(Examiner().ProgramFolder())));
}

TEST(Examiner, MakesNoFolderInTheEvidence) {
    // A volume that holds the program as well as the user's settings.
    wchar_t settings[MAX_PATH] = {};
    ASSERT_NE(SHGetSpecialFolderPathW(nullptr, settings, CSIDL_APPDATA, FALSE), FALSE);
    const std::u8string settingsName = std::filesystem::path(settings).parent_path().u8string();
    const VolumeFiles holdingSettings(std::string(settingsName.begin(), settingsName.end()));
    const std::u8string own = (std::filesystem::path(settings) / "bin\\").u8string();
    EXPECT_EQ(Examiner(std::string(own.begin(), own.end())).ApplicationFolder(holdingSettings), "");
}

TEST(Examiner, ResolvesPathsOfTheHost) {
    const TemporaryFolder folder;
    folder.Write("Папка/a.txt", "a");
    const Examiner examiner;
    EXPECT_EQ(examiner.ResolvedPath(folder / "Папка/../Папка/a.txt"), folder / "Папка/a.txt");
    EXPECT_EQ(examiner.ResolvedPath(folder / "none"), "");
    EXPECT_EQ(examiner.ResolvedPath(""), "");
    EXPECT_TRUE(Examiner::HasHelpViewer());
}

TEST(Examiner, TellsThatNothingOpensWhatIsNotThere) {
    const TemporaryFolder folder;
    EXPECT_FALSE(Examiner().Open(folder / "none.txt"));
}

}  // namespace
}  // namespace ostrevin
