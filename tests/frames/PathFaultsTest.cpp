/// @file
/// What goes wrong on the way of the pictures, in the pictures, the counts and the events.

#include <optional>

#include "tests/frames/Bench.h"

namespace quillon::frames_test {
namespace {

/// Rows of the scene are 10, 11, 12 ...; without a belt each line shows the next.
class FaultyPath : public Bench {
protected:
    static constexpr int Height = 4;

    void SetUp() override {
        Bench::SetUp();
        picture.emplace("rows.pgm", greyRows(Width, fromTo(10, 209)));
        ASSERT_EQ(softboard_scene_picture(device(), picture->path().c_str(), 1, 10.0), 0) << message();
        useCamera(Width, Height);
        memory = memoryOf(64, Width * 3 * Height);
    }
    void lineFault(std::uint64_t nth, int what) { ASSERT_EQ(softboard_plan_line_fault(device(), nth, what), 0); }
    void frameFault(std::uint64_t nth, int what, double amount = 0.0) {
        ASSERT_EQ(softboard_plan_frame_fault(device(), nth, what, amount), 0) << message();
    }
    void takeFrames(int frames) {
        acquire(-1, memory);
        pass(100.0 + frames * Height * LineTime);
    }
    std::int64_t faults() { return status(SOFTBOARD_STATUS_FAULTS); }
    std::vector<int> rowsOfFrame(std::int64_t number) { return rowsOf(frame(memory, number)); }
    std::uint32_t flags(std::int64_t number) { return frame(memory, number).about.flags; }

