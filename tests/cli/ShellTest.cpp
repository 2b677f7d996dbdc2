#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(ManualVerb, EveryVerbHasASection) {
    const Outcome outcome = quillon({"manual"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith(".TH QUILLON 1\n"));
    EXPECT_THAT(outcome.out, HasSubstr(".SS describe\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\n.B \\-\\-trace\n"));
}

TEST(ManualVerb, ItTellsOfStatusEnvironmentFilesAndJson) {
    const std::string page = quillon({"manual"}).out;
    EXPECT_THAT(page, HasSubstr("\n.SH EXIT STATUS\n.TP\n.B 0\nDone.\n.TP\n.B 1\n"));
    EXPECT_THAT(page, HasSubstr("\n.SH ENVIRONMENT\n.TP\n.B COLUMNS\n"));
    EXPECT_THAT(page, HasSubstr("\n.SH FILES\n.TP\n.B *.mcf\n"));
    EXPECT_THAT(page, HasSubstr("\n.SH JSON\nWith \\-\\-json a verb answers"));
}

TEST(ManualVerb, TheFormatterHasNothingToSayAboutThePages) {
    const Folder folder;
    const Outcome outcome = shell(
        "command -v groff > /dev/null || exit 0\n\"$quillon\" manual --pages . || exit 1\n"
        "for page in *.1; do groff -man -Tascii -ww -Z \"$page\" > /dev/null; done",
        folder.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST(ManualVerb, AVerbHasAPageOfItsOwn) {
    const std::string page = quillon({"manual", "grab"}).out;
    EXPECT_THAT(page, StartsWith(".TH QUILLON\\-GRAB 1\n.SH NAME\nquillon\\-grab \\- "));
    EXPECT_THAT(page, HasSubstr("\n.B \\-\\-scene SCENE\n"));
    const Outcome outcome = quillon({"manual", "grasp"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no verb \"grasp\""));
}

TEST(ManualVerb, AllPagesAreWrittenIntoAFolder) {
    const Folder folder;
    EXPECT_EQ(quillon({"manual", "--pages", folder / "man1"}).status, 0);
    EXPECT_EQ(contentOf(folder / "man1/quillon.1"), quillon({"manual"}).out);
    EXPECT_EQ(contentOf(folder / "man1/quillon-get.1"), quillon({"manual", "get"}).out);
    std::ofstream(folder / "file") << "no folder";
    const Outcome outcome = quillon({"manual", "--pages", folder / "file/man1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("file/man1"));
}

TEST(CompletionVerb, BashOffersVerbsAndParameterNames) {
    const Folder folder;
    const Outcome script = quillon({"completion", "bash"});
    ASSERT_EQ(script.status, 0);
    const std::string ask = "bash -c 'source /dev/stdin <<< \"$(" QUILLON_COMMAND
                            " completion bash)\"; COMP_WORDS=(quillon get FG_WID); COMP_CWORD=2; _quillon; echo "
                            "${COMPREPLY[*]}' > " +
                            (folder / "reply").string();
    ASSERT_EQ(std::system(ask.c_str()), 0);
    EXPECT_EQ(contentOf(folder / "reply"), "FG_WIDTH\n");
}

TEST(CompletionVerb, TheZShellScriptSaysWhoseItIs) {
    EXPECT_THAT(quillon({"completion", "zsh"}).out, StartsWith("#compdef quillon\n"));
}

TEST(CompletionVerb, AnUnknownShellIsUsage) {
    EXPECT_EQ(quillon({"completion", "fish"}).status, 2);
}

TEST(ReferenceVerb, EveryParameterHasARow) {
    const Outcome outcome = quillon({"reference"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("# Parameters\n"));
    EXPECT_THAT(outcome.out, HasSubstr("| `FG_WIDTH` | 100 | rw | 4 to 16384 pixel in steps of 4"));
}

TEST(ReferenceVerb, TheOneInTheDocumentsIsUpToDate) {
    // Compared as a whole: a listing of both would bury everything else.
    EXPECT_TRUE(contentOf(QUILLON_PARAMETER_REFERENCE) == quillon({"reference"}).out)
        << "build the target parameter_reference to write it anew";
}

}  // namespace
}  // namespace quillon::cli::testing
