#include <gmock/gmock.h>

#include <sstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

std::vector<std::string> wordsOf(const std::string& line) {
    std::vector<std::string> words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

/// The words of "set" lines, behind a "set".
std::vector<std::string> settingsIn(const std::string& text) {
    std::vector<std::string> settings{"set"};
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line) && line.starts_with("set ");) {
        settings.push_back(line.substr(4));
    }
    return settings;
}

nlohmann::json planned(const std::string& words) {
    std::vector<std::string> whole = wordsOf("plan --json " + words);
    return quillon(whole).json();
}

nlohmann::json boundOf(const nlohmann::json& plan, const std::string& name) {
    for (const auto& bound : plan["bounds"]) {
        if (bound["name"] == name) {
            return bound;
        }
    }
    return nullptr;
}

TEST(PlanVerb, FiguresBecomeSettingsAndRates) {
    const Folder folder;
    const Outcome outcome =
        quillon(wordsOf("plan --width 4096 --line-rate 20kHz --exposure 40us --height 2048 -o web.mcf"), folder.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "set FG_WIDTH=4096\n"
              "set FG_LINETRIGGERMODE=GRABBER_CONTROLLED\n"
              "set FG_LINEPERIODE=50\n"
              "set FG_HEIGHT=2048\n"
              "set FG_LINEEXPOSURE=40\n"
              "\n"
              "Line rate   20 kHz     a line every 50 \u00B5s\n"
              "Frame rate  9.7656 Hz  a frame of 2048 lines every 102.4 ms\n"
              "\n"
              "*FG_COL24  25.166 MB a frame  245.76 MB/s\n"
              " FG_COL30  31.457 MB a frame  307.2 MB/s\n"
              " FG_COL36  37.749 MB a frame  368.64 MB/s\n"
              " FG_COL42  44.04 MB a frame   430.08 MB/s\n"
              " FG_COL48  50.332 MB a frame  491.52 MB/s\n"
              "\n"
              "Exposure       40 \u00B5s          of  50 \u00B5s         fits\n"
              "Camera link    1.9661 Gbit/s  of  20 Gbit/s     fits\n"
              "PCIe link      245.76 MB/s    of  4 GB/s        fits\n"
              "Buffer memory  2048 lines     of  523777 lines  fits\n"
              "\n"
              "saved web.mcf\n");
    EXPECT_THAT(contentOf(folder / "web.mcf"), HasSubstr("FG_LINEPERIODE=50;"));
    EXPECT_EQ(quillon({"apply", folder / "web.mcf", "--verify"}).status, 0);
}

TEST(PlanVerb, TheSettingsAreAcceptedInTheirOrder) {
    for (const char* words : {"--width 12288 --x-offset 4096 --line-rate 5kHz --exposure 190us",
                              "--mcf start.mcf --width 16384 --x-offset 0 --line-rate 500Hz --exposure 1ms",
                              "--mcf start.mcf --width 1024 --x-offset 8192 --line-rate 500Hz",
                              "--encoder 40um --speed 0.5m/s --line-pitch 50um --exposure 30us --format FG_COL48"}) {
        const Folder folder;
        ASSERT_EQ(quillon({"set", "FG_WIDTH=8192", "FG_XOFFSET=8192", "--save", folder / "start.mcf"}).status, 0);
        const Outcome outcome = quillon(wordsOf("plan " + std::string(words)), folder.path());
        EXPECT_EQ(outcome.status, 0) << words << outcome.err;
        std::vector<std::string> settings = settingsIn(outcome.out);
        EXPECT_GT(settings.size(), 4U);
        if (std::string(words).starts_with("--mcf")) {
            settings.emplace_back("--mcf=start.mcf");
        }
        EXPECT_EQ(quillon(settings, folder.path()).status, 0) << words;
    }
}

TEST(PlanVerb, APeriodIsWholeClockCycles) {
    const auto plan = planned("--line-rate 30kHz");
    EXPECT_EQ(plan["settings"][1],
              (nlohmann::json{{"name", "FG_LINEPERIODE"}, {"value", 33.336}, {"unit", "\u00B5s"}}));
    EXPECT_DOUBLE_EQ(plan["lineRate"]["value"], 1e6 / 33.336);
}

