// The lookup stage: on or off, computed or from a file, and who may write what in which mode.

#include "tests/image/LookupTables.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::vector<std::string> AllTables = {"LookupTable_R_LUTcontent = [0..16383]",
                                            "LookupTable_G_LUTcontent = [0..16383]",
                                            "LookupTable_B_LUTcontent = [0..16383]"};

void inCustomMode(ImagePath& path) {
    ASSERT_EQ(path.set(FG_LUT_TYPE, 0), 0);
}

struct LookupTable : ::testing::Test, LookupTables {
    /// Of gain, gamma, offset and invert.
    std::vector<int> processingFlags() const {
        return {accessFlags(FG_PROCESSING_GAIN), accessFlags(FG_PROCESSING_GAMMA), accessFlags(FG_PROCESSING_OFFSET),
                accessFlags(FG_PROCESSING_INVERT)};
    }
};

TEST_F(LookupTable, EachProcessingValueSendsAllThreeTables) {
    EXPECT_EQ(set(FG_PROCESSING_OFFSET, 0.5), 0);
    EXPECT_EQ(accesses(), AllTables);
    forget();
    EXPECT_EQ(set(FG_PROCESSING_GAIN, 2.0), 0);
    EXPECT_EQ(accesses(), AllTables);
    forget();
    EXPECT_EQ(set(FG_PROCESSING_GAMMA, 2.2), 0);
    EXPECT_EQ(accesses(), AllTables);
    forget();
    EXPECT_EQ(set(FG_PROCESSING_INVERT, 1), 0);
    EXPECT_EQ(accesses(), AllTables);
    for (const auto& access : board.transcript()) {
        EXPECT_EQ(access.type, 4096) << access.line();
    }
}

TEST_F(LookupTable, AProcessingValueWaitsInTheCustomMode) {
    inCustomMode(*this);
    forget();
    EXPECT_EQ(set(FG_PROCESSING_INVERT, 1), 0);
    EXPECT_EQ(set(FG_PROCESSING_GAMMA, 0.5), 0);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(entry(FG_LUT_VALUE_BLUE, 16383), 65535U);
    EXPECT_EQ(set(FG_LUT_TYPE, 3), 0);
    EXPECT_EQ(accesses(), AllTables);
    EXPECT_EQ(entry(FG_LUT_VALUE_BLUE, 8191), 49153U);  // 65535 - 16382
    EXPECT_EQ(designEntry("R", 16383), 0);
}

TEST_F(LookupTable, EnablingSwitchesTheStageAndSendsNoTable) {
    EXPECT_EQ(set(FG_LUT_ENABLE, 1), 0);
    EXPECT_THAT(accesses(), ElementsAre("LookupTable_EnableLUT_Value = 1"));
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_ENABLE), 1U);
    forget();
    EXPECT_EQ(set(FG_LUT_ENABLE, 0), 0);
    EXPECT_THAT(accesses(), ElementsAre("LookupTable_EnableLUT_Value = 0"));
    EXPECT_EQ(set(FG_LUT_ENABLE, 2), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_ENABLE), 0U);
}

TEST_F(LookupTable, TheProcessingValuesAreOpenWhileTheStageIsOnAndComputed) {
    EXPECT_THAT(processingFlags(), ElementsAre(1, 1, 1, 1));
    set(FG_LUT_ENABLE, 1);
    EXPECT_THAT(processingFlags(), ElementsAre(7, 7, 7, 7));
    set(FG_LUT_TYPE, 0);
    EXPECT_THAT(processingFlags(), ElementsAre(1, 1, 1, 1));
    set(FG_LUT_TYPE, 3);
    EXPECT_THAT(processingFlags(), ElementsAre(7, 7, 7, 7));
    set(FG_LUT_ENABLE, 0);
    EXPECT_THAT(processingFlags(), ElementsAre(1, 1, 1, 1));
    set(FG_LUT_TYPE, 0);
    set(FG_LUT_ENABLE, 1);
    EXPECT_THAT(processingFlags(), ElementsAre(1, 1, 1, 1));
}

