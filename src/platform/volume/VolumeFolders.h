// The special folders of the machine, by CSIDL number, as the logged-on user's shell knew them.
#pragma once

#include <string>

namespace ostrevin {

class VolumeEnvironment;
class VolumeRegistry;

class VolumeFolders {
  public:
    VolumeFolders(VolumeRegistry& registry, VolumeEnvironment& environment)
        : registry_(registry), environment_(environment) {}

    /// From "Shell Folders", else from "User Shell Folders" with its variables expanded; where neither has
    /// the Recent folder (8), the History folder (34) or the Common Programs (23), where the system keeps
    /// them unless told otherwise. Empty for a folder that the registry does not
    /// tell, and for a path longer than Windows' 259 characters.
    [[nodiscard]] std::string Path(int csidl) const;

  private:
    /// As it stands in the registry, with its variables.
    [[nodiscard]] std::string StoredPath(int csidl) const;

    VolumeRegistry& registry_;
    VolumeEnvironment& environment_;
};

}  // namespace ostrevin
