// The registry addressed by one text path.
//
// A path is, in this order: optionally "\\" with a computer's name and "\"; a root's short or long name in
// any case (HKCR, HKCU, HKLM, HKUS, HKPD, HKCC, HKDD; the users root is HKUS, the three-letter form is no
// root); "\" and the key path; "\" and the value's name, which is everything after the last "\".
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/Platform.h"
#include "platform/RuntimeError.h"

namespace ostrevin {

using RegistryValue = std::variant<std::string, std::int32_t>;

/// A value as text, an integer in decimal.
[[nodiscard]] std::string ToText(const RegistryValue& value);

class RegistryAccess {
  public:
    /// Numbers of the errors that the operations raise as RuntimeError.
    enum Error : std::uint32_t {
        kInvalidRoot = 0x80040001,
        kCannotOpen = 0x80040002,
        kCannotConnect = 0x80040003,
        kCannotOpenRemote = 0x80040004,
        kCannotCreate = 0x80040005,
        kCannotRead = 0x80040006,
        kUnsupportedType = 0x80040007,
        kCannotWrite = 0x80040008,
        kCannotReadKey = 0x80040009,
    };
    /// Parts of a path, as ParseRegistryPath numbers them.
    enum Part : int { kRoot = 1, kKeyPath = 2, kValueName = 3, kComputer = 4 };
    /// What EnumerateRegistryKey lists.
    enum Selection : std::uint8_t { kSubKeys = 1, kValues = 2 };

    explicit RegistryAccess(Platform& platform) : platform_(platform) {}

    /// The root's handle for part 1, text for parts 2 to 4; any other part raises error 5.
    static std::variant<KeyHandle, std::string> ParseRegistryPath(const std::string& path, int part);

    KeyHandle OpenRegistryKey(const std::string& path, std::uint32_t access);
    KeyHandle CreateRegistryKey(const std::string& path, std::uint32_t access);
    void CloseRegistryKey(KeyHandle key);
    /// Text for the types 1 and 2, an integer for 3 and 4 (of 4 bytes at most).
    RegistryValue ReadRegistryValue(const std::string& path);
    /// Types 1 to 4. Text is stored without a terminating NUL, type 3 as the 2 bytes of a 16-bit integer.
    void WriteRegistryValue(const std::string& path, const RegistryValue& value, std::uint32_t type);
    void EnsureRegistryKey(const std::string& keyPath);
    /// Sub-keys with "\" appended, then value names without the default value's; each in binary order.
    std::vector<std::string> EnumerateRegistryKey(const std::string& keyPath, std::uint8_t selection);

  private:
    // What an error quotes is the path as the caller gave it.
    KeyHandle Open(const std::string& path, std::uint32_t access, const std::string& quoted);
    KeyHandle Create(const std::string& path, std::uint32_t access, const std::string& quoted);
    std::vector<std::string> SubKeyNames(KeyHandle key, const KeyInfo& info, const std::string& keyPath);
    std::vector<std::string> ValueNames(KeyHandle key, const KeyInfo& info, const std::string& keyPath);

    Platform& platform_;
};

}  // namespace ostrevin
