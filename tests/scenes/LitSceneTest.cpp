// Exposure, flash and noise.

#include "softboard/scenes/LitScene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "softboard/pixels/Settings.h"
#include "tests/scenes/Taking.h"

namespace softboard::scenes::testing {
namespace {

constexpr double Reference = 1000;  // ticks

/// Components that are the same in each line, in the camera's bits.
class FixedScene : public pixels::Scene {
public:
    explicit FixedScene(Components components) : components_(std::move(components)) {}

    std::span<const std::byte> take(const pixels::Line& /*line*/, std::uint32_t /*pixels*/, std::uint32_t bits,
                                    std::span<std::byte> memory) override {
        ++taken;
        const std::size_t size = pixels::componentBytes(bits);
        own_.resize(components_.size() * size);
        for (std::size_t i = 0; i < components_.size(); ++i) {
            std::memcpy(own_.data() + i * size, &components_[i], size);
        }
        if (!inMemory) {
            return own_;
        }
        std::copy(own_.begin(), own_.end(), memory.begin());
        return memory.first(own_.size());
    }
    double nanometresPerRow() const override { return 12345; }

    bool inMemory = false;
    std::size_t taken = 0;  ///< lines

private:
    Components components_;
    std::vector<std::byte> own_;
};

std::shared_ptr<FixedScene> fixed(Components components) {
    return std::make_shared<FixedScene>(std::move(components));
}

pixels::Line exposed(std::uint32_t ticks, bool flash = false) {
    pixels::Line line = lineAt(0);
    line.exposure = ticks & 0x0fffffffU;
    line.flash = flash ? 1 : 0;
    return line;
}

/// The components of a line of a camera of 8 bits.
Components lit(const Light& light, const pixels::Line& line, const Components& components, std::uint32_t bits = 8) {
    LitScene scene(fixed(components), light);
    return take(scene, line, static_cast<std::uint32_t>(components.size() / 3), bits);
}

TEST(LitScenes, HalfTheExposureIsHalfAsBright) {
    const Light light{.referenceTicks = Reference};
    EXPECT_EQ(lit(light, exposed(500), {0, 2, 254}), (Components{0, 1, 127}));
    EXPECT_EQ(lit(light, exposed(1000), {0, 2, 254}), (Components{0, 2, 254}));
    EXPECT_EQ(lit(light, exposed(250), {4, 40, 200}), (Components{1, 10, 50}));
    EXPECT_EQ(lit(light, exposed(500), {2, 20002, 65534}, 16), (Components{1, 10001, 32767}));
    EXPECT_EQ(lit(light, exposed(0), {1, 100, 255}), greys({0}));
}

TEST(LitScenes, ValuesAreRoundedToTheNearest) {
    const Light light{.referenceTicks = 3000};
    EXPECT_EQ(lit(light, exposed(1000), {1, 2, 4}), (Components{0, 1, 1}));
    EXPECT_EQ(lit(light, exposed(1000), {65533, 65534, 65535}, 16), (Components{21844, 21845, 21845}));
    EXPECT_EQ(lit({.referenceTicks = 2000}, exposed(1000), {1, 3, 255}), (Components{1, 2, 128}));
}

TEST(LitScenes, EveryGainMultipliesToTheNearest) {
    Components components;
    for (unsigned value = 0; value < 65536; value += 5) {
        components.push_back(value);
    }
    components.resize(components.size() / 3 * 3);
    for (const std::uint32_t exposure : {1U, 123U, 333U, 999U, 1001U, 1500U, 7777U}) {
        const Components line = lit({.referenceTicks = Reference}, exposed(exposure), components, 16);
        for (std::size_t i = 0; i < line.size(); ++i) {
            // Near the middle between two numbers either may come.
            ASSERT_NEAR(line[i], std::min(components[i] * exposure / Reference, 65535.0), 0.507) << components[i];
        }
    }
}

TEST(LitScenes, WhatIsTooBrightIsWhite) {
    const Light light{.referenceTicks = Reference};
    EXPECT_EQ(lit(light, exposed(3000), {84, 85, 86}), (Components{252, 255, 255}));
    EXPECT_EQ(lit(light, exposed(3000), {341, 342, 1023}, 10), (Components{1023, 1023, 1023}));
    EXPECT_EQ(lit(light, exposed(2000), {2047, 2048, 4095}, 12), (Components{4094, 4095, 4095}));
    EXPECT_EQ(lit({.referenceTicks = 1e-9}, exposed(0x0fffffff), {0, 1, 65535}, 16), (Components{0, 65535, 65535}));
    EXPECT_EQ(lit({.referenceTicks = 1, .flashGain = 1000}, exposed(0x0fffffff, true), {0, 1, 255}),
              (Components{0, 255, 255}));
}

TEST(LitScenes, TheFlashMultiplies) {
    const Light light{.referenceTicks = Reference, .flashGain = 4};
    EXPECT_EQ(lit(light, exposed(500, false), {2, 20, 200}), (Components{1, 10, 100}));
    EXPECT_EQ(lit(light, exposed(500, true), {2, 20, 200}), (Components{4, 40, 255}));
    EXPECT_EQ(lit({.flashGain = 0.5}, exposed(7, true), {2, 20, 200}), (Components{1, 10, 100}));
    EXPECT_EQ(lit({.flashGain = 0}, exposed(7, true), {2, 20, 200}), greys({0}));
    EXPECT_EQ(lit({.flashGain = 0}, exposed(7, false), {2, 20, 200}), (Components{2, 20, 200}));
}

TEST(LitScenes, WithoutAReferenceTheExposureDoesNotMatter) {
    for (const std::uint32_t exposure : {0U, 1U, 1000U, 0x0fffffffU}) {
        EXPECT_EQ(lit({}, exposed(exposure, true), {1, 2, 255}), (Components{1, 2, 255}));
    }
}

TEST(LitScenes, LinesOnWhichTheLightHasNoEffectAreHandedOn) {
    const auto inner = fixed(greys({1, 2}));
    LitScene scene(inner, {.referenceTicks = Reference, .flashGain = 2});
    std::vector<std::byte> memory(6);
    const std::span<const std::byte> own = inner->take(exposed(0), 2, 8, memory);
    EXPECT_EQ(scene.take(exposed(1000), 2, 8, memory).data(), own.data());
    EXPECT_EQ(scene.take(exposed(500, true), 2, 8, memory).data(), own.data());
    EXPECT_EQ(scene.take(exposed(500), 2, 8, memory).data(), memory.data());
    EXPECT_EQ(inner->taken, 4U);
}

TEST(LitScenes, ALineInTheMemoryIsLitThere) {
    const auto inner = fixed(greys({10, 200}));
    inner->inMemory = true;
    LitScene scene(inner, {.referenceTicks = Reference});
    for (const std::uint32_t bits : {8U, 10U}) {
        EXPECT_EQ(take(scene, exposed(500), 2, bits), greys({5, 100}));
    }
}

TEST(LitScenes, WhatTheSceneDoesNotDeliverIsBlack) {
    LitScene scene(fixed(greys({10})), {.referenceTicks = Reference});
    EXPECT_EQ(take(scene, exposed(500), 3, 8), greys({5, 0, 0}));
    LitScene nothing(fixed({}), {.referenceTicks = Reference});
    EXPECT_EQ(take(nothing, exposed(500), 2, 8), greys({0, 0}));
}

TEST(LitScenes, BitsAboveTheCamerasAreIgnored) {
    EXPECT_EQ(lit({.referenceTicks = Reference}, exposed(500), {0xf002, 0x0c04, 0x03fe}, 10), (Components{1, 2, 511}));
}

TEST(LitScenes, ARowIsAsLongAsThatOfTheScene) {
    EXPECT_EQ(LitScene(fixed({}), {}).nanometresPerRow(), 12345);
}

struct Statistics {
    double mean = 0;
    double deviation = 0;
    double withinOne = 0;  ///< the part that is at most one deviation of the light from the mean
};

constexpr std::uint32_t Width = 1000;
constexpr std::int64_t Lines = 100;

/// Of an even grey with noise.
Statistics statisticsOf(const Light& light, unsigned grey, std::uint32_t bits) {
    LitScene scene(fixed(Components(3 * Width, grey)), light);
    double count = 0;
    double sum = 0;
    double squares = 0;
    double within = 0;
    for (std::int64_t tick = 0; tick < Lines; ++tick) {
        pixels::Line line = exposed(500);
        line.tick = tick * 2500;
        for (const unsigned component : take(scene, line, Width, bits)) {
            count += 1;
            sum += component;
            squares += static_cast<double>(component) * component;
            within += std::abs(static_cast<double>(component) - grey) <= light.noise * ((1 << bits) - 1) ? 1 : 0;
        }
    }
    const double mean = sum / count;
    return {.mean = mean, .deviation = std::sqrt(squares / count - mean * mean), .withinOne = within / count};
}

TEST(LitNoise, HasTheMeanAndTheDeviationThatAreAskedFor) {
    // Of 300000 components the mean is known to 1/548 of a deviation and the deviation to 1/775: the bounds are five
    // times that.
    for (const double noise : {0.001, 0.01, 0.05}) {
        const Statistics of16 = statisticsOf({.noise = noise}, 30000, 16);
        const double deviation = noise * 65535;
        EXPECT_NEAR(of16.mean, 30000, deviation * 5 / 548) << noise;
        EXPECT_NEAR(of16.deviation, deviation, deviation * 5 / 775) << noise;
        EXPECT_NEAR(of16.withinOne, 0.6827, 0.0127) << noise;
    }
    // Rounding to whole numbers adds a variance of 1/12.
    const Statistics of8 = statisticsOf({.noise = 0.02}, 100, 8);
    const double deviation = std::sqrt(5.1 * 5.1 + 1.0 / 12);
    EXPECT_NEAR(of8.mean, 100, deviation * 5 / 548);
    EXPECT_NEAR(of8.deviation, deviation, deviation * 5 / 775);
}

TEST(LitNoise, ComesOnTopOfTheLight) {
    const Statistics dimmed = statisticsOf({.referenceTicks = Reference, .noise = 0.01}, 2000, 12);
    EXPECT_NEAR(dimmed.mean, 1000, 0.4);
    EXPECT_NEAR(dimmed.deviation, 40.95, 0.3);
}

TEST(LitNoise, IsLimitedToWhatTheCameraCanTell) {
    for (const std::uint32_t bits : {8U, 10U, 12U, 14U, 16U}) {
        const unsigned full = (1U << bits) - 1;
        LitScene scene(fixed(Components(3 * Width, full / 2)), {.noise = 1});
        std::size_t black = 0;
        std::size_t white = 0;
        for (const unsigned component : take(scene, exposed(0), Width, bits)) {
            ASSERT_LE(component, full);
            black += component == 0 ? 1U : 0U;
            white += component == full ? 1U : 0U;
        }
        // The probability of each is 0.309: 926 of 3000, with a deviation of 25.
        EXPECT_NEAR(static_cast<double>(black), 926, 6 * 25) << bits;
        EXPECT_NEAR(static_cast<double>(white), 926, 6 * 25) << bits;
    }
}

Components noisy(LitScene& scene, std::int64_t tick, std::uint32_t pixels = 50) {
    pixels::Line line = exposed(0);
    line.tick = tick;
    return take(scene, line, pixels, 12);
}

TEST(LitNoise, FollowsFromSeedAndTick) {
    const auto inner = fixed(Components(150, 2000));
    LitScene scene(inner, {.noise = 0.1, .seed = 7});
    LitScene same(inner, {.noise = 0.1, .seed = 7});
    LitScene other(inner, {.noise = 0.1, .seed = 8});
    const Components line = noisy(scene, 5000);
    EXPECT_EQ(noisy(same, 5000), line);
    EXPECT_NE(noisy(other, 5000), line);
    EXPECT_NE(noisy(scene, 5001), line);
    EXPECT_NE(noisy(scene, 5000 + (std::int64_t{1} << 32)), line);
}

TEST(LitNoise, DoesNotHangOnTheOrderOfTheLines) {
    const auto inner = fixed(Components(150, 2000));
    LitScene forth(inner, {.noise = 0.1});
    LitScene back(inner, {.noise = 0.1});
    std::vector<Components> lines;
    for (std::int64_t tick = 0; tick < 10; ++tick) {
        lines.push_back(noisy(forth, tick));
    }
    for (std::int64_t tick = 9; tick >= 0; --tick) {
        take(back, exposed(0), 3, 8);  // another camera in between
        EXPECT_EQ(noisy(back, tick), lines[static_cast<std::size_t>(tick)]) << tick;
        EXPECT_EQ(noisy(back, tick), lines[static_cast<std::size_t>(tick)]) << tick;
    }
}

TEST(LitNoise, NoTwoComponentsHaveTheSame) {
    const auto inner = fixed(Components(150, 2000));
    LitScene scene(inner, {.noise = 0.1});
    const Components line = noisy(scene, 0);
    for (std::size_t shift = 1; shift < 20; ++shift) {
        std::size_t equal = 0;
        for (std::size_t i = shift; i < line.size(); ++i) {
            equal += line[i] == line[i - shift] ? 1U : 0U;
        }
        EXPECT_LT(equal, 8U) << shift;  // 0.1 of 150 by chance
    }
}

TEST(LitNoise, LiesOnWhatTheSceneDoesNotDeliverToo) {
    LitScene scene(fixed({}), {.noise = 0.1});
    LitScene black(fixed(Components(150, 0)), {.noise = 0.1});
    EXPECT_EQ(noisy(scene, 3), noisy(black, 3));
    EXPECT_NE(noisy(scene, 3), Components(150, 0));
    LitScene narrow(fixed(Components(30, 0)), {.noise = 0.1});
    EXPECT_EQ(noisy(narrow, 3), noisy(black, 3));
}

}  // namespace
}  // namespace softboard::scenes::testing
