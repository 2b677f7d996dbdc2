// The three speed modes: by pixel frequency, by line rate and by frame rate.

#include <cmath>
#include <limits>

#include "tests/image/Simulator.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

struct SimulatorSpeed : ::testing::Test, Simulator {
    /// Of pixel frequency, line rate, frame rate, line gap and frame gap.
    std::vector<int> modeFlags() const {
        return {accessFlags(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), accessFlags(FG_CAMERASIMULATOR_LINERATE),
                accessFlags(FG_CAMERASIMULATOR_FRAMERATE), accessFlags(FG_CAMERASIMULATOR_LINE_GAP),
                accessFlags(FG_CAMERASIMULATOR_FRAME_GAP)};
    }
};

// The modes ----------------------------------------------------------------------------------------------------------

TEST_F(SimulatorSpeed, IntoPixelFrequency) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, PixelFrequencyMode), 0);
    EXPECT_THAT(accesses(), ElementsAre("ControlPixelClock_Mode = 0", "Size_ImageWidth = 32", "LineGap_Number = 32",
                                        "Size_ImageHeight = 1024", "FrameGap_Number = 1024",
                                        "Active = 20",  // 40 MHz in steps of 2
                                        "PixelFrequency_RepeatPat_Divisor = 100", "Sequence = 2000", "Active ? 20"));
    EXPECT_THAT(modeFlags(), ElementsAre(7, 1, 1, 7, 7));
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 294920U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_LINE_GAP), 293896U);  // 294920 - 1024
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 65536U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_FRAME_GAP), 64512U);  // 65536 - 1024
}

TEST_F(SimulatorSpeed, IntoLineRate) {
    enter(PixelFrequencyMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, LineRateMode), 0);
    EXPECT_THAT(accesses(), ElementsAre("ControlPixelClock_Mode = 1", "Size_ImageWidth = 32", "LineGap_Number = 32",
                                        "Size_ImageHeight = 1024", "FrameGap_Number = 1024",
                                        "Sequence = 12207",  // 0.5 + 1 / (10240 * 8e-9) = 12207.53
                                        "Active = 1", "Size_ImageWidth = 32", "LineGap_Number = 32",
                                        "Sequence ? 12207",                        // the frame rate
                                        "Sequence ? 12207", "Sequence ? 12207",    // the maxima of a line rate
                                        "Sequence ? 12207", "Sequence ? 12207"));  // and of a mode
    EXPECT_THAT(modeFlags(), ElementsAre(1, 7, 1, 1, 7));
    // 4e9 / (1 / (12207 * 8e-9)) = 32 * 12207 = 390624 pixels in the time of a line: more than the longest line
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 294920U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_LINE_GAP), 293896U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 65536U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_FRAME_GAP), 0U);
}

TEST_F(SimulatorSpeed, IntoFrameRateKeepsTheFrameRateThatWas) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, FrameRateMode), 0);
    EXPECT_THAT(accesses(),
                ElementsAre("ControlPixelClock_Mode = 1", "Size_ImageWidth = 32", "LineGap_Number = 32",
                            "Size_ImageHeight = 1024", "FrameGap_Number = 1024",
                            "Sequence = 12207",  // of 10.0000256 images per second, which 12207 cycles a line gave
                            "Active = 1", "Size_ImageWidth = 32", "LineGap_Number = 32", "Size_ImageHeight = 1024",
                            "FrameGap_Number = 1024", "Sequence ? 12207",  // the frame rate
                            "Sequence ? 12207", "Sequence ? 12207",        // the maxima of a frame rate
                            "Sequence ? 12207", "Sequence ? 12207"));      // and of a mode
    EXPECT_THAT(modeFlags(), ElementsAre(1, 1, 7, 1, 1));
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 294920U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_LINE_GAP), 0U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 65536U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_FRAME_GAP), 0U);
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 1.0 / (1024 * 12207 * ClockPeriod));
}

TEST_F(SimulatorSpeed, FromPixelFrequencyIntoFrameRate) {
    enter(PixelFrequencyMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, FrameRateMode), 0);
    // 40e6 / (1024 * 1024) = 38.147 images per second; 1 / (38.147 * 8e-9) / 1024 + 0.5 = 3200.5 cycles a line
    EXPECT_EQ(design("PixelFrequency_SequenceLength_ImageWidth"), 3200);
}

