#include "tests/soak/Counts.h"

#include <gmock/gmock.h>

namespace quillon::soak {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

Counts balanced() {
    return {.closed = 10,
            .lines = 100,
            .delivered = 8,
            .lost = 2,
            .lostBefore = 1,
            .deliveredLines = 75,
            .lostLines = 25,
            .faults = 0,
            .lastImage = 9,
            .overflows = 0};
}

TEST(SoakCounts, BalanceWhenAllFramesAreDeliveredOrLost) {
    EXPECT_THAT(imbalances(balanced(), {}, true), IsEmpty());
    Counts one = balanced();
    one.delivered = 7;
    EXPECT_THAT(imbalances(one, {}, true), ElementsAre("10 frames closed, 7 delivered, 2 lost, and one of 1 selected"));
    one.delivered = 9;
    EXPECT_THAT(imbalances(one, {}, true), ElementsAre(HasSubstr("9 delivered")));
}

TEST(SoakCounts, TheSelectorLeavesFramesOut) {
    Counts counts = balanced();
    counts.lines = 200;
    counts.closed = 12;  // ten come to the selector: 0 to 9
    for (const auto& [phase, delivered] : {std::pair(0U, 4U), std::pair(1U, 3U), std::pair(2U, 3U)}) {
        counts.delivered = delivered;
        EXPECT_THAT(imbalances(counts, {3, phase}, false), IsEmpty()) << phase;
        ++counts.delivered;
        EXPECT_THAT(imbalances(counts, {3, phase}, false), ElementsAre(HasSubstr("one of 3 selected"))) << phase;
    }
    counts.closed = 2;
    counts.lost = 2;
    counts.lastImage = 2;
    counts.delivered = 0;
    EXPECT_THAT(imbalances(counts, {3, 2}, false), IsEmpty());
}

TEST(SoakCounts, LinesAreDeliveredOrLost) {
    Counts counts = balanced();
    counts.lines = 101;
    EXPECT_THAT(imbalances(counts, {}, false), IsEmpty());
    EXPECT_THAT(imbalances(counts, {}, true), ElementsAre("101 lines, 75 delivered and 25 lost"));
    counts.lines = 99;
    EXPECT_THAT(imbalances(counts, {}, false), ElementsAre("99 lines, 75 delivered and 25 lost"));
}

TEST(SoakCounts, MoreThanWereClosedOrLostAreTold) {
    Counts counts = balanced();
    counts.lastImage = 11;
    counts.lostBefore = 3;
    EXPECT_THAT(imbalances(counts, {}, true), ElementsAre("the last frame is image 11 of 10 that were closed",
                                                          "3 frames lost before others, and 2 lost"));
}

}  // namespace
}  // namespace quillon::soak
