// Frames of the simulator: when they come, against an arithmetic of the test's own, and what they show.

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <random>

#include "tests/frames/AppletFrames.h"

namespace quillon::frames_test {
namespace {

using testing::ElementsAre;

// ---- When they come ----

/// What a host asks the simulator for.
struct Speed {
    int mode = FG_PIXEL_FREQUENCY;
    int width = 32;
    int lineGap = 0;
    int height = 1;
    int frameGap = 0;
    double frequency = 40.0;
    double rate = 0.0;  ///< of lines or frames, by the mode

    static constexpr std::uint64_t Sequence = 2000;  ///< ticks
    static constexpr double TickSeconds = 8e-9;
    static std::uint64_t blocks(int pixels) { return (static_cast<std::uint64_t>(pixels) + 31) / 32; }

    std::uint64_t lines() const { return static_cast<std::uint64_t>(height + (mode == FG_FRAMERATE ? 0 : frameGap)); }
    std::uint64_t blocksOfFrame() const { return lines() * (blocks(width) + blocks(lineGap)); }
    /// Of the ticks of a sequence, those that move a block.
    std::uint64_t active() const { return static_cast<std::uint64_t>(frequency / 2.0 + 0.5); }
    /// How far the first line of frame `frame` is from that of frame 0.
    std::uint64_t tickOf(std::uint64_t frame) const {
        if (mode == FG_PIXEL_FREQUENCY) {
            const std::uint64_t block = frame * blocksOfFrame();
            return block / active() * Sequence + block % active() * (Sequence / active());
        }
        const double seconds = mode == FG_LINERATE ? 1.0 / rate : 1.0 / rate / height;
        return frame * lines() * static_cast<std::uint64_t>(seconds / TickSeconds + 0.5);
    }
    /// Where a rate does not divide a sequence, its blocks gather at the beginning of it.
    double deviation(std::uint64_t frame) const {
        if (mode != FG_PIXEL_FREQUENCY || frame * blocksOfFrame() % active() == 0 || Sequence % active() == 0) {
            return 0.0;
        }
        return static_cast<double>(active());
    }
};

std::ostream& operator<<(std::ostream& out, const Speed& speed) {
    return out << "mode " << speed.mode << ", width " << speed.width << " + " << speed.lineGap << ", height "
               << speed.height << " + " << speed.frameGap << ", " << speed.frequency << " MHz, rate " << speed.rate;
}

class SimulatorFrameTimes : public AppletFrames {
protected:
    static constexpr std::uint64_t Frames = 5;

    void SetUp() override {
        AppletFrames::SetUp();
        set(FG_EXSYNCON, FG_OFF);  // the camera is silent
        set(FG_WIDTH, 4);
        set(FG_CAMERASIMULATOR_ENABLE, FG_CAMERASIMULATOR);
    }

