// Image and line triggers by their public parameters: which lines are in which frame.

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <ostream>
#include <random>

#include "tests/frames/AppletFrames.h"

namespace quillon::frames_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t Short = SOFTBOARD_FRAME_SHORT;
constexpr std::uint32_t GateEnded = SOFTBOARD_FRAME_GATE_ENDED;

/// A frame by the lines of the camera: line n begins when n periods and an exposure have passed.
struct Seen {
    std::uint64_t first;
    std::uint64_t last;
    std::uint32_t flags = 0;
    bool operator==(const Seen&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Seen& seen) {
    return out << "lines " << seen.first << " to " << seen.last << ", flags " << seen.flags;
}

class TriggeredFrames : public AppletFrames {
protected:
    static constexpr int Height = 3;

    void SetUp() override {
        AppletFrames::SetUp();
        useCamera(8, Height);
    }
    void start(int mode) {
        set(FG_IMGTRIGGERMODE, mode);
        memory = memoryOf(16, 1024 * Height * 3);
        acquire(-1, memory);
    }
    /// Moves the time to the middle between the beginnings of this line and the next.
    void passLine(int line) {
        const double until = line * LineTime + Exposure + LineTime / 2;
        pass(until - built.board.signalTime());
    }
    void pulse(unsigned number) {
        input(number, true);
        input(number, false);
    }
    std::vector<Seen> seen() {
        const auto lineOf = [](std::uint64_t tick) {
            const auto exposure = static_cast<std::uint64_t>(Exposure / Tick + 0.5);
            const auto period = static_cast<std::uint64_t>(LineTime / Tick + 0.5);
            EXPECT_EQ((tick - exposure) % period, 0U);
            return (tick - exposure) / period;
        };
        std::vector<Seen> frames;
        for (std::int64_t number = 1; number <= pictures(); ++number) {
            const softboard_frame about = frame(memory, number).about;
            frames.push_back({lineOf(about.first_tick), lineOf(about.last_tick), about.flags});
            EXPECT_EQ(about.lines, frames.back().last - frames.back().first + 1);
        }
        return frames;
    }
    bool busy() { return whole(FG_IMGTRIGGER_IS_BUSY) == IS_BUSY; }

    softboard_memory* memory = nullptr;
};

// ---- Free run ----

TEST_F(TriggeredFrames, FollowOneAnotherInFreeRun) {
    start(FREE_RUN);
    passLine(9);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 6}, Seen{7, 9}));
    EXPECT_FALSE(busy());
}

TEST_F(TriggeredFrames, LeaveTheOffsetOutBeforeEachImageOfFreeRun) {
    set(FG_YOFFSET, 2);
    start(FREE_RUN);
    passLine(10);
    EXPECT_THAT(seen(), ElementsAre(Seen{3, 5}, Seen{8, 10}));
}

TEST_F(TriggeredFrames, TakeANewHeightWithTheNextLine) {
    start(FREE_RUN);
    passLine(3);
    set(FG_HEIGHT, 2);
    passLine(5);
    set(FG_HEIGHT, 4);
    passLine(9);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 5}, Seen{6, 9}));
}

// ---- Triggers ----

TEST_F(TriggeredFrames, BeginWithTheLineBehindTheTrigger) {
    start(ASYNC_TRIGGER);
    passLine(2);
    EXPECT_FALSE(busy());
    pulse(0);
    EXPECT_TRUE(busy());
    passLine(4);
    EXPECT_TRUE(busy());
    passLine(5);
    EXPECT_FALSE(busy());
    passLine(10);
    pulse(0);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{3, 5}, Seen{11, 13}));
}

TEST_F(TriggeredFrames, IgnoreTriggersWhileTheTriggerIsBusy) {
    start(ASYNC_TRIGGER);
    for (int line = 0; line < 7; ++line) {
        passLine(line);
        pulse(0);
    }
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 6}, Seen{7, 9}));
    EXPECT_EQ(built.board.registerValue("TriggerCounter"), 3U);
}

TEST_F(TriggeredFrames, WaitForGateDelayAndOffset) {
    set(FG_IMGTRIGGERGATEDELAY, 4);
    set(FG_YOFFSET, 2);
    start(ASYNC_TRIGGER);
    passLine(1);
    pulse(0);
    passLine(8);
    EXPECT_TRUE(busy());
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{8, 10}));
}

TEST_F(TriggeredFrames, ComeFromTheInputThatIsSelected) {
    set(FG_IMGTRIGGERINSRC, TRGINSRC_FRONT_GPI_2);
    start(ASYNC_TRIGGER);
    pulse(0);
    EXPECT_FALSE(busy());
    pulse(10);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}));
}

