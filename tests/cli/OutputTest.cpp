#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(StandardOutput, ADeviceThatIsFullIsAnError) {
    for (const char* words : {"list", "get FG_WIDTH", "info --json", "xml", "--help", "completion bash", "status"}) {
        const Outcome outcome = shell("\"$quillon\" " + std::string(words) + " > /dev/full");
        EXPECT_EQ(outcome.status, 1) << words;
        EXPECT_EQ(outcome.err, "quillon: standard output cannot be written: No space left on device\n") << words;
    }
}

TEST(StandardOutput, OneThatIsClosedIsAnError) {
    const Outcome outcome = shell("\"$quillon\" get FG_WIDTH >&-");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "quillon: standard output cannot be written: Bad file descriptor\n");
}

TEST(StandardOutput, AnotherFailureKeepsItsStatus) {
    EXPECT_EQ(shell("\"$quillon\" --json get FG_WIDHT > /dev/full").status, 2);
}

TEST(StandardOutput, AReaderThatHasEnoughIsNoError) {
    for (const char* words : {"list --json", "xml", "reference"}) {
        const Outcome outcome = shell("\"$quillon\" " + std::string(words) + " | head -n 1; exit ${PIPESTATUS[0]}");
        EXPECT_EQ(outcome.status, 0) << words;
        EXPECT_THAT(outcome.err, IsEmpty()) << words;
    }
}

TEST(StandardOutput, WithoutAReaderTheStateIsSavedAllTheSame) {
    const Folder folder;
    EXPECT_EQ(shell("\"$quillon\" set FG_WIDTH=2048 --save a.mcf | true; exit ${PIPESTATUS[0]}", folder.path()).status,
              0);
    EXPECT_THAT(contentOf(folder / "a.mcf"), HasSubstr("FG_WIDTH=2048;"));
}

TEST(StandardOutput, WatchingEndsWithItsReader) {
    EXPECT_EQ(shell("\"$quillon\" status --watch --interval 0.01 | head -n 1; exit ${PIPESTATUS[0]}").status, 0);
}

TEST(StandardOutput, ErrorsStandWhereTheyHappened) {
    EXPECT_THAT(shell("\"$quillon\" set FG_WIDTH=2048 FG_WIDTH=6 2>&1").out,
                ContainsRegex("^FG_WIDTH = 2048 pixel\n  FG_XOFFSET accepts [^\n]*\nquillon: FG_WIDTH=6 was refused"));
}

}  // namespace
}  // namespace quillon::cli::testing
