#include <cstdint>

#include "tests/softboard/SignalBoard.h"

namespace {

// Values of the design's ImgTriggerMode and ImgTrgInSource.
constexpr std::uint32_t FreeRun = 0;
constexpr std::uint32_t Triggered = 1;
constexpr std::uint32_t Gated = 2;
constexpr std::uint32_t BySoftware = 4;

/// A line every 200 µs, and images of three lines.
class BoardImageTrigger : public SignalBoard {
protected:
    void SetUp() override {
        SignalBoard::SetUp();
        unit("YLength", 3);
        unit("ImgTriggerEnable", 1);
        unit("ExsyncEnable", 1);
    }
    /// Begins images in `mode` with GPI 3.
    void triggerByInput3(std::uint32_t mode) {
        unit("ImgTrgInSource", 2);
        set("Device1_Process0_Trigger_InputSignal_ImgTrgInSource_Input_Select", std::uint32_t{3}, 2);
        unit("ImgTriggerMode", mode);
    }
    std::uint32_t busy() {
        std::uint32_t value = 9;
        get("Device1_Process0_Trigger_Trigger_ImgTrgIsBusy", value, 2);
        return value;
    }
    void lines(int count) { pass(200.0 * count); }
};

TEST_F(BoardImageTrigger, InFreeRunLetsFramesFollowOneAnother) {
    lines(1);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 0);
    pass(20.0);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 1);
    EXPECT_EQ(cameraEvents("FrameStart"), 1U);
    lines(1);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 1);
    pass(200.0 + 1.0);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 0);
    EXPECT_EQ(cameraEvents("FrameEnd"), 1U);
    lines(6);
    EXPECT_EQ(cameraEvents("FrameStart"), 3U);
    EXPECT_EQ(cameraEvents("FrameEnd"), 3U);
    EXPECT_EQ(cameraEvents("LineEnd"), 9U);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, LeavesOutTheLinesOfTheOffset) {
    unit("YOffset", 2);
    pass(2.5 * 200.0);
    EXPECT_EQ(cameraEvents("LineStart"), 2U);
    EXPECT_EQ(cameraEvents("FrameStart"), 0U);
    lines(1);
    EXPECT_EQ(cameraEvents("FrameStart"), 1U);
    lines(2);
    EXPECT_EQ(cameraEvents("FrameEnd"), 1U);
}

TEST_F(BoardImageTrigger, IsBusyFromTheTriggerToTheEndOfTheImage) {
    triggerByInput3(Triggered);
    pass(1100.0);
    EXPECT_EQ(busy(), 0U);
    EXPECT_EQ(cameraEvents("FrameStart"), 0U);
    input(3, 1);
    EXPECT_EQ(busy(), 1U);
    lines(2);
    EXPECT_EQ(busy(), 1U);
    EXPECT_EQ(cameraEvents("FrameStart"), 1U);
    lines(1);
    EXPECT_EQ(busy(), 0U);
    EXPECT_EQ(cameraEvents("FrameEnd"), 1U);
    lines(10);
    EXPECT_EQ(cameraEvents("FrameStart"), 1U);
}

TEST_F(BoardImageTrigger, IsIgnoredWhileBusy) {
    triggerByInput3(Triggered);
    pulse(3);
    pulse(3);
    lines(20);
    EXPECT_EQ(cameraEvents("FrameStart"), 1U);
    pulse(3);
    lines(20);
    EXPECT_EQ(cameraEvents("FrameStart"), 2U);
}

TEST_F(BoardImageTrigger, IsDelayedByLines) {
    triggerByInput3(Triggered);
    unit("ImgTrgDelay", 4);
    pulse(3);
    lines(4);
    EXPECT_EQ(cameraEvents("LineStart"), 4U);
    EXPECT_EQ(cameraEvents("FrameStart"), 0U);
    lines(1);
    EXPECT_EQ(cameraEvents("FrameStart"), 1U);
}

TEST_F(BoardImageTrigger, OfALowActiveInputComesWithTheFallingEdge) {
    unit("ImgTrgInPolarity", 1);
    triggerByInput3(Triggered);
    input(3, 1);
    EXPECT_EQ(busy(), 0U);
    input(3, 0);
    EXPECT_EQ(busy(), 1U);
}

