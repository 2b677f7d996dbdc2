// An SDK that tells no error numbers and frees no handles.

#include "tests/applet/sdk/VariantStart.h"
#include "tests/support/Surroundings.h"

namespace quillon::client {
namespace {

using ::testing::ElementsAre;

using NumberlessSdk = VariantStart;

TEST_F(NumberlessSdk, ItsRefusalIsADesignThatCouldNotBeLoaded) {
    board.planFault("Fg_InitHandleSlaveAware", Direction::Call, 1, -77);
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(status, -100);
    EXPECT_THAT(log.lines(), ElementsAre("5 orlo.wrapper.Quillon error calling 'Fg_InitHandleSlaveAware' (tavName = "
                                         "'Quillon.tav')"));
}

TEST_F(NumberlessSdk, AFailedCallRecordsNotAvailable) {
    const test::ToldLeak leak;  // this SDK frees no handle
    ASSERT_NE(start(), nullptr);
    board.planFault("Fg_AcquireEx", Direction::Call, 1, -5);
    EXPECT_EQ(f.Fg_AcquireEx(&location, 0, 1, 0, nullptr), -5);
    EXPECT_EQ(lastError(), -12);
}

TEST_F(NumberlessSdk, TheEndOfTheWrapperSucceedsWithoutTheSdk) {
    const test::ToldLeak leak;
    ASSERT_NE(start(), nullptr);
    EXPECT_EQ(f.Fg_FreeGrabber(&location), 0);
    EXPECT_EQ(location, nullptr);
    EXPECT_EQ(boards.liveDesigns(), 0U);
}

}  // namespace
}  // namespace quillon::client