TEST_F(TriggeredFrames, ComeWithTheFallingEdgeWhereTheInputIsLowActive) {
    input(0, true);
    set(FG_IMGTRIGGERINPOLARITY, HIGH_ON_ZERO_LOW);
    start(ASYNC_TRIGGER);
    passLine(1);
    EXPECT_FALSE(busy());
    input(0, false);
    EXPECT_TRUE(busy());
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{2, 4}));
}

TEST_F(TriggeredFrames, DoNotComeWhereTheTriggerIsOff) {
    set(FG_IMGTRIGGERON, FG_OFF);
    start(ASYNC_TRIGGER);
    pulse(0);
    passLine(20);
    EXPECT_THAT(seen(), IsEmpty());
}

TEST_F(TriggeredFrames, ComeOfTheSoftwareTriggerWhereItIsTheSource) {
    start(ASYNC_TRIGGER);
    set(FG_SENDSOFTWARETRIGGER, FG_APPLY);
    EXPECT_FALSE(busy());
    set(FG_IMGTRIGGERINSRC, TRGINSOFTWARE);
    set(FG_SENDSOFTWARETRIGGER, FG_APPLY);
    EXPECT_TRUE(busy());
    passLine(5);
    set(FG_SENDSOFTWARETRIGGER, FG_APPLY);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{6, 8}));
}

TEST_F(TriggeredFrames, EndShortWhereTheImageIsNoMultipleOfTheHeight) {
    set(FG_IMGTRIGGER_ASYNC_HEIGHT, 8);
    start(ASYNC_TRIGGER_MULTIFRAME);
    pulse(0);
    passLine(7);
    EXPECT_TRUE(busy());
    passLine(20);
    EXPECT_FALSE(busy());
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 6}, Seen{7, 8, Short}));
    EXPECT_EQ(frame(memory, 3).bytes.size(), 8U * 2 * 3);
}

TEST_F(TriggeredFrames, AreAllWholeWhereTheImageIsAMultipleOfTheHeight) {
    set(FG_IMGTRIGGER_ASYNC_HEIGHT, 6);
    start(ASYNC_TRIGGER_MULTIFRAME);
    pulse(0);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 6}));
}

TEST_F(TriggeredFrames, LeaveTheOffsetOutOnceAnImage) {
    set(FG_YOFFSET, 1);
    set(FG_IMGTRIGGER_ASYNC_HEIGHT, 4);
    start(ASYNC_TRIGGER_MULTIFRAME);
    pulse(0);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{2, 4}, Seen{5, 5, Short}));
}

TEST_F(TriggeredFrames, TakeANewAsyncHeightWhileTheImageRuns) {
    set(FG_IMGTRIGGER_ASYNC_HEIGHT, 100);
    start(ASYNC_TRIGGER_MULTIFRAME);
    pulse(0);
    passLine(4);
    set(FG_IMGTRIGGER_ASYNC_HEIGHT, 5);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 5, Short}));
}

TEST_F(TriggeredFrames, EndWithAChangeOfTheMode) {
    start(ASYNC_TRIGGER);
    pulse(0);
    passLine(2);
    set(FG_IMGTRIGGERMODE, FREE_RUN);
    passLine(5);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 2, Short}, Seen{3, 5}));
}

// ---- Gates ----

TEST_F(TriggeredFrames, EndWithTheGateThatFallsBetweenLines) {
    start(ASYNC_GATED);
    passLine(1);
    input(0, true);
    EXPECT_TRUE(busy());
    passLine(3);
    input(0, false);
    EXPECT_FALSE(busy());
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{2, 3, Short | GateEnded}));
}

TEST_F(TriggeredFrames, EndWithTheLineInWhichTheGateFalls) {
    set(FG_WIDTH, 1024);  // a line is under way for 1.024 µs
    start(ASYNC_GATED);
    input(0, true);
    passLine(1);
    pass(LineTime / 2 + 0.5);
    ASSERT_TRUE(built.board.signal(client::Signal::LineValid));
    input(0, false);
    EXPECT_TRUE(busy());
    pass(1.0);
    EXPECT_FALSE(busy());
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 2, Short | GateEnded}));
}

TEST_F(TriggeredFrames, EndAtTheirHeightHoweverLongTheGate) {
    start(ASYNC_GATED);
    input(0, true);
    passLine(10);
    EXPECT_FALSE(busy());
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}));
    input(0, false);
    input(0, true);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{11, 13}));
}

TEST_F(TriggeredFrames, FollowOneAnotherWithinAGateOfSeveralFrames) {
    start(ASYNC_GATED_MULTIFRAME);
    passLine(1);
    input(0, true);
    passLine(8);
    EXPECT_TRUE(busy());
    input(0, false);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{2, 4}, Seen{5, 7}, Seen{8, 8, Short | GateEnded}));
}

