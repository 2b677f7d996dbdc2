#include "cli/pictures/Histogram.h"

#include <gmock/gmock.h>

#include "tests/cli/PackedFrame.h"

namespace quillon::cli {
namespace {

using client::Component;
using ::testing::Contains;
using ::testing::ElementsAre;
using testing::PackedFrame;
using ::testing::Pair;
using testing::Pixel;

TEST(Histogram, EachPixelCountsOnceForEachColour) {
    Histogram histogram;
    histogram.add(PackedFrame(256, 2, 8, [](unsigned x, unsigned y) { return Pixel{x, 7, y * 255}; }));
    EXPECT_EQ(histogram.pixels(), 512U);
    EXPECT_THAT(histogram.of(Component::Red).counts, ::testing::Each(2U));
    EXPECT_EQ(histogram.of(Component::Green).counts[7], 512U);
    EXPECT_EQ(histogram.of(Component::Green).counts[8], 0U);
    EXPECT_EQ(histogram.of(Component::Blue).counts[0], 256U);
    EXPECT_EQ(histogram.of(Component::Blue).counts[255], 256U);
}

TEST(Histogram, WiderValuesCountByTheirUpperEightBits) {
    Histogram histogram;
    histogram.add(PackedFrame(2, 1, 12, [](unsigned x, unsigned) { return Pixel{4095, 16 + 15 * x, 16 * x}; }));
    EXPECT_EQ(histogram.of(Component::Red).counts[255], 2U);
    EXPECT_EQ(histogram.of(Component::Green).counts[1], 2U);
    EXPECT_EQ(histogram.of(Component::Blue).counts[0], 1U);
    EXPECT_EQ(histogram.of(Component::Blue).counts[1], 1U);
}

TEST(Histogram, RangeAndMeanAreSharesOfTheLargestValue) {
    Histogram histogram;
    histogram.add(PackedFrame(1, 1, 8, [](unsigned, unsigned) { return Pixel{51, 0, 255}; }));
    histogram.add(PackedFrame(1, 1, 10, [](unsigned, unsigned) { return Pixel{1023, 0, 1023}; }));
    EXPECT_DOUBLE_EQ(histogram.of(Component::Red).least, 0.2);
    EXPECT_DOUBLE_EQ(histogram.of(Component::Red).most, 1);
    EXPECT_DOUBLE_EQ(histogram.mean(Component::Red), 0.6);
    EXPECT_DOUBLE_EQ(histogram.mean(Component::Green), 0);
    EXPECT_DOUBLE_EQ(histogram.mean(Component::Blue), 1);
}

std::string bar(std::size_t blanks, const std::string& block) {
    return "  |" + std::string(blanks, ' ') + block + std::string(63 - blanks, ' ') + "|";
}

TEST(Histogram, ATerminalShowsBarsForEachColour) {
    Histogram histogram;
    histogram.add(PackedFrame(4, 1, 8, [](unsigned x, unsigned) { return Pixel{0, 255, x == 0 ? 255U : 128U}; }));
    const std::string full = "\xE2\x96\x88";
    const auto lines = histogram.asText();
    ASSERT_EQ(lines.size(), 15U);
    EXPECT_EQ(lines[0], "red: 0 % to 0 %, mean 0 %");
    EXPECT_EQ(lines[1], bar(0, full));
    EXPECT_EQ(lines[4], bar(0, full));
    EXPECT_EQ(lines[5], "green: 100 % to 100 %, mean 100 %");
    EXPECT_EQ(lines[6], bar(63, full));
    EXPECT_EQ(lines[10], "blue: 50.2 % to 100 %, mean 62.6 %");
    // Three of four pixels in the middle: the one at the end is a third as high, ten and two thirds eighths of 32.
    EXPECT_EQ(lines[11], bar(32, full));
    EXPECT_EQ(lines[13], "  |" + std::string(32, ' ') + full + std::string(30, ' ') + "\xE2\x96\x83|");
    EXPECT_EQ(lines[14], "  |" + std::string(32, ' ') + full + std::string(30, ' ') + full + "|");
}

TEST(Histogram, WithoutPixelsThereIsNothingToDraw) {
    EXPECT_THAT(Histogram().asText(), ElementsAre("red: no pixels", "green: no pixels", "blue: no pixels"));
    EXPECT_EQ(Histogram().mean(Component::Red), 0);
}

TEST(Histogram, TheChartHasACurveForEachColour) {
    Histogram histogram;
    histogram.add(PackedFrame(8, 1, 8, [](unsigned x, unsigned) { return Pixel{x, 51, 255}; }));
    const Chart chart = histogram.asChart();
    ASSERT_EQ(chart.curves.size(), 3U);
    EXPECT_EQ(chart.curves[0].name, "red");
    EXPECT_THAT(chart.curves[0].points, Contains(Pair(0.0, 1.0)));
    EXPECT_THAT(chart.curves[1].points, Contains(Pair(20.0, 8.0)));
    EXPECT_THAT(chart.curves[2].points, Contains(Pair(100.0, 8.0)));
    EXPECT_EQ(chart.y.max, 8);
}

}  // namespace
}  // namespace quillon::cli
