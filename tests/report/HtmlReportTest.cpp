#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "platform/RuntimeError.h"
#include "report/HtmlReport.h"
#include "tests/report/ReportMachine.h"

namespace ostrevin {
namespace {

constexpr char kAnna[] = "S-1-5-21-1";
constexpr char kOut[] = "C:\\Out\\report.htm";

const std::set<ReportSection> kAll = {ReportSection::Programs, ReportSection::RecentDocuments,
                                      ReportSection::OpenSave, ReportSection::IEHistory,
                                      ReportSection::TypedURLs};

class TestClient : public ReportClient {
  public:
    bool Includes(ReportSection section) override { return wanted.contains(section); }
    void Opened() override { log.emplace_back("opened"); }
    void Progress(float percent, bool handleMessages) override {
        percents.push_back(percent);
        log.emplace_back(handleMessages ? "entry, messages" : "entry");
        if (onProgress) {
            onProgress();
        }
    }

    std::set<ReportSection> wanted = kAll;
    std::vector<std::string> log;
    std::vector<float> percents;
    std::function<void()> onProgress;
};

/// Anna's machine; each source has what is awkward.
class HtmlReportTest : public testing::Test {
  protected:
    HtmlReportTest() {
        machine.AddPerson(kAnna, "anna & \"<co>\"");
        machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\A\\b.Exe", 3, kSomeDay);
        machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\gone \"&\" <caf\u00E9>.exe", -7, 0);
        machine.AddUserAssist(kAnna, "UEME_RUNPATH:C:\\notes.txt", 1, kSomeDay);
        machine.AddUserAssist(kAnna, "UEME_RUNCPL:C:\\panel.exe", 1, kSomeDay);
        machine.platform.AddFile("C:\\A\\b.Exe");
        machine.AddRecentDocument("anna & \"<co>\"", "C:\\Docs\\a&b.txt");
        machine.AddRecentDocument("anna & \"<co>\"", "C:\\Docs\\\u0442.txt");
        machine.platform.AddFile("C:\\Docs\\a&b.txt");
        machine.AddOpenSave(kAnna, {"D:\\gone.doc", "C:\\Docs\\a&b.txt"});
        machine.AddIEHistory("anna & \"<co>\"", {{"Visited: anna@http://example.com/?a=1&b=\"2\"", kSomeDay},
                                                 {"Visited: anna@http://other.example/", 0}});
        machine.AddTypedURLs(kAnna, {"http://z.example/?a&b", "C:\\<Docs>"});
        machine.Load();
    }

    void Create(std::int32_t index = 0) {
        HtmlReport(machine.platform, machine.accounts, client).Create(index, kOut);
    }

