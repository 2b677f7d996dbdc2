#include <array>
#include <limits>

#include "tests/trigger/TriggerTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string Unit = "Device1_Process0_Trigger_Trigger_";
const std::string ImageHeight = "Device1_Process0_ImageHeight_ImageHeight";

class ImageTrigger : public TriggerTest {
protected:
    /// The flags of source, polarity, gate delay, debouncing and async height.
    std::vector<int> inputFlags() const {
        return {accessFlags(FG_IMGTRIGGERINSRC), accessFlags(FG_IMGTRIGGERINPOLARITY),
                accessFlags(FG_IMGTRIGGERGATEDELAY), accessFlags(FG_IMGTRIGGERDEBOUNCING),
                accessFlags(FG_IMGTRIGGER_ASYNC_HEIGHT)};
    }
    /// Makes the region, the async height and their bounds tell themselves apart in what is written.
    void distinguishHeights() {
        ASSERT_EQ(applet.setInt(FG_HEIGHT, 700), 0);
        ASSERT_EQ(applet.setInt(FG_YOFFSET, 30), 0);
        ASSERT_EQ(applet.setInt(FG_IMGTRIGGER_ASYNC_HEIGHT, 5000), 0);
    }
};

// Modes
// ----------------------------------------------------------------------------------------------------------------

TEST_F(ImageTrigger, FreeRunTakesTheRegionsHeightAndClosesTheInput) {
    distinguishHeights();
    expectAccepted(FG_IMGTRIGGERMODE, 2);
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERMODE, 0),
                ElementsAre(Unit + "ImgTriggerMode = 0", Unit + "MaxGatedHeight = 0", Unit + "YOffset = 0",
                            Unit + "YLength = 700", Unit + "YOffset = 30", ImageHeight + " = 700"));
    EXPECT_THAT(inputFlags(), ElementsAre(1, 1, 1, 1, 1));
}

TEST_F(ImageTrigger, AnExternalTriggerTakesTheRegionsHeight) {
    distinguishHeights();
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERMODE, 2),
                ElementsAre(Unit + "ImgTriggerMode = 1", Unit + "MaxGatedHeight = 0", Unit + "YOffset = 0",
                            Unit + "YLength = 700", Unit + "YOffset = 30", ImageHeight + " = 700"));
    EXPECT_THAT(inputFlags(), ElementsAre(7, 7, 7, 7, 1));
}

TEST_F(ImageTrigger, AnExternalTriggerOverSeveralBuffersTakesTheAsyncHeight) {
    distinguishHeights();
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERMODE, 8),
                ElementsAre(Unit + "ImgTriggerMode = 1", Unit + "MaxGatedHeight = 0", Unit + "YOffset = 0",
                            Unit + "YLength = 5000", Unit + "YOffset = 30", ImageHeight + " = 700"));
    EXPECT_THAT(inputFlags(), ElementsAre(7, 7, 7, 7, 7));
}

TEST_F(ImageTrigger, AGateTakesTheRegionsHeight) {
    distinguishHeights();
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERMODE, 5),
                ElementsAre(Unit + "ImgTriggerMode = 2", Unit + "MaxGatedHeight = 0", Unit + "YOffset = 0",
                            Unit + "YLength = 700", Unit + "YOffset = 30", ImageHeight + " = 700"));
    EXPECT_THAT(inputFlags(), ElementsAre(7, 7, 7, 7, 1));
}

TEST_F(ImageTrigger, AGateOverSeveralBuffersTakesTheTallestImage) {
    distinguishHeights();
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERMODE, 6),
                ElementsAre(Unit + "ImgTriggerMode = 2", Unit + "MaxGatedHeight = 1", Unit + "YOffset = 0",
                            Unit + "YLength = 1398101", Unit + "YOffset = 30", ImageHeight + " = 700"));
    EXPECT_THAT(inputFlags(), ElementsAre(7, 7, 7, 7, 1));
}

TEST_F(ImageTrigger, LeavingAModeOverSeveralBuffersBringsTheRegionsHeightBack) {
    distinguishHeights();
    expectAccepted(FG_IMGTRIGGERMODE, 8);
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERMODE, 2),
                ElementsAre(Unit + "ImgTriggerMode = 1", Unit + "MaxGatedHeight = 0", Unit + "YOffset = 0",
                            Unit + "YLength = 700", Unit + "YOffset = 30", ImageHeight + " = 700"));
    EXPECT_EQ(applet.readInt(FG_IMGTRIGGER_ASYNC_HEIGHT), 5000);
    EXPECT_EQ(accessFlags(FG_IMGTRIGGER_ASYNC_HEIGHT), 1);
}

