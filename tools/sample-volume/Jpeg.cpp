// Baseline JPEG by ITU-T T.81. The code tables are flat (every symbol of a table has a code of the same
// length), which is allowed and small; files come out larger than other encoders'.
#include <array>
#include <cmath>
#include <numbers>

#include "tools/sample-volume/Pictures.h"
#include "tools/writers/ByteBuffer.h"

namespace ostrevin::samples {
namespace {

constexpr std::size_t kSide = 8;
using Block = std::array<double, kSide * kSide>;
using Levels = std::array<int, kSide * kSide>;

// Index of the n-th coefficient of the zigzag order.
constexpr std::array<std::uint8_t, 64> kZigzag = {
    0,  1,  8,  16, 9,  2,  3,  10, 17, 24, 32, 25, 18, 11, 4,  5,  12, 19, 26, 33, 40, 48,
    41, 34, 27, 20, 13, 6,  7,  14, 21, 28, 35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23,
    30, 37, 44, 51, 58, 59, 52, 45, 38, 31, 39, 46, 53, 60, 61, 54, 47, 55, 62, 63};

constexpr unsigned kSizes = 12;        // magnitudes of a DC difference: 0 to 11 bits
constexpr unsigned kAcSizes = 10;      // of an AC coefficient: 1 to 10 bits
constexpr unsigned kDcCodeLength = 4;  // 12 symbols
constexpr unsigned kAcCodeLength = 8;  // 162 symbols

int Quantizer(std::size_t index) {
    return 3 + static_cast<int>(index / kSide + index % kSide);
}

/// All AC symbols in the order of their codes: end of block, sixteen zeros, then run and size.
std::vector<std::uint8_t> AcSymbols() {
    std::vector<std::uint8_t> symbols = {0x00, 0xF0};
    for (unsigned run = 0; run < 16; ++run) {
        for (unsigned size = 1; size <= kAcSizes; ++size) {
            symbols.push_back(static_cast<std::uint8_t>(run * 16 + size));
        }
    }
    return symbols;
}

unsigned AcCode(unsigned run, unsigned size) {
    return 2 + run * kAcSizes + size - 1;
}

class BitWriter {
  public:
    void Put(unsigned value, unsigned length) {
        for (unsigned bit = length; bit > 0; --bit) {
            current_ = (current_ << 1U) | ((value >> (bit - 1)) & 1U);
            if (++count_ == 8) {
                Flush();
            }
        }
    }

    ByteBuffer Finish() {
        while (count_ != 0) {
            Put(1, 1);
        }
        return std::move(out_);
    }

  private:
    void Flush() {
        out_.U8(static_cast<std::uint8_t>(current_));
        if (current_ == 0xFF) {
            out_.U8(0);  // so that it is no marker
        }
        current_ = 0;
        count_ = 0;
    }