TEST_F(SimulatorSpeed, AFourthModeDoesNotExist) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, 3), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, 4294967295U), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE), 1U);
    EXPECT_THAT(modeFlags(), ElementsAre(1, 7, 1, 1, 7));
}

TEST_F(SimulatorSpeed, ALineRateThatNoLongerFitsTheWidthIsLoweredOnTheWayBack) {
    ASSERT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 3'000'000.0), 0);
    enter(PixelFrequencyMode);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 2048), 0);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, LineRateMode), 0);
    // 4e9 / (2048 + 32) = 1923076.9 lines per second; 1 / (1923076.9 * 8e-9) + 0.5 = 65.5 cycles
    EXPECT_EQ(design("PixelFrequency_SequenceLength_ImageWidth"), 65);
}

TEST_F(SimulatorSpeed, TheGapsComeBackWithTheModeThatHasThem) {
    enter(PixelFrequencyMode);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 64), 0);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_FRAME_GAP, 100), 0);
    enter(LineRateMode);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_LINE_GAP), 0U);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_FRAME_GAP), 100U);
    EXPECT_EQ(design("Size_ImageWidth"), 32);
    EXPECT_EQ(design("Size_ImageHeight"), 1124);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 65436U);  // 65536 - 100
    enter(FrameRateMode);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_FRAME_GAP), 0U);
    EXPECT_EQ(design("Size_ImageHeight"), 1024);
    enter(PixelFrequencyMode);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_LINE_GAP), 64U);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_FRAME_GAP), 100U);
    EXPECT_EQ(design("Size_ImageWidth"), 34);
    EXPECT_EQ(design("Size_ImageHeight"), 1124);
}

// Pixel frequency ----------------------------------------------------------------------------------------------------

TEST_F(SimulatorSpeed, APixelFrequencyIsAShareOfTheSequence) {
    enter(PixelFrequencyMode);
    const struct {
        double megahertz;
        std::string active, divisor;
        double readsBack;
    } rows[] = {{40.0, "Active = 20", "PixelFrequency_RepeatPat_Divisor = 100", 40.0},
                {41.0, "Active = 21", "PixelFrequency_RepeatPat_Divisor = 95", 42.0},  // 20.5 + 0.5
                {39.0, "Active = 20", "PixelFrequency_RepeatPat_Divisor = 100", 40.0},
                {38.9, "Active = 19", "PixelFrequency_RepeatPat_Divisor = 105", 38.0},
                {1.0, "Active = 1", "PixelFrequency_RepeatPat_Divisor = 2000", 2.0},
                {2999.0, "Active = 1500", "PixelFrequency_RepeatPat_Divisor = 1", 3000.0},
                {4000.0, "Active = 2000", "PixelFrequency_RepeatPat_Divisor = 1", 4000.0}};
    for (const auto& row : rows) {
        forget();
        EXPECT_EQ(set(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, row.megahertz), 0);
        EXPECT_THAT(writes(), ElementsAre(row.active, row.divisor, "Sequence = 2000"));
        EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), row.readsBack);
    }
}

TEST_F(SimulatorSpeed, BelowOneMegahertzTheGeneratorStandsStillAndTheHostLives) {
    enter(PixelFrequencyMode);
    for (const double megahertz : {0.99, 0.5, 0.0}) {
        forget();
        EXPECT_EQ(set(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, megahertz), 0);
        EXPECT_THAT(writes(), ElementsAre("Active = 0", "PixelFrequency_RepeatPat_Divisor = 2000", "Sequence = 2000"));
        EXPECT_EQ(get<double>(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 0.0);
        EXPECT_EQ(get<double>(FG_CAMERASIMULATOR_LINERATE), 0.0);
        EXPECT_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 0.0);
    }
    // No rate to keep: there is no frame rate below 0.1.
    EXPECT_EQ(set(FG_CAMERASIMULATOR_SELECT_MODE, FrameRateMode), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE), 0U);
}

TEST_F(SimulatorSpeed, APixelFrequencyIsFrom0To4000) {
    for (const double megahertz : {-0.1, 4000.0000000000005, 1e300, NotANumber}) {
        EXPECT_EQ(set(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, megahertz), -6000) << megahertz;
    }
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(SimulatorSpeed, ThePublishedMaximumOfThePixelFrequencyIsThatOfTheClock) {
    EXPECT_EQ(realMaximum(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 3999.9999999999995);
}

TEST_F(SimulatorSpeed, InPixelFrequencyAllRatesFollow) {
    enter(PixelFrequencyMode);
    set(FG_CAMERASIMULATOR_LINE_GAP, 64);
    set(FG_CAMERASIMULATOR_FRAME_GAP, 76);
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 20 * 32.0 / 2000.0 / ClockPeriod / 1e6);
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_LINERATE), 40e6 / (1024 + 64));
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 40e6 / ((1024 + 64) * (76 + 1024)));
}

