#include "cli/History.h"

#include <gmock/gmock.h>

#include "cli/Assignments.h"
#include "cli/ExitStatus.h"
#include "client/testing/BuiltApplet.h"

namespace quillon::cli {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* Period = "Device1_Process0_Trigger_Trigger_ExsyncPeriod";

/// A session's applet, whose changes are remembered.
class ChangeHistory : public ::testing::Test {
protected:
    ChangeHistory() { history_.begin(built_.applet, built_.board); }

    void change(const std::vector<std::string>& assignments) {
        assign(built_.applet, assignments);
        history_.note(built_.applet, built_.board, assignments.front());
    }
    History::Undone undo() { return history_.undo(built_.applet, built_.board); }

    client::testing::BuiltApplet built_;
    History history_;
};

TEST_F(ChangeHistory, TellsWhatItPutBack) {
    change({"FG_LINEPERIODE=100", "FG_WIDTH=2048"});
    const History::Undone undone = undo();
    EXPECT_EQ(undone.command, "FG_LINEPERIODE=100");
    EXPECT_THAT(undone.back, ElementsAre(FG_LINEPERIODE, FG_WIDTH));
    EXPECT_THAT(undone.left, IsEmpty());
}

TEST_F(ChangeHistory, TellsWhatTheDesignRefusesToTakeBack) {
    change({"FG_LINEPERIODE=100", "FG_WIDTH=2048"});
    built_.board.planFault(Period, client::Direction::Write, 0, -5);
    const History::Undone undone = undo();
    EXPECT_THAT(undone.left, ElementsAre(FG_LINEPERIODE));
    EXPECT_THAT(undone.back, ElementsAre(FG_WIDTH));
}

TEST_F(ChangeHistory, RemembersNoCommandThatChangedNothing) {
    history_.note(built_.applet, built_.board, "get FG_WIDTH");
    change({"FG_WIDTH=1024"});
    EXPECT_TRUE(history_.empty());
    EXPECT_THROW(undo(), UsageError);
}

TEST_F(ChangeHistory, RemembersNoAction) {
    change({"FG_SIGNAL_ANALYZER_CLEAR=FG_APPLY"});
    EXPECT_TRUE(history_.empty());
}

TEST_F(ChangeHistory, BringsBackAModeWithWhatWasSetInIt) {
    change(
        {"FG_CAMERASIMULATOR_ENABLE=1", "FG_CAMERASIMULATOR_SELECT_MODE=0", "FG_CAMERASIMULATOR_PIXEL_FREQUENCY=100"});
    change({"FG_CAMERASIMULATOR_SELECT_MODE=1"});
    EXPECT_THAT(undo().left, IsEmpty());
    EXPECT_EQ(built_.applet.readDouble(FG_CAMERASIMULATOR_PIXEL_FREQUENCY), 100);
}

TEST_F(ChangeHistory, LeavesWhatActsWhenItIsWritten) {
    change({"FG_WIDTH=2048"});
    change({"FG_DEBUGFILE=picture.png"});
    const History::Undone undone = undo();
    EXPECT_EQ(undone.command, "FG_DEBUGFILE=picture.png");
    EXPECT_THAT(undone.left, ElementsAre(FG_DEBUGFILE));
}

TEST_F(ChangeHistory, KeepsAHundredChanges) {
    for (int i = 1; i <= 110; ++i) {
        change({"FG_HEIGHT=" + std::to_string(1024 + i)});
    }
    int undone = 0;
    for (; !history_.empty(); ++undone) {
        undo();
    }
    EXPECT_EQ(undone, 100);
    std::uint32_t height = 0;
    EXPECT_EQ(built_.applet.getUnsigned(FG_HEIGHT, height), 0);
    EXPECT_EQ(height, 1034U);
}

TEST_F(ChangeHistory, WritesNothingThatIsAsItWas) {
    change({"FG_LINEPERIODE=100"});
    built_.board.clearTranscript();
    undo();
    EXPECT_THAT(built_.board.writes(), ElementsAre(std::string(Period) + " = 200"));
}

}  // namespace
}  // namespace quillon::cli
