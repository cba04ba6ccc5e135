#include "platform/RegistryAccess.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string_view>

#include "platform/LittleEndian.h"
#include "platform/Text.h"

namespace ostrevin {
namespace {

constexpr std::uint32_t kAccessQueryValue = 0x1;
constexpr std::uint32_t kAccessWrite = 0x20006;
constexpr std::uint32_t kAccessRead = 0x20019;

struct RootName {
    std::string_view shortName;
    std::string_view longName;
    KeyHandle root;
};

constexpr std::array<RootName, 7> kRootNames = {{
    {"HKCR", "HKEY_CLASSES_ROOT", kClassesRoot},
    {"HKCU", "HKEY_CURRENT_USER", kCurrentUser},
    {"HKLM", "HKEY_LOCAL_MACHINE", kLocalMachine},
    {"HKUS", "HKEY_USERS", kUsers},
    {"HKPD", "HKEY_PERFORMANCE_DATA", kPerformanceData},
    {"HKCC", "HKEY_CURRENT_CONFIG", kCurrentConfig},
    {"HKDD", "HKEY_DYN_DATA", kDynData},
}};

[[noreturn]] void Raise(RegistryAccess::Error number, const std::string& message, const std::string& quoted) {
    throw RuntimeError(number, message + quoted + "'");
}

std::string ComputerOf(const std::string& path) {
    if (!path.starts_with("\\\\")) {
        return {};
    }
    return path.substr(2, path.find('\\', 2) - 2);
}

/// Where the root's name begins.
std::size_t RootStart(const std::string& path) {
    if (!path.starts_with("\\\\")) {
        return 0;
    }
    const std::size_t end = path.find('\\', 2);
    return end == std::string::npos ? path.size() : end + 1;
}

/// An error quotes the path as the caller gave it.
KeyHandle RootOf(const std::string& path, const std::string& quoted) {
    const std::size_t start = RootStart(path);
    const std::string name = UpperCase(std::string_view(path).substr(start, path.find('\\', start) - start));
    for (const RootName& root : kRootNames) {
        if (name == root.shortName || name == root.longName) {
            return root.root;
        }
    }
    Raise(RegistryAccess::kInvalidRoot, "Invalid root in registry key '", quoted);
}

std::string KeyPathOf(const std::string& path) {
    const std::size_t rootEnd = path.find('\\', RootStart(path));
    const std::size_t last = path.rfind('\\');
    if (rootEnd == std::string::npos || last <= rootEnd) {
        return {};
    }
    return path.substr(rootEnd + 1, last - rootEnd - 1);
}

std::string ValueNameOf(const std::string& path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string::npos ? std::string() : path.substr(last + 1);
}

/// Text without its last character: the terminating NUL, where it has one.
void DropLastCharacter(std::string& text) {
    while (!text.empty()) {
        const bool continuation = (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U;
        text.pop_back();
        if (!continuation) {
            return;
        }
    }
}

std::array<std::byte, 4> LittleEndian(std::uint32_t number) {
    return {static_cast<std::byte>(number), static_cast<std::byte>(number >> 8U),
            static_cast<std::byte>(number >> 16U), static_cast<std::byte>(number >> 24U)};
}

std::int32_t Integer(const RegistryValue& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return *number;
    }
    throw RuntimeError(13, "Type mismatch");
}

}  // namespace

std::string ToText(const RegistryValue& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return std::to_string(*number);
    }
    return std::get<std::string>(value);
}

std::variant<KeyHandle, std::string> RegistryAccess::ParseRegistryPath(const std::string& path, int part) {
    switch (part) {
        case kRoot:
            return RootOf(path, path);
        case kKeyPath:
            return KeyPathOf(path);
        case kValueName:
            return ValueNameOf(path);
        case kComputer:
            return ComputerOf(path);
        default:
            throw RuntimeError(RuntimeError::kInvalidProcedureCall, "Invalid procedure call or argument");
    }
}

KeyHandle RegistryAccess::OpenRegistryKey(const std::string& path, std::uint32_t access) {
    return Open(path, access, path);
}

KeyHandle RegistryAccess::Open(const std::string& path, std::uint32_t access, const std::string& quoted) {
    const std::string computer = ComputerOf(path);
    const KeyHandle root = RootOf(path, quoted);
    const std::string keyPath = KeyPathOf(path);
    KeyHandle key = 0;
    if (computer.empty()) {
        if (platform_.RegOpenKeyExA(root, keyPath, access, key) != kSuccess) {
            Raise(kCannotOpen, "Unable to open registry key '", quoted);
        }
        return key;
    }
    KeyHandle remoteRoot = 0;
    if (platform_.RegConnectRegistryA(computer, root, remoteRoot) != kSuccess) {
        Raise(kCannotConnect, "Unable to connect to remote computer '\\\\", computer);
    }
    if (platform_.RegOpenKeyExA(remoteRoot, keyPath, access, key) != kSuccess) {
        Raise(kCannotOpenRemote, "Unable to open remote registry key '", quoted);
    }
    return key;
}

KeyHandle RegistryAccess::CreateRegistryKey(const std::string& path, std::uint32_t access) {
    return Create(path, access, path);
}

