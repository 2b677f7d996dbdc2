#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "softboard/recording.h"
#include "softboard/scene.h"
#include "tests/softboard/SignalBoard.h"

namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr unsigned A = 4;
constexpr unsigned B = 5;

class BoardBelt : public SignalBoard {
protected:
    using Moves = std::vector<softboard_move>;

    int belt(double countsPerMm, const Moves& moves, unsigned a = A, unsigned b = B) {
        return softboard_belt(board, a, b, countsPerMm, moves.data(), moves.size());
    }
    double position() {
        double mm = NAN;
        EXPECT_EQ(softboard_belt_position(board, &mm), 0);
        return mm;
    }
    std::string message() {
        std::string text(1000, '\0');
        EXPECT_EQ(softboard_last_message(board, text.data(), text.size()), 0);
        return text.c_str();
    }
    int level(unsigned number) { return signal(SOFTBOARD_GPI_0 + number); }
    std::string tracks() { return std::to_string(level(A)) + std::to_string(level(B)); }
    std::uint64_t edges(unsigned number, bool rising) {
        return events("Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_" + std::string(rising ? "" : "Not") +
                      "Pin" + std::to_string(number));
    }
    /// Puts the design on the board once more.
    void reload() {
        Fg_FreeGrabber(fg);
        fg = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 0);
    }
    /// All changes of the inputs since `record`: tick, number, level.
    std::vector<std::uint64_t> recorded() {
        std::size_t kept = 0;
        std::uint64_t lost = 0;
        softboard_recording_size(board, &kept, &lost);
        EXPECT_EQ(lost, 0U);
        std::vector<softboard_change> changes(kept);
        softboard_recorded_changes(board, 0, kept, changes.data());
        std::vector<std::uint64_t> result;
        for (const softboard_change& change : changes) {
            if (change.kind == SOFTBOARD_CHANGE_SIGNAL) {
                result.insert(result.end(), {change.tick, change.number, change.level});
            }
        }
        return result;
    }
};

TEST_F(BoardBelt, MovesWithTheClock) {
    EXPECT_EQ(position(), 0.0);
    ASSERT_EQ(belt(0.0, {{Infinite, 500.0}}), 0);
    EXPECT_EQ(position(), 0.0);
    pass(1000.0);
    EXPECT_DOUBLE_EQ(position(), 0.5);
}

TEST_F(BoardBelt, FollowsItsProfile) {
    ASSERT_EQ(belt(0.0, {{1000.0, 0.0}, {3000.0, 500.0}, {4000.0, 0.0}, {5000.0, -250.0}}), 0);
    const std::vector<std::pair<double, double>> expected = {{500, 0.0},  {1000, 0.0},   {2000, 0.5},  {3000, 1.0},
                                                             {3999, 1.0}, {4500, 0.875}, {5000, 0.75}, {9000, 0.75}};
    double time = 0.0;
    for (const auto& [at, mm] : expected) {
        pass(at - time);
        time = at;
        EXPECT_NEAR(position(), mm, 1e-9) << at;
    }
}

TEST_F(BoardBelt, DrivesTwoTracksAQuarterApart) {
    // A period of 0.1 mm at 100 mm/s: 1 ms.
    ASSERT_EQ(belt(10.0, {{Infinite, 100.0}}), 0);
    EXPECT_EQ(tracks(), "00");
    pass(1.0);
    const std::vector<std::string> forward = {"10", "11", "01", "00", "10", "11"};
    for (const std::string& expected : forward) {
        EXPECT_EQ(tracks(), expected);
        pass(250.0);
    }
    pass(1000000.0 - 1501.0);
    EXPECT_EQ(edges(A, true), 1001U);  // at 0.0 mm and at 100.0 mm
    EXPECT_EQ(edges(A, false), 1000U);
    EXPECT_EQ(edges(B, true), 1000U);
}

TEST_F(BoardBelt, ChangesTheOrderOfTheTracksWhenItRunsBack) {
    ASSERT_EQ(belt(10.0, {{2100.0, 100.0}, {Infinite, -100.0}}), 0);
    pass(2101.0);
    EXPECT_EQ(tracks(), "10");
    pass(150.0);
    for (const char* const expected : {"00", "01", "11", "10", "00"}) {
        EXPECT_EQ(tracks(), expected);
        pass(250.0);
    }
    pass(10000.0);  // far behind where it began
    EXPECT_NEAR(position(), -0.9301, 1e-9);
    EXPECT_GT(edges(A, true), 10U);
}

