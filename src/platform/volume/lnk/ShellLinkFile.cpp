#include "platform/volume/lnk/ShellLinkFile.h"

#include <algorithm>
#include <cstdint>

namespace ostrevin::lnk {
namespace {

/// The structures of the file one after the other.
class Cursor {
  public:
    explicit Cursor(Bytes rest) : rest_(rest) {}

    [[nodiscard]] Bytes Rest() const { return rest_; }

    /// The next bytes; none when fewer are left.
    std::optional<Bytes> Take(std::size_t count) {
        if (count > rest_.size()) {
            return std::nullopt;
        }
        const Bytes taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }

  private:
    Bytes rest_;
};

bool TakeIdList(Cursor& cursor, const AnsiDecoder& decode, std::optional<LinkTargetIdList>& idList) {
    const auto size = cursor.Take(sizeof(std::uint16_t));
    const auto list = size ? cursor.Take(IntegerAt<std::uint16_t>(*size, 0)) : std::nullopt;
    if (list) {
        idList = ReadIdList(*list, decode);
    }
    return list.has_value();
}

bool TakeLinkInfo(Cursor& cursor, const AnsiDecoder& decode, std::optional<LinkInfo>& linkInfo) {
    // The size counts itself, so that a smaller one is only that.
    const std::size_t size = std::max<std::size_t>(IntegerAt<std::uint32_t>(cursor.Rest(), 0), 4);
    const auto info = cursor.Take(size);
    if (info) {
        linkInfo = ReadLinkInfo(*info, decode);
    }
    return info.has_value();
}

bool TakeString(Cursor& cursor, bool unicode, const AnsiDecoder& decode, std::string& text) {
    const auto count = cursor.Take(sizeof(std::uint16_t));
    const std::size_t unit = unicode ? 2 : 1;
    const auto characters = count ? cursor.Take(unit * IntegerAt<std::uint16_t>(*count, 0)) : std::nullopt;
    if (characters) {
        text = unicode ? Utf16Text(*characters) : AnsiText(*characters, decode);
    }
    return characters.has_value();
}

bool TakeStringData(Cursor& cursor, std::uint32_t flags, const AnsiDecoder& decode, StringData& strings) {
    struct Field {
        std::uint32_t flag;
        std::string StringData::*text;
    };
    constexpr Field kFields[] = {
        {kHasName, &StringData::name},
        {kHasRelativePath, &StringData::relativePath},
        {kHasWorkingDir, &StringData::workingDir},
        {kHasArguments, &StringData::arguments},
        {kHasIconLocation, &StringData::iconLocation},
    };
    const bool unicode = (flags & kIsUnicode) != 0;
    return std::ranges::all_of(kFields, [&](const Field& field) {
        return (flags & field.flag) == 0 || TakeString(cursor, unicode, decode, strings.*field.text);
    });
}

}  // namespace

std::optional<ShellLinkFile> ReadShellLink(Bytes file, const AnsiDecoder& decode) {
    const auto header = ReadShellLinkHeader(file);
    if (!header) {
        return std::nullopt;
    }
    ShellLinkFile link;
    link.header = *header;
    Cursor cursor(file.subspan(ShellLinkHeader::kSize));
    const bool sound =
        ((header->flags & kHasLinkTargetIdList) == 0 || TakeIdList(cursor, decode, link.idList)) &&
        ((header->flags & kHasLinkInfo) == 0 || TakeLinkInfo(cursor, decode, link.linkInfo)) &&
        TakeStringData(cursor, header->flags, decode, link.strings);
    if (!sound) {
        return std::nullopt;
    }
    link.extra = ReadExtraData(cursor.Rest(), decode);
    return link;
}

}  // namespace ostrevin::lnk
