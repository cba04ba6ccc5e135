#include "platform/volume/VolumeFiles.h"

#include <windows.h>
#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "platform/Text.h"
#include "platform/volume/windows/HostFile.h"
#include "platform/volume/windows/WideText.h"

namespace ostrevin {
namespace {

/// What the host says of an entry of a folder.
struct Entry {
    std::wstring name;
    DWORD attributes = 0;
    DWORD reparseTag = 0;  ///< where the attributes say that there is one
};

/// Whether an entry stands for another one: a junction, a mounted volume, a symbolic link. Those are not
/// followed, for they lead to places of this host. Other reparse points, such as compressed files, are files.
bool IsLink(const Entry& entry) {
    constexpr DWORD kStandsForAnother = 0x20000000;
    return (entry.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (entry.reparseTag & kStandsForAnother) != 0;
}

bool IsFolder(const Entry& entry) {
    return (entry.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::wstring Join(const std::wstring& folder, const std::wstring& name) {
    return folder.ends_with(L'\\') ? folder + name : folder + L'\\' + name;
}

/// The entries that a search finds; none with the reason in error.
std::vector<Entry> Search(const std::wstring& folder, const std::wstring& pattern, DWORD& error) {
    std::vector<Entry> entries;
    WIN32_FIND_DATAW data{};
    const HANDLE search = FindFirstFileW(ExtendedPath(Join(folder, pattern)).c_str(), &data);
    error = search == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    if (search == INVALID_HANDLE_VALUE) {
        return entries;
    }
    do {
        const std::wstring_view name = data.cFileName;
        if (name != L"." && name != L"..") {
            entries.push_back({std::wstring(name), data.dwFileAttributes, data.dwReserved0});
        }
    } while (FindNextFileW(search, &data) != 0);
    FindClose(search);
    return entries;
}

/// Whether a component can be the name of an entry: neither a pattern nor a stream of a file.
bool IsName(const std::string& component) {
    return component.find_first_of("*?<>\":|") == std::string::npos &&
           std::none_of(component.begin(), component.end(),
                        [](char character) { return character >= 0 && character < ' '; });
}

/// The entry of this name: exactly, else the first by its letters of those that differ in case, else the one
/// that has it as its short name.
std::optional<Entry> FindIn(const std::wstring& folder, const std::string& name, DWORD& error) {
    if (!IsName(name)) {
        error = ERROR_FILE_NOT_FOUND;
        return std::nullopt;
    }
    const std::wstring wide = ToWide(name);
    std::vector<Entry> found = Search(folder, wide, error);
    const auto best =
        std::min_element(found.begin(), found.end(), [&](const Entry& left, const Entry& right) {
            return std::pair(left.name != wide, left.name) < std::pair(right.name != wide, right.name);
        });
    return best == found.end() ? std::nullopt : std::optional(std::move(*best));
}

/// A copy may have lost the attributes of those files that Windows hides by itself.
DirectoryEntry Describe(const Entry& entry) {
    DirectoryEntry described{FromWide(entry.name), entry.attributes};
    if (!described.name.starts_with('.')) {
        described.attributes |= PresumedAttributes(described.name);
    }
    if (IsLink(entry)) {
        described.attributes &= ~static_cast<std::uint32_t>(kAttributeDirectory);  // there is nothing in it
    }
    return described;
}

std::string ReasonOf(DWORD error) {
    std::array<wchar_t, 512> text{};
    std::size_t length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, 0, text.data(), text.size(), nullptr);
    while (length > 0 && (text.at(length - 1) <= L' ' || text.at(length - 1) == L'.')) {
        --length;
    }
    return length == 0 ? "error " + std::to_string(error) : FromWide({text.data(), length});
}

/// Opens for reading and leaves the time of the last access as it is, where the host lets it.
FileHandle OpenForReading(const std::wstring& path, const Entry& entry) {
    // What is no reparse point now must not be one that is followed then.
    const bool isReparsePoint = (entry.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    const DWORD flags = isReparsePoint ? 0U : static_cast<DWORD>(FILE_FLAG_OPEN_REPARSE_POINT);
    const std::wstring extended = ExtendedPath(path);
    const auto open = [&](DWORD access) {
        return FileHandle(
            CreateFileW(extended.c_str(), access, kShareAll, nullptr, OPEN_EXISTING, flags, nullptr));
    };
    FileHandle file = open(GENERIC_READ | FILE_WRITE_ATTRIBUTES);
    if (file.IsOpen()) {
        constexpr FILETIME kLeaveAsItIs = {0xFFFFFFFF, 0xFFFFFFFF};
        SetFileTime(file.Get(), nullptr, &kLeaveAsItIs, nullptr);
        return file;
    }
    return open(GENERIC_READ);
}

class RegularFile final : public InputFile {
  public:
    RegularFile(FileHandle file, std::uint64_t size) : file_(std::move(file)), size_(size) {}

    [[nodiscard]] std::uint64_t Size() const override { return size_; }

    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        constexpr std::uint64_t kMostAtOnce = std::uint64_t{1} << 26U;
        std::size_t done = 0;
        while (done < buffer.size() && offset + done < size_) {
            const std::uint64_t place = offset + done;
            OVERLAPPED position{};
            position.Offset = static_cast<DWORD>(place);
            position.OffsetHigh = static_cast<DWORD>(place >> 32U);
            const auto wanted = static_cast<DWORD>(
                std::min({std::uint64_t{buffer.size() - done}, size_ - place, kMostAtOnce}));
            DWORD got = 0;
            if (ReadFile(file_.Get(), buffer.data() + done, wanted, &got, &position) == 0 || got == 0) {
                break;
            }
            done += got;
        }
        return done;
    }

  private:
    FileHandle file_;
    std::uint64_t size_;
};

/// The path of what a handle leads to, below the root of its disk or share, with every link in it resolved;
/// empty when the system does not tell. Windows 2000 has no documented call for this but the native one.
std::wstring NameOf(const FileHandle& file) {
    struct Status {
        void* status;
        ULONG_PTR information;
    };
    struct Name {
        ULONG bytes;
        std::array<wchar_t, 32768> text;
    };
    using Query = LONG(WINAPI*)(HANDLE, Status*, void*, ULONG, int);
    constexpr int kFileNameInformation = 9;
    const HMODULE native = GetModuleHandleW(L"ntdll.dll");
    const auto query = native == nullptr ? nullptr
                                         : reinterpret_cast<Query>(reinterpret_cast<void*>(
                                               GetProcAddress(native, "NtQueryInformationFile")));
    const auto name = std::make_unique<Name>();
    Status status{};
    if (query == nullptr || query(file.Get(), &status, name.get(), sizeof(Name), kFileNameInformation) < 0) {
        return {};
    }
    const std::size_t length = std::min<std::size_t>(name->bytes / sizeof(wchar_t), name->text.size());
    return {name->text.data(), length};
}

/// Whether the name of a folder is that of another one or lies below it.
bool IsAtOrBelow(const FileHandle& inner, const FileHandle& outer) {
    const std::string name = UpperCase(FromWide(NameOf(inner)));
    std::string above = UpperCase(FromWide(NameOf(outer)));
    if (above.ends_with('\\')) {
        above.pop_back();
    }
    return name.starts_with(above) && (name.size() == above.size() || name[above.size()] == '\\');
}

}  // namespace

void PrepareForFilling(void* /*memory*/, std::size_t /*size*/) {
    // Windows provides large pages only to those who hold a right to them.
}

class VolumeFiles::Host {
  public:
    Host(std::wstring root, FileHandle folder) : root_(std::move(root)), folder_(std::move(folder)) {}

    [[nodiscard]] const FileHandle& Folder() const { return folder_; }

    struct Place {
        std::wstring path;
        Entry entry;
    };

    /// The way to a path of the examined machine; none with the reason in result. Every step is looked up in
    /// the folder before it, so that no link is followed.
    std::optional<Place> Resolve(const std::string& path, char drive, std::int32_t& result) const {
        const auto components = PathComponents(path, drive);
        result = kPathNotFound;
        if (!components) {
            return std::nullopt;
        }
        Place place{root_, {L"", FILE_ATTRIBUTE_DIRECTORY, 0}};
        for (std::size_t i = 0; i < components->size(); ++i) {
            if (!IsFolder(place.entry)) {
                result = kPathNotFound;
                return std::nullopt;
            }
            DWORD error = ERROR_SUCCESS;
            std::optional<Entry> entry = FindIn(place.path, (*components)[i], error);
            if (!entry || IsLink(*entry)) {
                const bool last = i + 1 == components->size();
                result = error == ERROR_ACCESS_DENIED ? kAccessDenied
                         : entry || last              ? kFileNotFound
                                                      : kPathNotFound;
                return std::nullopt;
            }
            place.path = Join(place.path, entry->name);
            place.entry = std::move(*entry);
        }
        result = kSuccess;
        return place;
    }

    std::optional<Place> Resolve(const std::string& path, char drive) const {
        std::int32_t result = kSuccess;
        return Resolve(path, drive, result);
    }

  private:
    std::wstring root_;
    FileHandle folder_;
};

VolumeFiles::VolumeFiles(const std::string& folder) {
    const std::wstring root = FullPath(folder);
    FileHandle handle = OpenFolder(root);
    const DWORD error = handle.IsOpen() ? ERROR_SUCCESS : GetLastError();
    const std::optional<FileInformation> information = InformationOf(handle);
    if (!information || (information->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        throw std::runtime_error(folder + ": " + ReasonOf(error == ERROR_SUCCESS ? ERROR_DIRECTORY : error));
    }
    rootPath_ = FromWide(root);
    host_ = std::make_unique<Host>(root, std::move(handle));
}

VolumeFiles::~VolumeFiles() = default;

bool VolumeFiles::Exists(const std::string& path) const {
    return host_->Resolve(path, drive_).has_value();
}

std::vector<DirectoryEntry> VolumeFiles::List(const std::string& folder) const {
    std::vector<DirectoryEntry> entries;
    const auto place = host_->Resolve(folder, drive_);
    if (place && IsFolder(place->entry)) {
        DWORD error = ERROR_SUCCESS;
        for (const Entry& entry : Search(place->path, L"*", error)) {
            entries.push_back(Describe(entry));
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
    std::string folder = std::string(1, drive_) + ":\\";
    for (std::size_t i = 0; i + 1 < components->size(); ++i) {
        folder.append((*components)[i]).append("\\");
    }
    const auto place = host_->Resolve(folder, drive_);
    if (!place || !IsFolder(place->entry)) {
        return std::nullopt;
    }
    DWORD error = ERROR_SUCCESS;
    const std::optional<Entry> entry = FindIn(place->path, components->back(), error);
    return entry ? std::optional(Describe(*entry)) : std::nullopt;
}

std::unique_ptr<InputFile> VolumeFiles::Open(const std::string& path, std::int32_t& result) const {
    const auto place = host_->Resolve(path, drive_, result);
    if (!place) {
        return nullptr;
    }
    result = kAccessDenied;
    if (IsFolder(place->entry)) {
        return nullptr;
    }
    FileHandle file = OpenForReading(place->path, place->entry);
    const std::optional<FileInformation> information = InformationOf(file);
    if (!information || GetFileType(file.Get()) != FILE_TYPE_DISK) {
        return nullptr;
    }
    result = kSuccess;
    return std::make_unique<RegularFile>(
        std::move(file), (std::uint64_t{information->nFileSizeHigh} << 32U) | information->nFileSizeLow);
}

std::optional<std::string> VolumeFiles::HostPath(const std::string& path) const {
    const auto place = host_->Resolve(path, drive_);
    return place ? std::optional(FromWide(place->path)) : std::nullopt;
}

bool VolumeFiles::IsOutside(const std::string& hostFolder) const {
    const std::wstring path = FullPath(hostFolder);
    const FileHandle folder = OpenFolder(path);
    const auto root = InformationOf(host_->Folder());
    const auto information = InformationOf(folder);
    if (!root || !information || (information->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        return false;
    }
    // By its name with the links resolved, and by the folders above it, whichever names lead to those.
    if (information->dwVolumeSerialNumber == root->dwVolumeSerialNumber &&
        IsAtOrBelow(folder, host_->Folder())) {
        return false;
    }
    for (std::wstring above = path; !above.empty(); above = ParentOf(above)) {
        const auto each = InformationOf(OpenFolder(above));
        if (each && IsSame(*each, *root)) {
            return false;
        }
    }
    return true;
}

}  // namespace ostrevin
