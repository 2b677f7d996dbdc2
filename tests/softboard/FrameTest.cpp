// Which frames come, and when.

#include <gmock/gmock.h>

#include "tests/softboard/FrameBoard.h"

namespace {

using testing::ElementsAre;

// ---- Nothing comes without its trigger ----

using NoFrames = FrameBoard;

TEST_F(NoFrames, ComeWithoutAnImageTrigger) {
    useCamera();
    unit("ImgTriggerMode", 1);
    unit("ImgTriggerEnable", 1);
    acquire(-1, nullptr);
    pass(200e3);
    EXPECT_EQ(pictures(), 0);
    unit("ImgTrgInSource", 4);
    unit("SoftwareTrgPulse", 1);
    pass(200e3);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(NoFrames, ComeWithoutAnEdgeOfTheLineTrigger) {
    useCamera();
    unit("LineTriggerMode", 1);
    acquire(-1, nullptr);
    pass(200e3);
    EXPECT_EQ(pictures(), 0);
    for (std::uint32_t line = 0; line < 2 * Height; ++line) {
        pulse(0);
    }
    EXPECT_EQ(pictures(), 2);
}

TEST_F(NoFrames, ComeWithoutExsync) {
    acquire(-1, nullptr);
    pass(200e3);
    EXPECT_EQ(pictures(), 0);
}

TEST_F(NoFrames, ComeWithoutACamera) {
    useCamera();
    softboard_set_integer(board, "FG_CAMSTATUS_EXTENDED", 0);
    acquire(-1, nullptr);
    pass(200e3);
    EXPECT_EQ(pictures(), 0);
}

TEST_F(NoFrames, ComeThroughAClosedValveOfTheSimulator) {
    useSimulator();
    simulator("TriggerValve_FreeRun_Select", 0);
    acquire(-1, nullptr);
    pass(200e3);
    EXPECT_EQ(pictures(), 0);
}

TEST_F(NoFrames, ComeInThatTheSelectorLeavesOut) {
    useSimulator();
    process0("ImageSelector_FG_IMG_SELECT_PERIOD_Divisor", 4);
    acquire(-1, nullptr);
    pass(40 * FrameTime);
    EXPECT_EQ(pictures(), 10);
}

TEST_F(NoFrames, ComeOutOfABranchThatLeadsIntoTheTrash) {
    useSimulator();
    process0("OutputFormat_Convert0_VirtualTrash_EnableTrash_Value", 1);
    acquire(-1, memoryOf(2));
    pass(10 * FrameTime);
    EXPECT_EQ(pictures(), 0);
    process0("OutputFormat_FG_FORMAT_SelectSource", 4);  // FG_COL48 has no trash
    pass(10 * FrameTime);
    EXPECT_GT(pictures(), 8);
}

// ---- The simulator's time ----

class SimulatorFrames : public FrameBoard {
protected:
    /// The ticks at which the first lines of the first frames begin, from that of the first on.
    std::vector<std::uint64_t> ticks(int frames, double microseconds) {
        softboard_memory* const memory = memoryOf(static_cast<unsigned>(frames));
        EXPECT_EQ(acquire(frames, memory), 0);
        pass(microseconds);
        std::vector<std::uint64_t> result;
        for (int number = 1; number <= frames; ++number) {
            const auto drawn = frame(memory, number);
            EXPECT_TRUE(drawn.has_value()) << number;
            result.push_back(drawn ? drawn->about.first_tick : 0);
        }
        const std::uint64_t first = result.front();
        for (std::uint64_t& tick : result) {
            tick -= first;
        }
        return result;
    }
};

TEST_F(SimulatorFrames, ComeAtTheLineRateTimesTheHeight) {
    useSimulator();
    EXPECT_THAT(ticks(4, 4 * FrameTime + 1.0), ElementsAre(0, 300, 600, 900));
}

TEST_F(SimulatorFrames, HaveGapLinesBetweenThem) {
    useSimulator();
    simulator("Size_ImageHeight", Height + 2);
    EXPECT_THAT(ticks(3, 20.0), ElementsAre(0, 500, 1000));
}

TEST_F(SimulatorFrames, FollowThePixelFrequency) {
    useSimulator();
    // 40 MHz: 20 of 2000 cycles move a block, one in a hundred.
    simulator("ControlPixelClock_Mode", 0);
    simulator("PixelFrequency_ActivePixel_Number", 20);
    simulator("PixelFrequency_RepeatPat_Divisor", 100);
    simulator("PixelFrequency_SequenceLength_ImageWidth", 2000);
    simulator("Size_ImageWidth", 5);  // a block that is sent and four of gap
    EXPECT_THAT(ticks(3, 40.0), ElementsAre(0, 1500, 3000));
}

TEST_F(SimulatorFrames, FollowAPixelFrequencyThatDoesNotDivideTheSequence) {
    useSimulator();
    // 42 MHz: 21 of 2000 cycles, one in 95; the 22nd block begins the next sequence.
    simulator("ControlPixelClock_Mode", 0);
    simulator("PixelFrequency_ActivePixel_Number", 21);
    simulator("PixelFrequency_RepeatPat_Divisor", 95);
    simulator("PixelFrequency_SequenceLength_ImageWidth", 2000);
    simulator("Size_ImageWidth", 7);
    EXPECT_THAT(ticks(3, 60.0), ElementsAre(0, 2000, 4000));
}

TEST_F(SimulatorFrames, AreNoFasterThanTheirBlocks) {
    useSimulator();
    simulator("Size_ImageWidth", 64);
    simulator("PixelFrequency_SequenceLength_ImageWidth", 10);
    EXPECT_THAT(ticks(3, 10.0), ElementsAre(0, 192, 384));
}

TEST_F(SimulatorFrames, TakeANewRateWithTheLineThatRuns) {
    useSimulator();
    acquire(-1, nullptr);
    pass(FrameTime + 0.4);
    EXPECT_EQ(pictures(), 1);
    simulator("PixelFrequency_SequenceLength_ImageWidth", 1000);
    pass(8.0 * 2 - 0.4);  // the line that began at FrameTime, and two long ones
    EXPECT_EQ(cameraEvents("LineStart"), Height + 3U);
}

TEST_F(SimulatorFrames, BeginWithTheFirstLineOfFrameZeroAtEveryStart) {
    useSimulator();
    softboard_memory* const memory = memoryOf(2);
    for (int round = 0; round < 2; ++round) {
        acquire(2, memory);
        pass(2 * FrameTime);
        ASSERT_EQ(pictures(), 2);
        EXPECT_THAT(blue(*frame(memory, 1)), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7,  //
                                                         1, 2, 3, 4, 5, 6, 7, 8,  //
                                                         2, 3, 4, 5, 6, 7, 8, 9));
        EXPECT_THAT(blue(*frame(memory, 2)), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8,  //
                                                         2, 3, 4, 5, 6, 7, 8, 9,  //
                                                         3, 4, 5, 6, 7, 8, 9, 10));
        pass(FrameTime / 2);
    }
}

