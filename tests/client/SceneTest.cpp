#include "quillon/client/Scene.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Errors.h"
#include "quillon/client/Frames.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Codes of the software board.
constexpr int Argument = -9001;
constexpr int OutOfRange = -9006;
constexpr int BadFile = -9011;

/// The camera's frames of 16 lines with 64 pixels of 8 bits, as fast as they are drawn.
struct CameraPictures : BuiltApplet {
    CameraPictures() {
        applet["FG_WIDTH"] = 64;
        applet["FG_HEIGHT"] = 16;
        applet["FG_LUT_ENABLE"] = "FG_OFF";
        board.setClock(ClockMode::Free);
    }

    /// Red of the first pixel of each line of the first frame.
    std::vector<unsigned> reds() {
        FrameMemory memory(board, frameSize(applet), 2);
        Acquisition acquisition(applet, memory, 1);
        const Frame& frame = *acquisition.next();
        std::vector<unsigned> values;
        for (std::uint32_t y = 0; y < frame.lines(); ++y) {
            values.push_back(frame.component(0, y, Component::Red));
        }
        return values;
    }
};

/// What a call is refused with.
template <typename Call>
CallError refusal(const Call& call) {
    try {
        call();
    } catch (const CallError& error) {
        return error;
    }
    throw std::logic_error("it was taken");
}

TEST(BoardScene, APatternIsWhatTheCameraSees) {
    CameraPictures pictures;
    pictures.board.scenePattern("grey:200");
    EXPECT_THAT(pictures.reds(), Each(200U));
    EXPECT_THAT(pictures.board.lastMessage(), IsEmpty());
}

TEST(BoardScene, ARefusalHasTheBoardsWords) {
    BuiltApplet built;
    const CallError error = refusal([&] { built.board.scenePattern("stripes"); });
    EXPECT_EQ(error.code, Argument);
    EXPECT_THAT(built.board.lastMessage(), HasSubstr("stripes"));
    EXPECT_THAT(error.what(), HasSubstr("softboard_scene_pattern answered -9001"));
    EXPECT_THAT(error.what(), HasSubstr(": " + built.board.lastMessage()));
}

TEST(BoardScene, APictureMovesPastTheCamera) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "quillon_scene_test.pgm";
    std::ofstream(file) << "P2 2 4 255\n10 0 20 0 30 0 40 0\n";
    CameraPictures pictures;
    pictures.board.scenePicture(file, true, 10);
    EXPECT_THAT(pictures.reds(), ElementsAre(10, 20, 30, 40, 10, 20, 30, 40, 10, 20, 30, 40, 10, 20, 30, 40));
    std::filesystem::remove(file);
    EXPECT_EQ(refusal([&] { pictures.board.scenePicture(file, true, 10); }).code, BadFile);
    EXPECT_THAT(pictures.board.lastMessage(), HasSubstr(file.string()));
}

TEST(BoardScene, AFunctionDrawsLines) {
    CameraPictures pictures;
    std::atomic<int> lines = 0;
    pictures.board.sceneCallback([&](const SceneLine& about, std::span<std::uint16_t> pixels) {
        EXPECT_GT(about.exposureUs, 0);
        EXPECT_EQ(about.flash, lines == 0) << "of the first line of an image";
        EXPECT_GE(pixels.size(), 3U * 64);
        pixels[0] = 0x5500;
        if (++lines == 3) {
            throw std::runtime_error("a line that cannot be drawn");
        }
        return lines != 2;
    });
    const std::vector<unsigned> reds = pictures.reds();
    EXPECT_EQ(std::vector(reds.begin(), reds.begin() + 4), (std::vector<unsigned>{0x55, 0, 0, 0x55}));
    EXPECT_EQ(refusal([&] { pictures.board.sceneCallback(nullptr); }).code, Argument);
}

TEST(BoardScene, LightFollowsTheExposure) {
    CameraPictures pictures;
    pictures.board.scenePattern("grey:200");
    pictures.applet["FG_LINEEXPOSURE"] = 20.0;
    pictures.board.light({.referenceUs = 40, .flashGain = 1, .noise = 0});
    EXPECT_THAT(pictures.reds(), Each(100U));
    pictures.board.light({.referenceUs = 40, .flashGain = 1, .noise = 0.1});
    pictures.board.sceneSeed(7);
    EXPECT_THAT(pictures.reds(), ::testing::Contains(::testing::Ne(100U)));
    EXPECT_EQ(refusal([&] { pictures.board.light({.referenceUs = -1}); }).code, Argument);
}

