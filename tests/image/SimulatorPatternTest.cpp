// The pattern, its source and its trigger: parameters that are one or two writes each.

#include "tests/image/Simulator.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct SimulatorPattern : ::testing::Test, Simulator {
    struct Row {
        std::uint32_t value;
        std::vector<std::string> writes;
    };
    void expectRows(int id, const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.value);
            forget();
            EXPECT_EQ(set(id, row.value), 0);
            EXPECT_EQ(accesses(), row.writes);
            EXPECT_EQ(get<std::uint32_t>(id), row.value);
        }
    }
    void expectRefused(int id, const std::vector<std::uint32_t>& values) {
        const auto before = get<std::uint32_t>(id);
        forget();
        for (const std::uint32_t value : values) {
            EXPECT_EQ(set(id, value), -6000) << value;
        }
        EXPECT_THAT(accesses(), IsEmpty());
        EXPECT_EQ(get<std::uint32_t>(id), before);
    }
};

TEST_F(SimulatorPattern, TheSourceIsTheCameraOrTheSimulator) {
    expectRows(FG_CAMERASIMULATOR_ENABLE, {{1, {"Enable_SelectSource = 1"}}, {0, {"Enable_SelectSource = 0"}}});
    expectRefused(FG_CAMERASIMULATOR_ENABLE, {2, 4294967295U});
}

TEST_F(SimulatorPattern, ThePatternIsAGradientInXInYOrInBoth) {
    expectRows(FG_CAMERASIMULATOR_PATTERN, {{1, {"EnableX_Enable_Value = 1", "Y_Divisor = 1"}},
                                            {2, {"EnableX_Enable_Value = 0", "Y_Divisor = 256"}},
                                            {3, {"EnableX_Enable_Value = 1", "Y_Divisor = 256"}}});
    expectRefused(FG_CAMERASIMULATOR_PATTERN, {0, 4});
}

TEST_F(SimulatorPattern, ItsOffsetIsAPixelValue) {
    expectRows(FG_CAMERASIMULATOR_PATTERN_OFFSET, {{255, {"Offset_Value = 255"}}, {0, {"Offset_Value = 0"}}});
    expectRefused(FG_CAMERASIMULATOR_PATTERN_OFFSET, {256, 4294967295U});
}

TEST_F(SimulatorPattern, ItRollsOrStands) {
    expectRows(FG_CAMERASIMULATOR_ROLL, {{0, {"Frame_Divisor = 1"}}, {1, {"Frame_Divisor = 256"}}});
    expectRefused(FG_CAMERASIMULATOR_ROLL, {2});
}

TEST_F(SimulatorPattern, ItRunsFreelyOrByLineOrByFrame) {
    expectRows(FG_CAMERASIMULATOR_TRIGGER_MODE,
               {{8, {"TriggerValve_FreeRun_Select = 0", "TriggerValve_TriggerValve_Mode = 1"}},
                {9, {"TriggerValve_FreeRun_Select = 0", "TriggerValve_TriggerValve_Mode = 2"}},
                {0, {"TriggerValve_FreeRun_Select = 1", "TriggerValve_TriggerValve_Mode = 2"}}});
    expectRefused(FG_CAMERASIMULATOR_TRIGGER_MODE, {1, 7, 10, 4294967295U});
}

TEST(SimulatorPatternFailure, RestoresTheValue) {
    expectEachFailureRestores(asStarted, FG_CAMERASIMULATOR_ENABLE, 1, {"CameraSimulator_Enable_SelectSource = 1"});
    expectEachFailureRestores(asStarted, FG_CAMERASIMULATOR_PATTERN, 2,
                              {"CameraSimulator_EnableX_Enable_Value = 0", "CameraSimulator_Y_Divisor = 256"});
    expectEachFailureRestores(asStarted, FG_CAMERASIMULATOR_PATTERN_OFFSET, 9, {"CameraSimulator_Offset_Value = 9"});
    expectEachFailureRestores(asStarted, FG_CAMERASIMULATOR_ROLL, 0, {"CameraSimulator_Frame_Divisor = 1"});
    expectEachFailureRestores(
        asStarted, FG_CAMERASIMULATOR_TRIGGER_MODE, 8,
        {"CameraSimulator_TriggerValve_FreeRun_Select = 0", "CameraSimulator_TriggerValve_TriggerValve_Mode = 1"});
}

TEST(SimulatorStart, SendsPatternThenSpeedThenTrigger) {
    const client::testing::BuiltApplet built;
    std::vector<std::string> lines;
    for (std::string line : built.board.writes()) {
        const std::string prefix = "Device1_Process0_CameraSimulator_";
        if (line.starts_with(prefix)) {
            lines.push_back(line.substr(prefix.size()));
        }
    }
    EXPECT_THAT(
        lines, ElementsAre("Enable_SelectSource = 0", "EnableX_Enable_Value = 1", "Y_Divisor = 256", "Offset_Value = 0",
                           "Frame_Divisor = 256", "ControlPixelClock_Mode = 1", "Size_ImageWidth = 32",
                           "LineGap_Number = 32", "Size_ImageHeight = 1024", "FrameGap_Number = 1024",
                           "PixelFrequency_SequenceLength_ImageWidth = 12207", "PixelFrequency_ActivePixel_Number = 1",
                           "Size_ImageWidth = 32", "LineGap_Number = 32", "TriggerValve_FreeRun_Select = 1",
                           "TriggerValve_TriggerValve_Mode = 2"));
}

}  // namespace
}  // namespace quillon::image_test