TEST_F(BoardBelt, DrivesTheTracksThatAreConnected) {
    ASSERT_EQ(belt(10.0, {{Infinite, 100.0}}, A, SOFTBOARD_NO_INPUT), 0);
    pass(10000.0);
    EXPECT_EQ(edges(A, true), 11U);
    EXPECT_EQ(edges(B, true), 0U);
}

TEST_F(BoardBelt, StandsBehindItsLastMove) {
    ASSERT_EQ(belt(10.0, {{1000.0, 100.0}}), 0);
    pass(60e6);
    EXPECT_NEAR(position(), 0.1, 1e-9);
    EXPECT_EQ(edges(A, true), 1U + 1U);
}

TEST_F(BoardBelt, IsTheSameInManySteps) {
    const Moves moves = {{777.7, 333.3}, {1234.5, -41.7}, {2000.0, 1999.9}, {Infinite, -7.3}};
    const auto run = [&](int steps) {
        reload();
        softboard_record_signals(board, 100000);
        ASSERT_EQ(belt(97.3, moves), 0);
        ASSERT_EQ(softboard_barrier(board, 6, 0.013, 0.1, 0.0371), 0);
        for (int step = 0; step < steps; ++step) {
            pass(5000.0 / steps);
        }
    };
    run(1);
    const auto once = recorded();
    EXPECT_GT(once.size(), 1000U);
    run(1000);
    EXPECT_EQ(recorded(), once);
}

TEST_F(BoardBelt, BeginsAnewWithADesign) {
    ASSERT_EQ(belt(10.0, {{Infinite, 100.0}}), 0);
    pass(5000.0);
    EXPECT_NEAR(position(), 0.5, 1e-9);
    reload();
    EXPECT_EQ(position(), 0.0);
    pass(1000.0);
    EXPECT_NEAR(position(), 0.1, 1e-9);
    EXPECT_EQ(edges(A, true), 2U);
}

TEST_F(BoardBelt, IsTakenAway) {
    ASSERT_EQ(belt(10.0, {{Infinite, 100.0}}), 0);
    pass(5000.0);
    ASSERT_EQ(softboard_belt(board, A, B, 0.0, nullptr, 0), 0);
    EXPECT_EQ(position(), 0.0);
    const std::uint64_t before = edges(A, true);
    pass(5000.0);
    EXPECT_EQ(edges(A, true), before);
}

// ---- Light barriers ----

TEST_F(BoardBelt, CoversALightBarrierWithEachPart) {
    // Parts of 2 mm each 10 mm, the first at 5 mm; 1000 mm/s.
    ASSERT_EQ(belt(0.0, {{Infinite, 1000.0}}), 0);
    ASSERT_EQ(softboard_barrier(board, 6, 5.0, 10.0, 2.0), 0);
    EXPECT_EQ(level(6), 0);
    pass(4999.9);
    EXPECT_EQ(level(6), 0);
    pass(0.2);
    EXPECT_EQ(level(6), 1);
    pass(1999.8);
    EXPECT_EQ(level(6), 1);
    pass(0.2);
    EXPECT_EQ(level(6), 0);
    pass(100000.0 - 7000.1);
    EXPECT_EQ(edges(6, true), 10U);
}

TEST_F(BoardBelt, CoversALightBarrierOnceWithoutAPitch) {
    ASSERT_EQ(softboard_barrier(board, 6, 5.0, 0.0, 2.0), 0);
    ASSERT_EQ(belt(0.0, {{20000.0, 1000.0}, {40000.0, -1000.0}}), 0);
    pass(20000.0);
    EXPECT_EQ(edges(6, true), 1U);
    pass(14000.0);
    EXPECT_EQ(level(6), 1);  // at 6 mm on the way back
    pass(6000.0);
    EXPECT_EQ(level(6), 0);
    EXPECT_EQ(edges(6, true), 2U);
}

TEST_F(BoardBelt, TakesALightBarrierAway) {
    ASSERT_EQ(belt(0.0, {{Infinite, 1000.0}}), 0);
    ASSERT_EQ(softboard_barrier(board, 6, 1.0, 0.0, 20.0), 0);
    pass(2000.0);
    EXPECT_EQ(level(6), 1);
    ASSERT_EQ(softboard_barrier(board, 6, 0.0, 0.0, 0.0), 0);
    EXPECT_EQ(level(6), 0);
}

TEST_F(BoardBelt, KnowsAPartThatIsInALightBarrierAlready) {
    ASSERT_EQ(belt(0.0, {{Infinite, 1000.0}}), 0);
    pass(2000.0);
    ASSERT_EQ(softboard_barrier(board, 11, 1.0, 0.0, 20.0), 0);
    EXPECT_EQ(signal(SOFTBOARD_FRONT_GPI_0 + 3), 1);
}

