#include "platform/volume/OutputFiles.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/FilePath.h"
#include "platform/RuntimeError.h"
#include "platform/volume/VolumeFiles.h"
#include "platform/volume/linux/FileDescriptor.h"
#include "platform/volume/linux/Mounts.h"

namespace ostrevin {
namespace {

namespace fs = std::filesystem;

class HostOutputFile final : public OutputFile {
  public:
    HostOutputFile(FileDescriptor file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}

    void Write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t written = write(file_.Number(), bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) {
                throw PathFileAccessError(path_);
            }
            bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
        }
    }

    void Close() override {
        if (file_.IsOpen() && close(file_.Release()) != 0) {
            throw PathFileAccessError(path_);
        }
    }

  private:
    FileDescriptor file_;
    std::string path_;
};

/// Whether a file may be written to: one that is known by this name alone, a device or a pipe.
bool IsWritableKind(const struct stat& status) {
    return (S_ISREG(status.st_mode) && status.st_nlink == 1) || S_ISCHR(status.st_mode) ||
           S_ISFIFO(status.st_mode);
}

/// Whether a file is one of the volume's that is mounted at a place of its own.
bool IsEvidence(const FileDescriptor& file, const VolumeFiles& evidence) {
    const FileDescriptor root(open(evidence.RootPath().c_str(), O_PATH | O_CLOEXEC));
    return root.IsOpen() && LiesBelowByMounts(file.Number(), root.Number());
}

}  // namespace

std::unique_ptr<OutputFile> OutputFiles::Create(const std::string& path, Existing existing) {
    const std::string place = PlaceOutside(path);
    constexpr mode_t kRights = 0666;
    // Emptied only once it is known what it is; without waiting, should it be a pipe that nobody reads.
    const int flags = O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    FileDescriptor file(open(place.c_str(), existing == Existing::Keep ? flags | O_EXCL : flags, kRights));
    if (!file.IsOpen() && existing == Existing::Keep && errno == EEXIST) {
        throw FileAlreadyExistsError(path);
    }
    struct stat status {};
    if (!file.IsOpen() || fstat(file.Number(), &status) != 0 || !IsWritableKind(status) ||
        IsEvidence(file, evidence_) || fcntl(file.Number(), F_SETFL, 0) != 0) {
        throw PathFileAccessError(path);
    }
    if (S_ISREG(status.st_mode)) {
        if (ftruncate(file.Number(), 0) != 0) {
            throw PathFileAccessError(path);
        }
        places_[path] = place;
    }
    return std::make_unique<HostOutputFile>(std::move(file), path);
}

bool OutputFiles::MayKeep(const std::string& path) const {
    try {
        const FileDescriptor file(open(PlaceOutside(path).c_str(), O_PATH | O_CLOEXEC));
        struct stat status {};
        return !file.IsOpen() || (fstat(file.Number(), &status) == 0 && S_ISREG(status.st_mode) &&
                                  status.st_nlink == 1 && !IsEvidence(file, evidence_));
    } catch (const RuntimeError&) {
        return false;
    }
}

void OutputFiles::CreateFolder(const std::string& path) const {
    const fs::path given = FilePath(path);
    const fs::path place = FilePath(PlaceOutside(given.has_filename() ? path : given.parent_path().string()));
    std::error_code error;
    fs::create_directory(place, error);
    if (error || !evidence_.IsOutside(place.string())) {
        throw PathFileAccessError(path);
    }
}

std::optional<std::string> OutputFiles::Find(const std::string& path) const {
    const auto found = places_.find(path);
    std::error_code error;
    if (found == places_.end() || !fs::is_regular_file(FilePath(found->second), error)) {
        return std::nullopt;
    }
    return found->second;
}

/// A path with its links resolved. Raises RuntimeError when it leads into the evidence, or nowhere.
std::string OutputFiles::PlaceOutside(const std::string& path) const {
    std::error_code error;
    const fs::path given = fs::absolute(FilePath(path), error);
    const fs::path place = fs::weakly_canonical(given, error);
    if (std::error_code ignored; error && fs::is_fifo(given, ignored)) {
        // A pipe of the shell's, behind a name such as /dev/stdout.
        return given.string();
    }
    if (error || path.empty() || fs::is_symlink(place, error) ||
        !evidence_.IsOutside(place.parent_path().string())) {
        throw PathFileAccessError(path);
    }
    return place.string();
}

}  // namespace ostrevin
