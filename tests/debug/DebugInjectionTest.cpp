#include <array>

#include "tests/debug/DebugTest.h"

namespace quillon {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class DebugInjection : public DebugTest {};

TEST_F(DebugInjection, StartsWithAnEmptyFile) {
    board.clearTranscript();
    applet.emplace(library, board);
    EXPECT_EQ(board.writes().at(1), Input + "DebugFile = ");
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGINSERT), 1U);
    EXPECT_EQ(applet->readUnsigned64(FG_DEBUGWRITEPIXEL), 0U);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGWRITEFLAG), 0U);
    EXPECT_EQ(applet->readText(FG_DEBUGSAVECONFIG), "");
}

TEST_F(DebugInjection, IsKnownByItsNames) {
    open();
    constexpr std::array<std::pair<const char*, int>, 13> names = {{{"FG_DEBUGFILE", 900000},
                                                                    {"FG_DEBUGSOURCE", 900001},
                                                                    {"FG_DEBUGINENABLE", 900002},
                                                                    {"FG_DEBUGINSERT", 900003},
                                                                    {"FG_DEBUGOUTENABLE", 900004},
                                                                    {"FG_DEBUGSOURCENAME", 900006},
                                                                    {"FG_DEBUGOUTXPOS", 900007},
                                                                    {"FG_DEBUGOUTYPOS", 900008},
                                                                    {"FG_DEBUGOUTPIXEL", 900009},
                                                                    {"FG_DEBUGWRITEPIXEL", 900010},
                                                                    {"FG_DEBUGWRITEFLAG", 900011},
                                                                    {"FG_DEBUGREADY", 900012},
                                                                    {"FG_DEBUGSAVECONFIG", 900013}}};
    for (const auto& [name, id] : names) {
        EXPECT_EQ(applet->parameterId(name), id) << name;
    }
}

// Choice
// ---------------------------------------------------------------------------------------------------------------

TEST_F(DebugInjection, ReadsTheNumberOfPointsWithEveryChoice) {
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 1), 0);
    EXPECT_THAT(board.accesses(), ElementsAre("Device1_Process0_Debug_Entries ? 2"));
}

TEST_F(DebugInjection, OpensItsOutputForAPointThatShowsPixels) {
    openAtPoint(1);
    EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, 7);
    EXPECT_EQ(pixelMaximum(), 16777215U);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 0), 0);
    EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, 1);
    EXPECT_EQ(pixelMaximum(), 0U);
}

TEST_F(DebugInjection, ARefusedChoiceLeavesTheDescriptions) {
    openAtPoint(1);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGSOURCE, 2), -6000);
    EXPECT_EQ(record(FG_DEBUGOUTENABLE).accessFlags, 7);
    EXPECT_EQ(pixelMaximum(), 16777215U);
}

// Input and output switches
// --------------------------------------------------------------------------------------------

TEST_F(DebugInjection, SwitchesTheInputOfAnInjectPointWithoutReadingTheDesign) {
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 0), 0);
    EXPECT_THAT(board.accesses(), ElementsAre(Input + "OperationMode = 1", Input + "OperationMode = 0"));
    EXPECT_EQ(lastType(), 2);
}

TEST_F(DebugInjection, KeepsTheOutputBitOfAMonitorWhenItSwitchesTheInput) {
    openAtPoint(1);
    board.setInteger(Output + "OperationMode", 2);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 0), 0);
    EXPECT_THAT(board.accesses(), ElementsAre(Output + "OperationMode ? 2", Output + "OperationMode = 3",
                                              Output + "OperationMode ? 3", Output + "OperationMode = 2"));
}

TEST_F(DebugInjection, KeepsTheInputBitOfAMonitorWhenItSwitchesTheOutput) {
    openAtPoint(1);
    board.setInteger(Output + "OperationMode", 1);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGOUTENABLE, 1), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGOUTENABLE, 0), 0);
    EXPECT_THAT(board.accesses(), ElementsAre(Output + "OperationMode ? 1", Output + "OperationMode = 3",
                                              Output + "OperationMode ? 3", Output + "OperationMode = 1"));
}

TEST_F(DebugInjection, KeepsNoOtherBitsOfTheOperationMode) {
    openAtPoint(1);
    board.setInteger(Output + "OperationMode", 254);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, 1), 0);
    EXPECT_EQ(board.integer(Output + "OperationMode"), 3);
}

