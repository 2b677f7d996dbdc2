/// @file
/// Lines by a shaft encoder at a belt: where the belt was, and not when, decides what they show.

#include <gmock/gmock.h>

#include <algorithm>
#include <tuple>

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

/// A filter, and counts per mm that make ten pulses a mm with it: a line each row of a pattern.
using Filter = std::tuple<int, double>;

class EncoderLines : public Bench, public testing::WithParamInterface<Filter> {
protected:
    int filter() const { return std::get<0>(GetParam()); }
    double counts() const { return std::get<1>(GetParam()); }

    /// The belt stands at 0 mm for a millisecond, so that its tracks are there, then does what `legs` say. Where it
    /// begins is a count too: row 0 is the first.
    void run(std::vector<std::pair<double, double>> legs, int leading = SOURCE_A) {
        pattern("ramp");
        useEncoder(filter(), leading);
        legs.insert(legs.begin(), {1000.0, 0.0});
        belt(counts(), profile(legs));
        takeSingleLines();
    }
    std::uint32_t compensated() { return whole(FG_SHAFTENCODER_COMPENSATION_COUNT); }
};

constexpr double Slow = 100.0;

TEST_P(EncoderLines, ShowEachRowOnceAtAnySpeed) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_OFF);
    run({{20500.0, Slow}, {5000.0, 0.0}, {10000.0, 300.0}, {20000.0, 37.0}, {Forever, 0.0}});
    pass(100000.0);
    EXPECT_NEAR(position(), 5.79, 1e-6);
    EXPECT_EQ(rows(), fromTo(0, 57));
}

TEST_P(EncoderLines, AreNoneWhileTheBeltStands) {
    run({{10500.0, Slow}, {Forever, 0.0}});
    pass(20000.0);
    EXPECT_EQ(pictures(), 11);
    pass(1e6);
    EXPECT_EQ(pictures(), 11);
}

TEST_P(EncoderLines, AreDoubledByABeltThatRunsBackWithoutCompensation) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_OFF);
    run({{10500.0, Slow}, {5000.0, -Slow}, {10000.0, Slow}});
    pass(50000.0);
    EXPECT_EQ(rows(), together(fromTo(0, 10), fromTo(6, 15)));
    EXPECT_EQ(compensated(), 0U);
}

TEST_P(EncoderLines, ComeOnceWithCompensationWhoseCountIsLive) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON);
    run({{10500.0, Slow}, {5000.0, -Slow}, {10000.0, Slow}});
    pass(11500.0);
    EXPECT_EQ(compensated(), 0U);
    pass(1000.0);  // 0.95 mm: one pulse back
    EXPECT_EQ(compensated(), 1U);
    pass(1000.0);
    EXPECT_EQ(compensated(), 2U);
    pass(3000.0);
    EXPECT_EQ(compensated(), 5U);
    pass(2000.0);  // 0.75 mm, forward again
    EXPECT_EQ(compensated(), 3U);
    EXPECT_EQ(pictures(), 11);
    pass(50000.0);
    EXPECT_EQ(compensated(), 0U);
    EXPECT_EQ(rows(), fromTo(0, 15));
}

TEST_P(EncoderLines, FollowACountThatIsWrittenInBetween) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON);
    run({{10500.0, Slow}, {5000.0, -Slow}, {10000.0, Slow}});
    pass(16500.0);
    set(FG_SHAFTENCODER_COMPENSATION_COUNT, 2);
    EXPECT_EQ(compensated(), 2U);
    pass(1000.0);  // 0.65 mm
    EXPECT_EQ(compensated(), 1U);
    pass(50000.0);
    EXPECT_EQ(rows(), together(fromTo(0, 10), fromTo(8, 15)));
}

TEST_P(EncoderLines, FollowACountThatIsWrittenBeforeTheBeltRuns) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON);
    set(FG_SHAFTENCODER_COMPENSATION_COUNT, 7);
    run({{10500.0, Slow}, {Forever, 0.0}});
    pass(50000.0);
    EXPECT_EQ(rows(), fromTo(7, 10));
    EXPECT_EQ(compensated(), 0U);
}

