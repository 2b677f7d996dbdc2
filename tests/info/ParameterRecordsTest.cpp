#include "info/ParameterRecords.h"

#include <gtest/gtest.h>

#include "info/ParameterInfo.h"

namespace quillon {
namespace {

constexpr int UnknownId = 4711;

class ParameterRecordsOfProcessZero : public testing::Test {
protected:
    Fg_ParameterInfo info{1};
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    RegisterInfo* number = info.addInfoUInt(group, "Number", "FG_NUMBER", 4, 9, 1, 7, 1, 1, "", FG_WIDTH, 0);
    RegisterInfo* rate =
        info.addInfoDouble(group, "Rate", "FG_RATE", 0.5, 9.5, 0.5, 7, 1, 1, "", FG_CAMERASIMULATOR_LINERATE, 0);
    RegisterInfoById recordsById{{0, {{FG_WIDTH, number}, {FG_CAMERASIMULATOR_LINERATE, rate}}},
                                 {1, {{UnknownId, number}}}};
    ParameterRecords records{recordsById};
};

TEST_F(ParameterRecordsOfProcessZero, AreFoundByTheirId) {
    EXPECT_EQ(records.find(FG_WIDTH), number);
    EXPECT_EQ(records.find(UnknownId), nullptr);
}

TEST_F(ParameterRecordsOfProcessZero, AreMissingAsLongAsTheMapIsEmpty) {
    RegisterInfoById empty;
    EXPECT_EQ(ParameterRecords(empty).find(FG_WIDTH), nullptr);
    EXPECT_TRUE(empty.empty());
}

TEST_F(ParameterRecordsOfProcessZero, TakeANewMaximumOfTheirOwnKind) {
    records.setMaximum(FG_WIDTH, std::uint32_t{4294967295});
    records.setMaximum(FG_CAMERASIMULATOR_LINERATE, 2.2250738585072014e-308);

    EXPECT_EQ(number->as.uint.min, 4U);
    EXPECT_EQ(number->as.uint.max, 4294967295U);
    EXPECT_EQ(rate->as.real.min, 0.5);
    EXPECT_EQ(rate->as.real.max, 2.2250738585072014e-308);
}

TEST_F(ParameterRecordsOfProcessZero, IgnoreAMaximumOfAnotherKind) {
    records.setMaximum(FG_WIDTH, 1.0);
    records.setMaximum(FG_CAMERASIMULATOR_LINERATE, std::uint32_t{1});

    EXPECT_EQ(number->as.uint.max, 9U);
    EXPECT_EQ(rate->as.real.max, 9.5);
}

TEST_F(ParameterRecordsOfProcessZero, TakeNewAccessFlags) {
    records.setAccessFlags(FG_WIDTH, 1);

    EXPECT_EQ(number->accessFlags, 1);
    EXPECT_EQ(records.accessFlags(FG_WIDTH), 1);
    EXPECT_EQ(records.accessFlags(FG_CAMERASIMULATOR_LINERATE), 7);
}

TEST_F(ParameterRecordsOfProcessZero, LetChangesOfARecordThatIsNotThereGoBy) {
    records.setMaximum(UnknownId, std::uint32_t{1});
    records.setMaximum(UnknownId, 1.0);
    records.setAccessFlags(UnknownId, 1);

    EXPECT_EQ(records.accessFlags(UnknownId), 0);
    EXPECT_EQ(number->as.uint.max, 9U);
    EXPECT_EQ(number->accessFlags, 7);
}

}  // namespace
}  // namespace quillon
