#include <gmock/gmock.h>

#include "quillon/quillon.h"
#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST(SetVerb, AnAcceptedValueIsShown) {
    const Outcome outcome = quillon({"set", "FG_WIDTH=2048"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("FG_WIDTH = 2048 pixel\n"));
    EXPECT_THAT(outcome.err, StartsWith("The board ends with this command"));
}

TEST(SetVerb, ANumberMayBeHexadecimalAndAnIdMayStandForTheName) {
    EXPECT_THAT(quillon({"set", "100=0x800"}).out, StartsWith("FG_WIDTH = 2048 pixel\n"));
}

TEST(SetVerb, NameAndValueMayBeTwoWords) {
    EXPECT_THAT(quillon({"set", "FG_WIDTH", "2048"}).out, StartsWith("FG_WIDTH = 2048 pixel\n"));
}

TEST(SetVerb, ANegativeNumberIsAValueAndNoOption) {
    EXPECT_EQ(quillon({"set", "FG_PROCESSING_OFFSET", "-0.5"}).out, "FG_PROCESSING_OFFSET = -0.5\n");
    EXPECT_EQ(quillon({"set", "FG_PROCESSING_OFFSET=-0.5"}).out, "FG_PROCESSING_OFFSET = -0.5\n");
}

TEST(SetVerb, TheTraceShowsTheEightBufferWritesInOrder) {
    const Outcome outcome = quillon({"set", "FG_WIDTH=2048", "--trace", "--json"});
    const auto json = outcome.json();
    std::vector<std::string> writes;
    for (const auto& access : json[0]["accesses"]) {
        if (access["direction"] == "write") {
            writes.push_back(access["name"].get<std::string>() + " = " + access["value"].dump());
        }
    }
    EXPECT_THAT(writes, ::testing::ElementsAre(
                            "Device1_Process0_Buffer_0_SensorWidth = 2048", "Device1_Process0_Buffer_0_XMirror = 0",
                            "Device1_Process0_Buffer_0_YMirror = 0", "Device1_Process0_Buffer_0_SensorHeight = 1",
                            "Device1_Process0_Buffer_0_PixelFormat = 8", "Device1_Process0_Buffer_0_XLength = 2048",
                            "Device1_Process0_Buffer_0_XOffset = 0", "Device1_Process0_Buffer_0_YLength = 1024"));
}

TEST(SetVerb, TheTraceIsATableForPeople) {
    const Outcome outcome = quillon({"set", "FG_WIDTH=2048", "--trace"});
    EXPECT_THAT(outcome.out, HasSubstr("\n  1   write  Device1_Process0_Buffer_0_SensorWidth"));
    EXPECT_THAT(outcome.out, HasSubstr("ok\n"));
}

