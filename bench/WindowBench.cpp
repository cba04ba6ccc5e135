// The window: filling a list with 100,000 rows, scrolling it, and the start on a volume with 50 profiles
// beside the same start with none but the sample's people.
#include <benchmark/benchmark.h>
#include <memory>
#include <random>

#include <QApplication>
#include <QTreeView>

#include "bench/BenchVolume.h"
#include "startup/Program.h"
#include "toolkit/qt/QtToolkit.h"
#include "tools/sample-volume/Machine.h"

namespace {

using ostrevin::Program;
using ostrevin::bench::BenchVolume;
using ostrevin::qt::QtToolkit;

std::string AnnaSid() {
    return ostrevin::samples::SidOf(ostrevin::samples::kMachineSid, ostrevin::samples::kAnnaRid);
}

const BenchVolume& HistoryVolume() {
    static const BenchVolume volume({0, 0, 100000});
    return volume;
}

void FillIEHistory100000(benchmark::State& state) {
    const auto platform = HistoryVolume().Open();
    QtToolkit toolkit;
    Program program(*platform, toolkit);
    program.Main();
    ostrevin::frmMain& window = *program.MainWindow();
    window.FillIEHistory(AnnaSid());  // reads the source, which is not what is measured
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        window.lstIEHistory.Clear();
        window.lstIEHistory.SetTag("");
        QApplication::processEvents();
        state.ResumeTiming();
        window.FillIEHistory(AnnaSid());
        QApplication::processEvents();
    }
    state.counters["rows"] = static_cast<double>(window.lstIEHistory.ItemCount());
}
BENCHMARK(FillIEHistory100000)->Unit(benchmark::kMillisecond);

void ScrollAPage(benchmark::State& state) {
    const auto platform = HistoryVolume().Open();
    QtToolkit toolkit;
    Program program(*platform, toolkit);
    program.Main();
    ostrevin::frmMain& window = *program.MainWindow();
    window.TabStrip.Select(4);
    window.FillIEHistory(AnnaSid());
    std::mt19937 random(1);
    for ([[maybe_unused]] auto _ : state) {
        const std::size_t row = random() % window.lstIEHistory.ItemCount() + 1;
        window.lstIEHistory.EnsureVisible(window.lstIEHistory.Item(row));
        window.Refresh();
    }
}
BENCHMARK(ScrollAPage)->Unit(benchmark::kMillisecond);

void StartToFirstPaint(benchmark::State& state) {
    const BenchVolume volume({static_cast<unsigned>(state.range(0)), 0, 0});
    for ([[maybe_unused]] auto _ : state) {
        const auto platform = volume.Open();
        QtToolkit toolkit;
        Program program(*platform, toolkit);
        program.Main();
        program.MainWindow()->Refresh();
    }
}
BENCHMARK(StartToFirstPaint)->Arg(0)->Arg(50)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
