#include <algorithm>
#include <sstream>
#include <string_view>

#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr int NotWritten = -5001;

class Save : public StateTest {};

TEST_F(Save, TheStartUpStateIsThisFile) {
    EXPECT_EQ(save(), start);
    EXPECT_EQ(built.applet.lastError(), 0);
}

TEST_F(Save, TheKeysOfAFileAreThese114OfWhich99AreRead) {
    std::vector<std::string_view> names;
    for (const ConfigurationKey& key : ConfigurationKeys) {
        names.push_back(key.name);
    }
    std::vector<std::string> saved;
    std::istringstream text(save());
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("FG_")) {
            saved.push_back(line.substr(0, line.find('=')));
        }
    }
    EXPECT_THAT(saved, ::testing::ElementsAreArray(names));
    EXPECT_EQ(names.size(), 114U);
    EXPECT_EQ(std::ranges::count(ConfigurationKeys, Load::NotRead, &ConfigurationKey::load), 114 - 99);
}

TEST_F(Save, AnExistingFileIsReplaced) {
    write("saved.mcf", std::string(100000, 'x'));
    EXPECT_EQ(save(), start);
}

TEST_F(Save, NothingIsWrittenToTheDesign) {
    built.board.clearTranscript();
    save();
    EXPECT_THAT(built.board.writes(), ::testing::IsEmpty());
}

TEST_F(Save, TheDesignIsReadForTheseKeysInTheOrderOfTheFile) {
    built.board.clearTranscript();
    save();
    EXPECT_THAT(
        built.board.accesses(),
        ::testing::ElementsAre("Device1_Process0_Debug_CameraInput_OperationMode ? 0",
                               "Device1_Process0_Debug_CameraInput_DebugFile ? ",
                               "Device1_Process0_CameraSimulator_PixelFrequency_SequenceLength_ImageWidth ? 12207",
                               "Device1_Process0_CameraSimulator_PixelFrequency_SequenceLength_ImageWidth ? 12207",
                               "Device1_Process0_Trigger_Trigger_EncoderCompensationCount ? 0",
                               "Device1_Process1_Trigger_Inputs_InputStatus_Status ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer0_PeriodCurrent ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer0_PeriodMax ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer0_PeriodMin ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer0_PulseCountSignal_Status ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer1_PeriodCurrent ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer1_PeriodMax ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer1_PeriodMin ? 0",
                               "Device1_Process1_Trigger_Analyzer_Analyzer1_PulseCountSignal_Status ? 0",
                               "Device1_Process1_Trigger_Analyzer_Difference_Status ? 0"));
}

TEST_F(Save, DoublesKeepTwelveDigitsAndLoseTrailingZeros) {
    EXPECT_EQ(built.applet.setDouble(FG_LINEPERIODE, 512.5), 0);
    EXPECT_EQ(built.applet.setDouble(FG_SCALINGFACTOR_RED, 1.0 / 3.0), 0);
    EXPECT_EQ(built.applet.setDouble(FG_PROCESSING_OFFSET, 0.00001), 0);
    const std::string text = save();
    EXPECT_EQ(lineOf(text, "FG_LINEPERIODE"), "FG_LINEPERIODE=512.5;");
    EXPECT_EQ(lineOf(text, "FG_SCALINGFACTOR_RED"), "FG_SCALINGFACTOR_RED=0.333333333333;");
    EXPECT_EQ(lineOf(text, "FG_PROCESSING_OFFSET"), "FG_PROCESSING_OFFSET=1e-05;");
}

TEST_F(Save, TextsStandInQuotesAsTheyAre) {
    EXPECT_EQ(built.applet.setText(FG_LUT_CUSTOM_FILE, "/tables/it's 50%.lut"), 0);
    EXPECT_EQ(lineOf(save(), "FG_LUT_CUSTOM_FILE"), "FG_LUT_CUSTOM_FILE='/tables/it's 50%.lut';");
}

