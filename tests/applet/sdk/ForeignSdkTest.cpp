// An SDK that cannot take a design.

#include "tests/applet/sdk/VariantStart.h"

namespace quillon::client {
namespace {

using ::testing::ElementsAre;

using ForeignSdk = VariantStart;

TEST_F(ForeignSdk, EndsTheStartWithALogLineAndTheDesignUnloaded) {
    const std::uint64_t unloaded = boards.callCount("TavUnloadTavFile");
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(status, -2031);
    EXPECT_THAT(log.lines(), ElementsAre("6 orlo.wrapper.Quillon cannot resolve function 'Fg_InitHandle' and/or "
                                         "'Fg_InitHandleSlaveAware'"));
    EXPECT_EQ(boards.callCount("TavUnloadTavFile"), unloaded + 1);
    EXPECT_EQ(boards.liveDesigns(), 0U);
}

TEST_F(ForeignSdk, LogsNothingAboveLevelSix) {
    log.changeLevel(nullptr, 7);
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(status, -2031);
    EXPECT_THAT(log.lines(), ElementsAre());
}

}  // namespace
}  // namespace quillon::client
