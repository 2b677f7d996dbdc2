#include <gmock/gmock.h>

#include <cstdlib>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(ExitStatus, HelpIsDoneAndGoesToTheOutput) {
    const Outcome outcome = quillon({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(
        outcome.out,
        HasSubstr("Exit status: 0 done, 1 refused by the applet or the design, 2 usage, 3 no library or board."));
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST(ExitStatus, TheHelpOfAVerbHasWorkedExamples) {
    const Outcome outcome = quillon({"set", "--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("quillon set FG_WIDTH=2048 --trace"));
}

TEST(ExitStatus, NoVerbIsUsage) {
    const Outcome outcome = quillon({});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr("quillon: A subcommand is required"));
}

TEST(ExitStatus, AnUnknownVerbIsUsageWithTheNearestOne) {
    const Outcome outcome = quillon({"gett", "FG_WIDTH"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no verb \"gett\", did you mean get?"));
}

TEST(ExitStatus, AnUnknownOptionIsUsage) {
    const Outcome outcome = quillon({"get", "FG_WIDTH", "--bogus"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("--bogus"));
}

TEST(ExitStatus, ARefusedValueIsOne) {
    EXPECT_EQ(quillon({"set", "FG_WIDTH=6"}).status, 1);
}

TEST(ExitStatus, ADesignThatFailsIsOne) {
    EXPECT_EQ(quillon({"set", "FG_HEIGHT=2048", "--fault", "Device1_Process0_Buffer_0_XLength=-5"}).status, 1);
}

TEST(ExitStatus, AMissingLibraryIsThree) {
    const Outcome outcome = quillon({"--library", "/no/such/libQuillon.so", "get", "FG_WIDTH"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, HasSubstr("cannot load /no/such/libQuillon.so"));
}

TEST(ExitStatus, AMissingBoardIsThree) {
    const Outcome outcome = quillon({"--softboard", "/no/such/folder", "get", "FG_WIDTH"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("/no/such/folder/libsoftboard.so"));
}

TEST(ExitStatus, ADesignThatDoesNotLoadIsThree) {
    const Folder folder;
    // Without a design the applet leaves its object behind; the leak check of a sanitizer build would end with a status
    // of its own.
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    const Outcome outcome = quillon({"--design", folder / "none.tav", "get", "FG_WIDTH"});
    unsetenv("ASAN_OPTIONS");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("the applet did not open: -100 (DesignNotLoaded)"));
}

TEST(ExitStatus, AFailureIsToldAsJsonToo) {
    const Outcome outcome = quillon({"--json", "get", "FG_WIDHT"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.json()["status"], 2);
    EXPECT_EQ(outcome.json()["error"], "there is no parameter \"FG_WIDHT\", did you mean FG_WIDTH?");
}

}  // namespace
}  // namespace quillon::cli::testing