TEST_F(SimulatorFrames, PassTheValveOneEdgeALine) {
    useSimulator();
    simulator("TriggerValve_FreeRun_Select", 0);
    simulator("TriggerValve_TriggerValve_Mode", 1);
    route("OutputMapping_CamTrigger0_SelectTrigger", SOFTBOARD_GPI_0, 0);
    acquire(-1, nullptr);
    for (std::uint32_t line = 1; line <= 2 * Height; ++line) {
        pulse(0);
        EXPECT_EQ(cameraEvents("LineEnd"), line);
    }
    EXPECT_EQ(pictures(), 2);
}

TEST_F(SimulatorFrames, PassTheValveOneEdgeAFrame) {
    useSimulator();
    simulator("TriggerValve_FreeRun_Select", 0);
    route("OutputMapping_CamTrigger0_SelectTrigger", SOFTBOARD_GPI_0, 0);
    acquire(-1, nullptr);
    pulse(0);
    pulse(0);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(cameraEvents("LineEnd"), 2U * Height);
}

TEST_F(SimulatorFrames, LoseEdgesThatComeWhileTheySend) {
    useSimulator();
    simulator("TriggerValve_FreeRun_Select", 0);
    route("OutputMapping_CamTrigger0_SelectTrigger", SOFTBOARD_GPI_0, 0);
    acquire(-1, nullptr);
    for (int edge = 0; edge < 2; ++edge) {
        input(0, 1);
        pass(LineTime / 2);
        input(0, 0);
    }
    pass(100.0);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(SimulatorFrames, WaitForTheEndOfTheCamerasFrame) {
    useCamera();
    softboard_memory* const memory = memoryOf(4);
    acquire(-1, memory);
    pass(12.0);  // the first line
    useSimulator();
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 1);
    pass(20.0);
    ASSERT_GE(pictures(), 1);
    EXPECT_EQ(frame(memory, 1)->about.first_tick, 11U * 125);
    EXPECT_EQ(frame(memory, 1)->about.last_tick, 31U * 125);
    pass(2 * FrameTime);
    ASSERT_GE(pictures(), 2);
    const auto second = frame(memory, 2);
    EXPECT_EQ(second->about.last_tick - second->about.first_tick, 200U);
}

