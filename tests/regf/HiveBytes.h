// Changing the bytes of written hives, and comparing what is read of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/volume/regf/Hive.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin::regf {

// Offsets of fields in a key node, as in the format's documentation.
inline constexpr std::size_t kNodeParent = 16;
inline constexpr std::size_t kNodeSubKeyCount = 20;
inline constexpr std::size_t kNodeSubKeysList = 28;
inline constexpr std::size_t kNodeValueCount = 36;
inline constexpr std::size_t kNodeValuesList = 40;
inline constexpr std::size_t kNodeClassName = 48;
inline constexpr std::size_t kNodeNameLength = 72;
inline constexpr std::size_t kNodeClassLength = 74;

// And in a key value.
inline constexpr std::size_t kValueNameLength = 2;
inline constexpr std::size_t kValueDataSize = 4;
inline constexpr std::size_t kValueDataOffset = 8;

inline constexpr std::uint32_t kNowhere = 0xFFFFFFFF;

/// The bytes of the logs beside a hive; empty when there is none of that name.
struct LogBytes {
    std::vector<std::byte> log;
    std::vector<std::byte> log1;
    std::vector<std::byte> log2;
};

/// Opens the hive in these files.
std::unique_ptr<Hive> OpenHive(std::vector<std::byte> primary, const LogBytes& logs = {},
                               const Hive::OnTrouble& onTrouble = {});

/// The bytes of a hive, for a test to damage. A "cell" is an offset as the format stores it; a "place" is
/// one in the file.
class HiveBytes {
  public:
    explicit HiveBytes(std::vector<std::byte> bytes) : bytes_(std::move(bytes)) {}

    [[nodiscard]] const std::vector<std::byte>& View() const { return bytes_; }
    [[nodiscard]] std::vector<std::byte>& Change() { return bytes_; }

    [[nodiscard]] std::uint16_t U16(std::size_t place) const;
    [[nodiscard]] std::uint32_t U32(std::size_t place) const;
    void PutU8(std::size_t place, std::uint8_t value);
    void PutU16(std::size_t place, std::uint16_t value);
    void PutU32(std::size_t place, std::uint32_t value);
    void PutText(std::size_t place, std::string_view text);

    /// The place of a cell's data.
    [[nodiscard]] static std::size_t Place(std::uint32_t cell) { return samples::kBaseBlockSize + cell + 4; }
    [[nodiscard]] std::uint32_t RootCell() const { return U32(36); }
    /// The place of the root's key node.
    [[nodiscard]] std::size_t Root() const { return Place(RootCell()); }
    /// The cell of the n-th sub-key of the key node at a place; its list has to be a leaf.
    [[nodiscard]] std::uint32_t SubKeyCell(std::size_t node, std::size_t n) const;
    /// The cell of the n-th value of the key node at a place.
    [[nodiscard]] std::uint32_t ValueCell(std::size_t node, std::size_t n) const;

    /// Adds a bin with one cell of that data at the end; returns the cell.
    std::uint32_t AddCell(std::vector<std::byte> data);
    /// Gives the base block the checksum that belongs to it.
    void UpdateChecksum();

    [[nodiscard]] std::unique_ptr<Hive> Open(const LogBytes& logs = {}) const {
        return OpenHive(bytes_, logs);
    }

  private:
    std::vector<std::byte> bytes_;
};

/// The usual options, with a change.
template <typename Change>
samples::HiveOptions Options(Change change) {
    samples::HiveOptions options;
    change(options);
    return options;
}

/// A list of sub-keys: signature, count, and the 32-bit integers that follow.
std::vector<std::byte> ListData(std::string_view signature, std::uint16_t count,
                                const std::vector<std::uint32_t>& integers);

/// Everything that can be read of a hive, a line for each key and each value.
std::string Dump(const Hive& hive);

/// The names of keys or of values, separated by commas.
template <typename Named>
std::string Names(const std::vector<Named>& named) {
    std::string names;
    for (const Named& one : named) {
        names += names.empty() ? "" : ",";
        names += one.Name();
    }
    return names;
}

/// What an attempt to open says; empty when it succeeds.
std::string OpenError(const std::vector<std::byte>& primary, const LogBytes& logs = {});

/// count bytes, all different from their neighbours.
std::vector<std::byte> Pattern(std::size_t count);

/// A small hive with every kind of cell.
samples::HiveKey SmallHive();

}  // namespace ostrevin::regf
