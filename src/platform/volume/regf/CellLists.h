// The sub-keys and values of a hive's keys, each list read once.
//
// A key or value is the offset of its cell here. Lists are kept, so that looking up all names of a list one
// by one costs little more than reading it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/Room.h"
#include "platform/volume/regf/SubKeysList.h"

namespace ostrevin::regf {

struct KeyNode;

class CellLists {
  public:
    CellLists(const HiveBins& bins, std::uint32_t rootCell, Room room)
        : bins_(bins), rootCell_(rootCell), room_(std::move(room)) {}

    /// The sound sub-keys, in the order of the sub-key list.
    [[nodiscard]] const std::vector<std::uint32_t>& SubKeysOf(std::uint32_t key);
    /// The sound values, in stored order.
    [[nodiscard]] const std::vector<std::uint32_t>& ValuesOf(std::uint32_t key);
    /// The first of them with a name, without regard to case.
    [[nodiscard]] std::optional<std::uint32_t> FindSubKey(std::uint32_t key, std::string_view name);
    [[nodiscard]] std::optional<std::uint32_t> FindValue(std::uint32_t key, std::string_view name);
    /// The data of a value.
    [[nodiscard]] std::vector<std::byte> DataOf(std::uint32_t value);

  private:
    /// The sound cells of one list.
    struct Named {
        std::vector<std::uint32_t> cells;
        std::vector<std::uint32_t> byName;  ///< by upper-cased name; empty until the first look-up
    };
    struct SubKeys {
        std::vector<SubKeysLeaf> leaves;
        std::optional<Named> sound;  ///< read when the leaves do not suffice
    };

    [[nodiscard]] SubKeys& ListOf(std::uint32_t key);
    [[nodiscard]] Named& SoundSubKeysOf(std::uint32_t key);
    [[nodiscard]] Named& SoundValuesOf(std::uint32_t key);
    [[nodiscard]] bool IsSubKey(std::uint32_t key, std::uint32_t offset, const KeyNode& node) const;
    [[nodiscard]] std::optional<std::uint32_t> FindInSortedLeaves(std::uint32_t key, std::string_view name);

    HiveBins bins_;
    std::uint32_t rootCell_;
    Room room_;
    std::unordered_map<std::uint32_t, SubKeys> subKeys_;  // by key
    std::unordered_map<std::uint32_t, Named> values_;     // by key
    std::unordered_set<std::uint32_t> valuesWithData_;    // whose data has its room
};

}  // namespace ostrevin::regf
