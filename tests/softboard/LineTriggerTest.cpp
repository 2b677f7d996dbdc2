#include <cstdint>
#include <thread>

#include "tests/softboard/SignalBoard.h"

namespace {

/// The design starts with a period of 200 µs, an exposure of 19 µs, and lines that take 128 ticks, 1.024 µs.
class BoardLineTrigger : public SignalBoard {
protected:
    void SetUp() override {
        SignalBoard::SetUp();
        route("Analyzer_Analyzer0_Select", SOFTBOARD_EXSYNC, 0);
    }
    /// Lets every `downscale`-th rising edge of GPI 1 trigger a line, the first of an image with the `phase`-th.
    void triggerByInput1(std::uint32_t downscale, std::uint32_t phase) {
        unit("LineTriggerMode", 1);
        set("Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select", std::uint32_t{1}, 2);
        unit("LineTrgDownscaler", downscale);
        unit("LineTrgPhase", phase);
        unit("ExsyncEnable", 1);
    }
};

TEST_F(BoardLineTrigger, IsSilentUntilExsyncIsEnabled) {
    pass(1000.0);
    EXPECT_EQ(pulses(0), 0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
}

TEST_F(BoardLineTrigger, DoesNotMoveWhileTimeStandsStill) {
    unit("ExsyncEnable", 1);
    pass(0.0);
    EXPECT_EQ(pulses(0), 0);
}

TEST_F(BoardLineTrigger, GivesAnExsyncEveryPeriodForTheExposure) {
    unit("ExsyncEnable", 1);
    pass(199.992);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
    pass(0.008);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
    pass(18.992);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
    pass(0.008);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
    pass(181.0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
}

TEST_F(BoardLineTrigger, IsCountedAndMeasuredByAnAnalyzer) {
    unit("ExsyncEnable", 1);
    pass(1000.0);
    EXPECT_EQ(pulses(0), 5);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 200.0);
    EXPECT_EQ(period("Analyzer0_PeriodMax"), 200.0);
    EXPECT_EQ(period("Analyzer0_PeriodMin"), 200.0);
    EXPECT_EQ(integer("Analyzer_Difference_Status"), 5);
}

TEST_F(BoardLineTrigger, NumberOfAdvancesMakesNoDifference) {
    unit("ExsyncEnable", 1);
    for (int step = 0; step < 10000; ++step) {
        pass(0.1);
    }
    EXPECT_EQ(pulses(0), 5);
    EXPECT_EQ(period("Analyzer0_PeriodMin"), 200.0);
}

TEST_F(BoardLineTrigger, NewPeriodHoldsForTheCycleThatRuns) {
    unit("ExsyncEnable", 1);
    unitTime("ExsyncPeriod", 50.0);
    pass(1000.0);
    EXPECT_EQ(pulses(0), 20);
    pass(40.0);
    unitTime("ExsyncPeriod", 30.0);
    pass(0.008);
    EXPECT_EQ(pulses(0), 21);
}

TEST_F(BoardLineTrigger, ExtremesOfThePeriodDifferAfterAChange) {
    unit("ExsyncEnable", 1);
    pass(400.0);
    unitTime("ExsyncPeriod", 300.0);
    pass(300.0);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 300.0);
    EXPECT_EQ(period("Analyzer0_PeriodMax"), 300.0);
    EXPECT_EQ(period("Analyzer0_PeriodMin"), 200.0);
}

TEST_F(BoardLineTrigger, StopsWhenExsyncIsDisabled) {
    unit("ExsyncEnable", 1);
    pass(210.0);
    unit("ExsyncEnable", 0);
    pass(1000.0);
    EXPECT_EQ(pulses(0), 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
}

TEST_F(BoardLineTrigger, NeverRunsFasterThanTheHardwareCan) {
    unitTime("ExsyncExposure", 0.0);
    unitTime("ExsyncPeriod", 0.0);
    unit("ExsyncEnable", 1);
    pass(5.12);
    EXPECT_EQ(pulses(0), 10);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 0.512);
}

TEST_F(BoardLineTrigger, IsLostDuringAnExposure) {
    unitTime("ExsyncExposure", 250.0);
    unit("ExsyncEnable", 1);
    pass(2000.0);
    EXPECT_EQ(pulses(0), 5);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 400.0);
}

TEST_F(BoardLineTrigger, ComesAsSoonAsTheExposureEnds) {
    unitTime("ExsyncExposure", 200.0);
    unit("ExsyncEnable", 1);
    pass(2000.0);
    EXPECT_EQ(pulses(0), 10);
}

