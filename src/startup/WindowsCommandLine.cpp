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

std::string ProgramFile() {
    std::wstring file(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()))) ==
           file.size()) {
        file.resize(file.size() * 2);
    }
    file.resize(length);
    return FromWide(file);
}

}  // namespace ostrevin
