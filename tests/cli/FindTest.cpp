#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

std::vector<std::string> namesFound(std::vector<std::string> words) {
    words.insert(words.begin(), "find");
    words.emplace_back("--json");
    std::vector<std::string> names;
    for (const auto& hit : quillon(words).json()) {
        names.push_back(hit["name"]);
    }
    return names;
}

TEST(FindVerb, NamesAndDescriptionsAreSearchedAndTheNamesComeFirst) {
    EXPECT_THAT(namesFound({"exposure"}), ElementsAre("FG_LINEEXPOSURE", "FG_LINEPERIODE"));
    const Outcome outcome = quillon({"find", "exposure"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, ContainsRegex("^FG_LINEEXPOSURE  Line Trigger / ExSync > ExSync Output > Exposure Time  "
                                           "\u00B5s  Exposure time in microseconds"));
}

TEST(FindVerb, CasePlaysNoPart) {
    EXPECT_EQ(quillon({"find", "EXPOSURE"}).out, quillon({"find", "exposure"}).out);
}

TEST(FindVerb, AllWordsMustBeThereEachAnywhere) {
    EXPECT_THAT(namesFound({"compensat", "pulses"}),
                ElementsAre("FG_SHAFTENCODER_COMPENSATION_COUNT", "FG_SHAFTENCODER_COMPENSATION_ENABLE"));
    EXPECT_THAT(namesFound({"compensat", "pulses", "switches"}), ElementsAre("FG_SHAFTENCODER_COMPENSATION_ENABLE"));
}

TEST(FindVerb, LabelsGroupsUnitsAndEnumeratorsAreSearched) {
    EXPECT_THAT(namesFound({"Vantage Point"}), ElementsAre("FG_VANTAGEPOINT", "FG_SENSORWIDTH", "FG_SENSORHEIGHT"));
    EXPECT_THAT(namesFound({"Camera Link HS", "line order"}), ElementsAre("FG_LINEORDER"));
    EXPECT_THAT(namesFound({"\u00B0C"}), ElementsAre("FG_SYSTEMMONITOR_FPGA_TEMPERATURE"));
    EXPECT_THAT(namesFound({"FG_COL48"}), ElementsAre("FG_FORMAT"));
    EXPECT_THAT(quillon({"find", "FG_COL48"}).out, HasSubstr("  FG_COL48, Color 48bit\n"));
    EXPECT_THAT(quillon({"find", "FG_COL48"}).out, Not(HasSubstr("FG_COL24")));
}

TEST(FindVerb, ParametersWithoutARecordAreFound) {
    EXPECT_THAT(namesFound({"FG_APPLET_REVISION"}), ElementsAre("FG_APPLET_REVISION"));
}

TEST(FindVerb, NothingFoundIsOneWithTheNearestWord) {
    const Outcome outcome = quillon({"find", "widht"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "quillon: no parameter has \"widht\", did you mean width?\n");
    EXPECT_EQ(quillon({"find", "FG_WIDHT"}).err, "quillon: no parameter has \"FG_WIDHT\", did you mean FG_WIDTH?\n");
    EXPECT_EQ(quillon({"find", "xyzzyx"}).err, "quillon: no parameter has \"xyzzyx\"\n");
    EXPECT_EQ(quillon({"find", "exposure", "temperature"}).err,
              "quillon: no parameter has all these words; each of them alone is found\n");
    EXPECT_EQ(quillon({"find", "widht", "--json"}).json()["status"], 1);
}

TEST(FindVerb, AnEmptyWordIsUsage) {
    EXPECT_EQ(quillon({"find", ""}).status, 2);
}

TEST(FindVerb, JsonTellsWhereTheWordsStand) {
    const auto json = quillon({"find", "FG_COL48", "--json"}).json();
    EXPECT_EQ(json[0]["name"], "FG_FORMAT");
    EXPECT_EQ(json[0]["id"], 700);
    EXPECT_EQ(json[0]["label"], "Output Format");
    EXPECT_EQ(json[0]["group"], "Output Format");
    EXPECT_EQ(json[0]["found"], nlohmann::json({"enumerators"}));
    EXPECT_EQ(json[0]["enumerators"], nlohmann::json({"FG_COL48"}));
}

}  // namespace
}  // namespace quillon::cli::testing