    std::optional<TemporaryPicture> picture;
};

TEST_F(FaultyPath, ShowsEveryRowWithoutAFault) {
    takeFrames(3);
    ASSERT_EQ(pictures(), 3);
    EXPECT_EQ(rows(), fromTo(rows().front(), rows().front() + 11));
    EXPECT_EQ(faults(), 0);
    EXPECT_EQ(flags(1), 0U);
}

TEST_F(FaultyPath, DropsALine) {
    lineFault(6, SOFTBOARD_FAULT_DROP);
    takeFrames(3);
    ASSERT_EQ(pictures(), 2);
    const int first = rows().front();
    EXPECT_EQ(rowsOfFrame(1), fromTo(first, first + 3));
    EXPECT_EQ(rowsOfFrame(2), (std::vector<int>{first + 4, first + 6, first + 7, first + 8}));
    EXPECT_EQ(lostLines(), 1);
    EXPECT_EQ(lostFrames(), 0);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(flags(1) & SOFTBOARD_FRAME_FAULTY, 0U);
    EXPECT_EQ(flags(2) & SOFTBOARD_FRAME_FAULTY, SOFTBOARD_FRAME_FAULTY);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 11U);
    pass(Height * LineTime);
    EXPECT_EQ(flags(3), 0U);
}

TEST_F(FaultyPath, RepeatsALine) {
    lineFault(2, SOFTBOARD_FAULT_REPEAT);
    takeFrames(2);
    ASSERT_EQ(pictures(), 2);
    const int first = rows().front();
    EXPECT_EQ(rowsOfFrame(1), (std::vector<int>{first, first + 1, first + 1, first + 2}));
    EXPECT_EQ(rowsOfFrame(2), fromTo(first + 3, first + 6));
    EXPECT_EQ(lostLines(), 0);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(flags(1), SOFTBOARD_FRAME_FAULTY);
    EXPECT_EQ(flags(2), 0U);
}

TEST_F(FaultyPath, InvertsALine) {
    lineFault(3, SOFTBOARD_FAULT_INVERT_BITS);
    takeFrames(1);
    const std::vector<int> shown = rowsOfFrame(1);
    EXPECT_EQ(shown, (std::vector<int>{shown[0], shown[0] + 1, 255 - (shown[0] + 2), shown[0] + 3}));
    EXPECT_EQ(flags(1), SOFTBOARD_FRAME_FAULTY);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(lostLines(), 0);
}

TEST_F(FaultyPath, MarksTheFrameThatBeginsWithTheLine) {
    lineFault(1, SOFTBOARD_FAULT_INVERT_BITS);
    lineFault(8, SOFTBOARD_FAULT_REPEAT);  // the next frame begins with it again
    takeFrames(3);
    const int first = rowsOfFrame(1)[1] - 1;
    EXPECT_EQ(rowsOfFrame(1), (std::vector<int>{255 - first, first + 1, first + 2, first + 3}));
    EXPECT_EQ(rowsOfFrame(3), (std::vector<int>{first + 7, first + 8, first + 9, first + 10}));
    EXPECT_EQ(flags(1), SOFTBOARD_FRAME_FAULTY);
    EXPECT_EQ(flags(2), SOFTBOARD_FRAME_FAULTY);
    EXPECT_EQ(flags(3), SOFTBOARD_FRAME_FAULTY);
    EXPECT_EQ(faults(), 2);
}

TEST_F(FaultyPath, LeavesFramesAloneThatTheLineIsNoPartOf) {
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    set(FG_IMGTRIGGERINSRC, TRGINSRC_GPI_2);
    set(FG_IMGTRIGGERON, FG_ON);
    lineFault(2, SOFTBOARD_FAULT_INVERT_BITS);
    acquire(-1, memory);
    pass(100.0 + 4 * LineTime);
    input(2, true);
    pass(5 * LineTime);
    ASSERT_EQ(pictures(), 1);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(flags(1), 0U);
}

TEST_F(FaultyPath, DropsEveryLineUntilThePlansAreForgotten) {
    lineFault(0, SOFTBOARD_FAULT_DROP);
    takeFrames(2);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(lostLines(), 8);
    EXPECT_EQ(faults(), 8);
    ASSERT_EQ(softboard_clear_faults(device()), 0);
    pass(Height * LineTime);
    EXPECT_EQ(pictures(), 1);
    EXPECT_EQ(lostLines(), 8);
}

TEST_F(FaultyPath, CountsFromThePlanOn) {
    acquire(-1, memory);
    pass(100.0 + 2 * LineTime);
    lineFault(1, SOFTBOARD_FAULT_INVERT_BITS);
    lineFault(2, SOFTBOARD_FAULT_INVERT_BITS);
    pass(2 * LineTime);
    const std::vector<int> shown = rowsOfFrame(1);
    EXPECT_EQ(shown, (std::vector<int>{shown[0], shown[0] + 1, 255 - (shown[0] + 2), 255 - (shown[0] + 3)}));
    EXPECT_EQ(faults(), 2);
}

TEST_F(FaultyPath, StrikesTheSimulatorsLinesToo) {
    useSimulator(32, Height);
    memory = memoryOf(8, 32 * 3 * Height);
    lineFault(2, SOFTBOARD_FAULT_DROP);
    acquire(-1, memory);
    pass(4 * Height * SimulatorLineTime);
    ASSERT_GE(pictures(), 2);
    EXPECT_EQ(lostLines(), 1);
    EXPECT_EQ(faults(), 1);
}

TEST_F(FaultyPath, LosesAFrame) {
    frameFault(2, SOFTBOARD_FAULT_LOSE);
    takeFrames(3);
    ASSERT_EQ(pictures(), 2);
    EXPECT_EQ(rowsOfFrame(2).front() - rowsOfFrame(1).front(), 2 * Height);
    EXPECT_EQ(frame(memory, 2).about.image, 3U);
    EXPECT_EQ(frame(memory, 2).about.lost_before, 1U);
    EXPECT_EQ(lostFrames(), 1);
    EXPECT_EQ(lostLines(), Height);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(whole(FG_OVERFLOW), 0U);
    EXPECT_EQ(events("FG_OVERFLOW_CAM0"), 0U);
}

TEST_F(FaultyPath, TruncatesAFrame) {
    frameFault(1, SOFTBOARD_FAULT_TRUNCATE, 3.0);
    takeFrames(2);
    ASSERT_EQ(pictures(), 2);
    const Frame cut = frame(memory, 1);
    EXPECT_EQ(cut.about.lines, 3U);
    EXPECT_EQ(cut.about.bytes, 3U * Width * 3);
    EXPECT_EQ(cut.about.flags & SOFTBOARD_FRAME_FAULTY, SOFTBOARD_FRAME_FAULTY);
    EXPECT_EQ(rowsOf(cut), fromTo(rowsOf(cut).front(), rowsOf(cut).front() + 2));
    EXPECT_EQ(lostLines(), 1);
    EXPECT_EQ(lostFrames(), 0);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(rowsOfFrame(2).front(), rowsOf(cut).front() + Height);
}

TEST_F(FaultyPath, TruncatesNothingOfAShorterFrame) {
    frameFault(1, SOFTBOARD_FAULT_TRUNCATE, 1000.0);
    takeFrames(1);
    EXPECT_EQ(frame(memory, 1).about.lines, 4U);
    EXPECT_EQ(lostLines(), 0);
}

TEST_F(FaultyPath, StallsTheDma) {
    frameFault(2, SOFTBOARD_FAULT_STALL_DMA, 10.0 * LineTime);
    takeFrames(4);  // the stall goes from the fifth line to the fifteenth
    EXPECT_EQ(pictures(), 4);
    EXPECT_EQ(faults(), 1);
    EXPECT_EQ(lostLines(), 0);
    stop();
    frameFault(2, SOFTBOARD_FAULT_STALL_DMA, 10.0 * LineTime);
    acquire(-1, memory);
    pass(14 * LineTime);
    EXPECT_EQ(pictures(), 1);
    EXPECT_GT(status(SOFTBOARD_STATUS_BYTES_WAITING), 0);
    pass(2 * LineTime);
    EXPECT_GE(pictures(), 3);
}

TEST_F(FaultyPath, OverflowsWhileTheDmaStands) {
    memorySize(64, 4);  // 384 bytes: 16 lines
    frameFault(1, SOFTBOARD_FAULT_STALL_DMA, 20.0 * LineTime);
    acquire(-1, memory);
    pass(100.0 + 17 * LineTime);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(whole(FG_OVERFLOW), 1U);
    EXPECT_EQ(lostLines(), 1);
    EXPECT_EQ(events("FG_OVERFLOW_CAM0"), 1U);
    ASSERT_EQ(softboard_clear_faults(device()), 0);
    pass(50.0);
    EXPECT_EQ(pictures(), 4);
}

TEST_F(FaultyPath, HasNoLinesWithoutACamera) {
    acquire(-1, memory);
    pass(100.0 + 2 * LineTime);
    EXPECT_EQ(whole(FG_CAMSTATUS), 1U);
    ASSERT_EQ(softboard_camera(device(), 0), 0);
    pass(10 * LineTime);
    EXPECT_EQ(whole(FG_CAMSTATUS), 0U);
    EXPECT_EQ(whole(FG_CAMSTATUS_EXTENDED) & 3U, 0U);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(events("FG_START_OF_LINE_CAM_PORT_0"), 2U);
    ASSERT_EQ(softboard_camera(device(), 1), 0);
    EXPECT_EQ(whole(FG_CAMSTATUS), 1U);
    pass(2 * LineTime);
    EXPECT_EQ(pictures(), 1);
}

TEST_F(FaultyPath, LosesTheCameraForATime) {
    ASSERT_EQ(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_CAMERA, 1000.0, 2000.0), 0);
    acquire(-1, memory);
    pass(999.0);
    EXPECT_EQ(whole(FG_CAMSTATUS), 1U);
    pass(2.0);
    EXPECT_EQ(whole(FG_CAMSTATUS), 0U);
    pass(1998.0);
    EXPECT_EQ(whole(FG_CAMSTATUS), 0U);
    pass(2.0);
    EXPECT_EQ(whole(FG_CAMSTATUS), 1U);
    pass(10 * LineTime);
    EXPECT_GE(pictures(), 2);
}

