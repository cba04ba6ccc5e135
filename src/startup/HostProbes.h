// What start-up asks of the host.
#pragma once

#include <string>

#include "controls/Toolkit.h"
#include "platform/Platform.h"

namespace ostrevin {

/// The name of the Windows version: empty for an unknown one (6 and later among them), "Failed" for another
/// platform. Every 5.x but 5.0 is "Windows XP".
[[nodiscard]] std::string GetOSName(Platform& platform);

/// The interactive user, without domain: the last owner of a shell process in session 0 that can be told,
/// else what USERNAME says. Lets the platform's failure through when the processes cannot be asked for.
[[nodiscard]] std::string GetLoggedOnUserName(Platform& platform);

/// Whether a membership record names "Administrators" in its group and the logged-on user in its member, each
/// anywhere in the text: a loose test, which only decides about a warning.
[[nodiscard]] bool IsUserAdministrator(Platform& platform);

/// Makes the toolkit's control classes available; whether that went without an error.
bool InitCommonControlClasses(Toolkit& toolkit);

}  // namespace ostrevin
