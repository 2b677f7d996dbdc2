#include <cstdint>
#include <cstring>
#include <numeric>
#include <string>

#include "quillon/Vocabulary.h"
#include "softboard/src/DesignDescription.h"
#include "tests/softboard/OpenBoard.h"

namespace {

using ParameterAccess = OpenBoard;

TEST_F(ParameterAccess, ReadsBackA32BitInteger) {
    EXPECT_EQ(set(XLength, std::uint32_t{2048}, 2), 0);
    std::uint32_t value = 0;
    EXPECT_EQ(get(XLength, value, 2), 0);
    EXPECT_EQ(value, 2048U);
}

TEST_F(ParameterAccess, StoresOnly32BitsOfA32BitInteger) {
    std::uint64_t value = 0xFFFFFFFFFFFFFFFF;
    EXPECT_EQ(Fg_getParameterWithType(fg, id(XLength), &value, 0, 2), 0);
    EXPECT_EQ(value, 0xFFFFFFFF00000400);
}

TEST_F(ParameterAccess, RefusesATypeThatIsNotTheParameters) {
    std::uint64_t value = 7;
    for (const int type : {0, 1, 3, 4, 5, 6, 22, 4096, 4098}) {
        EXPECT_EQ(Fg_setParameterWithType(fg, id(XLength), &value, 0, type), SOFTBOARD_E_TYPE) << type;
        EXPECT_EQ(Fg_getParameterWithType(fg, id(XLength), &value, 0, type), SOFTBOARD_E_TYPE) << type;
    }
    EXPECT_EQ(value, 7U);
    std::uint32_t length = 0;
    get(XLength, length, 2);
    EXPECT_EQ(length, 1024U);
}

TEST_F(ParameterAccess, KeepsTheSignOfTheOneSignedInteger) {
    const char* const name = "Device1_Process0_Buffer_0_YMirror";
    EXPECT_EQ(set(name, std::int32_t{-5}, 1), 0);
    std::int64_t value = 0;
    EXPECT_EQ(softboard_get_integer(board, name, &value), 0);
    EXPECT_EQ(value, -5);
    EXPECT_EQ(set(name, std::uint32_t{1}, 2), SOFTBOARD_E_TYPE);
}

TEST_F(ParameterAccess, Reads64BitIntegersWhole) {
    std::uint64_t dna = 0;
    EXPECT_EQ(get("Device1_Process0_BoardStatus_FpgaDNA", dna, 4), 0);
    EXPECT_EQ(dna, 81985529216486895U);
    softboard_set_integer(board, "Device1_Process1_Trigger_Analyzer_Difference_Status", 8589934591);
    std::int64_t difference = 0;
    EXPECT_EQ(get("Device1_Process1_Trigger_Analyzer_Difference_Status", difference, 3), 0);
    EXPECT_EQ(difference, 8589934591);
}

TEST_F(ParameterAccess, ReadsBackADoubleExactly) {
    EXPECT_EQ(set(ExsyncPeriod, 97.65625, 5), 0);
    double value = 0.0;
    EXPECT_EQ(get(ExsyncPeriod, value, 5), 0);
    EXPECT_EQ(value, 97.65625);
}

TEST_F(ParameterAccess, FillsACharacterBufferWithAText) {
    char text[64];
    std::memset(text, 'x', sizeof text);
    EXPECT_EQ(Fg_getParameterWithType(fg, id("Device1_Process0_Debug_T1"), text, 0, 6), 0);
    EXPECT_STREQ(text, "InjectMonitor");
    EXPECT_EQ(text[14], 'x');
}

TEST_F(ParameterAccess, TakesATextFromItsCharacters) {
    const char* const name = "Device1_Process0_Debug_CameraInput_DebugFile";
    EXPECT_EQ(Fg_setParameterWithType(fg, id(name), "picture.tif", 0, 6), 0);
    char text[64] = "";
    EXPECT_EQ(Fg_getParameterWithType(fg, id(name), text, 0, 6), 0);
    EXPECT_STREQ(text, "picture.tif");
}

TEST_F(ParameterAccess, HandsOutANewTextThatIsReleasedOnce) {
    char* text = nullptr;
    const int version = id("FG_DRIVER_VERSION");
    EXPECT_EQ(Fg_getParameterWithType(fg, version, &text, 0, 22), 0);
    EXPECT_STREQ(text, "5.7.0 (software board)");
    EXPECT_EQ(Fg_freeParameterStringWithType(fg, version, text, 0, 22), 0);
    EXPECT_EQ(Fg_freeParameterStringWithType(fg, version, text, 0, 22), SOFTBOARD_E_ARGUMENT);
}

TEST_F(ParameterAccess, WritesATableWithARunOfElements) {
    std::vector<std::uint32_t> values(16384);
    std::iota(values.begin(), values.end(), 0U);
    fg_field_access all{2, 0, 16384, values.data()};
    EXPECT_EQ(Fg_setParameterWithType(fg, id(RedTable), &all, 0, 4096), 0);
    std::uint64_t read[3] = {};
    fg_field_access some{4, 16381, 3, read};
    EXPECT_EQ(Fg_getParameterWithType(fg, id(RedTable), &some, 0, 4096), 0);
    EXPECT_EQ(read[0], 16381U);
    EXPECT_EQ(read[2], 16383U);
}

TEST_F(ParameterAccess, WritesATableWithOneElement) {
    EXPECT_EQ(set(RedTable, fg_field_int{777, 16383}, 4098), 0);
    fg_field_int element{0, 16383};
    EXPECT_EQ(get(RedTable, element, 4098), 0);
    EXPECT_EQ(element.value, 777U);
}

TEST_F(ParameterAccess, RefusesElementsOutsideATable) {
    std::uint32_t value = 1;
    EXPECT_EQ(set(RedTable, fg_field_int{1, 16384}, 4098), SOFTBOARD_E_RANGE);
    EXPECT_EQ(set(RedTable, fg_field_access{2, 16384, 1, &value}, 4096), SOFTBOARD_E_RANGE);
    EXPECT_EQ(set(RedTable, fg_field_access{2, 16383, 2, &value}, 4096), SOFTBOARD_E_RANGE);
    EXPECT_EQ(set(RedTable, fg_field_access{2, 1, 0xFFFFFFFF, &value}, 4096), SOFTBOARD_E_RANGE);
    EXPECT_EQ(set(RedTable, fg_field_access{5, 0, 1, &value}, 4096), SOFTBOARD_E_TYPE);
    EXPECT_EQ(set(RedTable, fg_field_access{2, 0, 1, nullptr}, 4096), SOFTBOARD_E_ARGUMENT);
}

TEST_F(ParameterAccess, RefusesToWriteWhatCanOnlyBeRead) {
    EXPECT_EQ(set(Temperature, 99.0, 5), SOFTBOARD_E_READ_ONLY);
    double value = 0.0;
    get(Temperature, value, 5);
    EXPECT_EQ(value, 45.2);
}

TEST_F(ParameterAccess, RefusesToReadWhatCanOnlyBeWritten) {
    std::uint32_t value = 3;
    EXPECT_EQ(get("Device1_Process0_Trigger_Trigger_SoftwareTrgPulse", value, 2), SOFTBOARD_E_WRITE_ONLY);
    EXPECT_EQ(value, 3U);
}

TEST_F(ParameterAccess, RefusesUnknownIds) {
    std::uint32_t value = 0;
    const std::size_t described = softboard::parseDesign(fileContent(DESIGN_FILE))->parameters.size();
    for (const int unknown : {0, -9002, 1, 9999, 10000 + static_cast<int>(described), 2147483647}) {
        EXPECT_EQ(Fg_setParameterWithType(fg, unknown, &value, 0, 2), SOFTBOARD_E_UNKNOWN_ID) << unknown;
        EXPECT_EQ(Fg_getParameterWithType(fg, unknown, &value, 0, 2), SOFTBOARD_E_UNKNOWN_ID) << unknown;
    }
}

TEST_F(ParameterAccess, RefusesOtherProcessesThanZero) {
    std::uint32_t value = 0;
    EXPECT_EQ(Fg_setParameterWithType(fg, id(XLength), &value, 1, 2), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getParameterWithType(fg, id(XLength), &value, 1, 2), SOFTBOARD_E_ARGUMENT);
}

TEST_F(ParameterAccess, RefusesNullValues) {
    EXPECT_EQ(Fg_setParameterWithType(fg, id(XLength), nullptr, 0, 2), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getParameterWithType(fg, id(XLength), nullptr, 0, 2), SOFTBOARD_E_ARGUMENT);
}

TEST_F(ParameterAccess, ServesTheSdksOwnParametersWithAnyIntegerType) {
    std::uint32_t narrow = 0;
    std::uint64_t wide = 0;
    EXPECT_EQ(Fg_getParameterWithType(fg, FG_APC_STOP_TIMEOUT, &narrow, 0, 1), 0);
    EXPECT_EQ(narrow, 1000U);
    EXPECT_EQ(Fg_getParameterWithType(fg, FG_NR_OF_DMAS, &narrow, 0, 2), 0);
    EXPECT_EQ(narrow, 1U);
    EXPECT_EQ(Fg_getParameterWithType(fg, FG_NR_OF_CAMS, &wide, 0, 4), 0);
    EXPECT_EQ(wide, 1U);
    EXPECT_EQ(Fg_getParameterWithType(fg, FG_NR_OF_DMAS, &narrow, 0, 5), SOFTBOARD_E_TYPE);
}

TEST_F(ParameterAccess, KnowsTheSdksOwnParametersByName) {
    EXPECT_EQ(id("FG_TIMEOUT"), 600);
    EXPECT_EQ(id("FG_APC_STOP_TIMEOUT"), 601);
    EXPECT_EQ(id("FG_CAMSTATUS_EXTENDED"), 2050);
    EXPECT_EQ(id("FG_NR_OF_DMAS"), 3050);
    EXPECT_EQ(id("FG_NR_OF_CAMS"), 3060);
    EXPECT_EQ(id("FG_DMA_PORT"), 3080);
    EXPECT_EQ(id("FG_CAM_PORT"), 3090);
    EXPECT_EQ(id("FG_TRANSFER_LEN"), 5210);
    EXPECT_EQ(id("FG_DMASTATUS"), 24092);
}

TEST_F(ParameterAccess, WithoutATypeTakesTheParametersOwn) {
    double period = 12.5;
    EXPECT_EQ(Fg_setParameter(fg, id(ExsyncPeriod), &period, 0), 0);
    period = 0.0;
    EXPECT_EQ(Fg_getParameter(fg, id(ExsyncPeriod), &period, 0), 0);
    EXPECT_EQ(period, 12.5);
    fg_field_int element{5, 9};
    EXPECT_EQ(Fg_setParameter(fg, id(RedTable), &element, 0), 0);
    std::int64_t value = 0;
    softboard_get_element(board, RedTable, 9, &value);
    EXPECT_EQ(value, 5);
}

TEST_F(ParameterAccess, OfANullHandleIsRefused) {
    std::uint32_t value = 0;
    EXPECT_EQ(Fg_setParameterWithType(nullptr, FG_TIMEOUT, &value, 0, 2), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getParameterWithType(nullptr, FG_TIMEOUT, &value, 0, 2), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getParameterIdByName(nullptr, "FG_TIMEOUT"), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getParameterInfo(nullptr, 0), nullptr);
}

}  // namespace
