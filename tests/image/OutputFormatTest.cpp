// Output branch, alignment and bit shift, on a design with the five colour branches and an internal word of 16 bits.

#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct OutputFormat : ::testing::Test, ImagePath {};

// FG_FORMAT ----------------------------------------------------------------------------------------------------------

TEST_F(OutputFormat, TheChosenBranchIsReleasedAndTheOthersGoToTrash) {
    const struct {
        int format;
        std::vector<std::string> writes;
    } rows[] = {{2,  // FG_COL24
                 {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 0",
                  "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_DynamicShift_Shift_Value = 8", "OutputFormat_FG_FORMAT_SelectSource = 0"}},
                {5,  // FG_COL30
                 {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 0",
                  "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_DynamicShift_Shift_Value = 6", "OutputFormat_FG_FORMAT_SelectSource = 1"}},
                {7,  // FG_COL36
                 {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 0",
                  "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_DynamicShift_Shift_Value = 4", "OutputFormat_FG_FORMAT_SelectSource = 2"}},
                {9,  // FG_COL42
                 {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 0",
                  "OutputFormat_DynamicShift_Shift_Value = 2", "OutputFormat_FG_FORMAT_SelectSource = 3"}},
                {6,  // FG_COL48, a branch without trash
                 {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                  "OutputFormat_DynamicShift_Shift_Value = 0", "OutputFormat_FG_FORMAT_SelectSource = 4"}}};
    for (const auto& row : rows) {
        forget();
        EXPECT_EQ(set(FG_FORMAT, row.format), 0);
        EXPECT_EQ(accesses(), row.writes);
        EXPECT_EQ(get<std::uint32_t>(FG_FORMAT), static_cast<std::uint32_t>(row.format));
    }
}

TEST_F(OutputFormat, AFormatPublishesTheLargestCustomShift) {
    const struct {
        int format;
        std::uint64_t maximum;
    } rows[] = {{6, 15}, {5, 9}, {7, 11}, {9, 13}, {2, 7}};
    for (const auto& row : rows) {
        EXPECT_EQ(set(FG_FORMAT, row.format), 0);
        EXPECT_EQ(maximum(FG_CUSTOM_BIT_SHIFT_RIGHT), row.maximum) << row.format;
    }
}

TEST_F(OutputFormat, FormatsThatTheTableKnowsButTheParameterDoesNotAreRefused) {
    for (const int format : {0, 1, 3, 21, 408, 416, 10}) {
        EXPECT_EQ(set(FG_FORMAT, format), -6000) << format;
    }
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_FORMAT), 2U);
}

