#include "quillon/RegisterInfo.h"

#include <gtest/gtest.h>

#include <cstring>

#include "info/ParameterInfo.h"

namespace quillon {
namespace {

/// What the other side of the library boundary finds at a byte offset.
template <typename T>
T at(const RegisterInfo* record, std::size_t offset) {
    T value;
    std::memcpy(&value, reinterpret_cast<const unsigned char*>(record) + offset, sizeof value);
    return value;
}

class RegisterInfoLayout : public testing::Test {
protected:
    Fg_ParameterInfo info{1};
    RegisterInfo* group = info.addGroupInfo(0, nullptr, "Group");
};

TEST_F(RegisterInfoLayout, CommonFieldsStandAtTheirOffsets) {
    info.addInfoUInt(group, "First", "FG_FIRST", 1, 2, 3, 7, 1, 1, "pixel", 100, 0);
    RegisterInfo* record = info.addInfoUInt(group, "Label", "FG_SYMBOL", 4, 16384, 4, 3, 2, 5, "pixel", 300, 0);
    info.setDescription(record, "description");
    info.setToolTip(record, "tool tip");
    info.setGenICamName(record, "Name");
    info.setGenICamVisibility(record, 4);
    info.setInvalidatingNameCapacity(record, 8);
    info.addInvalidatingName(record, "FG_FIRST");

    EXPECT_EQ(at<std::int32_t>(record, 0), 1);
    EXPECT_EQ(at<std::int32_t>(record, 4), 1);
    EXPECT_STREQ(at<const char*>(record, 8), "Label");
    EXPECT_STREQ(at<const char*>(record, 16), "FG_SYMBOL");
    EXPECT_EQ(at<std::int32_t>(record, 24), 3);
    EXPECT_EQ(at<std::int32_t>(record, 28), 2);
    EXPECT_EQ(at<std::int32_t>(record, 32), 5);
    EXPECT_EQ(at<std::int32_t>(record, 36), 300);
    EXPECT_EQ(at<RegisterInfo*>(record, 80), nullptr);
    EXPECT_EQ(at<RegisterInfo*>(record, 88), nullptr);
    EXPECT_EQ(at<std::int32_t>(record, 96), 1);
    EXPECT_STREQ(at<const char*>(record, 104), "Group");
    EXPECT_STREQ(at<const char*>(record, 112), "pixel");
    EXPECT_EQ(at<std::int32_t>(record, 120), 0);
    EXPECT_STREQ(at<const char*>(record, 128), "description");
    EXPECT_STREQ(at<const char*>(record, 136), "tool tip");
    EXPECT_STREQ(at<const char*>(record, 144), "Name");
    EXPECT_EQ(at<std::int32_t>(record, 152), 4);
    EXPECT_STREQ(at<char**>(record, 160)[0], "FG_FIRST");
    EXPECT_EQ(at<std::uint32_t>(record, 168), 1U);
    EXPECT_EQ(at<std::uint32_t>(record, 172), 8U);
}

TEST_F(RegisterInfoLayout, AGroupHoldsItsChildren) {
    RegisterInfo* first = info.addInfoInt(group, "A", "FG_A", 0, 1, 1, 7, 1, 1, "", 1, 0);
    RegisterInfo* second = info.addInfoInt(group, "B", "FG_B", 0, 1, 1, 7, 1, 1, "", 2, 0);

    EXPECT_EQ(at<std::int32_t>(group, 40), 2);
    EXPECT_EQ(at<RegisterInfo**>(group, 48)[0], first);
    EXPECT_EQ(at<RegisterInfo**>(group, 48)[1], second);
    EXPECT_EQ(at<std::int32_t>(group, 56), 2);
}

TEST_F(RegisterInfoLayout, IntegersOf32BitsHoldTheirRangeAndNoValue) {
    RegisterInfo* unsignedRecord = info.addInfoUInt(group, "U", "FG_U", 1, 4294967295U, 2, 7, 1, 1, "", 1, 0);
    RegisterInfo* signedRecord = info.addInfoInt(group, "I", "FG_I", -1, 3, 1, 7, 1, 1, "", 2, 0);

    EXPECT_EQ(at<std::uint32_t>(unsignedRecord, 40), 1U);
    EXPECT_EQ(at<std::uint32_t>(unsignedRecord, 44), 4294967295U);
    EXPECT_EQ(at<std::uint32_t>(unsignedRecord, 48), 2U);
    EXPECT_EQ(at<std::uint32_t>(unsignedRecord, 52), 0U);
    EXPECT_EQ(at<std::int32_t>(signedRecord, 0), 11);
    EXPECT_EQ(at<std::int32_t>(signedRecord, 40), -1);
    EXPECT_EQ(at<std::int32_t>(signedRecord, 44), 3);
    EXPECT_EQ(at<std::int32_t>(signedRecord, 48), 1);
    EXPECT_EQ(at<std::int32_t>(signedRecord, 52), 0);
}

TEST_F(RegisterInfoLayout, IntegersOf64BitsHoldTheirRange) {
    RegisterInfo* unsignedRecord =
        info.addInfoUInt64(group, "U", "FG_U", 1, 144115188075855871UL, 2, 7, 1, 1, "", 1, 0);
    RegisterInfo* signedRecord = info.addInfoInt64(group, "I", "FG_I", -4294967296L, 4294967295L, 1, 7, 1, 1, "", 2, 0);

    EXPECT_EQ(at<std::int32_t>(unsignedRecord, 0), 9);
    EXPECT_EQ(at<std::uint64_t>(unsignedRecord, 40), 1U);
    EXPECT_EQ(at<std::uint64_t>(unsignedRecord, 48), 144115188075855871U);
    EXPECT_EQ(at<std::uint64_t>(unsignedRecord, 56), 2U);
    EXPECT_EQ(at<std::int32_t>(signedRecord, 0), 12);
    EXPECT_EQ(at<std::int64_t>(signedRecord, 40), -4294967296);
    EXPECT_EQ(at<std::int64_t>(signedRecord, 48), 4294967295);
    EXPECT_EQ(at<std::int64_t>(signedRecord, 56), 1);
}

TEST_F(RegisterInfoLayout, ADoubleHoldsItsRangeAndNoValue) {
    RegisterInfo* record = info.addInfoDouble(group, "D", "FG_D", -0.5, 30.25, 0.125, 7, 1, 1, "", 1, 0);

    EXPECT_EQ(at<std::int32_t>(record, 0), 6);
    EXPECT_EQ(at<double>(record, 40), -0.5);
    EXPECT_EQ(at<double>(record, 48), 30.25);
    EXPECT_EQ(at<double>(record, 56), 0.125);
    EXPECT_EQ(at<double>(record, 64), 0.0);
}

TEST_F(RegisterInfoLayout, AnEnumHoldsThreeArraysOfEntries) {
    RegisterInfo* record = info.addInfoEnum(group, "E", "FG_E", 2, 7, 1, 1, "", 1, 0);
    info.addEnumNameValue(record, 0, "Low Active", 1, "FG_LOW");
    info.addEnumNameValue(record, 1, "High Active", -1, nullptr);

    EXPECT_EQ(at<std::int32_t>(record, 0), 3);
    EXPECT_EQ(at<std::int32_t>(record, 40), 2);
    EXPECT_STREQ(at<char**>(record, 48)[0], "Low Active");
    EXPECT_STREQ(at<char**>(record, 48)[1], "High Active");
    EXPECT_EQ(at<std::int32_t*>(record, 56)[0], 1);
    EXPECT_EQ(at<std::int32_t*>(record, 56)[1], -1);
    EXPECT_EQ(at<std::int32_t>(record, 64), 0);
    EXPECT_STREQ(at<char**>(record, 72)[0], "FG_LOW");
    EXPECT_EQ(at<char**>(record, 72)[1], nullptr);
}

TEST_F(RegisterInfoLayout, AStringHoldsItsInitialText) {
    RegisterInfo* record = info.addInfoString(group, "S", "FG_S", "*.lut", 7, 1, 1, "", 1, 0);
    RegisterInfo* without = info.addInfoString(group, "S", "FG_S", nullptr, 7, 1, 1, "", 1, 0);

    EXPECT_EQ(at<std::int32_t>(record, 0), 5);
    EXPECT_STREQ(at<const char*>(record, 48), "*.lut");
    EXPECT_EQ(at<const char*>(without, 48), nullptr);
}

TEST_F(RegisterInfoLayout, IntegerFieldsHoldRangeSizeAndTheMinimumAsValueButNoStep) {
    RegisterInfo* unsignedField = info.addInfoUIntField(group, "U", "FG_U", 16384, 5, 65535, 9, 7, 1, 1, "", 1, 0);
    RegisterInfo* signedField = info.addInfoIntField(group, "I", "FG_I", 12, -7, 7, 9, 7, 1, 1, "", 2, 0);

    EXPECT_EQ(at<std::int32_t>(unsignedField, 0), 7);
    EXPECT_EQ(at<std::uint32_t>(unsignedField, 40), 5U);
    EXPECT_EQ(at<std::uint32_t>(unsignedField, 44), 65535U);
    EXPECT_EQ(at<std::int32_t>(unsignedField, 48), 16384);
    EXPECT_EQ(at<std::int32_t>(unsignedField, 52), 0);
    EXPECT_EQ(at<std::uint32_t>(unsignedField, 56), 5U);
    EXPECT_EQ(at<std::int32_t>(signedField, 0), 13);
    EXPECT_EQ(at<std::int32_t>(signedField, 40), -7);
    EXPECT_EQ(at<std::int32_t>(signedField, 44), 7);
    EXPECT_EQ(at<std::int32_t>(signedField, 48), 12);
    EXPECT_EQ(at<std::int32_t>(signedField, 52), 0);
    EXPECT_EQ(at<std::int32_t>(signedField, 56), -7);
}

TEST_F(RegisterInfoLayout, ADoubleFieldHoldsRangeSizeAndTheMinimumAsValueButNoStep) {
    RegisterInfo* field = info.addInfoDoubleField(group, "D", "FG_D", 64, -1.5, 1.5, 0.5, 7, 1, 1, "", 1, 0);

    EXPECT_EQ(at<std::int32_t>(field, 0), 8);
    EXPECT_EQ(at<double>(field, 40), -1.5);
    EXPECT_EQ(at<double>(field, 48), 1.5);
    EXPECT_EQ(at<std::int32_t>(field, 56), 64);
    EXPECT_EQ(at<std::int32_t>(field, 60), 0);
    EXPECT_EQ(at<double>(field, 64), -1.5);
}

TEST_F(RegisterInfoLayout, ANewRecordIsZeroWhereNothingWasSet) {
    const RegisterInfo* record = info.create(0, 1, "Label", nullptr, 0, 0, 0, 0, nullptr);

    EXPECT_EQ(record->symbol, nullptr);
    EXPECT_EQ(record->unit, nullptr);
    EXPECT_EQ(record->parentLabel, nullptr);
    EXPECT_EQ(record->description, nullptr);
    EXPECT_EQ(record->toolTip, nullptr);
    EXPECT_EQ(record->genICamName, nullptr);
    EXPECT_EQ(record->invalidatingNames, nullptr);
    for (const unsigned char byte : record->as.bytes) {
        EXPECT_EQ(byte, 0);
    }
}

}  // namespace
}  // namespace quillon
