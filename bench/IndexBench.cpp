// A browser index of 32 MiB with 100,000 records: the scan beside a copy of the file's bytes, and load and
// sort beside std::sort of the same strings.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/BenchVolume.h"
#include "sources/IEHistoryList.h"
#include "tools/writers/IndexWriter.h"

namespace {

using ostrevin::IEHistoryList;
using ostrevin::bench::BenchVolume;

constexpr std::size_t kFileSize = 32 * std::size_t{1024} * 1024;
constexpr char kUser[] = "anna";
constexpr char kIndexPath[] = "Documents and Settings/anna/Local Settings/History/History.IE5/index.dat";

/// 100,000 addresses of many lengths on few hosts, as a history has them.
std::vector<ostrevin::samples::IndexRecord> Records() {
    std::mt19937 random(1);
    std::vector<ostrevin::samples::IndexRecord> records;
    for (int i = 0; i < 100000; ++i) {
        ostrevin::samples::IndexRecord record;
        record.accessed = 127000000000000000ULL + random() * 1000ULL;
        record.address = "Visited: anna@http://www.host" + std::to_string(random() % 300) + ".example/path/" +
                         std::to_string(random()) + std::string(random() % 40, 'x');
        records.push_back(std::move(record));
    }
    return records;
}

const BenchVolume& RecordVolume() {
    static const BenchVolume volume({});
    static const bool filled = [] {
        std::vector<std::byte> bytes = ostrevin::samples::WriteIndex(Records(), {});
        bytes.resize(std::max(bytes.size(), kFileSize));
        volume.Replace(kIndexPath, bytes);
        return true;
    }();
    static_cast<void>(filled);
    return volume;
}

const std::vector<std::byte>& BlankIndex() {
    static const std::vector<std::byte> bytes = [] {
        std::vector<std::byte> blank = ostrevin::samples::WriteIndex({}, {});
        blank.resize(kFileSize);
        std::mt19937 random(2);
        for (std::size_t i = 0x4000; i < blank.size(); ++i) {
            blank[i] = static_cast<std::byte>(random() & 0x1FU);
        }
        return blank;
    }();
    return bytes;
}

void CopyOfTheBytes(benchmark::State& state) {
    const std::vector<std::byte>& from = BlankIndex();
    std::vector<std::byte> to(from.size());
    for ([[maybe_unused]] auto _ : state) {
        std::memcpy(to.data(), from.data(), from.size());
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(from.size()));
}
BENCHMARK(CopyOfTheBytes)->Unit(benchmark::kMillisecond);

void LoadWhenNothingMatches(benchmark::State& state) {
    static const BenchVolume volume({});
    volume.Replace(kIndexPath, BlankIndex());
    const auto platform = volume.Open();
    for ([[maybe_unused]] auto _ : state) {
        IEHistoryList list(*platform, kUser);
        list.LoadIEHistory(kUser);
        if (list.Count() != 0) {
            state.SkipWithError("something matched");
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kFileSize));
}
BENCHMARK(LoadWhenNothingMatches)->Unit(benchmark::kMillisecond);

void Load100000(benchmark::State& state) {
    const auto platform = RecordVolume().Open();
    for ([[maybe_unused]] auto _ : state) {
        IEHistoryList list(*platform, kUser);
        list.LoadIEHistory(kUser);
        if (list.Count() != 100000) {
            state.SkipWithError("not 100,000 records");
        }
    }
}
BENCHMARK(Load100000)->Unit(benchmark::kMillisecond);

void StdSortOfTheStrings(benchmark::State& state) {
    const auto platform = RecordVolume().Open();
    IEHistoryList list(*platform, kUser);
    list.LoadIEHistory(kUser);
    std::vector<std::string> urls;
    urls.reserve(static_cast<std::size_t>(list.Count()));
    for (std::int32_t i = 0; i < list.Count(); ++i) {
        urls.push_back(list.URL(i));
    }
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        std::vector<std::string> sorted = urls;
        state.ResumeTiming();
        std::sort(sorted.begin(), sorted.end());
        benchmark::DoNotOptimize(sorted.data());
    }
}
BENCHMARK(StdSortOfTheStrings)->Unit(benchmark::kMillisecond);

void LoadAndSort100000(benchmark::State& state) {
    const auto platform = RecordVolume().Open();
    for ([[maybe_unused]] auto _ : state) {
        IEHistoryList list(*platform, kUser);
        list.LoadIEHistory(kUser);
        list.Sort();
    }
}
BENCHMARK(LoadAndSort100000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