TEST(PlanVerb, FramesASecondBecomeAHeight) {
    const auto plan = planned("--line-rate 20kHz --frames-per-second 10");
    EXPECT_EQ(plan["linesPerFrame"], (nlohmann::json{{"value", 2000}, {"unit", "lines"}}));
    EXPECT_EQ(plan["frameRate"], (nlohmann::json{{"value", 10.0}, {"unit", "Hz"}}));
}

// The product of pixels, bits and rate at each place on the way.
TEST(PlanVerb, TheBytesAreThoseOfTheFormats) {
    const auto plan = planned("--width 1000 --height 500 --line-rate 10kHz --format FG_COL30");
    const auto& formats = plan["formats"];
    ASSERT_EQ(formats.size(), 5U);
    EXPECT_EQ(formats[0]["rate"]["value"], 30e6);
    EXPECT_EQ(formats[1]["rate"]["value"], 37.5e6);
    EXPECT_EQ(formats[1]["frame"], (nlohmann::json{{"value", 1875000}, {"unit", "B"}}));
    EXPECT_EQ(formats[1]["chosen"], true);
    EXPECT_EQ(formats[4]["rate"]["value"], 60e6);
    EXPECT_EQ(boundOf(plan, "Camera link")["needs"]["value"], 240e6);
    EXPECT_EQ(boundOf(planned("--width 1000 --line-rate 10kHz --pixel-format RGB16"), "Camera link")["needs"]["value"],
              480e6);
}

TEST(PlanVerb, AnExposureLongerThanALineDoesNotFit) {
    const Folder folder;
    const Outcome outcome = quillon(wordsOf("plan --line-rate 20kHz --exposure 60us -o web.mcf"), folder.path());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, ContainsRegex("Exposure +60 \u00B5s +of +50 \u00B5s +does not fit: an exposure of at most "
                                           "50 \u00B5s, or at most 16\\.666 kHz\n"));
    EXPECT_EQ(outcome.err, "quillon: web.mcf was not written: not all fits\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "web.mcf"));
    EXPECT_EQ(quillon(wordsOf("plan --line-rate 16.666kHz --exposure 60us")).status, 0);
}

TEST(PlanVerb, TheExposureThatIsHeldCountsToo) {
    EXPECT_EQ(boundOf(planned("--line-rate 100kHz"), "Exposure")["fits"], false);
    EXPECT_EQ(quillon(wordsOf("plan --line-rate 100kHz --exposure 9us")).status, 0);
}

TEST(PlanVerb, MoreThanTheCameraLinkTakesDoesNotFit) {
    const auto plan = planned("--width 16384 --line-rate 100kHz --exposure 5us");
    const auto bound = boundOf(plan, "Camera link");
    EXPECT_EQ(bound["needs"], (nlohmann::json{{"value", 39321600000.0}, {"unit", "bit/s"}}));
    EXPECT_EQ(bound["has"], (nlohmann::json{{"value", 20e9}, {"unit", "bit/s"}}));
    EXPECT_EQ(bound["instead"], "at most 50.854 kHz, or 8332 pixels a line");
    EXPECT_EQ(plan["fits"], false);
    EXPECT_FALSE(plan.contains("file"));
    EXPECT_EQ(boundOf(planned("--width 8332 --line-rate 100kHz --exposure 5us"), "Camera link")["fits"], true);
    EXPECT_EQ(boundOf(planned("--width 16384 --line-rate 50.854kHz --exposure 5us"), "Camera link")["fits"], true);
}

TEST(PlanVerb, MoreThanThePcieLinkTakesDoesNotFit) {
    const auto plan = planned("--width 16384 --line-rate 50kHz --exposure 5us --format FG_COL48");
    const auto bound = boundOf(plan, "PCIe link");
    EXPECT_EQ(bound["needs"], (nlohmann::json{{"value", 4915200000.0}, {"unit", "B/s"}}));
    EXPECT_EQ(bound["has"], (nlohmann::json{{"value", 4e9}, {"unit", "B/s"}}));
    EXPECT_EQ(bound["instead"], "at most 40.69 kHz, or FG_COL24, FG_COL30, FG_COL36");
    EXPECT_EQ(boundOf(plan, "Camera link")["fits"], true);
    EXPECT_EQ(
        boundOf(planned("--width 16384 --line-rate 40.69kHz --exposure 5us --format FG_COL48"), "PCIe link")["fits"],
        true);
}

