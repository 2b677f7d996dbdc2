// The simulator's ramp.

#include <gtest/gtest.h>

#include "tests/pixels/Drawing.h"

namespace softboard::pixels::testing {
namespace {

/// For lines that the camera has no part in.
class NoScene : public Scene {
public:
    std::span<const std::byte> take(const Line& /*line*/, std::uint32_t /*pixels*/, std::uint32_t /*bits*/,
                                    std::span<std::byte> /*memory*/) override {
        ADD_FAILURE() << "a simulator line asked for the scene";
        return {};
    }
};

Settings simulator(std::uint32_t width, Ramp ramp) {
    Settings settings;
    settings.simulator = true;
    settings.ramp = ramp;
    settings.sensorWidth = width;
    settings.xLength = width;
    settings.shift = 8;
    return settings;
}

/// Lines `line`, `line` + 1, ... of one frame.
Frame drawSimulator(const Settings& settings, std::int64_t frame, std::int64_t line, std::int64_t lines) {
    std::vector<Line> all;
    for (std::int64_t i = 0; i < lines; ++i) {
        all.push_back(lineAt(simulatorPosition(frame, line + i), settings.version));
    }
    NoScene scene;
    return drawFrame({settings}, all, scene, lineBytes(settings) * all.size());
}

constexpr Ramp Horizontal = {.enableX = true, .yDivisor = 1, .frameDivisor = 1, .offset = 0};
constexpr Ramp Vertical = {.enableX = false, .yDivisor = 256, .frameDivisor = 1, .offset = 0};
constexpr Ramp Diagonal = {.enableX = true, .yDivisor = 256, .frameDivisor = 1, .offset = 0};

TEST(PixelRamp, Horizontal) {
    EXPECT_EQ(drawSimulator(simulator(8, Horizontal), 0, 0, 3).hex(),
              "000000010101020202030303040404050505060606070707"
              "000000010101020202030303040404050505060606070707"
              "000000010101020202030303040404050505060606070707");
}

TEST(PixelRamp, Vertical) {
    EXPECT_EQ(drawSimulator(simulator(8, Vertical), 0, 254, 3).hex(),
              "fefefefefefefefefefefefefefefefefefefefefefefefe"
              "ffffffffffffffffffffffffffffffffffffffffffffffff"
              "000000000000000000000000000000000000000000000000");
}

TEST(PixelRamp, Diagonal) {
    EXPECT_EQ(drawSimulator(simulator(8, Diagonal), 0, 0, 3).hex(),
              "000000010101020202030303040404050505060606070707"
              "010101020202030303040404050505060606070707080808"
              "020202030303040404050505060606070707080808090909");
}

TEST(PixelRamp, OffsetIsAddedModulo256) {
    Ramp ramp = Horizontal;
    ramp.offset = 0xfd;
    EXPECT_EQ(drawSimulator(simulator(8, ramp), 0, 0, 1).hex(), "fdfdfdfefefeffffff000000010101020202030303040404");
    ramp.offset = 0x1fd;
    EXPECT_EQ(drawSimulator(simulator(8, ramp), 0, 0, 1).hex(), "fdfdfdfefefeffffff000000010101020202030303040404");
}

TEST(PixelRamp, LinesCountModuloTheirDivisor) {
    Ramp ramp = Vertical;
    ramp.yDivisor = 3;
    EXPECT_EQ(drawSimulator(simulator(4, ramp), 0, 0, 5).hex(),
              "000000000000000000000000"
              "010101010101010101010101"
              "020202020202020202020202"
              "000000000000000000000000"
              "010101010101010101010101");
}

TEST(PixelRamp, ADivisorOfZeroIsNoTerm) {
    Ramp ramp = Horizontal;
    ramp.yDivisor = 0;
    ramp.frameDivisor = 0;
    EXPECT_EQ(drawSimulator(simulator(4, ramp), 7, 9, 1).hex(), "000000010101020202030303");
}

TEST(PixelRamp, RollsOver300Frames) {
    Ramp ramp = Horizontal;
    ramp.frameDivisor = 256;
    for (std::int64_t frame = 0; frame < 300; ++frame) {
        const Frame drawn = drawSimulator(simulator(4, ramp), frame, 0, 1);
        const auto first = static_cast<std::byte>(frame);
        const auto last = static_cast<std::byte>(frame + 3);
        ASSERT_EQ(drawn.bytes.size(), 12U);
        ASSERT_EQ(drawn.bytes.front(), first) << frame;
        ASSERT_EQ(drawn.bytes.back(), last) << frame;
    }
    EXPECT_EQ(drawSimulator(simulator(4, ramp), 299, 0, 1).hex(), "2b2b2b2c2c2c2d2d2d2e2e2e");
}

TEST(PixelRamp, AllTermsTogether) {
    const Ramp ramp = {.enableX = true, .yDivisor = 256, .frameDivisor = 100, .offset = 16};
    // 16 + 299 mod 100 + 65535 mod 256 = 370, which is 0x72 above 256.
    EXPECT_EQ(drawSimulator(simulator(4, ramp), 299, 65535, 1).hex(), "727272737373747474757575");
}

TEST(PixelRamp, RunsOn) {
    const Frame frame = drawSimulator(simulator(1024, Diagonal), 0, 1, 1);
    ASSERT_EQ(frame.bytes.size(), 3072U);
    for (std::size_t i = 0; i < frame.bytes.size(); ++i) {
        ASSERT_EQ(frame.bytes[i], static_cast<std::byte>(i / 3 + 1)) << i;
    }
}

TEST(PixelRamp, StandsAtTheTopOfTheWord) {
    Settings settings = simulator(4, Horizontal);
    settings.ramp.offset = 0x7e;
    settings.formatBits = 16;
    settings.shift = 0;
    for (const std::uint32_t bits : {8U, 10U, 12U, 14U, 16U}) {
        settings.bits = bits;
        EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(), "007e007e007e007f007f007f008000800080008100810081") << bits;
    }
}

TEST(PixelRamp, IsPackedInTheFormat) {
    Settings settings = simulator(8, Horizontal);
    settings.ramp.offset = 0xfc;
    settings.shift = 6;
    settings.formatBits = 10;
    // 3f0, 3f4, 3f8, 3fc, 000, 004, 008, 00c, each three times.
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(), "f0c30f3ffdf4d38f3ffef8f3cf3fff000000000104108000020830c00003");
    settings.shift = 4;
    settings.formatBits = 12;
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(),
              "c00ffcc00ffdd00ffde00ffee00ffff00fff000000000001100001200002200003300003");
    settings.shift = 2;
    settings.formatBits = 14;
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(),
              "003fc00ff003fd403fd00ff803fe803ff00ffc03ff0000000000000140001000080002800030000c0003");
}

