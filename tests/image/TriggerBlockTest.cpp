// The trigger unit's vertical window, as the geometry sends it in each image trigger mode.

#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;

struct TriggerBlock : ::testing::Test, ImagePath {
    /// What a write sends behind the eight buffer parameters.
    std::vector<std::string> writesBehindTheBuffer() const {
        const auto all = writes();
        return {all.begin() + 8, all.end()};
    }
};

TEST_F(TriggerBlock, InTheSingleImageModesTheLengthIsTheHeight) {
    set(FG_YOFFSET, 30);
    for (const int mode : {0, 2, 5}) {
        SCOPED_TRACE(mode);
        ASSERT_EQ(set(FG_IMGTRIGGERMODE, mode), 0);
        forget();
        EXPECT_EQ(set(FG_HEIGHT, 300), 0);
        EXPECT_THAT(writesBehindTheBuffer(),
                    ElementsAre("Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 300",
                                "Trigger_Trigger_YOffset = 30", "ImageHeight_ImageHeight = 300"));
    }
}

TEST_F(TriggerBlock, InTheGatedMultiBufferModeTheLengthIsTheLargest) {
    ASSERT_EQ(set(FG_IMGTRIGGERMODE, 6), 0);
    forget();
    EXPECT_EQ(set(FG_HEIGHT, 300), 0);
    EXPECT_THAT(writesBehindTheBuffer(), ElementsAre("Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 1398101",
                                                     "Trigger_Trigger_YOffset = 0", "ImageHeight_ImageHeight = 300"));
}

TEST_F(TriggerBlock, InTheTriggeredMultiBufferModeTheLengthIsTheAsyncHeight) {
    ASSERT_EQ(set(FG_IMGTRIGGERMODE, 8), 0);
    ASSERT_EQ(set(FG_IMGTRIGGER_ASYNC_HEIGHT, 5000), 0);
    forget();
    EXPECT_EQ(set(FG_YOFFSET, 12), 0);
    EXPECT_THAT(writesBehindTheBuffer(), ElementsAre("Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 5000",
                                                     "Trigger_Trigger_YOffset = 12", "ImageHeight_ImageHeight = 1024"));
}

}  // namespace
}  // namespace quillon::image_test
