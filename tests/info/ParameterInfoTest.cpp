#include "info/ParameterInfo.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

RegisterInfo* addNumber(Fg_ParameterInfo& info, RegisterInfo* parent, int listIndex = 0) {
    return info.addInfoUInt(parent, "Number", "FG_NUMBER", 0, 9, 1, 7, 1, 1, "", 1, listIndex);
}

TEST(ParameterInfo, AListWithNothingAddedHasNoRecords) {
    const Fg_ParameterInfo info(1);

    EXPECT_EQ(info.getRegisterInfo(0), nullptr);
    EXPECT_EQ(info.getNextRegisterInfo(nullptr, 0), nullptr);
}

TEST(ParameterInfo, TopLevelGroupsAreWalkedFromTheNewestToTheOldest) {
    Fg_ParameterInfo info(1);
    RegisterInfo* a = info.addGroupInfo(0, nullptr, "A");
    RegisterInfo* b = info.addGroupInfo(0, nullptr, "B");
    RegisterInfo* c = info.addGroupInfo(0, nullptr, "C");

    EXPECT_EQ(info.getNextRegisterInfo(nullptr, 0), c);
    EXPECT_EQ(info.getNextRegisterInfo(c, 0), b);
    EXPECT_EQ(info.getNextRegisterInfo(b, 0), a);
    EXPECT_EQ(info.getNextRegisterInfo(a, 0), nullptr);
    EXPECT_EQ(c->previous, nullptr);
    EXPECT_EQ(b->previous, c);
    EXPECT_EQ(a->previous, b);
}

TEST(ParameterInfo, ATopLevelGroupHasDepthZeroAndNoParentLabel) {
    Fg_ParameterInfo info(1);
    const RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");

    EXPECT_EQ(group->type, 0);
    EXPECT_STREQ(group->label, "Group");
    EXPECT_EQ(group->symbol, nullptr);
    EXPECT_EQ(group->unit, nullptr);
    EXPECT_EQ(group->depth, 0);
    EXPECT_EQ(group->parentLabel, nullptr);
    EXPECT_EQ(group->exported, 0);
}

TEST(ParameterInfo, ChildrenStandInTheOrderOfAdding) {
    Fg_ParameterInfo info(1);
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    RegisterInfo* first = addNumber(info, group);
    RegisterInfo* second = info.addGroupInfo(0, group, "Inner");
    RegisterInfo* third = addNumber(info, group);
    RegisterInfo* inner = addNumber(info, second);

    ASSERT_EQ(group->as.group.childCount, 3);
    EXPECT_EQ(group->as.group.children[0], first);
    EXPECT_EQ(group->as.group.children[1], second);
    EXPECT_EQ(group->as.group.children[2], third);
    EXPECT_EQ(first->childIndex, 0);
    EXPECT_EQ(second->childIndex, 1);
    EXPECT_EQ(third->childIndex, 2);
    EXPECT_EQ(third->depth, 1);
    EXPECT_EQ(inner->depth, 2);
    EXPECT_STREQ(third->parentLabel, "Group");
    EXPECT_STREQ(inner->parentLabel, "Inner");
}

TEST(ParameterInfo, TextsAreCopied) {
    Fg_ParameterInfo info(1);
    char text[] = "before";
    RegisterInfo* group = info.addGroupInfo(0, nullptr, text);
    const RegisterInfo* record = info.addInfoString(group, text, text, text, 7, 1, 1, text, 1, 0);
    text[0] = 'x';

    EXPECT_STREQ(group->label, "before");
    EXPECT_STREQ(record->label, "before");
    EXPECT_STREQ(record->symbol, "before");
    EXPECT_STREQ(record->unit, "before");
    EXPECT_STREQ(record->as.string.value, "before");
}