    Speed draw() {
        const auto whole = [&](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
        const auto logarithmic = [&](double from, double to) {
            return std::exp(std::uniform_real_distribution(std::log(from), std::log(to))(random));
        };
        Speed speed;
        speed.mode = whole(0, 2);
        speed.width = static_cast<int>(logarithmic(1, 20000));
        speed.lineGap = whole(0, 1) * static_cast<int>(logarithmic(1, 20000));
        speed.height = static_cast<int>(logarithmic(1, whole(0, 20) == 0 ? 2000 : 60));
        speed.frameGap = whole(0, 1) * static_cast<int>(logarithmic(1, 60));
        speed.frequency = whole(0, 3) == 0 ? 40.0 : logarithmic(1.0, 4000.0);
        speed.rate = speed.mode == FG_LINERATE ? logarithmic(0.1, 300000.0) : logarithmic(0.1, 5000.0);
        return speed;
    }

    /// True if the applet takes it all.
    bool apply(const Speed& speed) {
        set(FG_CAMERASIMULATOR_SELECT_MODE, FG_PIXEL_FREQUENCY);
        set(FG_CAMERASIMULATOR_LINE_GAP, 0);
        set(FG_CAMERASIMULATOR_FRAME_GAP, 0);
        auto& applet = built.applet;
        if (applet.setInt(FG_CAMERASIMULATOR_WIDTH, speed.width) != 0 ||
            applet.setInt(FG_CAMERASIMULATOR_LINE_GAP, speed.lineGap) != 0 ||
            applet.setInt(FG_CAMERASIMULATOR_HEIGHT, speed.height) != 0 ||
            applet.setInt(FG_CAMERASIMULATOR_FRAME_GAP, speed.frameGap) != 0 ||
            applet.setDouble(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, speed.frequency) != 0) {
            return false;
        }
        switch (speed.mode) {
            case FG_LINERATE:
                return applet.setInt(FG_CAMERASIMULATOR_SELECT_MODE, FG_LINERATE) == 0 &&
                       applet.setDouble(FG_CAMERASIMULATOR_LINERATE, speed.rate) == 0;
            case FG_FRAMERATE:
                return applet.setInt(FG_CAMERASIMULATOR_SELECT_MODE, FG_FRAMERATE) == 0 &&
                       applet.setDouble(FG_CAMERASIMULATOR_FRAMERATE, speed.rate) == 0;
            default: return true;
        }
    }

    void check(const Speed& speed) {
        SCOPED_TRACE(testing::Message() << speed);
        set(FG_HEIGHT, speed.height);
        softboard_memory* const memory = memoryOf(Frames, static_cast<std::size_t>(speed.height) * 4 * 3);
        acquire(Frames, memory);
        ticks(speed.tickOf(Frames) + 2);
        ASSERT_EQ(pictures(), static_cast<std::int64_t>(Frames));
        const double framesASecond = real(FG_CAMERASIMULATOR_FRAMERATE);
        const std::uint64_t first = frame(memory, 1).about.first_tick;
        for (std::uint64_t number = 1; number < Frames; ++number) {
            const Frame drawn = frame(memory, static_cast<std::int64_t>(number) + 1);
            const std::uint64_t passed = drawn.about.first_tick - first;
            EXPECT_EQ(passed, speed.tickOf(number));
            EXPECT_EQ(drawn.about.lines, static_cast<std::uint32_t>(speed.height));
            const double told = static_cast<double>(number) / framesASecond / Speed::TickSeconds;
            EXPECT_NEAR(static_cast<double>(passed), told, speed.deviation(number) + 1e-9 * told);
        }
        closeMemories();
    }

    std::mt19937 random{20260101};
};

TEST_F(SimulatorFrameTimes, AreThoseThatAreAskedForInAllModes) {
    constexpr int Rounds = 300;
    std::array<int, 3> accepted{};
    for (int round = 0; round < Rounds;) {
        const Speed speed = draw();
        if (apply(speed)) {
            check(speed);
            if (HasFatalFailure()) {
                return;
            }
            ++accepted.at(static_cast<std::size_t>(speed.mode));
            ++round;
        }
    }
    EXPECT_THAT(accepted, testing::Each(testing::Gt(Rounds / 10)));
}

TEST_F(SimulatorFrameTimes, AreExactWhereTheNumbersDivide) {
    const auto ticksOfAFrame = [&](const Speed& speed) {
        EXPECT_TRUE(apply(speed));
        check(speed);
        return speed.tickOf(1);
    };
    EXPECT_EQ(ticksOfAFrame({.width = 1024, .height = 10, .frequency = 4000.0}), 10U * 32);
    EXPECT_EQ(ticksOfAFrame({.width = 1024, .lineGap = 96, .height = 10, .frameGap = 5, .frequency = 40.0}),
              15U * 35 * 100);
    EXPECT_EQ(ticksOfAFrame({.mode = FG_LINERATE, .width = 1024, .height = 10, .rate = 12500.0}), 10U * 10000);
    EXPECT_EQ(ticksOfAFrame({.mode = FG_FRAMERATE, .width = 1024, .height = 10, .rate = 100.0}), 1250000U);
}

TEST_F(SimulatorFrameTimes, AreWholeTicksALine) {
    const Speed speed{.mode = FG_LINERATE, .width = 1024, .height = 7, .rate = 10240.0};
    ASSERT_TRUE(apply(speed));
    check(speed);
    EXPECT_EQ(speed.tickOf(1), 7U * 12207);
}

TEST_F(SimulatorFrameTimes, AreThoseOfTheEdgesWhereEachLetsALineThrough) {
    ASSERT_TRUE(apply({.mode = FG_LINERATE, .width = 32, .height = 3, .rate = 100000.0}));
    set(FG_HEIGHT, 3);
    set(FG_TRIGGERCAMERA_SOURCE, FG_SIGNAL_GPI_0);
    set(FG_CAMERASIMULATOR_TRIGGER_MODE, RISING_EDGE_TRIGGERS_LINE);
    softboard_memory* const memory = memoryOf(2, 3 * 4 * 3);
    acquire(-1, memory);
    pass(100.0);
    for (int line = 0; line < 6; ++line) {
        input(0, true);
        pass(20.0);
        input(0, false);
        pass(30.0);
    }
    ASSERT_EQ(pictures(), 2);
    const Frame first = frame(memory, 1);
    EXPECT_EQ(first.about.last_tick - first.about.first_tick, 2U * 6250);
    EXPECT_EQ(frame(memory, 2).about.first_tick - first.about.first_tick, 3U * 6250);
}

// ---- What they show ----

class SimulatorPictures : public AppletFrames {
protected:
    static constexpr int Width = 64;

