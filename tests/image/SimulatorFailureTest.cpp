// What a failing design does to a change of the simulator's timing. Fields that follow from the change and design
// writes that have gone out stay; the value that was asked for goes back.

#include <fstream>

#include "tests/files/TemporaryFolder.h"
#include "tests/image/Simulator.h"

namespace quillon::image_test {
namespace {

using client::Direction;
using ::testing::ElementsAre;

const std::string Sequence = "CameraSimulator_PixelFrequency_SequenceLength_ImageWidth";
const std::string Active = "CameraSimulator_PixelFrequency_ActivePixel_Number";
const std::string Repeat = "CameraSimulator_PixelFrequency_RepeatPat_Divisor";
const std::string ImageWidth = "CameraSimulator_Size_ImageWidth", LineGap = "CameraSimulator_LineGap_Number";
const std::string ImageHeight = "CameraSimulator_Size_ImageHeight", FrameGap = "CameraSimulator_FrameGap_Number";

const std::string SequenceParameter = "Device1_Process0_" + Sequence;
const std::string ActiveParameter = "Device1_Process0_" + Active;

std::function<void(ImagePath&)> inMode(int mode) {
    return [mode](ImagePath& path) { ASSERT_EQ(path.set(FG_CAMERASIMULATOR_SELECT_MODE, mode), 0); };
}

/// The fixture of the tests that look at what is remembered and not at what the design runs with: a saved configuration
/// tells it.
struct SimulatorFailure : TemporaryFolder {
    std::string remembered(ImagePath& path, const std::string& key) {
        const std::string file = this->path("state.mcf");
        EXPECT_EQ(path.applet.saveConfig(file), 0);
        std::ifstream stream(file);
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with(key + "=")) {
                return line;
            }
        }
        return "no line for " + key;
    }
    /// A size goes back to what it was, and nothing that is published has changed.
    template <class Value>
    void expectRestored(const std::function<void(ImagePath&)>& prepare, int id, const std::string& key, Value value,
                        const std::vector<std::string>& accesses) {
        ImagePath untouched;
        prepare(untouched);
        const std::string before = remembered(untouched, key);
        const auto published = untouched.published();
        expectEachFailure(prepare, id, value, accesses, [&](ImagePath& path) {
            EXPECT_EQ(path.published(), published);
            EXPECT_EQ(remembered(path, key), before);
        });
    }
};

TEST_F(SimulatorFailure, InTheWidthRestoresIt) {
    expectRestored(inMode(LineRateMode), FG_CAMERASIMULATOR_WIDTH, "FG_CAMERASIMULATOR_WIDTH", 2048,
                   {Sequence + " ? 12207", ImageWidth + " = 64", LineGap + " = 64"});
    expectRestored(inMode(FrameRateMode), FG_CAMERASIMULATOR_WIDTH, "FG_CAMERASIMULATOR_WIDTH", 2048,
                   {Sequence + " ? 12207", ImageWidth + " = 64", LineGap + " = 64"});
    expectRestored(inMode(PixelFrequencyMode), FG_CAMERASIMULATOR_WIDTH, "FG_CAMERASIMULATOR_WIDTH", 2048,
                   {ImageWidth + " = 64", LineGap + " = 64"});
}

TEST_F(SimulatorFailure, InTheWidthLeavesTheActiveWidth) {
    ImagePath path;
    path.board.planFaultAt(2, DesignFailure);
    EXPECT_EQ(path.set(FG_CAMERASIMULATOR_WIDTH, 2048), DesignFailure);
    EXPECT_EQ(path.get<std::uint32_t>(FG_CAMERASIMULATOR_WIDTH), 2048U);
}

TEST_F(SimulatorFailure, InTheLineGapRestoresIt) {
    expectRestored(inMode(PixelFrequencyMode), FG_CAMERASIMULATOR_LINE_GAP, "FG_CAMERASIMULATOR_LINE_GAP", 64,
                   {ImageWidth + " = 34", LineGap + " = 32"});
    expectRestored(inMode(LineRateMode), FG_CAMERASIMULATOR_LINE_GAP, "FG_CAMERASIMULATOR_LINE_GAP", 64,
                   {Sequence + " ? 12207", ImageWidth + " = 34", LineGap + " = 32"});
}

TEST_F(SimulatorFailure, InTheHeightRestoresIt) {
    expectRestored(inMode(LineRateMode), FG_CAMERASIMULATOR_HEIGHT, "FG_CAMERASIMULATOR_HEIGHT", 512,
                   {ImageHeight + " = 512", FrameGap + " = 512"});
    expectRestored(inMode(FrameRateMode), FG_CAMERASIMULATOR_HEIGHT, "FG_CAMERASIMULATOR_HEIGHT", 512,
                   {Sequence + " ? 12207", ImageHeight + " = 512", FrameGap + " = 512",
                    Sequence + " = 24414",  // 10.0000256 images per second of 512 lines
                    Active + " = 1", ImageWidth + " = 32", LineGap + " = 32", ImageHeight + " = 512",
                    FrameGap + " = 512", Sequence + " ? 24414"});
}

