#include <cstdint>
#include <vector>

#include "softboard/recording.h"
#include "tests/softboard/SignalBoard.h"

namespace {

constexpr double Tick = 0.008;  // µs

/// A line trigger at GPI 1 and an image trigger at GPI 3.
class Debouncing : public SignalBoard {
protected:
    void SetUp() override {
        SignalBoard::SetUp();
        route("Analyzer_Analyzer0_Select", SOFTBOARD_EXSYNC, 0);
        unit("LineTriggerMode", 1);
        set("Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select", std::uint32_t{1}, 2);
        unitTime("ExsyncExposure", 1.0);
        unit("ExsyncEnable", 1);
        unit("ImgTriggerMode", 1);
        unit("ImgTrgInSource", 2);
        set("Device1_Process0_Trigger_InputSignal_ImgTrgInSource_Input_Select", std::uint32_t{3}, 2);
        unit("ImgTriggerEnable", 1);
    }
    void pulseOf(unsigned number, double microseconds) {
        input(number, 1);
        pass(microseconds);
        input(number, 0);
        pass(100.0);
    }
    std::int64_t busy() {
        std::int64_t value = -1;
        softboard_get_integer(board, "Device1_Process0_Trigger_Trigger_ImgTrgIsBusy", &value);
        return value;
    }
};

TEST_F(Debouncing, LetsALinePulseThroughThatIsLongEnough) {
    unitTime("LineTrgDebouncingTime", 10.0);
    pulseOf(1, 10.0 - Tick);
    EXPECT_EQ(pulses(0), 0);
    pulseOf(1, 10.0);
    EXPECT_EQ(pulses(0), 1);
    pulseOf(1, 10.0 + Tick);
    EXPECT_EQ(pulses(0), 2);
}

TEST_F(Debouncing, LetsAnImagePulseThroughThatIsLongEnough) {
    unitTime("ImgTrgDebouncingTime", 30.0);
    pulseOf(3, 30.0 - Tick);
    EXPECT_EQ(busy(), 0);
    pulseOf(3, 30.0);
    EXPECT_EQ(busy(), 1);
}

TEST_F(Debouncing, DelaysAnEdgeByItsTime) {
    unitTime("LineTrgDebouncingTime", 10.0);
    input(1, 1);
    pass(10.0 - Tick);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
    pass(Tick);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
}

TEST_F(Debouncing, BeginsAnewWithEveryBounce) {
    unitTime("LineTrgDebouncingTime", 10.0);
    for (int bounce = 0; bounce < 5; ++bounce) {
        input(1, 1);
        pass(9.0);
        input(1, 0);
        pass(1.0);
    }
    EXPECT_EQ(pulses(0), 0);
    input(1, 1);
    pass(10.0);
    EXPECT_EQ(pulses(0), 1);
}

TEST_F(Debouncing, SwallowsAShortGap) {
    unitTime("LineTrgDebouncingTime", 10.0);
    input(1, 1);
    pass(20.0);
    input(1, 0);
    pass(9.0);
    input(1, 1);
    pass(50.0);
    EXPECT_EQ(pulses(0), 1);
}

TEST_F(Debouncing, HasATimeForEachOfTheTriggers) {
    unitTime("ImgTrgDebouncingTime", 30.0);
    pulseOf(1, 1.0);
    EXPECT_EQ(pulses(0), 1);
    unitTime("LineTrgDebouncingTime", 30.0);
    unitTime("ImgTrgDebouncingTime", 0.112);
    pulseOf(1, 1.0);
    EXPECT_EQ(pulses(0), 1);
    pulseOf(3, 1.0);
    EXPECT_EQ(busy(), 1);
}

TEST_F(Debouncing, IsNoneWithTheTimeOfANewDesign) {
    unitTime("LineTrgDebouncingTime", 0.112);
    input(1, 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
    unitTime("LineTrgDebouncingTime", 0.12);
    input(1, 0);
    pass(10.0);
    input(1, 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
    pass(0.12);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
}

TEST_F(Debouncing, LeavesTheEventsOfTheInputAlone) {
    unitTime("LineTrgDebouncingTime", 10.0);
    pulseOf(1, 1.0);
    EXPECT_EQ(events("Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin1"), 1U);
}

TEST_F(Debouncing, IsTheSameInManySteps) {
    unitTime("LineTrgDebouncingTime", 1.0);
    softboard_record_signals(board, 100);
    input(1, 1);
    for (int step = 0; step < 1000; ++step) {
        pass(0.004);  // half a tick
    }
    std::size_t kept = 0;
    std::uint64_t lost = 0;
    softboard_recording_size(board, &kept, &lost);
    std::vector<softboard_change> changes(kept);
    softboard_recorded_changes(board, 0, kept, changes.data());
    std::vector<std::uint64_t> exsync;
    for (const softboard_change& change : changes) {
        if (change.kind == SOFTBOARD_CHANGE_SIGNAL && change.number == SOFTBOARD_EXSYNC) {
            exsync.push_back(change.tick);
        }
    }
    EXPECT_EQ(exsync, (std::vector<std::uint64_t>{125, 250}));
}

}  // namespace
