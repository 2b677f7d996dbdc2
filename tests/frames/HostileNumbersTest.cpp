/// @file
/// Numbers that make no sense: each is refused with its code and a message, and what ran goes on as it was.

#include <cmath>

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

constexpr double Largest = std::numeric_limits<double>::max();
constexpr double Smallest = std::numeric_limits<double>::denorm_min();

class HostileNumbers : public Bench {
protected:
    void SetUp() override {
        Bench::SetUp();
        pattern("grey:50");
        belt(10.0, profile({{Forever, 100.0}}));
        ASSERT_EQ(softboard_barrier(device(), Barrier, 1.0, 3.0, 1.0), 0);
        takeSingleLines();
        pass(10000.0);
    }
    void TearDown() override {
        const std::int64_t before = pictures();
        const double where = position();
        pass(10000.0);
        EXPECT_EQ(pictures(), before + 50);
        EXPECT_EQ(rows(), std::vector<int>(static_cast<std::size_t>(before) + 50, 50));
        EXPECT_NEAR(position(), where + 1.0, 1e-5);
        Bench::TearDown();
    }
    void refused(int answer, int code = SOFTBOARD_E_ARGUMENT) {
        EXPECT_EQ(answer, code);
        EXPECT_NE(message(), "");
    }
    int move(double until, double speed, double counts = 10.0) {
        const softboard_move one{until, speed};
        return softboard_belt(device(), TrackA, TrackB, counts, &one, 1);
    }
    int moves(const std::vector<softboard_move>& several) {
        return softboard_belt(device(), TrackA, TrackB, 10.0, several.data(), several.size());
    }
};

TEST_F(HostileNumbers, OfPatterns) {
    for (const char* const text :
         {"", "bar", "bars:1", "ramp:", "noise:", "noise:-1", "noise:x", "noise:1x", "noise:99999999999999999999999",
          "grey:", "grey:-1", "grey:256", "grey:1e1", "grey:12.5", "grey: 1", "grey:1 ", "GREY", "checker:4"}) {
        EXPECT_EQ(softboard_scene_pattern(device(), text), SOFTBOARD_E_ARGUMENT) << text;
        EXPECT_NE(message(), "") << text;
    }
    refused(softboard_scene_pattern(device(), nullptr));
    EXPECT_EQ(softboard_scene_pattern(nullptr, "grey"), SOFTBOARD_E_ARGUMENT);
}

TEST_F(HostileNumbers, OfAPicture) {
    const TemporaryPicture file("rows.pgm", greyRows(8, {1, 2, 3}));
    for (const double scale : {0.0, -1.0, 0.000999, 1000.1, NotANumber, Forever, -Forever, Largest, Smallest}) {
        EXPECT_EQ(softboard_scene_picture(device(), file.path().c_str(), 0, scale), SOFTBOARD_E_ARGUMENT) << scale;
        EXPECT_NE(message(), "");
    }
    refused(softboard_scene_picture(device(), nullptr, 0, 10.0));
    EXPECT_EQ(softboard_scene_picture(nullptr, file.path().c_str(), 0, 10.0), SOFTBOARD_E_ARGUMENT);
}

