#include <gmock/gmock.h>

#include "tests/cli/Command.h"

namespace quillon::cli::testing {
namespace {

using ::testing::HasSubstr;

TEST(RegistersVerb, AllOfThemAreListedWithNumberAndValue) {
    const Outcome outcome = quillon({"registers", "--json"});
    EXPECT_EQ(outcome.status, 0);
    const auto json = outcome.json();
    ASSERT_FALSE(json.empty());
    EXPECT_EQ(json[0]["number"], 1);
    EXPECT_EQ(json[0]["id"], 1000001);
}

TEST(RegistersVerb, AWrittenRegisterReadsBack) {
    const auto all = quillon({"registers", "--json"}).json();
    std::string writable;
    for (const auto& entry : all) {
        if (entry["writable"] == true && !entry["value"].is_null()) {
            writable = entry["name"].get<std::string>();
        }
    }
    ASSERT_NE(writable, "");
    const Outcome outcome = quillon({"registers", writable + "=1", "--json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.json()[0]["value"], 1);
}

TEST(RegistersVerb, AnUnknownRegisterIsUsage) {
    const Outcome outcome = quillon({"registers", "NoSuchRegister"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no parameter \"DRA_NoSuchRegister\""));
}

TEST(RegistersVerb, WithoutTheVerbTheirIdsAreUnknown) {
    EXPECT_EQ(quillon({"get", "1000001"}).status, 1);
}

}  // namespace
}  // namespace quillon::cli::testing
