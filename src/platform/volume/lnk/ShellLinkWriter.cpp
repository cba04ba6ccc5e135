#include "platform/volume/lnk/ShellLinkWriter.h"

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Text.h"

namespace ostrevin::lnk {
namespace {

constexpr std::size_t kLargest = 0xFFFF;  // what a field of 16 bits can count

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// The bytes written so far.
class Output {
  public:
    template <std::unsigned_integral T>
    void Integer(T value) {
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            bytes_.push_back(static_cast<std::byte>((value >> (8 * i)) & 0xFFU));
        }
    }
    void U16(std::size_t value) { Integer(static_cast<std::uint16_t>(value)); }
    void U32(std::size_t value) { Integer(static_cast<std::uint32_t>(value)); }
    void Raw(std::initializer_list<std::uint8_t> values) {
        for (const std::uint8_t value : values) {
            Integer(value);
        }
    }
    void ZerosUpTo(std::size_t size) { bytes_.resize(std::max(size, bytes_.size())); }
    /// Single-byte text with its NUL; what is not ASCII becomes "?", as no code page is known here.
    void Ansi(std::string_view text) {
        while (!text.empty()) {
            const char32_t character = TakeCharacter(text);
            Integer(static_cast<std::uint8_t>(character < 0x80 ? character : U'?'));
        }
        Raw({0});
    }
    void Utf16(std::u16string_view units) {
        for (const char16_t unit : units) {
            U16(unit);
        }
    }
    void TerminatedUtf16(std::string_view text) {
        Utf16(Utf8ToUtf16(text));
        U16(0);
    }
    void Append(const Output& other) {
        bytes_.insert(bytes_.end(), other.bytes_.begin(), other.bytes_.end());
    }
    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    std::vector<std::byte> Take() { return std::move(bytes_); }

  private:
    std::vector<std::byte> bytes_;
};

bool IsDrivePath(std::string_view path) {
    const bool letter =
        !path.empty() && ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
    return letter && path.substr(1).starts_with(":\\");
}

bool IsNetworkPath(std::string_view path) {
    return path.size() > 2 && path.starts_with("\\\\");
}

/// "\\server\share" of a network path, or all of it when nothing follows.
std::string_view ShareOf(std::string_view path) {
    const std::size_t share = path.find('\\', 2);
    return path.substr(0, share == std::string_view::npos ? share : path.find('\\', share + 1));
}

/// The link information that gives both paths back.
LinkInfo Locate(const Shortcut& shortcut) {
    const std::string& target = shortcut.target;
    LinkInfo whole;
    whole.netName = shortcut.networkTarget;
    if (whole.netName.empty() && IsNetworkPath(target)) {
        whole.netName = target;
    }
    if (target != whole.netName && (IsDrivePath(target) || !whole.netName.empty())) {
        whole.localBasePath = target;
    }
    const std::size_t share = ShareOf(whole.netName).size();
    if (share == whole.netName.size()) {
        return whole;
    }
    LinkInfo split = whole;
    const std::string suffix = whole.netName.substr(share + 1);
    split.commonPathSuffix = suffix;
    split.netName.resize(share);
    if (split.localBasePath.ends_with('\\' + suffix)) {
        split.localBasePath.resize(split.localBasePath.size() - suffix.size());
    }
    const bool equal =
        JoinPath(split.netName, suffix) == whole.netName &&
        (split.localBasePath.empty() || JoinPath(split.localBasePath, suffix) == whole.localBasePath);
    return equal ? split : whole;
}

/// The place where an identifier list is put together.
class IdListOutput {
  public:
    void Root(std::uint8_t sortIndex, std::initializer_list<std::uint8_t> folder) {
        Output item;
        item.Raw({0x1F, sortIndex});
        item.Raw(folder);
        Item(item);
    }

    void Drive(std::string_view root) {
        constexpr std::size_t kSize = 23;
        Output item;
        item.Raw({0x2F});
        item.Ansi(root);
        item.ZerosUpTo(kSize);
        Item(item);
    }

    void NetworkLocation(std::uint8_t itemClass, std::string_view location) {
        Output item;
        item.Raw({itemClass, 1, 0});
        item.Ansi(location);
        Item(item);
    }

