#include "settings/IniFile.h"

#include <algorithm>
#include <optional>

#include "platform/HostFiles.h"
#include "platform/RuntimeError.h"

namespace ostrevin {
namespace {

[[noreturn]] void RaiseFileError(const std::string& fileName) {
    throw RuntimeError(RuntimeError::kPathFileAccess, "Path/File access error: " + fileName);
}

/// Takes one line off the front; lines end with CR LF, CR or LF.
std::string_view TakeLineOf(std::string_view& text) {
    const std::size_t end = text.find_first_of("\r\n");
    const std::string_view line = text.substr(0, end);
    if (end == std::string_view::npos) {
        text = {};
        return line;
    }
    text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    return line;
}

auto FindName(auto& variables, std::string_view name) {
    return std::find_if(variables.begin(), variables.end(),
                        [&](const auto& variable) { return variable.name == name; });
}

auto FindInSection(auto& variables, std::string_view section, std::string_view name) {
    return std::find_if(variables.begin(), variables.end(), [&](const auto& variable) {
        return variable.section == section && variable.name == name;
    });
}

/// Lines on their way out, with the comments put back at the line numbers that they had.
class LineWriter {
  public:
    void Add(const std::string& line) {
        Put(line);
        ++number_;
    }
    void AddEmpty() { Put({}); }
    /// The number that the next non-empty line gets.
    [[nodiscard]] std::size_t NextNumber() const { return number_; }
    [[nodiscard]] std::string Text() && { return std::move(text_); }

  private:
    void Put(const std::string& line) {
        text_ += line;
        text_ += "\r\n";
    }
    std::string text_;
    std::size_t number_ = 1;
};

}  // namespace

void IniFile::LoadINI() {
    if (!IsHostFile(fileName_)) {
        return;
    }
    const std::optional<std::string> content = ReadHostFile(fileName_);
    unread_ = !content;
    if (unread_) {
        RaiseFileError(fileName_);
    }
    std::string_view text = *content;
    std::string section;
    std::size_t lineNumber = 0;
    while (!text.empty()) {
        const std::string line(TakeLineOf(text));
        if (!line.empty()) {
            ++lineNumber;
            TakeLine(line, lineNumber, section);
        }
    }
    loaded_ = true;
}

void IniFile::TakeLine(const std::string& line, std::size_t lineNumber, std::string& section) {
    if (line.front() == '#' || line.front() == '\'') {
        comments_.push_back({line, std::to_string(lineNumber)});
        return;
    }
    if (line.size() > 1 && line.front() == '[' && line.back() == ']') {
        section = line.substr(1, line.size() - 2);
        sections_.push_back(section);
        return;
    }
    const std::size_t equals = line.find('=');
    if (equals != std::string::npos) {
        variables_.push_back({section, line.substr(0, equals), line.substr(equals + 1)});
    }
}

std::string IniFile::GetVariableValue(std::string_view name) const {
    const auto found = FindName(variables_, name);
    return found == variables_.end() ? std::string() : found->value;
}

std::string IniFile::GetSectionVariableValue(std::string_view section, std::string_view name) const {
    const auto found = FindInSection(variables_, section, name);
    return found == variables_.end() ? std::string() : found->value;
}

bool IniFile::ChangeVariable(std::string_view name, const std::string& value) {
    const auto found = FindName(variables_, name);
    if (found == variables_.end()) {
        return false;
    }
    found->value = value;
    return true;
}

bool IniFile::ChangeSectionVariable(std::string_view section, std::string_view name,
                                    const std::string& value) {
    const auto found = FindInSection(variables_, section, name);
    if (found == variables_.end()) {
        return false;
    }
    found->value = value;
    return true;
}

bool IniFile::AddVariable(const std::string& name, const std::string& value) {
    return AddSectionVariable({}, name, value);
}

bool IniFile::AddSectionVariable(const std::string& section, const std::string& name,
                                 const std::string& value) {
    if (FindInSection(variables_, section, name) != variables_.end()) {
        return false;
    }
    variables_.push_back({section, name, value});
    return true;
}

bool IniFile::DeleteVariable(std::string_view name) {
    return DeleteSectionVariable({}, name);
}

bool IniFile::DeleteSectionVariable(std::string_view section, std::string_view name) {
    const auto found = FindInSection(variables_, section, name);
    if (found == variables_.end()) {
        return false;
    }
    variables_.erase(found);
    return true;
}

std::string IniFile::Text() const {
    LineWriter lines;
    auto comment = comments_.begin();
    const auto putComments = [&](bool all) {
        while (comment != comments_.end() &&
               (all || std::stoull(comment->lineNumber) <= lines.NextNumber())) {
            lines.Add(comment->text);
            ++comment;
        }
    };
    std::string section;
    for (const Variable& variable : variables_) {
        putComments(false);
        if (variable.section != section) {
            section = variable.section;
            lines.AddEmpty();
            lines.Add("[" + section + "]");
            putComments(false);
        }
        lines.Add(variable.name + "=" + variable.value);
    }
    putComments(true);
    return std::move(lines).Text();
}

void IniFile::SaveINI() const {
    if (fileName_.empty()) {
        return;
    }
    if (unread_ || !ReplaceHostFile(fileName_, Text())) {
        RaiseFileError(fileName_);
    }
}

}  // namespace ostrevin