TEST_F(SimulatorFailure, InTheFrameGapRestoresIt) {
    expectRestored(inMode(PixelFrequencyMode), FG_CAMERASIMULATOR_FRAME_GAP, "FG_CAMERASIMULATOR_FRAME_GAP", 7,
                   {ImageHeight + " = 1031", FrameGap + " = 1024"});
}

TEST_F(SimulatorFailure, InThePixelFrequencyRestoresIt) {
    expectEachFailure(inMode(PixelFrequencyMode), FG_CAMERASIMULATOR_PIXEL_FREQUENCY, 100.0,
                      {Active + " = 50", Repeat + " = 40", Sequence + " = 2000", Active + " ? 50"},
                      [](ImagePath& path) {
                          ASSERT_EQ(path.set(FG_CAMERASIMULATOR_SELECT_MODE, PixelFrequencyMode), 0);
                          EXPECT_EQ(path.board.integer(ActiveParameter), 20);  // 40 MHz again
                      });
}

TEST_F(SimulatorFailure, InTheLineRateRestoresIt) {
    expectEachFailure(
        inMode(LineRateMode), FG_CAMERASIMULATOR_LINERATE, 5000.0,
        {Sequence + " = 25000", Active + " = 1", ImageWidth + " = 32", LineGap + " = 32", Sequence + " ? 25000"},
        [](ImagePath& path) {
            ASSERT_EQ(path.set(FG_CAMERASIMULATOR_SELECT_MODE, LineRateMode), 0);
            EXPECT_EQ(path.board.integer(SequenceParameter), 12207);  // 10240 lines per second again
        });
}

TEST_F(SimulatorFailure, InTheFrameRateRestoresIt) {
    expectEachFailure(inMode(FrameRateMode), FG_CAMERASIMULATOR_FRAMERATE, 100.0,
                      {Sequence + " = 1221", Active + " = 1", ImageWidth + " = 32", LineGap + " = 32",
                       ImageHeight + " = 1024", FrameGap + " = 1024", Sequence + " ? 1221"},
                      [](ImagePath& path) {
                          ASSERT_EQ(path.set(FG_CAMERASIMULATOR_HEIGHT, 1024), 0);
                          EXPECT_EQ(path.board.integer(SequenceParameter), 12207);  // 10 images per second again
                      });
}

TEST_F(SimulatorFailure, InTheModeRestoresItAndKeepsTheFlags) {
    const std::vector<std::string> sizes = {"CameraSimulator_ControlPixelClock_Mode = 1", ImageWidth + " = 32",
                                            LineGap + " = 32", ImageHeight + " = 1024", FrameGap + " = 1024"};
    const auto with = [](std::vector<std::string> lines, const std::vector<std::string>& more) {
        lines.insert(lines.end(), more.begin(), more.end());
        return lines;
    };
    expectEachFailure(inMode(LineRateMode), FG_CAMERASIMULATOR_SELECT_MODE, FrameRateMode,
                      with(sizes, {Sequence + " = 12207", Active + " = 1", ImageWidth + " = 32", LineGap + " = 32",
                                   ImageHeight + " = 1024", FrameGap + " = 1024", Sequence + " ? 12207"}),
                      [](ImagePath& path) {
                          EXPECT_EQ(path.get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE), 1U);
                          EXPECT_EQ(path.accessFlags(FG_CAMERASIMULATOR_FRAMERATE), 7);
                          EXPECT_EQ(path.accessFlags(FG_CAMERASIMULATOR_LINERATE), 1);
                          EXPECT_EQ(path.accessFlags(FG_CAMERASIMULATOR_FRAME_GAP), 1);
                      });
    expectEachFailure(inMode(PixelFrequencyMode), FG_CAMERASIMULATOR_SELECT_MODE, LineRateMode,
                      with(sizes, {Sequence + " = 12207", Active + " = 1", ImageWidth + " = 32", LineGap + " = 32",
                                   Sequence + " ? 12207"}),
                      [](ImagePath& path) {
                          EXPECT_EQ(path.get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE), 0U);
                          EXPECT_EQ(path.accessFlags(FG_CAMERASIMULATOR_LINERATE), 7);
                          EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_FRAME_GAP), 64512U);  // not refreshed
                      });
    expectEachFailure(
        inMode(LineRateMode), FG_CAMERASIMULATOR_SELECT_MODE, PixelFrequencyMode,
        {"CameraSimulator_ControlPixelClock_Mode = 0", ImageWidth + " = 32", LineGap + " = 32", ImageHeight + " = 1024",
         FrameGap + " = 1024", Active + " = 20", Repeat + " = 100", Sequence + " = 2000", Active + " ? 20"},
        [](ImagePath& path) {
            EXPECT_EQ(path.get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE), 1U);
            EXPECT_EQ(path.accessFlags(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 7);
            EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_FRAME_GAP), 0U);
        });
}

// Refreshes ----------------------------------------------------------------------------------------------------------

