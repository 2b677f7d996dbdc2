// A refusal of the applet arrives at the consumer's user with the applet's own code.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "client/testing/BuiltApplet.h"
#include "tests/genapi/Features.h"

namespace quillon::genapi {
namespace {

using client::Direction;
using testing::HasSubstr;
using testing::IsEmpty;

class Refusal : public testing::Test {
protected:
    client::testing::BuiltApplet built;
    Consumer consumer{built.applet};
};

TEST_F(Refusal, AValueOutOfRangeArrivesAsMinus6000AndChangesNothing) {
    built.board.clearTranscript();
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 16388), refusedByApplet(-6000));
    EXPECT_THAT(built.board.accesses(), IsEmpty());
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 1024);
}

TEST_F(Refusal, AValueBetweenTheStepsArrivesAsMinus7080) {
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 1026), refusedByApplet(-7080));
}

TEST_F(Refusal, ASignalWithoutAnInputArrivesAsMinus2075) {
    EXPECT_EQ(consumer.writeEntry("FG_TRIGGEROUT_GPO_0_SOURCE", "FG_SIGNAL_CAM0_INTERVAL_MODE"),
              refusedByApplet(-2075));
}

TEST_F(Refusal, AFloatOutOfRangeArrivesAsMinus6000) {
    EXPECT_EQ(consumer.writeFloat("FG_LINEEXPOSURE", 200.008), refusedByApplet(-6000));
    EXPECT_EQ(consumer.writeFloat("FG_LINEEXPOSURE", 200.0), Done);
}

TEST_F(Refusal, AMissingFileArrivesAsMinus2076) {
    EXPECT_EQ(consumer.writeEntry("FG_LUT_TYPE", "LUT_TYPE_CUSTOM"), Done);
    EXPECT_EQ(consumer.writeString("FG_LUT_CUSTOM_FILE", "/no such folder/no such file.lut"), refusedByApplet(-2076));
}

TEST_F(Refusal, AWriteThatFailsInTheDesignArrivesWithTheCodeOfTheDesign) {
    built.board.planFault("Device1_Process0_Buffer_0_XLength", Direction::Write, 1, -4711);
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 2048), refusedByApplet(-4711));
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 1024);
}

TEST_F(Refusal, AReadThatFailsInTheDesignArrivesWithTheCodeOfTheDesign) {
    built.board.planFault("Device1_Process0_BoardStatus_FpgaTemperature", Direction::Read, 1, -4712);
    double temperature = 1.0;
    EXPECT_EQ(consumer.readFloat("FG_SYSTEMMONITOR_FPGA_TEMPERATURE", temperature), refusedByApplet(-4712));
    EXPECT_EQ(temperature, 1.0);
}

TEST_F(Refusal, TheMessageNamesTheFeatureAndTheCode) {
    const Outcome outcome = consumer.writeInteger("FG_WIDTH", 16388);
    EXPECT_THAT(outcome.message, HasSubstr("FG_WIDTH"));
    EXPECT_THAT(outcome.message, HasSubstr("-6000"));
}

/// Writes a feature with a value of its kind, which one does not matter.
Outcome writeAnything(Consumer& consumer, const Feature& feature) {
    switch (feature.nodeClass) {
        case NodeClass::Integer: return consumer.writeInteger(feature.name, 1);
        case NodeClass::Enumeration: return consumer.writeEnumeration(feature.name, 1);
        case NodeClass::Float: return consumer.writeFloat(feature.name, 1.0);
        default: return consumer.writeString(feature.name, "1");
    }
}

TEST_F(Refusal, EveryParameterThatIsOnlyReadRefusesAWriteWithMinus12) {
    int refused = 0;
    for (const Feature& feature : features()) {
        if (!feature.writable) {
            EXPECT_EQ(writeAnything(consumer, feature), refusedByApplet(-12)) << feature.name;
            ++refused;
        }
    }
    EXPECT_EQ(refused, 42);
}

TEST_F(Refusal, AConsumerThatChecksAccessRefusesByItselfWhatIsShownAsReadOnly) {
    consumer.checkAccess();
    built.board.clearTranscript();
    int refused = 0;
    for (const Feature& feature : features()) {
        if (consumer.accessOf(feature.name) == ARV_GC_ACCESS_MODE_RO) {
            EXPECT_EQ(writeAnything(consumer, feature), refusedByConsumer(ARV_GC_ERROR_READ_ONLY)) << feature.name;
            ++refused;
        }
    }
    EXPECT_EQ(refused, 66) << "42 that are only read, and 24 that other modes open";
    EXPECT_THAT(built.board.accesses(), IsEmpty());
}

TEST_F(Refusal, AConsumerThatChecksAccessStillWritesWhatIsShownAsWritable) {
    consumer.checkAccess();
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 2048), Done);
    EXPECT_EQ(consumer.writeEntry("FG_FORMAT", "FG_COL30"), Done);
    EXPECT_EQ(consumer.writeFloat("FG_LINEPERIODE", 100.0), Done);
    EXPECT_EQ(consumer.writeString("FG_LUT_SAVE_FILE", ""), Done);
}

}  // namespace
}  // namespace quillon::genapi
