// Mirroring, and the bounds of the horizontal offset that follow from it.

#include <algorithm>

#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct VantagePoint : ::testing::Test, ImagePath {
    /// A region of 1024 pixels at 16 and 1024 lines at 0, on a sensor of 4096 pixels and 2048 lines.
    void placeRegionOnLargerSensor() {
        set(FG_SENSORWIDTH, 4096);
        set(FG_SENSORHEIGHT, 2048);
        set(FG_XOFFSET, 16);
        forget();
    }
    void setMemory(std::int64_t addressWidth, std::int64_t dataWidth) {
        board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", addressWidth);
        board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamDataWidth", dataWidth);
    }
};

// Writes -------------------------------------------------------------------------------------------------------------

TEST_F(VantagePoint, TopLeftSendsTheEndOfTheRegionAndOneLine) {
    placeRegionOnLargerSensor();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 0), 0);
    EXPECT_THAT(accesses(), ElementsAre("Buffer_0_SensorWidth = 1040", "Buffer_0_SensorHeight = 1",
                                        "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0", "Buffer_0_PixelFormat = 8",
                                        "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 16", "Buffer_0_YLength = 1024"));
    EXPECT_EQ(maximum(FG_XOFFSET), 15360U);  // 16384 - 1024
}

TEST_F(VantagePoint, TopRightSendsTheSensorWidthAndMirrorsX) {
    placeRegionOnLargerSensor();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 1), 0);
    EXPECT_THAT(accesses(), ElementsAre("Buffer_0_SensorWidth = 4096", "Buffer_0_SensorHeight = 1",
                                        "Buffer_0_XMirror = 1", "Buffer_0_YMirror = 0", "Buffer_0_PixelFormat = 8",
                                        "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 16", "Buffer_0_YLength = 1024"));
    EXPECT_EQ(maximum(FG_XOFFSET), 3072U);  // 4096 - 1024
}

TEST_F(VantagePoint, BottomLeftSendsTheSensorHeightAndMirrorsY) {
    placeRegionOnLargerSensor();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
    EXPECT_THAT(accesses(), ElementsAre("Buffer_0_SensorWidth = 1040", "Buffer_0_SensorHeight = 2048",
                                        "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 1", "Buffer_0_PixelFormat = 8",
                                        "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 16", "Buffer_0_YLength = 1024",
                                        "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26",
                                        "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512"));
    EXPECT_EQ(maximum(FG_XOFFSET), 15360U);
}

TEST_F(VantagePoint, BottomRightSendsBothAndMirrorsBoth) {
    placeRegionOnLargerSensor();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 3), 0);
    EXPECT_THAT(accesses(), ElementsAre("Buffer_0_SensorWidth = 4096", "Buffer_0_SensorHeight = 2048",
                                        "Buffer_0_XMirror = 1", "Buffer_0_YMirror = 1", "Buffer_0_PixelFormat = 8",
                                        "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 16", "Buffer_0_YLength = 1024",
                                        "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26",
                                        "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512"));
    EXPECT_EQ(maximum(FG_XOFFSET), 3072U);
}

TEST_F(VantagePoint, TheOldVantagePointDecidesWhereTheSensorHeightGoes) {
    set(FG_VANTAGEPOINT, 1);
    forget();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_SensorHeight = 1024",
                                      "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 1", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"));
    forget();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 3), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 1", "Buffer_0_YMirror = 1",
                                      "Buffer_0_SensorHeight = 1024", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"));
    forget();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 0), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                                      "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"));
}

TEST_F(VantagePoint, EveryOtherWriteClearsTheMirroringAndKeepsTheParameter) {
    placeRegionOnLargerSensor();
    set(FG_VANTAGEPOINT, 3);
    forget();
    EXPECT_EQ(set(FG_HEIGHT, 512), 0);
    EXPECT_THAT(writes(), ElementsAre("Buffer_0_SensorWidth = 1040", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
                                      "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                                      "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 16", "Buffer_0_YLength = 512",
                                      "Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 512",
                                      "Trigger_Trigger_YOffset = 0", "ImageHeight_ImageHeight = 512"));
    EXPECT_EQ(get<std::uint32_t>(FG_VANTAGEPOINT), 3U);
}

