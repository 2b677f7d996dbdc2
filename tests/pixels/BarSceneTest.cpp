// The picture in front of the camera if there is no other.

#include <gtest/gtest.h>

#include "tests/pixels/Drawing.h"

namespace softboard::pixels::testing {
namespace {

Settings camera(std::uint32_t bits, std::uint32_t width) {
    Settings settings;
    settings.bits = bits;
    settings.sensorWidth = width;
    settings.xLength = width;
    settings.formatBits = 16;
    settings.redFirst = true;
    return settings;
}

TEST(BarPicture, EightBarsOfOnePixel) {
    BarScene scene;
    EXPECT_EQ(drawFrame(camera(16, 8), 1, scene).hex(),
              "ffffffffffff"    // white
              "ffffffff0000"    // yellow
              "0000ffffffff"    // cyan
              "0000ffff0000"    // green
              "ffff0000ffff"    // magenta
              "ffff00000000"    // red
              "00000000ffff"    // blue
              "000000000000");  // black
}

TEST(BarPicture, ABarFallsToHalfOfFullScale) {
    BarScene scene;
    EXPECT_EQ(drawFrame(camera(16, 32), 1, scene).hex(0, 24),
              "ffffffffffff"
              "ffdfffdfffdf"
              "ffbfffbfffbf"
              "ff9fff9fff9f");
    EXPECT_EQ(BarScene::component(999, 8000, 0), 32800);  // 65535 - 32768 * 999 / 1000
    EXPECT_EQ(BarScene::component(1000, 8000, 0), 65535);
    EXPECT_EQ(BarScene::component(1000, 8000, 2), 0);
}

TEST(BarPicture, HasTheBitsOfTheCamera) {
    BarScene scene;
    EXPECT_EQ(drawFrame(camera(16, 16), 1, scene).hex(0, 12), "ffffffffffffffbfffbfffbf");
    EXPECT_EQ(drawFrame(camera(8, 16), 1, scene).hex(0, 12), "00ff00ff00ff00bf00bf00bf");
    EXPECT_EQ(drawFrame(camera(10, 16), 1, scene).hex(0, 12), "c0ffc0ffc0ffc0bfc0bfc0bf");
    EXPECT_EQ(drawFrame(camera(14, 16), 1, scene).hex(0, 12), "fcfffcfffcfffcbffcbffcbf");
}

TEST(BarPicture, AllLinesAreTheSame) {
    BarScene scene;
    const Frame frame = drawFrame(camera(12, 16), 3, scene);
    EXPECT_EQ(frame.hex(96, 96), frame.hex(0, 96));
    EXPECT_EQ(frame.hex(192, 96), frame.hex(0, 96));
}

TEST(BarPicture, ReachesTheEndOfAnyWidth) {
    BarScene scene;
    const Frame frame = drawFrame(camera(16, 3), 1, scene);  // in the bars 0, 2 and 5, at 0, 2/3 and 1/3 of them
    EXPECT_EQ(frame.hex(),
              "ffffffffffff"
              "0000aaaaaaaa"
              "55d500000000");
    EXPECT_EQ(drawFrame(camera(16, 1), 1, scene).hex(), "ffffffffffff");
}

}  // namespace
}  // namespace softboard::pixels::testing
