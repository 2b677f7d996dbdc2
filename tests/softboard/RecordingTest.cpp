#include "softboard/recording.h"

#include <gmock/gmock.h>

#include "tests/softboard/SignalBoard.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordedSignals : public SignalBoard {
protected:
    void record(size_t most = 1000) { ASSERT_EQ(softboard_record_signals(board, most), 0); }
    std::vector<softboard_change> changes() {
        size_t kept = 0;
        EXPECT_EQ(softboard_recording_size(board, &kept, &lost), 0);
        std::vector<softboard_change> all(kept);
        EXPECT_EQ(softboard_recorded_changes(board, 0, kept, all.data()), 0);
        return all;
    }
    /// "TICK=LEVEL" of the changes of one signal or output.
    std::vector<std::string> of(softboard_change_kind kind, unsigned number) {
        std::vector<std::string> texts;
        for (const softboard_change& change : changes()) {
            if (change.kind == static_cast<uint32_t>(kind) && change.number == number) {
                texts.push_back(std::to_string(change.tick) + "=" + std::to_string(change.level));
            }
        }
        return texts;
    }
    std::vector<std::string> ofSignal(unsigned select) { return of(SOFTBOARD_CHANGE_SIGNAL, select); }
    std::vector<std::string> ofOutput(unsigned number) { return of(SOFTBOARD_CHANGE_OUTPUT, number); }

    uint64_t lost = 0;
};

TEST_F(RecordedSignals, EdgesHaveTheTickAtWhichTheyCome) {
    unitTime("ExsyncPeriod", 100.0);
    unitTime("ExsyncExposure", 10.008);
    unitTime("Exsync2Delay", 20.0);
    unit("ExsyncEnable", 1);
    record();
    pass(232.0);
    EXPECT_THAT(ofSignal(SOFTBOARD_EXSYNC), ElementsAre("12500=1", "13751=0", "25000=1", "26251=0"));
    EXPECT_THAT(ofSignal(SOFTBOARD_EXSYNC2), ElementsAre("15000=1", "16251=0", "27500=1", "28751=0"));
}

TEST_F(RecordedSignals, TheStepsInWhichTimePassesMakeNoDifference) {
    unit("ExsyncEnable", 1);
    record();
    for (int step = 0; step < 100; ++step) {
        pass(7.3);
    }
    const std::vector<std::string> steps = ofSignal(SOFTBOARD_EXSYNC);
    ASSERT_FALSE(steps.empty());
    std::vector<std::string> expected;
    // From the first cycle behind the switch to 730 us.
    double period = 0;
    softboard_get_double(board, ExsyncPeriod, &period);
    double exposure = 0;
    softboard_get_double(board, "Device1_Process0_Trigger_Trigger_ExsyncExposure", &exposure);
    for (int line = 1; line * period < 730; ++line) {
        expected.push_back(std::to_string(static_cast<int>(line * period * 125)) + "=1");
        if (line * period + exposure < 730) {
            expected.push_back(std::to_string(static_cast<int>((line * period + exposure) * 125)) + "=0");
        }
    }
    EXPECT_EQ(steps, expected);
}

TEST_F(RecordedSignals, InputsAndTheOutputsThatCarryThemChangeTogether) {
    route("OutputMapping_SelectGPO_Select2", SOFTBOARD_GPI_0 + 3, 1);
    record();
    pass(8.0);
    input(3, 1);
    pass(8.0);
    input(3, 0);
    EXPECT_THAT(ofSignal(SOFTBOARD_GPI_0 + 3), ElementsAre("1000=1", "2000=0"));
    EXPECT_THAT(ofOutput(3), ElementsAre("1000=0", "2000=1"));
}

TEST_F(RecordedSignals, AChangeOfTheRoutingChangesTheOutputAtItsTick) {
    route("OutputMapping_SelectGPO_Select0", 0, 0);
    record();
    pass(8.0);
    route("OutputMapping_SelectGPO_Select0", 0, 1);
    pass(8.0);
    EXPECT_THAT(ofOutput(1), ElementsAre("1000=1"));
    route("OutputMapping_SelectGPO_Select0", 0, 0);
    EXPECT_THAT(ofOutput(1), ElementsAre("1000=1", "2000=0"));
}

TEST_F(RecordedSignals, EventsHaveTheirNames) {
    record();
    pass(8.0);
    input(2, 1);
    const std::vector<softboard_change> all = changes();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[1].tick, 1000U);
    EXPECT_EQ(all[1].kind, static_cast<uint32_t>(SOFTBOARD_CHANGE_EVENT));
    EXPECT_STREQ(all[1].event, "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin2");
    EXPECT_EQ(all[1].number, 5U);  // after the overflow, and the two of each of GPI 0 and 1
    EXPECT_EQ(all[0].event, nullptr);
}

TEST_F(RecordedSignals, OnlyTheFirstChangesAreKeptAndTheOthersCounted) {
    record(3);
    for (int time = 0; time < 5; ++time) {
        pulse(0);  // two edges with an event each
    }
    EXPECT_EQ(changes().size(), 3U);
    EXPECT_EQ(lost, 17U);
}

TEST_F(RecordedSignals, ANewRecordingForgetsTheOldAndOneOfNoneEndsIt) {
    record();
    pulse(0);
    record();
    EXPECT_THAT(changes(), IsEmpty());
    pulse(0);
    EXPECT_EQ(changes().size(), 4U);
    record(0);
    pulse(0);
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_EQ(lost, 0U);
}

TEST_F(RecordedSignals, WhatCannotBeDoneIsRefused) {
    softboard_change change{};
    record();
    EXPECT_EQ(softboard_recorded_changes(board, 0, 1, &change), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_recorded_changes(board, 1, 0, &change), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_recorded_changes(board, 0, 1, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_recording_size(board, nullptr, &lost), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_record_signals(board, SOFTBOARD_RECORDING_MOST + 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_record_signals(nullptr, 1), SOFTBOARD_E_ARGUMENT);
    IXdevice* empty = softboard_open();
    EXPECT_EQ(softboard_record_signals(empty, 1), SOFTBOARD_E_NO_DESIGN);
    softboard_close(empty);
}

}  // namespace
