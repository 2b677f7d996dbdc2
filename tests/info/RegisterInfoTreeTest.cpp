#include "info/RegisterInfoTree.h"

#include <gtest/gtest.h>

#include "info/ParameterInfo.h"

namespace quillon {
namespace {

class RegisterInfoTreeOfADesign : public testing::Test {
protected:
    RegisterInfo* addNumber(RegisterInfo* parent, const char* label, int id) {
        return design.addInfoUInt(parent, label, label, 0, 9, 1, 7, 1, 1, "", id, 0);
    }

    RegisterInfoTree tree() const { return RegisterInfoTree(design.getRegisterInfo(0)); }

    using Groups = std::vector<const RegisterInfo*>;
    Fg_ParameterInfo design{1};
};

TEST_F(RegisterInfoTreeOfADesign, WithoutAHeadHoldsNothing) {
    EXPECT_EQ(tree().find(0), nullptr);
    EXPECT_EQ(tree().groupsOf(0), Groups{});
}

TEST_F(RegisterInfoTreeOfADesign, FindsRecordsWithTheWayDownToThem) {
    RegisterInfo* last = design.addGroupInfo(0, nullptr, "Last");
    RegisterInfo* first = design.addGroupInfo(0, nullptr, "First");
    RegisterInfo* inner = design.addGroupInfo(0, first, "Inner");
    RegisterInfo* innermost = design.addGroupInfo(0, inner, "Innermost");
    RegisterInfo* deep = addNumber(innermost, "Deep", 3);
    RegisterInfo* shallow = addNumber(first, "Shallow", 2);
    RegisterInfo* behind = addNumber(last, "Behind", 1);

    EXPECT_EQ(tree().find(3), deep);
    EXPECT_EQ(tree().groupsOf(3), (Groups{first, inner, innermost}));
    EXPECT_EQ(tree().find(2), shallow);
    EXPECT_EQ(tree().groupsOf(2), Groups{first});
    EXPECT_EQ(tree().find(1), behind);
    EXPECT_EQ(tree().groupsOf(1), Groups{last});
    EXPECT_EQ(tree().find(4), nullptr);
}

TEST_F(RegisterInfoTreeOfADesign, LooksThroughTheNextTopLevelGroupBeforeTheInnerGroups) {
    RegisterInfo* second = design.addGroupInfo(0, nullptr, "Second");
    RegisterInfo* first = design.addGroupInfo(0, nullptr, "First");
    RegisterInfo* inner = design.addGroupInfo(0, first, "Inner");
    RegisterInfo* innerRecord = addNumber(inner, "Inner", 1);
    RegisterInfo* outerRecord = addNumber(second, "Outer", 1);

    EXPECT_NE(tree().find(1), innerRecord);
    EXPECT_EQ(tree().find(1), outerRecord);
    EXPECT_EQ(tree().groupsOf(1), Groups{second});
}

TEST_F(RegisterInfoTreeOfADesign, LooksThroughTheLastOfSeveralInnerGroupsFirst) {
    RegisterInfo* group = design.addGroupInfo(0, nullptr, "Group");
    addNumber(design.addGroupInfo(0, group, "Earlier"), "Earlier", 1);
    RegisterInfo* later = addNumber(design.addGroupInfo(0, group, "Later"), "Later", 1);

    EXPECT_EQ(tree().find(1), later);
}

TEST_F(RegisterInfoTreeOfADesign, TakesTheFirstOfSeveralRecordsInAGroup) {
    RegisterInfo* group = design.addGroupInfo(0, nullptr, "Group");
    RegisterInfo* first = addNumber(group, "First", 1);
    addNumber(group, "Second", 1);

    EXPECT_EQ(tree().find(1), first);
}

TEST_F(RegisterInfoTreeOfADesign, EndsTheChainInFrontOfARecordThatIsNoGroup) {
    addNumber(design.addGroupInfo(0, nullptr, "Behind"), "Behind", 1);
    design.add(design.create(0, RegisterTypeUInt, "Bare", "Bare", 2, 7, 1, 1, ""), 0);
    RegisterInfo* reachable = addNumber(design.addGroupInfo(0, nullptr, "Head"), "Reachable", 3);

    EXPECT_EQ(tree().find(1), nullptr);
    EXPECT_EQ(tree().find(2), nullptr);
    EXPECT_EQ(tree().find(3), reachable);
}

TEST_F(RegisterInfoTreeOfADesign, IsEmptyBehindAHeadThatIsNoGroup) {
    addNumber(design.addGroupInfo(0, nullptr, "Behind"), "Behind", 1);
    design.add(design.create(0, RegisterTypeUInt, "Bare", "Bare", 2, 7, 1, 1, ""), 0);

    EXPECT_EQ(tree().find(1), nullptr);
    EXPECT_EQ(tree().find(2), nullptr);
}

}  // namespace
}  // namespace quillon
