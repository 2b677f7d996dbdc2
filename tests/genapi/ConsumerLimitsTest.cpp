// What this consumer (Aravis 0.8.26) does not understand of the document. The document's form is settled, so these
// tests tell users what to expect; one that fails after an update of the consumer is good news.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "client/testing/BuiltApplet.h"
#include "tests/genapi/Consumer.h"

namespace quillon::genapi {
namespace {

class ConsumerLimits : public testing::Test {
protected:
    client::testing::BuiltApplet built;
    Consumer consumer{built.applet};
};

TEST_F(ConsumerLimits, ABoundBelowZeroIsPrintedUnsignedAndSaturates) {
    EXPECT_THAT(built.applet.xml(), testing::HasSubstr("<Min>18446744073709551615</Min>"));
    EXPECT_EQ(consumer.integerMin("FG_DIGIO_OUTPUT"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(consumer.integerMax("FG_DIGIO_OUTPUT"), 3);
}

TEST_F(ConsumerLimits, ABoundBelowZeroMakesACheckingConsumerRefuseEveryValue) {
    consumer.checkRanges();
    EXPECT_EQ(consumer.writeInteger("FG_DIGIO_OUTPUT", 2), refusedByConsumer(ARV_GC_ERROR_OUT_OF_RANGE));
}

TEST_F(ConsumerLimits, MinusOneGoesBothWaysWithoutTheCheck) {
    EXPECT_EQ(consumer.writeInteger("FG_DIGIO_OUTPUT", -1), Done);
    EXPECT_EQ(consumer.writeEntry("FG_TRIGGEROUT_GPO_3_SOURCE", "FG_SIGNAL_GPI_0"), Done);
    std::int64_t levels = 0;
    EXPECT_EQ(consumer.readInteger("FG_DIGIO_OUTPUT", levels), Done);
    EXPECT_EQ(levels, -1);
}

TEST_F(ConsumerLimits, ACountAboveTwoToThe31ReadsNegativeBecauseTheRegisterIsSigned) {
    built.board.setInteger("Device1_Process1_Trigger_Analyzer_Analyzer0_PulseCountSignal_Status", 4294967295);
    std::int64_t count = 0;
    EXPECT_EQ(consumer.readInteger("FG_SIGNAL_ANALYZER_0_PULSE_COUNT", count), Done);
    EXPECT_EQ(count, -1);
    EXPECT_EQ(built.applet.readUnsigned(FG_SIGNAL_ANALYZER_0_PULSE_COUNT), 4294967295U);
}

TEST_F(ConsumerLimits, TheEntryMinusOneIsWrittenButReadsAsNoEntry) {
    EXPECT_EQ(consumer.writeEntry("FG_IMGTRIGGERINSRC", "TRGINSOFTWARE"), Done);
    EXPECT_EQ(built.applet.readInt(FG_IMGTRIGGERINSRC), -1);
    std::int64_t value = 0;
    EXPECT_EQ(consumer.readEnumeration("FG_IMGTRIGGERINSRC", value), Done);
    EXPECT_EQ(value, 4294967295);
    std::optional<std::string> entry = "something";
    EXPECT_EQ(consumer.readEntry("FG_IMGTRIGGERINSRC", entry), Done) << "no error tells of it";
    EXPECT_EQ(entry, std::nullopt);
}

TEST_F(ConsumerLimits, TheEntryMinusOneIsRefusedByACheckingConsumer) {
    consumer.checkRanges();
    EXPECT_EQ(consumer.writeEntry("FG_IMGTRIGGERINSRC", "TRGINSOFTWARE"), refusedByConsumer(ARV_GC_ERROR_OUT_OF_RANGE));
}

TEST_F(ConsumerLimits, StepsAreToldButNotChecked) {
    consumer.checkRanges();
    EXPECT_EQ(consumer.integerStep("FG_WIDTH"), 4);
    EXPECT_EQ(consumer.writeInteger("FG_WIDTH", 1026), refusedByApplet(-7080)) << "it is the applet that refuses";
}

TEST_F(ConsumerLimits, ANumberOfMoreThan32BitsLosesItsUpperHalfWithoutTheCheck) {
    EXPECT_EQ(consumer.writeInteger("FG_TIMEOUT", 99999999999), Done);
    EXPECT_EQ(built.applet.readInt(FG_TIMEOUT), 1215752191);
}

}  // namespace
}  // namespace quillon::genapi
