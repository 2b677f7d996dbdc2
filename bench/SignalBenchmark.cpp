// What a line costs the board's signals, and what it costs to ask an acquisition how far it is. Times are those of
// one line. Nothing is drawn.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "bench/BareSdk.h"
#include "softboard/clock.h"
#include "softboard/frames.h"
#include "softboard/softboard.h"

namespace {

using quillon::bench::BareSdk;

const std::string Simulator = "Device1_Process0_CameraSimulator_";
const std::string Trigger = "Device1_Process0_Trigger_Trigger_";
const std::string Routing = "Device1_Process1_Trigger_";

/// A board whose time the benchmark alone moves.
class Stage {
public:
    Stage() {
        const auto clock = BareSdk::boardFunction<decltype(softboard_clock)>("softboard_clock");
        clock(board().device(), SOFTBOARD_CLOCK_STEPPED, 1.0);
    }

    const BareSdk& sdk() const { return sdk_; }
    quillon::client::SoftBoard& board() { return sdk_.board(); }

    /// A line each 10 us, in time with nothing else.
    static constexpr double LineTime = 10.0;
    void useCamera() {
        board().setDouble(Trigger + "ExsyncPeriod", LineTime);
        board().setDouble(Trigger + "ExsyncExposure", 1.0);
        board().setInteger(Trigger + "ExsyncEnable", 1);
    }
    void useSimulator() {
        board().setInteger(Simulator + "Size_ImageWidth", 32);
        board().setInteger(Simulator + "LineGap_Number", 32);
        board().setInteger(Simulator + "ControlPixelClock_Mode", 1);
        board().setInteger(Simulator + "PixelFrequency_ActivePixel_Number", 1);
        board().setInteger(Simulator + "PixelFrequency_SequenceLength_ImageWidth", 1250);
        board().setInteger(Simulator + "TriggerValve_FreeRun_Select", 1);
        board().setInteger(Simulator + "Enable_SelectSource", 1);
    }

    /// Analyzers, custom events and outputs listen to the signals of a line.
    void listen() {
        route("Analyzer_Analyzer0_Select", SOFTBOARD_LINE_START);
        route("Analyzer_Analyzer1_Select", SOFTBOARD_LVAL);
        route("Events_SelectCustomSignalEvent0", SOFTBOARD_LVAL);
        route("Events_SelectCustomSignalEvent1", SOFTBOARD_LINE_END);
        route("OutputMapping_CamTrigger0_SelectTrigger", SOFTBOARD_EXSYNC);
        for (int gpo = 0; gpo < 8; ++gpo) {
            route("OutputMapping_SelectGPO_Select" + std::to_string(gpo), SOFTBOARD_LVAL);
        }
    }

    /// An acquisition whose one buffer stays taken: a frame waits on the board, and those behind it are lost.
    void acquire() {
        board().setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", 10);
        const auto open = BareSdk::boardFunction<decltype(softboard_memory_open)>("softboard_memory_open");
        const auto mode = BareSdk::boardFunction<decltype(softboard_memory_mode)>("softboard_memory_mode");
        softboard_memory* const memory = open(board().device(), 16, 1, nullptr);
        mode(memory, SOFTBOARD_MEMORY_HOLD);
        sdk_.acquire(memory);
    }

private:
    void route(const std::string& stem, int select) {
        board().setInteger(Routing + stem + "_SelectSignal_Select", select);
        board().setInteger(Routing + stem + "_Polarity_Invert", 0);
    }

    BareSdk sdk_;
};

/// Moves the time on by whole batches of lines, and checks that so many came.
void passLines(benchmark::State& state, Stage& stage) {
    constexpr int Batch = 10'000;
    stage.board().advanceSignals(5 * Stage::LineTime);
    const std::uint64_t before = stage.board().registerValue("LineCounter");
    while (state.KeepRunningBatch(Batch)) {
        stage.board().advanceSignals(Batch * Stage::LineTime);
    }
    if (stage.board().registerValue("LineCounter") - before != static_cast<std::uint64_t>(state.iterations())) {
        state.SkipWithError("lines are missing");
    }
}

void CameraLineUnheard(benchmark::State& state) {
    Stage stage;
    stage.useCamera();
    passLines(state, stage);
}
void CameraLineRouted(benchmark::State& state) {
    Stage stage;
    stage.useCamera();
    stage.listen();
    passLines(state, stage);
}
void CameraLineForMemory(benchmark::State& state) {
    Stage stage;
    stage.useCamera();
    stage.acquire();
    passLines(state, stage);
}
void SimulatorLineUnheard(benchmark::State& state) {
    Stage stage;
    stage.useSimulator();
    passLines(state, stage);
}
void SimulatorLineRouted(benchmark::State& state) {
    Stage stage;
    stage.useSimulator();
    stage.listen();
    passLines(state, stage);
}
void SimulatorLineForMemory(benchmark::State& state) {
    Stage stage;
    stage.useSimulator();
    stage.acquire();
    passLines(state, stage);
}

void LastPictureNumber(benchmark::State& state) {
    Stage stage;
    stage.sdk().acquire(nullptr);
    stage.board().deliverPictures(7);
    std::int64_t number = 0;
    for (auto _ : state) {
        number = stage.sdk().lastPicture();
        benchmark::DoNotOptimize(number);
    }
    if (number != 7) {
        state.SkipWithError("the number is not that of the last picture");
    }
}

/// With every call written down, as a new board has it.
void LastPictureNumberNoted(benchmark::State& state) {
    constexpr int Batch = 1000;
    Stage stage;
    stage.board().record(true);
    stage.sdk().acquire(nullptr);
    while (state.KeepRunningBatch(Batch)) {
        for (int call = 0; call < Batch; ++call) {
            benchmark::DoNotOptimize(stage.sdk().lastPicture());
        }
        stage.board().clearTranscript();
    }
}

BENCHMARK(CameraLineUnheard);
BENCHMARK(CameraLineRouted);
BENCHMARK(CameraLineForMemory);
BENCHMARK(SimulatorLineUnheard);
BENCHMARK(SimulatorLineRouted);
BENCHMARK(SimulatorLineForMemory);
BENCHMARK(LastPictureNumber);
BENCHMARK(LastPictureNumberNoted);

}  // namespace
