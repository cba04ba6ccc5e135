#include "tools/writers/LinkWriter.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "tools/writers/ByteBuffer.h"
#include "tools/writers/SampleText.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

enum LinkFlag : std::uint32_t {
    kHasItems = 0x1,
    kHasInfo = 0x2,
    kHasDescription = 0x4,
    kHasRelativePath = 0x8,
    kHasWorkingFolder = 0x10,
    kHasArguments = 0x20,
    kHasIconFile = 0x40,
    kIsUnicode = 0x80,
    kHasEnvironmentPath = 0x200,
    kHasIconEnvironmentPath = 0x4000,
};

enum BlockSignature : std::uint32_t {
    kEnvironmentBlock = 0xA0000001,
    kTrackerBlock = 0xA0000003,
    kSpecialFolderBlock = 0xA0000005,
    kIconEnvironmentBlock = 0xA0000007,
};

std::uint32_t FlagsOf(const Link& link) {
    std::uint32_t flags = link.extraFlags;
    const auto set = [&](bool present, std::uint32_t flag) { flags |= present ? flag : 0; };
    set(!link.items.empty(), kHasItems);
    set(link.info.has_value(), kHasInfo);
    set(link.description.has_value(), kHasDescription);
    set(link.relativePath.has_value(), kHasRelativePath);
    set(link.workingFolder.has_value(), kHasWorkingFolder);
    set(link.arguments.has_value(), kHasArguments);
    set(link.iconFile.has_value(), kHasIconFile);
    set(link.unicode, kIsUnicode);
    set(link.environmentPath.has_value(), kHasEnvironmentPath);
    set(link.iconEnvironmentPath.has_value(), kHasIconEnvironmentPath);
    return flags;
}

void WriteHeader(ByteBuffer& out, const Link& link) {
    out.U32(0x4C);
    out.U32(0x00021401);  // the class of shortcuts, 00021401-0000-0000-C000-000000000046
    out.U32(0);
    out.U32(0x000000C0);
    out.U32(0x46000000);
    out.U32(FlagsOf(link));
    out.U32(link.attributes);
    out.U64(link.created);
    out.U64(link.accessed);
    out.U64(link.modified);
    out.U32(link.size);
    out.U32(static_cast<std::uint32_t>(link.iconIndex));
    out.U32(link.showCommand);
    out.U16(link.hotKey);
    out.PadTo(0x4C);
}

void WriteItems(ByteBuffer& out, const std::vector<std::vector<std::byte>>& items) {
    ByteBuffer list;
    for (const std::vector<std::byte>& item : items) {
        list.U16(Size16(item.size() + 2));
        list.Bytes(item);
    }
    list.U16(0);
    out.U16(Size16(list.Size()));
    out.Bytes(list.View());
}

ByteBuffer VolumeBytes(const LinkVolume& volume) {
    ByteBuffer out;
    out.U32(0);  // the size, below
    out.U32(volume.driveType);
    out.U32(volume.serialNumber);
    if (volume.unicodeLabel) {
        out.U32(0x14);  // says that the label is the Unicode one
        out.U32(0x14);
        out.Utf16Z(ToUtf16(*volume.unicodeLabel));
    } else {
        out.U32(0x10);
        out.TextZ(volume.label);
    }
    out.PutU32(0, out.Offset());
    return out;
}

ByteBuffer NetworkBytes(const LinkNetwork& network) {
    constexpr std::uint32_t kValidDevice = 1;
    constexpr std::uint32_t kValidProvider = 2;
    const bool unicode = network.unicodeShare.has_value();
    ByteBuffer out;
    out.U32(0);  // the size, below
    out.U32((network.device ? kValidDevice : 0) | (network.provider ? kValidProvider : 0));
    out.U32(unicode ? 0x1C : 0x14);
    out.U32(0);  // the device's offset, below
    out.U32(network.provider.value_or(0));
    if (unicode) {
        out.U64(0);  // the offsets of the Unicode forms, below
    }
    out.TextZ(network.share);
    if (network.device) {
        out.PutU32(12, out.Offset());
        out.TextZ(*network.device);
    }
    if (unicode) {
        out.PutU32(20, out.Offset());
        out.Utf16Z(ToUtf16(*network.unicodeShare));
        if (network.unicodeDevice) {
            out.PutU32(24, out.Offset());
            out.Utf16Z(ToUtf16(*network.unicodeDevice));
        }
    }
    out.PutU32(0, out.Offset());
    return out;
}

ByteBuffer InfoBytes(const LinkInfo& info) {
    const bool unicode = info.unicodeLocalBasePath || info.unicodeSuffix;
    ByteBuffer out;
    out.PadTo(unicode ? 0x24 : 0x1C);
    out.PutU32(4, out.Offset());
    out.PutU32(8, (info.volume ? 1U : 0U) | (info.network ? 2U : 0U));
    if (info.volume) {
        out.PutU32(12, out.Offset());
        out.Bytes(VolumeBytes(*info.volume).View());
        out.PutU32(16, out.Offset());
        out.TextZ(info.localBasePath);
    }
    if (info.network) {
        out.PutU32(20, out.Offset());
        out.Bytes(NetworkBytes(*info.network).View());
    }
    out.PutU32(24, out.Offset());
    out.TextZ(info.suffix);
    if (unicode) {
        if (info.unicodeLocalBasePath) {
            out.PutU32(28, out.Offset());
            out.Utf16Z(ToUtf16(*info.unicodeLocalBasePath));
        }
        out.PutU32(32, out.Offset());
        out.Utf16Z(ToUtf16(info.unicodeSuffix.value_or("")));
    }
    out.PutU32(0, out.Offset());
    return out;
}