// What is accepted ---------------------------------------------------------------------------------------------------

TEST_F(VantagePoint, OnlyFourValuesAreAccepted) {
    EXPECT_EQ(set(FG_VANTAGEPOINT, 4), -6000);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 4294967295U), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_VANTAGEPOINT), 0U);
}

TEST_F(VantagePoint, FromTheRightTheRegionMustLieOnTheSensor) {
    EXPECT_EQ(set(FG_VANTAGEPOINT, 1), 0);  // 1024 pixels on a sensor of 1024
    EXPECT_EQ(set(FG_VANTAGEPOINT, 0), 0);
    set(FG_XOFFSET, 4);
    forget();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 1), -6000);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 3), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_VANTAGEPOINT), 0U);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
}

TEST_F(VantagePoint, FromTheBottomTheRegionMustLieOnTheSensor) {
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);  // 1024 lines on a sensor of 1024
    EXPECT_EQ(set(FG_VANTAGEPOINT, 0), 0);
    set(FG_YOFFSET, 1);
    forget();
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), -6000);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 3), -6000);
    EXPECT_THAT(accesses(), IsEmpty());
    EXPECT_EQ(get<std::uint32_t>(FG_VANTAGEPOINT), 0U);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 1), 0);
}

TEST_F(VantagePoint, ItChangesTheMaximumOfTheOffsetAlone) {
    placeRegionOnLargerSensor();
    auto expected = published();
    std::replace(expected.begin(), expected.end(), std::string("FG_XOFFSET flags 3 maximum 15360"),
                 std::string("FG_XOFFSET flags 3 maximum 3072"));
    set(FG_VANTAGEPOINT, 1);
    EXPECT_EQ(published(), expected);
}

// The bound of the horizontal offset ---------------------------------------------------------------------------------

TEST_F(VantagePoint, FromTheRightTheOffsetEndsAtTheSensor) {
    placeRegionOnLargerSensor();
    set(FG_VANTAGEPOINT, 1);
    EXPECT_EQ(set(FG_XOFFSET, 3072), 0);
    EXPECT_EQ(set(FG_XOFFSET, 3076), -6000);
}

TEST_F(VantagePoint, AWidthAboveTheSensorWidthWrapsToABoundThatRefusesNothing) {
    set(FG_VANTAGEPOINT, 1);
    EXPECT_EQ(set(FG_SENSORWIDTH, 1000), 0);
    EXPECT_EQ(maximum(FG_XOFFSET), 4294967272U);  // 1000 - 1024, modulo 2^32
    EXPECT_EQ(set(FG_XOFFSET, 15360), 0);
    EXPECT_EQ(set(FG_XOFFSET, 15364), -6000);  // 15364 + 1024 > 16384
    EXPECT_EQ(get<std::uint32_t>(FG_XOFFSET), 15360U);
}

TEST_F(VantagePoint, FromTheBottomLeftTheMemoryBoundsTheOffset) {
    setMemory(19, 512);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
    // 3 * 512 * (2^19 / 2) = 402653184 bits; / 24 = 16777216 pixels; / (1024 + 511) = 10929; - 1024 = 9905
    EXPECT_EQ(maximum(FG_XOFFSET), 9905U);
    EXPECT_EQ(set(FG_XOFFSET, 9904), 0);
    EXPECT_EQ(set(FG_XOFFSET, 9908), -6000);
}