    ReportMachine machine;
    TestClient client;
};

// The file, line by line. Every line ends in CR LF.

constexpr char kBeginning[] =
    "<HTML>\r\n"
    "<HEAD>\r\n"
    "<TITLE>Ostrevin Report</TITLE>\r\n"
    "<STYLE>\r\n"
    "FONT.title          { font-size : 18pt; color : #010DFF ; font-weight : bold ; }\r\n"
    "FONT.heading        { font-size : 14pt; font-weight : bold ; }\r\n"
    "TABLE.blueborder    { border-style : solid ; border-width : 2px ; border-color : #87CEFA ; }\r\n"
    "TD.header           { font-weight : bold ; background-color : #DFEFFF ; }\r\n"
    "TD.data             { background-color : #F0F8FF ; }\r\n"
    "</STYLE>\r\n"
    "<BODY>\r\n"
    "\r\n"
    "<CENTER><FONT CLASS=\"title\">Ostrevin Report<BR>\r\n"
    "\r\n"
    "8/4/2009<BR>\r\n"
    "anna & \"<co>\"\r\n"
    "</FONT>\r\n";
constexpr char kEnd[] =
    "</BODY>\r\n"
    "</HTML>\r\n";

constexpr char kEverything[] =
    "<HR/><A HREF=\"#Programs\">Programs</A> | <A HREF=\"#Recent\">Recent Documents</A> | "
    "<A HREF=\"#OpenSave\">Opened / Saved Documents</A> | <A HREF=\"#IEHistory\">IE History</A> | "
    "<A HREF=\"#TypedURLs\">Typed URLs</A><HR/>\r\n"
    "</CENTER>\r\n"
    "<P>\r\n"
    "<A NAME=\"Programs\"/><FONT CLASS=\"heading\">Programs</FONT><TABLE CLASS=\"blueborder\"><TR>"
    "    <TD CLASS=\"header\">       Program    </TD>    <TD CLASS=\"header\">        Run Count    </TD>"
    "    <TD CLASS=\"header\">        Last Accessed    </TD>"
    "    <TD CLASS=\"header\">        Accessible    </TD></TR>\r\n"
    "<TR><TD>\r\n"
    "<A HREF=\"file://C:\\A\\b.Exe\">\r\n"
    "C:\\A\\b.Exe\r\n"
    "</A>\r\n"
    "</TD>\r\n"
    "<TD ALIGN=\"RIGHT\">3</TD>\r\n"
    "<TD>8/4/2009 3:22:18 PM</TD>\r\n"
    "<TD>Yes</TD\r\n"
    "</TR>\r\n"
    "<TR><TD>\r\n"
    "C:\\gone \"&\" <caf\xE9>.exe\r\n"
    "</TD>\r\n"
    "<TD ALIGN=\"RIGHT\">-7</TD>\r\n"
    "<TD>1/1/1601</TD>\r\n"
    "<TD>No</TD\r\n"
    "</TR>\r\n"
    "</TABLE>\r\n"
    "<P>\r\n"
    "<A NAME=\"Recent\"/><FONT CLASS=\"heading\">Recent Documents</FONT><TABLE CLASS=\"blueborder\"><TR>"
    "    <TD CLASS=\"header\">        Document    </TD>"
    "    <TD CLASS=\"header\">        Accessible    </TD></TR>\r\n"
    "<TR><TD>\r\n"
    "<A HREF=\"file://C:\\Docs\\a&b.txt\">\r\n"
    "C:\\Docs\\a&b.txt\r\n"
    "</A>\r\n"
    "</TD>\r\n"
    "<TD>Yes</TD>\r\n"
    "</TR>\r\n"
    "<TR><TD>\r\n"
    "C:\\Docs\\?.txt\r\n"
    "</TD>\r\n"
    "<TD>No</TD>\r\n"
    "</TR>\r\n"
    "</TABLE>\r\n"
    "<P>\r\n"
    "<A NAME=\"OpenSave\"/><FONT CLASS=\"heading\">Opened / Saved Documents</FONT>"
    "<TABLE CLASS=\"blueborder\"><TR>"
    "    <TD CLASS=\"header\">        Document    </TD>"
    "    <TD CLASS=\"header\">        Accessible    </TD></TR>\r\n"
    "<TR><TD>\r\n"
    "<A HREF=\"file://C:\\Docs\\a&b.txt\">\r\n"
    "C:\\Docs\\a&b.txt\r\n"
    "</A>\r\n"
    "</TD>\r\n"
    "<TD>Yes</TD>\r\n"
    "</TR>\r\n"
    "<TR><TD>\r\n"
    "D:\\gone.doc\r\n"
    "</TD>\r\n"
    "<TD>No</TD>\r\n"
    "</TR>\r\n"
    "</TABLE>\r\n"
    "<P>\r\n"
    "<A NAME=\"IEHistory\"/><FONT CLASS=\"heading\">IE History</FONT>"
    "<TABLE CLASS=\"blueborder\" WIDTH=\"100%\"><TR>"
    "    <TD CLASS=\"header\" WIDTH=\"90%\">        URL    </TD>"
    "    <TD CLASS=\"header\" WIDTH=\"10%\" NOWRAP>        Last Accessed    </TD></TR>\r\n"
    "<TR><TD STYLE=\"orderflow : auto ;\">\r\n"
    "<A HREF=\"http://example.com/?a=1&b=\"2\"\">\r\n"
    "http://example.com/?a=1&b=\"2\"\r\n"
    "</A>\r\n"
    "</TD><TD NOWRAP>\r\n"
    "8/4/2009 3:22:18 PM\r\n"
    "</TD></TR>\r\n"
    "<TR><TD STYLE=\"orderflow : auto ;\">\r\n"
    "<A HREF=\"http://other.example/\">\r\n"
    "http://other.example/\r\n"
    "</A>\r\n"
    "</TD><TD NOWRAP>\r\n"
    "1/1/1601\r\n"
    "</TD></TR>\r\n"
    "</TABLE>\r\n"
    "<P>\r\n"
    "<A NAME=\"TypedURLs\"/><FONT CLASS=\"heading\">Typed URLs</FONT><TABLE CLASS=\"blueborder\"><TR>"
    "    <TD CLASS=\"header\">        URL    </TD></TR>\r\n"
    "<TR><TD>\r\n"
    "<A HREF=\"http://z.example/?a&b\">\r\n"
    "http://z.example/?a&b\r\n"
    "</A>\r\n"
    "</TD></TR>\r\n"
    "<TR><TD>\r\n"
    "<A HREF=\"C:\\<Docs>\">\r\n"
    "C:\\<Docs>\r\n"
    "</A>\r\n"
    "</TD></TR>\r\n"
    "</TABLE>\r\n";

TEST_F(HtmlReportTest, WritesEverySection) {
    Create();
    EXPECT_EQ(machine.Read(kOut), std::string(kBeginning) + kEverything + kEnd);
}

TEST_F(HtmlReportTest, ReplacesWhatWasThere) {
    const std::string longer(100000, 'x');
    machine.platform.AddFile(kOut, std::as_bytes(std::span(longer)));
    Create();
    EXPECT_EQ(machine.Read(kOut), std::string(kBeginning) + kEverything + kEnd);
}

TEST_F(HtmlReportTest, WithNoSectionItIsTheTitleAlone) {
    client.wanted.clear();
    Create();
    EXPECT_EQ(machine.Read(kOut), std::string(kBeginning) + "<HR/><HR/>\r\n</CENTER>\r\n" + kEnd);
    EXPECT_EQ(client.log, std::vector<std::string>{"opened"});
}

TEST_F(HtmlReportTest, OneSectionHasItsLinkAlone) {
    client.wanted = {ReportSection::IEHistory};
    Create();
    const std::string everything = kEverything;
    const std::size_t begin = everything.find("<P>\r\n<A NAME=\"IEHistory\"");
    const std::size_t end = everything.find("<P>\r\n<A NAME=\"TypedURLs\"");
    EXPECT_EQ(machine.Read(kOut), std::string(kBeginning) +
                                      "<HR/><A HREF=\"#IEHistory\">IE History</A><HR/>\r\n</CENTER>\r\n" +
                                      everything.substr(begin, end - begin) + kEnd);
}

TEST_F(HtmlReportTest, LinksAreSeparatedWhicheverComesFirst) {
    client.wanted = {ReportSection::OpenSave, ReportSection::TypedURLs};
    Create();
    EXPECT_NE(machine.Read(kOut).find("<HR/><A HREF=\"#OpenSave\">Opened / Saved Documents</A> | "
                                      "<A HREF=\"#TypedURLs\">Typed URLs</A><HR/>\r\n"),
              std::string::npos);
}

TEST_F(HtmlReportTest, AnAccountThatDoesNotExistHasEmptyTables) {
    for (const std::int32_t index : {-1, 1}) {
        Create(index);
        const std::string text = machine.Read(kOut);
        EXPECT_NE(text.find("8/4/2009<BR>\r\n\r\n</FONT>\r\n"), std::string::npos);
        std::size_t tables = 0;
        for (std::size_t at = text.find("</TD></TR>\r\n</TABLE>\r\n"); at != std::string::npos;
             at = text.find("</TD></TR>\r\n</TABLE>\r\n", at + 1)) {
            ++tables;
        }
        EXPECT_EQ(tables, 5U);
        EXPECT_TRUE(client.percents.empty());
    }
}

TEST_F(HtmlReportTest, EachSectionIsAFifthOfTheWay) {
    Create();
    EXPECT_EQ(client.percents, (std::vector<float>{5, 10, 15, 20, 30, 40, 50, 60, 70, 80, 90, 100}))
        << "also for programs that have no row";
    std::vector<std::string> log = {"opened"};
    log.insert(log.end(), 10, "entry, messages");
    log.insert(log.end(), 2, "entry");
    EXPECT_EQ(client.log, log) << "the last section is written without a pause";
}

TEST_F(HtmlReportTest, ThePlaceOnTheWayHasSinglePrecision) {
    machine.AddTypedURLs(kAnna, {"a", "b", "c"});
    client.wanted = {ReportSection::TypedURLs};
    Create();
    EXPECT_EQ(client.percents, (std::vector<float>{static_cast<float>(1.0 / 3 / 5 * 100 + 80),
                                                   static_cast<float>(2.0 / 3 / 5 * 100 + 80), 100.0F}));
}

TEST_F(HtmlReportTest, SectionsAreAskedForAgainWhenTheirTurnComes) {
    client.onProgress = [this] { client.wanted = {ReportSection::RecentDocuments}; };
    client.wanted.erase(ReportSection::RecentDocuments);
    Create();
    const std::string text = machine.Read(kOut);
    EXPECT_EQ(text.find("<A HREF=\"#Recent\">"), std::string::npos);
    EXPECT_NE(text.find("<A NAME=\"Recent\"/>"), std::string::npos);
    EXPECT_NE(text.find("<A HREF=\"#OpenSave\">"), std::string::npos);
    EXPECT_EQ(text.find("<A NAME=\"OpenSave\"/>"), std::string::npos);
}

TEST_F(HtmlReportTest, ADateThatTheCodePageDoesNotHoldIsYearMonthDay) {
    struct Country {
        const char* name;
        const char* general;
        const char* day;
        bool dayHolds;
    };
    const Country countries[] = {
        {"Greek", "4/8/2009 3:22:18 \u03BC\u03BC", "4/8/2009", true},
        {"Arabic", "04/08/2009 03:22:18 \u0645", "04/08/2009", true},
        {"Arabic digits", "\u0664/8/2009 15:22:18", "\u0664/8/2009", false},
        {"Chinese", "2009/8/4 \u4E0B\u5348 03:22:18", "2009/8/4", true},
        {"Japanese", "2009\u5E7408\u670804\u65E5 15\u664222\u520618\u79D2", "2009\u5E7408\u670804\u65E5",
         false},
        {"Korean", "2009-08-04 \uC624\uD6C4 3:22:18", "2009-08-04", true},
    };
    client.wanted = {ReportSection::Programs};
    for (const Country& country : countries) {
        machine.platform.writeDate = [&](double date, DateForm form) -> std::string {
            return form == DateForm::General && date > 0 ? country.general : country.day;
        };
        Create();
        const std::string text = machine.Read(kOut);
        const std::string title = country.dayHolds ? country.day : "2009-08-04";
        EXPECT_NE(text.find("\r\n" + title + "<BR>\r\n"), std::string::npos) << country.name;
        EXPECT_NE(text.find("<TD>2009-08-04 15:22:18</TD>\r\n"), std::string::npos) << country.name;
        const std::string never = country.dayHolds ? country.day : "1601-01-01";
        EXPECT_NE(text.find("<TD>" + never + "</TD>\r\n"), std::string::npos) << country.name;
        EXPECT_EQ(text.find('?'), std::string::npos) << country.name;
    }
}

TEST_F(HtmlReportTest, ADateThatTheCodePageHoldsIsTheLocales) {
    machine.platform.writeDate = [](double /*date*/, DateForm form) -> std::string {
        return form == DateForm::ShortDate ? "4. ao\u00FBt 2009" : "4. ao\u00FBt 2009 15\u00A0h";
    };
    Create();
    const std::string text = machine.Read(kOut);
    EXPECT_NE(text.find("4. ao\xFBt 2009<BR>\r\n"), std::string::npos);
    EXPECT_NE(text.find("<TD>4. ao\xFBt 2009 15\xA0h</TD>\r\n"), std::string::npos);
}

TEST_F(HtmlReportTest, AFolderThatIsNotThereIsAFailure) {
    EXPECT_THROW(HtmlReport(machine.platform, machine.accounts, client).Create(0, "C:\\none\\a.htm"),
                 RuntimeError);
    EXPECT_TRUE(client.log.empty()) << "nothing was opened";
}

TEST_F(HtmlReportTest, WhatAFullDiskTookStays) {
    machine.platform.freeBytes = 1000;
    EXPECT_THROW(Create(), RuntimeError);
    EXPECT_EQ(machine.Read(kOut), (std::string(kBeginning) + kEverything).substr(0, 1000));
}

TEST_F(HtmlReportTest, AFailureOnClosingIsAFailure) {
    machine.platform.Fail("Close");
    EXPECT_THROW(Create(), RuntimeError);
}

/// Many more lines than are kept in memory.
TEST(HtmlReport, ALongOneIsWholeThroughout) {
    ReportMachine machine;
    machine.AddPerson(kAnna, "anna");
    std::vector<std::pair<std::string, std::uint64_t>> visits;
    std::string rows;
    for (int i = 10000; i < 15000; ++i) {
        // As the index stores it, which is how the report has it, too.
        visits.emplace_back("http://caf\xE9.example/" + std::to_string(i), kSomeDay);
        const std::string url = "http://caf\xE9.example/" + std::to_string(i) + "\r\n";
        rows.append("<TR><TD STYLE=\"orderflow : auto ;\">\r\n<A HREF=\"")
            .append(url.substr(0, url.size() - 2))
            .append("\">\r\n")
            .append(url)
            .append("</A>\r\n</TD><TD NOWRAP>\r\n8/4/2009 3:22:18 PM\r\n</TD></TR>\r\n");
    }
    machine.AddIEHistory("anna", visits);
    machine.Load();
    TestClient client;
    client.wanted = {ReportSection::IEHistory};
    HtmlReport(machine.platform, machine.accounts, client).Create(0, kOut);
    const std::string text = machine.Read(kOut);
    ASSERT_GT(text.size(), 5 * rows.size() / 6);
    EXPECT_TRUE(text.find("        Last Accessed    </TD></TR>\r\n" + rows + "</TABLE>\r\n") !=
                std::string::npos);
}

}  // namespace
}  // namespace ostrevin