TEST(PixelRamp, IsMirroredAndCut) {
    Settings settings = simulator(16, Horizontal);
    settings.xMirror = true;
    settings.xOffset = 4;
    settings.xLength = 4;
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(), "0b0b0b0a0a0a090909080808");
    settings.xMirror = false;
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(), "040404050505060606070707");
    settings.xOffset = 14;
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(), "0e0e0e0f0f0f000000000000");
}

TEST(PixelRamp, HasNoLineOrder) {
    Settings settings = simulator(4, Horizontal);
    settings.order = {2, 1, 0};
    settings.coefficient = {1.0, 2.0, 3.0};
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(), "000000030201060402090603");
}

TEST(PixelRamp, GoesThroughTheTables) {
    Settings settings = simulator(4, Horizontal);
    settings.lookup = true;
    for (std::size_t colour = 0; colour < Colours; ++colour) {
        Table table{};
        for (std::size_t i = 0; i < table.size(); ++i) {
            table[i] = static_cast<std::uint16_t>(0xffff - 0x1000 * colour - 4 * i);
        }
        settings.table[colour] = std::make_shared<const Table>(table);
    }
    EXPECT_EQ(drawSimulator(settings, 0, 0, 1).hex(), "dfefffdeeefeddedfddcecfc");
}

TEST(PixelRamp, APositionBelowZeroCountsDown) {
    Ramp ramp = Vertical;
    ramp.frameDivisor = 256;
    // The last line of the frame in front of frame 0: 255 and 255.
    EXPECT_EQ(drawSimulator(simulator(4, ramp), 0, -1, 1).hex(), "fefefefefefefefefefefefe");
}

}  // namespace
}  // namespace softboard::pixels::testing
