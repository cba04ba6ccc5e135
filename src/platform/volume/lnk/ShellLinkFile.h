// A shell link file (.lnk, a shortcut) in memory, read-only.
//
// Facts: "[MS-SHLLINK]: Shell Link (.LNK) Binary File Format" (public, by Microsoft), whose names the
// structures bear. Every byte is taken as hostile: a length or an offset is checked before it is used.
// Nothing here throws.
#pragma once

#include <optional>
#include <string>

#include "platform/volume/lnk/Bytes.h"
#include "platform/volume/lnk/ExtraData.h"
#include "platform/volume/lnk/LinkInfo.h"
#include "platform/volume/lnk/LinkTargetIdList.h"
#include "platform/volume/lnk/ShellLinkHeader.h"

namespace ostrevin::lnk {

/// StringData; a text that the link does not have is empty. All of it ends at the first NUL.
struct StringData {
    std::string name;  ///< NAME_STRING, the description
    std::string relativePath;
    std::string workingDir;
    std::string arguments;
    std::string iconLocation;
};

struct ShellLinkFile {
    ShellLinkHeader header;
    std::optional<LinkTargetIdList> idList;  ///< none also when it is there but broken
    std::optional<LinkInfo> linkInfo;        ///< likewise
    StringData strings;
    ExtraData extra;
};

/// None when the bytes are not a shell link, or end before its string data does. Extra data may be cut off.
[[nodiscard]] std::optional<ShellLinkFile> ReadShellLink(Bytes file, const AnsiDecoder& decode);

}  // namespace ostrevin::lnk
