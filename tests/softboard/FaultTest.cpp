#include <cstdint>

#include "softboard/orlo_hw.h"
#include "tests/softboard/OpenBoard.h"

namespace {

using Fault = OpenBoard;

TEST_F(Fault, StrikesTheNthWriteOfAParameterOnce) {
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 2, -42);
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), 0);
    EXPECT_EQ(set(XLength, std::uint32_t{8}, 2), -42);
    EXPECT_EQ(set(XLength, std::uint32_t{12}, 2), 0);
}

TEST_F(Fault, LeavesTheValueAsItWas) {
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 1, -42);
    set(XLength, std::uint32_t{8}, 2);
    std::int64_t value = 0;
    softboard_get_integer(board, XLength, &value);
    EXPECT_EQ(value, 1024);
}

TEST_F(Fault, LeavesTheReadersVariableAsItWas) {
    softboard_plan_fault(board, XLength, SOFTBOARD_READ, 1, -42);
    std::uint32_t value = 99;
    EXPECT_EQ(get(XLength, value, 2), -42);
    EXPECT_EQ(value, 99U);
}

TEST_F(Fault, StrikesEveryTimeWithANumberOfZero) {
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 0, -42);
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), -42);
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), -42);
}

TEST_F(Fault, StrikesItsNameAndDirectionOnly) {
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 1, -42);
    std::uint32_t value = 0;
    EXPECT_EQ(get(XLength, value, 2), 0);
    EXPECT_EQ(set("Device1_Process0_Buffer_0_XOffset", std::uint32_t{4}, 2), 0);
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), -42);
}

TEST_F(Fault, StrikesTheNthAccessOfAnyName) {
    softboard_plan_fault_at(board, 3, -43);
    std::uint32_t value = 0;
    std::uint64_t word = 0;
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), 0);
    EXPECT_EQ(get(XLength, value, 2), 0);
    EXPECT_EQ(OrloRegisterRead(board, 1, &word), -43);
    EXPECT_EQ(OrloRegisterRead(board, 1, &word), 0);
}

TEST_F(Fault, StandsBesideOthers) {
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 1, -1);
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 2, -2);
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), -1);
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), -2);
    EXPECT_EQ(set(XLength, std::uint32_t{4}, 2), 0);
}

TEST_F(Fault, IsNotedInTheTranscriptWithTheValueThatWasSent) {
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 1, -42);
    set(XLength, std::uint32_t{8}, 2);
    EXPECT_EQ(lastAccess().result, -42);
    EXPECT_STREQ(lastAccess().value, "8");
}

TEST_F(Fault, WorksWhileNothingIsRecorded) {
    softboard_transcript_record(board, 0);
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 1, -42);
    EXPECT_EQ(set(XLength, std::uint32_t{8}, 2), -42);
}

TEST_F(Fault, IsForgottenWhenAllAreCleared) {
    softboard_plan_fault(board, XLength, SOFTBOARD_WRITE, 0, -42);
    softboard_plan_fault_at(board, 1, -42);
    EXPECT_EQ(softboard_clear_faults(board), 0);
    EXPECT_EQ(set(XLength, std::uint32_t{8}, 2), 0);
}

TEST_F(Fault, StrikesARegisterByItsName) {
    softboard_plan_fault(board, "Scratch", SOFTBOARD_WRITE, 1, -44);
    EXPECT_EQ(OrloRegisterWrite(board, 5, 1), -44);
    uint64_t value = 99;
    softboard_get_register(board, "Scratch", &value);
    EXPECT_EQ(value, 0U);
}

TEST_F(Fault, StrikesAFunctionOfTheSdk) {
    softboard_plan_fault(board, "Fg_AcquireEx", SOFTBOARD_CALL, 1, -5);
    softboard_plan_fault(board, "Fg_getParameterInfo", SOFTBOARD_CALL, 1, -5);
    EXPECT_EQ(Fg_AcquireEx(fg, 0, 1, 0, nullptr), -5);
    EXPECT_EQ(Fg_AcquireEx(fg, 0, 1, 0, nullptr), 0);
    EXPECT_EQ(Fg_getParameterInfo(fg, 0), nullptr);
    EXPECT_NE(Fg_getParameterInfo(fg, 0), nullptr);
}

TEST_F(Fault, StrikesAnAccessByItsFunctionsName) {
    softboard_plan_fault(board, "Fg_setParameterWithType", SOFTBOARD_CALL, 1, -6);
    EXPECT_EQ(set(XLength, std::uint32_t{8}, 2), -6);
    EXPECT_EQ(set(XLength, std::uint32_t{8}, 2), 0);
}

TEST_F(Fault, OfTheLoaderIsPlannedForTheProcess) {
    softboard_plan_fault(nullptr, "TavLoadDesignFromBuffer", SOFTBOARD_CALL, 1, -1);
    EXPECT_EQ(loadDesignImage(), nullptr);
    fpga_design* const second = loadDesignImage();
    EXPECT_NE(second, nullptr);
    TavUnloadTavFile(second);
}

TEST_F(Fault, IsRefusedForAnUnknownBoardOrDirection) {
    int nothing = 0;
    EXPECT_EQ(softboard_plan_fault(reinterpret_cast<IXdevice*>(&nothing), XLength, SOFTBOARD_WRITE, 1, -1),
              SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_fault(board, XLength, 3, 1, -1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_plan_fault(board, nullptr, SOFTBOARD_WRITE, 1, -1), SOFTBOARD_E_ARGUMENT);
}

}  // namespace
