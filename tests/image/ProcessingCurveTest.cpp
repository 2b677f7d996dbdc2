// The curve that offset, gain, gamma and invert make: (x / 16383 + offset) * gain to the power of 1 / gamma, of 65535.
//
// The numbers were worked out with 50 digits of precision.

#include <cmath>
#include <limits>

#include "tests/image/LookupTables.h"

namespace quillon::image_test {
namespace {

using ::testing::Each;

struct Curve {
    double offset = 0.0, gain = 1.0, gamma = 1.0;
    std::uint32_t invert = 0;
};

struct ProcessingCurve : ::testing::Test, LookupTables {
    void compute(const Curve& curve) {
        EXPECT_EQ(set(FG_PROCESSING_OFFSET, curve.offset), 0);
        EXPECT_EQ(set(FG_PROCESSING_GAIN, curve.gain), 0);
        EXPECT_EQ(set(FG_PROCESSING_GAMMA, curve.gamma), 0);
        EXPECT_EQ(set(FG_PROCESSING_INVERT, curve.invert), 0);
    }
    struct Spot {
        std::uint32_t x, value;
    };
    void expectSpots(const std::vector<Spot>& spots) {
        const Table blue = table(FG_LUT_VALUE_BLUE);
        for (const Spot& spot : spots) {
            EXPECT_EQ(blue[spot.x], spot.value) << "entry " << spot.x;
        }
    }
};

TEST_F(ProcessingCurve, IsTheIdentityAtFirst) {
    expectSpots({{0, 0}, {1, 4}, {8191, 32765}, {16382, 65531}, {16383, 65535}});
}

TEST_F(ProcessingCurve, IsTheSameInAllThreeTablesOfAppletAndDesign) {
    compute({.offset = 0.1, .gain = 0.7, .gamma = 1.8, .invert = 1});
    const Table blue = table(FG_LUT_VALUE_BLUE);
    EXPECT_EQ(table(FG_LUT_VALUE_RED), blue);
    EXPECT_EQ(table(FG_LUT_VALUE_GREEN), blue);
    for (const std::uint32_t x : {0U, 1U, 8191U, 16383U}) {
        EXPECT_EQ(designEntry("R", x), blue[x]);
        EXPECT_EQ(designEntry("G", x), blue[x]);
        EXPECT_EQ(designEntry("B", x), blue[x]);
    }
}

TEST_F(ProcessingCurve, OfGamma2Point2IsBright) {
    compute({.gamma = 2.2});
    expectSpots(
        {{0, 0}, {1, 796}, {2, 1091}, {100, 6456}, {1000, 18386}, {8191, 47822}, {12288, 57504}, {16383, 65535}});
}

TEST_F(ProcessingCurve, OfGammaOneHalfIsTheSquare) {
    compute({.gamma = 0.5});
    expectSpots({{0, 0}, {1, 0}, {100, 2}, {1000, 244}, {4095, 4094}, {8191, 16382}, {12288, 36868}, {16383, 65535}});
}

TEST_F(ProcessingCurve, OfGamma1000IsNearlyFlat) {
    compute({.gamma = 1000.0});
    expectSpots({{0, 0}, {1, 64902}, {1000, 65352}, {8191, 65490}, {16383, 65535}});
}

TEST_F(ProcessingCurve, OffsetAndGainStretchAndClampIt) {
    compute({.offset = 0.125, .gain = 2.0});
    expectSpots({{0, 16384}, {1, 16392}, {1000, 24384}, {4096, 49153}, {8191, 65535}, {16383, 65535}});
    compute({.offset = -0.25, .gain = 0.5});
    expectSpots({{0, 0}, {4095, 0}, {4096, 1}, {8191, 8191}, {12288, 16385}, {16382, 24574}, {16383, 24576}});
}

TEST_F(ProcessingCurve, OffsetGainAndGammaWorkTogether) {
    compute({.offset = 0.1, .gain = 1.5, .gamma = 0.45});
    expectSpots({{0, 967}, {1, 969}, {1000, 2789}, {4096, 15655}, {8191, 51849}, {10000, 65535}, {16383, 65535}});
}

TEST_F(ProcessingCurve, IsInvertedFrom65535) {
    compute({.invert = 1});
    expectSpots({{0, 65535}, {1, 65531}, {8191, 32770}, {16382, 4}, {16383, 0}});
    compute({.gamma = 2.2, .invert = 1});
    expectSpots({{0, 65535}, {1000, 47149}, {8191, 17713}, {16383, 0}});  // 65535 - 18386, 65535 - 47822
}

TEST_F(ProcessingCurve, BelowZeroIsBlackAndWhiteWhenInverted) {
    compute({.offset = -1.0});
    EXPECT_THAT(table(FG_LUT_VALUE_BLUE), Each(0U));
    compute({.offset = -1.0, .invert = 1});
    EXPECT_THAT(table(FG_LUT_VALUE_BLUE), Each(65535U));
}

TEST_F(ProcessingCurve, OfNoGainIsBlack) {
    compute({.gain = 0.0});
    EXPECT_THAT(table(FG_LUT_VALUE_BLUE), Each(0U));
}

TEST_F(ProcessingCurve, OfTheLargestGainIsClampedToWhite) {
    compute({.offset = 1.0, .gain = 16384.0});  // at most 32768 * 65535, which 32 bits hold
    EXPECT_THAT(table(FG_LUT_VALUE_BLUE), Each(65535U));
}

TEST_F(ProcessingCurve, AboveWhiteIsBlackWhenInverted) {
    compute({.offset = 1.0, .gain = 16384.0, .invert = 1});
    EXPECT_THAT(table(FG_LUT_VALUE_BLUE), Each(0U));
}

TEST_F(ProcessingCurve, ThatOverflowsThirtyTwoBitsIsBlack) {
    compute({.gain = 16384.0, .gamma = 0.5});
    // 2^31 lies between the entries 181 (2147254243) and 182 (2171046352).
    expectSpots({{0, 0}, {1, 65535}, {100, 65535}, {181, 65535}, {182, 0}, {8191, 0}, {16383, 0}});
    compute({.gain = 16384.0, .gamma = 0.5, .invert = 1});
    // 65535 less the smallest number wraps to a negative one: black again.
    expectSpots({{0, 65535}, {1, 0}, {181, 0}, {182, 0}, {16383, 0}});
}

TEST_F(ProcessingCurve, OfANegativeGammaIsTheReciprocal) {
    compute({.gain = 2.0, .gamma = -1.0});
    expectSpots({{0, 0}, {1, 65535}, {8191, 65535}, {8192, 65531}, {10000, 53683}, {12288, 43687}, {16382, 32770}});
    compute({.gain = 4.0, .gamma = -2.0});
    expectSpots({{0, 0}, {1, 65535}, {4095, 65535}, {8191, 46342}, {12288, 37835}});
}

TEST_F(ProcessingCurve, OfANegativeGammaOverflowsAtZeroInvertedOrNot) {
    compute({.gamma = -1.0});
    expectSpots({{0, 0}, {1, 65535}, {16382, 65535}, {16383, 65535}});
    compute({.gamma = -1.0, .invert = 1});
    expectSpots({{0, 0}, {1, 0}, {16382, 0}, {16383, 0}});
}

TEST_F(ProcessingCurve, OfNoGammaHasAnInfiniteExponent) {
    compute({.gamma = 0.0});
    expectSpots({{0, 0}, {1, 0}, {8191, 0}, {16382, 0}, {16383, 65535}});  // 1 to any power is 1
    compute({.gamma = -0.0});
    expectSpots({{0, 0}, {1, 0}, {8191, 0}, {16382, 0}, {16383, 65535}});
}

// To the bit ---------------------------------------------------------------------------------------------------------

/// The curve as it is defined, with the platform's pow for every entry.
Table definedCurve(const Curve& curve) {
    const double exponent = 1.0 / curve.gamma;
    Table table;
    for (int x = 0; x < 16384; ++x) {
        const double v = (x / 16383.0 + curve.offset) * curve.gain;
        std::int32_t out = 0;
        if (!(v < 0.0)) {
            volatile double base = v;  // or the compiler might know better than pow
            const double scaled = std::pow(base, exponent) * 65535.0 + 0.5;
            out = scaled < 2147483648.0 ? static_cast<std::int32_t>(scaled) : std::numeric_limits<std::int32_t>::min();
        }
        if (curve.invert == 1) {
            out = static_cast<std::int32_t>(65535U - static_cast<std::uint32_t>(out));
        }
        table.push_back(out < 0 ? 0U : out > 65535 ? 65535U : static_cast<std::uint32_t>(out));
    }
    return table;
}

TEST_F(ProcessingCurve, IsThePowOfThePlatformToTheBit) {
    const Curve curves[] = {{},
                            {.invert = 1},
                            {.offset = -0.0},
                            {.offset = 0.3, .gain = 0.77},
                            {.offset = -0.3, .gain = 123.4, .invert = 1},
                            {.gain = 16384.0},
                            {.gamma = 2.2},
                            {.offset = 0.01, .gain = 1.2, .gamma = 0.45},
                            {.offset = -0.5, .gain = 3.0, .gamma = 1.0000000000000002},
                            {.gamma = 0.9999999999999999},
                            {.gain = 2.0, .gamma = -1.0},
                            {.offset = -1.0, .gamma = -3.0, .invert = 1},
                            {.gamma = 1000.0, .invert = 1},
                            {.gamma = -1000.0},
                            {.gain = 16384.0, .gamma = 0.3}};
    for (const Curve& curve : curves) {
        SCOPED_TRACE(::testing::Message() << "offset " << curve.offset << " gain " << curve.gain << " gamma "
                                          << curve.gamma << " invert " << curve.invert);
        compute(curve);
        EXPECT_EQ(table(FG_LUT_VALUE_BLUE), definedCurve(curve));
    }
}

// What is accepted ---------------------------------------------------------------------------------------------------

TEST_F(ProcessingCurve, TheBoundsOfItsValuesAreAllowed) {
    for (const double offset : {-1.0, 1.0}) {
        EXPECT_EQ(set(FG_PROCESSING_OFFSET, offset), 0);
        EXPECT_EQ(get<double>(FG_PROCESSING_OFFSET), offset);
    }
    for (const double gain : {0.0, 16384.0}) {
        EXPECT_EQ(set(FG_PROCESSING_GAIN, gain), 0);
        EXPECT_EQ(get<double>(FG_PROCESSING_GAIN), gain);
    }
    for (const double gamma : {-1000.0, 0.0, 1000.0}) {
        EXPECT_EQ(set(FG_PROCESSING_GAMMA, gamma), 0);
        EXPECT_EQ(get<double>(FG_PROCESSING_GAMMA), gamma);
    }
}

TEST_F(ProcessingCurve, ValuesOutsideTheirRangesAreRefused) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double offset : {-1.0000000000000002, 1.0000000000000002, nan, infinity, -infinity}) {
        EXPECT_EQ(set(FG_PROCESSING_OFFSET, offset), -6000) << offset;
    }
    for (const double gain : {-0.1, 16384.5, nan, infinity, -infinity}) {
        EXPECT_EQ(set(FG_PROCESSING_GAIN, gain), -6000) << gain;
    }
    for (const double gamma : {-1000.5, 1000.5, nan, infinity, -infinity}) {
        EXPECT_EQ(set(FG_PROCESSING_GAMMA, gamma), -6000) << gamma;
    }
    EXPECT_EQ(set(FG_PROCESSING_INVERT, 2), -6000);
    EXPECT_THAT(accesses(), ::testing::IsEmpty());
    EXPECT_EQ(get<double>(FG_PROCESSING_OFFSET), 0.0);
    EXPECT_EQ(get<double>(FG_PROCESSING_GAIN), 1.0);
    EXPECT_EQ(get<double>(FG_PROCESSING_GAMMA), 1.0);
    EXPECT_EQ(get<std::uint32_t>(FG_PROCESSING_INVERT), 0U);
}

}  // namespace
}  // namespace quillon::image_test
