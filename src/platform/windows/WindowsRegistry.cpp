#include <windows.h>
#include <algorithm>
#include <array>
#include <string>

#include "platform/Text.h"
#include "platform/windows/AnsiText.h"
#include "platform/windows/WindowsPlatform.h"

namespace ostrevin {
namespace {

using windows::Ansi;
using windows::AnsiToUtf8;

constexpr std::size_t kLongestKeyName = 2 * 255 + 1;  // in bytes, of any code page, the NUL included
constexpr std::size_t kLongestName = 2 * 16383 + 1;   // of a value or a class

/// The roots have 32 bits, of which Windows takes the highest for a sign.
HKEY Native(KeyHandle key) {
    const bool root = key >= kClassesRoot && key <= kDynData;
    return reinterpret_cast<HKEY>(root ? static_cast<LONG_PTR>(static_cast<LONG>(key))
                                       : static_cast<LONG_PTR>(key));
}

KeyHandle HandleOf(HKEY key) {
    return static_cast<KeyHandle>(reinterpret_cast<ULONG_PTR>(key));
}

bool IsText(std::uint32_t type) {
    return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

/// Stores a name; one that does not fit is cut to what does.
std::int32_t StoreName(std::string_view ansi, TextBuffer& buffer) {
    const std::string name = AnsiToUtf8(ansi);
    if (Utf16Length(name) < buffer.capacity) {
        buffer.text = name;
        return kSuccess;
    }
    if (buffer.capacity > 0) {
        buffer.text = Beginning(name, buffer.capacity - 1);
    }
    return kMoreData;
}

/// Stores a value's data, of which size bytes are to be fetched; fetch is the call that does so.
template <typename Fetch>
std::int32_t StoreData(Fetch fetch, std::uint32_t type, DWORD size, std::byte* data, std::uint32_t& length) {
    if (!IsText(type)) {
        if (data == nullptr) {
            length = size;
            return kSuccess;
        }
        DWORD room = length;
        const LONG code = fetch(reinterpret_cast<BYTE*>(data), room);
        length = room;
        return code;
    }
    std::string ansi(size, '\0');
    const LONG code = fetch(reinterpret_cast<BYTE*>(ansi.data()), size);
    if (code != kSuccess) {
        return code;
    }
    ansi.resize(size);
    const std::string text = AnsiToUtf8(ansi);
    const std::uint32_t room = length;
    length = static_cast<std::uint32_t>(text.size());
    if (data == nullptr) {
        return kSuccess;
    }
    if (length > room) {
        return kMoreData;
    }
    const auto bytes = std::as_bytes(std::span(text));
    std::copy(bytes.begin(), bytes.end(), data);
    return kSuccess;
}

}  // namespace

std::int32_t WindowsPlatform::RegConnectRegistryA(const std::string& computer, KeyHandle root,
                                                  KeyHandle& result) {
    HKEY key = nullptr;
    const LONG code = ::RegConnectRegistryA(("\\\\" + Ansi(computer)).c_str(), Native(root), &key);
    if (code == kSuccess) {
        result = HandleOf(key);
    }
    return code;
}

std::int32_t WindowsPlatform::RegOpenKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                                            KeyHandle& result) {
    HKEY opened = nullptr;
    const LONG code = ::RegOpenKeyExA(Native(key), Ansi(subKey).c_str(), 0, access, &opened);
    if (code == kSuccess) {
        result = HandleOf(opened);
    }
    return code;
}

std::int32_t WindowsPlatform::RegCreateKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                                              KeyHandle& result) {
    HKEY created = nullptr;
    const LONG code = ::RegCreateKeyExA(Native(key), Ansi(subKey).c_str(), 0, nullptr,
                                        REG_OPTION_NON_VOLATILE, access, nullptr, &created, nullptr);
    if (code == kSuccess) {
        result = HandleOf(created);
    }
    return code;
}

