#include <cstdint>
#include <string>
#include <vector>

#include "tests/softboard/SignalBoard.h"

namespace {

constexpr std::uint32_t A = 4;  // GPI
constexpr std::uint32_t B = 5;

/// Line triggers by an encoder at GPI 4 and 5. ExSync is counted, and short enough for every pulse.
class BoardShaftEncoder : public SignalBoard {
protected:
    void SetUp() override {
        SignalBoard::SetUp();
        route("Analyzer_Analyzer0_Select", SOFTBOARD_EXSYNC, 0);
        unit("LineTriggerMode", 1);
        set("Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select", A, 2);
        set("Device1_Process0_Trigger_InputSignal_LineTrgInSourceB_Input_Select", B, 2);
        unitTime("ExsyncExposure", 1.0);
        unit("ExsyncEnable", 1);
        filter(1);
        compensation(0);
    }
    void filter(std::uint32_t mode) { unit("EncoderABMode", mode); }
    void compensation(std::uint32_t on) { unit("EncoderCompensation", on); }
    std::int64_t count() {
        std::int64_t value = -1;
        softboard_get_integer(board, "Device1_Process0_Trigger_Trigger_EncoderCompensationCount", &value);
        return value;
    }
    /// Moves by so many quarters of a period, forward or back, and says how many lines were triggered.
    std::int64_t move(int quarters) {
        const std::int64_t before = pulses(0);
        for (int i = 0; i != quarters; i += quarters > 0 ? 1 : -1) {
            quarter_ = (quarter_ + (quarters > 0 ? 1 : 3)) % 4;
            input(A, quarter_ == 1 || quarter_ == 2 ? 1 : 0);
            input(B, quarter_ == 2 || quarter_ == 3 ? 1 : 0);
            pass(10.0);
        }
        return pulses(0) - before;
    }

private:
    int quarter_ = 0;
};

TEST_F(BoardShaftEncoder, TakesOneTwoOrFourPulsesFromAPeriod) {
    EXPECT_EQ(move(40), 10);
    filter(2);
    EXPECT_EQ(move(40), 20);
    filter(3);
    EXPECT_EQ(move(40), 40);
    filter(0);
    EXPECT_EQ(move(40), 10) << "without the filter each rising edge of A is one";
}

TEST_F(BoardShaftEncoder, TakesTheOneWhereTheLeadingTrackRises) {
    EXPECT_EQ(move(1), 1);
    EXPECT_EQ(move(3), 0);
    filter(2);
    EXPECT_EQ(move(1), 1);
    EXPECT_EQ(move(1), 0);
    EXPECT_EQ(move(1), 1);
    EXPECT_EQ(move(1), 0);
}

TEST_F(BoardShaftEncoder, GivesNothingBackwards) {
    for (const std::uint32_t mode : {1U, 2U, 3U}) {
        filter(mode);
        EXPECT_EQ(move(-40), 0) << mode;
        EXPECT_EQ(count(), 0) << mode;
    }
    filter(0);
    EXPECT_EQ(move(-40), 10) << "one track alone tells no direction";
}

TEST_F(BoardShaftEncoder, RunsForwardWhereTheOtherTrackLeads) {
    unit("EncoderABLead", 1);
    EXPECT_EQ(move(40), 0);
    EXPECT_EQ(move(-40), 10);
    filter(3);
    EXPECT_EQ(move(-40), 40);
}

TEST_F(BoardShaftEncoder, SeesAPlaceTwiceWithoutCompensation) {
    EXPECT_EQ(move(40), 10);
    EXPECT_EQ(move(-20), 0);
    EXPECT_EQ(move(20), 5);
}

TEST_F(BoardShaftEncoder, SeesAPlaceOnceWithCompensation) {
    compensation(1);
    EXPECT_EQ(move(40), 10);
    EXPECT_EQ(move(-20), 0);
    EXPECT_EQ(count(), 5);
    EXPECT_EQ(move(12), 0);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(move(8), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(move(4), 1);
}

TEST_F(BoardShaftEncoder, CountsBackByItsResolution) {
    compensation(1);
    filter(3);
    EXPECT_EQ(move(-12), 0);
    EXPECT_EQ(count(), 12);
    filter(2);
    EXPECT_EQ(move(-12), 0);
    EXPECT_EQ(count(), 18);
}

TEST_F(BoardShaftEncoder, TakesACountThatIsWritten) {
    compensation(1);
    unit("EncoderCompensationCount", 3);
    EXPECT_EQ(move(20), 2);
    EXPECT_EQ(count(), 0);
}

TEST_F(BoardShaftEncoder, CountsBackToTheEndOfTheCounterOnly) {
    compensation(1);
    unit("EncoderCompensationCount", 1048574);
    move(-20);
    EXPECT_EQ(count(), 1048575);
}

TEST_F(BoardShaftEncoder, TremblesAtOnePlaceWithoutAPulse) {
    compensation(1);
    filter(3);
    move(7);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(move(-1) + move(1), 0);
        EXPECT_EQ(count(), 0);
    }
}

TEST_F(BoardShaftEncoder, DividesItsPulses) {
    unit("LineTrgDownscaler", 4);
    unit("LineTrgPhase", 2);
    filter(3);
    EXPECT_EQ(move(1), 0);
    EXPECT_EQ(move(1), 1);
    EXPECT_EQ(move(3), 0);
    EXPECT_EQ(move(1), 1);
}

TEST_F(BoardShaftEncoder, RunsTheSameWayWithBothTracksInverted) {
    unit("LineTrgInPolarity", 1);
    EXPECT_EQ(move(40), 10);
    EXPECT_EQ(move(-40), 0);
}

TEST_F(BoardShaftEncoder, IsNotMovedByARoutingOfItsTracks) {
    input(7, 1);
    filter(3);
    set("Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select", std::uint32_t{7}, 2);
    EXPECT_EQ(pulses(0), 0);
    input(7, 0);  // from high and low to low and low: back
    pass(10.0);
    EXPECT_EQ(pulses(0), 0);
    input(7, 1);
    pass(10.0);
    EXPECT_EQ(pulses(0), 1);
}

}  // namespace
