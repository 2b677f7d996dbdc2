// Frames as a whole: settings that change between lines, memory that is too small, numbers that make no sense.

#include <gtest/gtest.h>

#include <limits>

#include "tests/pixels/Drawing.h"

namespace softboard::pixels::testing {
namespace {

constexpr std::uint32_t Most = std::numeric_limits<std::uint32_t>::max();

/// Four grey pixels a row: row y has y + 1, in the upper byte.
RowScene rowScene(std::size_t rows) {
    std::vector<std::vector<Triple>> all;
    for (std::size_t y = 0; y < rows; ++y) {
        const auto value = static_cast<std::uint16_t>((y + 1) << 8);
        all.push_back(greys({value, value, value, value}));
    }
    return RowScene(std::move(all));
}

Settings version(std::uint32_t number) {
    Settings settings;
    settings.version = number;
    settings.sensorWidth = 4;
    settings.xLength = 4;
    settings.shift = 8;
    return settings;
}

TEST(PixelFrames, SettingsChangeBetweenLines) {
    RowScene scene = rowScene(4);
    Settings changed = version(2);
    changed.coefficient = {1.0, 2.0, 3.0};
    Settings back = version(3);
    const std::vector<Line> lines = {lineAt(0, 1), lineAt(1, 2), lineAt(2, 2), lineAt(3, 3)};
    const Frame frame = drawFrame({version(1), changed, back}, lines, scene, 48);
    EXPECT_EQ(frame.drawn, (Drawn{.bytes = 48, .lines = 4, .truncated = false}));
    EXPECT_EQ(frame.hex(),
              "010101010101010101010101"
              "060402060402060402060402"
              "090603090603090603090603"
              "040404040404040404040404");
}

TEST(PixelFrames, LinesOfDifferentLengthsFollowEachOther) {
    RowScene scene = rowScene(3);
    Settings narrow = version(2);
    narrow.xLength = 1;
    Settings deep = version(3);
    deep.formatBits = 16;
    deep.shift = 0;
    const std::vector<Line> lines = {lineAt(0, 2), lineAt(1, 3), lineAt(2, 1)};
    const Frame frame = drawFrame({version(1), narrow, deep}, lines, scene, 100);
    EXPECT_EQ(frame.drawn, (Drawn{.bytes = 39, .lines = 3, .truncated = false}));
    EXPECT_EQ(frame.hex(),
              "010101"
              "000200020002000200020002000200020002000200020002"
              "030303030303030303030303");
}

TEST(PixelFrames, CameraAndSimulatorInOneFrame) {
    RowScene scene = rowScene(1);
    Settings simulator = version(2);
    simulator.simulator = true;
    const std::vector<Line> lines = {lineAt(0, 1), lineAt(simulatorPosition(0, 5), 2)};
    EXPECT_EQ(drawFrame({version(1), simulator}, lines, scene, 24).hex(),
              "010101010101010101010101"
              "050505060606070707080808");
}

TEST(PixelFrames, TheFirstLineSaysWhetherTheyComeInReverse) {
    RowScene scene = rowScene(3);
    Settings reversed = version(2);
    reversed.yMirror = true;
    const std::vector<Line> first = {lineAt(0, 2), lineAt(1, 1), lineAt(2, 1)};
    EXPECT_EQ(drawFrame({version(1), reversed}, first, scene, 36).hex(),
              "030303030303030303030303"
              "020202020202020202020202"
              "010101010101010101010101");
    const std::vector<Line> last = {lineAt(0, 1), lineAt(1, 1), lineAt(2, 2)};
    EXPECT_EQ(drawFrame({version(1), reversed}, last, scene, 36).hex(),
              "010101010101010101010101"
              "020202020202020202020202"
              "030303030303030303030303");
}

TEST(PixelFrames, OnlyWholeLinesAreWritten) {
    RowScene scene = rowScene(3);
    const std::vector<Line> lines = {lineAt(0, 1), lineAt(1, 1), lineAt(2, 1)};
    const auto into = [&](std::size_t capacity) { return drawFrame({version(1)}, lines, scene, capacity).drawn; };
    EXPECT_EQ(into(37), (Drawn{.bytes = 36, .lines = 3, .truncated = false}));
    EXPECT_EQ(into(36), (Drawn{.bytes = 36, .lines = 3, .truncated = false}));
    EXPECT_EQ(into(35), (Drawn{.bytes = 24, .lines = 2, .truncated = true}));
    EXPECT_EQ(into(12), (Drawn{.bytes = 12, .lines = 1, .truncated = true}));
    EXPECT_EQ(into(11), (Drawn{.bytes = 0, .lines = 0, .truncated = true}));
    EXPECT_EQ(into(0), (Drawn{.bytes = 0, .lines = 0, .truncated = true}));
    EXPECT_EQ(drawFrame({version(1)}, lines, scene, 35).hex(),
              "010101010101010101010101"
              "020202020202020202020202");
}

TEST(PixelFrames, ATruncatedReversedFrameHasItsLastLines) {
    RowScene scene = rowScene(3);
    Settings settings = version(1);
    settings.yMirror = true;
    const std::vector<Line> lines = {lineAt(0, 1), lineAt(1, 1), lineAt(2, 1)};
    EXPECT_EQ(drawFrame({settings}, lines, scene, 30).hex(),
              "030303030303030303030303"
              "020202020202020202020202");
}

TEST(PixelFrames, BehindALineThatDoesNotFitNoneIsWritten) {
    RowScene scene = rowScene(3);
    Settings wide = version(2);
    wide.xLength = 8;
    const std::vector<Line> lines = {lineAt(0, 1), lineAt(1, 2), lineAt(2, 1)};
    EXPECT_EQ(drawFrame({version(1), wide}, lines, scene, 30).drawn,
              (Drawn{.bytes = 12, .lines = 1, .truncated = true}));
}

TEST(PixelFrames, NoLinesAreNoBytes) {
    RowScene scene = rowScene(1);
    EXPECT_EQ(drawFrame({version(1)}, {}, scene, 100).drawn, Drawn{});
}

TEST(PixelFrames, LinesWithoutAFormatHaveNoBytes) {
    RowScene scene = rowScene(3);
    Settings none = version(2);
    none.formatBits = 0;
    const std::vector<Line> lines = {lineAt(0, 1), lineAt(1, 2), lineAt(2, 1)};
    const Frame frame = drawFrame({version(1), none}, lines, scene, 24);
    EXPECT_EQ(frame.drawn, (Drawn{.bytes = 24, .lines = 3, .truncated = false}));
    EXPECT_EQ(frame.hex(), "010101010101010101010101030303030303030303030303");
}

TEST(PixelFrames, LinesOfUnknownSettingsHaveNoBytes) {
    RowScene scene = rowScene(3);
    const std::vector<Line> lines = {lineAt(0, 9), lineAt(1, 1), lineAt(2, 9)};
    const Frame frame = drawFrame({version(1)}, lines, scene, 24);
    EXPECT_EQ(frame.drawn, (Drawn{.bytes = 12, .lines = 3, .truncated = false}));
    EXPECT_EQ(frame.hex(), "020202020202020202020202");
}

TEST(PixelNonsense, ALineOfAllPixelsThereCanBeDoesNotFit) {
    RowScene scene = rowScene(1);
    Settings settings = version(1);
    settings.xLength = Most;
    settings.sensorWidth = Most;
    const std::vector<Line> lines = {lineAt(0, 1)};
    EXPECT_EQ(drawFrame({settings}, lines, scene, 1000).drawn, (Drawn{.bytes = 0, .lines = 0, .truncated = true}));
}

TEST(PixelNonsense, EveryFieldAtItsMost) {
    RowScene scene = rowScene(1);
    Settings settings;
    settings.version = 1;
    settings.bits = Most;
    settings.order = {Most, Most, Most};
    settings.ramp = {.enableX = true, .yDivisor = Most, .frameDivisor = Most, .offset = Most};
    settings.sensorWidth = Most;
    settings.xMirror = true;
    settings.xOffset = Most;
    settings.xLength = 4;
    settings.coefficient.fill(std::numeric_limits<double>::max());
    settings.lookup = true;
    settings.shift = Most;
    settings.formatBits = 16;
    const std::vector<Line> lines = {lineAt(0, 1)};
    for (const bool simulator : {false, true}) {
        settings.simulator = simulator;
        EXPECT_EQ(drawFrame({settings}, lines, scene, 24).hex(), "000000000000000000000000000000000000000000000000");
    }
}

TEST(PixelNonsense, AllSensorPixelsThatAreTaken) {
    RowScene scene = rowScene(1);
    Settings settings = version(1);
    settings.sensorWidth = Most;
    settings.xMirror = true;
    settings.xOffset = 65532;  // the four pixels that the scene has lie at the end of 65536 mirrored ones
    EXPECT_EQ(drawFrame({settings}, {{lineAt(0, 1)}}, scene, 12).hex(), "010101010101010101010101");
    settings.xOffset = 65534;
    EXPECT_EQ(drawFrame({settings}, {{lineAt(0, 1)}}, scene, 12).hex(), "010101010101000000000000");
}

/// Says what it is told to, whatever it was asked for.
class UnrulyScene : public Scene {
public:
    explicit UnrulyScene(std::size_t size) : bytes_(size, std::byte{0xff}) {}
    std::span<const std::byte> take(const Line& /*line*/, std::uint32_t /*pixels*/, std::uint32_t /*bits*/,
                                    std::span<std::byte> /*memory*/) override {
        return bytes_;
    }

private:
    std::vector<std::byte> bytes_;
};

TEST(PixelNonsense, BitsAboveTheComponentAreIgnored) {
    UnrulyScene scene(24);
    Settings settings = version(1);
    settings.formatBits = 16;
    settings.shift = 0;
    settings.bits = 10;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "c0ffc0ffc0ffc0ffc0ffc0ffc0ffc0ffc0ffc0ffc0ffc0ff");
    settings.bits = 14;
    EXPECT_EQ(drawFrame(settings, 1, scene).hex(), "fcfffcfffcfffcfffcfffcfffcfffcfffcfffcfffcfffcff");
}

TEST(PixelNonsense, PixelsThatASceneDoesNotDeliverAreZero) {
    UnrulyScene none(0);
    EXPECT_EQ(drawFrame(version(1), 1, none).hex(), "000000000000000000000000");
    UnrulyScene half(6);
    EXPECT_EQ(drawFrame(version(1), 1, half).hex(), "ffffffffffff000000000000");
}

TEST(PixelNonsense, MoreThanASceneWasAskedForIsLeftOut) {
    UnrulyScene scene(1000);
    EXPECT_EQ(drawFrame(version(1), 1, scene).hex(), "ffffffffffffffffffffffff");
}

}  // namespace
}  // namespace softboard::pixels::testing
