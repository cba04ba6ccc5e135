// A live machine with two accounts, in the registry and on the drive of a Wine prefix that nothing else uses.
#pragma once

#include <string>
#include <vector>

#include "tests/windows/window/Reading.h"

namespace ostrevin {

/// An account, and what its five lists are to show.
struct LiveAccount {
    std::string sid;
    std::string name;
    std::vector<std::vector<Texts>> rows;  ///< by tab
};

/// Makes the accounts: the one that Wine runs programs for, and "berta", whose hive is a file. In the order
/// of the list of profiles.
[[nodiscard]] std::vector<LiveAccount> MakeLiveMachine();

/// Registers the stand-ins (a library's path) for the management service and for opening files that end in
/// ".htm".
void RegisterStandIns(const std::wstring& library);

/// Makes Wine answer as a version of Windows ("win2k", "winxp64", "win7") to ostrevin.exe.
void SetWindowsVersion(const std::wstring& version);

}  // namespace ostrevin
