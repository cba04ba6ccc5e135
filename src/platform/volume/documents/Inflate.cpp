#include "platform/volume/documents/Inflate.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <vector>

namespace ostrevin::documents {
namespace {

constexpr unsigned kLongestCode = 15;  // bits
constexpr std::size_t kLiterals = 288;
constexpr std::size_t kDistances = 32;

struct Damaged : std::runtime_error {
    Damaged() : std::runtime_error("damaged") {}
};

/// Bits from the lowest of each byte on.
class BitReader {
  public:
    explicit BitReader(std::string_view bytes) : bytes_(bytes) {}

    unsigned Take(unsigned count) {
        unsigned value = 0;
        for (unsigned i = 0; i < count; ++i) {
            if (at_ / 8 >= bytes_.size()) {
                throw Damaged();
            }
            const auto byte = static_cast<unsigned char>(bytes_[at_ / 8]);
            value |= ((byte >> (at_ % 8)) & 1U) << i;
            ++at_;
        }
        return value;
    }
    void SkipToByte() { at_ = (at_ + 7) / 8 * 8; }

  private:
    std::string_view bytes_;
    std::size_t at_ = 0;  // in bits
};

/// A canonical Huffman code: by the lengths of its codes, shorter ones first, equal ones by their symbols.
class Code {
  public:
    explicit Code(std::span<const std::uint8_t> lengths) {
        for (const std::uint8_t length : lengths) {
            ++counts_.at(length);
        }
        counts_[0] = 0;
        std::array<unsigned, kLongestCode + 2> starts{};
        unsigned left = 1;  // codes of this length that no shorter one takes
        for (unsigned length = 1; length <= kLongestCode; ++length) {
            left *= 2;
            if (counts_.at(length) > left) {
                throw Damaged();
            }
            left -= counts_.at(length);
            starts.at(length + 1) = starts.at(length) + counts_.at(length);
        }
        symbols_.resize(starts.back());
        for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
            if (lengths[symbol] != 0) {
                symbols_.at(starts.at(lengths[symbol])++) = static_cast<std::uint16_t>(symbol);
            }
        }
    }

    [[nodiscard]] unsigned Read(BitReader& bits) const {
        unsigned code = 0;
        unsigned first = 0;  // the first code of the length, and the place of its symbol
        unsigned place = 0;
        for (unsigned length = 1; length <= kLongestCode; ++length) {
            code |= bits.Take(1);
            const unsigned count = counts_.at(length);
            if (code < first + count) {
                return symbols_.at(place + (code - first));
            }
            place += count;
            first = (first + count) * 2;
            code *= 2;
        }
        throw Damaged();
    }

  private:
    std::array<unsigned, kLongestCode + 1> counts_{};
    std::vector<std::uint16_t> symbols_;
};

class Inflater {
  public:
    Inflater(std::string_view deflated, std::size_t most) : bits_(deflated), most_(most) {}

    std::string Run() {
        for (bool last = false; !last;) {
            last = bits_.Take(1) != 0;
            switch (bits_.Take(2)) {
                case 0:
                    TakeStored();
                    break;
                case 1:
                    TakeFixed();
                    break;
                case 2:
                    TakeDynamic();
                    break;
                default:
                    throw Damaged();
            }
        }
        return std::move(output_);
    }

  private:
    void Put(char byte) {
        if (output_.size() == most_) {
            throw Damaged();
        }
        output_ += byte;
    }

    void TakeStored() {
        bits_.SkipToByte();
        const unsigned length = bits_.Take(16);
        if ((bits_.Take(16) ^ length) != 0xFFFF) {
            throw Damaged();
        }
        for (unsigned i = 0; i < length; ++i) {
            Put(static_cast<char>(bits_.Take(8)));
        }
    }

