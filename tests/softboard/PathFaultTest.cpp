#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "softboard/faults.h"
#include "softboard/scene.h"
#include "tests/softboard/FrameBoard.h"

namespace {

using testing::ElementsAre;

constexpr double Infinite = std::numeric_limits<double>::infinity();

/// Frames of three lines from the simulator. Its pixels are the sum of column, line and frame, so that the first pixels
/// of a frame's lines tell which they are.
class PathFaults : public FrameBoard {
protected:
    void SetUp() override {
        FrameBoard::SetUp();
        useSimulator();
        simulator("Y_Divisor", 256);
        simulator("Frame_Divisor", 1);
        memory_ = memoryOf(8);
    }
    void frames(int number) { pass(number * FrameTime); }
    /// The blue of the first pixel of each line of a frame.
    std::vector<int> rows(std::int64_t number) {
        const auto taken = frame(memory_, number);
        std::vector<int> result;
        for (std::size_t at = 0; taken && at < taken->bytes.size(); at += std::size_t{Width} * 3) {
            result.push_back(taken->bytes[at]);
        }
        return result;
    }
    unsigned flags(std::int64_t number) { return frame(memory_, number)->about.flags; }
    std::int64_t lost(unsigned what) { return status(what); }
    std::int64_t faults() { return status(SOFTBOARD_STATUS_FAULTS); }
    std::string message() {
        std::string text(1000, '\0');
        softboard_last_message(board, text.data(), text.size());
        return text.c_str();
    }

    softboard_memory* memory_ = nullptr;
};

TEST_F(PathFaults, DropALine) {
    ASSERT_EQ(softboard_plan_line_fault(board, 5, SOFTBOARD_FAULT_DROP), 0);
    acquire(-1, memory_);
    frames(4);
    EXPECT_EQ(pictures(), 3);
    EXPECT_THAT(rows(1), ElementsAre(0, 1, 2));
    EXPECT_THAT(rows(2), ElementsAre(0, 2, 0));  // it goes on with the next that comes
    EXPECT_THAT(rows(3), ElementsAre(1, 2, 0));
    EXPECT_EQ(flags(1), 0U);
    EXPECT_EQ(flags(2), unsigned{SOFTBOARD_FRAME_FAULTY});
    EXPECT_EQ(flags(3), 0U);
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_LINES), 1);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(cameraEvents("LineEnd"), 4U * Height - 1);
}

TEST_F(PathFaults, RepeatALine) {
    ASSERT_EQ(softboard_plan_line_fault(board, 2, SOFTBOARD_FAULT_REPEAT), 0);
    acquire(-1, memory_);
    frames(3);
    EXPECT_THAT(rows(1), ElementsAre(0, 1, 1));
    EXPECT_THAT(rows(2), ElementsAre(2, 0, 1));
    EXPECT_EQ(flags(1), unsigned{SOFTBOARD_FRAME_FAULTY});
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_LINES), 0);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(cameraEvents("LineEnd"), 3U * Height + 1);
}

TEST_F(PathFaults, InvertTheBitsOfALine) {
    ASSERT_EQ(softboard_plan_line_fault(board, 2, SOFTBOARD_FAULT_INVERT_BITS), 0);
    acquire(-1, memory_);
    frames(2);
    EXPECT_THAT(rows(1), ElementsAre(0, 255 - 1, 2));
    EXPECT_THAT(rows(2), ElementsAre(0, 1, 2));
    EXPECT_EQ(flags(1), unsigned{SOFTBOARD_FRAME_FAULTY});
    EXPECT_EQ(faults(), 1);
}

TEST_F(PathFaults, StrikeEachLine) {
    ASSERT_EQ(softboard_plan_line_fault(board, 0, SOFTBOARD_FAULT_REPEAT), 0);
    acquire(-1, memory_);
    frames(3);
    EXPECT_EQ(pictures(), 6);
    EXPECT_THAT(rows(1), ElementsAre(0, 0, 1));
    EXPECT_THAT(rows(2), ElementsAre(1, 2, 2));
    EXPECT_EQ(faults(), 3 * Height + 1) << "the next line has begun";
}

TEST_F(PathFaults, StrikeTogether) {
    softboard_plan_line_fault(board, 1, SOFTBOARD_FAULT_REPEAT);
    softboard_plan_line_fault(board, 1, SOFTBOARD_FAULT_INVERT_BITS);
    softboard_plan_line_fault(board, 3, SOFTBOARD_FAULT_REPEAT);
    softboard_plan_line_fault(board, 3, SOFTBOARD_FAULT_DROP);
    acquire(-1, memory_);
    frames(2);
    EXPECT_THAT(rows(1), ElementsAre(255, 255, 1));
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_LINES), 1) << "a line that does not come does not come twice";
}

