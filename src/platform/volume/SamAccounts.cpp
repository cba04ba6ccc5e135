#include "platform/volume/SamAccounts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "platform/Text.h"
#include "platform/volume/VolumeRegistry.h"

namespace ostrevin {
namespace {

using Bytes = std::span<const std::byte>;

constexpr const char* kAccountDomain = "SAM\\SAM\\Domains\\Account";

// The table of a user's V: offset and length of the name, counted from the end of the table.
constexpr std::size_t kNameOffsetAt = 0x0C;
constexpr std::size_t kNameLengthAt = 0x10;
constexpr std::size_t kTableSize = 0xCC;

std::vector<std::byte> ValueV(const std::optional<regf::Key>& key) {
    const std::optional<regf::Value> value = key ? key->FindValue("V") : std::nullopt;
    return value ? value->Data() : std::vector<std::byte>();
}

/// The little-endian number at an offset, which must lie within the bytes.
std::uint32_t NumberAt(Bytes bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) {
        number = (number << 8U) | std::to_integer<std::uint32_t>(bytes[at + i]);
    }
    return number;
}

std::string EightHexDigits(std::uint32_t number) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text;
    for (unsigned shift = 32; shift > 0;) {
        shift -= 4;
        text += kDigits[(number >> shift) & 0xFU];
    }
    return text;
}

}  // namespace

const std::string& SamAccounts::MachineSid() {
    if (!machineSid_) {
        machineSid_ = ReadMachineSid();
    }
    return *machineSid_;
}

std::string SamAccounts::ReadMachineSid() const {
    // Revision 1, four sub-authorities, authority 5, and the first sub-authority, 21.
    constexpr std::array<std::byte, 12> kHead = {std::byte{1},  std::byte{4}, std::byte{}, std::byte{},
                                                 std::byte{},   std::byte{},  std::byte{}, std::byte{5},
                                                 std::byte{21}, std::byte{},  std::byte{}, std::byte{}};
    constexpr std::size_t kSidSize = 24;
    const std::vector<std::byte> v = ValueV(registry_.Find(kLocalMachine, kAccountDomain));
    if (v.size() < kSidSize) {
        return {};
    }
    const Bytes sid = Bytes(v).last(kSidSize);
    if (!std::equal(kHead.begin(), kHead.end(), sid.begin())) {
        return {};
    }
    std::string text = "S-1-5-21";
    for (std::size_t at = kHead.size(); at < kSidSize; at += 4) {
        text += '-';
        text += std::to_string(NumberAt(sid, at));
    }
    return text;
}

std::optional<std::string> SamAccounts::NameOf(std::uint32_t relativeId) const {
    const std::vector<std::byte> v = ValueV(registry_.Find(
        kLocalMachine, std::string(kAccountDomain) + "\\Users\\" + EightHexDigits(relativeId)));
    if (v.size() < kTableSize) {
        return std::nullopt;
    }
    const Bytes texts = Bytes(v).subspan(kTableSize);
    const std::uint32_t offset = NumberAt(v, kNameOffsetAt);
    const std::uint32_t length = NumberAt(v, kNameLengthAt);
    if (offset > texts.size() || length > texts.size() - offset) {
        return std::nullopt;
    }
    return Utf16ToUtf8(texts.subspan(offset, length));
}

}  // namespace ostrevin
