// Lines that a function draws.

#include "softboard/scenes/CallbackScene.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/scenes/Taking.h"

namespace softboard::scenes::testing {
namespace {

using ::testing::Each;

/// A function that draws the same components into each line, and remembers what it was told.
struct Drawing {
    Components components = {};
    int answer = 0;
    softboard_line about = {};
    std::vector<std::uint16_t> before = {};  ///< what lay in the buffer
    std::size_t calls = 0;

    static int draw(void* user, const softboard_line* about, std::uint16_t* rgb, std::uint32_t pixels) {
        auto& drawing = *static_cast<Drawing*>(user);
        ++drawing.calls;
        drawing.about = *about;
        drawing.before.assign(rgb, rgb + std::size_t{3} * pixels);
        for (std::size_t i = 0; i < std::min(drawing.before.size(), drawing.components.size()); ++i) {
            rgb[i] = static_cast<std::uint16_t>(drawing.components[i]);
        }
        return drawing.answer;
    }
};

TEST(CallbackScenes, TheFunctionsPixelsAreTheCameras) {
    Drawing drawing{.components = {0xffff, 0x8001, 0x00ff, 1, 2, 3}};
    CallbackScene scene(Drawing::draw, &drawing);
    EXPECT_EQ(take(scene, lineAt(0), 2, 16), (Components{0xffff, 0x8001, 0x00ff, 1, 2, 3}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 14), (Components{0x3fff, 0x2000, 0x3f}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 12), (Components{0xfff, 0x800, 0xf}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 10), (Components{0x3ff, 0x200, 0x3}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 8), (Components{0xff, 0x80, 0}));
    EXPECT_EQ(drawing.calls, 5U);
}

TEST(CallbackScenes, WhatItDoesNotDrawIsBlack) {
    Drawing drawing{.components = {0xffff}};
    CallbackScene scene(Drawing::draw, &drawing);
    for (const std::uint32_t bits : {16U, 8U}) {
        take(scene, lineAt(0), 4, bits);
        EXPECT_EQ(take(scene, lineAt(0), 2, bits), (Components{0xffffU >> (16 - bits), 0, 0, 0, 0, 0}));
        EXPECT_EQ(drawing.before.size(), 6U);
        EXPECT_THAT(drawing.before, Each(0));
    }
}

TEST(CallbackScenes, ALineThatItRefusesIsBlack) {
    for (const int answer : {1, -1, -9001}) {
        Drawing drawing{.components = {0xffff, 0xffff, 0xffff}, .answer = answer};
        CallbackScene scene(Drawing::draw, &drawing);
        EXPECT_EQ(take(scene, lineAt(0), 2, 16), greys({0, 0})) << answer;
        EXPECT_EQ(take(scene, lineAt(0), 2, 8), greys({0, 0})) << answer;
    }
}

TEST(CallbackScenes, TheSensorCanBecomeNarrowerAndWider) {
    Drawing drawing{.components = greys({10, 20, 30, 40})};
    CallbackScene scene(Drawing::draw, &drawing);
    EXPECT_EQ(take(scene, lineAt(0), 4, 16), greys({10, 20, 30, 40}));
    EXPECT_EQ(take(scene, lineAt(0), 2, 16), greys({10, 20}));
    EXPECT_EQ(take(scene, lineAt(0), 5, 16), greys({10, 20, 30, 40, 0}));
    EXPECT_EQ(take(scene, lineAt(0), 0, 16), Components{});
}

TEST(CallbackScenes, TheFunctionIsToldOfTheLine) {
    Drawing drawing;
    CallbackScene scene(Drawing::draw, &drawing);
    const pixels::Line line = {
        .tick = 1'000'000'007, .position = -1'234'567, .settings = 3, .exposure = 12'501, .flash = 1, .inverted = 1};
    take(scene, line, 1, 8);
    EXPECT_EQ(drawing.about.size, sizeof(softboard_line));
    EXPECT_EQ(drawing.about.tick, 1'000'000'007U);
    EXPECT_DOUBLE_EQ(drawing.about.position_mm, -1.234567);
    EXPECT_DOUBLE_EQ(drawing.about.exposure_us, 100.008);
    EXPECT_EQ(drawing.about.flash, 1);

    take(scene, lineAt(3 * Mm), 1, 8);
    EXPECT_EQ(drawing.about.tick, 0U);
    EXPECT_EQ(drawing.about.position_mm, 3.0);
    EXPECT_EQ(drawing.about.exposure_us, 0.0);
    EXPECT_EQ(drawing.about.flash, 0);
}

}  // namespace
}  // namespace softboard::scenes::testing
