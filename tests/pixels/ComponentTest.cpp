// What happens to a component's value: white balance, lookup table, shift. All in frames of 16 bits a component, so
// that a value is a word.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/pixels/Drawing.h"

namespace softboard::pixels::testing {
namespace {

using ::testing::ElementsAre;
using Words = std::vector<std::uint16_t>;

Settings wordSettings() {
    Settings settings;
    settings.formatBits = 16;
    return settings;
}

/// The same coefficient for all colours; the blue words of the line.
Words balanced(double coefficient, std::initializer_list<std::uint16_t> values) {
    Settings settings = wordSettings();
    settings.coefficient.fill(coefficient);
    const Words words = drawGreys(settings, values);
    Words blue;
    for (std::size_t i = 0; i < words.size(); i += 3) {
        EXPECT_EQ(words[i], words[i + 1]);
        EXPECT_EQ(words[i], words[i + 2]);
        blue.push_back(words[i]);
    }
    return blue;
}

TEST(PixelWhiteBalance, OneLeavesAllAsItIs) {
    EXPECT_THAT(balanced(1.0, {0, 1, 0x1234, 0x8000, 0xfffe, 0xffff}),
                ElementsAre(0, 1, 0x1234, 0x8000, 0xfffe, 0xffff));
}

TEST(PixelWhiteBalance, ZeroLeavesNothing) {
    EXPECT_THAT(balanced(0.0, {0, 1, 0x8000, 0xffff}), ElementsAre(0, 0, 0, 0));
}

TEST(PixelWhiteBalance, OneStepAboveOne) {
    // 1.0005 is 1025 / 1024; 63 * 1025 / 1024 = 63.06, 1024 * 1025 / 1024 = 1025.
    EXPECT_THAT(balanced(1.0005, {0, 1, 63, 1023, 1024, 0x8000, 65471, 65472, 0xffff}),
                ElementsAre(0, 1, 63, 1023, 1025, 0x8020, 65534, 65535, 0xffff));
}

TEST(PixelWhiteBalance, TheProductIsCut) {
    // 1023 / 1024 of 1 is 0.999, of 1025 is 1023.999
    EXPECT_THAT(balanced(1023.0 / 1024, {1, 2, 1024, 1025, 0xffff}), ElementsAre(0, 1, 1023, 1023, 65471));
    EXPECT_THAT(balanced(0.5, {1, 2, 3, 0xffff}), ElementsAre(0, 1, 1, 0x7fff));
}

TEST(PixelWhiteBalance, TheLargestCoefficientSaturates) {
    // 16387 * 4095 / 1024 = 65531.997, 16388 gives 65535.996, 16389 would be 65539.995.
    EXPECT_THAT(balanced(4095.0 / 1024, {0, 1, 2, 0x1000, 16387, 16388, 16389, 0x8000, 0xffff}),
                ElementsAre(0, 3, 7, 16380, 65531, 65535, 65535, 65535, 65535));
}

TEST(PixelWhiteBalance, BeyondTheLargestIsTheLargest) {
    for (const double coefficient : {4.0, 5.0, 1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_THAT(balanced(coefficient, {0, 1, 2, 0x1000, 0xffff}), ElementsAre(0, 3, 7, 16380, 65535))
            << coefficient;
    }
}

TEST(PixelWhiteBalance, NegativeAndNoNumberAreZero) {
    for (const double coefficient : {-1.0, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THAT(balanced(coefficient, {0, 1, 0x8000, 0xffff}), ElementsAre(0, 0, 0, 0)) << coefficient;
    }
}

TEST(PixelWhiteBalance, EachColourHasItsOwn) {
    Settings settings = wordSettings();
    settings.coefficient = {2.0, 0.25, 0.0};
    EXPECT_THAT(drawGreys(settings, {0x4000}), ElementsAre(0, 0x1000, 0x8000));
}

Table identity() {
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<std::uint16_t>(i * 4);
    }
    return table;
}

Settings withTables(const Table& table) {
    Settings settings = wordSettings();
    settings.lookup = true;
    settings.table.fill(std::make_shared<const Table>(table));
    return settings;
}

TEST(PixelTables, TheIdentityKeepsFourteenBits) {
    EXPECT_THAT(drawGreys(withTables(identity()), {0x0003, 0xffff}), ElementsAre(0, 0, 0, 0xfffc, 0xfffc, 0xfffc));
    EXPECT_THAT(drawGreys(withTables(identity()), {0x0004, 0x1237}), ElementsAre(4, 4, 4, 0x1234, 0x1234, 0x1234));
}

TEST(PixelTables, OffTheyDoNothing) {
    Settings settings = withTables(Table{});
    settings.lookup = false;
    EXPECT_THAT(drawGreys(settings, {0x1237}), ElementsAre(0x1237, 0x1237, 0x1237));
}

TEST(PixelTables, AMissingOneIsOff) {
    Settings settings = withTables(Table{});
    settings.table[Green] = nullptr;
    EXPECT_THAT(drawGreys(settings, {0x1237}), ElementsAre(0, 0x1237, 0));
}

TEST(PixelTables, Inverted) {
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<std::uint16_t>(65535 - i * 4);
    }
    EXPECT_THAT(drawGreys(withTables(table), {0x0000, 0x8001, 0xffff}),
                ElementsAre(0xffff, 0xffff, 0xffff, 0x7fff, 0x7fff, 0x7fff, 3, 3, 3));
}

TEST(PixelTables, OneEntryOfOneColour) {
    Settings settings = withTables(identity());
    Table red = identity();
    red[0x1234 / 4] = 0xbeef;
    settings.table[Red] = std::make_shared<const Table>(red);
    EXPECT_THAT(
        drawGreys(settings, {0x1233, 0x1234, 0x1237, 0x1238}),
        ElementsAre(0x1230, 0x1230, 0x1230, 0x1234, 0x1234, 0xbeef, 0x1234, 0x1234, 0xbeef, 0x1238, 0x1238, 0x1238));
}

TEST(PixelTables, TheFirstAndTheLastEntry) {
    Table table{};
    table.front() = 0x0102;
    table.back() = 0x0304;
    EXPECT_THAT(drawGreys(withTables(table), {0x0003, 0x0004, 0xfffb, 0xfffc}),
                ElementsAre(0x0102, 0x0102, 0x0102, 0, 0, 0, 0, 0, 0, 0x0304, 0x0304, 0x0304));
}

TEST(PixelTables, StandBehindTheWhiteBalance) {
    Settings settings = withTables(identity());
    Table table{};
    table[0x4000 / 4] = 0x1111;
    table[0x8000 / 4] = 0x2222;
    settings.table.fill(std::make_shared<const Table>(table));
    settings.coefficient = {1.0, 2.0, 0.5};
    EXPECT_THAT(drawGreys(settings, {0x4000}), ElementsAre(0, 0x2222, 0x1111));
}

Words shifted(std::uint32_t formatBits, std::uint32_t shift) {
    Settings settings;
    settings.bits = 16;
    settings.formatBits = formatBits;
    settings.shift = shift;
    settings.sensorWidth = 8;
    settings.xLength = 8;
    RowScene scene({greys({0xabcd, 0, 0, 0, 0, 0, 0, 0})});
    return drawFrame(settings, 1, scene).words();
}

TEST(PixelShift, EveryShiftInSixteenBits) {
    const Words expected = {0xabcd, 0x55e6, 0x2af3, 0x1579, 0x0abc, 0x055e, 0x02af, 0x0157,
                            0x00ab, 0x0055, 0x002a, 0x0015, 0x000a, 0x0005, 0x0002, 0x0001};
    for (std::uint32_t shift = 0; shift < 16; ++shift) {
        const Words words = shifted(16, shift);
        EXPECT_EQ(words[0], expected[shift]) << shift;
        EXPECT_EQ(words[2], expected[shift]) << shift;
        EXPECT_EQ(words[3], 0) << shift;
    }
}

TEST(PixelShift, EveryShiftInEightBits) {
    const Words expected = {0xcdcd, 0xe6e6, 0xf3f3, 0x7979, 0xbcbc, 0x5e5e, 0xafaf, 0x5757,
                            0xabab, 0x5555, 0x2a2a, 0x1515, 0x0a0a, 0x0505, 0x0202, 0x0101};
    for (std::uint32_t shift = 0; shift < 16; ++shift) {
        EXPECT_EQ(shifted(8, shift)[0], expected[shift]) << shift;
    }
}

TEST(PixelShift, EveryShiftInTenBits) {
    // The low 16 of the stream's bits: all ten of the first component, six of the second.
    const Words expected = {0x37cd, 0x99e6, 0xcef3, 0xe579, 0xf2bc, 0x795e, 0xbeaf, 0x5d57,
                            0xacab, 0x5455, 0xa82a, 0x5415, 0x280a, 0x1405, 0x0802, 0x0401};
    for (std::uint32_t shift = 0; shift < 16; ++shift) {
        EXPECT_EQ(shifted(10, shift)[0], expected[shift]) << shift;
    }
}

TEST(PixelShift, BeyondTheWordNothingIsLeft) {
    for (const std::uint32_t shift : {16U, 17U, 31U, 32U, 99U, 0xffffffffU}) {
        EXPECT_THAT(shifted(16, shift), ::testing::Each(0)) << shift;
    }
}

}  // namespace
}  // namespace softboard::pixels::testing