TEST_F(DebugInjection, SendsNothingForTheOutputOfAnInjectPoint) {
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGOUTENABLE, 1), 0);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTENABLE), 0U);
    EXPECT_THAT(board.accesses(), IsEmpty());
}

TEST_F(DebugInjection, ReadsBothSwitchesFromTheDesign) {
    openAtPoint(1);
    for (const unsigned mode : {0U, 1U, 2U, 3U}) {
        board.setInteger(Output + "OperationMode", mode);
        board.clearTranscript();
        EXPECT_EQ(applet->readUnsigned(FG_DEBUGINENABLE), mode % 2);
        EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTENABLE), mode / 2);
        EXPECT_EQ(board.accesses().size(), 2U);
    }
}

TEST_F(DebugInjection, RefusesWhatIsNeitherOnNorOff) {
    for (const std::uint32_t point : {0U, 1U}) {
        openAtPoint(point);
        for (const std::uint32_t value : {2U, 4294967295U}) {
            EXPECT_EQ(applet->setUnsigned(FG_DEBUGINENABLE, value), -6000);
            EXPECT_EQ(applet->setUnsigned(FG_DEBUGOUTENABLE, value), -6000);
        }
        EXPECT_THAT(board.accesses(), IsEmpty());
        applet.reset();
    }
}

// File, pixels and the pictures that are inserted
// ----------------------------------------------------------------------

TEST_F(DebugInjection, SendsAndReadsTheFileOfThePoint) {
    open();
    EXPECT_EQ(applet->setText(FG_DEBUGFILE, "/images/wafer 1.tif"), 0);
    EXPECT_THAT(board.accesses(), ElementsAre(Input + "DebugFile = /images/wafer 1.tif"));
    EXPECT_EQ(lastType(), 6);
    board.setText(Input + "DebugFile", "what the design holds");
    EXPECT_EQ(applet->readText(FG_DEBUGFILE), "what the design holds");
}

TEST_F(DebugInjection, ReadsAFileNameOfAnyLength) {
    open();
    const std::string path(100'000, 'p');
    EXPECT_EQ(applet->setText(FG_DEBUGFILE, path), 0);
    EXPECT_EQ(applet->readText(FG_DEBUGFILE), path);
}

TEST_F(DebugInjection, InsertsAnImageAfterALookAtTheOperationMode) {
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINSERT, 1), 0);
    EXPECT_THAT(board.accesses(), ElementsAre(Input + "OperationMode ? 0", Input + "Insert = 1"));
    for (const std::uint32_t value : {0U, 2U, 4294967295U}) {
        EXPECT_EQ(applet->setUnsigned(FG_DEBUGINSERT, value), -6000);
    }
    EXPECT_EQ(board.accesses().size(), 2U);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGINSERT), 1U);
}

TEST_F(DebugInjection, WritesPixelsOf57Bits) {
    open();
    EXPECT_EQ(applet->setUnsigned64(FG_DEBUGWRITEPIXEL, 144115188075855871), 0);
    EXPECT_THAT(board.accesses(), ElementsAre(Input + "Inject_WritePixel = 144115188075855871"));
    EXPECT_EQ(lastType(), 4);
    EXPECT_EQ(applet->readUnsigned64(FG_DEBUGWRITEPIXEL), 144115188075855871U);
    EXPECT_EQ(applet->setUnsigned64(FG_DEBUGWRITEPIXEL, 0), 0);
    for (const std::uint64_t pixel : {std::uint64_t{144115188075855872}, ~std::uint64_t{0}}) {
        EXPECT_EQ(applet->setUnsigned64(FG_DEBUGWRITEPIXEL, pixel), -6000);
    }
    EXPECT_EQ(applet->readUnsigned64(FG_DEBUGWRITEPIXEL), 0U);
    EXPECT_EQ(board.accesses().size(), 2U);
}

TEST_F(DebugInjection, FlagsTheEndOfALineOrAFrame) {
    open();
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGWRITEFLAG, 1), 0);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGWRITEFLAG), 1U);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGWRITEFLAG, 0), 0);
    for (const std::uint32_t flag : {2U, 4294967295U}) {
        EXPECT_EQ(applet->setUnsigned(FG_DEBUGWRITEFLAG, flag), -6000);
    }
    EXPECT_THAT(board.accesses(), ElementsAre(Input + "Inject_WriteFlag = 1", Input + "Inject_WriteFlag = 0"));
}

