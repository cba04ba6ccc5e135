#include "report/JsonLines.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/Dates.h"

namespace ostrevin {
namespace {

/// Text as JSON has it between quotes; what is not a printable character is written as its code.
std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            quoted += '\\';
            quoted += character;
        } else if (code < 0x20 || code == 0x7F) {
            std::array<char, 8> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "\\u%04x", code);
            quoted += escaped.data();
        } else {
            quoted += character;
        }
    }
    return quoted + '"';
}

std::string IsoDate(double date) {
    const SystemTime civil = CivilFromDate(date);
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", civil.year, civil.month,
                  civil.day, civil.hour, civil.minute, civil.second);
    return text.data();
}

/// One object, written a member at a time; the line ends with the object.
class Line {
  public:
    explicit Line(std::ostream& output) : output_(output) {}
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() { output_ << (first_ ? "{}\n" : "}\n"); }

    Line& Add(std::string_view name, std::string_view text) { return Put(name, Quoted(text)); }
    Line& Add(std::string_view name, std::int32_t number) { return Put(name, std::to_string(number)); }

  private:
    Line& Put(std::string_view name, const std::string& value) {
        output_ << (first_ ? '{' : ',') << '"' << name << "\":" << value;
        first_ = false;
        return *this;
    }

    std::ostream& output_;
    bool first_ = true;
};

/// Writes the lines of one account.
class EntryWriter {
  public:
    EntryWriter(std::ostream& output, AccountList& accounts, std::int32_t index)
        : output_(output), sid_(accounts.AccountSID(index)), account_(accounts.AccountName(index)) {}

    void Write(const UserAssistList& source) {
        for (std::int32_t i = 0; i < source.Count(); ++i) {
            Line line(output_);
            Begin(line, "UserAssist")
                .Add("name", source.UserAssistName(i))
                .Add("type", source.UserAssistType(i))
                .Add("value", source.UserAssistValue(i))
                .Add("runCount", source.UserAssistRunCount(i))
                .Add("lastRun", IsoDate(source.UserAssistLastRun(i)));
        }
    }
    void Write(const RecentDocumentList& source) {
        for (std::int32_t i = 0; i < source.Count(); ++i) {
            Line line(output_);
            Begin(line, "RecentDocument")
                .Add("file", source.RecentDocument(i))
                .Add("path", source.RecentDocumentPath(i));
        }
    }
    void Write(const OpenSaveList& source) {
        for (std::int32_t i = 0; i < source.Count(); ++i) {
            Line line(output_);
            Begin(line, "OpenSave").Add("document", source.Document(i));
        }
    }
    void Write(const IEHistoryList& source) {
        for (std::int32_t i = 0; i < source.Count(); ++i) {
            Line line(output_);
            Begin(line, "IEHistory")
                .Add("url", source.URL(i))
                .Add("dateAccessed", IsoDate(source.DateAccessed(i)));
        }
    }
    void Write(const TypedURLList& source) {
        for (std::int32_t i = 0; i < source.Count(); ++i) {
            Line line(output_);
            Begin(line, "TypedURL").Add("url", source.URL(i));
        }
    }

  private:
    Line& Begin(Line& line, std::string_view source) {
        return line.Add("sid", sid_).Add("account", account_).Add("source", source);
    }

    std::ostream& output_;
    std::string sid_;
    std::string account_;
};

}  // namespace

void WriteAccountLines(std::ostream& output, const AccountList& accounts) {
    for (std::int32_t i = 0; i < accounts.Count(); ++i) {
        Line line(output);
        line.Add("index", i)
            .Add("sid", accounts.AccountSID(i))
            .Add("name", accounts.AccountName(i))
            .Add("profile", accounts.AccountDocumentSettingsPath(i));
    }
}

void WriteEntryLines(std::ostream& output, AccountList& accounts, std::int32_t index) {
    if (index < 0 || index >= accounts.Count()) {
        return;
    }
    EntryWriter writer(output, accounts, index);
    // The order decides what the later sources find: typed addresses are there only once a hive is loaded.
    writer.Write(*accounts.UserAssist(index));
    writer.Write(*accounts.RecentDocument(index));
    writer.Write(*accounts.OpenSave(index));
    writer.Write(*accounts.IEHistory(index));
    writer.Write(*accounts.TypedURL(index));
}

}  // namespace ostrevin
