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
    /// Saves what is not saved yet; here nobody can be told of a failure.
    ~AppSettings();

    /// The settings file to use; not owned.
    [[nodiscard]] IniFile* INI() const { return ini_; }
    void SetINI(IniFile* ini) {
        ini_ = ini;
        saved_ = false;
    }
    /// Saves the settings file, if one is held, unless that was tried since an option was set last. Raises
    /// RuntimeError when it cannot be written.
    void Save();

    /// "" when the option is not set or no file is held.
    [[nodiscard]] std::string GetINIOption(const std::string& name) const;
    /// The option ends up as a variable of the unnamed section, behind those read from the file.
    void SetINIOption(const std::string& name, const std::string& value);

  private:
    IniFile* ini_ = nullptr;
    bool saved_ = false;
};

}  // namespace ostrevin
