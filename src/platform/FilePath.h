// Paths of the host's own files.
#pragma once

#include <filesystem>
#include <string>

namespace ostrevin {

/// A UTF-8 text as a path of the host, whatever the host's own encoding is.
[[nodiscard]] inline std::filesystem::path FilePath(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

}  // namespace ostrevin
