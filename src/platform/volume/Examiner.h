// The person at the screen and the machine that the examination runs on, as far as an examined volume cannot
// answer: the clock, how dates are written, the program's own folder, the desktop's opener.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/volume/DateWriter.h"

namespace ostrevin {

class VolumeFiles;

class Examiner {
  public:
    /// Takes the manner of writing dates from the locale for times that the environment names. The program's
    /// folder is that of the executable, ending in the host's separator.
    Examiner();
    explicit Examiner(std::string programFolder);

    /// The present local time, to the second.
    [[nodiscard]] double Now() const;
    /// The present difference of the local time from UTC in minutes; UTC is local time plus bias.
    [[nodiscard]] std::int32_t UtcBias() const;
    [[nodiscard]] const DateWriter& Dates() const { return dates_; }

    /// The folder for the program's own files, ending in the host's separator: the program's folder; where
    /// the user cannot write there, or it belongs to the evidence, one among the user's settings, which is
    /// created. Empty when that would be in the evidence as well.
    [[nodiscard]] std::string ApplicationFolder(const VolumeFiles& evidence) const;
    /// The folder of the executable, ending in the host's separator.
    [[nodiscard]] const std::string& ProgramFolder() const { return programFolder_; }
    /// The host's path of a file with links and ".." resolved; empty when there is no such file.
    [[nodiscard]] std::string ResolvedPath(const std::string& hostPath) const;

    /// Hands a file (an absolute path of the host) or an address to the desktop's opener without waiting for
    /// it; false when there is no opener.
    bool Open(const std::string& item);
    /// Whether the desktop names a program that shows compiled help files (.chm).
    [[nodiscard]] static bool HasHelpViewer();

  private:
    void ForgetEndedOpeners();

    std::string programFolder_;
    DateWriter dates_;
    std::vector<std::int64_t> openers_;  // where they end as children of ours: those not yet seen to end
};

}  // namespace ostrevin
