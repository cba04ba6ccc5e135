#include "platform/volume/regf/CellLists.h"
#include "platform/volume/regf/Hive.h"
#include "platform/volume/regf/KeyNode.h"

namespace ostrevin::regf {

// A key is only made of an offset at which a sound key node was read, and the bytes never change.
KeyNode Key::Stored() const {
    return KeyNode::Read(hive_->Bins(), offset_).value_or(KeyNode());
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
    std::vector<Key> keys;
    for (const std::uint32_t offset : hive_->Lists().SubKeysOf(offset_)) {
        keys.push_back(Key(*hive_, offset));
    }
    return keys;
}

std::optional<Key> Key::FindSubKey(std::string_view name) const {
    const auto offset = hive_->Lists().FindSubKey(offset_, name);
    return offset ? std::optional(Key(*hive_, *offset)) : std::nullopt;
}

std::vector<Value> Key::Values() const {
    std::vector<Value> values;
    for (const std::uint32_t offset : hive_->Lists().ValuesOf(offset_)) {
        values.push_back(Value(*hive_, offset));
    }
    return values;
}

std::optional<Value> Key::FindValue(std::string_view name) const {
    const auto offset = hive_->Lists().FindValue(offset_, name);
    return offset ? std::optional(Value(*hive_, *offset)) : std::nullopt;
}

}  // namespace ostrevin::regf
