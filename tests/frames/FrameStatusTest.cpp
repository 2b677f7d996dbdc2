// What a host reads of frames besides the frames.

#include <gmock/gmock.h>

#include "tests/frames/AppletFrames.h"

namespace quillon::frames_test {
namespace {

using testing::ElementsAre;

/// Frames of 32 times 4 pixels in 0.32 ms.
class FrameStatus : public AppletFrames {
protected:
    static constexpr int Width = 32;
    static constexpr int Height = 4;
    static constexpr std::size_t Bytes = std::size_t{Width} * Height * 3;

    void SetUp() override {
        AppletFrames::SetUp();
        useSimulator(Width, Height);
    }
    void frames(int number) { pass(number * Height * SimulatorLineTime); }

    // Bits of FG_CAMSTATUS_EXTENDED.
    static constexpr std::uint32_t Clock = 1;
    static constexpr std::uint32_t LineValid = 2;
    static constexpr std::uint32_t FrameValid = 4;
    static constexpr std::uint32_t CameraTrigger = 8;
    static constexpr std::uint32_t ImageTrigger = 16;
    static constexpr std::uint32_t Overflow = 32;
    static constexpr std::uint32_t Signals = 31;
    static constexpr unsigned QuarterShift = 6;
};

TEST_F(FrameStatus, TellsTheBytesOfTheLastFrame) {
    acquire(-1, nullptr);
    EXPECT_EQ(whole(FG_TRANSFER_LEN), 0U);
    frames(1);
    EXPECT_EQ(whole(FG_TRANSFER_LEN), Bytes);
    set(FG_FORMAT, FG_COL30);
    frames(1);
    EXPECT_EQ(whole(FG_TRANSFER_LEN), Bytes / 8 * 10);
    set(FG_WIDTH, 16);
    frames(1);
    EXPECT_EQ(whole(FG_TRANSFER_LEN), Bytes / 8 * 10 / 2);
}

TEST_F(FrameStatus, TellsTheBytesOfAShortFrame) {
    softboard_memory* const memory = memoryOf(4, Bytes);
    set(FG_IMGTRIGGER_ASYNC_HEIGHT, Height + 1);
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER_MULTIFRAME);
    acquire(-1, memory);
    input(0, true);
    frames(3);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(whole(FG_TRANSFER_LEN), Bytes / Height);
}

// The value of the channel's status goes into a place of the applet's own, and the caller's stays as it was.
TEST_F(FrameStatus, OfTheChannelIsTheSdksAndDoesNotReachTheCaller) {
    const auto channel = [&] { return built.board.integer("FG_DMASTATUS"); };
    std::uint32_t value = 4711;
    EXPECT_EQ(channel(), 0);
    acquire(2, nullptr);
    EXPECT_EQ(channel(), 1);
    EXPECT_EQ(built.applet.getUnsigned(FG_DMASTATUS, value), 0);
    EXPECT_EQ(value, 4711U);
    frames(2);
    EXPECT_EQ(channel(), 0);
    acquire(-1, nullptr);
    stop();
    EXPECT_EQ(channel(), 0);
}

TEST_F(FrameStatus, ShowsTheSignalsOfTheCamera) {
    set(FG_CAMERASIMULATOR_ENABLE, FG_CAMPORT);
    set(FG_WIDTH, 1024);  // a line is under way for 1.024 µs
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    const auto bits = [&] { return whole(FG_CAMSTATUS_EXTENDED) & Signals; };
    pass(10.0);
    EXPECT_EQ(bits(), Clock);
    pass(LineTime);  // ExSync is active for 19 µs
    EXPECT_EQ(bits(), Clock | CameraTrigger);
    input(0, true);
    EXPECT_EQ(bits(), Clock | CameraTrigger | ImageTrigger);
    pass(Exposure - 9.5);
    EXPECT_EQ(bits(), Clock | LineValid | FrameValid | ImageTrigger);
    pass(1.0);
    EXPECT_EQ(bits(), Clock | FrameValid | ImageTrigger);
    input(0, false);
    EXPECT_EQ(bits(), Clock | FrameValid);
    pass(Height * LineTime);
    EXPECT_EQ(bits(), Clock);
    softboard_set_integer(device(), "FG_CAMSTATUS_EXTENDED", 0);
    EXPECT_EQ(whole(FG_CAMSTATUS_EXTENDED) & Clock, 0U);
    EXPECT_EQ(whole(FG_CAMSTATUS), 0U);
    set(FG_CAMERASIMULATOR_ENABLE, FG_CAMERASIMULATOR);
    EXPECT_EQ(whole(FG_CAMSTATUS_EXTENDED) & Clock, Clock);
    EXPECT_EQ(whole(FG_CAMSTATUS), 1U);
}

TEST_F(FrameStatus, TellsThatTheTriggerIsBusy) {
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    set(FG_IMGTRIGGERINSRC, TRGINSOFTWARE);
    acquire(-1, nullptr);
    std::vector<std::uint32_t> busy = {whole(FG_IMGTRIGGER_IS_BUSY)};
    set(FG_SENDSOFTWARETRIGGER, FG_APPLY);
    for (int half = 0; half < 3; ++half) {
        busy.push_back(whole(FG_IMGTRIGGER_IS_BUSY));
        pass(Height * SimulatorLineTime / 2);
    }
    EXPECT_THAT(busy, ElementsAre(IS_NOT_BUSY, IS_BUSY, IS_BUSY, IS_NOT_BUSY));
    EXPECT_EQ(pictures(), 1);
}

TEST_F(FrameStatus, FollowsTheFillOfTheBuffer) {
    // 2^10 words of 8 bits in three banks: eight frames of 384 bytes.
    built.board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", 10);
    built.board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth", 8);
    softboard_memory* const memory = memoryOf(1, Bytes);
    ASSERT_EQ(softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD), 0);
    acquire(-1, memory);
    frames(1);
    EXPECT_EQ(pictures(), 1);
    std::vector<std::uint32_t> levels;
    std::vector<std::uint32_t> quarters;
    for (int waiting = 1; waiting <= 8; ++waiting) {
        frames(1);
        levels.push_back(whole(FG_FILLLEVEL));
        quarters.push_back(whole(FG_CAMSTATUS_EXTENDED) >> QuarterShift);
        EXPECT_EQ(whole(FG_OVERFLOW), 0U);
        EXPECT_EQ(whole(FG_CAMSTATUS_EXTENDED) & Overflow, 0U);
        EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), static_cast<std::int64_t>(waiting * Bytes));
    }
    EXPECT_THAT(levels, ElementsAre(12, 25, 37, 50, 62, 75, 87, 100));
    EXPECT_THAT(quarters, ElementsAre(0, 1, 1, 2, 2, 3, 3, 3));

    EXPECT_EQ(events("FG_OVERFLOW_CAM0"), 0U);
    frames(2);
    EXPECT_EQ(whole(FG_OVERFLOW), 1U);
    EXPECT_EQ(events("FG_OVERFLOW_CAM0"), 2U);
    EXPECT_EQ(status(SOFTBOARD_STATUS_LOST_FRAMES), 2);
    for (std::int64_t number = 1; number <= 9; ++number) {
        EXPECT_EQ(softboard_memory_release(memory, number), 0);
    }
    // The buffer is empty, but it has overflowed.
    EXPECT_EQ(whole(FG_FILLLEVEL), 100U);
    EXPECT_EQ(whole(FG_CAMSTATUS_EXTENDED) & ~Signals, Overflow | 3U << QuarterShift);
    frames(1);
    EXPECT_EQ(frame(memory, 10).about.lost_before, 2U);
    EXPECT_EQ(frame(memory, 10).about.image, 12U);

    stop();
    acquire(-1, memory);
    EXPECT_EQ(whole(FG_OVERFLOW), 0U);
    EXPECT_EQ(whole(FG_FILLLEVEL), 0U);
    EXPECT_EQ(whole(FG_CAMSTATUS_EXTENDED) & ~Signals, 0U);
}

