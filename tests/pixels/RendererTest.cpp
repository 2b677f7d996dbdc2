// The renderer against the reference, byte for byte, under settings that nobody would think of; and what it keeps.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "softboard/pixels/Reference.h"
#include "softboard/pixels/Renderer.h"
#include "tests/pixels/Drawing.h"

namespace softboard::pixels::testing {
namespace {

/// Noise that depends on the line's position alone, in whole words whatever the component's bits are.
class NoiseScene : public Scene {
public:
    std::span<const std::byte> take(const Line& line, std::uint32_t /*pixels*/, std::uint32_t /*bits*/,
                                    std::span<std::byte> memory) override {
        std::mt19937 noise(static_cast<std::uint32_t>(line.position));
        for (std::byte& byte : memory) {
            byte = static_cast<std::byte>(noise());
        }
        return memory;
    }
};

class RandomSettings {
public:
    explicit RandomSettings(std::uint32_t seed) : random_(seed) {
        for (auto& table : tables_) {
            Table entries{};
            for (std::uint16_t& entry : entries) {
                entry = static_cast<std::uint16_t>(random_());
            }
            table = std::make_shared<const Table>(entries);
        }
    }

    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    bool oneIn(std::uint32_t count) { return below(count) == 0; }

    Settings operator()(std::uint32_t version) {
        Settings settings;
        settings.version = version;
        settings.bits = oneIn(20) ? below(40) : 8 + 2 * below(5);
        for (std::uint32_t& component : settings.order) {
            component = oneIn(20) ? word() : below(3);
        }
        settings.simulator = oneIn(3);
        settings.ramp = {.enableX = !oneIn(3), .yDivisor = divisor(), .frameDivisor = divisor(), .offset = divisor()};
        settings.sensorWidth = width();
        settings.xMirror = oneIn(2);
        settings.yMirror = oneIn(2);
        settings.xOffset = oneIn(40) ? word() : oneIn(2) ? 0 : below(settings.sensorWidth + 4);
        settings.xLength = oneIn(2) ? settings.sensorWidth / 4 * 4 : width();
        for (std::size_t colour = 0; colour < Colours; ++colour) {
            settings.coefficient[colour] = oneIn(3) ? 1.0 : below(5000) / 1024.0 - 0.1;
            settings.table[colour] = oneIn(10) ? nullptr : tables_[below(4)];
        }
        settings.lookup = !oneIn(3);
        settings.formatBits = oneIn(30) ? below(20) : 8 + 2 * below(5);
        settings.shift = oneIn(20) ? word() : below(17 - std::min(settings.formatBits, 16U));
        settings.redFirst = oneIn(3);
        return settings;
    }

private:
    std::uint32_t word() { return static_cast<std::uint32_t>(random_()); }
    std::uint32_t divisor() { return oneIn(3) ? 256 : oneIn(20) ? word() : below(600); }
    /// Seldom one that is longer than what the renderer copies of a ramp at once.
    std::uint32_t width() { return oneIn(50) ? below(9000) : oneIn(4) ? below(700) : below(40); }

