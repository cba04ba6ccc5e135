// Writing 100,000 dates as text, beside strftime.
#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <ctime>

#include "platform/volume/DateWriter.h"

namespace {

constexpr int kDates = 100000;
constexpr double kFirst = 39682.5;  ///< 2008-08-22, noon
constexpr double kStep = 1 / 7.0;

void WriteDates(benchmark::State& state) {
    const ostrevin::DateWriter writer{ostrevin::DateFormats()};
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < kDates; ++i) {
            benchmark::DoNotOptimize(writer.Write(kFirst + i * kStep, ostrevin::DateForm::General));
        }
    }
}
BENCHMARK(WriteDates)->Unit(benchmark::kMillisecond);

void FormatTimes(benchmark::State& state) {
    constexpr std::time_t kFirstSecond = 1219406400;
    constexpr double kSecondsPerDay = 86400;
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < kDates; ++i) {
            const auto time = kFirstSecond + static_cast<std::time_t>(i * kStep * kSecondsPerDay);
            std::tm civil = {};
            gmtime_r(&time, &civil);
            std::array<char, 64> text{};
            benchmark::DoNotOptimize(std::strftime(text.data(), text.size(), "%m/%d/%Y %I:%M:%S %p", &civil));
        }
    }
}
BENCHMARK(FormatTimes)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