TEST_F(VantagePoint, APixelFormatWithMoreBitsLeavesLessOfTheMemory) {
    setMemory(19, 512);
    set(FG_VANTAGEPOINT, 2);
    const struct {
        int format;
        std::uint64_t maximum;
    } rows[] = {{1025, 9905},   // 402653184 / 24 = 16777216; / 1535 = 10929; - 1024
                {1026, 7719},   // 402653184 / 30 = 13421772; / 1535 = 8743; - 1024
                {1027, 6262},   // 402653184 / 36 = 11184810; / 1535 = 7286; - 1024
                {1028, 5221},   // 402653184 / 42 = 9586980; / 1535 = 6245; - 1024
                {1029, 4440}};  // 402653184 / 48 = 8388608; / 1535 = 5464; - 1024
    for (const auto& row : rows) {
        EXPECT_EQ(set(FG_PIXELFORMAT, row.format), 0);
        EXPECT_EQ(maximum(FG_XOFFSET), row.maximum) << row.format;
    }
}

TEST_F(VantagePoint, AHigherSensorLeavesLessOfTheMemory) {
    set(FG_VANTAGEPOINT, 2);
    EXPECT_EQ(set(FG_SENSORHEIGHT, 1398101), 0);
    // 3 * 512 * 2^25 / 24 = 2147483648; / (1398101 + 511) = 1535; - 1024 = 511
    EXPECT_EQ(maximum(FG_XOFFSET), 511U);
    EXPECT_EQ(set(FG_XOFFSET, 508), 0);
    EXPECT_EQ(set(FG_XOFFSET, 512), -6000);
}

TEST_F(VantagePoint, FromTheBottomRightTheMemoryIsReadAndBoundsNothing) {
    setMemory(19, 512);
    set(FG_SENSORWIDTH, 16384);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 3), 0);
    EXPECT_EQ(maximum(FG_XOFFSET), 15360U);  // 16384 - 1024
    forget();
    EXPECT_EQ(set(FG_XOFFSET, 15360), 0);
    EXPECT_EQ(accesses().front(), "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 19");
}

TEST_F(VantagePoint, AMemoryThatHoldsMoreThanTheLongestLineBoundsNothing) {
    setMemory(20, 512);
    set(FG_VANTAGEPOINT, 2);
    EXPECT_EQ(maximum(FG_XOFFSET), 15360U);  // 33554432 / 1535 = 21859 > 16384
}

// Designs that lie ---------------------------------------------------------------------------------------------------

TEST_F(VantagePoint, OfTheCapacityTheLow32BitsAreKept) {
    set(FG_HEIGHT, 1);
    set(FG_SENSORHEIGHT, 1);
    setMemory(36, 1);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
    // 3 * 1 * 2^35 / 24 = 2^32; / (1 + 0) = 2^32, of which 0 is left; 0 - 1024, modulo 2^32
    EXPECT_EQ(maximum(FG_XOFFSET), 4294966272U);
}

TEST_F(VantagePoint, SixtyFourAddressBitsAreNoMemoryAtAll) {
    for (const std::int64_t addressWidth : {std::int64_t{64}, std::int64_t{65}, std::int64_t{4294967295}}) {
        setMemory(addressWidth, 512);
        EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
        EXPECT_EQ(maximum(FG_XOFFSET), 4294966272U) << addressWidth;  // 0 - 1024, modulo 2^32
    }
}

TEST_F(VantagePoint, AProductThatOverflowsIsTakenModulo64Bits) {
    setMemory(63, 512);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
    EXPECT_EQ(maximum(FG_XOFFSET), 4294966272U);  // 3 * 512 * 2^62 is 0 modulo 2^64
}

TEST_F(VantagePoint, NoAddressBitsAreHalfAnAddressWhichIsNone) {
    setMemory(0, 512);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);
    EXPECT_EQ(maximum(FG_XOFFSET), 4294966272U);
}

TEST_F(VantagePoint, AMemoryOfNoWidthDoesNotDivideByZero) {
    set(FG_HEIGHT, 1);
    set(FG_SENSORHEIGHT, 1);
    setMemory(26, 0);
    EXPECT_EQ(set(FG_VANTAGEPOINT, 2), 0);  // 1 + 0 - 1 lines
    EXPECT_EQ(maximum(FG_XOFFSET), 4294966272U);
    EXPECT_EQ(set(FG_XOFFSET, 4), 0);
}

}  // namespace
}  // namespace quillon::image_test