TEST_F(DebugInjection, WorksOnTheChosenPoint) {
    openAtPoint(1);
    EXPECT_EQ(applet->setText(FG_DEBUGFILE, "out.tif"), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGINSERT, 1), 0);
    EXPECT_EQ(applet->setUnsigned64(FG_DEBUGWRITEPIXEL, 9), 0);
    EXPECT_EQ(applet->setUnsigned(FG_DEBUGWRITEFLAG, 1), 0);
    EXPECT_THAT(board.accesses(),
                ElementsAre(Output + "DebugFile = out.tif", Output + "OperationMode ? 0", Output + "Insert = 1",
                            Output + "Inject_WritePixel = 9", Output + "Inject_WriteFlag = 1"));
}

// Read-outs
// ------------------------------------------------------------------------------------------------------------

TEST_F(DebugInjection, ShowsWhatPassesAMonitor) {
    openAtPoint(1);
    board.setInteger(Output + "XPosition", 17);
    board.setInteger(Output + "YPosition", 4711);
    board.setInteger(Output + "PixelValue", 8421504);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTXPOS), 17U);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTYPOS), 4711U);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTPIXEL), 8421504U);
    EXPECT_THAT(board.accesses(),
                ElementsAre(Output + "XPosition ? 17", Output + "YPosition ? 4711", Output + "PixelValue ? 8421504"));
}

TEST_F(DebugInjection, ShowsNothingOfAnInjectPointWithoutReadingTheDesign) {
    open();
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTXPOS), 0U);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTYPOS), 0U);
    EXPECT_EQ(applet->readUnsigned(FG_DEBUGOUTPIXEL), 0U);
    EXPECT_THAT(board.accesses(), IsEmpty());
}

TEST_F(DebugInjection, TellsWhetherThePointIsReady) {
    for (const std::uint32_t point : {0U, 1U}) {
        openAtPoint(point);
        const std::string ready = (point == 0 ? Input : Output) + "Inject_ReadyForInjection";
        board.setInteger(ready, 1);
        EXPECT_EQ(applet->readUnsigned(FG_DEBUGREADY), 1U);
        board.setInteger(ready, 0);
        EXPECT_EQ(applet->readUnsigned(FG_DEBUGREADY), 0U);
        EXPECT_THAT(board.accesses(), ElementsAre(ready + " ? 1", ready + " ? 0"));
        applet.reset();
    }
}

TEST_F(DebugInjection, RefusesToWriteItsReadOuts) {
    open();
    for (const int id : {FG_DEBUGSOURCENAME, FG_DEBUGOUTXPOS, FG_DEBUGOUTYPOS, FG_DEBUGOUTPIXEL, FG_DEBUGREADY}) {
        EXPECT_EQ(applet->setUnsigned64(id, 1), -12) << id;
    }
    EXPECT_THAT(board.accesses(), IsEmpty());
}

// The SDK's configuration
// ----------------------------------------------------------------------------------------------

TEST_F(DebugInjection, HasTheSdkSaveItsConfigurationAndIgnoresItsAnswer) {
    open();
    board.planFault("Fg_saveConfig", client::Direction::Call, 1, -5001);
    EXPECT_EQ(applet->setText(FG_DEBUGSAVECONFIG, "/nowhere/sdk.mcf"), 0);
    EXPECT_THAT(board.calls(), Contains("Fg_saveConfig(/nowhere/sdk.mcf) ! -5001"));
    EXPECT_EQ(applet->readText(FG_DEBUGSAVECONFIG), "/nowhere/sdk.mcf");
    EXPECT_THAT(board.accesses(), IsEmpty());
}

TEST_F(DebugInjection, RefusesANullText) {
    open();
    EXPECT_EQ(applet->setWithType(FG_DEBUGFILE, nullptr, 0, FgTypeString), -2070);
    EXPECT_EQ(applet->setWithType(FG_DEBUGSAVECONFIG, nullptr, 0, FgTypeString), -2070);
    EXPECT_THAT(board.calls(), testing::Not(Contains(testing::HasSubstr("Fg_saveConfig"))));
}

}  // namespace
}  // namespace quillon
