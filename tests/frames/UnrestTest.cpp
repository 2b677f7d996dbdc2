/// @file
/// A board that is never left alone: calls from many threads while frames come, functions that call the board they are
/// called by, designs that lack parameters, a design put on the board again, settings that change within frames.

#include <array>
#include <atomic>
#include <functional>
#include <thread>

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

const std::string Process0 = "Device1_Process0_";

class Unrest : public Bench {
protected:
    static constexpr int Height = 4;

    void SetUp() override {
        Bench::SetUp();
        useCamera(Width, Height);
        set(FG_LINEPERIODE, 20.0);
        set(FG_LINEEXPOSURE, 5.0);
        pattern("ramp");
    }

    /// Runs all at once, each so many times.
    static void together(int times, const std::vector<std::function<void(int)>>& doings) {
        std::vector<std::thread> threads;
        for (const auto& doing : doings) {
            threads.emplace_back([&doing, times] {
                for (int time = 0; time < times; ++time) {
                    doing(time);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    /// Whatever was done to it: it takes frames as on the first day.
    void stillWorks() {
        ASSERT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_STEPPED, 1.0), 0);
        stop();
        ASSERT_EQ(softboard_clear_faults(device()), 0);
        ASSERT_EQ(softboard_camera(device(), 1), 0);
        ASSERT_EQ(softboard_link(device(), 1), 0);
        ASSERT_EQ(softboard_dma_rate(device(), Forever), 0);
        ASSERT_EQ(softboard_scene_light(device(), 0.0, 1.0, 0.0), 0);
        ASSERT_EQ(softboard_belt(device(), TrackA, TrackB, 0.0, nullptr, 0), 0);
        set(FG_FORMAT, FG_COL24);
        useCamera(Width, Height);
        pattern("grey:60");
        softboard_memory* const fresh = memoryOf(8, Width * Height * 3);
        acquire(2, fresh);
        pass(1000.0);
        ASSERT_EQ(pictures(), 2);
        EXPECT_EQ(numbers(frame(fresh, 2)), std::vector<int>(Width * Height * 3, 60));
        EXPECT_EQ(lostFrames(), 0);
        EXPECT_EQ(status(SOFTBOARD_STATUS_FAULTS), 0);
    }
};

TEST_F(Unrest, OfManyThreadsInRealTime) {
    ASSERT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_AUTO, 50.0), 0);
    softboard_memory* const ring = memoryOf(4, Width * Height * 3);
    softboard_memory* const hold = memoryOf(2, Width * Height * 3);
    ASSERT_EQ(softboard_memory_mode(hold, SOFTBOARD_MEMORY_HOLD), 0);
    const TemporaryPicture file("unrest.pgm", greyRows(Width, {1, 2, 3}));
    const std::array<softboard_move, 3> moves{{{100.0, 500.0}, {200.0, -500.0}, {1e9, 100.0}}};
    together(60, {
                     [&](int) { softboard_belt(device(), TrackA, TrackB, 10.0, moves.data(), moves.size()); },
                     [&](int time) {
                         softboard_barrier(device(), Barrier, 0.1, 1.0, time % 3 == 0 ? 0.0 : 0.5);
                         double mm = 0.0;
                         softboard_belt_position(device(), &mm);
                     },
                     [&](int time) {
                         softboard_scene_pattern(device(), time % 2 == 0 ? "noise" : "ramp");
                         softboard_scene_picture(device(), file.path().c_str(), 1, 10.0);
                         softboard_scene_light(device(), 5.0, 2.0, 0.01);
                         softboard_scene_picture(device(), "/nonexistent.png", 1, 10.0);
                         std::array<char, 8> text{};
                         softboard_last_message(device(), text.data(), text.size());
                     },
                     [&](int time) {
                         softboard_plan_line_fault(device(), 2, time % 3);
                         softboard_plan_frame_fault(device(), 1, time % 3, 3.0);
                         softboard_plan_outage(device(), time % 2, 10.0, 100.0);
                         if (time % 8 == 0) {
                             softboard_clear_faults(device());
                         }
                     },
                     [&](int time) {
                         softboard_dma_rate(device(), time % 2 == 0 ? 1e5 : Forever);
                         softboard_link(device(), time % 3 == 0 ? 0 : 1);
                         softboard_camera(device(), time % 4 == 0 ? 0 : 1);
                     },
                     [&](int time) {
                         built.applet.stopAcquire(0, nullptr, 0);
                         if (built.applet.acquire(0, time % 3 == 0 ? 5 : -1, 0, time % 2 == 0 ? ring : hold) == 0) {
                             built.applet.lastPictureBlocking(1, 0, 0, nullptr);
                         }
                     },
                     [&](int) {
                         for (std::int64_t number = 1; number < 5; ++number) {
                             softboard_memory_release(hold, number);
                         }
                         softboard_frame about{};
                         about.size = sizeof about;
                         softboard_memory_data(ring, 1, &about);
                         softboard_memory* const brief = softboard_memory_open(device(), 64, 2, nullptr);
                         EXPECT_EQ(softboard_memory_close(brief), 0);
                     },
                     [&](int time) { softboard_clock(device(), time % 4, 20.0); },
                     [&](int time) {
                         const std::array<int, 3> formats{FG_COL24, FG_COL36, FG_COL48};
                         EXPECT_EQ(built.applet.setInt(FG_FORMAT, formats[static_cast<std::size_t>(time % 3)]), 0);
                         EXPECT_EQ(built.applet.setInt(FG_WIDTH, 4 + 4 * (time % 2)), 0);
                         built.board.advanceSignals(100.0);
                     },
                     [&](int) {
                         std::uint32_t value = 0;
                         EXPECT_EQ(built.applet.getUnsigned(FG_FILLLEVEL, value), 0);
                         EXPECT_LE(value, 100U);
                         EXPECT_EQ(built.applet.getUnsigned(FG_CAMSTATUS_EXTENDED, value), 0);
                         EXPECT_EQ(built.applet.getUnsigned(FG_SHAFTENCODER_COMPENSATION_COUNT, value), 0);
                     },
                 });
    stillWorks();
}

/// A frame that was being drawn when its acquisition ended is none of the next one.
TEST_F(Unrest, OfStartsAndStopsKeepsNumbersAndPicturesTogether) {
    ASSERT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_AUTO, 100.0), 0);
    softboard_memory* const ring = memoryOf(64, Width * Height * 3);
    std::atomic<bool> ended = false;
    std::thread mover([&] {
        while (!ended) {
            built.board.advanceSignals(200.0);
        }
    });
    std::thread stopper([&] {
        while (!ended) {
            built.applet.stopAcquire(0, nullptr, 0);
        }
    });
    for (int round = 0; round < 200; ++round) {
        if (built.applet.acquire(0, 3, 0, ring) == 0) {
            const std::int64_t reached = built.applet.lastPictureBlocking(3, 0, 1, ring);
            if (reached == 3) {
                softboard_frame about{};
                about.size = sizeof about;
                EXPECT_NE(softboard_memory_data(ring, 3, &about), nullptr);
                EXPECT_EQ(softboard_memory_data(ring, 4, &about), nullptr) << "no more than were asked for";
            }
        }
    }
    ended = true;
    mover.join();
    stopper.join();
    stillWorks();
}

