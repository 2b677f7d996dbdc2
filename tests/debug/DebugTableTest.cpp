// How many debug points a design has, and of which kinds.

#include <cstdlib>
#include <filesystem>

#include "tests/debug/DebugTest.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DebugTable : public DebugTest {};

TEST_F(DebugTable, IsReadFromTheDesignsTextsBeforeAnythingElse) {
    board.clearTranscript();
    applet.emplace(library, board, 1);
    const Lines reads = board.reads();
    ASSERT_GE(reads.size(), 7U);
    EXPECT_THAT(Lines(reads.begin(), reads.begin() + 7),
                ElementsAre("Device1_Process0_Debug_Entries ? 2", "Device1_Process0_Debug_N0 ? Camera Input",
                            "Device1_Process0_Debug_T0 ? Inject", "Device1_Process0_Debug_P0 ? Debug_CameraInput",
                            "Device1_Process0_Debug_N1 ? Image Output", "Device1_Process0_Debug_T1 ? InjectMonitor",
                            "Device1_Process0_Debug_P1 ? Debug_ImageOutput"));
}

TEST_F(DebugTable, ReadsAllOfAnEntryBeforeItJudgesAny) {
    const auto refused = [this](const std::string& text, int direction) {
        client::SoftBoard other(client::testing::builtStandIns());
        if (direction == 0) {
            other.setText("Device1_Process0_Debug_T0", text);
        } else {
            other.planFault("Device1_Process0_Debug_" + text, client::Direction::Read, 1, -7);
        }
        const client::Applet start(library, other, 1);
        const Lines reads = other.reads();
        return Lines(reads.begin() + 1, reads.begin() + 5);
    };
    const std::string next = "Device1_Process0_OutputFormat_FG_FORMAT_NoOfInputs ? 5";
    EXPECT_THAT(refused("Other", 0),
                ElementsAre("Device1_Process0_Debug_N0 ? Camera Input", "Device1_Process0_Debug_T0 ? Other",
                            "Device1_Process0_Debug_P0 ? Debug_CameraInput", next));
    EXPECT_THAT(refused("N0", 1), ElementsAre("Device1_Process0_Debug_N0 ?  ! -7", "Device1_Process0_Debug_T0 ? Inject",
                                              "Device1_Process0_Debug_P0 ? Debug_CameraInput", next));
    EXPECT_THAT(refused("T0", 1),
                ElementsAre("Device1_Process0_Debug_N0 ? Camera Input", "Device1_Process0_Debug_T0 ?  ! -7",
                            "Device1_Process0_Debug_P0 ? Debug_CameraInput", next));
}

TEST_F(DebugTable, TakesTextsOfAMegabyte) {
    const std::string megabyte(1 << 20, 'x');
    board.setText("Device1_Process0_Debug_N0", megabyte);
    board.setText("Device1_Process0_Debug_P1", megabyte);
    open();
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), std::string(128, 'x'));
    board.setText(Input + "DebugFile", megabyte);
    EXPECT_EQ(applet->readText(FG_DEBUGFILE), std::string(655'360, 'x'));
}

TEST_F(DebugTable, OfTwoPointsRefusesAThird) {
    open();
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGSOURCE), 0U);
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "Camera Input");
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 1), 0);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGSOURCE), 1U);
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "Image Output");
    for (const std::uint32_t point : {2U, 3U, 4294967295U}) {
        EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, point), -6000);
        EXPECT_EQ(applet->readUnsigned(FG_DEBUGSOURCE), 1U);
    }
}

TEST_F(DebugTable, OfOnePointRefusesASecond) {
    board.setText(Entries, "1");
    open();
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "Camera Input");
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 0), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 1), -6000);
}

TEST_F(DebugTable, OfNoPointRefusesNoChoice) {
    board.setText(Entries, "0");
    open();
    for (const std::uint32_t point : {0U, 1U, 9U, 4294967295U}) {
        EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, point), 0);
        EXPECT_EQ(applet->readUnsigned(FG_DEBUGSOURCE), point);
        EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "");
        EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, 1);
        EXPECT_EQ(pixelMaximum(), 0U);
    }
}

