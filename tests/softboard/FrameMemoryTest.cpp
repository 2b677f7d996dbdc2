// Memory of frames, and the calls that fill it.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <limits>
#include <thread>

#include "tests/softboard/FrameBoard.h"

namespace {

using testing::ElementsAre;

class FrameMemories : public FrameBoard {
protected:
    void SetUp() override {
        FrameBoard::SetUp();
        useSimulator();
    }
    void frames(int count) { pass(count * FrameTime); }
    bool holds(softboard_memory* memory, std::int64_t number) {
        return softboard_memory_data(memory, number, nullptr) != nullptr;
    }
};

TEST_F(FrameMemories, GetTheFramesInTurn) {
    softboard_memory* const memory = memoryOf(3);
    ASSERT_EQ(acquire(-1, memory), 0);
    EXPECT_FALSE(holds(memory, 1));
    frames(2);
    const auto second = frame(memory, 2);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->about.number, 2U);
    EXPECT_EQ(second->about.image, 2U);
    EXPECT_EQ(second->about.buffer, 1U);
    EXPECT_EQ(second->about.bytes, FrameBytes);
    EXPECT_EQ(second->about.width, Width);
    EXPECT_EQ(second->about.lines, Height);
    EXPECT_EQ(second->about.bits, 8U);
    EXPECT_EQ(second->about.flags, 0U);
    EXPECT_EQ(second->about.lost_before, 0U);
    EXPECT_EQ(second->about.last_tick - second->about.first_tick, 200U);
    EXPECT_FALSE(holds(memory, 3));
    EXPECT_FALSE(holds(memory, 0));
    EXPECT_FALSE(holds(memory, -1));
}

TEST_F(FrameMemories, OverwriteTheOldestAsARing) {
    softboard_memory* const memory = memoryOf(3);
    acquire(-1, memory);
    frames(5);
    EXPECT_EQ(pictures(), 5);
    EXPECT_FALSE(holds(memory, 2));
    EXPECT_TRUE(holds(memory, 3));
    EXPECT_EQ(frame(memory, 4)->about.buffer, 0U);
    EXPECT_THAT(blue(*frame(memory, 4)), testing::Each(testing::Ge(3)));
}

TEST_F(FrameMemories, FillReleasedBuffersOnlyWhereTheyHold) {
    softboard_memory* const memory = memoryOf(2);
    ASSERT_EQ(softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD), 0);
    acquire(-1, memory);
    frames(5);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), static_cast<std::int64_t>(3 * FrameBytes));
    EXPECT_EQ(softboard_memory_release(memory, 2), 0);
    EXPECT_EQ(pictures(), 2);  // the first buffer is next
    EXPECT_EQ(softboard_memory_release(memory, 1), 0);
    EXPECT_EQ(pictures(), 4);
    EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), static_cast<std::int64_t>(FrameBytes));
    EXPECT_FALSE(holds(memory, 1));
    EXPECT_EQ(softboard_memory_release(memory, 1), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_memory_release(memory, 5), SOFTBOARD_E_RANGE);
    EXPECT_EQ(frame(memory, 4)->about.image, 4U);
}

TEST_F(FrameMemories, ReleaseNothingAsARing) {
    softboard_memory* const memory = memoryOf(2);
    acquire(-1, memory);
    frames(1);
    EXPECT_EQ(softboard_memory_release(memory, 1), SOFTBOARD_E_RANGE);
}

