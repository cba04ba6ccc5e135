// The sample volume: an invented Windows XP machine with four people and every kind of trace, as a list of
// files. Tests ask the list what each file was meant to hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/writers/HiveWriter.h"
#include "tools/writers/IndexWriter.h"
#include "tools/writers/LinkWriter.h"

namespace ostrevin::samples {

struct HiveFile {
    HiveKey root;
    HiveOptions options;
    /// A dirty hive: the primary file holds this state, and a log beside it leads to root.
    std::optional<HiveKey> before;
};

/// How the state before was written: an hour earlier.
HiveOptions OptionsBefore(const HiveFile& hive);

struct IndexFile {
    std::vector<IndexRecord> records;
    IndexOptions options;
};

using FileContent = std::variant<std::vector<std::byte>, HiveFile, Link, IndexFile>;

struct SampleFile {
    std::string path;  ///< below the volume's root, UTF-8, components separated by "/"
    FileContent content;
};

class SampleVolume {
  public:
    /// Adds a file by its path on the machine, such as C:\boot.ini. A path that is there keeps its content.
    void Add(std::string_view machinePath, FileContent content);
    void AddFolder(std::string_view machinePath);

    [[nodiscard]] const std::vector<SampleFile>& Files() const { return files_; }
    /// Folders that exist although no file is in them.
    [[nodiscard]] const std::vector<std::string>& Folders() const { return folders_; }
    /// The file at a path below the root, or null.
    [[nodiscard]] const SampleFile* Find(std::string_view path) const;

  private:
    std::vector<SampleFile> files_;
    std::vector<std::string> folders_;
};

struct SampleOptions {
    unsigned extraProfiles = 0;          ///< plain accounts besides the four people
    unsigned extraUserAssistValues = 0;  ///< in the logged-on user's hive
    unsigned extraIndexRecords = 0;      ///< in the logged-on user's history
};

SampleVolume MakeSampleVolume(const SampleOptions& options);

/// The bytes of a file; of a dirty hive, those of its primary file.
std::vector<std::byte> BytesOf(const SampleFile& file);

/// Writes every file below the folder, over what is there. Throws std::filesystem::filesystem_error or
/// std::ios_base::failure.
void WriteVolume(const SampleVolume& volume, const std::filesystem::path& folder);

}  // namespace ostrevin::samples
