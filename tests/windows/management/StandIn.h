// A stand-in for the management service: it answers the moniker "winmgmts:" by a script.
#pragma once

#include <windows.h>
#include <functional>
#include <oleidl.h>
#include <string>

namespace ostrevin {

/// The class that answers the moniker on every Windows.
inline constexpr CLSID kManagementClass = {
    0x172BDDF8, 0xCEEA, 0x11D1, {0x8B, 0x05, 0x00, 0x60, 0x08, 0x06, 0xD9, 0xB6}};

/// Gives the script, which is asked for at each binding. Its lines have parts that are separated by tabs:
///     moniker RESULT TEXT          how a binding ends
///     query RESULT TEXT            how a query begins; the lines below it are its answer
///     process RESULT NUMBER USER   a record whose method GetOwner ends so, returns this and tells the user
///     record NAME TEXT ...         a record with properties
///     breaks RESULT                the end of an answer, when it is a failure
/// A RESULT is in hexadecimal. Texts are compared letter by letter, and what is not in the script fails.
using ManagementScript = std::function<std::wstring()>;

/// Takes what was asked, in order: "bind TEXT", "query TEXT", "GetOwner".
using ManagementNote = std::function<void(const std::wstring&)>;

/// The object of that class. The reference to it is the caller's.
IParseDisplayName* MakeManagementClass(ManagementScript script, ManagementNote note);

}  // namespace ostrevin
