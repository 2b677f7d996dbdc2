#include "quillon/client/Applet.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <filesystem>

#include "client/testing/BuiltApplet.h"
#include "client/testing/KnownLeak.h"
#include "quillon/PublicParameters.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using testing::builtLibrary;
using testing::builtStandIns;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::KnownLeak;
using ::testing::Pair;
using ::testing::StartsWith;

TEST(Applet, ItOpensAndGivesEverythingBack) {
    SoftBoardLibrary boards(builtStandIns());
    {
        const BuiltApplet built;
        EXPECT_EQ(boards.liveHandles(), 1U);
        EXPECT_EQ(boards.liveDesigns(), 1U);
    }
    EXPECT_EQ(boards.liveHandles(), 0U);
    EXPECT_EQ(boards.liveDesigns(), 0U);
}

TEST(Applet, ADesignThatDoesNotLoadIsThrownWithItsStatus) {
    const KnownLeak withoutADesignTheAppletLeavesItsObjectBehind;
    SoftBoardLibrary boards(builtStandIns());
    boards.planCallFault("TavLoadDesignFromBuffer", 1, 0);
    try {
        const BuiltApplet built;
        FAIL() << "opened without a design";
    } catch (const OpenError& error) {
        EXPECT_EQ(error.status, -100);
    }
    boards.clearFaults();
}

TEST(Applet, AClosedAppletAnswersInvalidHandle) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.close(), 0);
    EXPECT_EQ(built.applet.close(), -2001);
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), -2001);
}

TEST(Applet, AMovedAppletWorksOn) {
    const Library library = Library::open(builtLibrary(), builtStandIns());
    SoftBoard board(builtStandIns());
    Applet first(library, board);
    Applet second(std::move(first));
    EXPECT_EQ(second.readInt(FG_WIDTH), 1024);
}

TEST(Applet, TheLibraryStaysLoadedAsLongAsAnApplet) {
    SoftBoard board(builtStandIns());
    Applet applet(Library::open(builtLibrary(), builtStandIns()), board);
    EXPECT_EQ(applet.readInt(FG_WIDTH), 1024);
}

TEST(Applet, AWrittenNumberReadsBack) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 2048), 0);
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 2048);
    EXPECT_EQ(built.applet.setDouble(FG_LINEPERIODE, 100.0), 0);
    EXPECT_EQ(built.applet.readDouble(FG_LINEPERIODE), 100.0);
}

TEST(Applet, AParameterOf64BitsFitsThe32BitForms) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.setInt(FG_DEBUGWRITEPIXEL, 7), 0);
    EXPECT_EQ(built.applet.readInt(FG_DEBUGWRITEPIXEL), 7);
    EXPECT_EQ(built.applet.readUnsigned64(FG_DEBUGWRITEPIXEL), 7U);
}

TEST(Applet, ARefusedWriteIsACodeAndTheLastError) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.setInt(FG_WIDTH, 6), -7080);
    EXPECT_EQ(built.applet.lastError(), -7080);
    EXPECT_EQ(built.applet.readInt(FG_WIDTH), 1024);
    EXPECT_EQ(built.applet.lastError(), 0);
}

TEST(Applet, AFailedReadIsThrownWithParameterAndCode) {
    BuiltApplet built;
    try {
        built.applet.readInt(999999);
        FAIL() << "parameter 999999 answered";
    } catch (const ParameterError& error) {
        EXPECT_EQ(error.id, 999999);
        EXPECT_EQ(error.code, -2070);
    }
}

TEST(Applet, AFailedReadIsACodeWhereOneIsAskedFor) {
    BuiltApplet built;
    std::int32_t value = 0;
    EXPECT_EQ(built.applet.getInt(999999, value), -2070);
    EXPECT_EQ(built.applet.getInt(FG_PIXELDEPTH, value), 0);
    EXPECT_EQ(value, 16);
}

TEST(Applet, ATextIsCopiedAndReleased) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.readText(FG_TAV_FILE), "Quillon.tav");
}

TEST(Applet, ADescriptionIsAskedForByName) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.readDescription("FG_TAV_FILE"),
              "The name of the Hardware-Applet (TAV) file on which this Marlets is based.");
    EXPECT_EQ(built.applet.readDescription("FG_NO_SUCH"), "-");
    EXPECT_EQ(built.applet.readDescription(""), "-");
}

TEST(Applet, NamesIdsAndPositionsBelongTogether) {
    const BuiltApplet built;
    EXPECT_EQ(built.applet.parameterCount(), PositionCount);
    EXPECT_EQ(built.applet.parameterNameAt(46), "FG_WIDTH");
    EXPECT_EQ(built.applet.parameterIdAt(46), 100);
    EXPECT_EQ(built.applet.parameterId("FG_WIDTH"), 100);
    EXPECT_EQ(built.applet.parameterNameAt(PositionCount), std::nullopt);
    EXPECT_EQ(built.applet.parameterId("FG_WIDHT"), -2070);
}