TEST_F(FrameStatus, TellsOfEachFrame) {
    softboard_memory* const memory = memoryOf(2, Bytes);
    acquire(3, memory);
    frames(2);
    EXPECT_EQ(status(0), 1);
    frames(1);
    EXPECT_EQ(status(0), 0);
    EXPECT_EQ(status(1), 3);
    EXPECT_EQ(status(2), 3);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_BYTES, 3), static_cast<std::int64_t>(Bytes));
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_LINES, 3), Height);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_BUFFER, 3), 0);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_BYTES, 1), SOFTBOARD_E_RANGE);
    EXPECT_EQ(built.applet.lastError(), SOFTBOARD_E_RANGE);
}

// ---- Events ----

using FrameEvents = FrameStatus;

TEST_F(FrameEvents, ComeWithTheLinesAndFramesOfTheSimulator) {
    frames(3);
    EXPECT_EQ(events("FG_START_OF_FRAME_CAM_PORT_0"), 4U);  // the next has just begun
    EXPECT_EQ(events("FG_END_OF_FRAME_CAM_PORT_0"), 3U);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 3U * Height + 1);
    EXPECT_EQ(events("FG_END_OF_LINE_CAM_PORT_0"), 3U * Height);
}

TEST_F(FrameEvents, ComeWithTheLinesAndFramesOfTheCamera) {
    set(FG_CAMERASIMULATOR_ENABLE, FG_CAMPORT);
    pass(2 * Height * LineTime + Exposure + 1.0);
    EXPECT_EQ(events("FG_START_OF_FRAME_CAM_PORT_0"), 2U);
    EXPECT_EQ(events("FG_END_OF_FRAME_CAM_PORT_0"), 2U);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 2U * Height);
    EXPECT_EQ(events("FG_END_OF_LINE_CAM_PORT_0"), 2U * Height);
    EXPECT_EQ(events("FG_CUSTOM_SIGNAL_EVENT_0"), 2U * Height);  // ExSync
    EXPECT_EQ(events("FG_CUSTOM_SIGNAL_EVENT_1"), 2U);           // flash
}

TEST_F(FrameEvents, OfLinesOutsideAnImageAreNoneOfFrames) {
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    frames(2);
    const std::uint64_t before = events("FG_START_OF_FRAME_CAM_PORT_0");
    const std::uint64_t linesBefore = events("FG_START_OF_LINE_CAM_PORT_0");
    frames(1);
    EXPECT_EQ(events("FG_START_OF_FRAME_CAM_PORT_0"), before);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), linesBefore + Height);
    input(0, true);
    input(0, false);
    EXPECT_EQ(events("FG_TRIGGER_INPUT0_RISING"), 1U);
    EXPECT_EQ(events("FG_TRIGGER_INPUT0_FALLING"), 1U);
    frames(2);
    EXPECT_EQ(events("FG_START_OF_FRAME_CAM_PORT_0"), before + 1);
}

}  // namespace
}  // namespace quillon::frames_test