TEST(OutputFormatFailure, InTheFormatRestoresIt) {
    expectEachFailureRestores(asStarted, FG_FORMAT, 6,
                              {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 1",
                               "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                               "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                               "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                               "OutputFormat_DynamicShift_Shift_Value = 0", "OutputFormat_FG_FORMAT_SelectSource = 4"});
}

// FG_BITALIGNMENT ----------------------------------------------------------------------------------------------------

TEST_F(OutputFormat, LeftAndRightAlignmentShiftAlike) {
    for (const int alignment : {0, 1}) {
        forget();
        EXPECT_EQ(set(FG_BITALIGNMENT, alignment), 0);
        EXPECT_THAT(accesses(), ElementsAre("OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 0",
                                            "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                                            "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                                            "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                                            "OutputFormat_DynamicShift_Shift_Value = 8",
                                            "OutputFormat_FG_FORMAT_SelectSource = 0"));
        EXPECT_EQ(get<std::uint32_t>(FG_BITALIGNMENT), static_cast<std::uint32_t>(alignment));
    }
}

TEST_F(OutputFormat, TheCustomShiftCountsInTheCustomAlignmentAlone) {
    EXPECT_EQ(set(FG_CUSTOM_BIT_SHIFT_RIGHT, 3), 0);
    EXPECT_EQ(writes().at(4), "OutputFormat_DynamicShift_Shift_Value = 8");
    forget();
    EXPECT_EQ(set(FG_BITALIGNMENT, 2), 0);
    EXPECT_EQ(writes().at(4), "OutputFormat_DynamicShift_Shift_Value = 11");  // 16 - 8 + 3
}

TEST_F(OutputFormat, AFourthAlignmentDoesNotExist) {
    EXPECT_EQ(set(FG_BITALIGNMENT, 3), -6000);
    EXPECT_EQ(set(FG_BITALIGNMENT, 4294967295U), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_BITALIGNMENT), 1U);
}

TEST(OutputFormatFailure, InTheAlignmentRestoresIt) {
    expectEachFailureRestores(
        [](ImagePath& path) { path.set(FG_CUSTOM_BIT_SHIFT_RIGHT, 5); }, FG_BITALIGNMENT, 2,
        {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 0",
         "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
         "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
         "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1", "OutputFormat_DynamicShift_Shift_Value = 13",
         "OutputFormat_FG_FORMAT_SelectSource = 0"});
}

// FG_CUSTOM_BIT_SHIFT_RIGHT ------------------------------------------------------------------------------------------

TEST_F(OutputFormat, TheLargestCustomShiftDependsOnTheFormat) {
    const struct { int format, largest; } rows[] = {{2, 7}, {5, 9}, {7, 11}, {9, 13}, {6, 15}};
    for (const auto& row : rows) {
        ASSERT_EQ(set(FG_FORMAT, row.format), 0);
        EXPECT_EQ(set(FG_CUSTOM_BIT_SHIFT_RIGHT, row.largest), 0) << row.format;
        EXPECT_EQ(set(FG_CUSTOM_BIT_SHIFT_RIGHT, row.largest + 1), -6000) << row.format;
        EXPECT_EQ(get<std::uint32_t>(FG_CUSTOM_BIT_SHIFT_RIGHT), static_cast<std::uint32_t>(row.largest));
    }
}

TEST_F(OutputFormat, ACustomShiftSendsAllOfTheFormat) {
    set(FG_BITALIGNMENT, 2);
    forget();
    EXPECT_EQ(set(FG_CUSTOM_BIT_SHIFT_RIGHT, 7), 0);
    EXPECT_THAT(accesses(), ElementsAre("OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 0",
                                        "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                                        "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                                        "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1",
                                        "OutputFormat_DynamicShift_Shift_Value = 15",  // 16 - 8 + 7
                                        "OutputFormat_FG_FORMAT_SelectSource = 0"));
}

TEST_F(OutputFormat, AShiftAsWideAsTheWordIsRefusedWithTheBranchSwitchedAlready) {
    set(FG_FORMAT, 6);
    set(FG_CUSTOM_BIT_SHIFT_RIGHT, 15);
    ASSERT_EQ(set(FG_BITALIGNMENT, 2), 0);  // 16 - 16 + 15
    forget();
    EXPECT_EQ(set(FG_FORMAT, 2), -6000);  // 16 - 8 + 15
    EXPECT_THAT(accesses(), ElementsAre("OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 0",
                                        "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
                                        "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
                                        "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1"));
    EXPECT_EQ(get<std::uint32_t>(FG_FORMAT), 6U);
    EXPECT_EQ(maximum(FG_CUSTOM_BIT_SHIFT_RIGHT), 15U);
}

TEST(OutputFormatFailure, InTheCustomShiftRestoresIt) {
    expectEachFailureRestores(
        [](ImagePath& path) { path.set(FG_BITALIGNMENT, 2); }, FG_CUSTOM_BIT_SHIFT_RIGHT, 4,
        {"OutputFormat_Convert0_VirtualTrash_EnableTrash_Value = 0",
         "OutputFormat_Convert1_VirtualTrash_EnableTrash_Value = 1",
         "OutputFormat_Convert2_VirtualTrash_EnableTrash_Value = 1",
         "OutputFormat_Convert3_VirtualTrash_EnableTrash_Value = 1", "OutputFormat_DynamicShift_Shift_Value = 12",
         "OutputFormat_FG_FORMAT_SelectSource = 0"});
}

// FG_PIXELDEPTH ------------------------------------------------------------------------------------------------------

TEST_F(OutputFormat, ThePixelDepthIsAConstant) {
    for (const int format : {2, 5, 7, 9, 6}) {
        set(FG_FORMAT, format);
        EXPECT_EQ(get<std::uint32_t>(FG_PIXELDEPTH), 16U);
    }
    EXPECT_EQ(set(FG_PIXELDEPTH, 8), -12);
    EXPECT_EQ(get<std::uint32_t>(FG_PIXELDEPTH), 16U);
}

}  // namespace
}  // namespace quillon::image_test
