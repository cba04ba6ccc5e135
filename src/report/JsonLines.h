// Accounts and entries as JSON, one object a line, for scripts and other programs.
#pragma once

#include <cstdint>
#include <ostream>

#include "accounts/AccountList.h"

namespace ostrevin {

/// One line for each account: "index", "sid", "name", "profile".
void WriteAccountLines(std::ostream& output, const AccountList& accounts);

/// One line for each entry of each source of an account, in the order of the tabs and within a source in its
/// own: "sid", "account", "source", then the source's members. Dates are local times as the source holds
/// them, in the form 2009-08-04T15:22:18.
void WriteEntryLines(std::ostream& output, AccountList& accounts, std::int32_t index);

}  // namespace ostrevin