    std::mt19937 random_;
    std::array<std::shared_ptr<const Table>, 4> tables_;
};

TEST(PixelRenderer, DrawsTheReferencesBytes) {
    RandomSettings random(20250);
    NoiseScene scene;
    Renderer renderer;
    std::size_t bytes = 0;
    std::size_t truncated = 0;
    for (std::uint32_t round = 0; round < 1500 && !::testing::Test::HasFailure(); ++round) {
        // More kinds of settings than are kept, and versions that come again.
        std::vector<std::shared_ptr<const Settings>> known;
        for (std::uint32_t version = 0; version < 1 + random.below(12); ++version) {
            known.push_back(std::make_shared<const Settings>(random(version)));
        }
        const SettingsOfVersion settingsOf = [&](std::uint32_t version) -> std::shared_ptr<const Settings> {
            return version < known.size() ? known[version] : nullptr;
        };
        std::vector<Line> lines(1 + random.below(12));
        std::size_t capacity = 0;
        std::uint32_t version = 0;
        for (Line& line : lines) {
            version = random.oneIn(3) ? random.below(static_cast<std::uint32_t>(known.size())) : version;
            line =
                lineAt(simulatorPosition(random.below(1000), random.below(65536)), random.oneIn(50) ? 1000 : version);
            line.inverted = random.oneIn(10) ? 1 : 0;
            capacity += settingsOf(line.settings) != nullptr ? lineBytes(*settingsOf(line.settings)) : 0;
        }
        capacity -= random.oneIn(5) ? capacity / 3 : 0;

        std::vector<std::byte> expected(capacity + 16, std::byte{0x5a});
        std::vector<std::byte> drawn = expected;
        const Drawn slow = reference::draw(lines, settingsOf, scene, std::span(expected).first(capacity));
        const Drawn fast = renderer.draw(lines, settingsOf, scene, std::span(drawn).first(capacity));
        ASSERT_EQ(fast, slow) << "round " << round;
        const auto [first, second] = std::mismatch(drawn.begin(), drawn.end(), expected.begin());
        ASSERT_TRUE(first == drawn.end()) << "round " << round << ", byte " << first - drawn.begin();
        bytes += slow.bytes;
        truncated += slow.truncated ? 1 : 0;
    }
    EXPECT_GT(bytes, 5'000'000U);
    EXPECT_GT(truncated, 100U);
}

/// Draws row 0 of four grey pixels of 0x4000.
std::string drawRow(Renderer& renderer, const std::shared_ptr<const Settings>& settings) {
    RowScene scene({greys({0x4000, 0x4000, 0x4000, 0x4000})});
    std::vector<std::byte> out(12);
    const std::vector<Line> lines = {lineAt(0, settings->version)};
    Frame frame;
    frame.drawn = renderer.draw(
        lines, [&](std::uint32_t) { return settings; }, scene, out);
    frame.bytes = out;
    return frame.hex();
}

std::shared_ptr<const Settings> withRed(std::uint32_t version, double coefficient) {
    Settings settings;
    settings.version = version;
    settings.sensorWidth = 4;
    settings.xLength = 4;
    settings.shift = 8;
    settings.coefficient[Red] = coefficient;
    return std::make_shared<const Settings>(settings);
}

TEST(PixelRenderer, OneVersionOfTwoBoardsIsTwoSettings) {
    Renderer renderer;
    EXPECT_EQ(drawRow(renderer, withRed(1, 1.0)), "404040404040404040404040");
    EXPECT_EQ(drawRow(renderer, withRed(1, 2.0)), "404080404080404080404080");
    EXPECT_EQ(drawRow(renderer, withRed(1, 0.5)), "404020404020404020404020");
}

TEST(PixelRenderer, SettingsComeBackAfterManyOthers) {
    Renderer renderer;
    const auto first = withRed(1, 2.0);
    EXPECT_EQ(drawRow(renderer, first), "404080404080404080404080");
    for (std::uint32_t version = 2; version < 40; ++version) {
        EXPECT_EQ(drawRow(renderer, withRed(version, 3.0)), "4040c04040c04040c04040c0");
    }
    EXPECT_EQ(drawRow(renderer, first), "404080404080404080404080");
}

TEST(PixelRenderer, AsksForSettingsOnlyWhenTheVersionChanges) {
    Renderer renderer;
    RowScene scene({greys({0, 0, 0, 0})});
    const auto settings = withRed(1, 1.0);
    std::vector<std::uint32_t> asked;
    const std::vector<Line> lines = {lineAt(0, 1), lineAt(0, 1), lineAt(0, 2), lineAt(0, 2), lineAt(0, 1)};
    std::vector<std::byte> out(60);
    renderer.draw(
        lines,
        [&](std::uint32_t version) {
            asked.push_back(version);
            return settings;
        },
        scene, out);
    EXPECT_EQ(asked, (std::vector<std::uint32_t>{1, 2, 1}));
}

TEST(PixelRenderer, KeepsNoMoreThanTheLastFewSettings) {
    Renderer renderer;
    std::vector<std::weak_ptr<const Settings>> drawn;
    for (std::uint32_t version = 0; version < 20; ++version) {
        const auto settings = withRed(version, 1.0);
        drawRow(renderer, settings);
        drawn.push_back(settings);
    }
    EXPECT_TRUE(drawn.front().expired());
    EXPECT_FALSE(drawn.back().expired());
    EXPECT_EQ(std::count_if(drawn.begin(), drawn.end(), [](const auto& each) { return !each.expired(); }), 8);
}

}  // namespace
}  // namespace softboard::pixels::testing
