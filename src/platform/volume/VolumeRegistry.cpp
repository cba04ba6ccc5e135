#include "platform/volume/VolumeRegistry.h"

#include <algorithm>
#include <utility>

#include "platform/LittleEndian.h"
#include "platform/Text.h"
#include "platform/volume/HiveStore.h"
#include "platform/volume/VolumeFiles.h"

namespace ostrevin {
namespace {

constexpr const char* kCurrentControlSet = "CurrentControlSet";

bool IsPredefined(KeyHandle handle) {
    return handle >= kClassesRoot && handle <= kDynData;
}

bool IsText(std::uint32_t type) {
    return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

/// A value's data as the caller gets it.
std::vector<std::byte> DataOf(const regf::Value& value) {
    std::vector<std::byte> data = value.Data();
    if (IsText(value.Type())) {
        const std::string text = Utf16ToUtf8(data);
        const auto bytes = std::as_bytes(std::span(text));
        data.assign(bytes.begin(), bytes.end());
    }
    return data;
}

/// The set of a SYSTEM hive that the machine used last.
std::optional<regf::Key> CurrentControlSet(const regf::Key& system) {
    const std::optional<regf::Key> select = system.FindSubKey("Select");
    const std::optional<regf::Value> current = select ? select->FindValue("Current") : std::nullopt;
    const std::optional<std::uint32_t> number = current ? NumberOf(*current) : std::nullopt;
    if (!number) {
        return std::nullopt;
    }
    std::string digits = std::to_string(*number);
    digits.insert(0, digits.size() < 3 ? 3 - digits.size() : 0, '0');
    return system.FindSubKey("ControlSet" + digits);
}

/// Stores a name; one that does not fit is cut to what does.
std::int32_t StoreName(const std::string& name, TextBuffer& buffer) {
    if (Utf16Length(name) < buffer.capacity) {
        buffer.text = name;
        return kSuccess;
    }
    if (buffer.capacity > 0) {
        buffer.text = Beginning(name, buffer.capacity - 1);
    }
    return kMoreData;
}

std::int32_t StoreValue(const regf::Value& value, std::uint32_t& type, std::byte* data,
                        std::uint32_t& length) {
    const std::vector<std::byte> bytes = DataOf(value);
    const std::uint32_t room = length;
    type = value.Type();
    length = static_cast<std::uint32_t>(bytes.size());
    if (data == nullptr) {
        return kSuccess;
    }
    if (length > room) {
        return kMoreData;
    }
    std::copy(bytes.begin(), bytes.end(), data);
    return kSuccess;
}

}  // namespace

std::string TextOf(const regf::Value& value) {
    if (value.Type() != kRegSz && value.Type() != kRegExpandSz) {
        return {};
    }
    std::string text = Utf16ToUtf8(value.Data());
    text.resize(std::min(text.find('\0'), text.size()));
    return text;
}

std::optional<std::uint32_t> NumberOf(const regf::Value& value) {
    const std::vector<std::byte> data = value.Data();
    if (value.Type() != kRegDword || data.size() != 4) {
        return std::nullopt;
    }
    return IntegerAt<std::uint32_t>(data, 0);
}

VolumeRegistry::VolumeRegistry(const VolumeFiles& files, HiveStore& hives) : files_(files), hives_(hives) {}

void VolumeRegistry::Mount(KeyHandle root, const std::string& name, const std::string& file) {
    AddMount(root, {name, file});
}

void VolumeRegistry::AddMount(KeyHandle root, const MountPoint& mount) {
    if (std::optional<std::string> place = files_.HostPath(mount.file)) {
        mountedFiles_.insert(std::move(*place));
    }
    mounts_.try_emplace({root, UpperCase(mount.name)}, mount);
}

std::optional<regf::Key> VolumeRegistry::Find(KeyHandle root, std::string_view path) {
    const std::optional<Node> start = Resolve(root);
    const std::optional<Node> node = start ? Descend(*start, path) : std::nullopt;
    return node ? node->key : std::nullopt;
}

std::string VolumeRegistry::Text(KeyHandle root, std::string_view path, std::string_view value) {
    const std::optional<regf::Key> key = Find(root, path);
    const std::optional<regf::Value> found = key ? key->FindValue(value) : std::nullopt;
    return found ? TextOf(*found) : std::string();
}

std::optional<std::uint32_t> VolumeRegistry::Number(KeyHandle root, std::string_view path,
                                                    std::string_view value) {
    const std::optional<regf::Key> key = Find(root, path);
    const std::optional<regf::Value> found = key ? key->FindValue(value) : std::nullopt;
    return found ? NumberOf(*found) : std::nullopt;
}

std::int32_t VolumeRegistry::RegConnectRegistryA(const std::string& computer, KeyHandle root,
                                                 KeyHandle& result) const {
    // No other machine can be reached from a volume.
    if (!computer.empty()) {
        return kBadNetworkPath;
    }
    if (root != kLocalMachine && root != kUsers) {
        return kInvalidHandle;
    }
    result = root;
    return kSuccess;
}

std::int32_t VolumeRegistry::RegOpenKeyExA(KeyHandle key, const std::string& subKey, KeyHandle& result) {
    std::int32_t code = kSuccess;
    const OpenKey* open = Lookup(key, code);
    if (open == nullptr) {
        return code;
    }
    if (subKey.starts_with('\\')) {
        return kBadPathName;
    }
    const std::optional<Node> node = Descend(open->node, subKey);
    if (!node) {
        return kFileNotFound;
    }
    result = nextHandle_++;
    open_.emplace(result, OpenKey{*node, {}, 0, {}});
    return kSuccess;
}

std::int32_t VolumeRegistry::RegCreateKeyExA(KeyHandle key, const std::string& subKey, KeyHandle& result) {
    // A key that exists is only opened, which writes nothing.
    const std::int32_t code = RegOpenKeyExA(key, subKey, result);
    return code == kFileNotFound ? static_cast<std::int32_t>(kAccessDenied) : code;
}

std::int32_t VolumeRegistry::RegCloseKey(KeyHandle key) {
    if (IsPredefined(key)) {
        return kSuccess;
    }
    return open_.erase(key) == 1 ? kSuccess : kInvalidHandle;
}

std::int32_t VolumeRegistry::RegQueryInfoKeyA(KeyHandle key, KeyInfo& info) {
    std::int32_t code = kSuccess;
    OpenKey* open = Lookup(key, code);
    if (open == nullptr) {
        return code;
    }
    info = {};
    for (const SubKey& subKey : SubKeysOf(*open)) {
        ++info.subKeys;
        info.longestSubKeyName = std::max(
            info.longestSubKeyName, subKey.name.empty() ? subKey.key.NameLength() : Utf16Length(subKey.name));
    }
    for (const regf::Value& value : ValuesOf(*open)) {
        ++info.values;
        info.longestValueName = std::max(info.longestValueName, value.NameLength());
    }
    return kSuccess;
}

std::int32_t VolumeRegistry::RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                           TextBuffer* keyClass) {
    std::int32_t code = kSuccess;
    OpenKey* open = Lookup(key, code);
    if (open == nullptr) {
        return code;
    }
    const std::vector<SubKey>& subKeys = SubKeysOf(*open);
    if (index >= subKeys.size()) {
        return kNoMoreItems;
    }
    const SubKey& subKey = subKeys[index];
    code = StoreName(subKey.name.empty() ? subKey.key.Name() : subKey.name, name);
    if (keyClass != nullptr && StoreName(subKey.key.ClassName(), *keyClass) != kSuccess) {
        code = kMoreData;
    }
    return code;
}

std::int32_t VolumeRegistry::RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                           std::uint32_t& type, std::byte* data, std::uint32_t& length) {
    std::int32_t code = kSuccess;
    OpenKey* open = Lookup(key, code);
    if (open == nullptr) {
        return code;
    }
    const std::vector<regf::Value>& values = ValuesOf(*open);
    if (index >= values.size()) {
        return kNoMoreItems;
    }
    code = StoreName(values[index].Name(), name);
    return code == kSuccess ? StoreValue(values[index], type, data, length) : code;
}