TEST_F(ImageTrigger, AnyOtherModeIsRefused) {
    for (const int mode : {-1, 1, 3, 4, 7, 9}) {
        expectRefused(FG_IMGTRIGGERMODE, mode);
    }
    EXPECT_THAT(inputFlags(), ElementsAre(1, 1, 1, 1, 1));
}

TEST_F(ImageTrigger, AModeThatTheDesignRefusesKeepsItsFlagsOnly) {
    board.planFault(Unit + "ImgTriggerMode", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setInt(FG_IMGTRIGGERMODE, 8), -77);
    EXPECT_EQ(applet.readInt(FG_IMGTRIGGERMODE), 0);
    EXPECT_THAT(inputFlags(), ElementsAre(7, 7, 7, 7, 7));
}

TEST_F(ImageTrigger, AModeThatFailsInTheBlockStaysInTheDesignWithTheOldLength) {
    distinguishHeights();
    board.planFault(Unit + "YLength", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setInt(FG_IMGTRIGGERMODE, 6), -77);
    EXPECT_EQ(applet.readInt(FG_IMGTRIGGERMODE), 0);
    EXPECT_EQ(board.integer(Unit + "ImgTriggerMode"), 2);
    EXPECT_EQ(board.integer(Unit + "MaxGatedHeight"), 1);
    EXPECT_EQ(board.integer(Unit + "YOffset"), 0);
    EXPECT_EQ(board.integer(Unit + "YLength"), 700);
}

// The block with the region of interest
// --------------------------------------------------------------------------------

struct BlockOfMode {
    int mode;
    const char* lengthUnderHeight600;
    const char* lengthUnderOffset40;
};
constexpr std::array<BlockOfMode, 5> Blocks = {
    {{0, "600", "600"}, {2, "600", "600"}, {8, "5000", "5000"}, {5, "600", "600"}, {6, "1398101", "1398101"}}};

TEST_F(ImageTrigger, AHeightSendsTheBlockOfTheModeBehindTheBuffer) {
    for (const BlockOfMode& block : Blocks) {
        distinguishHeights();
        ASSERT_EQ(applet.setInt(FG_IMGTRIGGERMODE, block.mode), 0);
        board.clearTranscript();
        ASSERT_EQ(applet.setInt(FG_HEIGHT, 600), 0);
        const Lines writes = board.writes();
        ASSERT_EQ(writes.size(), 12U);
        EXPECT_THAT(Lines(writes.begin() + 8, writes.end()),
                    ElementsAre(Unit + "YOffset = 0", Unit + "YLength = " + block.lengthUnderHeight600,
                                Unit + "YOffset = 30", ImageHeight + " = 600"))
            << "mode " << block.mode;
    }
}

TEST_F(ImageTrigger, AnOffsetSendsTheBlockOfTheModeBehindTheBuffer) {
    for (const BlockOfMode& block : Blocks) {
        distinguishHeights();
        ASSERT_EQ(applet.setInt(FG_HEIGHT, 600), 0);
        ASSERT_EQ(applet.setInt(FG_IMGTRIGGERMODE, block.mode), 0);
        board.clearTranscript();
        ASSERT_EQ(applet.setInt(FG_YOFFSET, 40), 0);
        const Lines writes = board.writes();
        ASSERT_EQ(writes.size(), 12U);
        EXPECT_THAT(Lines(writes.begin() + 8, writes.end()),
                    ElementsAre(Unit + "YOffset = 0", Unit + "YLength = " + block.lengthUnderOffset40,
                                Unit + "YOffset = 40", ImageHeight + " = 600"))
            << "mode " << block.mode;
    }
}

// Async height
// ---------------------------------------------------------------------------------------------------------

TEST_F(ImageTrigger, TheAsyncHeightWaitsForItsMode) {
    for (const int mode : {0, 2, 5, 6}) {
        ASSERT_EQ(applet.setInt(FG_IMGTRIGGERMODE, mode), 0);
        EXPECT_THAT(accessesOf(FG_IMGTRIGGER_ASYNC_HEIGHT, 5000 + mode), IsEmpty());
    }
}

