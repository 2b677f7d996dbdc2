#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "softboard/faults.h"
#include "tests/softboard/FrameBoard.h"

namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr std::int64_t LineBytes = 24;

/// Lines of 24 bytes from the simulator, one each 0.8 µs, three in a frame.
class BoardBuffer : public FrameBoard {
protected:
    void SetUp() override {
        FrameBoard::SetUp();
        useSimulator();
        memory_ = memoryOf(8);
    }
    /// Three banks of 2^addressBits words of dataBits.
    void banks(std::int64_t addressBits, std::int64_t dataBits) {
        softboard_set_integer(board, "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", addressBits);
        softboard_set_integer(board, "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth", dataBits);
    }
    std::int64_t level(int bank) {
        std::int64_t value = -1;
        softboard_get_integer(
            board, ("Device1_Process0_Buffer_0_DRAM_DRAM_A_" + std::to_string(bank) + "_FillLevel").c_str(), &value);
        return value;
    }
    std::int64_t overflow() {
        std::int64_t value = -1;
        softboard_get_integer(board, "Device1_Process0_Overflow_OverflowOccurred", &value);
        return value;
    }
    std::uint64_t overflows() { return events("Device1_Process0_Overflow_Overflow"); }
    std::int64_t waiting() { return status(SOFTBOARD_STATUS_BYTES_WAITING); }
    std::int64_t lostLines() { return status(SOFTBOARD_STATUS_LOST_LINES); }
    std::int64_t lostFrames() { return status(SOFTBOARD_STATUS_LOST_FRAMES); }
    /// Each is over a tick after it has begun, the first at once.
    void lines(int number) { pass(number * LineTime); }

    softboard_memory* memory_ = nullptr;
};

TEST_F(BoardBuffer, TakesThreeLinesAndLosesTheFourth) {
    banks(3, 24);  // 72 bytes
    softboard_link(board, 0);
    acquire(-1, memory_);
    for (int line = 1; line <= 3; ++line) {
        lines(1);
        EXPECT_EQ(waiting(), line * LineBytes);
        EXPECT_EQ(level(0), line * 100 / 3);
        EXPECT_EQ(level(2), line * 100 / 3);
    }
    EXPECT_EQ(overflow(), 0);
    EXPECT_EQ(lostLines(), 0);
    lines(1);
    EXPECT_EQ(overflow(), 1);
    EXPECT_EQ(overflows(), 1U);
    EXPECT_EQ(lostLines(), 1);
    EXPECT_EQ(lostFrames(), 0);
    lines(2);
    EXPECT_EQ(lostLines(), 3);
    EXPECT_EQ(lostFrames(), 1);
    EXPECT_EQ(overflows(), 1U) << "the lines behind it are the same loss";
    lines(1);
    EXPECT_EQ(overflows(), 2U);
    softboard_link(board, 1);
    lines(1);
    EXPECT_EQ(pictures(), 1);
    EXPECT_EQ(overflow(), 1) << "until the next start";
    Fg_stopAcquireEx(fg, 0, nullptr, 0);
    EXPECT_EQ(overflow(), 1);
    acquire(-1, memory_);
    EXPECT_EQ(overflow(), 0);
    EXPECT_EQ(lostLines(), 0);
}

TEST_F(BoardBuffer, DeliversWhatFitOfAFrame) {
    banks(2, 40);  // 60 bytes: two lines
    softboard_link(board, 0);
    acquire(-1, memory_);
    lines(4);
    softboard_link(board, 1);
    lines(3);
    ASSERT_EQ(pictures(), 2);
    const auto first = frame(memory_, 1);
    EXPECT_EQ(first->about.lines, 2U);
    EXPECT_EQ(first->about.flags, unsigned{SOFTBOARD_FRAME_SHORT | SOFTBOARD_FRAME_LINES_LOST});
    EXPECT_EQ(first->bytes.size(), 48U);
    const auto second = frame(memory_, 2);
    EXPECT_EQ(second->about.lines, 2U) << "its first line came before the link";
    EXPECT_EQ(second->about.image, 2U);
    EXPECT_EQ(lostLines(), 2);
    EXPECT_EQ(overflows(), 2U);
}

