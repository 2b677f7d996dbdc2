#include "quillon/client/SoftBoard.h"

#include <gmock/gmock.h>

#include "client/testing/BuiltApplet.h"
#include "quillon/client/Errors.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using testing::builtStandIns;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(SoftBoard, AFolderWithoutTheStandInsIsToldByItsPath) {
    try {
        SoftBoard board("/no/such/folder");
        FAIL() << "a board came from nowhere";
    } catch (const LibraryError& error) {
        EXPECT_THAT(error.what(), HasSubstr("/no/such/folder/libsoftboard.so"));
    }
}

TEST(SoftBoard, TheChangesOfItsSignalsAreRecorded) {
    BuiltApplet built;
    built.board.recordSignals(5);
    built.board.advanceSignals(8);
    built.board.setInput(9, true);
    EXPECT_TRUE(built.board.signal(30U));
    built.board.setInput(9, false);
    built.board.setInput(0, true);
    const SignalRecording recording = built.board.recordedSignals();
    ASSERT_EQ(recording.changes.size(), 5U);
    EXPECT_EQ(recording.changes[0].microseconds(), 8.0);
    EXPECT_EQ(recording.changes[0].kind, SignalChange::Kind::Signal);
    EXPECT_EQ(recording.changes[0].number, 30U);
    EXPECT_TRUE(recording.changes[0].high);
    EXPECT_EQ(recording.changes[3].kind, SignalChange::Kind::Event);
    EXPECT_EQ(recording.events.at(recording.changes[3].number),
              "Device1_Process1_Trigger_Inputs_InputEvents_InputFrontEvents_FrontNotPin1");
    EXPECT_EQ(recording.lost, 1U);
    EXPECT_EQ(built.board.lostChanges(), 1U);
}

TEST(SoftBoard, ANewBoardHasAnEmptyTranscript) {
    const SoftBoard board(builtStandIns());
    EXPECT_NE(board.device(), nullptr);
    EXPECT_THAT(board.transcript(), IsEmpty());
}

TEST(SoftBoard, AWriteIsALineWithNameAndValue) {
    BuiltApplet built;
    built.board.clearTranscript();
    ASSERT_EQ(built.applet.setInt(FG_TIMEOUT, 77), 0);
    EXPECT_THAT(built.board.writes(), ElementsAre("FG_TIMEOUT = 77"));
    EXPECT_THAT(built.board.reads(), IsEmpty());
}

TEST(SoftBoard, AnEntryCarriesAllThatTheBoardKnows) {
    BuiltApplet built;
    built.board.clearTranscript();
    ASSERT_EQ(built.applet.setInt(FG_TIMEOUT, 77), 0);
    const std::vector<Access> transcript = built.board.transcript();
    ASSERT_EQ(transcript.size(), 1U);
    EXPECT_GT(transcript[0].sequence, 1U);
    EXPECT_EQ(transcript[0].direction, Direction::Write);
    EXPECT_EQ(transcript[0].id, 600);
    EXPECT_EQ(transcript[0].dma, 0);
    EXPECT_EQ(transcript[0].type, 2);
    EXPECT_EQ(transcript[0].result, 0);
}

TEST(SoftBoard, APlannedFaultShowsInTheLineAndInTheAnswer) {
    BuiltApplet built;
    built.board.clearTranscript();
    built.board.planFault("FG_TIMEOUT", Direction::Write, 1, -77);
    EXPECT_EQ(built.applet.setInt(FG_TIMEOUT, 77), -77);
    EXPECT_THAT(built.board.writes(), ElementsAre("FG_TIMEOUT = 77 ! -77"));
}

TEST(SoftBoard, ForgottenFaultsDoNotHappen) {
    BuiltApplet built;
    built.board.planFaultAt(1, -77);
    built.board.clearFaults();
    EXPECT_EQ(built.applet.setInt(FG_TIMEOUT, 77), 0);
}

TEST(SoftBoard, TheHardwareSideChangesAValueWithoutATrace) {
    BuiltApplet built;
    built.board.clearTranscript();
    built.board.setDouble("Device1_Process0_BoardStatus_FpgaTemperature", 55.5);
    EXPECT_THAT(built.board.transcript(), IsEmpty());
    EXPECT_EQ(built.board.real("Device1_Process0_BoardStatus_FpgaTemperature"), 55.5);
}

TEST(SoftBoard, TellsWhatCanBeDoneWithARegister) {
    BuiltApplet built;
    EXPECT_EQ(built.board.registerAccess("DesignId"), RegisterAccess::Read);
    EXPECT_EQ(built.board.registerAccess("DmaReset"), RegisterAccess::Write);
    EXPECT_EQ(built.board.registerAccess("Scratch"), RegisterAccess::ReadWrite);
    EXPECT_THROW(built.board.registerAccess("nothing"), CallError);
}

TEST(SoftBoard, ANameThatTheBoardDoesNotHaveIsThrown) {
    BuiltApplet built;
    try {
        built.board.setInteger("NoSuchParameter", 1);
        FAIL() << "an unknown name was accepted";
    } catch (const CallError& error) {
        EXPECT_EQ(error.code, -9002);
        EXPECT_THAT(error.what(), HasSubstr("NoSuchParameter"));
    }
}

TEST(SoftBoard, NothingIsRecordedWhileRecordingIsOff) {
    BuiltApplet built;
    built.board.clearTranscript();
    built.board.record(false);
    ASSERT_EQ(built.applet.setInt(FG_TIMEOUT, 77), 0);
    EXPECT_THAT(built.board.transcript(), IsEmpty());
}

TEST(SoftBoardAccess, ACallIsALineWithItsArguments) {
    EXPECT_EQ((Access{1, Direction::Call, 0, 0, 0, 0, "Fg_AcquireEx", "0, 10"}.line()), "Fg_AcquireEx(0, 10)");
    EXPECT_EQ((Access{1, Direction::Call, 0, 0, 0, -5, "Fg_AcquireEx", "0, 10"}.line()), "Fg_AcquireEx(0, 10) ! -5");
}

TEST(SoftBoardAccess, AReadIsALineWithAQuestionMark) {
    EXPECT_EQ((Access{1, Direction::Read, 7, 0, 2, 0, "RamAddressWidth", "25"}.line()), "RamAddressWidth ? 25");
}

}  // namespace
}  // namespace quillon::client
