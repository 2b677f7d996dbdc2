// The return conventions of the exported functions on a living wrapper.

#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "client/testing/BuiltApplet.h"

namespace quillon::client {
namespace {

using testing::BuiltApplet;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class Exports : public ::testing::Test {
protected:
    void SetUp() override { built.board.clearTranscript(); }

    /// Puts something into the last error, so that a call that leaves it alone can be told from one that records 0.
    void spoilLastError() { ASSERT_EQ(built.applet.setInt(FG_PIXELDEPTH, 8), -12); }
    int lastError() { return built.applet.lastError(); }

    BuiltApplet built;
    const Functions& f = built.applet.functions();
    QuillonHandle handle = built.applet.handle();
};

// Values -------------------------------------------------------------------------------------------------------------

TEST_F(Exports, ARead64BitIntegerOfA32BitParameterHasAClearUpperHalf) {
    std::int64_t value = -1;
    EXPECT_EQ(f.Fg_getParameterWithType(handle, FG_WIDTH, &value, 0, FgTypeInt64), 0);
    EXPECT_EQ(value, 1024);
    value = -1;
    EXPECT_EQ(f.Fg_getParameterWithType(handle, FG_WIDTH, &value, 0, FgTypeUInt64), 0);
    EXPECT_EQ(value, 1024);
}

TEST_F(Exports, EveryOtherTypeLeavesTheUpperHalfAlone) {
    for (const FgParamTypes type : {FgTypeInt32, FgTypeUInt32, FgTypeDouble, FgTypeCharBuffer, FgTypeString}) {
        std::uint64_t value = 0xABCDEF0155555555;
        EXPECT_EQ(f.Fg_getParameterWithType(handle, FG_WIDTH, &value, 0, type), 0);
        EXPECT_EQ(value, 0xABCDEF0100000400U);
    }
}

TEST_F(Exports, A64BitReadThatFailsLeavesAZero) {
    std::int64_t value = -1;
    EXPECT_EQ(f.Fg_getParameterWithType(handle, 999999, &value, 0, FgTypeInt64), -2070);
    EXPECT_EQ(value, 0);
}

TEST_F(Exports, ANullValueIsRefusedAndRecorded) {
    for (const FgParamTypes type :
         {FgTypeInt32, FgTypeUInt32, FgTypeDouble, FgTypeCharBuffer, FgTypeString, FgTypeFieldAccess, FgTypeFieldInt}) {
        std::int32_t value = 0;
        ASSERT_EQ(built.applet.getInt(FG_WIDTH, value), 0);
        EXPECT_EQ(f.Fg_getParameterWithType(handle, FG_WIDTH, nullptr, 0, type), -2070);
        EXPECT_EQ(lastError(), -2070);
    }
    for (const FgParamTypes type : {FgTypeInt32, FgTypeUInt32, FgTypeInt64, FgTypeUInt64, FgTypeDouble,
                                    FgTypeCharBuffer, FgTypeString, FgTypeFieldAccess, FgTypeFieldInt}) {
        std::int32_t value = 0;
        ASSERT_EQ(built.applet.getInt(FG_WIDTH, value), 0);
        EXPECT_EQ(f.Fg_setParameterWithType(handle, FG_WIDTH, nullptr, 0, type), -2070);
        EXPECT_EQ(lastError(), -2070);
    }
}

using ExportsDeath = Exports;

TEST_F(ExportsDeath, A64BitReadIntoANullValueFaults) {
    EXPECT_DEATH(f.Fg_getParameterWithType(handle, FG_WIDTH, nullptr, 0, FgTypeInt64), "");
    EXPECT_DEATH(f.Fg_getParameterWithType(handle, FG_WIDTH, nullptr, 0, FgTypeUInt64), "");
}

TEST_F(Exports, OnlyTextsAreReleasedAndNothingElseIsTouched) {
    spoilLastError();
    for (const FgParamTypes type : {FgTypeInt32, FgTypeUInt32, FgTypeInt64, FgTypeUInt64, FgTypeDouble,
                                    FgTypeCharBuffer, FgTypeFieldAccess, FgTypeFieldInt}) {
        EXPECT_EQ(f.Fg_freeParameterStringWithType(handle, FG_WIDTH, nullptr, 0, type), -2078);
        EXPECT_EQ(f.Fg_freeParameterStringWithType(handle, 2000601, nullptr, 0, type), -2078);
    }
    EXPECT_EQ(lastError(), -12);
    EXPECT_THAT(built.board.calls(), IsEmpty());
}

// Forwarded to the SDK -----------------------------------------------------------------------------------------------

TEST_F(Exports, ForwardersHandTheirArgumentsOn) {
    EXPECT_EQ(f.Fg_AcquireEx(handle, 0, 10, 3, nullptr), 0);
    EXPECT_EQ(f.Fg_getStatusEx(handle, 2, 5, 0, nullptr), 10);
    EXPECT_EQ(f.Fg_getLastPicNumberEx(handle, 0, nullptr), 0);
    built.board.deliverPictures(4);
    EXPECT_EQ(f.Fg_getLastPicNumberBlockingEx(handle, 4, 0, 1, nullptr), 4);
    EXPECT_EQ(f.Fg_stopAcquireEx(handle, 0, nullptr, 1), 0);
    EXPECT_EQ(f.Fg_getAppletId(handle, nullptr), 1874);
    EXPECT_THAT(built.board.calls(),
                ElementsAre("Fg_AcquireEx(0, 10, 3)", "Fg_getStatusEx(2, 5, 0)", "Fg_getLastPicNumberEx(0)",
                            "Fg_getLastPicNumberBlockingEx(4, 0, 1)", "Fg_stopAcquireEx(0, 1)", "Fg_getAppletId()"));
}

TEST_F(Exports, AForwarderThatSucceedsRecordsSuccess) {
    spoilLastError();
    EXPECT_EQ(f.Fg_getAppletId(handle, nullptr), 1874);
    EXPECT_EQ(lastError(), 0);
    spoilLastError();
    EXPECT_EQ(f.Fg_getLastPicNumberEx(handle, 0, nullptr), 0);
    EXPECT_EQ(lastError(), 0);
}

TEST_F(Exports, AForwarderThatFailsReturnsTheResultAndRecordsTheSdksLastError) {
    built.board.setSdkError(-7);
    for (const char* function : {"Fg_getAppletId", "Fg_AcquireEx", "Fg_stopAcquireEx", "Fg_getStatusEx",
                                 "Fg_getLastPicNumberEx", "Fg_getLastPicNumberBlockingEx"}) {
        built.board.planFault(function, Direction::Call, 1, -5);
    }
    const auto expectRecorded = [this] {
        EXPECT_EQ(lastError(), -7);
        spoilLastError();
    };
    EXPECT_EQ(f.Fg_getAppletId(handle, nullptr), -5);
    expectRecorded();
    EXPECT_EQ(f.Fg_AcquireEx(handle, 0, 1, 0, nullptr), -5);
    expectRecorded();
    EXPECT_EQ(f.Fg_stopAcquireEx(handle, 0, nullptr, 0), -5);
    expectRecorded();
    EXPECT_EQ(f.Fg_getStatusEx(handle, 0, 0, 0, nullptr), -5);
    expectRecorded();
    EXPECT_EQ(f.Fg_getLastPicNumberEx(handle, 0, nullptr), -5);
    expectRecorded();
    EXPECT_EQ(f.Fg_getLastPicNumberBlockingEx(handle, 1, 0, 1, nullptr), -5);
    expectRecorded();
}

TEST_F(Exports, A64BitResultIsNegativeByItsOwnSign) {
    built.board.setSdkError(-7);
    built.board.planFault("Fg_getStatusEx", Direction::Call, 1, std::int64_t{1} << 31);
    spoilLastError();
    EXPECT_EQ(f.Fg_getStatusEx(handle, 0, 0, 0, nullptr), std::int64_t{1} << 31);
    EXPECT_EQ(lastError(), 0);
    built.board.planFault("Fg_getLastPicNumberEx", Direction::Call, 1, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(f.Fg_getLastPicNumberEx(handle, 0, nullptr), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(lastError(), -7);
}

// Description --------------------------------------------------------------------------------------------------------

TEST_F(Exports, TheRecordsAreTheAppletsOwnAndTheSdkIsNotAsked) {
    spoilLastError();
    EXPECT_NE(f.Fg_getParameterInfo(handle, 0), nullptr);
    EXPECT_EQ(f.Fg_getParameterInfo(handle, 1), nullptr);
    EXPECT_EQ(f.Fg_getParameterInfo(handle, -1), nullptr);
    EXPECT_THAT(built.board.calls(), IsEmpty());
    EXPECT_EQ(lastError(), -12);
}

TEST_F(Exports, ANullBufferAsksForTheDocumentsSize) {
    spoilLastError();
    std::size_t size = 0;
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 0, nullptr, &size), 0);
    EXPECT_EQ(lastError(), 0);
    std::vector<char> document(size, 'x');
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 0, document.data(), &size), 0);
    EXPECT_EQ(std::strlen(document.data()), size - 1);
    EXPECT_THAT(document.data(), StartsWith("<?xml"));
}

