// The shortcut reader and writer over the shell's shortcut object.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Platform.h"

namespace ostrevin {

/// What a shortcut holds.
struct ShortcutFields {
    std::string target;
    std::string arguments;
    std::string workingDir;
    std::string description;
    std::string iconFile;
    std::int32_t iconIndex = 0;
    std::int32_t showCommand = 0;
    std::uint16_t hotkey = 0;
};

class cShellLinkA {
  public:
    explicit cShellLinkA(Platform& platform) : platform_(platform) {}

    [[nodiscard]] const std::string& ExeName() const { return fields_.target; }
    [[nodiscard]] const std::string& ExeArgs() const { return fields_.arguments; }
    [[nodiscard]] const std::string& WorkingDir() const { return fields_.workingDir; }
    [[nodiscard]] const std::string& Description() const { return fields_.description; }
    [[nodiscard]] const std::string& IconFile() const { return fields_.iconFile; }
    [[nodiscard]] std::int32_t IconIndex() const { return fields_.iconIndex; }
    [[nodiscard]] std::int32_t ShowCommand() const { return fields_.showCommand; }
    [[nodiscard]] std::uint16_t Hotkey() const { return fields_.hotkey; }

    /// The path of a special folder, or "".
    [[nodiscard]] std::string GetSystemFolderPath(int csidl);
    /// Writes a shortcut; false when the shell's object refuses a part of it or cannot save it.
    bool CreateLink(const std::string& linkPath, const ShortcutFields& fields);
    /// Reads a shortcut into the members, texts of at most 259 characters. A failure ends the reading at once
    /// and returns false; members not yet read keep what the shortcut before gave them.
    bool GetLinkInfo(const std::string& linkPath);

  private:
    Platform& platform_;
    ShortcutFields fields_;
};

}  // namespace ostrevin
