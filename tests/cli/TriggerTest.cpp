#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// The words of `trigger` on a configuration with these assignments.
class TriggerDrawing : public ::testing::Test {
protected:
    std::string after(std::vector<std::string> assignments) {
        return quillon({"trigger", "--mcf", save(std::move(assignments))}).out;
    }
    nlohmann::json row(const std::string& name, std::vector<std::string> assignments) {
        const auto json = quillon({"trigger", "--json", "--mcf", save(std::move(assignments))}).json();
        for (const auto& one : json["drawing"]["rows"]) {
            if (one["name"] == name) {
                return one;
            }
        }
        return nullptr;
    }
    std::string save(std::vector<std::string> words) {
        const std::string file = folder_ / "state.mcf";
        words.insert(words.begin(), "set");
        words.insert(words.end(), {"--quiet", "--save", file});
        EXPECT_EQ(quillon(words).status, 0);
        return file;
    }

private:
    Folder folder_;
};

TEST_F(TriggerDrawing, LinesOfAnInputHaveNoClock) {
    const std::string text = after({"FG_LINETRIGGERMODE=ASYNC_TRIGGER", "FG_LINETRIGGERINSRC=TRGINSRC_GPI_0",
                                    "FG_LINE_DOWNSCALE=3", "FG_LINE_DOWNSCALEINIT=2"});
    EXPECT_THAT(text,
                HasSubstr("A line for every 3 pulses at GPI 0 (rising edge), downscaled by 3, the first of an image "
                          "with the 2nd, exposed for 19 \u00B5s. Its period is that of what comes in.\n"));
    EXPECT_THAT(text, HasSubstr(" pulses, not to scale in time\n"));
    EXPECT_THAT(text, Not(HasSubstr("200 \u00B5s")));
}

TEST_F(TriggerDrawing, ThePhaseAndTheDownscaleSayWithWhichPulsesLinesCome) {
    const std::vector<std::string> settings{"FG_LINETRIGGERMODE=ASYNC_GATED", "FG_LINE_DOWNSCALE=3",
                                            "FG_LINE_DOWNSCALEINIT=2"};
    EXPECT_EQ(row("ExSync", settings)["changes"], nlohmann::json({2, 2.3, 5, 5.3, 8, 8.3}));
    EXPECT_EQ(row("GPI 1", settings)["changes"].size(), 16U);
}

TEST_F(TriggerDrawing, AFallingEdgeIsDrawnAsOne) {
    const auto input =
        row("GPI 1 (low active)", {"FG_LINETRIGGERMODE=ASYNC_TRIGGER", "FG_LINETRIGGERINPOLARITY=HIGH_ON_ZERO_LOW"});
    EXPECT_EQ(input["high"], true);
    EXPECT_EQ(input["changes"][0], 1.0);
}

