// The entries of accounts as comma-separated values (RFC 4180): UTF-8, a row of names, then a row for each
// entry, all ended by CR LF.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "accounts/AccountList.h"
#include "platform/Platform.h"
#include "report/ReportSection.h"

namespace ostrevin {

/// Writes one section of the accounts with these indexes to a file, which is replaced if it is there. Raises
/// RuntimeError when the file cannot be written.
void WriteCsvFile(Platform& platform, AccountList& accounts, std::span<const std::int32_t> indexes,
                  ReportSection section, const std::string& path);

}  // namespace ostrevin
