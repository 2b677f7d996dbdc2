#include <gmock/gmock.h>

#include <fstream>

#include "cli/CommandLines.h"
#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* Lost =
    "The board ends with this command, and so does what it set: --save FILE keeps the parameters, quillon shell the "
    "board.\n";

/// The lines in a session, through a pipe.
Outcome session(const std::string& lines, const std::string& options = "") {
    const Folder folder;
    std::ofstream(folder / "lines") << lines;
    return shell("\"$quillon\" shell " + options + " < lines", folder.path());
}

/// The lines as a script of that name.
Outcome script(const std::string& lines, const std::string& options = "") {
    const Folder folder;
    std::ofstream(folder / "tune.txt") << lines;
    return shell("\"$quillon\" run tune.txt " + options, folder.path());
}

// Lines
// -----------------------------------------------------------------------------------------------------------------

TEST(Line, IsTakenApartAsShellsDo) {
    EXPECT_THAT(splitLine(" set  FG_WIDTH=2048\tFG_HEIGHT=64\r"), ElementsAre("set", "FG_WIDTH=2048", "FG_HEIGHT=64"));
    EXPECT_THAT(splitLine(R"(load "my file.mcf" 'it''s' a\ b "say \"so\"" '')"),
                ElementsAre("load", "my file.mcf", "its", "a b", "say \"so\"", ""));
    EXPECT_THAT(splitLine("get FG_WIDTH # and not #this"), ElementsAre("get", "FG_WIDTH"));
    EXPECT_THAT(splitLine("get a#b '#c'"), ElementsAre("get", "a#b", "#c"));
    EXPECT_THAT(splitLine("   "), IsEmpty());
    EXPECT_THAT(splitLine("# all of it"), IsEmpty());
}

TEST(Line, NeedsTheEndOfAQuote) {
    EXPECT_THROW(splitLine("load \"my file.mcf"), UsageError);
    EXPECT_THROW(splitLine("load 'x"), UsageError);
}

// quillon shell
// -----------------------------------------------------------------------------------------------------------

TEST(SessionShell, HasOneAppletForAllItsLines) {
    const Outcome outcome = session("set FG_WIDTH=2048\nget FG_WIDTH\n\n# a comment\nquillon get FG_WIDTH --json\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("\nFG_WIDTH = 2048 pixel\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\"value\":2048"));
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST(SessionShell, GoesOnBehindARefusedLine) {
    const Outcome outcome = session("set FG_WIDTH=6\nbogus\nget\nload none.mcf\n\"\nget FG_HEIGHT");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("FG_WIDTH=6 was refused: -7080"));
    EXPECT_THAT(outcome.err, HasSubstr("there is no verb \"bogus\""));
    EXPECT_THAT(outcome.err, HasSubstr("none.mcf was not loaded: -2076"));
    EXPECT_THAT(outcome.err, HasSubstr("a quote has no end"));
    EXPECT_EQ(outcome.out, "FG_HEIGHT = 1024 pixel\n");
}

TEST(SessionShell, EndsWithQuitAndWithExit) {
    EXPECT_THAT(session("quit\nget FG_WIDTH\n").out, IsEmpty());
    EXPECT_THAT(session("exit\nget FG_WIDTH\n").out, IsEmpty());
}

TEST(SessionShell, LoadsAndSavesAsTheVerbsDo) {
    const Folder folder;
    quillon({"set", "FG_WIDTH=2048", "--save", folder / "in.mcf"});
    std::ofstream(folder / "lines") << "get FG_WIDTH\nset FG_HEIGHT=512\n";
    const Outcome outcome = shell("\"$quillon\" shell --mcf in.mcf --save out.mcf < lines", folder.path());
    EXPECT_THAT(outcome.out, StartsWith("FG_WIDTH = 2048 pixel\n"));
    EXPECT_THAT(contentOf(folder / "out.mcf"), HasSubstr("FG_WIDTH=2048;"));
    EXPECT_THAT(contentOf(folder / "out.mcf"), HasSubstr("FG_HEIGHT=512;"));
}

TEST(SessionShell, ALineMayLoadAndSaveToo) {
    const Folder folder;
    quillon({"set", "FG_WIDTH=2048", "--save", folder / "in.mcf"});
    const Outcome outcome = session("get FG_WIDTH --mcf " + (folder / "in.mcf").string() +
                                    "\nset FG_HEIGHT=512 --save " + (folder / "out.mcf").string() + "\nget FG_WIDTH");
    EXPECT_THAT(outcome.out, StartsWith("FG_WIDTH = 2048 pixel\n"));
    EXPECT_THAT(outcome.out, EndsWith("FG_WIDTH = 2048 pixel\n"));
    EXPECT_THAT(contentOf(folder / "out.mcf"), HasSubstr("FG_WIDTH=2048;"));
}

