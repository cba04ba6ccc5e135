// The hives of a volume, each read once, when it is first asked for.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "platform/volume/FewOpenFiles.h"
#include "platform/volume/regf/Hive.h"

namespace ostrevin {

class VolumeFiles;

/// Takes one line that the examiner has to know: a file, whose name may hold any character, and what is the
/// matter with it.
using Notice = std::function<void(const std::string&)>;

/// The largest hive that is read, in bytes; Windows XP itself keeps its hives well below.
inline constexpr std::uint64_t kLargestHive = std::uint64_t{512} << 20U;

class HiveStore {
  public:
    /// notice may be empty. It hears of a hive that cannot be read or that had to be recovered, once of each.
    HiveStore(const VolumeFiles& files, Notice notice);

    /// The hive in a file of the volume; it lives as long as the store. Null with what the loading call of
    /// the machine returns in result: kFileNotFound, kPathNotFound, kAccessDenied, kNotRegistryFile,
    /// kBadDatabase.
    const regf::Hive* Load(const std::string& path, std::int32_t& result);
    /// As Load, for a hive that the machine cannot be without: that it is missing is told, too.
    const regf::Hive* LoadRequired(const std::string& path);

    /// Whether a hive's file is there and cannot be read, which is told.
    [[nodiscard]] bool IsUnreadable(const std::string& path);

    /// When the hive in a file was written last (FILETIME), without reading more than its beginning.
    [[nodiscard]] std::optional<std::uint64_t> LastWritten(const std::string& path) const;

    /// Tells the examiner of a file, or of what stands in one, once each.
    void Tell(const std::string& file, const std::string& reason);

  private:
    std::unique_ptr<regf::Hive> Read(const std::string& path, const std::string& hostPath,
                                     std::int32_t& result);
    [[nodiscard]] regf::Logs OpenLogs(const std::string& path) const;

    const VolumeFiles& files_;
    FewOpenFiles openFiles_;
    Notice notice_;
    std::map<std::string, std::unique_ptr<regf::Hive>> hives_;  // by the host's path
    std::set<std::string> told_;                                // lines
};

}  // namespace ostrevin
