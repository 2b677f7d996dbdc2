/// @file
/// The board's own memory as a host sees it: fill level, overflow, what is lost, and how fast it gets empty.

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

struct Capacity {
    int bits;     ///< RamDataWidth
    int address;  ///< RamAddressWidth
    int width;    ///< pixels of a line of 24 bits each
    int lines;    ///< that fit
};

void PrintTo(const Capacity& capacity, std::ostream* out) {
    *out << capacity.lines << " lines";
}

class BoardMemory : public Bench, public testing::WithParamInterface<Capacity> {
protected:
    /// Frames of `height` lines, of which none reaches the host while the link is down.
    void fill(const Capacity& capacity, int height) {
        memorySize(capacity.bits, capacity.address);
        useCamera(capacity.width, height);
        memory = memoryOf(64, static_cast<std::size_t>(capacity.width) * 3 * static_cast<std::size_t>(height));
        ASSERT_EQ(softboard_link(device(), 0), 0);
        acquire(-1, memory);
        pass(100.0);
    }
    std::uint32_t overflow() { return whole(FG_OVERFLOW); }
    std::uint32_t fillLevel() { return whole(FG_FILLLEVEL); }
    std::uint32_t cameraStatus() { return whole(FG_CAMSTATUS_EXTENDED); }
    std::uint64_t overflows() { return events("FG_OVERFLOW_CAM0"); }
};

TEST_P(BoardMemory, OverflowsAtTheFirstLineThatDoesNotFit) {
    fill(GetParam(), 1);
    for (int line = 1; line <= GetParam().lines; ++line) {
        pass(LineTime);
        ASSERT_EQ(overflow(), 0U) << line;
        ASSERT_EQ(lostLines(), 0) << line;
        ASSERT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), std::int64_t{line} * GetParam().width * 3);
    }
    EXPECT_EQ(overflows(), 0U);
    pass(LineTime);
    EXPECT_EQ(overflow(), 1U);
    EXPECT_EQ(fillLevel(), 100U);
    EXPECT_EQ(overflows(), 1U);
    EXPECT_EQ(lostLines(), 1);
    EXPECT_EQ(lostFrames(), 1);
    EXPECT_NE(cameraStatus() & 0x20U, 0U);
    pass(3 * LineTime);
    EXPECT_EQ(lostLines(), 4);
    EXPECT_EQ(pictures(), 0);
    ASSERT_EQ(softboard_link(device(), 1), 0);
    pass(50.0);
    EXPECT_EQ(pictures(), GetParam().lines);
    EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), 0);
    if (GetParam().lines == 0) {
        return;  // none will ever fit
    }
    pass(LineTime);
    const Frame next = frame(memory, GetParam().lines + 1);
    EXPECT_EQ(next.about.lost_before, 4U);
    EXPECT_EQ(next.about.image, static_cast<std::uint64_t>(GetParam().lines) + 5);
    EXPECT_EQ(overflow(), 1U) << "sticky";
}

INSTANTIATE_TEST_SUITE_P(Sizes, BoardMemory,
                         testing::Values(Capacity{8, 0, 4, 0}, Capacity{16, 3, 16, 1}, Capacity{24, 6, 64, 3},
                                         Capacity{64, 5, 64, 4}, Capacity{64, 5, 68, 3}, Capacity{512, 3, 52, 9},
                                         Capacity{64, 8, 256, 8}),
                         [](const auto& tested) {
                             return "Of" + std::to_string(tested.param.lines) + "LinesOf" +
                                    std::to_string(tested.param.width);
                         });

constexpr Capacity FourLines{64, 5, 64, 4};

class FourLineMemory : public BoardMemory {};
INSTANTIATE_TEST_SUITE_P(Only, FourLineMemory, testing::Values(FourLines));

TEST_P(FourLineMemory, ShowsEachQuarter) {
    fill(FourLines, 1);
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_EQ(cameraStatus() >> 5, 0U);
    const std::uint32_t quarters[] = {1, 2, 3, 3};  // the status has two bits
    for (std::uint32_t line = 1; line <= 4; ++line) {
        pass(LineTime);
        EXPECT_EQ(fillLevel(), 25 * line);
        EXPECT_EQ(cameraStatus() >> 6, quarters[line - 1]) << line;
        EXPECT_EQ(cameraStatus() & 0x20U, 0U);
    }
    ASSERT_EQ(softboard_link(device(), 1), 0);
    pass(50.0);
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_EQ(cameraStatus() >> 5, 0U);
}

TEST_P(FourLineMemory, FillsItsThreeBanksAlike) {
    fill(FourLines, 1);
    pass(2 * LineTime);
    for (const char* const bank : {"0", "1", "2"}) {
        EXPECT_EQ(design(std::string("Buffer_0_DRAM_DRAM_A_") + bank + "_FillLevel"), 50) << bank;
    }
}