TEST_F(HostileNumbers, OfTheLight) {
    for (const double number : {-1.0, -Smallest, NotANumber, Forever, -Forever}) {
        refused(softboard_scene_light(device(), number, 1.0, 0.0));
        refused(softboard_scene_light(device(), 0.0, number, 0.0));
        refused(softboard_scene_light(device(), 0.0, 1.0, number));
    }
    refused(softboard_scene_light(device(), 0.0, 1000.1, 0.0));
    refused(softboard_scene_light(device(), 0.0, 1.0, 1.001));
    EXPECT_EQ(softboard_scene_light(nullptr, 0.0, 1.0, 0.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_scene_seed(nullptr, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_scene_seed(device(), 0), 0);
    EXPECT_EQ(softboard_scene_seed(device(), ~std::uint64_t{0}), 0);
}

TEST_F(HostileNumbers, OfTheBeltsSpeed) {
    for (const double speed : {Forever, -Forever, NotANumber, Largest, -Largest, 1e9}) {
        refused(move(Forever, speed));
    }
    refused(move(Forever, NotANumber, 0.0));
    refused(move(Forever, Forever, 0.0));
    refused(move(Forever, 100.0, NotANumber));
    refused(move(Forever, 100.0, Forever));
    refused(move(Forever, 100.0, -1.0));
    refused(move(Forever, 100.0, 100001.0));
}

/// A track changes twice in a count, the two of them four times; the clock ticks 125e6 times a second.
TEST_F(HostileNumbers, OfAnEncoderFasterThanTheClock) {
    refused(move(Forever, 1000.0, 100000.0));
    refused(move(Forever, -1000.0, 100000.0));
    refused(moves({{1000.0, 1.0}, {2000.0, 1e8}}));
}

TEST_F(HostileNumbers, OfTheBeltsTimes) {
    refused(move(NotANumber, 1.0));
    refused(move(0.0, 1.0));
    refused(move(-1.0, 1.0));
    refused(move(-Forever, 1.0));
    refused(moves({{1000.0, 1.0}, {1000.0, 2.0}}));
    refused(moves({{1000.0, 1.0}, {999.0, 2.0}}));
    refused(moves({{Forever, 1.0}, {Forever, 2.0}}));
    refused(softboard_belt(device(), TrackA, TrackB, 10.0, nullptr, 1));
    refused(softboard_belt(device(), 12, TrackB, 10.0, nullptr, 0), SOFTBOARD_E_RANGE);
    const softboard_move one{Forever, 1.0};
    refused(softboard_belt(device(), TrackA, 12, 10.0, &one, 1), SOFTBOARD_E_RANGE);
    refused(softboard_belt(device(), 12, TrackB, 10.0, &one, 1), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_belt(nullptr, TrackA, TrackB, 10.0, &one, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_belt_position(device(), nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(HostileNumbers, OfABarrier) {
    for (const double number : {NotANumber, Forever, -Forever}) {
        refused(softboard_barrier(device(), 3, number, 2.0, 1.0));
        refused(softboard_barrier(device(), 3, 0.0, number, 1.0));
        refused(softboard_barrier(device(), 3, 0.0, 2.0, number));
    }
    refused(softboard_barrier(device(), 3, 0.0, 1.0, 1.0));
    refused(softboard_barrier(device(), 3, 0.0, 0.5, 1.0));
    refused(softboard_barrier(device(), 3, 0.0, 2.0, -1.0));
    refused(softboard_barrier(device(), 3, 0.0, -2.0, 1.0));
    refused(softboard_barrier(device(), 3, 0.0, 2.0, Smallest));
    refused(softboard_barrier(device(), 12, 0.0, 2.0, 1.0), SOFTBOARD_E_RANGE);
    refused(softboard_barrier(device(), SOFTBOARD_NO_INPUT, 0.0, 2.0, 1.0), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_barrier(nullptr, 3, 0.0, 2.0, 1.0), SOFTBOARD_E_ARGUMENT);
}

TEST_F(HostileNumbers, OfPlans) {
    refused(softboard_plan_line_fault(device(), 1, 3));
    refused(softboard_plan_line_fault(device(), 1, -1));
    refused(softboard_plan_frame_fault(device(), 1, 3, 1.0));
    refused(softboard_plan_frame_fault(device(), 1, -1, 1.0));
    for (const double number : {NotANumber, Forever, -Forever, -1.0, 0.0, 0.5, 1.5}) {
        refused(softboard_plan_frame_fault(device(), 1, SOFTBOARD_FAULT_TRUNCATE, number));
    }
    for (const double number : {NotANumber, Forever, -Forever, -1.0, 60e6 + 1.0}) {
        refused(softboard_plan_frame_fault(device(), 1, SOFTBOARD_FAULT_STALL_DMA, number));
    }
    refused(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_CAMERA, Forever, 1.0));
    refused(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_CAMERA, 1.0, 0.0));
    for (const double number : {NotANumber, -Forever, -1.0}) {
        refused(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_CAMERA, number, 1.0));
        refused(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_LINK, 1.0, number));
    }
    refused(softboard_plan_outage(device(), 2, 1.0, 1.0));
    refused(softboard_plan_outage(device(), -1, 1.0, 1.0));
    EXPECT_EQ(softboard_plan_line_fault(nullptr, 1, 0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_frame_fault(nullptr, 1, 0, 0.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_outage(nullptr, 0, 1.0, 1.0), SOFTBOARD_E_ARGUMENT);
}

TEST_F(HostileNumbers, OfPlansThatNeverStrike) {
    const std::uint64_t last = ~std::uint64_t{0};
    EXPECT_EQ(softboard_plan_line_fault(device(), last, SOFTBOARD_FAULT_DROP), 0);
    EXPECT_EQ(softboard_plan_frame_fault(device(), last, SOFTBOARD_FAULT_LOSE, NotANumber), 0);
    EXPECT_EQ(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_CAMERA, 1e300, 1e300), 0);
    pass(10000.0);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FAULTS), 0);
}

TEST_F(HostileNumbers, OfTheDma) {
    for (const double rate : {0.0, -1.0, NotANumber, -Forever, -Largest}) {
        refused(softboard_dma_rate(device(), rate));
    }
    EXPECT_EQ(softboard_dma_rate(nullptr, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_dma_rate(device(), Largest), 0);
    pass(1000.0);
    EXPECT_EQ(softboard_dma_rate(device(), Smallest), 0);
    EXPECT_EQ(softboard_dma_rate(device(), Forever), 0);
    EXPECT_EQ(softboard_camera(nullptr, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_link(nullptr, 1), SOFTBOARD_E_ARGUMENT);
}

TEST_F(HostileNumbers, OfTheSlowestDma) {
    ASSERT_EQ(softboard_dma_rate(device(), Smallest), 0);
    const std::int64_t before = pictures();
    pass(20000.0);
    EXPECT_LE(pictures(), before + 1);
    ASSERT_EQ(softboard_dma_rate(device(), Forever), 0);
    pass(50.0);
    EXPECT_EQ(lostFrames(), 0);
}

TEST_F(HostileNumbers, OfTheClock) {
    for (const int mode : {-1, 4, 1000}) {
        EXPECT_EQ(softboard_clock(device(), mode, 1.0), SOFTBOARD_E_ARGUMENT);
    }
    for (const double speed : {0.0, -1.0, 1000.1, NotANumber, Forever, -Forever}) {
        EXPECT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_REAL, speed), SOFTBOARD_E_ARGUMENT) << speed;
        EXPECT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_AUTO, speed), SOFTBOARD_E_ARGUMENT) << speed;
    }
    EXPECT_EQ(softboard_clock(nullptr, SOFTBOARD_CLOCK_STEPPED, 1.0), SOFTBOARD_E_ARGUMENT);
    for (const double step : {-1.0, 60e6 + 1.0, NotANumber, Forever}) {
        EXPECT_EQ(softboard_advance_signals(device(), step), SOFTBOARD_E_ARGUMENT) << step;
    }
}

