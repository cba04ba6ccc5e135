#include "startup/Program.h"

#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "startup/HostProbes.h"
#include "ui/frmSplash.h"

namespace ostrevin {
namespace {

constexpr char kTitle[] = "Ostrevin";

}  // namespace

void Program::Main() {
    CheckOperatingSystem();
    LoadSettingsFile();
    settings_ = std::make_unique<AppSettings>();
    settings_->SetINI(ini_.get());
    errorLog_ = std::make_unique<ErrorLog>(platform_);
    errorLog_->SetFileName(GetKeptFile(platform_, "error.log"));
    loggedOnUserName_ = GetLoggedOnUserName(platform_);
    CheckAdministrator();
    InitCommonControlClasses(toolkit_);
    LoadAccounts();
    mainWindow_ = std::make_unique<frmMain>(toolkit_, MainWindowParts{platform_, *settings_, *accounts_});
    mainWindow_->Show();
}

void Program::CheckOperatingSystem() {
    const std::string name = GetOSName(platform_);
    if (name.find("2000") == std::string::npos && name.find("XP") == std::string::npos) {
        toolkit_.MsgBox(nullptr,
                        "Your Operating System is : " + name +
                            "\r\nOstrevin requires Windows 2000, or Windows XP to function properly.",
                        kTitle);
    }
}

void Program::LoadSettingsFile() {
    ini_ = std::make_unique<IniFile>();
    ini_->SetINIFileName(GetKeptFile(platform_, "ostrevin.ini"));
    try {
        ini_->LoadINI();
    } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch)
        // What cannot be read is no reason not to start: the settings are the defaults then.
    }
}

void Program::CheckAdministrator() {
    if (!IsUserAdministrator(platform_)) {
        toolkit_.MsgBox(
            nullptr,
            "You do not seem to be a member of the local Administrators Group.  Ostrevin will not work "
            "correctly unless you have Administrative access on this computer.  If you belong to another "
            "group with Administrative access, disregard this message.",
            kTitle);
    }
}

void Program::LoadAccounts() {
    frmSplash splash(toolkit_);
    splash.Show();
    splash.Refresh();
    const auto note = [this](const std::string& line) {
        try {
            errorLog_->WriteLog(PlainLine(line));
        } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch)
            // A log that cannot be written must not cost the user the window.
        }
    };
    const auto warn = [this, note](const std::string& line) {
        note(line);
        toolkit_.MsgBox(nullptr, PlainLine(line), kTitle);
    };
    accounts_ = std::make_unique<AccountList>(
        platform_,
        AccountListSetup{loggedOnUserName_, [this] { return GetLoggedOnUserName(platform_); }, note, warn});
    accounts_->LoadAccountSIDSFromRegistry();
    accounts_->LoadAccountNamesFromSID();
    splash.Unload();
}

}  // namespace ostrevin
