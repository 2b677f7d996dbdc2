// Which pixels come where: line order, mirror, region, reversed lines.

#include <gtest/gtest.h>

#include <utility>

#include "tests/pixels/Drawing.h"

namespace softboard::pixels::testing {
namespace {

/// Pixels that tell their place: component c of pixel x in row y is 0x40 * c + 0x10 * y + x.
RowScene placeScene(std::size_t width, std::size_t height) {
    std::vector<std::vector<Triple>> rows(height, std::vector<Triple>(width));
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            for (std::size_t component = 0; component < Colours; ++component) {
                rows[y][x][component] = static_cast<std::uint16_t>((0x40 * component + 0x10 * y + x) << 8);
            }
        }
    }
    return RowScene(std::move(rows));
}

Settings bytes(std::uint32_t sensorWidth) {
    Settings settings;
    settings.sensorWidth = sensorWidth;
    settings.xLength = sensorWidth;
    settings.shift = 8;  // the upper byte of the word
    return settings;
}

TEST(PixelLineOrder, SixOrders) {
    RowScene scene = placeScene(4, 1);
    const auto inOrder = [&](std::array<std::uint32_t, 3> order) {
        Settings settings = bytes(4);
        settings.order = order;
        return drawFrame(settings, 1, scene).hex();
    };
    // The camera's component 0 is 00 to 03, its 1 is 40 to 43, its 2 is 80 to 83; blue comes first.
    EXPECT_EQ(inOrder({0, 1, 2}), "804000814101824202834303");
    EXPECT_EQ(inOrder({2, 1, 0}), "004080014181024282034383");
    EXPECT_EQ(inOrder({0, 2, 1}), "408000418101428202438303");
    EXPECT_EQ(inOrder({1, 2, 0}), "008040018141028242038343");
    EXPECT_EQ(inOrder({2, 0, 1}), "400080410181420282430383");
    EXPECT_EQ(inOrder({1, 0, 2}), "800040810141820242830343");
}

TEST(PixelLineOrder, AComponentMayServeTwice) {
    RowScene scene = placeScene(4, 1);
    Settings settings = bytes(4);
    settings.order = {1, 1, 0};
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "004040014141024242034343");
}

TEST(PixelLineOrder, MoreThanTwoIsTwo) {
    RowScene scene = placeScene(4, 1);
    Settings settings = bytes(4);
    settings.order = {0, 7, 0xffffffff};
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "808000818101828202838303");
}

TEST(PixelLineOrder, StandsInFrontOfWhiteBalanceAndTables) {
    RowScene scene = placeScene(4, 1);
    Settings settings = bytes(4);
    settings.order = {2, 1, 0};
    settings.coefficient = {0.5, 0.0, 1.0};  // of red, green and blue, whatever component they are
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "000040010040020041030041");
}

TEST(PixelMirror, ReversesTheSensor) {
    RowScene scene = placeScene(8, 2);
    Settings settings = bytes(8);
    settings.xMirror = true;
    const Frame frame = drawFrame(settings, 2, scene);
    EXPECT_EQ(frame.hex(0, 24), "874707864606854505844404834303824202814101804000");
    EXPECT_EQ(frame.hex(24), "975717965616955515945414935313925212915111905010");
}

TEST(PixelMirror, IsOverTheSensorAndNotOverTheRegion) {
    RowScene scene = placeScene(8, 1);
    Settings settings = bytes(8);
    settings.xMirror = true;
    settings.xOffset = 1;
    settings.xLength = 4;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "864606854505844404834303");
}

TEST(PixelMirror, ReversesTheLinesOfAFrame) {
    RowScene scene = placeScene(4, 3);
    Settings settings = bytes(4);
    settings.yMirror = true;
    const Frame frame = drawFrame(settings, 3, scene);
    EXPECT_EQ(frame.hex(0, 12), "a06020a16121a26222a36323");
    EXPECT_EQ(frame.hex(12, 12), "905010915111925212935313");
    EXPECT_EQ(frame.hex(24, 12), "804000814101824202834303");
}

TEST(PixelMirror, BothTurnTheFrame) {
    RowScene scene = placeScene(4, 2);
    Settings settings = bytes(4);
    settings.xMirror = true;
    settings.yMirror = true;
    EXPECT_EQ(drawFrame(settings, 2, scene).hex(), "935313925212915111905010834303824202814101804000");
}

TEST(PixelRegion, IsCutOutOfTheSensor) {
    RowScene scene = placeScene(8, 1);
    Settings settings = bytes(8);
    settings.xOffset = 4;
    settings.xLength = 4;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "844404854505864606874707");
    settings.xOffset = 0;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "804000814101824202834303");
}

TEST(PixelRegion, BeyondTheSensorIsZero) {
    RowScene scene = placeScene(8, 1);
    Settings settings = bytes(8);
    settings.xOffset = 6;
    settings.xLength = 4;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "864606874707000000000000");
    settings.xOffset = 8;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "000000000000000000000000");
    settings.xOffset = 0xffffffff;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "000000000000000000000000");
}

TEST(PixelRegion, TheZeroBeyondTheSensorGoesThroughTheTables) {
    RowScene scene = placeScene(8, 1);
    Settings settings = bytes(8);
    settings.xOffset = 7;
    settings.xLength = 2;
    settings.lookup = true;
    for (std::size_t colour = 0; colour < Colours; ++colour) {
        Table table{};
        table[0] = static_cast<std::uint16_t>(0xa000 + 0x1000 * colour);
        settings.table[colour] = std::make_shared<const Table>(table);
    }
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "000000c0b0a0");
}

TEST(PixelRegion, BeyondTheSensorInPackedFormats) {
    RowScene scene({greys({0xffff, 0xffff, 0xffff, 0xffff, 0xffff, 0xffff, 0xffff, 0xffff})});
    Settings settings = bytes(8);
    settings.xLength = 12;
    settings.xOffset = 3;
    settings.formatBits = 10;
    settings.shift = 6;
    // Five pixels of 3fc and seven of 0; 150 bits are 18 bytes and 6 bits.
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(),
              "fcf3cf3ffffcf3cf3ffffcf3cf3ffffcf3cf3f0000000000000000000000000000000000000000000000000000");
}

TEST(PixelRegion, OfASensorWithoutPixels) {
    RowScene scene = placeScene(8, 1);
    Settings settings = bytes(0);
    settings.xLength = 4;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "000000000000000000000000");
}

TEST(PixelRegion, WithoutPixelsHasNoBytes) {
    RowScene scene = placeScene(8, 2);
    Settings settings = bytes(8);
    settings.xLength = 0;
    EXPECT_EQ(drawFrame(settings, 2, scene).drawn, (Drawn{.bytes = 0, .lines = 2, .truncated = false}));
}

}  // namespace
}  // namespace softboard::pixels::testing
