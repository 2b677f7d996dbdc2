// Reads and writes of single entries and of runs of them.

#include <array>

#include "tests/image/LookupTables.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int Red = 300009, Green = 300010, Blue = 300011;

struct LookupTableValue : ::testing::Test, LookupTables {
    int setElement(int id, std::uint32_t index, std::uint32_t value) { return applet.setElement(id, index, value); }
    /// Writes `count` of `values`, taken to be of a type.
    int setField(int id, int elementType, std::uint32_t index, std::uint32_t count, const void* values) {
        const FieldParameterAccess record{FgParamTypes{elementType}, index, count, const_cast<void*>(values)};
        return applet.setWithType(id, &record, 0, FgTypeFieldAccess);
    }
    int getField(int id, int elementType, std::uint32_t index, std::uint32_t count, void* values) {
        FieldParameterAccess record{FgParamTypes{elementType}, index, count, values};
        return applet.getWithType(id, &record, 0, FgTypeFieldAccess);
    }
};

// Single entries -----------------------------------------------------------------------------------------------------

TEST_F(LookupTableValue, AnEntryGoesToItsColourAlone) {
    EXPECT_EQ(setElement(Red, 5, 1234), 0);
    EXPECT_EQ(setElement(Green, 6, 2345), 0);
    EXPECT_EQ(setElement(Blue, 7, 3456), 0);
    EXPECT_THAT(accesses(), ElementsAre("LookupTable_R_LUTcontent = [5]=1234", "LookupTable_G_LUTcontent = [6]=2345",
                                        "LookupTable_B_LUTcontent = [7]=3456"));
    for (const auto& access : board.transcript()) {
        EXPECT_EQ(access.type, 4098);
    }
    EXPECT_EQ(entry(Red, 5), 1234U);
    EXPECT_EQ(entry(Green, 6), 2345U);
    EXPECT_EQ(entry(Blue, 7), 3456U);
    EXPECT_EQ(entry(Green, 5), 20U);  // 5 * 65535 / 16383
    EXPECT_EQ(entry(Blue, 5), 20U);
}

TEST_F(LookupTableValue, TheFirstAndTheLastEntryTakeTheLargestValue) {
    EXPECT_EQ(setElement(Red, 0, 65535), 0);
    EXPECT_EQ(setElement(Red, 16383, 0), 0);
    EXPECT_EQ(entry(Red, 0), 65535U);
    EXPECT_EQ(entry(Red, 16383), 0U);
}

