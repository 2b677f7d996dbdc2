#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;

TEST(Version, ItIsThatOfTheProject) {
    const Outcome outcome = quillon({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "quillon " QUILLON_VERSION "\n");
}

TEST(HelpVerb, ItTellsAboutTheCommandAndAboutAVerb) {
    EXPECT_EQ(quillon({"help"}).out, quillon({"--help"}).out);
    EXPECT_EQ(quillon({"help", "set"}).out, quillon({"set", "--help"}).out);
    EXPECT_THAT(quillon({"help", "set"}).out, HasSubstr("Usage: quillon set [OPTIONS] NAME=VALUE..."));
    EXPECT_EQ(quillon({"help"}).status, 0);
}

TEST(HelpVerb, AnUnknownVerbIsUsageWithTheNearestOne) {
    const Outcome outcome = quillon({"help", "gett"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "quillon: there is no verb \"gett\", did you mean get?\n");
}

}  // namespace
}  // namespace quillon::cli::testing
