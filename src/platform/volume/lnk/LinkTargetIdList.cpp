#include "platform/volume/lnk/LinkTargetIdList.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ostrevin::lnk {
namespace {

// Offsets within an item: its size (2 bytes), its class, and what the class holds.
constexpr std::size_t kClassAt = 2;

/// The bits of a class that tell what kind of item it is.
constexpr std::uint8_t kClassMask = 0x70;
constexpr std::uint8_t kDriveClass = 0x20;
constexpr std::uint8_t kFileClass = 0x30;
constexpr std::uint8_t kNetworkClass = 0x40;
constexpr std::uint8_t kRootClass = 0x1F;

using ClassId = std::array<std::uint8_t, 16>;
constexpr ClassId kMyComputer = {0xE0, 0x4F, 0xD0, 0x20, 0xEA, 0x3A, 0x69, 0x10,
                                 0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D};
constexpr ClassId kMyDocuments = {0xBA, 0x8F, 0x0D, 0x45, 0x25, 0xAD, 0xD0, 0x11,
                                  0x98, 0xA8, 0x08, 0x00, 0x36, 0x1B, 0x11, 0x03};
constexpr ClassId kNetworkPlaces = {0x60, 0x2C, 0x8D, 0x20, 0xEA, 0x3A, 0x69, 0x10,
                                    0xA2, 0xD7, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D};

ItemKind RootKind(Bytes item) {
    constexpr std::size_t kFolderAt = 4;
    const Bytes folder = From(item, kFolderAt);
    const auto is = [folder](const ClassId& id) {
        return folder.size() >= id.size() &&
               std::equal(id.begin(), id.end(), folder.begin(), [](std::uint8_t expected, std::byte found) {
                   return expected == std::to_integer<std::uint8_t>(found);
               });
    };
    return is(kMyComputer)      ? ItemKind::MyComputer
           : is(kMyDocuments)   ? ItemKind::MyDocuments
           : is(kNetworkPlaces) ? ItemKind::Network
                                : ItemKind::Other;
}

/// The long name in the extension block 0xBEEF0004, which Windows XP and later add to a file entry.
std::string LongName(Bytes item, std::size_t endOfName) {
    constexpr std::uint32_t kSignature = 0xBEEF0004;
    constexpr std::size_t kHeaderSize = 8;  // size, version, signature
    constexpr std::size_t kNameOffsetAt = 16;
    constexpr std::uint16_t kFirstName = 20;  // what an older version leaves out does not move the name
    if (item.size() < sizeof(std::uint16_t)) {
        return {};
    }
    // The last two bytes of the item tell where its extension blocks begin.
    std::size_t at = IntegerAt<std::uint16_t>(item, item.size() - sizeof(std::uint16_t));
    while (at >= endOfName && at + kHeaderSize <= item.size()) {
        const auto size = IntegerAt<std::uint16_t>(item, at);
        if (size < kHeaderSize || size > item.size() - at) {
            break;
        }
        const Bytes block = item.subspan(at, size);
        if (IntegerAt<std::uint32_t>(block, 4) == kSignature) {
            const auto name = IntegerAt<std::uint16_t>(block, kNameOffsetAt);
            return name >= kFirstName ? TerminatedUtf16(block, name) : std::string();
        }
        at += size;
    }
    return {};
}

ItemId FileEntry(Bytes item, const AnsiDecoder& decode) {
    constexpr std::size_t kNameAt = 14;
    constexpr std::uint8_t kUnicodeName = 0x4;
    const Bytes tail = From(item, kNameAt);
    const bool unicode = (IntegerAt<std::uint8_t>(item, kClassAt) & kUnicodeName) != 0;
    const auto length = unicode ? Utf16ByteLength(tail) : AnsiLength(tail);
    if (!length || *length == 0) {
        return {};
    }
    std::string name = LongName(item, kNameAt + *length);
    if (name.empty()) {
        name = unicode ? Utf16Text(tail) : AnsiText(tail, decode);
    }
    return {0, ItemKind::FileEntry, std::move(name)};
}

ItemId Drive(Bytes item, const AnsiDecoder& decode) {
    constexpr std::uint8_t kHasName = 0x1;
    if ((IntegerAt<std::uint8_t>(item, kClassAt) & kHasName) == 0) {
        return {};  // a folder of the shell below My Computer, not a drive
    }
    std::string root = TerminatedAnsi(item, kClassAt + 1, decode);
    if (root.empty()) {
        return {};
    }
    return {0, ItemKind::Drive, std::move(root)};
}

ItemId NetworkLocation(Bytes item, const AnsiDecoder& decode) {
    constexpr std::size_t kLocationAt = 5;
    std::string location = TerminatedAnsi(item, kLocationAt, decode);
    if (!location.starts_with("\\\\")) {
        location.clear();  // the whole network, a provider or a domain
    }
    return {0, ItemKind::Network, std::move(location)};
}

ItemId ReadItem(Bytes item, const AnsiDecoder& decode) {
    const auto itemClass = IntegerAt<std::uint8_t>(item, kClassAt);
    if (itemClass == kRootClass) {
        return {0, RootKind(item), {}};
    }
    switch (itemClass & kClassMask) {
        case kDriveClass:
            return Drive(item, decode);
        case kFileClass:
            return FileEntry(item, decode);
        case kNetworkClass:
            return NetworkLocation(item, decode);
        default:
            return {};
    }
}

}  // namespace

std::optional<LinkTargetIdList> ReadIdList(Bytes list, const AnsiDecoder& decode) {
    LinkTargetIdList result;
    // An item of size 0 ends the list; the end of the bytes does as well.
    while (const auto size = IntegerAt<std::uint16_t>(list, result.size)) {
        if (size <= kClassAt || size > list.size() - result.size) {
            return std::nullopt;
        }
        ItemId item = ReadItem(list.subspan(result.size, size), decode);
        item.offset = result.size;
        result.items.push_back(std::move(item));
        result.size += size;
    }
    return result;
}

}  // namespace ostrevin::lnk
