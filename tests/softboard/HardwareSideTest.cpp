#include <cstdint>

#include "tests/softboard/OpenBoard.h"

namespace {

using HardwareSide = OpenBoard;

TEST_F(HardwareSide, ChangesWhatTheSdkReadsWithoutATrace) {
    EXPECT_EQ(softboard_set_double(board, Temperature, 61.5), 0);
    EXPECT_EQ(softboard_set_integer(board, "Device1_Process0_Overflow_OverflowOccurred", 1), 0);
    EXPECT_EQ(softboard_transcript_size(board), 0U);
    double temperature = 0.0;
    std::uint32_t overflow = 0;
    get(Temperature, temperature, 5);
    get("Device1_Process0_Overflow_OverflowOccurred", overflow, 2);
    EXPECT_EQ(temperature, 61.5);
    EXPECT_EQ(overflow, 1U);
}

TEST_F(HardwareSide, SeesWhatTheSdkHasWritten) {
    std::uint32_t values[] = {10, 20};
    set(RedTable, fg_field_access{2, 100, 2, values}, 4096);
    set(ExsyncPeriod, 2.5, 5);
    std::int64_t element = 0;
    double period = 0.0;
    EXPECT_EQ(softboard_get_element(board, RedTable, 101, &element), 0);
    EXPECT_EQ(element, 20);
    EXPECT_EQ(softboard_get_double(board, ExsyncPeriod, &period), 0);
    EXPECT_EQ(period, 2.5);
}

TEST_F(HardwareSide, ChangesTextsAndElements) {
    EXPECT_EQ(softboard_set_text(board, "Device1_Process0_Debug_N0", "renamed"), 0);
    EXPECT_EQ(softboard_set_element(board, RedTable, 3, 33), 0);
    char text[16] = "";
    EXPECT_EQ(softboard_get_text(board, "Device1_Process0_Debug_N0", text, sizeof text), 0);
    EXPECT_STREQ(text, "renamed");
    EXPECT_EQ(softboard_get_text(board, "Device1_Process0_Debug_N0", text, 7), SOFTBOARD_E_RANGE);
    EXPECT_EQ(softboard_get_text(board, "Device1_Process0_Debug_N0", text, 8), 0);
    EXPECT_EQ(softboard_set_element(board, RedTable, 16384, 1), SOFTBOARD_E_RANGE);
}

TEST_F(HardwareSide, RefusesTheWrongKindOfValue) {
    std::int64_t integer = 0;
    double real = 0.0;
    char text[8] = "";
    EXPECT_EQ(softboard_set_integer(board, Temperature, 1), SOFTBOARD_E_TYPE);
    EXPECT_EQ(softboard_get_integer(board, Temperature, &integer), SOFTBOARD_E_TYPE);
    EXPECT_EQ(softboard_set_double(board, XLength, 1.0), SOFTBOARD_E_TYPE);
    EXPECT_EQ(softboard_get_double(board, XLength, &real), SOFTBOARD_E_TYPE);
    EXPECT_EQ(softboard_set_text(board, XLength, "1"), SOFTBOARD_E_TYPE);
    EXPECT_EQ(softboard_get_text(board, XLength, text, sizeof text), SOFTBOARD_E_TYPE);
    EXPECT_EQ(softboard_set_element(board, XLength, 0, 1), SOFTBOARD_E_TYPE);
    EXPECT_EQ(softboard_get_element(board, XLength, 0, &integer), SOFTBOARD_E_TYPE);
}

TEST_F(HardwareSide, RefusesUnknownNamesAndNulls) {
    std::int64_t value = 0;
    EXPECT_EQ(softboard_set_integer(board, "nothing", 1), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(softboard_get_integer(board, "nothing", &value), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(softboard_set_register(board, "nothing", 1), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(softboard_hide_parameter(board, "nothing"), SOFTBOARD_E_UNKNOWN_ID);
    EXPECT_EQ(softboard_set_integer(board, nullptr, 1), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_get_integer(board, XLength, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_set_text(board, XLength, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_set_integer(nullptr, XLength, 1), SOFTBOARD_E_ARGUMENT);
}

TEST_F(HardwareSide, HidesAParameterByNameAndId) {
    const int hidden = id(XLength);
    EXPECT_EQ(softboard_hide_parameter(board, XLength), 0);
    EXPECT_EQ(id(XLength), SOFTBOARD_E_UNKNOWN_ID);
    std::uint32_t value = 0;
    EXPECT_EQ(Fg_getParameterWithType(fg, hidden, &value, 0, 2), SOFTBOARD_E_UNKNOWN_ID);
}

/// A board before anything has been loaded on it.
class BareBoard : public testing::Test {
protected:
    void SetUp() override {
        board = softboard_open();
        design = loadDesignImage();
    }
    void TearDown() override {
        Fg_FreeGrabber(fg);
        TavUnloadTavFile(design);
        softboard_close(board);
    }
    void start() { fg = Fg_InitHandle("Quillon.tav", board, design); }

    IXdevice* board = nullptr;
    fpga_design* design = nullptr;
    Fg_Struct* fg = nullptr;
};

TEST_F(BareBoard, HasNoDesignValues) {
    std::int64_t value = 0;
    uint64_t word = 0;
    EXPECT_EQ(softboard_get_integer(board, XLength, &value), SOFTBOARD_E_NO_DESIGN);
    EXPECT_EQ(softboard_get_register(board, "Scratch", &word), SOFTBOARD_E_NO_DESIGN);
    EXPECT_EQ(softboard_set_register(board, "Scratch", 1), SOFTBOARD_E_NO_DESIGN);
    int direction = 0;
    EXPECT_EQ(softboard_get_register_direction(board, "Scratch", &direction), SOFTBOARD_E_NO_DESIGN);
    EXPECT_EQ(softboard_get_integer(board, "FG_TIMEOUT", &value), 0);
    EXPECT_EQ(value, 1000000);
}

TEST_F(BareBoard, KeepsChangesForTheDesignThatComes) {
    EXPECT_EQ(softboard_set_text(board, "Device1_Process0_OutputFormat_FG_FORMAT_NoOfInputs", "3"), 0);
    EXPECT_EQ(softboard_hide_parameter(board, XLength), 0);
    start();
    char text[8] = "";
    EXPECT_EQ(softboard_get_text(board, "Device1_Process0_OutputFormat_FG_FORMAT_NoOfInputs", text, sizeof text), 0);
    EXPECT_STREQ(text, "3");
    EXPECT_EQ(Fg_getParameterIdByName(fg, XLength), SOFTBOARD_E_UNKNOWN_ID);
}

TEST_F(BareBoard, MakesAKeptChangeOnce) {
    softboard_set_integer(board, XLength, 8);
    start();
    Fg_FreeGrabber(fg);
    start();
    std::int64_t value = 0;
    softboard_get_integer(board, XLength, &value);
    EXPECT_EQ(value, 1024);
}

TEST_F(BareBoard, TakesFaultPlansForNamesToCome) {
    EXPECT_EQ(softboard_plan_fault(board, "Fg_getParameterIdByName", SOFTBOARD_CALL, 2, 0), 0);
    start();
    EXPECT_EQ(Fg_getParameterIdByName(fg, XLength), 10005);
    EXPECT_EQ(Fg_getParameterIdByName(fg, XLength), 0);
}

TEST_F(BareBoard, IsClosedOnce) {
    IXdevice* const other = softboard_open();
    EXPECT_EQ(softboard_close(other), 0);
    EXPECT_EQ(softboard_close(other), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(softboard_close(nullptr), SOFTBOARD_E_ARGUMENT);
}

}  // namespace
