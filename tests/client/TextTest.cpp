#include "quillon/client/Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon::client {
namespace {

TEST(Text, PlainCharactersStayAsTheyAre) {
    EXPECT_EQ(utf8("pixel"), "pixel");
}

TEST(Text, TheMicroSignOfTheTimesBecomesTwoBytes) {
    EXPECT_EQ(utf8("\xB5s"), "\xC2\xB5s");
}

TEST(Text, TheHighestCharacterOfLatin1BecomesTwoBytes) {
    EXPECT_EQ(utf8("\xFF"), "\xC3\xBF");
}

TEST(Text, NumbersHaveTwelveDigitsAndNoExponentInOrdinarySizes) {
    EXPECT_EQ(readable(0), "0");
    EXPECT_EQ(readable(100000), "100000");
    EXPECT_EQ(readable(3999.9999999999995), "4000");
    EXPECT_EQ(readable(-0.0009765625), "-0.0009765625");
    EXPECT_EQ(readable(10240.026214467109), "10240.0262145");
    EXPECT_EQ(readable(34359738.36), "34359738.36");
    EXPECT_EQ(readable(0.00001), "0.00001");
    EXPECT_EQ(readable(123456789012345), "123456789012345");
    EXPECT_EQ(readable(999999999999.9), "1000000000000");
}

TEST(Text, OtherNumbersHaveOne) {
    EXPECT_EQ(readable(1e300), "1e+300");
    EXPECT_EQ(readable(1e-12), "1e-12");
    EXPECT_EQ(readable(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(readable(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(ReadableBounds, LieInsideTheRange) {
    EXPECT_EQ(readableMost(3787878.7878787876), "3787878.78787");
    EXPECT_EQ(readableLeast(3787878.7878787876), "3787878.78788");
    EXPECT_EQ(readableLeast(0.33333333333333), "0.333333333334");
    EXPECT_EQ(readableMost(-0.33333333333333), "-0.333333333334");
    EXPECT_EQ(readableMost(0), "0");
    EXPECT_EQ(readableMost(34359738.36), "34359738.36");
}

TEST(Text, UnitsAreWhatPeopleWrite) {
    EXPECT_EQ(readableUnit("\xB5s"), "\xC2\xB5s");
    EXPECT_EQ(readableUnit("Celsius"), "\xC2\xB0\x43");
    EXPECT_EQ(readableUnit(""), "");
}

}  // namespace
}  // namespace quillon::client