TEST_F(Save, NegativeNumbersHaveASign) {
    EXPECT_EQ(built.applet.setInt(FG_IMGTRIGGERINSRC, -1), 0);
    EXPECT_EQ(built.applet.setInt(FG_TRIGGEROUT_GPO_3_SOURCE, 1001), 0);
    const std::string text = save();
    EXPECT_EQ(lineOf(text, "FG_IMGTRIGGERINSRC"), "FG_IMGTRIGGERINSRC=-1;");
    EXPECT_EQ(lineOf(text, "FG_DIGIO_OUTPUT"), "FG_DIGIO_OUTPUT=-1;");
}

TEST_F(Save, LiveValuesAreThoseOfTheMoment) {
    built.board.setDouble("Device1_Process1_Trigger_Analyzer_Analyzer0_PeriodMax", 12.344);
    built.board.setInteger("Device1_Process1_Trigger_Analyzer_Analyzer1_PulseCountSignal_Status", 77);
    built.board.setInteger("Device1_Process0_Trigger_Trigger_EncoderCompensationCount", 4711);
    built.board.setText("Device1_Process0_Debug_CameraInput_DebugFile", "/images/a.tif");
    built.board.setInteger("Device1_Process0_Debug_CameraInput_OperationMode", 1);
    const std::string text = save();
    EXPECT_EQ(lineOf(text, "FG_SIGNAL_ANALYZER_0_PERIOD_MAX"), "FG_SIGNAL_ANALYZER_0_PERIOD_MAX=12.344;");
    EXPECT_EQ(lineOf(text, "FG_SIGNAL_ANALYZER_1_PULSE_COUNT"), "FG_SIGNAL_ANALYZER_1_PULSE_COUNT=77;");
    EXPECT_EQ(lineOf(text, "FG_SHAFTENCODER_COMPENSATION_COUNT"), "FG_SHAFTENCODER_COMPENSATION_COUNT=4711;");
    EXPECT_EQ(lineOf(text, "FG_DEBUGFILE"), "FG_DEBUGFILE='/images/a.tif';");
    EXPECT_EQ(lineOf(text, "FG_DEBUGINENABLE"), "FG_DEBUGINENABLE=1;");
}

TEST_F(Save, ThePulseCountDifferenceHas33BitsWithASign) {
    built.board.setInteger("Device1_Process1_Trigger_Analyzer_Difference_Status", 8589934591);
    EXPECT_EQ(lineOf(save(), "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE"),
              "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE=-1;");
    built.board.setInteger("Device1_Process1_Trigger_Analyzer_Difference_Status", 4294967295);
    EXPECT_EQ(lineOf(save(), "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE"),
              "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE=4294967295;");
}

TEST_F(Save, SimulatorSizesAreThoseAskedForAndRatesThoseOfTheDesign) {
    EXPECT_EQ(built.applet.setInt(FG_CAMERASIMULATOR_SELECT_MODE, 0), 0);
    EXPECT_EQ(built.applet.setInt(FG_CAMERASIMULATOR_WIDTH, 33), 0);
    EXPECT_EQ(built.applet.setInt(FG_CAMERASIMULATOR_LINE_GAP, 1), 0);
    EXPECT_EQ(built.applet.setDouble(FG_CAMERASIMULATOR_PIXEL_FREQUENCY, 41.0), 0);
    const std::string text = save();
    EXPECT_EQ(lineOf(text, "FG_CAMERASIMULATOR_WIDTH"), "FG_CAMERASIMULATOR_WIDTH=33;");
    EXPECT_EQ(lineOf(text, "FG_CAMERASIMULATOR_LINE_GAP"), "FG_CAMERASIMULATOR_LINE_GAP=1;");
    EXPECT_EQ(lineOf(text, "FG_CAMERASIMULATOR_PIXEL_FREQUENCY"), "FG_CAMERASIMULATOR_PIXEL_FREQUENCY=42;");
    EXPECT_EQ(lineOf(text, "FG_CAMERASIMULATOR_LINERATE"), "FG_CAMERASIMULATOR_LINERATE=437500;");
    EXPECT_EQ(lineOf(text, "FG_CAMERASIMULATOR_FRAMERATE"), "FG_CAMERASIMULATOR_FRAMERATE=427.24609375;");
    EXPECT_EQ(lineOf(text, "FG_CAMERASIMULATOR_ACTIVE"), "FG_CAMERASIMULATOR_ACTIVE=21;");
    EXPECT_EQ(lineOf(text, "FG_CAMERASIMULATOR_PASSIVE"), "FG_CAMERASIMULATOR_PASSIVE=1979;");
}

