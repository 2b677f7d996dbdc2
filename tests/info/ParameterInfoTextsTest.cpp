#include <gtest/gtest.h>

#include "info/ParameterInfo.h"

namespace quillon {
namespace {

class ParameterInfoTexts : public testing::Test {
protected:
    Fg_ParameterInfo info{1};
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
    RegisterInfo* number = info.addInfoUInt(group, "Number", "FG_NUMBER", 0, 9, 1, 7, 1, 1, "", 1, 0);
    RegisterInfo* choice = info.addInfoEnum(group, "Choice", "FG_CHOICE", 2, 7, 1, 1, "", 2, 0);
};

TEST_F(ParameterInfoTexts, AnEntryThatIsSetAgainIsReplaced) {
    EXPECT_EQ(info.addEnumNameValue(choice, 0, "On", 1, "FG_ON"), 0);
    EXPECT_EQ(info.addEnumNameValue(choice, 0, "Off", 0, "FG_OFF"), 0);

    EXPECT_STREQ(choice->as.enumeration.entryLabels[0], "Off");
    EXPECT_EQ(choice->as.enumeration.entryValues[0], 0);
    EXPECT_STREQ(choice->as.enumeration.entryNames[0], "FG_OFF");
}

TEST_F(ParameterInfoTexts, AnEntryThatIsSetAgainWithoutANameHasNoName) {
    info.addEnumNameValue(choice, 0, "On", 1, "FG_ON");
    EXPECT_EQ(info.addEnumNameValue(choice, 0, "Off", 0, nullptr), 0);

    EXPECT_STREQ(choice->as.enumeration.entryLabels[0], "Off");
    EXPECT_EQ(choice->as.enumeration.entryNames[0], nullptr);
}

TEST_F(ParameterInfoTexts, AnEntryCanBeSetFromItsOwnTexts) {
    info.addEnumNameValue(choice, 0, "On", 1, "FG_ON");
    EXPECT_EQ(info.addEnumNameValue(choice, 0, choice->as.enumeration.entryNames[0], 2,
                                    choice->as.enumeration.entryLabels[0]),
              0);

    EXPECT_STREQ(choice->as.enumeration.entryLabels[0], "FG_ON");
    EXPECT_STREQ(choice->as.enumeration.entryNames[0], "On");
}

TEST_F(ParameterInfoTexts, AnEntryWithoutALabelIsRefusedAndLeftEmpty) {
    info.addEnumNameValue(choice, 0, "On", 1, "FG_ON");
    EXPECT_EQ(info.addEnumNameValue(choice, 0, nullptr, 5, "FG_OFF"), -500);

    EXPECT_EQ(choice->as.enumeration.entryLabels[0], nullptr);
    EXPECT_EQ(choice->as.enumeration.entryValues[0], 1);
    EXPECT_EQ(choice->as.enumeration.entryNames[0], nullptr);
}

TEST_F(ParameterInfoTexts, AnEntryThatTheRecordHasNoRoomForIsDropped) {
    EXPECT_EQ(info.addEnumNameValue(choice, 2, "Third", 3, "FG_THIRD"), 0);
    EXPECT_EQ(info.addEnumNameValue(choice, -1, "Before", 3, "FG_BEFORE"), 0);
    EXPECT_EQ(info.addEnumNameValue(number, 0, "None", 3, "FG_NONE"), 0);

    EXPECT_EQ(choice->as.enumeration.entryCount, 2);
    EXPECT_EQ(choice->as.enumeration.entryLabels[0], nullptr);
    EXPECT_EQ(choice->as.enumeration.entryLabels[1], nullptr);
    EXPECT_EQ(number->as.uint.max, 9U);
}

TEST_F(ParameterInfoTexts, AnEnumMayHaveNoEntries) {
    const RegisterInfo* empty = info.addInfoEnum(group, "Empty", "FG_EMPTY", 0, 7, 1, 1, "", 3, 0);

    EXPECT_EQ(empty->as.enumeration.entryCount, 0);
}

TEST_F(ParameterInfoTexts, SettersReplaceTheOldText) {
    info.setDescription(number, "one");
    info.setDescription(number, "two");
    info.setToolTip(number, "three");
    info.setGenICamName(number, "Four");
    info.setGenICamVisibility(number, 2);

    EXPECT_STREQ(number->description, "two");
    EXPECT_STREQ(number->toolTip, "three");
    EXPECT_STREQ(number->genICamName, "Four");
    EXPECT_EQ(number->genICamVisibility, 2);
}

TEST_F(ParameterInfoTexts, AnEmptyTextClearsTheField) {
    info.setDescription(number, "description");
    info.setToolTip(number, "tool tip");
    info.setGenICamName(number, "Name");
    info.setDescription(number, "");
    info.setToolTip(number, "");
    info.setGenICamName(number, "");

    EXPECT_EQ(number->description, nullptr);
    EXPECT_EQ(number->toolTip, nullptr);
    EXPECT_EQ(number->genICamName, nullptr);
}

TEST_F(ParameterInfoTexts, ANullTextClearsTheField) {
    info.setDescription(number, "description");
    info.setDescription(number, nullptr);
    info.setToolTip(number, nullptr);
    info.setGenICamName(number, nullptr);

    EXPECT_EQ(number->description, nullptr);
    EXPECT_EQ(number->toolTip, nullptr);
    EXPECT_EQ(number->genICamName, nullptr);
}

TEST_F(ParameterInfoTexts, ReservingNamesNeverShrinks) {
    info.setInvalidatingNameCapacity(number, 4);
    EXPECT_EQ(number->invalidatingNameCapacity, 4U);
    info.addInvalidatingName(number, "FG_WIDTH");
    info.setInvalidatingNameCapacity(number, 3);
    EXPECT_EQ(number->invalidatingNameCapacity, 4U);
    info.setInvalidatingNameCapacity(number, 6);

    EXPECT_EQ(number->invalidatingNameCapacity, 6U);
    EXPECT_EQ(number->invalidatingNameCount, 1U);
    EXPECT_STREQ(number->invalidatingNames[0], "FG_WIDTH");
    EXPECT_EQ(number->invalidatingNames[1], nullptr);
}

TEST_F(ParameterInfoTexts, NamesWithoutTextAreIgnored) {
    info.addInvalidatingName(number, nullptr);
    info.addInvalidatingName(number, "");

    EXPECT_EQ(number->invalidatingNameCount, 0U);
    EXPECT_EQ(number->invalidatingNames, nullptr);
}

TEST_F(ParameterInfoTexts, RoomForNamesGrowsOnlyWhenItIsAlreadyExceeded) {
    std::vector<unsigned int> capacities;
    for (const char* name : {"A", "B", "C", "D", "E", "F"}) {
        info.addInvalidatingName(number, name);
        capacities.push_back(number->invalidatingNameCapacity);
    }

    EXPECT_EQ(capacities, (std::vector<unsigned int>{0, 1, 2, 4, 4, 8}));
    ASSERT_EQ(number->invalidatingNameCount, 6U);
    EXPECT_STREQ(number->invalidatingNames[0], "A");
    EXPECT_STREQ(number->invalidatingNames[4], "E");
    EXPECT_STREQ(number->invalidatingNames[5], "F");
}

TEST_F(ParameterInfoTexts, ANameAtFullCapacityIsStoredWithoutGrowing) {
    info.setInvalidatingNameCapacity(number, 2);
    info.addInvalidatingName(number, "A");
    info.addInvalidatingName(number, "B");
    info.addInvalidatingName(number, "C");

    EXPECT_EQ(number->invalidatingNameCapacity, 2U);
    EXPECT_EQ(number->invalidatingNameCount, 3U);
    EXPECT_STREQ(number->invalidatingNames[2], "C");
}

TEST_F(ParameterInfoTexts, AGroupCanBeGivenASymbol) {
    info.setSymbol(group, "GroupSymbol");
    EXPECT_STREQ(group->symbol, "GroupSymbol");
    info.setSymbol(group, nullptr);
    EXPECT_EQ(group->symbol, nullptr);
}

}  // namespace
}  // namespace quillon
