#include "tests/volume/Examination.h"

#include <gtest/gtest.h>

#include "accounts/AccountList.h"
#include "platform/RuntimeError.h"

namespace ostrevin {
namespace {

std::string NameOfShellOwner(VolumePlatform& platform) {
    const std::vector<ProcessOwner> owners = platform.ShellProcessOwners();
    return owners.empty() ? std::string() : owners.front().user;
}

}  // namespace

std::size_t Examine(VolumePlatform& platform, const std::string& root) {
    const std::string user = NameOfShellOwner(platform);
    AccountList accounts(platform, {user, [&] { return NameOfShellOwner(platform); }, {}});
    accounts.LoadAccountSIDSFromRegistry();
    accounts.LoadAccountNamesFromSID();
    std::size_t entries = 0;
    for (std::int32_t i = 0; i < accounts.Count(); ++i) {
        entries += static_cast<std::size_t>(
            accounts.UserAssist(i)->Count() + accounts.RecentDocument(i)->Count() +
            accounts.OpenSave(i)->Count() + accounts.IEHistory(i)->Count() + accounts.TypedURL(i)->Count());
        platform.ListDirectory(accounts.AccountDocumentSettingsPath(i));
        platform.FindEntry(accounts.AccountDocumentSettingsPath(i) + "\\ntuser.dat");
    }
    platform.GroupUsers();
    KeyHandle key = 0;
    platform.RegCreateKeyExA(kLocalMachine, "SOFTWARE\\New", 0x20006, key);
    platform.RegSetValueExA(kLocalMachine, "New", kRegSz, {});
    EXPECT_FALSE(platform.CreateShellLink()->Save(root + "/new.lnk"));
    EXPECT_THROW(platform.CreateOutputFile(root + "/new.htm"), RuntimeError);
    EXPECT_THROW(platform.CreateOutputFile(root + "/boot.ini"), RuntimeError);
    EXPECT_THROW(platform.CreateOutputFolder(root + "/new"), RuntimeError);
    platform.StartProgram("C:\\WINDOWS\\explorer.exe");
    return entries;
}

}  // namespace ostrevin
