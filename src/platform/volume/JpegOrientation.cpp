#include "platform/volume/JpegOrientation.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

namespace ostrevin {
namespace {

constexpr int kUpright = 1;

/// Bytes with numbers in one order; what lies beyond them is none.
class Numbers {
  public:
    Numbers(std::span<const std::byte> bytes, bool littleEndian)
        : bytes_(bytes), littleEndian_(littleEndian) {}

    [[nodiscard]] std::optional<std::uint32_t> Read(std::size_t offset, std::size_t size) const {
        if (offset > bytes_.size() || bytes_.size() - offset < size) {
            return std::nullopt;
        }
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t place = offset + (littleEndian_ ? size - 1 - i : i);
            number = (number << 8U) | std::to_integer<std::uint32_t>(bytes_[place]);
        }
        return number;
    }

  private:
    std::span<const std::byte> bytes_;
    bool littleEndian_;
};

bool StartsWith(std::span<const std::byte> bytes, std::string_view text) {
    return bytes.size() >= text.size() &&
           std::equal(text.begin(), text.end(), bytes.begin(), [](char character, std::byte byte) {
               return static_cast<std::byte>(character) == byte;
           });
}

/// The orientation in the first directory of TIFF data.
int OrientationOfTiff(std::span<const std::byte> tiff) {
    constexpr std::size_t kEntrySize = 12;
    constexpr std::uint32_t kOrientation = 0x0112;
    constexpr std::uint32_t kShort = 3;
    const bool intel = StartsWith(tiff, "II");
    if (!intel && !StartsWith(tiff, "MM")) {
        return kUpright;
    }
    const Numbers numbers(tiff, intel);
    const std::optional<std::uint32_t> directory = numbers.Read(4, 4);
    const std::optional<std::uint32_t> count =
        numbers.Read(2, 2) == 42U && directory ? numbers.Read(*directory, 2) : std::nullopt;
    for (std::uint32_t i = 0; i < count.value_or(0); ++i) {
        const std::size_t entry = std::size_t{*directory} + 2 + i * kEntrySize;
        const std::optional<std::uint32_t> value = numbers.Read(entry + 8, 2);
        if (!value) {
            break;
        }
        if (numbers.Read(entry, 2) == kOrientation) {
            const bool sound = numbers.Read(entry + 2, 2) == kShort && numbers.Read(entry + 4, 4) == 1U &&
                               *value >= 1 && *value <= 8;
            return sound ? static_cast<int>(*value) : kUpright;
        }
    }
    return kUpright;
}

}  // namespace

int JpegOrientation(std::span<const std::byte> file) {
    constexpr std::string_view kExif("Exif\0\0", 6);
    constexpr std::uint32_t kStart = 0xFFD8;
    constexpr std::uint32_t kApplication1 = 0xFFE1;
    constexpr std::uint32_t kStartOfScan = 0xFFDA;
    const Numbers numbers(file, false);
    if (numbers.Read(0, 2) != kStart) {
        return kUpright;
    }
    for (std::size_t place = 2;;) {
        const std::uint32_t marker = numbers.Read(place, 2).value_or(0);
        const std::uint32_t length = numbers.Read(place + 2, 2).value_or(0);  // its own two bytes included
        if (marker < 0xFF00 || marker == kStartOfScan || length < 2 || file.size() - place - 2 < length) {
            return kUpright;
        }
        const std::span<const std::byte> segment = file.subspan(place + 4, length - 2);
        if (marker == kApplication1 && StartsWith(segment, kExif)) {
            return OrientationOfTiff(segment.subspan(kExif.size()));
        }
        place += 2 + length;
    }
}

}  // namespace ostrevin
