#include "platform/volume/VolumeFiles.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"

namespace ostrevin {
namespace {

bool IsSeparator(char character) {
    return character == '\\' || character == '/';
}

/// The part of a path below the root of the drive; none when the path is not an absolute one on that drive.
std::optional<std::string_view> BelowRoot(std::string_view path, char drive) {
    if (path.size() >= 2 && path[1] == ':') {
        if (UpperCase(path.substr(0, 1)) != std::string(1, drive)) {
            return std::nullopt;
        }
        path.remove_prefix(2);
        if (path.empty()) {
            return path;
        }
    }
    const bool absolute = !path.empty() && IsSeparator(path[0]);
    const bool network = path.size() >= 2 && IsSeparator(path[1]);
    return absolute && !network ? std::optional(path) : std::nullopt;
}

void AddComponent(std::vector<std::string>& components, std::string_view component) {
    if (component == "..") {
        if (!components.empty()) {
            components.pop_back();
        }
        return;
    }
    const std::size_t last = component.find_last_not_of(". ");
    if (last != std::string_view::npos) {
        components.emplace_back(component.substr(0, last + 1));
    }
}

}  // namespace

std::optional<std::vector<std::string>> PathComponents(std::string_view path, char drive) {
    if (Utf16Length(path) > kLongestPath || path.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<std::string_view> below = BelowRoot(path, drive);
    if (!below) {
        return std::nullopt;
    }
    std::vector<std::string> components;
    for (std::size_t start = 0; start < below->size();) {
        const std::size_t end = std::min(below->find_first_of("\\/", start), below->size());
        AddComponent(components, below->substr(start, end - start));
        start = end + 1;
    }
    return components;
}

std::uint32_t PresumedAttributes(std::string_view name) {
    const bool hidden =
        name.starts_with('.') || EqualNoCase(name, "desktop.ini") || EqualNoCase(name, "thumbs.db");
    return hidden ? kAttributeHidden : 0U;
}

void SortByUpperCasedName(std::vector<DirectoryEntry>& entries) {
    std::vector<std::pair<std::u16string, std::size_t>> order;
    order.reserve(entries.size());
    for (const DirectoryEntry& entry : entries) {
        order.emplace_back(Utf8ToUtf16(UpperCase(entry.name)), order.size());
    }
    std::sort(order.begin(), order.end(), [&](const auto& left, const auto& right) {
        return left.first != right.first ? left.first < right.first
                                         : entries[left.second].name < entries[right.second].name;
    });
    std::vector<DirectoryEntry> sorted;
    sorted.reserve(entries.size());
    for (const auto& [key, index] : order) {
        sorted.push_back(std::move(entries[index]));
    }
    entries = std::move(sorted);
}

std::optional<std::vector<std::byte>> ReadAll(InputFile& file, std::uint64_t limit) {
    if (file.Size() > limit) {
        return std::nullopt;
    }
    std::vector<std::byte> bytes;
    bytes.reserve(static_cast<std::size_t>(file.Size()));
    PrepareForFilling(bytes.data(), bytes.capacity());
    bytes.resize(static_cast<std::size_t>(file.Size()));
    if (file.Read(0, bytes) != bytes.size()) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace ostrevin
