#include "report/JsonLines.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/Text.h"
#include "report/Entries.h"

namespace ostrevin {
namespace {

/// Text as JSON has it between quotes. What steers a terminal is written as its code, so that no value loses
/// a character and no line governs how it is shown.
std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    while (!text.empty()) {
        const char32_t character = TakeCharacter(text);
        if (IsControl(character)) {
            std::array<char, 8> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "\\u%04x", static_cast<unsigned>(character));
            quoted += escaped.data();
            continue;
        }
        if (character == U'"' || character == U'\\') {
            quoted += '\\';
        }
        AppendCharacter(quoted, character);
    }
    return quoted + '"';
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
    Line& AddValue(std::string_view name, const EntryValue& value) {
        return std::visit([&](const auto& held) -> Line& { return Add(name, held); }, value);
    }

  private:
    Line& Put(std::string_view name, const std::string& value) {
        output_ << (first_ ? '{' : ',') << '"' << name << "\":" << value;
        first_ = false;
        return *this;
    }

    std::ostream& output_;
    bool first_ = true;
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
    for (const ReportSection section : kReportSections) {
        const std::span<const std::string_view> members = EntryMembers(section);
        ForEachEntry(accounts, index, section, [&](std::span<const EntryValue> values) {
            Line line(output);
            for (std::size_t i = 0; i < members.size(); ++i) {
                line.AddValue(members[i], values[i]);
            }
        });
    }
}

}  // namespace ostrevin
