#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct SensorGeometry : ::testing::Test, ImagePath {};

// Writes -------------------------------------------------------------------------------------------------------------

TEST_F(SensorGeometry, AWidthSendsAllEightBufferParameters) {
    EXPECT_EQ(set(FG_WIDTH, 2048), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 2048", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                                      "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 2048", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"));
    EXPECT_EQ(get<std::uint32_t>(FG_WIDTH), 2048U);
}

TEST_F(SensorGeometry, AWidthReadsTheMemoryForTheSensorSizesItPublishes) {
    set(FG_WIDTH, 2048);
    EXPECT_THAT(reads(),
                ElementsAre("Buffer_0_LinkPixelSpace_Parallelism ? 8", "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26",
                            "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512", "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26",
                            "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512"));
}

TEST_F(SensorGeometry, AHeightSendsTheTriggerBlockBehindTheBuffer) {
    EXPECT_EQ(set(FG_HEIGHT, 500), 0);
    EXPECT_THAT(accesses(), ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                                        "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                                        "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 500",
                                        "Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 500",
                                        "Trigger_Trigger_YOffset = 0", "ImageHeight_ImageHeight = 500"));
}

TEST_F(SensorGeometry, AnOldValueOfZeroPutsTheSensorHeightAheadOfTheMirrors) {
    EXPECT_EQ(set(FG_XOFFSET, 8), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1032", "Buffer_0_SensorHeight = 1",
                                      "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 8", "Buffer_0_YLength = 1024"));
}

TEST_F(SensorGeometry, AnOldValueOfOnePutsTheSensorHeightAheadOfTheMirrors) {
    set(FG_HEIGHT, 1);
    forget();
    EXPECT_EQ(set(FG_HEIGHT, 2), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_SensorHeight = 1",
                                      "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 2",
                                      "Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 2",
                                      "Trigger_Trigger_YOffset = 0", "ImageHeight_ImageHeight = 2"));
}

TEST_F(SensorGeometry, AnyOtherOldValuePutsTheSensorHeightBehindTheMirrors) {
    set(FG_XOFFSET, 8);
    forget();
    EXPECT_EQ(set(FG_XOFFSET, 0), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                                      "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"));
}

TEST_F(SensorGeometry, AVerticalOffsetGoesToTheTriggerAndNotToTheBuffer) {
    EXPECT_EQ(set(FG_YOFFSET, 77), 0);
    EXPECT_THAT(
        accesses(),
        ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_SensorHeight = 1", "Buffer_0_XMirror = 0",
                    "Buffer_0_YMirror = 0", "Buffer_0_PixelFormat = 8", "Buffer_0_XLength = 1024",
                    "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024", "Trigger_Trigger_YOffset = 0",
                    "Trigger_Trigger_YLength = 1024", "Trigger_Trigger_YOffset = 77", "ImageHeight_ImageHeight = 1024",
                    "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26", "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512"));
    forget();
    EXPECT_EQ(set(FG_YOFFSET, 0), 0);  // its old value decides: 77 puts the height behind the mirrors
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                                      "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024",
                                      "Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 1024",
                                      "Trigger_Trigger_YOffset = 0", "ImageHeight_ImageHeight = 1024"));
}

TEST_F(SensorGeometry, ASensorWidthIsReadForButNotSentItself) {
    EXPECT_EQ(set(FG_SENSORWIDTH, 4096), 0);
    EXPECT_THAT(
        accesses(),
        ElementsAre("Buffer_0_LinkPixelSpace_Parallelism ? 8", "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26",
                    "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512", "Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0",
                    "Buffer_0_YMirror = 0", "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                    "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024",
                    "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26", "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512"));
    EXPECT_EQ(get<std::uint32_t>(FG_SENSORWIDTH), 4096U);
}

TEST_F(SensorGeometry, ASensorHeightIsReadForButNotSentItself) {
    EXPECT_EQ(set(FG_SENSORHEIGHT, 4096), 0);
    EXPECT_THAT(
        accesses(),
        ElementsAre("Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26", "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512",
                    "Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                    "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8", "Buffer_0_XLength = 1024",
                    "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024", "Buffer_0_LinkPixelSpace_Parallelism ? 8",
                    "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26", "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512"));
    EXPECT_EQ(get<std::uint32_t>(FG_SENSORHEIGHT), 4096U);
}

