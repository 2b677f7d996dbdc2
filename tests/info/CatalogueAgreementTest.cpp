// The catalogue shows the public parameters, and quillon/Parameters.def says which there are: the two lists are
// written down once each, for different readers, and have to agree.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "info/CatalogueTables.h"
#include "quillon/PublicParameters.h"

namespace quillon {
namespace {

using testing::ElementsAre;

/// What a parameter is, by the type of its record.
struct KindOfValues {
    ParameterKind operator()(const UIntRange&) const { return ParameterKind::Int; }
    ParameterKind operator()(const IntRange&) const { return ParameterKind::Int; }
    ParameterKind operator()(const Enumeration&) const { return ParameterKind::Int; }
    ParameterKind operator()(const UInt64Range&) const { return ParameterKind::Int64; }
    ParameterKind operator()(const Int64Range&) const { return ParameterKind::Int64; }
    ParameterKind operator()(const DoubleRange&) const { return ParameterKind::Double; }
    ParameterKind operator()(const InitialText&) const { return ParameterKind::String; }
    ParameterKind operator()(const UIntFieldRange&) const { return ParameterKind::Field; }
};

TEST(CatalogueAgreement, NoSymbolAndNoIdIsDescribedTwice) {
    std::set<std::string> symbols;
    std::set<int> ids;
    for (const CatalogueParameter& record : catalogueParameters()) {
        EXPECT_TRUE(symbols.insert(record.symbol).second) << record.symbol;
        EXPECT_TRUE(ids.insert(record.id).second) << record.symbol;
    }
}

TEST(CatalogueAgreement, AParameterIsShownAsReadOnlyExactlyIfTheAppletRefusesToWriteIt) {
    for (const CatalogueParameter& record : catalogueParameters()) {
        const PublicParameter* parameter = findPublicParameter(record.symbol);
        ASSERT_NE(parameter, nullptr) << record.symbol;
        if (parameter->access == ParameterAccess::ReadOnly) {
            EXPECT_EQ(record.accessFlags, 1) << record.symbol;
        } else {
            EXPECT_TRUE(record.accessFlags == 3 || record.accessFlags == 7)
                << record.symbol << " has " << record.accessFlags;
        }
    }
}

TEST(CatalogueAgreement, EightPublicParametersHaveNoRecord) {
    std::vector<std::string> undescribed;
    for (const PublicParameter& parameter : PublicParameters) {
        if (std::ranges::none_of(catalogueParameters(),
                                 [&](const CatalogueParameter& record) { return record.symbol == parameter.name; })) {
            undescribed.emplace_back(parameter.name);
        }
    }
    EXPECT_THAT(undescribed, ElementsAre("FG_TRANSFER_LEN", "FG_NR_OF_PROCESSES", "FG_NR_OF_DMAS", "FG_NR_OF_CAMS",
                                         "FG_DMA_PORT", "FG_CAM_PORT", "FG_APC_STOP_TIMEOUT", "FG_PARAM_DESCR"));
}

// The status of the DMA is shown as a number, although it is the SDK that answers it.
TEST(CatalogueAgreement, TheKindOfARecordIsThatOfItsParameterButForOne) {
    std::vector<std::string> different;
    for (const CatalogueParameter& record : catalogueParameters()) {
        const PublicParameter* parameter = findPublicParameter(record.symbol);
        ASSERT_NE(parameter, nullptr) << record.symbol;
        if (std::visit(KindOfValues(), record.values) != parameter->kind) {
            different.emplace_back(record.symbol);
        }
    }
    EXPECT_THAT(different, ElementsAre("FG_DMASTATUS"));
}

}  // namespace
}  // namespace quillon
