#include "platform/volume/regf/StoredName.h"

#include <algorithm>

#include "platform/Text.h"

namespace ostrevin::regf {
namespace {

/// Takes characters off the front of a compressed name.
class CompressedCharacters {
  public:
    explicit CompressedCharacters(Bytes bytes) : bytes_(bytes) {}
    [[nodiscard]] bool AtEnd() const { return bytes_.empty(); }
    char32_t Take() {
        const auto character = std::to_integer<char32_t>(bytes_.front());
        bytes_ = bytes_.subspan(1);
        return character;
    }

  private:
    Bytes bytes_;
};

/// Takes characters off the front of a UTF-8 text.
class TextCharacters {
  public:
    explicit TextCharacters(std::string_view text) : text_(text) {}
    [[nodiscard]] bool AtEnd() const { return text_.empty(); }
    char32_t Take() { return TakeCharacter(text_); }

  private:
    std::string_view text_;
};

template <typename Characters>
std::weak_ordering CompareNoCase(Characters name, TextCharacters text) {
    while (!name.AtEnd() && !text.AtEnd()) {
        const std::weak_ordering order = UpperCase(name.Take()) <=> UpperCase(text.Take());
        if (std::is_neq(order)) {
            return order;
        }
    }
    return text.AtEnd() <=> name.AtEnd();
}

}  // namespace

std::string StoredName::Text() const {
    if (!compressed) {
        return Utf16ToUtf8(bytes);
    }
    std::string latin(bytes.size(), '\0');
    std::ranges::transform(bytes, latin.begin(), [](std::byte byte) { return std::to_integer<char>(byte); });
    const bool isAscii =
        std::ranges::none_of(bytes, [](std::byte byte) { return (byte >> 7) != std::byte{0}; });
    return isAscii ? latin : Latin1ToUtf8(latin);
}

std::uint32_t StoredName::Length() const {
    return static_cast<std::uint32_t>(compressed ? bytes.size() : bytes.size() / 2);
}

std::weak_ordering StoredName::Compare(std::string_view text) const {
    if (compressed) {
        return CompareNoCase(CompressedCharacters(bytes), TextCharacters(text));
    }
    return CompareNoCase(TextCharacters(Text()), TextCharacters(text));
}

}  // namespace ostrevin::regf
