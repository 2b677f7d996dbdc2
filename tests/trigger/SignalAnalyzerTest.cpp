// The signal analyzer's read-outs, its clearing, and the trigger message to the camera.

#include <array>

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;

const std::string Analyzer = "Device1_Process1_Trigger_Analyzer_";
const std::string Difference = Analyzer + "Difference_Status";

class SignalAnalyzer : public TriggerTest {};

struct ReadOut {
    int id;
    std::string name;
};

TEST_F(SignalAnalyzer, ReadsPeriodsFromTheDesign) {
    const std::array<ReadOut, 6> periods = {{{200422, Analyzer + "Analyzer0_PeriodCurrent"},
                                             {200423, Analyzer + "Analyzer0_PeriodMax"},
                                             {200424, Analyzer + "Analyzer0_PeriodMin"},
                                             {200432, Analyzer + "Analyzer1_PeriodCurrent"},
                                             {200433, Analyzer + "Analyzer1_PeriodMax"},
                                             {200434, Analyzer + "Analyzer1_PeriodMin"}}};
    for (const ReadOut& period : periods) {
        board.setDouble(period.name, 199.992);
        board.clearTranscript();
        EXPECT_EQ(applet.readDouble(period.id), 199.992);
        EXPECT_THAT(board.accesses(), ElementsAre(period.name + " ? 199.992"));
        EXPECT_EQ(board.transcript().at(0).type, 5);
        board.planFault(period.name, client::Direction::Read, 1, -77);
        double value = 0.0;
        EXPECT_EQ(applet.getDouble(period.id, value), -77);
    }
}

TEST_F(SignalAnalyzer, ReadsPulseCountsFromTheDesign) {
    const std::array<ReadOut, 2> counts = {{{200425, Analyzer + "Analyzer0_PulseCountSignal_Status"},
                                            {200435, Analyzer + "Analyzer1_PulseCountSignal_Status"}}};
    for (const ReadOut& count : counts) {
        board.setInteger(count.name, 4294967295);
        board.clearTranscript();
        EXPECT_EQ(applet.readUnsigned(count.id), 4294967295U);
        EXPECT_THAT(board.accesses(), ElementsAre(count.name + " ? 4294967295"));
        EXPECT_EQ(board.transcript().at(0).type, 2);
        board.planFault(count.name, client::Direction::Read, 1, -77);
        std::uint32_t value = 0;
        EXPECT_EQ(applet.getUnsigned(count.id, value), -77);
    }
}

TEST_F(SignalAnalyzer, WidensThe33BitsOfThePulseCountDifferenceWithTheirSign) {
    struct Widening {
        std::int64_t status;
        std::int64_t difference;
    };
    constexpr std::array<Widening, 7> widenings = {{{0, 0},
                                                    {1, 1},
                                                    {4294967295, 4294967295},
                                                    {4294967296, -4294967296},
                                                    {4294967297, -4294967295},
                                                    {8589934590, -2},
                                                    {8589934591, -1}}};
    for (const Widening& widening : widenings) {
        board.setInteger(Difference, widening.status);
        EXPECT_EQ(applet.readInt64(FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE), widening.difference);
    }
}

TEST_F(SignalAnalyzer, AsksForTheDifferenceAsType3) {
    board.setInteger(Difference, 5);
    board.clearTranscript();
    EXPECT_EQ(applet.readInt64(FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE), 5);
    EXPECT_THAT(board.accesses(), ElementsAre(Difference + " ? 5"));
    EXPECT_EQ(board.transcript().at(0).type, 3);
    board.planFault(Difference, client::Direction::Read, 1, -77);
    std::int64_t value = 0;
    EXPECT_EQ(applet.getInt64(FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE, value), -77);
}

TEST_F(SignalAnalyzer, IsClearedByA1AndA0) {
    EXPECT_THAT(accessesOf(FG_SIGNAL_ANALYZER_CLEAR, 1),
                ElementsAre(Analyzer + "Clear_Value = 1", Analyzer + "Clear_Value = 0"));
    for (const int value : {0, 2, -1}) {
        expectRefused(FG_SIGNAL_ANALYZER_CLEAR, value);
    }
}

TEST_F(SignalAnalyzer, IsLeftClearAfterStartUp) {
    EXPECT_EQ(applet.readInt(FG_SIGNAL_ANALYZER_CLEAR), 1);
    EXPECT_EQ(board.integer(Analyzer + "Clear_Value"), 0);
}

TEST_F(SignalAnalyzer, TheCamerasTriggerMessageIsAPulseOrItsWidth) {
    const std::string message = "Device1_Process1_Trigger_OutputMapping_CamTrigger0_CLHSTrigger_EnablePulseWidth_Value";
    EXPECT_EQ(applet.readInt(FG_CLHS_TRIGGER_PULSE_MESSAGE), 1);
    EXPECT_THAT(accessesOf(FG_CLHS_TRIGGER_PULSE_MESSAGE, 23), ElementsAre(message + " = 1"));
    EXPECT_THAT(accessesOf(FG_CLHS_TRIGGER_PULSE_MESSAGE, 1), ElementsAre(message + " = 0"));
    for (const int value : {0, 2, 22, 24, -1}) {
        expectRefused(FG_CLHS_TRIGGER_PULSE_MESSAGE, value);
    }
}

}  // namespace
}  // namespace quillon
