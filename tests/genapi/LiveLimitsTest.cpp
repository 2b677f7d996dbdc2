// The document tells the limits and the access of the moment: a description parsed later shows what has changed.

#include <gtest/gtest.h>

#include "client/testing/BuiltApplet.h"
#include "tests/genapi/Consumer.h"

namespace quillon::genapi {
namespace {

class LiveLimits : public testing::Test {
protected:
    client::testing::BuiltApplet built;
    Consumer consumer{built.applet};
};

TEST_F(LiveLimits, AnOffsetNarrowsTheWidthInTheNextDescription) {
    EXPECT_EQ(consumer.writeInteger("FG_XOFFSET", 4), Done);
    EXPECT_EQ(consumer.integerMax("FG_WIDTH"), 16384);
    EXPECT_EQ(Consumer(built.applet).integerMax("FG_WIDTH"), 16380);
}

TEST_F(LiveLimits, AnExternalTriggerOpensItsInputInTheNextDescription) {
    EXPECT_EQ(consumer.accessOf("FG_LINETRIGGERINSRC"), ARV_GC_ACCESS_MODE_RO);
    EXPECT_EQ(consumer.writeEntry("FG_LINETRIGGERMODE", "ASYNC_TRIGGER"), Done);
    EXPECT_EQ(Consumer(built.applet).accessOf("FG_LINETRIGGERINSRC"), ARV_GC_ACCESS_MODE_RW);
}

TEST_F(LiveLimits, TheLinePeriodBoundsTheExposureInTheNextDescription) {
    EXPECT_EQ(consumer.floatMax("FG_LINEEXPOSURE"), 200.0);
    EXPECT_EQ(consumer.writeFloat("FG_LINEPERIODE", 2000.0), Done);
    EXPECT_EQ(Consumer(built.applet).floatMax("FG_LINEEXPOSURE"), 1048.568);
    EXPECT_EQ(Consumer(built.applet).floatMax("FG_LINETRIGGERDELAY"), 2000.0);
}

TEST_F(LiveLimits, ACheckingConsumerRefusesWhatTheDescriptionItParsedDoesNotAllow) {
    consumer.checkRanges();
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 16388), refusedByConsumer(ARV_GC_ERROR_OUT_OF_RANGE));
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 16384), Done);
}

}  // namespace
}  // namespace quillon::genapi