TEST(Applet, TableEntriesAreWrittenAndReadInRuns) {
    BuiltApplet built;
    ASSERT_EQ(built.applet.setInt(FG_LUT_TYPE, 0), 0);
    const std::array<std::uint32_t, 3> entries{10, 20, 30};
    EXPECT_EQ(built.applet.setField(FG_LUT_VALUE_RED, entries, 100), 0);
    std::array<std::uint32_t, 3> read{};
    EXPECT_EQ(built.applet.getField(FG_LUT_VALUE_RED, read, 100), 0);
    EXPECT_THAT(read, ElementsAre(10, 20, 30));
}

TEST(Applet, ATableEntryIsWrittenAndReadAlone) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.setElement(FG_LUT_VALUE_RED, 5, 4711), 0);
    std::uint32_t value = 0;
    EXPECT_EQ(built.applet.getElement(FG_LUT_VALUE_RED, 5, value), 0);
    EXPECT_EQ(value, 4711U);
}

TEST(Applet, EventsAreKnownByNameAndMask) {
    const BuiltApplet built;
    const std::uint64_t mask = built.applet.eventMask("FG_OVERFLOW_CAM0");
    EXPECT_NE(mask, 0U);
    EXPECT_EQ(built.applet.eventName(mask), "FG_OVERFLOW_CAM0");
    EXPECT_THAT(built.applet.events(), Contains(Pair(mask, "FG_OVERFLOW_CAM0")));
    EXPECT_EQ(built.applet.eventMask("FG_NO_SUCH"), 0U);
    EXPECT_EQ(built.applet.eventName(0), std::nullopt);
}

TEST(Applet, RecordsComeAsTreesWithTheNewestGroupFirst) {
    const BuiltApplet built;
    const std::vector<ParameterRecord> trees = built.applet.parameterInfo();
    ASSERT_EQ(trees.size(), 15U);
    EXPECT_EQ(trees.front().label, "Miscellaneous");
    EXPECT_EQ(trees.back().label, "Camera Link HS");
    const ParameterRecord* width = findRecord(trees, FG_WIDTH);
    ASSERT_NE(width, nullptr);
    EXPECT_EQ(std::get<Range<std::uint64_t>>(width->range), (Range<std::uint64_t>{4, 16384, 4}));
}

TEST(Applet, APortThatIsNotThereHasNoRecordsAndNoDocument) {
    const BuiltApplet built;
    EXPECT_THAT(built.applet.parameterInfo(1), IsEmpty());
    try {
        built.applet.xml(1);
        FAIL() << "port 1 has a document";
    } catch (const CallError& error) {
        EXPECT_EQ(error.code, -2075);
    }
}

TEST(Applet, TheDocumentComesWithoutItsTerminator) {
    const BuiltApplet built;
    const std::string document = built.applet.xml();
    EXPECT_THAT(document, StartsWith("<?xml"));
    EXPECT_EQ(document.find('\0'), std::string::npos);
}

TEST(Applet, ASavedConfigurationLoadsIntoAnother) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("quillon-client-" + std::to_string(getpid()) + ".mcf");
    BuiltApplet first;
    ASSERT_EQ(first.applet.setInt(FG_WIDTH, 2048), 0);
    EXPECT_EQ(first.applet.saveConfig(file), 0);
    BuiltApplet second;
    EXPECT_EQ(second.applet.loadConfig(file), 0);
    EXPECT_EQ(second.applet.readInt(FG_WIDTH), 2048);
    std::filesystem::remove(file);
    EXPECT_EQ(second.applet.loadConfig(file), -2076);
    EXPECT_EQ(second.applet.lastError(), -5000);
}

TEST(Applet, ShadingIsAnsweredAsNotImplemented) {
    BuiltApplet built;
    EXPECT_EQ(built.applet.allocateShading(0, 0), nullptr);
    EXPECT_EQ(built.applet.lastError(), -1);
    EXPECT_EQ(built.applet.freeShading(nullptr), -2130);
    EXPECT_EQ(built.applet.setSubtractLine(nullptr, 0, 0, 1.0F), -2130);
    EXPECT_EQ(built.applet.setMultiplyLine(nullptr, 0, 0, 1.0F), -2130);
    EXPECT_EQ(built.applet.setFixedPatternNoiseLine(nullptr, 0, 0, 1), -2130);
    EXPECT_EQ(built.applet.maxLine(nullptr), -2130);
    EXPECT_EQ(built.applet.shadingAccess(nullptr), -2130);
    EXPECT_EQ(built.applet.freeShadingAccess(nullptr), -2130);
    EXPECT_EQ(built.applet.writeActiveLine(nullptr, 0), -2130);
    EXPECT_EQ(built.applet.lastError(), -2130);
}

TEST(Applet, AcquisitionCallsReachTheSdk) {
    BuiltApplet built;
    built.board.clearTranscript();
    EXPECT_EQ(built.applet.acquire(0, 10, 0, nullptr), 0);
    EXPECT_EQ(built.applet.lastPicture(0, nullptr), 0);
    EXPECT_EQ(built.applet.stopAcquire(0, nullptr, 0), 0);
    EXPECT_THAT(built.board.calls(), ElementsAre(StartsWith("Fg_AcquireEx("), StartsWith("Fg_getLastPicNumberEx("),
                                                 StartsWith("Fg_stopAcquireEx(")));
}

}  // namespace
}  // namespace quillon::client
