#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(Numbers, TheyAreWhatPeopleWrite) {
    EXPECT_EQ(quillon({"get", "FG_SYSTEMMONITOR_FPGA_TEMPERATURE"}).out,
              "FG_SYSTEMMONITOR_FPGA_TEMPERATURE = 45.2 \xC2\xB0"
              "C\n");
    EXPECT_THAT(quillon({"status"}).out, HasSubstr("45.2 \xC2\xB0"
                                                   "C\n"));
    EXPECT_EQ(quillon({"get", "FG_CAMERASIMULATOR_PIXEL_FREQUENCY"}).out,
              "FG_CAMERASIMULATOR_PIXEL_FREQUENCY = 4000 MHz\n");
    EXPECT_THAT(quillon({"describe", "FG_CAMERASIMULATOR_LINERATE"}).out, HasSubstr("0.1 to 3787878.78787 Hz\n"));
    EXPECT_THAT(quillon({"status"}).out, HasSubstr(" 5 GB/s\n"));
    for (const char* verb : {"list", "reference", "status", "trigger"}) {
        EXPECT_THAT(quillon({verb}).out, Not(ContainsRegex("[0-9]e[+-]?[0-9]|[0-9][.][0-9]{11}|Celsius \\|"))) << verb;
    }
}

TEST(Numbers, JsonHasThemExactly) {
    EXPECT_EQ(quillon({"get", "FG_CAMERASIMULATOR_PIXEL_FREQUENCY", "--json"}).json()[0]["value"], 3999.9999999999995);
}

}  // namespace
}  // namespace quillon::cli::testing
