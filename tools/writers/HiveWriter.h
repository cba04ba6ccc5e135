// Writes registry hives ("regf" primary files).
//
// Facts: "Windows registry file format specification" (public, by M. Suhanov).
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrevin::samples {

struct HiveValue {
    std::string name;  ///< UTF-8; empty for the default value
    std::uint32_t type = 0;
    std::vector<std::byte> data;
};

struct HiveKey {
    std::string name;               ///< UTF-8
    std::string className;          ///< UTF-8; empty for none
    std::uint64_t lastWritten = 0;  ///< FILETIME; 0 takes the hive's own
    std::vector<HiveValue> values;  ///< in the order in which they are stored
    std::list<HiveKey> subKeys;     ///< in any order; a list, so that references to keys stay valid

    /// The key below at a path of names separated by "\", found without regard to case, else made.
    HiveKey& Key(std::string_view path);
    /// Makes a sub-key without looking for one of that name: for large numbers of them.
    HiveKey& AddKey(std::string name);

    // Values. Set replaces the value of exactly that name, in its place; a new one comes last.
    void Set(std::string_view valueName, std::uint32_t type, std::vector<std::byte> data);
    /// Text as UTF-16 with a terminating NUL; type 1 or 2.
    void SetString(std::string_view valueName, std::string_view utf8, std::uint32_t type = 1);
    /// Type 7: each text with its NUL, and one more NUL.
    void SetMultiString(std::string_view valueName, std::span<const std::string> texts);
    void SetDword(std::string_view valueName, std::uint32_t value);
    void SetBinary(std::string_view valueName, std::vector<std::byte> data);
    /// Adds a value without looking for one of that name: for large numbers of them, and for duplicates.
    void Add(std::string valueName, std::uint32_t type, std::vector<std::byte> data);
};

/// The leaves of sub-key lists.
enum class SubKeyLeaf {
    OfVersion,  ///< what the minor version's writer makes: lf up to 4, lh from 5
    Li,
    Lf,
    Lh,
};

struct HiveOptions {
    std::uint32_t minorVersion = 5;  ///< 2 Windows 2000, 3 configuration hives of XP, 5 XP and later
    SubKeyLeaf leaf = SubKeyLeaf::OfVersion;
    /// A key with more sub-keys than this gets an index root (ri) over leaves of at most so many elements;
    /// 0 takes what fits a bin of 4096 bytes.
    std::uint32_t leafElements = 0;
    /// Names within Latin-1 are stored with one byte a character. Others are always UTF-16.
    bool compressNames = true;
    /// Data of up to 4 bytes stands in the value itself.
    bool inlineData = true;
    /// Some readers take the last four bytes of each cell of split data for no part of the data. Cells have
    /// four bytes to spare for them, unless they are to be tight.
    bool tightSegments = false;
    std::string fileName{};         ///< in the base block; UTF-8, its last 31 characters count
    std::uint64_t lastWritten = 0;  ///< FILETIME
    std::uint32_t primarySequence = 1;
    std::uint32_t secondarySequence = 1;  ///< other than the primary one: the hive is dirty
    bool wrongChecksum = false;
};

/// The bytes of a hive. Sub-keys are ordered by upper-cased name, as Windows keeps them. Data larger than
/// 16344 bytes is split (db) from minor version 4 on. Throws std::length_error for what the format cannot
/// hold.
std::vector<std::byte> WriteHive(const HiveKey& root, const HiveOptions& options);

/// The bytes of a text value: UTF-16 with a terminating NUL.
std::vector<std::byte> TextData(std::string_view utf8);

inline constexpr std::size_t kBaseBlockSize = 4096;

/// The checksum that belongs to the first 508 bytes of a base block.
std::uint32_t BaseBlockChecksum(std::span<const std::byte> baseBlock);

}  // namespace ostrevin::samples
