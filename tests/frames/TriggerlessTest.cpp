// What decides whether frames come at all.

#include "tests/frames/AppletFrames.h"

namespace quillon::frames_test {
namespace {

/// 25 lines of 200 µs are a frame in 5 ms.
class TriggerlessFrames : public AppletFrames {
protected:
    void SetUp() override {
        AppletFrames::SetUp();
        useCamera(64, 25);
    }
    /// 200 ms, and the rest of the last line.
    void passFortyFrames() { pass(40 * 5000.0 + 100.0); }
};

TEST_F(TriggerlessFrames, ComeAtTheLinePeriodTimesTheHeight) {
    acquire(-1, nullptr);
    passFortyFrames();
    EXPECT_EQ(pictures(), 40);
}

TEST_F(TriggerlessFrames, DoNotComeWhereAnImageTriggerIsWaitedFor) {
    set(FG_IMGTRIGGERMODE, ASYNC_TRIGGER);
    set(FG_IMGTRIGGERINSRC, TRGINSOFTWARE);
    acquire(-1, nullptr);
    passFortyFrames();
    EXPECT_EQ(pictures(), 0);
    set(FG_SENDSOFTWARETRIGGER, FG_APPLY);
    passFortyFrames();
    EXPECT_EQ(pictures(), 1);
}

TEST_F(TriggerlessFrames, DoNotComeWhereALineTriggerIsWaitedFor) {
    set(FG_LINETRIGGERMODE, ASYNC_TRIGGER);
    acquire(-1, nullptr);
    passFortyFrames();
    EXPECT_EQ(pictures(), 0);
    for (int line = 0; line < 2 * 25; ++line) {
        input(1, true);
        input(1, false);
        pass(100.0);
    }
    EXPECT_EQ(pictures(), 2);
}

TEST_F(TriggerlessFrames, DoNotComeWithoutExsync) {
    set(FG_EXSYNCON, FG_OFF);
    acquire(-1, nullptr);
    passFortyFrames();
    EXPECT_EQ(pictures(), 0);
    set(FG_EXSYNCON, FG_ON);
    passFortyFrames();
    EXPECT_EQ(pictures(), 40);
}

TEST_F(TriggerlessFrames, DoNotComeThroughTheValveOfTheSimulator) {
    useSimulator(64, 25);
    set(FG_TRIGGERCAMERA_SOURCE, GND);
    set(FG_CAMERASIMULATOR_TRIGGER_MODE, RISING_EDGE_TRIGGERS_FRAME);
    acquire(-1, nullptr);
    passFortyFrames();
    EXPECT_EQ(pictures(), 0);
    // A frame takes 2 ms, ten periods of ExSync, and the edge at its end finds it sending or just done.
    set(FG_TRIGGERCAMERA_SOURCE, FG_SIGNAL_CAM0_EXSYNC);
    passFortyFrames();
    EXPECT_GE(pictures(), 200000 / (2000 + 200));
    EXPECT_LE(pictures(), 200000 / 2000);
}

TEST_F(TriggerlessFrames, DoNotComeWhereTheSelectorLeavesThemOut) {
    set(FG_IMG_SELECT_PERIOD, 4);
    acquire(-1, nullptr);
    passFortyFrames();
    EXPECT_EQ(pictures(), 10);
}

TEST_F(TriggerlessFrames, AreTheOnesOfThePhase) {
    set(FG_IMG_SELECT_PERIOD, 4);
    set(FG_IMG_SELECT, 2);
    softboard_memory* const memory = memoryOf(10, 64 * 25 * 3);
    acquire(-1, memory);
    passFortyFrames();
    ASSERT_EQ(pictures(), 10);
    for (std::int64_t number = 1; number <= 10; ++number) {
        EXPECT_EQ(frame(memory, number).about.image, static_cast<std::uint64_t>(4 * number - 1));
    }
}

TEST_F(TriggerlessFrames, EndAtTheirCountAndAreNotWaitedForBehindIt) {
    acquire(5, nullptr);
    EXPECT_EQ(built.applet.lastPictureBlocking(6, 0, 600, nullptr), SOFTBOARD_E_ACQUISITION);
    EXPECT_EQ(status(0), 1);
    passFortyFrames();
    EXPECT_EQ(pictures(), 5);
    EXPECT_EQ(status(0), 0);
    EXPECT_EQ(status(1), 5);
    EXPECT_EQ(status(2), 5);
    EXPECT_EQ(built.applet.lastPictureBlocking(5, 0, 600, nullptr), 5);
    EXPECT_EQ(built.applet.lastPictureBlocking(6, 0, 600, nullptr), SOFTBOARD_E_ACQUISITION);
    EXPECT_EQ(built.applet.lastError(), SOFTBOARD_E_ACQUISITION);
    EXPECT_EQ(built.applet.stopAcquire(0, nullptr, 0), 0);
    EXPECT_EQ(built.applet.stopAcquire(0, nullptr, 0), SOFTBOARD_E_ACQUISITION);
}

}  // namespace
}  // namespace quillon::frames_test
