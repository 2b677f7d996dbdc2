/// @file
/// Boards that run beside each other in one process: the same script gives the same bytes, in however many steps, and
/// none feels another.

#include <cstring>
#include <thread>

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

constexpr int Width = 16;
constexpr int Height = 8;
constexpr std::size_t FrameBytes = std::size_t{Width} * Height * 3;

/// A board with an applet, a belt with encoder and barrier, noise, faults and a memory of its own.
class Line {
public:
    static constexpr int Small = 6;  ///< address bits of a memory of four frames
    static constexpr int Large = 20;

    explicit Line(int clock, std::uint64_t seed = 1, double speed = 400.0, int addressBits = Small) {
        built.board.record(false);
        IXdevice* const board = built.board.device();
        must(softboard_clock(board, clock, 1.0));
        must(built.applet.setInt(FG_WIDTH, Width));
        must(built.applet.setInt(FG_HEIGHT, Height));
        must(built.applet.setInt(FG_LINETRIGGERMODE, ASYNC_TRIGGER));
        must(built.applet.setInt(FG_LINETRIGGERINSRC, TRGINSRC_GPI_0));
        must(built.applet.setInt(FG_SHAFTENCODERINSRC, TRGINSRC_GPI_1));
        must(built.applet.setInt(FG_SHAFTENCODERON, FG_ON));
        must(built.applet.setInt(FG_SHAFTENCODERMODE, FILTER_X2));
        must(built.applet.setInt(FG_SHAFTENCODER_COMPENSATION_ENABLE, FG_ON));
        must(built.applet.setInt(FG_FLASHON, FG_ON));
        built.board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth", 64);
        built.board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", addressBits);
        must(softboard_scene_pattern(board, "noise:5"));
        must(softboard_scene_light(board, 19.0, 1.5, 0.1));
        must(softboard_scene_seed(board, seed));
        must(softboard_plan_line_fault(board, 13, SOFTBOARD_FAULT_DROP));
        must(softboard_plan_line_fault(board, 29, SOFTBOARD_FAULT_REPEAT));
        must(softboard_plan_line_fault(board, 37, SOFTBOARD_FAULT_INVERT_BITS));
        must(softboard_plan_frame_fault(board, 3, SOFTBOARD_FAULT_LOSE, 0.0));
        must(softboard_plan_frame_fault(board, 6, SOFTBOARD_FAULT_STALL_DMA, 20000.0));
        must(softboard_plan_outage(board, SOFTBOARD_OUTAGE_CAMERA, 60000.0, 5000.0));
        const softboard_move moves[] = {{30000.0, speed}, {40000.0, -speed}, {50000.0, 0.0}, {1e12, speed}};
        must(softboard_belt(board, 0, 1, 5.0, moves, 4));
        must(softboard_barrier(board, 2, 1.0, 4.0, 2.0));
        memory = softboard_memory_open(board, FrameBytes, 512, nullptr);
        must(memory == nullptr ? -1 : 0);
    }
    ~Line() {
        built.applet.stopAcquire(0, nullptr, 0);
        softboard_memory_close(memory);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    void start(std::int64_t frames = -1) { must(built.applet.acquire(0, frames, 0, memory)); }
    void pass(double microseconds, int steps = 1) {
        for (int step = 0; step < steps; ++step) {
            built.board.advanceSignals(microseconds / steps);
        }
    }
    std::int64_t frames() { return built.applet.lastPicture(0, nullptr); }
    std::int64_t status(unsigned number) { return built.applet.status(number, 0, 0, nullptr); }

    /// All frames with all that is told of them.
    std::vector<std::uint64_t> taken() {
        std::vector<std::uint64_t> result;
        for (std::int64_t number = 1, last = frames(); number <= last; ++number) {
            softboard_frame about{};
            about.size = sizeof about;
            const auto* const data = static_cast<const unsigned char*>(softboard_memory_data(memory, number, &about));
            if (data == nullptr) {
                ADD_FAILURE() << number;
                continue;
            }
            result.insert(result.end(), {about.number, about.image, about.first_tick, about.last_tick, about.bytes,
                                         about.lost_before, about.lines, about.flags, about.buffer});
            result.insert(result.end(), data, data + about.bytes);
        }
        for (const unsigned number : {1010U, 1011U, 1012U, 1013U}) {
            result.push_back(static_cast<std::uint64_t>(status(number)));
        }
        for (const char* const name :
             {"Device1_Process0_Overflow_Overflow", "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_Cam0LineStart",
              "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_Pin0",
              "Device1_Process1_Trigger_Inputs_InputEvents_InputEvents_NotPin2"}) {
            result.push_back(built.board.eventCount(name));
        }
        return result;
    }

    client::testing::BuiltApplet built;
    softboard_memory* memory = nullptr;

private:
    static void must(int answer) { EXPECT_EQ(answer, 0); }
};

TEST(SeveralBoards, GiveTheSameBytesForTheSameScript) {
    Line one(SOFTBOARD_CLOCK_STEPPED);
    Line other(SOFTBOARD_CLOCK_STEPPED);
    one.start();
    other.start();
    one.pass(200000.0);
    other.pass(200000.0);
    EXPECT_GT(one.frames(), 50);
    EXPECT_GT(one.status(SOFTBOARD_STATUS_LOST_LINES), 8);
    EXPECT_EQ(one.status(SOFTBOARD_STATUS_FAULTS), 5);
    EXPECT_EQ(one.taken(), other.taken());
}

TEST(SeveralBoards, GiveTheSameBytesInAThousandSteps) {
    Line one(SOFTBOARD_CLOCK_STEPPED);
    Line other(SOFTBOARD_CLOCK_STEPPED);
    one.start();
    other.start();
    one.pass(200000.0);
    other.pass(200000.0, 1000);
    EXPECT_EQ(one.taken(), other.taken());
}

/// Steps that are no whole number of ticks: what is left of one is kept.
TEST(SeveralBoards, GiveTheSameBytesInOddSteps) {
    Line one(SOFTBOARD_CLOCK_STEPPED);
    Line other(SOFTBOARD_CLOCK_STEPPED);
    one.start();
    other.start();
    one.pass(200000.004);
    other.pass(200000.004, 777);
    EXPECT_EQ(one.taken(), other.taken());
}

TEST(SeveralBoards, GiveTheSameBytesStepByStepInTurn) {
    Line one(SOFTBOARD_CLOCK_STEPPED);
    one.start();
    one.pass(200000.0);
    Line left(SOFTBOARD_CLOCK_STEPPED);
    Line right(SOFTBOARD_CLOCK_STEPPED, 2, 333.0);
    left.start();
    right.start();
    for (int step = 0; step < 200; ++step) {
        left.pass(1000.0);
        right.pass(1000.0);
    }
    EXPECT_EQ(one.taken(), left.taken());
    EXPECT_NE(one.taken(), right.taken());
}

TEST(SeveralBoards, OfAnotherSeedDifferInTheirNoiseOnly) {
    Line one(SOFTBOARD_CLOCK_STEPPED, 1);
    Line other(SOFTBOARD_CLOCK_STEPPED, 2);
    one.start();
    other.start();
    one.pass(50000.0);
    other.pass(50000.0);
    EXPECT_EQ(one.frames(), other.frames());
    EXPECT_NE(one.taken(), other.taken());
}

/// With the real clock the same happens to every board, though it is told later, as long as its memory has room for
/// what the computer has not drawn yet.
TEST(SeveralBoards, RunBesideEachOtherInRealTime) {
    constexpr std::int64_t Frames = 40;
    Line stepped(SOFTBOARD_CLOCK_STEPPED, 1, 400.0, Line::Large);
    stepped.start(Frames);
    stepped.pass(60e6);
    ASSERT_EQ(stepped.frames(), Frames);

    Line left(SOFTBOARD_CLOCK_AUTO, 1, 400.0, Line::Large);
    Line right(SOFTBOARD_CLOCK_AUTO, 1, 400.0, Line::Large);
    const auto run = [&](Line& line) {
        line.start(Frames);
        EXPECT_EQ(line.built.applet.lastPictureBlocking(Frames, 0, 60, line.memory), Frames);
    };
    std::thread first([&] { run(left); });
    std::thread second([&] { run(right); });
    first.join();
    second.join();
    EXPECT_EQ(left.frames(), Frames);
    EXPECT_EQ(right.frames(), Frames);
    for (Line* const line : {&left, &right}) {
        EXPECT_EQ(line->status(SOFTBOARD_STATUS_FAULTS), 5);
        EXPECT_EQ(line->status(0), 0) << "it has ended by itself";
        for (const std::int64_t number : {std::int64_t{1}, Frames / 2, Frames}) {
            softboard_frame here{};
            softboard_frame there{};
            here.size = there.size = sizeof here;
            const void* const mine = softboard_memory_data(line->memory, number, &here);
            const void* const its = softboard_memory_data(stepped.memory, number, &there);
            ASSERT_NE(mine, nullptr);
            ASSERT_NE(its, nullptr);
            EXPECT_EQ(here.first_tick, there.first_tick) << number;
            EXPECT_EQ(here.image, there.image);
            EXPECT_EQ(here.flags, there.flags);
            EXPECT_EQ(std::memcmp(mine, its, here.bytes), 0) << number;
        }
    }
}

TEST(SeveralBoards, DoNotFeelEachOthersFaults) {
    Line faulty(SOFTBOARD_CLOCK_STEPPED);
    Line whole(SOFTBOARD_CLOCK_STEPPED);
    ASSERT_EQ(softboard_clear_faults(whole.built.board.device()), 0);
    ASSERT_EQ(softboard_link(faulty.built.board.device(), 0), 0);
    ASSERT_EQ(softboard_camera(faulty.built.board.device(), 0), 0);
    faulty.start();
    whole.start();
    faulty.pass(100000.0);
    whole.pass(100000.0);
    EXPECT_EQ(faulty.frames(), 0);
    EXPECT_GT(whole.frames(), 20);
    EXPECT_EQ(whole.status(SOFTBOARD_STATUS_FAULTS), 0);
    EXPECT_EQ(whole.status(SOFTBOARD_STATUS_LOST_LINES), 0);
}

}  // namespace
}  // namespace quillon::frames_test