TEST_F(Save, AFailedReadLeavesItsKeyOutAndNothingElse) {
    built.board.clearTranscript();
    save();
    const std::size_t reads = built.board.accesses().size();
    const std::vector<std::string> keysWithAnAccess = {"FG_DEBUGINENABLE",
                                                       "FG_DEBUGFILE",
                                                       "FG_CAMERASIMULATOR_LINERATE",
                                                       "FG_CAMERASIMULATOR_FRAMERATE",
                                                       "FG_SHAFTENCODER_COMPENSATION_COUNT",
                                                       "FG_DIGIO_INPUT",
                                                       "FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT",
                                                       "FG_SIGNAL_ANALYZER_0_PERIOD_MAX",
                                                       "FG_SIGNAL_ANALYZER_0_PERIOD_MIN",
                                                       "FG_SIGNAL_ANALYZER_0_PULSE_COUNT",
                                                       "FG_SIGNAL_ANALYZER_1_PERIOD_CURRENT",
                                                       "FG_SIGNAL_ANALYZER_1_PERIOD_MAX",
                                                       "FG_SIGNAL_ANALYZER_1_PERIOD_MIN",
                                                       "FG_SIGNAL_ANALYZER_1_PULSE_COUNT",
                                                       "FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE"};
    ASSERT_EQ(reads, keysWithAnAccess.size());
    for (std::size_t i = 0; i < reads; ++i) {
        built.board.planFaultAt(static_cast<unsigned>(i + 1), -7);
        EXPECT_EQ(save(), withoutLine(start, keysWithAnAccess[i]));
        EXPECT_EQ(built.applet.lastError(), 0);
    }
}

TEST_F(Save, AFileThatLacksAKeyAfterAFailedReadCanNotBeLoaded) {
    built.board.planFault("Device1_Process0_Trigger_Trigger_EncoderCompensationCount", client::Direction::Read, 1, -7);
    EXPECT_EQ(load(save()), -5000);
}

TEST_F(Save, ASoftwareTriggersPulseIsNotInTheFile) {
    EXPECT_THAT(save(), Not(HasSubstr("FG_SENDSOFTWARETRIGGER")));
}

TEST_F(Save, AnotherExtensionIsRefused) {
    EXPECT_EQ(built.applet.saveConfig(path("state.txt")), NotWritten);
    EXPECT_EQ(built.applet.lastError(), NotWritten);
    EXPECT_FALSE(std::filesystem::exists(path("state.txt")));
}

TEST_F(Save, TheExtensionMayStandAnywhereInTheName) {
    EXPECT_EQ(built.applet.saveConfig(path("state.mcf.bak")), 0);
    EXPECT_EQ(bytesOf("state.mcf.bak"), start);
}

TEST_F(Save, WhatCanNotBeCreatedIsRefused) {
    std::filesystem::create_directory(path("folder.mcf"));
    for (const std::string& name : {path("no/such/folder/state.mcf"), path("folder.mcf"), std::string()}) {
        built.applet.set(FG_WIDTH, 1024);
        EXPECT_EQ(built.applet.saveConfig(name), NotWritten) << name;
        EXPECT_EQ(built.applet.lastError(), NotWritten) << name;
    }
}

TEST_F(Save, ANullNameIsRefused) {
    EXPECT_EQ(built.applet.functions().Fg_saveConfig(built.applet.handle(), nullptr), NotWritten);
    EXPECT_EQ(built.applet.lastError(), NotWritten);
}

}  // namespace
}  // namespace quillon::state
