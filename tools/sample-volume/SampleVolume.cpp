#include "tools/sample-volume/SampleVolume.h"

#include <algorithm>
#include <fstream>
#include <span>
#include <utility>

#include "tools/sample-volume/Machine.h"
#include "tools/sample-volume/People.h"
#include "tools/writers/DirtyHive.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

std::string RelativePath(std::string_view machinePath) {
    std::string path(machinePath.substr(3));
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

/// The log beside a hive: Windows XP names it after the hive, with the profile's hives in lower case.
std::string LogPath(const std::string& hivePath) {
    constexpr std::string_view kUserHive = "NTUSER.DAT";
    if (hivePath.ends_with(kUserHive)) {
        return hivePath.substr(0, hivePath.size() - kUserHive.size()) + "ntuser.dat.LOG";
    }
    return hivePath + ".LOG";
}

DirtyHive DirtyBytes(const HiveFile& hive) {
    return MakeDirtyHive(WriteHive(*hive.before, OptionsBefore(hive)), WriteHive(hive.root, hive.options));
}

struct Encoder {
    std::vector<std::byte> operator()(const std::vector<std::byte>& bytes) const { return bytes; }
    std::vector<std::byte> operator()(const HiveFile& hive) const {
        return hive.before ? DirtyBytes(hive).primary : WriteHive(hive.root, hive.options);
    }
    std::vector<std::byte> operator()(const Link& link) const { return WriteLink(link); }
    std::vector<std::byte> operator()(const IndexFile& index) const {
        return WriteIndex(index.records, index.options);
    }
};

std::filesystem::path Utf8Path(const std::string& path) {
    return {std::u8string(path.begin(), path.end())};
}

void WriteBytes(const std::filesystem::path& path, std::span<const std::byte> bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out;
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out.open(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
}

}  // namespace

void SampleVolume::Add(std::string_view machinePath, FileContent content) {
    std::string path = RelativePath(machinePath);
    if (Find(path) == nullptr) {
        files_.push_back({std::move(path), std::move(content)});
    }
}

void SampleVolume::AddFolder(std::string_view machinePath) {
    folders_.push_back(RelativePath(machinePath));
}

const SampleFile* SampleVolume::Find(std::string_view path) const {
    const auto found =
        std::find_if(files_.begin(), files_.end(), [&](const SampleFile& file) { return file.path == path; });
    return found == files_.end() ? nullptr : &*found;
}

HiveOptions OptionsBefore(const HiveFile& hive) {
    HiveOptions options = hive.options;
    options.lastWritten -= kHour;
    return options;
}

std::vector<std::byte> BytesOf(const SampleFile& file) {
    return std::visit(Encoder{}, file.content);
}

SampleVolume MakeSampleVolume(const SampleOptions& options) {
    SampleVolume volume;
    AddMachine(volume, options);
    AddAnna(volume, options);
    AddFelix(volume);
    AddSvetlana(volume);
    AddKeller(volume);
    return volume;
}

void WriteVolume(const SampleVolume& volume, const std::filesystem::path& folder) {
    for (const std::string& path : volume.Folders()) {
        std::filesystem::create_directories(folder / Utf8Path(path));
    }
    for (const SampleFile& file : volume.Files()) {
        WriteBytes(folder / Utf8Path(file.path), BytesOf(file));
        const auto* const hive = std::get_if<HiveFile>(&file.content);
        if (hive != nullptr && hive->before) {
            WriteBytes(folder / Utf8Path(LogPath(file.path)), DirtyBytes(*hive).log);
        }
    }
}

}  // namespace ostrevin::samples
