#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ImageSelector : ::testing::Test, ImagePath {};

TEST_F(ImageSelector, APeriodAndAnImageOfItAreOneWriteEach) {
    EXPECT_EQ(set(FG_IMG_SELECT_PERIOD, 4), 0);
    EXPECT_EQ(set(FG_IMG_SELECT, 3), 0);
    EXPECT_THAT(accesses(), ElementsAre("ImageSelector_FG_IMG_SELECT_PERIOD_Divisor = 4",
                                        "ImageSelector_FG_IMG_SELECT_PHASE_Number = 3"));
    EXPECT_EQ(get<std::uint32_t>(FG_IMG_SELECT_PERIOD), 4U);
    EXPECT_EQ(get<std::uint32_t>(FG_IMG_SELECT), 3U);
}

TEST_F(ImageSelector, TheImageStaysBelowThePeriod) {
    EXPECT_EQ(set(FG_IMG_SELECT, 0), 0);
    EXPECT_EQ(set(FG_IMG_SELECT, 1), -6000);
    ASSERT_EQ(set(FG_IMG_SELECT_PERIOD, 4), 0);
    ASSERT_EQ(set(FG_IMG_SELECT, 3), 0);
    forget();
    EXPECT_EQ(set(FG_IMG_SELECT_PERIOD, 3), -6000);
    EXPECT_EQ(set(FG_IMG_SELECT, 4), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_IMG_SELECT_PERIOD), 4U);
    EXPECT_EQ(get<std::uint32_t>(FG_IMG_SELECT), 3U);
}

TEST_F(ImageSelector, APeriodIsFrom1To256) {
    EXPECT_EQ(set(FG_IMG_SELECT_PERIOD, 256), 0);
    EXPECT_EQ(set(FG_IMG_SELECT, 255), 0);
    EXPECT_EQ(set(FG_IMG_SELECT, 256), -6000);
    EXPECT_EQ(set(FG_IMG_SELECT_PERIOD, 257), -6000);
    EXPECT_EQ(set(FG_IMG_SELECT_PERIOD, 0), -6000);
    EXPECT_EQ(applet.setInt(FG_IMG_SELECT_PERIOD, -1), -6000);
    EXPECT_EQ(set(FG_IMG_SELECT, 4294967295U), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_IMG_SELECT_PERIOD), 256U);
    EXPECT_EQ(get<std::uint32_t>(FG_IMG_SELECT), 255U);
}

TEST(ImageSelectorFailure, RestoresTheValue) {
    expectEachFailureRestores(asStarted, FG_IMG_SELECT_PERIOD, 4, {"ImageSelector_FG_IMG_SELECT_PERIOD_Divisor = 4"});
    expectEachFailureRestores([](ImagePath& path) { path.set(FG_IMG_SELECT_PERIOD, 4); }, FG_IMG_SELECT, 2,
                              {"ImageSelector_FG_IMG_SELECT_PHASE_Number = 2"});
}

}  // namespace
}  // namespace quillon::image_test
