#include <limits>

#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct WhiteBalance : ::testing::Test, ImagePath {};

TEST_F(WhiteBalance, EachColourHasACoefficientOfItsOwn) {
    EXPECT_EQ(set(FG_SCALINGFACTOR_RED, 1.5), 0);
    EXPECT_EQ(set(FG_SCALINGFACTOR_BLUE, 0.25), 0);
    EXPECT_EQ(set(FG_SCALINGFACTOR_GREEN, 2.0), 0);
    EXPECT_THAT(accesses(),
                ElementsAre("WhiteBalance_White_RedCoefficient = 1.5", "WhiteBalance_White_BlueCoefficient = 0.25",
                            "WhiteBalance_White_GreenCoefficient = 2"));
    for (const auto& access : board.transcript()) {
        EXPECT_EQ(access.type, 5);
    }
    EXPECT_EQ(get<double>(FG_SCALINGFACTOR_RED), 1.5);
    EXPECT_EQ(get<double>(FG_SCALINGFACTOR_BLUE), 0.25);
    EXPECT_EQ(get<double>(FG_SCALINGFACTOR_GREEN), 2.0);
}

TEST_F(WhiteBalance, ACoefficientIsFrom0ToAlmost4) {
    for (const int id : {FG_SCALINGFACTOR_RED, FG_SCALINGFACTOR_BLUE, FG_SCALINGFACTOR_GREEN}) {
        EXPECT_EQ(set(id, 0.0), 0);
        EXPECT_EQ(set(id, 3.9990234375), 0);
        forget();
        for (const double value : {-0.001, 3.99902343750001, 4.0, std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::quiet_NaN()}) {
            EXPECT_EQ(set(id, value), -6000) << value;
        }
        EXPECT_THAT(accesses(), IsEmpty());
        EXPECT_EQ(get<double>(id), 3.9990234375);
    }
}

TEST_F(WhiteBalance, TheLookupTablesAreComputedWithoutIt) {
    set(FG_SCALINGFACTOR_BLUE, 2.0);
    set(FG_PROCESSING_GAIN, 1.0);
    std::uint32_t value = 0;
    EXPECT_EQ(applet.getElement(FG_LUT_VALUE_BLUE, 8191, value), 0);
    EXPECT_EQ(value, 32765U);
}

TEST(WhiteBalanceFailure, RestoresTheCoefficient) {
    expectEachFailureRestores(asStarted, FG_SCALINGFACTOR_RED, 1.5, {"WhiteBalance_White_RedCoefficient = 1.5"});
    expectEachFailureRestores(asStarted, FG_SCALINGFACTOR_BLUE, 1.5, {"WhiteBalance_White_BlueCoefficient = 1.5"});
    expectEachFailureRestores(asStarted, FG_SCALINGFACTOR_GREEN, 1.5, {"WhiteBalance_White_GreenCoefficient = 1.5"});
}

}  // namespace
}  // namespace quillon::image_test
