// The entries of an account as names and values, for formats that are read by other programs.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "accounts/AccountList.h"
#include "report/ReportSection.h"

namespace ostrevin {

/// The names of an entry's members: "sid", "account" and "source", then those that the section's entries have
/// besides.
[[nodiscard]] std::span<const std::string_view> EntryMembers(ReportSection section);

/// A text, or a number.
using EntryValue = std::variant<std::string, std::int32_t>;

/// Takes the values of one entry's members. Dates are local times as the source holds them, in the form
/// 2009-08-04T15:22:18.
using TakeEntry = std::function<void(std::span<const EntryValue> values)>;

/// Hands over every entry of a section of the account with an index, in the source's order; none for an index
/// out of range.
void ForEachEntry(AccountList& accounts, std::int32_t index, ReportSection section, const TakeEntry& take);

}  // namespace ostrevin
