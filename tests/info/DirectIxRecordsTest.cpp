#include "info/DirectIxRecords.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

class DirectIxRecords : public testing::Test {
protected:
    RegisterInfo* addDesignGroup(RegisterInfo* parent, const char* label, const char* symbol) {
        RegisterInfo* group = design.addGroupInfo(0, parent, label);
        design.setSymbol(group, symbol);
        return group;
    }

    const RegisterInfo* repeat(const std::map<std::string, int>& unwrappedIdByName) {
        addDirectIxRecords(info, recordsById, design.getRegisterInfo(0), unwrappedIdByName);
        return info.getRegisterInfo(0);
    }

    Fg_ParameterInfo design{1};
    RegisterInfo* outer = addDesignGroup(nullptr, "Outer", "OuterSymbol");
    RegisterInfo* inner = addDesignGroup(outer, "Inner", "InnerSymbol");
    Fg_ParameterInfo info{1};
    RegisterInfoById recordsById;
};

TEST_F(DirectIxRecords, StandInCopiesOfTheDesignsGroups) {
    design.addInfoUInt(inner, "Width", "Device1_Width", 1, 4096, 2, 3, 2, 1, "pixel", 55, 0);
    const RegisterInfo* top = repeat({{"DIXA_Device1_Width", 2000055}});

    EXPECT_STREQ(top->label, "Direct IX Access");
    ASSERT_EQ(top->as.group.childCount, 1);
    const RegisterInfo* outerCopy = top->as.group.children[0];
    EXPECT_STREQ(outerCopy->label, "Outer");
    EXPECT_STREQ(outerCopy->symbol, "OuterSymbol");
    ASSERT_EQ(outerCopy->as.group.childCount, 1);
    const RegisterInfo* innerCopy = outerCopy->as.group.children[0];
    EXPECT_STREQ(innerCopy->label, "Inner");
    EXPECT_STREQ(innerCopy->symbol, "InnerSymbol");
    ASSERT_EQ(innerCopy->as.group.childCount, 1);
    EXPECT_STREQ(innerCopy->as.group.children[0]->symbol, "DIXA_Device1_Width");
}

TEST_F(DirectIxRecords, AreNumberedTwoMillionAboveTheDesignAndKeyedFourMillionAbove) {
    design.addInfoUInt(inner, "Width", "Device1_Width", 1, 4096, 2, 3, 2, 0, "pixel", 55, 0);
    repeat({{"DIXA_Device1_Width", 2000055}});

    ASSERT_EQ(recordsById.at(0).size(), 1U);
    const RegisterInfo* record = recordsById.at(0).at(4000055);
    EXPECT_EQ(record->parameterId, 2000055);
    EXPECT_STREQ(record->symbol, "DIXA_Device1_Width");
    EXPECT_STREQ(record->label, "Width");
    EXPECT_STREQ(record->unit, "pixel");
    EXPECT_EQ(record->accessFlags, 3);
    EXPECT_EQ(record->displayLevel, 2);
    EXPECT_EQ(record->exported, 0);
    EXPECT_EQ(record->depth, 3);
    EXPECT_STREQ(record->parentLabel, "Inner");
    EXPECT_EQ(record->as.uint.min, 1U);
    EXPECT_EQ(record->as.uint.max, 4096U);
    EXPECT_EQ(record->as.uint.inc, 2U);
}

TEST_F(DirectIxRecords, RepeatEverySingleValuedKind) {
    design.addInfoInt(inner, "I", "I", -5, 5, 1, 7, 1, 1, "", 1, 0);
    design.addInfoUInt64(inner, "U64", "U64", 1, 1UL << 40, 2, 7, 1, 1, "", 2, 0);
    design.addInfoInt64(inner, "I64", "I64", -(1L << 40), 1L << 40, 3, 7, 1, 1, "", 3, 0);
    design.addInfoDouble(inner, "D", "D", -0.5, 0.5, 0.25, 7, 1, 1, "", 4, 0);
    design.addInfoString(inner, "S", "S", "text", 7, 1, 1, "", 5, 0);
    RegisterInfo* choice = design.addInfoEnum(inner, "E", "E", 2, 7, 1, 1, "", 6, 0);
    design.addEnumNameValue(choice, 0, "On", 1, "ON");
    design.addEnumNameValue(choice, 1, "Off", -1, nullptr);
    repeat({{"D", 2000004}, {"E", 2000006}, {"I", 2000001}, {"I64", 2000003}, {"S", 2000005}, {"U64", 2000002}});

    const std::map<int, RegisterInfo*>& records = recordsById.at(0);
    ASSERT_EQ(records.size(), 6U);
    EXPECT_EQ(records.at(4000001)->type, 11);
    EXPECT_EQ(records.at(4000001)->as.integer.min, -5);
    EXPECT_EQ(records.at(4000002)->type, 9);
    EXPECT_EQ(records.at(4000002)->as.uint64.max, 1UL << 40);
    EXPECT_EQ(records.at(4000003)->type, 12);
    EXPECT_EQ(records.at(4000003)->as.int64.min, -(1L << 40));
    EXPECT_EQ(records.at(4000004)->type, 6);
    EXPECT_EQ(records.at(4000004)->as.real.inc, 0.25);
    EXPECT_EQ(records.at(4000005)->type, 5);
    EXPECT_STREQ(records.at(4000005)->as.string.value, "text");
    EXPECT_NE(records.at(4000005)->as.string.value, design.ownedRecords(0)[6]->as.string.value);
    EXPECT_EQ(records.at(4000006)->type, 3);
    EXPECT_EQ(records.at(4000006)->as.enumeration.entryCount, 2);
    EXPECT_STREQ(records.at(4000006)->as.enumeration.entryLabels[0], "On");
    EXPECT_EQ(records.at(4000006)->as.enumeration.entryValues[1], -1);
    EXPECT_STREQ(records.at(4000006)->as.enumeration.entryNames[0], "ON");
    EXPECT_EQ(records.at(4000006)->as.enumeration.entryNames[1], nullptr);
}