TEST_F(PathFaults, LoseAFrame) {
    ASSERT_EQ(softboard_plan_frame_fault(board, 2, SOFTBOARD_FAULT_LOSE, 0.0), 0);
    acquire(-1, memory_);
    frames(4);
    EXPECT_EQ(pictures(), 3);
    EXPECT_EQ(frame(memory_, 2)->about.image, 3U);
    EXPECT_EQ(frame(memory_, 2)->about.lost_before, 1U);
    EXPECT_EQ(flags(2), 0U);
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_FRAMES), 1);
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_LINES), Height);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(cameraEvents("FrameEnd"), 4U) << "the trigger unit has closed it";
    EXPECT_EQ(events("Device1_Process0_Overflow_Overflow"), 0U) << "it was no overflow";
}

TEST_F(PathFaults, TruncateAFrame) {
    ASSERT_EQ(softboard_plan_frame_fault(board, 1, SOFTBOARD_FAULT_TRUNCATE, 2.0), 0);
    acquire(-1, memory_);
    frames(2);
    EXPECT_THAT(rows(1), ElementsAre(0, 1));
    EXPECT_EQ(flags(1), unsigned{SOFTBOARD_FRAME_FAULTY | SOFTBOARD_FRAME_TRUNCATED | SOFTBOARD_FRAME_SHORT |
                                 SOFTBOARD_FRAME_LINES_LOST});
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_LINES), 1);
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_FRAMES), 0);
    EXPECT_THAT(rows(2), ElementsAre(0, 1, 2));
}

TEST_F(PathFaults, StallTheDma) {
    ASSERT_EQ(softboard_plan_frame_fault(board, 2, SOFTBOARD_FAULT_STALL_DMA, 10.0), 0);
    acquire(-1, memory_);
    frames(1);
    pass(0.008);  // now its first line is there
    EXPECT_EQ(pictures(), 1);
    pass(9.992);
    EXPECT_EQ(pictures(), 1);
    EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), (1 + 12) * 24);
    pass(0.108);
    EXPECT_EQ(pictures(), 5) << "what has waited follows";
    EXPECT_EQ(flags(2), unsigned{SOFTBOARD_FRAME_FAULTY});
    EXPECT_EQ(flags(3), 0U);
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_LINES), 0);
}

TEST_F(PathFaults, OfTheDmaOverflowASmallMemory) {
    softboard_set_integer(board, "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", 3);
    softboard_set_integer(board, "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth", 24);
    softboard_plan_frame_fault(board, 1, SOFTBOARD_FAULT_STALL_DMA, 7.5 * LineTime);
    acquire(-1, memory_);
    frames(4);
    EXPECT_EQ(events("Device1_Process0_Overflow_Overflow"), 2U);
    EXPECT_EQ(lost(SOFTBOARD_STATUS_LOST_LINES), 5);
    EXPECT_EQ(pictures(), 3);
}

TEST_F(PathFaults, StandUntilTheyAreCleared) {
    softboard_plan_line_fault(board, 0, SOFTBOARD_FAULT_DROP);
    softboard_plan_frame_fault(board, 0, SOFTBOARD_FAULT_LOSE, 0.0);
    acquire(-1, memory_);
    frames(2);
    EXPECT_EQ(pictures(), 0);
    ASSERT_EQ(softboard_clear_faults(board), 0);
    frames(2);
    EXPECT_GE(pictures(), 1);
}

TEST_F(PathFaults, OfAStallEndWhenTheyAreCleared) {
    softboard_plan_frame_fault(board, 1, SOFTBOARD_FAULT_STALL_DMA, 60e6);
    acquire(-1, memory_);
    frames(3);
    EXPECT_EQ(pictures(), 0);
    softboard_clear_faults(board);
    pass(0.1);
    EXPECT_EQ(pictures(), 3);
}

TEST_F(PathFaults, CountFromWhenTheyArePlanned) {
    acquire(-1, memory_);
    frames(1);
    softboard_plan_line_fault(board, 1, SOFTBOARD_FAULT_INVERT_BITS);
    softboard_plan_frame_fault(board, 2, SOFTBOARD_FAULT_TRUNCATE, 1.0);
    frames(3);
    // The line under way at that time is the first of the second frame.
    EXPECT_THAT(rows(2), ElementsAre(0, 254, 2));
    EXPECT_EQ(frame(memory_, 3)->about.lines + frame(memory_, 4)->about.lines, 4U);
}

// ---- Camera and link ----

class PathOutages : public FrameBoard {
protected:
    void SetUp() override {
        FrameBoard::SetUp();
        useCamera();  // a line each 10 µs
        memory_ = memoryOf(64);
    }
    std::int64_t cameraStatus() {
        std::int64_t value = -1;
        softboard_get_integer(board, "FG_CAMSTATUS_EXTENDED", &value);
        return value & 1;
    }
    std::int64_t lanes() {
        std::int64_t value = -1;
        softboard_get_integer(board, "Device1_Process0_BoardStatus_PcieCurrentLinkWidth", &value);
        return value;
    }
    softboard_memory* memory_ = nullptr;
};

TEST_F(PathOutages, OfTheCameraBringNoLines) {
    acquire(-1, memory_);
    pass(100.5);
    const std::uint64_t before = cameraEvents("LineStart");
    ASSERT_EQ(softboard_camera(board, 0), 0);
    EXPECT_EQ(cameraStatus(), 0);
    pass(100.0);
    EXPECT_EQ(cameraEvents("LineStart"), before);
    ASSERT_EQ(softboard_camera(board, 1), 0);
    EXPECT_EQ(cameraStatus(), 1);
    pass(100.0);
    EXPECT_EQ(cameraEvents("LineStart"), before + 10);
}

