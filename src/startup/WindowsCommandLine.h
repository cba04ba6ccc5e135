// The command line of a program for Windows.
#pragma once

#include <string>
#include <vector>

namespace ostrevin {

/// The arguments, without the name of the program, in UTF-8.
[[nodiscard]] std::vector<std::string> CommandLineArguments();
/// The path of the program's own file, in UTF-8.
[[nodiscard]] std::string ProgramFile();

}  // namespace ostrevin
