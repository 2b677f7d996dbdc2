#include <gmock/gmock.h>

#include "quillon/quillon.h"
#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST(LutVerb, TheStartUpCurveIsDrawnAndTold) {
    EXPECT_THAT(quillon({"lut"}).out, StartsWith("65535 |"));
    const auto json = quillon({"lut", "--json"}).json();
    const nlohmann::json ends{
        {"entries", 16384}, {"firstEntry", 0}, {"lastEntry", 65535}, {"smallest", 0}, {"largest", 65535}};
    EXPECT_EQ(json["red"], nlohmann::json({{"value", nullptr}, {"table", ends}}));
    EXPECT_EQ(json["blue"]["table"], ends);
}

TEST(LutVerb, EntriesAreToldForARange) {
    const auto json = quillon({"lut", "--json", "--range", "8191..8193"}).json();
    EXPECT_EQ(json["red"]["index"], 8191);
    ASSERT_EQ(json["red"]["value"].size(), 3U);
    EXPECT_EQ(json["red"]["value"][0], 32765);
    EXPECT_EQ(quillon({"lut", "--json", "--range", "16383"}).json()["blue"]["value"], nlohmann::json({65535}));
    EXPECT_EQ(quillon({"lut", "--json", "--range", "0..16383"}).json()["green"]["value"].size(), 16384U);
    for (const std::string range : {"a", "1..", "..1", "5..4", "0..16384", "-1..3", "1-3"}) {
        EXPECT_EQ(quillon({"lut", "--json", "--range=" + range}).status, 2) << range;
    }
}

TEST(LutVerb, TheAxesTellTheirBits) {
    const Outcome outcome = quillon({"lut"});
    EXPECT_THAT(outcome.out, ContainsRegex("\n +0 +16383 input, 14 bit\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\noutput, 16 bit (upwards) over input, 14 bit.\n"));
}

TEST(LutVerb, ATableThatIsSwitchedOffSaysSo) {
    const std::string words = "The table is switched off (FG_LUT_ENABLE): pixels pass it by";
    EXPECT_THAT(quillon({"lut"}).out, HasSubstr(words));
    EXPECT_EQ(quillon({"lut", "--json"}).json()["enabled"], false);
    const Folder folder;
    const std::string file = folder / "on.mcf";
    ASSERT_EQ(quillon({"set", "FG_LUT_ENABLE=FG_ON", "--save", file}).status, 0);
    EXPECT_THAT(quillon({"lut", "--mcf", file}).out, Not(HasSubstr(words)));
    EXPECT_EQ(quillon({"lut", "--json", "--mcf", file}).json()["enabled"], true);
}

TEST(LutVerb, ItNamesItsConfigurationAndWhatWasChangedSince) {
    EXPECT_THAT(quillon({"lut"}).out, HasSubstr("\nConfiguration: start-up values\nFG_LUT_ENABLE = FG_OFF (0), "));
    const Folder folder;
    const std::string mcf = folder / "bright.mcf";
    const std::string lut = folder / "bright.lut";
    ASSERT_EQ(quillon({"set", "FG_PROCESSING_GAIN=2", "--save", mcf}).status, 0);
    EXPECT_THAT(quillon({"lut", "--save", lut, "--mcf", mcf}).out,
                AllOf(HasSubstr("\nConfiguration: " + mcf + "\n"), HasSubstr("FG_PROCESSING_GAIN = 2, ")));
    EXPECT_THAT(quillon({"lut", "--load", lut}).out,
                AllOf(HasSubstr("\nConfiguration: start-up values, with another FG_LUT_TYPE, FG_LUT_CUSTOM_FILE\n"),
                      HasSubstr("FG_LUT_CUSTOM_FILE = \"" + lut + "\"\n")));
}

TEST(LutVerb, ThePictureIsAPng) {
    const Folder folder;
    EXPECT_EQ(quillon({"lut", "-o", folder / "curve.png"}).status, 0);
    EXPECT_THAT(contentOf(folder / "curve.png"), StartsWith("\x89PNG"));
}