TEST_F(ImageTrigger, TheAsyncHeightIsSentInItsModeWithoutTheImageHeight) {
    ASSERT_EQ(applet.setInt(FG_YOFFSET, 30), 0);
    ASSERT_EQ(applet.setInt(FG_IMGTRIGGERMODE, 8), 0);
    EXPECT_THAT(accessesOf(FG_IMGTRIGGER_ASYNC_HEIGHT, 1),
                ElementsAre(Unit + "YOffset = 0", Unit + "YLength = 1", Unit + "YOffset = 30"));
    EXPECT_THAT(accessesOf(FG_IMGTRIGGER_ASYNC_HEIGHT, 16777216),
                ElementsAre(Unit + "YOffset = 0", Unit + "YLength = 16777216", Unit + "YOffset = 30"));
}

TEST_F(ImageTrigger, AnAsyncHeightOutsideItsBoundsIsRefusedInEveryMode) {
    for (const int mode : {0, 8}) {
        ASSERT_EQ(applet.setInt(FG_IMGTRIGGERMODE, mode), 0);
        for (const int height : {0, -1, 16777217}) {
            expectRefused(FG_IMGTRIGGER_ASYNC_HEIGHT, height);
        }
        expectAccepted(FG_IMGTRIGGER_ASYNC_HEIGHT, 16777216);
    }
}

TEST_F(ImageTrigger, AnAsyncHeightThatFailsLeavesTheOffsetAt0) {
    ASSERT_EQ(applet.setInt(FG_YOFFSET, 30), 0);
    ASSERT_EQ(applet.setInt(FG_IMGTRIGGERMODE, 8), 0);
    board.planFault(Unit + "YLength", client::Direction::Write, 1, -77);
    EXPECT_EQ(applet.setInt(FG_IMGTRIGGER_ASYNC_HEIGHT, 9), -77);
    EXPECT_EQ(applet.readInt(FG_IMGTRIGGER_ASYNC_HEIGHT), 1024);
    EXPECT_EQ(board.integer(Unit + "YOffset"), 0);
}

// Input
// ----------------------------------------------------------------------------------------------------------------

struct Input {
    int source;
    const char* unitInput;
    const char* select;
};
constexpr std::array<Input, 13> Inputs = {{{0, "2", "0"},
                                           {1, "2", "1"},
                                           {2, "2", "2"},
                                           {3, "2", "3"},
                                           {4, "2", "4"},
                                           {5, "2", "5"},
                                           {6, "2", "6"},
                                           {7, "2", "7"},
                                           {16, "2", "8"},
                                           {17, "2", "9"},
                                           {18, "2", "10"},
                                           {19, "2", "11"},
                                           {-1, "4", "0"}}};

TEST_F(ImageTrigger, SelectsEachOfTheTwelveInputsAndTheSoftwareTrigger) {
    for (const Input& input : Inputs) {
        EXPECT_THAT(accessesOf(FG_IMGTRIGGERINSRC, input.source),
                    ElementsAre(std::string("Device1_Process0_Trigger_Trigger_ImgTrgInSource = ") + input.unitInput,
                                std::string("Device1_Process0_Trigger_InputSignal_ImgTrgInSource_Input_Select = ") +
                                    input.select));
    }
}

TEST_F(ImageTrigger, RefusesAnInputThatItDoesNotHave) {
    for (const int source : {-2, 8, 9, 14, 15, 20}) {
        expectRefused(FG_IMGTRIGGERINSRC, source);
    }
}

TEST_F(ImageTrigger, SendsTheInputPolarityAsItIs) {
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERINPOLARITY, 1), ElementsAre(Unit + "ImgTrgInPolarity = 1"));
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERINPOLARITY, 0), ElementsAre(Unit + "ImgTrgInPolarity = 0"));
    expectRefused(FG_IMGTRIGGERINPOLARITY, 2);
    expectRefused(FG_IMGTRIGGERINPOLARITY, -1);
}

TEST_F(ImageTrigger, DelaysTheGateUpTo65535Lines) {
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERGATEDELAY, 65535), ElementsAre(Unit + "ImgTrgDelay = 65535"));
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERGATEDELAY, 0), ElementsAre(Unit + "ImgTrgDelay = 0"));
    expectRefused(FG_IMGTRIGGERGATEDELAY, 65536);
    expectRefused(FG_IMGTRIGGERGATEDELAY, -1);
}

TEST_F(ImageTrigger, DebouncesWithoutAPrescaler) {
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERDEBOUNCING, 0.008), ElementsAre(Unit + "ImgTrgDebouncingTime = 0.008"));
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERDEBOUNCING, 30.0), ElementsAre(Unit + "ImgTrgDebouncingTime = 30"));
    for (const double time : {0.0079, 0.0, -1.0, 30.001, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
        expectRefused(FG_IMGTRIGGERDEBOUNCING, time);
    }
}