class FarBelts : public Bench {};

/// However narrow a part is: without a belt nothing is too fast for it.
TEST_F(FarBelts, RefuseABarrierForNothing) {
    EXPECT_EQ(softboard_barrier(device(), Barrier, 5.0, 1e-300, 1e-301), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(device(), Barrier, 5.0, 0.0, Smallest), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(device(), Barrier, 5.0, 1e9, 1e9 - 1e-7), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(device(), Barrier, 5.0, 2e-3, 1e-3), 0);
    EXPECT_FALSE(built.board.signal(21 + Barrier));
}

/// What is legal, however odd, is no reason to hang.
TEST_F(FarBelts, PassInNoTime) {
    const softboard_move fast{Forever, 1e7};
    const int answer = softboard_belt(device(), SOFTBOARD_NO_INPUT, SOFTBOARD_NO_INPUT, 0.0, &fast, 1);
    if (answer == 0) {
        takeSingleLines(4);
        pass(1e7);
        EXPECT_TRUE(std::isfinite(position()));
        EXPECT_GT(pictures(), 0);
    } else {
        EXPECT_EQ(answer, SOFTBOARD_E_ARGUMENT);
    }
}

TEST_F(FarBelts, WithAnEncoderThatHardlyTurns) {
    belt(Smallest, profile({{Forever, Smallest}}));
    useEncoder(FILTER_X4);
    takeSingleLines();
    pass(60e6);
    EXPECT_EQ(pictures(), 0);
}

