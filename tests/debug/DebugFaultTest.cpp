// A design that fails at an access of a debug point.

#include "tests/debug/DebugTest.h"

namespace quillon {
namespace {

using client::Direction;
using testing::ElementsAre;

class DebugFault : public DebugTest {
protected:
    void failNextAccess() {
        board.clearTranscript();
        board.planFaultAt(1, -77);
    }
    void failSecondAccess() {
        board.clearTranscript();
        board.planFaultAt(2, -77);
    }
};

TEST_F(DebugFault, AtTheNumberOfPointsLeavesTheChoice) {
    openAtPoint(1);
    failNextAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 0), -2031);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGSOURCE), 1U);
    EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, 7);
}

TEST_F(DebugFault, AtTheInputSwitchIsAnInternalFailure) {
    open();
    failNextAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), -2031);
    EXPECT_THAT(board.accesses(), ElementsAre(Input + "OperationMode = 1 ! -77"));
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGINENABLE), 0U);
}

TEST_F(DebugFault, AtTheReadInFrontOfTheInputSwitchIsTheDesignsCode) {
    openAtPoint(1);
    failNextAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), -77);
    EXPECT_THAT(board.accesses(), ElementsAre(Output + "OperationMode ?  ! -77"));
    failSecondAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), -2031);
    EXPECT_THAT(board.accesses(), ElementsAre(Output + "OperationMode ? 0", Output + "OperationMode = 1 ! -77"));
}

TEST_F(DebugFault, AtTheOutputSwitchIsAnInternalFailure) {
    openAtPoint(1);
    failNextAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGOUTENABLE, 1), -2031);
    failSecondAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGOUTENABLE, 1), -2031);
    EXPECT_THAT(board.accesses(), ElementsAre(Output + "OperationMode ? 0", Output + "OperationMode = 2 ! -77"));
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTENABLE), 0U);
}

TEST_F(DebugFault, AtTheFileIsAnInternalFailure) {
    open();
    ASSERT_EQ(applet->setText(FG_DEBUGFILE, "old.tif"), 0);
    failNextAccess();
    EXPECT_EQ(applet->setText(FG_DEBUGFILE, "new.tif"), -2031);
    EXPECT_EQ(applet->readText(FG_DEBUGFILE), "old.tif");
    failNextAccess();
    std::string text;
    EXPECT_EQ(applet->getText(FG_DEBUGFILE, text), -2031);
}

TEST_F(DebugFault, AtTheFileDuringStartUpIsSilent) {
    board.planFault(Input + "DebugFile", Direction::Write, 1, -77);
    open();
    EXPECT_EQ(applet->setText(FG_DEBUGFILE, "new.tif"), 0);
}

TEST_F(DebugFault, AtEitherAccessOfAnInsertionIsAnInternalFailure) {
    open();
    failNextAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINSERT, 1), -2031);
    EXPECT_THAT(board.writes(), testing::IsEmpty());
    failSecondAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINSERT, 1), -2031);
    EXPECT_THAT(board.accesses(), ElementsAre(Input + "OperationMode ? 0", Input + "Insert = 1 ! -77"));
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGINSERT), 1U);
}

TEST_F(DebugFault, AtAPixelOrItsFlagBringsTheOldValueBack) {
    open();
    ASSERT_EQ(applet->setUnsigned64(FG_DEBUGWRITEPIXEL, 5), 0);
    failNextAccess();
    EXPECT_EQ(applet->setUnsigned64(FG_DEBUGWRITEPIXEL, 6), -2031);
    EXPECT_EQ(applet->readUnsigned64(FG_DEBUGWRITEPIXEL), 5U);
    failNextAccess();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGWRITEFLAG, 1), -2031);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGWRITEFLAG), 0U);
}

TEST_F(DebugFault, AtAReadOutIsAnInternalFailure) {
    openAtPoint(1);
    for (const int id :
         {FG_DEBUGINENABLE, FG_DEBUGOUTENABLE, FG_DEBUGOUTXPOS, FG_DEBUGOUTYPOS, FG_DEBUGOUTPIXEL, FG_DEBUGREADY}) {
        failNextAccess();
        std::uint32_t value = 0;
        EXPECT_EQ(applet->getUnsigned(id, value), -2031) << id;
        EXPECT_EQ(applet->lastError(), -2031);
    }
}

}  // namespace
}  // namespace quillon
