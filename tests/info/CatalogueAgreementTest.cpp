// The catalogue shows the public parameters, and design/SdkParameters.def says which there are: the two lists are
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

namespace quillon {
namespace {

using testing::ElementsAre;

enum class Access { ReadWrite, ReadOnly };
enum class Kind { Int, Int64, Double, String, Field, Sdk };

struct PublicParameter {
    std::string symbol;
    int id;
    Access access;
    Kind kind;
};

const std::vector<PublicParameter>& publicParameters() {
    static const std::vector<PublicParameter> parameters{
#define SDK_PARAMETER(name, id, access, kind, description) {#name, id, Access::access, Kind::kind},
#include "design/SdkParameters.def"
#undef SDK_PARAMETER
    };
    return parameters;
}

const PublicParameter* find(std::string_view symbol) {
    const auto found = std::ranges::find(publicParameters(), symbol, &PublicParameter::symbol);
    return found != publicParameters().end() ? &*found : nullptr;
}

/// What a parameter is, by the type of its record.
struct KindOfValues {
    Kind operator()(const UIntRange&) const { return Kind::Int; }
    Kind operator()(const IntRange&) const { return Kind::Int; }
    Kind operator()(const Enumeration&) const { return Kind::Int; }
    Kind operator()(const UInt64Range&) const { return Kind::Int64; }
    Kind operator()(const Int64Range&) const { return Kind::Int64; }
    Kind operator()(const DoubleRange&) const { return Kind::Double; }
    Kind operator()(const InitialText&) const { return Kind::String; }
    Kind operator()(const UIntFieldRange&) const { return Kind::Field; }
};

TEST(CatalogueAgreement, EveryRecordIsAPublicParameterWithTheSameId) {
    ASSERT_EQ(catalogueParameters().size(), 156U);
    for (const CatalogueParameter& record : catalogueParameters()) {
        const PublicParameter* parameter = find(record.symbol);
        ASSERT_NE(parameter, nullptr) << record.symbol;
        EXPECT_EQ(record.id, parameter->id) << record.symbol;
    }
}

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
        const PublicParameter* parameter = find(record.symbol);
        ASSERT_NE(parameter, nullptr) << record.symbol;
        if (parameter->access == Access::ReadOnly) {
            EXPECT_EQ(record.accessFlags, 1) << record.symbol;
        } else {
            EXPECT_TRUE(record.accessFlags == 3 || record.accessFlags == 7)
                << record.symbol << " has " << record.accessFlags;
        }
    }
}

TEST(CatalogueAgreement, EightPublicParametersHaveNoRecord) {
    std::vector<std::string> undescribed;
    for (const PublicParameter& parameter : publicParameters()) {
        if (std::ranges::none_of(catalogueParameters(),
                                 [&](const CatalogueParameter& record) { return record.symbol == parameter.symbol; })) {
            undescribed.push_back(parameter.symbol);
        }
    }
    EXPECT_THAT(undescribed, ElementsAre("FG_TRANSFER_LEN", "FG_NR_OF_PROCESSES", "FG_NR_OF_DMAS", "FG_NR_OF_CAMS",
                                         "FG_DMA_PORT", "FG_CAM_PORT", "FG_APC_STOP_TIMEOUT", "FG_PARAM_DESCR"));
}

// The status of the DMA is shown as a number, although it is the SDK that answers it.
TEST(CatalogueAgreement, TheKindOfARecordIsThatOfItsParameterButForOne) {
    std::vector<std::string> different;
    for (const CatalogueParameter& record : catalogueParameters()) {
        const PublicParameter* parameter = find(record.symbol);
        ASSERT_NE(parameter, nullptr) << record.symbol;
        if (std::visit(KindOfValues(), record.values) != parameter->kind) {
            different.emplace_back(record.symbol);
        }
    }
    EXPECT_THAT(different, ElementsAre("FG_DMASTATUS"));
}

}  // namespace
}  // namespace quillon