TEST_F(SensorGeometry, APixelFormatIsSentTwiceAsBits) {
    const struct {
        int format;
        std::string sent;
    } rows[] = {{1026, "Buffer_0_PixelFormat = 10"},
                {1027, "Buffer_0_PixelFormat = 12"},
                {1028, "Buffer_0_PixelFormat = 14"},
                {1029, "Buffer_0_PixelFormat = 16"},
                {1025, "Buffer_0_PixelFormat = 8"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        forget();
        EXPECT_EQ(set(FG_PIXELFORMAT, row.format), 0);
        EXPECT_THAT(writes(),
                    ElementsAre(row.sent, "Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                                "Buffer_0_SensorHeight = 1", row.sent, "Buffer_0_XLength = 1024",
                                "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"));
    }
}

TEST_F(SensorGeometry, APixelFormatLeavesOutputFormatAndShiftAlone) {
    set(FG_PIXELFORMAT, 1029);
    EXPECT_EQ(get<std::uint32_t>(FG_FORMAT), 2U);
    EXPECT_EQ(board.integer("Device1_Process0_OutputFormat_DynamicShift_Shift_Value"), 8);
}

TEST_F(SensorGeometry, TheVerticalMirrorAloneIsSentAsASignedNumber) {
    set(FG_WIDTH, 2048);
    for (const auto& access : board.transcript()) {
        EXPECT_EQ(access.type, access.name == "Device1_Process0_Buffer_0_YMirror" ? 1 : 2) << access.line();
    }
}

// What is accepted ---------------------------------------------------------------------------------------------------

TEST_F(SensorGeometry, AWidthIsAMultipleOfFourFrom4To16384) {
    EXPECT_EQ(set(FG_WIDTH, 4), 0);
    EXPECT_EQ(set(FG_WIDTH, 16384), 0);
    EXPECT_EQ(set(FG_WIDTH, 3), -6000);
    EXPECT_EQ(set(FG_WIDTH, 0), -6000);
    EXPECT_EQ(set(FG_WIDTH, 6), -7080);
    EXPECT_EQ(set(FG_WIDTH, 16388), -6000);
    EXPECT_EQ(set(FG_WIDTH, 4294967292U), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_WIDTH), 16384U);
}

TEST_F(SensorGeometry, AWidthIsTestedForItsRangeBeforeItsAlignment) {
    EXPECT_EQ(set(FG_WIDTH, 16386), -6000);
    EXPECT_EQ(set(FG_WIDTH, 2), -6000);
    EXPECT_EQ(set(FG_WIDTH, 16382), -7080);
}

TEST_F(SensorGeometry, AWidthLeavesRoomForTheOffset) {
    set(FG_WIDTH, 4);
    set(FG_XOFFSET, 4);
    EXPECT_EQ(set(FG_WIDTH, 16384), -6000);
    EXPECT_EQ(set(FG_WIDTH, 16380), 0);
}

TEST_F(SensorGeometry, AWidthIsTestedForTheRoomTheOffsetLeavesBeforeItsAlignment) {
    set(FG_XOFFSET, 100);
    EXPECT_EQ(set(FG_WIDTH, 16285), -6000);
    EXPECT_EQ(set(FG_WIDTH, 16283), -7080);
    EXPECT_EQ(set(FG_WIDTH, 16284), 0);
}

TEST_F(SensorGeometry, AnOffsetLeavesRoomForTheWidth) {
    EXPECT_EQ(set(FG_XOFFSET, 15360), 0);
    EXPECT_EQ(set(FG_XOFFSET, 15364), -6000);
    EXPECT_EQ(set(FG_XOFFSET, 15362), -6000);
    EXPECT_EQ(set(FG_XOFFSET, 2), -7080);
    EXPECT_EQ(get<std::uint32_t>(FG_XOFFSET), 15360U);
    EXPECT_EQ(set(FG_XOFFSET, 0), 0);
}

TEST_F(SensorGeometry, AHeightIsFrom1To1398101) {
    EXPECT_EQ(set(FG_HEIGHT, 1398101), 0);
    EXPECT_EQ(set(FG_HEIGHT, 1398102), -6000);
    EXPECT_EQ(set(FG_HEIGHT, 0), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_HEIGHT), 1398101U);
    EXPECT_EQ(set(FG_HEIGHT, 1), 0);
}

