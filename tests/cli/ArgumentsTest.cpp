#include "cli/Arguments.h"

#include <gmock/gmock.h>

namespace quillon::cli {
namespace {

using ::testing::ElementsAre;

TEST(Arguments, ANegativeNumberIsKeptApartFromOptions) {
    EXPECT_THAT(protectNegativeNumbers({"set", "-1", "--json", "-0.5", "-o", "-0x10"}),
                ElementsAre("set", " -1", "--json", " -0.5", "-o", " -0x10"));
}

TEST(Arguments, SoIsOneWithItsUnit) {
    EXPECT_THAT(protectNegativeNumbers({"belt", "-200mm/s:10ms,5mm/s", "-.5m/s", "-n", "--belt", "-"}),
                ElementsAre("belt", " -200mm/s:10ms,5mm/s", " -.5m/s", "-n", "--belt", "-"));
}

TEST(Arguments, CapitalsAreThoseOfAscii) {
    EXPECT_EQ(inCapitals("part_3.png \u00E4"), "PART_3.PNG \u00E4");
}

TEST(Arguments, BlanksAtTheEndsAreTakenAway) {
    EXPECT_EQ(trimmed("  -1 "), "-1");
    EXPECT_EQ(trimmed("   "), "");
}

TEST(Arguments, WholeNumbersAreDecimalOrHexadecimal) {
    EXPECT_EQ(parseWholeNumber("2048")->magnitude, 2048U);
    EXPECT_EQ(parseWholeNumber("0x10")->magnitude, 16U);
    EXPECT_EQ(parseWholeNumber("-1")->magnitude, 1U);
    EXPECT_TRUE(parseWholeNumber("-1")->negative);
    EXPECT_EQ(parseWholeNumber("0xFFFFFFFFFFFFFFFF")->magnitude, 0xFFFFFFFFFFFFFFFFU);
}

TEST(Arguments, OtherTextsAreNoWholeNumbers) {
    EXPECT_FALSE(parseWholeNumber(""));
    EXPECT_FALSE(parseWholeNumber("-"));
    EXPECT_FALSE(parseWholeNumber("0x"));
    EXPECT_FALSE(parseWholeNumber("12px"));
    EXPECT_FALSE(parseWholeNumber("--1"));
    EXPECT_FALSE(parseWholeNumber("18446744073709551616"));
    EXPECT_FALSE(parseWholeNumber("-9223372036854775809"));
}

TEST(Arguments, RealNumbersHaveAPointInEveryLocale) {
    EXPECT_EQ(parseReal("0.512"), 0.512);
    EXPECT_EQ(parseReal("-1"), -1.0);
    EXPECT_FALSE(parseReal("0,5"));
    EXPECT_FALSE(parseReal("fast"));
}

TEST(Arguments, AnAssignmentIsSplitAtItsFirstSign) {
    EXPECT_EQ(splitAssignment("FG_LUT_SAVE_FILE=a=b.lut"),
              std::pair(std::string("FG_LUT_SAVE_FILE"), std::string("a=b.lut")));
    EXPECT_FALSE(splitAssignment("FG_WIDTH"));
    EXPECT_FALSE(splitAssignment("=5"));
}

}  // namespace
}  // namespace quillon::cli