std::int32_t WindowsPlatform::RegCloseKey(KeyHandle key) {
    return ::RegCloseKey(Native(key));
}

std::int32_t WindowsPlatform::RegQueryInfoKeyA(KeyHandle key, KeyInfo& info) {
    DWORD subKeys = 0;
    DWORD longestSubKeyName = 0;
    DWORD values = 0;
    DWORD longestValueName = 0;
    const LONG code = ::RegQueryInfoKeyA(Native(key), nullptr, nullptr, nullptr, &subKeys, &longestSubKeyName,
                                         nullptr, &values, &longestValueName, nullptr, nullptr, nullptr);
    if (code == kSuccess) {
        info = {subKeys, longestSubKeyName, values, longestValueName};
    }
    return code;
}

std::int32_t WindowsPlatform::RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                            TextBuffer* keyClass) {
    std::array<char, kLongestKeyName> nameBytes;
    auto nameLength = static_cast<DWORD>(nameBytes.size());
    std::array<char, kLongestName> classBytes;
    auto classLength = static_cast<DWORD>(classBytes.size());
    const bool wantsClass = keyClass != nullptr;
    LONG code = ::RegEnumKeyExA(Native(key), index, nameBytes.data(), &nameLength, nullptr,
                                wantsClass ? classBytes.data() : nullptr, wantsClass ? &classLength : nullptr,
                                nullptr);
    if (code != kSuccess) {
        return code;
    }
    code = StoreName({nameBytes.data(), nameLength}, name);
    if (wantsClass && StoreName({classBytes.data(), classLength}, *keyClass) != kSuccess) {
        code = kMoreData;
    }
    return code;
}

std::int32_t WindowsPlatform::RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                            std::uint32_t& type, std::byte* data, std::uint32_t& length) {
    std::array<char, kLongestName> nameBytes;
    DWORD nameLength = 0;
    DWORD stored = 0;
    const auto fetch = [&](BYTE* bytes, DWORD& size) {
        nameLength = static_cast<DWORD>(nameBytes.size());
        return ::RegEnumValueA(Native(key), index, nameBytes.data(), &nameLength, nullptr, &stored, bytes,
                               &size);
    };
    DWORD size = 0;
    std::int32_t code = fetch(nullptr, size);
    if (code == kSuccess) {
        code = StoreName({nameBytes.data(), nameLength}, name);
    }
    if (code != kSuccess) {
        return code;
    }
    type = stored;
    return StoreData(fetch, type, size, data, length);
}

std::int32_t WindowsPlatform::RegQueryValueExA(KeyHandle key, const std::string& name, std::uint32_t& type,
                                               std::byte* data, std::uint32_t& length) {
    const std::string ansiName = Ansi(name);
    DWORD stored = 0;
    const auto fetch = [&](BYTE* bytes, DWORD& size) {
        return ::RegQueryValueExA(Native(key), ansiName.c_str(), nullptr, &stored, bytes, &size);
    };
    DWORD size = 0;
    const LONG code = fetch(nullptr, size);
    if (code != kSuccess) {
        return code;
    }
    type = stored;
    return StoreData(fetch, type, size, data, length);
}

std::int32_t WindowsPlatform::RegSetValueExA(KeyHandle key, const std::string& name, std::uint32_t type,
                                             std::span<const std::byte> data) {
    std::string bytes(reinterpret_cast<const char*>(data.data()), data.size());
    if (IsText(type)) {
        bytes = Ansi(bytes);
    }
    return ::RegSetValueExA(Native(key), Ansi(name).c_str(), 0, type,
                            reinterpret_cast<const BYTE*>(bytes.c_str()), static_cast<DWORD>(bytes.size()));
}

std::int32_t WindowsPlatform::RegLoadKeyA(KeyHandle root, const std::string& subKey,
                                          const std::string& file) {
    return ::RegLoadKeyA(Native(root), Ansi(subKey).c_str(), Ansi(file).c_str());
}

}  // namespace ostrevin
