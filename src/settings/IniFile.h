// The settings file: INI text, read whole at start-up and written whole at the end.
//
// Nothing is trimmed and names are compared with regard to case. A line that begins with "#" or "'" is a
// comment; one that begins with "[" and ends with "]" a section; one that holds "=" a variable; any other is
// not kept.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ostrevin {

class IniFile {
  public:
    /// Full path of the file, in UTF-8; without one the settings are not kept.
    [[nodiscard]] const std::string& INIFileName() const { return fileName_; }
    void SetINIFileName(const std::string& fileName) { fileName_ = fileName; }

    /// Reads the file; a missing one leaves the settings empty. Raises RuntimeError when it cannot be read.
    void LoadINI();
    /// The first variable of this name in any section; "" when there is none.
    [[nodiscard]] std::string GetVariableValue(std::string_view name) const;
    [[nodiscard]] std::string GetSectionVariableValue(std::string_view section, std::string_view name) const;
    /// Replaces the value of the first match; false when there is none.
    bool ChangeVariable(std::string_view name, const std::string& value);
    bool ChangeSectionVariable(std::string_view section, std::string_view name, const std::string& value);
    /// Appends a variable; false, with nothing changed, when that section has one of this name.
    bool AddVariable(const std::string& name, const std::string& value);
    bool AddSectionVariable(const std::string& section, const std::string& name, const std::string& value);
    /// Removes the first match; false when there is none.
    bool DeleteVariable(std::string_view name);
    bool DeleteSectionVariable(std::string_view section, std::string_view name);
    /// Writes every variable and comment in order, lines ended by CR LF; sections without a variable are
    /// dropped. A failure raises RuntimeError and leaves the former file as it was; a file that could not be
    /// read is not written over.
    void SaveINI() const;

    [[nodiscard]] const std::vector<std::string>& Sections() const { return sections_; }
    [[nodiscard]] bool Loaded() const { return loaded_; }

  private:
    struct Variable {
        std::string section;
        std::string name;
        std::string value;
    };
    struct Comment {
        std::string text;
        std::string lineNumber;  ///< counted over the file's non-empty lines
    };

    void TakeLine(const std::string& line, std::size_t lineNumber, std::string& section);
    [[nodiscard]] std::string Text() const;

    std::string fileName_;
    std::vector<std::string> sections_;
    std::vector<Variable> variables_;
    std::vector<Comment> comments_;
    bool loaded_ = false;
    bool unread_ = false;
};

}  // namespace ostrevin
