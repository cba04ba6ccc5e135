// The registry of an offline volume, answering as the calls of its own machine did: the same roots, result
// codes and buffer rules. Nothing can be written: what would write is answered with kAccessDenied.
//
// Hives are mounted below HKEY_LOCAL_MACHINE and HKEY_USERS and read when something below them is first asked
// for. One that cannot be read is absent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "platform/volume/regf/Hive.h"

namespace ostrevin {

class HiveStore;
class VolumeFiles;

/// A text value (REG_SZ or REG_EXPAND_SZ) up to its NUL; empty for another type.
[[nodiscard]] std::string TextOf(const regf::Value& value);

/// A REG_DWORD value; none for another type.
[[nodiscard]] std::optional<std::uint32_t> NumberOf(const regf::Value& value);

class VolumeRegistry {
  public:
    VolumeRegistry(const VolumeFiles& files, HiveStore& hives);

    /// Mounts a hive file that the running machine has always loaded, below kLocalMachine or kUsers.
    void Mount(KeyHandle root, const std::string& name, const std::string& file);
    /// Names the sub-key of HKEY_USERS that is HKEY_CURRENT_USER; there is none until then.
    void SetCurrentUser(const std::string& sid) { currentUser_ = sid; }

    // What the system itself asks, by a root and a path below it. What is missing is empty.

    [[nodiscard]] std::optional<regf::Key> Find(KeyHandle root, std::string_view path);
    [[nodiscard]] std::string Text(KeyHandle root, std::string_view path, std::string_view value);
    [[nodiscard]] std::optional<std::uint32_t> Number(KeyHandle root, std::string_view path,
                                                      std::string_view value);

    // The calls of Platform.

    std::int32_t RegConnectRegistryA(const std::string& computer, KeyHandle root, KeyHandle& result) const;
    std::int32_t RegOpenKeyExA(KeyHandle key, const std::string& subKey, KeyHandle& result);
    std::int32_t RegCreateKeyExA(KeyHandle key, const std::string& subKey, KeyHandle& result);
    std::int32_t RegCloseKey(KeyHandle key);
    std::int32_t RegQueryInfoKeyA(KeyHandle key, KeyInfo& info);
    std::int32_t RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, TextBuffer* keyClass);
    std::int32_t RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& type,
                               std::byte* data, std::uint32_t& length);
    std::int32_t RegQueryValueExA(KeyHandle key, const std::string& name, std::uint32_t& type,
                                  std::byte* data, std::uint32_t& length);
    std::int32_t RegSetValueExA(KeyHandle key);
    std::int32_t RegLoadKeyA(KeyHandle root, const std::string& subKey, const std::string& file);

  private:
    struct MountPoint {
        std::string name;
        std::string file;
        bool tried = false;
        const regf::Hive* hive = nullptr;
    };

    /// A place in the tree: one of the two roots above the hives, or a key of a hive.
    struct Node {
        KeyHandle root = 0;            ///< the root above the hives; 0 for a key
        std::optional<regf::Key> key;  ///< none for a root above the hives
        bool holdsControlSets = false;
    };

    struct SubKey {
        std::string name;  ///< empty where the key's own name counts
        regf::Key key;
    };

    /// What stands behind a handle. The lists are made when they are first asked for by index.
    struct OpenKey {
        Node node;
        std::optional<std::vector<SubKey>> subKeys;
        std::size_t mounts = 0;  ///< how many hives were mounted when the sub-keys were listed
        std::optional<std::vector<regf::Value>> values;
    };

    /// Mounts a file unless there is something of that name.
    void AddMount(KeyHandle root, const MountPoint& mount);
    OpenKey* Lookup(KeyHandle handle, std::int32_t& result);
    std::optional<Node> Resolve(KeyHandle root);
    std::optional<Node> Descend(Node node, std::string_view path);
    std::optional<Node> Child(const Node& node, std::string_view name);
    const regf::Hive* HiveOf(MountPoint& mount);
    MountPoint* FindMount(KeyHandle root, std::string_view name);
    const std::vector<SubKey>& SubKeysOf(OpenKey& open);
    static const std::vector<regf::Value>& ValuesOf(OpenKey& open);

    const VolumeFiles& files_;
    HiveStore& hives_;
    std::map<std::pair<KeyHandle, std::string>, MountPoint> mounts_;  // by root and upper-cased name
    std::set<std::string> mountedFiles_;                              // by the host's path
    std::string currentUser_;
    std::unordered_map<KeyHandle, OpenKey> open_;
    KeyHandle nextHandle_ = KeyHandle{1} << 32U;  // beyond the predefined handles
};

}  // namespace ostrevin