TEST_F(Exports, ABufferOfTheTextsLengthIsTooSmallForItsTerminator) {
    std::size_t needed = 0;
    ASSERT_EQ(f.Fg_getParameterInfoXML(handle, 0, nullptr, &needed), 0);
    std::vector<char> document(needed, 'x');
    std::size_t size = needed - 1;
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 0, document.data(), &size), -500);
    EXPECT_EQ(size, needed - 1);
    EXPECT_EQ(lastError(), -500);
    EXPECT_EQ(document.front(), 'x');
}

TEST_F(Exports, ABufferOfNoSizeIsTooSmall) {
    char document = 'x';
    std::size_t size = 0;
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 0, &document, &size), -500);
    EXPECT_EQ(lastError(), -500);
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 5, &document, &size), -500);  // before the port is looked at
}

TEST_F(Exports, TheRestOfALargerBufferIsFilledWithZeros) {
    std::size_t needed = 0;
    ASSERT_EQ(f.Fg_getParameterInfoXML(handle, 0, nullptr, &needed), 0);
    std::vector<char> document(needed + 100, 'x');
    std::size_t size = document.size();
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 0, document.data(), &size), 0);
    EXPECT_EQ(size, needed);
    EXPECT_EQ(std::string(document.end() - 101, document.end()), std::string(101, '\0'));
}

