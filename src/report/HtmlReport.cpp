#include "report/HtmlReport.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/Dates.h"
#include "platform/Paths.h"
#include "report/LineFile.h"

namespace ostrevin {
namespace {

constexpr std::string_view kHead =
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
    "<BODY>\r\n";
constexpr std::string_view kFoot =
    "</BODY>\r\n"
    "</HTML>";

/// What stands in the file for a section as a whole.
struct SectionText {
    std::string_view link;
    std::string_view tableHead;
};

/// By the numbers of the sections.
constexpr std::array<SectionText, 5> kSections = {{
    {R"(<A HREF="#Programs">Programs</A>)",
     R"(<A NAME="Programs"/><FONT CLASS="heading">Programs</FONT><TABLE CLASS="blueborder"><TR>)"
     R"(    <TD CLASS="header">       Program    </TD>)"
     R"(    <TD CLASS="header">        Run Count    </TD>)"
     R"(    <TD CLASS="header">        Last Accessed    </TD>)"
     R"(    <TD CLASS="header">        Accessible    </TD></TR>)"},
    {R"(<A HREF="#Recent">Recent Documents</A>)",
     R"(<A NAME="Recent"/><FONT CLASS="heading">Recent Documents</FONT><TABLE CLASS="blueborder"><TR>)"
     R"(    <TD CLASS="header">        Document    </TD>)"
     R"(    <TD CLASS="header">        Accessible    </TD></TR>)"},
    {R"(<A HREF="#OpenSave">Opened / Saved Documents</A>)",
     R"(<A NAME="OpenSave"/><FONT CLASS="heading">Opened / Saved Documents</FONT><TABLE CLASS="blueborder"><TR>)"
     R"(    <TD CLASS="header">        Document    </TD>)"
     R"(    <TD CLASS="header">        Accessible    </TD></TR>)"},
    {R"(<A HREF="#IEHistory">IE History</A>)",
     R"(<A NAME="IEHistory"/><FONT CLASS="heading">IE History</FONT><TABLE CLASS="blueborder" WIDTH="100%"><TR>)"
     R"(    <TD CLASS="header" WIDTH="90%">        URL    </TD>)"
     R"(    <TD CLASS="header" WIDTH="10%" NOWRAP>        Last Accessed    </TD></TR>)"},
    {R"(<A HREF="#TypedURLs">Typed URLs</A>)",
     R"(<A NAME="TypedURLs"/><FONT CLASS="heading">Typed URLs</FONT><TABLE CLASS="blueborder"><TR>)"
     R"(    <TD CLASS="header">        URL    </TD></TR>)"},
}};

const SectionText& TextOf(ReportSection section) {
    return kSections.at(static_cast<std::size_t>(section));
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// One run of the writer.
class ReportFile {
  public:
    ReportFile(Platform& platform, ReportClient& client, const std::string& path, Existing existing)
        : platform_(platform),
          client_(client),
          file_(
              platform, path, [&platform](std::string_view text) { return platform.EncodeAnsi(text); },
              existing) {}

    void WriteTitle(const std::string& account, const std::string& links) {
        file_.Write(kHead);
        file_.Write("<CENTER><FONT CLASS=\"title\">Ostrevin Report<BR>\r\n");
        file_.Write({DateText(platform_.Now(), DateForm::ShortDate), "<BR>"});
        file_.Write(account);
        file_.Write("</FONT>");
        file_.Write({"<HR/>", links, "<HR/>"});
        file_.Write("</CENTER>");
    }

    /// Writes a section; without a source it has no rows.
    template <typename Source>
    void WriteSection(ReportSection section, const Source* source) {
        file_.Write("<P>");
        file_.Write(TextOf(section).tableHead);
        const std::int32_t count = source == nullptr ? 0 : source->Count();
        for (std::int32_t i = 0; i < count; ++i) {
            WriteRow(*source, i);
            TellProgress(section, i, source->Count());
        }
        file_.Write("</TABLE>");
    }

    void WriteFoot() { file_.Write(kFoot); }
    void Close() { file_.Close(); }

  private:
    void WriteRow(const UserAssistList& source, std::int32_t index) {
        if (!source.IsProgram(index)) {
            return;
        }
        const bool accessible = WritePath(source.UserAssistValue(index));
        file_.Write({"<TD ALIGN=\"RIGHT\">", std::to_string(source.UserAssistRunCount(index)), "</TD>"});
        file_.Write({"<TD>", DateText(source.UserAssistLastRun(index)), "</TD>"});
        file_.Write({"<TD>", YesOrNo(accessible), "</TD"});
        file_.Write("</TR>");
    }
    void WriteRow(const RecentDocumentList& source, std::int32_t index) {
        WriteDocument(source.RecentDocumentPath(index));
    }
    void WriteRow(const OpenSaveList& source, std::int32_t index) { WriteDocument(source.Document(index)); }
    void WriteRow(const IEHistoryList& source, std::int32_t index) {
        file_.Write("<TR><TD STYLE=\"orderflow : auto ;\">");
        WriteLink(source.URL(index));
        file_.Write("</TD><TD NOWRAP>");
        file_.Write(DateText(source.DateAccessed(index)));
        file_.Write("</TD></TR>");
    }
    void WriteRow(const TypedURLList& source, std::int32_t index) {
        file_.Write("<TR><TD>");
        WriteLink(source.URL(index));
        file_.Write("</TD></TR>");
    }

    void WriteDocument(const std::string& path) {
        const bool accessible = WritePath(path);
        file_.Write({"<TD>", YesOrNo(accessible), "</TD>"});
        file_.Write("</TR>");
    }
    /// Begins a row with a path, linked when it exists. Returns whether it does.
    bool WritePath(const std::string& path) {
        const bool accessible = FileExists(platform_, path);
        file_.Write("<TR><TD>");
        if (accessible) {
            file_.Write({"<A HREF=\"file://", path, "\">"});
        }
        file_.Write(path);
        if (accessible) {
            file_.Write("</A>");
        }
        file_.Write("</TD>");
        return accessible;
    }
    void WriteLink(const std::string& url) {
        file_.Write({"<A HREF=\"", url, "\">"});
        file_.Write(url);
        file_.Write("</A>");
    }

    /// In the locale's form, unless the file's code page does not hold that.
    [[nodiscard]] std::string DateText(double date, DateForm form = DateForm::General) const {
        std::string text = platform_.DateToText(date, form);
        if (IsAscii(text) || platform_.DecodeAnsi(platform_.EncodeAnsi(text)) == text) {
            return text;
        }
        const SystemTime civil = CivilFromDate(date);
        const bool midnight = civil.hour == 0 && civil.minute == 0 && civil.second == 0;
        return form == DateForm::ShortDate || midnight ? IsoDay(civil) : IsoDay(civil) + " " + IsoTime(civil);
    }
    static std::string_view YesOrNo(bool yes) { return yes ? "Yes" : "No"; }

    void TellProgress(ReportSection section, std::int32_t index, std::int32_t count) {
        const double base = 20.0 * static_cast<int>(section);
        const double percent = (index + 1.0) / count / 5 * 100 + base;
        client_.Progress(static_cast<float>(percent), section != ReportSection::TypedURLs);
    }

    Platform& platform_;
    ReportClient& client_;
    LineFile file_;
};

}  // namespace

void HtmlReport::Create(std::int32_t accountIndex, const std::string& path, Existing existing) {
    using enum ReportSection;
    std::string links;
    for (const ReportSection section : kReportSections) {
        if (client_.Includes(section)) {
            links += links.empty() ? "" : " | ";
            links += TextOf(section).link;
        }
    }
    ReportFile file(platform_, client_, path, existing);
    client_.Opened();
    file.WriteTitle(accounts_.AccountName(accountIndex), links);
    const auto write = [&](ReportSection section, auto sourceOf) {
        if (client_.Includes(section)) {
            file.WriteSection(section, (accounts_.*sourceOf)(accountIndex));
        }
    };
    write(Programs, &AccountList::UserAssist);
    write(RecentDocuments, &AccountList::RecentDocument);
    write(OpenSave, &AccountList::OpenSave);
    write(IEHistory, &AccountList::IEHistory);
    write(TypedURLs, &AccountList::TypedURL);
    file.WriteFoot();
    file.Close();
}

}  // namespace ostrevin
