#include "tests/volume/TemporaryFolder.h"

#include <cstdlib>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace ostrevin {

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