TEST_F(TriggeredFrames, AreAllWholeWhereTheGateFallsBehindTheLastLineOfOne) {
    start(ASYNC_GATED_MULTIFRAME);
    input(0, true);
    passLine(6);
    input(0, false);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 6}));
}

TEST_F(TriggeredFrames, DoNotComeOfAGateThatFallsWithinTheDelay) {
    set(FG_IMGTRIGGERGATEDELAY, 5);
    start(ASYNC_GATED);
    input(0, true);
    passLine(3);
    input(0, false);
    passLine(20);
    EXPECT_THAT(seen(), IsEmpty());
}

TEST_F(TriggeredFrames, LieWithinAGateOfTheSoftware) {
    set(FG_IMGTRIGGERINSRC, TRGINSOFTWARE);
    start(ASYNC_GATED_MULTIFRAME);
    set(FG_SENDSOFTWARETRIGGER, FG_APPLY);  // a pulse has no level
    EXPECT_FALSE(busy());
    set(FG_SETSOFTWARETRIGGER, FG_HIGH);
    passLine(4);
    set(FG_SETSOFTWARETRIGGER, FG_LOW);
    passLine(20);
    EXPECT_THAT(seen(), ElementsAre(Seen{1, 3}, Seen{4, 4, Short | GateEnded}));
}

// ---- Whatever a trigger does ----

/// Which lines make which frames, told once more: the trigger changes between lines only.
class ImagesOfLines {
public:
    int mode = FREE_RUN;
    int height = 1;
    int yOffset = 0;
    int gateDelay = 0;
    int asyncHeight = 1;
    std::vector<Seen> frames;

    void level(bool high) {
        if (high && !high_ && mode != FREE_RUN && !running_) {
            begin();
        } else if (!high && high_ && gated() && running_) {
            end(GateEnded);
        }
        high_ = high;
    }
    void line(std::uint64_t number) {
        if (mode == FREE_RUN && !running_) {
            begin();
        }
        if (!running_ || ++lines_ <= yOffset + (mode == FREE_RUN ? 0 : gateDelay)) {
            return;
        }
        if (frameLines_++ == 0) {
            first_ = number;
        }
        last_ = number;
        if (mode != ASYNC_GATED_MULTIFRAME &&
            ++imageLines_ == (mode == ASYNC_TRIGGER_MULTIFRAME ? asyncHeight : height)) {
            end(0);
        } else if (frameLines_ == height) {
            close(0);
        }
    }
    bool busy() const { return mode != FREE_RUN && running_; }

private:
    bool gated() const { return mode == ASYNC_GATED || mode == ASYNC_GATED_MULTIFRAME; }
    void begin() {
        running_ = true;
        lines_ = 0;
        imageLines_ = 0;
    }
    void end(std::uint32_t flags) {
        close(flags);
        running_ = false;
    }
    void close(std::uint32_t flags) {
        if (frameLines_ != 0) {
            frames.push_back({first_, last_, flags | (frameLines_ < height ? Short : 0U)});
        }
        frameLines_ = 0;
    }

    bool high_ = false;
    bool running_ = false;
    int lines_ = 0;
    int imageLines_ = 0;
    int frameLines_ = 0;
    std::uint64_t first_ = 0;
    std::uint64_t last_ = 0;
};

TEST_F(TriggeredFrames, AreThoseOfAnyTrigger) {
    std::mt19937 random(20260103);
    const auto whole = [&](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
    memory = memoryOf(64, 8 * 6 * 3);
    int line = 0;
    std::size_t frames = 0;
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        input(0, false);
        set(FG_IMGTRIGGERMODE, FREE_RUN);
        constexpr std::array<int, 5> Modes = {FREE_RUN, ASYNC_TRIGGER, ASYNC_TRIGGER_MULTIFRAME, ASYNC_GATED,
                                              ASYNC_GATED_MULTIFRAME};
        ImagesOfLines images;
        images.mode = Modes.at(static_cast<std::size_t>(round) % Modes.size());
        images.height = whole(1, 6);
        images.yOffset = whole(0, 1) * whole(0, 4);
        images.gateDelay = whole(0, 1) * whole(0, 4);
        images.asyncHeight = whole(1, 20);
        set(FG_HEIGHT, images.height);
        set(FG_YOFFSET, images.yOffset);
        set(FG_IMGTRIGGERGATEDELAY, images.gateDelay);
        set(FG_IMGTRIGGER_ASYNC_HEIGHT, images.asyncHeight);
        set(FG_IMGTRIGGERMODE, images.mode);
        acquire(-1, memory);
        const int seldom = whole(1, 12);
        bool high = false;
        for (int step = 0; step < 60; ++step) {
            for (int changes = whole(0, seldom) == 0 ? whole(1, 3) : 0; changes > 0; --changes) {
                high = !high;
                input(0, high);
                images.level(high);
            }
            passLine(++line);
            images.line(static_cast<std::uint64_t>(line));
            ASSERT_EQ(busy(), images.busy());
        }
        ASSERT_EQ(seen(), images.frames) << "mode " << images.mode;
        frames += images.frames.size();
        stop();
    }
    EXPECT_GT(frames, 500U);
}

