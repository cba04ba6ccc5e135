// The shell's shortcut object over files that the caller reads and writes.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/volume/lnk/Shortcut.h"

namespace ostrevin::lnk {

class FileShellLink : public ShellLink {
  public:
    /// The bytes of a file; none when it cannot be read.
    using LoadFile = std::function<std::optional<std::vector<std::byte>>(const std::string& path)>;
    /// Writes a file; false when it cannot be written.
    using SaveFile = std::function<bool(const std::string& path, std::span<const std::byte> bytes)>;

    FileShellLink(LoadFile load, SaveFile save, ShellHost host);

    /// Replaces every value, or returns false and changes none.
    bool Load(const std::string& path) override;

    // The text calls always succeed. A text longer than the buffer is cut to what fits, between characters; a
    // buffer without room for the NUL stays as it was.
    bool GetPath(TextBuffer& path, std::uint32_t flags) override;
    bool GetWorkingDirectory(TextBuffer& folder) override;
    bool GetArguments(TextBuffer& arguments) override;
    bool GetDescription(TextBuffer& description) override;
    bool GetHotkey(std::uint16_t& hotkey) override;
    bool GetIconLocation(TextBuffer& file, std::int32_t& index) override;
    bool GetShowCmd(std::int32_t& showCommand) override;

    bool SetPath(const std::string& path) override;
    bool SetWorkingDirectory(const std::string& folder) override;
    bool SetArguments(const std::string& arguments) override;
    bool SetDescription(const std::string& description) override;
    bool SetHotkey(std::uint16_t hotkey) override;
    bool SetIconLocation(const std::string& file, std::int32_t index) override;
    bool SetShowCmd(std::int32_t showCommand) override;
    /// False also when a text is longer than the format can hold.
    bool Save(const std::string& path) override;

  private:
    LoadFile load_;
    SaveFile save_;
    ShellHost host_;
    Shortcut shortcut_;
};

}  // namespace ostrevin::lnk