// ---- What makes no sense ----

TEST_F(BoardBelt, RefusesInputsThatThereAreNot) {
    EXPECT_EQ(belt(10.0, {{Infinite, 1.0}}, 12, B), SOFTBOARD_E_RANGE);
    EXPECT_EQ(message(), "input 12: 0 to 7 are GPI, 8 to 11 are front GPI");
    EXPECT_EQ(belt(10.0, {{Infinite, 1.0}}, A, 99), SOFTBOARD_E_RANGE);
    EXPECT_EQ(belt(10.0, {{Infinite, 1.0}}, A, A), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(board, 12, 0.0, 0.0, 1.0), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_barrier(board, SOFTBOARD_NO_INPUT, 0.0, 0.0, 1.0), SOFTBOARD_E_RANGE);
}

TEST_F(BoardBelt, RefusesNumbersThatMakeNoSenseAndGoesOn) {
    ASSERT_EQ(belt(10.0, {{Infinite, 100.0}}), 0);
    pass(1000.0);
    for (const double speed : {Infinite, -Infinite, static_cast<double>(NAN), 1e7}) {
        EXPECT_EQ(belt(10.0, {{Infinite, speed}}), SOFTBOARD_E_ARGUMENT) << speed;
    }
    EXPECT_EQ(message(), "the belt's speed is a number, at most 1000000 mm/s either way");
    for (const double counts : {Infinite, static_cast<double>(NAN), -1.0, 100001.0}) {
        EXPECT_EQ(belt(counts, {{Infinite, 1.0}}), SOFTBOARD_E_ARGUMENT) << counts;
    }
    EXPECT_EQ(belt(10.0, {{100.0, 1.0}, {100.0, 2.0}}), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(belt(10.0, {{0.0, 1.0}}), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(belt(10.0, {{NAN, 1.0}}), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_belt(board, A, B, 10.0, nullptr, 1), SOFTBOARD_E_ARGUMENT);
    // A quarter of a count is 2.5e-6 mm, 8 ns at 312.5 mm/s.
    EXPECT_EQ(belt(100000.0, {{Infinite, 313.0}}), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(message(), "the belt is too fast for so many counts: a quarter of one lasts at least 8 ns");
    pass(1000.0);
    EXPECT_NEAR(position(), 0.2, 1e-9);
    EXPECT_EQ(belt(100000.0, {{Infinite, 312.5}}), 0);
}

TEST_F(BoardBelt, RefusesPartsThatMakeNoSense) {
    ASSERT_EQ(belt(0.0, {{Infinite, 1000.0}}), 0);
    for (const double number : {Infinite, static_cast<double>(NAN), 1e10}) {
        EXPECT_EQ(softboard_barrier(board, 6, number, 0.0, 1.0), SOFTBOARD_E_ARGUMENT) << number;
        EXPECT_EQ(softboard_barrier(board, 6, 0.0, number, 1.0), SOFTBOARD_E_ARGUMENT) << number;
        EXPECT_EQ(softboard_barrier(board, 6, 0.0, 0.0, number), SOFTBOARD_E_ARGUMENT) << number;
    }
    EXPECT_EQ(softboard_barrier(board, 6, 0.0, 1.0, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(board, 6, 0.0, -1.0, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(board, 6, 0.0, 1.0, -1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(board, 6, 0.0, 0.0, 1e-6), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(message(), "a part is too short for the belt: at its fastest it lasts at least 8 ns");
    ASSERT_EQ(softboard_barrier(board, 6, 0.0, 0.0, 1e-3), 0);
    EXPECT_EQ(belt(0.0, {{Infinite, 999999.0}}), SOFTBOARD_E_ARGUMENT);
}

TEST_F(BoardBelt, NeedsABoard) {
    const softboard_move move{Infinite, 1.0};
    double mm = 0.0;
    EXPECT_EQ(softboard_belt(nullptr, A, B, 1.0, &move, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_barrier(nullptr, 0, 0.0, 0.0, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_belt_position(nullptr, &mm), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_belt_position(board, nullptr), SOFTBOARD_E_ARGUMENT);
    char text[8];
    EXPECT_EQ(softboard_last_message(nullptr, text, sizeof text), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_last_message(board, nullptr, 0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_last_message(board, text, sizeof text), SOFTBOARD_E_RANGE);
    EXPECT_EQ(message(), "no place for the position");
}

}  // namespace
