#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <locale.h>
#include <thread>

#include "platform/Dates.h"
#include "platform/volume/CharsetDecoder.h"
#include "platform/volume/Examiner.h"
#include "platform/volume/VolumeOpener.h"
#include "tests/volume/TestVolume.h"
#include "tests/volume/WritingFiles.h"
#include "tests/volume/linux/EnvironmentVariable.h"

namespace ostrevin {
namespace {

const double kAugust = DateFromCivil({2009, 8, 4, 15, 22, 18, 0});

TEST(Examiner, WritesDatesInTheLocaleForTimes) {
    for (const char* plain : {"C", "POSIX", "C.UTF-8", "C.utf8", "xx_NONE"}) {
        const EnvironmentVariable locale("LC_ALL", plain);
        EXPECT_EQ(Examiner().Dates().Write(kAugust, DateForm::General), "8/4/2009 3:22:18 PM") << plain;
    }
    const EnvironmentVariable all("LC_ALL", "");
    const EnvironmentVariable time("LC_TIME", "C");
    const EnvironmentVariable language("LANG", "de_DE.UTF-8");
    EXPECT_EQ(Examiner().Dates().Write(kAugust, DateForm::ShortDate), "8/4/2009");
}

TEST(Examiner, FollowsEveryInstalledLocale) {
    const struct {
        const char* name;
        const char* written;
    } locales[] = {
        {"de_DE.UTF-8", "04.08.2009 15:22:18"},         {"de_DE.ISO-8859-1", "04.08.2009 15:22:18"},
        {"en_US.UTF-8", "08/04/2009 03:22:18 PM"},      {"en_GB.UTF-8", "04/08/2009 15:22:18"},
        {"ja_JP.UTF-8", "2009年08月04日 15時22分18秒"}, {"ja_JP.EUC-JP", "2009年08月04日 15時22分18秒"},
        {"zh_TW.UTF-8", "2009年08月04日 15時22分18秒"}};
    for (const auto& expected : locales) {
        const locale_t installed = newlocale(LC_TIME_MASK, expected.name, nullptr);
        if (installed == nullptr) {
            continue;
        }
        freelocale(installed);
        const EnvironmentVariable locale("LC_ALL", expected.name);
        const Examiner examiner;
        EXPECT_EQ(examiner.Dates().Write(kAugust, DateForm::General), expected.written) << expected.name;
        EXPECT_EQ(examiner.Dates().Read(expected.written), kAugust) << expected.name;
    }
}

TEST(Examiner, KnowsTheLocalTime) {
    const EnvironmentVariable zone("TZ", "XXX3:30");
    EXPECT_EQ(Examiner().UtcBias(), 210);
    const EnvironmentVariable east("TZ", "XXX-2");
    EXPECT_EQ(Examiner().UtcBias(), -120);
    const double utc = 25569.0 + static_cast<double>(std::time(nullptr)) / 86400;
    EXPECT_NEAR(Examiner().Now(), utc + 2.0 / 24, 2.0 / 86400);
}

TEST(Examiner, LendsItsPresentBiasToAMachineWithoutOne) {
    constexpr std::uint64_t kJuly2009 = 128'908'800'000'000'000;
    constexpr std::uint64_t kFiveAndAHalfHours = 198'000'000'000;
    TestVolume volume;
    volume.Control().Key("TimeZoneInformation").values.clear();
    const EnvironmentVariable zone("TZ", "XXX-5:30");
    const auto local = volume.Make()->FileTimeToLocalFileTime(
        {static_cast<std::uint32_t>(kJuly2009), static_cast<std::uint32_t>(kJuly2009 >> 32U)});
    ASSERT_TRUE(local);
    EXPECT_EQ((std::uint64_t{local->high} << 32U) | local->low, kJuly2009 + kFiveAndAHalfHours);
}

TEST(Examiner, TakesCharacterSetsByTheHostsNamesOfThem) {
    EXPECT_EQ(CharsetDecoder("ISO-8859-5").Decode("\xB6"), "Ж");
    EXPECT_EQ(CharsetDecoder("UTF-8").Decode("Жé€\U0001F600\xFF"), "Жé€\U0001F600\uFFFD");
}

TEST(Examiner, KeepsItsFilesBesideTheProgram) {
    const TemporaryFolder evidence;
    const std::string folder = Examiner().ApplicationFolder(VolumeFiles(evidence.Path()));
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(folder, program.parent_path().string() + "/");
}

TEST(Examiner, KeepsItsFilesAmongTheUsersSettingsWhereItCannotWrite) {
    const TemporaryFolder evidence;
    const TemporaryFolder home;
    const TemporaryFolder program;
    const VolumeFiles files(evidence.Path());
    const Examiner examiner(program / "");
    EXPECT_EQ(examiner.ApplicationFolder(files), program / "");
    std::filesystem::permissions(home.Path(), std::filesystem::perms::all);
    std::filesystem::permissions(program.Path(), std::filesystem::perms::owner_read |
                                                     std::filesystem::perms::owner_exec |
                                                     std::filesystem::perms::others_exec);
    const OrdinaryUser user;
    const EnvironmentVariable homeFolder("HOME", home.Path().string());
    const EnvironmentVariable relative("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(examiner.ApplicationFolder(files), home / ".config/ostrevin/");
    EXPECT_TRUE(std::filesystem::is_directory(home / ".config/ostrevin"));
    const EnvironmentVariable settings("XDG_CONFIG_HOME", home / "settings");
    EXPECT_EQ(examiner.ApplicationFolder(files), home / "settings/ostrevin/");
    EXPECT_TRUE(std::filesystem::is_directory(home / "settings/ostrevin"));
}

TEST(Examiner, KeepsNothingInTheEvidence) {
    const TemporaryFolder home;
    const EnvironmentVariable settings("XDG_CONFIG_HOME", home.Path().string());
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(Examiner().ApplicationFolder(VolumeFiles(program.parent_path())), home / "ostrevin/");
}

TEST(Examiner, MakesNoFolderInTheEvidence) {
    const TemporaryFolder evidence;
    const TemporaryFolder outside;
    evidence.MakeFolder("bin");
    evidence.MakeFolder("home");
    outside.MakeLink("home", evidence / "home");
    outside.MakeLink("dangling", evidence / "new");
    outside.MakeFolder("real");
    outside.MakeLink("real/.config", evidence / "home");
    const VolumeFiles files(evidence.Path());
    const Examiner examiner(evidence / "bin/");
    for (const std::string& home :
         {evidence / "home", outside / "home", outside / "real", evidence / "none/deep"}) {
        const EnvironmentVariable unset("XDG_CONFIG_HOME", "");
        const EnvironmentVariable homeFolder("HOME", home);
        EXPECT_EQ(examiner.ApplicationFolder(files), "") << home;
        const EnvironmentVariable settings("XDG_CONFIG_HOME", home);
        EXPECT_EQ(examiner.ApplicationFolder(files), home == outside / "real" ? home + "/ostrevin/" : "")
            << home;
    }
    const std::filesystem::recursive_directory_iterator entries(evidence.Path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
    // A folder outside, in which a file of ours would lead inside.
    TestVolume volume;
    const auto platform = volume.Make();
    const TemporaryFolder own;
    volume.folder.Write("old.ini", "old");
    own.MakeLink("link.ini", volume.folder / "old.ini");
    own.MakeLink("new.ini", volume.folder / "new.ini");
    std::filesystem::create_hard_link(volume.folder / "old.ini", own / "same.ini");
    own.Write("mine.ini", "mine");
    EXPECT_TRUE(platform->MayKeep(own / "mine.ini"));
    EXPECT_TRUE(platform->MayKeep(own / "none.ini"));
    for (const std::string& path : {own / "link.ini", own / "new.ini", own / "same.ini",
                                    volume.folder / "a.ini", own / "none/a.ini", std::string()}) {
        EXPECT_FALSE(platform->MayKeep(path)) << path;
    }
}

/// A desktop whose opener notes what it is given.
class OpenerTest : public testing::Test {
  protected:
    OpenerTest() {
        desktop_.Write("bin/xdg-open", "#!/bin/sh\nprintf '%s' \"$*\" > \"" + (desktop_ / "new") +
                                           "\"\nmv \"" + (desktop_ / "new") + "\" \"" +
                                           (desktop_ / "opened") + "\"\n");
        std::filesystem::permissions(desktop_ / "bin/xdg-open", std::filesystem::perms::owner_all);
        platform_ = volume_.Make();
    }

    int Open(const std::string& item, const std::string& verb = "open") {
        return platform_->ShellExecuteA(verb, item, "", 1);
    }

    int OpenOwn(const std::string& file) { return platform_->OpenOwnFile(file, "", 1); }

    /// What the opener was given; empty when it is not called within some seconds.
    std::string Opened() {
        for (int i = 0; i < 500 && !std::filesystem::exists(desktop_ / "opened"); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        std::string text = BytesOfFile(desktop_ / "opened");
        std::filesystem::remove(desktop_ / "opened");
        return text;
    }

    TestVolume volume_;
    TemporaryFolder desktop_;
    EnvironmentVariable path_{"PATH", (desktop_ / "bin") + ":/usr/bin:/bin"};
    std::unique_ptr<VolumePlatform> platform_;
};

TEST_F(OpenerTest, DocumentsAreOpenedWhereTheyLie) {
    volume_.folder.Write("Docs/My $(touch x) 'photo'.JPG", "\xFF\xD8\xFF\xE0");
    EXPECT_GT(Open("C:\\docs\\my $(touch x) 'photo'.jpg"), 32);
    EXPECT_EQ(Opened(), volume_.folder / "Docs/My $(touch x) 'photo'.JPG");
    volume_.folder.Write("Docs/a b.txt", "text");
    EXPECT_GT(Open("file:///C:/Docs/A%20B.TXT"), 32);
    EXPECT_EQ(Opened(), volume_.folder / "Docs/a b.txt");
    volume_.folder.Write("Docs/é.txt", "text");
    EXPECT_GT(Open("file:///C:/Docs/%E9.txt", ""), 32) << "in the machine's code page";
    EXPECT_EQ(Opened(), volume_.folder / "Docs/é.txt");
}

TEST_F(OpenerTest, AddressesAreOpenedAsTheyAre) {
    EXPECT_GT(Open("http://example.com/a b"), 32);
    EXPECT_EQ(Opened(), "http://example.com/a%20b");
    EXPECT_GT(Open("mailto:a@example.com?attach=/etc/passwd"), 32);
    EXPECT_EQ(Opened(), "mailto:a@example.com");
}

TEST_F(OpenerTest, WhatCouldExecuteIsRefused) {
    volume_.folder.Write("a.exe", "MZ");
    volume_.folder.Write("disguised.txt", "MZ\x90");
    volume_.folder.Write("script.txt", "#!/bin/sh\n");
    volume_.folder.Write("starter.txt", "\n[Desktop Entry]\nExec=true\n");
    volume_.folder.Write("elf.doc",
                         "\x7F"
                         "ELF");
    volume_.folder.Write("page.htm", "<html>");
    volume_.folder.Write("document.txt", "text");
    volume_.folder.MakeLink("link.txt", "a.exe");
    volume_.folder.MakeFolder("folder.txt");
    volume_.folder.MakeFifo("fifo.txt");
    for (const char* item : {"C:\\a.exe", "C:\\disguised.txt", "C:\\script.txt", "C:\\starter.txt",
                             "C:\\elf.doc", "C:\\page.htm", "C:\\link.txt", "C:\\folder.txt", "C:\\fifo.txt",
                             "C:\\", "about:blank", "javascript:x", "file:///C:/a.exe"}) {
        EXPECT_EQ(Open(item), 5) << item;
    }
    EXPECT_EQ(Open("C:\\document.txt", "runas"), 5);
    // An archive that a desktop would start, for it goes by the content.
    volume_.folder.Write("report.doc",
                         std::string_view("PK\3\4\x14\0\0\0\0\0\0\0\0\0 META-INF/MANIFEST.MF", 34));
    EXPECT_EQ(Open("C:\\report.doc"), 5);
    EXPECT_EQ(platform_->OpeningRefusal(),
              "This file is not opened: whatever its name says, it is an archive or has one in it, which can "
              "hold a program.");
    EXPECT_EQ(Open("C:\\page.htm"), 5);
    EXPECT_TRUE(platform_->OpeningRefusal().starts_with("This file is not opened. Opened are text, "));
    EXPECT_EQ(Open("telnet://example.com"), 5);
    EXPECT_TRUE(platform_->OpeningRefusal().starts_with("This address is not opened. "));
    EXPECT_EQ(Open("C:\\none.txt"), 2);
    EXPECT_EQ(platform_->OpeningRefusal(), "") << "what is not there is not refused";
    EXPECT_GT(Open("C:\\document.txt"), 32);
    EXPECT_EQ(Opened(), volume_.folder / "document.txt") << "and nothing before it";
}

TEST_F(OpenerTest, WhatIsNotThereIsNotFound) {
    for (const std::string& item :
         {std::string("C:\\none.txt"), std::string("D:\\a.txt"), std::string(),
          std::string("\\\\server\\a.txt"), std::string("/etc/passwd"), std::string("www.example.com"),
          std::string("file://server/share/a.txt"), platform_->ApplicationFolder() + "none.chm"}) {
        EXPECT_EQ(Open(item), 2) << item;
    }
}

TEST_F(OpenerTest, WithoutAnOpenerNothingOpens) {
    volume_.folder.Write("a.txt", "text");
    const EnvironmentVariable nowhere("PATH", desktop_ / "none");
    EXPECT_EQ(Open("C:\\a.txt"), 31);
}

TEST_F(OpenerTest, TheEvidenceNamesNoFileOfTheExaminers) {
    const std::string beside = platform_->ApplicationFolder() + "Opener Test.txt";
    std::ofstream(beside) << "text";
    const TemporaryFolder own;
    const std::string report = own / "report.txt";
    WriteOutput(*platform_, report, "text");
    const std::string manual = platform_->ApplicationFolder() + "Ostrevin Manual.chm";
    for (const std::string& item : {beside, "file://" + beside, report, "file://" + report, manual,
                                    platform_->ApplicationFolder() + "../../../../../../../../etc/passwd"}) {
        EXPECT_FALSE(platform_->PathFileExistsA(item)) << item;
        EXPECT_EQ(Open(item), 2) << item;
    }
    std::filesystem::remove(beside);
    volume_.folder.Write("last.txt", "text");
    EXPECT_GT(Open("C:\\last.txt"), 32);
    EXPECT_EQ(Opened(), volume_.folder / "last.txt") << "and nothing before it";
}

TEST_F(OpenerTest, APathOfTheVolumeIsTheVolumesThoughAReportHasTheSame) {
    const TemporaryFolder own;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(own.Path());
    WriteOutput(*platform_, "\\report.txt", "ours");
    EXPECT_FALSE(platform_->PathFileExistsA("\\report.txt"));
    volume_.folder.Write("report.txt", "theirs");
    EXPECT_GT(Open("\\report.txt"), 32);
    EXPECT_EQ(Opened(), volume_.folder / "report.txt");
    EXPECT_GT(OpenOwn("\\report.txt"), 32);
    EXPECT_EQ(Opened(), own / "\\report.txt");
    std::filesystem::current_path(before);
}

TEST_F(OpenerTest, WhatTheProgramWroteIsOpened) {
    const TemporaryFolder own;
    own.Write("other.htm", "<HTML>");
    own.MakeFolder("a");
    for (const std::string& path : {own / "report.htm", own / "a/../script.htm"}) {
        const std::unique_ptr<OutputFile> file = platform_->CreateOutputFile(path);
        file->Write(path.ends_with("report.htm") ? "<HTML>" : "#!/bin/sh\n");
        file->Close();
    }
    EXPECT_EQ(OpenOwn(own / "a/../script.htm"), 5);
    EXPECT_EQ(OpenOwn(own / "other.htm"), 2);
    EXPECT_GT(OpenOwn(own / "report.htm"), 32);
    EXPECT_EQ(Opened(), own / "report.htm");
    std::filesystem::remove(own / "report.htm");
    EXPECT_EQ(OpenOwn(own / "report.htm"), 2);
}

/// A program's folder with the manual in both forms, and a desktop that knows viewers for some types.
class ManualTest : public OpenerTest {
  protected:
    ManualTest() {
        program_.Write("Ostrevin Manual.chm", "ITSF");
        program_.Write("manual/index.html", "<html></html>");
        MakeViewerOf("text/html");
    }

    void MakeViewerOf(const std::string& type) {
        desktop_.Write("bin/xdg-mime",
                       "#!/bin/sh\n[ \"$*\" = 'query default " + type + "' ] && echo viewer.desktop\n");
        std::filesystem::permissions(desktop_ / "bin/xdg-mime", std::filesystem::perms::owner_all);
    }

    int OpenManual() {
        const VolumeFiles evidence(volume_.folder.Path());
        const OutputFiles outputs(evidence);
        Examiner examiner(program_ / "");
        return VolumeOpener(evidence, outputs, examiner)
            .OpenOwn(settings_ / "Ostrevin Manual.chm", settings_ / "");
    }

    TemporaryFolder program_;
    TemporaryFolder settings_;  // the application folder where the program's is not writable
};

TEST_F(ManualTest, AViewerOfHelpFilesGetsTheHelpFile) {
    for (const char* type : {"application/vnd.ms-htmlhelp", "application/x-chm"}) {
        MakeViewerOf(type);
        EXPECT_GT(OpenManual(), 32) << type;
        EXPECT_EQ(Opened(), program_ / "Ostrevin Manual.chm") << type;
    }
}

TEST_F(ManualTest, WithoutSuchAViewerThePagesAreOpened) {
    EXPECT_GT(OpenManual(), 32);
    EXPECT_EQ(Opened(), program_ / "manual/index.html");
    std::filesystem::remove(program_ / "Ostrevin Manual.chm");
    MakeViewerOf("application/vnd.ms-htmlhelp");
    EXPECT_GT(OpenManual(), 32);
    EXPECT_EQ(Opened(), program_ / "manual/index.html") << "there is no help file to view";
}

TEST_F(ManualTest, ADesktopThatCannotTellShowsThePages) {
    std::filesystem::remove(desktop_ / "bin/xdg-mime");
    const EnvironmentVariable onlyTheOpener("PATH", desktop_ / "bin");
    std::filesystem::create_symlink("/bin/mv", desktop_ / "bin/mv");
    EXPECT_GT(OpenManual(), 32);
    EXPECT_EQ(Opened(), program_ / "manual/index.html");
}

TEST_F(ManualTest, WhatIsMissingIsTold) {
    std::filesystem::remove_all(program_ / "manual");
    EXPECT_EQ(OpenManual(), 31) << "nothing shows the help file";
    std::filesystem::remove(program_ / "Ostrevin Manual.chm");
    EXPECT_EQ(OpenManual(), 2);
    program_.Write("manual/index.html", "<html></html>");
    const EnvironmentVariable nowhere("PATH", desktop_ / "none");
    EXPECT_EQ(OpenManual(), 31);
}

}  // namespace
}  // namespace ostrevin
