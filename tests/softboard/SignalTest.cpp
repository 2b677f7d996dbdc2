#include <cstdint>
#include <string>

#include "tests/softboard/OpenBoard.h"

namespace {

class Signal : public OpenBoard {
protected:
    void route(const std::string& stem, std::uint32_t select, std::uint32_t invert) {
        set(("Device1_Process1_Trigger_" + stem + "_SelectSignal_Select").c_str(), select, 2);
        set(("Device1_Process1_Trigger_" + stem + "_Polarity_Invert").c_str(), invert, 2);
    }
    std::int64_t integer(const std::string& name) {
        std::int64_t value = -1;
        softboard_get_integer(board, ("Device1_Process1_Trigger_" + name).c_str(), &value);
        return value;
    }
    double period(const std::string& name) {
        double value = -1.0;
        softboard_get_double(board, ("Device1_Process1_Trigger_Analyzer_" + name).c_str(), &value);
        return value;
    }
    int output(unsigned number) {
        int level = -1;
        softboard_get_output(board, number, &level);
        return level;
    }
    /// A pulse of 10 µs on an input, and 90 µs until the next.
    void pulse(unsigned input) {
        softboard_set_input(board, input, 1);
        softboard_advance_signals(board, 10.0);
        softboard_set_input(board, input, 0);
        softboard_advance_signals(board, 90.0);
    }
};

TEST_F(Signal, OfAnInputShowsInTheInputStatus) {
    EXPECT_EQ(softboard_set_input(board, 0, 1), 0);
    EXPECT_EQ(softboard_set_input(board, 11, 1), 0);
    EXPECT_EQ(integer("Inputs_InputStatus_Status"), 0x801);
    EXPECT_EQ(softboard_set_input(board, 0, 0), 0);
    EXPECT_EQ(integer("Inputs_InputStatus_Status"), 0x800);
}

TEST_F(Signal, IsRefusedOnAnInputOrOutputThatIsNotThere) {
    int level = 0;
    EXPECT_EQ(softboard_set_input(board, 12, 1), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_get_output(board, 11, &level), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_get_output(board, 0, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_advance_signals(board, -1.0), SOFTBOARD_E_ARGUMENT);
}

TEST_F(Signal, OfAFixedLevelIsTheInvertFlag) {
    route("OutputMapping_SelectGPO_Select3", 0, 1);
    EXPECT_EQ(output(4), 1);
    route("OutputMapping_SelectGPO_Select3", 0, 0);
    EXPECT_EQ(output(4), 0);
}

TEST_F(Signal, OfAnInputIsCarriedToAnOutput) {
    route("OutputMapping_SelectFrontGPO_Select1", 23, 0);
    route("OutputMapping_CamTrigger0_SelectTrigger", 23, 1);
    EXPECT_EQ(output(10), 0);
    EXPECT_EQ(output(0), 1);
    softboard_set_input(board, 2, 1);
    EXPECT_EQ(output(10), 1);
    EXPECT_EQ(output(0), 0);
}

TEST_F(Signal, PulsesAreCountedAndMeasuredByTheAnalyzerThatIsSetToThem) {
    route("Analyzer_Analyzer0_Select", 21, 0);
    pulse(0);
    EXPECT_EQ(integer("Analyzer_Analyzer0_PulseCountSignal_Status"), 1);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 0.0);
    pulse(0);
    softboard_advance_signals(board, 50.0);
    pulse(0);
    EXPECT_EQ(integer("Analyzer_Analyzer0_PulseCountSignal_Status"), 3);
    EXPECT_EQ(period("Analyzer0_PeriodCurrent"), 150.0);
    EXPECT_EQ(period("Analyzer0_PeriodMax"), 150.0);
    EXPECT_EQ(period("Analyzer0_PeriodMin"), 100.0);
    EXPECT_EQ(integer("Analyzer_Analyzer1_PulseCountSignal_Status"), 0);
}

TEST_F(Signal, ThatIsInvertedCountsItsFallingEdges) {
    route("Analyzer_Analyzer0_Select", 21, 1);
    softboard_set_input(board, 0, 1);
    EXPECT_EQ(integer("Analyzer_Analyzer0_PulseCountSignal_Status"), 0);
    softboard_set_input(board, 0, 0);
    EXPECT_EQ(integer("Analyzer_Analyzer0_PulseCountSignal_Status"), 1);
}

TEST_F(Signal, DifferenceOfTheAnalyzersHas33Bits) {
    route("Analyzer_Analyzer0_Select", 21, 0);
    route("Analyzer_Analyzer1_Select", 22, 0);
    pulse(0);
    EXPECT_EQ(integer("Analyzer_Difference_Status"), 1);
    pulse(1);
    pulse(1);
    EXPECT_EQ(integer("Analyzer_Difference_Status"), 8589934591);
}

TEST_F(Signal, AnalyzersAreSetBackByAOneInTheClearParameter) {
    route("Analyzer_Analyzer0_Select", 21, 0);
    pulse(0);
    pulse(0);
    set("Device1_Process1_Trigger_Analyzer_Clear_Value", std::uint32_t{0}, 2);
    EXPECT_EQ(integer("Analyzer_Analyzer0_PulseCountSignal_Status"), 2);
    set("Device1_Process1_Trigger_Analyzer_Clear_Value", std::uint32_t{1}, 2);
    EXPECT_EQ(integer("Analyzer_Analyzer0_PulseCountSignal_Status"), 0);
    EXPECT_EQ(integer("Analyzer_Difference_Status"), 0);
    EXPECT_EQ(period("Analyzer0_PeriodMax"), 0.0);
}

}  // namespace
