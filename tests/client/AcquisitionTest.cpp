#include <gmock/gmock.h>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Errors.h"
#include "quillon/client/Frames.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

/// An applet with small pictures of the simulator, as fast as they are drawn.
struct SimulatedPictures : BuiltApplet {
    SimulatedPictures() {
        applet["FG_WIDTH"] = 64;
        applet["FG_HEIGHT"] = 16;
        applet["FG_LUT_ENABLE"] = "FG_OFF";
        applet["FG_CAMERASIMULATOR_ENABLE"] = "FG_CAMERASIMULATOR";
        applet["FG_CAMERASIMULATOR_PATTERN"] = "FG_HORIZONTAL";
        board.setClock(ClockMode::Free);
    }
};

TEST(FrameSize, ItFollowsWidthHeightAndFormat) {
    BuiltApplet built;
    built.applet["FG_WIDTH"] = 64;
    built.applet["FG_HEIGHT"] = 16;
    for (const auto& [format, bits] :
         {std::pair("FG_COL24", 24U), std::pair("FG_COL30", 30U), std::pair("FG_COL36", 36U),
          std::pair("FG_COL42", 42U), std::pair("FG_COL48", 48U)}) {
        built.applet["FG_FORMAT"] = format;
        EXPECT_EQ(frameSize(built.applet), 64U * 16 * bits / 8) << format;
    }
}

TEST(FrameMemory, AnEmptyOneIsRefused) {
    const BuiltApplet built;
    EXPECT_THROW(FrameMemory(built.board, 0, 4), Error);
    EXPECT_THROW(FrameMemory(built.board, 1024, 0), Error);
}

TEST(FrameMemory, ANewOneHasNoFrames) {
    const BuiltApplet built;
    FrameMemory memory(built.board, 1024, 2);
    EXPECT_FALSE(memory.frame(1).has_value());
    EXPECT_THROW(memory.release(1), CallError);
}

TEST(FrameAcquisition, FramesComeInOrderAndEndAtTheCount) {
    SimulatedPictures pictures;
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 3);
    std::vector<std::uint64_t> numbers;
    std::uint64_t last = 0;
    for (const Frame& frame : Acquisition(pictures.applet, memory, 7)) {
        numbers.push_back(frame.description().number);
        EXPECT_EQ(frame.width(), 64U);
        EXPECT_EQ(frame.lines(), 16U);
        EXPECT_EQ(frame.bits(), 8U);
        EXPECT_THAT(frame.bytes(), SizeIs(64 * 16 * 3));
        EXPECT_GT(frame.description().lastTick, last);
        last = frame.description().lastTick;
    }
    EXPECT_THAT(numbers, ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST(FrameMemory, AFrameWhoseLinesDifferHasThoseThatFit) {
    SimulatedPictures pictures;
    pictures.board.setClock(ClockMode::Stepped);
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 2);
    ASSERT_EQ(pictures.applet.acquire(0, 1, 0, memory.pointer()), 0);
    pictures.board.advanceSignals(97.656 * 8 - 1.0);
    pictures.applet["FG_WIDTH"] = 32;
    pictures.board.advanceSignals(97.656 * 9);
    const auto frame = memory.frame(1);
    ASSERT_TRUE(frame.has_value());
    EXPECT_TRUE(frame->description().has(FrameFlag::Mixed));
    EXPECT_EQ(frame->width(), 64U);
    EXPECT_EQ(frame->lines(), 8U + 4U);
}

TEST(FrameAcquisition, TheSimulatorsPatternIsInTheFrame) {
    SimulatedPictures pictures;
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 2);
    Acquisition acquisition(pictures.applet, memory, 1);
    const Frame* const frame = acquisition.next();
    ASSERT_NE(frame, nullptr);
    for (std::uint32_t x = 1; x < 64; ++x) {
        EXPECT_EQ(frame->component(x, 0, Component::Red), frame->component(0, 0, Component::Red) + x);
        EXPECT_EQ(frame->component(x, 15, Component::Green), frame->component(x, 0, Component::Red));
        EXPECT_EQ(frame->component(x, 7, Component::Blue), frame->component(x, 0, Component::Red));
    }
    EXPECT_EQ(acquisition.next(), nullptr);
    EXPECT_EQ(acquisition.lost(), 0U);
}

TEST(FrameAcquisition, WhatIsNotTakenIsHeldBack) {
    SimulatedPictures pictures;
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 2);
    Acquisition acquisition(pictures.applet, memory, 10);
    const Frame* const first = acquisition.next();
    const std::vector<std::byte> before(first->bytes().begin(), first->bytes().end());
    pictures.board.advanceSignals(100000);
    EXPECT_TRUE(std::ranges::equal(before, first->bytes()));
    EXPECT_EQ(acquisition.next()->description().number, 2U);
}

TEST(FrameAcquisition, NoFrameInTimeIsTold) {
    SimulatedPictures pictures;
    pictures.applet["FG_IMGTRIGGERMODE"] = "ASYNC_TRIGGER";
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 2);
    Acquisition acquisition(pictures.applet, memory, 1, 1);
    try {
        acquisition.next();
        FAIL() << "a frame came without its trigger";
    } catch (const FrameError& error) {
        EXPECT_EQ(error.number, 1U);
        EXPECT_THAT(error.what(), HasSubstr("frame 1 did not come within 1 s: -9009 (SoftBoardTimeout)"));
    }
}

TEST(FrameAcquisition, ItStopsWhenItGoes) {
    SimulatedPictures pictures;
    FrameMemory memory(pictures.board, frameSize(pictures.applet), 2);
    {
        Acquisition endless(pictures.applet, memory, -1);
        EXPECT_NE(endless.next(), nullptr);
        EXPECT_THROW(Acquisition(pictures.applet, memory, 1), CallError) << "one runs already";
        EXPECT_EQ(pictures.applet.status(0, 0, 0, memory.pointer()), 1);
    }
    EXPECT_EQ(pictures.applet.status(0, 0, 0, memory.pointer()), 0);
    Acquisition next(pictures.applet, memory, 1);
    EXPECT_EQ(next.next()->description().number, 1U);
}

}  // namespace
}  // namespace quillon::client