TEST_F(SimulatorFailure, InARefreshCostsOneMaximumAndIsNotReported) {
    ImagePath path;
    ASSERT_EQ(path.set(FG_CAMERASIMULATOR_LINERATE, 1'000'000.0), 0);
    ASSERT_EQ(path.maximum(FG_CAMERASIMULATOR_LINE_GAP), 2944U);                 // 32 * 125 - 32 - 1024
    path.board.planFault(SequenceParameter, Direction::Read, 2, DesignFailure);  // the first checks the width
    EXPECT_EQ(path.set(FG_CAMERASIMULATOR_WIDTH, 64), 0);
    EXPECT_EQ(path.applet.lastError(), 0);
    EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_LINE_GAP), 2944U);
    EXPECT_EQ(path.realMaximum(FG_CAMERASIMULATOR_LINERATE), MaxPixelRate / (64 + 32));  // the later ones still run
    EXPECT_EQ(path.set(FG_CAMERASIMULATOR_WIDTH, 64), 0);
    EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_LINE_GAP), 3904U);  // 32 * 125 - 32 - 64
}

TEST_F(SimulatorFailure, InTheRefreshesOfALineRateCostsOneEach) {
    const struct {
        unsigned failing;
        std::uint64_t width, lineGap;
    } rows[] = {{6, 294920, 2944}, {7, 3968, 293896}};  // the accesses 1 to 5 set the rate
    for (const auto& row : rows) {
        ImagePath path;
        path.board.planFaultAt(row.failing, DesignFailure);
        EXPECT_EQ(path.set(FG_CAMERASIMULATOR_LINERATE, 1'000'000.0), 0);
        EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_WIDTH), row.width);
        EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_LINE_GAP), row.lineGap);
    }
}

TEST_F(SimulatorFailure, InTheRefreshesOfAFrameRateCostsOneEach) {
    const struct {
        unsigned failing;
        std::uint64_t width, height;
    } rows[] = {{8, 294920, 1272}, {9, 1279, 65536}};  // the accesses 1 to 7 set the rate
    for (const auto& row : rows) {
        ImagePath path;
        inMode(FrameRateMode)(path);
        path.board.planFaultAt(row.failing, DesignFailure);
        EXPECT_EQ(path.set(FG_CAMERASIMULATOR_FRAMERATE, 3000.0), 0);
        EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_WIDTH), row.width);
        EXPECT_EQ(path.maximum(FG_CAMERASIMULATOR_HEIGHT), row.height);
    }
}

TEST_F(SimulatorFailure, InARefreshOfAGapOrAHeightIsNotReported) {
    ImagePath path;
    path.board.planFault(SequenceParameter, Direction::Read, 2, DesignFailure);
    EXPECT_EQ(path.set(FG_CAMERASIMULATOR_LINE_GAP, 64), 0);
    path.board.planFault(SequenceParameter, Direction::Read, 1, DesignFailure);
    EXPECT_EQ(path.set(FG_CAMERASIMULATOR_HEIGHT, 512), 0);
    inMode(FrameRateMode)(path);
    path.board.planFault(SequenceParameter, Direction::Read, 1, DesignFailure);
    EXPECT_EQ(path.set(FG_CAMERASIMULATOR_FRAME_GAP, 0), 0);
}

TEST_F(SimulatorFailure, InTheRefreshesOfAModeIsNotReported) {
    const struct {
        int mode;
        unsigned first, last;
    } rows[] = {{LineRateMode, 11, 14}, {FrameRateMode, 13, 16}};
    for (const auto& row : rows) {
        for (unsigned failing = row.first; failing <= row.last; ++failing) {
            ImagePath path;
            path.board.planFaultAt(failing, DesignFailure);
            EXPECT_EQ(path.set(FG_CAMERASIMULATOR_SELECT_MODE, row.mode), 0) << failing;
            EXPECT_EQ(path.get<std::uint32_t>(FG_CAMERASIMULATOR_SELECT_MODE), static_cast<std::uint32_t>(row.mode));
        }
    }
}

// Reads --------------------------------------------------------------------------------------------------------------

TEST_F(SimulatorFailure, InAReadIsItsResult) {
    const struct {
        int mode, id;
    } rows[] = {
        {LineRateMode, FG_CAMERASIMULATOR_LINERATE},       {LineRateMode, FG_CAMERASIMULATOR_FRAMERATE},
        {FrameRateMode, FG_CAMERASIMULATOR_FRAMERATE},     {PixelFrequencyMode, FG_CAMERASIMULATOR_PIXEL_FREQUENCY},
        {PixelFrequencyMode, FG_CAMERASIMULATOR_LINERATE}, {PixelFrequencyMode, FG_CAMERASIMULATOR_FRAMERATE},
        {PixelFrequencyMode, FG_CAMERASIMULATOR_ACTIVE},   {PixelFrequencyMode, FG_CAMERASIMULATOR_PASSIVE}};
    for (const auto& row : rows) {
        ImagePath path;
        inMode(row.mode)(path);
        path.board.planFaultAt(1, DesignFailure);
        double value = 7.0;
        EXPECT_EQ(path.applet.getDouble(row.id, value), DesignFailure) << row.mode << " " << row.id;
        EXPECT_EQ(value, 7.0);
    }
}

}  // namespace
}  // namespace quillon::image_test