TEST(ParameterInfo, ATypedRecordNeedsAParent) {
    Fg_ParameterInfo info(1);

    EXPECT_EQ(info.addInfoUInt(nullptr, "L", "S", 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoInt(nullptr, "L", "S", 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoUInt64(nullptr, "L", "S", 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoInt64(nullptr, "L", "S", 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoDouble(nullptr, "L", "S", 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoUIntField(nullptr, "L", "S", 4, 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoIntField(nullptr, "L", "S", 4, 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoDoubleField(nullptr, "L", "S", 4, 0, 1, 1, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoString(nullptr, "L", "S", "", 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_EQ(info.addInfoEnum(nullptr, "L", "S", 2, 7, 1, 1, "", 1, 0), nullptr);
    EXPECT_TRUE(info.ownedRecords(0).empty());
}

TEST(ParameterInfo, AFinalizedListTakesNoRecords) {
    Fg_ParameterInfo info(1);
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    info.finalize(0);

    EXPECT_EQ(info.addGroupInfo(0, nullptr, "Late"), nullptr);
    EXPECT_EQ(info.addGroupInfo(0, group, "Late"), nullptr);
    EXPECT_EQ(addNumber(info, group), nullptr);
    EXPECT_EQ(info.getRegisterInfo(0), group);
    EXPECT_EQ(group->as.group.childCount, 0);
    EXPECT_EQ(info.ownedRecords(0).size(), 1U);
}

TEST(ParameterInfo, RecordsOfAFinalizedListCanStillBeChanged) {
    Fg_ParameterInfo info(1);
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    info.finalize(0);
    info.setToolTip(group, "changed");

    EXPECT_STREQ(group->toolTip, "changed");
}

TEST(ParameterInfo, InitEmptiesAFinalizedListAndOpensIt) {
    Fg_ParameterInfo info(1);
    info.addGroupInfo(0, nullptr, "Old");
    info.finalize(0);
    info.init(0);

    EXPECT_EQ(info.getRegisterInfo(0), nullptr);
    EXPECT_TRUE(info.ownedRecords(0).empty());
    EXPECT_NE(info.addGroupInfo(0, nullptr, "New"), nullptr);
}

TEST(ParameterInfo, AChildOfARecordThatIsNoGroupStaysUnlinked) {
    Fg_ParameterInfo info(1);
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    RegisterInfo* number = addNumber(info, group);
    RegisterInfo* child = addNumber(info, number);

    ASSERT_NE(child, nullptr);
    EXPECT_EQ(number->as.uint.min, 0U);
    EXPECT_EQ(number->as.uint.max, 9U);
    EXPECT_EQ(group->as.group.childCount, 1);
    EXPECT_EQ(child->depth, 0);
    EXPECT_EQ(child->parentLabel, nullptr);
    EXPECT_EQ(info.ownedRecords(0).back(), child);
}

TEST(ParameterInfo, OnlyAUIntFieldIsOwnedTwice) {
    Fg_ParameterInfo info(1);
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    RegisterInfo* unsignedField = info.addInfoUIntField(group, "U", "FG_U", 4, 0, 1, 1, 7, 1, 1, "", 1, 0);
    RegisterInfo* signedField = info.addInfoIntField(group, "I", "FG_I", 4, 0, 1, 1, 7, 1, 1, "", 2, 0);
    RegisterInfo* doubleField = info.addInfoDoubleField(group, "D", "FG_D", 4, 0, 1, 1, 7, 1, 1, "", 3, 0);

    const std::vector<RegisterInfo*> expected{group, unsignedField, unsignedField, signedField, doubleField};
    EXPECT_EQ(info.ownedRecords(0), expected);
    EXPECT_EQ(group->as.group.childCount, 3);
}

TEST(ParameterInfo, ARecordThatIsOwnedTwiceIsReleasedOnce) {
    Fg_ParameterInfo info(1);
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    info.addInfoUIntField(group, "U", "FG_U", 4, 0, 1, 1, 7, 1, 1, "", 1, 0);
    info.destroy(0);

    EXPECT_TRUE(info.ownedRecords(0).empty());
}

TEST(ParameterInfo, DestroyLeavesTheHeadAsItWas) {
    Fg_ParameterInfo info(1);
    info.addGroupInfo(0, nullptr, "Oldest");
    RegisterInfo* head = info.addGroupInfo(0, nullptr, "Newest");
    info.destroy(0);

    EXPECT_EQ(info.getRegisterInfo(0), head);
    EXPECT_TRUE(info.ownedRecords(0).empty());
    // What is left behind the head is an empty shell: it can be walked and added to.
    EXPECT_EQ(head->label, nullptr);
    EXPECT_EQ(info.getNextRegisterInfo(head, 0), nullptr);
    RegisterInfo* added = info.addGroupInfo(0, nullptr, "Added");
    EXPECT_EQ(info.getRegisterInfo(0), added);
    EXPECT_EQ(added->next, head);
    info.destroy(0);
    info.init(0);
    EXPECT_EQ(info.getRegisterInfo(0), nullptr);
}

TEST(ParameterInfo, ListsAreIndependent) {
    Fg_ParameterInfo info(2);
    RegisterInfo* first = info.addGroupInfo(0, nullptr, "First");
    RegisterInfo* second = info.addGroupInfo(1, nullptr, "Second");
    info.finalize(0);

    EXPECT_EQ(info.getRegisterInfo(0), first);
    EXPECT_EQ(info.getRegisterInfo(1), second);
    EXPECT_EQ(second->listIndex, 1);
    EXPECT_NE(addNumber(info, second, 1), nullptr);
}

TEST(ParameterInfo, AnIndexOutsideTheListsIsAnsweredWithNothing) {
    for (const int listIndex : {1, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        Fg_ParameterInfo info(1);
        RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");

        EXPECT_EQ(info.getRegisterInfo(listIndex), nullptr);
        EXPECT_EQ(info.getNextRegisterInfo(nullptr, listIndex), nullptr);
        EXPECT_EQ(info.getNextRegisterInfo(group, listIndex), nullptr);
        EXPECT_EQ(info.create(listIndex, 1, "L", "S", 1, 7, 1, 1, ""), nullptr);
        EXPECT_EQ(info.addGroupInfo(listIndex, nullptr, "L"), nullptr);
        EXPECT_EQ(addNumber(info, group, listIndex), nullptr);
        info.init(listIndex);
        info.destroy(listIndex);
        info.finalize(listIndex);
        info.add(group, listIndex);
        EXPECT_EQ(info.getRegisterInfo(0), group);
        EXPECT_EQ(info.ownedRecords(0).size(), 1U);
    }
}

TEST(ParameterInfo, ARecordThatWasOnlyCreatedIsLinkedToNothing) {
    Fg_ParameterInfo info(1);
    RegisterInfo* record = info.create(0, 1, "Label", "FG_SYMBOL", 5, 3, 2, 1, "unit");

    EXPECT_EQ(info.ownedRecords(0).back(), record);
    EXPECT_EQ(info.getRegisterInfo(0), nullptr);
}

TEST(ParameterInfo, CreateWorksInAFinalizedList) {
    Fg_ParameterInfo info(1);
    info.finalize(0);

    EXPECT_NE(info.create(0, 1, "Label", "FG_SYMBOL", 5, 3, 2, 1, "unit"), nullptr);
}

TEST(ParameterInfo, AStoreOfNoListsAnswersNothing) {
    Fg_ParameterInfo info(0);

    EXPECT_EQ(info.getRegisterInfo(0), nullptr);
    EXPECT_EQ(info.addGroupInfo(0, nullptr, "Group"), nullptr);
}

}  // namespace
}  // namespace quillon