struct Meddler {
    IXdevice* board;
    client::Applet* applet;
    softboard_memory* memory;
    int calls = 0;
};

/// Every call of the board that a function may make while the board waits for the line that it draws.
int drawAndMeddle(void* user, const softboard_line* /*about*/, std::uint16_t* rgb, std::uint32_t pixels) {
    auto& self = *static_cast<Meddler*>(user);
    std::fill_n(rgb, std::size_t{pixels} * 3, std::uint16_t{0x4000});
    const softboard_move move{1e9, 50.0};
    switch (++self.calls) {
        case 1: softboard_belt(self.board, 0, 1, 10.0, &move, 1); break;
        case 2: softboard_barrier(self.board, 2, 0.0, 1.0, 0.5); break;
        case 3: softboard_scene_light(self.board, 0.0, 1.0, 0.1); break;
        case 4: softboard_advance_signals(self.board, 500.0); break;
        case 5: softboard_plan_line_fault(self.board, 1, SOFTBOARD_FAULT_DROP); break;
        case 6: softboard_clear_faults(self.board); break;
        case 7: softboard_clock(self.board, SOFTBOARD_CLOCK_AUTO, 1.0); break;
        case 8: softboard_clock(self.board, SOFTBOARD_CLOCK_STEPPED, 1.0); break;
        case 9: EXPECT_EQ(softboard_memory_close(self.memory), SOFTBOARD_E_ACQUISITION); break;
        case 10: EXPECT_EQ(self.applet->setInt(FG_WIDTH, 4), 0); break;
        case 11: EXPECT_EQ(self.applet->setInt(FG_WIDTH, 8), 0); break;
        case 12: self.applet->lastPictureBlocking(1000, 0, 0, nullptr); break;
        case 13: self.applet->stopAcquire(0, nullptr, 0); break;
        case 14: EXPECT_EQ(self.applet->acquire(0, -1, 0, self.memory), 0); break;
        case 40: softboard_scene_pattern(self.board, "grey:60"); break;
        default: break;
    }
    return 0;
}

