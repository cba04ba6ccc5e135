#include "platform/volume/linux/Mounts.h"

#include <algorithm>
#include <array>
#include <climits>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace ostrevin {
namespace {

struct Mount {
    int number = 0;
    std::string device;  ///< of the file system, as two numbers
    std::string root;    ///< the folder of the file system that is mounted
    std::string point;   ///< where
};

/// A place in a file system, whatever mount it was reached by.
struct Place {
    std::string device;
    std::string path;
};

/// Blanks and backslashes stand in the table as three octal digits.
std::string Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            const auto digit = [&](std::size_t at) { return static_cast<unsigned>(text[i + at] - '0'); };
            plain += static_cast<char>((digit(1) << 6U) | (digit(2) << 3U) | digit(3));
            i += 3;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

std::vector<Mount> ReadMounts() {
    std::vector<Mount> mounts;
    std::ifstream table("/proc/self/mountinfo");
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        Mount mount;
        int parent = 0;
        fields >> mount.number >> parent >> mount.device >> mount.root >> mount.point;
        mount.root = Unescaped(mount.root);
        mount.point = Unescaped(mount.point);
        mounts.push_back(std::move(mount));
    }
    return mounts;
}

bool IsAtOrBelow(std::string_view path, std::string_view folder) {
    if (folder.ends_with('/')) {
        folder.remove_suffix(1);
    }
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// The path by which a file was reached; empty when it has none.
std::string PathOf(int file) {
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    return length > 0 && path[0] == '/' ? std::string(path.data(), static_cast<std::size_t>(length))
                                        : std::string();
}

/// The number of the mount by which a file was reached.
std::optional<int> MountOf(int file) {
    std::ifstream description("/proc/self/fdinfo/" + std::to_string(file));
    for (std::string word; description >> word;) {
        int number = 0;
        if (word == "mnt_id:" && description >> number) {
            return number;
        }
    }
    return std::nullopt;
}

std::optional<Place> PlaceOf(int file, const std::vector<Mount>& mounts) {
    const std::optional<int> number = MountOf(file);
    const std::string path = PathOf(file);
    const auto mount =
        std::find_if(mounts.begin(), mounts.end(), [&](const Mount& each) { return each.number == number; });
    if (mount == mounts.end() || !IsAtOrBelow(path, mount->point)) {
        return std::nullopt;
    }
    const std::size_t above = mount->point == "/" ? 0 : mount->point.size();
    return Place{mount->device, (mount->root == "/" ? std::string() : mount->root) + path.substr(above)};
}

}  // namespace

bool LiesBelowByMounts(int file, int folder) {
    const std::vector<Mount> mounts = ReadMounts();
    const std::optional<Place> place = PlaceOf(file, mounts);
    const std::optional<Place> above = PlaceOf(folder, mounts);
    if (!place || !above) {
        return false;
    }
    std::vector<Place> folders = {*above};
    for (const Mount& mount : mounts) {
        if (IsAtOrBelow(mount.point, PathOf(folder))) {
            folders.push_back({mount.device, mount.root});
        }
    }
    return std::any_of(folders.begin(), folders.end(), [&](const Place& each) {
        return each.device == place->device && IsAtOrBelow(place->path, each.path);
    });
}

}  // namespace ostrevin
