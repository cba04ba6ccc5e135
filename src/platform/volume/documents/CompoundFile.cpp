#include "platform/volume/documents/CompoundFile.h"

#include <algorithm>
#include <string_view>

#include "platform/volume/documents/FileBytes.h"

namespace ostrevin::documents {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kHeaderSize = 512;
constexpr std::uint32_t kLastSector = 0xFFFFFFFA;  // numbers above are marks, such as the end of a chain

/// The header, and the way along the chains of sectors.
class Sectors {
  public:
    explicit Sectors(InputFile& file) : file_(file), header_(BytesAt(file, 0, kHeaderSize)) {}

    [[nodiscard]] bool AreSound() const {
        return header_.size() == kHeaderSize && header_.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv) &&
               (Shift() == 9 || Shift() == 12);
    }
    [[nodiscard]] std::uint32_t FirstOfDirectory() const { return Number32(header_, 48); }
    [[nodiscard]] std::string Read(std::uint32_t sector) const {
        return BytesAt(file_, Place(sector), std::size_t{1} << Shift());
    }
    /// The sector behind another one in its chain.
    [[nodiscard]] std::uint32_t Next(std::uint32_t sector) const {
        return NumberIn(TableSector(sector / Numbers()), sector % Numbers());
    }

  private:
    [[nodiscard]] unsigned Shift() const { return Number16(header_, 30); }
    /// How many numbers a sector holds.
    [[nodiscard]] std::uint32_t Numbers() const { return std::uint32_t{1} << (Shift() - 2); }
    [[nodiscard]] std::uint64_t Place(std::uint32_t sector) const {
        return (std::uint64_t{sector} + 1) << Shift();
    }
    [[nodiscard]] std::uint32_t NumberIn(std::uint32_t sector, std::uint32_t index) const {
        const std::string number = BytesAt(file_, Place(sector) + std::uint64_t{4} * index, 4);
        return sector <= kLastSector && number.size() == 4 ? Number32(number, 0) : kLastSector + 1;
    }
    /// The sector that holds a part of the table of chains: the header lists the first ones, a chain of its
    /// own the others, whose last number in each sector leads on.
    [[nodiscard]] std::uint32_t TableSector(std::uint32_t part) const {
        constexpr std::uint32_t kInHeader = 109;
        constexpr std::uint32_t kMostSteps = 1024;  // a file of 8 GB
        if (part < kInHeader) {
            return Number32(header_, 76 + std::size_t{4} * part);
        }
        part -= kInHeader;
        const std::uint32_t perSector = Numbers() - 1;
        std::uint32_t sector = Number32(header_, 68);
        for (std::uint32_t step = 0; step < part / perSector; ++step) {
            sector = step < kMostSteps ? NumberIn(sector, perSector) : kLastSector + 1;
            if (sector > kLastSector) {
                return sector;
            }
        }
        return NumberIn(sector, part % perSector);
    }

    InputFile& file_;
    std::string header_;
};

std::string NameIn(std::string_view entry) {
    std::string name;
    const std::size_t bytes = std::min<std::size_t>(Number16(entry, 64), 64);
    for (std::size_t at = 0; at + 2 < bytes; at += 2) {
        const std::uint16_t unit = Number16(entry, at);
        name += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return name;
}

}  // namespace

std::optional<CompoundDirectory> ReadCompoundDirectory(InputFile& file) {
    constexpr int kMostSectors = 1024;
    constexpr std::size_t kEntrySize = 128;
    constexpr char kStream = 2;
    const Sectors sectors(file);
    if (!sectors.AreSound()) {
        return std::nullopt;
    }
    CompoundDirectory directory;
    std::uint32_t sector = sectors.FirstOfDirectory();
    for (int i = 0; i < kMostSectors && sector <= kLastSector; ++i, sector = sectors.Next(sector)) {
        const std::string bytes = sectors.Read(sector);
        for (std::size_t at = 0; at + kEntrySize <= bytes.size(); at += kEntrySize) {
            const std::string_view entry = std::string_view(bytes).substr(at, kEntrySize);
            if (directory.rootClass.empty()) {
                directory.rootClass = entry.substr(80, 16);
            } else if (entry[66] == kStream) {
                directory.streams.push_back(NameIn(entry));
            }
        }
    }
    return directory;
}

}  // namespace ostrevin::documents
