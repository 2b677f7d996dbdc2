#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class LoadedValues : public StateTest {
protected:
    LoadedValues() { built.board.clearTranscript(); }
};

// Values that handlers refuse, and designs that refuse values.

TEST_F(LoadedValues, ABitShiftFromAFileIsAddedWithItsSign) {
    const auto shiftOf = [this](const char* value) {
        const std::string shifted =
            withValue(withValue(start, "FG_BITALIGNMENT", "2"), "FG_CUSTOM_BIT_SHIFT_RIGHT", value);
        EXPECT_EQ(load(shifted), 0);
        return built.board.integer("Device1_Process0_OutputFormat_DynamicShift_Shift_Value");
    };
    EXPECT_EQ(shiftOf("0"), 8);
    EXPECT_EQ(shiftOf("-1"), 7);
    EXPECT_EQ(shiftOf("-8"), 0);
    EXPECT_EQ(shiftOf("7"), 15);
    EXPECT_EQ(shiftOf("-9"), 15);  // below 0 the design keeps what it had
    EXPECT_EQ(shiftOf("-2147483648"), 15);
    EXPECT_EQ(shiftOf("2147483647"), 15);
}

TEST_F(LoadedValues, ABadValueStaysInItsFieldWhileTheDesignKeepsItsOwn) {
    built.applet.set(FG_LINE_DOWNSCALE, 4);
    built.board.clearTranscript();
    EXPECT_EQ(load(withValue(start, "FG_LINE_DOWNSCALE", "0")), 0);
    EXPECT_EQ(built.applet.lastError(), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_LINE_DOWNSCALE"), "0");
    EXPECT_EQ(lineOf(save(), "FG_LINE_DOWNSCALE"), "FG_LINE_DOWNSCALE=0;");
    EXPECT_THAT(built.board.writes(), Not(Contains(StartsWith("Device1_Process0_Trigger_Trigger_LineTrgDownscaler"))));
    EXPECT_EQ(built.board.integer("Device1_Process0_Trigger_Trigger_LineTrgDownscaler"), 4);
}

TEST_F(LoadedValues, ABadValueHindersNoOther) {
    EXPECT_EQ(load(withValue(other, "FG_LINE_DOWNSCALE", "256")), 0);
    EXPECT_EQ(save(), withValue(other, "FG_LINE_DOWNSCALE", "256"));
}

TEST_F(LoadedValues, ABadSourceOfARouteIsRequestedWhileTheOneInForceIsRead) {
    EXPECT_EQ(load(withValue(start, "FG_TRIGGEROUT_GPO_0_SOURCE", "2100")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGEROUT_GPO_0_SOURCE"), "2002");
    EXPECT_EQ(load(withValue(start, "FG_TRIGGERCAMERA_SOURCE", "2100")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGERCAMERA_SOURCE"), "2100") << "the camera's route has one record only";
}

TEST_F(LoadedValues, ABadCompensationCountIsNotReadSinceTheDesignAnswers) {
    EXPECT_EQ(load(withValue(start, "FG_SHAFTENCODER_COMPENSATION_COUNT", "1048576")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_SHAFTENCODER_COMPENSATION_COUNT"), "0");
}

TEST_F(LoadedValues, ABadGeometryReachesTheDesignWithThePartsThatAreSentTogether) {
    EXPECT_EQ(load(withValue(start, "FG_WIDTH", "6")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_WIDTH"), "6");
    EXPECT_THAT(built.board.writes(), Contains("Device1_Process0_Buffer_0_XLength = 6"));
}

TEST_F(LoadedValues, AGeometryOfZeroIsSurvived) {
    std::string text = start;
    for (const char* key : {"FG_WIDTH", "FG_HEIGHT", "FG_SENSORWIDTH", "FG_SENSORHEIGHT", "FG_PIXELFORMAT",
                            "FG_CAMERASIMULATOR_WIDTH", "FG_CAMERASIMULATOR_HEIGHT", "FG_CAMERASIMULATOR_LINERATE",
                            "FG_CAMERASIMULATOR_FRAMERATE", "FG_PROCESSING_GAMMA", "FG_IMGTRIGGER_ASYNC_HEIGHT"}) {
        text = withValue(text, key, "0");
    }
    for (const char* vantagePoint : {"0", "1", "2", "3"}) {
        for (const char* mode : {"0", "1", "2"}) {
            text = withValue(text, "FG_VANTAGEPOINT", vantagePoint);
            text = withValue(text, "FG_CAMERASIMULATOR_SELECT_MODE", mode);
            EXPECT_EQ(load(text), 0);
            EXPECT_EQ(readAsText(built.applet, "FG_HEIGHT"), "0");
        }
    }
}

TEST_F(LoadedValues, ABadFormatKeepsAlignmentAndShiftFromTheDesign) {
    EXPECT_EQ(load(withValue(start, "FG_FORMAT", "3")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_FORMAT"), "3");
    EXPECT_THAT(built.board.writes(), Not(Contains(StartsWith("Device1_Process0_OutputFormat_"))));
    built.board.clearTranscript();
    EXPECT_EQ(built.applet.setUnsigned(FG_BITALIGNMENT, 0), -6000);
    EXPECT_EQ(built.applet.readUnsigned(FG_BITALIGNMENT), 1U);
    EXPECT_THAT(built.board.writes(), IsEmpty());
}

TEST_F(LoadedValues, AnUnknownSpeedOfTheSimulatorStaysAndItsRatesCanNotBeSaved) {
    EXPECT_EQ(load(withValue(start, "FG_CAMERASIMULATOR_SELECT_MODE", "7")), 0);
    EXPECT_EQ(save(), withoutLine(withoutLine(withValue(start, "FG_CAMERASIMULATOR_SELECT_MODE", "7"),
                                              "FG_CAMERASIMULATOR_LINERATE"),
                                  "FG_CAMERASIMULATOR_FRAMERATE"));
}

TEST_F(LoadedValues, AFailedAccessIsNoFailureAndKeepsTheFilesValue) {
    const std::size_t accesses = goldenAccesses("load_accesses.txt").size();
    built.board.record(false);
    for (std::size_t i = 0; i < accesses; ++i) {
        ASSERT_EQ(load(start), 0);
        built.board.planFaultAt(static_cast<unsigned>(i + 1), -7);
        ASSERT_EQ(load(other), 0) << i;
        ASSERT_EQ(built.applet.lastError(), 0) << i;
        built.board.clearFaults();
        const std::string after = save();
        for (const ConfigurationKey& key : ConfigurationKeys) {
            if (key.source == Source::Field) {
                ASSERT_EQ(lineOf(after, std::string(key.name)), lineOf(other, std::string(key.name))) << i;
            }
        }
    }
}

TEST_F(LoadedValues, ADesignThatRefusesEverythingIsNoFailure) {
    built.board.planFaultAt(0, -7);
    EXPECT_EQ(load(other), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_WIDTH"), "4096");
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGEROUT_GPO_0_SOURCE"), "2002");
}

// What follows from several keys together.

TEST_F(LoadedValues, TheProcessingValuesMakeTheTable) {
    std::string text = withValue(start, "FG_PROCESSING_INVERT", "1");
    text = withValue(text, "FG_PROCESSING_GAIN", "2");
    EXPECT_EQ(load(text), 0);
    for (const char* table : {"R", "G", "B"}) {
        const std::string name = std::string("Device1_Process0_LookupTable_") + table + "_LUTcontent";
        EXPECT_EQ(built.board.element(name, 0), 65535);
        EXPECT_EQ(built.board.element(name, 4096), 32765);
        EXPECT_EQ(built.board.element(name, 16383), 0);
    }
}

TEST_F(LoadedValues, ACustomTableIsReadFromItsFile) {
    std::string lut = "# Lut data file v1.1\n";
    const char* colours[] = {"red", "green", "blue"};
    for (int id = 0; id < 3; ++id) {
        lut += "\n\n\n[" + std::string(colours[id]) + "]\n\nid=" + std::to_string(id) +
               ";\nnrOfElements=2;\nformat=0;\nnumber=0;\n0," + std::to_string(100 + id) + ";\n1,200;\n";
    }
    std::string text = withValue(start, "FG_LUT_TYPE", "0");
    text = withValue(text, "FG_LUT_CUSTOM_FILE", "'" + write("table.lut", lut) + "'");
    EXPECT_EQ(load(text), 0);
    EXPECT_EQ(built.board.element("Device1_Process0_LookupTable_R_LUTcontent", 0), 102);
    EXPECT_EQ(built.board.element("Device1_Process0_LookupTable_B_LUTcontent", 0), 102);
    EXPECT_EQ(built.board.element("Device1_Process0_LookupTable_B_LUTcontent", 2), 8);
}

TEST_F(LoadedValues, FixedLevelsFollowTheOutputKeyUnlessItIsMinusOne) {
    EXPECT_EQ(load(withValue(start, "FG_DIGIO_OUTPUT", "2")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGEROUT_GPO_3_SOURCE"), "4");
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGEROUT_GPO_7_SOURCE"), "5");
    EXPECT_EQ(load(withValue(withValue(start, "FG_DIGIO_OUTPUT", "-1"), "FG_TRIGGEROUT_GPO_3_SOURCE", "1001")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_TRIGGEROUT_GPO_3_SOURCE"), "1001");
    EXPECT_EQ(readAsText(built.applet, "FG_DIGIO_OUTPUT"), "-1");
}

TEST_F(LoadedValues, TheSimulatorsWidthWaitsForItsNextWrite) {
    EXPECT_EQ(load(withValue(start, "FG_CAMERASIMULATOR_WIDTH", "2048")), 0);
    EXPECT_EQ(readAsText(built.applet, "FG_CAMERASIMULATOR_WIDTH"), "1024");
    EXPECT_EQ(lineOf(save(), "FG_CAMERASIMULATOR_WIDTH"), "FG_CAMERASIMULATOR_WIDTH=2048;");
}

TEST_F(LoadedValues, AChangeIntoTheFrameRateModeKeepsTheRateThatRanBefore) {
    std::string text = withValue(start, "FG_CAMERASIMULATOR_SELECT_MODE", "2");
    EXPECT_EQ(load(withValue(text, "FG_CAMERASIMULATOR_FRAMERATE", "25")), 0);
    EXPECT_NEAR(built.applet.readDouble(FG_CAMERASIMULATOR_FRAMERATE), 10.0, 0.001);
}

TEST_F(LoadedValues, LiveValuesOfTheFileHaveNoEffect) {
    std::string text = start;
    for (const ConfigurationKey& key : ConfigurationKeys) {
        if (key.load == state::Load::NotRead) {
            text = withValue(text, std::string(key.name), "99");
        }
    }
    EXPECT_EQ(load(text), 0);
    EXPECT_EQ(save(), start);
}

TEST_F(LoadedValues, EachLoadClearsTheAnalyzers) {
    EXPECT_EQ(load(start), 0);
    EXPECT_THAT(built.board.writes(), ::testing::IsSupersetOf({"Device1_Process1_Trigger_Analyzer_Clear_Value = 1",
                                                               "Device1_Process1_Trigger_Analyzer_Clear_Value = 0"}));
}

TEST_F(LoadedValues, ALongPathIsCutWhereItsLineIs) {
    const std::string longPath(300, 'p');
    EXPECT_EQ(load(withValue(start, "FG_LUT_CUSTOM_FILE", "'" + longPath + "'")), 0);
    // 255 characters less those of FG_LUT_CUSTOM_FILE='
    EXPECT_EQ(readAsText(built.applet, "FG_LUT_CUSTOM_FILE"), std::string(235, 'p'));
}

}  // namespace
}  // namespace quillon::state