TEST_F(BoardImageTrigger, IsIgnoredWhileItIsDisabled) {
    unit("ImgTriggerEnable", 0);
    triggerByInput3(Triggered);
    pulse(3);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, BySoftwareBeginsAnImageWithEveryPulse) {
    unit("ImgTrgInSource", BySoftware);
    unit("ImgTriggerMode", Triggered);
    unit("SoftwareTrgPulse", 1);
    EXPECT_EQ(busy(), 1U);
    lines(4);
    EXPECT_EQ(busy(), 0U);
    unit("SoftwareTrgPulse", 1);
    EXPECT_EQ(busy(), 1U);
}

TEST_F(BoardImageTrigger, BySoftwareIsNotHeardWhileAnInputIsSelected) {
    triggerByInput3(Triggered);
    unit("SoftwareTrgPulse", 1);
    unit("SoftwareTrgInput", 1);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, OfSeveralFramesCutsTheImageAtTheImageHeight) {
    unit("YLength", 5);
    set("Device1_Process0_ImageHeight_ImageHeight", std::uint32_t{2}, 2);
    triggerByInput3(Triggered);
    pulse(3);
    lines(4);
    EXPECT_EQ(cameraEvents("FrameEnd"), 2U);
    EXPECT_EQ(busy(), 1U);
    lines(1);
    EXPECT_EQ(cameraEvents("FrameEnd"), 3U);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, AsAGateEndsTheImageWhenItCloses) {
    triggerByInput3(Gated);
    input(3, 1);
    pass(450.0);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 1);
    EXPECT_EQ(busy(), 1U);
    input(3, 0);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 0);
    EXPECT_EQ(cameraEvents("FrameEnd"), 1U);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, AsAGateLetsALineEndThatIsBeingTransferred) {
    triggerByInput3(Gated);
    input(3, 1);
    pass(219.5);
    input(3, 0);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 1);
    pass(1.0);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 0);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, AsAGateEndsTheImageAtItsLength) {
    triggerByInput3(Gated);
    input(3, 1);
    lines(10);
    EXPECT_EQ(cameraEvents("FrameEnd"), 1U);
    EXPECT_EQ(busy(), 0U);
    input(3, 0);
    input(3, 1);
    EXPECT_EQ(busy(), 1U);
}

TEST_F(BoardImageTrigger, AsAGateThatStandsOpenBeginsAtOnce) {
    input(3, 1);
    triggerByInput3(Gated);
    EXPECT_EQ(busy(), 1U);
}

TEST_F(BoardImageTrigger, WaitsForAnEdgeOfAnInputThatIsHighAlready) {
    input(3, 1);
    triggerByInput3(Triggered);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, EndsAnImageWhenTheModeChanges) {
    triggerByInput3(Triggered);
    pulse(3);
    lines(1);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 1);
    unit("ImgTriggerMode", Triggered);
    EXPECT_EQ(busy(), 1U);
    unit("ImgTriggerMode", FreeRun);
    EXPECT_EQ(signal(SOFTBOARD_FVAL), 0);
    EXPECT_EQ(busy(), 0U);
}

TEST_F(BoardImageTrigger, FlashesOnceAnImageForTheExposureOfALine) {
    route("Analyzer_Analyzer0_Select", SOFTBOARD_FLASH, 0);
    unit("FlashEnable", 1);
    unit("FlashDelay", 1);
    lines(1);
    EXPECT_EQ(signal(SOFTBOARD_FLASH), 0);
    lines(1);
    EXPECT_EQ(signal(SOFTBOARD_FLASH), 1);
    pass(19.0);
    EXPECT_EQ(signal(SOFTBOARD_FLASH), 0);
    lines(9);
    EXPECT_EQ(pulses(0), 4);
    EXPECT_EQ(period("Analyzer0_PeriodMin"), 600.0);
    EXPECT_EQ(period("Analyzer0_PeriodMax"), 600.0);
}

TEST_F(BoardImageTrigger, DoesNotFlashWhileTheFlashIsOff) {
    route("Analyzer_Analyzer0_Select", SOFTBOARD_FLASH, 0);
    lines(10);
    EXPECT_EQ(pulses(0), 0);
}

TEST_F(BoardImageTrigger, FlashPolarityTurnsTheFlashOver) {
    unit("FlashPolarity", 1);
    EXPECT_EQ(signal(SOFTBOARD_FLASH), 1);
    unit("FlashEnable", 1);
    lines(1);
    EXPECT_EQ(signal(SOFTBOARD_FLASH), 0);
}

}  // namespace
