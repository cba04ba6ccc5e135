// What the Linux edition says of the volume, as the window is to show it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/windows/window/Reading.h"

namespace ostrevin {

/// The members of a line, by name; numbers as their digits.
using Entry = std::map<std::string, std::string, std::less<>>;

/// Reads lines of JSON with an object each, as ostrevin-report writes them. Raises std::runtime_error for
/// others.
[[nodiscard]] std::vector<Entry> ReadJsonLines(std::string_view text);

/// A moment as ostrevin-report writes it (2009-08-04T15:22:18), in the general date form of the United
/// States.
[[nodiscard]] std::string GeneralDate(const std::string& moment);

/// The rows of an account in the list of a tab, which counts from 0.
[[nodiscard]] std::vector<Texts> RowsOf(const std::vector<Entry>& entries, const std::string& sid, int tab);

}  // namespace ostrevin