TEST_F(FrameMemories, FillAtTheRateOfTheBoardsOwn) {
    // 2^10 words of 8 bits in three banks: 3072 bytes, 42 frames and two lines.
    softboard_set_integer(board, "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", 10);
    softboard_set_integer(board, "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth", 8);
    softboard_memory* const memory = memoryOf(1);
    softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD);
    acquire(-1, memory);
    frames(22);
    std::int64_t level = 0;
    softboard_get_integer(board, "Device1_Process0_Buffer_0_DRAM_DRAM_A_0_FillLevel", &level);
    EXPECT_EQ(level, 49);  // 21 frames wait
    frames(21);
    std::int64_t overflow = 9;
    softboard_get_integer(board, "Device1_Process0_Overflow_OverflowOccurred", &overflow);
    EXPECT_EQ(overflow, 0);
    frames(2);
    softboard_get_integer(board, "Device1_Process0_Overflow_OverflowOccurred", &overflow);
    EXPECT_EQ(overflow, 1);
    EXPECT_EQ(events("Device1_Process0_Overflow_Overflow"), 2U);
    EXPECT_EQ(status(SOFTBOARD_STATUS_LOST_FRAMES), 1);
    EXPECT_EQ(status(SOFTBOARD_STATUS_LOST_LINES), 1 + Height);
    for (std::int64_t number = 1; number <= 43; ++number) {
        softboard_memory_release(memory, number);
    }
    EXPECT_EQ(pictures(), 44);
    EXPECT_EQ(frame(memory, 44)->about.lines, 2U);
    EXPECT_EQ(frame(memory, 44)->about.flags, unsigned{SOFTBOARD_FRAME_SHORT | SOFTBOARD_FRAME_LINES_LOST});
    softboard_memory_release(memory, 44);
    frames(1);
    EXPECT_EQ(pictures(), 45);
    EXPECT_EQ(frame(memory, 45)->about.lost_before, 1U);
    EXPECT_EQ(frame(memory, 45)->about.image, 46U);
    Fg_stopAcquireEx(fg, 0, memory, 0);
    acquire(-1, memory);
    softboard_get_integer(board, "Device1_Process0_Overflow_OverflowOccurred", &overflow);
    EXPECT_EQ(overflow, 0);
    EXPECT_EQ(status(SOFTBOARD_STATUS_LOST_FRAMES), 0);
}

TEST_F(FrameMemories, TakeWholeLinesOfAFrameThatIsTooLong) {
    softboard_memory* const memory = memoryOf(1, FrameBytes - 1);
    acquire(1, memory);
    frames(1);
    const auto drawn = frame(memory, 1);
    ASSERT_TRUE(drawn);
    EXPECT_EQ(drawn->about.lines, Height - 1);
    EXPECT_EQ(drawn->about.bytes, (Height - 1) * Width * 3);
    EXPECT_EQ(drawn->about.flags, SOFTBOARD_FRAME_TRUNCATED);
}

TEST_F(FrameMemories, TellOfAFrameAsMuchAsTheCallerKnows) {
    softboard_memory* const memory = memoryOf(1);
    acquire(1, memory);
    frames(1);
    softboard_frame about{};
    about.size = offsetof(softboard_frame, image);
    about.image = 4711;
    ASSERT_NE(softboard_memory_data(memory, 1, &about), nullptr);
    EXPECT_EQ(about.number, 1U);
    EXPECT_EQ(about.image, 4711U);
}