TEST(SoftBoardBelt, ItMovesWithTheBoardsTime) {
    BuiltApplet built;
    EXPECT_EQ(built.board.beltPosition(), 0);
    built.board.belt(std::array{BeltMove{10'000, 500}, BeltMove{20'000, -100}});
    built.board.advanceSignals(10'000);
    EXPECT_NEAR(built.board.beltPosition(), 5, 1e-3);
    built.board.advanceSignals(100'000);
    EXPECT_NEAR(built.board.beltPosition(), 4, 1e-3);
    built.board.belt({});
    EXPECT_EQ(built.board.beltPosition(), 0);
    EXPECT_EQ(refusal([&] { built.board.belt(std::array{BeltMove{Forever, std::nan("")}}); }).code, Argument);
}

TEST(SoftBoardBelt, ItDrivesTheInputsOfItsEncoderAndItsBarrier) {
    BuiltApplet built;
    built.board.belt(std::array{BeltMove{Forever, 1000}}, {.countsPerMm = 1, .a = 0, .b = 9});
    built.board.barrier(2, 10, 0, 5);
    const std::string rising = "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin";
    built.board.advanceSignals(100'500);
    EXPECT_NEAR(static_cast<double>(built.board.eventCount(rising + "0")), 100, 1);
    EXPECT_EQ(built.board.eventCount(rising + "2"), 1U);
    EXPECT_EQ(built.board.eventCount(rising + "1"), 0U);
    EXPECT_EQ(refusal([&] { built.board.barrier(12, 0, 0, 5); }).code, OutOfRange);
}

TEST(BoardFault, ALineIsLostAndItsFrameIsFaulty) {
    CameraPictures pictures;
    pictures.board.planLineFault(3, LineFault::Drop);
    pictures.board.planLineFault(20, LineFault::Invert);
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 2);
    Acquisition acquisition(pictures.applet, memory, 3);
    std::vector<bool> faulty;
    while (const Frame* frame = acquisition.next()) {
        faulty.push_back(frame->description().has(FrameFlag::Faulty));
    }
    EXPECT_THAT(faulty, ElementsAre(true, true, false));
    EXPECT_EQ(acquisition.lostLines(), 1U);
    EXPECT_EQ(acquisition.lost(), 0U);
    EXPECT_EQ(acquisition.faults(), 2U);
}

TEST(BoardFault, FramesAreLostAndTruncated) {
    CameraPictures pictures;
    pictures.board.planFrameFault(2, FrameFault::Lose);
    pictures.board.planFrameFault(3, FrameFault::Truncate, 5);
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 2);
    Acquisition acquisition(pictures.applet, memory, 2);
    EXPECT_EQ(acquisition.next()->description().image, 1U);
    const FrameDescription second = acquisition.next()->description();
    EXPECT_EQ(second.image, 3U);
    EXPECT_EQ(second.lostBefore, 1U);
    EXPECT_EQ(second.lines, 5U);
    EXPECT_TRUE(second.has(FrameFlag::Faulty));
    EXPECT_EQ(acquisition.lost(), 1U);
    EXPECT_EQ(refusal([&] { pictures.board.planFrameFault(1, FrameFault::Truncate, 0); }).code, Argument);
}

TEST(BoardFault, TheCameraIsGoneForATime) {
    BuiltApplet built;
    built.board.planOutage(Outage::Camera, 1000, 2000);
    EXPECT_EQ(built.applet.get<int>("FG_CAMSTATUS"), 1);
    built.board.advanceSignals(1500);
    EXPECT_EQ(built.applet.get<int>("FG_CAMSTATUS"), 0);
    built.board.advanceSignals(2000);
    EXPECT_EQ(built.applet.get<int>("FG_CAMSTATUS"), 1);
    built.board.connectCamera(false);
    EXPECT_EQ(built.applet.get<int>("FG_CAMSTATUS"), 0);
    built.board.connectCamera(true);
    EXPECT_EQ(built.applet.get<int>("FG_CAMSTATUS"), 1);
}

TEST(BoardFault, WithoutALinkFramesWait) {
    CameraPictures pictures;
    pictures.board.setClock(ClockMode::Stepped);
    pictures.board.setLink(false);
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 4);
    Acquisition acquisition(pictures.applet, memory, -1);
    pictures.board.advanceSignals(10'000);
    EXPECT_GT(acquisition.bytesWaiting(), 0U);
    EXPECT_FALSE(memory.frame(1).has_value());
    EXPECT_EQ(pictures.applet.get<int>("FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH"), 0);
    pictures.board.setLink(true);
    pictures.board.advanceSignals(10'000);
    EXPECT_TRUE(memory.frame(1).has_value());
}

TEST(BoardFault, ADataRateIsPositive) {
    BuiltApplet built;
    built.board.setDmaRate(1e9);
    built.board.setDmaRate(Forever);
    EXPECT_EQ(refusal([&] { built.board.setDmaRate(0); }).code, Argument);
}

}  // namespace
}  // namespace quillon::client
