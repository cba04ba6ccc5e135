#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "startup/ReportCommand.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

constexpr char kCounts[] =
    "S-1-5-21-1\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
    "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count";

using Files = std::map<std::string, std::string>;

/// A machine whose folder C:\\Out outlives it.
class Machine : public MemoryPlatform {
  public:
    explicit Machine(Files& files) : files_(files) { AddFolder(kOut); }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine() override {
        for (const DirectoryEntry& entry : ListDirectory(kOut)) {
            const MemoryFile& file = *Find(std::string(kOut) + "\\" + entry.name);
            files_[entry.name].assign(reinterpret_cast<const char*>(file.bytes.data()), file.bytes.size());
        }
    }
    std::unique_ptr<OutputFile> CreateOutputFile(const std::string& path, Existing existing) override {
        if (path.find("starving") != std::string::npos) {
            throw std::bad_alloc();
        }
        return MemoryPlatform::CreateOutputFile(path, existing);
    }

  private:
    static constexpr char kOut[] = "C:\\Out";
    Files& files_;
};

/// A machine with a service profile and two people.
std::unique_ptr<MemoryPlatform> MakeMachine(Files& files) {
    auto platform = std::make_unique<Machine>(files);
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
        return RunReport(arguments, {[this](const std::string& /*volume*/) { return Prepared(); }, {}},
                         output, errors);
    }
    /// The same on a host with a live machine.
    int RunLive(const std::vector<std::string>& arguments) {
        const auto noVolume = [](const std::string& volume) -> std::unique_ptr<Platform> {
            throw std::runtime_error(volume + ": no Windows folder");
        };
        return RunReport(arguments, {noVolume, [this] { return Prepared(); }}, output, errors);
    }
    std::unique_ptr<MemoryPlatform> Prepared() {
        std::unique_ptr<MemoryPlatform> machine = MakeMachine(files);
        if (prepare) {
            prepare(*machine);
        }
        return machine;
    }
    [[nodiscard]] std::vector<std::string> FileNames() const {
        std::vector<std::string> names;
        for (const auto& [name, bytes] : files) {
            names.push_back(name);
        }
        return names;
    }

    std::function<void(MemoryPlatform&)> prepare;
    Files files;

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