KeyHandle RegistryAccess::Create(const std::string& path, std::uint32_t access, const std::string& quoted) {
    KeyHandle key = 0;
    if (platform_.RegCreateKeyExA(RootOf(path, quoted), KeyPathOf(path), access, key) != kSuccess) {
        Raise(kCannotCreate, "Unable to create registry key '", quoted);
    }
    return key;
}

void RegistryAccess::CloseRegistryKey(KeyHandle key) {
    platform_.RegCloseKey(key);
}

RegistryValue RegistryAccess::ReadRegistryValue(const std::string& path) {
    const KeyHandle key = OpenRegistryKey(path, kAccessQueryValue);
    const std::string name = ValueNameOf(path);
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    const auto query = [&](std::byte* data) {
        if (platform_.RegQueryValueExA(key, name, type, data, size) != kSuccess) {
            Raise(kCannotRead, "Unable to read registry value '", path);
        }
    };
    query(nullptr);
    RegistryValue result;
    if (type == kRegSz || type == kRegExpandSz) {
        std::string text(size, '\0');
        if (size > 0) {
            query(reinterpret_cast<std::byte*>(text.data()));
            DropLastCharacter(text);
        }
        result = std::move(text);
    } else if (type == kRegBinary || type == kRegDword) {
        std::array<std::byte, 4> data{};
        size = static_cast<std::uint32_t>(data.size());
        query(data.data());
        result = static_cast<std::int32_t>(IntegerAt<std::uint32_t>(data, 0));
    } else {
        Raise(kUnsupportedType, "Unsupported data type in registry value '", path);
    }
    CloseRegistryKey(key);
    return result;
}

void RegistryAccess::WriteRegistryValue(const std::string& path, const RegistryValue& value,
                                        std::uint32_t type) {
    const KeyHandle key = CreateRegistryKey(path, kAccessWrite);
    std::string text;
    std::array<std::byte, 4> bytes{};
    std::span<const std::byte> data;
    if (type == kRegSz || type == kRegExpandSz) {
        text = ToText(value);
        data = std::as_bytes(std::span(text));
    } else if (type == kRegBinary) {
        const std::int32_t number = Integer(value);
        if (number < std::numeric_limits<std::int16_t>::min() ||
            number > std::numeric_limits<std::int16_t>::max()) {
            throw RuntimeError(RuntimeError::kOverflow, "Overflow");
        }
        bytes = LittleEndian(static_cast<std::uint32_t>(number));
        data = std::span(bytes).first(2);
    } else if (type == kRegDword) {
        bytes = LittleEndian(static_cast<std::uint32_t>(Integer(value)));
        data = bytes;
    } else {
        throw RuntimeError(RuntimeError::kInvalidProcedureCall, "Invalid procedure call or argument");
    }
    if (platform_.RegSetValueExA(key, ValueNameOf(path), type, data) != kSuccess) {
        Raise(kCannotWrite, "Unable to write registry value '", path);
    }
    CloseRegistryKey(key);
}

void RegistryAccess::EnsureRegistryKey(const std::string& keyPath) {
    CloseRegistryKey(Create(keyPath + "\\", kAccessWrite, keyPath));
}

std::vector<std::string> RegistryAccess::EnumerateRegistryKey(const std::string& keyPath,
                                                              std::uint8_t selection) {
    const KeyHandle key = Open(keyPath.ends_with('\\') ? keyPath : keyPath + "\\", kAccessRead, keyPath);
    KeyInfo info;
    if (platform_.RegQueryInfoKeyA(key, info) != kSuccess) {
        Raise(kCannotReadKey, "Unable to read information from registry key '", keyPath);
    }
    std::vector<std::string> names;
    if ((selection & kSubKeys) != 0) {
        names = SubKeyNames(key, info, keyPath);
    }
    if ((selection & kValues) != 0) {
        const std::vector<std::string> values = ValueNames(key, info, keyPath);
        names.insert(names.end(), values.begin(), values.end());
    }
    CloseRegistryKey(key);
    return names;
}

std::vector<std::string> RegistryAccess::SubKeyNames(KeyHandle key, const KeyInfo& info,
                                                     const std::string& keyPath) {
    std::vector<std::string> names;
    names.reserve(info.subKeys);
    for (std::uint32_t i = 0; i < info.subKeys; ++i) {
        TextBuffer name{info.longestSubKeyName + 1, {}};
        const std::int32_t code = platform_.RegEnumKeyExA(key, i, name, nullptr);
        if (code != kSuccess && code != kMoreData) {
            Raise(kCannotReadKey, "Unable to read information from registry key '", keyPath);
        }
        names.push_back(name.text + "\\");
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> RegistryAccess::ValueNames(KeyHandle key, const KeyInfo& info,
                                                    const std::string& keyPath) {
    std::vector<std::string> names;
    names.reserve(info.values);
    for (std::uint32_t i = 0; i < info.values; ++i) {
        TextBuffer name{info.longestValueName + 1, {}};
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        const std::int32_t code = platform_.RegEnumValueA(key, i, name, type, nullptr, size);
        if (code != kSuccess && code != kMoreData) {
            Raise(kCannotReadKey, "Unable to read information from registry key '", keyPath);
        }
        if (!name.text.empty()) {
            names.push_back(name.text);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace ostrevin
