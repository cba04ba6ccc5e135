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
#include "platform/volume/documents/DocumentKind.h"

namespace ostrevin {
namespace {

// The manual in its two forms, below the program's folder.
constexpr char kManual[] = "Ostrevin Manual.chm";
constexpr char kManualPages[] = "manual/index.html";

constexpr char kRefusalName[] =
    "This file is not opened. Opened are text, office documents, PDF, pictures, sounds and films, by the "
    "endings of their names; nothing that could execute, and no archives and pages.";
constexpr char kRefusalUnreadable[] = "This is not opened: it is no file that can be read.";
constexpr char kRefusalExecutes[] =
    "This file is not opened: whatever its name says, its content could execute.";
constexpr char kRefusalMarkup[] =
    "This file is not opened: whatever its name says, its content is a page or a drawing (HTML, XML), which "
    "can load things from elsewhere.";
constexpr char kRefusalArchive[] =
    "This file is not opened: whatever its name says, it is an archive or has one in it, which can hold a "
    "program.";
constexpr char kRefusalContent[] = "This file is not opened: its content is not what its name says.";
constexpr char kRefusalAddress[] =
    "This address is not opened. Opened are addresses that begin with http, https or ftp and name a host, "
    "and "
    "mailto with one plain mail address.";

/// What a person is told; null for a document that may be opened.
const char* RefusalFor(documents::Verdict verdict) {
    switch (verdict) {
        case documents::Verdict::Document:
            return nullptr;
        case documents::Verdict::OtherName:
            return kRefusalName;
        case documents::Verdict::Executes:
            return kRefusalExecutes;
        case documents::Verdict::Markup:
            return kRefusalMarkup;
        case documents::Verdict::Archive:
            return kRefusalArchive;
        case documents::Verdict::OtherContent:
            return kRefusalContent;
    }
    return kRefusalContent;
}

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
    refusal_.clear();
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
    return permitted ? HandOver(*permitted) : Refuse(kRefusalAddress);
}

int VolumeOpener::OpenFromVolume(const std::string& path) {
    const std::optional<std::string> place = files_.HostPath(path);
    if (!place) {
        return kOpenFileNotFound;
    }
    if (!documents::IsDocumentName(*place)) {
        return Refuse(kRefusalName);
    }
    std::int32_t result = kSuccess;
    const std::unique_ptr<InputFile> file = files_.Open(path, result);
    if (!file) {
        return Refuse(kRefusalUnreadable);
    }
    std::vector<std::byte> beginning(kTellingBytes);
    beginning.resize(file->Read(0, beginning));
    const char* refusal =
        LooksExecutable(beginning) ? kRefusalExecutes : RefusalFor(documents::Judge(*place, *file));
    return refusal == nullptr ? HandOver(*place) : Refuse(refusal);
}

int VolumeOpener::Refuse(const char* why) {
    refusal_ = why;
    return kOpenRefused;
}

int VolumeOpener::HandOver(const std::string& item) {
    return examiner_.Open(item) ? kOpened : kOpenNoOpener;
}

}  // namespace ostrevin
