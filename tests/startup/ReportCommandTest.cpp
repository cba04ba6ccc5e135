#include <array>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "startup/ReportCommand.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

constexpr char kCounts[] =
    "S-1-5-21-1\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
    "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count";

/// A machine with a service profile and two people.
std::unique_ptr<MemoryPlatform> Machine() {
    auto platform = std::make_unique<MemoryPlatform>();
    MemoryKey& profiles =
        platform->Root(kLocalMachine).Key("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList");
    profiles.Key("S-1-5-18").SetText("ProfileImagePath", "%systemroot%\\x", kRegExpandSz);
    profiles.Key("S-1-5-21-1").SetText("ProfileImagePath", "%SystemDrive%\\D\\anna", kRegExpandSz);
    profiles.Key("S-1-5-21-2").SetText("ProfileImagePath", "C:\\D\\ben");
    platform->accountNames["S-1-5-21-1"] = {"anna"};
    platform->accountNames["S-1-5-21-2"] = {"ben"};
    platform->shellProcessOwners = {{0, "anna"}};
    platform->specialFolders[8] = "C:\\D\\anna\\Recent";
    MemoryShortcut shortcut;
    shortcut.target = "C:\\a \"quoted\".txt";
    platform->AddShortcut("C:\\D\\anna\\Recent\\a.lnk", shortcut);
    // 2009-08-04 15:22:18 UTC, 2 runs.
    constexpr std::uint64_t kTime = 128938729380000000ULL;
    std::array<std::byte, 16> data{};
    data[4] = std::byte{7};
    for (std::size_t i = 0; i < 8; ++i) {
        data[8 + i] = static_cast<std::byte>(kTime >> (8 * i));
    }
    platform->Root(kUsers).Key(kCounts).SetData("HRZR_EHACNGU:P:\\k.rkr", kRegBinary, data);
    platform->Root(kUsers)
        .Key("S-1-5-21-1\\Software\\Microsoft\\Internet Explorer\\TypedURLs")
        .SetText("url1", "http://\u0442\u0435\u0441\u0442.example/\t");
    platform->Root(kUsers)
        .Key("S-1-5-21-2\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\txt")
        .SetText("MRUList", "a")
        .SetText("a", "C:\\b.txt");
    return platform;
}

class ReportCommandTest : public ::testing::Test {
  protected:
    int Run(const std::vector<std::string>& arguments) {
        return RunReport(
            arguments, [](const std::string& /*volume*/) { return Machine(); }, output, errors);
    }

    std::ostringstream output;
    std::ostringstream errors;
};

TEST_F(ReportCommandTest, WritesTheAccounts) {
    EXPECT_EQ(Run({"--accounts", "volume"}), 0);
    EXPECT_EQ(output.str(),
              "{\"index\":0,\"sid\":\"S-1-5-18\",\"name\":\"\",\"profile\":\"%systemroot%\\\\x\"}\n"
              "{\"index\":1,\"sid\":\"S-1-5-21-1\",\"name\":\"anna\",\"profile\":\"C:\\\\D\\\\anna\"}\n"
              "{\"index\":2,\"sid\":\"S-1-5-21-2\",\"name\":\"ben\",\"profile\":\"C:\\\\D\\\\ben\"}\n");
    EXPECT_EQ(errors.str(), "");
}

constexpr char kOfAnna[] =
    "{\"sid\":\"S-1-5-21-1\",\"account\":\"anna\",\"source\":\"UserAssist\",\"name\":\"UEME_RUNPATH:C:\\\\x."
    "exe\","
    "\"type\":\"UEME_RUNPATH\",\"value\":\"C:\\\\x.exe\",\"runCount\":2,\"lastRun\":\"2009-08-04T15:22:18\"}"
    "\n"
    "{\"sid\":\"S-1-5-21-1\",\"account\":\"anna\",\"source\":\"RecentDocument\",\"file\":\"a.lnk\","
    "\"path\":\"C:\\\\a \\\"quoted\\\".txt\"}\n"
    "{\"sid\":\"S-1-5-21-1\",\"account\":\"anna\",\"source\":\"TypedURL\","
    "\"url\":\"http://\u0442\u0435\u0441\u0442.example/\\u0009\"}\n";
constexpr char kOfBen[] =
    "{\"sid\":\"S-1-5-21-2\",\"account\":\"ben\",\"source\":\"OpenSave\",\"document\":\"C:\\\\b.txt\"}\n";

TEST_F(ReportCommandTest, WritesEveryEntryInTheOrderOfTheTabs) {
    EXPECT_EQ(Run({"--format", "jsonl", "volume"}), 0);
    EXPECT_EQ(output.str(), std::string(kOfAnna) + kOfBen);
}

TEST_F(ReportCommandTest, WritesOneAccountAlone) {
    EXPECT_EQ(Run({"--format", "jsonl", "--account", "ben", "volume"}), 0);
    EXPECT_EQ(output.str(), kOfBen);
}

TEST_F(ReportCommandTest, AnUnknownAccountIsAnError) {
    EXPECT_EQ(Run({"--format", "jsonl", "--account", "Ben", "volume"}), 1);
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(errors.str(), "ostrevin-report: volume: no account is named Ben\n");
}

TEST_F(ReportCommandTest, AVolumeThatCannotBeOpenedIsAnErrorOfOneLine) {
    const auto refuse = [](const std::string& volume) -> std::unique_ptr<Platform> {
        throw std::runtime_error(volume + ": no Windows folder");
    };
    EXPECT_EQ(RunReport({"--accounts", "here"}, refuse, output, errors), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: here: no Windows folder\n");
}

TEST_F(ReportCommandTest, AnOutputThatCannotBeWrittenIsAnError) {
    output.setstate(std::ios::badbit);
    EXPECT_EQ(Run({"--accounts", "volume"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: standard output: cannot be written\n");
}

TEST_F(ReportCommandTest, WrongUsageIsTold) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {},
             {"volume"},
             {"--accounts"},
             {"--format", "volume"},
             {"--format", "xml", "volume"},
             {"--format", "jsonl"},
             {"--accounts", "--format", "jsonl", "volume"},
             {"--accounts", "--account", "ben", "volume"},
             {"--accounts", "volume", "another"},
             {"--format", "jsonl", "volume", "--account"},
             {"--what", "volume"},
         }) {
        errors.str("");
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_TRUE(errors.str().starts_with("usage: ostrevin-report"));
        EXPECT_EQ(output.str(), "");
    }
}

}  // namespace
}  // namespace ostrevin