TEST_F(SensorGeometry, AVerticalOffsetIsFrom0To1398101) {
    EXPECT_EQ(set(FG_YOFFSET, 1398101), 0);
    EXPECT_EQ(set(FG_YOFFSET, 1398102), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_YOFFSET), 1398101U);
    EXPECT_EQ(set(FG_YOFFSET, 0), 0);
}

TEST_F(SensorGeometry, ASensorWidthNeedsNoAlignment) {
    EXPECT_EQ(set(FG_SENSORWIDTH, 5), 0);
    EXPECT_EQ(set(FG_SENSORWIDTH, 4), 0);
    EXPECT_EQ(set(FG_SENSORWIDTH, 16384), 0);
    EXPECT_EQ(set(FG_SENSORWIDTH, 3), -6000);
    EXPECT_EQ(set(FG_SENSORWIDTH, 16385), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_SENSORWIDTH), 16384U);
}

TEST_F(SensorGeometry, ASensorHeightIsFrom1To1398101) {
    EXPECT_EQ(set(FG_SENSORHEIGHT, 1), 0);
    EXPECT_EQ(set(FG_SENSORHEIGHT, 1398101), 0);
    EXPECT_EQ(set(FG_SENSORHEIGHT, 0), -6000);
    EXPECT_EQ(set(FG_SENSORHEIGHT, 1398102), -6000);
    EXPECT_EQ(get<std::uint32_t>(FG_SENSORHEIGHT), 1398101U);
}

TEST_F(SensorGeometry, TheSensorMayBeSmallerThanTheRegion) {
    EXPECT_EQ(set(FG_SENSORWIDTH, 4), 0);
    EXPECT_EQ(set(FG_SENSORHEIGHT, 1), 0);
    EXPECT_EQ(get<std::uint32_t>(FG_WIDTH), 1024U);
    EXPECT_EQ(get<std::uint32_t>(FG_HEIGHT), 1024U);
}

TEST_F(SensorGeometry, OnlyTheFiveRgbFormatsAreAccepted) {
    for (const int format : {0, 257, 1024, 1030, 1281, 65537 + 1024}) {
        EXPECT_EQ(set(FG_PIXELFORMAT, format), -6000) << format;
    }
    EXPECT_EQ(get<std::uint32_t>(FG_PIXELFORMAT), 1025U);
}

TEST_F(SensorGeometry, ARefusedValueReachesNeitherDesignNorRecords) {
    const auto before = published();
    const struct {
        int id;
        std::uint32_t value;
    } rows[] = {{FG_WIDTH, 6},         {FG_HEIGHT, 0},       {FG_XOFFSET, 2},
                {FG_YOFFSET, 1398102}, {FG_VANTAGEPOINT, 4}, {FG_PIXELFORMAT, 1030}};
    for (const auto& row : rows) {
        EXPECT_LT(set(row.id, row.value), 0) << row.id;
    }
    EXPECT_THAT(accesses(), IsEmpty());
    set(FG_SENSORWIDTH, 3);
    set(FG_SENSORHEIGHT, 0);
    EXPECT_THAT(writes(), IsEmpty());
    EXPECT_EQ(published(), before);
}

// Published maxima ---------------------------------------------------------------------------------------------------

TEST_F(SensorGeometry, TheMaximumOfTheOffsetFollowsTheWidth) {
    EXPECT_EQ(maximum(FG_XOFFSET), 15360U);  // 16384 - 1024, from the start
    set(FG_WIDTH, 4000);
    EXPECT_EQ(maximum(FG_XOFFSET), 12384U);
}

TEST_F(SensorGeometry, TheMaximumOfTheWidthFollowsTheOffset) {
    EXPECT_EQ(maximum(FG_WIDTH), 16384U);
    set(FG_XOFFSET, 400);
    EXPECT_EQ(maximum(FG_WIDTH), 15984U);
}

TEST_F(SensorGeometry, TheOtherMaximaAreConstants) {
    set(FG_WIDTH, 4000);
    set(FG_SENSORHEIGHT, 7);
    set(FG_PIXELFORMAT, 1029);
    EXPECT_EQ(maximum(FG_SENSORWIDTH), 16384U);
    EXPECT_EQ(maximum(FG_SENSORHEIGHT), 1398101U);
    EXPECT_EQ(maximum(FG_HEIGHT), 1398101U);
    EXPECT_EQ(maximum(FG_YOFFSET), 1398101U);
}

}  // namespace
}  // namespace quillon::image_test
