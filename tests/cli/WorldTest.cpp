// What stands in front of the camera and what goes wrong, through the command.

#include <gmock/gmock.h>

#include <fstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

using Words = std::vector<std::string>;

/// `grab` of frames of 32 x 16 pixels of the camera, with these words behind it.
Outcome grabSmall(Words words) {
    words.insert(words.begin(),
                 {"grab", "--set", "FG_WIDTH=32", "--set", "FG_HEIGHT=16", "--set", "FG_LUT_ENABLE=FG_OFF"});
    return quillon(words);
}

/// Lines at the encoder's pulses, at the inputs of the start: track A at GPI 1, B at GPI 2, the image trigger at GPI 0.
const Words byEncoder{"--set", "FG_LINETRIGGERMODE=ASYNC_TRIGGER", "--set", "FG_SHAFTENCODERON=FG_ON"};

Words operator+(Words one, const Words& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

/// The first component of each line of a PPM file with 32 pixels of 8 bits a line.
std::vector<unsigned> reds(const std::filesystem::path& file) {
    const std::string content = contentOf(file);
    constexpr std::size_t lineBytes = 3U * 32;
    std::vector<unsigned> values;
    for (std::size_t place = std::string("P6\n32 16\n255\n").size(); place < content.size(); place += lineBytes) {
        values.push_back(static_cast<unsigned char>(content[place]));
    }
    return values;
}

Outcome script(const Folder& folder, const std::string& lines, const Words& words = {}) {
    std::ofstream(folder / "script") << lines;
    return quillon(Words{"run", "--keep-going", "script"} + words, folder.path());
}

TEST(GrabbedScene, APatternIsInTheFile) {
    const Folder folder;
    EXPECT_EQ(grabSmall({"--scene", "grey:77", "-o", folder / "out.ppm"}).status, 0);
    EXPECT_THAT(reds(folder / "out.ppm"), Each(77U));
}

TEST(GrabbedScene, APictureLiesOnTheBelt) {
    const Folder folder;
    std::ofstream(folder / "part.pgm") << "P2 1 4 255\n10 20 30 40\n";
    EXPECT_EQ(grabSmall({"--scene", folder / "part.pgm", "--tile", "-o", folder / "out.ppm"}).status, 0);
    EXPECT_THAT(reds(folder / "out.ppm"), ElementsAre(10, 20, 30, 40, 10, 20, 30, 40, 10, 20, 30, 40, 10, 20, 30, 40));
    EXPECT_EQ(grabSmall({"--scene", folder / "part.pgm", "-o", folder / "out.ppm"}).status, 0);
    EXPECT_THAT(reds(folder / "out.ppm"), ElementsAre(10, 20, 30, 40, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(GrabbedScene, AMissingOrTornPictureIsRefused) {
    const Folder folder;
    const Outcome missing = grabSmall({"--scene", folder / "none.png"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.err, HasSubstr((folder / "none.png").string() + ": "));
    std::ofstream(folder / "torn.pgm") << "P2 1 4 255\n10 20";
    EXPECT_EQ(grabSmall({"--scene", folder / "torn.pgm"}).status, 1);
    const auto json = grabSmall({"--scene", folder / "torn.pgm", "--json"}).json();
    EXPECT_EQ(json["refused"]["code"], -9011);
}

TEST(GrabbedScene, LightMakesItBrightOrDark) {
    const Folder folder;
    EXPECT_EQ(grabSmall({"--scene", "grey:200", "--light", "reference=40us", "--set", "FG_LINEEXPOSURE=20us", "-o",
                         folder / "out.ppm"})
                  .status,
              0);
    EXPECT_THAT(reds(folder / "out.ppm"), Each(100U));
}

TEST(GrabbedScene, WrongWordsAreUsage) {
    for (const Words& words :
         {Words{"--scene", "bras"}, Words{"--tile"}, Words{"--scale", "1/mm"}, Words{"--light", "flash"},
          Words{"--belt", "500"}, Words{"--encoder", "10/mm"}, Words{"--barrier", "1mm:2mm"}, Words{"--fault", "line"},
          Words{"--dma-rate", "1"}, Words{"--belt", "-"}, Words{"--belt", "1mm/s", "--encoder", "10/mm@0,0"},
          Words{"--belt", "1mm/s", "--encoder", "10/mm@0,1", "--barrier", "1mm:2mm@1"},
          Words{"--belt", "1mm/s", "--barrier", "1mm:2mm@1", "--barrier", "5mm:6mm@1"},
          Words{"--belt", "1mm/s", "--barrier", "1mm:2mm", "--set", "FG_IMGTRIGGERINSRC=TRGINSOFTWARE"}}) {
        EXPECT_EQ(grabSmall(words).status, 2) << words.back();
    }
    EXPECT_THAT(grabSmall({"--belt", "500"}).err, HasSubstr("--belt 500: \"500\" is no speed: it is written with its "
                                                            "unit, as 500mm/s"));
    EXPECT_THAT(grabSmall({"--belt", "1mm/s", "--encoder", "10/mm@3,3"}).err,
                HasSubstr("track B of the encoder is at GPI 3, where track A of the encoder is"));
}

TEST(GrabbedScene, WhatTheBoardDoesNotTakeIsRefused) {
    const Outcome outcome = grabSmall(Words{"--belt", "1000000m/s", "--encoder", "100000/mm"} + byEncoder);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("quillon: the belt: "));
}

TEST(GrabbedBelt, TheEncoderMakesTheLines) {
    const Folder folder;
    std::ofstream(folder / "part.pgm") << "P2 1 16 255\n0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n";
    // One line a millimetre, whatever the belt does.
    for (const char* profile : {"100mm/s", "100mm/s:50ms,1m/s", "-2mm/s:1ms,30m/min"}) {
        const Outcome outcome = grabSmall(Words{"--scene", folder / "part.pgm", "--tile", "--scale", "1/mm", "--belt",
                                                profile, "--encoder", "1/mm", "-o", folder / "out.ppm"} +
                                          byEncoder);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const std::vector<unsigned> values = reds(folder / "out.ppm");
        ASSERT_EQ(values.size(), 16U) << profile;
        for (std::size_t i = 1; i < values.size(); ++i) {
            EXPECT_EQ(values[i], (values[i - 1] + 1) % 16) << profile << ", line " << i;
        }
    }
}

TEST(GrabbedBelt, TheBarrierBeginsImages) {
    const Words words =
        Words{"-n",        "2",    "--json",    "--each",          "--belt", "100mm/s",
              "--encoder", "1/mm", "--barrier", "20mm:30mm:100mm", "--set",  "FG_IMGTRIGGERMODE=ASYNC_TRIGGER"} +
        byEncoder;
    const Outcome outcome = grabSmall(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::vector<double> times;
    for (std::string line; std::getline(lines, line);) {
        const auto json = nlohmann::json::parse(line);
        if (json.contains("frame")) {
            times.push_back(json["firstTick"].get<double>() / 125e3);
        }
    }
    ASSERT_EQ(times.size(), 2U);
    EXPECT_NEAR(times[0], 200, 20) << "ms: 20 mm at 100 mm/s";
    EXPECT_NEAR(times[1] - times[0], 1000, 1);
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST(GrabHints, TellWhatParametersKeepFromWorking) {
    const Outcome outcome = grabSmall({"--belt", "100mm/s", "--encoder", "10/mm@3,4", "--barrier", "1mm:2mm@5"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    for (const char* assignment : {"FG_LINETRIGGERMODE=ASYNC_TRIGGER", "FG_LINETRIGGERINSRC=TRGINSRC_GPI_3",
                                   "FG_SHAFTENCODERON=FG_ON", "FG_SHAFTENCODERINSRC=TRGINSRC_GPI_4",
                                   "FG_IMGTRIGGERMODE=ASYNC_TRIGGER", "FG_IMGTRIGGERINSRC=TRGINSRC_GPI_5"}) {
        EXPECT_THAT(outcome.err, HasSubstr(std::string("; --set ") + assignment + " would change that\n"));
    }
    EXPECT_THAT(outcome.err, StartsWith("hint: FG_LINETRIGGERMODE is GRABBER_CONTROLLED: lines come with the period"));
    const Outcome simulated = grabSmall({"--scene", "grey", "--light", "flash=2", "--set", "FG_FLASHON=FG_OFF", "--set",
                                         "FG_CAMERASIMULATOR_ENABLE=FG_CAMERASIMULATOR"});
    EXPECT_THAT(simulated.err,
                AllOf(HasSubstr("--set FG_CAMERASIMULATOR_ENABLE=FG_CAMPORT"), HasSubstr("--set FG_FLASHON=FG_ON")));
}

TEST(GrabHints, AnEncoderThatFitsHasNone) {
    const Outcome outcome = grabSmall(Words{"--belt", "100mm/s", "--encoder", "10/mm"} + byEncoder);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST(GrabbedFaults, AreCountedAndNamed) {
    const Outcome outcome = grabSmall({"-n", "3", "--json", "--each", "--fault", "line:3:drop", "--fault",
                                       "frame:2:lose", "--fault", "line:every:invert"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(nlohmann::json::parse(line)["flags"], nlohmann::json({"faulty"}));
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(nlohmann::json::parse(line)["lostBefore"], 1);
    nlohmann::json all;
    while (std::getline(lines, line)) {
        all = nlohmann::json::parse(line);
    }
    EXPECT_EQ(all["frames"], 3);
    EXPECT_EQ(all["lost"], 1);
    EXPECT_GE(all["lostLines"], 1);
    EXPECT_GE(all["faults"], 3);
    EXPECT_EQ(all["overflow"], false);
}

TEST(GrabbedFaults, AreToldInWords) {
    const Outcome outcome = grabSmall({"--fault", "line:3:drop"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr(", 0 lost, 1 line lost, 1 fault struck\n"));
}

TEST(GrabbedFaults, ACameraThatIsGoneIsTheReason) {
    const Outcome outcome = grabSmall({"--fault", "camera:0s-", "--timeout", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("\n  FG_CAMSTATUS is 0: there is no camera"));
}

TEST(GrabbedFaults, ALinkThatIsDownIsTheReason) {
    const Outcome outcome = grabSmall({"--fault", "link:0s-", "--timeout", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("\n  FG_SYSTEMMONITOR_CURRENT_LINK_WIDTH is 0: the link to the host is down"));
}

TEST(GrabbedBelt, OneThatStandsOrIsSlowIsTheReason) {
    const Outcome stands =
        grabSmall(Words{"--belt", "100mm/s:20ms", "--encoder", "1/mm", "--timeout", "1"} + byEncoder);
    EXPECT_EQ(stands.status, 1);
    EXPECT_THAT(stands.err, HasSubstr("\n  the belt stands at 2 mm: its encoder gives no pulses\n"));
    const Outcome slow = grabSmall(Words{"--belt", "2mm/s", "--encoder", "1/mm", "--timeout", "1"} + byEncoder);
    EXPECT_EQ(slow.status, 1);
    EXPECT_THAT(slow.err, HasSubstr("runs at 2 mm/s: its encoder makes 2 lines a second, so that FG_HEIGHT lines take "
                                    "8 s"));
    const Outcome back = grabSmall(Words{"--belt", "-2mm/s", "--encoder", "1/mm", "--timeout", "1"} + byEncoder);
    EXPECT_THAT(back.err, HasSubstr("\n  the belt runs back at -2 mm, at -2 mm/s\n"));
}

TEST(GrabbedScene, AnEnabledDebugInputIsTheReason) {
    const Outcome outcome = grabSmall({"--set", "FG_DEBUGINENABLE=FG_ON", "--timeout", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("\n  FG_DEBUGINENABLE is FG_ON: the path takes what is inserted"));
}

TEST(GrabbedScene, APictureThatCannotBeInsertedIsTheReason) {
    const Folder folder;
    std::ofstream(folder / "torn.pgm") << "P2 1 4 255\n10 20";
    const std::string file = "FG_DEBUGFILE=" + (folder / "torn.pgm").string();
    const Outcome torn = grabSmall(
        {"--timeout", "1", "--set", "FG_DEBUGINENABLE=FG_ON", "--set", file, "--set", "FG_DEBUGINSERT=FG_APPLY"});
    EXPECT_EQ(torn.status, 1);
    EXPECT_THAT(torn.err, HasSubstr("\n  debug point \"Camera Input\": " + (folder / "torn.pgm").string() + ": "));
    const Outcome off = grabSmall(
        {"--timeout", "1", "--set", file, "--set", "FG_DEBUGINSERT=FG_APPLY", "--set", "FG_DEBUGINENABLE=FG_ON"});
    EXPECT_EQ(off.status, 1);
    EXPECT_THAT(off.err, HasSubstr("\n  debug point \"Camera Input\": its input is switched off\n"));
}

TEST(SceneVerb, WhatItSetsStaysForTheSession) {
    const Folder folder;
    const Outcome outcome = script(folder,
                                   "set FG_WIDTH=32 FG_HEIGHT=16 FG_LINEEXPOSURE=20us FG_FLASHON=FG_OFF\n"
                                   "scene grey:200\ngrab -o a.ppm\n"
                                   "set FG_LINEEXPOSURE=10us\nscene --light reference=40us\nundo\ngrab -o b.ppm\n");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("the camera sees grey:200\n"), HasSubstr("the light is set\n")));
    EXPECT_THAT(reds(folder / "a.ppm"), Each(200U));
    EXPECT_THAT(reds(folder / "b.ppm"), Each(100U)) << "undo brings the exposure back, and leaves the light";
}

TEST(SceneVerb, ACommandTellsThatTheBoardEndsWithIt) {
    const Outcome outcome = quillon({"scene", "bars"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "the camera sees bars\n");
    EXPECT_THAT(outcome.err, HasSubstr("The board ends with this command"));
    EXPECT_EQ(quillon({"scene"}).status, 2);
    const Outcome wrong = quillon({"scene", "bras"});
    EXPECT_EQ(wrong.status, 2);
    EXPECT_THAT(wrong.err, StartsWith("quillon: scene bras: it is no scene"));
}

TEST(BeltVerb, ItTellsWhereItIs) {
    const Folder folder;
    const Outcome outcome = script(folder,
                                   "belt\nbelt 500mm/s:20ms,-200mm/s\nadvance 20ms\nbelt\nadvance 10ms\nbelt\n"
                                   "belt --off\n");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("there is no belt: the scene moves by a pixel with every line\n"
                                        "the belt is at 0 mm and runs at 500 mm/s"));
    EXPECT_THAT(outcome.out, HasSubstr("\nthe belt is at 10 mm and runs at -200 mm/s"));
    EXPECT_THAT(outcome.out, HasSubstr("\nthe belt is at 8 mm and runs at -200 mm/s"));
    EXPECT_THAT(outcome.out, ::testing::EndsWith("there is no belt: the scene moves by a pixel with every line\n"));
}

TEST(BeltVerb, ItsEncoderDrivesInputsAndItTellsHints) {
    const Folder folder;
    const Outcome outcome = script(folder, "belt 1m/s --encoder 1/mm --barrier 5mm:10mm\nadvance 7500us\n", {"--json"});
    EXPECT_THAT(outcome.err, HasSubstr("; set FG_LINETRIGGERMODE=ASYNC_TRIGGER would change that\n"));
    std::istringstream lines(outcome.out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(nlohmann::json::parse(line)["speed"], nlohmann::json({{"value", 1000}, {"unit", "mm/s"}}));
    std::getline(lines, line);
    const auto events = nlohmann::json::parse(line)["events"];
    const auto count = [&](const std::string& name) {
        for (const auto& event : events) {
            if (event["name"] == name) {
                return event["count"].get<int>();
            }
        }
        return 0;
    };
    EXPECT_EQ(count("FG_TRIGGER_INPUT1_RISING"), 8) << "at 0 mm to 7 mm";
    EXPECT_EQ(count("FG_TRIGGER_INPUT0_RISING"), 1);
}

TEST(BeltVerb, WrongWordsAreUsage) {
    EXPECT_EQ(quillon({"belt", "500"}).status, 2);
    EXPECT_THAT(quillon({"belt", "500"}).err, StartsWith("quillon: belt 500: \"500\" is no speed"));
    EXPECT_EQ(quillon({"belt", "--encoder", "10/mm"}).status, 2);
    EXPECT_EQ(quillon({"belt", "--off", "1mm/s"}).status, 2);
    EXPECT_EQ(quillon({"belt", "-1mm/s"}).status, 0);
}

TEST(FaultVerb, WhatIsPlannedIsTold) {
    const Outcome outcome = quillon({"fault", "line:3:drop", "camera:10ms-30ms", "--dma-rate", "1MB/s"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out,
              "planned: line 3 does not arrive\nplanned: the camera is gone from 10 ms to 30 ms\n"
              "at most 1000000 bytes reach the host in a second\n");
    EXPECT_EQ(quillon({"fault"}).status, 2);
    EXPECT_EQ(quillon({"fault", "line:3"}).status, 2);
    EXPECT_TRUE(quillon({"fault", "--dma-rate", "unlimited", "--json"}).json()["dmaRate"]["value"].is_null());
}

TEST(FaultVerb, WhatIsClearedDoesNotStrike) {
    const Folder folder;
    const std::string grab = "grab --set FG_WIDTH=32 --set FG_HEIGHT=16 --json\n";
    const Outcome outcome = script(
        folder, "fault line:3:drop\n" + grab + "fault line:3:drop camera:0s-\nfault --clear\n" + grab, {"--json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::istringstream lines(outcome.out);
    std::vector<nlohmann::json> answers;
    for (std::string line; std::getline(lines, line);) {
        answers.push_back(nlohmann::json::parse(line));
    }
    ASSERT_EQ(answers.size(), 5U);
    EXPECT_EQ(answers[1]["lostLines"], 1);
    EXPECT_EQ(answers[3]["cleared"], true);
    EXPECT_EQ(answers[4]["lostLines"], 0);
    EXPECT_EQ(answers[4]["faults"], 0);
}

}  // namespace
}  // namespace quillon::cli::testing
