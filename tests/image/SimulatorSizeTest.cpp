// Width, height and gaps of the simulated picture.

#include "tests/image/Simulator.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct SimulatorSize : ::testing::Test, Simulator {};

// Width --------------------------------------------------------------------------------------------------------------

TEST_F(SimulatorSize, AWidthIsRoundedUpTo32Pixels) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 33), 0);
    EXPECT_THAT(accesses(),
                ElementsAre("Sequence ? 12207", "Size_ImageWidth = 2", "LineGap_Number = 2", "Sequence ? 12207"));
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_WIDTH), 64U);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 1), 0);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_WIDTH), 32U);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 32), 0);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_WIDTH), 32U);
}

TEST_F(SimulatorSize, AWidthMovesFourMaxima) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 64), 0);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_LINE_GAP), 294856U);  // 294920 - 64
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 65536U);
    EXPECT_EQ(realMaximum(FG_CAMERASIMULATOR_LINERATE), MaxPixelRate / (64 + 32));
    EXPECT_EQ(realMaximum(FG_CAMERASIMULATOR_FRAMERATE), MaxPixelRate / ((64 + 32) * 1024));
}

TEST_F(SimulatorSize, InPixelFrequencyAWidthKeepsTheLineGap) {
    enter(PixelFrequencyMode);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 96), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 64), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageWidth = 5", "LineGap_Number = 2"));  // (64 + 96) / 32, 64 / 32
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 294824U);                              // 294920 - 96, from the gap
}

TEST_F(SimulatorSize, InFrameRateAWidthReadsTheDesignForTheHeightToo) {
    enter(FrameRateMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 64), 0);
    EXPECT_THAT(accesses(),
                ElementsAre("Sequence ? 12207", "Size_ImageWidth = 2", "LineGap_Number = 2", "Sequence ? 12207"));
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_LINE_GAP), 0U);
}

TEST_F(SimulatorSize, AWidthIsFrom1ToTheLongestLine) {
    enter(PixelFrequencyMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 294912), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 0), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 294921), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 294913), -6000);  // within the limit, but 294944 when rounded
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 4294967295U), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_WIDTH), 294912U);
}

TEST_F(SimulatorSize, InLineRateALineHasRoomForItsPixels) {
    ASSERT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 1'000'000.0), 0);  // 125 cycles of 32 pixels, less 32: 3968
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 3969), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 3968), 0);
}

// Line gap -----------------------------------------------------------------------------------------------------------

TEST_F(SimulatorSize, ALineGapIsRoundedUpTo32Pixels) {
    enter(PixelFrequencyMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 33), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageWidth = 34", "LineGap_Number = 32"));
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_LINE_GAP), 64U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 294856U);  // 294920 - 64
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 0), 0);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_LINE_GAP), 0U);
}

TEST_F(SimulatorSize, ALineGapEndsWithTheLongestLine) {
    enter(PixelFrequencyMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 293888), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 293897), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 293889), -6000);  // 293920 when rounded, and 294944 with the width
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 4294967295U), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_LINE_GAP), 293888U);
}

TEST_F(SimulatorSize, InLineRateALineGapIsSentAndReadsAsNone) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 64), 0);
    EXPECT_THAT(accesses(),
                ElementsAre("Sequence ? 12207", "Size_ImageWidth = 34", "LineGap_Number = 32", "Sequence ? 12207"));
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_LINE_GAP), 0U);
}

TEST_F(SimulatorSize, InLineRateTheGapEndsWithTheTimeOfALine) {
    ASSERT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 1'000'000.0), 0);  // 125 * 32 - 1024 - 32
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 2945), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 2944), 0);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 3'787'878.0), 0);  // 33 * 32 - 1024 - 32
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 1), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 0), 0);
}

TEST_F(SimulatorSize, InFrameRateThereIsNoLineGap) {
    enter(FrameRateMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 1), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 0), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageWidth = 32", "LineGap_Number = 32", "Sequence ? 12207"));
}

// Height -------------------------------------------------------------------------------------------------------------

TEST_F(SimulatorSize, AHeightIsSentAsWholeFrameAndActivePart) {
    enter(PixelFrequencyMode);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 100), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 500), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageHeight = 600", "FrameGap_Number = 500"));
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_HEIGHT), 500U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 294920U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_FRAME_GAP), 65036U);  // 65536 - 500
    EXPECT_EQ(realMaximum(FG_CAMERASIMULATOR_FRAMERATE), MaxPixelRate / ((1024 + 32) * 500));
}

TEST_F(SimulatorSize, InLineRateAHeightReadsTheDesignForTheWidth) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 500), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageHeight = 500", "FrameGap_Number = 500", "Sequence ? 12207"));
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_FRAME_GAP), 0U);
}

TEST_F(SimulatorSize, InFrameRateAHeightSetsTheRateAgain) {
    enter(FrameRateMode);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, 10.0), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 512), 0);
    EXPECT_THAT(accesses(), ElementsAre("Sequence ? 12207", "Size_ImageHeight = 512", "FrameGap_Number = 512",
                                        "Sequence = 24414",  // 1 / (10 * 8e-9) / 512 + 0.5 = 24414.6
                                        "Active = 1", "Size_ImageWidth = 32", "LineGap_Number = 32",
                                        "Size_ImageHeight = 512", "FrameGap_Number = 512", "Sequence ? 24414",
                                        "Sequence ? 24414", "Sequence ? 24414", "Sequence ? 24414"));
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 1.0 / (512 * 24414 * ClockPeriod));
}

TEST_F(SimulatorSize, InFrameRateAHeightThatTheRateDoesNotAllowIsTakenBack) {
    enter(FrameRateMode);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, 3000.0), 0);
    lie("PixelFrequency_SequenceLength_ImageWidth", 4100);  // so the limit of the height lets more pass
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 2048), -6000);  // 4e9 / (1056 * 2048) = 1849 images per second
    EXPECT_THAT(accesses(), ElementsAre("Sequence ? 4100", "Size_ImageHeight = 2048", "FrameGap_Number = 2048"));
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_HEIGHT), 1024U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 1272U);  // nothing is refreshed
}

TEST_F(SimulatorSize, AHeightIsFrom1To65536) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 65536), 0);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 1), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 0), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 65537), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_HEIGHT), 1U);
}

// Frame gap ----------------------------------------------------------------------------------------------------------

TEST_F(SimulatorSize, AFrameGapFillsTheFrame) {
    enter(PixelFrequencyMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 64512), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageHeight = 65536", "FrameGap_Number = 1024"));
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_FRAME_GAP), 64512U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 1024U);  // 65536 - 64512
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 1025), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 64513), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_FRAME_GAP), 64512U);
}

TEST_F(SimulatorSize, OutsidePixelFrequencyOnlyNoFrameGapPasses) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 1), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 0), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageHeight = 1024", "FrameGap_Number = 1024"));
    enter(FrameRateMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 1), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 0), 0);
    EXPECT_THAT(accesses(), ElementsAre("Size_ImageHeight = 1024", "FrameGap_Number = 1024", "Sequence ? 12207"));
}

}  // namespace
}  // namespace quillon::image_test