TEST_F(SimulatorSpeed, TheSequenceReadsAsActiveAndPassivePartsInPixelFrequencyAlone) {
    enter(PixelFrequencyMode);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_ACTIVE), 20U);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_PASSIVE), 1980U);
    for (const int mode : {LineRateMode, FrameRateMode}) {
        enter(mode);
        std::uint32_t value = 4711;
        EXPECT_EQ(applet.getUnsigned(FG_CAMERASIMULATOR_ACTIVE, value), 0);
        EXPECT_EQ(applet.getUnsigned(FG_CAMERASIMULATOR_PASSIVE, value), 0);
        EXPECT_EQ(value, 4711U);
        EXPECT_THAT(accesses(), IsEmpty());
    }
    EXPECT_EQ(set(FG_CAMERASIMULATOR_ACTIVE, 1), -12);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_PASSIVE, 1), -12);
}

// Line rate ----------------------------------------------------------------------------------------------------------

TEST_F(SimulatorSpeed, ALineRateIsALengthOfTheSequence) {
    const struct {
        double rate;
        std::string sequence;
    } rows[] = {{10240.0, "Sequence = 12207"},    // 0.5 + 12207.03
                {0.1, "Sequence = 1250000000"},   // 0.5 + 1 / 8e-10
                {1234.5, "Sequence = 101256"},    // 0.5 + 101255.57
                {1'000'000.0, "Sequence = 125"},  // 0.5 + 125
                {3'787'878.0, "Sequence = 33"}};  // 0.5 + 33.0000069
    for (const auto& row : rows) {
        forget();
        EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, row.rate), 0);
        EXPECT_THAT(writes(), ElementsAre(row.sequence, "Active = 1", "Size_ImageWidth = 32", "LineGap_Number = 32"));
    }
}

TEST_F(SimulatorSpeed, ALineRateReadsTheDesignForTheFrameRateAndTwoMaxima) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 1'000'000.0), 0);
    EXPECT_THAT(accesses(), ElementsAre("Sequence = 125", "Active = 1", "Size_ImageWidth = 32", "LineGap_Number = 32",
                                        "Sequence ? 125", "Sequence ? 125", "Sequence ? 125"));
    // 32 pixels in each of 125 cycles, less 32
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 3968U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_LINE_GAP), 2944U);  // less the width of 1024
}

TEST_F(SimulatorSpeed, ALineRateReadsBackInWholeCycles) {
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_LINERATE), 1.0 / (12207 * ClockPeriod));  // 10240.026
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 1.0 / (12207 * ClockPeriod) / 1024);
    EXPECT_EQ(get<double>(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 3999.9999999999995);
}

TEST_F(SimulatorSpeed, ALineRateIsFromOneTenthToWhatTheWidthAllows) {
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 0.1), 0);
    const double highest = MaxPixelRate / (1024 + 32.0);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, highest), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 0.05), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, std::nextafter(0.1, 0.0)), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, std::nextafter(highest, 1e300)), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, -10240.0), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, NotANumber), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(SimulatorSpeed, ALineRateTakesTheLineGapAway) {
    ASSERT_EQ(set(FG_CAMERASIMULATOR_LINE_GAP, 64), 0);
    EXPECT_EQ(design("Size_ImageWidth"), 34);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 5000.0), 0);
    EXPECT_EQ(design("Size_ImageWidth"), 32);
}

// Frame rate ---------------------------------------------------------------------------------------------------------

TEST_F(SimulatorSpeed, AFrameRateIsALengthOfTheSequenceForEachLine) {
    enter(FrameRateMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, 100.0), 0);
    EXPECT_THAT(accesses(),
                ElementsAre("Sequence = 1221",  // 1 / (100 * 8e-9) / 1024 + 0.5 = 1221.2
                            "Active = 1", "Size_ImageWidth = 32", "LineGap_Number = 32", "Size_ImageHeight = 1024",
                            "FrameGap_Number = 1024", "Sequence ? 1221", "Sequence ? 1221", "Sequence ? 1221"));
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 1.0 / (1024 * 1221 * ClockPeriod));  // 99.976
    // 32 * 1221 - 32 = 39040, of which the rounding of the rates takes one
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 39039U);
    // 32 * 1024 * 1221 / (1024 + 32) = 37888
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 37888U);
}

