#include "cli/Units.h"

#include <gmock/gmock.h>

#include "cli/ExitStatus.h"
#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* Micro = "\u00B5s";

TEST(Quantities, AreTurnedIntoTheUnitWanted) {
    EXPECT_EQ(parseQuantity("1.5ms", Micro), 1500);
    EXPECT_EQ(parseQuantity(" +8 ns", Micro), 0.008);
    EXPECT_EQ(parseQuantity("50us", Micro), 50);
    EXPECT_EQ(parseQuantity("50\u00B5s", Micro), 50);
    EXPECT_EQ(parseQuantity("50\u03BCs", Micro), 50);
    EXPECT_EQ(parseQuantity("20kHz", "Hz"), 20000);
    EXPECT_EQ(parseQuantity("4GHz", "MHz"), 4000);
    EXPECT_EQ(parseQuantity("40%", "%"), 40);
    EXPECT_EQ(parseQuantity("2 s", "seconds"), 2);
    EXPECT_EQ(parseQuantity("4096px", "pixel"), 4096);
    EXPECT_EQ(parseQuantity("0.04mm", "um"), 40);
    EXPECT_EQ(parseQuantity("0.5m/s", "um/s"), 500000);
    EXPECT_EQ(parseQuantity("30m/min", "mm/s"), 500);
    EXPECT_EQ(parseQuantity("500mm/s", "m/min"), 30);
    EXPECT_EQ(parseQuantity("10/mm", "/m"), 10000);
    EXPECT_EQ(parseQuantity("1.5GB/s", "MB/s"), 1500);
}

TEST(Quantities, WithoutAUnitAreInItAlready) {
    EXPECT_EQ(parseQuantity("0.112", Micro), 0.112);
    EXPECT_EQ(parseQuantity("-1e3", "Hz"), -1000);
    EXPECT_EQ(parseQuantity("7", "a unit of its own"), 7);
}

TEST(Quantities, APercentageIsAShareWhereThereIsNoUnit) {
    EXPECT_EQ(parseQuantity("40%", ""), 0.4);
}

TEST(Quantities, AFrequencyIsTakenForAPeriod) {
    EXPECT_EQ(parseQuantity("20kHz", Micro), 50);
    EXPECT_EQ(parseQuantity("200us", "Hz"), 5000);
}

TEST(Quantities, OfSomethingElseAreNone) {
    for (const char* text : {"", "wide", "50 apples", "50Hz", "0x10", "1,5", "1 2", "us"}) {
        EXPECT_THROW(parseQuantity(text, "pixel"), UsageError) << text;
    }
    EXPECT_THROW(parseQuantity("5 apples", "apples"), UsageError);
}

TEST(Times, SayTheirUnit) {
    EXPECT_EQ(parseTime("0s"), 0);
    EXPECT_EQ(parseTime("10ms"), 10000);
    EXPECT_EQ(parseTime("0.5 s"), 500000);
    for (const char* text : {"", "10", "-1ms", "infs", "nans", "20kHz", "1m"}) {
        EXPECT_THROW(parseTime(text), UsageError) << text;
    }
}

TEST(Measures, SayTheirUnitUnlessTheyAreZero) {
    EXPECT_EQ(parseMeasure("500mm/s", Speed), 500);
    EXPECT_EQ(parseMeasure("-0.5 m/s", Speed), -500);
    EXPECT_EQ(parseMeasure("0", Way), 0);
    EXPECT_EQ(parseMeasure("1e3um", Way), 1);
    for (const char* text : {"", "10", "infmm", "nanmm", "1e308m", "10mm/s", "mm", "20kHz"}) {
        EXPECT_THROW(parseMeasure(text, Way), UsageError) << text;
    }
}

TEST(SetVerb, NumbersMayHaveAUnit) {
    EXPECT_THAT(quillon({"set", "FG_LINEPERIODE=1ms"}).out, StartsWith("FG_LINEPERIODE = 1000 \u00B5s\n"));
    EXPECT_THAT(quillon({"set", "FG_LINEPERIODE=20kHz"}).out, StartsWith("FG_LINEPERIODE = 50 \u00B5s\n"));
    EXPECT_THAT(quillon({"set", "FG_LINEEXPOSURE", "1.5", "FG_LINEEXPOSURE=40us"}).out,
                HasSubstr("FG_LINEEXPOSURE = 40 \u00B5s\n"));
    EXPECT_THAT(quillon({"set", "FG_WIDTH=2048px"}).out, StartsWith("FG_WIDTH = 2048 pixel\n"));
    EXPECT_THAT(quillon({"set", "FG_TIMEOUT=5000ms"}).out, StartsWith("FG_TIMEOUT = 5 seconds\n"));
    EXPECT_THAT(quillon({"set", "FG_SCALINGFACTOR_RED=40%"}).out, StartsWith("FG_SCALINGFACTOR_RED = 0.4"));
}

TEST(SetVerb, AWrongUnitIsAUsageErrorThatTellsTheRightOnes) {
    const Outcome outcome = quillon({"set", "FG_LINEPERIODE=20px"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(
        outcome.err,
        HasSubstr("\"20px\" is no value for FG_LINEPERIODE: it takes a number, alone or with one of the units ns, "
                  "us, ms, s, Hz, kHz, MHz, GHz"));
    EXPECT_EQ(quillon({"set", "FG_TIMEOUT=1500ms"}).status, 2);
    EXPECT_EQ(quillon({"set", "FG_WIDTH=20kHz"}).status, 2);
}

}  // namespace
}  // namespace quillon::cli::testing