std::int32_t VolumeRegistry::RegQueryValueExA(KeyHandle key, const std::string& name, std::uint32_t& type,
                                              std::byte* data, std::uint32_t& length) {
    std::int32_t code = kSuccess;
    const OpenKey* open = Lookup(key, code);
    if (open == nullptr) {
        return code;
    }
    const std::optional<regf::Value> value = open->node.key ? open->node.key->FindValue(name) : std::nullopt;
    return value ? StoreValue(*value, type, data, length) : kFileNotFound;
}

std::int32_t VolumeRegistry::RegSetValueExA(KeyHandle key) {
    std::int32_t code = kSuccess;
    return Lookup(key, code) == nullptr ? code : kAccessDenied;
}

std::int32_t VolumeRegistry::RegLoadKeyA(KeyHandle root, const std::string& subKey, const std::string& file) {
    std::int32_t code = kSuccess;
    const OpenKey* open = Lookup(root, code);
    if (open == nullptr) {
        return code;
    }
    const KeyHandle above = open->node.root;
    if (above == 0 || subKey.empty() || subKey.find('\\') != std::string::npos) {
        return kInvalidParameter;
    }
    // The machine holds the file of a loaded hive open and shares it with nobody.
    const std::optional<std::string> place = files_.HostPath(file);
    if (place && mountedFiles_.contains(*place)) {
        return kSharingViolation;
    }
    const regf::Hive* hive = hives_.Load(file, code);
    if (hive == nullptr) {
        return code;
    }
    if (FindMount(above, subKey) != nullptr) {
        return kAccessDenied;
    }
    AddMount(above, {subKey, file, true, hive});
    return kSuccess;
}

