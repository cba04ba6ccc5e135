#include "startup/WindowsCommandLine.h"

#include <windows.h>
#include <memory>
#include <shellapi.h>

#include "platform/volume/windows/WideText.h"

namespace ostrevin {

std::vector<std::string> CommandLineArguments() {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                              &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(FromWide(words.get()[i]));
    }
    return arguments;
}

}  // namespace ostrevin
