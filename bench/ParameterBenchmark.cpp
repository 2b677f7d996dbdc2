// The road of a parameter: what the applet adds to the lock that it must take and to the design accesses that it must
// make.

#include <benchmark/benchmark.h>
#include <pthread.h>

#include "bench/BareSdk.h"

namespace {

using quillon::bench::BareSdk;
using quillon::client::testing::BuiltApplet;

struct QuietApplet : BuiltApplet {
    QuietApplet() { board.record(false); }
};

/// The mutex of the kind that guards a parameter call, uncontended.
void LockAndUnlock(benchmark::State& state) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_ERRORCHECK);
    pthread_mutex_t mutex;
    pthread_mutex_init(&mutex, &attributes);
    for (auto _ : state) {
        pthread_mutex_lock(&mutex);
        benchmark::ClobberMemory();
        pthread_mutex_unlock(&mutex);
    }
    pthread_mutex_destroy(&mutex);
    pthread_mutexattr_destroy(&attributes);
}
BENCHMARK(LockAndUnlock);

void RememberedRead(benchmark::State& state) {
    QuietApplet built;
    const auto& functions = built.applet.functions();
    auto* handle = built.applet.handle();
    std::uint32_t value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(functions.Fg_getParameterWithType(handle, FG_WIDTH, &value, 0, FgTypeUInt32));
    }
    if (value != 1024) {
        state.SkipWithError("the width is not what it started as");
    }
}
BENCHMARK(RememberedRead);

/// Alternates between two widths, so that no write repeats the value before it.
void WidthWrite(benchmark::State& state) {
    QuietApplet built;
    const auto& functions = built.applet.functions();
    auto* handle = built.applet.handle();
    std::uint32_t value = 1024;
    int failures = 0;
    for (auto _ : state) {
        value ^= 1024U ^ 2048U;
        failures += functions.Fg_setParameterWithType(handle, FG_WIDTH, &value, 0, FgTypeUInt32) != 0 ? 1 : 0;
    }
    if (failures != 0) {
        state.SkipWithError("a width was refused");
    }
}
BENCHMARK(WidthWrite);

void WidthWriteBareSdkCalls(benchmark::State& state) {
    const BareSdk sdk;
    std::vector<BareSdk::Access> accesses;
    {
        BuiltApplet built;
        built.board.clearTranscript();
        built.applet.set(FG_WIDTH, 2048);
        accesses = sdk.accessesOf(built.board.transcript());
    }
    for (auto _ : state) {
        for (BareSdk::Access& access : accesses) {
            sdk.make(access);
        }
    }
    state.counters["accesses"] = static_cast<double>(accesses.size());
}
BENCHMARK(WidthWriteBareSdkCalls);

void RefusedWrite(benchmark::State& state) {
    QuietApplet built;
    const auto& functions = built.applet.functions();
    auto* handle = built.applet.handle();
    const std::uint32_t value = 6;
    for (auto _ : state) {
        benchmark::DoNotOptimize(functions.Fg_setParameterWithType(handle, FG_WIDTH, &value, 0, FgTypeUInt32));
    }
}
BENCHMARK(RefusedWrite);

/// A text is read and given back while `state.range(0)` others are out.
void TextReadAndRelease(benchmark::State& state) {
    QuietApplet built;
    const auto& functions = built.applet.functions();
    auto* handle = built.applet.handle();
    char* text = nullptr;
    int failures = 0;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        failures += functions.Fg_getParameterWithType(handle, FG_TAV_FILE, &text, 0, FgTypeString) != 0 ? 1 : 0;
    }
    for (auto _ : state) {
        failures += functions.Fg_getParameterWithType(handle, FG_TAV_FILE, &text, 0, FgTypeString) != 0 ? 1 : 0;
        failures += functions.Fg_freeParameterStringWithType(handle, FG_TAV_FILE, text, 0, FgTypeString) != 0 ? 1 : 0;
    }
    if (failures != 0) {
        state.SkipWithError("a text was refused");
    }
}
BENCHMARK(TextReadAndRelease)->Name("TextReleaseAmong1000")->Arg(1'000);
BENCHMARK(TextReadAndRelease)->Name("TextReleaseAmong60000")->Arg(60'000);

}  // namespace
