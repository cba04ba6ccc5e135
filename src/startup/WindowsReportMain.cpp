// Entry point of ostrevin-report on Windows: the machine itself, or a volume.
#include <windows.h>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>

#include "platform/volume/VolumePlatform.h"
#include "platform/windows/WindowsPlatform.h"
#include "startup/ReportCommand.h"
#include "startup/WindowsCommandLine.h"
#include "startup/WindowsLibraries.h"

namespace {

using ostrevin::Platform;

/// What is written is UTF-8, which a console is told as long as the program runs.
class Utf8Console {
  public:
    Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    ~Utf8Console() { SetConsoleOutputCP(before_); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

  private:
    UINT before_;  // 0 where there is no console, which then is not set
};

std::unique_ptr<Platform> OpenVolume(const std::string& volume) {
    return ostrevin::VolumePlatform::Open(
        volume, [](const std::string& line) { ostrevin::TellError(std::cerr, line); });
}

std::unique_ptr<Platform> OpenLiveMachine() {
    return std::make_unique<ostrevin::WindowsPlatform>();
}

}  // namespace

int main() {
    ostrevin::LoadLibrariesFromSystem();
    std::ios::sync_with_stdio(false);
    const Utf8Console console;
    // The bytes are the same on every host.
    _setmode(_fileno(stdout), _O_BINARY);
    const int result = ostrevin::RunReport(ostrevin::CommandLineArguments(), {OpenVolume, OpenLiveMachine},
                                           std::cout, std::cerr);
    std::cout.flush();
    return result;
}
