#include <gmock/gmock.h>

#include <array>
#include <fstream>
#include <vector>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(SaveVerb, TheStartUpStateIsWritten) {
    const Folder folder;
    EXPECT_EQ(quillon({"save", folder / "state.mcf"}).status, 0);
    EXPECT_THAT(contentOf(folder / "state.mcf"), HasSubstr("FG_WIDTH=1024"));
}

TEST(SaveVerb, AFileThatCannotBeWrittenIsRefused) {
    const Outcome outcome = quillon({"save", "/no/such/folder/state.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("-5001 (FileNotWritten)"));
}

TEST(LoadVerb, ItTellsWhatChanged) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_WIDTH=2048", "--save", folder / "state.mcf"}).status, 0);
    const Outcome outcome = quillon({"load", folder / "state.mcf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("1 values changed"));
    EXPECT_THAT(outcome.out, ContainsRegex("FG_WIDTH +1024 pixel +-> +2048 pixel"));
}

TEST(LoadVerb, AMissingFileIsRefused) {
    const Outcome outcome = quillon({"load", "/no/such/state.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("-2076 (FileNotFound)"));
}

/// The start-up state as a file, with one text in place of another.
std::filesystem::path changedState(const Folder& folder, const std::string& from, const std::string& to) {
    const std::filesystem::path file = folder / "state.mcf";
    quillon({"save", file});
    std::string content = contentOf(file);
    const std::size_t place = content.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    std::ofstream(file, std::ios::binary) << content.replace(place, from.size(), to);
    return file;
}

TEST(CheckVerb, ASavedStateHasNoComplaint) {
    const Folder folder;
    ASSERT_EQ(quillon({"save", folder / "state.mcf"}).status, 0);
    const Outcome outcome = quillon({"check", folder / "state.mcf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, EndsWith("state.mcf: no complaint\n"));
}

TEST(CheckVerb, TheExamplesHaveNoComplaint) {
    for (const char* name : {"free_running_4k.mcf", "shaft_encoder_conveyor.mcf", "camera_simulator_50_frames.mcf"}) {
        const Outcome outcome = quillon({"check", std::filesystem::path(QUILLON_EXAMPLES) / name});
        EXPECT_EQ(outcome.status, 0) << name;
        EXPECT_THAT(outcome.out, EndsWith("no complaint\n"));
    }
}

TEST(CheckVerb, AMissingKeyIsTold) {
    const Folder folder;
    const Outcome outcome = quillon({"check", changedState(folder, "FG_WIDTH=1024;\n", "")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("error: FG_WIDTH: missing; at the start it is 1024 pixel"));
}

TEST(CheckVerb, AKeyThatBlanksHideIsToldWithItsLine) {
    const Folder folder;
    const Outcome outcome = quillon({"check", changedState(folder, "FG_TIMEOUT=", " FG_TIMEOUT =")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("line 11 has it with blanks, which hides it"));
}

TEST(CheckVerb, AValueThatALoadWouldRefuseSilentlyIsToldWithLineAndRange) {
    const Folder folder;
    const std::filesystem::path file = changedState(folder, "FG_LINE_DOWNSCALE=1;", "FG_LINE_DOWNSCALE=0;");
    EXPECT_EQ(quillon({"load", file}).status, 0);
    const Outcome outcome = quillon({"check", file, "--json"});
    EXPECT_EQ(outcome.status, 1);
    const auto complaints = outcome.json()["complaints"];
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_EQ(complaints[0]["key"], "FG_LINE_DOWNSCALE");
    EXPECT_GT(complaints[0]["line"], 11);
    EXPECT_THAT(complaints[0]["text"].get<std::string>(),
                HasSubstr("0 pulses was refused: -6000 (ValueOutOfRange), the value is out of range\n"
                          "  accepted: 1 to 255 pulses"));
    EXPECT_EQ(complaints[0]["value"], 0);
    EXPECT_EQ(complaints[0]["unit"], "pulses");
    EXPECT_EQ(complaints[0]["refused"], nlohmann::json({{"code", -6000},
                                                        {"name", "ValueOutOfRange"},
                                                        {"text", "the value is out of range"},
                                                        {"accepted", "1 to 255 pulses"}}));
}

TEST(CheckVerb, ASimulatorValueThatNoModeAcceptsIsToldOnce) {
    const std::vector<std::array<std::string, 4>> values{
        {"FG_CAMERASIMULATOR_WIDTH", "1024", "0",
         "0 pixel is accepted in no speed mode\n  accepted: 1 to 294920 pixel"},
        {"FG_CAMERASIMULATOR_WIDTH", "1024", "300000", "accepted: 1 to 294920 pixel"},
        {"FG_CAMERASIMULATOR_LINE_GAP", "0", "-1", "accepted: 0 to 294920 pixel"},
        {"FG_CAMERASIMULATOR_HEIGHT", "1024", "0", "accepted: 1 to 65536 pixel"},
        {"FG_CAMERASIMULATOR_HEIGHT", "1024", "70000", "accepted: 1 to 65536 pixel"},
        {"FG_CAMERASIMULATOR_FRAME_GAP", "0", "65536", "accepted: 0 to 65535 pixel"},
        {"FG_CAMERASIMULATOR_LINERATE", "10240.0262145", "nan", "nan Hz is accepted in no speed mode"},
        {"FG_CAMERASIMULATOR_LINERATE", "10240.0262145", "0", "accepted: more than 0"},
        {"FG_CAMERASIMULATOR_FRAMERATE", "10.0000256001", "-1", "accepted: more than 0"},
        {"FG_CAMERASIMULATOR_PIXEL_FREQUENCY", "4000", "1e9", "accepted: 0 to 4000 MHz"}};
    for (const auto& [key, start, value, told] : values) {
        const Folder folder;
        const Outcome outcome =
            quillon({"check", changedState(folder, key + "=" + start + ";", key + "=" + value + ";"), "--json"});
        EXPECT_EQ(outcome.status, 1) << key;
        const auto complaints = outcome.json()["complaints"];
        ASSERT_EQ(complaints.size(), 1U) << outcome.out;
        EXPECT_EQ(complaints[0]["key"], key);
        EXPECT_THAT(complaints[0]["text"].get<std::string>(), HasSubstr(told));
    }
}

TEST(CheckVerb, AValueOfAnotherSpeedModeIsNoError) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_CAMERASIMULATOR_SELECT_MODE=FG_PIXEL_FREQUENCY", "FG_CAMERASIMULATOR_LINE_GAP=64",
                       "FG_CAMERASIMULATOR_FRAME_GAP=5", "FG_CAMERASIMULATOR_SELECT_MODE=FG_FRAMERATE", "--save",
                       folder / "state.mcf"})
                  .status,
              0);
    EXPECT_EQ(quillon({"check", folder / "state.mcf"}).status, 0);
}

TEST(CheckVerb, ANegativeBitShiftIsTold) {
    const Folder folder;
    const Outcome outcome =
        quillon({"check", changedState(folder, "FG_CUSTOM_BIT_SHIFT_RIGHT=0;", "FG_CUSTOM_BIT_SHIFT_RIGHT=-1;")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("error: FG_CUSTOM_BIT_SHIFT_RIGHT: -1 bit was refused"));
}

TEST(CheckVerb, ATextWhereANumberIsExpectedIsTold) {
    const Folder folder;
    const Outcome outcome = quillon({"check", changedState(folder, "FG_WIDTH=1024;", "FG_WIDTH=wide;")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("error: FG_WIDTH: \"wide\" is no whole number"));
}

TEST(CheckVerb, AFileForAnotherAppletIsTold) {
    const Folder folder;
    const Outcome outcome = quillon({"check", changedState(folder, "Typ='Quillon'", "Typ='Other'")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr(":5: error: Typ: the file is for the applet \"Other\", not for \"Quillon\""));
}

TEST(CheckVerb, AnUnknownKeyIsANoteWithTheNearestOne) {
    const Folder folder;
    const Outcome outcome = quillon({"check", changedState(folder, "FG_WIDTH=1024;", "FG_WIDTH=1024;\nFG_WIDHT=7;")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("note: FG_WIDHT: unknown key, not looked at, did you mean FG_WIDTH?"));
}

nlohmann::json complaintsOf(const std::filesystem::path& file) {
    return quillon({"check", file, "--json"}).json()["complaints"];
}

TEST(CheckVerb, OneWrongValueIsToldOnceThoughOthersHangOnIt) {
    const std::vector<std::array<std::string, 3>> values{{"FG_WIDTH", "1024", "20000"},
                                                         {"FG_XOFFSET", "0", "20000"},
                                                         {"FG_IMGTRIGGERMODE", "0", "77"},
                                                         {"FG_IMG_SELECT", "0", "7"},
                                                         {"FG_FORMAT", "2", "99"}};
    for (const auto& [key, start, value] : values) {
        const Folder folder;
        const auto complaints = complaintsOf(changedState(folder, key + "=" + start + ";", key + "=" + value + ";"));
        ASSERT_EQ(complaints.size(), 1U) << complaints;
        EXPECT_EQ(complaints[0]["key"], key);
        EXPECT_THAT(complaints[0]["text"].get<std::string>(), HasSubstr("accepted: "));
        EXPECT_THAT(complaints[0]["text"].get<std::string>(), Not(HasSubstr("42949")));
    }
}

TEST(CheckVerb, TwoWrongValuesAreToldBoth) {
    const Folder folder;
    const std::filesystem::path file = changedState(folder, "FG_LINE_DOWNSCALE=1;", "FG_LINE_DOWNSCALE=0;");
    std::string content = contentOf(file);
    content.replace(content.find("FG_WIDTH=1024"), 13, "FG_WIDTH=1022");
    std::ofstream(file, std::ios::binary) << content;
    const auto complaints = complaintsOf(file);
    ASSERT_EQ(complaints.size(), 2U) << complaints;
    EXPECT_EQ(complaints[0]["key"], "FG_WIDTH");
    EXPECT_EQ(complaints[1]["key"], "FG_LINE_DOWNSCALE");
}

TEST(CheckVerb, WhatALoadChangesWithoutRefusingIsANote) {
    const std::vector<std::array<std::string, 4>> values{
        {"FG_CAMERASIMULATOR_WIDTH", "1024", "2048", "2048 pixel becomes 1024 pixel: a load does not change the width"},
        {"FG_CAMERASIMULATOR_LINERATE", "10240.0262145", "5e6", " Hz becomes 3787878.78788 Hz"},
        {"FG_VANTAGEPOINT", "0", "1", "FG_VANTAGEPOINT_TOP_RIGHT (1) is read back, but the design does not mirror"}};
    for (const auto& [key, start, value, told] : values) {
        const Folder folder;
        const std::filesystem::path file = changedState(folder, key + "=" + start + ";", key + "=" + value + ";");
        EXPECT_EQ(quillon({"check", file}).status, 0);
        const auto complaints = complaintsOf(file);
        ASSERT_EQ(complaints.size(), 1U) << complaints;
        EXPECT_EQ(complaints[0]["key"], key);
        EXPECT_EQ(complaints[0]["kind"], "note");
        EXPECT_THAT(complaints[0]["text"].get<std::string>(), HasSubstr(told));
    }
}

TEST(CheckVerb, AFrameRateThatALoadGivesUpIsANote) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_CAMERASIMULATOR_SELECT_MODE=FG_FRAMERATE", "FG_CAMERASIMULATOR_FRAMERATE=64",
                       "--save", folder / "state.mcf"})
                  .status,
              0);
    const auto complaints = complaintsOf(folder / "state.mcf");
    ASSERT_EQ(complaints.size(), 1U) << complaints;
    EXPECT_EQ(complaints[0]["key"], "FG_CAMERASIMULATOR_FRAMERATE");
    EXPECT_THAT(complaints[0]["text"].get<std::string>(), HasSubstr("a load goes on with the rate of before"));
}

TEST(CheckVerb, CarriageReturnsAreTold) {
    const Folder folder;
    const std::filesystem::path file = folder / "state.mcf";
    quillon({"save", file});
    std::string content = contentOf(file);
    for (std::size_t at = content.find('\n'); at != std::string::npos; at = content.find('\n', at + 2)) {
        content.insert(at, "\r");
    }
    std::ofstream(file, std::ios::binary) << content;
    EXPECT_EQ(quillon({"load", file}).status, 1);
    const Outcome outcome = quillon({"check", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("error: the lines end in CR LF"));
}

TEST(CheckVerb, TheTableFileThatAConfigurationNamesIsLookedAt) {
    const Folder folder;
    ASSERT_EQ(quillon({"lut", "--save", folder / "linear.lut"}).status, 0);
    ASSERT_EQ(
        quillon({"set", "FG_LUT_TYPE=LUT_TYPE_CUSTOM", "FG_LUT_CUSTOM_FILE=linear.lut", "--save", folder / "state.mcf"},
                folder.path())
            .status,
        0);
    const Outcome relative = quillon({"check", "state.mcf"}, folder.path());
    EXPECT_EQ(relative.status, 0);
    EXPECT_THAT(relative.out, HasSubstr("note: FG_LUT_CUSTOM_FILE: \"linear.lut\" is looked for in the folder that"));

    const auto errorOf = [&] {
        const Outcome outcome = quillon({"check", "state.mcf", "--json"}, folder.path());
        EXPECT_EQ(outcome.status, 1);
        std::string texts;
        const auto json = outcome.json();
        for (const auto& complaint : json["complaints"]) {
            texts += complaint["kind"] == "error" ? complaint["text"].get<std::string>() : "";
        }
        return texts;
    };
    std::ofstream(folder / "linear.lut") << "no table\n";
    EXPECT_THAT(errorOf(), HasSubstr("\"linear.lut\": it is no lookup table"));
    std::filesystem::remove(folder / "linear.lut");
    EXPECT_EQ(errorOf(), "\"linear.lut\": it cannot be read");
}

TEST(CheckVerb, AMissingFileIsRefused) {
    const Outcome outcome = quillon({"check", "/no/such/state.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("/no/such/state.mcf cannot be read"));
}

TEST(CheckVerb, WhatIsNoConfigurationIsToldOnce) {
    const Folder folder;
    std::ofstream(folder / "empty.mcf") << "";
    const Outcome outcome = quillon({"check", folder / "empty.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("it is no configuration of this applet"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("missing; at the start")));
}

TEST(CheckVerb, AFileHasPlainNumbers) {
    const Folder folder;
    const std::vector<std::pair<std::string, std::string>> values{{"FG_LINEPERIODE=200;", "FG_LINEPERIODE=1ms;"},
                                                                  {"FG_WIDTH=1024;", "FG_WIDTH=0x800;"}};
    for (const auto& [from, to] : values) {
        const auto complaints = quillon({"check", changedState(folder, from, to), "--json"}).json()["complaints"];
        ASSERT_FALSE(complaints.empty()) << to;
        EXPECT_THAT(complaints[0]["text"].get<std::string>(), HasSubstr(": a file has plain decimal numbers")) << to;
    }
}

TEST(LoadedFiles, TellOnTheErrorOutputWhatALoadKeepsSilentAbout) {
    const Folder folder;
    const std::filesystem::path file = changedState(folder, "FG_LINE_DOWNSCALE=1;", "FG_LINE_DOWNSCALE=0;");
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"load", file}, std::vector<std::string>{"get", "FG_WIDTH", "--mcf", file}}) {
        const Outcome outcome = quillon(words);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.err, ContainsRegex("^[^\n]*state.mcf:[0-9]+: error: FG_LINE_DOWNSCALE: 0 pulses was "
                                               "refused: -6000[^\n]*\n(The board ends [^\n]*\n)?$"));
        std::vector<std::string> quiet = words;
        quiet.push_back("--quiet");
        EXPECT_EQ(quillon(quiet).err, "");
        EXPECT_EQ(quillon(quiet).out, outcome.out);
        std::vector<std::string> strict = words;
        strict.push_back("--strict");
        const Outcome refused = quillon(strict);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_THAT(refused.err, HasSubstr("state.mcf was not loaded: --strict, and errors in it: 1"));
    }
}

TEST(LoadedFiles, NotesAreToldAndDoNotHinderAStrictLoad) {
    const Folder folder;
    const std::filesystem::path file =
        changedState(folder, "FG_CAMERASIMULATOR_WIDTH=1024;", "FG_CAMERASIMULATOR_WIDTH=2048;");
    const Outcome outcome = quillon({"load", file, "--strict"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("note: FG_CAMERASIMULATOR_WIDTH: 2048 pixel becomes 1024 pixel"));
}

TEST(LoadedFiles, ASoundFileIsLoadedWithoutAWord) {
    const Folder folder;
    ASSERT_EQ(quillon({"save", folder / "state.mcf"}).status, 0);
    EXPECT_EQ(quillon({"get", "FG_WIDTH", "--mcf", folder / "state.mcf", "--strict"}).err, "");
}

TEST(SavedFiles, WhatAConfigurationDoesNotKeepIsTold) {
    const Folder folder;
    const Outcome outcome =
        quillon({"set", "FG_LINEORDER=FG_LINEORDER_BGR", "FG_WIDTH=2048", "--save", folder / "a.mcf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, (folder / "a.mcf").string() + " does not keep FG_LINEORDER = FG_LINEORDER_BGR (1)\n");
    EXPECT_EQ(quillon({"set", "FG_WIDTH=2048", "--save", folder / "a.mcf"}).err, "");
    EXPECT_EQ(quillon({"set", "FG_LINEORDER=FG_LINEORDER_BGR", "--save", folder / "a.mcf", "--quiet"}).err, "");
    EXPECT_EQ(quillon({"save", folder / "b.mcf", "--mcf", folder / "a.mcf"}).err, "");
}

TEST(DiffVerb, TwoFilesAreComparedInWords) {
    const Folder folder;
    ASSERT_EQ(quillon({"save", folder / "a.mcf"}).status, 0);
    ASSERT_EQ(quillon({"set", "FG_WIDTH=2048", "FG_LUT_ENABLE=FG_ON", "--save", folder / "b.mcf"}).status, 0);
    const Outcome outcome = quillon({"diff", folder / "a.mcf", folder / "b.mcf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("FG_WIDTH +1024 pixel +2048 pixel\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("FG_LUT_ENABLE +FG_OFF \\(0\\) +FG_ON \\(1\\)\n"));
}

TEST(DiffVerb, AFileIsComparedWithTheLiveState) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_WIDTH=2048", "--save", folder / "a.mcf"}).status, 0);
    const auto json = quillon({"diff", folder / "a.mcf", "--json"}).json();
    ASSERT_EQ(json.size(), 1U);
    EXPECT_EQ(json[0], nlohmann::json({{"name", "FG_WIDTH"},
                                       {"first", {{"value", 2048}, {"unit", "pixel"}}},
                                       {"second", {{"value", 1024}, {"unit", "pixel"}}}}));
}

TEST(DiffVerb, EqualStatesHaveNoDifference) {
    const Folder folder;
    ASSERT_EQ(quillon({"save", folder / "a.mcf"}).status, 0);
    EXPECT_EQ(quillon({"diff", folder / "a.mcf"}).out, "no difference\n");
}

TEST(CarriedState, OneCommandLoadsChangesAndSaves) {
    const Folder folder;
    ASSERT_EQ(quillon({"set", "FG_WIDTH=2048", "--save", folder / "a.mcf"}).status, 0);
    ASSERT_EQ(quillon({"set", "FG_HEIGHT=512", "--mcf", folder / "a.mcf", "--save", folder / "b.mcf"}).status, 0);
    EXPECT_EQ(quillon({"get", "FG_WIDTH", "FG_HEIGHT", "--mcf", folder / "b.mcf"}).out,
              "FG_WIDTH = 2048 pixel\nFG_HEIGHT = 512 pixel\n");
}

TEST(CarriedState, ARefusedCommandSavesNothing) {
    const Folder folder;
    EXPECT_EQ(quillon({"set", "FG_WIDTH=6", "--save", folder / "a.mcf"}).status, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "a.mcf"));
}

TEST(CarriedState, FilesAreSeenFromWhereTheCommandRuns) {
    const Folder folder;
    ASSERT_EQ(quillon({"save", "state.mcf"}, folder.path()).status, 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "state.mcf"));
}

}  // namespace
}  // namespace quillon::cli::testing