// ---- What closes a frame ----

class FramesOfImages : public FrameBoard {
protected:
    void SetUp() override {
        FrameBoard::SetUp();
        useCamera();
        unit("ImgTriggerEnable", 1);
    }
    struct Closed {
        std::uint32_t lines;
        std::uint32_t flags;
        bool operator==(const Closed&) const = default;
    };
    std::vector<Closed> closed(softboard_memory* memory) {
        std::vector<Closed> result;
        for (std::int64_t number = 1; number <= pictures(); ++number) {
            const auto drawn = frame(memory, number);
            result.push_back(drawn ? Closed{drawn->about.lines, drawn->about.flags} : Closed{0, ~0U});
        }
        return result;
    }
};

TEST_F(FramesOfImages, HaveTheImageHeightInFreeRun) {
    softboard_memory* const memory = memoryOf(8);
    acquire(-1, memory);
    pass(10.0 * Height * 3 + 2.0);
    EXPECT_THAT(closed(memory), ElementsAre(Closed{3, 0}, Closed{3, 0}, Closed{3, 0}));
}

TEST_F(FramesOfImages, EndShortWhereTheImageIsNoMultiple) {
    unit("ImgTriggerMode", 1);
    unit("YLength", 2 * Height + 1);
    softboard_memory* const memory = memoryOf(8);
    acquire(-1, memory);
    pulse(0);
    pass(100.0);
    EXPECT_THAT(closed(memory), ElementsAre(Closed{3, 0}, Closed{3, 0}, Closed{1, SOFTBOARD_FRAME_SHORT}));
    EXPECT_EQ(frame(memory, 3)->about.bytes, Width * 3U);
}

TEST_F(FramesOfImages, EndWithTheGate) {
    unit("ImgTriggerMode", 2);
    unit("YLength", 100);
    softboard_memory* const memory = memoryOf(8);
    acquire(-1, memory);
    input(0, 1);
    pass(45.0);
    input(0, 0);
    pass(100.0);
    EXPECT_THAT(closed(memory),
                ElementsAre(Closed{3, 0}, Closed{1, SOFTBOARD_FRAME_SHORT | SOFTBOARD_FRAME_GATE_ENDED}));
}

TEST_F(FramesOfImages, EndWithTheLineInWhichTheGateFalls) {
    buffer("SensorWidth", 8 * 125);  // a line is under way for a microsecond
    unit("ImgTriggerMode", 2);
    unit("YLength", 100);
    softboard_memory* const memory = memoryOf(8);
    acquire(-1, memory);
    input(0, 1);
    pass(21.5);
    ASSERT_EQ(signal(SOFTBOARD_LVAL), 1);
    input(0, 0);
    pass(100.0);
    EXPECT_THAT(closed(memory), ElementsAre(Closed{2, SOFTBOARD_FRAME_SHORT | SOFTBOARD_FRAME_GATE_ENDED}));
}

TEST_F(FramesOfImages, GoOnWithTheGateOnlyWhereItDecidesTheHeight) {
    unit("ImgTriggerMode", 2);
    for (const std::uint32_t decides : {0U, 1U}) {
        unit("MaxGatedHeight", decides);
        softboard_memory* const memory = memoryOf(8);
        acquire(-1, memory);
        input(0, 1);
        pass(100.0);
        input(0, 0);
        pass(100.0);
        EXPECT_EQ(closed(memory).size(), decides == 0 ? 1U : 4U);
        Fg_stopAcquireEx(fg, 0, memory, 0);
    }
}

TEST_F(FramesOfImages, AreNotDeliveredIfTheyBeganBeforeTheStart) {
    unit("ImgTriggerMode", 1);
    input(0, 1);
    pass(15.0);
    ASSERT_EQ(signal(SOFTBOARD_FVAL), 1);
    softboard_memory* const memory = memoryOf(8);
    acquire(-1, memory);
    pass(100.0);
    EXPECT_EQ(cameraEvents("FrameEnd"), 1U);
    EXPECT_EQ(pictures(), 0);
}

