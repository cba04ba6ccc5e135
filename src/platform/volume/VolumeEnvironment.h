// The environment variables of the session that the logged-on user had on the machine, as far as the volume
// tells them.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "platform/volume/HiveStore.h"

namespace ostrevin {

class VolumeRegistry;

class VolumeEnvironment {
  public:
    /// windowsFolder is the machine's path of it ("C:\WINDOWS"). notice, which may be empty, hears of stored
    /// variables for which there is no room.
    VolumeEnvironment(VolumeRegistry& registry, const std::string& windowsFolder, Notice notice);

    /// Adds the variables of a user, whose hive is HKEY_CURRENT_USER; its own ones when they are asked for.
    void SetUser(const std::string& name, const std::string& profile);

    /// A variable by name, without regard to case; empty when it is not set.
    [[nodiscard]] std::string Get(std::string_view name);
    /// Replaces %NAME% where NAME is set; all else stays as it is.
    [[nodiscard]] std::string Expand(std::string_view text);

  private:
    void Set(std::string_view name, const std::string& value);
    void SetFromMachine();
    void SetStored(KeyHandle root, std::string_view path);
    [[nodiscard]] std::string ExpandKnown(std::string_view text) const;
    void Complete();

    VolumeRegistry& registry_;
    Notice notice_;
    std::map<std::string, std::string> variables_;  // by upper-cased name
    bool machineIsIn_ = false;                      // the variables that stand in the machine's hives
    bool userIsIn_ = true;                          // those that stand in the user's; without a user none
};

}  // namespace ostrevin
