#include "platform/volume/VolumeOpener.h"

#include <optional>
#include <vector>

#include "platform/HostFiles.h"
#include "platform/Text.h"
#include "platform/volume/CharsetDecoder.h"
#include "platform/volume/Examiner.h"
#include "platform/volume/OpenerPolicy.h"
#include "platform/volume/OutputFiles.h"
#include "platform/volume/VolumeFiles.h"

namespace ostrevin {
namespace {

// The manual in its two forms, below the program's folder.
constexpr char kManual[] = "Ostrevin Manual.chm";
constexpr char kManualPages[] = "manual/index.html";

bool IsUtf8(std::string_view text) {
    constexpr char32_t kReplacement = 0xFFFD;
    while (!text.empty()) {
        if (TakeCharacter(text) == kReplacement) {
            return false;
        }
    }
    return true;
}

}  // namespace

int VolumeOpener::Open(const std::string& item, const CharsetDecoder& decoder) {
    const std::string scheme = SchemeOf(item);
    if (scheme.empty()) {
        return OpenFromVolume(item);
    }
    if (scheme != "file") {
        return OpenAddress(item);
    }
    const std::string path = PathOfFileAddress(item);
    return OpenFromVolume(IsUtf8(path) ? path : decoder.Decode(path));
}

int VolumeOpener::OpenOwn(const std::string& file, const std::string& applicationFolder) {
    if (file == applicationFolder + kManual) {
        return OpenManual();
    }
    const std::optional<std::string> place = outputs_.Find(file);
    if (!place) {
        return kOpenFileNotFound;
    }
    const std::optional<std::string> beginning = ReadHostFile(*place, kTellingBytes);
    return beginning && !LooksExecutable(std::as_bytes(std::span(*beginning))) ? HandOver(*place)
                                                                               : kOpenRefused;
}

/// The manual lies beside the program, also where the application folder is another one.
int VolumeOpener::OpenManual() {
    const std::string helpFile = examiner_.ResolvedPath(examiner_.ProgramFolder() + kManual);
    if (!helpFile.empty() && examiner_.HasHelpViewer()) {
        return HandOver(helpFile);
    }
    const std::string pages = examiner_.ResolvedPath(examiner_.ProgramFolder() + kManualPages);
    if (!pages.empty()) {
        return HandOver(pages);
    }
    return helpFile.empty() ? kOpenFileNotFound : kOpenNoOpener;
}

int VolumeOpener::OpenAddress(const std::string& address) {
    const std::optional<std::string> permitted = PermittedAddress(address);
    return permitted ? HandOver(*permitted) : kOpenRefused;
}

int VolumeOpener::OpenFromVolume(const std::string& path) {
    const std::optional<std::string> place = files_.HostPath(path);
    if (!place) {
        return kOpenFileNotFound;
    }
    std::int32_t result = kSuccess;
    const std::unique_ptr<InputFile> file = files_.Open(path, result);
    if (!file || !IsPassiveName(*place)) {
        return kOpenRefused;
    }
    std::vector<std::byte> beginning(kTellingBytes);
    beginning.resize(file->Read(0, beginning));
    return LooksExecutable(beginning) ? kOpenRefused : HandOver(*place);
}

int VolumeOpener::HandOver(const std::string& item) {
    return examiner_.Open(item) ? kOpened : kOpenNoOpener;
}

}  // namespace ostrevin
