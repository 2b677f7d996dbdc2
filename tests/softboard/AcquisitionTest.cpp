#include <cstdint>
#include <thread>

#include "quillon/Vocabulary.h"
#include "tests/softboard/OpenBoard.h"

namespace {

class AcquisitionCalls : public OpenBoard {
protected:
    /// No camera: pictures come from the host only, so that their number is known.
    void SetUp() override {
        OpenBoard::SetUp();
        softboard_set_integer(board, "FG_CAMSTATUS_EXTENDED", 0);
    }
};

TEST_F(AcquisitionCalls, CountTheDeliveredPictures) {
    EXPECT_EQ(Fg_AcquireEx(fg, 0, -1, 0, nullptr), 0);
    EXPECT_EQ(Fg_getLastPicNumberEx(fg, 0, nullptr), 0);
    softboard_deliver_pictures(board, 3);
    EXPECT_EQ(Fg_getLastPicNumberEx(fg, 0, nullptr), 3);
    EXPECT_EQ(Fg_stopAcquireEx(fg, 0, nullptr, 0), 0);
}

TEST_F(AcquisitionCalls, EndTheCountAtTheNumberAskedFor) {
    Fg_AcquireEx(fg, 0, 5, 0, nullptr);
    softboard_deliver_pictures(board, 100);
    EXPECT_EQ(Fg_getLastPicNumberEx(fg, 0, nullptr), 5);
}

TEST_F(AcquisitionCalls, AreRefusedInTheWrongState) {
    EXPECT_EQ(Fg_stopAcquireEx(fg, 0, nullptr, 0), SOFTBOARD_E_ACQUISITION);
    EXPECT_EQ(Fg_AcquireEx(fg, 0, 1, 0, nullptr), 0);
    EXPECT_EQ(Fg_AcquireEx(fg, 0, 1, 0, nullptr), SOFTBOARD_E_ACQUISITION);
    EXPECT_EQ(Fg_getLastErrorNumber(fg), SOFTBOARD_E_ACQUISITION);
}

TEST_F(AcquisitionCalls, KnowDmaZeroOnly) {
    EXPECT_EQ(Fg_AcquireEx(fg, 1, 1, 0, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_stopAcquireEx(fg, 1, nullptr, 0), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getLastPicNumberEx(fg, 1, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 1, 0, nullptr), SOFTBOARD_E_ARGUMENT);
    EXPECT_EQ(Fg_getStatusEx(fg, 0, 0, 1, nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(AcquisitionCalls, TellTheStatus) {
    EXPECT_EQ(Fg_getStatusEx(fg, 0, 0, 0, nullptr), 0);
    Fg_AcquireEx(fg, 0, 9, 0, nullptr);
    softboard_deliver_pictures(board, 2);
    EXPECT_EQ(Fg_getStatusEx(fg, 0, 0, 0, nullptr), 1);
    EXPECT_EQ(Fg_getStatusEx(fg, 1, 0, 0, nullptr), 2);
    EXPECT_EQ(Fg_getStatusEx(fg, 2, 0, 0, nullptr), 9);
    EXPECT_EQ(Fg_getStatusEx(fg, 3, 0, 0, nullptr), SOFTBOARD_E_ARGUMENT);
}

TEST_F(AcquisitionCalls, ShowInTheDmaStatus) {
    std::uint32_t status = 9;
    Fg_getParameterWithType(fg, FG_DMASTATUS, &status, 0, 2);
    EXPECT_EQ(status, 0U);
    Fg_AcquireEx(fg, 0, 1, 0, nullptr);
    Fg_getParameterWithType(fg, FG_DMASTATUS, &status, 0, 2);
    EXPECT_EQ(status, 1U);
    Fg_stopAcquireEx(fg, 0, nullptr, 0);
    Fg_getParameterWithType(fg, FG_DMASTATUS, &status, 0, 2);
    EXPECT_EQ(status, 0U);
}

TEST_F(AcquisitionCalls, KeepTheLastNumberAfterTheStop) {
    Fg_AcquireEx(fg, 0, -1, 0, nullptr);
    softboard_deliver_pictures(board, 4);
    Fg_stopAcquireEx(fg, 0, nullptr, 0);
    softboard_deliver_pictures(board, 4);
    EXPECT_EQ(Fg_getLastPicNumberEx(fg, 0, nullptr), 4);
    Fg_AcquireEx(fg, 0, -1, 0, nullptr);
    EXPECT_EQ(Fg_getLastPicNumberEx(fg, 0, nullptr), 0);
}

TEST_F(AcquisitionCalls, GiveUpWaitingWhenTheTimeIsOver) {
    Fg_AcquireEx(fg, 0, -1, 0, nullptr);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 0, 0, nullptr), SOFTBOARD_E_TIMEOUT);
}

TEST_F(AcquisitionCalls, DoNotWaitWithoutAnAcquisition) {
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 1, 0, 60, nullptr), SOFTBOARD_E_ACQUISITION);
}

TEST_F(AcquisitionCalls, WaitUntilThePictureIsThere) {
    Fg_AcquireEx(fg, 0, -1, 0, nullptr);
    std::thread camera([this] { softboard_deliver_pictures(board, 2); });
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 2, 0, 60, nullptr), 2);
    camera.join();
}

TEST_F(AcquisitionCalls, WakeTheWaitingThreadWhenTheAcquisitionStops) {
    Fg_AcquireEx(fg, 0, -1, 0, nullptr);
    std::thread stopper([this] { Fg_stopAcquireEx(fg, 0, nullptr, 0); });
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 2, 0, 60, nullptr), SOFTBOARD_E_ACQUISITION);
    stopper.join();
}

TEST_F(AcquisitionCalls, GetPicturesFromACameraAtTheLinePeriod) {
    softboard_set_double(board, ExsyncPeriod, 1.0);
    softboard_set_integer(board, "Device1_Process0_Trigger_Trigger_ExsyncEnable", 1);
    softboard_set_integer(board, "Device1_Process0_ImageHeight_ImageHeight", 100);
    softboard_set_integer(board, "FG_CAMSTATUS_EXTENDED", 1);
    Fg_AcquireEx(fg, 0, 3, 0, nullptr);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 3, 0, 60, nullptr), 3);
}

TEST_F(AcquisitionCalls, GetPicturesFromTheSimulator) {
    softboard_set_integer(board, "Device1_Process0_CameraSimulator_Enable_SelectSource", 1);
    softboard_set_integer(board, "Device1_Process0_CameraSimulator_PixelFrequency_SequenceLength_ImageWidth", 125);
    softboard_set_integer(board, "Device1_Process0_CameraSimulator_Size_ImageHeight", 10);
    Fg_AcquireEx(fg, 0, 2, 0, nullptr);
    EXPECT_EQ(Fg_getLastPicNumberBlockingEx(fg, 2, 0, 60, nullptr), 2);
}

}  // namespace