TEST(SessionShell, AnswersInJsonALineEach) {
    std::istringstream lines(session("get FG_WIDTH\nset FG_WIDTH=6\nundo\nlist\n", "--json").out);
    int documents = 0;
    for (std::string line; std::getline(lines, line); ++documents) {
        EXPECT_TRUE(nlohmann::json::accept(line)) << line;
    }
    EXPECT_EQ(documents, 4);
}

TEST(SessionShell, WhatTriesAFileLeavesItAsItIs) {
    const Folder folder;
    quillon({"set", "FG_WIDTH=2048", "FG_HEIGHT=64", "--save", folder / "other.mcf"});
    const std::string other = (folder / "other.mcf").string();
    const Outcome outcome =
        session("set FG_WIDTH=512\ncheck " + other + "\ndiff " + other + " " + other + "\nget FG_WIDTH FG_HEIGHT\n");
    EXPECT_THAT(outcome.out, EndsWith("FG_WIDTH = 512 pixel\nFG_HEIGHT = 1024 pixel\n"));
}

TEST(SessionShell, OpensNoOtherWithinIt) {
    EXPECT_THAT(session("shell").err, HasSubstr("a session is open already"));
    EXPECT_THAT(session("get FG_WIDTH --library none.so").err, HasSubstr("--library"));
}

TEST(SessionShell, KnowsRegisters) {
    EXPECT_THAT(session("registers DesignId").out, HasSubstr("DesignId"));
}

TEST(SessionShell, ForgetsAFaultThatNothingMet) {
    EXPECT_THAT(
        session("set FG_HEIGHT=512 --fault Device1_Process0_Trigger_Trigger_ExsyncPeriod=-5\nset FG_LINEPERIODE=100\n")
            .err,
        IsEmpty());
}

TEST(SessionShell, GrabsFramesAndTracesAgain) {
    const Outcome outcome = session("grab\nset FG_LINEPERIODE=20kHz --trace\n");
    EXPECT_THAT(outcome.out, HasSubstr("1 frame, 3145728 bytes"));
    EXPECT_THAT(outcome.out, HasSubstr("Device1_Process0_Trigger_Trigger_ExsyncPeriod  50  ok"));
}

// undo
// ------------------------------------------------------------------------------------------------------------------