TEST_F(FramesOfImages, KeepTheirNumberOfTheTriggerUnit) {
    process0("ImageSelector_FG_IMG_SELECT_PERIOD_Divisor", 3);
    process0("ImageSelector_FG_IMG_SELECT_PHASE_Number", 1);
    softboard_memory* const memory = memoryOf(8);
    acquire(-1, memory);
    pass(10.0 * Height * 7);
    ASSERT_EQ(pictures(), 2);
    EXPECT_EQ(frame(memory, 1)->about.number, 1U);
    EXPECT_EQ(frame(memory, 1)->about.image, 2U);
    EXPECT_EQ(frame(memory, 2)->about.image, 5U);
}

// ---- What counts them ----

class FrameCounts : public FrameBoard {
protected:
    void SetUp() override {
        FrameBoard::SetUp();
        useSimulator();
    }
};

TEST_F(FrameCounts, StandInRegistersThatGoOnFromWhatIsWritten) {
    acquire(-1, nullptr);
    pass(2 * FrameTime);
    EXPECT_EQ(registerValue("FrameCounter"), 2U);
    EXPECT_EQ(registerValue("LineCounter"), 2U * Height + 1);
    EXPECT_EQ(registerValue("DmaByteCounter"), 2 * FrameBytes);
    EXPECT_EQ(registerValue("Timestamp"), 600U);
    EXPECT_EQ(registerValue("TriggerCounter"), 0U);
    softboard_set_register(board, "LineCounter", 1000);
    softboard_set_register(board, "FrameCounter", 0xFFFFFFFF);
    pass(FrameTime);
    EXPECT_EQ(registerValue("LineCounter"), 1000U + Height);
    EXPECT_EQ(registerValue("FrameCounter"), 0U);
}

TEST_F(FrameCounts, TellTheTriggersThatBeganAnImage) {
    unit("ImgTriggerEnable", 1);
    unit("ImgTriggerMode", 1);
    acquire(-1, nullptr);
    pulse(0);
    pulse(0);
    input(0, 1);
    pass(LineTime);
    input(0, 0);
    input(0, 1);  // the image runs still
    EXPECT_EQ(registerValue("TriggerCounter"), 3U);
}

TEST_F(FrameCounts, StandInTheEvents) {
    pass(2 * FrameTime - 0.1);
    EXPECT_EQ(cameraEvents("FrameStart"), 2U);
    EXPECT_EQ(cameraEvents("FrameEnd"), 2U);
    EXPECT_EQ(cameraEvents("LineStart"), 2U * Height);
    EXPECT_EQ(cameraEvents("LineEnd"), 2U * Height);
}

TEST_F(FrameCounts, TellTheBytesOfTheLastFrame) {
    std::uint32_t length = 1;
    acquire(-1, nullptr);
    get("FG_TRANSFER_LEN", length, 2);
    EXPECT_EQ(length, 0U);
    pass(FrameTime);
    get("FG_TRANSFER_LEN", length, 2);
    EXPECT_EQ(length, FrameBytes);
}

TEST_F(FrameCounts, ShowTheSignalsInTheCameraStatus) {
    const auto bits = [&] {
        std::uint32_t value = 0;
        get("FG_CAMSTATUS_EXTENDED", value, 2);
        return value;
    };
    simulator("Enable_SelectSource", 0);
    pass(1.0);
    EXPECT_EQ(bits(), 1U);
    buffer("SensorWidth", 8 * 125);
    useCamera();
    route("OutputMapping_CamTrigger0_SelectTrigger", SOFTBOARD_EXSYNC, 0);
    pass(10.5);
    EXPECT_EQ(bits(), 1U + 8U);
    pass(1.0);
    EXPECT_EQ(bits(), 1U + 2U + 4U);
    pass(1.0);
    EXPECT_EQ(bits(), 1U + 4U);
    unit("ImgTriggerEnable", 1);
    input(0, 1);
    EXPECT_EQ(bits(), 1U + 4U + 16U);
}

TEST_F(FrameCounts, ShowABusyTrigger) {
    unit("ImgTriggerEnable", 1);
    unit("ImgTriggerMode", 1);
    std::uint32_t busy = 0;
    input(0, 1);
    pass(LineTime * 2);
    get("Device1_Process0_Trigger_Trigger_ImgTrgIsBusy", busy, 2);
    EXPECT_EQ(busy, 1U);
    pass(LineTime * 3);
    get("Device1_Process0_Trigger_Trigger_ImgTrgIsBusy", busy, 2);
    EXPECT_EQ(busy, 0U);
}

}  // namespace
