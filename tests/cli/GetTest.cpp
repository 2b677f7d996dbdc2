#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(GetVerb, AParameterIsReadByName) {
    const Outcome outcome = quillon({"get", "FG_WIDTH"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "FG_WIDTH = 1024 pixel\n");
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST(GetVerb, AParameterIsReadByIdInDecimalAndHexadecimal) {
    EXPECT_EQ(quillon({"get", "100", "0xC8"}).out, "FG_WIDTH = 1024 pixel\nFG_HEIGHT = 1024 pixel\n");
}

TEST(GetVerb, TheCaseOfANamePlaysNoPart) {
    EXPECT_EQ(quillon({"get", "fg_width"}).out, "FG_WIDTH = 1024 pixel\n");
}

TEST(GetVerb, AnEnumeratorIsShownByName) {
    EXPECT_EQ(quillon({"get", "FG_VANTAGEPOINT"}).out, "FG_VANTAGEPOINT = FG_VANTAGEPOINT_TOP_LEFT (0)\n");
}

TEST(GetVerb, ATimeHasItsUnitInUtf8) {
    EXPECT_EQ(quillon({"get", "FG_LINETRIGGERDEBOUNCING"}).out, "FG_LINETRIGGERDEBOUNCING = 0.112 \xC2\xB5s\n");
}

TEST(GetVerb, ATextIsInQuotes) {
    EXPECT_EQ(quillon({"get", "FG_TAV_FILE"}).out, "FG_TAV_FILE = \"Quillon.tav\"\n");
}

TEST(GetVerb, TheDmaStatusLeavesNoValue) {
    EXPECT_EQ(quillon({"get", "FG_DMASTATUS"}).out, "FG_DMASTATUS = no value arrives\n");
}

TEST(GetVerb, EntriesOfALookupTableAreRead) {
    EXPECT_THAT(quillon({"get", "FG_LUT_VALUE_RED[0..2]"}).out, StartsWith("FG_LUT_VALUE_RED = 0, "));
    EXPECT_EQ(quillon({"get", "FG_LUT_VALUE_RED[0]"}).out, "FG_LUT_VALUE_RED = 0\n");
}

TEST(GetVerb, EntriesBehindTheTableAreRefused) {
    const Outcome outcome = quillon({"get", "FG_LUT_VALUE_RED[16384]"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("get of FG_LUT_VALUE_RED was refused: -2070 (InvalidParameter)"));
}

TEST(GetVerb, AMisspeltNameIsUsageWithTheNearestOne) {
    const Outcome outcome = quillon({"get", "FG_WIDHT"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(outcome.err, "quillon: there is no parameter \"FG_WIDHT\", did you mean FG_WIDTH?\n");
}

TEST(GetVerb, AnUnknownIdIsRefusedByTheApplet) {
    const Outcome outcome = quillon({"get", "999999"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("get of parameter 999999 was refused: -2070 (InvalidParameter)"));
}

TEST(GetVerb, ANegativeIdIsAValueAndNoOption) {
    const Outcome outcome = quillon({"get", "-1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("get of parameter -1 was refused: -2070 (InvalidParameter)"));
}

TEST(GetVerb, OneRefusalDoesNotHideTheOtherAnswers) {
    const Outcome outcome = quillon({"get", "999999", "FG_WIDTH"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "FG_WIDTH = 1024 pixel\n");
}

TEST(GetVerb, TheTraceShowsTheDesignAccessesOfALiveValue) {
    const Outcome outcome = quillon({"get", "FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH", "--trace"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("1  read  Device1_Process0_BoardStatus_PcieCurrentLinkWidth"));
}

TEST(GetVerb, JsonCarriesNameIdValueAndEnumerator) {
    const auto json = quillon({"get", "FG_WIDTH", "FG_VANTAGEPOINT", "--json"}).json();
    EXPECT_EQ(json[0], nlohmann::json({{"name", "FG_WIDTH"}, {"id", 100}, {"value", 1024}, {"unit", "pixel"}}));
    EXPECT_EQ(json[1]["enumerator"], "FG_VANTAGEPOINT_TOP_LEFT");
}

}  // namespace
}  // namespace quillon::cli::testing