TEST_F(PathOutages, OfTheCameraComeAndGoAsPlanned) {
    ASSERT_EQ(softboard_plan_outage(board, SOFTBOARD_OUTAGE_CAMERA, 100.0, 50.0), 0);
    acquire(-1, memory_);
    pass(99.0);
    EXPECT_EQ(cameraStatus(), 1);
    pass(2.0);
    EXPECT_EQ(cameraStatus(), 0);
    pass(48.0);
    EXPECT_EQ(cameraStatus(), 0);
    pass(2.0);
    EXPECT_EQ(cameraStatus(), 1);
    pass(49.5);
    EXPECT_EQ(cameraEvents("LineStart"), 14U);
}

TEST_F(PathOutages, OfTheLinkKeepFramesWaiting) {
    acquire(-1, memory_);
    ASSERT_EQ(softboard_link(board, 0), 0);
    EXPECT_EQ(lanes(), 0);
    pass(300.0);
    EXPECT_EQ(pictures(), 0);
    EXPECT_GT(status(SOFTBOARD_STATUS_BYTES_WAITING), 600);
    ASSERT_EQ(softboard_link(board, 0), 0) << "it is down already";
    ASSERT_EQ(softboard_link(board, 1), 0);
    EXPECT_EQ(lanes(), 8);
    pass(1.0);
    EXPECT_EQ(pictures(), 9);
}

TEST_F(PathOutages, OfTheLinkComeAndGoAsPlanned) {
    ASSERT_EQ(softboard_plan_outage(board, SOFTBOARD_OUTAGE_LINK, 0.0, Infinite), 0);
    pass(1.0);
    EXPECT_EQ(lanes(), 0);
    pass(60e6);
    EXPECT_EQ(lanes(), 0);
    ASSERT_EQ(softboard_clear_faults(board), 0);
    EXPECT_EQ(lanes(), 8);
}

TEST_F(PathOutages, EndWithAnotherDesignOnlyAsFarAsTheyArePlanned) {
    softboard_link(board, 0);
    softboard_plan_outage(board, SOFTBOARD_OUTAGE_CAMERA, 10.0, 10.0);
    Fg_FreeGrabber(fg);
    fg = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 0);
    EXPECT_EQ(lanes(), 0) << "the link is the host's";
    pass(15.0);
    EXPECT_EQ(cameraStatus(), 1);
    softboard_link(board, 1);
    EXPECT_EQ(lanes(), 8);
}

TEST_F(PathOutages, EndWithAnotherDesignThoughTheyLast) {
    softboard_plan_outage(board, SOFTBOARD_OUTAGE_CAMERA, 10.0, 1000.0);
    softboard_plan_outage(board, SOFTBOARD_OUTAGE_LINK, 10.0, Infinite);
    pass(20.0);
    EXPECT_EQ(cameraStatus(), 0);
    EXPECT_EQ(lanes(), 0);
    Fg_FreeGrabber(fg);
    fg = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 0);
    EXPECT_EQ(cameraStatus(), 1);
    EXPECT_EQ(lanes(), 8);
    pass(2000.0);
    EXPECT_EQ(cameraStatus(), 1);
}

// ---- What makes no sense ----

TEST_F(PathFaults, ThatMakeNoSenseAreRefused) {
    EXPECT_EQ(softboard_plan_line_fault(board, 1, 3), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(message(), "a line is dropped (0), repeated (1), or its bits are inverted (2)");
    EXPECT_EQ(softboard_plan_line_fault(board, 1, -1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_frame_fault(board, 1, 3, 1.0), SOFTBOARD_E_ARGUMENT);
    for (const double lines : {0.0, -1.0, 1.5, Infinite, static_cast<double>(NAN)}) {
        EXPECT_EQ(softboard_plan_frame_fault(board, 1, SOFTBOARD_FAULT_TRUNCATE, lines), SOFTBOARD_E_ARGUMENT) << lines;
    }
    for (const double time : {0.0, -1.0, 60e6 + 1, Infinite, static_cast<double>(NAN)}) {
        EXPECT_EQ(softboard_plan_frame_fault(board, 1, SOFTBOARD_FAULT_STALL_DMA, time), SOFTBOARD_E_ARGUMENT) << time;
    }
    EXPECT_EQ(softboard_plan_outage(board, 2, 0.0, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_outage(board, 0, -1.0, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_outage(board, 0, Infinite, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_outage(board, 0, 0.0, 0.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_outage(board, 0, 0.0, NAN), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_line_fault(nullptr, 1, 0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_camera(nullptr, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_link(nullptr, 1), SOFTBOARD_E_ARGUMENT);
    acquire(-1, memory_);
    frames(2);
    EXPECT_EQ(faults(), 0);
    EXPECT_THAT(rows(1), ElementsAre(0, 1, 2));
}

}  // namespace
