#include "client/PublicParameters.h"

#include <gtest/gtest.h>

namespace quillon::client {
namespace {

TEST(PublicParameters, ThereAreAHundredAndSixtyFourAndTheDescriptionIsTheLast) {
    ASSERT_EQ(publicParameters().size(), 164U);
    EXPECT_EQ(publicParameters().front().name, "FG_TIMEOUT");
    EXPECT_EQ(publicParameters().back().name, "FG_PARAM_DESCR");
}

TEST(PublicParameters, AParameterIsFoundByNameAndById) {
    const PublicParameter* width = findPublicParameter("FG_WIDTH");
    ASSERT_NE(width, nullptr);
    EXPECT_EQ(width->id, 100);
    EXPECT_EQ(width->kind, ParameterKind::Int);
    EXPECT_EQ(width->access, ParameterAccess::ReadWrite);
    EXPECT_EQ(findPublicParameter(100), width);
}

TEST(PublicParameters, AnUnknownNameOrIdIsNull) {
    EXPECT_EQ(findPublicParameter("FG_WIDHT"), nullptr);
    EXPECT_EQ(findPublicParameter(101), nullptr);
}

}  // namespace
}  // namespace quillon::client