TEST_F(Unrest, OfAFunctionThatCallsItsBoard) {
    Meddler meddler{device(), &built.applet, memoryOf(16, Width * Height * 3)};
    ASSERT_EQ(softboard_scene_callback(device(), drawAndMeddle, &meddler), 0);
    acquire(-1, meddler.memory);
    for (int step = 0; step < 200 && meddler.calls < 40; ++step) {
        pass(100.0);
        if (status(0) == 0) {
            EXPECT_EQ(built.applet.acquire(0, -1, 0, meddler.memory), 0);
        }
    }
    EXPECT_GE(meddler.calls, 40);
    stillWorks();
}

/// A call-back that stops, and starts anew: what it was called with is the old acquisition's.
void restart(void* user, const softboard_frame* about, const void* /*data*/) {
    auto& self = *static_cast<Meddler*>(user);
    if (about->number == 2 && self.calls++ < 5) {
        EXPECT_EQ(self.applet->stopAcquire(0, nullptr, 0), 0);
        EXPECT_EQ(self.applet->acquire(0, 4, 0, self.memory), 0);
    }
}

TEST_F(Unrest, OfACallBackThatStartsAnew) {
    Meddler meddler{device(), &built.applet, memoryOf(16, Width * Height * 3)};
    ASSERT_EQ(softboard_on_frame(meddler.memory, restart, &meddler), 0);
    acquire(-1, meddler.memory);
    pass(10000.0);
    EXPECT_GE(meddler.calls, 5);
    ASSERT_EQ(pictures(), 4);
    for (std::int64_t number = 1; number <= 4; ++number) {
        EXPECT_EQ(frame(meddler.memory, number).about.number, static_cast<std::uint64_t>(number));
    }
    EXPECT_EQ(softboard_memory_data(meddler.memory, 5, nullptr), nullptr);
    stillWorks();
}

/// Designs that are loaded meanwhile lack the parameter.
class WithoutParameter {
protected:
    explicit WithoutParameter(const std::string& name) { setenv("SOFTBOARD_HIDE", name.c_str(), 1); }
    ~WithoutParameter() { unsetenv("SOFTBOARD_HIDE"); }
};

/// A design that lacks one thing lacks what that does, and no more goes wrong.
class LackingDesigns : public testing::WithParamInterface<const char*>, WithoutParameter, public Bench {
protected:
    LackingDesigns() : WithoutParameter(Process0 + GetParam()) {}

