// The patterns, pixel by pixel. They have ten pixels in a millimetre.

#include "softboard/scenes/Patterns.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <set>

#include "tests/scenes/Taking.h"

namespace softboard::scenes::testing {
namespace {

using ::testing::ElementsAre;

constexpr std::int64_t Row = Mm / 10;

TEST(Patterns, OfAnotherTextThereAreNone) {
    for (const char* text :
         {"",           "bar",      "Bars",      "bars ",    "bars:",    "bars:1",   "ramp:1",
          "checker:32", "noise:",   "noise:-1",  "noise:+1", "noise:1x", "noise: 1", "noise:18446744073709551616",
          "grey:",      "grey:256", "grey:0x10", "grey:1.5", ":",        ":1",       "grey:1:2"}) {
        EXPECT_EQ(makePattern(text), nullptr) << text;
    }
}

TEST(Patterns, HaveTenRowsInAMillimetre) {
    for (const char* text : {"bars", "ramp", "checker", "noise", "grey"}) {
        ASSERT_NE(makePattern(text), nullptr) << text;
        EXPECT_EQ(makePattern(text)->nanometresPerRow(), 1e5) << text;
    }
}

TEST(Patterns, BarsAreThoseOfANewBoard) {
    pixels::BarScene expected;
    EXPECT_EQ(take(*makePattern("bars"), 0, 16), take(expected, 0, 16));
}

TEST(Patterns, ARampRisesToTheRight) {
    const auto ramp = makePattern("ramp");
    EXPECT_EQ(take(*ramp, 0, 4), greys({0, 1, 2, 3}));
    const Components line = take(*ramp, 0, 258);
    EXPECT_THAT(Components(line.end() - 9, line.end()), ElementsAre(255, 255, 255, 0, 0, 0, 1, 1, 1));
}

TEST(Patterns, ARampRisesAlongTheBelt) {
    const auto ramp = makePattern("ramp");
    EXPECT_EQ(take(*ramp, Row, 4), greys({1, 2, 3, 4}));
    EXPECT_EQ(take(*ramp, 254 * Row, 4), greys({254, 255, 0, 1}));
    EXPECT_EQ(take(*ramp, 257 * Row, 4), greys({1, 2, 3, 4}));
    EXPECT_EQ(take(*ramp, 2560'000'003 * Row, 4), greys({3, 4, 5, 6}));
    EXPECT_EQ(take(*ramp, -Row, 4), greys({255, 0, 1, 2}));
    EXPECT_EQ(take(*ramp, -255 * Row, 4), greys({1, 2, 3, 4}));
}

TEST(Patterns, ARowEndsWhereTheNextBegins) {
    const auto ramp = makePattern("ramp");
    EXPECT_EQ(take(*ramp, Row - 101, 1), greys({0}));
    EXPECT_EQ(take(*ramp, Row - 1, 1), greys({1}));  // a tenth of a micrometre belongs to the next row
    EXPECT_EQ(take(*ramp, 2 * Row - 101, 1), greys({1}));
    EXPECT_EQ(take(*ramp, -101, 1), greys({255}));
}

TEST(Patterns, ARampHasTheBitsOfTheCamera) {
    const auto ramp = makePattern("ramp");
    EXPECT_EQ(take(*ramp, lineAt(127 * Row), 2, 8), greys({127, 128}));
    EXPECT_EQ(take(*ramp, lineAt(127 * Row), 2, 10), greys({509, 514}));
    EXPECT_EQ(take(*ramp, lineAt(127 * Row), 2, 12), greys({2039, 2056}));
    EXPECT_EQ(take(*ramp, lineAt(254 * Row), 3, 14), greys({16319, 16383, 0}));
    EXPECT_EQ(take(*ramp, lineAt(254 * Row), 3, 16), greys({65278, 65535, 0}));
}

TEST(Patterns, ACheckerHasSquaresOf32Pixels) {
    const auto checker = makePattern("checker");
    const auto blackFirst = [](std::size_t x) { return x / 32 % 2 == 0; };
    for (const std::int64_t row : {0, 31, 32, 63, 64, -1, -32, -33, 3200}) {
        const bool blackAtTheLeft = (row >= 0 ? row / 32 : (row - 31) / 32) % 2 == 0;
        const Components line = take(*checker, row * Row, 100);
        for (std::size_t x = 0; x < 100; ++x) {
            ASSERT_EQ(line[3 * x], blackFirst(x) == blackAtTheLeft ? 0 : 255) << row << " " << x;
            ASSERT_EQ(line[3 * x + 1], line[3 * x]);
            ASSERT_EQ(line[3 * x + 2], line[3 * x]);
        }
    }
    EXPECT_EQ(take(*checker, lineAt(32 * Row), 1, 16), greys({65535}));
}

TEST(Patterns, AGreyIsTheSameEverywhere) {
    EXPECT_EQ(take(*makePattern("grey"), 0, 3), greys({128, 128, 128}));
    EXPECT_EQ(take(*makePattern("grey:0"), 0, 2), greys({0, 0}));
    EXPECT_EQ(take(*makePattern("grey:200"), 123 * Mm, 2), greys({200, 200}));
    EXPECT_EQ(take(*makePattern("grey:255"), lineAt(-123 * Mm), 2, 12), greys({4095, 4095}));
}

TEST(Patterns, NoiseIsThatOfItsSeed) {
    const Components line = take(*makePattern("noise"), 0, 50);
    EXPECT_EQ(take(*makePattern("noise:1"), 0, 50), line);
    EXPECT_EQ(take(*makePattern("noise:18446744073709551615"), 0, 50),
              take(*makePattern("noise:18446744073709551615"), 0, 50));
    for (const char* other : {"noise:0", "noise:2", "noise:18446744073709551615"}) {
        EXPECT_NE(take(*makePattern(other), 0, 50), line) << other;
    }
}

TEST(Patterns, NoiseStandsStillOnTheBelt) {
    const auto noise = makePattern("noise:7");
    const Components line = take(*noise, 0, 50);
    EXPECT_NE(take(*noise, Row, 50), line);
    EXPECT_NE(take(*noise, -Row, 50), line);
    EXPECT_EQ(take(*noise, Row / 2, 50), line);
    pixels::Line later = lineAt(0);
    later.tick = 1000;
    EXPECT_EQ(take(*noise, later, 50, 8), line);
    const Components narrow = take(*noise, 0, 9);
    EXPECT_TRUE(std::equal(narrow.begin(), narrow.end(), line.begin()));
}

TEST(Patterns, NoiseHasTheUpperBitsForACameraOfFewer) {
    const auto noise = makePattern("noise");
    const Components line = take(*noise, lineAt(0), 50, 16);
    for (const unsigned bits : {8U, 10U, 12U, 14U}) {
        Components expected = line;
        for (unsigned& component : expected) {
            component >>= 16 - bits;
        }
        EXPECT_EQ(take(*noise, lineAt(0), 50, bits), expected) << bits;
    }
}

TEST(Patterns, NoiseHasAllValuesInEqualParts) {
    const auto noise = makePattern("noise:3");
    std::vector<unsigned> counts(256);
    for (std::int64_t row = 0; row < 256; ++row) {
        for (const unsigned component : take(*noise, row * Row, 1000)) {
            ++counts.at(component);
        }
    }
    // 3000 of each are expected, with a standard deviation of 55.
    EXPECT_GT(*std::min_element(counts.begin(), counts.end()), 3000U - 6 * 55);
    EXPECT_LT(*std::max_element(counts.begin(), counts.end()), 3000U + 6 * 55);
}

}  // namespace
}  // namespace softboard::scenes::testing
