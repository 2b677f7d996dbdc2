// A message that nobody wants to see.

#include <benchmark/benchmark.h>

#include "support/Logger.h"

namespace {

void OneComparison(benchmark::State& state) {
    int level = 7;
    int passed = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(level);
        if (5 >= level) {
            ++passed;
        }
        benchmark::DoNotOptimize(passed);
    }
}
BENCHMARK(OneComparison);

void DisabledMessage(benchmark::State& state) {
    orlo::tools::logging::Logger logger(0, orlo::tools::logging::SilentLevel);
    auto* seen = &logger;
    int built = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(seen);
        orlo::tools::logging::writeMessage(*seen, 5, [&](std::ostream& line) { line << ++built; });
        benchmark::DoNotOptimize(built);
    }
}
BENCHMARK(DisabledMessage);

}  // namespace