TEST_F(BoardBuffer, OfAByteLosesEverything) {
    banks(0, 3);  // 9 bits: one byte
    acquire(-1, memory_);
    lines(6);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(lostLines(), 6);
    EXPECT_EQ(lostFrames(), 2);
    EXPECT_EQ(overflow(), 1);
}

TEST_F(BoardBuffer, IsEmptiedAtTheRateOfTheDma) {
    // 72 bytes at 45e6 bytes/s: 1.6 µs, two times of a line.
    ASSERT_EQ(softboard_dma_rate(board, 45e6), 0);
    softboard_link(board, 0);
    acquire(-1, memory_);
    lines(3);
    softboard_link(board, 1);
    EXPECT_EQ(waiting(), 72);
    pass(0.4);
    EXPECT_EQ(waiting(), 54 + LineBytes);
    pass(0.4);
    EXPECT_EQ(waiting(), 36 + LineBytes);
    pass(0.792);
    EXPECT_EQ(pictures(), 0);
    pass(0.008);
    EXPECT_EQ(pictures(), 1);
    EXPECT_EQ(waiting(), 2 * LineBytes);
}

TEST_F(BoardBuffer, IsPassedAtOnceByADmaThatTakesNoTime) {
    ASSERT_EQ(softboard_dma_rate(board, Infinite), 0);
    acquire(-1, memory_);
    lines(2);  // the third has begun, and takes a tick
    EXPECT_EQ(pictures(), 0);
    pass(0.008);
    EXPECT_EQ(pictures(), 1);
    EXPECT_EQ(waiting(), 0);
}

TEST_F(BoardBuffer, FillsWhereTheDmaIsTooSlow) {
    banks(7, 16);                                   // 768 bytes, 32 lines
    ASSERT_EQ(softboard_dma_rate(board, 15e6), 0);  // half of what comes
    acquire(-1, memory_);
    lines(60);
    EXPECT_EQ(lostLines(), 0);
    EXPECT_NEAR(static_cast<double>(waiting()), 30 * LineBytes, LineBytes);
    lines(600);
    EXPECT_EQ(overflow(), 1);
    // Half of the lines get through, but for those that the buffer holds.
    EXPECT_NEAR(static_cast<double>(lostLines()), 600 / 2, 8);
    EXPECT_EQ(cameraEvents("LineEnd"), 660U);
}

TEST_F(BoardBuffer, IsTheSameInManySteps) {
    const auto run = [&](int steps) {
        banks(7, 16);
        softboard_dma_rate(board, 14.7e6);
        acquire(-1, memory_);
        for (int step = 0; step < steps; ++step) {
            pass(1000 * LineTime / steps);
        }
        const auto last = frame(memory_, pictures());
        const std::string result = std::to_string(pictures()) + " " + std::to_string(waiting()) + " " +
                                   std::to_string(lostLines()) + " " + std::to_string(lostFrames()) + " " +
                                   std::to_string(last->about.image) + " " + std::to_string(last->about.lines);
        Fg_stopAcquireEx(fg, 0, nullptr, 0);
        return result;
    };
    const std::string once = run(1);
    EXPECT_EQ(run(997), once);
}

TEST_F(BoardBuffer, TakesNothingOfWhatTheSelectorLeavesOut) {
    banks(3, 24);
    process0("ImageSelector_FG_IMG_SELECT_PERIOD_Divisor", 4);
    softboard_link(board, 0);
    acquire(-1, memory_);
    lines(3 * 4);
    EXPECT_EQ(waiting(), 72) << "the first of four";
    EXPECT_EQ(lostLines(), 9) << "the others do not get in to be left out";
    softboard_link(board, 1);
    lines(3 * 8);
    EXPECT_EQ(lostLines(), 9);
    EXPECT_EQ(status(SOFTBOARD_STATUS_LOST_FRAMES), 3);
}

TEST_F(BoardBuffer, RefusesRatesThatMakeNoSense) {
    for (const double rate : {0.0, -1.0, -Infinite, static_cast<double>(NAN)}) {
        EXPECT_EQ(softboard_dma_rate(board, rate), SOFTBOARD_E_ARGUMENT) << rate;
    }
    EXPECT_EQ(softboard_dma_rate(nullptr, 1.0), SOFTBOARD_E_ARGUMENT);
}

}  // namespace