// 3 x 512 x 2^26 bits, half of them, are 51,539,607,552; a line has 16384 x 24, and 511 lines are lost.
TEST(PlanVerb, AFrameThatTheMemoryDoesNotHoldDoesNotFit) {
    const auto bound = boundOf(planned("--width 16384 --line-rate 5kHz --height 140000"), "Buffer memory");
    EXPECT_EQ(bound["has"], (nlohmann::json{{"value", 130561.0}, {"unit", "lines"}}));
    EXPECT_EQ(bound["instead"], "at most 130561 lines");
    EXPECT_EQ(quillon(wordsOf("plan --width 16384 --height 130561")).status, 0);
}

TEST(PlanVerb, AnEncoderIsDividedToTheLinePitch) {
    const auto plan = planned("--encoder 40um --speed 500mm/s --line-pitch 50um --exposure 30us");
    std::vector<std::string> settings;
    for (const auto& setting : plan["settings"]) {
        const std::string value =
            setting.contains("enumerator") ? setting["enumerator"].get<std::string>() : setting["value"].dump();
        settings.push_back(setting["name"].get<std::string>() + "=" + value);
    }
    EXPECT_THAT(settings, ElementsAre("FG_LINETRIGGERMODE=ASYNC_TRIGGER", "FG_LINETRIGGERINSRC=TRGINSRC_GPI_0",
                                      "FG_SHAFTENCODERINSRC=TRGINSRC_GPI_1", "FG_SHAFTENCODERON=FG_ON",
                                      "FG_SHAFTENCODERMODE=FILTER_X4", "FG_LINE_DOWNSCALE=5", "FG_LINEEXPOSURE=30.0"));
    EXPECT_EQ(plan["linePitch"], (nlohmann::json{{"value", 50.0}, {"unit", "\u00B5m"}}));
    EXPECT_EQ(plan["lineRate"]["value"], 10000.0);
    EXPECT_EQ(boundOf(plan, "Exposure")["has"]["unit"], "\u00B5s");
    EXPECT_EQ(boundOf(plan, "Exposure")["has"]["value"], 100.0);
    EXPECT_EQ(boundOf(plan, "Debouncing")["has"]["value"], 40.0);
}

TEST(PlanVerb, TheCoarsestFilterThatGivesThePitchIsTaken) {
    const auto settingOf = [](const std::string& words, const std::string& name) {
        const Outcome outcome = quillon(wordsOf("plan --encoder 40um --speed 100mm/s " + words));
        const std::size_t place = outcome.out.find("set " + name + "=");
        return outcome.out.substr(place, outcome.out.find('\n', place) - place);
    };
    EXPECT_EQ(settingOf("", "FG_SHAFTENCODERMODE"), "set FG_SHAFTENCODERMODE=FILTER_X1");
    EXPECT_EQ(settingOf("--line-pitch 120um", "FG_SHAFTENCODERMODE"), "set FG_SHAFTENCODERMODE=FILTER_X1");
    EXPECT_EQ(settingOf("--line-pitch 120um", "FG_LINE_DOWNSCALE"), "set FG_LINE_DOWNSCALE=3");
    EXPECT_EQ(settingOf("--line-pitch 60um", "FG_SHAFTENCODERMODE"), "set FG_SHAFTENCODERMODE=FILTER_X2");
    EXPECT_EQ(settingOf("--line-rate 2kHz", "FG_LINE_DOWNSCALE"), "set FG_LINE_DOWNSCALE=5");
}

