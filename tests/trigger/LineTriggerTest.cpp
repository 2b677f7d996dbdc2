#include <array>

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;

const std::string Unit = "Device1_Process0_Trigger_Trigger_";

class LineTrigger : public TriggerTest {
protected:
    /// The flags of the six input parameters, in the order in which a mode publishes them.
    std::vector<int> inputFlags() const {
        return {accessFlags(FG_LINETRIGGERINSRC),      accessFlags(FG_LINETRIGGERINPOLARITY),
                accessFlags(FG_LINETRIGGERDEBOUNCING), accessFlags(FG_LINE_DOWNSCALE),
                accessFlags(FG_LINE_DOWNSCALEINIT),    accessFlags(FG_SHAFTENCODERON)};
    }
};

// Modes
// ----------------------------------------------------------------------------------------------------------------

TEST_F(LineTrigger, GrabberControlledIsTheDesignsMode0AndClosesTheInputs) {
    expectAccepted(FG_LINETRIGGERMODE, 2);
    EXPECT_THAT(accessesOf(FG_LINETRIGGERMODE, 1), ElementsAre(Unit + "LineTriggerMode = 0"));
    EXPECT_THAT(inputFlags(), ElementsAre(1, 1, 1, 1, 1, 1));
}

TEST_F(LineTrigger, AsyncExternalTriggerIsTheDesignsMode1AndOpensTheInputs) {
    EXPECT_THAT(accessesOf(FG_LINETRIGGERMODE, 2), ElementsAre(Unit + "LineTriggerMode = 1"));
    EXPECT_THAT(inputFlags(), ElementsAre(7, 7, 7, 7, 7, 7));
}

TEST_F(LineTrigger, GatedGrabberControlledIsTheDesignsMode2AndClosesTheInputs) {
    expectAccepted(FG_LINETRIGGERMODE, 2);
    EXPECT_THAT(accessesOf(FG_LINETRIGGERMODE, 6), ElementsAre(Unit + "LineTriggerMode = 2"));
    EXPECT_THAT(inputFlags(), ElementsAre(1, 1, 1, 1, 1, 1));
}

TEST_F(LineTrigger, GatedExternalTriggeredIsTheDesignsMode3AndOpensTheInputs) {
    EXPECT_THAT(accessesOf(FG_LINETRIGGERMODE, 5), ElementsAre(Unit + "LineTriggerMode = 3"));
    EXPECT_THAT(inputFlags(), ElementsAre(7, 7, 7, 7, 7, 7));
}

TEST_F(LineTrigger, AnyOtherModeIsRefused) {
    for (const int mode : {0, 3, 4, 7, 8, -1, 2147483647}) {
        expectRefused(FG_LINETRIGGERMODE, mode);
    }
    EXPECT_THAT(inputFlags(), ElementsAre(1, 1, 1, 1, 1, 1));
}

TEST_F(LineTrigger, StartsWithTheInputsAndTheShaftEncoderClosed) {
    EXPECT_THAT(inputFlags(), ElementsAre(1, 1, 1, 1, 1, 1));
    EXPECT_EQ(accessFlags(FG_SHAFTENCODERMODE), 1);
    EXPECT_EQ(accessFlags(FG_SHAFTENCODER_COMPENSATION_COUNT), 1);
}

TEST_F(LineTrigger, TakesWritesOfAnInputThatIsShownAsReadOnly) {
    ASSERT_EQ(accessFlags(FG_LINETRIGGERINSRC), 1);
    EXPECT_THAT(accessesOf(FG_LINETRIGGERINSRC, 3),
                ElementsAre(Unit + "LineTrgInSourceA = 0",
                            "Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select = 3"));
}

// Input source
// ---------------------------------------------------------------------------------------------------------

struct Input {
    int source;
    const char* select;
};
constexpr std::array<Input, 12> Inputs = {{{0, "0"},
                                           {1, "1"},
                                           {2, "2"},
                                           {3, "3"},
                                           {4, "4"},
                                           {5, "5"},
                                           {6, "6"},
                                           {7, "7"},
                                           {16, "8"},
                                           {17, "9"},
                                           {18, "10"},
                                           {19, "11"}}};

