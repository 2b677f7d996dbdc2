#include "info/Enumerations.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(Enumerations, HoldTheirValuesAndNoOthers) {
    static_assert(holds(EnumLineTriggerMode, 6));
    EXPECT_TRUE(holds(EnumImageTriggerSource, -1));
    EXPECT_TRUE(holds(EnumImageTriggerSource, 19));
    EXPECT_FALSE(holds(EnumImageTriggerSource, 8));
    EXPECT_FALSE(holds(EnumTriggerSource, -1));
    EXPECT_FALSE(holds(EnumOnOff, 2));
}

TEST(Enumerations, EntriesHaveNumberAndNameOfTheirEnumerator) {
    EXPECT_EQ(EnumOutputFormat[3].value, 9);
    EXPECT_STREQ(EnumOutputFormat[3].name, "FG_COL42");
    EXPECT_STREQ(EnumOutputFormat[3].label, "Color 42bit");
    EXPECT_EQ(EnumImageTriggerSource[12].value, -1);
    EXPECT_STREQ(EnumImageTriggerSource[12].name, "TRGINSOFTWARE");
}

TEST(Enumerations, OfSignalSourcesDifferInTransferSignalsAndIntervalMode) {
    EXPECT_EQ(std::size(EnumSignalSource), 20U);
    EXPECT_EQ(std::size(EnumSignalSourceFull), 23U);
    EXPECT_TRUE(holds(EnumSignalSource, 1));
    EXPECT_FALSE(holds(EnumSignalSourceFull, 1));
    EXPECT_FALSE(holds(EnumSignalSource, 2100));
    EXPECT_TRUE(holds(EnumSignalSourceFull, 2100));
}

}  // namespace
}  // namespace quillon
