#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

nlohmann::json signal(const nlohmann::json& answer, const std::string& name) {
    for (const auto& one : answer["signals"]) {
        if (one["name"] == name) {
            return one;
        }
    }
    return nullptr;
}

TEST(TimelineVerb, TheSignalsOfAStartAreDrawnWithCountsAndRates) {
    const Outcome outcome = quillon({"timeline", "1ms"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("Signals of 1 ms, from 0 \u00B5s of the board's clock on\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("\nExSync +_+#_+#_+#_+#_+\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("\nFG_CUSTOM_SIGNAL_EVENT_0 +\\.+\\|\\.+\\|\\.+\\|\\.+\\|\\.+\\|\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("\n +0 .* 1 ms\n"));
    EXPECT_THAT(outcome.out,
                ContainsRegex("\nExSync +5 rising edges +every 200 \u00B5s +5000 Hz +high for 19 \u00B5s\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\nAlways low: GPI 0, GPI 1, "));
    EXPECT_THAT(outcome.out, HasSubstr("\nConfiguration: start-up values\n"));
}

TEST(TimelineVerb, EdgesAndEventsHaveTheirTimes) {
    const auto json = quillon({"timeline", "500us", "--json"}).json();
    EXPECT_EQ(json["length"], nlohmann::json({{"value", 500.0}, {"unit", "\u00B5s"}}));
    EXPECT_EQ(
        signal(json, "ExSync"),
        nlohmann::json::parse(R"({"name":"ExSync","level":0,"edges":[[200.0,1],[219.0,0],[400.0,1],[419.0,0]]})"));
    EXPECT_EQ(signal(json, "LVAL")["edges"], nlohmann::json::parse("[[219.0,1],[220.024,0],[419.0,1],[420.024,0]]"));
    EXPECT_EQ(signal(json, "GPO 3"), nlohmann::json::parse(R"({"name":"GPO 3","level":1,"edges":[]})"));
    EXPECT_EQ(json["events"][0], nlohmann::json::parse(R"([200.0,"FG_CUSTOM_SIGNAL_EVENT_0"])"));
    EXPECT_EQ(json["events"].back(), nlohmann::json::parse(R"([420.024,"FG_END_OF_LINE_CAM_PORT_0"])"));
}

TEST(TimelineVerb, TheExamplesMove) {
    const std::string examples = QUILLON_EXAMPLES;
    const auto rising = [&](const std::string& file, const std::string& name) {
        return quillon({"timeline", "1ms", "--quiet", "--mcf", examples + "/" + file}).out.find("\n" + name) !=
               std::string::npos;
    };
    EXPECT_TRUE(rising("free_running_4k.mcf", "ExSync  "));
    EXPECT_TRUE(rising("camera_simulator_50_frames.mcf", "LVAL  "));
    const auto json =
        quillon({"timeline", "1ms", "--quiet", "--json", "--mcf", examples + "/camera_simulator_50_frames.mcf"}).json();
    EXPECT_EQ(signal(json, "LVAL")["edges"][2][0], 20.0);
}

TEST(TimelineVerb, ThePulsesOfAnInputBringLines) {
    const Folder folder;
    const std::string file = folder / "external.mcf";
    ASSERT_EQ(quillon({"set", "FG_LINETRIGGERMODE=ASYNC_TRIGGER", "FG_LINE_DOWNSCALE=3", "FG_LINE_DOWNSCALEINIT=2",
                       "--save", file})
                  .status,
              0);
    EXPECT_THAT(quillon({"timeline", "1ms", "--mcf", file}).out, HasSubstr("\nNothing moves.\n"));
    const auto json = quillon({"timeline", "1ms", "--json", "--mcf", file, "--pulses", "GPI 1=100us"}).json();
    EXPECT_EQ(signal(json, "GPI 1")["edges"].size(), 20U);
    EXPECT_EQ(signal(json, "GPI 1")["edges"][2], nlohmann::json::parse("[150.0,1]"));
    // With the 2nd pulse, and every 3rd from there.
    EXPECT_EQ(signal(json, "ExSync")["edges"],
              nlohmann::json::parse("[[150.0,1],[169.0,0],[450.0,1],[469.0,0],[750.0,1],[769.0,0]]"));
}

TEST(TimelineVerb, DenseActivityShowsAsSuch) {
    const std::string text = quillon({"timeline", "1ms", "--pulses", "gpi3=1us"}).out;
    EXPECT_THAT(text, ContainsRegex("\nGPI 3 +%+\n"));
    EXPECT_THAT(text, ContainsRegex("\nGPI 3 +1000 rising edges +every 1 \u00B5s +1000000 Hz +high for 496 ns\n"));
}

/// The edges that `trigger` draws, of all rows that a timeline has too, from the first exposure on.
TEST(TimelineVerb, TheBoardDoesWhatTriggerDraws) {
    const Folder folder;
    const std::string file = folder / "state.mcf";
    const std::vector<std::vector<std::string>> configurations{
        {"FG_LINEPERIODE=200"},
        {"FG_EXSYNCPOLARITY=FG_LOW", "FG_LINETRIGGERDELAY=30", "FG_STROBEPULSEDELAY=1"},
        {"FG_LINEEXPOSURE=150", "FG_LINEPERIODE=100", "FG_TRIGGERCAMERA_POLARITY=FG_LOW"},
        {"FG_HEIGHT=2", "FG_FLASH_POLARITY=FG_LOW", "FG_TRIGGERCAMERA_SOURCE=FG_SIGNAL_CAM0_FLASH"},
        {"FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR", "FG_CAMERASIMULATOR_TRIGGER_MODE=RISING_EDGE_TRIGGERS_LINE",
         "FG_EXSYNCPOLARITY=FG_LOW"},
        {"FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR", "FG_CAMERASIMULATOR_TRIGGER_MODE=RISING_EDGE_TRIGGERS_FRAME",
         "FG_CAMERASIMULATOR_HEIGHT=3"}};
    for (const std::vector<std::string>& settings : configurations) {
        std::vector<std::string> words{"set", "--quiet", "--save", file};
        words.insert(words.end(), settings.begin(), settings.end());
        ASSERT_EQ(quillon(words).status, 0);
        const auto drawing = quillon({"trigger", "--json", "--mcf", file}).json()["drawing"];
        const auto recorded = quillon({"timeline", "2ms", "--json", "--mcf", file}).json();
        const double begin = signal(recorded, "ExSync")["edges"][0][0];
        for (const auto& row : drawing["rows"]) {
            if (row.contains("note")) {
                continue;
            }
            const std::string name = row["name"].get<std::string>();
            const auto edges =
                signal(recorded, name == "Simulator line" ? "LVAL" : name.substr(0, name.find(" (")))["edges"];
            std::vector<double> drawn;
            std::vector<double> happened;
            for (const double change : row["changes"]) {
                drawn.push_back(change);
            }
            for (const auto& edge : edges) {
                const double time = edge[0].get<double>() - begin;
                if (time > 1e-6 && time <= drawing["end"].get<double>()) {
                    happened.push_back(time);
                }
            }
            EXPECT_THAT(drawn, ::testing::Pointwise(::testing::DoubleNear(1e-6), happened))
                << settings[0] << ", " << name;
        }
    }
}

TEST(TimelineVerb, RowsCanBeChosen) {
    const std::string text = quillon({"timeline", "1ms", "--signals", "exsync", "GPI", "lval"}).out;
    EXPECT_THAT(text, AllOf(ContainsRegex("\nExSync +_"), ContainsRegex("\nGPI 7 +_+\n"), ContainsRegex("\nLVAL +_"),
                            Not(ContainsRegex("\nExSync2 ")), Not(ContainsRegex("\nFront GPI 0 "))));
    EXPECT_THAT(text, ContainsRegex("\nNot shown, but moving: ExSync2, .*FG_CUSTOM_SIGNAL_EVENT_1\n"));
    const auto json = quillon({"timeline", "1ms", "--json", "--signals", "ExSync2"}).json();
    EXPECT_EQ(json["signals"].size(), 1U);
    EXPECT_EQ(json["events"].size(), 0U);
    const Outcome wrong = quillon({"timeline", "1ms", "--signals", "ExSink"});
    EXPECT_EQ(wrong.status, 2);
    EXPECT_THAT(wrong.err, HasSubstr("there is no signal \"ExSink\", did you mean ExSync"));
}

TEST(TimelineVerb, WhatDoesNotFitIsRefusedWithWhatDoes) {
    const Outcome outcome = quillon({"timeline", "2s", "--pulses", "GPI 0=2us"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err,
                ContainsRegex("2 s has more than the 250000 changes that are recorded; 1[12][0-9]\\.[0-9]+ ms fit"));
}

TEST(TimelineVerb, TimesAndPulsesThatAreNoneAreUsage) {
    for (const char* time : {"1", "0ms", "61s", "soon"}) {
        EXPECT_EQ(quillon({"timeline", time}).status, 2) << time;
    }
    for (const char* pulses : {"GPI 0", "GPI 8=1ms", "ExSync=1ms", "GPI 0=1ns", "GPI 0=often"}) {
        EXPECT_EQ(quillon({"timeline", "1ms", "--pulses", pulses}).status, 2) << pulses;
    }
}

TEST(TimelineVerb, ThePictureIsAPng) {
    const Folder folder;
    EXPECT_EQ(quillon({"timeline", "1ms", "-o", folder / "signals.png"}).status, 0);
    EXPECT_THAT(contentOf(folder / "signals.png"), StartsWith("\x89PNG"));
    EXPECT_EQ(quillon({"timeline", "1ms", "-o", "/no/such/folder/signals.png"}).status, 1);
}

TEST(TimelineVerb, ItIsAsWideAsTheTerminal) {
    for (const std::size_t width : {50U, 130U}) {
        const Outcome outcome = shell("COLUMNS=" + std::to_string(width) + " \"$quillon\" timeline 1ms");
        const std::size_t begin = outcome.out.find("\nLVAL ") + 1;
        EXPECT_EQ(outcome.out.find('\n', begin) - begin, width);
    }
}

}  // namespace
}  // namespace quillon::cli::testing
