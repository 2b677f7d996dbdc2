#include "softboard/orlo_hw.h"

#include <cstdint>

#include "tests/softboard/OpenBoard.h"

namespace {

class Register : public OpenBoard {
protected:
    int number(const char* name) { return TavGetRegisterByName(design, name); }
};

TEST_F(Register, StartsWithTheDesignsValue) {
    std::uint64_t value = 0;
    EXPECT_EQ(OrloRegisterRead(board, number("DesignId"), &value), 0);
    EXPECT_EQ(value, 0x51554C4EU);
}

TEST_F(Register, ReadsBackWhatWasWritten) {
    EXPECT_EQ(OrloRegisterWrite(board, number("Scratch"), 0xDEADBEEF), 0);
    std::uint64_t value = 0;
    EXPECT_EQ(OrloRegisterRead(board, number("Scratch"), &value), 0);
    EXPECT_EQ(value, 0xDEADBEEFU);
}

TEST_F(Register, DropsBitsAboveItsWidth) {
    const std::uint64_t ones = 0xFFFFFFFFFFFFFFFF;
    std::uint64_t value = 0;
    OrloRegisterWrite(board, number("DmaEnable"), ones);
    OrloRegisterRead(board, number("DmaEnable"), &value);
    EXPECT_EQ(value, 1U);
    OrloRegisterWrite(board, number("LineCounter"), ones);
    OrloRegisterRead(board, number("LineCounter"), &value);
    EXPECT_EQ(value, 0xFFFFFFFFFFU);
    OrloRegisterWrite(board, number("DmaBaseAddress"), ones);
    OrloRegisterRead(board, number("DmaBaseAddress"), &value);
    EXPECT_EQ(value, ones);
}

TEST_F(Register, KeepsItsDirection) {
    std::uint64_t value = 77;
    EXPECT_EQ(OrloRegisterWrite(board, number("DesignId"), 1), SOFTBOARD_E_READ_ONLY);
    EXPECT_EQ(OrloRegisterRead(board, number("DmaReset"), &value), SOFTBOARD_E_WRITE_ONLY);
    EXPECT_EQ(value, 77U);
    EXPECT_EQ(OrloRegisterWrite(board, number("DmaReset"), 1), 0);
}

TEST_F(Register, IsUnknownOutsideTheDesignsNumbers) {
    std::uint64_t value = 0;
    EXPECT_EQ(OrloRegisterRead(board, 0, &value), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(OrloRegisterRead(board, 21, &value), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(OrloRegisterWrite(board, -1, 0), SOFTBOARD_E_UNKNOWN_ID);
}

TEST_F(Register, NeedsABoardADesignAndAPlaceForTheValue) {
    std::uint64_t value = 0;
    EXPECT_EQ(OrloRegisterRead(nullptr, 1, &value), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(OrloRegisterWrite(nullptr, 1, 0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(OrloRegisterRead(board, 1, nullptr), SOFTBOARD_E_ARGUMENT);
    IXdevice* const bare = softboard_open();
    EXPECT_EQ(OrloRegisterRead(bare, 1, &value), SOFTBOARD_E_NO_DESIGN);
    softboard_close(bare);
}

TEST_F(Register, StandsInTheTranscriptUnderItsName) {
    OrloRegisterWrite(board, 5, 42);
    const softboard_access access = lastAccess();
    EXPECT_EQ(access.direction, SOFTBOARD_WRITE);
    EXPECT_EQ(access.id, 5);
    EXPECT_EQ(access.type, 0);
    EXPECT_STREQ(access.name, "register Scratch");
    EXPECT_STREQ(access.value, "42");
}

TEST_F(Register, ChangesFromTheHardwaresSide) {
    EXPECT_EQ(softboard_set_register(board, "GpioInput", 0xFFFF), 0);
    std::uint64_t value = 0;
    OrloRegisterRead(board, number("GpioInput"), &value);
    EXPECT_EQ(value, 0xFFFU);
    EXPECT_EQ(softboard_transcript_size(board), 1U);
}

}  // namespace