TEST_F(FrameMemories, AreRefusedWithoutSense) {
    EXPECT_EQ(softboard_memory_open(nullptr, 10, 1, nullptr), nullptr);
    EXPECT_EQ(softboard_memory_open(board, 0, 1, nullptr), nullptr);
    EXPECT_EQ(softboard_memory_open(board, 10, 0, nullptr), nullptr);
    EXPECT_EQ(softboard_memory_open(board, std::numeric_limits<std::size_t>::max() / 2, 3, nullptr), nullptr);
    EXPECT_EQ(softboard_memory_close(nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_memory_mode(nullptr, 0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_memory_mode(memoryOf(1), 2), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_memory_release(nullptr, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_memory_data(nullptr, 1, nullptr), nullptr);
    EXPECT_EQ(softboard_on_frame(nullptr, nullptr, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_byte_order(nullptr, 1), SOFTBOARD_E_ARGUMENT);
}

TEST_F(FrameMemories, ThatAreNoneAreNoTargetOfAnAcquisition) {
    softboard_memory* const closed = softboard_memory_open(board, 10, 1, nullptr);
    softboard_memory_close(closed);
    EXPECT_EQ(acquire(1, closed), SOFTBOARD_E_ARGUMENT);
    int other = 0;
    EXPECT_EQ(Fg_AcquireEx(fg, 0, 1, 0, &other), SOFTBOARD_E_ARGUMENT);
    IXdevice* const otherBoard = softboard_open();
    softboard_memory* const ofOther = softboard_memory_open(otherBoard, 10, 1, nullptr);
    EXPECT_EQ(acquire(1, ofOther), SOFTBOARD_E_ARGUMENT);
    softboard_close(otherBoard);
    EXPECT_EQ(softboard_memory_close(ofOther), 0);
}

TEST_F(FrameMemories, AreNotClosedOrSwitchedWhileTheyAreFilled) {
    softboard_memory* const memory = memoryOf(1);
    acquire(-1, memory);
    EXPECT_EQ(softboard_memory_close(memory), SOFTBOARD_E_ACQUISITION);
    EXPECT_EQ(softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD), SOFTBOARD_E_ACQUISITION);
    Fg_stopAcquireEx(fg, 0, memory, 0);
    EXPECT_EQ(softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD), 0);
}

TEST_F(FrameMemories, KeepTheirFramesUntilTheNextStart) {
    softboard_memory* const memory = memoryOf(2);
    acquire(-1, memory);
    frames(2);
    Fg_stopAcquireEx(fg, 0, memory, 0);
    EXPECT_TRUE(holds(memory, 2));
    acquire(-1, memory);
    EXPECT_FALSE(holds(memory, 2));
}

TEST_F(FrameMemories, TellACallBackOfEachFrame) {
    struct Seen {
        std::vector<std::uint64_t> numbers;
        const void* data = nullptr;
        std::thread::id thread;
    } seen;
    softboard_memory* const memory = memoryOf(2);
    const auto note = [](void* user, const softboard_frame* about, const void* data) {
        auto& it = *static_cast<Seen*>(user);
        it.numbers.push_back(about->number);
        it.data = data;
        it.thread = std::this_thread::get_id();
    };
    ASSERT_EQ(softboard_on_frame(memory, note, &seen), 0);
    acquire(-1, memory);
    frames(2);
    EXPECT_THAT(seen.numbers, ElementsAre(1, 2));
    EXPECT_EQ(seen.data, softboard_memory_data(memory, 2, nullptr));
    EXPECT_EQ(seen.thread, std::this_thread::get_id());
    softboard_on_frame(memory, nullptr, nullptr);
    frames(2);
    EXPECT_EQ(seen.numbers.size(), 2U);
}

TEST_F(FrameMemories, MayBeReleasedAndStoppedOutOfTheCallBack) {
    struct State {
        softboard_memory* memory;
        Fg_Struct* fg;
        int frames = 0;
    } state{memoryOf(1), fg};
    softboard_memory_mode(state.memory, SOFTBOARD_MEMORY_HOLD);
    softboard_on_frame(
        state.memory,
        [](void* user, const softboard_frame* about, const void*) {
            auto& it = *static_cast<State*>(user);
            softboard_memory_release(it.memory, static_cast<std::int64_t>(about->number));
            if (++it.frames == 3) {
                Fg_stopAcquireEx(it.fg, 0, it.memory, 0);
            }
        },
        &state);
    acquire(-1, state.memory);
    frames(10);
    EXPECT_EQ(state.frames, 3);
    EXPECT_EQ(status(0), 0);
}

TEST_F(FrameMemories, LieInSharedMemoryUnderTheirName) {
    const std::string name = "/quillon_test_" + std::to_string(getpid());
    softboard_memory* const memory = softboard_memory_open(board, FrameBytes, 2, name.c_str());
    ASSERT_NE(memory, nullptr);
    EXPECT_EQ(softboard_memory_open(board, FrameBytes, 2, name.c_str()), nullptr);
    acquire(2, memory);
    frames(2);
    const int file = shm_open(name.c_str(), O_RDONLY, 0);
    ASSERT_GE(file, 0);
    std::vector<std::uint8_t> content(2 * FrameBytes);
    EXPECT_EQ(read(file, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    close(file);
    auto expected = frame(memory, 1)->bytes;
    const auto second = frame(memory, 2)->bytes;
    expected.insert(expected.end(), second.begin(), second.end());
    EXPECT_EQ(content, expected);
    EXPECT_EQ(softboard_memory_close(memory), 0);
    EXPECT_LT(shm_open(name.c_str(), O_RDONLY, 0), 0);
}

TEST_F(FrameMemories, HaveRedFirstWhereTheHostWantsIt) {
    simulator("Enable_SelectSource", 0);
    useCamera();
    softboard_memory* const memory = memoryOf(2);
    acquire(-1, memory);
    pass(10.0 * Height + 2.0);
    softboard_byte_order(board, 1);
    pass(10.0 * Height);
    EXPECT_EQ(frame(memory, 1)->about.flags, 0U);
    EXPECT_EQ(frame(memory, 2)->about.flags, SOFTBOARD_FRAME_RED_FIRST);
    const auto blueFirst = frame(memory, 1)->bytes;
    const auto redFirst = frame(memory, 2)->bytes;
    ASSERT_EQ(blueFirst.size(), redFirst.size());
    for (std::size_t at = 0; at < blueFirst.size(); at += 3) {
        EXPECT_EQ(blueFirst[at], redFirst[at + 2]);
        EXPECT_EQ(blueFirst[at + 2], redFirst[at]);
    }
}

// ---- Counting, stopping, waiting ----

using AcquisitionOfFrames = FrameMemories;

TEST_F(AcquisitionOfFrames, EndsByItselfAtItsCount) {
    softboard_memory* const memory = memoryOf(4);
    acquire(3, memory);
    frames(5);
    std::uint32_t dma = 9;
    get("FG_DMASTATUS", dma, 2);
    EXPECT_EQ(dma, 0U);
    EXPECT_EQ(status(0), 0);
    EXPECT_EQ(status(1), 3);
    EXPECT_EQ(status(2), 3);
    EXPECT_EQ(pictures(), 3);
    EXPECT_EQ(Fg_stopAcquireEx(fg, 0, memory, 0), 0);
    EXPECT_EQ(Fg_stopAcquireEx(fg, 0, memory, 0), SOFTBOARD_E_ACQUISITION);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 3, 0, 60, memory), 3);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 4, 0, 60, memory), SOFTBOARD_E_ACQUISITION);
}