TEST_F(DirectIxRecords, LeaveFieldsOutTogetherWithTheirGroups) {
    design.addInfoUIntField(inner, "U", "U", 4, 0, 1, 1, 7, 1, 1, "", 1, 0);
    design.addInfoIntField(inner, "I", "I", 4, 0, 1, 1, 7, 1, 1, "", 2, 0);
    design.addInfoDoubleField(inner, "D", "D", 4, 0, 1, 1, 7, 1, 1, "", 3, 0);
    const RegisterInfo* top = repeat({{"D", 2000003}, {"I", 2000002}, {"U", 2000001}});

    EXPECT_EQ(top->as.group.childCount, 0);
    EXPECT_TRUE(recordsById.empty());
}

TEST_F(DirectIxRecords, OfOneDesignGroupShareItsCopy) {
    design.addInfoUInt(inner, "A", "A", 0, 1, 1, 7, 1, 1, "", 1, 0);
    design.addInfoUInt(outer, "B", "B", 0, 1, 1, 7, 1, 1, "", 2, 0);
    design.addInfoUInt(inner, "C", "C", 0, 1, 1, 7, 1, 1, "", 3, 0);
    const RegisterInfo* top = repeat({{"A", 2000001}, {"B", 2000002}, {"C", 2000003}});

    ASSERT_EQ(top->as.group.childCount, 1);
    const RegisterInfoGroup& outerCopy = top->as.group.children[0]->as.group;
    ASSERT_EQ(outerCopy.childCount, 2);
    EXPECT_STREQ(outerCopy.children[1]->symbol, "DIXA_B");
    const RegisterInfoGroup& innerCopy = outerCopy.children[0]->as.group;
    ASSERT_EQ(innerCopy.childCount, 2);
    EXPECT_STREQ(innerCopy.children[0]->symbol, "DIXA_A");
    EXPECT_STREQ(innerCopy.children[1]->symbol, "DIXA_C");
}

TEST_F(DirectIxRecords, LikeNamedDesignGroupsAreCopiedApart) {
    RegisterInfo* other = addDesignGroup(nullptr, "Outer", "OtherSymbol");
    design.addInfoUInt(outer, "A", "A", 0, 1, 1, 7, 1, 1, "", 1, 0);
    design.addInfoUInt(other, "B", "B", 0, 1, 1, 7, 1, 1, "", 2, 0);
    const RegisterInfo* top = repeat({{"A", 2000001}, {"B", 2000002}});

    ASSERT_EQ(top->as.group.childCount, 2);
    EXPECT_STREQ(top->as.group.children[0]->symbol, "OuterSymbol");
    EXPECT_STREQ(top->as.group.children[1]->symbol, "OtherSymbol");
}

TEST_F(DirectIxRecords, ComeInTheOrderOfTheNames) {
    design.addInfoUInt(outer, "First", "First", 0, 1, 1, 7, 1, 1, "", 1, 0);
    design.addInfoUInt(outer, "Second", "Second", 0, 1, 1, 7, 1, 1, "", 2, 0);
    const RegisterInfo* top = repeat({{"DIXA_Z", 2000001}, {"DIXA_A", 2000002}});

    const RegisterInfoGroup& copy = top->as.group.children[0]->as.group;
    ASSERT_EQ(copy.childCount, 2);
    EXPECT_STREQ(copy.children[0]->symbol, "DIXA_Second");
    EXPECT_STREQ(copy.children[1]->symbol, "DIXA_First");
}

TEST_F(DirectIxRecords, AreNotMadeForWhatTheDesignDoesNotDescribeInAGroup) {
    design.add(design.create(0, RegisterTypeUInt, "Bare", "Bare", 1, 7, 1, 1, ""), 0);
    const RegisterInfo* top = repeat({{"DIXA_Bare", 2000001}, {"DIXA_Unknown", 2000009}});

    EXPECT_EQ(top->as.group.childCount, 0);
    EXPECT_TRUE(recordsById.empty());
}

TEST_F(DirectIxRecords, AreAnEmptyGroupWithoutADescriptionOfTheDesign) {
    addDirectIxRecords(info, recordsById, nullptr, {{"DIXA_A", 2000001}});

    ASSERT_NE(info.getRegisterInfo(0), nullptr);
    EXPECT_EQ(info.getRegisterInfo(0)->as.group.childCount, 0);
}

TEST_F(DirectIxRecords, AreNotAddedToAFinalizedList) {
    design.addInfoUInt(outer, "A", "A", 0, 1, 1, 7, 1, 1, "", 1, 0);
    info.finalize(0);

    EXPECT_EQ(repeat({{"A", 2000001}}), nullptr);
    EXPECT_TRUE(recordsById.empty());
}

}  // namespace
}  // namespace quillon
