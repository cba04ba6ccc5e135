// The files that the program writes while it examines a volume: all of them on the examiner's own disk, by
// the host's paths, none within the evidence.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"

namespace ostrevin {

class VolumeFiles;

class OutputFiles {
  public:
    explicit OutputFiles(const VolumeFiles& evidence) : evidence_(evidence) {}

    /// Creates a file, or empties the one that is there if it may be replaced; devices and pipes that
    /// somebody reads are taken as well. The path is absolute or starts in the current folder. Raises
    /// RuntimeError for all else, for a place within the evidence, and for a file that has other names, which
    /// could be there.
    std::unique_ptr<OutputFile> Create(const std::string& path, Existing existing = Existing::Replace);
    /// Whether a file of the program's own may be written at this place: it lies outside of the evidence, and
    /// is a file of one name if it is there.
    [[nodiscard]] bool MayKeep(const std::string& path) const;
    /// Makes a folder; raises RuntimeError as Create does.
    void CreateFolder(const std::string& path) const;
    /// Where the file stands that was created by exactly this path and is still there.
    [[nodiscard]] std::optional<std::string> Find(const std::string& path) const;

  private:
    [[nodiscard]] std::string PlaceOutside(const std::string& path) const;

    const VolumeFiles& evidence_;
    std::map<std::string, std::string> places_;  // of the files created so far, by the paths they were given
};

}  // namespace ostrevin
