// Sorting a list of 100,000 rows by a column of numbers, dates or texts, each beside std::sort of keys that
// are ready made.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <QApplication>

#include "bench/BenchVolume.h"
#include "controls/Form.h"
#include "controls/ListView.h"
#include "toolkit/qt/QtToolkit.h"
#include "ui/ListSorter.h"
#include "ui/SortKeys.h"

namespace {

using ostrevin::DateForm;
using ostrevin::ListView;
using ostrevin::SortOrder;
using ostrevin::bench::BenchVolume;
using ostrevin::qt::QtToolkit;

constexpr int kRows = 100000;
constexpr int kTextColumn = 1;
constexpr int kNumberColumn = 2;
constexpr int kDateColumn = 3;
constexpr int kOrderColumn = 4;

/// A window with a list of rows in random order.
class ListForm : public ostrevin::Form {
  public:
    ListForm(QtToolkit& toolkit, ostrevin::Platform& platform) : Form(toolkit, "frmList") {
        Move(0, 0, 12000, 9000);
        list.Move(0, 0, 12000, 9000);
        list.AddColumn("Text", 6000);
        list.AddColumn("Number", 2000).SetTag("NUMBER");
        list.AddColumn("Date", 3000).SetTag("DATE");
        list.AddColumn("Order", 1000);
        std::mt19937 random(1);
        for (int i = 0; i < kRows; ++i) {
            constexpr double kFirstDay = 38000;
            constexpr std::uint64_t kSecondsPerDay = 86400;
            constexpr std::uint64_t kSeconds = 3000 * kSecondsPerDay;
            const double date = kFirstDay + static_cast<double>(random() % kSeconds) / double{kSecondsPerDay};
            auto& item = list.Add(std::to_string(i) + "KEY", "http://www" + std::to_string(random() % 1000) +
                                                                 ".Example.com/Some/Page" +
                                                                 std::to_string(random()) + ".html");
            item.SetSubItem(kNumberColumn - 1, std::to_string(random() % 50000));
            item.SetSubItem(kDateColumn - 1, platform.DateToText(date, DateForm::General));
            item.SetSubItem(kOrderColumn - 1, std::to_string(i));
        }
    }
    ~ListForm() override { DropView(); }
    ListForm(const ListForm&) = delete;
    ListForm& operator=(const ListForm&) = delete;

    ListView list{this, "list"};
};

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
