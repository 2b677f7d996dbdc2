// What a change of one processing value costs, against a bare loop of as many pow calls as a table has entries. With
// gamma 1 no pow is called at all.

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <utility>

#include "client/testing/BuiltApplet.h"

namespace {

using quillon::client::testing::BuiltApplet;

void PowLoop(benchmark::State& state) {
    std::array<double, 16384> powers{};
    for (auto _ : state) {
        double x = 0.0;
        for (double& power : powers) {
            power = std::pow(x / 16383.0, 1.0 / 2.2);
            x += 1.0;
        }
        benchmark::DoNotOptimize(powers.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PowLoop);

/// Writes two values of a parameter in turn, so that no change repeats the value before it.
void alternate(benchmark::State& state, int parameter, double first, double second) {
    BuiltApplet built;
    built.board.record(false);
    int failures = 0;
    for (auto _ : state) {
        failures += built.applet.setDouble(parameter, first) != 0 ? 1 : 0;
        std::swap(first, second);
    }
    if (failures != 0) {
        state.SkipWithError("a processing value was refused");
    }
}

void ProcessingGammaChange(benchmark::State& state) {
    alternate(state, FG_PROCESSING_GAMMA, 2.2, 2.25);
}
BENCHMARK(ProcessingGammaChange);

void ProcessingGainChangeAtGammaOne(benchmark::State& state) {
    alternate(state, FG_PROCESSING_GAIN, 1.0, 0.75);
}
BENCHMARK(ProcessingGainChangeAtGammaOne);

}  // namespace
