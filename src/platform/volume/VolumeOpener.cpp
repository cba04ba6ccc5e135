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

int VolumeOpener::Open(const std::string& item, const std::string& applicationFolder,
                       const CharsetDecoder& decoder) {
    if (item == applicationFolder + kManual) {
        return OpenManual();
    }
    if (const std::optional<std::string> place = outputs_.Find(item)) {
        return OpenHostFile(*place);
    }
    if (item.starts_with(applicationFolder)) {
        return OpenOwnFile(item, applicationFolder);
    }
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

int VolumeOpener::OpenOwnFile(const std::string& file, const std::string& applicationFolder) {
    const std::string place = examiner_.ResolvedPath(file);
    if (place.empty()) {
        return kOpenFileNotFound;
    }
    const char separator = applicationFolder.back();
    if (!place.starts_with(examiner_.ResolvedPath(applicationFolder) + separator)) {
        return kOpenRefused;
    }
    return OpenHostFile(place);
}

int VolumeOpener::OpenHostFile(const std::string& place) {
    const std::optional<std::string> beginning = ReadHostFile(place, kTellingBytes);
    return beginning && !LooksExecutable(std::as_bytes(std::span(*beginning))) ? HandOver(place)
                                                                               : kOpenRefused;
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
