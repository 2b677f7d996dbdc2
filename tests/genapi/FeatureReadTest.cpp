// Every feature read through the consumer gives what a direct read gives, and asks the design for exactly the same.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "client/testing/BuiltApplet.h"
#include "tests/genapi/Features.h"

namespace quillon::genapi {
namespace {

using client::testing::BuiltApplet;
using testing::ElementsAre;

/// What the hardware shows, none of it 0.
void showSomething(client::SoftBoard& board) {
    board.setDouble("Device1_Process0_BoardStatus_FpgaTemperature", 54.625);
    board.setDouble("Device1_Process0_BoardStatus_FpgaVccInt", 0.953125);
    board.setDouble("Device1_Process0_BoardStatus_FpgaVccAux", 1.8125);
    board.setDouble("Device1_Process0_BoardStatus_FpgaVccBram", 0.9375);
    board.setInteger("Device1_Process0_BoardStatus_PcieCurrentLinkWidth", 4);
    board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_1_FillLevel", 61);
    board.setInteger("Device1_Process1_Trigger_Inputs_InputStatus_Status", 0xA5F);
    board.setDouble("Device1_Process1_Trigger_Analyzer_Analyzer0_PeriodCurrent", 97.656);
    board.setInteger("Device1_Process1_Trigger_Analyzer_Analyzer0_PulseCountSignal_Status", 123456);
    board.setInteger("Device1_Process0_Trigger_Trigger_ImgTrgIsBusy", 1);
}

class FeatureRead : public testing::Test {
protected:
    FeatureRead() {
        showSomething(driven.board);
        showSomething(direct.board);
        driven.board.clearTranscript();
        direct.board.clearTranscript();
    }

    void compareInteger(const Feature& feature) {
        std::int64_t seen = 0;
        EXPECT_EQ(consumer.readInteger(feature.name, seen), Done);
        std::int32_t expected = 0;
        EXPECT_EQ(direct.applet.getInt(feature.id(), expected), 0);
        EXPECT_EQ(seen, expected);
    }

    void compareEnumeration(const Feature& feature) {
        std::int64_t seen = 0;
        EXPECT_EQ(consumer.readEnumeration(feature.name, seen), Done);
        std::int32_t expected = 0;
        EXPECT_EQ(direct.applet.getInt(feature.id(), expected), 0);
        EXPECT_EQ(seen, expected);
    }

    void compareFloat(const Feature& feature) {
        double seen = 0;
        EXPECT_EQ(consumer.readFloat(feature.name, seen), Done);
        double expected = 0;
        EXPECT_EQ(direct.applet.getDouble(feature.id(), expected), 0);
        EXPECT_EQ(seen, expected);
    }

    void compareString(const Feature& feature) {
        std::string seen;
        EXPECT_EQ(consumer.readString(feature.name, seen), Done);
        std::string expected;
        EXPECT_EQ(direct.applet.getText(feature.id(), expected), 0);
        EXPECT_EQ(seen, expected);
    }

    void compare(const Feature& feature) {
        switch (feature.nodeClass) {
            case NodeClass::Integer: return compareInteger(feature);
            case NodeClass::Enumeration: return compareEnumeration(feature);
            case NodeClass::Float: return compareFloat(feature);
            case NodeClass::String: return compareString(feature);
            default: FAIL() << feature.name << " has no value";
        }
    }

    BuiltApplet driven;
    BuiltApplet direct;
    Consumer consumer{driven.applet};
};

TEST_F(FeatureRead, EveryFeatureReadsAsADirectReadDoesAndAsksTheDesignForTheSame) {
    for (const Feature& feature : features()) {
        SCOPED_TRACE(feature.name);
        compare(feature);
        EXPECT_EQ(driven.board.accesses(), direct.board.accesses());
        driven.board.clearTranscript();
        direct.board.clearTranscript();
    }
}

TEST_F(FeatureRead, ValuesOfTheHardwareArrive) {
    double temperature = 0;
    EXPECT_EQ(consumer.readFloat("FG_SYSTEMMONITOR_FPGA_TEMPERATURE", temperature), Done);
    EXPECT_EQ(temperature, 54.625);
    std::int64_t number = 0;
    EXPECT_EQ(consumer.readInteger("FG_FILLLEVEL", number), Done);
    EXPECT_EQ(number, 61);
    EXPECT_EQ(consumer.readInteger("FG_DIGIO_INPUT", number), Done);
    EXPECT_EQ(number, 0xA5F);
    std::optional<std::string> entry;
    EXPECT_EQ(consumer.readEntry("FG_IMGTRIGGER_IS_BUSY", entry), Done);
    EXPECT_EQ(entry, "IS_BUSY");
    std::string text;
    EXPECT_EQ(consumer.readString("FG_TAV_FILE", text), Done);
    EXPECT_EQ(text, "Quillon.tav");
}

TEST_F(FeatureRead, ReadingTwiceAsksTwice) {
    std::int64_t busy = 0;
    EXPECT_EQ(consumer.readEnumeration("FG_IMGTRIGGER_IS_BUSY", busy), Done);
    driven.board.setInteger("Device1_Process0_Trigger_Trigger_ImgTrgIsBusy", 0);
    EXPECT_EQ(consumer.readEnumeration("FG_IMGTRIGGER_IS_BUSY", busy), Done);
    EXPECT_EQ(busy, 0);
    EXPECT_THAT(driven.board.accesses(), ElementsAre("Device1_Process0_Trigger_Trigger_ImgTrgIsBusy ? 1",
                                                     "Device1_Process0_Trigger_Trigger_ImgTrgIsBusy ? 0"));
}

}  // namespace
}  // namespace quillon::genapi
