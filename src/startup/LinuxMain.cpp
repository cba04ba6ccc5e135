// Entry point of the window program on Linux: the volume in a window of Qt.
#include <iostream>
#include <memory>
#include <optional>

#include <QApplication>
#include <QSettings>

#include "controls/FailureText.h"
#include "platform/Text.h"
#include "platform/volume/VolumePlatform.h"
#include "startup/Program.h"
#include "startup/QtPictureDecoder.h"
#include "toolkit/qt/QtPictureWorker.h"
#include "toolkit/qt/QtToolkit.h"

namespace {

using ostrevin::Program;
using ostrevin::VolumePlatform;
using ostrevin::qt::QtToolkit;

constexpr int kCannot = 1;
constexpr int kUsage = 2;
constexpr char kName[] = "Ostrevin";
constexpr char kThisProgram[] = "/proc/self/exe";

void Tell(const std::string& line) {
    std::cerr << "ostrevin: " << ostrevin::PlainLine(line) << std::endl;
}

/// Runs the program on a volume; failures are let through.
int RunOn(const std::string& volume, QtToolkit& toolkit) {
    const std::unique_ptr<VolumePlatform> platform =
        VolumePlatform::Open(volume, Tell, ostrevin::MakeQtPictureDecoder(kThisProgram));
    Program program(*platform, toolkit);
    program.Main();
    return toolkit.Run();
}

}  // namespace

int main(int count, char** arguments) {
    if (const std::optional<int> result = ostrevin::qt::RunPictureWorker(count, arguments)) {
        return *result;
    }
    QApplication application(count, arguments);
    QApplication::setApplicationName(QString::fromLatin1(kName));
    if (count > 2) {
        std::cerr << "usage: ostrevin [VOLUME]" << std::endl;
        return kUsage;
    }
    // What the file dialogs would keep of places seen could land in the evidence: they keep it nowhere.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
    QtToolkit toolkit;
    const bool chosen = count < 2;
    const std::string volume = chosen ? toolkit.ChooseFolder("Choose a Windows volume") : arguments[1];
    if (volume.empty()) {
        return 0;
    }
    try {
        return RunOn(volume, toolkit);
    } catch (const std::exception& failure) {
        Tell(ostrevin::FailureText(failure));
        if (chosen) {
            toolkit.MsgBox(nullptr, ostrevin::PlainLine(ostrevin::FailureText(failure)), kName);
        }
        return kCannot;
    }
}
