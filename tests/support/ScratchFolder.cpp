#include "tests/support/ScratchFolder.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace ostrevin {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    std::random_device random;
    do {
        path_ = fs::temp_directory_path() / ("ostrevin-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path ScratchFolder::Full(std::string_view name) const {
    return path_ / fs::path(std::u8string(name.begin(), name.end()));
}

std::string ScratchFolder::Path(std::string_view name) const {
    const std::u8string path = Full(name).u8string();
    return {path.begin(), path.end()};
}

void ScratchFolder::Write(std::string_view name, std::string_view bytes) const {
    std::ofstream file(Full(name), std::ios::binary | std::ios::trunc);
    file << bytes;
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + Path(name));
    }
}

std::string ScratchFolder::Read(std::string_view name) const {
    std::ifstream file(Full(name), std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + Path(name));
    }
    std::string bytes(static_cast<std::size_t>(fs::file_size(Full(name))), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

void ScratchFolder::MakeFolder(std::string_view name) const {
    fs::create_directories(Full(name));
}

bool ScratchFolder::Has(std::string_view name) const {
    return fs::exists(fs::symlink_status(Full(name)));
}

std::size_t ScratchFolder::Count() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(path_), fs::directory_iterator()));
}

}  // namespace ostrevin
