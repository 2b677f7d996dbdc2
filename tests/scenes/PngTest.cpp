// PNG files of all kinds as pictures.

#include <gmock/gmock.h>

#include "tests/scenes/PictureFiles.h"
#include "tests/scenes/PngContent.h"

namespace softboard::scenes::testing {
namespace {

using ::testing::ElementsAre;

Components componentsOf(const PngContent& content) {
    const Picture picture = pictureOf(pngOf(content));
    EXPECT_EQ(picture.width, content.width);
    EXPECT_EQ(picture.height, content.height);
    EXPECT_EQ(picture.bits, content.bits == 16 ? 16U : 8U);
    return testing::componentsOf(picture);
}

TEST(PngPictures, ColoursOf8Bits) {
    const Components samples = {1, 2, 3, 250, 251, 252, 0, 255, 7, 8, 9, 10};
    EXPECT_EQ(componentsOf({.width = 2, .height = 2, .colours = PngColours::Rgb, .samples = samples}), samples);
}

TEST(PngPictures, ColoursOf16Bits) {
    const Components samples = {1, 0x1234, 0xffff, 0x8000, 255, 256};
    EXPECT_EQ(componentsOf({.width = 1, .height = 2, .bits = 16, .colours = PngColours::Rgb, .samples = samples}),
              samples);
}

TEST(PngPictures, GreysOf1To16Bits) {
    const auto read = [](int bits, const std::vector<unsigned>& samples) {
        return componentsOf({.width = static_cast<std::uint32_t>(samples.size()),
                             .height = 1,
                             .bits = bits,
                             .colours = PngColours::Grey,
                             .samples = samples});
    };
    EXPECT_EQ(read(1, {0, 1, 1}), greys({0, 255, 255}));
    EXPECT_EQ(read(2, {0, 1, 2, 3, 1}), greys({0, 85, 170, 255, 85}));
    EXPECT_EQ(read(4, {0, 1, 15}), greys({0, 17, 255}));
    EXPECT_EQ(read(8, {0, 1, 255}), greys({0, 1, 255}));
    EXPECT_EQ(read(16, {0, 0x1234, 0xffff}), greys({0, 0x1234, 0xffff}));
}

TEST(PngPictures, Palettes) {
    for (const int bits : {2, 4, 8}) {
        EXPECT_THAT(componentsOf({.width = 3,
                                  .height = 1,
                                  .bits = bits,
                                  .colours = PngColours::Palette,
                                  .samples = {2, 0, 1},
                                  .palette = {{1, 2, 3}, {255, 0, 128}, {9, 8, 7}}}),
                    ElementsAre(9, 8, 7, 1, 2, 3, 255, 0, 128))
            << bits;
    }
}

TEST(PngPictures, WhatIsTransparentLiesOverBlack) {
    EXPECT_THAT(componentsOf({.width = 3,
                              .colours = PngColours::RgbAlpha,
                              .samples = {200, 100, 50, 255, 200, 100, 50, 0, 200, 100, 50, 51}}),
                ElementsAre(200, 100, 50, 0, 0, 0, 40, 20, 10));
    EXPECT_EQ(componentsOf({.width = 3, .colours = PngColours::GreyAlpha, .samples = {200, 255, 200, 0, 200, 51}}),
              greys({200, 0, 40}));
    EXPECT_EQ(componentsOf({.width = 3,
                            .bits = 16,
                            .colours = PngColours::GreyAlpha,
                            .samples = {50000, 65535, 50000, 0, 50000, 13107}}),
              greys({50000, 0, 10000}));
    EXPECT_THAT(componentsOf({.width = 3,
                              .colours = PngColours::Palette,
                              .samples = {0, 1, 2},
                              .palette = {{10, 20, 30}, {100, 200, 50}, {40, 50, 60}},
                              .paletteAlpha = {0, 51}}),
                ElementsAre(0, 0, 0, 20, 40, 10, 40, 50, 60));
}

TEST(PngPictures, OneColourCanBeTransparent) {
    EXPECT_EQ(
        componentsOf({.width = 3, .bits = 2, .colours = PngColours::Grey, .samples = {1, 2, 3}, .transparent = {2}}),
        greys({85, 0, 255}));
    EXPECT_THAT(
        componentsOf({.width = 2, .colours = PngColours::Rgb, .samples = {1, 2, 3, 1, 2, 4}, .transparent = {1, 2, 3}}),
        ElementsAre(0, 0, 0, 1, 2, 4));
}

TEST(PngPictures, InterlacedOnesAreTheSame) {
    PngContent content{.width = 11, .height = 13};
    for (unsigned i = 0; i < 11 * 13 * 3; ++i) {
        content.samples.push_back(i * 7 % 256);
    }
    const Components straight = componentsOf(content);
    content.interlaced = true;
    EXPECT_EQ(componentsOf(content), straight);
    EXPECT_EQ(straight, content.samples);
}

TEST(PngPictures, MoreRowsOrColumnsThanTheLibraryTakesByItself) {
    const std::string wide = pngHeader(1'500'000, 1, 1) + pngData(std::string(1 + 187'500, '\0')) + pngEnd();
    EXPECT_EQ(pictureOf(wide).width, 1'500'000U);
    const std::string high = pngHeader(1, 1'500'000, 1) + pngData(std::string(2 * 1'500'000, '\0')) + pngEnd();
    EXPECT_EQ(pictureOf(high).height, 1'500'000U);
}

TEST(PngPictures, TextsAndColourSpacesArePassedOver) {
    const std::string whole = pngHeader(1, 1) + pngChunk("gAMA", std::string("\0\0\xb1\x8f", 4)) +
                              pngChunk("tEXt", std::string("Comment\0part", 12)) +
                              pngChunk("iCCP", "no profile at all") + pngChunk("quIl", "unknown") +
                              pngData(std::string("\0\x2a", 2)) + pngEnd();
    EXPECT_EQ(testing::componentsOf(pictureOf(whole)), greys({42}));
    EXPECT_EQ(testing::componentsOf(pictureOf(whole + "more")), greys({42}));
}

}  // namespace
}  // namespace softboard::scenes::testing
