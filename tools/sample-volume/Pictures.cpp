#include "tools/sample-volume/Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "tools/writers/ByteBuffer.h"

namespace ostrevin::samples {
namespace {

// --- Painting. Positions are fractions of the picture, 0 to 1.

std::uint8_t Level(double value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
}

Color Mix(Color from, Color to, double part) {
    const double share = std::clamp(part, 0.0, 1.0);
    const auto mix = [&](std::uint8_t a, std::uint8_t b) { return Level(a + (b - a) * share); };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

Color SunsetAt(double x, double y) {
    constexpr double kHorizon = 0.62;
    if (y > kHorizon) {
        const bool glitter = std::abs(x - 0.5) < (y - kHorizon) * 0.4 + 0.03 && std::sin(y * 260) > 0.2;
        return glitter ? Color{255, 196, 92} : Mix({120, 60, 80}, {14, 22, 58}, (y - kHorizon) * 3);
    }
    if (std::hypot((x - 0.5) * 1.33, y - kHorizon) < 0.16) {
        return {255, 232, 150};
    }
    return Mix({38, 34, 92}, {255, 140, 66}, y / kHorizon);
}

Color MountainsAt(double x, double y) {
    const double far = 0.45 + 0.08 * std::sin(x * 9) + 0.04 * std::sin(x * 23);
    const double near = 0.68 + 0.07 * std::sin(x * 6 + 2) + 0.03 * std::sin(x * 31);
    if (y > near) {
        return Mix({52, 96, 48}, {20, 44, 24}, (y - near) * 3);
    }
    if (y > far) {
        return y < far + 0.05 ? Color{236, 240, 246} : Color{104, 116, 140};
    }
    return Mix({86, 148, 220}, {206, 228, 246}, y / far);
}

Color ChartAt(double x, double y) {
    constexpr std::array<double, 6> kHeights = {0.35, 0.5, 0.42, 0.66, 0.58, 0.8};
    const double place = (x - 0.08) / 0.86 * static_cast<double>(kHeights.size());
    if (place >= 0 && place < static_cast<double>(kHeights.size()) && place - std::floor(place) < 0.7 &&
        y < 0.9 && y > 0.9 - kHeights[static_cast<std::size_t>(place)]) {
        return {54, 96, 170};
    }
    const bool axis = (std::abs(y - 0.9) < 0.006 && x > 0.06) || (std::abs(x - 0.06) < 0.004 && y < 0.9);
    return axis ? Color{40, 40, 40} : Color{255, 255, 255};
}

Color QuiltAt(double x, double y) {
    constexpr std::array<Color, 5> kCloth = {Color{190, 54, 60}, Color{240, 206, 120}, Color{46, 110, 120},
                                             Color{250, 246, 232}, Color{120, 70, 110}};
    const auto column = static_cast<std::size_t>(x * 8);
    const auto row = static_cast<std::size_t>(y * 6);
    return kCloth[(column * 3 + row * 2 + (column * row) % 4) % kCloth.size()];
}

Color ColorAt(Scene scene, double x, double y) {
    switch (scene) {
        case Scene::Sunset:
            return SunsetAt(x, y);
        case Scene::Mountains:
            return MountainsAt(x, y);
        case Scene::Chart:
            return ChartAt(x, y);
        case Scene::Quilt:
            return QuiltAt(x, y);
    }
    return {};
}

void U32BigEndian(ByteBuffer& out, std::uint32_t value) {
    for (unsigned shift = 32; shift > 0; shift -= 8) {
        out.U8(static_cast<std::uint8_t>(value >> (shift - 8)));
    }
}

// --- PNG, by ISO/IEC 15948; the stream by RFC 1950 and 1951, in stored blocks.

std::uint32_t Crc(std::span<const std::byte> bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::byte byte : bytes) {
        crc ^= std::to_integer<std::uint32_t>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0);
        }
    }
    return ~crc;
}

std::uint32_t Adler(std::span<const std::byte> bytes) {
    constexpr std::uint32_t kPrime = 65521;
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (const std::byte byte : bytes) {
        a = (a + std::to_integer<std::uint32_t>(byte)) % kPrime;
        b = (b + a) % kPrime;
    }
    return (b << 16U) | a;
}

void Chunk(ByteBuffer& out, std::string_view type, std::span<const std::byte> data) {
    ByteBuffer checked;
    checked.Text(type);
    checked.Bytes(data);
    U32BigEndian(out, Size32(data.size()));
    out.Bytes(checked.View());
    U32BigEndian(out, Crc(checked.View()));
}

ByteBuffer StoredStream(std::span<const std::byte> data) {
    constexpr std::size_t kMost = 65535;
    ByteBuffer out;
    out.U16(0x0178);
    const std::uint32_t sum = Adler(data);
    while (!data.empty()) {
        const auto block = data.first(std::min(data.size(), kMost));
        data = data.subspan(block.size());
        out.U8(data.empty() ? 1 : 0);
        out.U16(Size16(block.size()));
        out.U16(static_cast<std::uint16_t>(~block.size()));
        out.Bytes(block);
    }
    U32BigEndian(out, sum);
    return out;
}

