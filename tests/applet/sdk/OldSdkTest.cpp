// An SDK that knows no slaves, and whose acquisition can only be stopped.

#include "tests/applet/sdk/VariantStart.h"

namespace quillon::client {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using OldSdk = VariantStart;

TEST_F(OldSdk, GetsTheDesignWithoutTheFlags) {
    ASSERT_NE(start(2), nullptr);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(board.calls().front(), "Fg_InitHandle(Quillon.tav, 0)");
    EXPECT_THAT(board.writes(), Contains("Device1_Process0_Buffer_0_SensorWidth = 1024"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(OldSdk, ASlavePushesNothingAllTheSame) {
    ASSERT_NE(start(1), nullptr);
    EXPECT_EQ(board.calls().front(), "Fg_InitHandle(Quillon.tav, 0)");
    EXPECT_THAT(board.writes(), IsEmpty());
}

TEST_F(OldSdk, ARefusalNamesTheFunctionThatWasCalled) {
    board.planFault("Fg_InitHandle", Direction::Call, 1, -77);
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(status, -77);
    EXPECT_THAT(log.lines(),
                ElementsAre("5 orlo.wrapper.Quillon error calling 'Fg_InitHandle' (tavName = 'Quillon.tav')"));
    EXPECT_EQ(boards.liveDesigns(), 0U);
}

TEST_F(OldSdk, AFunctionThatItLacksIsNotAvailableAndThatIsTheLastError) {
    ASSERT_NE(start(), nullptr);
    EXPECT_EQ(f.Fg_AcquireEx(&location, 0, 1, 0, nullptr), -12);
    EXPECT_EQ(lastError(), -12);
    EXPECT_EQ(f.Fg_getAppletId(&location, nullptr), -12);
    EXPECT_EQ(f.Fg_getStatusEx(&location, 0, 0, 0, nullptr), -12);
    EXPECT_EQ(f.Fg_getLastPicNumberEx(&location, 0, nullptr), -12);
    EXPECT_EQ(f.Fg_getLastPicNumberBlockingEx(&location, 1, 0, 0, nullptr), -12);
    std::int32_t width = 0;
    EXPECT_EQ(f.Fg_getParameterWithType(&location, FG_WIDTH, &width, 0, FgTypeInt32), 0);
    EXPECT_EQ(lastError(), 0);
    EXPECT_EQ(f.Fg_stopAcquireEx(&location, 0, nullptr, 0), -9008);  // this one it has
    EXPECT_EQ(lastError(), -9008);
}

TEST_F(OldSdk, WithoutItsDescriptionTheAppletGivesNoRecords) {
    ASSERT_NE(start(), nullptr);
    EXPECT_EQ(f.Fg_getParameterInfo(&location, 0), nullptr);
    std::size_t size = 0;
    EXPECT_EQ(f.Fg_getParameterInfoXML(&location, 0, nullptr, &size), 0);  // the document needs no SDK
}

}  // namespace
}  // namespace quillon::client