    void FileEntry(std::string_view name, bool directory) {
        constexpr std::size_t kSizeField = 2;
        constexpr std::size_t kExtensionHeader = 20;
        const bool ascii = IsAscii(name);
        Output item;
        item.Raw({static_cast<std::uint8_t>((directory ? 0x31U : 0x32U) | (ascii ? 0U : 0x4U)), 0});
        item.U32(0);  // file size
        item.U32(0);  // date and time of modification
        item.U16(directory ? 0x10 : 0);
        if (ascii) {
            item.Ansi(name);
        } else {
            item.TerminatedUtf16(name);
        }
        item.ZerosUpTo(item.Size() + item.Size() % 2);
        const std::size_t extension = kSizeField + item.Size();
        Output longName;
        longName.TerminatedUtf16(name);
        item.U16(kExtensionHeader + longName.Size() + sizeof(std::uint16_t));
        item.U16(3);  // version of Windows XP
        item.U32(0xBEEF0004);
        item.U32(0);  // date and time of creation
        item.U32(0);  // date and time of access
        item.U16(kExtensionHeader);
        item.U16(0);  // no localised name
        item.Append(longName);
        item.U16(extension);
        Item(item);
    }

    /// A file entry for every component of a path; all but the last are folders.
    void FileEntries(std::string_view path) {
        while (!path.empty()) {
            const std::size_t end = path.find('\\');
            const std::string_view name = path.substr(0, end);
            if (!name.empty()) {
                FileEntry(name, end != std::string_view::npos);
            }
            path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
        }
    }

    /// The list with its size field; none when it is too long for one.
    std::optional<Output> Finish() {
        items_.U16(0);
        if (tooLong_ || items_.Size() > kLargest) {
            return std::nullopt;
        }
        Output list;
        list.U16(items_.Size());
        list.Append(items_);
        return list;
    }

  private:
    void Item(const Output& content) {
        const std::size_t size = sizeof(std::uint16_t) + content.Size();
        tooLong_ = tooLong_ || size > kLargest;
        items_.U16(size);
        items_.Append(content);
    }

