#include <algorithm>
#include <ranges>

#include "platform/volume/regf/Hive.h"
#include "platform/volume/regf/KeyNode.h"
#include "platform/volume/regf/KeyValue.h"
#include "platform/volume/regf/SubKeysList.h"

namespace ostrevin::regf {
namespace {

std::vector<SubKeysLeaf> Leaves(const KeyNode& node, const HiveBins& bins) {
    return node.subKeyCount == 0 ? std::vector<SubKeysLeaf>() : ReadSubKeysList(bins, node.subKeysList);
}

}  // namespace

// A key is only made of an offset at which a sound key node was read, and the bytes never change.
KeyNode Key::Stored() const {
    return KeyNode::Read(hive_->Bins(), offset_).value_or(KeyNode());
}

// Since a sub-key has to name its parent, the keys below a root key are a tree, whatever the lists say.
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
    for (const SubKeysLeaf& leaf : Leaves(Stored(), bins)) {
        for (std::size_t i = 0; i < leaf.Size(); ++i) {
            const std::uint32_t offset = leaf.KeyOffset(i);
            const auto node = KeyNode::Read(bins, offset);
            if (node && IsSubKey(offset, *node)) {
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
        return node && node->name.Compare(name) < 0;
    };
    const auto isWanted = [&](std::uint32_t offset) {
        const auto node = KeyNode::Read(bins, offset);
        return node && IsSubKey(offset, *node) && node->name.Compare(name) == 0;
    };
    const auto leaf = std::ranges::partition_point(
        leaves, [&](const SubKeysLeaf& l) { return isBefore(l.KeyOffset(l.Size() - 1)); });
    if (leaf != leaves.end()) {
        const auto indexes = std::views::iota(std::size_t{0}, leaf->Size());
        const auto index = std::ranges::partition_point(
            indexes, [&](std::size_t i) { return isBefore(leaf->KeyOffset(i)); });
        if (index != indexes.end() && isWanted(leaf->KeyOffset(*index))) {
            return Key(*hive_, leaf->KeyOffset(*index));
        }
    }
    // A damaged list may not be sorted, and Windows' own order differs from ours in a few rare letters.
    for (const SubKeysLeaf& l : leaves) {
        for (std::size_t i = 0; i < l.Size(); ++i) {
            if (isWanted(l.KeyOffset(i))) {
                return Key(*hive_, l.KeyOffset(i));
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
        if (value && value->name.Compare(name) == 0) {
            return Value(*hive_, offset);
        }
    }
    return std::nullopt;
}

}  // namespace ostrevin::regf
