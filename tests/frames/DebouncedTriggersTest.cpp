/// @file
/// Pulses at the inputs of both triggers that are a tick too short, or just long enough.

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

class Debounced : public Bench, public testing::WithParamInterface<double> {
protected:
    static constexpr unsigned LineInput = 0;
    static constexpr unsigned ImageInput = 1;

    void SetUp() override {
        Bench::SetUp();
        set(FG_LINETRIGGERINSRC, static_cast<int>(LineInput));
        set(FG_IMGTRIGGERINSRC, static_cast<int>(ImageInput));
    }
    std::uint64_t stable() const { return static_cast<std::uint64_t>(GetParam() / Tick + 0.5); }
    void pulse(unsigned number, std::uint64_t length) {
        input(number, true);
        ticks(length);
        input(number, false);
        pass(100.0);
    }
    void useLineInput() {
        set(FG_LINETRIGGERMODE, ASYNC_TRIGGER);
        set(FG_LINETRIGGERDEBOUNCING, GetParam());
        set(FG_IMGTRIGGERDEBOUNCING, 0.008);
        takeSingleLines();
        pass(100.0);
    }
    void useImageInput() {
        useCamera(Width, 1);
        set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
        set(FG_IMGTRIGGERON, FG_ON);
        set(FG_IMGTRIGGERDEBOUNCING, GetParam());
        set(FG_LINETRIGGERDEBOUNCING, 0.008);
        memory = memoryOf(64, Width * 3);
        acquire(-1, memory);
        pass(100.0);
    }
};

TEST_P(Debounced, LineTriggersNeedAStableInput) {
    useLineInput();
    pulse(LineInput, stable() - 1);
    EXPECT_EQ(pictures(), 0);
    pulse(LineInput, stable() + 1);
    EXPECT_EQ(pictures(), 1);
    for (int bounce = 0; bounce < 10; ++bounce) {
        input(LineInput, true);
        ticks(stable() - 1);
        input(LineInput, false);
        ticks(stable() - 1);
    }
    pass(100.0);
    EXPECT_EQ(pictures(), 1);
    input(LineInput, true);
    pass(100.0);
    EXPECT_EQ(pictures(), 2);
    input(LineInput, false);  // a gap that is too short is none
    ticks(stable() - 1);
    input(LineInput, true);
    pass(100.0);
    EXPECT_EQ(pictures(), 2);
}

TEST_P(Debounced, ImageTriggersNeedAStableInput) {
    useImageInput();
    pulse(ImageInput, stable() - 1);
    pass(2 * LineTime);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(whole(FG_IMGTRIGGER_IS_BUSY), 0U);
    pulse(ImageInput, stable() + 1);
    pass(2 * LineTime);
    EXPECT_EQ(pictures(), 1);
}

TEST_P(Debounced, TimesRuleTheirOwnInput) {
    useLineInput();
    set(FG_IMGTRIGGERDEBOUNCING, 30.0);
    pulse(LineInput, stable() + 1);
    EXPECT_EQ(pictures(), 1);
}

INSTANTIATE_TEST_SUITE_P(Times, Debounced, testing::Values(0.12, 1.0, 30.0), [](const auto& tested) {
    return "Of" + std::to_string(static_cast<int>(tested.param * 1000.0 + 0.5)) + "ns";
});

using DebouncingLimits = Bench;

/// A change of an input acts at once, unless a longer time is asked for than that of a new design.
TEST_F(DebouncingLimits, LetAllThroughUpToTheTimeOfANewDesign) {
    set(FG_LINETRIGGERMODE, ASYNC_TRIGGER);
    set(FG_LINETRIGGERINSRC, TRGINSRC_GPI_0);
    set(FG_LINETRIGGERDEBOUNCING, 0.112);
    takeSingleLines();
    input(0, true);
    input(0, false);
    pass(100.0);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(DebouncingLimits, AreThoseOfTheParameters) {
    for (const int id : {FG_LINETRIGGERDEBOUNCING, FG_IMGTRIGGERDEBOUNCING}) {
        EXPECT_NE(built.applet.setDouble(id, 0.007), 0);
        EXPECT_NE(built.applet.setDouble(id, 30.1), 0);
        EXPECT_EQ(built.applet.setDouble(id, 0.008), 0);
        EXPECT_EQ(built.applet.setDouble(id, 30.0), 0);
    }
}

}  // namespace
}  // namespace quillon::frames_test