TEST_P(FourLineMemory, LosesTheEndOfAFrameAndThenWholeOnes) {
    fill(FourLines, 6);
    pass(12 * LineTime);
    EXPECT_EQ(lostLines(), 2 + 6);
    EXPECT_EQ(lostFrames(), 1);
    ASSERT_EQ(softboard_link(device(), 1), 0);
    pass(50.0);
    ASSERT_EQ(pictures(), 1);
    const Frame cut = frame(memory, 1);
    EXPECT_EQ(cut.about.lines, 4U);
    EXPECT_EQ(cut.about.bytes, 4U * 64 * 3);
    EXPECT_NE(cut.about.flags & SOFTBOARD_FRAME_LINES_LOST, 0U);
    EXPECT_EQ(cut.about.image, 1U);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_LINES, 1), 4);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_FLAGS, 1), cut.about.flags);
}

TEST_P(FourLineMemory, ForgetsTheOverflowWithTheNextStartOnly) {
    fill(FourLines, 1);
    pass(6 * LineTime);
    EXPECT_EQ(overflow(), 1U);
    ASSERT_EQ(softboard_link(device(), 1), 0);
    pass(10 * LineTime);
    EXPECT_EQ(overflow(), 1U);
    EXPECT_EQ(fillLevel(), 100U);
    stop();
    EXPECT_EQ(overflow(), 1U);
    acquire(-1, memory);
    EXPECT_EQ(overflow(), 0U);
    EXPECT_EQ(fillLevel(), 0U);
    EXPECT_EQ(lostLines(), 0);
    EXPECT_EQ(lostFrames(), 0);
    EXPECT_EQ(cameraStatus() & 0xE0U, 0U);
}

TEST_P(FourLineMemory, TellsEachLossByItsEvent) {
    fill(FourLines, 1);
    pass(6 * LineTime);
    const std::uint64_t first = overflows();
    EXPECT_GE(first, 1U);
    ASSERT_EQ(softboard_link(device(), 1), 0);
    pass(4 * LineTime);
    EXPECT_EQ(overflows(), first);
    ASSERT_EQ(softboard_link(device(), 0), 0);
    pass(6 * LineTime);
    EXPECT_GT(overflows(), first);
}

TEST_P(FourLineMemory, FillsBehindAHostThatReleasesNothing) {
    memorySize(FourLines.bits, FourLines.address);
    useCamera(64, 1);
    memory = memoryOf(2, 192);
    ASSERT_EQ(softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD), 0);
    acquire(-1, memory);
    pass(100.0 + 6 * LineTime);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(fillLevel(), 100U);
    EXPECT_EQ(overflow(), 0U);
    pass(LineTime);
    EXPECT_EQ(overflow(), 1U);
    ASSERT_EQ(softboard_memory_release(memory, 1), 0);
    pass(50.0);
    EXPECT_EQ(pictures(), 3);
    EXPECT_EQ(softboard_memory_release(memory, 1), SOFTBOARD_E_RANGE);
}

TEST_P(FourLineMemory, EmptiesAtTheRateOfTheDma) {
    useCamera(64, 1);
    memory = memoryOf(64, 192);
    ASSERT_EQ(softboard_dma_rate(device(), 192e4), 0);  // a frame in 100 us
    acquire(-1, memory);
    const std::string lineEnd = "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0FrameEnd";
    ASSERT_TRUE(built.board.advanceToEvent(lineEnd, 1000.0));
    pass(99.0);
    EXPECT_EQ(pictures(), 0);
    EXPECT_NEAR(static_cast<double>(status(SOFTBOARD_STATUS_BYTES_WAITING)), 2.0, 1.0);
    pass(2.0);
    EXPECT_EQ(pictures(), 1);
    EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), 0);
}

TEST_P(FourLineMemory, OverflowsBehindADmaThatIsTooSlow) {
    memorySize(FourLines.bits, FourLines.address);
    useCamera(64, 1);
    memory = memoryOf(256, 192);
    ASSERT_EQ(softboard_dma_rate(device(), 0.5 * 192 / (LineTime * 1e-6)), 0);  // a line of two
    acquire(-1, memory);
    pass(100.0 + 100 * LineTime);
    const std::int64_t delivered = pictures();
    EXPECT_NEAR(static_cast<double>(delivered), 50.0, 1.0);
    EXPECT_EQ(overflow(), 1U);
    EXPECT_EQ(delivered + lostFrames() + (status(SOFTBOARD_STATUS_BYTES_WAITING) + 191) / 192, 100);
}

TEST_P(FourLineMemory, DeliversAtOnceWithoutALimit) {
    useCamera(64, 2);
    memory = memoryOf(64, 192 * 2);
    ASSERT_EQ(softboard_dma_rate(device(), Forever), 0);
    acquire(-1, memory);
    ASSERT_TRUE(built.board.advanceToEvent("Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0FrameEnd", 1000.0));
    EXPECT_EQ(pictures(), 1);
}

}  // namespace
}  // namespace quillon::frames_test