TEST_F(BoardLineTrigger, GivesExsync2AfterTheDelay) {
    unitTime("Exsync2Delay", 50.0);
    unit("ExsyncEnable", 1);
    pass(200.0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 0);
    pass(50.0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 1);
    pass(19.0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 0);
}

TEST_F(BoardLineTrigger, GivesExsync2WithExsyncWithoutADelay) {
    unit("ExsyncEnable", 1);
    pass(200.0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 1);
    pass(19.0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 0);
}

TEST_F(BoardLineTrigger, PolarityTurnsBothExsyncsOver) {
    unit("ExsyncPolarity", 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 1);
    unit("ExsyncEnable", 1);
    pass(200.0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 0);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 0);
}

TEST_F(BoardLineTrigger, DrivesTheOutputsThatSelectIt) {
    route("OutputMapping_CamTrigger0_SelectTrigger", SOFTBOARD_EXSYNC, 0);
    route("OutputMapping_SelectGPO_Select7", SOFTBOARD_EXSYNC, 1);
    unit("ExsyncEnable", 1);
    EXPECT_EQ(output(0), 0);
    EXPECT_EQ(output(8), 1);
    pass(200.0);
    EXPECT_EQ(output(0), 1);
    EXPECT_EQ(output(8), 0);
}

TEST_F(BoardLineTrigger, BringsALineWhenTheExposureEnds) {
    unit("ExsyncEnable", 1);
    pass(219.0);
    EXPECT_EQ(signal(SOFTBOARD_LVAL), 1);
    EXPECT_EQ(cameraEvents("LineStart"), 1U);
    EXPECT_EQ(cameraEvents("LineEnd"), 0U);
    pass(1.016);
    EXPECT_EQ(signal(SOFTBOARD_LVAL), 1);
    pass(0.008);
    EXPECT_EQ(signal(SOFTBOARD_LVAL), 0);
    EXPECT_EQ(cameraEvents("LineEnd"), 1U);
}

TEST_F(BoardLineTrigger, BringsNoLineWithoutACamera) {
    softboard_set_integer(board, "FG_CAMSTATUS_EXTENDED", 0);
    unit("ExsyncEnable", 1);
    pass(1000.0);
    EXPECT_EQ(pulses(0), 5);
    EXPECT_EQ(cameraEvents("LineStart"), 0U);
}

TEST_F(BoardLineTrigger, EndsALineEarlyIfTheNextOneBegins) {
    set("Device1_Process0_Buffer_0_SensorWidth", std::uint32_t{16384}, 2);  // 16.384 µs
    unitTime("ExsyncPeriod", 10.0);
    unitTime("ExsyncExposure", 1.0);
    unit("ExsyncEnable", 1);
    pass(101.0);
    EXPECT_EQ(cameraEvents("LineStart"), 10U);
    EXPECT_EQ(cameraEvents("LineEnd"), 9U);
    EXPECT_EQ(signal(SOFTBOARD_LVAL), 1);
}

TEST_F(BoardLineTrigger, LagsBehindTheExsyncByTheLineInTheAir) {
    route("Analyzer_Analyzer1_Select", SOFTBOARD_LINE_START, 0);
    unit("ExsyncEnable", 1);
    pass(400.0);
    EXPECT_EQ(pulses(0), 2);
    EXPECT_EQ(pulses(1), 1);
    EXPECT_EQ(integer("Analyzer_Difference_Status"), 1);
    pass(100.0);
    EXPECT_EQ(integer("Analyzer_Difference_Status"), 0);
}

TEST_F(BoardLineTrigger, FollowsTheRisingEdgesOfAnInput) {
    triggerByInput1(1, 1);
    pulse(1);
    pulse(0);
    pulse(1);
    EXPECT_EQ(pulses(0), 2);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 200.0);
    EXPECT_EQ(cameraEvents("LineStart"), 2U);
}

TEST_F(BoardLineTrigger, ActsAtOnceOnAnEdge) {
    triggerByInput1(1, 1);
    input(1, 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC), 1);
    EXPECT_EQ(signal(SOFTBOARD_EXSYNC2), 1);
}

TEST_F(BoardLineTrigger, FollowsTheFallingEdgesOfALowActiveInput) {
    triggerByInput1(1, 1);
    unit("LineTrgInPolarity", 1);
    input(1, 1);
    EXPECT_EQ(pulses(0), 0);
    input(1, 0);
    EXPECT_EQ(pulses(0), 1);
}

TEST_F(BoardLineTrigger, IsScaledDown) {
    triggerByInput1(3, 1);
    for (int edge = 0; edge < 7; ++edge) {
        pulse(1);
    }
    EXPECT_EQ(pulses(0), 3);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 300.0);
}

