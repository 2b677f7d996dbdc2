#include <gmock/gmock.h>

#include <fstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// A state that differs from that of the start, with one text in place of another.
std::filesystem::path stateWith(const Folder& folder, const std::string& from = "", const std::string& to = "") {
    const std::filesystem::path file = folder / "state.mcf";
    EXPECT_EQ(quillon({"set", "FG_WIDTH=2048", "FG_LINEEXPOSURE=20.1", "--save", file}).status, 0);
    std::string content = contentOf(file);
    const std::size_t place = content.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    std::ofstream(file, std::ios::binary) << content.replace(place, from.size(), to);
    return file;
}

TEST(ApplyVerb, ASoundFileIsLoadedAndReadBack) {
    const Folder folder;
    const std::filesystem::path file = stateWith(folder);
    const Outcome outcome = quillon({"apply", file, "--save", folder / "applied.mcf"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "applied " + file.string() + "\n99 of 99 values are held as the file says\n");
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_EQ(contentOf(folder / "applied.mcf"), contentOf(file));
}

TEST(ApplyVerb, TheDesignHoldsWhatWasWritten) {
    for (const char* name : {"free_running_4k.mcf", "shaft_encoder_conveyor.mcf", "camera_simulator_50_frames.mcf"}) {
        const auto file = std::filesystem::path(QUILLON_EXAMPLES) / name;
        const auto json = quillon({"apply", file, "--verify", "--json"}).json();
        EXPECT_EQ(json["applet"]["read"], 99) << name;
        EXPECT_THAT(json["applet"]["deviations"], IsEmpty()) << name << json["applet"];
        EXPECT_GT(json["design"]["read"], 100) << name;
        EXPECT_THAT(json["design"]["deviations"], IsEmpty()) << name << json["design"];
    }
}

TEST(ApplyVerb, ATextOfDigitsIsATextInTheDesign) {
    const Folder folder;
    const std::filesystem::path file = stateWith(folder, "FG_DEBUGFILE='';", "FG_DEBUGFILE='12';");
    EXPECT_THAT(quillon({"apply", file, "--verify", "--json"}).json()["design"]["deviations"], IsEmpty());
}

TEST(ApplyVerb, AFileWithErrorsIsNotLoaded) {
    const Folder folder;
    const std::filesystem::path file = stateWith(folder, "FG_WIDTH=2048;", "FG_WIDTH=2046;");
    const Outcome outcome = quillon({"apply", file, "--save", folder / "applied.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, ContainsRegex("error: FG_WIDTH: 2046 pixel was refused"));
    EXPECT_THAT(outcome.err, HasSubstr("state.mcf was not loaded; errors in it: 1\n"));
    EXPECT_FALSE(std::filesystem::exists(folder / "applied.mcf"));
    EXPECT_THAT(quillon({"apply", file, "--quiet"}).err, StartsWith("quillon: " + file.string() + " was not loaded"));
}

TEST(ApplyVerb, WhatALoadChangesDeviates) {
    const Folder folder;
    const std::filesystem::path file =
        stateWith(folder, "FG_CAMERASIMULATOR_WIDTH=1024;", "FG_CAMERASIMULATOR_WIDTH=2048;");
    const Outcome outcome = quillon({"apply", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out,
                HasSubstr("\nFG_CAMERASIMULATOR_WIDTH: the file says 2048 pixel, the applet holds 1024 pixel\n"
                          "98 of 99 values are held as the file says\n"));
    EXPECT_THAT(outcome.err, HasSubstr(": note: FG_CAMERASIMULATOR_WIDTH: "));
    const auto deviation = quillon({"apply", file, "--json"}).json()["applet"]["deviations"][0];
    EXPECT_EQ(deviation["name"], "FG_CAMERASIMULATOR_WIDTH");
    EXPECT_EQ(deviation["wanted"], (nlohmann::json{{"value", 2048}, {"unit", "pixel"}}));
    EXPECT_EQ(deviation["held"], (nlohmann::json{{"value", 1024}, {"unit", "pixel"}}));
}

TEST(ApplyVerb, AnEndedMirroringDeviatesThoughItReadsBack) {
    const Folder folder;
    const std::filesystem::path file = folder / "state.mcf";
    ASSERT_EQ(quillon({"set", "FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT", "--save", file}).status, 0);
    const Outcome outcome = quillon({"apply", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("FG_VANTAGEPOINT: the file says FG_VANTAGEPOINT_TOP_RIGHT (1), the applet holds "
                                       "that, and the design does not mirror\n"));
}

TEST(ApplyVerb, WhatTheDesignRefusesAndCannotAnswerIsTold) {
    const Folder folder;
    const std::filesystem::path file = stateWith(folder);
    const Outcome outcome = shell(
        "SOFTBOARD_HIDE=Device1_Process0_Debug_CameraInput_DebugFile \"$quillon\" apply --verify " + file.string());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("\nFG_DEBUGFILE: the file says \"\", a read answers -2031 (InternalFailure)\n"
                                       "98 of 99 values are held as the file says\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("\nparameter [-0-9]+: the load wrote , the design answered -9002\n"
                                           "104 of 105 parameters of the design hold what was written\n"));
}

TEST(ApplyVerb, AFileThatIsNotThereIsRefused) {
    const Outcome outcome = quillon({"apply", "/no/such/state.mcf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("/no/such/state.mcf cannot be read"));
}

}  // namespace
}  // namespace quillon::cli::testing