    void TakeFixed() {
        std::array<std::uint8_t, kLiterals> literals{};
        std::fill(literals.begin(), literals.begin() + 144, std::uint8_t{8});
        std::fill(literals.begin() + 144, literals.begin() + 256, std::uint8_t{9});
        std::fill(literals.begin() + 256, literals.begin() + 280, std::uint8_t{7});
        std::fill(literals.begin() + 280, literals.end(), std::uint8_t{8});
        std::array<std::uint8_t, kDistances> distances{};
        distances.fill(5);
        TakeCoded(Code(literals), Code(distances));
    }

    void TakeDynamic() {
        constexpr std::array<std::uint8_t, 19> kOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                         11, 4,  12, 3, 13, 2, 14, 1, 15};
        const std::size_t literals = bits_.Take(5) + 257;
        const std::size_t distances = bits_.Take(5) + 1;
        const std::size_t given = bits_.Take(4) + 4;
        std::array<std::uint8_t, kOrder.size()> meta{};
        for (std::size_t i = 0; i < given; ++i) {
            meta.at(kOrder.at(i)) = static_cast<std::uint8_t>(bits_.Take(3));
        }
        const std::vector<std::uint8_t> lengths = TakeLengths(Code(meta), literals + distances);
        const std::span all(lengths);
        TakeCoded(Code(all.first(literals)), Code(all.subspan(literals)));
    }

    std::vector<std::uint8_t> TakeLengths(const Code& meta, std::size_t count) {
        constexpr unsigned kRepeatLast = 16;
        constexpr unsigned kZeros = 17;
        std::vector<std::uint8_t> lengths;
        while (lengths.size() < count) {
            const unsigned symbol = meta.Read(bits_);
            if (symbol < kRepeatLast) {
                lengths.push_back(static_cast<std::uint8_t>(symbol));
                continue;
            }
            if (symbol == kRepeatLast && lengths.empty()) {
                throw Damaged();
            }
            const std::uint8_t repeated = symbol == kRepeatLast ? lengths.back() : std::uint8_t{0};
            const unsigned times = symbol == kRepeatLast ? 3 + bits_.Take(2)
                                   : symbol == kZeros    ? 3 + bits_.Take(3)
                                                         : 11 + bits_.Take(7);
            lengths.insert(lengths.end(), times, repeated);
        }
        if (lengths.size() != count) {
            throw Damaged();
        }
        return lengths;
    }

    void TakeCoded(const Code& literals, const Code& distances) {
        constexpr unsigned kEndOfBlock = 256;
        for (unsigned symbol = 0; (symbol = literals.Read(bits_)) != kEndOfBlock;) {
            if (symbol < kEndOfBlock) {
                Put(static_cast<char>(symbol));
            } else {
                const std::size_t length = TakeLength(symbol - kEndOfBlock - 1);
                Repeat(TakeDistance(distances.Read(bits_)), length);
            }
        }
    }

    std::size_t TakeLength(unsigned symbol) {
        constexpr unsigned kLongest = 28;
        if (symbol > kLongest) {
            throw Damaged();
        }
        if (symbol == kLongest) {
            return 258;
        }
        const unsigned extra = symbol < 8 ? 0 : symbol / 4 - 1;
        return (symbol < 8 ? symbol : (4 + symbol % 4) << extra) + 3 + bits_.Take(extra);
    }

    std::size_t TakeDistance(unsigned symbol) {
        constexpr unsigned kFarthest = 29;
        if (symbol > kFarthest) {
            throw Damaged();
        }
        const unsigned extra = symbol < 4 ? 0 : symbol / 2 - 1;
        return (symbol < 4 ? symbol : (2 + symbol % 2) << extra) + 1 + bits_.Take(extra);
    }

    void Repeat(std::size_t distance, std::size_t length) {
        if (distance > output_.size()) {
            throw Damaged();
        }
        for (std::size_t i = 0; i < length; ++i) {
            Put(output_[output_.size() - distance]);
        }
    }

    BitReader bits_;
    std::size_t most_;
    std::string output_;
};

}  // namespace

std::optional<std::string> Inflate(std::string_view deflated, std::size_t most) {
    try {
        return Inflater(deflated, most).Run();
    } catch (const Damaged&) {
        return std::nullopt;
    }
}

}  // namespace ostrevin::documents