TEST_F(LineTrigger, SelectsEachOfTheTwelveInputsForSourceA) {
    for (const Input& input : Inputs) {
        EXPECT_THAT(accessesOf(FG_LINETRIGGERINSRC, input.source),
                    ElementsAre("Device1_Process0_Trigger_Trigger_LineTrgInSourceA = 0",
                                std::string("Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select = ") +
                                    input.select));
    }
}

TEST_F(LineTrigger, SelectsEachOfTheTwelveInputsForSourceB) {
    for (const Input& input : Inputs) {
        EXPECT_THAT(accessesOf(FG_SHAFTENCODERINSRC, input.source),
                    ElementsAre("Device1_Process0_Trigger_Trigger_LineTrgInSourceB = 1",
                                std::string("Device1_Process0_Trigger_InputSignal_LineTrgInSourceB_Input_Select = ") +
                                    input.select));
    }
}

TEST_F(LineTrigger, RefusesAnInputInTheGapAndBehindTheTable) {
    for (const int source : {-2, -1, 8, 9, 10, 11, 12, 13, 14, 15, 20}) {
        expectRefused(FG_LINETRIGGERINSRC, source);
        expectRefused(FG_SHAFTENCODERINSRC, source);
    }
}

// Simple parameters
// ----------------------------------------------------------------------------------------------------

TEST_F(LineTrigger, EnablesTheExsync) {
    EXPECT_THAT(accessesOf(FG_EXSYNCON, 0), ElementsAre(Unit + "ExsyncEnable = 0"));
    EXPECT_THAT(accessesOf(FG_EXSYNCON, 1), ElementsAre(Unit + "ExsyncEnable = 1"));
    expectRefused(FG_EXSYNCON, 2);
    expectRefused(FG_EXSYNCON, -1);
}

TEST_F(LineTrigger, SendsTheInputPolarityAsItIs) {
    EXPECT_THAT(accessesOf(FG_LINETRIGGERINPOLARITY, 1), ElementsAre(Unit + "LineTrgInPolarity = 1"));
    EXPECT_THAT(accessesOf(FG_LINETRIGGERINPOLARITY, 0), ElementsAre(Unit + "LineTrgInPolarity = 0"));
    expectRefused(FG_LINETRIGGERINPOLARITY, 2);
    expectRefused(FG_LINETRIGGERINPOLARITY, -1);
}

TEST_F(LineTrigger, SendsTheInverseOfTheExsyncPolarity) {
    EXPECT_THAT(accessesOf(FG_EXSYNCPOLARITY, 0), ElementsAre(Unit + "ExsyncPolarity = 1"));
    EXPECT_THAT(accessesOf(FG_EXSYNCPOLARITY, 1), ElementsAre(Unit + "ExsyncPolarity = 0"));
    expectRefused(FG_EXSYNCPOLARITY, 2);
    expectRefused(FG_EXSYNCPOLARITY, -1);
}

TEST_F(LineTrigger, DividesTheInputPulsesBy1To255) {
    EXPECT_THAT(accessesOf(FG_LINE_DOWNSCALE, 255), ElementsAre(Unit + "LineTrgDownscaler = 255"));
    EXPECT_THAT(accessesOf(FG_LINE_DOWNSCALE, 1), ElementsAre(Unit + "LineTrgDownscaler = 1"));
    for (const int pulses : {0, 256, -1}) {
        expectRefused(FG_LINE_DOWNSCALE, pulses);
    }
}

TEST_F(LineTrigger, TakesAPhaseBeyondTheDownscale) {
    expectAccepted(FG_LINE_DOWNSCALE, 2);
    EXPECT_THAT(accessesOf(FG_LINE_DOWNSCALEINIT, 255), ElementsAre(Unit + "LineTrgPhase = 255"));
    EXPECT_THAT(accessesOf(FG_LINE_DOWNSCALEINIT, 1), ElementsAre(Unit + "LineTrgPhase = 1"));
    for (const int pulses : {0, 256, -1}) {
        expectRefused(FG_LINE_DOWNSCALEINIT, pulses);
    }
}

}  // namespace
}  // namespace quillon
