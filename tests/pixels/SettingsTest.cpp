// What values of the settings mean, those included that make no sense.

#include <gtest/gtest.h>

#include <limits>

#include "softboard/pixels/Settings.h"

namespace softboard::pixels {
namespace {

Settings withFormat(std::uint32_t xLength, std::uint32_t formatBits) {
    Settings settings;
    settings.xLength = xLength;
    settings.formatBits = formatBits;
    return settings;
}

TEST(PixelSettings, BytesOfALine) {
    EXPECT_EQ(lineBytes(withFormat(8, 8)), 24U);
    EXPECT_EQ(lineBytes(withFormat(8, 10)), 30U);
    EXPECT_EQ(lineBytes(withFormat(8, 12)), 36U);
    EXPECT_EQ(lineBytes(withFormat(8, 14)), 42U);
    EXPECT_EQ(lineBytes(withFormat(8, 16)), 48U);
    EXPECT_EQ(lineBytes(withFormat(16384, 16)), 98304U);
}

TEST(PixelSettings, ALineEndsAtAWholeByte) {
    EXPECT_EQ(lineBytes(withFormat(1, 10)), 4U);
    EXPECT_EQ(lineBytes(withFormat(2, 10)), 8U);
    EXPECT_EQ(lineBytes(withFormat(3, 10)), 12U);
    EXPECT_EQ(lineBytes(withFormat(1, 12)), 5U);
    EXPECT_EQ(lineBytes(withFormat(3, 14)), 16U);
}

TEST(PixelSettings, NoFormatAndNoWidthHaveNoBytes) {
    EXPECT_EQ(lineBytes(withFormat(8, 0)), 0U);
    EXPECT_EQ(lineBytes(withFormat(8, 9)), 0U);
    EXPECT_EQ(lineBytes(withFormat(8, 17)), 0U);
    EXPECT_EQ(lineBytes(withFormat(0, 8)), 0U);
}

TEST(PixelSettings, BytesOfTheWidestLineDoNotOverflow) {
    EXPECT_EQ(lineBytes(withFormat(std::numeric_limits<std::uint32_t>::max(), 16)), 25769803770U);
}

TEST(PixelSettings, ACoefficientIsTheNearestStep) {
    EXPECT_EQ(coefficientSteps(0.0), 0U);
    EXPECT_EQ(coefficientSteps(0.0004), 0U);
    EXPECT_EQ(coefficientSteps(0.0005), 1U);
    EXPECT_EQ(coefficientSteps(1.0), 1024U);
    EXPECT_EQ(coefficientSteps(1.0004), 1024U);
    EXPECT_EQ(coefficientSteps(1.00048828125), 1025U);  // halfway
    EXPECT_EQ(coefficientSteps(1.0005), 1025U);
    EXPECT_EQ(coefficientSteps(4095.0 / 1024), 4095U);
}

TEST(PixelSettings, ACoefficientOutOfRangeIsTheNearestLimit) {
    EXPECT_EQ(coefficientSteps(4.0), 4095U);
    EXPECT_EQ(coefficientSteps(1e300), 4095U);
    EXPECT_EQ(coefficientSteps(std::numeric_limits<double>::infinity()), 4095U);
    EXPECT_EQ(coefficientSteps(-0.1), 0U);
    EXPECT_EQ(coefficientSteps(-std::numeric_limits<double>::infinity()), 0U);
    EXPECT_EQ(coefficientSteps(std::numeric_limits<double>::quiet_NaN()), 0U);
}

TEST(PixelSettings, BitsCountAsTheNextWidthThatThereIs) {
    const auto bitsOf = [](std::uint32_t bits) {
        Settings settings;
        settings.bits = bits;
        return effective(settings).bits;
    };
    EXPECT_EQ(bitsOf(0), 8U);
    EXPECT_EQ(bitsOf(8), 8U);
    EXPECT_EQ(bitsOf(9), 10U);
    EXPECT_EQ(bitsOf(10), 10U);
    EXPECT_EQ(bitsOf(13), 14U);
    EXPECT_EQ(bitsOf(15), 16U);
    EXPECT_EQ(bitsOf(17), 16U);
    EXPECT_EQ(bitsOf(std::numeric_limits<std::uint32_t>::max()), 16U);
}

TEST(PixelSettings, NonsenseHasAMeaning) {
    Settings settings;
    settings.order = {7, 3, 2};
    settings.ramp.yDivisor = 0;
    settings.ramp.frameDivisor = 0;
    settings.sensorWidth = std::numeric_limits<std::uint32_t>::max();
    settings.coefficient = {-1.0, 9.0, 1.0005};
    settings.shift = 99;
    settings.formatBits = 11;
    const Settings result = effective(settings);
    EXPECT_EQ(result.order, (std::array<std::uint32_t, 3>{2, 2, 2}));
    EXPECT_EQ(result.ramp.yDivisor, 1U);
    EXPECT_EQ(result.ramp.frameDivisor, 1U);
    EXPECT_EQ(result.sensorWidth, 65536U);
    EXPECT_EQ(result.coefficient, (std::array<double, 3>{0.0, 4095.0 / 1024, 1025.0 / 1024}));
    EXPECT_EQ(result.shift, 16U);
    EXPECT_EQ(result.formatBits, 0U);
}

TEST(PixelSettings, TablesAreThereOnlyWithLookup) {
    Settings settings;
    settings.table[Green] = std::make_shared<const Table>();
    EXPECT_EQ(effective(settings).table[Green], nullptr);
    settings.lookup = true;
    EXPECT_EQ(effective(settings).table[Green], settings.table[Green]);
    EXPECT_EQ(effective(settings).table[Red], nullptr);
}

TEST(PixelSettings, WhatMakesSenseStays) {
    Settings settings;
    settings.version = 5;
    settings.bits = 12;
    settings.order = {2, 0, 1};
    settings.simulator = true;
    settings.ramp = {.enableX = false, .yDivisor = 17, .frameDivisor = 1, .offset = 300};
    settings.sensorWidth = 16384;
    settings.xMirror = true;
    settings.yMirror = true;
    settings.xOffset = 70000;
    settings.xLength = 90000;
    settings.shift = 15;
    settings.formatBits = 14;
    settings.redFirst = true;
    const Settings result = effective(settings);
    EXPECT_EQ(result.version, 5U);
    EXPECT_EQ(result.bits, 12U);
    EXPECT_EQ(result.order, (std::array<std::uint32_t, 3>{2, 0, 1}));
    EXPECT_TRUE(result.simulator);
    EXPECT_EQ(result.ramp, settings.ramp);
    EXPECT_EQ(result.sensorWidth, 16384U);
    EXPECT_TRUE(result.xMirror);
    EXPECT_TRUE(result.yMirror);
    EXPECT_EQ(result.xOffset, 70000U);
    EXPECT_EQ(result.xLength, 90000U);
    EXPECT_EQ(result.shift, 15U);
    EXPECT_EQ(result.formatBits, 14U);
    EXPECT_TRUE(result.redFirst);
}

}  // namespace
}  // namespace softboard::pixels