    void exercise() {
        IXdevice* const board = device();
        const TemporaryPicture file("lacking.pgm", greyRows(4, {1, 2}));
        const std::array<softboard_move, 3> moves{{{5000.0, 500.0}, {8000.0, -500.0}, {1e9, 100.0}}};
        softboard_memory* const taken = memoryOf(4, 4096);
        for (const int id : {FG_WIDTH, FG_HEIGHT}) {
            static_cast<void>(built.applet.setInt(id, 8));
        }
        for (const int mode : {GRABBER_CONTROLLED, ASYNC_TRIGGER}) {
            static_cast<void>(built.applet.setInt(FG_LINETRIGGERMODE, mode));
            static_cast<void>(built.applet.setInt(FG_LINETRIGGERINSRC, 0));
            static_cast<void>(built.applet.setInt(FG_SHAFTENCODERINSRC, 1));
            static_cast<void>(built.applet.setInt(FG_SHAFTENCODERON, mode == ASYNC_TRIGGER ? FG_ON : FG_OFF));
            softboard_belt(board, 0, 1, 10.0, moves.data(), moves.size());
            softboard_barrier(board, 2, 0.0, 1.0, 0.5);
            softboard_plan_frame_fault(board, 1, SOFTBOARD_FAULT_STALL_DMA, 10.0);
            softboard_plan_line_fault(board, 2, SOFTBOARD_FAULT_REPEAT);
            softboard_plan_outage(board, SOFTBOARD_OUTAGE_CAMERA, 100.0, 100.0);
            softboard_plan_outage(board, SOFTBOARD_OUTAGE_LINK, 100.0, 100.0);
            if (built.applet.acquire(0, -1, 0, taken) == 0) {
                pass(20000.0);
                for (const int point : {0, 1}) {
                    static_cast<void>(built.applet.setInt(FG_DEBUGSOURCE, point));
                    static_cast<void>(built.applet.setInt(FG_DEBUGINENABLE, FG_ON));
                    static_cast<void>(built.applet.setInt(FG_DEBUGOUTENABLE, FG_ON));
                    static_cast<void>(built.applet.setText(FG_DEBUGFILE, file.path()));
                    static_cast<void>(built.applet.setInt(FG_DEBUGINSERT, FG_APPLY));
                    pass(100.0);
                    static_cast<void>(built.applet.setInt64(FG_DEBUGWRITEPIXEL, 1));
                    static_cast<void>(built.applet.setInt(FG_DEBUGWRITEFLAG, FG_ENDOFFRAME));
                    pass(100.0);
                    static_cast<void>(built.applet.setInt(FG_DEBUGINENABLE, FG_OFF));
                }
                built.applet.stopAcquire(0, nullptr, 0);
            }
            softboard_camera(board, 0);
            softboard_link(board, 0);
            pass(1000.0);
            softboard_clear_faults(board);
            softboard_camera(board, 1);
            softboard_link(board, 1);
        }
    }
};

TEST_P(LackingDesigns, DoWithoutIt) {
    std::int64_t value = 0;
    ASSERT_EQ(softboard_get_integer(device(), (Process0 + GetParam()).c_str(), &value), SOFTBOARD_E_UNKNOWN_ID);
    exercise();
    EXPECT_EQ(softboard_advance_signals(device(), 1.0), 0);
}

using HiddenWhileFramesCome = Unrest;

TEST_F(HiddenWhileFramesCome, ParametersOfTheDesignAreStillInForce) {
    softboard_memory* const taken = memoryOf(4, Width * Height * 3);
    acquire(-1, taken);
    pass(50.0);
    for (const char* const name : {"Debug_ImageOutput_OperationMode", "Trigger_Trigger_EncoderABMode",
                                   "Buffer_0_DRAM_DRAM_A_0_RamDataWidth", "Overflow_OverflowOccurred"}) {
        ASSERT_EQ(softboard_hide_parameter(device(), (Process0 + name).c_str()), 0);
        pass(100.0);
    }
    EXPECT_GE(pictures(), 4);
}

INSTANTIATE_TEST_SUITE_P(
    Of, LackingDesigns,
    testing::Values("Debug_Entries", "Debug_N0", "Debug_T1", "Debug_P0", "Debug_P1", "Debug_CameraInput_OperationMode",
                    "Debug_CameraInput_DebugFile", "Debug_CameraInput_Insert", "Debug_CameraInput_Inject_WritePixel",
                    "Debug_CameraInput_Inject_WriteFlag", "Debug_CameraInput_Inject_ReadyForInjection",
                    "Debug_ImageOutput_OperationMode", "Debug_ImageOutput_DebugFile", "Debug_ImageOutput_Insert",
                    "Debug_ImageOutput_XPosition", "Debug_ImageOutput_YPosition", "Debug_ImageOutput_PixelValue",
                    "Trigger_Trigger_EncoderABMode", "Trigger_Trigger_EncoderABLead",
                    "Trigger_Trigger_EncoderCompensation", "Trigger_Trigger_EncoderCompensationCount",
                    "Trigger_Trigger_LineTrgDebouncingTime", "Trigger_Trigger_ImgTrgDebouncingTime",
                    "Trigger_InputSignal_LineTrgInSourceA_Input_Select",
                    "Trigger_InputSignal_LineTrgInSourceB_Input_Select", "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth",
                    "Buffer_0_DRAM_DRAM_A_0_RamDataWidth", "Buffer_0_DRAM_DRAM_A_0_FillLevel",
                    "Buffer_0_DRAM_DRAM_A_2_FillLevel", "Overflow_OverflowOccurred", "BoardStatus_PcieCurrentLinkWidth",
                    "ImageSelector_FG_IMG_SELECT_PERIOD_Divisor", "ImageSelector_FG_IMG_SELECT_PHASE_Number",
                    "Buffer_0_LinkPixelSpace_Parallelism", "Buffer_0_SensorWidth", "Buffer_0_XLength",
                    "CameraSimulator_Enable_SelectSource", "ImageHeight_ImageHeight"),
    [](const auto& tested) { return std::string(tested.param); });

