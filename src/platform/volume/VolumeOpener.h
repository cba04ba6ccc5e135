// Opening a document or an address of the examined machine on the examiner's desktop.
#pragma once

#include <string>

namespace ostrevin {

class CharsetDecoder;
class Examiner;
class OutputFiles;
class VolumeFiles;

/// What the opening call returns; more than 32 is success.
enum OpenResult : int {
    kOpenFileNotFound = 2,
    kOpenRefused = 5,
    kOpenNoOpener = 31,
    kOpened = 33,
};

class VolumeOpener {
  public:
    VolumeOpener(const VolumeFiles& files, const OutputFiles& outputs, Examiner& examiner)
        : files_(files), outputs_(outputs), examiner_(examiner) {}

    /// Opens a document of the volume whose content is what its name says (documents/DocumentKind.h), or an
    /// address of the web or of mail; all else is refused. The decoder is for addresses of files.
    int Open(const std::string& item, const CharsetDecoder& decoder);
    /// Why the last item was refused, for a person; empty when it was not.
    [[nodiscard]] const std::string& Refusal() const { return refusal_; }
    /// Opens what the program wrote, by the path under which it did, or the manual: as a help file where the
    /// desktop has a viewer for those, else as pages.
    int OpenOwn(const std::string& file, const std::string& applicationFolder);

  private:
    [[nodiscard]] int OpenManual();
    [[nodiscard]] int OpenAddress(const std::string& address);
    [[nodiscard]] int OpenFromVolume(const std::string& path);
    [[nodiscard]] int HandOver(const std::string& item);
    [[nodiscard]] int Refuse(const char* why);

    const VolumeFiles& files_;
    const OutputFiles& outputs_;
    Examiner& examiner_;
    std::string refusal_;
};

}  // namespace ostrevin
