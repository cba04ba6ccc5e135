#include "platform/volume/lnk/Shortcut.h"

#include <algorithm>

namespace ostrevin::lnk {
namespace {

constexpr int kCsidlPersonal = 5;
constexpr int kCsidlDesktopDirectory = 16;

std::string SpecialFolderPath(const ShellHost& host, int csidl) {
    return host.specialFolderPath ? host.specialFolderPath(csidl) : std::string();
}

std::string Expand(const ShellHost& host, const std::string& text) {
    return host.expandVariables ? host.expandVariables(text) : text;
}

/// The path of an item in a folder with this path; empty when it has none.
std::string ItemPath(const std::string& folder, const ItemId& item, const ShellHost& host) {
    switch (item.kind) {
        case ItemKind::Drive:
        case ItemKind::Network:
            return item.text;
        case ItemKind::MyDocuments:
            return SpecialFolderPath(host, kCsidlPersonal);
        case ItemKind::FileEntry:
            return folder.empty() ? std::string() : JoinPath(folder, item.text);
        case ItemKind::MyComputer:
        case ItemKind::Other:
            break;
    }
    return {};
}

/// The path of the item that the list leads to; empty when it has none.
std::string IdListPath(const LinkTargetIdList& list, const std::optional<SpecialFolder>& special,
                       const ShellHost& host) {
    if (list.items.empty()) {
        return {};
    }
    // The list begins at the desktop, so that a file entry in front is a file of its folder.
    auto item = list.items.begin();
    std::string path = SpecialFolderPath(host, kCsidlDesktopDirectory);
    if (special) {
        const std::string folder = SpecialFolderPath(host, static_cast<int>(special->csidl));
        const auto inside = std::ranges::find(list.items, special->offset, &ItemId::offset);
        if (!folder.empty() && (inside != list.items.end() || special->offset == list.size)) {
            item = inside;
            path = folder;
        }
    }
    for (; item != list.items.end(); ++item) {
        path = ItemPath(path, *item, host);
    }
    return path;
}

std::string NetworkPath(const LinkInfo& info) {
    return info.netName.empty() ? std::string() : JoinPath(info.netName, info.commonPathSuffix);
}

std::string Target(const ShellLinkFile& link, const LinkInfo& info, const ShellHost& host) {
    if (!info.localBasePath.empty()) {
        return JoinPath(info.localBasePath, info.commonPathSuffix);
    }
    if (!info.deviceName.empty()) {
        return JoinPath(info.deviceName + '\\', info.commonPathSuffix);
    }
    std::string path = NetworkPath(info);
    if (path.empty() && link.idList) {
        path = IdListPath(*link.idList, link.extra.specialFolder, host);
    }
    return path.empty() ? Expand(host, link.extra.environmentTarget) : path;
}

}  // namespace

Shortcut ResolveShortcut(const ShellLinkFile& link, const ShellHost& host) {
    const bool usesInfo = link.linkInfo && (link.header.flags & kForceNoLinkInfo) == 0;
    const LinkInfo info = usesInfo ? *link.linkInfo : LinkInfo();
    Shortcut shortcut;
    shortcut.target = Target(link, info, host);
    shortcut.networkTarget = NetworkPath(info);
    shortcut.arguments = link.strings.arguments;
    shortcut.workingDirectory = link.strings.workingDir;
    shortcut.description = link.strings.name;
    shortcut.iconFile = link.strings.iconLocation.empty() ? Expand(host, link.extra.environmentIcon)
                                                          : link.strings.iconLocation;
    shortcut.iconIndex = link.header.iconIndex;
    shortcut.showCommand = link.header.showCommand;
    shortcut.hotkey = link.header.hotKey;
    return shortcut;
}

std::string JoinPath(const std::string& base, const std::string& rest) {
    if (base.empty() || rest.empty() || base.ends_with('\\') || rest.starts_with('\\')) {
        return base + rest;
    }
    return base + '\\' + rest;
}

}  // namespace ostrevin::lnk