TEST_P(EncoderLines, LeaveTheCountAtItsHighest) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON);
    set(FG_SHAFTENCODER_COMPENSATION_COUNT, 1048574);
    run({{10500.0, -Slow}, {10000.0, Slow}});
    pass(11500.0);
    EXPECT_EQ(compensated(), 1048575U);
    pass(1100.0);
    EXPECT_LT(compensated(), 1048575U);
    EXPECT_EQ(pictures(), 0);
}

TEST_P(EncoderLines, GoTheOtherWayWithTheOtherTrackLeading) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_OFF);
    run({{10500.0, Slow}, {20000.0, -Slow}}, SOURCE_B);
    pass(11500.0);
    EXPECT_EQ(pictures(), 0);
    pass(50000.0);
    const std::vector<int> shown = rows();
    ASSERT_THAT(shown.size(), testing::AnyOf(19U, 20U, 21U));
    for (std::size_t at = 1; at < shown.size(); ++at) {
        EXPECT_EQ(shown[at], (shown[at - 1] + 255) % 256) << at;
    }
}

TEST_P(EncoderLines, CountBackWithTheOtherTrackLeading) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON);
    run({{10500.0, Slow}, {Forever, 0.0}}, SOURCE_B);
    pass(50000.0);
    EXPECT_EQ(pictures(), 0);
    EXPECT_THAT(compensated(), testing::AnyOf(10U, 11U));
}

TEST_P(EncoderLines, AreDividedByTheDownscaler) {
    set(FG_LINE_DOWNSCALE, 4);
    set(FG_LINE_DOWNSCALEINIT, 4);  // each frame is of one line, its first
    run({{40500.0, Slow}, {Forever, 0.0}});
    pass(50000.0);
    EXPECT_EQ(rows(), (std::vector<int>{3, 7, 11, 15, 19, 23, 27, 31, 35, 39}));
}

/// A shiver about one edge is a pulse once.
TEST_P(EncoderLines, DoNotMultiplyOnABeltThatShivers) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON);
    std::vector<std::pair<double, double>> legs{{10500.0, Slow}};
    for (int times = 0; times < 50; ++times) {
        legs.push_back({1000.0, -Slow});
        legs.push_back({1000.0, Slow});
    }
    legs.push_back({5000.0, Slow});
    run(legs);
    pass(200000.0);
    EXPECT_EQ(rows(), fromTo(0, 15));
}

INSTANTIATE_TEST_SUITE_P(Filters, EncoderLines,
                         testing::Values(Filter{FILTER_X1, 10.0}, Filter{FILTER_X2, 5.0}, Filter{FILTER_X4, 2.5}),
                         [](const auto& tested) { return "X" + std::to_string(1 << (std::get<0>(tested.param) - 1)); });

class BeltWithoutEncoder : public Bench {};

TEST_F(BeltWithoutEncoder, IsStretchedOrSqueezedByThePeriod) {
    pattern("ramp");
    belt(0.0, profile({{100.0, 0.0}, {Forever, 25.0}}));  // 0.05 rows a line
    takeSingleLines();
    pass(100 * LineTime + 100.0);
    std::vector<int> shown = rows();
    ASSERT_EQ(shown.size(), 100U);
    for (int row = 0; row < 5; ++row) {
        EXPECT_NEAR(static_cast<double>(std::count(shown.begin(), shown.end(), row)), 20.0, 1.0) << row;
    }
    const softboard_move fast{Forever, 1000.0};  // 2 rows a line
    const auto before = static_cast<std::size_t>(pictures());
    ASSERT_EQ(softboard_belt(device(), SOFTBOARD_NO_INPUT, SOFTBOARD_NO_INPUT, 0.0, &fast, 1), 0);
    pass(20 * LineTime);
    shown = rows();
    for (std::size_t at = before + 1; at < shown.size(); ++at) {
        EXPECT_EQ(shown[at] - shown[at - 1], 2);
    }
}

TEST_F(BeltWithoutEncoder, TellsWhereItStands) {
    EXPECT_EQ(position(), 0.0);
    belt(0.0, profile({{10000.0, 500.0}, {10000.0, 0.0}, {10000.0, -200.0}}));
    EXPECT_EQ(position(), 0.0);
    pass(4000.0);
    EXPECT_NEAR(position(), 2.0, 1e-5);
    pass(6000.0);
    EXPECT_NEAR(position(), 5.0, 1e-5);
    pass(10000.0);
    EXPECT_NEAR(position(), 5.0, 1e-5);
    pass(5000.0);
    EXPECT_NEAR(position(), 4.0, 1e-5);
    pass(1e6);
    EXPECT_NEAR(position(), 3.0, 1e-5);
    ASSERT_EQ(softboard_belt(device(), TrackA, TrackB, 1.0, nullptr, 0), 0);
    EXPECT_EQ(position(), 0.0);
}

