#include "tests/scenes/Taking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <span>

#include "softboard/pixels/Settings.h"

namespace softboard::scenes::testing {

namespace {

constexpr std::size_t GuardBytes = 64;
constexpr std::byte Guard{0xA5};

}  // namespace

pixels::Line lineAt(std::int64_t nanometres) {
    return {.tick = 0, .position = nanometres, .settings = 0, .exposure = 0, .flash = 0, .inverted = 0};
}

Components take(pixels::Scene& scene, const pixels::Line& line, std::uint32_t pixels, std::uint32_t bits) {
    const std::size_t size = pixels::componentBytes(bits);
    Components components(std::size_t{pixels} * pixels::Colours);
    std::vector<std::byte> memory(components.size() * size + GuardBytes, Guard);
    const std::span<const std::byte> raw =
        scene.take(line, pixels, bits, std::span(memory).first(components.size() * size));
    EXPECT_TRUE(std::all_of(memory.end() - GuardBytes, memory.end(), [](std::byte value) { return value == Guard; }))
        << "written behind the end";
    EXPECT_LE(raw.size(), components.size() * size);
    EXPECT_EQ(raw.size() % (pixels::Colours * size), 0U);
    for (std::size_t i = 0; i < std::min(raw.size() / size, components.size()); ++i) {
        std::uint16_t value = 0;
        std::memcpy(&value, raw.data() + i * size, size);
        components[i] = value;
    }
    return components;
}

Components take(pixels::Scene& scene, std::int64_t nanometres, std::uint32_t pixels) {
    return take(scene, lineAt(nanometres), pixels, 8);
}

Components greys(const std::vector<unsigned>& values) {
    Components components;
    for (const unsigned value : values) {
        components.insert(components.end(), pixels::Colours, value);
    }
    return components;
}

}  // namespace softboard::scenes::testing
