#include "platform/volume/OutputFiles.h"

#include <windows.h>
#include <algorithm>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/volume/VolumeFiles.h"
#include "platform/volume/windows/HostFile.h"
#include "platform/volume/windows/WideText.h"

namespace ostrevin {
namespace {

class HostOutputFile final : public OutputFile {
  public:
    HostOutputFile(FileHandle file, std::string path) : file_(std::move(file)), path_(std::move(path)) {}

    void Write(std::string_view bytes) override {
        constexpr std::size_t kMostAtOnce = std::size_t{1} << 26U;
        while (!bytes.empty()) {
            DWORD written = 0;
            if (WriteFile(file_.Get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce)),
                          &written, nullptr) == 0) {
                throw PathFileAccessError(path_);
            }
            bytes.remove_prefix(written);
        }
    }

    void Close() override {
        if (!file_.Close()) {
            throw PathFileAccessError(path_);
        }
    }

  private:
    FileHandle file_;
    std::string path_;
};

/// Whether a file may be written to: one that is known by this name alone and leads nowhere else.
bool IsWritableKind(const FileHandle& file) {
    const std::optional<FileInformation> information = InformationOf(file);
    constexpr DWORD kOther = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    return information && GetFileType(file.Get()) == FILE_TYPE_DISK && information->nNumberOfLinks <= 1 &&
           (information->dwFileAttributes & kOther) == 0;
}

}  // namespace

std::unique_ptr<OutputFile> OutputFiles::Create(const std::string& path, Existing existing) {
    const std::string place = PlaceOutside(path);
    // Emptied only once it is known what it is.
    FileHandle file(CreateFileW(ExtendedPath(ToWide(place)).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                existing == Existing::Keep ? CREATE_NEW : OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!file.IsOpen() && existing == Existing::Keep && GetLastError() == ERROR_FILE_EXISTS) {
        throw FileAlreadyExistsError(path);
    }
    if (!file.IsOpen() || !IsWritableKind(file) || SetEndOfFile(file.Get()) == 0) {
        throw PathFileAccessError(path);
    }
    places_[path] = place;
    return std::make_unique<HostOutputFile>(std::move(file), path);
}

bool OutputFiles::MayKeep(const std::string& path) const {
    try {
        const std::wstring place = ExtendedPath(ToWide(PlaceOutside(path)));
        const FileHandle file(
            CreateFileW(place.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                        FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        return !file.IsOpen() || IsWritableKind(file);
    } catch (const RuntimeError&) {
        return false;
    }
}

void OutputFiles::CreateFolder(const std::string& path) const {
    const std::string place = PlaceOutside(path);
    const bool made = CreateDirectoryW(ExtendedPath(ToWide(place)).c_str(), nullptr) != 0;
    if ((!made && GetLastError() != ERROR_ALREADY_EXISTS) || !evidence_.IsOutside(place)) {
        throw PathFileAccessError(path);
    }
}

std::optional<std::string> OutputFiles::Find(const std::string& path) const {
    const auto found = places_.find(path);
    if (found == places_.end()) {
        return std::nullopt;
    }
    const DWORD attributes = GetFileAttributesW(ExtendedPath(ToWide(found->second)).c_str());
    const bool isFile = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    return isFile ? std::optional(found->second) : std::nullopt;
}

/// A path as a full one. Raises RuntimeError when it leads into the evidence, or nowhere.
std::string OutputFiles::PlaceOutside(const std::string& path) const {
    const std::wstring place = FullPath(path);
    const std::wstring folder = ParentOf(place);
    if (folder.empty() || !evidence_.IsOutside(FromWide(folder))) {
        throw PathFileAccessError(path);
    }
    return FromWide(place);
}

}  // namespace ostrevin
