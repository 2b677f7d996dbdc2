#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Unit = "Device1_Process0_Trigger_Trigger_";

class ShaftEncoder : public TriggerTest {
protected:
    /// The flags of mode, input source, leading signal, compensation switch and compensation count.
    std::vector<int> encoderFlags() const {
        return {accessFlags(FG_SHAFTENCODERMODE), accessFlags(FG_SHAFTENCODERINSRC),
                accessFlags(FG_SHAFTENCODERLEADING), accessFlags(FG_SHAFTENCODER_COMPENSATION_ENABLE),
                accessFlags(FG_SHAFTENCODER_COMPENSATION_COUNT)};
    }
};

TEST_F(ShaftEncoder, KeepsAFilterChosenWhileItIsOffForTheMomentItIsTurnedOn) {
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERMODE, 3), IsEmpty());
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERON, 1), ElementsAre(Unit + "EncoderABMode = 3"));
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERON, 0), ElementsAre(Unit + "EncoderABMode = 0"));
    EXPECT_EQ(applet.readInt(FG_SHAFTENCODERMODE), 3);
}

TEST_F(ShaftEncoder, SendsTheFilterWhileItIsOn) {
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERON, 1), ElementsAre(Unit + "EncoderABMode = 1"));
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERMODE, 2), ElementsAre(Unit + "EncoderABMode = 2"));
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERMODE, 3), ElementsAre(Unit + "EncoderABMode = 3"));
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERMODE, 1), ElementsAre(Unit + "EncoderABMode = 1"));
}

TEST_F(ShaftEncoder, RefusesWhatIsNoFilterWhetherItIsOnOrOff) {
    for (const int on : {0, 1}) {
        expectAccepted(FG_SHAFTENCODERON, on);
        for (const int filter : {0, 4, -1}) {
            expectRefused(FG_SHAFTENCODERMODE, filter);
        }
    }
}

TEST_F(ShaftEncoder, IsOnOrOff) {
    expectRefused(FG_SHAFTENCODERON, 2);
    expectRefused(FG_SHAFTENCODERON, -1);
}

TEST_F(ShaftEncoder, LeadsWithOneOfItsTwoSources) {
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERLEADING, 1), ElementsAre(Unit + "EncoderABLead = 1"));
    EXPECT_THAT(accessesOf(FG_SHAFTENCODERLEADING, 0), ElementsAre(Unit + "EncoderABLead = 0"));
    expectRefused(FG_SHAFTENCODERLEADING, 2);
    expectRefused(FG_SHAFTENCODERLEADING, -1);
}

TEST_F(ShaftEncoder, SwitchesItsCompensation) {
    EXPECT_THAT(accessesOf(FG_SHAFTENCODER_COMPENSATION_ENABLE, 0), ElementsAre(Unit + "EncoderCompensation = 0"));
    EXPECT_THAT(accessesOf(FG_SHAFTENCODER_COMPENSATION_ENABLE, 1), ElementsAre(Unit + "EncoderCompensation = 1"));
    expectRefused(FG_SHAFTENCODER_COMPENSATION_ENABLE, 2);
    expectRefused(FG_SHAFTENCODER_COMPENSATION_ENABLE, -1);
}

TEST_F(ShaftEncoder, CompensatesUpTo1048575Pulses) {
    EXPECT_THAT(accessesOf(FG_SHAFTENCODER_COMPENSATION_COUNT, 1048575),
                ElementsAre(Unit + "EncoderCompensationCount = 1048575"));
    EXPECT_THAT(accessesOf(FG_SHAFTENCODER_COMPENSATION_COUNT, 0), ElementsAre(Unit + "EncoderCompensationCount = 0"));
    expectRefused(FG_SHAFTENCODER_COMPENSATION_COUNT, 1048576);
    expectRefused(FG_SHAFTENCODER_COMPENSATION_COUNT, -1);
}

TEST_F(ShaftEncoder, ReadsTheCompensationCountFromTheDesign) {
    expectAccepted(FG_SHAFTENCODER_COMPENSATION_COUNT, 500);
    board.setInteger(Unit + "EncoderCompensationCount", 123);
    board.clearTranscript();
    EXPECT_EQ(applet.readUnsigned(FG_SHAFTENCODER_COMPENSATION_COUNT), 123U);
    EXPECT_THAT(board.accesses(), ElementsAre(Unit + "EncoderCompensationCount ? 123"));
}

TEST_F(ShaftEncoder, AnswersTheDesignsCodeForACompensationCountThatCannotBeRead) {
    board.planFault(Unit + "EncoderCompensationCount", client::Direction::Read, 1, -77);
    std::uint32_t count = 42;
    EXPECT_EQ(applet.getUnsigned(FG_SHAFTENCODER_COMPENSATION_COUNT, count), -77);
}

// Access flags
// ---------------------------------------------------------------------------------------------------------

TEST_F(ShaftEncoder, IsClosedWhileItIsOffInEveryMode) {
    for (const int mode : {2, 5, 6, 1}) {
        expectAccepted(FG_LINETRIGGERMODE, mode);
        EXPECT_THAT(encoderFlags(), ElementsAre(1, 1, 1, 1, 1)) << "mode " << mode;
    }
}

TEST_F(ShaftEncoder, OpensWhenItIsTurnedOnInAnExternalMode) {
    expectAccepted(FG_LINETRIGGERMODE, 2);
    expectAccepted(FG_SHAFTENCODERON, 1);
    EXPECT_THAT(encoderFlags(), ElementsAre(7, 7, 7, 7, 7));
    expectAccepted(FG_SHAFTENCODERON, 0);
    EXPECT_THAT(encoderFlags(), ElementsAre(1, 1, 1, 1, 1));
    EXPECT_EQ(accessFlags(FG_SHAFTENCODERON), 7);
}

TEST_F(ShaftEncoder, StaysClosedWhenItIsTurnedOnInAGrabberControlledMode) {
    expectAccepted(FG_SHAFTENCODERON, 1);
    EXPECT_THAT(encoderFlags(), ElementsAre(1, 1, 1, 1, 1));
}

TEST_F(ShaftEncoder, OpensWithAnExternalModeWhileItIsOnButForTheCompensationCount) {
    expectAccepted(FG_SHAFTENCODERON, 1);
    expectAccepted(FG_LINETRIGGERMODE, 5);
    EXPECT_THAT(encoderFlags(), ElementsAre(7, 7, 7, 7, 1));
}

TEST_F(ShaftEncoder, ClosesWithAGrabberControlledModeWhileItIsOnButForTheCompensationCount) {
    expectAccepted(FG_LINETRIGGERMODE, 2);
    expectAccepted(FG_SHAFTENCODERON, 1);
    expectAccepted(FG_LINETRIGGERMODE, 6);
    EXPECT_THAT(encoderFlags(), ElementsAre(1, 1, 1, 1, 7));
}

TEST_F(ShaftEncoder, KeepsItsFlagsWhenTheDesignRefusesToTurnIt) {
    expectAccepted(FG_LINETRIGGERMODE, 2);
    board.planFault(Unit + "EncoderABMode", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setInt(FG_SHAFTENCODERON, 1), -77);
    EXPECT_EQ(applet.readInt(FG_SHAFTENCODERON), 0);
    EXPECT_THAT(encoderFlags(), ElementsAre(1, 1, 1, 1, 1));
}

}  // namespace
}  // namespace quillon
