#include "platform/HostFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/FilePath.h"

namespace ostrevin {

namespace fs = std::filesystem;

bool IsAbsoluteHostPath(const std::string& path) {
    return FilePath(path).is_absolute();
}

bool IsHostFile(const std::string& path) {
    std::error_code error;
    return fs::is_regular_file(FilePath(path), error);
}

std::optional<std::string> ReadHostFile(const std::string& path, std::size_t most) {
    constexpr std::size_t kBlock = 65536;
    std::ifstream file(FilePath(path), std::ios::binary);
    std::string content;
    while (file && content.size() < most) {
        const std::size_t done = content.size();
        const std::size_t wanted = std::min(most - done, kBlock);
        content.resize(done + wanted);
        file.read(content.data() + done, static_cast<std::streamsize>(wanted));
        content.resize(done + static_cast<std::size_t>(file.gcount()));
    }
    if (!file && !file.eof()) {
        return std::nullopt;
    }
    return content;
}

bool ReplaceHostFile(const std::string& path, std::string_view content) {
    std::error_code error;
    fs::path target = FilePath(path);
    if (fs::is_symlink(target, error)) {
        const fs::path linked = fs::weakly_canonical(target, error);
        target = error ? target : linked;
    }
    fs::path fresh = target;
    fresh += ".new";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    if (file) {
        fs::rename(fresh, target, error);
    }
    if (!file || error) {
        std::error_code ignored;
        fs::remove(fresh, ignored);
        return false;
    }
    return true;
}

bool AppendToHostFile(const std::string& path, std::string_view text) {
    std::ofstream file(FilePath(path), std::ios::binary | std::ios::app);
    file << text;
    file.close();
    return file.good();
}

}  // namespace ostrevin
