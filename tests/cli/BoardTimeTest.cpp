#include <gmock/gmock.h>

#include <fstream>

#include "tests/cli/Command.h"

// The software board's time, as the command sees it.

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

/// The lines in one session.
Outcome script(const std::string& lines) {
    const Folder folder;
    std::ofstream(folder / "tune.txt") << lines;
    return quillon({"run", folder / "tune.txt"});
}

TEST(BoardTime, PassesAndBringsEvents) {
    const auto json = nlohmann::json::parse(script("advance 1ms --json").out);
    EXPECT_EQ(json["time"]["value"], 1000);
    EXPECT_EQ(json["time"]["unit"], "\u00B5s");
    EXPECT_EQ(json["passed"]["value"], 1000);
    EXPECT_EQ(json["events"][0]["name"], "FG_START_OF_FRAME_CAM_PORT_0");
    EXPECT_EQ(json["events"][0]["count"], 1);
    EXPECT_THAT(script("advance 1ms").out, StartsWith("1 ms of the board's time, 1 ms more\n"));
}

TEST(BoardTime, ShowsInStatusIoAndTheAnalyzers) {
    const std::string lines =
        "set FG_LINEPERIODE=200us FG_SIGNAL_ANALYZER_0_SOURCE=FG_SIGNAL_CAM0_EXSYNC\nadvance 1.01ms\n";
    EXPECT_THAT(script(lines + "status").out, HasSubstr("1.01 ms of its time have passed"));
    EXPECT_THAT(script(lines + "io").out, ContainsRegex("FG_SIGNAL_CAM0_EXSYNC +-+ +> Camera trigger +high"));
    EXPECT_THAT(script(lines + "advance 100us\nio").out,
                ContainsRegex("FG_SIGNAL_CAM0_EXSYNC +-+ +> Camera trigger +low"));
    EXPECT_THAT(script(lines + "trigger").out,
                HasSubstr("Now, at 1.01 ms of the board's time: ExSync high, ExSync2 high, Flash low, LVAL low, FVAL "
                          "high, and 4 lines of 1 frame have begun.\n"));
    EXPECT_THAT(quillon({"trigger"}).out, Not(HasSubstr("Now, at")));
    EXPECT_THAT(script(lines + "get FG_SIGNAL_ANALYZER_0_PULSE_COUNT").out,
                HasSubstr("\nFG_SIGNAL_ANALYZER_0_PULSE_COUNT = 5"));
}

TEST(BoardTime, MayBeLongerThanABoardIsAskedForAtOnce) {
    EXPECT_THAT(script("set FG_EXSYNCON=FG_OFF\nadvance 90s").out, HasSubstr("90 s of the board's time, 90 s more\n"));
}

TEST(BoardTime, NeedsAUnit) {
    EXPECT_EQ(script("advance 5").status, 2);
    EXPECT_THAT(script("advance 5").err, HasSubstr("it is written with its unit"));
    EXPECT_EQ(script("advance -5ms").status, 2);
    EXPECT_EQ(script("advance 1e9s").status, 2);
}

TEST(InputVerb, RaisesTheEventsOfItsEdges) {
    const Outcome outcome = script("input 0=1 front2=high GPI_7=on\ninput 0=0\nio");
    EXPECT_THAT(outcome.out, HasSubstr("FG_TRIGGER_INPUT0_RISING"));
    EXPECT_THAT(outcome.out, HasSubstr("FG_TRIGGER_FRONT_GPI2_RISING"));
    EXPECT_THAT(outcome.out, HasSubstr("FG_TRIGGER_INPUT0_FALLING"));
    EXPECT_THAT(outcome.out, ContainsRegex("Front GPI 2 +--\\[1\\]--> +high"));
    EXPECT_THAT(outcome.out, ContainsRegex("GPI 0 +--\\[0\\]--> +low"));
}

TEST(InputVerb, RefusesWhatIsNoInputOrNoLevel) {
    for (const char* word : {"12=1", "gpi8=1", "front4=1", "x=1", "0=2", "0=", "0"}) {
        EXPECT_EQ(quillon({"input", word}).status, 2) << word;
    }
}

TEST(WaitVerb, StopsAtTheEvent) {
    const auto json = nlohmann::json::parse(script("wait FG_START_OF_LINE_CAM_PORT_0 --json").out);
    EXPECT_EQ(json["came"], true);
    EXPECT_LT(json["time"]["value"], 400);
    const auto twice = script("wait FG_START_OF_LINE_CAM_PORT_0\nwait FG_START_OF_LINE_CAM_PORT_0");
    EXPECT_THAT(twice.out, HasSubstr("of the board's time, 200 \u00B5s more\n  FG_START_OF_LINE_CAM_PORT_0"));
}

TEST(WaitVerb, SaysWhenTheEventDidNotCome) {
    const Outcome outcome = script("wait FG_TRIGGER_INPUT0_RISING --within 2ms");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("FG_TRIGGER_INPUT0_RISING did not come within 2 ms of the board's time"));
}

TEST(WaitVerb, KnowsTheEvents) {
    EXPECT_EQ(quillon({"wait", "FG_END_OF_FRAME"}).status, 2);
    EXPECT_THAT(quillon({"wait", "FG_END_OF_FRAME_CAM_PORT"}).err,
                HasSubstr("did you mean FG_END_OF_FRAME_CAM_PORT_0"));
    EXPECT_EQ(quillon({"wait", "FG_END_OF_FRAME_CAM_PORT_0", "--within", "2000s"}).status, 2);
}

TEST(SoftwareBoard, IsToldByInfoAndStatus) {
    EXPECT_THAT(quillon({"info"}).out, HasSubstr("software board"));
    EXPECT_THAT(quillon({"status"}).out, HasSubstr("software board"));
    EXPECT_EQ(quillon({"info", "--json"}).json()["board"], "software board");
    EXPECT_EQ(quillon({"status", "--json"}).json()["board"], "software board");
}

TEST(BoardTime, OfASingleCommandIsLost) {
    EXPECT_THAT(quillon({"advance", "1ms"}).err, StartsWith("The board ends with this command"));
}

}  // namespace
}  // namespace quillon::cli::testing
