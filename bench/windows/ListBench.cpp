// list_bench [ROUNDS]: filling a list with 100,000 rows, and sorting it by a column of texts, numbers or
// dates, as window_bench and sort_bench do it for Linux; Debian has no Google Benchmark for Windows. Prints
// medians.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "bench/BenchVolume.h"
#include "bench/ListForm.h"
#include "startup/Program.h"
#include "toolkit/win32/Win32Toolkit.h"
#include "tools/sample-volume/Machine.h"
#include "ui/ListSorter.h"

namespace {

using ostrevin::SortOrder;
using ostrevin::bench::BenchVolume;
using ostrevin::bench::ListForm;
using ostrevin::win32::Win32Toolkit;

class Bench {
  public:
    explicit Bench(int rounds) : rounds_(std::max(rounds, 1)) {}

    void Measure(const std::string& name, const std::function<void()>& prepare,
                 const std::function<void()>& action) const {
        std::vector<double> rounds;
        for (int i = 0; i < rounds_; ++i) {
            prepare();
            const auto before = std::chrono::steady_clock::now();
            action();
            const std::chrono::duration<double, std::milli> passed =
                std::chrono::steady_clock::now() - before;
            rounds.push_back(passed.count());
        }
        std::sort(rounds.begin(), rounds.end());
        std::printf("%-24s %8.1f ms\n", name.c_str(), rounds[rounds.size() / 2]);
    }

  private:
    int rounds_;
};

void Fill(const Bench& bench) {
    const BenchVolume volume({0, 0, 100000});
    const auto platform = volume.Open();
    Win32Toolkit toolkit;
    ostrevin::Program program(*platform, toolkit);
    program.Main();
    ostrevin::frmMain& window = *program.MainWindow();
    const std::string sid =
        ostrevin::samples::SidOf(ostrevin::samples::kMachineSid, ostrevin::samples::kAnnaRid);
    window.FillIEHistory(sid);  // reads the source, which is not what is measured
    bench.Measure(
        "FillIEHistory100000",
        [&] {
            window.lstIEHistory.Clear();
            window.lstIEHistory.SetTag("");
            toolkit.DoEvents();
        },
        [&] {
            window.FillIEHistory(sid);
            toolkit.DoEvents();
        });
}

void Sort(const Bench& bench) {
    const BenchVolume volume({0, 0, 0});
    const auto platform = volume.Open();
    Win32Toolkit toolkit;
    ListForm form(toolkit, *platform);
    form.Show();
    for (const int column :
         {ostrevin::bench::kTextColumn, ostrevin::bench::kNumberColumn, ostrevin::bench::kDateColumn}) {
        bench.Measure(
            "SortList/" + std::to_string(column),
            [&] {
                form.list.SortBy(ostrevin::bench::kOrderColumn - 1, SortOrder::Ascending);
                toolkit.DoEvents();
            },
            [&] {
                ostrevin::ListSorter(*platform, form.list, form.list.Column(column), false);
                toolkit.DoEvents();
            });
    }
}

}  // namespace

int main(int count, char** arguments) {
    const Bench bench(count > 1 ? std::atoi(arguments[1]) : 7);
    Fill(bench);
    Sort(bench);
    return 0;
}