// ---- Line triggers ----

class FramesOfLineTriggers : public AppletFrames {
protected:
    static constexpr double PulseTime = 100.0;

    void SetUp() override {
        AppletFrames::SetUp();
        useCamera(8, 3);
        memory = memoryOf(16, 8 * 3 * 3);
    }
    /// Pulses on GPI 1, numbered from 1; a line begins an exposure behind the pulse that it comes of.
    void pulses(int number) {
        for (; number > 0; --number) {
            input(1, true);
            pass(PulseTime / 2);
            input(1, false);
            pass(PulseTime / 2);
        }
    }
    /// The pulse that a line came of.
    long pulseOf(std::uint64_t tick) const {
        return std::lround((static_cast<double>(tick) * Tick - Exposure - began) / PulseTime) + 1;
    }
    struct Ends {
        long first;
        long last;
        bool operator==(const Ends&) const = default;
    };
    std::vector<Ends> frames() {
        std::vector<Ends> ends;
        for (std::int64_t number = 1; number <= pictures(); ++number) {
            const softboard_frame about = frame(memory, number).about;
            ends.push_back({pulseOf(about.first_tick), pulseOf(about.last_tick)});
        }
        return ends;
    }
    void start(int mode) {
        set(FG_LINETRIGGERMODE, mode);
        acquire(-1, memory);
        began = built.board.signalTime();
    }

    softboard_memory* memory = nullptr;
    double began = 0.0;
};

TEST_F(FramesOfLineTriggers, HaveALineAPulse) {
    start(ASYNC_TRIGGER);
    pulses(6);
    EXPECT_THAT(frames(), ElementsAre(Ends{1, 3}, Ends{4, 6}));
}

TEST_F(FramesOfLineTriggers, HaveALineInSoManyPulsesWithThePhaseAtEachBeginning) {
    set(FG_LINE_DOWNSCALE, 3);
    set(FG_LINE_DOWNSCALEINIT, 2);
    start(ASYNC_TRIGGER);
    pulses(20);
    // 2, 5, 8; 10, 13, 16; 18 ...
    EXPECT_THAT(frames(), ElementsAre(Ends{2, 8}, Ends{10, 16}));
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 7U);
}

TEST_F(FramesOfLineTriggers, FollowTheInputAndItsPolarity) {
    set(FG_LINETRIGGERINSRC, TRGINSRC_FRONT_GPI_0);
    set(FG_LINETRIGGERINPOLARITY, HIGH_ON_ZERO_LOW);
    start(ASYNC_TRIGGER);
    pulses(6);
    EXPECT_THAT(frames(), IsEmpty());
    for (int line = 0; line < 3; ++line) {
        input(8, true);
        pass(50.0);
        EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), static_cast<std::uint64_t>(line));
        input(8, false);
        pass(50.0);
    }
    EXPECT_EQ(pictures(), 1);
}

TEST_F(FramesOfLineTriggers, HaveLinesOnlyWhileAnImageRunsWhereTheyAreGated) {
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    start(ASYNC_GATED);
    pulses(4);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 0U);
    input(0, true);
    pulses(10);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 3U);
    EXPECT_THAT(frames(), ElementsAre(Ends{5, 7}));
}

TEST_F(FramesOfLineTriggers, HaveLinesOfTheGeneratorOnlyWhileAnImageRunsWhereItIsGated) {
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    start(GRABBER_CONTROLLED_GATED);
    pass(10 * LineTime);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 0U);
    input(0, true);
    pass(10 * LineTime);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 3U);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(FramesOfLineTriggers, FollowANewPeriod) {
    start(GRABBER_CONTROLLED);
    set(FG_LINEPERIODE, 50.0);
    pass(3 * 50.0 + 30.0);
    ASSERT_EQ(pictures(), 1);
    const softboard_frame about = frame(memory, 1).about;
    EXPECT_EQ(about.last_tick - about.first_tick, 2U * 6250);
}

}  // namespace
}  // namespace quillon::frames_test