TEST_F(Exports, APortWithoutRecordsHasNoDocument) {
    std::size_t size = 3;
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 1, nullptr, &size), -2075);
    EXPECT_EQ(size, 3U);
    EXPECT_EQ(lastError(), -2075);
}

// Shading ------------------------------------------------------------------------------------------------------------

TEST_F(Exports, TheDescriptionNeedsAPlaceForItsSize) {
    char document = 'x';
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 0, &document, nullptr), -2070);
    EXPECT_EQ(lastError(), -2070);
    EXPECT_EQ(f.Fg_getParameterInfoXML(handle, 0, nullptr, nullptr), -2070);
    EXPECT_EQ(document, 'x');
}

TEST_F(Exports, ThereIsNoShadingHandle) {
    EXPECT_EQ(f.Fg_AllocShading(handle, 1, 2), nullptr);
    EXPECT_EQ(lastError(), -1);
}

TEST_F(Exports, ShadingIsNotImplementedAndThatIsTheLastError) {
    const std::vector<int> results = {f.Fg_FreeShading(handle, nullptr),
                                      f.Shad_SetSubValueLine(handle, nullptr, 0, 0, 1.0F),
                                      f.Shad_SetMultValueLine(handle, nullptr, 0, 0, 1.0F),
                                      f.Shad_SetFixedPatternNoiseLine(handle, nullptr, 0, 0, 1),
                                      f.Shad_GetMaxLine(handle, nullptr),
                                      f.Shad_GetAccess(handle, nullptr),
                                      f.Shad_FreeAccess(handle, nullptr),
                                      f.Shad_WriteActLine(handle, nullptr, 0)};
    EXPECT_THAT(results, ::testing::Each(-2130));
    EXPECT_EQ(lastError(), -2130);
    spoilLastError();
    f.Shad_GetMaxLine(handle, nullptr);
    EXPECT_EQ(lastError(), -2130);
    EXPECT_THAT(built.board.calls(), IsEmpty());
}

// The end ------------------------------------------------------------------------------------------------------------

TEST_F(Exports, FreeingClearsTheLocationAndGivesEverythingBack) {
    SoftBoardLibrary boards = built.board.library();
    const std::uint64_t unloaded = boards.callCount("TavUnloadTavFile");
    EXPECT_EQ(f.Fg_FreeGrabber(handle), 0);
    EXPECT_EQ(*handle, nullptr);
    EXPECT_EQ(f.Fg_FreeGrabber(handle), -2001);
    EXPECT_EQ(f.Fg_getLastErrorNumber(handle), -2001);
    EXPECT_EQ(boards.liveHandles(), 0U);
    EXPECT_EQ(boards.liveDesigns(), 0U);
    EXPECT_EQ(boards.callCount("TavUnloadTavFile"), unloaded + 1);
    EXPECT_THAT(built.board.calls(), ElementsAre("Fg_FreeGrabber()"));
}

TEST_F(Exports, ARefusalToFreeIsReturnedAndTheWrapperGoesAllTheSame) {
    SoftBoardLibrary boards = built.board.library();
    built.board.planFault("Fg_FreeGrabber", Direction::Call, 1, -5);
    EXPECT_EQ(f.Fg_FreeGrabber(handle), -5);
    EXPECT_EQ(*handle, nullptr);
    EXPECT_EQ(boards.liveDesigns(), 0U);
}

}  // namespace
}  // namespace quillon::client