TEST_F(TriggerDrawing, TheEncodersFilterSaysHowManyCountsAPeriodHas) {
    std::vector<std::string> settings{"FG_LINETRIGGERMODE=ASYNC_TRIGGER", "FG_SHAFTENCODERON=FG_ON",
                                      "FG_SHAFTENCODERMODE=FILTER_X4", "FG_LINE_DOWNSCALE=4"};
    EXPECT_THAT(after(settings), HasSubstr("filter x4 (4 counts a period)"));
    EXPECT_EQ(row("A, GPI 1", settings)["changes"], nlohmann::json({1, 3, 5, 7, 9}));
    EXPECT_EQ(row("B, GPI 2", settings)["changes"], nlohmann::json({2, 4, 6, 8}));
    EXPECT_EQ(row("ExSync", settings)["changes"], nlohmann::json({1, 1.3, 5, 5.3, 9, 9.3}));
    settings.emplace_back("FG_SHAFTENCODERLEADING=SOURCE_B");
    EXPECT_EQ(row("A, GPI 1", settings)["changes"], nlohmann::json({2, 4, 6, 8}));
    settings.emplace_back("FG_SHAFTENCODERMODE=FILTER_X2");
    EXPECT_EQ(row("B, GPI 2", settings)["changes"], nlohmann::json({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(TriggerDrawing, ALowActiveSignalIsHighBetweenItsPulses) {
    const std::string text = after({"FG_EXSYNCPOLARITY=FG_LOW"});
    EXPECT_THAT(text, ContainsRegex("\nExSync \\(low active\\) +_+#+_+#+_+#+\n"));
    EXPECT_THAT(text, ContainsRegex("\nCamera trigger \\(low active\\) +_+#+_+#+_+#+\n"));
    EXPECT_THAT(after({"FG_EXSYNCPOLARITY=FG_LOW", "FG_TRIGGERCAMERA_POLARITY=FG_LOW"}),
                ContainsRegex("\nCamera trigger  +#+_+#+_+#+_+\n"));
}

TEST_F(TriggerDrawing, WhatIsOffHasNoPulses) {
    const std::string text = after({"FG_EXSYNCON=FG_OFF", "FG_FLASH_POLARITY=FG_LOW", "FG_FLASHON=FG_OFF"});
    EXPECT_THAT(text, ContainsRegex("\nExSync +_+\n"));
    EXPECT_THAT(text, ContainsRegex("\nFlash \\(low active\\) +#+\n"));
    EXPECT_THAT(text, HasSubstr("ExSync is off. Switched on it would bring: a line every 200 "));
}

TEST_F(TriggerDrawing, ACameraTriggerOfAFixedLevelHasNoPulses) {
    const std::string text = after({"FG_TRIGGERCAMERA_SOURCE=VCC"});
    EXPECT_THAT(text, ContainsRegex("\nCamera trigger +#+\n"));
    EXPECT_THAT(text, HasSubstr("The camera trigger is always high.\n"));
    EXPECT_THAT(after({"FG_TRIGGERCAMERA_SOURCE=FG_SIGNAL_GPI_4"}),
                ContainsRegex("\nCamera trigger +\\(follows FG_SIGNAL_GPI_4 \\(1041\\)\\)\n"));
}

TEST_F(TriggerDrawing, WhatALoadDoesNotGiveToTheDesignIsNotDrawn) {
    const std::vector<std::string> settings{"FG_LINEEXPOSURE=150", "FG_LINEPERIODE=100"};
    EXPECT_THAT(after(settings),
                AllOf(HasSubstr("A line every 100 \u00B5s (10000 lines a second), exposed for 19 \u00B5s.\n"),
                      HasSubstr("FG_LINEEXPOSURE reads 150 \u00B5s, but the design runs with 19 \u00B5s: ")));
    EXPECT_EQ(row("ExSync", settings)["changes"], nlohmann::json({19, 100, 119, 200, 219}));
}

TEST_F(TriggerDrawing, TheSimulatorsLinesComeAtItsOwnRate) {
    const std::vector<std::string> settings{"FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR",
                                            "FG_CAMERASIMULATOR_LINERATE=10000"};
    EXPECT_THAT(after(settings),
                AllOf(HasSubstr("camera simulator: one every 100 \u00B5s (10000 lines a second) by its own clock"),
                      HasSubstr("each of 1024 lines, one every 102.4 ms.")));
    EXPECT_EQ(row("Simulator line", settings)["changes"],
              nlohmann::json({0.256, 100, 100.256, 200, 200.256, 300, 300.256, 400, 400.256}));
}

TEST_F(TriggerDrawing, TheSimulatorWaitsForRisingEdgesOfTheCameraTrigger) {
    const std::vector<std::string> settings{"FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR",
                                            "FG_CAMERASIMULATOR_TRIGGER_MODE=RISING_EDGE_TRIGGERS_LINE",
                                            "FG_TRIGGERCAMERA_POLARITY=FG_LOW"};
    EXPECT_EQ(row("Simulator line", settings)["changes"], nlohmann::json({19, 19.256, 219, 219.256, 419, 419.256}));
}

TEST_F(TriggerDrawing, AGatedLineTriggerEndsWithTheImage) {
    const std::vector<std::string> settings{"FG_LINETRIGGERMODE=GRABBER_CONTROLLED_GATED",
                                            "FG_IMGTRIGGERMODE=ASYNC_TRIGGER", "FG_HEIGHT=2"};
    EXPECT_THAT(after(settings), AllOf(HasSubstr("While an image runs, a line every 200 "),
                                       HasSubstr("A rising edge at GPI 0 begins an image of 2 lines.\n"),
                                       HasSubstr("\nImage trigger   (rising edge of GPI 0, at any time before)\n")));
    EXPECT_EQ(row("ExSync", settings)["changes"], nlohmann::json({19, 200, 219}));
}

TEST_F(TriggerDrawing, AnImageTriggerThatIsOffStartsNothing) {
    const std::vector<std::string> settings{"FG_LINETRIGGERMODE=GRABBER_CONTROLLED_GATED",
                                            "FG_IMGTRIGGERMODE=ASYNC_GATED", "FG_IMGTRIGGERON=FG_OFF"};
    EXPECT_THAT(after(settings),
                AllOf(HasSubstr("\nImage trigger   (off)\n"), HasSubstr("FG_IMGTRIGGERON is off: no image begins")));
    EXPECT_EQ(row("ExSync", settings)["changes"], nlohmann::json::array());
}

TEST_F(TriggerDrawing, TheFlashComesOnceInAnImage) {
    EXPECT_EQ(row("Flash", {"FG_STROBEPULSEDELAY=1"})["changes"], nlohmann::json({200, 219}));
    EXPECT_EQ(row("Flash", {"FG_HEIGHT=2"})["changes"], nlohmann::json({19, 400, 419}));
    EXPECT_THAT(after({"FG_STROBEPULSEDELAY=1024"}),
                HasSubstr("the flash never comes: an image is over before its 1025th exposure\n"));
}

TEST_F(TriggerDrawing, ItNamesItsConfiguration) {
    EXPECT_THAT(quillon({"trigger"}).out,
                HasSubstr("\nConfiguration: start-up values\nFG_LINETRIGGERMODE = GRABBER_CONTROLLED (1), "));
    const std::string file = save({"FG_LINEPERIODE=100"});
    const std::string text = quillon({"trigger", "--mcf", file}).out;
    EXPECT_THAT(text, AllOf(HasSubstr("\nConfiguration: " + file + "\n"), HasSubstr("FG_LINEPERIODE = 100 \u00B5s, ")));
}

TEST_F(TriggerDrawing, NoLineIsWiderThanTheTerminal) {
    const Outcome outcome = shell("COLUMNS=60 \"$quillon\" trigger");
    for (const char* name : {"\nExSync ", "\nFlash ", "\nCamera trigger "}) {
        const std::size_t begin = outcome.out.find(name) + 1;
        EXPECT_EQ(outcome.out.find('\n', begin) - begin, 60U) << name;
    }
}

}  // namespace
}  // namespace quillon::cli::testing
