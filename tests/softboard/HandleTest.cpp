#include <cstdint>

#include "tests/softboard/OpenBoard.h"

namespace {

using Handle = OpenBoard;

TEST_F(Handle, IsNotGivenForANullBoardOrDesign) {
    EXPECT_EQ(Fg_InitHandleSlaveAware("Quillon.tav", nullptr, design, 0), nullptr);
    EXPECT_EQ(Fg_getLastErrorNumber(nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_InitHandleSlaveAware("Quillon.tav", board, nullptr, 0), nullptr);
    EXPECT_EQ(Fg_getLastErrorNumber(nullptr), SOFTBOARD_E_NO_DESIGN);
}

TEST_F(Handle, IsNotGivenForADesignThatWasUnloaded) {
    fpga_design* const gone = loadDesignImage();
    TavUnloadTavFile(gone);
    EXPECT_EQ(Fg_InitHandle("Quillon.tav", board, gone), nullptr);
}

TEST_F(Handle, OfAMasterPutsTheDesignIntoItsInitialState) {
    set(XLength, std::uint32_t{512}, 2);
    Fg_Struct* const second = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 0);
    std::uint32_t value = 0;
    get(XLength, value, 2);
    EXPECT_EQ(value, 1024U);
    Fg_FreeGrabber(second);
}

TEST_F(Handle, OfASlaveLeavesTheDesignAsItIs) {
    set(XLength, std::uint32_t{512}, 2);
    fpga_design* const other = loadDesignImage();
    Fg_Struct* const slave = Fg_InitHandleSlaveAware("Quillon.tav", board, other, 1);
    std::uint32_t value = 0;
    EXPECT_EQ(Fg_getParameterWithType(slave, id(XLength), &value, 0, 2), 0);
    EXPECT_EQ(value, 512U);
    Fg_FreeGrabber(slave);
    TavUnloadTavFile(other);
}

TEST_F(Handle, OfASlaveConfiguresABoardThatHasNoDesign) {
    IXdevice* const fresh = softboard_open();
    Fg_Struct* const slave = Fg_InitHandleSlaveAware("Quillon.tav", fresh, design, 1);
    std::uint32_t value = 0;
    EXPECT_EQ(Fg_getParameterWithType(slave, id(XLength), &value, 0, 2), 0);
    EXPECT_EQ(value, 1024U);
    Fg_FreeGrabber(slave);
    softboard_close(fresh);
}

TEST_F(Handle, NotesItsInitialisationInTheBoardsTranscript) {
    Fg_Struct* const second = Fg_InitHandleSlaveAware("Quillon.tav", board, design, 3);
    const softboard_access access = lastAccess();
    EXPECT_STREQ(access.name, "Fg_InitHandleSlaveAware");
    EXPECT_STREQ(access.value, "Quillon.tav, 3");
    EXPECT_EQ(access.result, 1);
    Fg_FreeGrabber(second);
}

TEST_F(Handle, RemembersTheCodeOfTheLastFailure) {
    EXPECT_EQ(Fg_getLastErrorNumber(fg), 0);
    set(Temperature, 1.0, 5);
    EXPECT_EQ(Fg_getLastErrorNumber(fg), SOFTBOARD_E_READ_ONLY);
    set(XLength, std::uint32_t{4}, 2);
    EXPECT_EQ(Fg_getLastErrorNumber(fg), SOFTBOARD_E_READ_ONLY);
}

TEST_F(Handle, AnswersTheErrorNumberThatTheHostHasSet) {
    softboard_set_sdk_error(board, -7);
    set(Temperature, 1.0, 5);
    EXPECT_EQ(Fg_getLastErrorNumber(fg), -7);
    softboard_set_sdk_error(board, 0);
    EXPECT_EQ(Fg_getLastErrorNumber(fg), SOFTBOARD_E_READ_ONLY);
}

TEST_F(Handle, ThatIsNullAnswersTheProcessesErrorNumber) {
    softboard_set_sdk_error(nullptr, -70);
    EXPECT_EQ(Fg_getLastErrorNumber(nullptr), -70);
    softboard_set_sdk_error(nullptr, 0);
}

TEST_F(Handle, ThatAPlannedFaultDeniesLeavesItsCodeAsTheError) {
    softboard_plan_fault(board, "Fg_InitHandleSlaveAware", SOFTBOARD_CALL, 1, -77);
    EXPECT_EQ(Fg_InitHandleSlaveAware("Quillon.tav", board, design, 0), nullptr);
    EXPECT_EQ(Fg_getLastErrorNumber(nullptr), -77);
}

TEST_F(Handle, AnswersTheDesignsType) {
    EXPECT_EQ(Fg_getAppletId(fg, nullptr), 1874);
}

TEST_F(Handle, IsFreedEvenIfTheAnswerIsAPlannedFault) {
    Fg_Struct* const second = Fg_InitHandle("Quillon.tav", board, design);
    const uint64_t alive = softboard_live_handles();
    softboard_plan_fault(board, "Fg_FreeGrabber", SOFTBOARD_CALL, 1, -3);
    EXPECT_EQ(Fg_FreeGrabber(second), -3);
    EXPECT_EQ(softboard_live_handles(), alive - 1);
}

TEST_F(Handle, HasNoShading) {
    EXPECT_EQ(Fg_AllocShading(fg, 0, 0), nullptr);
    EXPECT_EQ(Fg_FreeShading(fg, nullptr), SOFTBOARD_E_NOT_IMPLEMENTED);
    EXPECT_EQ(Shad_GetMaxLine(nullptr), SOFTBOARD_E_NOT_IMPLEMENTED);
    EXPECT_EQ(Shad_GetAccess(nullptr), SOFTBOARD_E_NOT_IMPLEMENTED);
    EXPECT_EQ(Shad_FreeAccess(nullptr), SOFTBOARD_E_NOT_IMPLEMENTED);
    EXPECT_EQ(Shad_WriteActLine(nullptr, 0), SOFTBOARD_E_NOT_IMPLEMENTED);
    EXPECT_EQ(Shad_SetSubValueLine(nullptr, 0, 0, 0.0F), SOFTBOARD_E_NOT_IMPLEMENTED);
    EXPECT_EQ(Shad_SetMultValueLine(nullptr, 0, 0, 0.0F), SOFTBOARD_E_NOT_IMPLEMENTED);
    EXPECT_EQ(Shad_SetFixedPatternNoiseLine(nullptr, 0, 0, 0), SOFTBOARD_E_NOT_IMPLEMENTED);
}

}  // namespace
