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

TEST(Waves, TimesHaveTheUnitInWhichTheyAreShort) {
    EXPECT_EQ(timeInWords(200), "200 \u00B5s");
    EXPECT_EQ(timeInWords(204800), "204.8 ms");
    EXPECT_EQ(timeInWords(2500000), "2.5 s");
}

}  // namespace
}  // namespace quillon::cli
