// FG_DIGIO_OUTPUT and FG_DIGIO_INPUT, the older way to GPO 3 and GPO 7 and to the inputs.

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Gpo3 = "Device1_Process1_Trigger_OutputMapping_SelectGPO_Select3_";
const std::string Gpo7 = "Device1_Process1_Trigger_OutputMapping_SelectGPO_Select7_";

class DigitalOutput : public TriggerTest {
protected:
    std::vector<int> sources() {
        return {applet.readInt(FG_TRIGGEROUT_GPO_3_SOURCE), applet.readInt(FG_TRIGGEROUT_GPO_7_SOURCE)};
    }
};

TEST_F(DigitalOutput, StartsWithBothLevelsHigh) {
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 3);
    EXPECT_THAT(sources(), ElementsAre(5, 5));
}

TEST_F(DigitalOutput, SendsGpo3FromBit0AndGpo7FromBit1) {
    EXPECT_THAT(accessesOf(FG_DIGIO_OUTPUT, 0),
                ElementsAre(Gpo3 + "SelectSignal_Select = 0", Gpo3 + "Polarity_Invert = 0",
                            Gpo7 + "SelectSignal_Select = 0", Gpo7 + "Polarity_Invert = 0"));
    EXPECT_THAT(sources(), ElementsAre(4, 4));
    EXPECT_THAT(accessesOf(FG_DIGIO_OUTPUT, 1),
                ElementsAre(Gpo3 + "SelectSignal_Select = 0", Gpo3 + "Polarity_Invert = 1",
                            Gpo7 + "SelectSignal_Select = 0", Gpo7 + "Polarity_Invert = 0"));
    EXPECT_THAT(sources(), ElementsAre(5, 4));
    EXPECT_THAT(accessesOf(FG_DIGIO_OUTPUT, 2),
                ElementsAre(Gpo3 + "SelectSignal_Select = 0", Gpo3 + "Polarity_Invert = 0",
                            Gpo7 + "SelectSignal_Select = 0", Gpo7 + "Polarity_Invert = 1"));
    EXPECT_THAT(sources(), ElementsAre(4, 5));
    EXPECT_THAT(accessesOf(FG_DIGIO_OUTPUT, 3),
                ElementsAre(Gpo3 + "SelectSignal_Select = 0", Gpo3 + "Polarity_Invert = 1",
                            Gpo7 + "SelectSignal_Select = 0", Gpo7 + "Polarity_Invert = 1"));
    EXPECT_THAT(sources(), ElementsAre(5, 5));
}

TEST_F(DigitalOutput, RefusesWhatIsNeitherALevelNorMinus1) {
    for (const int value : {-2, 4, 2147483647}) {
        expectRefused(FG_DIGIO_OUTPUT, value);
    }
}

TEST_F(DigitalOutput, LeavesThePolaritiesAndIgnoresThem) {
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_3_POLARITY, 0), 0);
    EXPECT_THAT(accessesOf(FG_DIGIO_OUTPUT, 1),
                ElementsAre(Gpo3 + "SelectSignal_Select = 0", Gpo3 + "Polarity_Invert = 1",
                            Gpo7 + "SelectSignal_Select = 0", Gpo7 + "Polarity_Invert = 0"));
    EXPECT_EQ(applet.readInt(FG_TRIGGEROUT_GPO_3_POLARITY), 0);
    EXPECT_EQ(applet.readInt(FG_TRIGGEROUT_GPO_7_POLARITY), 1);
}

TEST_F(DigitalOutput, SendsNothingForMinus1AndStillReadsTheLevels) {
    ASSERT_EQ(applet.setInt(FG_DIGIO_OUTPUT, 2), 0);
    board.clearTranscript();
    EXPECT_EQ(applet.setInt(FG_DIGIO_OUTPUT, -1), 0);
    EXPECT_THAT(board.accesses(), IsEmpty());
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 2);
    EXPECT_THAT(sources(), ElementsAre(4, 5));
}

TEST_F(DigitalOutput, ReadsMinus1WhileEitherOutputIsNoFixedLevel) {
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_3_SOURCE, 1001), 0);
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), -1);
    board.clearTranscript();
    EXPECT_EQ(applet.setInt(FG_DIGIO_OUTPUT, -1), 0);
    EXPECT_THAT(board.accesses(), IsEmpty());
    EXPECT_THAT(sources(), ElementsAre(1001, 5));
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_3_SOURCE, 4), 0);
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 2);
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_7_SOURCE, 2000), 0);
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), -1);
}

TEST_F(DigitalOutput, FollowsTheSourcesOfTheTwoOutputs) {
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_3_SOURCE, 4), 0);
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 2);
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_7_SOURCE, 4), 0);
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 0);
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_3_SOURCE, 5), 0);
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 1);
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_4_SOURCE, 2000), 0);
    EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 1);
}

TEST_F(DigitalOutput, BringsAnOutputBackFromASignal) {
    ASSERT_EQ(applet.setInt(FG_TRIGGEROUT_GPO_3_SOURCE, 1001), 0);
    expectAccepted(FG_DIGIO_OUTPUT, 3);
    EXPECT_THAT(sources(), ElementsAre(5, 5));
}

TEST_F(DigitalOutput, AFailureAtGpo3LeavesBothOutputs) {
    for (const char* const failing : {"SelectSignal_Select", "Polarity_Invert"}) {
        board.planFault(Gpo3 + failing, client::Direction::Write, 1, -77);
        EXPECT_EQ(applet.setInt(FG_DIGIO_OUTPUT, 0), -77);
        EXPECT_THAT(sources(), ElementsAre(5, 5));
        EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 3);
    }
}

TEST_F(DigitalOutput, AFailureAtGpo7LeavesGpo3Changed) {
    for (const char* const failing : {"SelectSignal_Select", "Polarity_Invert"}) {
        ASSERT_EQ(applet.setInt(FG_DIGIO_OUTPUT, 3), 0);
        board.planFault(Gpo7 + failing, client::Direction::Write, 1, -77);
        EXPECT_EQ(applet.setInt(FG_DIGIO_OUTPUT, 0), -77);
        EXPECT_THAT(sources(), ElementsAre(4, 5));
        EXPECT_EQ(applet.readInt(FG_DIGIO_OUTPUT), 2);
        EXPECT_EQ(board.integer(Gpo3 + "Polarity_Invert"), 0);
    }
}

TEST_F(DigitalOutput, TheInputsAreReadFromTheDesign) {
    board.setInteger("Device1_Process1_Trigger_Inputs_InputStatus_Status", 4095);
    board.clearTranscript();
    EXPECT_EQ(applet.readUnsigned(FG_DIGIO_INPUT), 4095U);
    EXPECT_THAT(board.accesses(), ElementsAre("Device1_Process1_Trigger_Inputs_InputStatus_Status ? 4095"));
    board.planFault("Device1_Process1_Trigger_Inputs_InputStatus_Status", client::Direction::Read, 1, -77);
    std::uint32_t inputs = 0;
    EXPECT_EQ(applet.getUnsigned(FG_DIGIO_INPUT, inputs), -77);
}

}  // namespace
}  // namespace quillon