TEST_F(FarBelts, WithABarrierFarAway) {
    belt(10.0, profile({{Forever, 100.0}}));
    EXPECT_EQ(softboard_barrier(device(), Barrier, 1e300, 0.0, 1e299), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(device(), Barrier, 1e9, 0.0, 1e9), 0);
    EXPECT_EQ(softboard_barrier(device(), Barrier + 1, -1e6, 0.0, 2e6), 0);
    takeSingleLines();
    pass(1e6);
    EXPECT_EQ(events("FG_TRIGGER_INPUT2_RISING"), 0U);
    EXPECT_EQ(events("FG_TRIGGER_INPUT3_RISING"), 1U);
}

class SmallMemories : public Bench {};

TEST_F(SmallMemories, OfOneByteTakeNoLine) {
    useCamera(Width, 2);
    memory = memoryOf(4, 1);
    acquire(-1, memory);
    pass(100.0 + 4 * LineTime);
    EXPECT_EQ(pictures(), 2);
    const Frame cut = frame(memory, 1);
    EXPECT_EQ(cut.about.lines, 0U);
    EXPECT_LE(cut.about.bytes, 1U);
    EXPECT_NE(cut.about.flags & SOFTBOARD_FRAME_TRUNCATED, 0U);
    EXPECT_EQ(softboard_memory_open(device(), 0, 1, nullptr), nullptr);
    EXPECT_EQ(softboard_memory_open(device(), 1, 0, nullptr), nullptr);
    EXPECT_EQ(softboard_memory_open(device(), ~std::size_t{0}, 4, nullptr), nullptr);
}

TEST_F(SmallMemories, OfOddWidthsOverflowAndSaySo) {
    useCamera(Width, 1);
    memory = memoryOf(4, Width * 3);
    for (const auto& [bits, address] : {std::pair{0, 0}, {0, 20}, {1, 0}, {-1, 10}, {8, -1}}) {
        memorySize(bits, address);
        acquire(-1, memory);
        const std::uint64_t before = events("FG_END_OF_FRAME_CAM_PORT_0");
        pass(2 * LineTime);
        EXPECT_EQ(static_cast<std::uint64_t>(pictures() + lostFrames()), events("FG_END_OF_FRAME_CAM_PORT_0") - before)
            << bits << ", " << address;
        EXPECT_LE(whole(FG_FILLLEVEL), 100U);
        stop();
    }
}

TEST_F(SmallMemories, LargeOnesHoldAll) {
    useCamera(Width, 1);
    memory = memoryOf(4, Width * 3);
    for (const auto& [bits, address] : {std::pair{512, 63}, {512, 64}, {512, 1000000}, {2147483647, 31}}) {
        memorySize(bits, address);
        acquire(-1, memory);
        pass(2 * LineTime + 50.0);
        EXPECT_GE(pictures(), 2) << bits << ", " << address;
        EXPECT_EQ(lostFrames(), 0);
        EXPECT_EQ(whole(FG_OVERFLOW), 0U);
        stop();
    }
}

}  // namespace
}  // namespace quillon::frames_test
