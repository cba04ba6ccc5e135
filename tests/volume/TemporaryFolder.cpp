#include "tests/volume/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrevin {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "ostrevin-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder can be made");
    }
    path_ = pattern;
    chmod(pattern.c_str(), S_IRWXU | S_IRGRP | S_IXGRP | S_IROTH | S_IXOTH);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    for (auto entry = std::filesystem::recursive_directory_iterator(path_, error);
         entry != std::filesystem::recursive_directory_iterator(); entry.increment(error)) {
        if (entry->is_directory(error) && !entry->is_symlink(error)) {
            std::filesystem::permissions(entry->path(), std::filesystem::perms::owner_all, error);
        }
    }
    std::filesystem::remove_all(path_, error);
}

void TemporaryFolder::Write(const std::string& name, std::string_view text) const {
    Write(name, std::as_bytes(std::span(text)));
}

void TemporaryFolder::Write(const std::string& name, std::span<const std::byte> bytes) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    for (const std::byte byte : bytes) {
        stream.put(std::to_integer<char>(byte));
    }
    if (!stream.flush()) {
        throw std::runtime_error("cannot write " + file.string());
    }
}

void TemporaryFolder::MakeFolder(const std::string& name) const {
    std::filesystem::create_directories(path_ / name);
}

void TemporaryFolder::MakeLink(const std::string& name, const std::string& target) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::filesystem::create_symlink(target, path_ / name);
}

void TemporaryFolder::MakeFifo(const std::string& name) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    if (mkfifo((path_ / name).c_str(), S_IRUSR | S_IWUSR) != 0) {
        throw std::runtime_error("no fifo can be made");
    }
}

void TemporaryFolder::Shut(const std::string& name) const {
    std::filesystem::permissions(path_ / name, std::filesystem::perms::none);
}

std::string BytesOfFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

OrdinaryUser::OrdinaryUser() {
    constexpr uid_t kNobody = 65534;
    changed_ = geteuid() == 0 && seteuid(kNobody) == 0;
}

OrdinaryUser::~OrdinaryUser() {
    if (changed_ && seteuid(0) != 0) {
        std::abort();
    }
}

}  // namespace ostrevin