    ByteBuffer out_;
    unsigned current_ = 0;
    unsigned count_ = 0;
};

unsigned BitsOf(int value) {
    unsigned size = 0;
    for (auto rest = static_cast<unsigned>(std::abs(value)); rest != 0; rest >>= 1U) {
        ++size;
    }
    return size;
}

void PutMagnitude(BitWriter& bits, int value, unsigned size) {
    const int stored = value >= 0 ? value : value + (1 << size) - 1;
    bits.Put(static_cast<unsigned>(stored), size);
}

Levels Transform(const Block& block) {
    static const Block kCosines = [] {
        Block cosines{};
        for (std::size_t frequency = 0; frequency < kSide; ++frequency) {
            const double scale = frequency == 0 ? std::numbers::sqrt2 / 4 : 0.5;
            for (std::size_t place = 0; place < kSide; ++place) {
                cosines[frequency * kSide + place] =
                    scale * std::cos((2 * static_cast<double>(place) + 1) * static_cast<double>(frequency) *
                                     std::numbers::pi / 16);
            }
        }
        return cosines;
    }();
    Block rows{};
    for (std::size_t y = 0; y < kSide; ++y) {
        for (std::size_t u = 0; u < kSide; ++u) {
            for (std::size_t x = 0; x < kSide; ++x) {
                rows[y * kSide + u] += block[y * kSide + x] * kCosines[u * kSide + x];
            }
        }
    }
    Levels levels{};
    for (std::size_t v = 0; v < kSide; ++v) {
        for (std::size_t u = 0; u < kSide; ++u) {
            double sum = 0;
            for (std::size_t y = 0; y < kSide; ++y) {
                sum += rows[y * kSide + u] * kCosines[v * kSide + y];
            }
            levels[v * kSide + u] = static_cast<int>(std::lround(sum / Quantizer(v * kSide + u)));
        }
    }
    return levels;
}

void EncodeBlock(BitWriter& bits, const Levels& levels, int& lastDc) {
    const int difference = levels[0] - lastDc;
    lastDc = levels[0];
    bits.Put(BitsOf(difference), kDcCodeLength);
    PutMagnitude(bits, difference, BitsOf(difference));
    unsigned run = 0;
    for (std::size_t i = 1; i < kZigzag.size(); ++i) {
        const int level = levels[kZigzag[i]];
        if (level == 0) {
            ++run;
            continue;
        }
        for (; run >= 16; run -= 16) {
            bits.Put(1, kAcCodeLength);
        }
        bits.Put(AcCode(run, BitsOf(level)), kAcCodeLength);
        PutMagnitude(bits, level, BitsOf(level));
        run = 0;
    }
    if (run > 0) {
        bits.Put(0, kAcCodeLength);
    }
}

/// Luminance and the two chrominances of a pixel, less 128.
std::array<double, 3> Channels(const Color& color) {
    const double red = color.red;
    const double green = color.green;
    const double blue = color.blue;
    return {0.299 * red + 0.587 * green + 0.114 * blue - 128, -0.168736 * red - 0.331264 * green + 0.5 * blue,
            0.5 * red - 0.418688 * green - 0.081312 * blue};
}

ByteBuffer Scan(const Picture& picture) {
    BitWriter bits;
    std::array<int, 3> lastDc{};
    for (std::size_t top = 0; top < picture.height; top += kSide) {
        for (std::size_t left = 0; left < picture.width; left += kSide) {
            std::array<Block, 3> blocks{};
            for (std::size_t i = 0; i < kSide * kSide; ++i) {
                const std::size_t x = std::min(left + i % kSide, picture.width - 1);
                const std::size_t y = std::min(top + i / kSide, picture.height - 1);
                const std::array<double, 3> channels = Channels(picture.At(x, y));
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    blocks[channel][i] = channels[channel];
                }
            }
            for (std::size_t channel = 0; channel < 3; ++channel) {
                EncodeBlock(bits, Transform(blocks[channel]), lastDc[channel]);
            }
        }
    }
    return bits.Finish();
}

void U16BigEndian(ByteBuffer& out, std::size_t value) {
    out.U8(static_cast<std::uint8_t>(value >> 8U));
    out.U8(static_cast<std::uint8_t>(value & 0xFF));
}

void Segment(ByteBuffer& out, std::uint8_t marker, const ByteBuffer& content) {
    out.U8(0xFF);
    out.U8(marker);
    U16BigEndian(out, content.Size() + 2);
    out.Bytes(content.View());
}

void CodeTable(ByteBuffer& out, std::uint8_t id, unsigned length, const std::vector<std::uint8_t>& symbols) {
    out.U8(id);
    for (unsigned i = 1; i <= 16; ++i) {
        out.U8(i == length ? static_cast<std::uint8_t>(symbols.size()) : std::uint8_t{0});
    }
    for (const std::uint8_t symbol : symbols) {
        out.U8(symbol);
    }
}

void WriteTables(ByteBuffer& out) {
    ByteBuffer quantizers;
    quantizers.U8(0);
    for (const std::uint8_t index : kZigzag) {
        quantizers.U8(static_cast<std::uint8_t>(Quantizer(index)));
    }
    Segment(out, 0xDB, quantizers);
    std::vector<std::uint8_t> dcSymbols;
    for (std::uint8_t size = 0; size < kSizes; ++size) {
        dcSymbols.push_back(size);
    }
    ByteBuffer codes;
    CodeTable(codes, 0x00, kDcCodeLength, dcSymbols);
    CodeTable(codes, 0x10, kAcCodeLength, AcSymbols());
    Segment(out, 0xC4, codes);
}

// The orientation tag of a picture that has to be turned clockwise, by the Exif specification.
ByteBuffer TurnClockwise() {
    ByteBuffer exif;
    exif.TextZ("Exif");
    exif.U8(0);
    exif.Text("II*");  // the byte order, and the number that makes sure of it
    exif.U8(0);
    exif.U32(8);       // where the directory begins
    exif.U16(1);       // its entries
    exif.U16(0x0112);  // the orientation
    exif.U16(3);       // of 16 bits
    exif.U32(1);       // one of them
    exif.U32(6);
    exif.U32(0);  // no other directory
    return exif;
}

Picture TurnedCounterclockwise(const Picture& picture) {
    Picture turned{picture.height, picture.width, {}};
    for (std::size_t y = 0; y < turned.height; ++y) {
        for (std::size_t x = 0; x < turned.width; ++x) {
            turned.pixels.push_back(picture.At(picture.width - 1 - y, x));
        }
    }
    return turned;
}

std::vector<std::byte> Encode(const Picture& picture, bool turnClockwise) {
    ByteBuffer out;
    out.U8(0xFF);
    out.U8(0xD8);
    ByteBuffer jfif;
    jfif.TextZ("JFIF");
    U16BigEndian(jfif, 0x0101);
    jfif.U8(1);  // dots an inch
    U16BigEndian(jfif, 96);
    U16BigEndian(jfif, 96);
    jfif.U16(0);
    Segment(out, 0xE0, jfif);
    if (turnClockwise) {
        Segment(out, 0xE1, TurnClockwise());
    }
    WriteTables(out);
    ByteBuffer frame;
    frame.U8(8);
    U16BigEndian(frame, picture.height);
    U16BigEndian(frame, picture.width);
    frame.U8(3);
    ByteBuffer scan;
    scan.U8(3);
    for (std::uint8_t channel = 1; channel <= 3; ++channel) {
        frame.U8(channel);
        frame.U8(0x11);
        frame.U8(0);
        scan.U8(channel);
        scan.U8(0);
    }
    Segment(out, 0xC0, frame);
    scan.U8(0);
    scan.U8(63);
    scan.U8(0);
    Segment(out, 0xDA, scan);
    out.Bytes(Scan(picture).View());
    out.U8(0xFF);
    out.U8(0xD9);
    return out.Take();
}

}  // namespace

std::vector<std::byte> EncodeJpeg(const Picture& picture) {
    return Encode(picture, false);
}

std::vector<std::byte> EncodePhotograph(const Picture& picture) {
    return picture.height > picture.width ? Encode(TurnedCounterclockwise(picture), true)
                                          : Encode(picture, false);
}

}  // namespace ostrevin::samples
