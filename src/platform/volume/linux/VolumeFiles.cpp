#include "platform/volume/VolumeFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <linux/msdos_fs.h>
#include <map>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

#include "platform/Text.h"
#include "platform/volume/linux/FileDescriptor.h"
#include "platform/volume/linux/Mounts.h"

namespace ostrevin {
namespace {

constexpr int kMostLinks = 40;  // as many as the kernel follows on one path
/// How many bytes the targets of the links on one path may have together. Paths of Windows are shorter than a
/// quarter of it; a chain of links that leads astray on purpose ends here.
constexpr std::size_t kLongestTargets = 1024;

/// Opens for reading, leaving the time of the last access as it is where the owner's rights allow that.
FileDescriptor OpenForReading(int folder, const char* name, int flags) {
    flags |= O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    FileDescriptor file(openat(folder, name, flags | O_NOATIME));
    if (!file.IsOpen() && errno == EPERM) {
        file = FileDescriptor(openat(folder, name, flags));
    }
    return file;
}

/// Names an entry without opening it: neither its contents nor the target of a link are touched.
FileDescriptor OpenEntry(int folder, const std::string& name) {
    return FileDescriptor(openat(folder, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
}

std::optional<struct stat> StatusOf(const FileDescriptor& file) {
    struct stat status {};
    return fstat(file.Number(), &status) == 0 ? std::optional(status) : std::nullopt;
}

bool IsSame(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

std::vector<std::string> NamesIn(int folder) {
    std::vector<std::string> names;
    FileDescriptor listed = OpenForReading(folder, ".", O_DIRECTORY);
    if (!listed.IsOpen()) {
        return names;
    }
    DIR* stream = fdopendir(listed.Number());
    if (stream == nullptr) {
        return names;
    }
    listed.Release();
    while (const dirent* entry = readdir(stream)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
    closedir(stream);
    return names;
}

/// A name of the host, whose bytes may be anything, as UTF-8.
std::string ToUtf8(std::string_view name) {
    std::string text;
    while (!name.empty()) {
        AppendCharacter(text, TakeCharacter(name));
    }
    return text;
}

std::string LinkTarget(const FileDescriptor& link) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlinkat(link.Number(), "", target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

/// The names in the folders of the volume. A folder is read once, and again when it has changed since.
class FolderNames {
  public:
    /// The name in a folder that is equal to another one but for case: of several, the first by bytes. None
    /// when there is no such name.
    std::optional<std::string> Match(int folder, const struct stat& status, const std::string& name) {
        const std::map<std::string, std::string>& names = NamesOf(folder, status);
        const auto found = names.find(UpperCase(name));
        return found == names.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    struct Listing {
        std::array<std::int64_t, 4> times{};       // of the last change of the folder
        std::map<std::string, std::string> names;  // by upper-cased name
    };

    static std::array<std::int64_t, 4> TimesOf(const struct stat& status) {
        return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
    }

    const std::map<std::string, std::string>& NamesOf(int folder, const struct stat& status) {
        constexpr std::size_t kMostNames = 500'000;  // kept at a time
        const std::pair place(status.st_dev, status.st_ino);
        const auto known = listings_.find(place);
        if (known != listings_.end() && known->second.times == TimesOf(status)) {
            return known->second.names;
        }
        Listing listing{TimesOf(status), {}};
        for (std::string& name : NamesIn(folder)) {
            const auto [entry, isNew] = listing.names.try_emplace(UpperCase(name), name);
            if (!isNew && name < entry->second) {
                entry->second = std::move(name);
            }
        }
        kept_ += listing.names.size();
        if (kept_ > kMostNames) {
            listings_.clear();
            kept_ = listing.names.size();
        }
        return listings_.insert_or_assign(place, std::move(listing)).first->second.names;
    }

    std::map<std::pair<dev_t, ino_t>, Listing> listings_;
    std::size_t kept_ = 0;  // names
};

/// A way from the root of the volume down to a file or folder. Every step is taken by name in the folder
/// before it and no link is left to the kernel, so that nothing outside of the root can be reached.
class Walk {
  public:
    Walk(const FileDescriptor& root, FolderNames& folders) : folders_(&folders) {
        Step first{"", FileDescriptor(fcntl(root.Number(), F_DUPFD_CLOEXEC, 0)), {}};
        if (const auto status = StatusOf(first.entry)) {
            first.status = *status;
        }
        steps_.push_back(std::move(first));
    }

    /// Goes down along the names; kSuccess, kFileNotFound, kPathNotFound or kAccessDenied.
    std::int32_t Go(const std::vector<std::string>& names) {
        std::deque<std::string> ahead(names.begin(), names.end());
        int links = 0;
        while (!ahead.empty()) {
            std::string name = std::move(ahead.front());
            ahead.pop_front();
            if (name == "..") {
                steps_.resize(std::max<std::size_t>(steps_.size() - 1, 1));
                continue;
            }
            Step step;
            const std::int32_t result = Look(std::move(name), step);
            if (result != kSuccess) {
                return result == kFileNotFound && !ahead.empty() ? kPathNotFound : result;
            }
            if (!S_ISLNK(step.status.st_mode)) {
                steps_.push_back(std::move(step));
            } else if (++links > kMostLinks || !Follow(step.entry, ahead)) {
                return kFileNotFound;
            }
        }
        return kSuccess;
    }

    [[nodiscard]] int Entry() const { return steps_.back().entry.Number(); }
    [[nodiscard]] mode_t Mode() const { return steps_.back().status.st_mode; }
    [[nodiscard]] const std::string& Name() const { return steps_.back().name; }
    /// The folder that holds the entry; not to be asked for at the root.
    [[nodiscard]] int Parent() const { return steps_[steps_.size() - 2].entry.Number(); }
    /// Names an entry of the folder reached so far and corrects the case of its name; not open, with errno
    /// set, when there is none.
    FileDescriptor Find(std::string& name) const {
        FileDescriptor entry = OpenEntry(Entry(), name);
        if (!entry.IsOpen() && errno == ENOENT) {
            if (std::optional<std::string> match = folders_->Match(Entry(), steps_.back().status, name)) {
                name = std::move(*match);
                return OpenEntry(Entry(), name);
            }
            errno = ENOENT;
        }
        return entry;
    }
    /// The names of the steps as they stand in their folders.
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (std::size_t i = 1; i < steps_.size(); ++i) {
            names.push_back(steps_[i].name);
        }
        return names;
    }

  private:
    struct Step {
        std::string name;
        FileDescriptor entry;
        struct stat status {};
    };

    /// Takes one step from the folder reached so far.
    std::int32_t Look(std::string name, Step& step) const {
        if (!S_ISDIR(Mode())) {
            return kPathNotFound;
        }
        step.name = std::move(name);
        step.entry = Find(step.name);
        if (!step.entry.IsOpen()) {
            return errno == EACCES ? kAccessDenied : kFileNotFound;
        }
        const auto status = StatusOf(step.entry);
        if (!status) {
            return kFileNotFound;
        }
        step.status = *status;
        return kSuccess;
    }

    /// Puts the components of a link's target in front of those still ahead.
    bool Follow(const FileDescriptor& link, std::deque<std::string>& ahead) {
        const std::string target = LinkTarget(link);
        targets_ += target.size();
        if (target.empty() || targets_ > kLongestTargets) {
            return false;
        }
        if (target.front() == '/') {
            steps_.resize(1);
        }
        for (std::size_t end = target.size(); end > 0;) {
            const std::size_t slash = target.rfind('/', end - 1);
            const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
            std::string component = target.substr(start, end - start);
            if (!component.empty() && component != ".") {
                ahead.push_front(std::move(component));
            }
            end = start == 0 ? 0 : start - 1;
        }
        return true;
    }

    FolderNames* folders_;
    std::vector<Step> steps_;
    std::size_t targets_ = 0;  // bytes
};

std::optional<std::uint32_t> NtfsAttributes(const std::string& magicLink) {
    std::array<unsigned char, 4> bytes{};
    if (getxattr(magicLink.c_str(), "system.ntfs_attrib_be", bytes.data(), bytes.size()) == 4) {
        return (std::uint32_t{bytes[0]} << 24U) | (std::uint32_t{bytes[1]} << 16U) |
               (std::uint32_t{bytes[2]} << 8U) | bytes[3];
    }
    std::uint32_t native = 0;  // this older form is in the byte order of the host
    if (getxattr(magicLink.c_str(), "system.ntfs_attrib", &native, sizeof native) == 4) {
        return native;
    }
    return std::nullopt;
}

std::optional<std::uint32_t> FatAttributes(int entry, mode_t mode, const std::string& magicLink) {
    struct statfs system {};
    if (fstatfs(entry, &system) != 0 ||
        (system.f_type != MSDOS_SUPER_MAGIC && system.f_type != EXFAT_SUPER_MAGIC) ||
        (!S_ISREG(mode) && !S_ISDIR(mode))) {
        return std::nullopt;
    }
    const FileDescriptor file = OpenForReading(AT_FDCWD, magicLink.c_str(), 0);
    std::uint32_t attributes = 0;
    if (!file.IsOpen() || ioctl(file.Number(), FAT_IOCTL_GET_ATTRIBUTES, &attributes) != 0) {
        return std::nullopt;
    }
    return attributes;
}

/// The attributes of the entry at the end of a walk, by the name under which it is listed.
std::uint32_t AttributesOf(const Walk& walk, std::string_view name) {
    // An entry that is only named cannot be asked; its link in the process's own folder stands for it.
    const std::string magicLink = "/proc/self/fd/" + std::to_string(walk.Entry());
    std::optional<std::uint32_t> attributes = NtfsAttributes(magicLink);
    if (!attributes) {
        attributes = FatAttributes(walk.Entry(), walk.Mode(), magicLink);
    }
    std::uint32_t answer = attributes ? *attributes : PresumedAttributes(name);
    answer &= ~static_cast<std::uint32_t>(kAttributeDirectory);
    return S_ISDIR(walk.Mode()) ? answer | kAttributeDirectory : answer;
}

/// The folder, seen through a mount of this process alone that is read-only and keeps the times of the last
/// access, of links too; through the host's own mount where the system or the user's rights do not allow it.
FileDescriptor UntouchedView(const FileDescriptor& folder) {
    FileDescriptor view(
        open_tree(folder.Number(), "", AT_EMPTY_PATH | AT_RECURSIVE | OPEN_TREE_CLONE | OPEN_TREE_CLOEXEC));
    struct mount_attr attributes {};
    attributes.attr_set = MOUNT_ATTR_RDONLY | MOUNT_ATTR_NOATIME;
    attributes.attr_clr = MOUNT_ATTR__ATIME;
    const bool set = view.IsOpen() && mount_setattr(view.Number(), "", AT_EMPTY_PATH | AT_RECURSIVE,
                                                    &attributes, sizeof attributes) == 0;
    return set ? std::move(view) : FileDescriptor(fcntl(folder.Number(), F_DUPFD_CLOEXEC, 0));
}

class RegularFile final : public InputFile {
  public:
    RegularFile(FileDescriptor file, std::uint64_t size) : file_(std::move(file)), size_(size) {}

    [[nodiscard]] std::uint64_t Size() const override { return size_; }

    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        std::size_t done = 0;
        while (done < buffer.size() && offset + done < size_) {
            const std::size_t wanted = std::min<std::uint64_t>(buffer.size() - done, size_ - (offset + done));
            const ssize_t got =
                pread(file_.Number(), buffer.data() + done, wanted, static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                break;
            }
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

  private:
    FileDescriptor file_;
    std::uint64_t size_;
};

}  // namespace

void PrepareForFilling(void* memory, std::size_t size) {
    constexpr std::uintptr_t kPage = 4096;
    constexpr std::size_t kWorthwhile = 4 * std::size_t{1024} * 1024;
    if (size < kWorthwhile) {
        return;
    }
    const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(memory) + kPage - 1) / kPage * kPage;
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(memory) + size) / kPage * kPage;
    // A hint: where the system does not take it, filling takes longer.
    madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);  // NOLINT(performance-no-int-to-ptr)
}

class VolumeFiles::Host {
  public:
    explicit Host(FileDescriptor folder) : folder_(std::move(folder)), root_(UntouchedView(folder_)) {}

    /// The folder as the host has it mounted.
    [[nodiscard]] const FileDescriptor& Folder() const { return folder_; }
    [[nodiscard]] const FileDescriptor& Root() const { return root_; }

    /// The way to a path of the examined machine; none with the reason in result.
    std::optional<Walk> Resolve(const std::string& path, char drive, std::int32_t& result) const {
        const auto components = PathComponents(path, drive);
        if (!components) {
            result = kPathNotFound;
            return std::nullopt;
        }
        Walk walk(root_, folders_);
        result = walk.Go(*components);
        return result == kSuccess ? std::optional(std::move(walk)) : std::nullopt;
    }

    std::optional<Walk> Resolve(const std::string& path, char drive) const {
        std::int32_t result = kSuccess;
        return Resolve(path, drive, result);
    }

    /// An entry of the folder at the end of a walk. What a link leads to tells the attributes; a link that
    /// leads nowhere is listed as a file.
    [[nodiscard]] DirectoryEntry Describe(std::vector<std::string> names, const std::string& name) const {
        names.push_back(name);
        Walk walk(root_, folders_);
        std::string text = ToUtf8(name);
        const std::uint32_t attributes =
            walk.Go(names) == kSuccess ? AttributesOf(walk, text) : PresumedAttributes(text);
        return {std::move(text), attributes};
    }

    /// A way that has not begun.
    [[nodiscard]] Walk Begin() const { return Walk(root_, folders_); }

  private:
    FileDescriptor folder_;
    FileDescriptor root_;
    mutable FolderNames folders_;
};

VolumeFiles::VolumeFiles(const std::string& folder) {
    FileDescriptor root(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!root.IsOpen()) {
        throw std::runtime_error(folder + ": " + std::strerror(errno));
    }
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(folder.c_str(), nullptr), &std::free);
    rootPath_ = path ? path.get() : folder;
    host_ = std::make_unique<Host>(std::move(root));
}

VolumeFiles::~VolumeFiles() = default;

bool VolumeFiles::Exists(const std::string& path) const {
    return host_->Resolve(path, drive_).has_value();
}

std::vector<DirectoryEntry> VolumeFiles::List(const std::string& folder) const {
    std::vector<DirectoryEntry> entries;
    const std::optional<Walk> walk = host_->Resolve(folder, drive_);
    if (walk && S_ISDIR(walk->Mode())) {
        const std::vector<std::string> names = walk->Names();
        for (const std::string& name : NamesIn(walk->Entry())) {
            entries.push_back(host_->Describe(names, name));
        }
    }
    SortByUpperCasedName(entries);
    return entries;
}

std::optional<DirectoryEntry> VolumeFiles::Find(const std::string& path) const {
    std::optional<std::vector<std::string>> components = PathComponents(path, drive_);
    if (!components || components->empty()) {
        return std::nullopt;
    }
    std::string name = std::move(components->back());
    components->pop_back();
    Walk folder = host_->Begin();
    if (folder.Go(*components) != kSuccess || !folder.Find(name).IsOpen()) {
        return std::nullopt;
    }
    return host_->Describe(folder.Names(), name);
}

std::unique_ptr<InputFile> VolumeFiles::Open(const std::string& path, std::int32_t& result) const {
    const std::optional<Walk> walk = host_->Resolve(path, drive_, result);
    if (!walk) {
        return nullptr;
    }
    result = kAccessDenied;
    if (!S_ISREG(walk->Mode())) {
        return nullptr;
    }
    FileDescriptor file = OpenForReading(walk->Parent(), walk->Name().c_str(), O_NOFOLLOW);
    const auto status = StatusOf(file);
    if (!status || !S_ISREG(status->st_mode)) {
        return nullptr;
    }
    result = kSuccess;
    return std::make_unique<RegularFile>(std::move(file), static_cast<std::uint64_t>(status->st_size));
}

std::optional<std::string> VolumeFiles::HostPath(const std::string& path) const {
    const std::optional<Walk> walk = host_->Resolve(path, drive_);
    if (!walk) {
        return std::nullopt;
    }
    std::string hostPath = rootPath_ == "/" ? "" : rootPath_;
    for (const std::string& name : walk->Names()) {
        hostPath += "/" + name;
    }
    return hostPath.empty() ? "/" : hostPath;
}

bool VolumeFiles::IsOutside(const std::string& hostFolder) const {
    const auto root = StatusOf(host_->Folder());
    FileDescriptor folder(open(hostFolder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen() && LiesBelowByMounts(folder.Number(), host_->Folder().Number())) {
        return false;
    }
    auto status = StatusOf(folder);
    while (root && status && !IsSame(*status, *root)) {
        FileDescriptor parent(openat(folder.Number(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
        const auto parentStatus = StatusOf(parent);
        if (parentStatus && IsSame(*parentStatus, *status)) {
            return true;
        }
        folder = std::move(parent);
        status = parentStatus;
    }
    return false;
}

}  // namespace ostrevin
