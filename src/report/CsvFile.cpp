#include "report/CsvFile.h"

#include <string_view>
#include <variant>
#include <vector>

#include "report/Entries.h"
#include "report/LineFile.h"

namespace ostrevin {
namespace {

/// A text as it is, or between quotes where it must be.
std::string Field(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        return std::string(text);
    }
    std::string quoted = "\"";
    for (const char character : text) {
        quoted.append(character == '"' ? 2 : 1, character);
    }
    return quoted + '"';
}

void WriteRow(LineFile& file, std::span<const EntryValue> values) {
    std::string row;
    for (const EntryValue& value : values) {
        const auto* text = std::get_if<std::string>(&value);
        row += text == nullptr ? std::to_string(std::get<std::int32_t>(value)) : Field(*text);
        row += ',';
    }
    row.pop_back();
    file.Write(row);
}

}  // namespace

void WriteCsvFile(Platform& platform, AccountList& accounts, std::span<const std::int32_t> indexes,
                  ReportSection section, const std::string& path) {
    LineFile file(platform, path, [](std::string_view text) { return std::string(text); });
    std::vector<EntryValue> names;
    for (const std::string_view member : EntryMembers(section)) {
        names.emplace_back(std::string(member));
    }
    WriteRow(file, names);
    for (const std::int32_t index : indexes) {
        ForEachEntry(accounts, index, section,
                     [&](std::span<const EntryValue> values) { WriteRow(file, values); });
    }
    file.Close();
}

}  // namespace ostrevin