// --- GIF, by the GIF89a specification.

/// Packs codes of nine bits, the lowest bit first.
class CodePacker {
  public:
    void Put(std::uint32_t code) {
        bits_ |= code << count_;
        count_ += 9;
        while (count_ >= 8) {
            Flush();
        }
    }

    ByteBuffer Finish() {
        if (count_ > 0) {
            Flush();
        }
        return std::move(out_);
    }

  private:
    void Flush() {
        out_.U8(static_cast<std::uint8_t>(bits_));
        bits_ >>= 8U;
        count_ -= std::min(count_, 8U);
    }

    ByteBuffer out_;
    std::uint32_t bits_ = 0;
    unsigned count_ = 0;
};

std::uint8_t PaletteIndex(const Color& color) {
    const auto step = [](std::uint8_t level) { return (level + 25U) / 51U; };
    return static_cast<std::uint8_t>(step(color.red) * 36 + step(color.green) * 6 + step(color.blue));
}

ByteBuffer GifCodes(const Picture& picture) {
    constexpr std::uint32_t kClear = 256;
    constexpr std::uint32_t kEnd = 257;
    constexpr std::size_t kBeforeClear = 250;  // the codes keep nine bits when the table is cleared in time
    CodePacker codes;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (i % kBeforeClear == 0) {
            codes.Put(kClear);
        }
        codes.Put(PaletteIndex(picture.pixels[i]));
    }
    codes.Put(kEnd);
    return codes.Finish();
}

}  // namespace

Picture Paint(Scene scene, std::size_t width, std::size_t height) {
    Picture picture{width, height, {}};
    picture.pixels.reserve(width * height);
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            picture.pixels.push_back(ColorAt(scene,
                                             (static_cast<double>(x) + 0.5) / static_cast<double>(width),
                                             (static_cast<double>(y) + 0.5) / static_cast<double>(height)));
        }
    }
    return picture;
}

std::vector<std::byte> EncodePng(const Picture& picture) {
    ByteBuffer header;
    U32BigEndian(header, Size32(picture.width));
    U32BigEndian(header, Size32(picture.height));
    header.U8(8);  // bits of a channel
    header.U8(2);  // red, green, blue
    header.PadTo(13);
    ByteBuffer rows;
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (i % picture.width == 0) {
            rows.U8(0);  // no filter
        }
        rows.U8(picture.pixels[i].red);
        rows.U8(picture.pixels[i].green);
        rows.U8(picture.pixels[i].blue);
    }
    ByteBuffer out;
    out.U8(0x89);
    out.Text("PNG\r\n\x1A\n");
    Chunk(out, "IHDR", header.View());
    Chunk(out, "IDAT", StoredStream(rows.View()).View());
    Chunk(out, "IEND", {});
    return out.Take();
}

std::vector<std::byte> EncodeBmp(const Picture& picture) {
    constexpr std::uint32_t kHeaders = 54;
    ByteBuffer out;
    out.Text("BM");
    out.U32(0);  // the size, below
    out.U32(0);
    out.U32(kHeaders);
    out.U32(40);
    out.U32(Size32(picture.width));
    out.U32(Size32(picture.height));
    out.U16(1);
    out.U16(24);
    out.PadTo(kHeaders);
    for (std::size_t y = picture.height; y > 0; --y) {
        ByteBuffer row;
        for (std::size_t x = 0; x < picture.width; ++x) {
            const Color& color = picture.At(x, y - 1);
            row.U8(color.blue);
            row.U8(color.green);
            row.U8(color.red);
        }
        row.Align(4);
        out.Bytes(row.View());
    }
    out.PutU32(2, out.Offset());
    return out.Take();
}

std::vector<std::byte> EncodeGif(const Picture& picture) {
    ByteBuffer out;
    out.Text("GIF89a");
    out.U16(Size16(picture.width));
    out.U16(Size16(picture.height));
    out.U8(0xF7);  // a table of 256 colours
    out.U16(0);
    for (unsigned i = 0; i < 256; ++i) {
        const bool used = i < 216;
        for (const unsigned step : {i / 36, i / 6 % 6, i % 6}) {
            out.U8(static_cast<std::uint8_t>(used ? step * 51 : 0));
        }
    }
    out.U8(0x2C);
    out.U32(0);
    out.U16(Size16(picture.width));
    out.U16(Size16(picture.height));
    out.U8(0);
    out.U8(8);  // bits of a colour
    const ByteBuffer codes = GifCodes(picture);
    std::span<const std::byte> rest = codes.View();
    while (!rest.empty()) {
        const auto block = rest.first(std::min<std::size_t>(rest.size(), 255));
        out.U8(static_cast<std::uint8_t>(block.size()));
        out.Bytes(block);
        rest = rest.subspan(block.size());
    }
    out.U8(0);
    out.U8(0x3B);
    return out.Take();
}

}  // namespace ostrevin::samples