TEST_F(ReportCommandTest, ReportsOnTheLiveMachineWhereThereIsOne) {
    EXPECT_EQ(RunLive({"--format", "jsonl"}), 0);
    EXPECT_EQ(output.str(), std::string(kOfAnna) + kOfBen);
    EXPECT_EQ(errors.str(), "");
    EXPECT_EQ(RunLive({"--format", "jsonl", "--account", "Ben"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: this machine: no account is named Ben\n");
    errors.str("");
    EXPECT_EQ(RunLive({"--format", "jsonl", "here"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: here: no Windows folder\n") << "a volume is one";
    errors.str("");
    EXPECT_EQ(RunLive({"--accounts", "one", "two"}), 2);
    EXPECT_TRUE(
        errors.str().ends_with("Without VOLUME it reports on this machine.\n"
                               "ostrevin-report: there must be at most one volume\n"))
        << errors.str();
    EXPECT_EQ(RunLive({"--accounts", ""}), 2) << "an empty name is none";
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

TEST_F(ReportCommandTest, NamesOfTheEvidenceSteerNoTerminalAndForgeNoLine) {
    constexpr char kSid[] = "S-1-5-21-1\r\nostrevin-report: forged\x1B[2J\u009B2J\u202E";
    prepare = [&](MemoryPlatform& machine) {
        machine.Root(kLocalMachine)
            .Key("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList")
            .Key(kSid);
        // A run count that overflows, which is told.
        std::array<std::byte, 16> data{};
        data[7] = std::byte{0x80};
        machine.Root(kUsers)
            .Key(kSid + std::string(kCounts).substr(std::string_view("S-1-5-21-1").size()))
            .SetData("x", kRegBinary, data);
    };
    EXPECT_EQ(Run({"--format", "jsonl", "volume"}), 0);
    EXPECT_EQ(errors.str(),
              "ostrevin-report: UserAssist of S-1-5-21-1??ostrevin-report: forged?[2J?2J? is not read to its "
              "end: Overflow\n");
    EXPECT_NE(output.str().find(
                  "{\"sid\":\"S-1-5-21-1\\u000d\\u000aostrevin-report: forged\\u001b[2J\\u009b2J\\u202e\""),
              std::string::npos)
        << "data keep every character: " << output.str();
    errors.str("");
    EXPECT_EQ(Run({"--format", "jsonl", "--account", "\x1B[31m\u202Ex", "a\nb"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: a?b: no account is named ?[31m?x\n");
    errors.str("");
    EXPECT_EQ(Run({"--format", "x\ny", "volume"}), 2);
    EXPECT_TRUE(errors.str().ends_with("there is no format x?y\n")) << errors.str();
}

TEST_F(ReportCommandTest, AVolumeThatCannotBeOpenedIsAnErrorOfOneLine) {
    const auto refuse = [](const std::string& volume) -> std::unique_ptr<Platform> {
        throw std::runtime_error(volume + ": no Windows folder");
    };
    EXPECT_EQ(RunReport({"--accounts", "here"}, {refuse, {}}, output, errors), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: here: no Windows folder\n");
}

TEST_F(ReportCommandTest, AnOutputThatCannotBeWrittenIsAnError) {
    output.setstate(std::ios::badbit);
    EXPECT_EQ(Run({"--accounts", "volume"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: standard output: cannot be written\n");
}

// --- HTML and CSV.

using Strings = std::vector<std::string>;

TEST_F(ReportCommandTest, WritesTheReportOnOneAccount) {
    EXPECT_EQ(Run({"--format", "html", "--account", "anna", "--output", "C:\\Out\\a.htm", "volume"}), 0);
    EXPECT_EQ(FileNames(), Strings{"a.htm"});
    const std::string& report = files["a.htm"];
    EXPECT_TRUE(report.starts_with("<HTML>\r\n<HEAD>\r\n<TITLE>Ostrevin Report</TITLE>\r\n"));
    EXPECT_NE(report.find("\r\nanna\r\n</FONT>\r\n<HR/><A HREF=\"#Programs\">"), std::string::npos);
    EXPECT_NE(report.find("<TR><TD>\r\nC:\\x.exe\r\n</TD>\r\n<TD ALIGN=\"RIGHT\">2</TD>\r\n"),
              std::string::npos);
    EXPECT_NE(report.find("\r\nC:\\a \"quoted\".txt\r\n"), std::string::npos);
    EXPECT_NE(report.find("\r\nhttp://????.example/\t\r\n"), std::string::npos) << "in the code page";
    EXPECT_TRUE(report.ends_with("</TABLE>\r\n</BODY>\r\n</HTML>\r\n"));
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(errors.str(), "");
}

TEST_F(ReportCommandTest, WritesTheNamedSectionsAlone) {
    EXPECT_EQ(Run({"--format", "html", "--sections", "typedurls,programs", "--account", "anna", "--output",
                   "C:\\Out\\a.htm", "volume"}),
              0);
    EXPECT_NE(files["a.htm"].find("<HR/><A HREF=\"#Programs\">Programs</A> | "
                                  "<A HREF=\"#TypedURLs\">Typed URLs</A><HR/>\r\n"),
              std::string::npos);
    EXPECT_EQ(files["a.htm"].find("<A NAME=\"Recent\"/>"), std::string::npos);
}

TEST_F(ReportCommandTest, OfTwoAccountsWithOneNameTheLaterIsReported) {
    prepare = [](MemoryPlatform& machine) { machine.accountNames["S-1-5-21-2"] = {"anna"}; };
    EXPECT_EQ(Run({"--format", "html", "--account", "anna", "--output", "C:\\Out\\a.htm", "volume"}), 0);
    EXPECT_EQ(files["a.htm"].find("C:\\x.exe"), std::string::npos);
    EXPECT_NE(files["a.htm"].find("C:\\b.txt"), std::string::npos);
}

TEST_F(ReportCommandTest, WritesAReportOnEveryNamedAccount) {
    EXPECT_EQ(Run({"--format", "html", "--output", "C:\\Out", "volume"}), 0);
    EXPECT_EQ(FileNames(), (Strings{"anna.htm", "ben.htm"})) << "the service's account has no name";
    EXPECT_NE(files["ben.htm"].find("C:\\b.txt"), std::string::npos);
}

TEST_F(ReportCommandTest, AccountsOfOneNameKeepTheirReportsApart) {
    prepare = [](MemoryPlatform& machine) {
        machine.accountNames["S-1-5-18"] = {"a/b\\c:\x01"};
        machine.accountNames["S-1-5-21-1"] = {"A_b?c*_"};
        machine.accountNames["S-1-5-21-2"] = {"..\u0442"};
    };
    EXPECT_EQ(Run({"--format", "html", "--output", "C:\\Out/", "volume"}), 0);
    EXPECT_EQ(FileNames(), (Strings{"A_b_c__ S-1-5-21-1.htm", "_.\u0442.htm", "a_b_c__.htm"}));
    EXPECT_NE(files["A_b_c__ S-1-5-21-1.htm"].find("\r\nA_b?c*_\r\n</FONT>"), std::string::npos);
}

TEST_F(ReportCommandTest, AVeryLongNameIsCut) {
    prepare = [](MemoryPlatform& machine) {
        std::string name;
        for (int i = 0; i < 500; ++i) {
            name += "\u0442";
        }
        machine.accountNames["S-1-5-21-1"] = {name};
        machine.accountNames["S-1-5-21-2"] = {name};
    };
    EXPECT_EQ(Run({"--format", "html", "--output", "C:\\Out", "volume"}), 0);
    EXPECT_EQ(files.size(), 2U);
    for (const auto& [name, bytes] : files) {
        EXPECT_LE(name.size(), 255U);
    }
}

TEST_F(ReportCommandTest, AFileThatIsThereIsKeptAndCostsItsAccountAlone) {
    prepare = [](MemoryPlatform& machine) {
        machine.accountNames["S-1-5-18"] = {"NUL"};
        machine.CreateOutputFile("C:\\Out\\anna.htm")->Write("from before");
    };
    EXPECT_EQ(Run({"--format", "html", "--output", "C:\\Out", "volume"}), 1);
    EXPECT_EQ(FileNames(), (Strings{"_NUL.htm", "anna.htm", "ben.htm"}));
    EXPECT_EQ(files["anna.htm"], "from before");
    EXPECT_NE(files["ben.htm"].find("C:\\b.txt"), std::string::npos)
        << "the later accounts have their reports";
    EXPECT_EQ(errors.str(), "ostrevin-report: File already exists: C:\\Out/anna.htm\n");
}

TEST_F(ReportCommandTest, AReportWithoutMemoryForItCostsItsAccountAlone) {
    prepare = [](MemoryPlatform& machine) { machine.accountNames["S-1-5-21-1"] = {"starving"}; };
    EXPECT_EQ(Run({"--format", "html", "--output", "C:\\Out", "volume"}), 1);
    EXPECT_EQ(FileNames(), (Strings{"ben.htm"}));
    EXPECT_EQ(errors.str(), "ostrevin-report: C:\\Out/starving.htm: There is not enough memory.\n");
}

TEST_F(ReportCommandTest, AFileThatAPersonNamedIsReplaced) {
    prepare = [](MemoryPlatform& machine) {
        machine.CreateOutputFile("C:\\Out\\anna.htm")->Write("from before");
        machine.CreateOutputFile("C:\\Out\\recent.csv")->Write("from before");
    };
    EXPECT_EQ(Run({"--format", "html", "--account", "anna", "--output", "C:\\Out\\anna.htm", "volume"}), 0);
    EXPECT_EQ(files["anna.htm"].find("from before"), std::string::npos);
    EXPECT_EQ(Run({"--format", "csv", "--output", "C:\\Out", "volume"}), 0);
    EXPECT_TRUE(files["recent.csv"].starts_with("sid,")) << "its name is the program's own";
}

TEST_F(ReportCommandTest, WithoutANamedAccountThereIsNothingToReport) {
    prepare = [](MemoryPlatform& machine) { machine.accountNames.clear(); };
    EXPECT_EQ(Run({"--format", "html", "--output", "C:\\Out", "volume"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: volume: no account has a name\n");
}

TEST_F(ReportCommandTest, ALineEndAloneIsPutBetweenQuotesToo) {
    for (const char* name : {"a\rb", "a\nb"}) {
        prepare = [name](MemoryPlatform& machine) { machine.accountNames["S-1-5-21-2"] = {name}; };
        EXPECT_EQ(Run({"--format", "csv", "--output", "C:\\Out", "volume"}), 0);
        EXPECT_EQ(files["opensave.csv"], std::string("sid,account,source,document\r\nS-1-5-21-2,\"") + name +
                                             "\",OpenSave,C:\\b.txt\r\n");
    }
}

TEST_F(ReportCommandTest, WritesAFileForEachSource) {
    prepare = [](MemoryPlatform& machine) {
        machine.accountNames["S-1-5-21-2"] = {"ben, \"the\r\nsecond\""};
    };
    EXPECT_EQ(Run({"--format", "csv", "--output", "C:\\Out", "volume"}), 0);
    EXPECT_EQ(files, (Files{{"programs.csv",
                             "sid,account,source,name,type,value,runCount,lastRun\r\n"
                             "S-1-5-21-1,anna,UserAssist,UEME_RUNPATH:C:\\x.exe,UEME_RUNPATH,"
                             "C:\\x.exe,2,2009-08-04T15:22:18\r\n"},
                            {"recent.csv",
                             "sid,account,source,file,path\r\n"
                             "S-1-5-21-1,anna,RecentDocument,a.lnk,\"C:\\a \"\"quoted\"\".txt\"\r\n"},
                            {"opensave.csv",
                             "sid,account,source,document\r\n"
                             "S-1-5-21-2,\"ben, \"\"the\r\nsecond\"\"\",OpenSave,C:\\b.txt\r\n"},
                            {"iehistory.csv", "sid,account,source,url,dateAccessed\r\n"},
                            {"typedurls.csv",
                             "sid,account,source,url\r\n"
                             "S-1-5-21-1,anna,TypedURL,http://\u0442\u0435\u0441\u0442.example/\t\r\n"}}));
}

TEST_F(ReportCommandTest, WritesTheRowsOfOneAccountAlone) {
    EXPECT_EQ(Run({"--format", "csv", "--account", "ben", "--output", "C:\\Out", "volume"}), 0);
    EXPECT_EQ(files["programs.csv"], "sid,account,source,name,type,value,runCount,lastRun\r\n");
    EXPECT_EQ(files["opensave.csv"], "sid,account,source,document\r\nS-1-5-21-2,ben,OpenSave,C:\\b.txt\r\n");
}

TEST_F(ReportCommandTest, NothingIsWrittenForAnUnknownAccount) {
    for (const char* format : {"html", "csv"}) {
        errors.str("");
        EXPECT_EQ(Run({"--format", format, "--account", "Ben", "--output", "C:\\Out\\new", "volume"}), 1);
        EXPECT_EQ(errors.str(), "ostrevin-report: volume: no account is named Ben\n");
        EXPECT_TRUE(files.empty());
    }
}

TEST_F(ReportCommandTest, AFolderIsMadeWhereItIsMissing) {
    EXPECT_EQ(Run({"--format", "csv", "--output", "C:\\Out\\new", "volume"}), 0);
    EXPECT_EQ(FileNames(), Strings{"new"});
    EXPECT_EQ(Run({"--format", "html", "--output", "C:\\Out\\none\\new", "volume"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: Path/File access error: C:\\Out\\none\\new\n");
}

TEST_F(ReportCommandTest, AFileThatCannotBeWrittenIsAnErrorOfOneLine) {
    prepare = [](MemoryPlatform& machine) { machine.freeBytes = 20; };
    EXPECT_EQ(Run({"--format", "html", "--account", "anna", "--output", "C:\\Out\\a.htm", "volume"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: Path/File access error: C:\\Out\\a.htm\n");
    errors.str("");
    EXPECT_EQ(Run({"--format", "csv", "--output", "C:\\Out", "volume"}), 1);
    EXPECT_EQ(errors.str(), "ostrevin-report: Path/File access error: C:\\Out/programs.csv\n");
}

TEST_F(ReportCommandTest, AWrongSelectionIsTold) {
    const Strings html = {"--format", "html", "--output", "C:\\Out", "volume"};
    const std::vector<std::pair<Strings, std::string>> cases = {
        {{"--sections", ""}, "--sections: there is no section \"\""},
        {{"--sections", "programs,"}, "--sections: there is no section \"\""},
        {{"--sections", "Programs"}, "--sections: there is no section \"Programs\""},
        {{"--sections", "recent,recent"}, "--sections: recent is named twice"},
        {{"--output", "C:\\Out"}, "--output is given twice"},
        {{"--accounts"}, "--accounts does not go with the rest"},
    };
    for (const auto& [more, reason] : cases) {
        errors.str("");
        Strings arguments = html;
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(Run(arguments), 2) << reason;
        EXPECT_TRUE(errors.str().ends_with("\nostrevin-report: " + reason + "\n")) << errors.str();
        EXPECT_TRUE(files.empty());
    }
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
             {"--format", "", "volume"},
             {"--format", "html", "volume"},
             {"--format", "html", "--output", "", "volume"},
             {"--format", "html", "--output", "C:\\Out"},
             {"--format", "csv", "volume"},
             {"--format", "csv", "--output", "C:\\Out", "--sections", "recent", "volume"},
             {"--format", "jsonl", "--output", "C:\\Out", "volume"},
             {"--format", "jsonl", "--format", "jsonl", "volume"},
         }) {
        errors.str("");
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_TRUE(errors.str().starts_with("usage: ostrevin-report"));
        EXPECT_EQ(output.str(), "");
    }
}

}  // namespace
}  // namespace ostrevin
