// What a failing design does to a change of the geometry: in the writes it undoes the change, in the reads that only
// serve a published maximum it costs that maximum and nothing else.

#include <ostream>

#include "quillon/PublicParameters.h"
#include "tests/image/ImagePath.h"

namespace quillon::image_test {
namespace {

using Lines = std::vector<std::string>;

const std::string Parallelism = "Buffer_0_LinkPixelSpace_Parallelism ? 8";
const std::string AddressWidth = "Buffer_0_DRAM_DRAM_A_0_RamAddressWidth ? 26";
const std::string DataWidth = "Buffer_0_DRAM_DRAM_A_0_RamDataWidth ? 512";

void seenFromBottomLeft(ImagePath& path) {
    path.set(FG_VANTAGEPOINT, 2);
}

TEST(SensorGeometryFailure, InTheWidthRestoresIt) {
    expectEachFailureRestores(
        asStarted, FG_WIDTH, 2048,
        {"Buffer_0_SensorWidth = 2048", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0", "Buffer_0_SensorHeight = 1",
         "Buffer_0_PixelFormat = 8", "Buffer_0_XLength = 2048", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"});
}

TEST(SensorGeometryFailure, InTheHeightRestoresIt) {
    expectEachFailureRestores(
        asStarted, FG_HEIGHT, 500,
        {"Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0", "Buffer_0_SensorHeight = 1",
         "Buffer_0_PixelFormat = 8", "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 500",
         "Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 500", "Trigger_Trigger_YOffset = 0",
         "ImageHeight_ImageHeight = 500"});
}

TEST(SensorGeometryFailure, InTheOffsetRestoresIt) {
    expectEachFailureRestores(seenFromBottomLeft, FG_XOFFSET, 400,
                              {AddressWidth, DataWidth, "Buffer_0_SensorWidth = 1424", "Buffer_0_SensorHeight = 1",
                               "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0", "Buffer_0_PixelFormat = 8",
                               "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 400", "Buffer_0_YLength = 1024"});
}

TEST(SensorGeometryFailure, InTheVerticalOffsetRestoresIt) {
    expectEachFailureRestores(
        asStarted, FG_YOFFSET, 500,
        {"Buffer_0_SensorWidth = 1024", "Buffer_0_SensorHeight = 1", "Buffer_0_XMirror = 0", "Buffer_0_YMirror = 0",
         "Buffer_0_PixelFormat = 8", "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024",
         "Trigger_Trigger_YOffset = 0", "Trigger_Trigger_YLength = 1024", "Trigger_Trigger_YOffset = 500",
         "ImageHeight_ImageHeight = 1024"});
}

TEST(SensorGeometryFailure, InTheSensorWidthRestoresIt) {
    expectEachFailureRestores(
        asStarted, FG_SENSORWIDTH, 2048,
        {Parallelism, AddressWidth, DataWidth, "Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0",
         "Buffer_0_YMirror = 0", "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8", "Buffer_0_XLength = 1024",
         "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"});
}

TEST(SensorGeometryFailure, InTheSensorHeightRestoresIt) {
    expectEachFailureRestores(asStarted, FG_SENSORHEIGHT, 2048,
                              {AddressWidth, DataWidth, "Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0",
                               "Buffer_0_YMirror = 0", "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 8",
                               "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"});
}

TEST(SensorGeometryFailure, InTheVantagePointRestoresIt) {
    expectEachFailureRestores(
        asStarted, FG_VANTAGEPOINT, 3,
        {"Buffer_0_SensorWidth = 1024", "Buffer_0_SensorHeight = 1024", "Buffer_0_XMirror = 1", "Buffer_0_YMirror = 1",
         "Buffer_0_PixelFormat = 8", "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"});
}

TEST(SensorGeometryFailure, InThePixelFormatRestoresIt) {
    expectEachFailureRestores(asStarted, FG_PIXELFORMAT, 1029,
                              {"Buffer_0_PixelFormat = 16", "Buffer_0_SensorWidth = 1024", "Buffer_0_XMirror = 0",
                               "Buffer_0_YMirror = 0", "Buffer_0_SensorHeight = 1", "Buffer_0_PixelFormat = 16",
                               "Buffer_0_XLength = 1024", "Buffer_0_XOffset = 0", "Buffer_0_YLength = 1024"});
}

TEST(SensorGeometryFailure, AReadBeforeTheRangeCheckFailsForABadValueToo) {
    ImagePath path;
    path.board.planFaultAt(1, DesignFailure);
    EXPECT_EQ(path.set(FG_SENSORWIDTH, 3), DesignFailure);
    path.board.planFaultAt(2, DesignFailure);
    EXPECT_EQ(path.set(FG_SENSORHEIGHT, 0), DesignFailure);
}

// The reads of each published maximum, seen from the bottom left.
const Lines OfSensorWidth = {Parallelism, AddressWidth, DataWidth};
const Lines OfSensorHeight = {AddressWidth, DataWidth};
const Lines OfXOffset = {AddressWidth, DataWidth};

/// A change of the geometry from the bottom left: the accesses up to the refreshes, and the reads of each refresh.
struct Refreshes {
    int id;
    std::uint32_t value;
    std::size_t accessesBefore;
    std::vector<Lines> reads;
};

std::string nameOf(const Refreshes& row) {
    return std::string(findPublicParameter(row.id)->name);
}

void PrintTo(const Refreshes& row, std::ostream* stream) {
    *stream << nameOf(row);
}

class SensorGeometryRefresh : public ::testing::TestWithParam<Refreshes> {};

TEST_P(SensorGeometryRefresh, AFailedReadSkipsItsMaximumAloneAndIsNotReported) {
    const Refreshes& row = GetParam();
    unsigned failing = static_cast<unsigned>(row.accessesBefore);
    for (std::size_t refresh = 0; refresh < row.reads.size(); ++refresh) {
        for (std::size_t read = 0; read < row.reads[refresh].size(); ++read) {
            Lines expected;
            for (std::size_t i = 0; i < row.reads.size(); ++i) {
                const Lines lines = i == refresh ? failingAt(row.reads[i], read + 1) : row.reads[i];
                expected.insert(expected.end(), lines.begin(), lines.end());
            }
            ImagePath path;
            seenFromBottomLeft(path);
            path.forget();
            path.board.planFaultAt(++failing, DesignFailure);
            EXPECT_EQ(path.set(row.id, row.value), 0);
            EXPECT_EQ(path.applet.lastError(), 0);
            EXPECT_EQ(path.get<std::uint32_t>(row.id), row.value);
            const Lines seen = path.accesses();
            ASSERT_GE(seen.size(), row.accessesBefore);
            EXPECT_EQ(Lines(seen.begin() + static_cast<std::ptrdiff_t>(row.accessesBefore), seen.end()), expected);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllHandlers, SensorGeometryRefresh,
                         ::testing::Values(Refreshes{FG_WIDTH, 2048, 8, {OfSensorWidth, OfSensorHeight, OfXOffset}},
                                           Refreshes{FG_HEIGHT, 500, 12, {OfXOffset}},
                                           Refreshes{FG_XOFFSET, 400, 10, {OfSensorWidth, OfSensorHeight}},
                                           Refreshes{FG_YOFFSET, 500, 12, {OfSensorHeight}},
                                           Refreshes{FG_SENSORWIDTH, 2048, 11, {OfSensorHeight, OfXOffset}},
                                           Refreshes{FG_SENSORHEIGHT, 2048, 10, {OfSensorWidth, OfXOffset}},
                                           Refreshes{
                                               FG_PIXELFORMAT, 1029, 9, {OfSensorWidth, OfSensorHeight, OfXOffset}},
                                           Refreshes{FG_VANTAGEPOINT, 2, 8, {OfXOffset}}),
                         [](const auto& instance) { return nameOf(instance.param); });

TEST(SensorGeometryFailure, AMaximumThatCannotBeRefreshedStaysAsItWas) {
    ImagePath path;
    path.board.setInteger("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", 19);
    seenFromBottomLeft(path);
    ASSERT_EQ(path.maximum(FG_XOFFSET), 9905U);  // a capacity of 10929 pixels, less the width of 1024
    // The third read of the address width in a change of the width is the offset's.
    path.board.planFault("Device1_Process0_Buffer_0_DRAM_DRAM_A_0_RamAddressWidth", client::Direction::Read, 3,
                         DesignFailure);
    EXPECT_EQ(path.set(FG_WIDTH, 512), 0);
    EXPECT_EQ(path.get<std::uint32_t>(FG_WIDTH), 512U);
    EXPECT_EQ(path.maximum(FG_XOFFSET), 9905U);
    EXPECT_EQ(path.set(FG_WIDTH, 512), 0);
    EXPECT_EQ(path.maximum(FG_XOFFSET), 10417U);
}

TEST(SensorGeometryFailure, TheWritesBeforeItStayInTheDesign) {
    ImagePath path;
    path.board.planFault("Device1_Process0_Buffer_0_XLength", client::Direction::Write, 1, DesignFailure);
    path.board.setInteger("Device1_Process0_Buffer_0_SensorHeight", 77);
    EXPECT_EQ(path.set(FG_HEIGHT, 500), DesignFailure);
    EXPECT_EQ(path.get<std::uint32_t>(FG_HEIGHT), 1024U);
    EXPECT_EQ(path.board.integer("Device1_Process0_Buffer_0_SensorHeight"), 1);
    EXPECT_EQ(path.board.integer("Device1_Process0_Buffer_0_YLength"), 1024);
}

}  // namespace
}  // namespace quillon::image_test
