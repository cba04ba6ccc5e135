// The program: its process-wide objects, and the order in which they come to be.
#pragma once

#include <memory>
#include <string>

#include "accounts/AccountList.h"
#include "controls/Toolkit.h"
#include "platform/ErrorLog.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"
#include "settings/IniFile.h"
#include "ui/frmMain.h"

namespace ostrevin {

class Program {
  public:
    Program(Platform& platform, Toolkit& toolkit) : platform_(platform), toolkit_(toolkit) {}

    /// Checks the host, creates the objects, reads the accounts under the splash window and shows the main
    /// window. It returns then; the program goes on until its windows are closed. Failures are let through.
    void Main();

    // Null until Main has created them.
    [[nodiscard]] AppSettings* Settings() const { return settings_.get(); }
    [[nodiscard]] ErrorLog* Log() const { return errorLog_.get(); }
    [[nodiscard]] AccountList* Accounts() const { return accounts_.get(); }
    [[nodiscard]] frmMain* MainWindow() const { return mainWindow_.get(); }
    [[nodiscard]] const std::string& LoggedOnUserName() const { return loggedOnUserName_; }

  private:
    void CheckOperatingSystem();
    void LoadSettingsFile();
    void CheckAdministrator();
    void LoadAccounts();

    Platform& platform_;
    Toolkit& toolkit_;
    // The settings access goes before the settings file, which it saves.
    std::unique_ptr<IniFile> ini_;
    std::unique_ptr<AppSettings> settings_;
    std::unique_ptr<ErrorLog> errorLog_;
    std::string loggedOnUserName_;
    std::unique_ptr<AccountList> accounts_;
    std::unique_ptr<frmMain> mainWindow_;
};

}  // namespace ostrevin