TEST(PlanVerb, APitchThatTheEncoderDoesNotGiveIsTold) {
    EXPECT_THAT(quillon(wordsOf("plan --encoder 40um --speed 100mm/s --line-pitch 52um")).out,
                HasSubstr("Line pitch  50 \u00B5m      at any speed, nearest to 52 \u00B5m\n"));
    const Outcome outcome = quillon(wordsOf("plan --encoder 40um --speed 100mm/s --line-pitch 9um"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "quillon: a line every 9 \u00B5m does not fit: with this encoder it is 10 to 10200 \u00B5m from line to "
              "line\n");
}

TEST(PlanVerb, AFastBeltNeedsShortDebouncing) {
    const Outcome outcome = quillon(wordsOf("plan --encoder 1um --speed 5m/s --line-pitch 255um --exposure 5us"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, ContainsRegex("Debouncing +0\\.112 \u00B5s +of +0\\.1 \u00B5s +does not fit: an "
                                           "FG_LINETRIGGERDEBOUNCING of at most 0\\.1 \u00B5s\n"));
}

TEST(PlanVerb, AValueThatNoOrderMakesAcceptedIsRefused) {
    const Outcome outcome = quillon(wordsOf("plan --width 4095"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("quillon: FG_WIDTH=4095 was refused: -7080 (ValueNotAligned)"));
    EXPECT_THAT(outcome.out, IsEmpty());
    for (const char* words : {"--line-rate 100Hz", "--line-rate 1e12Hz --frames-per-second 5"}) {
        EXPECT_THAT(quillon(wordsOf("plan " + std::string(words))).err,
                    HasSubstr("accepted: 0.512 to 2097.144 \u00B5s"));
    }
}

TEST(PlanVerb, AConfigurationIsReckonedWithAndStaysAsItIs) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_WIDTH=2048", "--save", folder / "a.mcf"}).status, 0);
    const Outcome outcome = quillon(wordsOf("plan --mcf a.mcf --height 100 --save b.mcf"), folder.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("*FG_COL24  614.4 kB a frame"));
    EXPECT_EQ(contentOf(folder / "b.mcf"), contentOf(folder / "a.mcf"));
    const Outcome encoder = quillon({"plan", "--mcf", std::string(QUILLON_EXAMPLES) + "/shaft_encoder_conveyor.mcf"});
    EXPECT_EQ(encoder.status, 2);
    EXPECT_THAT(encoder.err, HasSubstr("the lines come from outside"));
}

TEST(PlanVerb, WishesThatMakeNoSenseAreUsage) {
    for (const char* words :
         {"--height 5 --frames-per-second 5", "--speed 1m/s", "--line-pitch 5um", "--encoder 5um", "--line-rate 0",
          "--line-rate 20apples", "--line-rate=-5", "--exposure x", "--encoder 5us --speed 1m/s", "--width x",
          "--encoder 5um --speed 1m/s --line-rate 1kHz --line-pitch 5um", "--height 1.5", "--format FG_COL23"}) {
        EXPECT_EQ(quillon(wordsOf("plan " + std::string(words))).status, 2) << words;
    }
}

TEST(PlanVerb, TheExamplesOfItsHelpFit) {
    const Folder folder;
    std::istringstream help(quillon({"help", "plan"}).out);
    int tried = 0;
    for (std::string line; std::getline(help, line);) {
        if (line.starts_with("  quillon plan ") && line.find("--mcf") == std::string::npos) {
            const std::vector<std::string> words = wordsOf(line);
            EXPECT_EQ(quillon({words.begin() + 1, words.end()}, folder.path()).status, 0) << line;
            ++tried;
        }
    }
    EXPECT_EQ(tried, 3);
    EXPECT_EQ(quillon({"plan", "--mcf", folder / "web.mcf"}).status, 0);
    EXPECT_THAT(quillon({"check", folder / "belt.mcf"}).out, EndsWith("no complaint\n"));
}

TEST(PlanVerb, AFrameRateAboveTheLineRateDoesNotFit) {
    const Outcome outcome = quillon({"plan", "--frames-per-second", "20kHz"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("at most 5 kHz, a frame of one line each"));
}

TEST(PlanVerb, ALineRateThatTheEncoderMissesIsNoted) {
    const Outcome outcome = quillon({"plan", "--encoder", "40um", "--speed", "500mm/s", "--line-rate", "20kHz"});
    EXPECT_THAT(outcome.out, HasSubstr("Note: the lines come at 25 kHz and not at 20 kHz"));
}

TEST(PlanVerb, IsForTheCameraAndNotForItsSimulator) {
    const Folder folder;
    quillon({"set", "FG_CAMERASIMULATOR_ENABLE=1", "--save", folder / "simulator.mcf"});
    EXPECT_THAT(quillon({"plan", "--mcf", folder / "simulator.mcf"}).out,
                HasSubstr("FG_CAMERASIMULATOR_ENABLE=FG_CAMPORT"));
}

TEST(PlanVerb, FiguresThatNoMachineHasAreRefused) {
    for (const char* speed : {"1e300m/s", "infm/s", "nanm/s", "0m/s"}) {
        EXPECT_EQ(quillon({"plan", "--encoder", "40um", "--speed", speed}).status, 2) << speed;
    }
    EXPECT_NE(quillon({"plan", "--frames-per-second", "1e-9"}).status, 0);
}

}  // namespace
}  // namespace quillon::cli::testing
