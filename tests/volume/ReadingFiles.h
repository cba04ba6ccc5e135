// What the tests of a volume's files on any host share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/volume/VolumeFiles.h"

namespace ostrevin {

/// The text of a file of the volume, or "code" and the number that tells why it cannot be opened.
inline std::string Contents(const VolumeFiles& files, const std::string& path) {
    std::int32_t result = kSuccess;
    const std::unique_ptr<InputFile> file = files.Open(path, result);
    if (!file) {
        return "code " + std::to_string(result);
    }
    std::string text;
    for (const std::byte byte : ReadAll(*file, 1000).value_or(std::vector<std::byte>())) {
        text += std::to_integer<char>(byte);
    }
    return text;
}

inline std::vector<std::string> Names(const std::vector<DirectoryEntry>& entries) {
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (const DirectoryEntry& entry : entries) {
        names.push_back(entry.name);
    }
    return names;
}

}  // namespace ostrevin
