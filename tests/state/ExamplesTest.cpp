#include <algorithm>
#include <fstream>
#include <iterator>

#include "tests/state/StateTest.h"

namespace quillon::state {
namespace {

using ::testing::IsSupersetOf;

const std::filesystem::path ExamplesFolder = STATE_EXAMPLES_FOLDER;

std::string textOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class Examples : public StateTest {
protected:
    void loadExample(const std::string& name) {
        built.board.clearTranscript();
        ASSERT_EQ(built.applet.loadConfig(ExamplesFolder / name), 0);
    }
};

TEST_F(Examples, FreeRunning4kMakesLinesByItself) {
    loadExample("free_running_4k.mcf");
    EXPECT_THAT(built.board.writes(),
                IsSupersetOf({"Device1_Process0_Buffer_0_XLength = 4096", "Device1_Process0_Buffer_0_YLength = 2048",
                              "Device1_Process0_Trigger_Trigger_LineTriggerMode = 0",
                              "Device1_Process0_Trigger_Trigger_ExsyncPeriod = 50",
                              "Device1_Process0_Trigger_Trigger_ExsyncExposure = 40",
                              "Device1_Process0_Trigger_Trigger_ImgTriggerMode = 0"}));
    EXPECT_EQ(readAsText(built.applet, "FG_WIDTH"), "4096");
    EXPECT_EQ(readAsText(built.applet, "FG_LINEPERIODE"), "50");
}

TEST_F(Examples, ShaftEncoderConveyorWaitsForTheEncoderAndTheLightBarrier) {
    loadExample("shaft_encoder_conveyor.mcf");
    EXPECT_THAT(built.board.writes(),
                IsSupersetOf({"Device1_Process0_Buffer_0_YLength = 6000",
                              "Device1_Process0_Trigger_Trigger_LineTriggerMode = 1",
                              "Device1_Process0_Trigger_InputSignal_LineTrgInSourceA_Input_Select = 0",
                              "Device1_Process0_Trigger_InputSignal_LineTrgInSourceB_Input_Select = 1",
                              "Device1_Process0_Trigger_Trigger_LineTrgDownscaler = 4",
                              "Device1_Process0_Trigger_Trigger_EncoderABMode = 3",
                              "Device1_Process0_Trigger_Trigger_EncoderCompensation = 1",
                              "Device1_Process0_Trigger_Trigger_ImgTriggerMode = 1",
                              "Device1_Process0_Trigger_InputSignal_ImgTrgInSource_Input_Select = 2",
                              "Device1_Process0_Trigger_Trigger_ImgTrgDelay = 250",
                              "Device1_Process1_Trigger_Analyzer_Analyzer0_Select_SelectSignal_Select = 21"}));
}

TEST_F(Examples, CameraSimulatorMakesFiftyFramesASecond) {
    loadExample("camera_simulator_50_frames.mcf");
    EXPECT_DOUBLE_EQ(built.applet.readDouble(FG_CAMERASIMULATOR_FRAMERATE), 50.0);
    EXPECT_THAT(built.board.writes(), IsSupersetOf({"Device1_Process0_CameraSimulator_Enable_SelectSource = 1",
                                                    "Device1_Process0_CameraSimulator_FrameGap_Number = 1000",
                                                    "Device1_Process0_Buffer_0_YLength = 1000"}));
    EXPECT_EQ(readAsText(built.applet, "FG_CAMSTATUS"), "1");
}

/// Each file of the folder, so that a new one is held to the same.
class EachExample : public StateTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(EachExample, IsSavedAgainToTheByte) {
    ASSERT_EQ(built.applet.loadConfig(ExamplesFolder / GetParam()), 0);
    EXPECT_EQ(save(), textOf(ExamplesFolder / GetParam()));
}

TEST_P(EachExample, HoldsNoValueThatAWriteWouldRefuse) {
    ASSERT_EQ(built.applet.loadConfig(ExamplesFolder / GetParam()), 0);
    for (const ConfigurationKey& key : ConfigurationKeys) {
        if (key.load != Load::Applied) {
            continue;
        }
        const PublicParameter* parameter = findPublicParameter(key.name);
        ASSERT_NE(parameter, nullptr) << key.name;
        const int id = parameter->id;
        if (parameter->kind == ParameterKind::Double) {
            EXPECT_EQ(built.applet.setDouble(id, built.applet.readDouble(id)), 0) << key.name;
        } else if (parameter->kind == ParameterKind::Int) {
            EXPECT_EQ(built.applet.setInt(id, built.applet.readInt(id)), 0) << key.name;
        }
    }
}

TEST_P(EachExample, IsToldOfInTheReadme) {
    EXPECT_THAT(textOf(ExamplesFolder / "README.md"), ::testing::HasSubstr("`" + GetParam() + "`"));
}

std::vector<std::string> exampleFiles() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ExamplesFolder)) {
        if (entry.path().extension() == ".mcf") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

INSTANTIATE_TEST_SUITE_P(Files, EachExample, ::testing::ValuesIn(exampleFiles()),
                         [](const auto& example) { return std::filesystem::path(example.param).stem().string(); });

}  // namespace
}  // namespace quillon::state
