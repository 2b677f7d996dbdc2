#include "support/FgError.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(FgError, StartsAtSuccess) {
    EXPECT_EQ(Fg_Error().getErrorNumberBuffer(), 0);
}

TEST(FgError, KeepsTheNumberAndReturnsIt) {
    Fg_Error error;
    EXPECT_EQ(error.setErr(-6000), -6000);
    EXPECT_EQ(error.getErrorNumberBuffer(), -6000);
    EXPECT_EQ(error.setErr(0), 0);
    EXPECT_EQ(error.getErrorNumberBuffer(), 0);
}

TEST(FgError, TheSecondLevelIsNotImplementedAndKeepsTheStoredNumber) {
    Fg_Error error;
    error.setErr(-2070);
    EXPECT_EQ(error.setErrLevel2(-1, "text"), -2130);
    EXPECT_EQ(error.setErrLevel2(0, nullptr), -2130);
    EXPECT_EQ(error.getErrorNumberBuffer(), -2070);
}

}  // namespace
}  // namespace quillon
