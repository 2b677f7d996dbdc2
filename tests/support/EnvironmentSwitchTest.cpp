#include "support/EnvironmentSwitch.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quillon {
namespace {

constexpr const char* Name = "QUILLON_TEST_SWITCH";

class EnvironmentSwitch : public testing::Test {
protected:
    void TearDown() override { unsetenv(Name); }

    static bool with(const char* value) {
        setenv(Name, value, 1);
        return environmentSwitch(Name);
    }
};

TEST_F(EnvironmentSwitch, IsOffWhenTheVariableIsNotSet) {
    unsetenv(Name);
    EXPECT_FALSE(environmentSwitch(Name));
}

TEST_F(EnvironmentSwitch, IsOnForFourWordsInAnyCase) {
    EXPECT_TRUE(with("yes"));
    EXPECT_TRUE(with("true"));
    EXPECT_TRUE(with("on"));
    EXPECT_TRUE(with("1"));
    EXPECT_TRUE(with("ON"));
    EXPECT_TRUE(with("True"));
    EXPECT_TRUE(with("yEs"));
}

TEST_F(EnvironmentSwitch, IsOffForEveryOtherValue) {
    EXPECT_FALSE(with(""));
    EXPECT_FALSE(with("enabled"));
    EXPECT_FALSE(with("2"));
    EXPECT_FALSE(with("01"));
    EXPECT_FALSE(with(" on"));
    EXPECT_FALSE(with("on "));
    EXPECT_FALSE(with("0"));
    EXPECT_FALSE(with("off"));
}

}  // namespace
}  // namespace quillon
