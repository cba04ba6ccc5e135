// Volumes in a temporary folder for the benchmarks.
#pragma once

#include <filesystem>
#include <memory>
#include <span>
#include <string>

#include "platform/volume/VolumePlatform.h"
#include "tools/sample-volume/SampleVolume.h"

namespace ostrevin::bench {

/// The sample volume, larger as the options say; gone with the object.
class BenchVolume {
  public:
    explicit BenchVolume(const samples::SampleOptions& options);
    BenchVolume(const BenchVolume&) = delete;
    BenchVolume& operator=(const BenchVolume&) = delete;
    ~BenchVolume();

    [[nodiscard]] const std::filesystem::path& Folder() const { return folder_; }
    /// Puts bytes in the place of a file, given by its path below the volume's root.
    void Replace(const std::string& path, std::span<const std::byte> bytes) const;
    [[nodiscard]] std::unique_ptr<VolumePlatform> Open() const;

  private:
    std::filesystem::path folder_;
};

}  // namespace ostrevin::bench
