#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct LineOrder : ::testing::Test, ImagePath {
    /// Sends a line order and answers what the design was told: red, red header, green, green header, blue, blue
    /// header.
    std::vector<std::string> sent(int order) {
        forget();
        EXPECT_EQ(set(FG_LINEORDER, order), 0);
        EXPECT_EQ(get<std::uint32_t>(FG_LINEORDER), static_cast<std::uint32_t>(order));
        std::vector<std::string> lines = writes();
        for (std::string& line : lines) {
            const std::string prefix = "Camera_SortImage_ColorInterpret_";
            EXPECT_TRUE(line.starts_with(prefix)) << line;
            line.erase(0, prefix.size());
        }
        return lines;
    }
};

TEST_F(LineOrder, RgbIsZeroOneTwo) {
    EXPECT_THAT(sent(0), ElementsAre("SelectComponents_RedComponent = 0", "SelectComponentsHeader_RedComponent = 0",
                                     "SelectComponents_GreenComponent = 1", "SelectComponentsHeader_GreenComponent = 1",
                                     "SelectComponents_BlueComponent = 2", "SelectComponentsHeader_BlueComponent = 2"));
}

TEST_F(LineOrder, BgrIsTwoOneZero) {
    EXPECT_THAT(sent(1), ElementsAre("SelectComponents_RedComponent = 2", "SelectComponentsHeader_RedComponent = 2",
                                     "SelectComponents_GreenComponent = 1", "SelectComponentsHeader_GreenComponent = 1",
                                     "SelectComponents_BlueComponent = 0", "SelectComponentsHeader_BlueComponent = 0"));
}

TEST_F(LineOrder, RbgIsZeroTwoOne) {
    EXPECT_THAT(sent(2), ElementsAre("SelectComponents_RedComponent = 0", "SelectComponentsHeader_RedComponent = 0",
                                     "SelectComponents_GreenComponent = 2", "SelectComponentsHeader_GreenComponent = 2",
                                     "SelectComponents_BlueComponent = 1", "SelectComponentsHeader_BlueComponent = 1"));
}

TEST_F(LineOrder, BrgIsTwoZeroOne) {
    EXPECT_THAT(sent(3), ElementsAre("SelectComponents_RedComponent = 2", "SelectComponentsHeader_RedComponent = 2",
                                     "SelectComponents_GreenComponent = 0", "SelectComponentsHeader_GreenComponent = 0",
                                     "SelectComponents_BlueComponent = 1", "SelectComponentsHeader_BlueComponent = 1"));
}

TEST_F(LineOrder, GbrIsOneTwoZero) {
    EXPECT_THAT(sent(4), ElementsAre("SelectComponents_RedComponent = 1", "SelectComponentsHeader_RedComponent = 1",
                                     "SelectComponents_GreenComponent = 2", "SelectComponentsHeader_GreenComponent = 2",
                                     "SelectComponents_BlueComponent = 0", "SelectComponentsHeader_BlueComponent = 0"));
}

TEST_F(LineOrder, GrbIsOneZeroTwo) {
    EXPECT_THAT(sent(5), ElementsAre("SelectComponents_RedComponent = 1", "SelectComponentsHeader_RedComponent = 1",
                                     "SelectComponents_GreenComponent = 0", "SelectComponentsHeader_GreenComponent = 0",
                                     "SelectComponents_BlueComponent = 2", "SelectComponentsHeader_BlueComponent = 2"));
}

TEST_F(LineOrder, ASixthOrderDoesNotExist) {
    EXPECT_EQ(set(FG_LINEORDER, 6), -6000);
    EXPECT_EQ(set(FG_LINEORDER, 4294967295U), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_LINEORDER), 0U);
}

TEST(LineOrderFailure, RestoresTheOrder) {
    expectEachFailureRestores(asStarted, FG_LINEORDER, 3,
                              {"Camera_SortImage_ColorInterpret_SelectComponents_RedComponent = 2",
                               "Camera_SortImage_ColorInterpret_SelectComponentsHeader_RedComponent = 2",
                               "Camera_SortImage_ColorInterpret_SelectComponents_GreenComponent = 0",
                               "Camera_SortImage_ColorInterpret_SelectComponentsHeader_GreenComponent = 0",
                               "Camera_SortImage_ColorInterpret_SelectComponents_BlueComponent = 1",
                               "Camera_SortImage_ColorInterpret_SelectComponentsHeader_BlueComponent = 1"});
}

}  // namespace
}  // namespace quillon::image_test