TEST_F(LookupTableValue, AnEntryOutsideIsRefusedByAWriteAsRange) {
    EXPECT_EQ(setElement(Red, 16384, 0), -6000);
    EXPECT_EQ(setElement(Red, 4294967295U, 0), -6000);
    EXPECT_EQ(setElement(Red, 0, 65536), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(entry(Red, 0), 0U);
}

TEST_F(LookupTableValue, AnEntryOutsideIsRefusedByAReadAsParameter) {
    for (const std::uint32_t index : {16384U, 4294967295U}) {
        FieldParameterInt_s record{77, index};
        EXPECT_EQ(applet.getWithType(Red, &record, 0, FgTypeFieldInt), -2070);
        EXPECT_EQ(record.value, 77U);
    }
}

TEST_F(LookupTableValue, AnyTypeButARunMeansAnEntry) {
    const FieldParameterInt_s written{4321, 9};
    EXPECT_EQ(applet.setWithType(Blue, &written, 0, FgTypeInt32), 0);
    EXPECT_THAT(accesses(), ElementsAre("LookupTable_B_LUTcontent = [9]=4321"));
    FieldParameterInt_s read{0, 9};
    EXPECT_EQ(applet.getWithType(Blue, &read, 0, FgTypeUInt32), 0);
    EXPECT_EQ(read.value, 4321U);
}

TEST_F(LookupTableValue, AReadTouchesNoDesign) {
    board.setElement("Device1_Process0_LookupTable_R_LUTcontent", 5, 9999);
    EXPECT_EQ(entry(Red, 5), 20U);
    EXPECT_EQ(table(Red)[5], 20U);
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(LookupTableValue, AFailureRestoresTheEntry) {
    for (const int id : {Red, Green, Blue}) {
        board.planFaultAt(1, DesignFailure);
        EXPECT_EQ(setElement(id, 5, 1234), DesignFailure);
        EXPECT_EQ(entry(id, 5), 20U);
    }
}

TEST_F(LookupTableValue, EntriesCanBeWrittenInTheCustomModeToo) {
    set(FG_LUT_TYPE, 0);
    EXPECT_EQ(setElement(Green, 1, 2), 0);
    const std::array<std::uint32_t, 1> run = {3};
    EXPECT_EQ(setField(Green, 2, 2, 1, run.data()), 0);
    EXPECT_EQ(entry(Green, 1), 2U);
    EXPECT_EQ(entry(Green, 2), 3U);
}

// Runs ---------------------------------------------------------------------------------------------------------------

TEST_F(LookupTableValue, ARunGoesToItsColourAlone) {
    const std::array<std::uint32_t, 3> values = {11, 12, 13};
    EXPECT_EQ(setField(Red, 2, 100, 3, values.data()), 0);
    EXPECT_EQ(setField(Green, 1, 200, 3, values.data()), 0);
    EXPECT_EQ(setField(Blue, 2, 16381, 3, values.data()), 0);
    EXPECT_THAT(accesses(), ElementsAre("LookupTable_R_LUTcontent = [100..102]=11,12,13",
                                        "LookupTable_G_LUTcontent = [200..202]=11,12,13",
                                        "LookupTable_B_LUTcontent = [16381..16383]=11,12,13"));
    for (const auto& access : board.transcript()) {
        EXPECT_EQ(access.type, 4096);
    }
    std::array<std::uint32_t, 5> read = {};
    EXPECT_EQ(getField(Red, 2, 99, 5, read.data()), 0);
    EXPECT_THAT(read, ElementsAre(396, 11, 12, 13, 412));
    EXPECT_EQ(entry(Blue, 16383), 13U);
}

TEST_F(LookupTableValue, AWholeTableIsARun) {
    const Table values(TableSize, 65535);
    EXPECT_EQ(setField(Red, 2, 0, TableSize, values.data()), 0);
    EXPECT_EQ(table(Red), values);
}

TEST_F(LookupTableValue, AnEmptyRunIsSentAndChangesNothing) {
    const Table before = table(Red);
    EXPECT_EQ(setField(Red, 2, 16383, 0, nullptr), 0);
    EXPECT_EQ(accesses().size(), 1U);
    EXPECT_EQ(table(Red), before);
}

TEST_F(LookupTableValue, ARunOutsideIsRefusedByAWriteAsRange) {
    const Table values(TableSize + 1);
    EXPECT_EQ(setField(Red, 2, 16384, 0, values.data()), -6000);
    EXPECT_EQ(setField(Red, 2, 16384, 1, values.data()), -6000);
    EXPECT_EQ(setField(Red, 2, 16380, 5, values.data()), -6000);
    EXPECT_EQ(setField(Red, 2, 0, 16385, values.data()), -6000);
    EXPECT_EQ(setField(Red, 2, 1, 16384, values.data()), -6000);
    EXPECT_EQ(setField(Red, 2, 4294967295U, 2, values.data()), -6000);
    EXPECT_EQ(setField(Red, 2, 2, 4294967295U, values.data()), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(setField(Red, 2, 16380, 4, values.data()), 0);
}

TEST_F(LookupTableValue, ARunOutsideIsRefusedByAReadAsParameter) {
    Table values(TableSize + 1);
    EXPECT_EQ(getField(Red, 2, 16384, 0, values.data()), -2070);
    EXPECT_EQ(getField(Red, 2, 16380, 5, values.data()), -2070);
    EXPECT_EQ(getField(Red, 2, 0, 16385, values.data()), -2070);
    EXPECT_EQ(getField(Red, 2, 4294967295U, 2, values.data()), -2070);
    EXPECT_EQ(getField(Red, 2, 16380, 4, values.data()), 0);
}

TEST_F(LookupTableValue, OfARunTheFirstValueAloneIsInspected) {
    const std::array<std::uint32_t, 2> first = {65536, 0};
    const std::array<std::uint32_t, 2> second = {65535, 70000};
    EXPECT_EQ(setField(Red, 2, 0, 2, first.data()), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(setField(Red, 2, 0, 2, second.data()), 0);
    EXPECT_EQ(entry(Red, 1), 70000U);
}

TEST_F(LookupTableValue, ARunIsWrittenWithThreeTypesOfEntries) {
    const std::array<std::uint64_t, 2> values = {65536, 0};
    for (const int type : {0, 3, 4, 5, 6, 22, 4096}) {
        EXPECT_EQ(setField(Red, type, 0, 1, values.data()), -2070) << type;
    }
    EXPECT_EQ(setField(Red, 3, 16384, 1, values.data()), -6000);  // the range comes first
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(LookupTableValue, ARunOfRecordsReachesTheDesignAndNotTheApplet) {
    const std::array<std::uint32_t, 2> values = {55, 66};
    EXPECT_EQ(setField(Red, 4098, 10, 2, values.data()), 0);
    EXPECT_EQ(designEntry("R", 10), 55);
    EXPECT_EQ(designEntry("R", 11), 66);
    EXPECT_EQ(entry(Red, 10), 40U);
    EXPECT_EQ(entry(Red, 11), 44U);
}

TEST_F(LookupTableValue, AFailureRestoresTheRun) {
    const Table before = table(Green);
    const std::array<std::uint32_t, 3> values = {11, 12, 13};
    for (const int id : {Red, Green, Blue}) {
        board.planFaultAt(1, DesignFailure);
        EXPECT_EQ(setField(id, 2, 100, 3, values.data()), DesignFailure);
        EXPECT_EQ(table(id), before);
    }
}

TEST_F(LookupTableValue, AWideReadTakesTwoEntriesForOneValue) {
    setElement(Red, 6, 111);
    setElement(Red, 7, 222);
    for (const int type : {3, 4, 5}) {
        std::array<std::uint64_t, 2> values = {0, 77};
        EXPECT_EQ(getField(Red, type, 3, 1, values.data()), 0);
        EXPECT_THAT(values, ElementsAre(111 + (std::uint64_t{222} << 32U), 77)) << type;
    }
}

TEST_F(LookupTableValue, AWideReadRunsOnIntoTheNextColour) {
    setElement(Green, 0, 111);
    setElement(Green, 1, 222);
    std::uint64_t value = 77;
    EXPECT_EQ(getField(Red, 3, 8192, 1, &value), 0);
    EXPECT_EQ(value, 111 + (std::uint64_t{222} << 32U));
}

TEST_F(LookupTableValue, BehindTheLastTableAWideReadGivesZeros) {
    setElement(Blue, 16382, 111);
    setElement(Blue, 16383, 222);
    for (const int type : {3, 4, 5}) {
        std::array<std::uint64_t, 4> values = {77, 77, 77, 77};
        EXPECT_EQ(getField(Blue, type, 8191, 3, values.data()), 0);
        EXPECT_THAT(values, ElementsAre(111 + (std::uint64_t{222} << 32U), 0, 0, 77)) << type;
        EXPECT_EQ(getField(Green, type, 16383, 1, values.data()), 0);
        EXPECT_EQ(values[0], 111 + (std::uint64_t{222} << 32U));
        EXPECT_EQ(getField(Blue, type, 16383, 1, values.data()), 0);
        EXPECT_EQ(values[0], 0U);
    }
}

TEST_F(LookupTableValue, TheBoundsOfAWideReadCountEntriesForEveryColour) {
    std::vector<std::uint64_t> values(TableSize, 77);
    for (const int colour : {Red, Green, Blue}) {
        for (const int type : {3, 4, 5}) {
            EXPECT_EQ(getField(colour, type, 0, TableSize, values.data()), 0);
            EXPECT_EQ(getField(colour, type, 16380, 4, values.data()), 0);
            EXPECT_EQ(getField(colour, type, 16383, 0, nullptr), 0);
            EXPECT_EQ(getField(colour, type, 16384, 0, values.data()), -2070);
            EXPECT_EQ(getField(colour, type, 16380, 5, values.data()), -2070);
            EXPECT_EQ(getField(colour, type, 0, TableSize + 1, values.data()), -2070);
        }
    }
}

TEST_F(LookupTableValue, AReadOfAnUnknownTypeOfEntriesMovesNothing) {
    std::array<std::uint32_t, 1> value = {77};
    for (const int type : {0, 6, 22, 4098}) {
        EXPECT_EQ(getField(Red, type, 16383, 1, value.data()), 0) << type;
    }
    EXPECT_EQ(value[0], 77U);
}

TEST_F(LookupTableValue, ARunWithoutValuesIsRefused) {
    EXPECT_EQ(setField(Red, 2, 0, 1, nullptr), -2070);
    EXPECT_EQ(getField(Red, 2, 0, 1, nullptr), -2070);
}

}  // namespace
}  // namespace quillon::image_test