class BarrierImages : public Bench {
protected:
    void SetUp() override {
        Bench::SetUp();
        pattern("ramp");
        useEncoder(FILTER_X1);
        useCamera(Width, 100);
        set(FG_IMGTRIGGERMODE, ASYNC_GATED);
        set(FG_IMGTRIGGERINSRC, static_cast<int>(Barrier));
        set(FG_IMGTRIGGERON, FG_ON);
        memory = memoryOf(16, Width * 3 * 100);
    }
    void barrier(double first, double pitch, double length) {
        ASSERT_EQ(softboard_barrier(device(), Barrier, first, pitch, length), 0) << message();
    }
    static constexpr std::uint32_t EndedByGate = SOFTBOARD_FRAME_SHORT | SOFTBOARD_FRAME_GATE_ENDED;
};

TEST_F(BarrierImages, AreAsLongAsThePart) {
    barrier(1.05, 10.0, 2.0);
    belt(10.0, profile({{1000.0, 0.0}, {Forever, Slow}}));
    acquire(-1, memory);
    pass(1000.0 + 240000.0);
    ASSERT_EQ(pictures(), 3);
    for (int part = 0; part < 3; ++part) {
        const Frame image = frame(memory, part + 1);
        EXPECT_EQ(image.about.flags, EndedByGate);
        EXPECT_EQ(rowsOf(image), fromTo(11 + 100 * part, 30 + 100 * part)) << part;
    }
    EXPECT_EQ(events("FG_TRIGGER_INPUT2_RISING"), 3U);
    EXPECT_EQ(events("FG_TRIGGER_INPUT2_FALLING"), 3U);
}

TEST_F(BarrierImages, ChangeTheirLengthWithTheParts) {
    belt(10.0, profile({{1000.0, 0.0}, {Forever, Slow}}));
    acquire(-1, memory);
    barrier(1.05, 0.0, 2.0);
    pass(1000.0 + 40000.0);
    barrier(5.05, 0.0, 7.5);
    pass(100000.0);
    barrier(15.05, 0.0, 0.1);
    pass(100000.0);
    ASSERT_EQ(pictures(), 3);
    EXPECT_EQ(rowsOf(frame(memory, 1)), fromTo(11, 30));
    EXPECT_EQ(rowsOf(frame(memory, 2)), fromTo(51, 125));
    EXPECT_EQ(rowsOf(frame(memory, 3)), fromTo(151, 151));
}

TEST_F(BarrierImages, EndAtTheHeightOfAnImage) {
    barrier(1.05, 0.0, 15.0);
    belt(10.0, profile({{1000.0, 0.0}, {Forever, Slow}}));
    acquire(-1, memory);
    pass(250000.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(frame(memory, 1).about.flags, 0U);
    EXPECT_EQ(rowsOf(frame(memory, 1)), fromTo(11, 110));
}

TEST_F(BarrierImages, WaitWhileThePartStandsInTheBarrier) {
    set(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON);
    barrier(1.05, 0.0, 2.0);
    belt(10.0, profile({{1000.0, 0.0}, {20500.0, Slow}, {500000.0, 0.0}, {5000.0, -Slow}, {Forever, Slow}}));
    acquire(-1, memory);
    pass(500000.0);
    EXPECT_EQ(pictures(), 0);
    pass(500000.0);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(rowsOf(frame(memory, 1)), fromTo(11, 30));
}

TEST_F(BarrierImages, StopWithTheBarrier) {
    barrier(1.05, 5.0, 1.0);
    belt(10.0, profile({{1000.0, 0.0}, {Forever, Slow}}));
    acquire(-1, memory);
    pass(50000.0);
    EXPECT_EQ(pictures(), 1);
    barrier(0.0, 0.0, 0.0);
    pass(200000.0);
    EXPECT_EQ(pictures(), 1);
}

}  // namespace
}  // namespace quillon::frames_test
