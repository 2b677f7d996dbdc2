// The lists that the tables of names, the switches and Info are made from.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "design/AppletState.h"
#include "design/PublicValues.h"

namespace quillon {
namespace {

struct Parameter {
    std::string name;
    int id;
    std::string access;
    std::string kind;
};

const std::vector<Parameter>& parameters() {
    static const std::vector<Parameter> all = {
#define SDK_PARAMETER(name, id, access, kind, description) {#name, id, #access, #kind},
#include "design/SdkParameters.def"
#undef SDK_PARAMETER
    };
    return all;
}

TEST(PublicTables, Hold164ParametersWithTheDescriptionLast) {
    EXPECT_EQ(parameters().size(), 164U);
    EXPECT_EQ(parameters().front().name, "FG_TIMEOUT");
    EXPECT_EQ(parameters().back().name, "FG_PARAM_DESCR");
}

TEST(PublicTables, TellEveryIdAndNameOnce) {
    std::set<int> ids;
    std::set<std::string> names;
    for (const Parameter& parameter : parameters()) {
        ids.insert(parameter.id);
        names.insert(parameter.name);
        EXPECT_LT(parameter.id, 1000000) << parameter.name;
    }
    EXPECT_EQ(ids.size(), 164U);
    EXPECT_EQ(names.size(), 164U);
}

TEST(PublicTables, CountKindsAndAccess) {
    std::map<std::string, int> kinds;
    std::map<std::string, int> accesses;
    for (const Parameter& parameter : parameters()) {
        ++kinds[parameter.kind];
        ++accesses[parameter.access];
    }
    EXPECT_EQ(accesses, (std::map<std::string, int>{{"ReadOnly", 52}, {"ReadWrite", 112}}));
    EXPECT_EQ(kinds["String"], 9);
    EXPECT_EQ(kinds["Field"], 3);
    EXPECT_EQ(kinds["Sdk"], 7);
    EXPECT_EQ(kinds["Int64"], 3);  // FPGA DNA, pulse count difference, and the pixel to inject
}

TEST(PublicTables, Hold102Constants) {
    const std::vector<std::pair<std::string, int>> constants = {
#define PUBLIC_VALUE(name, value) {#name, value},
#include "design/PublicValues.def"
#undef PUBLIC_VALUE
    };
    EXPECT_EQ(constants.size(), 102U);
    EXPECT_EQ(constants.front(), (std::pair<std::string, int>{"FG_YES", 1}));
    EXPECT_EQ(constants.back(), (std::pair<std::string, int>{"FG_PULSE_WIDTH", 23}));
    for (const auto& [name, value] : constants) {
        EXPECT_TRUE(value >= 0 || name == "TRGINSOFTWARE") << name;
    }
}

}  // namespace
}  // namespace quillon
