#include "sources/cShellLinkA.h"

#include "platform/Paths.h"

namespace ostrevin {
namespace {

constexpr std::uint32_t kBufferSize = 260;

/// Reads one text of a shortcut; the member changes only when the read succeeds.
template <typename Read>
bool ReadText(std::string& member, Read read) {
    TextBuffer buffer{kBufferSize, {}};
    if (!read(buffer)) {
        return false;
    }
    member = buffer.text.substr(0, buffer.text.find('\0'));
    return true;
}

}  // namespace

std::string cShellLinkA::GetSystemFolderPath(int csidl) {
    return GetSpecialFolderPath(platform_, csidl);
}

bool cShellLinkA::CreateLink(const std::string& linkPath, const ShortcutFields& fields) {
    const std::unique_ptr<ShellLink> link = platform_.CreateShellLink();
    const bool saved = link->SetPath(fields.target) &&
                       link->SetIconLocation(fields.iconFile, fields.iconIndex) &&
                       link->SetShowCmd(fields.showCommand) && link->SetHotkey(fields.hotkey) &&
                       link->SetWorkingDirectory(fields.workingDir) && link->SetArguments(fields.arguments) &&
                       link->SetDescription(fields.description) && link->Save(linkPath);
    if (saved) {
        fields_ = fields;
    }
    return saved;
}

bool cShellLinkA::GetLinkInfo(const std::string& linkPath) {
    if (linkPath.empty()) {
        return false;
    }
    const std::unique_ptr<ShellLink> link = platform_.CreateShellLink();
    return link->Load(linkPath) &&
           ReadText(fields_.target,
                    [&](TextBuffer& text) { return link->GetPath(text, ShellLink::kPathUnc); }) &&
           ReadText(fields_.workingDir, [&](TextBuffer& text) { return link->GetWorkingDirectory(text); }) &&
           ReadText(fields_.arguments, [&](TextBuffer& text) { return link->GetArguments(text); }) &&
           ReadText(fields_.description, [&](TextBuffer& text) { return link->GetDescription(text); }) &&
           link->GetHotkey(fields_.hotkey) &&
           ReadText(fields_.iconFile,
                    [&](TextBuffer& text) { return link->GetIconLocation(text, fields_.iconIndex); }) &&
           link->GetShowCmd(fields_.showCommand);
}

}  // namespace ostrevin