TEST(Undo, PutsBackWhatTheLastLineChanged) {
    const Outcome outcome = session("set FG_WIDTH=2048 FG_HEIGHT=64\nget FG_WIDTH\nundo\nget FG_WIDTH FG_HEIGHT\n");
    EXPECT_THAT(outcome.out, HasSubstr("undone: set FG_WIDTH=2048 FG_HEIGHT=64\n"));
    EXPECT_THAT(outcome.out, EndsWith("FG_WIDTH = 1024 pixel\nFG_HEIGHT = 1024 pixel\n"));
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST(Undo, GoesBackAStepEachTime) {
    const Outcome outcome =
        session("set FG_WIDTH=2048\nset FG_WIDTH=512\nundo\nget FG_WIDTH\nundo\nget FG_WIDTH\nundo\nget FG_WIDTH\n");
    EXPECT_THAT(outcome.out,
                HasSubstr("undone: set FG_WIDTH=512\n  FG_WIDTH  512 pixel  ->  2048 pixel\nFG_WIDTH = 2048"));
    EXPECT_THAT(outcome.out, EndsWith("FG_WIDTH = 1024 pixel\nFG_WIDTH = 1024 pixel\n"));
    EXPECT_THAT(outcome.err, HasSubstr("there is nothing to undo"));
}

TEST(Undo, FindsAnOrderThatIsAccepted) {
    // Forwards the period has to grow before the exposure, backwards the exposure has to shrink before the period.
    const Outcome outcome = session(
        "set FG_LINEPERIODE=1000 FG_LINEEXPOSURE=900 FG_LINETRIGGERDELAY=800\n"
        "set FG_IMG_SELECT_PERIOD=9 FG_IMG_SELECT=8\nundo\nundo\n"
        "get FG_LINEPERIODE FG_LINEEXPOSURE FG_LINETRIGGERDELAY FG_IMG_SELECT_PERIOD FG_IMG_SELECT\n");
    EXPECT_THAT(outcome.err, IsEmpty());
    const auto startUp = quillon(
        {"get", "FG_LINEPERIODE", "FG_LINEEXPOSURE", "FG_LINETRIGGERDELAY", "FG_IMG_SELECT_PERIOD", "FG_IMG_SELECT"});
    EXPECT_THAT(outcome.out, EndsWith(startUp.out));
}

TEST(Undo, OfALoadBringsBackEverything) {
    const Outcome outcome = session("save before.mcf\nload " QUILLON_EXAMPLES
                                    "/free_running_4k.mcf\nundo\nsave after.mcf\n"
                                    "diff before.mcf after.mcf\n");
    EXPECT_THAT(outcome.out, EndsWith("no difference\n"));
}

TEST(Undo, OfAnExamplesLoadLeavesTheDesignAsItWas) {
    for (const auto& example : std::filesystem::directory_iterator(QUILLON_EXAMPLES)) {
        if (example.path().extension() == ".mcf") {
            const Outcome outcome = session("save before.mcf\nload " + example.path().string() +
                                            " --quiet\nundo\nsave after.mcf\n"
                                            "diff before.mcf after.mcf\n");
            EXPECT_THAT(outcome.out, EndsWith("no difference\n")) << example.path();
        }
    }
}

TEST(Undo, OfTablesBringsBackTheirEntries) {
    const Outcome outcome = session(
        "set FG_LUT_TYPE=LUT_TYPE_CUSTOM\nset FG_LUT_VALUE_RED[10..12]=7,8,9\nundo\nget FG_LUT_VALUE_RED[10..12]\n");
    EXPECT_THAT(outcome.out, HasSubstr("FG_LUT_VALUE_RED has its entries back\n"));
    EXPECT_THAT(outcome.out, EndsWith(" = 40, 44, 48\n"));
}

TEST(Undo, MirrorsAgainWhatAWidthHasEnded) {
    const Outcome outcome = session(
        "set FG_SENSORWIDTH=4096 FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT\nset FG_WIDTH=2048\nundo\n"
        "set FG_XOFFSET=8 --trace\n");
    EXPECT_THAT(outcome.out, HasSubstr("undone: set FG_WIDTH=2048"));
    EXPECT_THAT(outcome.err, IsEmpty());
    const Outcome never =
        session("set FG_SENSORWIDTH=4096 FG_VANTAGEPOINT=FG_VANTAGEPOINT_TOP_RIGHT\nset FG_XOFFSET=8 --trace\n");
    const auto trace = [](const std::string& out) { return out.substr(out.rfind("FG_XOFFSET = 8")); };
    EXPECT_EQ(trace(outcome.out), trace(never.out));
}

TEST(Undo, AnswersInJson) {
    const std::string out = session("set FG_WIDTH=2048\nundo --json\n").out;
    const auto json = nlohmann::json::parse(out.substr(out.find('{')));
    EXPECT_EQ(json["undone"], "set FG_WIDTH=2048");
    EXPECT_EQ(json["changed"][0]["name"], "FG_WIDTH");
    EXPECT_THAT(json["restored"], ElementsAre("FG_WIDTH"));
    EXPECT_THAT(json["left"], IsEmpty());
}

TEST(Undo, IsForASession) {
    const Outcome outcome = quillon({"undo"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("quillon shell"));
}

// quillon run
// -----------------------------------------------------------------------------------------------------------

TEST(RunVerb, StopsAtTheFirstFailureAndSaysWhere) {
    const Outcome outcome = script("# tune\nset FG_WIDTH=2048\nset FG_WIDTH=6\nget FG_WIDTH\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err,
                HasSubstr("quillon: tune.txt:3: this line failed, and ended the script: set FG_WIDTH=6\n"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("FG_WIDTH = 2048 pixel\nFG_WIDTH")));
    EXPECT_EQ(script("set FG_WIDTH=wide\n").status, 2);
}

TEST(RunVerb, GoesOnIfAskedAndAnswersTheFirstFailure) {
    const Outcome outcome = script("bogus\nset FG_WIDTH=6\nget FG_HEIGHT\n", "--keep-going");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("tune.txt:1: this line failed: bogus\n"));
    EXPECT_THAT(outcome.err, HasSubstr("tune.txt:2: this line failed: set FG_WIDTH=6\n"));
    EXPECT_EQ(outcome.out, "FG_HEIGHT = 1024 pixel\n");
}

TEST(RunVerb, ReadsStandardInput) {
    const Outcome outcome = shell("printf 'set FG_WIDTH=2048\\nget FG_WIDTH\\nset FG_WIDTH=6' | \"$quillon\" run -");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, EndsWith("\nFG_WIDTH = 2048 pixel\n"));
    EXPECT_THAT(outcome.err, HasSubstr("standard input:3: this line failed"));
}

TEST(RunVerb, SavesBehindTheLastLineAndNotBehindAFailure) {
    const Folder folder;
    std::ofstream(folder / "good") << "set FG_WIDTH=2048\n";
    std::ofstream(folder / "bad") << "set FG_WIDTH=2048\nset FG_WIDTH=6\n";
    EXPECT_EQ(quillon({"run", folder / "good", "--save", folder / "good.mcf"}).status, 0);
    EXPECT_EQ(quillon({"run", folder / "bad", "--save", folder / "bad.mcf"}).status, 1);
    EXPECT_THAT(contentOf(folder / "good.mcf"), HasSubstr("FG_WIDTH=2048;"));
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.mcf"));
    EXPECT_THAT(quillon({"run", folder / "bad", "--save", folder / "bad.mcf"}).err,
                EndsWith("bad.mcf was not written, as the command failed\n"));
}

