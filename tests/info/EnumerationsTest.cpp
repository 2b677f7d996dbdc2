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

TEST(Enumerations, NameAValue) {
    EXPECT_STREQ(nameOf(EnumOutputFormat, 9), "FG_COL42");
    EXPECT_STREQ(nameOf(EnumInputPolarity, 1), "HIGH_ON_ZERO_LOW");
    EXPECT_STREQ(nameOf(EnumOutputPolarity, 0), "FG_LOW");
    EXPECT_EQ(nameOf(EnumOutputFormat, 3), nullptr);
}

TEST(Enumerations, GiveTheValueOfAName) {
    EXPECT_EQ(valueOf(EnumPulseMessage, "FG_PULSE_WIDTH"), 23);
    EXPECT_EQ(valueOf(EnumImageTriggerSource, "TRGINSOFTWARE"), -1);
    EXPECT_EQ(valueOf(EnumPulseMessage, "FG_PULSE"), std::nullopt);
    EXPECT_EQ(valueOf(EnumPulseMessage, "Pulse Width"), std::nullopt);
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