TEST_F(AcquisitionOfFrames, MayBeStartedAgainWhenItHasEnded) {
    softboard_memory* const memory = memoryOf(4);
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(acquire(1, memory), 0);
        frames(1);
        EXPECT_EQ(pictures(), 1);
    }
}

TEST_F(AcquisitionOfFrames, OfNoneStartsNothing) {
    EXPECT_EQ(acquire(0, memoryOf(1)), 0);
    EXPECT_EQ(status(0), 0);
    frames(2);
    EXPECT_EQ(pictures(), 0);
}

TEST_F(AcquisitionOfFrames, IsNotWaitedForInVain) {
    acquire(5, memoryOf(1));
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 6, 0, 60, nullptr), SOFTBOARD_E_ACQUISITION);
}

TEST_F(AcquisitionOfFrames, IsLookedAtOnceWithoutATimeout) {
    acquire(-1, memoryOf(1));
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 0, 0, nullptr), SOFTBOARD_E_TIMEOUT);
    frames(1);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 0, 0, nullptr), 1);
}

TEST_F(AcquisitionOfFrames, IsWaitedForWhileAnotherThreadMovesTheTime) {
    acquire(-1, memoryOf(2));
    std::thread time([&] { frames(3); });
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 3, 0, 60, nullptr), 3);
    time.join();
}

TEST_F(AcquisitionOfFrames, EndsWhenNoFrameComesForTheTimeout) {
    simulator("TriggerValve_FreeRun_Select", 0);
    set("FG_TIMEOUT", std::uint32_t{2}, 2);
    acquire(-1, memoryOf(1));
    pass(2e6);
    EXPECT_EQ(status(0), 1);
    pass(1.0);
    EXPECT_EQ(status(0), 0);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 0, 60, nullptr), SOFTBOARD_E_TIMEOUT);
}

TEST_F(AcquisitionOfFrames, TellsOfEachFrame) {
    softboard_memory* const memory = memoryOf(2);
    acquire(-1, memory);
    frames(3);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_BYTES, 3), static_cast<std::int64_t>(FrameBytes));
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_BUFFER, 2), 1);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_FIRST_TICK, 2), 300);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_LINES, 3), Height);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_FLAGS, 3), 0);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_BYTES, 1), SOFTBOARD_E_RANGE);
    EXPECT_EQ(status(SOFTBOARD_STATUS_FRAME_BYTES, 4), SOFTBOARD_E_RANGE);
    EXPECT_EQ(status(1005, 3), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(status(1014), SOFTBOARD_E_ARGUMENT);
}