TEST(LutVerb, APictureThatCannotBeWrittenIsRefused) {
    const Outcome outcome = quillon({"lut", "-o", "/no/such/folder/curve.png"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("/no/such/folder/curve.png cannot be written"));
}

TEST(LutVerb, ASavedFileLoadsAgainAndTwoFilesAreCompared) {
    const Folder folder;
    ASSERT_EQ(quillon({"lut", "--save", folder / "linear.lut"}).status, 0);
    ASSERT_EQ(quillon({"set", "FG_PROCESSING_INVERT=FG_ON", "--save", folder / "inverted.mcf"}).status, 0);
    ASSERT_EQ(quillon({"lut", "--save", folder / "inverted.lut", "--mcf", folder / "inverted.mcf"}).status, 0);
    EXPECT_EQ(quillon({"lut", "--load", folder / "inverted.lut", "--json"}).json()["red"]["table"]["firstEntry"],
              65535);
    EXPECT_THAT(quillon({"lut", "--compare", folder / "linear.lut", folder / "inverted.lut"}).out,
                ContainsRegex("red +16384 entries differ, the first is 0; most at 0, by 65535\n"));
    EXPECT_THAT(quillon({"lut", "--compare", folder / "linear.lut", folder / "linear.lut"}).out,
                ContainsRegex("green +no difference\n"));
}

TEST(LutVerb, AMissingFileIsRefused) {
    const Outcome outcome = quillon({"lut", "--load", "/no/such/warm.lut"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("/no/such/warm.lut was refused: -2076 (FileNotFound)"));
}

TEST(TriggerVerb, ItIsToldInWordsAndDrawn) {
    const Outcome outcome = quillon({"trigger"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out,
                HasSubstr("A line every 200 \xC2\xB5s (5000 lines a second), exposed for 19 \xC2\xB5s.\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("ExSync +#+_+#+_+#+_+\n"));
}

TEST(TriggerVerb, AnExposureLongerThanThePeriodIsWarnedOf) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_LINEEXPOSURE=150", "FG_LINEPERIODE=100", "--save", folder / "long.mcf"}).status, 0);
    const Outcome outcome = quillon({"trigger", "--mcf", folder / "long.mcf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out,
                HasSubstr("warning: the exposure of 150 \xC2\xB5s is longer than the period of 100 \xC2\xB5s\n"));
}

TEST(TriggerVerb, AnEncoderThatNobodyListensToIsWarnedOf) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_SHAFTENCODERON=FG_ON", "--save", folder / "deaf.mcf"}).status, 0);
    const auto json = quillon({"trigger", "--json", "--mcf", folder / "deaf.mcf"}).json();
    ASSERT_EQ(json["warnings"].size(), 1U);
    EXPECT_EQ(json["warnings"][0], "the shaft encoder is on, but GRABBER_CONTROLLED (1) does not listen to it");
}

TEST(TriggerVerb, TheStartUpStateHasNoContradiction) {
    EXPECT_THAT(quillon({"trigger", "--json"}).json()["warnings"], IsEmpty());
}

TEST(TriggerVerb, TheTimingIsAPictureToo) {
    const Folder folder;
    EXPECT_EQ(quillon({"trigger", "-o", folder / "timing.png"}).status, 0);
    EXPECT_THAT(contentOf(folder / "timing.png"), StartsWith("\x89PNG"));
}

TEST(IoVerb, InputsAndRoutesAreShown) {
    const Outcome outcome = quillon({"io", "--inputs", "0x101"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("GPI 0 +--\\[1\\]--> +high\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("GPI 1 +--\\[0\\]--> +low\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("Front GPI 0 +--\\[1\\]--> +high\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("FG_SIGNAL_CAM0_EXSYNC +-+ +> Camera trigger +low\n"));
}

TEST(IoVerb, AnInvertedInputReachesItsOutputInverted) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_TRIGGEROUT_GPO_0_SOURCE=FG_SIGNAL_GPI_2", "FG_TRIGGEROUT_GPO_0_POLARITY=FG_LOW",
                       "--save", folder / "routed.mcf"})
                  .status,
              0);
    const auto json = quillon({"io", "--inputs", "4", "--json", "--mcf", folder / "routed.mcf"}).json();
    EXPECT_EQ(json["routes"]["GPO 0"],
              nlohmann::json({{"source", {{"value", FG_SIGNAL_GPI_2}, {"enumerator", "FG_SIGNAL_GPI_2"}}},
                              {"inverted", true},
                              {"level", "low"}}));
}

TEST(IoVerb, AFixedLevelHasNoPolarity) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_TRIGGEROUT_GPO_3_POLARITY=FG_LOW", "--save", folder / "routed.mcf"}).status, 0);
    const auto json = quillon({"io", "--json", "--mcf", folder / "routed.mcf"}).json();
    EXPECT_EQ(
        json["routes"]["GPO 3"],
        nlohmann::json({{"source", {{"value", VCC}, {"enumerator", "VCC"}}}, {"inverted", false}, {"level", "high"}}));
}

TEST(IoVerb, LevelsBeyondTheTwelveInputsAreUsage) {
    EXPECT_EQ(quillon({"io", "--inputs", "0x1000"}).status, 2);
}

}  // namespace
}  // namespace quillon::cli::testing
