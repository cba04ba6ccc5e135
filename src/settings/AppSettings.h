// Options by name, over the settings file.
#pragma once

#include <string>

#include "settings/IniFile.h"

namespace ostrevin {

class AppSettings {
  public:
    AppSettings() = default;
    AppSettings(const AppSettings&) = delete;
    AppSettings& operator=(const AppSettings&) = delete;
    /// Saves the settings file, if one is held. A failure was told when the main window closed and is not
    /// told again.
    ~AppSettings();

    /// The settings file to use; not owned.
    [[nodiscard]] IniFile* INI() const { return ini_; }
    void SetINI(IniFile* ini) { ini_ = ini; }

    /// "" when the option is not set or no file is held.
    [[nodiscard]] std::string GetINIOption(const std::string& name) const;
    /// The option ends up as a variable of the unnamed section, behind those read from the file.
    void SetINIOption(const std::string& name, const std::string& value);

  private:
    IniFile* ini_ = nullptr;
};

}  // namespace ostrevin