VolumeRegistry::OpenKey* VolumeRegistry::Lookup(KeyHandle handle, std::int32_t& result) {
    if (const auto open = open_.find(handle); open != open_.end()) {
        return &open->second;
    }
    if (!IsPredefined(handle)) {
        result = kInvalidHandle;
        return nullptr;
    }
    const std::optional<Node> node = Resolve(handle);
    if (!node) {
        result = kFileNotFound;
        return nullptr;
    }
    return &open_.emplace(handle, OpenKey{*node, {}, 0, {}}).first->second;
}

std::optional<VolumeRegistry::Node> VolumeRegistry::Resolve(KeyHandle root) {
    switch (root) {
        case kLocalMachine:
        case kUsers:
            return Node{root, {}, false};
        case kClassesRoot:
            return Descend({kLocalMachine, {}, false}, "SOFTWARE\\Classes");
        case kCurrentUser:
            return currentUser_.empty() ? std::nullopt : Child({kUsers, {}, false}, currentUser_);
        default:
            return std::nullopt;  // what only a running machine has
    }
}

std::optional<VolumeRegistry::Node> VolumeRegistry::Descend(Node node, std::string_view path) {
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('\\'), path.size());
        if (end > 0) {
            const std::optional<Node> child = Child(node, path.substr(0, end));
            if (!child) {
                return std::nullopt;
            }
            node = *child;
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return node;
}

std::optional<VolumeRegistry::Node> VolumeRegistry::Child(const Node& node, std::string_view name) {
    if (!node.key) {
        MountPoint* mount = FindMount(node.root, name);
        const regf::Hive* hive = mount == nullptr ? nullptr : HiveOf(*mount);
        if (hive == nullptr) {
            return std::nullopt;
        }
        return Node{0, hive->Root(), node.root == kLocalMachine && EqualNoCase(name, "SYSTEM")};
    }
    std::optional<regf::Key> key = node.holdsControlSets && EqualNoCase(name, kCurrentControlSet)
                                       ? CurrentControlSet(*node.key)
                                       : node.key->FindSubKey(name);
    return key ? std::optional(Node{0, key, false}) : std::nullopt;
}

const regf::Hive* VolumeRegistry::HiveOf(MountPoint& mount) {
    if (!mount.tried) {
        mount.tried = true;
        mount.hive = hives_.LoadRequired(mount.file);
    }
    return mount.hive;
}

VolumeRegistry::MountPoint* VolumeRegistry::FindMount(KeyHandle root, std::string_view name) {
    const auto found = mounts_.find({root, UpperCase(name)});
    return found == mounts_.end() ? nullptr : &found->second;
}

const std::vector<VolumeRegistry::SubKey>& VolumeRegistry::SubKeysOf(OpenKey& open) {
    const std::optional<regf::Key>& key = open.node.key;
    if (!key) {
        if (open.subKeys && open.mounts == mounts_.size()) {
            return *open.subKeys;
        }
        open.mounts = mounts_.size();
        open.subKeys.emplace();
        for (auto& [place, mount] : mounts_) {
            if (const regf::Hive* hive = place.first == open.node.root ? HiveOf(mount) : nullptr) {
                open.subKeys->push_back({mount.name, hive->Root()});
            }
        }
    } else if (!open.subKeys) {
        open.subKeys.emplace();
        for (const regf::Key& subKey : key->SubKeys()) {
            open.subKeys->push_back({"", subKey});
        }
        // The running machine's link to the set in use is volatile, and such keys come last.
        if (const auto set = open.node.holdsControlSets ? CurrentControlSet(*key) : std::nullopt) {
            open.subKeys->push_back({kCurrentControlSet, *set});
        }
    }
    return *open.subKeys;
}

const std::vector<regf::Value>& VolumeRegistry::ValuesOf(OpenKey& open) {
    if (!open.values) {
        open.values = open.node.key ? open.node.key->Values() : std::vector<regf::Value>();
    }
    return *open.values;
}

}  // namespace ostrevin