TEST(SetVerb, AValueOutOfRangeTellsTheCodeAndWhatWouldBeAccepted) {
    const Outcome outcome = quillon({"set", "FG_WIDTH=20000"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(outcome.err,
              "quillon: FG_WIDTH=20000 was refused: -6000 (ValueOutOfRange), the value is out of range\n"
              "  accepted: 4 to 16384 pixel in steps of 4\n"
              "  because:  at most 16384 less FG_XOFFSET, a multiple of 4\n");
}

TEST(SetVerb, TheAcceptedRangeIsTheOneOfTheMoment) {
    const Outcome outcome = quillon({"set", "FG_XOFFSET=4", "FG_WIDTH=16384"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("accepted: 4 to 16380 pixel in steps of 4"));
}

TEST(SetVerb, AValueThatIsNotAlignedTellsTheStep) {
    const Outcome outcome = quillon({"set", "FG_WIDTH=6"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("-7080 (ValueNotAligned), the value is not a multiple of the parameter's step"));
    EXPECT_THAT(outcome.err, HasSubstr("in steps of 4"));
}

TEST(SetVerb, AReadOnlyParameterIsRefusedInWords) {
    const Outcome outcome = quillon({"set", "FG_PIXELDEPTH=8"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(
        outcome.err,
        HasSubstr("FG_PIXELDEPTH=8 was refused: -12 (NotAvailable), not available: the parameter can only be read"));
}

TEST(SetVerb, AnEnumeratorIsAcceptedByNameAndByLabel) {
    EXPECT_EQ(quillon({"set", "FG_LUT_ENABLE=FG_ON"}).out, "FG_LUT_ENABLE = FG_ON (1)\n");
    EXPECT_EQ(quillon({"set", "FG_BITALIGNMENT=Right Aligned"}).out, "FG_BITALIGNMENT = FG_RIGHT_ALIGNED (0)\n");
}

TEST(SetVerb, AMisspeltEnumeratorIsUsageWithTheNearestOne) {
    const Outcome outcome = quillon({"set", "FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIHGT"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("did you mean FG_VANTAGEPOINT_TOP_RIGHT?"));
    EXPECT_THAT(outcome.err, HasSubstr("it is one of FG_VANTAGEPOINT_TOP_LEFT, "));
}

TEST(SetVerb, ATextForANumberIsUsageAndNothingIsWritten) {
    const Outcome outcome = quillon({"set", "FG_HEIGHT=512", "FG_WIDTH=wide"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr("\"wide\" is no value for FG_WIDTH"));
}

TEST(SetVerb, ANumberBeyondTheParametersBitsIsUsage) {
    const Outcome outcome = quillon({"set", "FG_WIDTH=4294967300"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("the parameter has 32 bits"));
}

TEST(SetVerb, AWordWithoutAValueIsUsage) {
    const Outcome outcome = quillon({"set", "FG_WIDTH"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("\"FG_WIDTH\" has no value"));
}

TEST(SetVerb, TheFirstRefusalEndsTheCommand) {
    const Outcome outcome = quillon({"set", "FG_WIDTH=6", "FG_HEIGHT=512"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr("not tried: 1 more behind it"));
}

TEST(SetVerb, ADesignThatFailsIsToldWithItsCodeAndTheTraceEndsThere) {
    const Outcome outcome =
        quillon({"set", "FG_HEIGHT=2048", "--trace", "--fault", "Device1_Process0_Buffer_0_XLength=-5"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("FG_HEIGHT=2048 was refused: -5, a code of the SDK or the design"));
    EXPECT_THAT(outcome.out, HasSubstr("failed: -5"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("Device1_Process0_Buffer_0_YLength")));
}

TEST(SetVerb, JsonTellsTheRefusalInFields) {
    const auto json = quillon({"set", "FG_WIDTH=6", "--json"}).json();
    EXPECT_EQ(json[0]["accepted"], false);
    EXPECT_EQ(json[0]["refused"]["code"], -7080);
    EXPECT_EQ(json[0]["refused"]["name"], "ValueNotAligned");
    EXPECT_EQ(json[0]["refused"]["accepted"], "4 to 16384 pixel in steps of 4");
}

TEST(SetVerb, EntriesOfALookupTableAreWritten) {
    EXPECT_EQ(quillon({"set", "FG_LUT_TYPE=LUT_TYPE_CUSTOM", "FG_LUT_VALUE_RED[10..12]=7,8,9"}).out,
              "FG_LUT_TYPE = LUT_TYPE_CUSTOM (0)\nFG_LUT_VALUE_RED[10..12] = 7, 8, 9\n");
    EXPECT_THAT(quillon({"set", "FG_LUT_VALUE_RED[5]=7"}).out, StartsWith("FG_LUT_VALUE_RED[5] = 7\n"));
    EXPECT_THAT(quillon({"set", "FG_LUT_VALUE_RED=7,8"}).out, StartsWith("FG_LUT_VALUE_RED[0..1] = 7, 8\n"));
    const auto json = quillon({"set", "FG_LUT_VALUE_RED[10..12]=7,8,9", "--json"}).json();
    EXPECT_EQ(json[0]["index"], 10);
    EXPECT_EQ(json[0]["value"], nlohmann::json({7, 8, 9}));
    EXPECT_EQ(quillon({"set", "FG_LUT_VALUE_RED=7,8", "--json"}).json()[0]["value"], nlohmann::json({7, 8}));
}

TEST(SetVerb, ATraceIsNumberedFromOneAndHasNumbers) {
    const auto json = quillon({"set", "FG_WIDTH=2048", "FG_LUT_VALUE_RED[5..6]=7,8", "--trace", "--json"}).json();
    for (const auto& entry : json) {
        for (std::size_t i = 0; i < entry["accesses"].size(); ++i) {
            EXPECT_EQ(entry["accesses"][i]["sequence"], i + 1);
        }
    }
    const auto& last = json[1]["accesses"].back();
    EXPECT_EQ(last["type"], "table");
    EXPECT_EQ(last["index"], 5);
    EXPECT_EQ(last["value"], nlohmann::json({7, 8}));
    EXPECT_THAT(json[0]["accesses"],
                Contains(AllOf(Contains(nlohmann::json("Device1_Process0_Buffer_0_XLength")),
                               Contains(nlohmann::json(2048)), Contains(nlohmann::json("integer")))));
}

TEST(SetVerb, ACountThatDoesNotFitTheEntriesIsUsage) {
    const Outcome outcome = quillon({"set", "FG_LUT_VALUE_RED[10..12]=7,8"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr("\"7,8\" is no value for FG_LUT_VALUE_RED: entries named: 3, values given: 2"));
}

TEST(SetVerb, AnEntryThatTheAppletDoesNotLookAtIsTold) {
    EXPECT_THAT(quillon({"set", "FG_LUT_VALUE_RED[10..12]=7,8,70000"}).out,
                HasSubstr("\n  entry 12 is 70000, more than 65535"));
}

TEST(SetVerb, WhatIsHeldIsShownInTextAndJsonAlike) {
    EXPECT_THAT(quillon({"set", "FG_CAMERASIMULATOR_WIDTH=1000"}).out,
                StartsWith("FG_CAMERASIMULATOR_WIDTH = 1024 pixel, asked for 1000 pixel\n"));
    const auto json = quillon({"set", "FG_CAMERASIMULATOR_WIDTH=1000", "--json"}).json();
    EXPECT_EQ(json[0]["value"], 1024);
    EXPECT_EQ(json[0]["asked"], nlohmann::json({{"value", 1000}, {"unit", "pixel"}}));
    const auto refused = quillon({"set", "FG_WIDTH=6", "--json"}).json();
    EXPECT_EQ(refused[0]["value"], 1024);
    EXPECT_EQ(refused[0]["asked"], nlohmann::json({{"value", 6}, {"unit", "pixel"}}));
    EXPECT_FALSE(quillon({"set", "FG_WIDTH=2048", "--json"}).json()[0].contains("asked"));
}

TEST(SetVerb, MovedLimitsAreTold) {
    EXPECT_EQ(quillon({"set", "FG_WIDTH=2048"}).out,
              "FG_WIDTH = 2048 pixel\n"
              "  FG_XOFFSET accepts  0 to 15360 pixel in steps of 4  ->  0 to 14336 pixel in steps of 4\n");
    const auto json = quillon({"set", "FG_WIDTH=2048", "--json"}).json();
    EXPECT_EQ(json[0]["limits"][0], nlohmann::json({{"name", "FG_XOFFSET"},
                                                    {"before",
                                                     {{"accepted", "0 to 15360 pixel in steps of 4"},
                                                      {"min", 0},
                                                      {"max", 15360},
                                                      {"step", 4},
                                                      {"unit", "pixel"}}},
                                                    {"after",
                                                     {{"accepted", "0 to 14336 pixel in steps of 4"},
                                                      {"min", 0},
                                                      {"max", 14336},
                                                      {"step", 4},
                                                      {"unit", "pixel"}}}}));
}

TEST(SetVerb, OtherValuesThatChangeAreTold) {
    EXPECT_THAT(quillon({"set", "FG_DIGIO_OUTPUT=2"}).out,
                ContainsRegex("\n  FG_TRIGGEROUT_GPO_3_SOURCE +VCC.* -> +GND"));
    const auto json = quillon({"set", "FG_DIGIO_OUTPUT=2", "--json"}).json();
    EXPECT_THAT(json[0]["changed"], Contains(nlohmann::json({{"name", "FG_TRIGGEROUT_GPO_3_SOURCE"},
                                                             {"before", {{"value", VCC}, {"enumerator", "VCC"}}},
                                                             {"after", {{"value", GND}, {"enumerator", "GND"}}}})));
}

TEST(SetVerb, AWidthThatEndsTheMirroringTellsIt) {
    const Outcome outcome = quillon({"set", "FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT", "FG_WIDTH=512"});
    EXPECT_THAT(outcome.out, HasSubstr("\n  the design no longer mirrors, though FG_VANTAGEPOINT reads "
                                       "FG_VANTAGEPOINT_TOP_RIGHT (1) as before; set it again\n"));
    EXPECT_THAT(quillon({"set", "FG_WIDTH=512"}).out, Not(HasSubstr("mirrors")));
}

}  // namespace
}  // namespace quillon::cli::testing