    /// What the pattern gives for each pixel of a frame.
    static std::vector<int> expected(int pattern, int offset, bool roll, int frame, int height) {
        std::vector<int> values;
        for (int line = 0; line < height; ++line) {
            for (int x = 0; x < Width; ++x) {
                const int value = (pattern != FG_VERTICAL ? x : 0) + (pattern != FG_HORIZONTAL ? line : 0) + offset +
                                  (roll ? frame : 0);
                values.insert(values.end(), 3, value % 256);
            }
        }
        return values;
    }
};

TEST_F(SimulatorPictures, AreRampsThatRollWithTheFrames) {
    constexpr int Height = 3;
    constexpr int Frames = 300;
    useSimulator(Width, Height);
    softboard_memory* const memory = memoryOf(Frames, Width * Height * 3);
    for (const int pattern : {FG_HORIZONTAL, FG_VERTICAL, FG_DIAGONAL}) {
        for (const int offset : {0, 201}) {
            for (const int roll : {FG_OFF, FG_ON}) {
                set(FG_CAMERASIMULATOR_PATTERN, pattern);
                set(FG_CAMERASIMULATOR_PATTERN_OFFSET, offset);
                set(FG_CAMERASIMULATOR_ROLL, roll);
                acquire(Frames, memory);
                pass(Frames * Height * SimulatorLineTime);
                ASSERT_EQ(pictures(), Frames);
                for (int number = 0; number < Frames; ++number) {
                    ASSERT_EQ(numbers(frame(memory, number + 1)), expected(pattern, offset, roll == 1, number, Height))
                        << "pattern " << pattern << ", offset " << offset << ", roll " << roll << ", frame " << number;
                }
            }
        }
    }
}

TEST_F(SimulatorPictures, BeginAnewBehind256LinesAndPixels) {
    constexpr int Height = 520;
    useSimulator(Width, Height);
    set(FG_CAMERASIMULATOR_PATTERN_OFFSET, 200);
    softboard_memory* const memory = memoryOf(1, Width * Height * 3);
    acquire(1, memory);
    pass(Height * SimulatorLineTime);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(numbers(frame(memory, 1)), expected(FG_DIAGONAL, 200, true, 0, Height));
}

TEST_F(SimulatorPictures, GoOnWhereTheFramesOfTheImageTriggerAreShorter) {
    useSimulator(4, 3);
    set(FG_HEIGHT, 2);
    set(FG_CAMERASIMULATOR_PATTERN, FG_VERTICAL);
    softboard_memory* const memory = memoryOf(3, 4 * 2 * 3);
    acquire(3, memory);
    pass(6 * SimulatorLineTime);
    ASSERT_EQ(pictures(), 3);
    EXPECT_THAT(blue(frame(memory, 1)), ElementsAre(0, 0, 0, 0, 1, 1, 1, 1));
    EXPECT_THAT(blue(frame(memory, 2)), ElementsAre(2, 2, 2, 2, 1, 1, 1, 1));
    EXPECT_THAT(blue(frame(memory, 3)), ElementsAre(2, 2, 2, 2, 3, 3, 3, 3));
}

TEST_F(SimulatorPictures, BeginTheNextFrameWhereTheNewHeightHasBeenSent) {
    const auto values = [this](int sent, int height) {
        useSimulator(4, 5);
        set(FG_HEIGHT, 8);
        set(FG_CAMERASIMULATOR_PATTERN, FG_VERTICAL);
        softboard_memory* const memory = memoryOf(1, 4 * 8 * 3);
        acquire(1, memory);
        pass((sent - 0.5) * SimulatorLineTime);
        set(FG_CAMERASIMULATOR_HEIGHT, height);
        pass(8 * SimulatorLineTime);
        std::vector<int> lines = blue(frame(memory, 1));
        for (std::size_t line = 0; line < lines.size() / 4; ++line) {
            lines[line] = lines[4 * line];
        }
        lines.resize(lines.size() / 4);
        return lines;
    };
    EXPECT_THAT(values(2, 3), ElementsAre(0, 1, 2, 1, 2, 3, 2, 3));
    EXPECT_THAT(values(2, 2), ElementsAre(0, 1, 1, 2, 2, 3, 3, 4));
    EXPECT_THAT(values(4, 2), ElementsAre(0, 1, 2, 3, 1, 2, 2, 3));
    EXPECT_THAT(values(4, 6), ElementsAre(0, 1, 2, 3, 4, 5, 1, 2));
}

TEST_F(SimulatorPictures, StandAtTheTopOfTheWordInEveryPixelFormat) {
    useSimulator(4, 1);
    set(FG_FORMAT, FG_COL48);
    set(FG_CAMERASIMULATOR_PATTERN_OFFSET, 0x80);
    for (const int format : {RGB8, RGB10, RGB12, RGB14, RGB16}) {
        set(FG_PIXELFORMAT, format);
        softboard_memory* const memory = memoryOf(1, 4 * 6);
        acquire(1, memory);
        pass(SimulatorLineTime);
        ASSERT_EQ(pictures(), 1);
        EXPECT_THAT(numbers(frame(memory, 1)), ElementsAre(0, 0x80, 0, 0x80, 0, 0x80, 0, 0x81, 0, 0x81, 0, 0x81,  //
                                                           0, 0x82, 0, 0x82, 0, 0x82, 0, 0x83, 0, 0x83, 0, 0x83));
    }
}

}  // namespace
}  // namespace quillon::frames_test
