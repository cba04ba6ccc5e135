#include "sources/UserAssistList.h"

#include <array>
#include <limits>

#include "platform/LittleEndian.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "sources/CombSort.h"
#include "sources/FileTimeToLocalDate.h"

namespace ostrevin {
namespace {

constexpr std::string_view kUserAssist =
    "\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\";

// The second key is read as it stands, without a "Count" part.
constexpr std::array<std::string_view, 2> kKeys = {
    "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count",
    "{5E6AB780-7743-11CF-A12B-00AA004AE837}",
};

constexpr std::array<std::string_view, 10> kTypes = {
    "UEME_CTLSESSION", "UEME_RUNPIDL",  "UEME_RUNCPL",      "UEME_RUNPATH", "UEME_UITOOLBAR",
    "UEME_RUNWMCMD",   "UEME_UIHOTKEY", "UEME_CTLCUACount", "UEME_UISCUT",  "UEME_UIQCUT",
};

constexpr std::uint32_t kBufferSize = 1024;
constexpr std::string_view kEncodedPrefix = "HRZR_";
constexpr std::string_view kProgramsFolder = "%csidl2%";

/// Closes a key at the end of its reading, also when an overflow ends it.
struct KeyCloser {
    KeyCloser(Platform& host, KeyHandle handle) : platform(host), key(handle) {}
    KeyCloser(const KeyCloser&) = delete;
    KeyCloser& operator=(const KeyCloser&) = delete;
    ~KeyCloser() { platform.RegCloseKey(key); }
    Platform& platform;
    KeyHandle key;
};

std::string_view TypeOf(std::string_view name) {
    std::string_view type;
    for (const std::string_view candidate : kTypes) {
        if (name.starts_with(candidate)) {
            type = candidate;
        }
    }
    return type;
}

std::int32_t RunCountOf(std::span<const std::byte> data) {
    constexpr std::int32_t kCountedFrom = 5;
    const auto raw = static_cast<std::int32_t>(IntegerAt<std::uint32_t>(data, 4));
    if (raw < std::numeric_limits<std::int32_t>::min() + kCountedFrom) {
        throw RuntimeError(RuntimeError::kOverflow, "Overflow");
    }
    return raw - kCountedFrom;
}

}  // namespace

std::string Rot13(std::string text) {
    for (char& character : text) {
        if ((character >= 'A' && character <= 'M') || (character >= 'a' && character <= 'm')) {
            character = static_cast<char>(character + 13);
        } else if ((character >= 'N' && character <= 'Z') || (character >= 'n' && character <= 'z')) {
            character = static_cast<char>(character - 13);
        }
    }
    return text;
}

const UserAssistList::Entry* UserAssistList::At(std::int32_t index) const {
    return index >= 0 && index < Count() ? &entries_[static_cast<std::size_t>(index)] : nullptr;
}

std::string UserAssistList::UserAssistName(std::int32_t index) const {
    const Entry* entry = At(index);
    return entry == nullptr ? std::string() : entry->name;
}

std::string UserAssistList::UserAssistType(std::int32_t index) const {
    const Entry* entry = At(index);
    return entry == nullptr ? std::string() : entry->type;
}

std::string UserAssistList::UserAssistValue(std::int32_t index) const {
    const Entry* entry = At(index);
    return entry == nullptr ? std::string() : entry->value;
}

bool UserAssistList::IsProgram(std::int32_t index) const {
    return UserAssistType(index).find("RUNPATH") != std::string::npos &&
           UpperCase(UserAssistValue(index)).find("EXE") != std::string::npos;
}

std::int32_t UserAssistList::UserAssistRunCount(std::int32_t index) const {
    const Entry* entry = At(index);
    return entry == nullptr ? -1 : entry->runCount;
}

double UserAssistList::UserAssistLastRun(std::int32_t index) const {
    const Entry* entry = At(index);
    return entry == nullptr ? -1.0 : entry->lastRun;
}

bool UserAssistList::LoadUserAssist(const std::string& sid) {
    constexpr std::uint32_t kAccess = 0x3F;
    // Filled with zeros once and never again: a short value is decoded from what an earlier one left behind
    // it.
    std::array<std::byte, kBufferSize> data{};
    // Not set back for the second key, whose first values are thus passed over.
    auto index = static_cast<std::uint32_t>(Count());
    for (const std::string_view name : kKeys) {
        KeyHandle key = 0;
        const std::string path = sid + std::string(kUserAssist) + std::string(name);
        if (platform_.RegOpenKeyExA(kUsers, path, kAccess, key) != kSuccess) {
            return false;
        }
        const KeyCloser closer(platform_, key);
        LoadKey(key, index, data);
    }
    return false;
}

void UserAssistList::LoadKey(KeyHandle key, std::uint32_t& index, std::span<std::byte> data) {
    TextBuffer name{kBufferSize, {}};
    for (;;) {
        std::uint32_t type = 0;
        auto length = static_cast<std::uint32_t>(data.size());
        if (platform_.RegEnumValueA(key, index, name, type, data.data(), length) != kSuccess) {
            return;
        }
        ++index;
        Entry entry;
        entry.name = name.text.starts_with(kEncodedPrefix) ? Rot13(name.text) : name.text;
        entry.type = TypeOf(entry.name);
        entry.value = ValueOf(entry.name, entry.type);
        if (!intake_.Take(entry.value)) {
            return;
        }
        entry.lastRun = FileTimeToLocalDate(
            platform_, {IntegerAt<std::uint32_t>(data, 8), IntegerAt<std::uint32_t>(data, 12)});
        entries_.push_back(std::move(entry));
        entries_.back().runCount = RunCountOf(data);
    }
}

std::string UserAssistList::ValueOf(const std::string& name, std::string_view type) {
    if (type.empty()) {
        return name;
    }
    std::string rest = name.substr(type.size());
    if (!rest.starts_with(':')) {
        return rest;
    }
    return ExpandPrograms(rest.substr(1));
}

std::string UserAssistList::ExpandPrograms(const std::string& text) {
    if (text.find(kProgramsFolder) == std::string::npos) {
        return text;
    }
    if (!programsFolder_) {
        programsFolder_ = GetSpecialFolderPath(platform_, kFolderCommonPrograms);
    }
    return ReplaceAll(text, kProgramsFolder, *programsFolder_);
}

void UserAssistList::Sort() {
    CombSort(entries_, &Entry::value);
}

}  // namespace ostrevin
