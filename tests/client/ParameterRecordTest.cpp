#include "quillon/client/ParameterRecord.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "quillon/RegisterInfo.h"
#include "quillon/client/Errors.h"

namespace quillon::client {
namespace {

/// A record as a C library would hand it out.
RegisterInfo raw(RegisterType type, char* label, char* symbol) {
    RegisterInfo record{};
    record.type = type;
    record.label = label;
    record.symbol = symbol;
    record.accessFlags = 3;
    record.exported = 1;
    return record;
}

TEST(ParameterRecord, AnUnsignedRangeIsCopied) {
    std::string label = "Width";
    std::string symbol = "FG_WIDTH";
    std::string unit = "pixel";
    RegisterInfo from = raw(RegisterTypeUInt, label.data(), symbol.data());
    from.parameterId = 100;
    from.unit = unit.data();
    from.as.uint = {4, 16384, 4, 0};
    const ParameterRecord record = copyRecord(from);
    EXPECT_EQ(record.kind, RecordKind::UInt);
    EXPECT_EQ(record.label, "Width");
    EXPECT_EQ(record.symbol, "FG_WIDTH");
    EXPECT_EQ(record.unit, "pixel");
    EXPECT_EQ(record.id, 100);
    EXPECT_TRUE(record.readable);
    EXPECT_TRUE(record.writable);
    EXPECT_EQ(std::get<Range<std::uint64_t>>(record.range), (Range<std::uint64_t>{4, 16384, 4}));
}

TEST(ParameterRecord, ASignedRangeKeepsItsSign) {
    std::string label = "Legacy Digital Output";
    RegisterInfo from = raw(RegisterTypeInt, label.data(), nullptr);
    from.as.integer = {-1, 3, 1, 0};
    EXPECT_EQ(std::get<Range<std::int64_t>>(copyRecord(from).range), (Range<std::int64_t>{-1, 3, 1}));
}

TEST(ParameterRecord, TheEntriesOfAnEnumerationKeepTheirOrder) {
    std::string label = "Polarity";
    std::array<std::string, 2> labels{"Low Active", "High Active"};
    std::array<std::string, 2> names{"FG_LOW", "FG_HIGH"};
    std::array<char*, 2> labelPointers{labels[0].data(), labels[1].data()};
    std::array<char*, 2> namePointers{names[0].data(), names[1].data()};
    std::array<std::int32_t, 2> values{0, 1};
    RegisterInfo from = raw(RegisterTypeEnum, label.data(), nullptr);
    from.as.enumeration = {2, labelPointers.data(), values.data(), 0, namePointers.data()};
    const ParameterRecord record = copyRecord(from);
    ASSERT_EQ(record.entries.size(), 2U);
    EXPECT_EQ(record.entries[0], (EnumEntry{"Low Active", 0, "FG_LOW"}));
    ASSERT_NE(record.entry(1), nullptr);
    EXPECT_EQ(record.entry(1)->name, "FG_HIGH");
    EXPECT_EQ(record.entry(2), nullptr);
}

TEST(ParameterRecord, AGroupHoldsItsChildrenAndAParameterIsFoundInside) {
    std::string groupLabel = "ROI";
    std::string label = "Width";
    std::string symbol = "FG_WIDTH";
    RegisterInfo child = raw(RegisterTypeUInt, label.data(), symbol.data());
    child.parameterId = 100;
    std::array<RegisterInfo*, 1> children{&child};
    RegisterInfo group = raw(RegisterTypeGroup, groupLabel.data(), nullptr);
    group.as.group = {1, children.data(), 1};
    const std::vector<ParameterRecord> trees{copyRecord(group)};
    ASSERT_EQ(trees[0].children.size(), 1U);
    ASSERT_NE(findRecord(trees, FG_WIDTH), nullptr);
    EXPECT_EQ(findRecord(trees, FG_WIDTH)->symbol, "FG_WIDTH");
    EXPECT_EQ(findRecord(trees, FG_HEIGHT), nullptr);
}

TEST(ParameterRecord, AFieldTellsItsSizeAndTheRangeOfItsElements) {
    std::string label = "Red LUT Values";
    RegisterInfo from = raw(RegisterTypeUIntField, label.data(), nullptr);
    from.as.uintField = {0, 65535, 16384, 0, 0};
    const ParameterRecord record = copyRecord(from);
    EXPECT_EQ(record.fieldSize, 16384);
    EXPECT_EQ(std::get<Range<std::uint64_t>>(record.range), (Range<std::uint64_t>{0, 65535, 0}));
}

TEST(ParameterRecord, AStringWithoutATextIsEmpty) {
    std::string label = "Debug File";
    EXPECT_EQ(copyRecord(raw(RegisterTypeString, label.data(), nullptr)).text, "");
}

TEST(ParameterRecord, AnUnknownTypeIsRefused) {
    std::string label = "Strange";
    EXPECT_THROW(copyRecord(raw(static_cast<RegisterType>(99), label.data(), nullptr)), Error);
}

}  // namespace
}  // namespace quillon::client
