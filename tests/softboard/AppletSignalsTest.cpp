/// What a user of the applet watches on the board: public parameters go in, signals and read-outs come out.

#include <gtest/gtest.h>

#include <cstdint>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Errors.h"

namespace {

using quillon::client::CallError;
using quillon::client::Signal;
using quillon::client::testing::BuiltApplet;

constexpr const char* Custom0 = "Device1_Process1_Trigger_Events_Events_LVAL_FVAL_CustomSignalEvent0";
constexpr unsigned CameraTrigger = 0;
constexpr unsigned Gpo0 = 1;

class AppletSignals : public testing::Test {
protected:
    std::uint32_t whole(int id) {
        std::uint32_t value = 9999;
        EXPECT_EQ(built.applet.getUnsigned(id, value), 0) << id;
        return value;
    }
    double real(int id) {
        double value = -1.0;
        EXPECT_EQ(built.applet.getDouble(id, value), 0) << id;
        return value;
    }
    void set(int id, int value) { ASSERT_EQ(built.applet.setInt(id, value), 0) << id; }

    BuiltApplet built;
};

TEST_F(AppletSignals, StandStillWithTheClock) {
    EXPECT_EQ(built.board.signalTime(), 0.0);
    EXPECT_EQ(whole(FG_SIGNAL_ANALYZER_0_PULSE_COUNT), 0U);
    EXPECT_EQ(real(FG_SYSTEMMONITOR_FPGA_TEMPERATURE), 45.2);
    EXPECT_EQ(real(FG_SYSTEMMONITOR_FPGA_TEMPERATURE), 45.2);
}

TEST_F(AppletSignals, OfTheStartUpCountTheLinesOfTheFirstMillisecond) {
    built.board.advanceSignals(1000.0);
    EXPECT_EQ(built.board.signalTime(), 1000.0);
    EXPECT_EQ(whole(FG_SIGNAL_ANALYZER_0_PULSE_COUNT), 5U);
    EXPECT_EQ(real(FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT), 200.0);
    EXPECT_EQ(built.board.eventCount(Custom0), 5U);
}

TEST_F(AppletSignals, FollowTheLinePeriod) {
    ASSERT_EQ(built.applet.setDouble(FG_LINEPERIODE, 80.0), 0);
    set(FG_SIGNAL_ANALYZER_CLEAR, 1);
    built.board.advanceSignals(800.0);
    EXPECT_EQ(whole(FG_SIGNAL_ANALYZER_0_PULSE_COUNT), 10U);
    EXPECT_EQ(real(FG_SIGNAL_ANALYZER_0_PERIOD_CURRENT), 80.0);
}

TEST_F(AppletSignals, DriveTheOutputsAsTheyAreRouted) {
    set(FG_TRIGGEROUT_GPO_0_SOURCE, 2000);
    set(FG_TRIGGEROUT_GPO_0_POLARITY, 0);
    EXPECT_FALSE(built.board.output(CameraTrigger));
    EXPECT_TRUE(built.board.output(Gpo0));
    built.board.advanceSignals(200.0);
    EXPECT_TRUE(built.board.signal(Signal::Exsync));
    EXPECT_TRUE(built.board.output(CameraTrigger));
    EXPECT_FALSE(built.board.output(Gpo0));
}

TEST_F(AppletSignals, HaveAFlashWithTheFirstLineOfAnImage) {
    EXPECT_FALSE(built.board.signal(Signal::Flash));
    set(FG_FLASH_POLARITY, 0);
    EXPECT_TRUE(built.board.signal(Signal::Flash));
    built.board.advanceSignals(200.0);
    EXPECT_FALSE(built.board.signal(Signal::Flash));
    built.board.advanceSignals(200.0);
    EXPECT_TRUE(built.board.signal(Signal::Flash));
}

TEST_F(AppletSignals, ShowInputsAndTriggerLinesByThem) {
    set(FG_LINETRIGGERMODE, 2);
    built.board.setInput(1, true);
    EXPECT_EQ(whole(FG_DIGIO_INPUT), 2U);
    EXPECT_EQ(whole(FG_SIGNAL_ANALYZER_0_PULSE_COUNT), 1U);
}

TEST_F(AppletSignals, CountMoreOnTheSecondAnalyzerAsANegativeDifference) {
    set(FG_LINETRIGGERMODE, 2);
    set(FG_SIGNAL_ANALYZER_1_SOURCE, 1001);
    for (int pulse = 0; pulse < 3; ++pulse) {
        built.board.setInput(0, true);
        built.board.setInput(0, false);
    }
    std::int64_t difference = 0;
    ASSERT_EQ(built.applet.getInt64(FG_SIGNAL_ANALYZER_PULSE_COUNT_DIFFERENCE, difference), 0);
    EXPECT_EQ(difference, -3);
}

TEST_F(AppletSignals, SetTheBusyFlagWhileATriggeredImageRuns) {
    set(FG_HEIGHT, 4);
    set(FG_IMGTRIGGERMODE, 2);
    set(FG_IMGTRIGGERINSRC, -1);
    EXPECT_EQ(whole(FG_IMGTRIGGER_IS_BUSY), 0U);
    set(FG_SENDSOFTWARETRIGGER, 1);
    EXPECT_EQ(whole(FG_IMGTRIGGER_IS_BUSY), 1U);
    built.board.advanceSignals(700.0);
    EXPECT_TRUE(built.board.signal(Signal::FrameValid));
    EXPECT_EQ(whole(FG_IMGTRIGGER_IS_BUSY), 1U);
    built.board.advanceSignals(200.0);
    EXPECT_FALSE(built.board.signal(Signal::FrameValid));
    EXPECT_EQ(whole(FG_IMGTRIGGER_IS_BUSY), 0U);
}

TEST_F(AppletSignals, RefuseWhatIsNotThere) {
    EXPECT_THROW(built.board.setInput(12, true), CallError);
    EXPECT_THROW(built.board.output(11), CallError);
    EXPECT_THROW(built.board.advanceSignals(-1.0), CallError);
    EXPECT_THROW(built.board.eventCount("FG_NO_SUCH_EVENT"), CallError);
}

}  // namespace
