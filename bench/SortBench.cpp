// Sorting a list of 100,000 rows by a column of numbers, dates or texts, each beside std::sort of keys that
// are ready made.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>

#include "bench/BenchVolume.h"
#include "bench/ListForm.h"
#include "toolkit/qt/QtToolkit.h"
#include "ui/ListSorter.h"
#include "ui/SortKeys.h"

namespace {

using ostrevin::ListView;
using ostrevin::SortOrder;
using ostrevin::bench::BenchVolume;
using ostrevin::bench::kDateColumn;
using ostrevin::bench::kNumberColumn;
using ostrevin::bench::kOrderColumn;
using ostrevin::bench::kTextColumn;
using ostrevin::bench::ListForm;
using ostrevin::qt::QtToolkit;

class Fixture {
  public:
    Fixture() { form_.Show(); }

    [[nodiscard]] ListView& List() { return form_.list; }
    [[nodiscard]] ostrevin::Platform& Platform() { return *platform_; }

    /// What the rows are sorted by, in the rows' random order.
    [[nodiscard]] std::vector<std::string> Keys(int column) {
        List().SortBy(kOrderColumn - 1, SortOrder::Ascending);
        std::vector<std::string> keys;
        for (std::size_t i = 1; i <= List().ItemCount(); ++i) {
            const std::string& cell = List().Item(i).Cell(column);
            keys.push_back(column == kNumberColumn ? ostrevin::NumberKey(cell)
                           : column == kDateColumn ? ostrevin::DateKey(*platform_, cell)
                                                   : cell);
        }
        return keys;
    }

  private:
    BenchVolume volume_{{0, 0, 0}};
    std::unique_ptr<ostrevin::Platform> platform_ = volume_.Open();
    QtToolkit toolkit_;
    ListForm form_{toolkit_, *platform_};
};

void SortList(benchmark::State& state) {
    Fixture fixture;
    ListView& list = fixture.List();
    const auto& column = list.Column(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        list.SortBy(kOrderColumn - 1, SortOrder::Ascending);
        QApplication::processEvents();
        state.ResumeTiming();
        ostrevin::ListSorter(fixture.Platform(), list, column, false);
        QApplication::processEvents();
    }
}
BENCHMARK(SortList)->Arg(kTextColumn)->Arg(kNumberColumn)->Arg(kDateColumn)->Unit(benchmark::kMillisecond);

void SortReadyMadeKeys(benchmark::State& state) {
    const std::vector<std::string> keys = Fixture().Keys(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        std::vector<std::string> sorted = keys;
        state.ResumeTiming();
        std::sort(sorted.begin(), sorted.end());
        benchmark::DoNotOptimize(sorted.data());
    }
}
BENCHMARK(SortReadyMadeKeys)
    ->Arg(kTextColumn)
    ->Arg(kNumberColumn)
    ->Arg(kDateColumn)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
