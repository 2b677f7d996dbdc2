#include "cli/Waves.h"

#include <gmock/gmock.h>

namespace quillon::cli {
namespace {

using ::testing::ElementsAre;

Wave wave(bool high, std::vector<double> changes) {
    return {"signal", high, std::move(changes), false, ""};
}

const Axis ten{"s", 0, 10};

TEST(Waves, ALevelIsACharacterForEachPartOfTheAxis) {
    EXPECT_EQ(drawn(wave(false, {2, 5}), ten, 10), "__###_____");
    EXPECT_EQ(drawn(wave(true, {2, 5}), ten, 10), "##___#####");
}

TEST(Waves, APulseWithinACharacterIsShown) {
    EXPECT_EQ(drawn(wave(false, {4.1, 4.2}), ten, 10), "____#_____");
    EXPECT_EQ(drawn(wave(true, {4.1, 4.2}), ten, 10), "####_#####");
}

TEST(Waves, APulseOverTheBorderOfTwoCharactersIsShownWhereMoreOfItIs) {
    EXPECT_EQ(drawn(wave(false, {3.7, 4.1}), ten, 10), "___#______");
    EXPECT_EQ(drawn(wave(true, {3.9, 4.4}), ten, 10), "####_#####");
}

TEST(Waves, APulseAtTheVeryStartAndOneAtTheVeryEndAreShown) {
    EXPECT_EQ(drawn(wave(true, {0.1}), ten, 10), "#_________");
    EXPECT_EQ(drawn(wave(false, {9.9, 10}), ten, 10), "_________#");
}

TEST(Waves, MoreThanACharacterCanShowHasACharacterOfItsOwn) {
    EXPECT_EQ(drawn(wave(false, {1.1, 1.2, 1.3, 1.4, 8.1}), ten, 10), "_%______##");
}

TEST(Waves, PulsesInEachCharacterAreNoStandingLevel) {
    const Wave pulses = wave(false, {2.0, 2.1, 3.0, 3.1, 4.0, 4.1, 8.2, 8.3});
    EXPECT_EQ(drawn(pulses, ten, 10), "__%%%___#_");
}

TEST(Waves, APulseThatBeginsWithACharacterIsInIt) {
    EXPECT_EQ(drawn(wave(false, {600, 600.256}), {"", 0, 1000}, 50), std::string(30, '_') + "#" + std::string(19, '_'));
}

TEST(Waves, MomentsHaveNoLevel) {
    EXPECT_EQ(drawn({"events", false, {0, 3.5, 3.6, 10}, true, ""}, ten, 10), "|..%.....|");
}

TEST(Waves, RowsStandOnOneAxisWithNumbersAndUnit) {
    const Waves waves{"", {"ms", 0, 2}, {wave(false, {1}), {"other", false, {}, false, "not known"}}, {}};
    EXPECT_THAT(asText(waves, 28),
                ElementsAre("signal  __________##########", "other   (not known)", "        0         1     2 ms"));
}

TEST(Waves, ARowOfAPictureHasAPointForEachEdge) {
    const Chart chart = chartOf({"", ten, {wave(false, {4})}, {"one"}});
    ASSERT_EQ(chart.curves.size(), 1U);
    const double low = chart.curves[0].points[0].second;
    const double high = chart.curves[0].points[2].second;
    EXPECT_LT(low, high);
    EXPECT_THAT(chart.curves[0].points,
                ElementsAre(std::pair(0.0, low), std::pair(4.0, low), std::pair(4.0, high), std::pair(10.0, high)));
    EXPECT_THAT(chart.captions, ElementsAre("one"));
}

TEST(Waves, APictureLeavesOutWhatItCannotShowAndEndsAtTheRightLevel) {
    std::vector<double> changes;
    for (int i = 0; i < 100001; ++i) {
        changes.push_back(i * 0.0001);
    }
    const Chart chart = chartOf({"", ten, {wave(false, changes)}, {}});
    EXPECT_LT(chart.curves[0].points.size(), 20000U);
    EXPECT_GT(chart.curves[0].points.size(), 4000U);
    EXPECT_EQ(chart.curves[0].points.back().second, chart.curves[0].points[2].second);
}

TEST(Waves, TimesHaveTheUnitInWhichTheyAreShort) {
    EXPECT_EQ(timeInWords(200), "200 \u00B5s");
    EXPECT_EQ(timeInWords(204800), "204.8 ms");
    EXPECT_EQ(timeInWords(2500000), "2.5 s");
    EXPECT_EQ(rateInWords(10240.0262145), "10240.03");
    EXPECT_EQ(rateInWords(5000), "5000");
    EXPECT_EQ(rateInWords(0), "0");
}

}  // namespace
}  // namespace quillon::cli
