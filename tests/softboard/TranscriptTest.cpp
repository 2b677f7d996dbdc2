#include <cstdint>
#include <string>

#include "tests/softboard/OpenBoard.h"

namespace {

using Transcript = OpenBoard;

TEST_F(Transcript, TellsReadsAndWritesInOrder) {
    std::uint32_t value = 0;
    double temperature = 0.0;
    set(XLength, std::uint32_t{512}, 2);
    get(XLength, value, 2);
    get(Temperature, temperature, 5);
    EXPECT_EQ(accesses(), (std::vector<std::string>{"write Device1_Process0_Buffer_0_XLength=512",
                                                    "read Device1_Process0_Buffer_0_XLength=512",
                                                    "read Device1_Process0_BoardStatus_FpgaTemperature=45.2"}));
}

TEST_F(Transcript, TellsIdTypeAndResultOfAnAccess) {
    set(ExsyncPeriod, 200.5, 5);
    const softboard_access access = lastAccess();
    EXPECT_EQ(access.direction, SOFTBOARD_WRITE);
    EXPECT_EQ(access.id, id(ExsyncPeriod));
    EXPECT_EQ(access.dma, 0);
    EXPECT_EQ(access.type, 5);
    EXPECT_EQ(access.result, 0);
    EXPECT_STREQ(access.value, "200.5");
}

TEST_F(Transcript, TellsTheRefusedWriteToo) {
    set(Temperature, 1.0, 5);
    EXPECT_EQ(lastAccess().result, SOFTBOARD_E_READ_ONLY);
    EXPECT_STREQ(lastAccess().value, "1");
}

TEST_F(Transcript, LeavesOutTheValueOfAnAccessWithTheWrongType) {
    set(XLength, std::uint64_t{5}, 6);
    EXPECT_EQ(lastAccess().result, SOFTBOARD_E_TYPE);
    EXPECT_STREQ(lastAccess().value, "");
}

TEST_F(Transcript, ShowsSignedAndUnsignedIntegers) {
    set("Device1_Process0_Buffer_0_YMirror", std::int32_t{-1}, 1);
    EXPECT_STREQ(lastAccess().value, "-1");
    set(XLength, std::uint32_t{4294967295U}, 2);
    EXPECT_STREQ(lastAccess().value, "4294967295");
    set("Device1_Process0_Debug_CameraInput_Inject_WritePixel", std::uint64_t{18446744073709551615U}, 4);
    EXPECT_STREQ(lastAccess().value, "18446744073709551615");
}

TEST_F(Transcript, ShowsTextsAsTheyAre) {
    Fg_setParameterWithType(fg, id("Device1_Process0_Debug_CameraInput_DebugFile"), "a, b", 0, 6);
    EXPECT_STREQ(lastAccess().value, "a, b");
}

TEST_F(Transcript, ShowsElementsWithTheirPositions) {
    set(RedTable, fg_field_int{65535, 7}, 4098);
    EXPECT_STREQ(lastAccess().value, "[7]=65535");
    std::uint32_t values[] = {1, 2, 3};
    set(RedTable, fg_field_access{2, 10, 3, values}, 4096);
    EXPECT_STREQ(lastAccess().value, "[10..12]=1,2,3");
}

TEST_F(Transcript, NotesOtherCallsWithTheirArguments) {
    Fg_getParameterIdByName(fg, "FG_TIMEOUT");
    const softboard_access access = lastAccess();
    EXPECT_EQ(access.direction, SOFTBOARD_CALL);
    EXPECT_STREQ(access.name, "Fg_getParameterIdByName");
    EXPECT_STREQ(access.value, "FG_TIMEOUT");
    EXPECT_EQ(access.result, 600);
}

TEST_F(Transcript, KeepsCountingWhenItIsCleared) {
    id("FG_TIMEOUT");
    const uint64_t before = lastAccess().sequence;
    EXPECT_EQ(softboard_transcript_clear(board), 0);
    EXPECT_EQ(softboard_transcript_size(board), 0U);
    id("FG_TIMEOUT");
    EXPECT_EQ(lastAccess().sequence, before + 1);
}

TEST_F(Transcript, RecordsNothingWhileItIsOff) {
    EXPECT_EQ(softboard_transcript_record(board, 0), 0);
    set(XLength, std::uint32_t{512}, 2);
    EXPECT_EQ(softboard_transcript_size(board), 0U);
    EXPECT_EQ(softboard_transcript_record(board, 1), 0);
    id("FG_TIMEOUT");
    EXPECT_EQ(softboard_transcript_size(board), 1U);
}

TEST_F(Transcript, HasNoEntryBehindTheLast) {
    softboard_access access{};
    EXPECT_EQ(softboard_transcript_get(board, softboard_transcript_size(board), &access), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_transcript_get(board, 0, nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(Transcript, OfTheProcessHoldsTheLoaderCalls) {
    softboard_transcript_clear(nullptr);
    TavGetRegisterName(design, 5);
    softboard_access access{};
    ASSERT_EQ(softboard_transcript_get(nullptr, 0, &access), 0);
    EXPECT_EQ(access.direction, SOFTBOARD_CALL);
    EXPECT_STREQ(access.name, "TavGetRegisterName");
    EXPECT_STREQ(access.value, "5");
    EXPECT_EQ(access.result, 1);
}

TEST_F(Transcript, OfOneBoardKnowsNothingOfAnother) {
    IXdevice* const other = softboard_open();
    set(XLength, std::uint32_t{512}, 2);
    EXPECT_EQ(softboard_transcript_size(other), 0U);
    softboard_close(other);
}

}  // namespace
