// Settings that one thread writes while frames come in another's time.

#include <array>
#include <atomic>
#include <set>
#include <thread>

#include "softboard/pixels/Reference.h"
#include "softboard/pixels/Scene.h"
#include "tests/frames/AppletFrames.h"
#include "tests/frames/DesignSettings.h"

namespace quillon::frames_test {
namespace {

namespace pixels = softboard::pixels;

/// Four settings with two values each, all of them one write of the design that can matter: sixteen pictures of a line.
/// The pattern is the same in all lines.
class SettingsWhileAcquiring : public AppletFrames {
protected:
    static constexpr int Width = 32;
    static constexpr int Height = 16;
    static constexpr std::size_t LineBytes = std::size_t{Width} * 3;
    static constexpr unsigned Pictures = 16;

    void SetUp() override {
        AppletFrames::SetUp();
        useSimulator(Width, Height);
        set(FG_CAMERASIMULATOR_PATTERN, FG_HORIZONTAL);
        set(FG_CAMERASIMULATOR_ROLL, FG_OFF);
        set(FG_PROCESSING_INVERT, FG_ON);
        set(FG_BITALIGNMENT, FG_CUSTOM_BIT_SHIFT_MODE);
        DesignSettings settings(device());
        pixels::BarScene scene;
        for (unsigned which = 0; which < Pictures; ++which) {
            write(which);
            const std::vector<std::byte> line =
                pixels::reference::drawLine(pixels::effective(*settings.read()), pixels::Line{}, scene);
            ASSERT_EQ(line.size(), LineBytes);
            lines.insert(line);
        }
        ASSERT_EQ(lines.size(), Pictures);
        write(0);
    }
    /// Takes the place of SDK and host at once: refusals are failures.
    void write(unsigned which) {
        set(FG_CAMERASIMULATOR_PATTERN_OFFSET, (which & 1U) != 0 ? 57 : 0);
        set(FG_SCALINGFACTOR_GREEN, (which & 2U) != 0 ? 0.5 : 1.0);
        set(FG_LUT_ENABLE, (which & 4U) != 0 ? FG_ON : FG_OFF);
        set(FG_CUSTOM_BIT_SHIFT_RIGHT, (which & 8U) != 0 ? 2 : 0);
    }

    std::set<std::vector<std::byte>> lines;
};

TEST_F(SettingsWhileAcquiring, MakeEachLineOneOfTheirPictures) {
    constexpr std::int64_t Frames = 200;
    constexpr std::int64_t Most = 100000;
    ASSERT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_AUTO, 1.0), 0);
    softboard_memory* const memory = memoryOf(8, LineBytes * Height);
    ASSERT_EQ(softboard_memory_mode(memory, SOFTBOARD_MEMORY_HOLD), 0);
    std::atomic<bool> enough = false;
    std::set<std::vector<std::byte>> shown;
    std::int64_t number = 0;
    acquire(-1, memory);
    std::thread writer([&] {
        // Each picture follows each other one.
        for (unsigned step = 1, which = 0; !enough; step = step % (Pictures - 1) + 1) {
            which = (which + step) % Pictures;
            write(which);
        }
    });
    while (number < Most && (number < Frames || shown.size() < 2)) {
        ++number;
        const std::int64_t last = built.applet.lastPictureBlocking(number, 0, 60, memory);
        if (last < number) {
            ADD_FAILURE() << "frame " << number << ": " << last;
            break;
        }
        const Frame drawn = frame(memory, number);
        EXPECT_EQ(drawn.bytes.size(), LineBytes * Height);
        EXPECT_EQ(drawn.about.flags, 0U);
        for (auto line = drawn.bytes.begin(); line != drawn.bytes.end(); line += LineBytes) {
            shown.emplace(line, line + LineBytes);
        }
        EXPECT_EQ(softboard_memory_release(memory, number), 0);
    }
    enough = true;
    writer.join();
    stop();
    EXPECT_GE(shown.size(), 2U);
    for (const auto& line : shown) {
        EXPECT_EQ(lines.count(line), 1U);
    }
}

TEST_F(SettingsWhileAcquiring, AreInForceForEveryFrameThatBeginsBehindThem) {
    ASSERT_EQ(softboard_clock(device(), SOFTBOARD_CLOCK_AUTO, 1.0), 0);
    DesignSettings settings(device());
    pixels::BarScene scene;
    softboard_memory* const memory = memoryOf(2, LineBytes * Height);
    for (unsigned which = 0; which < Pictures; ++which) {
        std::thread writer([&] { write(which); });
        writer.join();
        settings.tablesMayHaveChanged();
        const auto expected = pixels::reference::drawLine(pixels::effective(*settings.read()), pixels::Line{}, scene);
        acquire(2, memory);
        ASSERT_EQ(built.applet.lastPictureBlocking(2, 0, 60, memory), 2);
        for (const std::int64_t number : {1, 2}) {
            const Frame drawn = frame(memory, number);
            ASSERT_EQ(drawn.bytes.size(), LineBytes * Height);
            for (std::size_t line = 0; line < Height; ++line) {
                EXPECT_TRUE(std::equal(expected.begin(), expected.end(),
                                       drawn.bytes.begin() + static_cast<std::ptrdiff_t>(line * LineBytes)));
            }
        }
    }
}

}  // namespace
}  // namespace quillon::frames_test
