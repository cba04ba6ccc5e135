// Entry point of the window program on Windows: the machine itself, or a volume.
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "controls/FailureText.h"
#include "platform/Text.h"
#include "platform/volume/VolumePlatform.h"
#include "platform/volume/windows/PictureWorker.h"
#include "platform/volume/windows/WorkerDecoder.h"
#include "platform/windows/WindowsPlatform.h"
#include "startup/Program.h"
#include "startup/WindowsCommandLine.h"
#include "startup/WindowsLibraries.h"
#include "toolkit/win32/Win32Toolkit.h"

namespace {

using ostrevin::Platform;
using ostrevin::Program;
using ostrevin::VolumePlatform;
using ostrevin::WindowsPlatform;
using ostrevin::win32::Win32Toolkit;

constexpr int kCannot = 1;
constexpr int kUsage = 2;
constexpr char kName[] = "Ostrevin";

/// Where nobody redirected it, the line goes nowhere: a window program has no console. (The runtime's streams
/// would make the program twice as large.)
void Tell(const std::string& line) {
    const std::string text = "ostrevin: " + ostrevin::PlainLine(line) + "\n";
    std::fwrite(text.data(), 1, text.size(), stderr);
}

/// The volume that is named, or the machine.
std::unique_ptr<Platform> OpenPlatform(const std::vector<std::string>& arguments,
                                       const std::function<HWND()>& mainWindow) {
    if (arguments.empty()) {
        return std::make_unique<WindowsPlatform>(mainWindow);
    }
    return VolumePlatform::Open(arguments.front(), Tell,
                                ostrevin::MakeWorkerDecoder(ostrevin::ProgramFile()));
}

}  // namespace

int main() {
    ostrevin::LoadLibrariesFromSystem();
    const std::vector<std::string> arguments = ostrevin::CommandLineArguments();
    if (const std::optional<int> result = ostrevin::RunPictureWorker(arguments)) {
        return *result;
    }
    Win32Toolkit toolkit;
    if (arguments.size() > 1) {
        toolkit.MsgBox(nullptr, "usage: ostrevin [VOLUME]", kName);
        return kUsage;
    }
    try {
        const Program* running = nullptr;
        const std::unique_ptr<Platform> platform = OpenPlatform(arguments, [&] {
            const ostrevin::frmMain* form = running == nullptr ? nullptr : running->MainWindow();
            return form == nullptr ? nullptr : Win32Toolkit::WindowOf(*form);
        });
        Program program(*platform, toolkit);
        running = &program;
        program.Main();
        return toolkit.Run();
    } catch (const std::exception& failure) {
        toolkit.MsgBox(nullptr, ostrevin::PlainLine(ostrevin::FailureText(failure)), kName);
        return kCannot;
    }
}
