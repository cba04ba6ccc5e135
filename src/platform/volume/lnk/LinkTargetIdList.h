// LinkTargetIDList: the target as the shell's item identifiers, from the desktop down to the item.
//
// What the identifiers hold is known from public descriptions of the Windows shell item format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/volume/lnk/Bytes.h"

namespace ostrevin::lnk {

/// What an item stands for, as far as it has to do with a path.
enum class ItemKind {
    MyComputer,
    MyDocuments,
    Network,  ///< the network, or a provider, domain, server or share in it
    Drive,
    FileEntry,  ///< a file or folder in the folder before it
    Other,      ///< nothing that has a path
};

/// One ItemID.
struct ItemId {
    std::size_t offset = 0;  ///< from the first item, in bytes
    ItemKind kind = ItemKind::Other;
    /// Drive: its root ("C:\"). FileEntry: its long name, the short one when that is all there is. Network:
    /// the location ("\\server\share"), empty above the servers.
    std::string text;
};

struct LinkTargetIdList {
    std::vector<ItemId> items;
    std::size_t size = 0;  ///< of all items, in bytes; where a further item would stand
};

/// Reads the item identifiers; list is what IDListSize counts. None when an item reaches beyond the list.
[[nodiscard]] std::optional<LinkTargetIdList> ReadIdList(Bytes list, const AnsiDecoder& decode);

}  // namespace ostrevin::lnk