void WriteString(ByteBuffer& out, const std::optional<std::string>& text, bool unicode) {
    if (!text) {
        return;
    }
    if (unicode) {
        const std::u16string wide = ToUtf16(*text);
        out.U16(Size16(wide.size()));
        out.Utf16(wide);
    } else {
        const std::string narrow = ToWindows1252(*text);
        out.U16(Size16(narrow.size()));
        out.Text(narrow);
    }
}

// A block that holds one path of up to 259 characters, single-byte and Unicode.
void WritePathBlock(ByteBuffer& out, BlockSignature signature, const std::optional<std::string>& path) {
    constexpr std::size_t kCharacters = 260;
    if (!path) {
        return;
    }
    const std::u16string wide = ToUtf16(*path);
    if (wide.size() >= kCharacters) {
        throw std::length_error("the path does not fit its block");
    }
    ByteBuffer block;
    block.U32(8 + kCharacters + 2 * kCharacters);
    block.U32(signature);
    block.TextZ(ToWindows1252(*path));
    block.PadTo(8 + kCharacters);
    block.Utf16Z(wide);
    block.PadTo(8 + kCharacters + 2 * kCharacters);
    out.Bytes(block.View());
}

void WriteBlocks(ByteBuffer& out, const Link& link) {
    WritePathBlock(out, kEnvironmentBlock, link.environmentPath);
    WritePathBlock(out, kIconEnvironmentBlock, link.iconEnvironmentPath);
    if (link.specialFolder) {
        out.U32(0x10);
        out.U32(kSpecialFolderBlock);
        out.U32(link.specialFolder->csidl);
        out.U32(link.specialFolder->offset);
    }
    if (link.tracker) {
        ByteBuffer block;
        block.U32(0x60);
        block.U32(kTrackerBlock);
        block.U32(0x58);
        block.U32(0);
        block.Text(std::string_view(link.tracker->machine).substr(0, 15));
        block.PadTo(0x60);
        out.Bytes(block.View());
    }
    out.Bytes(link.extraBlocks);
    out.U32(0);
}

}  // namespace

std::vector<std::byte> WriteLink(const Link& link) {
    ByteBuffer out;
    WriteHeader(out, link);
    if (!link.items.empty()) {
        WriteItems(out, link.items);
    }
    if (link.info) {
        out.Bytes(InfoBytes(*link.info).View());
    }
    for (const auto* text :
         {&link.description, &link.relativePath, &link.workingFolder, &link.arguments, &link.iconFile}) {
        WriteString(out, *text, link.unicode);
    }
    WriteBlocks(out, link);
    return out.Take();
}

std::vector<std::byte> ComputerItem() {
    ByteBuffer item;
    item.U8(0x1F);
    item.U8(0x50);
    // 20D04FE0-3AEA-1069-A2D8-08002B30309D
    item.U32(0x20D04FE0);
    item.U16(0x3AEA);
    item.U16(0x1069);
    for (const int byte : {0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D}) {
        item.U8(static_cast<std::uint8_t>(byte));
    }
    return item.Take();
}

std::vector<std::byte> DriveItem(std::string_view root) {
    ByteBuffer item;
    item.U8(0x2F);
    item.TextZ(root);
    item.PadTo(23);
    return item.Take();
}

std::vector<std::byte> FileEntryItem(const FileItem& file) {
    constexpr std::uint16_t kVersionOfXp = 3;
    ByteBuffer extension;
    extension.U16(0);  // the size, below
    extension.U16(kVersionOfXp);
    extension.U32(0xBEEF0004);
    extension.U32(FatTimeOf(file.created));
    extension.U32(FatTimeOf(file.accessed));
    extension.U16(0x14);
    extension.U16(0);
    extension.Utf16Z(ToUtf16(file.name));

    ByteBuffer item;
    item.U8(file.folder ? 0x31 : 0x32);
    item.U8(0);
    item.U32(file.size);
    item.U32(FatTimeOf(file.modified));
    item.U16(file.folder ? 0x10 : 0x20);
    item.TextZ(file.shortName.empty() ? ToWindows1252(file.name) : file.shortName);
    item.Align(2);
    const std::uint16_t extensionOffset = Size16(item.Size() + 2);  // counted with the item's size field
    extension.U16(extensionOffset);
    extension.PutU16(0, Size16(extension.Size()));
    item.Bytes(extension.View());
    return item.Take();
}

std::vector<std::vector<std::byte>> ItemsForPath(std::string_view path, FileItem last) {
    std::vector<std::vector<std::byte>> items = {ComputerItem(), DriveItem(path.substr(0, 3))};
    std::string_view rest = path.substr(std::min<std::size_t>(3, path.size()));
    while (!rest.empty()) {
        const std::size_t end = rest.find('\\');
        if (end == std::string_view::npos) {
            last.name = rest;
            items.push_back(FileEntryItem(last));
            break;
        }
        FileItem folder = last;
        folder.folder = true;
        folder.name = rest.substr(0, end);
        folder.shortName.clear();
        folder.size = 0;
        items.push_back(FileEntryItem(folder));
        rest.remove_prefix(end + 1);
    }
    return items;
}

}  // namespace ostrevin::samples
