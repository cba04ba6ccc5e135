// The report on 100,000 entries, written to a file: pages of the history, and programs, for each of which the
// volume is asked whether it is there. The yardstick is writing the same bytes at once.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "accounts/AccountList.h"
#include "bench/BenchVolume.h"
#include "report/HtmlReport.h"

namespace {

using ostrevin::AccountList;
using ostrevin::ReportSection;
using ostrevin::bench::BenchVolume;

constexpr char kUser[] = "anna";

/// A file of the host that is gone with the object.
class OutputPath {
  public:
    OutputPath()
        : path_(std::filesystem::temp_directory_path() /
                ("ostrevin-bench-" + std::to_string(getpid()) + ".htm")) {}
    OutputPath(const OutputPath&) = delete;
    OutputPath& operator=(const OutputPath&) = delete;
    ~OutputPath() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    [[nodiscard]] std::string Text() const { return path_.string(); }
    [[nodiscard]] std::string Bytes() const {
        std::string bytes(std::filesystem::file_size(path_), '\0');
        std::ifstream(path_, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return bytes;
    }

  private:
    std::filesystem::path path_;
};

class OneSection : public ostrevin::ReportClient {
  public:
    explicit OneSection(ReportSection section) : section_(section) {}
    bool Includes(ReportSection section) override { return section == section_; }
    void Opened() override {}
    void Progress(float percent, bool /*handleMessages*/) override { benchmark::DoNotOptimize(percent); }

  private:
    ReportSection section_;
};

/// A volume, its accounts, and a report on one section of it.
class ReportRun {
  public:
    ReportRun(const BenchVolume& volume, ReportSection section)
        : platform_(volume.Open()),
          accounts_(*platform_, {kUser, [] { return std::string(kUser); }, [](const std::string&) {}}),
          client_(section) {
        accounts_.LoadAccountSIDSFromRegistry();
        accounts_.LoadAccountNamesFromSID();
        index_ = accounts_.GetAccountIndex(kUser);
        // Reading the sources is not what is measured.
        accounts_.UserAssist(index_);
        accounts_.IEHistory(index_);
    }
    void Write() { ostrevin::HtmlReport(*platform_, accounts_, client_).Create(index_, output.Text()); }

    OutputPath output;

  private:
    std::unique_ptr<ostrevin::VolumePlatform> platform_;
    AccountList accounts_;
    OneSection client_;
    std::int32_t index_ = 0;
};

void WriteReport(benchmark::State& state, const BenchVolume& volume, ReportSection section) {
    ReportRun run(volume, section);
    for ([[maybe_unused]] auto _ : state) {
        run.Write();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(run.output.Bytes().size()));
}

void HistoryReport(benchmark::State& state) {
    WriteReport(state, BenchVolume({0, 0, static_cast<unsigned>(state.range(0))}), ReportSection::IEHistory);
}
BENCHMARK(HistoryReport)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void ProgramsReport(benchmark::State& state) {
    WriteReport(state, BenchVolume({0, static_cast<unsigned>(state.range(0)), 0}), ReportSection::Programs);
}
BENCHMARK(ProgramsReport)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The same bytes as the larger report on the history.
void WriteTheSameBytes(benchmark::State& state) {
    const BenchVolume volume({0, 0, 100000});
    ReportRun run(volume, ReportSection::IEHistory);
    run.Write();
    const std::string bytes = run.output.Bytes();
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* file = std::fopen(run.output.Text().c_str(), "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(WriteTheSameBytes)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