TEST_F(LookupTable, TheFlagsAreForUsersAndNotConsulted) {
    EXPECT_EQ(accessFlags(FG_PROCESSING_GAIN), 1);
    EXPECT_EQ(set(FG_PROCESSING_GAIN, 2.0), 0);
    EXPECT_EQ(get<double>(FG_PROCESSING_GAIN), 2.0);
}

TEST_F(LookupTable, TheFileIsOpenInTheCustomMode) {
    EXPECT_EQ(accessFlags(FG_LUT_CUSTOM_FILE), 1);
    set(FG_LUT_TYPE, 0);
    EXPECT_EQ(accessFlags(FG_LUT_CUSTOM_FILE), 7);
    set(FG_LUT_TYPE, 3);
    EXPECT_EQ(accessFlags(FG_LUT_CUSTOM_FILE), 1);
}

TEST_F(LookupTable, TheCustomModeWithoutAFileKeepsTheTables) {
    EXPECT_EQ(set(FG_LUT_TYPE, 0), 0);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(entry(FG_LUT_VALUE_RED, 8191), 32765U);
}

TEST_F(LookupTable, ThereAreTwoTypes) {
    for (const std::uint32_t type : {1U, 2U, 4U, 4294967295U}) {
        EXPECT_EQ(set(FG_LUT_TYPE, type), -6000) << type;
    }
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_TYPE), 3U);
    EXPECT_THAT(accesses(), IsEmpty());
}

TEST_F(LookupTable, ItsShapeIsConstant) {
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_IMPLEMENTATION_TYPE), 0U);
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_IN_BITS), 14U);
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_OUT_BITS), 16U);
    for (const int id : {FG_LUT_IMPLEMENTATION_TYPE, FG_LUT_IN_BITS, FG_LUT_OUT_BITS}) {
        EXPECT_EQ(set(id, 1), -12);
    }
}

// A failing design ---------------------------------------------------------------------------------------------------

TEST(LookupTableFailure, InAProcessingValueRestoresIt) {
    expectEachFailureRestores(asStarted, FG_PROCESSING_OFFSET, 0.5, AllTables);
    expectEachFailureRestores(asStarted, FG_PROCESSING_GAIN, 2.0, AllTables);
    expectEachFailureRestores(asStarted, FG_PROCESSING_GAMMA, 2.2, AllTables);
    expectEachFailureRestores(asStarted, FG_PROCESSING_INVERT, 1, AllTables);
}

TEST_F(LookupTable, AFailureLeavesTheNewCurveInTheApplet) {
    board.planFault("Device1_Process0_LookupTable_G_LUTcontent", client::Direction::Write, 1, DesignFailure);
    EXPECT_EQ(set(FG_PROCESSING_GAMMA, 0.5), DesignFailure);
    EXPECT_EQ(get<double>(FG_PROCESSING_GAMMA), 1.0);
    for (const int id : {FG_LUT_VALUE_RED, FG_LUT_VALUE_GREEN, FG_LUT_VALUE_BLUE}) {
        EXPECT_EQ(entry(id, 8191), 16382U);
    }
    EXPECT_EQ(designEntry("R", 8191), 16382);
    EXPECT_EQ(designEntry("G", 8191), 32765);
    EXPECT_EQ(designEntry("B", 8191), 32765);
}

TEST(LookupTableFailure, InTheTypeRestoresItWithItsFlags) {
    expectEachFailureRestores(inCustomMode, FG_LUT_TYPE, 3, AllTables);
}

TEST_F(LookupTable, AFailureInTheSwitchRestoresItAndKeepsTheFlags) {
    board.planFaultAt(1, DesignFailure);
    EXPECT_EQ(set(FG_LUT_ENABLE, 1), DesignFailure);
    EXPECT_EQ(get<std::uint32_t>(FG_LUT_ENABLE), 0U);
    EXPECT_THAT(processingFlags(), ElementsAre(7, 7, 7, 7));
}

}  // namespace
}  // namespace quillon::image_test
