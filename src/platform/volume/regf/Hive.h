// A registry hive ("regf" file), read-only. What of it is asked for is read into memory, and stays there.
//
// Facts: "Windows registry file format specification" (public, by M. Suhanov). All integers are
// little-endian. Offsets of cells are relative to the first hive bin, which stands at byte 4096 of the file.
//
// Every byte is taken as hostile: an offset or a length is checked before it is used, and what is not sound
// is absent. Nothing but Hive::Open throws, besides std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin::regf {

/// The bytes are not a hive, or not one that can be read; what() is one clear sentence without a file name.
class HiveError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// How the hive came to be as it is.
enum class Recovery {
    None,         ///< the primary file was clean
    FromLogs,     ///< it was dirty, and its logs were applied as Windows does
    DirtyNoLogs,  ///< it was dirty, no log fits, and it is read as it stands
};

/// What only shows when parts of a hive are read.
enum class Trouble {
    Unreadable,   ///< part of the file cannot be read; what stands there is absent
    Overlapping,  ///< the hive claims to hold more than its size; what is too much is absent
};

class CellLists;
class FileImage;
class Hive;
class HiveBins;
struct BaseBlock;
struct KeyNode;
struct KeyValue;

/// A value of a key. A light reference; valid as long as its hive.
class Value {
  public:
    [[nodiscard]] std::string Name() const;                   ///< UTF-8; empty for the default value
    [[nodiscard]] std::uint32_t NameLength() const;           ///< in UTF-16 code units
    [[nodiscard]] bool HasName(std::string_view name) const;  ///< without regard to case
    [[nodiscard]] std::uint32_t Type() const;
    /// The data as stored, of every layout (inline, one cell, big data). What lies outside of the hive is
    /// cut.
    [[nodiscard]] std::vector<std::byte> Data() const;

  private:
    friend class Key;
    Value(const Hive& hive, std::uint32_t offset) : hive_(&hive), offset_(offset) {}
    [[nodiscard]] KeyValue Stored() const;
    const Hive* hive_;
    std::uint32_t offset_;
};

/// A key node. A light reference; valid as long as its hive.
class Key {
  public:
    [[nodiscard]] std::string Name() const;           ///< UTF-8
    [[nodiscard]] std::uint32_t NameLength() const;   ///< in UTF-16 code units
    [[nodiscard]] std::string ClassName() const;      ///< UTF-8
    [[nodiscard]] std::uint64_t LastWritten() const;  ///< FILETIME
    /// The sound sub-keys, in the order of the sub-key list (sorted by upper-cased name).
    [[nodiscard]] std::vector<Key> SubKeys() const;
    /// The sound values, in stored order.
    [[nodiscard]] std::vector<Value> Values() const;
    /// A direct sub-key by name, without regard to case.
    [[nodiscard]] std::optional<Key> FindSubKey(std::string_view name) const;
    /// A value by name, without regard to case.
    [[nodiscard]] std::optional<Value> FindValue(std::string_view name) const;

  private:
    friend class Hive;
    Key(const Hive& hive, std::uint32_t offset) : hive_(&hive), offset_(offset) {}
    [[nodiscard]] KeyNode Stored() const;
    [[nodiscard]] bool IsSubKey(std::uint32_t offset, const KeyNode& node) const;
    const Hive* hive_;
    std::uint32_t offset_;
};

/// The transaction logs found beside a primary file; null when there is none of that name.
struct Logs {
    std::unique_ptr<InputFile> log;   ///< NAME.LOG
    std::unique_ptr<InputFile> log1;  ///< NAME.LOG1
    std::unique_ptr<InputFile> log2;  ///< NAME.LOG2
};

class Hive {
  public:
    using OnTrouble = std::function<void(Trouble)>;

    /// Takes a primary file. A large one is read as long as the hive lives, a small one at once; a dirty one
    /// is recovered in memory from its logs. Throws HiveError. Trouble may be told more than once.
    static std::unique_ptr<Hive> Open(std::unique_ptr<InputFile> primary, const Logs& logs,
                                      const OnTrouble& onTrouble = {});
    ~Hive();
    Hive(const Hive&) = delete;
    Hive& operator=(const Hive&) = delete;

    /// Whether a primary file with this beginning (512 bytes or more) needs its logs.
    [[nodiscard]] static bool IsDirty(std::span<const std::byte> baseBlock);
    /// The hive's own time of the last write (FILETIME), from the first 512 bytes; none when it is not a
    /// hive.
    [[nodiscard]] static std::optional<std::uint64_t> LastWritten(std::span<const std::byte> baseBlock);

    [[nodiscard]] Key Root() const;
    [[nodiscard]] Recovery HowRecovered() const { return recovery_; }
    /// The base block was not sound, and had to be made up from a log or from what else there is.
    [[nodiscard]] bool HadDamagedBaseBlock() const { return hadDamagedBaseBlock_; }
    /// How many bytes of the file are in memory.
    [[nodiscard]] std::size_t Held() const;

  private:
    friend class Key;
    friend class Value;
    Hive(std::unique_ptr<InputFile> file, std::unique_ptr<FileImage> image, const BaseBlock& baseBlock,
         const OnTrouble& onTrouble);
    [[nodiscard]] HiveBins Bins() const;
    [[nodiscard]] CellLists& Lists() const { return *lists_; }

    std::unique_ptr<InputFile> file_;
    std::unique_ptr<FileImage> image_;
    std::uint32_t rootCell_;
    std::uint32_t binsSize_;  ///< what the base block says; the file may be shorter
    std::uint32_t minorVersion_;
    std::unique_ptr<CellLists> lists_;
    Recovery recovery_ = Recovery::None;
    bool hadDamagedBaseBlock_ = false;
};

}  // namespace ostrevin::regf
