// PNM files of all kinds as pictures.

#include <gmock/gmock.h>

#include "tests/scenes/PictureFiles.h"

namespace softboard::scenes::testing {
namespace {

using ::testing::ElementsAre;

/// The components of a picture of this size.
Components read(const std::string& content, std::uint32_t width, std::uint32_t height, std::uint32_t bits) {
    const Picture picture = pictureOf(content);
    EXPECT_EQ(picture.width, width);
    EXPECT_EQ(picture.height, height);
    EXPECT_EQ(picture.bits, bits);
    return componentsOf(picture);
}

TEST(NetPbmPictures, GreysInText) {
    EXPECT_EQ(read("P2\n3 2\n255\n0 1 255\n9 08 7\n", 3, 2, 8), greys({0, 1, 255, 9, 8, 7}));
    EXPECT_EQ(read("P2 2 1 65535 65535 258", 2, 1, 16), greys({65535, 258}));
}

TEST(NetPbmPictures, ColoursInText) {
    EXPECT_THAT(read("P3 2 1 255 1 2 3 253 254 255", 2, 1, 8), ElementsAre(1, 2, 3, 253, 254, 255));
}

TEST(NetPbmPictures, TextHasComments) {
    EXPECT_EQ(read("P2# a kind\n#\n # 7 7 7\n2#\n1 # wide\r255# high\n1#2\n2# end", 2, 1, 8), greys({1, 2}));
    EXPECT_EQ(read("P5 1 1 255# ends the header\n#", 1, 1, 8), greys({'#'}));
    EXPECT_THAT(read("P3\t1\v1\f255\r\n1\r2\t3", 1, 1, 8), ElementsAre(1, 2, 3));
}

TEST(NetPbmPictures, GreysInBytes) {
    EXPECT_EQ(read("P5\n2 2\n255\n\n# \xff", 2, 2, 8), greys({'\n', '#', ' ', 255}));
    EXPECT_EQ(read(std::string("P5 2 1 65535 \x12\x34\0\x01", 17), 2, 1, 16), greys({0x1234, 1}));
}

TEST(NetPbmPictures, ColoursInBytes) {
    EXPECT_THAT(read("P6\n# made by hand\n1 2\n255\nabcdef", 1, 2, 8), ElementsAre('a', 'b', 'c', 'd', 'e', 'f'));
    EXPECT_THAT(read("P6 1 1 65535\nabcdef", 1, 1, 16), ElementsAre(0x6162, 0x6364, 0x6566));
}

TEST(NetPbmPictures, AnyMaxvalBecomesFullScale) {
    EXPECT_EQ(read("P2 2 1 1 0 1", 2, 1, 8), greys({0, 255}));
    EXPECT_EQ(read("P2 4 1 3 0 1 2 3", 4, 1, 8), greys({0, 85, 170, 255}));
    EXPECT_EQ(read("P2 3 1 100 1 50 100", 3, 1, 8), greys({3, 128, 255}));  // 2.55, 127.5
    EXPECT_EQ(read("P2 2 1 254 127 254", 2, 1, 8), greys({128, 255}));      // 127.5
    EXPECT_EQ(read("P2 2 1 256 1 256", 2, 1, 16), greys({256, 65535}));     // 255.996
    EXPECT_EQ(read("P2 3 1 1023 0 1 1023", 3, 1, 16), greys({0, 64, 65535}));
    EXPECT_EQ(read("P5 2 1 4095 \x0f\xff\x08\x01", 2, 1, 16), greys({65535, 32792}));  // 32791.5
    EXPECT_EQ(read("P5 2 1 15 \x0f\x01", 2, 1, 8), greys({255, 17}));
}

TEST(NetPbmPictures, WhatFollowsIsPassedOver) {
    EXPECT_EQ(read("P5 1 1 255 aP5 1 1 255 b", 1, 1, 8), greys({'a'}));
    EXPECT_EQ(read("P2 1 1 255 10 20", 1, 1, 8), greys({10}));
}

TEST(NetPbmPictures, MoreThanIsReadAtOnce) {
    std::string content = "P5 100 200 255\n";
    Components expected;
    for (unsigned i = 0; i < 100 * 200; ++i) {
        content += static_cast<char>(i * 31 % 251);
        expected.push_back(i * 31 % 251);
    }
    EXPECT_EQ(read(content, 100, 200, 8), greys(expected));
}

}  // namespace
}  // namespace softboard::scenes::testing
