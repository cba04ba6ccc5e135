// A user's hive of 32 MiB with 20,000 program counts: opening, loading and sorting beside hivexget, as a
// process, for the same key.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>
#include <vector>

#include "accounts/AccountList.h"
#include "bench/BenchVolume.h"
#include "tools/sample-volume/Machine.h"
#include "tools/sample-volume/Profile.h"
#include "tools/writers/HiveWriter.h"

namespace {

using ostrevin::AccountList;
using ostrevin::bench::BenchVolume;
using ostrevin::samples::HiveKey;

constexpr char kHivePath[] = "Documents and Settings/anna/NTUSER.DAT";
constexpr int kValues = 20000;

std::vector<std::byte> LargeHive() {
    HiveKey root;
    root.name = "$$$PROTO.HIV";
    HiveKey& counts = root.Key(std::string(ostrevin::samples::kFirstUserAssist) + "\\Count");
    for (int i = 0; i < kValues; ++i) {
        const std::string name = "UEME_RUNPATH:C:\\Program Files\\Vendor " +
                                 std::to_string(i * 7919 % kValues) + "\\program" + std::to_string(i) +
                                 ".exe";
        counts.Add(ostrevin::samples::Rot13(name), 3, ostrevin::samples::CountData(6, 127000000000000000ULL));
    }
    HiveKey& filler = root.Key("Software\\Filler");
    for (int i = 0; i < 2000; ++i) {
        filler.Add("value" + std::to_string(i), 3, std::vector<std::byte>(14000));
    }
    return ostrevin::samples::WriteHive(root, {});
}

const BenchVolume& HiveVolume() {
    static const BenchVolume volume({});
    static const bool filled = [] {
        volume.Replace(kHivePath, LargeHive());
        return true;
    }();
    static_cast<void>(filled);
    return volume;
}

void HivexgetAsAProcess(benchmark::State& state) {
    const std::string command = "hivexget '" + (HiveVolume().Folder() / kHivePath).string() + "' '\\" +
                                std::string(ostrevin::samples::kFirstUserAssist) + "\\Count' > /dev/null";
    for ([[maybe_unused]] auto _ : state) {
        if (std::system(command.c_str()) != 0) {  // NOLINT(cert-env33-c)
            state.SkipWithError("hivexget fails");
            break;
        }
    }
}
BENCHMARK(HivexgetAsAProcess)->Unit(benchmark::kMillisecond)->UseRealTime();

void OpenLoadAndSortUserAssist(benchmark::State& state) {
    const std::string sid =
        ostrevin::samples::SidOf(ostrevin::samples::kMachineSid, ostrevin::samples::kAnnaRid);
    for ([[maybe_unused]] auto _ : state) {
        const auto platform = HiveVolume().Open();
        AccountList accounts(*platform,
                             {"anna", [] { return std::string("anna"); }, [](const std::string&) {}});
        accounts.LoadAccountSIDSFromRegistry();
        for (std::int32_t i = 0; i < accounts.Count(); ++i) {
            if (accounts.AccountSID(i) == sid && accounts.UserAssist(i)->Count() != kValues) {
                state.SkipWithError("not all values were read");
            }
        }
    }
}
BENCHMARK(OpenLoadAndSortUserAssist)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