TEST_F(Unrest, OfADesignThatIsPutOnAgain) {
    ASSERT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_AUTO, 50.0), 0);
    softboard_memory* const ring = memoryOf(4, Width * Height * 3);
    const std::array<softboard_move, 2> moves{{{1000.0, 500.0}, {1e9, -100.0}}};
    std::atomic<bool> ended = false;
    std::thread meddler([&] {
        for (int time = 0; !ended; ++time) {
            softboard_belt(device(), TrackA, TrackB, 10.0, moves.data(), moves.size());
            softboard_barrier(device(), Barrier, 0.1, 1.0, 0.5);
            softboard_plan_line_fault(device(), 3, time % 3);
            softboard_plan_outage(device(), time % 2, 10.0, 100.0);
            built.board.advanceSignals(50.0);
        }
    });
    for (int round = 0; round < 10; ++round) {
        static_cast<void>(built.applet.acquire(0, -1, 0, ring));
        built.applet.lastPictureBlocking(1, 0, 0, nullptr);
        const client::Applet second(built.library, built.board);
    }
    ended = true;
    meddler.join();
    // The design is as new: what this applet set is gone.
    set(FG_LINEPERIODE, 20.0);
    stillWorks();
}

/// Widths and formats change within frames that do not fit as a whole.
TEST_F(Unrest, OfSettingsWhileTheMemoryOverflows) {
    memorySize(64, 3);  // 192 bytes
    const std::size_t largest = std::size_t{16} * Height * 6;
    memory = memoryOf(256, largest);
    ASSERT_EQ(softboard_dma_rate(device(), 1e6), 0);
    acquire(-1, memory);
    const std::array<int, 5> formats{FG_COL24, FG_COL30, FG_COL36, FG_COL42, FG_COL48};
    for (int step = 0; step < 400; ++step) {
        pass(7.0 + step % 5);
        switch (step % 7) {
            case 0: set(FG_WIDTH, 4 + 4 * (step % 4)); break;
            case 1: set(FG_FORMAT, formats[static_cast<std::size_t>(step % 5)]); break;
            case 2: set(FG_HEIGHT, 1 + step % Height); break;
            case 3: set(FG_PIXELFORMAT, step % 2 == 0 ? RGB8 : RGB12); break;
            case 4: ASSERT_EQ(softboard_link(device(), step % 3 == 0 ? 0 : 1), 0); break;
            default: break;
        }
    }
    ASSERT_EQ(softboard_link(device(), 1), 0);
    ASSERT_EQ(softboard_dma_rate(device(), Forever), 0);
    pass(200.0);
    EXPECT_EQ(whole(FG_OVERFLOW), 1U);
    EXPECT_GT(lostLines(), 0);
    ASSERT_GT(pictures(), 10);
    EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING) < 192, true);
    std::uint64_t images = 0;
    std::uint64_t lost = 0;
    for (std::int64_t number = 1; number <= pictures(); ++number) {
        const softboard_frame about = frame(memory, number).about;
        EXPECT_LE(about.lines, static_cast<unsigned>(Height));
        lost += about.lost_before;
        images = about.image;
        EXPECT_EQ(images, static_cast<std::uint64_t>(number) + lost) << number;
        if ((about.flags & SOFTBOARD_FRAME_MIXED) == 0) {
            EXPECT_EQ(about.bytes, std::uint64_t{about.lines} * about.width * 3 * about.bits / 8) << number;
        }
    }
    EXPECT_EQ(static_cast<std::uint64_t>(lostFrames()), lost);
    set(FG_PIXELFORMAT, RGB8);
    memorySize(64, 20);
    stillWorks();
}

}  // namespace
}  // namespace quillon::frames_test
