// Shell links: any bytes are read without harm, and what was read is written and read back equal.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

#include "platform/Text.h"
#include "platform/volume/lnk/ShellLinkWriter.h"

using namespace ostrevin;
using namespace ostrevin::lnk;

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

ShellHost Host() {
    ShellHost host;
    host.decodeAnsi = [](std::string_view bytes) { return Latin1ToUtf8(bytes); };
    host.specialFolderPath = [](int csidl) { return "C:\\" + std::to_string(csidl); };
    return host;
}

void RequireEqual(const Shortcut& read, const Shortcut& written) {
    Require(read.target == written.target);
    Require(written.networkTarget.empty() || read.networkTarget == written.networkTarget);
    Require(read.arguments == written.arguments);
    Require(read.workingDirectory == written.workingDirectory);
    Require(read.description == written.description);
    Require(read.iconFile == written.iconFile);
    Require(read.iconIndex == written.iconIndex);
    Require(read.showCommand == written.showCommand);
    Require(read.hotkey == written.hotkey);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ShellHost host = Host();
    const auto link = ReadShellLink(std::as_bytes(std::span(data, size)), host.decodeAnsi);
    if (!link) {
        return 0;
    }
    const Shortcut shortcut = ResolveShortcut(*link, host);
    const auto bytes = WriteShellLink(shortcut);
    if (!bytes) {
        return 0;
    }
    const auto again = ReadShellLink(*bytes, host.decodeAnsi);
    Require(again.has_value());
    RequireEqual(ResolveShortcut(*again, host), shortcut);
    return 0;
}
