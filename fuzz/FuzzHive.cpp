// Fuzzes the reader of registry hives: opens a hive with its logs (HiveInput.h) and reads all that is in it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <span>
#include <vector>

#include "fuzz/HiveInput.h"
#include "platform/volume/regf/Hive.h"
#include "tests/support/BytesFile.h"
#include "tools/writers/DirtyHive.h"

using ostrevin::fuzz::HiveParts;
using ostrevin::regf::Hive;
using ostrevin::regf::HiveError;
using ostrevin::regf::Key;
using ostrevin::regf::Value;

namespace {

// Keys may share one list of values, and values one cell of data: reading is bounded as a caller's would be.
constexpr std::size_t kMostKeys = 5000;
constexpr std::size_t kMostValues = 20000;
constexpr std::size_t kMostData = std::size_t{32} << 20U;
constexpr std::size_t kMostLookups = 8;

/// What holds for every hive, or the reader is wrong.
void Expect(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class Reading {
  public:
    explicit Reading(const Hive& hive) { keys_.push_back(hive.Root()); }

    void Run() {
        for (std::size_t i = 0; i < keys_.size() && i < kMostKeys; ++i) {
            const Key key = keys_[i];
            (void)key.ClassName();
            (void)key.LastWritten();
            ReadValues(key);
            ReadSubKeys(key);
        }
    }

  private:
    void ReadSubKeys(const Key& key) {
        const std::vector<Key> subKeys = key.SubKeys();
        for (std::size_t i = 0; i < subKeys.size() && i < kMostLookups; ++i) {
            Expect(key.FindSubKey(subKeys[i].Name()).has_value());
        }
        keys_.insert(keys_.end(), subKeys.begin(), subKeys.end());
    }

    void ReadValues(const Key& key) {
        std::size_t lookups = 0;
        for (const Value& value : key.Values()) {
            if (values_ > kMostValues || dataSize_ > kMostData) {
                return;
            }
            ++values_;
            const std::string name = value.Name();
            (void)value.NameLength();
            (void)value.Type();
            dataSize_ += value.Data().size();
            Expect(value.HasName(name));
            if (lookups++ < kMostLookups) {
                Expect(key.FindValue(name).has_value());
            }
        }
    }

    std::vector<Key> keys_;
    std::size_t values_ = 0;
    std::size_t dataSize_ = 0;
};

std::unique_ptr<ostrevin::InputFile> FileOf(std::span<const std::uint8_t> part) {
    const auto bytes = std::as_bytes(part);
    return std::make_unique<ostrevin::BytesFile>(std::vector<std::byte>(bytes.begin(), bytes.end()));
}

/// Gives a log entry the hashes that belong to it.
void RepairEntry(std::span<std::byte> entry) {
    constexpr std::size_t kHash1 = 24;
    constexpr std::size_t kHash2 = 32;
    constexpr std::size_t kHeader = 40;
    const auto put = [&](std::size_t at, std::uint64_t hash) {
        for (std::size_t i = 0; i < sizeof(hash); ++i) {
            entry[at + i] = static_cast<std::byte>(hash >> (8 * i));
        }
    };
    put(kHash1, ostrevin::samples::Marvin32(entry.subspan(kHeader), ostrevin::samples::kLogSeed));
    put(kHash2, ostrevin::samples::Marvin32(entry.first(kHash2), ostrevin::samples::kLogSeed));
}

/// Gives a file the checksum and the hashes that belong to it, behind which a mutation would never be seen.
void Repair(std::span<std::byte> file) {
    constexpr std::size_t kSector = 512;
    constexpr std::size_t kSmallestEntry = kSector;
    if (file.size() < kSector) {
        return;
    }
    ostrevin::samples::UpdateChecksum(file);
    for (std::size_t at = kSector; at + kSmallestEntry <= file.size();) {
        const auto rest = file.subspan(at);
        const std::size_t size = std::to_integer<std::size_t>(rest[4]) |
                                 std::to_integer<std::size_t>(rest[5]) << 8U |
                                 std::to_integer<std::size_t>(rest[6]) << 16U;
        if (std::to_integer<char>(rest[0]) != 'H' || size < kSmallestEntry || size > rest.size()) {
            return;
        }
        RepairEntry(rest.first(size));
        at += size;
    }
}

}  // namespace

extern "C" {

std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned seed) {
    const std::size_t newSize = LLVMFuzzerMutate(data, size, maxSize);
    std::minstd_rand random(seed);
    for (const auto part : HiveParts(std::span(data, newSize))) {
        if (random() % 4 != 0) {
            Repair(std::as_writable_bytes(part));
        }
    }
    return newSize;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ostrevin::fuzz;
    const auto parts = HiveParts(std::span(data, size));
    ostrevin::regf::Logs logs;
    logs.log = FileOf(parts[kLog]);
    logs.log1 = FileOf(parts[kLog1]);
    logs.log2 = FileOf(parts[kLog2]);
    try {
        const auto hive = Hive::Open(FileOf(parts[kPrimary]), logs);
        Reading(*hive).Run();
    } catch (const HiveError&) {
        return 0;
    }
    return 0;
}
}
