// What the tests of shell links have in common.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Text.h"
#include "platform/volume/lnk/Shortcut.h"
#include "tools/writers/LinkWriter.h"

namespace ostrevin::lnk {

/// A host whose code page is ISO 8859-1, with one variable and its special folders under C:\Home.
inline ShellHost TestHost() {
    ShellHost host;
    host.decodeAnsi = [](std::string_view bytes) { return Latin1ToUtf8(bytes); };
    host.expandVariables = [](const std::string& text) {
        return ReplaceAll(text, "%windir%", "C:\\WINDOWS");
    };
    host.specialFolderPath = [](int csidl) { return "C:\\Home\\" + std::to_string(csidl); };
    return host;
}

/// The shortcut that the bytes hold; a default one when they cannot be read.
inline Shortcut ReadShortcut(Bytes bytes) {
    const ShellHost host = TestHost();
    const auto link = ReadShellLink(bytes, host.decodeAnsi);
    return link ? ResolveShortcut(*link, host) : Shortcut();
}

inline std::string TargetOf(const samples::Link& link) {
    return ReadShortcut(samples::WriteLink(link)).target;
}

/// Bytes of an item of an identifier list: numbers, then text with its NUL.
inline std::vector<std::byte> RawItem(std::initializer_list<int> head, std::string_view text = {}) {
    std::vector<std::byte> item;
    for (const int value : head) {
        item.push_back(static_cast<std::byte>(value));
    }
    for (const char character : text) {
        item.push_back(static_cast<std::byte>(character));
    }
    item.push_back(std::byte{0});
    return item;
}

/// Identifier list and local link information of a file on a fixed drive; both tell the same path.
inline samples::Link LocalLink(const std::string& path) {
    samples::Link link;
    link.items = samples::ItemsForPath(path, {});
    link.info.emplace();
    link.info->volume.emplace();
    link.info->localBasePath = path;
    return link;
}

}  // namespace ostrevin::lnk
