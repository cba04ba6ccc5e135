// Settings files: any bytes are read without harm, and no variable and no comment is lost or moved before
// another when they are saved.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "settings/IniFile.h"
#include "tests/support/ScratchFolder.h"

using namespace ostrevin;

namespace {

constexpr char kName[] = "settings.ini";

struct Variable {
    std::string section;
    std::string name;
    std::string value;
    bool operator==(const Variable&) const = default;
};

/// What a settings file holds, by a plain reading of its rules.
struct Content {
    std::vector<Variable> variables;
    std::vector<std::string> comments;
    bool operator==(const Content&) const = default;
};

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void TakeLine(const std::string& line, std::string& section, Content& content) {
    const std::size_t equals = line.find('=');
    if (line.starts_with('#') || line.starts_with('\'')) {
        content.comments.push_back(line);
    } else if (line.starts_with('[') && line.ends_with(']')) {
        section = line.substr(1, line.size() - 2);
    } else if (equals != std::string::npos) {
        content.variables.push_back({section, line.substr(0, equals), line.substr(equals + 1)});
    }
}

Content ContentOf(std::string_view text) {
    Content content;
    std::string section;
    std::string line;
    // Empty lines do not count, so that CR LF may be taken for two ends.
    for (const char character : text) {
        if (character != '\r' && character != '\n') {
            line += character;
            continue;
        }
        TakeLine(line, section, content);
        line.clear();
    }
    TakeLine(line, section, content);
    return content;
}

IniFile Load(const ScratchFolder& folder) {
    IniFile ini;
    ini.SetINIFileName(folder.Path(kName));
    ini.LoadINI();
    Require(ini.Loaded());
    return ini;
}

/// The file after it was loaded and saved.
std::string Saved(const ScratchFolder& folder) {
    Load(folder).SaveINI();
    return folder.Read(kName);
}

void RequireFound(const IniFile& ini, const Content& content) {
    for (const Variable& variable : content.variables) {
        for (const Variable& first : content.variables) {
            if (first.section == variable.section && first.name == variable.name) {
                Require(ini.GetSectionVariableValue(variable.section, variable.name) == first.value);
                break;
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFolder folder;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    folder.Write(kName, text);
    const Content content = ContentOf(text);
    RequireFound(Load(folder), content);
    const std::string saved = Saved(folder);
    Require(ContentOf(saved) == content);
    Require(Saved(folder) == saved);
    return 0;
}
