// From Std_entry to Fg_FreeGrabber.

#include <benchmark/benchmark.h>

#include "bench/BareSdk.h"

namespace {

using quillon::bench::BareSdk;
using namespace quillon::client;

void StartUp(benchmark::State& state) {
    const Library library = Library::open(testing::builtLibrary(), testing::builtStandIns());
    SoftBoard board(testing::builtStandIns());
    board.record(false);
    for (auto _ : state) {
        const Applet applet(library, board);
    }
}
BENCHMARK(StartUp)->Unit(benchmark::kMicrosecond);

/// The parameter accesses of the start alone, but for texts, doubles and tables.
void StartUpBareSdkAccesses(benchmark::State& state) {
    const BareSdk sdk;
    std::vector<BareSdk::Access> accesses;
    {
        const testing::BuiltApplet built;
        accesses = sdk.accessesOf(built.board.transcript());
    }
    for (auto _ : state) {
        for (BareSdk::Access& access : accesses) {
            sdk.make(access);
        }
    }
    state.counters["accesses"] = static_cast<double>(accesses.size());
}
BENCHMARK(StartUpBareSdkAccesses)->Unit(benchmark::kMicrosecond);

}  // namespace
