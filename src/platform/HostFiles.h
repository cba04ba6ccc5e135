// Files of the machine that the program runs on: its settings, its log, what was written for a person. Paths
// are in UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ostrevin {

/// Whether a path names its place whatever folder is the current one.
[[nodiscard]] bool IsAbsoluteHostPath(const std::string& path);
/// Whether a file has this name, not nothing, a folder or a device.
[[nodiscard]] bool IsHostFile(const std::string& path);
/// What the file holds, of its beginning as much as told; none when it cannot be read.
[[nodiscard]] std::optional<std::string> ReadHostFile(const std::string& path,
                                                      std::size_t most = std::string::npos);
/// Puts a file with this content in the place of the one of that name, if there is one. It is written beside
/// that first: when this fails, which gives false, the former file is as it was. Of a link, what it leads to
/// is replaced.
[[nodiscard]] bool ReplaceHostFile(const std::string& path, std::string_view content);
/// Adds to the end of a file, which is made if there is none; false when it fails.
[[nodiscard]] bool AppendToHostFile(const std::string& path, std::string_view text);

}  // namespace ostrevin