// Switches, flash and software trigger
// ---------------------------------------------------------------------------------

TEST_F(ImageTrigger, IsOnOrOff) {
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERON, 0), ElementsAre(Unit + "ImgTriggerEnable = 0"));
    EXPECT_THAT(accessesOf(FG_IMGTRIGGERON, 1), ElementsAre(Unit + "ImgTriggerEnable = 1"));
    expectRefused(FG_IMGTRIGGERON, 2);
    expectRefused(FG_IMGTRIGGERON, -1);
}

TEST_F(ImageTrigger, SwitchesTheFlash) {
    EXPECT_THAT(accessesOf(FG_FLASHON, 0), ElementsAre(Unit + "FlashEnable = 0"));
    EXPECT_THAT(accessesOf(FG_FLASHON, 1), ElementsAre(Unit + "FlashEnable = 1"));
    expectRefused(FG_FLASHON, 2);
    expectRefused(FG_FLASHON, -1);
}

TEST_F(ImageTrigger, SendsTheInverseOfTheFlashPolarity) {
    EXPECT_THAT(accessesOf(FG_FLASH_POLARITY, 0), ElementsAre(Unit + "FlashPolarity = 1"));
    EXPECT_THAT(accessesOf(FG_FLASH_POLARITY, 1), ElementsAre(Unit + "FlashPolarity = 0"));
    expectRefused(FG_FLASH_POLARITY, 2);
    expectRefused(FG_FLASH_POLARITY, -1);
}

TEST_F(ImageTrigger, DelaysTheFlashUpTo65535Lines) {
    EXPECT_THAT(accessesOf(FG_STROBEPULSEDELAY, 65535), ElementsAre(Unit + "FlashDelay = 65535"));
    EXPECT_THAT(accessesOf(FG_STROBEPULSEDELAY, 0), ElementsAre(Unit + "FlashDelay = 0"));
    expectRefused(FG_STROBEPULSEDELAY, 65536);
    expectRefused(FG_STROBEPULSEDELAY, -1);
}

TEST_F(ImageTrigger, SendsAPulseWithEverySoftwareTriggerWhateverTheSource) {
    EXPECT_THAT(accessesOf(FG_SENDSOFTWARETRIGGER, 1), ElementsAre(Unit + "SoftwareTrgPulse = 1"));
    EXPECT_THAT(accessesOf(FG_SENDSOFTWARETRIGGER, 1), ElementsAre(Unit + "SoftwareTrgPulse = 1"));
    ASSERT_EQ(applet.setInt(FG_IMGTRIGGERINSRC, -1), 0);
    EXPECT_THAT(accessesOf(FG_SENDSOFTWARETRIGGER, 1), ElementsAre(Unit + "SoftwareTrgPulse = 1"));
    for (const int value : {0, 2, -1}) {
        expectRefused(FG_SENDSOFTWARETRIGGER, value);
    }
}

TEST_F(ImageTrigger, SendsTheSoftwareGatesLevelAsItIs) {
    EXPECT_THAT(accessesOf(FG_SETSOFTWARETRIGGER, 1), ElementsAre(Unit + "SoftwareTrgInput = 1"));
    EXPECT_THAT(accessesOf(FG_SETSOFTWARETRIGGER, 0), ElementsAre(Unit + "SoftwareTrgInput = 0"));
    expectRefused(FG_SETSOFTWARETRIGGER, 2);
    expectRefused(FG_SETSOFTWARETRIGGER, -1);
}

TEST_F(ImageTrigger, ReadsTheBusyFlagFromTheDesign) {
    for (const unsigned busy : {1U, 0U}) {
        board.setInteger(Unit + "ImgTrgIsBusy", busy);
        board.clearTranscript();
        EXPECT_EQ(applet.readUnsigned(FG_IMGTRIGGER_IS_BUSY), busy);
        EXPECT_THAT(board.accesses(), ElementsAre(Unit + "ImgTrgIsBusy ? " + (busy == 1 ? "1" : "0")));
    }
    board.planFault(Unit + "ImgTrgIsBusy", client::Direction::Read, 1, -77);
    std::uint32_t busy = 0;
    EXPECT_EQ(applet.getUnsigned(FG_IMGTRIGGER_IS_BUSY, busy), -77);
}

}  // namespace
}  // namespace quillon