TEST_F(FaultyPath, HasNoLanesWithoutALink) {
    acquire(-1, memory);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 8U);
    ASSERT_EQ(softboard_link(device(), 0), 0);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 0U);
    pass(100.0 + 2 * Height * LineTime);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(status(SOFTBOARD_STATUS_BYTES_WAITING), 2 * Height * Width * 3);
    ASSERT_EQ(softboard_link(device(), 1), 0);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 8U);
    pass(50.0);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(rows(), fromTo(rows().front(), rows().front() + 7));
}

TEST_F(FaultyPath, GivesTheLinkBackWithTheLanesThatItHad) {
    built.board.setInteger("Device1_Process0_BoardStatus_PcieCurrentLinkWidth", 4);
    ASSERT_EQ(softboard_link(device(), 0), 0);
    ASSERT_EQ(softboard_link(device(), 0), 0);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 0U);
    ASSERT_EQ(softboard_link(device(), 1), 0);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 4U);
}

TEST_F(FaultyPath, LosesTheLinkForATime) {
    ASSERT_EQ(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_LINK, 100.0, 2000.0), 0);
    acquire(-1, memory);
    pass(2000.0);
    EXPECT_EQ(pictures(), 0);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 0U);
    pass(200.0);
    EXPECT_EQ(pictures(), 2);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 8U);
}

