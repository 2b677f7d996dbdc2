#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;

TEST(StatusVerb, TheStateIsToldInWordsAndUnits) {
    const Outcome outcome = quillon({"status"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("Buffer fill level +[0-9]+ %\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("Buffer overflow +no\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("FPGA temperature +[0-9.]+ \xC2\xB0"
                                           "C\n"));
    EXPECT_THAT(outcome.out, ContainsRegex("PCIe link width +[0-9]+ lanes\n"));
}

TEST(StatusVerb, WatchingLooksAsOftenAsAsked) {
    const Outcome outcome = quillon({"status", "--watch", "--times", "2", "--interval", "0.01"});
    EXPECT_EQ(outcome.status, 0);
    const std::size_t first = outcome.out.find("Buffer fill level");
    const std::size_t second = outcome.out.find("Buffer fill level", first + 1);
    EXPECT_NE(second, std::string::npos);
    EXPECT_EQ(outcome.out.find("Buffer fill level", second + 1), std::string::npos);
}

TEST(StatusVerb, JsonCarriesValuesAndWords) {
    const auto json = quillon({"status", "--json"}).json();
    EXPECT_EQ(json["FG_OVERFLOW"]["value"], 0);
    EXPECT_EQ(json["FG_OVERFLOW"]["words"], "no");
}

}  // namespace
}  // namespace quillon::cli::testing
