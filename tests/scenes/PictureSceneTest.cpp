// Pictures on the belt: which row and which columns a camera sees, with how many bits.

#include "softboard/scenes/PictureScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/scenes/Taking.h"

namespace softboard::scenes::testing {
namespace {

/// A picture of 8 bits, from its components.
Picture picture(std::uint32_t width, std::uint32_t height, const Components& components) {
    Picture picture{.width = width, .height = height, .bits = 8, .pixels = {}};
    for (const unsigned component : components) {
        picture.pixels.push_back(static_cast<std::byte>(component));
    }
    return picture;
}

/// A grey column in which row r is r + 1.
Picture column(std::uint32_t height) {
    Components rows;
    for (unsigned row = 0; row < height; ++row) {
        rows.push_back(row + 1);
    }
    return picture(1, height, greys(rows));
}

Picture wide(const Components& components) {
    Picture picture{.width = static_cast<std::uint32_t>(components.size() / 3), .height = 1, .bits = 16, .pixels = {}};
    for (const unsigned component : components) {
        const auto word = static_cast<std::uint16_t>(component);
        const auto* const bytes = reinterpret_cast<const std::byte*>(&word);
        picture.pixels.insert(picture.pixels.end(), bytes, bytes + sizeof word);
    }
    return picture;
}

unsigned rowSeen(PictureScene& scene, std::int64_t nanometres) {
    return take(scene, nanometres, 1).front();
}

TEST(PictureScenes, ColumnsAreTheCamerasPixels) {
    PictureScene scene(picture(2, 2, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), false, 1.0);
    EXPECT_EQ(take(scene, 0, 2), (Components{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(take(scene, Mm, 2), (Components{7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(take(scene, Mm, 1), (Components{7, 8, 9}));
}

TEST(PictureScenes, AroundOneThatIsShownOnceAllIsBlack) {
    PictureScene scene(picture(2, 2, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), false, 1.0);
    EXPECT_EQ(take(scene, 0, 3), (Components{1, 2, 3, 4, 5, 6, 0, 0, 0}));
    EXPECT_EQ(take(scene, 2 * Mm, 2), greys({0, 0}));
    EXPECT_EQ(take(scene, 2 * Mm - 1001, 1), (Components{7, 8, 9}));
    EXPECT_EQ(take(scene, -1001, 2), greys({0, 0}));
    EXPECT_EQ(take(scene, std::numeric_limits<std::int64_t>::min(), 2), greys({0, 0}));
    EXPECT_EQ(take(scene, std::numeric_limits<std::int64_t>::max(), 2), greys({0, 0}));
}

TEST(PictureScenes, OneThatWrapsRepeatsItsColumns) {
    PictureScene scene(picture(2, 1, {1, 2, 3, 4, 5, 6}), true, 1.0);
    EXPECT_EQ(take(scene, 0, 1), (Components{1, 2, 3}));
    EXPECT_EQ(take(scene, 0, 5), (Components{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(take(scene, lineAt(0), 3, 16),
              (Components{257, 2 * 257, 3 * 257, 4 * 257, 5 * 257, 6 * 257, 257, 2 * 257, 3 * 257}));
    PictureScene grey(column(1), true, 1.0);
    EXPECT_EQ(take(grey, 0, 100), Components(300, 1));
}

TEST(PictureScenes, OneThatWrapsRepeatsItsRows) {
    PictureScene scene(column(3), true, 1.0);
    const Components expected = {3, 1, 2, 3, 1, 2, 3, 1, 2, 3, 1};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(rowSeen(scene, (static_cast<std::int64_t>(i) - 4) * Mm), expected[i]) << i;
    }
    EXPECT_EQ(rowSeen(scene, 3'000'001 * Mm), 2U);
    EXPECT_EQ(rowSeen(scene, -3'000'002 * Mm), 2U);
}

TEST(PictureScenes, ARowBeginsAtItsPlaceAndWhereThatWasCut) {
    for (const double pixelsPerMm : {0.001, 0.3, 1.0, 3.0, 7.0, 10.0, 29.7, 96 / 25.4, 333.0, 999.7, 1000.0}) {
        PictureScene scene(column(200), true, pixelsPerMm);
        EXPECT_DOUBLE_EQ(scene.nanometresPerRow(), 1e6 / pixelsPerMm);
        for (const std::int64_t k : {-1000, -100, -1, 0, 1, 2, 3, 99, 100, 12345, 1'000'003}) {
            const double place = static_cast<double>(k) * 1e6 / pixelsPerMm;
            const auto expected = static_cast<unsigned>(((k % 200) + 200) % 200 + 1);
            EXPECT_EQ(rowSeen(scene, std::llround(std::ceil(place))), expected) << pixelsPerMm << " " << k;
            EXPECT_EQ(rowSeen(scene, std::llround(std::floor(place))), expected) << pixelsPerMm << " " << k;
        }
    }
}

TEST(PictureScenes, BeforeARowsPlaceTheRowInFrontOfItIsSeen) {
    for (const double pixelsPerMm : {0.3, 3.0, 10.0, 96 / 25.4, 333.0, 1000.0}) {
        PictureScene scene(column(200), true, pixelsPerMm);
        const double pitch = 1e6 / pixelsPerMm;
        for (const double k : {1.0, 2.0, 100.0}) {
            // A thousandth of a row belongs to the next, and a nanometre may be cut off.
            const auto before = static_cast<std::int64_t>(std::floor(k * pitch - pitch / 1000) - 1);
            EXPECT_EQ(rowSeen(scene, before), static_cast<unsigned>(k)) << pixelsPerMm << " " << k;
        }
    }
    PictureScene coarse(column(3), true, 1.0);
    EXPECT_EQ(rowSeen(coarse, Mm), 2U);
    EXPECT_EQ(rowSeen(coarse, Mm - 1), 2U);
    EXPECT_EQ(rowSeen(coarse, Mm - 1001), 1U);
}

TEST(PictureScenes, EightBitsForEveryCamera) {
    PictureScene scene(picture(1, 1, {0, 127, 255}), false, 1.0);
    EXPECT_EQ(take(scene, lineAt(0), 1, 8), (Components{0, 127, 255}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 10), (Components{0, 509, 1023}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 12), (Components{0, 2039, 4095}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 14), (Components{0, 8159, 16383}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 16), (Components{0, 32639, 65535}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 8), (Components{0, 127, 255}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 16), (Components{0, 32639, 65535}));
}

TEST(PictureScenes, SixteenBitsForEveryCamera) {
    PictureScene scene(wide({0xffff, 0x8001, 0x00ff}), false, 1.0);
    EXPECT_EQ(take(scene, lineAt(0), 1, 16), (Components{0xffff, 0x8001, 0x00ff}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 14), (Components{0x3fff, 0x2000, 0x3f}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 12), (Components{0xfff, 0x800, 0xf}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 10), (Components{0x3ff, 0x200, 0x3}));
    EXPECT_EQ(take(scene, lineAt(0), 1, 8), (Components{0xff, 0x80, 0}));
}

TEST(PictureScenes, ARowThatIsWideEnoughIsNotCopied) {
    PictureScene scene(column(3), true, 1.0);
    for (const std::uint32_t bits : {8U, 12U}) {
        std::vector<std::byte> memory(6);
        const std::span<const std::byte> first = scene.take(lineAt(0), 1, bits, memory);
        const std::span<const std::byte> second = scene.take(lineAt(Mm), 1, bits, memory);
        EXPECT_NE(first.data(), memory.data());
        EXPECT_EQ(second.data(), first.data() + first.size());
    }
}

}  // namespace
}  // namespace softboard::scenes::testing
