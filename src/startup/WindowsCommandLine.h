// The command line of a program for Windows.
#pragma once

#include <string>
#include <vector>

namespace ostrevin {

/// The arguments, without the name of the program, in UTF-8.
[[nodiscard]] std::vector<std::string> CommandLineArguments();

}  // namespace ostrevin
