#include "tests/volume/TemporaryFolder.h"

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

#include "platform/FilePath.h"

namespace ostrevin {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        path_ = fs::temp_directory_path() / ("ostrevin-test-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
    fs::permissions(
        path_,
        fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec,
        fs::perm_options::add);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    for (auto entry = fs::recursive_directory_iterator(path_, error);
         entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        if (entry->is_directory(error) && !entry->is_symlink(error)) {
            fs::permissions(entry->path(), fs::perms::owner_all, error);
        }
    }
    fs::remove_all(path_, error);
}

std::string TemporaryFolder::Utf8Path() const {
    const std::u8string path = path_.u8string();
    return {path.begin(), path.end()};
}

std::string TemporaryFolder::operator/(const std::string& name) const {
    const std::u8string path = (path_ / FilePath(name)).make_preferred().u8string();
    return {path.begin(), path.end()};
}

void TemporaryFolder::Write(const std::string& name, std::string_view text) const {
    Write(name, std::as_bytes(std::span(text)));
}

void TemporaryFolder::Write(const std::string& name, std::span<const std::byte> bytes) const {
    const fs::path file = path_ / FilePath(name);
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    for (const std::byte byte : bytes) {
        stream.put(std::to_integer<char>(byte));
    }
    if (!stream.flush()) {
        throw std::runtime_error("cannot write " + name);
    }
}

void TemporaryFolder::MakeFolder(const std::string& name) const {
    fs::create_directories(path_ / FilePath(name));
}

std::string BytesOfFile(const std::string& file) {
    std::ifstream stream(FilePath(file), std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

}  // namespace ostrevin