TEST_F(DebugTable, OfNoPointEndsEveryUseInAFailure) {
    board.setText(Entries, "0");
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), -2031);
    EXPECT_EQ(applet->setText(FG_DEBUGFILE, "picture.tif"), -2031);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINSERT, 1), -2031);
    EXPECT_EQ(applet->setUnsigned64(FG_DEBUGWRITEPIXEL, 7), -2031);
    EXPECT_EQ(applet->readUnsigned64(FG_DEBUGWRITEPIXEL), 0U);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGWRITEFLAG, 1), -2031);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGWRITEFLAG), 0U);
    std::uint32_t value = 0;
    EXPECT_EQ(applet->getUnsigned(FG_DEBUGINENABLE, value), -2031);
    EXPECT_EQ(applet->getUnsigned(FG_DEBUGREADY, value), -2031);
    std::string text;
    EXPECT_EQ(applet->getText(FG_DEBUGFILE, text), -2031);
    EXPECT_EQ(applet->lastError(), -2031);
}

TEST_F(DebugTable, OfNoPointLeavesTheStartUpInSilence) {
    board.setText(Entries, "0");
    board.clearTranscript();
    applet.emplace(library, board);
    for (const std::string& write : board.writes()) {
        EXPECT_FALSE(write.find("_DebugFile = ") != std::string::npos && write.find(" ! ") == std::string::npos)
            << write;
    }
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTPIXEL), 0U);
}

TEST_F(DebugTable, WithAnUnknownKindOfPointEndsInFrontOfIt) {
    board.setText("Device1_Process0_Debug_T1", "Monitor");
    open();
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "Camera Input");
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 1), 0);
    EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, 1);
}

TEST_F(DebugTable, TakesAKindByItsExactText) {
    board.setText("Device1_Process0_Debug_T0", "inject");
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), -2031);
}

TEST_F(DebugTable, WithATextThatCannotBeReadEndsThereAndKeepsTheFirstPoint) {
    board.planFault("Device1_Process0_Debug_N1", client::Direction::Read, 1, -77);
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 1), 0);
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "");
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), -2031);
}

TEST_F(DebugTable, WithoutACountIsEmpty) {
    board.planFault(Entries, client::Direction::Read, 1, -77);
    open();
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "");
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), -2031);
}

TEST_F(DebugTable, StaysAsItWasReadAtStartUpWhileTheBoundIsReadAfresh) {
    open();
    board.setText(Entries, "1");
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 1), -6000);
    board.setText(Entries, "2");
    board.setText("Device1_Process0_Debug_N1", "Elsewhere");
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 1), 0);
    EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "Image Output");
}

/// A design file with nine points in the working directory.
class NineDebugPoints : public DebugTest {
protected:
    NineDebugPoints() {
        setenv("__ORLO_FORCE_EXTERNAL_TAV", "", 1);
        std::filesystem::current_path(NINE_POINTS_FOLDER);
    }
    ~NineDebugPoints() override {
        unsetenv("__ORLO_FORCE_EXTERNAL_TAV");
        std::filesystem::current_path(home);
    }
    const std::filesystem::path home = std::filesystem::current_path();
};

TEST_F(NineDebugPoints, AreAllKnownWithTheirKinds) {
    open();
    for (std::uint32_t point = 0; point < 8; ++point) {
        EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, point), 0);
        EXPECT_EQ(applet->readText(FG_DEBUGSOURCENAME), "Point " + std::to_string(point));
        EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, point % 2 == 0 ? 1 : 7);
    }
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 8), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 9), -6000);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGSOURCE), 8U);
}

TEST_F(NineDebugPoints, AreReachedByTheirPaths) {
    openAtPoint(8);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), 0);
    EXPECT_THAT(board.accesses(), ElementsAre("Device1_Process0_Point8_OperationMode = 1"));
}

TEST_F(NineDebugPoints, ShowAtMost128LettersOfAName) {
    openAtPoint(8);
    const std::string name = applet->readText(FG_DEBUGSOURCENAME);
    EXPECT_EQ(name.size(), 128U);
    EXPECT_TRUE(name.ends_with("..KK")) << name;
}

TEST_F(NineDebugPoints, ShowAsMuchOfAWidePixelsMaximumAs32BitsHold) {
    openAtPoint(7);
    EXPECT_EQ(pixelMaximum(), 4294967295U);
}

TEST_F(NineDebugPoints, LeaveTheMaximumAloneWhereTheDesignDescribesNoPixel) {
    openAtPoint(6);
    EXPECT_EQ(pixelMaximum(), 0U);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 5), 0);
    EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, 7);
    EXPECT_EQ(pixelMaximum(), 0U);
}

}  // namespace
}  // namespace quillon
