#include "platform/volume/lnk/FileShellLink.h"

#include <utility>

#include "platform/Text.h"
#include "platform/volume/lnk/ShellLinkWriter.h"

namespace ostrevin::lnk {
namespace {

bool Store(TextBuffer& buffer, const std::string& text) {
    if (buffer.capacity > 0) {
        buffer.text = Beginning(text, buffer.capacity - 1);
    }
    return true;
}

}  // namespace

FileShellLink::FileShellLink(LoadFile load, SaveFile save, ShellHost host)
    : load_(std::move(load)), save_(std::move(save)), host_(std::move(host)) {}

bool FileShellLink::Load(const std::string& path) {
    const auto bytes = load_(path);
    const auto link = bytes ? ReadShellLink(*bytes, host_.decodeAnsi) : std::nullopt;
    if (!link) {
        return false;
    }
    shortcut_ = ResolveShortcut(*link, host_);
    return true;
}

bool FileShellLink::GetPath(TextBuffer& path, std::uint32_t flags) {
    const bool network = (flags & kPathUnc) != 0 && !shortcut_.networkTarget.empty();
    return Store(path, network ? shortcut_.networkTarget : shortcut_.target);
}

bool FileShellLink::GetWorkingDirectory(TextBuffer& folder) {
    return Store(folder, shortcut_.workingDirectory);
}

bool FileShellLink::GetArguments(TextBuffer& arguments) {
    return Store(arguments, shortcut_.arguments);
}

bool FileShellLink::GetDescription(TextBuffer& description) {
    return Store(description, shortcut_.description);
}

bool FileShellLink::GetHotkey(std::uint16_t& hotkey) {
    hotkey = shortcut_.hotkey;
    return true;
}

bool FileShellLink::GetIconLocation(TextBuffer& file, std::int32_t& index) {
    index = shortcut_.iconIndex;
    return Store(file, shortcut_.iconFile);
}

bool FileShellLink::GetShowCmd(std::int32_t& showCommand) {
    showCommand = shortcut_.showCommand;
    return true;
}

bool FileShellLink::SetPath(const std::string& path) {
    shortcut_.target = path;
    shortcut_.networkTarget.clear();
    return true;
}

bool FileShellLink::SetWorkingDirectory(const std::string& folder) {
    shortcut_.workingDirectory = folder;
    return true;
}

bool FileShellLink::SetArguments(const std::string& arguments) {
    shortcut_.arguments = arguments;
    return true;
}

bool FileShellLink::SetDescription(const std::string& description) {
    shortcut_.description = description;
    return true;
}

bool FileShellLink::SetHotkey(std::uint16_t hotkey) {
    shortcut_.hotkey = hotkey;
    return true;
}

bool FileShellLink::SetIconLocation(const std::string& file, std::int32_t index) {
    shortcut_.iconFile = file;
    shortcut_.iconIndex = index;
    return true;
}

bool FileShellLink::SetShowCmd(std::int32_t showCommand) {
    shortcut_.showCommand = showCommand;
    return true;
}

bool FileShellLink::Save(const std::string& path) {
    const auto bytes = WriteShellLink(shortcut_);
    return bytes && save_(path, *bytes);
}

}  // namespace ostrevin::lnk
