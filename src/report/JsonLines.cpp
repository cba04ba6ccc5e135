#include "report/JsonLines.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "report/Entries.h"

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