    Output items_;
    bool tooLong_ = false;
};

/// The identifier list of a path on a drive or a share; none when the path is of another form, or too long.
std::optional<Output> IdListOf(std::string_view path) {
    constexpr std::size_t kDriveRoot = 3;
    IdListOutput list;
    if (IsDrivePath(path)) {
        list.Root(0x50, {0xE0, 0x4F, 0xD0, 0x20, 0xEA, 0x3A, 0x69, 0x10, 0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30,
                         0x30, 0x9D});  // My Computer
        list.Drive(path.substr(0, kDriveRoot));
        list.FileEntries(path.substr(kDriveRoot));
        return list.Finish();
    }
    const std::string_view share = ShareOf(path);
    if (!IsNetworkPath(path) || !IsAscii(share)) {
        return std::nullopt;  // a location's name is single-byte text
    }
    list.Root(0x58, {0x60, 0x2C, 0x8D, 0x20, 0xEA, 0x3A, 0x69, 0x10, 0xA2, 0xD7, 0x08, 0x00, 0x2B, 0x30, 0x30,
                     0x9D});  // My Network Places
    const std::string_view server = share.substr(0, share.find('\\', 2));
    list.NetworkLocation(0x42, server);
    if (share.size() > server.size() + 1) {
        list.NetworkLocation(0xC3, share);
    }
    list.FileEntries(path.substr(share.size()));
    return list.Finish();
}

Output CommonNetworkRelativeLink(const std::string& netName) {
    constexpr std::size_t kHeader = 0x14;
    constexpr std::size_t kUnicodeHeader = 0x1C;
    const bool unicode = !IsAscii(netName);
    const std::size_t header = unicode ? kUnicodeHeader : kHeader;
    Output name;
    name.Ansi(netName);
    const std::size_t unicodeAt = header + name.Size();
    if (unicode) {
        name.TerminatedUtf16(netName);
    }
    Output link;
    link.U32(header + name.Size());
    link.U32(2);        // ValidNetType
    link.U32(header);   // NetNameOffset
    link.U32(0);        // no device name
    link.U32(0x20000);  // WNNC_NET_LANMAN
    if (unicode) {
        link.U32(unicodeAt);
        link.U32(0);
    }
    link.Append(name);
    return link;
}

Output VolumeId() {
    Output volume;
    volume.U32(0x11);
    volume.U32(0);     // drive type: unknown
    volume.U32(0);     // serial number
    volume.U32(0x10);  // VolumeLabelOffset
    volume.Raw({0});
    return volume;
}

Output LinkInfoOf(const LinkInfo& info) {
    constexpr std::size_t kHeader = 0x1C;
    constexpr std::size_t kUnicodeHeader = 0x24;
    const bool unicode = !IsAscii(info.localBasePath) || !IsAscii(info.commonPathSuffix);
    const std::size_t header = unicode ? kUnicodeHeader : kHeader;
    const bool local = !info.localBasePath.empty();
    const bool network = !info.netName.empty();
    Output body;
    const auto place = [&](bool present, auto&& write) -> std::size_t {
        const std::size_t at = header + body.Size();
        if (present) {
            write();
        }
        return present ? at : 0;
    };
    const std::size_t volumeId = place(local, [&] { body.Append(VolumeId()); });
    const std::size_t base = place(local, [&] { body.Ansi(info.localBasePath); });
    const std::size_t link = place(network, [&] { body.Append(CommonNetworkRelativeLink(info.netName)); });
    const std::size_t suffix = place(true, [&] { body.Ansi(info.commonPathSuffix); });
    const std::size_t unicodeBase =
        place(unicode && local, [&] { body.TerminatedUtf16(info.localBasePath); });
    const std::size_t unicodeSuffix = place(unicode, [&] { body.TerminatedUtf16(info.commonPathSuffix); });
    Output out;
    out.U32(header + body.Size());
    out.U32(header);
    out.U32((local ? 1U : 0U) | (network ? 2U : 0U));
    out.U32(volumeId);
    out.U32(base);
    out.U32(link);
    out.U32(suffix);
    if (unicode) {
        out.U32(unicodeBase);
        out.U32(unicodeSuffix);
    }
    out.Append(body);
    return out;
}

/// None when the field is too narrow for the text.
std::optional<Output> EnvironmentBlock(const std::string& target) {
    constexpr std::size_t kCharacters = 260;
    constexpr std::size_t kAnsiEnd = 8 + kCharacters;
    constexpr std::size_t kSize = kAnsiEnd + 2 * kCharacters;
    if (Utf16Length(target) >= kCharacters) {
        return std::nullopt;
    }
    Output block;
    block.U32(kSize);
    block.U32(0xA0000001);
    block.Ansi(target);
    block.ZerosUpTo(kAnsiEnd);
    block.TerminatedUtf16(target);
    block.ZerosUpTo(kSize);
    return block;
}

void WriteHeader(Output& out, std::uint32_t flags, const Shortcut& shortcut) {
    constexpr std::size_t kIconIndexAt = 56;
    out.U32(ShellLinkHeader::kSize);
    for (const std::uint8_t byte : ShellLinkHeader::kClassId) {
        out.Integer(byte);
    }
    out.U32(flags);
    out.ZerosUpTo(kIconIndexAt);  // attributes, times and size of the target
    out.Integer(static_cast<std::uint32_t>(shortcut.iconIndex));
    out.Integer(static_cast<std::uint32_t>(shortcut.showCommand));
    out.Integer(shortcut.hotkey);
    out.ZerosUpTo(ShellLinkHeader::kSize);
}

/// Appends the texts that are not empty, and their flags; false when one is too long.
bool WriteStringData(Output& out, std::uint32_t& flags, const Shortcut& shortcut) {
    const std::pair<std::uint32_t, const std::string&> fields[] = {
        {kHasName, shortcut.description},
        {kHasWorkingDir, shortcut.workingDirectory},
        {kHasArguments, shortcut.arguments},
        {kHasIconLocation, shortcut.iconFile},
    };
    for (const auto& [flag, text] : fields) {
        const std::u16string units = Utf8ToUtf16(text);
        if (units.size() > kLargest) {
            return false;
        }
        if (!units.empty()) {
            flags |= flag;
            out.U16(units.size());
            out.Utf16(units);
        }
    }
    return true;
}

}  // namespace

std::optional<std::vector<std::byte>> WriteShellLink(const Shortcut& shortcut) {
    std::uint32_t flags = kIsUnicode;
    Output body;
    if (const auto idList = IdListOf(shortcut.target)) {
        flags |= kHasLinkTargetIdList;
        body.Append(*idList);
    }
    const LinkInfo info = Locate(shortcut);
    const bool located = !info.localBasePath.empty() || !info.netName.empty();
    if (located) {
        if (Utf16Length(shortcut.target) > kLargest || Utf16Length(shortcut.networkTarget) > kLargest) {
            return std::nullopt;
        }
        flags |= kHasLinkInfo;
        body.Append(LinkInfoOf(info));
    }
    if (!WriteStringData(body, flags, shortcut)) {
        return std::nullopt;
    }
    if (!located && !shortcut.target.empty()) {
        const auto block = EnvironmentBlock(shortcut.target);
        if (!block) {
            return std::nullopt;
        }
        flags |= kHasExpString;
        body.Append(*block);
    }
    body.U32(0);  // the terminal block
    Output file;
    WriteHeader(file, flags, shortcut);
    file.Append(body);
    return file.Take();
}

}  // namespace ostrevin::lnk
