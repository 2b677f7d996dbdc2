#include <cstdint>
#include <limits>

#include "tests/softboard/SignalBoard.h"

namespace {

using Signal = SignalBoard;

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
    EXPECT_EQ(softboard_get_signal(board, 37, &level), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_get_signal(board, 1, nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(Signal, ClockCountsTicksOfEightNanosecondsAndKeepsTheRest) {
    double time = -1.0;
    EXPECT_EQ(softboard_get_signal_time(board, &time), 0);
    EXPECT_EQ(time, 0.0);
    pass(0.012);
    softboard_get_signal_time(board, &time);
    EXPECT_EQ(time, 0.008);
    pass(0.012);
    softboard_get_signal_time(board, &time);
    EXPECT_EQ(time, 0.024);
}

TEST_F(Signal, ClockMovesForwardByAMinuteAtMost) {
    EXPECT_EQ(softboard_advance_signals(board, -1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_advance_signals(board, 60e6), 0);
    EXPECT_EQ(softboard_advance_signals(board, 60e6 + 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_advance_signals(board, std::numeric_limits<double>::quiet_NaN()), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_get_signal_time(board, nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(Signal, ClockStopsAtTheTickOfAnEvent) {
    const std::string lineStart = "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineStart";
    double first = 0.0;
    double second = 0.0;
    int raised = -1;
    unit("ExsyncEnable", 1);
    EXPECT_EQ(softboard_advance_to_event(board, lineStart.c_str(), 1e6, &raised), 0);
    EXPECT_EQ(raised, 1);
    EXPECT_EQ(events(lineStart), 1U);
    softboard_get_signal_time(board, &first);
    EXPECT_EQ(softboard_advance_to_event(board, lineStart.c_str(), 1e6, &raised), 0);
    EXPECT_EQ(events(lineStart), 2U);
    softboard_get_signal_time(board, &second);
    EXPECT_DOUBLE_EQ(second - first, 200.0);
}

TEST_F(Signal, ClockPassesTheWholeTimeWhereAnEventDoesNotCome) {
    const std::string edge = "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0";
    double time = 0.0;
    int raised = -1;
    EXPECT_EQ(softboard_advance_to_event(board, edge.c_str(), 1000.0, &raised), 0);
    EXPECT_EQ(raised, 0);
    softboard_get_signal_time(board, &time);
    EXPECT_EQ(time, 1000.0);
    input(0, 1);  // what has been is not waited for
    EXPECT_EQ(softboard_advance_to_event(board, edge.c_str(), 0.0, &raised), 0);
    EXPECT_EQ(raised, 0);
}

TEST_F(Signal, ClockStopsAtNoEventThatIsNone) {
    const char* const edge = "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0";
    int raised = -1;
    EXPECT_EQ(softboard_advance_to_event(board, "none", 1.0, &raised), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(softboard_advance_to_event(board, edge, 60e6 + 1.0, &raised), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_advance_to_event(board, edge, 1.0, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_advance_to_event(board, nullptr, 1.0, &raised), SOFTBOARD_E_ARGUMENT);
    IXdevice* const bare = softboard_open();
    EXPECT_EQ(softboard_advance_to_event(bare, edge, 1.0, &raised), SOFTBOARD_E_NO_DESIGN);
    softboard_close(bare);
    EXPECT_EQ(raised, -1);
}

TEST_F(Signal, NeedsADesign) {
    IXdevice* const bare = softboard_open();
    int level = 0;
    std::uint64_t count = 0;
    EXPECT_EQ(softboard_get_signal(bare, 1, &level), SOFTBOARD_E_NO_DESIGN);
    EXPECT_EQ(softboard_set_input(bare, 0, 1), SOFTBOARD_E_NO_DESIGN);
    EXPECT_EQ(softboard_event_count(bare, "Device1_Process0_Overflow_Overflow", &count), SOFTBOARD_E_NO_DESIGN);
    softboard_close(bare);
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
    pass(50.0);
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

TEST_F(Signal, OfAnInputFollowsItsStatusWhenThatIsChangedFromTheHardwaresSide) {
    route("Analyzer_Analyzer0_Select", 22, 0);
    softboard_set_integer(board, "Device1_Process1_Trigger_Inputs_InputStatus_Status", 0x006);
    EXPECT_EQ(pulses(0), 1);
    EXPECT_EQ(signal(22), 1);
    EXPECT_EQ(signal(23), 1);
    softboard_set_integer(board, "Device1_Process1_Trigger_Inputs_InputStatus_Status", 0x000);
    EXPECT_EQ(signal(22), 0);
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

constexpr const char* Pin2 = "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin2";
constexpr const char* NotPin2 = "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin2";
constexpr const char* FrontPin3 = "Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontPin3";
constexpr const char* FrontNotPin3 = "Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin3";
constexpr const char* Custom0 = "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent0";
constexpr const char* Custom1 = "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent1";
constexpr const char* Overflow = "Device1_Process0_Overflow_Overflow";

TEST_F(Signal, EdgesOfAnInputRaiseItsTwoEvents) {
    input(2, 1);
    input(2, 1);
    EXPECT_EQ(events(Pin2), 1U);
    EXPECT_EQ(events(NotPin2), 0U);
    input(2, 0);
    input(11, 1);
    EXPECT_EQ(events(NotPin2), 1U);
    EXPECT_EQ(events(FrontPin3), 1U);
    EXPECT_EQ(events(FrontNotPin3), 0U);
}

TEST_F(Signal, RaisesTheCustomEventThatIsRoutedToIt) {
    route("Events_SelectCustomSignalEvent0", 21, 0);
    route("Events_SelectCustomSignalEvent1", 21, 1);
    input(0, 1);
    EXPECT_EQ(events(Custom0), 1U);
    EXPECT_EQ(events(Custom1), 0U);
    input(0, 0);
    EXPECT_EQ(events(Custom0), 1U);
    EXPECT_EQ(events(Custom1), 1U);
}

TEST_F(Signal, OverflowEventIsRaisedWhenTheOverflowBegins) {
    softboard_set_integer(board, "Device1_Process0_Overflow_OverflowOccurred", 1);
    softboard_set_integer(board, "Device1_Process0_Overflow_OverflowOccurred", 1);
    EXPECT_EQ(events(Overflow), 1U);
    softboard_set_integer(board, "Device1_Process0_Overflow_OverflowOccurred", 0);
    softboard_set_integer(board, "Device1_Process0_Overflow_OverflowOccurred", 1);
    EXPECT_EQ(events(Overflow), 2U);
}

TEST_F(Signal, EventThatTheDesignLacksIsUnknown) {
    std::uint64_t count = 0;
    EXPECT_EQ(softboard_event_count(board, "FG_TRIGGER_INPUT0_RISING", &count), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(softboard_event_count(board, nullptr, &count), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_event_count(board, Overflow, nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(Signal, IsBackAtItsStartWhenTheBoardIsConfiguredAnew) {
    input(2, 1);
    pass(1000.0);
    Fg_FreeGrabber(fg);
    fg = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 1);
    EXPECT_EQ(events(Pin2), 1U);
    Fg_FreeGrabber(fg);
    fg = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 0);
    double time = -1.0;
    softboard_get_signal_time(board, &time);
    EXPECT_EQ(time, 0.0);
    EXPECT_EQ(events(Pin2), 0U);
    EXPECT_EQ(signal(23), 0);
}

}  // namespace
