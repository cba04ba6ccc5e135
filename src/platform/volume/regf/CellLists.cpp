#include "platform/volume/regf/CellLists.h"

#include <algorithm>
#include <compare>
#include <string>
#include <utility>

#include "platform/Text.h"
#include "platform/volume/regf/KeyNode.h"
#include "platform/volume/regf/KeyValue.h"

namespace ostrevin::regf {
namespace {

/// The first index for which isBefore does not hold, when it holds for those below and for none above; count
/// when it holds for all.
template <typename Predicate>
std::size_t PartitionPoint(std::size_t count, Predicate isBefore) {
    std::size_t first = 0;
    while (first < count) {
        const std::size_t middle = first + (count - first) / 2;
        if (isBefore(middle)) {
            first = middle + 1;
        } else {
            count = middle;
        }
    }
    return first;
}

/// The cells of key nodes or key values by their upper-cased names; those of one name in their order.
template <typename Cell>
std::vector<std::uint32_t> SortedByName(const std::vector<std::uint32_t>& cells, const HiveBins& bins) {
    std::vector<std::pair<std::string, std::uint32_t>> named;
    named.reserve(cells.size());
    for (const std::uint32_t cell : cells) {
        named.emplace_back(UpperCase(Cell::Read(bins, cell).value_or(Cell()).name.Text()), cell);
    }
    std::ranges::stable_sort(named, {}, &std::pair<std::string, std::uint32_t>::first);
    std::vector<std::uint32_t> sorted;
    sorted.reserve(named.size());
    for (const auto& [name, cell] : named) {
        sorted.push_back(cell);
    }
    return sorted;
}

template <typename Cell, typename Named>
std::optional<std::uint32_t> FindByName(Named& named, const HiveBins& bins, std::string_view name) {
    if (named.byName.empty()) {
        named.byName = SortedByName<Cell>(named.cells, bins);
    }
    const auto compare = [&](std::size_t i) {
        return Cell::Read(bins, named.byName[i]).value_or(Cell()).name.Compare(name);
    };
    const std::size_t index =
        PartitionPoint(named.byName.size(), [&](std::size_t i) { return std::is_lt(compare(i)); });
    return index < named.byName.size() && std::is_eq(compare(index)) ? std::optional(named.byName[index])
                                                                     : std::nullopt;
}

}  // namespace

// Since a sub-key has to name its parent and is listed once, the keys are a tree, whatever the lists say.
bool CellLists::IsSubKey(std::uint32_t key, std::uint32_t offset, const KeyNode& node) const {
    return node.parent == key && offset != rootCell_;
}

const std::vector<std::uint32_t>& CellLists::SubKeysOf(std::uint32_t key) {
    return SoundSubKeysOf(key).cells;
}

const std::vector<std::uint32_t>& CellLists::ValuesOf(std::uint32_t key) {
    return SoundValuesOf(key).cells;
}

std::optional<std::uint32_t> CellLists::FindSubKey(std::uint32_t key, std::string_view name) {
    if (const auto found = FindInSortedLeaves(key, name)) {
        return found;
    }
    // A damaged list may not be sorted, and Windows' own order differs from ours in a few rare letters.
    return FindByName<KeyNode>(SoundSubKeysOf(key), bins_, name);
}

std::optional<std::uint32_t> CellLists::FindValue(std::uint32_t key, std::string_view name) {
    return FindByName<KeyValue>(SoundValuesOf(key), bins_, name);
}

std::vector<std::byte> CellLists::DataOf(std::uint32_t value) {
    const KeyValue stored = KeyValue::Read(bins_, value).value_or(KeyValue());
    if (valuesWithData_.contains(value)) {
        return stored.Data(bins_, bins_.Size());
    }
    std::vector<std::byte> data = stored.Data(bins_, room_.Left() + 1);
    if (!room_.Take(data.size())) {
        return {};
    }
    valuesWithData_.insert(value);
    return data;
}

CellLists::SubKeys& CellLists::ListOf(std::uint32_t key) {
    const auto [place, isNew] = subKeys_.try_emplace(key);
    if (isNew) {
        const KeyNode node = KeyNode::Read(bins_, key).value_or(KeyNode());
        if (node.subKeyCount != 0) {
            place->second.leaves = ReadSubKeysList(bins_, node.subKeysList, room_);
        }
    }
    return place->second;
}

CellLists::Named& CellLists::SoundSubKeysOf(std::uint32_t key) {
    SubKeys& list = ListOf(key);
    if (list.sound) {
        return *list.sound;
    }
    Named& named = list.sound.emplace();
    std::unordered_set<std::uint32_t> listed;
    for (const SubKeysLeaf& leaf : list.leaves) {
        for (std::size_t i = 0; i < leaf.Size(); ++i) {
            const std::uint32_t offset = leaf.KeyOffset(i);
            const auto node = KeyNode::Read(bins_, offset);
            if (!node || !IsSubKey(key, offset, *node) || !listed.insert(offset).second) {
                continue;
            }
            if (!room_.Take(KeyNode::kFixedSize + node->name.bytes.size())) {
                return named;
            }
            named.cells.push_back(offset);
        }
    }
    return named;
}

CellLists::Named& CellLists::SoundValuesOf(std::uint32_t key) {
    const auto [place, isNew] = values_.try_emplace(key);
    Named& named = place->second;
    if (!isNew) {
        return named;
    }
    std::unordered_set<std::uint32_t> listed;
    const Bytes offsets = KeyNode::Read(bins_, key).value_or(KeyNode()).ValuesList(bins_);
    if (!room_.Take(offsets.size())) {
        return named;
    }
    for (std::size_t at = 0; at < offsets.size(); at += sizeof(std::uint32_t)) {
        const auto offset = IntegerAt<std::uint32_t>(offsets, at);
        const auto value = KeyValue::Read(bins_, offset);
        if (!value || !listed.insert(offset).second) {
            continue;
        }
        if (!room_.Take(KeyValue::kFixedSize + value->name.bytes.size())) {
            return named;
        }
        named.cells.push_back(offset);
    }
    return named;
}

std::optional<std::uint32_t> CellLists::FindInSortedLeaves(std::uint32_t key, std::string_view name) {
    const auto isBefore = [&](std::uint32_t offset) {
        const auto node = KeyNode::Read(bins_, offset);
        return node && std::is_lt(node->name.Compare(name));
    };
    const std::vector<SubKeysLeaf>& leaves = ListOf(key).leaves;
    const std::size_t leafIndex = PartitionPoint(
        leaves.size(), [&](std::size_t i) { return isBefore(leaves[i].KeyOffset(leaves[i].Size() - 1)); });
    if (leafIndex == leaves.size()) {
        return std::nullopt;
    }
    const SubKeysLeaf& leaf = leaves[leafIndex];
    const std::size_t index =
        PartitionPoint(leaf.Size(), [&](std::size_t i) { return isBefore(leaf.KeyOffset(i)); });
    if (index == leaf.Size()) {
        return std::nullopt;
    }
    const std::uint32_t offset = leaf.KeyOffset(index);
    const auto node = KeyNode::Read(bins_, offset);
    const bool isWanted = node && IsSubKey(key, offset, *node) && std::is_eq(node->name.Compare(name));
    return isWanted ? std::optional(offset) : std::nullopt;
}

}  // namespace ostrevin::regf