TEST_F(AcquisitionOfFrames, DropsTheFrameUnderWayWhenItIsStopped) {
    softboard_memory* const memory = memoryOf(2);
    acquire(-1, memory);
    pass(FrameTime * 1.5);
    EXPECT_EQ(Fg_stopAcquireEx(fg, 0, memory, 0), 0);
    pass(FrameTime);
    EXPECT_EQ(pictures(), 1);
    EXPECT_FALSE(holds(memory, 2));
}

TEST_F(AcquisitionOfFrames, TakesItsSettingsBetweenLines) {
    softboard_memory* const memory = memoryOf(1);
    acquire(1, memory);
    pass(LineTime + 0.1);  // the second line is under way
    simulator("Offset_Value", 100);
    pass(FrameTime);
    EXPECT_THAT(blue(*frame(memory, 1)), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7,  //
                                                     1, 2, 3, 4, 5, 6, 7, 8,  //
                                                     102, 103, 104, 105, 106, 107, 108, 109));
}

TEST_F(AcquisitionOfFrames, MarksAFrameOfLinesThatDiffer) {
    softboard_memory* const memory = memoryOf(1);
    acquire(1, memory);
    pass(LineTime + 0.1);
    buffer("XLength", 4);
    pass(FrameTime);
    const auto drawn = frame(memory, 1);
    EXPECT_EQ(drawn->about.flags, SOFTBOARD_FRAME_MIXED);
    EXPECT_EQ(drawn->about.width, 8U);
    EXPECT_EQ(drawn->about.lines, Height);
    EXPECT_THAT(blue(*drawn), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7,  //
                                          1, 2, 3, 4, 5, 6, 7, 8,  //
                                          2, 3, 4, 5));
}

TEST_F(AcquisitionOfFrames, TellsTheFormatOfTheFirstLineThatHasOne) {
    process0("OutputFormat_Convert0_VirtualTrash_EnableTrash_Value", 1);
    softboard_memory* const memory = memoryOf(1);
    acquire(1, memory);
    pass(LineTime + 0.1);
    process0("OutputFormat_Convert0_VirtualTrash_EnableTrash_Value", 0);
    pass(FrameTime);
    const auto drawn = frame(memory, 1);
    ASSERT_TRUE(drawn);
    EXPECT_EQ(drawn->about.bits, 8U);
    EXPECT_EQ(drawn->about.flags, SOFTBOARD_FRAME_MIXED);
    EXPECT_THAT(blue(*drawn), ElementsAre(2, 3, 4, 5, 6, 7, 8, 9));
}

TEST_F(AcquisitionOfFrames, GivesTheSameInOneStepAsInMany) {
    std::vector<std::vector<std::uint8_t>> runs[2];
    for (int run = 0; run < 2; ++run) {
        softboard_memory* const memory = memoryOf(100);
        acquire(100, memory);
        for (int step = 0; step < (run == 0 ? 1 : 1000); ++step) {
            pass(run == 0 ? 100 * FrameTime : FrameTime / 10);
        }
        for (std::int64_t number = 1; number <= pictures(); ++number) {
            runs[run].push_back(frame(memory, number)->bytes);
        }
    }
    ASSERT_EQ(runs[0].size(), 100U);
    EXPECT_EQ(runs[0], runs[1]);
}

// ---- The clock ----

using FrameClock = FrameMemories;

TEST_F(FrameClock, IsDrivenByWhoeverWaitsWhereItIsFree) {
    softboard_clock(board, SOFTBOARD_CLOCK_FREE, 1.0);
    softboard_memory* const memory = memoryOf(4);
    acquire(-1, memory);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1000, 0, 60, memory), 1000);
    EXPECT_EQ(frame(memory, 1000)->about.image, 1000U);
    EXPECT_EQ(frame(memory, 1000)->about.lost_before, 0U);
}

TEST_F(FrameClock, GivesUpAfterTheSecondsOfTheBoardWhereItIsFree) {
    softboard_clock(board, SOFTBOARD_CLOCK_FREE, 1.0);
    simulator("Enable_SelectSource", 0);
    useCamera();
    unit("ImgTriggerMode", 1);
    acquire(-1, memoryOf(1));
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 0, 2, nullptr), SOFTBOARD_E_TIMEOUT);
    double time = 0.0;
    softboard_get_signal_time(board, &time);
    EXPECT_EQ(time, 2e6);
}

