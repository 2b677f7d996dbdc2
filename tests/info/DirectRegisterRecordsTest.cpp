#include "info/DirectRegisterRecords.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

class DirectRegisterRecords : public testing::Test {
protected:
    const RegisterInfo* recordOf(const DesignRegister& designRegister) {
        addDirectRegisterRecords(info, recordsById, {designRegister});
        return recordsById.at(0).at(designRegister.number + 1000000);
    }

    Fg_ParameterInfo info{1};
    RegisterInfoById recordsById;
};

TEST_F(DirectRegisterRecords, OfADesignWithoutRegistersAreAnEmptyGroup) {
    addDirectRegisterRecords(info, recordsById, {});

    ASSERT_NE(info.getRegisterInfo(0), nullptr);
    EXPECT_STREQ(info.getRegisterInfo(0)->label, "Direct Register Access");
    EXPECT_EQ(info.getRegisterInfo(0)->as.group.childCount, 0);
    EXPECT_TRUE(recordsById.empty());
}

TEST_F(DirectRegisterRecords, AreNamedAndNumberedAfterTheRegister) {
    const RegisterInfo* record = recordOf({"Control", 17, 12, 1});

    EXPECT_STREQ(record->label, "Control (12)");
    EXPECT_STREQ(record->symbol, "DRA_Control");
    EXPECT_EQ(record->parameterId, 1000017);
    EXPECT_EQ(record->accessFlags, 7);
    EXPECT_EQ(record->displayLevel, 1);
    EXPECT_EQ(record->exported, 1);
    EXPECT_EQ(record->unit, nullptr);
    EXPECT_EQ(record->listIndex, 0);
    EXPECT_STREQ(record->parentLabel, "Direct Register Access");
    EXPECT_EQ(record->type, RegisterTypeUInt);
    EXPECT_EQ(record->as.uint.min, 0U);
    EXPECT_EQ(record->as.uint.max, 4095U);
    EXPECT_EQ(record->as.uint.inc, 1U);
}

TEST_F(DirectRegisterRecords, OfDirectionZeroCanOnlyBeRead) {
    EXPECT_EQ(recordOf({"Status", 1, 8, 0})->accessFlags, 1);
    EXPECT_EQ(recordOf({"Command", 2, 8, 2})->accessFlags, 7);
    EXPECT_EQ(recordOf({"Command", 3, 8, -1})->accessFlags, 7);
}

TEST_F(DirectRegisterRecords, UpTo32BitsAreUIntRecords) {
    EXPECT_EQ(recordOf({"Bit", 1, 1, 0})->type, 1);
    EXPECT_EQ(recordOf({"Bit", 1, 1, 0})->as.uint.max, 1U);
    EXPECT_EQ(recordOf({"Word", 2, 32, 0})->type, 1);
    EXPECT_EQ(recordOf({"Word", 2, 32, 0})->as.uint.max, 4294967295U);
    EXPECT_EQ(recordOf({"Nothing", 3, 0, 0})->as.uint.max, 0U);
}

TEST_F(DirectRegisterRecords, WiderOnesAreUInt64Records) {
    EXPECT_EQ(recordOf({"Wide", 1, 33, 0})->type, 9);
    EXPECT_EQ(recordOf({"Wide", 1, 33, 0})->as.uint64.min, 0U);
    EXPECT_EQ(recordOf({"Wide", 1, 33, 0})->as.uint64.max, 8589934591U);
    EXPECT_EQ(recordOf({"Wide", 1, 33, 0})->as.uint64.inc, 1U);
    EXPECT_EQ(recordOf({"Wider", 2, 63, 0})->as.uint64.max, 9223372036854775807U);
    EXPECT_EQ(recordOf({"Widest", 3, 64, 0})->as.uint64.max, 18446744073709551615U);
    EXPECT_EQ(recordOf({"TooWide", 4, 65, 0})->as.uint64.max, 18446744073709551615U);
}

TEST_F(DirectRegisterRecords, StandInTheOrderOfTheRegisters) {
    addDirectRegisterRecords(info, recordsById, {{"B", 9, 1, 0}, {"A", 3, 1, 0}});

    const RegisterInfoGroup& group = info.getRegisterInfo(0)->as.group;
    ASSERT_EQ(group.childCount, 2);
    EXPECT_STREQ(group.children[0]->symbol, "DRA_B");
    EXPECT_STREQ(group.children[1]->symbol, "DRA_A");
    EXPECT_EQ(recordsById.at(0).size(), 2U);
}

TEST_F(DirectRegisterRecords, AreNotAddedToAFinalizedList) {
    info.finalize(0);
    addDirectRegisterRecords(info, recordsById, {{"A", 3, 1, 0}});

    EXPECT_EQ(info.getRegisterInfo(0), nullptr);
    EXPECT_TRUE(recordsById.empty());
}

}  // namespace
}  // namespace quillon