TEST_F(BoardLineTrigger, CountsThePhaseBeforeTheFirstLineOfAnImage) {
    unit("YLength", 2);
    triggerByInput1(1, 3);
    for (int edge = 0; edge < 8; ++edge) {
        pulse(1);
    }
    // Edges 3 and 4 are the lines of the first image, 7 and 8 those of the second.
    EXPECT_EQ(pulses(0), 4);
    EXPECT_EQ(cameraEvents("FrameEnd"), 2U);
}

TEST_F(BoardLineTrigger, IgnoresTheInputWhileTheGrabberControlsIt) {
    triggerByInput1(1, 1);
    unit("LineTriggerMode", 0);
    input(1, 1);
    EXPECT_EQ(pulses(0), 0);
    pass(200.0);
    EXPECT_EQ(pulses(0), 1);
}

TEST_F(BoardLineTrigger, GatedRunsOnlyWithinAnImage) {
    unit("SoftwareTrgInput", 0);
    unit("ImgTrgInSource", 4);
    unit("ImgTriggerEnable", 1);
    unit("ImgTriggerMode", 2);
    unit("LineTriggerMode", 2);
    unit("ExsyncEnable", 1);
    pass(1000.0);
    EXPECT_EQ(pulses(0), 0);
    unit("SoftwareTrgInput", 1);
    pass(1000.0);
    EXPECT_EQ(pulses(0), 5);
    unit("SoftwareTrgInput", 0);
    pass(1000.0);
    EXPECT_EQ(pulses(0), 5);
}

TEST_F(BoardLineTrigger, GatedByAnInputFollowsItsEdgesOnlyWithinAnImage) {
    triggerByInput1(1, 1);
    unit("LineTriggerMode", 3);
    unit("ImgTrgInSource", 4);
    unit("ImgTriggerEnable", 1);
    unit("ImgTriggerMode", 2);
    pulse(1);
    EXPECT_EQ(pulses(0), 0);
    unit("SoftwareTrgInput", 1);
    pulse(1);
    EXPECT_EQ(pulses(0), 1);
}

TEST_F(BoardLineTrigger, SettingsCountWhoeverMakesThem) {
    softboard_set_integer(board, "Device1_Process0_Trigger_Trigger_ExsyncEnable", 1);
    pass(200.0);
    EXPECT_EQ(pulses(0), 1);
}

TEST_F(BoardLineTrigger, SettingsCountThatWereMadeBeforeTheDesignCame) {
    IXdevice* const early = softboard_open();
    softboard_set_integer(early, "Device1_Process0_Trigger_Trigger_ExsyncEnable", 1);
    Fg_Struct* const handle = Fg_InitHandleSlaveAware("Quillon.tav", early, design, 0);
    softboard_advance_signals(early, 200.0);
    int level = 0;
    softboard_get_signal(early, SOFTBOARD_EXSYNC, &level);
    EXPECT_EQ(level, 1);
    Fg_FreeGrabber(handle);
    softboard_close(early);
}

TEST_F(BoardLineTrigger, IsNotThereIfTheDesignLacksOneOfItsParameters) {
    IXdevice* const lacking = softboard_open();
    setenv("SOFTBOARD_HIDE", "Device1_Process0_Trigger_Trigger_ExsyncPeriod", 1);
    fpga_design* const hidden = loadDesignImage();
    unsetenv("SOFTBOARD_HIDE");
    Fg_Struct* const handle = Fg_InitHandleSlaveAware("Quillon.tav", lacking, hidden, 0);
    softboard_set_integer(lacking, "Device1_Process0_Trigger_Trigger_ExsyncEnable", 1);
    softboard_advance_signals(lacking, 1e6);
    std::uint64_t count = 1;
    softboard_event_count(lacking, "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineStart", &count);
    EXPECT_EQ(count, 0U);
    Fg_FreeGrabber(handle);
    TavUnloadTavFile(hidden);
    softboard_close(lacking);
}

TEST_F(BoardLineTrigger, TimeMayBeMovedBySeveralThreadsBesideAccesses) {
    softboard_transcript_record(board, 0);
    unit("ExsyncEnable", 1);
    const auto move = [this] {
        for (int step = 0; step < 500; ++step) {
            softboard_advance_signals(board, 100.0);
        }
    };
    std::thread first(move);
    std::thread second(move);
    for (int access = 0; access < 500; ++access) {
        unitTime("ExsyncPeriod", 200.0);
    }
    first.join();
    second.join();
    EXPECT_EQ(pulses(0), 500);
}

}  // namespace