TEST_F(FrameClock, WaitsForABufferWhereItIsFree) {
    softboard_clock(board, SOFTBOARD_CLOCK_FREE, 1.0);
    softboard_memory* const memory = memoryOf(1);
    softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD);
    acquire(-1, memory);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 0, 60, memory), 1);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 2, 0, 0, memory), SOFTBOARD_E_TIMEOUT);
    std::thread user([&] { softboard_memory_release(memory, 1); });
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 2, 0, 60, memory), 2);
    user.join();
    EXPECT_EQ(status(SOFTBOARD_STATUS_LOST_FRAMES), 0);
}

TEST_F(FrameClock, FollowsTheDayWhileAnAcquisitionRuns) {
    softboard_clock(board, SOFTBOARD_CLOCK_AUTO, 1.0);
    double before = 0.0;
    softboard_get_signal_time(board, &before);
    softboard_memory* const memory = memoryOf(4);
    acquire(20, memory);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 20, 0, 60, memory), 20);
    Fg_stopAcquireEx(fg, 0, memory, 0);
    double after = 0.0;
    softboard_get_signal_time(board, &after);
    EXPECT_GE(after - before, 20 * FrameTime);
    double later = 0.0;
    softboard_get_signal_time(board, &later);
    EXPECT_EQ(after, later);
}

TEST_F(FrameClock, FollowsTheDayWithoutAnAcquisitionWhereItIsReal) {
    softboard_clock(board, SOFTBOARD_CLOCK_REAL, 2.0);
    double time = 0.0;
    while (time < 5000.0) {
        softboard_get_signal_time(board, &time);
    }
    softboard_clock(board, SOFTBOARD_CLOCK_STEPPED, 1.0);
    softboard_get_signal_time(board, &time);
    double later = 0.0;
    softboard_get_signal_time(board, &later);
    EXPECT_EQ(time, later);
}

TEST_F(FrameClock, TakesNoOtherModesAndSpeeds) {
    EXPECT_EQ(softboard_clock(board, 4, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_clock(board, -1, 1.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_clock(board, SOFTBOARD_CLOCK_REAL, 0.0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_clock(board, SOFTBOARD_CLOCK_REAL, std::numeric_limits<double>::quiet_NaN()),
              SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_clock(board, SOFTBOARD_CLOCK_REAL, 1000.5), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_clock(nullptr, SOFTBOARD_CLOCK_REAL, 1.0), SOFTBOARD_E_ARGUMENT);
}

TEST_F(FrameClock, SurvivesWritesFromOtherThreads) {
    simulator("PixelFrequency_SequenceLength_ImageWidth", 1000);
    softboard_clock(board, SOFTBOARD_CLOCK_AUTO, 1.0);
    softboard_memory* const memory = memoryOf(4);
    std::atomic<std::uint64_t> called = 0;
    softboard_on_frame(
        memory,
        [](void* user, const softboard_frame*, const void*) { ++*static_cast<std::atomic<std::uint64_t>*>(user); },
        &called);
    acquire(-1, memory);
    std::thread writer([&] {
        for (std::uint32_t value = 0; value < 2000; ++value) {
            simulator("Offset_Value", value % 256);
            process0("OutputFormat_DynamicShift_Shift_Value", value % 16);
            buffer("XLength", 4 + value % 2 * 4);
        }
    });
    EXPECT_GE(Fg_getLastPicNumberBlockingEx(fg, 200, 0, 60, memory), 200);
    writer.join();
    EXPECT_EQ(Fg_stopAcquireEx(fg, 0, memory, 0), 0);
    EXPECT_GE(called, 200U);
    EXPECT_EQ(called, static_cast<std::uint64_t>(pictures()));
}

TEST_F(FrameClock, EndsItsThreadWithTheBoard) {
    softboard_clock(board, SOFTBOARD_CLOCK_REAL, 1.0);
    acquire(-1, nullptr);
    // TearDown frees the handle and closes the board.
}

}  // namespace
