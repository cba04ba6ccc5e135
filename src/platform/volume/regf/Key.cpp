#include <compare>
#include <unordered_set>

#include "platform/volume/regf/Hive.h"
#include "platform/volume/regf/KeyNode.h"
#include "platform/volume/regf/KeyValue.h"
#include "platform/volume/regf/SubKeysList.h"

namespace ostrevin::regf {
namespace {

std::vector<SubKeysLeaf> Leaves(const KeyNode& node, const HiveBins& bins) {
    return node.subKeyCount == 0 ? std::vector<SubKeysLeaf>() : ReadSubKeysList(bins, node.subKeysList);
}

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

}  // namespace

// A key is only made of an offset at which a sound key node was read, and the bytes never change.
KeyNode Key::Stored() const {
    return KeyNode::Read(hive_->Bins(), offset_).value_or(KeyNode());
}

// Since a sub-key has to name its parent and is listed once, the keys are a tree, whatever the lists say.
bool Key::IsSubKey(std::uint32_t offset, const KeyNode& node) const {
    return node.parent == offset_ && offset != hive_->rootCell_;
}

std::string Key::Name() const {
    return Stored().name.Text();
}

std::uint32_t Key::NameLength() const {
    return Stored().name.Length();
}

std::string Key::ClassName() const {
    return Stored().ClassName(hive_->Bins());
}

std::uint64_t Key::LastWritten() const {
    return Stored().lastWritten;
}

std::vector<Key> Key::SubKeys() const {
    const HiveBins bins = hive_->Bins();
    std::vector<Key> keys;
    std::unordered_set<std::uint32_t> listed;
    for (const SubKeysLeaf& leaf : Leaves(Stored(), bins)) {
        for (std::size_t i = 0; i < leaf.Size(); ++i) {
            const std::uint32_t offset = leaf.KeyOffset(i);
            const auto node = KeyNode::Read(bins, offset);
            if (node && IsSubKey(offset, *node) && listed.insert(offset).second) {
                keys.push_back(Key(*hive_, offset));
            }
        }
    }
    return keys;
}

std::optional<Key> Key::FindSubKey(std::string_view name) const {
    const HiveBins bins = hive_->Bins();
    const std::vector<SubKeysLeaf> leaves = Leaves(Stored(), bins);
    const auto isBefore = [&](std::uint32_t offset) {
        const auto node = KeyNode::Read(bins, offset);
        return node && std::is_lt(node->name.Compare(name));
    };
    const auto isWanted = [&](std::uint32_t offset) {
        const auto node = KeyNode::Read(bins, offset);
        return node && IsSubKey(offset, *node) && std::is_eq(node->name.Compare(name));
    };
    const std::size_t leafIndex = PartitionPoint(
        leaves.size(), [&](std::size_t i) { return isBefore(leaves[i].KeyOffset(leaves[i].Size() - 1)); });
    if (leafIndex < leaves.size()) {
        const SubKeysLeaf& leaf = leaves[leafIndex];
        const std::size_t index =
            PartitionPoint(leaf.Size(), [&](std::size_t i) { return isBefore(leaf.KeyOffset(i)); });
        if (index < leaf.Size() && isWanted(leaf.KeyOffset(index))) {
            return Key(*hive_, leaf.KeyOffset(index));
        }
    }
    // A damaged list may not be sorted, and Windows' own order differs from ours in a few rare letters.
    for (const SubKeysLeaf& leaf : leaves) {
        for (std::size_t i = 0; i < leaf.Size(); ++i) {
            if (isWanted(leaf.KeyOffset(i))) {
                return Key(*hive_, leaf.KeyOffset(i));
            }
        }
    }
    return std::nullopt;
}

std::vector<Value> Key::Values() const {
    const HiveBins bins = hive_->Bins();
    std::vector<Value> values;
    for (const std::uint32_t offset : Stored().ValueOffsets(bins)) {
        if (KeyValue::Read(bins, offset)) {
            values.push_back(Value(*hive_, offset));
        }
    }
    return values;
}

std::optional<Value> Key::FindValue(std::string_view name) const {
    const HiveBins bins = hive_->Bins();
    for (const std::uint32_t offset : Stored().ValueOffsets(bins)) {
        const auto value = KeyValue::Read(bins, offset);
        if (value && std::is_eq(value->name.Compare(name))) {
            return Value(*hive_, offset);
        }
    }
    return std::nullopt;
}

}  // namespace ostrevin::regf
