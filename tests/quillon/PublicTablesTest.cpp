// The lists that the tables of names, the switches and Info are made from.

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <set>

#include "quillon/Enumerators.h"
#include "quillon/PublicParameters.h"
#include "quillon/Vocabulary.h"

namespace quillon {
namespace {

TEST(PublicTables, BeginWithTheTimeoutAndEndWithTheDescription) {
    EXPECT_EQ(PublicParameters.front().name, "FG_TIMEOUT");
    EXPECT_EQ(PublicParameters.back().name, "FG_PARAM_DESCR");
}

TEST(PublicTables, TellEveryIdAndNameOnce) {
    std::set<int> ids;
    std::set<std::string_view> names;
    for (const PublicParameter& parameter : PublicParameters) {
        ids.insert(parameter.id);
        names.insert(parameter.name);
        EXPECT_LT(parameter.id, FG_REGISTER_IDS) << parameter.name;
    }
    EXPECT_EQ(ids.size(), PublicParameters.size());
    EXPECT_EQ(names.size(), PublicParameters.size());
}

TEST(PublicTables, AParameterIsFoundByNameAndById) {
    const PublicParameter* width = findPublicParameter("FG_WIDTH");
    ASSERT_NE(width, nullptr);
    EXPECT_EQ(width->id, 100);
    EXPECT_EQ(width->kind, ParameterKind::Int);
    EXPECT_EQ(width->access, ParameterAccess::ReadWrite);
    EXPECT_EQ(findPublicParameter(FG_WIDTH), width);
}

TEST(PublicTables, AnUnknownNameOrIdIsNull) {
    EXPECT_EQ(findPublicParameter("FG_WIDHT"), nullptr);
    EXPECT_EQ(findPublicParameter(101), nullptr);
}

TEST(PublicTables, CountKindsAndAccess) {
    std::map<ParameterKind, int> kinds;
    std::map<ParameterAccess, int> accesses;
    for (const PublicParameter& parameter : PublicParameters) {
        ++kinds[parameter.kind];
        ++accesses[parameter.access];
    }
    EXPECT_EQ(accesses[ParameterAccess::ReadOnly], 52);
    EXPECT_EQ(accesses[ParameterAccess::ReadWrite], 112);
    EXPECT_EQ(kinds[ParameterKind::String], 9);
    EXPECT_EQ(kinds[ParameterKind::Field], 3);
    EXPECT_EQ(kinds[ParameterKind::Forwarded], 7);
    EXPECT_EQ(kinds[ParameterKind::Int64], 3);  // FPGA DNA, pulse count difference, and the pixel to inject
}

TEST(PublicTables, Hold102Enumerators) {
    EXPECT_EQ(std::size(NamedEnumerators), 102U);
    EXPECT_EQ(std::begin(NamedEnumerators)->name, "FG_YES");
    EXPECT_EQ(std::rbegin(NamedEnumerators)->name, "FG_PULSE_WIDTH");
    for (const NamedEnumerator& enumerator : NamedEnumerators) {
        EXPECT_TRUE(enumerator.value >= 0 || enumerator.name == "TRGINSOFTWARE") << enumerator.name;
    }
}

}  // namespace
}  // namespace quillon
