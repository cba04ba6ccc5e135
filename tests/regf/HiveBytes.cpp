#include "tests/regf/HiveBytes.h"

#include <algorithm>
#include <string>

#include "tests/support/BytesFile.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/DirtyHive.h"

namespace ostrevin::regf {
namespace {

constexpr std::size_t kListHeader = 4;
constexpr std::size_t kBinsSizePlace = 40;

void AppendHex(std::string& text, const std::vector<std::byte>& data) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    for (const std::byte byte : data) {
        text += kDigits[std::to_integer<unsigned>(byte) >> 4U];
        text += kDigits[std::to_integer<unsigned>(byte) & 15U];
    }
}

}  // namespace

std::unique_ptr<Hive> OpenHive(std::vector<std::byte> primary, const LogBytes& logs,
                               const Hive::OnTrouble& onTrouble) {
    const auto file = [](const std::vector<std::byte>& bytes) {
        return bytes.empty() ? nullptr : std::make_unique<BytesFile>(bytes);
    };
    return Hive::Open(std::make_unique<BytesFile>(std::move(primary)),
                      {file(logs.log), file(logs.log1), file(logs.log2)}, onTrouble);
}

std::uint16_t HiveBytes::U16(std::size_t place) const {
    return static_cast<std::uint16_t>(std::to_integer<unsigned>(bytes_.at(place)) |
                                      std::to_integer<unsigned>(bytes_.at(place + 1)) << 8U);
}

std::uint32_t HiveBytes::U32(std::size_t place) const {
    return samples::U32At(bytes_, place);
}

void HiveBytes::PutU8(std::size_t place, std::uint8_t value) {
    bytes_.at(place) = std::byte{value};
}

void HiveBytes::PutU16(std::size_t place, std::uint16_t value) {
    PutU8(place, static_cast<std::uint8_t>(value));
    PutU8(place + 1, static_cast<std::uint8_t>(value >> 8U));
}

void HiveBytes::PutU32(std::size_t place, std::uint32_t value) {
    PutU16(place, static_cast<std::uint16_t>(value));
    PutU16(place + 2, static_cast<std::uint16_t>(value >> 16U));
}

void HiveBytes::PutText(std::size_t place, std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        PutU8(place + i, static_cast<std::uint8_t>(text[i]));
    }
}

std::uint32_t HiveBytes::SubKeyCell(std::size_t node, std::size_t n) const {
    const std::size_t list = Place(U32(node + kNodeSubKeysList));
    const bool isIndexLeaf = U16(list) == 0x696C;  // "li"
    return U32(list + kListHeader + n * (isIndexLeaf ? 4 : 8));
}

std::uint32_t HiveBytes::ValueCell(std::size_t node, std::size_t n) const {
    return U32(Place(U32(node + kNodeValuesList)) + 4 * n);
}

std::uint32_t HiveBytes::AddCell(std::vector<std::byte> data) {
    constexpr std::size_t kHeader = 32;
    constexpr std::size_t kUnit = 4096;
    const std::uint32_t binsSize = U32(kBinsSizePlace);
    const std::size_t cellSize = (4 + data.size() + 7) / 8 * 8;
    const std::size_t size = (kHeader + cellSize + kUnit - 1) / kUnit * kUnit;
    samples::ByteBuffer bin;
    bin.Text("hbin");
    bin.U32(binsSize);
    bin.U32(samples::Size32(size));
    bin.PadTo(kHeader);
    bin.U32(0U - samples::Size32(cellSize));
    bin.Bytes(data);
    bin.Align(8);
    bin.U32(samples::Size32(size - bin.Size()));
    bin.PadTo(size);
    bytes_.insert(bytes_.end(), bin.View().begin(), bin.View().end());
    PutU32(kBinsSizePlace, binsSize + samples::Size32(size));
    UpdateChecksum();
    return binsSize + kHeader;
}

void HiveBytes::UpdateChecksum() {
    samples::UpdateChecksum(bytes_);
}

std::vector<std::byte> ListData(std::string_view signature, std::uint16_t count,
                                const std::vector<std::uint32_t>& integers) {
    samples::ByteBuffer list;
    list.Text(signature);
    list.U16(count);
    for (const std::uint32_t integer : integers) {
        list.U32(integer);
    }
    return list.Take();
}

std::string Dump(const Hive& hive) {
    struct Place {
        Key key;
        std::string path;
    };
    std::string text;
    std::vector<Place> waiting = {{hive.Root(), hive.Root().Name()}};
    while (!waiting.empty()) {
        const auto [key, path] = waiting.back();
        waiting.pop_back();
        text += path + " class " + key.ClassName() + " written " + std::to_string(key.LastWritten()) + "\n";
        for (const Value& value : key.Values()) {
            text += path + " : " + value.Name() + " = " + std::to_string(value.Type()) + " ";
            AppendHex(text, value.Data());
            text += "\n";
        }
        for (const Key& subKey : key.SubKeys()) {
            waiting.push_back({subKey, path + "\\" + subKey.Name()});
        }
    }
    return text;
}

std::string OpenError(const std::vector<std::byte>& primary, const LogBytes& logs) {
    try {
        (void)OpenHive(primary, logs);
        return {};
    } catch (const HiveError& error) {
        return error.what();
    }
}

std::vector<std::byte> Pattern(std::size_t count) {
    std::vector<std::byte> bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::byte>(i % 251);
    }
    return bytes;
}

samples::HiveKey SmallHive() {
    samples::HiveKey root;
    root.name = "Root";
    root.SetString("", "default");
    root.SetDword("Number", 42);
    root.SetBinary("Big", Pattern(40000));
    samples::HiveKey& software = root.Key("Software");
    software.className = "Shell";
    software.SetString("Text", "some text");
    root.Key("Alpha\\Beta\\Gamma").SetBinary("Bytes", Pattern(100));
    root.Key("\u0416\u0443\u043A");
    return root;
}

}  // namespace ostrevin::regf
