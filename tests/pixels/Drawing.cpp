#include "tests/pixels/Drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "softboard/pixels/Reference.h"
#include "softboard/pixels/Renderer.h"

namespace softboard::pixels::testing {

namespace {

constexpr std::size_t GuardBytes = 64;
constexpr std::byte Guard{0xA5};

/// Calls `draw` with memory that is guarded, and shows what it wrote.
template <typename Draw>
Frame intoGuardedMemory(std::size_t capacity, const Draw& draw) {
    Frame frame;
    frame.bytes.assign(capacity + GuardBytes, Guard);
    frame.drawn = draw(std::span(frame.bytes).first(capacity));
    EXPECT_LE(frame.drawn.bytes, capacity);
    const auto end = frame.bytes.begin() + static_cast<std::ptrdiff_t>(std::min(frame.drawn.bytes, capacity));
    EXPECT_TRUE(std::all_of(end, frame.bytes.end(), [](std::byte value) { return value == Guard; }))
        << "written behind the end";
    frame.bytes.erase(end, frame.bytes.end());
    return frame;
}

}  // namespace

std::span<const std::byte> RowScene::take(const Line& line, std::uint32_t pixels, std::uint32_t bits,
                                          std::span<std::byte> memory) {
    const std::vector<Triple>& row = rows_.at(static_cast<std::size_t>(line.position));
    std::byte* to = memory.data();
    for (std::size_t x = 0; x < std::min<std::size_t>(pixels, row.size()); ++x) {
        for (const std::uint16_t value : row[x]) {
            const auto raw = static_cast<std::uint16_t>(value >> (16 - bits));
            std::memcpy(to, &raw, componentBytes(bits));
            to += componentBytes(bits);
        }
    }
    return memory.first(static_cast<std::size_t>(to - memory.data()));
}

std::vector<Triple> greys(std::initializer_list<std::uint16_t> values) {
    std::vector<Triple> row;
    for (const std::uint16_t value : values) {
        row.push_back({value, value, value});
    }
    return row;
}

Line lineAt(std::int64_t row, std::uint32_t settings) {
    return {.tick = 0, .position = row, .settings = settings, .exposure = 0, .flash = 0, .inverted = 0};
}

std::string Frame::hex(std::size_t first, std::size_t count) const {
    static constexpr char Digits[] = "0123456789abcdef";
    std::string text;
    for (std::size_t i = first; i < bytes.size() && i - first < count; ++i) {
        const auto value = std::to_integer<unsigned>(bytes[i]);
        text += Digits[value >> 4];
        text += Digits[value & 15];
    }
    return text;
}

std::vector<std::uint16_t> Frame::words() const {
    std::vector<std::uint16_t> words;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        words.push_back(static_cast<std::uint16_t>(std::to_integer<unsigned>(bytes[i]) |
                                                   std::to_integer<unsigned>(bytes[i + 1]) << 8));
    }
    return words;
}

Frame drawFrame(const std::vector<Settings>& settings, std::span<const Line> lines, Scene& scene,
                std::size_t capacity) {
    std::vector<std::shared_ptr<const Settings>> known;
    for (const Settings& each : settings) {
        known.push_back(std::make_shared<const Settings>(each));
    }
    const SettingsOfVersion settingsOf = [&](std::uint32_t version) -> std::shared_ptr<const Settings> {
        const auto found =
            std::find_if(known.begin(), known.end(), [&](const auto& each) { return each->version == version; });
        return found != known.end() ? *found : nullptr;
    };
    Frame frame = intoGuardedMemory(
        capacity, [&](std::span<std::byte> out) { return reference::draw(lines, settingsOf, scene, out); });
    Renderer renderer;
    const Frame fast = intoGuardedMemory(
        capacity, [&](std::span<std::byte> out) { return renderer.draw(lines, settingsOf, scene, out); });
    EXPECT_EQ(fast.drawn, frame.drawn);
    EXPECT_EQ(fast.hex(), frame.hex());
    return frame;
}

Frame drawFrame(const Settings& settings, std::int64_t lines, Scene& scene) {
    std::vector<Line> all;
    for (std::int64_t row = 0; row < lines; ++row) {
        all.push_back(lineAt(row, settings.version));
    }
    return drawFrame({settings}, all, scene, lineBytes(settings) * all.size());
}

std::vector<std::uint16_t> drawGreys(Settings settings, std::initializer_list<std::uint16_t> values) {
    settings.bits = 16;
    settings.sensorWidth = static_cast<std::uint32_t>(values.size());
    settings.xLength = settings.sensorWidth;
    RowScene scene({greys(values)});
    return drawFrame(settings, 1, scene).words();
}

}  // namespace softboard::pixels::testing
