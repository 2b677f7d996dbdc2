#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;

TEST(InfoVerb, TheAppletIsToldInWords) {
    const Outcome outcome = quillon({"info"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("Applet +Quillon\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("Version +2\\.1\\.2\\.4\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("Carried design image +8255782 bytes\n"));
}

TEST(InfoVerb, NoBoardIsNeeded) {
    const auto json = quillon({"info", "--json"}).json();
    EXPECT_EQ(json["applet"], "Quillon");
    EXPECT_EQ(json["processes"], 1);
    EXPECT_EQ(json["iconBytes"], 4676);
    EXPECT_EQ(json["keys"]["4704"], 10);
}

TEST(InfoVerb, ConstantsAreLookedUp) {
    EXPECT_EQ(quillon({"info", "FG_COL24", "TRGINSOFTWARE"}).out, "FG_COL24 = 2\nTRGINSOFTWARE = -1\n");
}

TEST(InfoVerb, AMisspeltConstantIsUsageWithTheNearestOne) {
    const Outcome outcome = quillon({"info", "FG_COL25"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no constant \"FG_COL25\", did you mean FG_COL"));
}

}  // namespace
}  // namespace quillon::cli::testing
