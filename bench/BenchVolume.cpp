#include "bench/BenchVolume.h"

#include <chrono>
#include <fstream>
#include <stdexcept>

namespace ostrevin::bench {

namespace fs = std::filesystem;

BenchVolume::BenchVolume(const samples::SampleOptions& options) {
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    folder_ = fs::temp_directory_path() / ("ostrevin-bench-" + std::to_string(now));
    if (!fs::create_directory(folder_)) {
        throw std::runtime_error("there is one already: " + folder_.string());
    }
    samples::WriteVolume(samples::MakeSampleVolume(options), folder_);
}

BenchVolume::~BenchVolume() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void BenchVolume::Replace(const std::string& path, std::span<const std::byte> bytes) const {
    if (!fs::is_regular_file(folder_ / path)) {
        throw std::runtime_error("no such file to replace: " + path);
    }
    std::ofstream file(folder_ / path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::unique_ptr<VolumePlatform> BenchVolume::Open() const {
    return VolumePlatform::Open(folder_.string(), [](const std::string& /*line*/) {});
}

}  // namespace ostrevin::bench