TEST(RunVerb, EchoesItsLines) {
    EXPECT_THAT(script("get FG_WIDTH\n", "--echo").err, HasSubstr("tune.txt:1: get FG_WIDTH\n"));
}

TEST(RunVerb, WithinASessionActsOnItsBoard) {
    const Folder folder;
    std::ofstream(folder / "wide") << "set FG_WIDTH=2048\nset FG_HEIGHT=64\n";
    const Outcome outcome = session("run " + (folder / "wide").string() + "\nundo\nget FG_WIDTH FG_HEIGHT\n");
    EXPECT_THAT(outcome.out, EndsWith("FG_WIDTH = 2048 pixel\nFG_HEIGHT = 1024 pixel\n"));
}

TEST(RunVerb, TakesAByteOrderMarkForNoneOfItsWords) {
    EXPECT_EQ(script("\xEF\xBB\xBFget FG_WIDTH\n").out, "FG_WIDTH = 1024 pixel\n");
}

TEST(RunVerb, ShowsNoControlCharactersOfALine) {
    const std::string err = script("get FG_WIDTH\x1b[31m\n").err;
    EXPECT_THAT(err, HasSubstr("\"FG_WIDTH?[31m\""));
    EXPECT_THAT(err, Not(HasSubstr("\x1b")));
}

TEST(RunVerb, EndsAScriptThatRunsItself) {
    const Outcome outcome = script("run tune.txt\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("one of them seems to run itself"));
}

TEST(RunVerb, RefusesWhatItCannotRead) {
    EXPECT_EQ(quillon({"run", "none.txt"}).status, 1);
    EXPECT_THAT(quillon({"run", "none.txt"}).err, HasSubstr("none.txt cannot be read"));
    EXPECT_EQ(quillon({"run", "/"}).status, 1);
    EXPECT_EQ(quillon({"run"}).status, 2);
}

TEST(EmptyWords, AreNoFilesAndNoValuesOfOptions) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{"plan", "-o", ""},
                                                  {"timeline", "1ms", "-o", ""},
                                                  {"lut", "--load", ""},
                                                  {"get", "FG_WIDTH", "--mcf", ""},
                                                  {"set", "FG_WIDTH=8", "--save", ""},
                                                  {"check", ""},
                                                  {"run", ""}}) {
        const Outcome outcome = quillon(words);
        EXPECT_EQ(outcome.status, 2) << words.front();
        EXPECT_THAT(outcome.err, HasSubstr("an empty word")) << words.front();
    }
}

TEST(Drawings, AreWrittenAsPng) {
    const Outcome outcome = quillon({"timeline", "1ms", "-o", "signals.jpg"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("\"signals.jpg\": a drawing is written as .png"));
}

TEST(TimesOfOptions, MayHaveAUnitOrBeSeconds) {
    EXPECT_EQ(quillon({"status", "--watch", "--times", "2", "--interval", "20ms"}).status, 0);
    EXPECT_EQ(quillon({"status", "--watch", "--times", "2", "--interval", "0.02"}).status, 0);
    EXPECT_EQ(quillon({"status", "--watch", "--interval", "1us"}).status, 2);
    EXPECT_EQ(quillon({"grab", "--timeout", "2s"}).status, 0);
    EXPECT_EQ(quillon({"grab", "--timeout", "0"}).status, 2);
}

// What a single command leaves ----------------------------------------------------------------------------------------

TEST(LostEffect, IsToldOnceWithTheWayToKeepIt) {
    EXPECT_EQ(quillon({"set", "FG_WIDTH=2048"}).err, Lost);
    EXPECT_EQ(quillon({"set", "FG_WIDTH=2048", "--json"}).err, Lost);
    EXPECT_EQ(quillon({"load", QUILLON_EXAMPLES "/free_running_4k.mcf"}).err, Lost);
}

TEST(LostEffect, IsNotToldWhereItIsKeptOrNotWanted) {
    const Folder folder;
    EXPECT_THAT(quillon({"set", "FG_WIDTH=2048", "--quiet"}).err, IsEmpty());
    EXPECT_THAT(quillon({"set", "FG_WIDTH=2048", "--save", folder / "a.mcf"}).err, IsEmpty());
    EXPECT_THAT(quillon({"set", "FG_WIDTH=6"}).err, Not(HasSubstr("The board ends")));
    EXPECT_THAT(quillon({"get", "FG_WIDTH"}).err, IsEmpty());
    EXPECT_THAT(script("set FG_WIDTH=2048").err, IsEmpty());
}

}  // namespace
}  // namespace quillon::cli::testing