TEST_F(SimulatorSpeed, AHighFrameRateLimitsWidthAndHeight) {
    enter(FrameRateMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, 3000.0), 0);
    EXPECT_EQ(design("PixelFrequency_SequenceLength_ImageWidth"), 41);  // 40.69 + 0.5
    // 32 * 41 - 32 = 1280, of which the rounding of the rates takes one; 32 * 1024 * 41 / 1056 = 1272.2
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_WIDTH), 1279U);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 1272U);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 1280), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 1273), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 1279), 0);
}

TEST_F(SimulatorSpeed, InFrameRateTheLineRateIsThatOfTheWidth) {
    enter(FrameRateMode);
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_LINERATE), 32.0 / (1024 * ClockPeriod));
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<double>(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 3999.9999999999995);
}

TEST_F(SimulatorSpeed, AFrameRateIsFromOneTenthToWhatTheSizeAllows) {
    enter(FrameRateMode);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, 0.1), 0);
    const double highest = MaxPixelRate / ((1024 + 32) * 1024);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, highest), 0);
    forget();
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, std::nextafter(0.1, 0.0)), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, std::nextafter(highest, 1e300)), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, NotANumber), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(SimulatorSpeed, EachRateCanBeWrittenInEachMode) {
    for (const int mode : {PixelFrequencyMode, LineRateMode, FrameRateMode}) {
        enter(mode);
        EXPECT_EQ(set(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, 50.0), 0);
        EXPECT_EQ(design("PixelFrequency_ActivePixel_Number"), 25);
        EXPECT_EQ(set(FG_CAMERASIMULATOR_LINERATE, 20000.0), 0);
        EXPECT_EQ(design("PixelFrequency_SequenceLength_ImageWidth"), 6250);
        EXPECT_EQ(set(FG_CAMERASIMULATOR_FRAMERATE, 20.0), 0);
        EXPECT_EQ(design("PixelFrequency_SequenceLength_ImageWidth"), 6104);  // 6250000 / 1024 + 0.5
    }
}

// Designs that lie ---------------------------------------------------------------------------------------------------

TEST_F(SimulatorSpeed, ASequenceOfNoLengthHasNoEndOfRates) {
    lie("PixelFrequency_SequenceLength_ImageWidth", 0);
    EXPECT_EQ(get<double>(FG_CAMERASIMULATOR_LINERATE), std::numeric_limits<double>::infinity());
    // 4e9 / infinity - 32 is negative and wraps: the constants bound
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 294912), 0);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_LINE_GAP), 8U);
    enter(PixelFrequencyMode);
    set(FG_CAMERASIMULATOR_WIDTH, 1024);
    enter(FrameRateMode);
    lie("PixelFrequency_SequenceLength_ImageWidth", 0);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 1), -6000);
    EXPECT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 64), 0);
    EXPECT_EQ(maximum(FG_CAMERASIMULATOR_HEIGHT), 0U);
}

TEST_F(SimulatorSpeed, AProductOfIntegersIsFormedInThirtyTwoBits) {
    enter(FrameRateMode);
    lie("PixelFrequency_SequenceLength_ImageWidth", 4294967295);
    // 1024 * (2^32 - 1) modulo 2^32 is 2^32 - 1024
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 1.0 / (4294966272.0 * ClockPeriod));
    enter(PixelFrequencyMode);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_WIDTH, 294912), 0);
    ASSERT_EQ(set(FG_CAMERASIMULATOR_HEIGHT, 65536), 0);
    // 294912 * 65536 modulo 2^32 is 2^31, and (294912 + 32) * 65536 is 2149580800
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_FRAMERATE), 40e6 / 2147483648.0);
    EXPECT_DOUBLE_EQ(realMaximum(FG_CAMERASIMULATOR_FRAMERATE), MaxPixelRate / 2149580800.0);
}

TEST_F(SimulatorSpeed, MoreActivePartsThanTheSequenceHasWrap) {
    enter(PixelFrequencyMode);
    lie("PixelFrequency_ActivePixel_Number", 3000);
    EXPECT_EQ(get<std::uint32_t>(FG_CAMERASIMULATOR_PASSIVE), 4294966296U);
    EXPECT_DOUBLE_EQ(get<double>(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 6000.0);
}

}  // namespace
}  // namespace quillon::image_test