TEST_F(FaultyPath, GetsTheLinkAndTheCameraBackWhenFaultsAreForgotten) {
    ASSERT_EQ(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_LINK, 0.0, Never), 0);
    ASSERT_EQ(softboard_plan_outage(device(), SOFTBOARD_OUTAGE_CAMERA, 0.0, Never), 0);
    pass(1.0);
    EXPECT_EQ(whole(FG_CAMSTATUS), 0U);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 0U);
    ASSERT_EQ(softboard_clear_faults(device()), 0);
    EXPECT_EQ(whole(FG_CAMSTATUS), 1U);
    EXPECT_EQ(whole(FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH), 8U);
    takeFrames(1);
    EXPECT_EQ(pictures(), 1);
}

/// Nothing comes for as long as the host is ready to wait.
TEST_F(FaultyPath, EndsTheWaitOfAHostWithoutACamera) {
    set(FG_TIMEOUT, 2);
    ASSERT_EQ(softboard_camera(device(), 0), 0);
    acquire(-1, memory);
    pass(2.1e6);
    EXPECT_EQ(status(0), 0);
    EXPECT_EQ(built.applet.lastPictureBlocking(1, 0, 0, memory), SOFTBOARD_E_TIMEOUT);
}

TEST_F(FaultyPath, CountsTriggeredLinesAsDeliveredOrLost) {
    memorySize(64, 2);  // 96 bytes: 4 lines
    for (std::uint64_t nth = 3; nth < 200; nth += 7) {
        lineFault(nth, SOFTBOARD_FAULT_DROP);
    }
    frameFault(5, SOFTBOARD_FAULT_LOSE);
    frameFault(9, SOFTBOARD_FAULT_TRUNCATE, 1.0);
    frameFault(12, SOFTBOARD_FAULT_STALL_DMA, 6 * LineTime);
    acquire(-1, memory);
    std::int64_t delivered = 0;
    pass(100.0 + 200 * LineTime);
    stop();
    for (std::int64_t number = 1; number <= pictures(); ++number) {
        delivered += frame(memory, number).about.lines;
    }
    const auto sent = static_cast<std::int64_t>(events("FG_START_OF_LINE_CAM_PORT_0"));
    EXPECT_GT(lostLines(), 10);
    EXPECT_NEAR(static_cast<double>(delivered + lostLines()), static_cast<double>(sent + 29), Height);
}

}  // namespace
}  // namespace quillon::frames_test
